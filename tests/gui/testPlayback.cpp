// From a file to moving pictures: open, play, step; what lies in the file is lit in the view.
#include <wx/utils.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class Playback : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        // Each snapshot once, as the tests count them.
        Hub()->mpCTimeCtrl->SetAnimInterpNative(1);
        Hub()->mpCTimeCtrl->SetRepeatNative(0);
        HideAllButData();
    }
    void HideAllButData() {
        for (int view = 0; view < 4; ++view) {
            Canvas(view)->mShowGrid.mValue = false;
            Canvas(view)->mShowItems.mValue = false;
            Canvas(view)->mShowMessage.mValue = false;
        }
        Menu(ID_REFRESH_GL);
    }
    static const PDataBlock_cls* Block(int index) {
        return Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()->mpCSnap[index]->mpCBlock;
    }
    /// How many of the snapshot's particles, of those inside the window, are lit where they must be.
    static double ShareLit(int view, int index) {
        const Picture_st picture = Grab(view);
        const PDataBlock_cls* block = Block(index);
        int inside = 0;
        int lit = 0;
        for (int i = 0; i < block->mParticleNumber; ++i) {
            const double pos[3] = {block->mpPos[i][0], block->mpPos[i][1], block->mpPos[i][2]};
            double x = 0.0;
            double y = 0.0;
            if (!ProjectToWindow(view, pos, &x, &y) || x < 3 || y < 3 || x > picture.mW - 4 ||
                y > picture.mH - 4)
                continue;
            ++inside;
            lit += picture.IsLit(x, y, 4, 60);
        }
        return inside > 100 ? double(lit) / inside : 0.0;
    }
};

TEST_F(Playback, ParticlesAreLitWhereTheDataPutThem) {
    EXPECT_GT(ShareLit(0, 0), 0.99);
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
