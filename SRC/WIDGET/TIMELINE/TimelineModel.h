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
    /// The same without rounding and beyond the ends; frames with a fraction.
    double ToPixelExact(double frame) const;
    double ToFrameExact(double pixel) const;
};

/// A stretch of whole frames, both ends included.
struct FrameArea {
    int mFirst = 0;
    int mLast = 0;
    bool operator==(const FrameArea& o) const { return mFirst == o.mFirst && mLast == o.mLast; }
    bool operator!=(const FrameArea& o) const { return !(*this == o); }
};

/// The area zoomed by `factor` (below 1: fewer frames) so that the frame `anchor` keeps its place on the
/// strip, within a film that ends at `maxFrame`. At least one frame narrower or wider, until an end is met.
FrameArea ZoomArea(const FrameArea& area, double anchor, double factor, int maxFrame);
/// The area moved by whole frames, as far as the film goes.
FrameArea ShiftArea(const FrameArea& area, int frames, int maxFrame);
/// One end, or with `end` 0 the whole, dragged by `frames`; -1 the first frame's end, 1 the last one's. The
/// ends don't pass each other.
FrameArea DragArea(const FrameArea& area, int end, int frames, int maxFrame);

/// A frame of the film and a step behind it.
struct FilmPlace {
    int mFrame = 0;
    int mStep = 0;
    bool operator==(const FilmPlace& o) const { return mFrame == o.mFrame && mStep == o.mStep; }
};
/// The nearest place that playing visits: frames that are multiples of `animStep`, and `interp` steps to each
/// but the film's last.
FilmPlace NearestPlace(double frame, int animStep, int interp, int maxFrame);

/// Rows of one height under each other behind a window: what a scroll bar needs.
struct RowScale {
    int mHeight = 1; ///< pixels a row
    int mCount = 0;
    int mTop = 0;    ///< pixels scrolled away
    int mWindow = 0; ///< pixels seen

    int ToPixel(int row) const { return row * mHeight - mTop; }
    /// Row under a pixel, -1 behind the last.
    int ToRow(int pixel) const;
    int FirstSeen() const { return mTop / mHeight; }
    int LastSeen() const; ///< -1 without rows
    /// The nearest `top` that leaves no empty space under the last row.
    int ClampTop(int top) const;
    /// The least movement of the top that shows a row whole.
    int TopToShow(int row) const;
};

/// Distance in frames between two numbers on the ruler: a multiple of `interval` by 1, 2, 5, 10, 20 ...
/// that leaves `labelWidth` pixels to each.
int TickLabelSpacing(const FrameScale& scale, int interval, int labelWidth);

/// Frames with a fraction where the steps between frames stand, `interp` to each frame that playing visits (a
/// multiple of `animStep`) but the last one seen. None where a step has less than `leastPixels`.
std::vector<double> StepTicks(const FrameScale& scale, int animStep, int interp, int leastPixels);

/// Where a label beside a place goes, in pixels.
struct HintBox_st {
    int mLeft = 0, mTop = 0, mWidth = 0, mHeight = 0;
};
/// The label of a text of `textWidth` x `textHeight` beside the pixel `x`, over the row around `y` or, where
/// there is no room, under it. It is as wide as its text and `pad` on each side, and stays in a window of
/// `windowWidth` where it fits.
HintBox_st PlaceHint(int textWidth, int textHeight, int x, int y, int row, int pad, int windowWidth);

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
