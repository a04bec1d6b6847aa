// What must hold whatever the user's window, screen and files are like: nothing is cut, dialogs stay on the
// screen, areas stay in the film, X errors stay in their scope.
#include <fstream>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/display.h>
#include <wx/notebook.h>
#include <wx/stattext.h>
#include <wx/utils.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/BASE/clsXErrorScope.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsPlayCtrlGUI.h"

#include <X11/Xlib.h>

namespace {

class Fit : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        mSize = Frame()->GetSize();
    }
    void TearDown() override {
        Menu(ID_VIEW_PANEL_TYPE_0);
        SetWidth(mSize.x);
        GuiTest::TearDown();
    }
    static void SetWidth(int width) {
        Frame()->SetSize(width, Frame()->GetSize().y);
        ASSERT_TRUE(PumpUntil([width] { return Frame()->GetSize().x == width; }));
        Settle();
    }
    /// Every shown child has the room it asks for, inside its parent.
    static void ExpectWhole(wxWindow* parent, const std::string& where) {
        const wxRect room(parent->GetClientSize());
        for (wxWindow* child : parent->GetChildren()) {
            if (!child->IsShown() || dynamic_cast<MainGLCanvas_cls*>(child)) continue;
            EXPECT_TRUE(room.Contains(child->GetRect())) << where << ": " << child->GetLabel();
            EXPECT_GE(child->GetSize().x, child->GetEffectiveMinSize().x)
                << where << ": " << child->GetLabel();
        }
    }
    static void OpenText(const std::string& text) {
        const TempDir_cls dir;
        const std::string path = dir / "areas.mrp";
        std::ofstream(path) << text;
        Frame()->OpenProject(wxString::FromUTF8(path));
        Settle();
    }
    static void ExpectAreasInFilm() {
        EXPECT_LE(Time()->GetWAMin(), Time()->GetWAMax());
        EXPECT_LE(Time()->GetWAMax(), Time()->GetMaxFrame());
        EXPECT_LE(Time()->GetAAMin(), Time()->GetAAMax());
        EXPECT_LE(Time()->GetAAMax(), Time()->GetMaxFrame());
        EXPECT_TRUE(Time()->IsWorkingArea(Time()->GetFrame()));
    }

    wxSize mSize;
};

TEST_F(Fit, ThePlayPanelIsWholeAtEveryWidth) {
    wxWindow* play = Frame()->GetPCBtmHalf()->GetPCPlayCtrl();
    const int wide = play->GetSize().y;
    for (const int width : {1200, 1000, 800, 660, 1200}) {
        SetWidth(width);
        const std::string where = "at " + std::to_string(width);
        ExpectWhole(play, where);
        EXPECT_GE(play->GetParent()->GetSize().y, play->GetRect().GetBottom()) << where;
        ASSERT_TRUE(FindByLabel(play, "Abort")) << where;
    }
    EXPECT_EQ(play->GetSize().y, wide) << "two rows again";
}

TEST_F(Fit, ControlsAboveAViewGetShorterAndAreNotCut) {
    const auto controls = [](int view) { return Frame()->GetPCGLCanvasCtrl(view); };
    SetWidth(1200);
    EXPECT_TRUE(FindByLabel(controls(0), "Pivot Follows Anchor"));
    Menu(ID_VIEW_PANEL_TYPE_4);
    for (int view = 0; view < 4; ++view) {
        EXPECT_TRUE(FindByLabel(controls(view), "Pivot")) << view;
        EXPECT_TRUE(FindByTip(controls(view), "Fit View")) << view;
        ExpectWhole(controls(view), "four views");
    }
    for (const int width : {1000, 930}) {
        SetWidth(width);
        EXPECT_FALSE(FindByTip(controls(0), "Geometry")) << width;
        EXPECT_TRUE(FindByTip(controls(0), "Pivot Follows Anchor")) << width;
        for (int view = 0; view < 4; ++view)
            ExpectWhole(controls(view), "at " + std::to_string(width));
    }
}

TEST_F(Fit, ThePreferenceDialogShowsItsCaptionsWhole) {
    Menu(ID_PREFERENCE);
    wxTopLevelWindow* dialog = WaitForWindow("Preference");
    ASSERT_TRUE(dialog);
    wxNotebook* book = nullptr;
    for (wxWindow* child : dialog->GetChildren())
        if (!book) book = dynamic_cast<wxNotebook*>(child);
    ASSERT_TRUE(book);
    book->SetSelection(1);
    Settle();
    for (const wxString name :
         {"Memory Limit(MB)", "Calculation", "Critical", "NowUsed", "Z-Sort Algorithm"}) {
        wxWindow* label = FindByLabel(dialog, name);
        ASSERT_TRUE(label) << name;
        int width = 0;
        int height = 0;
        const wxFont font = label->GetFont();
        label->GetTextExtent(name, &width, &height, nullptr, nullptr, &font);
        EXPECT_GE(label->GetSize().x, width) << name;
    }
    Key(WXK_ESCAPE);
    EXPECT_FALSE(dialog->IsShown());
}

