#include "WIDGET/TIMELINE/TimelineModel.h"

#include <algorithm>
#include <cmath>

int FrameScale::ToPixel(int frame) const {
    if (mLast <= mFirst) return mLeft;
    const double share = static_cast<double>(frame - mFirst) / (mLast - mFirst);
    return mLeft + static_cast<int>(std::lround(share * mWidth));
}

int FrameScale::ToFrame(int pixel) const {
    if (mLast <= mFirst || mWidth <= 0) return mFirst;
    const double share = std::clamp(static_cast<double>(pixel - mLeft) / mWidth, 0.0, 1.0);
    return mFirst + static_cast<int>(std::lround(share * (mLast - mFirst)));
}

double FrameScale::PixelsPerFrame() const {
    return mLast > mFirst ? static_cast<double>(mWidth) / (mLast - mFirst) : mWidth;
}

int TickLabelSpacing(const FrameScale& scale, int interval, int labelWidth) {
    const double perFrame = scale.PixelsPerFrame();
    const int base = std::max(interval, 1);
    constexpr int kLongest = 1 << 28;
    for (int decade = 1; decade < kLongest / 10; decade *= 10) {
        for (const int digit : {1, 2, 5}) {
            const double spacing = static_cast<double>(base) * digit * decade;
            if (spacing > kLongest) return kLongest;
            if (spacing * perFrame >= labelWidth) return static_cast<int>(spacing);
        }
    }
    return kLongest;
}

namespace {

CacheState Join(CacheState a, CacheState b) {
    if (a == b) return a;
    for (const CacheState urgent : {CacheState::Unreadable, CacheState::Loading})
        if (a == urgent || b == urgent) return urgent;
    const CacheState low = std::min(a, b);
    return low == CacheState::Empty ? CacheState::Partial : low;
}

} // namespace

std::vector<CacheState> BuildCacheColumns(const FrameScale& scale,
                                          const std::function<CacheState(int frame)>& state) {
    const int width = std::max(scale.mWidth, 0);
    std::vector<CacheState> columns(static_cast<size_t>(width), CacheState::Empty);
    const int frames = scale.mLast - scale.mFirst + 1;
    if (width == 0 || frames <= 0) return columns;
    // Here each frame has a cell of its own width, so that the first and last count in full.
    int done = 0; // columns that have their state
    for (int i = 0; i < frames; ++i) {
        const CacheState now = state(scale.mFirst + i);
        const int begin = static_cast<int>(static_cast<long long>(i) * width / frames);
        const int end = std::max(static_cast<int>((i + 1LL) * width / frames), begin + 1);
        for (int x = begin; x < end; ++x) {
            CacheState& column = columns[static_cast<size_t>(x)];
            column = x < done ? Join(column, now) : now;
        }
        done = std::max(done, end);
    }
    return columns;
}
