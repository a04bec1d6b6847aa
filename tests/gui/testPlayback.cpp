// From a file to moving pictures: open, play, step; what lies in the file is lit in the view.
#include <wx/utils.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class Playback : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        OpenMelt();
        for (int view = 0; view < 4; ++view)
            HideAllButData(view);
        Menu(ID_REFRESH_GL);
    }
};

TEST_F(Playback, ParticlesAreLitWhereTheDataPutThem) {
    int inside = 0;
    EXPECT_GT(ShareLit(0, 0, &inside), 0.99);
    EXPECT_GT(inside, 100);
    // A picture that is lit everywhere would prove nothing.
    const Picture_st picture = Grab(0);
    EXPECT_LT(picture.CountLit(60), picture.mW * picture.mH / 2);
    EXPECT_GT(picture.CountLit(60), 200);
}

TEST_F(Playback, SpacePlaysToTheEndAndEveryFrameIsPainted) {
    TimeCtrl_cls* time = Hub()->mpCTimeCtrl;
    const int before = Canvas(0)->GetPaintCount();
    Canvas(0)->SetFocus();
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([time] { return time->IsPlaying() || time->GetFrame() > 0; }));
    ASSERT_TRUE(PumpUntil([time] { return !time->IsPlaying(); }, 30000));
    ASSERT_TRUE(Settle());
    EXPECT_EQ(time->GetFrame(), 19);
    EXPECT_GE(Canvas(0)->GetPaintCount() - before, 19);
    EXPECT_GT(ShareLit(0, 19), 0.99);
    EXPECT_TRUE(mVMessages.empty());
}

TEST_F(Playback, ArrowKeysStepThroughTheFilm) {
    Canvas(0)->SetFocus();
    Key(WXK_RIGHT);
    Key(WXK_RIGHT);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Hub()->mpCTimeCtrl->GetFrame(), 2);
    EXPECT_GT(ShareLit(0, 2), 0.99);
    Key(WXK_LEFT);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Hub()->mpCTimeCtrl->GetFrame(), 1);
}

TEST_F(Playback, TheCacheIsFilledAheadAndCanBeRemoved) {
    PDataSeqCtrl_cls* store = Hub()->mpCPDataSeqCtrl;
    ASSERT_TRUE(PumpUntil([store] { return store->IsTheIndexLoaded(3); })) << "prefetch of three frames";
    Menu(ID_REMOVE_CACHE_ALL);
    ASSERT_TRUE(PumpUntil([store] { return store->IsTheIndexLoaded(0); })) << "the shown frame comes back";
    EXPECT_GT(ShareLit(0, 0), 0.99);
}

TEST_F(Playback, ClosingDataEmptiesTheViews) {
    Menu(ID_CLOSE_DATA);
    EXPECT_EQ(Grab(0).CountLit(60), 0);
    EXPECT_EQ(Hub()->mpCPDataSeqCtrl->GetLoadedFrameNumber(), 0);
}

} // namespace
