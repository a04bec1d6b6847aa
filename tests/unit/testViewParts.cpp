// What a view's message lines tell, what its menu offers, and which paints an image takes.
#include <gtest/gtest.h>

#include "COMMON/EventIds.h"
#include "GL/VIEW/clsImageBake.h"
#include "GL/VIEW/clsViewMenu.h"
#include "GL/VIEW/clsViewMessage.h"
#include "ViewFixture.h"

namespace {

TEST(ViewMessage, LinesTellWhatIsOnShow) {
    ViewMessage_cls::Facts_st facts;
    facts.mFile = "run_0003.dat";
    facts.mFileStatus = 2;
    facts.mDisplayMode = DISPLAY_PATH;
    facts.mbLookAnchor = true;
    facts.mTime = 0.25;
    facts.mParticles = 2000000000;
    facts.mMillis = 17;
    EXPECT_EQ(ViewMessage_cls::MakeStatusLine(facts), "run_0003.dat:2--7 1");
    EXPECT_EQ(ViewMessage_cls::MakeDataLine(facts),
              "Time=0.25:PNum=2000000000*1:MilliSec17:Hitting-1+-1:Object0");
    facts.mCopies = 27; // more than 32 bits hold
    facts.mTime = -9999.0;
    EXPECT_EQ(ViewMessage_cls::MakeDataLine(facts),
              "Time=Not Defined:PNum=2000000000*27=54000000000:MilliSec17:Hitting-1+-1:Object0");
}

class ViewMenu : public ViewTest {
protected:
    static const ViewMenu_cls::Entry_st* Find(const std::vector<ViewMenu_cls::Entry_st>& entries, int id) {
        for (const ViewMenu_cls::Entry_st& entry : entries)
            if (entry.mId == id) return &entry;
        return nullptr;
    }
};

TEST_F(ViewMenu, AFlatViewHasItsEntriesInTheirOrder) {
    std::vector<int> ids;
    for (const ViewMenu_cls::Entry_st& entry : ViewMenu_cls::MakeEntries(mView, true))
        ids.push_back(entry.mId);
    EXPECT_EQ(ids, (std::vector<int>{ID_CANVAS_MOVE_TO_CAM, ID_CANVAS_SET_KEY_POS, ID_CANVAS_SET_KEY_POS_ROT,
                                     ID_CANVAS_SET_KEY_ANC, ID_CANVAS_TOGGLE_LINK, ViewMenu_cls::kSeparator,
                                     ID_CANVAS_TOGGLE_PERSPECTIVE, ID_CANVAS_FIT_VIEW}));
    const auto hidden = ViewMenu_cls::MakeEntries(mView, false);
    EXPECT_TRUE(Find(hidden, ID_CANVAS_SHOW_CONTROLS)) << "the way back to the row of controls";
}

TEST_F(ViewMenu, WideAndLinkedViewsOfferWhatConcernsThem) {
    mView.TakeGeometry(ViewSettings_cls::GEOMETRY_FISHEYE);
    mView.mDistortion.mValue = true;
    auto entries = ViewMenu_cls::MakeEntries(mView, true);
    ASSERT_TRUE(Find(entries, ID_CANVAS_DISTORTION) && Find(entries, ID_CANVAS_FISHEYE_GRID));
    EXPECT_EQ(Find(entries, ID_CANVAS_DISTORTION)->mChecked, true);
    EXPECT_EQ(Find(entries, ID_CANVAS_FISHEYE_GRID)->mChecked, false);
    EXPECT_TRUE(Find(entries, ID_CANVAS_VIEW_ANGLE));
    mView.TakeGeometry(ViewSettings_cls::GEOMETRY_PANORAMIC);
    entries = ViewMenu_cls::MakeEntries(mView, true);
    EXPECT_FALSE(Find(entries, ID_CANVAS_DISTORTION)) << "a dome's";
    EXPECT_TRUE(Find(entries, ID_CANVAS_VIEW_ANGLE));
    // The path brings geometry and angle of its own.
    mHost.mCamera.mCGeometry.mValue = CameraPath_cls::GEOMETRY_FISHEYE;
    mView.TakeDisplayMode(DISPLAY_PATH);
    entries = ViewMenu_cls::MakeEntries(mView, true);
    EXPECT_TRUE(Find(entries, ID_CANVAS_DISTORTION));
    EXPECT_FALSE(Find(entries, ID_CANVAS_VIEW_ANGLE));
    EXPECT_FALSE(Find(entries, ID_CANVAS_TOGGLE_PERSPECTIVE)->mbEnabled);
    EXPECT_FALSE(Find(entries, ID_CANVAS_FIT_VIEW)->mbEnabled) << "keys place that camera";
}

using Step = ImageBake_cls::Step;

ImageBake_cls::Paint_st At(int frame, int step = 0) {
    ImageBake_cls::Paint_st paint;
    paint.mMoment = {frame, step, 0.0};
    return paint;
}

TEST(ImageBake, AnImageTakesOnePaintOfAPosition) {
    ImageBake_cls bake;
    EXPECT_EQ(bake.Begin(At(0)), Step::None) << "nobody asked";
    bake.RequestOne();
    ImageBake_cls::Paint_st loading = At(0);
    loading.mbLoading = true;
    EXPECT_EQ(bake.Begin(loading), Step::None);
    EXPECT_EQ(bake.Begin(At(0)), Step::Bake);
    EXPECT_TRUE(bake.IsComplete(true));
    EXPECT_FALSE(bake.IsComplete(false)) << "steps of a blur are still to come";
    EXPECT_EQ(bake.Begin(At(0)), Step::None) << "the window was uncovered";
    EXPECT_FALSE(bake.HasBaked());
    EXPECT_FALSE(bake.IsComplete(true));
    EXPECT_EQ(bake.Begin(At(0, 1)), Step::Bake);
    bake.FinishOne();
    EXPECT_EQ(bake.Begin(At(1)), Step::None);
    bake.RequestOne();
    EXPECT_EQ(bake.Begin(At(0, 1)), Step::Bake) << "a new order begins anew";
}

TEST(ImageBake, ABlurAddsItsStepsAndNoOthers) {
    ImageBake_cls bake;
    bake.RequestSequence();
    int added = 0;
    for (int step = -1; step <= 4; ++step) {
        ImageBake_cls::Paint_st paint = At(7);
        paint.mbBlur = true;
        paint.mBlurStep = step;
        paint.mBlurSteps = 4;
        paint.mMoment.mBlur = 0.125 * step;
        added += bake.Begin(paint) == Step::Bake;
    }
    EXPECT_EQ(added, 4);
}

TEST(ImageBake, HalfAPictureEndsARunOnly) {
    ImageBake_cls::Paint_st cut = At(3);
    cut.mbCut = true;
    ImageBake_cls one;
    one.RequestOne();
    EXPECT_EQ(one.Begin(cut), Step::None);
    EXPECT_TRUE(one.IsRequested()) << "the next whole paint makes it";
    EXPECT_EQ(one.Begin(At(3)), Step::Bake);
    ImageBake_cls run;
    run.RequestSequence();
    EXPECT_EQ(run.Begin(cut), Step::Stop);
    cut.mbHidden = true;
    EXPECT_EQ(run.Begin(cut), Step::Bake) << "without a window nobody cuts";
}

TEST(ImageBake, AnEndedRunsBuffersGoWithTheNextPaintUnlessThatWantsAnImage) {
    ImageBake_cls bake;
    EXPECT_FALSE(bake.StopSequence());
    bake.RequestSequence();
    EXPECT_FALSE(bake.MustDrop());
    EXPECT_TRUE(bake.StopSequence());
    EXPECT_FALSE(bake.IsRequested());
    EXPECT_TRUE(bake.MustDrop());
    bake.RequestOne();
    EXPECT_FALSE(bake.MustDrop());
    bake.FinishOne();
    bake.ForgetDrop();
    EXPECT_FALSE(bake.MustDrop());
}

} // namespace
