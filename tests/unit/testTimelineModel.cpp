#include <gtest/gtest.h>

#include <algorithm>

#include "WIDGET/TIMELINE/TimelineModel.h"
#include "WIDGET/TIMELINE/clsPlayCtrlGUI.h"

namespace {

FrameScale Scale(int first, int last, int left, int width) {
    FrameScale scale;
    scale.mFirst = first;
    scale.mLast = last;
    scale.mLeft = left;
    scale.mWidth = width;
    return scale;
}

long Count(const std::vector<CacheState>& columns, CacheState state) {
    return std::count(columns.begin(), columns.end(), state);
}

} // namespace

TEST(TimelineModel, EveryFrameComesBackFromItsPixel) {
    const FrameScale scale = Scale(20, 120, 16, 640);
    EXPECT_EQ(scale.ToPixel(20), 16);
    EXPECT_EQ(scale.ToPixel(120), 656);
    for (int frame = 20; frame <= 120; ++frame)
        EXPECT_EQ(scale.ToFrame(scale.ToPixel(frame)), frame);
    EXPECT_EQ(scale.ToFrame(-50), 20);
    EXPECT_EQ(scale.ToFrame(5000), 120);
}

TEST(TimelineModel, FilmOfOneFrameOrNoWidthDividesByNothing) {
    EXPECT_EQ(Scale(0, 0, 16, 640).ToFrame(300), 0);
    EXPECT_EQ(Scale(0, 0, 16, 640).ToPixel(0), 16);
    EXPECT_EQ(Scale(0, 100, 16, 0).ToFrame(300), 0);
    EXPECT_TRUE(BuildCacheColumns(Scale(0, 100, 16, -5), [](int) { return CacheState::Loaded; }).empty());
    EXPECT_GT(TickLabelSpacing(Scale(0, 100, 0, 0), 1, 20), 100);
}

TEST(TimelineModel, NumbersOnTheRulerDontTouch) {
    EXPECT_EQ(TickLabelSpacing(Scale(0, 100, 0, 1000), 1, 30), 5);
    EXPECT_EQ(TickLabelSpacing(Scale(0, 10, 0, 1000), 1, 30), 1);
    EXPECT_EQ(TickLabelSpacing(Scale(0, 9999, 0, 1000), 10, 30), 500);
    EXPECT_EQ(TickLabelSpacing(Scale(0, 300, 0, 1000), 2, 30), 10);
}

TEST(TimelineModel, AWideFrameFillsItsCell) {
    const auto columns = BuildCacheColumns(
        Scale(0, 3, 0, 100), [](int f) { return f == 1 ? CacheState::Loaded : CacheState::Empty; });
    ASSERT_EQ(columns.size(), 100u);
    EXPECT_EQ(Count(columns, CacheState::Loaded), 25);
    EXPECT_EQ(columns[24], CacheState::Empty);
    EXPECT_EQ(columns[25], CacheState::Loaded);
}

TEST(TimelineModel, ManyFramesOnAPixelShowWhatNeedsAttention) {
    const auto at = [](int bad, CacheState state) {
        return BuildCacheColumns(Scale(0, 9999, 0, 100),
                                 [=](int f) { return f == bad ? state : CacheState::Interpolated; });
    };
    EXPECT_EQ(Count(at(5050, CacheState::Unreadable), CacheState::Unreadable), 1);
    EXPECT_EQ(at(5050, CacheState::Unreadable)[50], CacheState::Unreadable);
    EXPECT_EQ(at(9999, CacheState::Loading)[99], CacheState::Loading);
    EXPECT_EQ(at(0, CacheState::Empty)[0], CacheState::Partial);
    EXPECT_EQ(at(0, CacheState::Loaded)[0], CacheState::Loaded);
    EXPECT_EQ(Count(at(-1, CacheState::Empty), CacheState::Interpolated), 100);
}

TEST(TimelineModel, PrefetchFallsBackToWhatFits) {
    EXPECT_EQ(LimitPrefetch(50, -1), 50) << "unknown: nothing to limit by";
    EXPECT_EQ(LimitPrefetch(50, 20), 12);
    EXPECT_EQ(LimitPrefetch(12, 20), 12);
    EXPECT_EQ(LimitPrefetch(3, 1), 3) << "three are always granted";
    EXPECT_EQ(LimitPrefetch(4, 1), 0);
}
