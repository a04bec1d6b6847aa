// Many points under a hand that drags: fewer are drawn until it rests.
#include <chrono>
#include <cstdio>
#include <random>

#include "APP/clsMain.h"
#include "GL/BASE/DrawWay.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewMouse.h"
#include "PictureTest.h"

namespace {

using Clock = std::chrono::steady_clock;

class DragThinning : public PictureTest {
protected:
    static constexpr int kPoints = 1000000;

    void SetUp() override {
        PictureTest::SetUp();
        mBuffer = std::exchange(Shared().msCFBOSizeIndex.mValue, 3u); // as at first
        mRest = ViewMouse_cls::msRestMillis;
        mWay = GetDrawWay();
        SetDrawWay(DrawWay::GL); // the processor's own keeps up with all of them
        ASSERT_TRUE(SizeView(700, 500));
        std::mt19937 random(2);
        std::uniform_real_distribution<double> side(-1.0, 1.0);
        std::vector<Point> points;
        for (int i = 0; i < kPoints; ++i)
            points.push_back({6 + side(random), side(random), side(random)});
        ShowParticles(points, 1);
        LookAlongX();
        Repaint();
    }
    void TearDown() override {
        Shared().msCFBOSizeIndex.mValue = mBuffer;
        ViewMouse_cls::msRestMillis = mRest;
        SetDrawWay(mWay);
        PictureTest::TearDown();
    }
    unsigned mBuffer = 0;
    int mRest = 0;
    DrawWay mWay = DrawWay::Auto;
};

// How many pictures a second there are is told, not judged: the machine may be busy.
TEST_F(DragThinning, AMillionPointsKeepUpAndComeBack) {
    MainGLCanvas_cls& canvas = *Canvas(0);
    EXPECT_FALSE(canvas.GetLastPaint().mbThinned);
    const Picture_st before = Grab(0);
    Shared().msbKeepPicture = false;          // reading it back takes long
    ViewMouse_cls::msRestMillis = 600 * 1000; // on a busy machine the hand would seem to rest
    MoveTo(&canvas, wxPoint(350, 250));
    Press(true);
    for (int k = 1; k < 6; ++k)
        MoveTo(&canvas, wxPoint(350 + 4 * k, 250)); // the hand takes off
    EXPECT_TRUE(PumpUntil([&] { return canvas.GetLastPaint().mbThinned; }));
    const auto start = Clock::now();
    const int paints = canvas.GetPaintCount();
    double seconds = 0.0;
    int moves = 0, thinned = 0;
    for (; seconds < 3.0; ++moves) {
        MoveTo(&canvas, wxPoint(370 + 60 * (moves % 2), 250 + moves % 7));
        thinned += canvas.GetLastPaint().mbThinned;
        seconds = std::chrono::duration<double>(Clock::now() - start).count();
    }
    EXPECT_GE(10 * thinned, 9 * moves) << "paints that were held up may mislead for one picture";
    const double rate = (canvas.GetPaintCount() - paints) / seconds;
    std::printf("%.1f pictures a second, the last in %.1f ms, one of %d points\n", rate,
                canvas.GetLastPaint().mMillis, GLDrawData_cls::msThinning);
    RecordProperty("picturesASecond", std::to_string(rate));
    Snap("drag_thinned");
    ViewMouse_cls::msRestMillis = mRest;
    MoveTo(&canvas, wxPoint(350, 250));
    EXPECT_TRUE(PumpUntil([&] { return !canvas.GetLastPaint().mbThinned; })) << "it rests";
    Press(false);
    Shared().msbKeepPicture = true;
    LookAlongX();
    Repaint();
    EXPECT_TRUE(Grab(0).mRGB == before.mRGB) << "all points are there again";
}

} // namespace