TEST_F(Fit, ADialogComesBackWhereItWasAndOnTheScreen) {
    Menu(ID_PREFERENCE);
    wxTopLevelWindow* dialog = WaitForWindow("Preference");
    ASSERT_TRUE(dialog);
    const auto reopen = [dialog] {
        dialog->Close();
        Settle();
        EXPECT_FALSE(dialog->IsShown());
        Menu(ID_PREFERENCE);
        EXPECT_TRUE(PumpUntil([dialog] { return dialog->IsShown(); }));
        Settle();
    };
    const wxPoint place(120, 90);
    dialog->Move(place);
    ASSERT_TRUE(PumpUntil([&] { return dialog->GetPosition() == place; }));
    reopen();
    EXPECT_EQ(dialog->GetPosition(), place);
    const wxRect screen = wxDisplay(0u).GetClientArea();
    ASSERT_TRUE(PumpUntil([&] {
        dialog->Move(screen.GetRight() - 20, screen.GetBottom() - 20); // a busy window manager may drop one
        return dialog->GetPosition().x > screen.GetRight() - 40;
    }));
    Settle();
    reopen();
    EXPECT_TRUE(screen.Contains(dialog->GetScreenRect()));
    dialog->Close();
    Settle();
}

TEST_F(Fit, AreasOfAProjectAreBroughtIntoTheFilm) {
    OpenText("TimeMaxFrame=20\nTimeWorkAreaMin=15\nTimeWorkAreaMax=4\nTimeActiveAreaMin=0\nTImeActiveAreaMax="
             "900\n");
    ExpectAreasInFilm();
    EXPECT_EQ(Time()->GetWAMin(), 4);
    EXPECT_EQ(Time()->GetWAMax(), 15);
    OpenText("TimeMaxFrame=20\nTimeWorkAreaMin=4000000000\nTimeWorkAreaMax=4100000000\n"
             "TimeActiveAreaMin=50\nTImeActiveAreaMax=30\n");
    ExpectAreasInFilm();
    EXPECT_EQ(Time()->GetWAMin(), 0);
    EXPECT_EQ(Time()->GetWAMax(), 20);
}

TEST_F(Fit, AShorterSequenceIsPlayedToItsEnd) {
    OpenText("TimeMaxFrame=100\nTimeWorkAreaMin=50\nTimeWorkAreaMax=90\nTimeActiveAreaMin=40\n"
             "TImeActiveAreaMax=95\n");
    ASSERT_TRUE(OpenAndPaint(Root() + "examples/galaxy_small_bin/galaxy0000.bin"));
    ExpectAreasInFilm();
    EXPECT_EQ(Time()->GetWAMin(), 0);
    const int last = Time()->GetMaxFrame();
    EXPECT_EQ(Time()->GetWAMax(), last);
    Time()->mFrameInterval = 0;
    Time()->StartPlayCommand(1);
    EXPECT_TRUE(PumpUntil([last] { return !Time()->IsPlaying() && Time()->GetFrame() == last; }, 20000));
    Time()->MoveFrameCommand(1);
    EXPECT_EQ(Time()->GetFrame(), last);
    Time()->mFrameInterval = 30;
}

TEST_F(Fit, AFilmLongerThanItsDataIsPlayedToItsEnd) {
    ASSERT_TRUE(OpenAndPaint(Root() + "examples/galaxy_small_bin/galaxy0000.bin"));
    const int data = Time()->GetMaxFrame();
    Time()->SetMaxFrameNative(data + 5);
    Time()->SetWAMaxNative(data + 5);
    Time()->SetFrameCommand(data - 1);
    Time()->mFrameInterval = 0;
    Time()->StartPlayCommand(1);
    EXPECT_TRUE(PumpUntil([data] { return !Time()->IsPlaying() && Time()->GetFrame() == data + 5; }, 20000));
    EXPECT_TRUE(Settle());
    Time()->mFrameInterval = 30;
}

TEST_F(Fit, AnXErrorStaysInItsScope) {
    constexpr ::Window kNoWindow = 0x7fffff;
    const XErrorScope_cls outer;
    EXPECT_FALSE(outer.HasFailed());
    {
        const XErrorScope_cls inner;
        XMapWindow(wxGetX11Display(), kNoWindow); // outside a scope this would end the process
        EXPECT_TRUE(inner.HasFailed());
    }
    EXPECT_FALSE(outer.HasFailed());
}

} // namespace
