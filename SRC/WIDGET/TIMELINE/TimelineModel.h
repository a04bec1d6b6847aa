// Where frames lie on a strip of pixels, and what the cache bar shows in each pixel.
#pragma once

#include <functional>
#include <vector>

/// A stretch of frames on a stretch of pixels.
struct FrameScale {
    int mFirst = 0; ///< frame at the left end
    int mLast = 0;  ///< frame at the right end
    int mLeft = 0;  ///< pixel of the left end
    int mWidth = 0; ///< pixels from end to end

    int ToPixel(int frame) const;
    /// The nearest frame, within the stretch.
    int ToFrame(int pixel) const;
    /// Pixels a frame.
    double PixelsPerFrame() const;
};

/// Distance in frames between two numbers on the ruler: a multiple of `interval` by 1, 2, 5, 10, 20 ...
/// that leaves `labelWidth` pixels to each.
int TickLabelSpacing(const FrameScale& scale, int interval, int labelWidth);

/// What is known of a snapshot, or of all those under one pixel.
enum class CacheState : unsigned char {
    Empty,        ///< on disk only
    Partial,      ///< some of several are loaded
    Loading,      ///< under read
    Loaded,       ///< in memory
    Interpolated, ///< in memory with slopes
    Unreadable    ///< its file can't be used
};

/// One state a pixel. A pixel that several frames share shows what needs attention first: unreadable, then
/// loading, then the least that all have. `state` is asked once a frame.
std::vector<CacheState> BuildCacheColumns(const FrameScale& scale,
                                          const std::function<CacheState(int frame)>& state);
