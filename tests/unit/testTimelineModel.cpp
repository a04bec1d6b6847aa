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

TEST(NearestPlace, VisitsTheStepsThatPlayingVisits) {
    EXPECT_EQ(NearestPlace(3.26, 1, 4, 19), (FilmPlace{3, 1}));
    EXPECT_EQ(NearestPlace(3.9, 1, 4, 19), (FilmPlace{4, 0}));
    EXPECT_EQ(NearestPlace(3.86, 1, 4, 19), (FilmPlace{3, 3}));
    EXPECT_EQ(NearestPlace(2.6, 1, 1, 19), (FilmPlace{3, 0}));
    EXPECT_EQ(NearestPlace(99.0, 1, 4, 19), (FilmPlace{19, 0})) << "the last frame has no steps";
    EXPECT_EQ(NearestPlace(-5.0, 1, 4, 19), (FilmPlace{0, 0}));
    // Every fifth frame plays, with its steps right behind it.
    EXPECT_EQ(NearestPlace(5.5, 5, 4, 19), (FilmPlace{5, 2}));
    EXPECT_EQ(NearestPlace(7.0, 5, 4, 19), (FilmPlace{5, 3}));
    EXPECT_EQ(NearestPlace(9.0, 5, 4, 19), (FilmPlace{10, 0}));
    EXPECT_EQ(NearestPlace(19.0, 5, 4, 19), (FilmPlace{15, 3}));
    EXPECT_EQ(NearestPlace(0.0, 0, 0, 0), (FilmPlace{0, 0}));
}

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

TEST(TimelineModel, StepsHaveTicksWhereThereIsRoom) {
    // 20 pixels a frame.
    const FrameScale scale = Scale(2, 5, 0, 60);
    EXPECT_EQ(StepTicks(scale, 1, 2, 4), (std::vector<double>{2.5, 3.5, 4.5}));
    EXPECT_EQ(StepTicks(scale, 2, 4, 4), (std::vector<double>{2.25, 2.5, 2.75, 4.25, 4.5, 4.75}))
        << "frames that playing leaves out have no steps";
    EXPECT_EQ(StepTicks(scale, 1, 5, 4).size(), 12u);
    EXPECT_TRUE(StepTicks(scale, 1, 6, 4).empty()) << "3.3 pixels a step";
    EXPECT_TRUE(StepTicks(scale, 1, 1, 4).empty());
    EXPECT_TRUE(StepTicks(scale, 0, 0, 4).empty());
}

TEST(TimelineModel, HintsAreAsWideAsTheirText) {
    // A text of 50 x 12 over a row of 20, beside pixel 100 of a window of 400.
    const HintBox_st over = PlaceHint(50, 12, 100, 90, 20, 4, 400);
    EXPECT_EQ(over.mWidth, 58);
    EXPECT_EQ(over.mLeft, 104);
    EXPECT_LE(over.mTop + over.mHeight, 80) << "the row under the hand stays readable";
    EXPECT_GE(PlaceHint(50, 12, 100, 10, 20, 4, 400).mTop, 20) << "no room above: under the row";
    EXPECT_EQ(PlaceHint(50, 12, 390, 90, 20, 4, 400).mLeft, 342) << "whole at the right edge";
    const HintBox_st narrow = PlaceHint(50, 12, 30, 90, 20, 4, 40);
    EXPECT_EQ(narrow.mLeft, 0);
    EXPECT_EQ(narrow.mWidth, 58) << "never narrower than the text";
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

TEST(TimelineModel, ZoomKeepsTheFrameUnderThePointer) {
    const FrameArea area = {100, 900};
    for (const double factor : {0.2, 0.5, 0.8, 1.1}) {
        const FrameArea zoomed = ZoomArea(area, 300.0, factor, 1000);
        EXPECT_NEAR(zoomed.mLast - zoomed.mFirst, 800 * factor, 1.0);
        // A quarter of the way along before and after, but for the rounding to whole frames.
        EXPECT_NEAR(zoomed.mFirst + 0.25 * (zoomed.mLast - zoomed.mFirst), 300.0, 1.0) << factor;
    }
    EXPECT_EQ(ZoomArea(area, 300.0, 100.0, 1000), (FrameArea{0, 1000})) << "no more than the film";
    EXPECT_EQ(ZoomArea({2, 4}, 3.0, 0.5, 1000), (FrameArea{3, 4})) << "down to one frame with its steps";
    EXPECT_EQ(ZoomArea({3, 4}, 3.5, 0.5, 1000), (FrameArea{3, 4}));
    EXPECT_EQ(ZoomArea({10, 15}, 12.0, 0.95, 1000).mLast - ZoomArea({10, 15}, 12.0, 0.95, 1000).mFirst, 4);
    EXPECT_EQ(ZoomArea({0, 0}, 0.0, 0.5, 0), (FrameArea{0, 0})) << "a film of one frame";
    EXPECT_EQ(ZoomArea({0, 2}, 1.0, 2.0, 2), (FrameArea{0, 2}));
}

TEST(TimelineModel, AreasAreDraggedWithinTheFilm) {
    const FrameArea area = {20, 50};
    EXPECT_EQ(DragArea(area, 0, 10, 100), (FrameArea{30, 60}));
    EXPECT_EQ(DragArea(area, 0, 90, 100), (FrameArea{70, 100})) << "its length stays";
    EXPECT_EQ(DragArea(area, 0, -90, 100), (FrameArea{0, 30}));
    EXPECT_EQ(DragArea(area, -1, -90, 100), (FrameArea{0, 50}));
    EXPECT_EQ(DragArea(area, -1, 90, 100), (FrameArea{50, 50})) << "the ends don't pass each other";
    EXPECT_EQ(DragArea(area, 1, -90, 100), (FrameArea{20, 20}));
    EXPECT_EQ(DragArea(area, 1, 90, 100), (FrameArea{20, 100}));
    EXPECT_EQ(ShiftArea({0, 200}, 5, 100), (FrameArea{0, 100})) << "an area from a longer film";
}

TEST(TimelineModel, RowsScrollWithoutEmptySpace) {
    RowScale rows;
    rows.mHeight = 20;
    rows.mCount = 10;
    rows.mWindow = 90;
    EXPECT_EQ(rows.ClampTop(1000), 110);
    EXPECT_EQ(rows.ClampTop(-5), 0);
    EXPECT_EQ(rows.TopToShow(9), 110);
    EXPECT_EQ(rows.TopToShow(0), 0);
    rows.mTop = 30;
    EXPECT_EQ(rows.ToRow(0), 1);
    EXPECT_EQ(rows.ToRow(89), 5);
    EXPECT_EQ(rows.ToRow(170), -1) << "behind the last row";
    EXPECT_EQ(rows.FirstSeen(), 1);
    EXPECT_EQ(rows.LastSeen(), 5);
    EXPECT_EQ(rows.TopToShow(4), 30) << "seen already";
    EXPECT_EQ(rows.TopToShow(5), 30);
    EXPECT_EQ(rows.TopToShow(1), 20);
    rows.mCount = 2;
    EXPECT_EQ(rows.ClampTop(30), 0);
    rows.mCount = 0;
    EXPECT_EQ(rows.ToRow(5), -1);
    EXPECT_LT(rows.LastSeen(), rows.FirstSeen());
}
