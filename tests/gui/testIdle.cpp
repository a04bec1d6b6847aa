// A program at rest costs nothing: no paint, no processor time.
#include <sys/resource.h>

#include <wx/evtloop.h>
#include <wx/stopwatch.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsCacheBar.h"
#include "WIDGET/TIMELINE/clsFrameSlider.h"

namespace {

constexpr long kRestMillis = 3000;

double ProcessorMillis() {
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    return double(use.ru_utime.tv_sec + use.ru_stime.tv_sec) * 1e3 +
           double(use.ru_utime.tv_usec + use.ru_stime.tv_usec) / 1e3;
}

struct PaintCounter_cls : public wxEvtHandler {
    void OnPaint(wxPaintEvent& event) {
        ++mCount;
        event.Skip();
    }
    int mCount = 0;
};

class Idle : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
    }
    /// Let the loop block as it does in the program.
    static void Rest(long millis) {
        auto* loop = static_cast<wxGUIEventLoop*>(wxEventLoopBase::GetActive());
        for (const wxStopWatch watch; watch.Time() < millis;)
            loop->DispatchTimeout(100);
    }
    static void ExpectQuiet() {
        Rest(600); // timers that look at the store have seen the last change
        PaintCounter_cls counter;
        std::vector<wxWindow*> windows = {Frame()->GetPCBtmHalf()->GetPCSlider(),
                                          Frame()->GetPCBtmHalf()->GetPCCacheBar()};
        for (int view = 0; view < 4; ++view)
            windows.push_back(Canvas(view));
        for (wxWindow* window : windows)
            window->Connect(wxEVT_PAINT, wxPaintEventHandler(PaintCounter_cls::OnPaint), nullptr, &counter);
        const double before = ProcessorMillis();
        const wxStopWatch watch;
        Rest(kRestMillis);
        const double share = (ProcessorMillis() - before) / double(watch.Time());
        for (wxWindow* window : windows)
            window->Disconnect(wxEVT_PAINT, wxPaintEventHandler(PaintCounter_cls::OnPaint), nullptr,
                               &counter);
        EXPECT_LT(share, 0.01);
        EXPECT_EQ(counter.mCount, 0);
        RecordProperty("share", std::to_string(share));
        std::printf("at rest: %.3f %% of a core\n", 100.0 * share);
    }
};

TEST_F(Idle, NothingHappensWithPaintedData) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    Menu(ID_VIEW_PANEL_TYPE_3);
    ASSERT_TRUE(PumpUntil([] { return Hub()->mpCPDataSeqCtrl->IsTheIndexLoaded(3); }));
    ASSERT_TRUE(Settle());
    ExpectQuiet();
}

TEST_F(Idle, NothingHappensWithoutData) { ExpectQuiet(); }

TEST_F(Idle, ABrokenFrameIsNotTriedOverAndOver) {
    ASSERT_TRUE(OpenAndPaint(Root() + "tests/data/bad/binary/count_negative/snap0000.bin"));
    ExpectQuiet();
}

} // namespace
