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

double FrameScale::ToPixelExact(double frame) const {
    return mLast > mFirst ? mLeft + (frame - mFirst) / (mLast - mFirst) * mWidth : mLeft;
}

double FrameScale::ToFrameExact(double pixel) const {
    if (mLast <= mFirst || mWidth <= 0) return mFirst;
    return mFirst + (pixel - mLeft) / mWidth * (mLast - mFirst);
}

namespace {

FrameArea PlaceArea(double first, int span, int maxFrame) {
    const int low = static_cast<int>(std::lround(std::clamp(first, 0.0, double(maxFrame - span))));
    return {low, low + span};
}

} // namespace

FrameArea ZoomArea(const FrameArea& area, double anchor, double factor, int maxFrame) {
    constexpr int kLeastSpan = 1; // a frame and its steps
    const int longest = std::max(maxFrame, 0);
    const int span = std::max(area.mLast - area.mFirst, 1);
    int wanted = static_cast<int>(std::lround(std::min(span * factor, 1e9)));
    if (factor < 1.0) wanted = std::min(wanted, span - 1);
    if (factor > 1.0) wanted = std::max(wanted, span + 1);
    wanted = std::min(std::max(wanted, kLeastSpan), longest);
    const double share = (anchor - area.mFirst) / span;
    return PlaceArea(anchor - share * wanted, wanted, longest);
}

FrameArea ShiftArea(const FrameArea& area, int frames, int maxFrame) {
    const int span = std::clamp(area.mLast - area.mFirst, 0, std::max(maxFrame, 0));
    return PlaceArea(double(area.mFirst) + frames, span, std::max(maxFrame, 0));
}

FrameArea DragArea(const FrameArea& area, int end, int frames, int maxFrame) {
    if (end == 0) return ShiftArea(area, frames, maxFrame);
    FrameArea moved = area;
    if (end < 0)
        moved.mFirst = std::clamp(area.mFirst + frames, 0, area.mLast);
    else
        moved.mLast = std::max(std::min(area.mLast + frames, maxFrame), area.mFirst);
    return moved;
}

FilmPlace NearestPlace(double frame, int animStep, int interp, int maxFrame) {
    animStep = std::max(animStep, 1);
    interp = std::max(interp, 1);
    frame = std::clamp(frame, 0.0, double(std::max(maxFrame, 0)));
    const int base = int(frame) / animStep * animStep;
    const int most = base < maxFrame ? interp - 1 : 0;
    const int step = std::clamp(int(std::lround((frame - base) * interp)), 0, most);
    const int next = base + animStep;
    if (next <= maxFrame && next - frame <= std::fabs(frame - base - double(step) / interp)) return {next, 0};
    return {base, step};
}

int RowScale::ToRow(int pixel) const {
    const int at = pixel + mTop;
    if (at < 0 || at >= mCount * mHeight) return -1;
    return at / mHeight;
}

int RowScale::LastSeen() const { return std::min((mTop + mWindow - 1) / mHeight, mCount - 1); }

int RowScale::ClampTop(int top) const { return std::max(std::min(top, mCount * mHeight - mWindow), 0); }

int RowScale::TopToShow(int row) const {
    const int above = row * mHeight;
    if (above < mTop) return ClampTop(above);
    const int below = above + mHeight - mWindow;
    return ClampTop(std::max(mTop, below));
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

std::vector<double> StepTicks(const FrameScale& scale, int animStep, int interp, int leastPixels) {
    std::vector<double> ticks;
    if (interp < 2 || scale.PixelsPerFrame() < double(leastPixels) * interp) return ticks;
    for (int frame = scale.mFirst; frame < scale.mLast; ++frame)
        for (int step = 1; step < interp && frame % std::max(animStep, 1) == 0; ++step)
            ticks.push_back(frame + double(step) / interp);
    return ticks;
}

HintBox_st PlaceHint(int textWidth, int textHeight, int x, int y, int row, int pad, int windowWidth) {
    HintBox_st box;
    box.mWidth = textWidth + 2 * pad;
    box.mHeight = textHeight + pad / 2;
    box.mLeft = std::clamp(x + pad, 0, std::max(windowWidth - box.mWidth, 0));
    const bool bAbove = y > textHeight + row;
    box.mTop = bAbove ? y - row / 2 - textHeight - pad : y + row / 2 + pad;
    return box;
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
