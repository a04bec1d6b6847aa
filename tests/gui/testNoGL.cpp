// A machine whose OpenGL driver is missing: the suite runs with a driver folder that doesn't exist.
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "TIME/clsTimeCtrl.h"

#include <algorithm>
#include <cstdlib>

namespace {

class NoGL : public GuiTest {
protected:
    void SetUp() override {
        if (!std::getenv("LIBGL_DRIVERS_PATH")) GTEST_SKIP() << "run by ctest, which takes the driver away";
        GuiTest::SetUp();
    }
    void TearDown() override {
        if (!IsSkipped()) GuiTest::TearDown();
    }
};

TEST_F(NoGL, OneBoxTellsWhatToInstallAndTheRestRuns) {
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view)
        EXPECT_FALSE(Canvas(view)->HasGL()) << view;
    EXPECT_TRUE(WasTold("libgl1-mesa-dri"));
    EXPECT_EQ(std::count_if(mVMessages.begin(), mVMessages.end(),
                            [](const ShownMessage_st& message) { return message.mTitle == "No OpenGL"; }),
              1);
    Menu(ID_VIEW_PANEL_TYPE_3);
    EXPECT_TRUE(OpenProjectAndPaint(Root() + "examples/galaxy_small_bin/galaxy_small_bin.mrp"));
    Frame()->Refresh();
    const auto particles = [] { return Frame()->GetPCActiveFileSequence()->GetParticleNumber(0); };
    EXPECT_TRUE(PumpUntil([&] { return particles() == 2000; })) << particles();
    Hub()->mpCTimeCtrl->StartPlayCommand(1);
    EXPECT_TRUE(PumpUntil([] { return Hub()->mpCTimeCtrl->GetFrame() >= 2; }));
    Hub()->mpCTimeCtrl->StartPlayCommand(1);
    EXPECT_TRUE(Settle());
    Menu(ID_PREFERENCE);
    wxTopLevelWindow* dialog = WaitForWindow("Preference");
    ASSERT_TRUE(dialog);
    Key(WXK_ESCAPE);
    EXPECT_EQ(mVMessages.size(), 1u);
}

} // namespace
