// Layouts, the row of controls over a view, its keys, the Extra Panel, the message line, odd window shapes.
#include <cmath>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/menu.h>
#include <wx/tglbtn.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsGLExtraFrame.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"

namespace {

class Views : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        mSize = Frame()->GetSize();
        mPlace = Frame()->GetPosition();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        ResetViews();
    }
    void TearDown() override {
        if (Frame()->GetSize() != mSize) Frame()->SetSize(wxRect(mPlace, mSize));
        GuiTest::TearDown();
    }
    wxSize mSize;
    wxPoint mPlace;
    static wxRect Place(int view) { return Canvas(view)->GetScreenRect(); }
    static bool IsAbout(int a, int b) { return std::abs(a - b) <= 12; }
    static int CountShown() {
        int shown = 0;
        for (int view = 0; view < 4; ++view)
            shown += Canvas(view)->IsShownOnScreen();
        return shown;
    }
    static void ShowOnlyData(int view) {
        HideAllButData(view);
        Menu(ID_REFRESH_GL);
    }
    static wxChoice* Combo(int view, const wxString& tip) {
        return dynamic_cast<wxChoice*>(FindByTip(Frame()->GetPCGLCanvasCtrl(view), tip));
    }
};

TEST_F(Views, FiveLayoutsByTheirKeys) {
    Canvas(0)->SetFocus();
    Key('2', wxMOD_ALT);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(CountShown(), 2);
    EXPECT_TRUE(Place(0).GetBottom() < Place(1).GetTop() && IsAbout(Place(0).x, Place(1).x)) << "above";
    EXPECT_TRUE(IsAbout(Place(0).height, Place(1).height));
    Key('3', wxMOD_ALT);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(CountShown(), 2);
    EXPECT_TRUE(Place(0).GetRight() < Place(1).GetLeft() && IsAbout(Place(0).y, Place(1).y)) << "beside";
    EXPECT_TRUE(IsAbout(Place(0).width, Place(1).width));
    for (const int key : {'4', '5'}) {
        Key(key, wxMOD_ALT);
        ASSERT_TRUE(Settle());
        EXPECT_EQ(CountShown(), 4);
        const int right = key == '4' ? 1 : 2; // of view 0: rows first, or columns first
        EXPECT_TRUE(IsAbout(Place(0).y, Place(right).y) && Place(0).GetRight() < Place(right).x) << char(key);
        EXPECT_TRUE(IsAbout(Place(0).x, Place(3 - right).x) && Place(0).GetBottom() < Place(3 - right).y);
        for (int view = 1; view < 4; ++view)
            EXPECT_TRUE(IsAbout(Place(0).width, Place(view).width) &&
                        IsAbout(Place(0).height, Place(view).height));
    }
    for (int view = 0; view < 4; ++view)
        EXPECT_GT(Grab(view).CountLit(60), 100) << "every view has a picture";
    Click(Canvas(2), wxPoint(90, 90));
    EXPECT_EQ(GpCurrentGLPanel, Canvas(2));
    Key('1', wxMOD_ALT);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(CountShown(), 1);
    EXPECT_EQ(GpCurrentGLPanel, Canvas(0)) << "keys and dialogs are those of a view that is seen";
    EXPECT_TRUE(Frame()->GetMenuBar()->IsChecked(ID_VIEW_PANEL_TYPE_0));
    EXPECT_EQ(Canvas(2)->GetDisplayMode(), 1) << "hidden views keep their settings";
}

TEST_F(Views, KeysPickTheSideOfTheActiveView) {
    Canvas(0)->SetFocus();
    const struct {
        int mKey, mModifier, mMode;
    } keys[] = {{'1', 0, 1},
                {'3', 0, 3},
                {'7', 0, 6},
                {'1', wxMOD_CONTROL, 2},
                {'3', wxMOD_CONTROL, 4},
                {'7', wxMOD_CONTROL, 5},
                {WXK_NUMPAD_END, wxMOD_CONTROL, 2},
                {WXK_NUMPAD_HOME, wxMOD_CONTROL, 5},
                {'0', 0, 0}};
    for (const auto& key : keys) {
        Key(key.mKey, key.mModifier);
        ASSERT_TRUE(Settle());
        EXPECT_EQ(Canvas(0)->GetDisplayMode(), key.mMode) << char(key.mKey);
        EXPECT_EQ(Canvas(0)->IsOrthographic(), key.mMode != 0);
        EXPECT_EQ(Combo(0, "Point of View")->GetSelection(), key.mMode) << "the control follows";
    }
    Key('5');
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Canvas(0)->GetGeometry(), 1);
    EXPECT_EQ(Combo(0, "Geometry")->GetSelection(), 1);
    Menu(ID_UNDO);
    EXPECT_EQ(Canvas(0)->GetGeometry(), 0) << "a key's choice is a step as the control's is";
    EXPECT_EQ(Combo(0, "Geometry")->GetSelection(), 0);
    Menu(ID_UNDO);
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 5);
    Menu(ID_REDO);
    Menu(ID_REDO);
    EXPECT_EQ(Canvas(0)->GetGeometry(), 1);
    Key('5');
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Canvas(0)->GetGeometry(), 0);
}

TEST_F(Views, AxisViewsShowParticlesWhereTheProjectionSays) {
    for (int mode = 1; mode <= 6; ++mode) {
        Canvas(0)->SetDisplayMode(mode);
        Canvas(0)->mGLOrthoScale.mValue = 40.0f;
        ShowOnlyData(0);
        int inside = 0;
        EXPECT_GT(ShareLit(0, 0, &inside), 0.99) << mode;
        EXPECT_GT(inside, 300);
        EXPECT_LT(Grab(0).CountLit(60), Grab(0).mW * Grab(0).mH / 4) << "most of the picture is empty";
        // By hand: half the side is half the scale; which axis points right and which up.
        const int right[7] = {0, 1, 1, 0, 0, 0, 0};
        const int up[7] = {0, 2, 2, 2, 2, 1, 1};
        const double sign[7] = {0, -1, 1, 1, -1, -1, 1};
        const double pos[3] = {3.0, 5.0, 7.0};
        double x = 0.0;
        double y = 0.0;
        ASSERT_TRUE(ProjectToWindow(0, pos, &x, &y));
        const Picture_st picture = Grab(0);
        const double pixels = picture.mW / 40.0;
        EXPECT_NEAR(x - picture.mW / 2.0, sign[mode] * pos[right[mode]] * pixels, 1.0) << mode;
        EXPECT_NEAR(picture.mH / 2.0 - y, pos[up[mode]] * pixels, 1.0) << mode;
    }
}

TEST_F(Views, ControlsChangeTheView) {
    Choose(Combo(0, "Point of View"), 6);
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 6);
    EXPECT_EQ(Canvas(0)->GetGeometry(), 1) << "an axis view is orthographic";
    Choose(Combo(0, "Geometry"), 0);
    EXPECT_EQ(Canvas(0)->GetGeometry(), 0);
    Choose(Combo(0, "Point of View"), 0);
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 0);

    GLCanvasCtrl_cls* panel = Frame()->GetPCGLCanvasCtrl(0);
    const struct {
        const char* mTip;
        ConfItemBOOL_cls* mItem;
    } toggles[] = {{"Show/Hide Message", &Canvas(0)->mShowMessage},
                   {"Show/Hide Item", &Canvas(0)->mShowItems},
                   {"Show/Hide Grid", &Canvas(0)->mShowGrid},
                   {"Show/Hide Data", &Canvas(0)->mShowData}};
    for (const auto& toggle : toggles) {
        wxWindow* button = FindByTip(panel, toggle.mTip);
        ASSERT_TRUE(button) << toggle.mTip;
        const Picture_st before = Grab(0);
        ClickOn(button);
        ASSERT_TRUE(Settle());
        EXPECT_FALSE(toggle.mItem->mValue) << toggle.mTip;
        EXPECT_NE(Grab(0).mRGB, before.mRGB) << toggle.mTip << " takes something away";
    }
    EXPECT_EQ(Grab(0).CountLit(30), 0) << "nothing is left";
    ClickOn(FindByTip(panel, "Show/Hide Data"));
    ASSERT_TRUE(Settle());
    EXPECT_GT(ShareLit(0, 0), 0.99);
    wxWindow* pivot = FindByLabel(panel, "Pivot Follows Anchor");
    ASSERT_TRUE(pivot);
    Click(pivot, wxPoint(8, pivot->GetClientSize().y / 2));
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(Canvas(0)->mPivotMode.mValue);
}

TEST_F(Views, NarrowPanelsHideTheirControlsOneByOne) {
    GLCanvasCtrl_cls* panel = Frame()->GetPCGLCanvasCtrl(0);
    const auto count = [panel](int width) {
        wxSizeEvent event(wxSize(width, 300));
        panel->ProcessWindowEvent(event);
        return (FindByTip(panel, "Geometry") ? 8 : 0) + (FindByTip(panel, "Pivot Follows Anchor") ? 4 : 0) +
               (FindByTip(panel, "Point of View") ? 2 : 0) + (FindByTip(panel, "Show/Hide Data") ? 1 : 0);
    };
    EXPECT_EQ(count(420), 15);
    EXPECT_EQ(count(419), 7);
    EXPECT_EQ(count(300), 7);
    EXPECT_EQ(count(299), 3);
    EXPECT_EQ(count(219), 1);
    EXPECT_EQ(count(119), 0);
    EXPECT_EQ(count(420), 15);
}

TEST_F(Views, ExtraPanelCopiesViewNought) {
    Canvas(0)->SetFocus();
    Key('0', wxMOD_ALT);
    wxTopLevelWindow* extra = WaitForWindow("Extra");
    ASSERT_TRUE(extra);
    MainGLCanvas_cls* canvas = Canvas(4);
    ASSERT_TRUE(PumpUntil([canvas] { return canvas->GetPaintCount() > 0; }));
    ASSERT_EQ(Combo(4, "Point of View")->GetCount(), 9u);
    EXPECT_EQ(Combo(0, "Point of View")->GetCount(), 8u) << "the copy is offered there alone";
    Choose(Combo(4, "Point of View"), 8);
    EXPECT_EQ(canvas->GetDisplayMode(), 8);
    const wxPoint middle(120, 120);
    const int paints = canvas->GetPaintCount();
    Drag(Canvas(0), middle, middle + wxPoint(50, 20));
    ASSERT_TRUE(PumpUntil([canvas, paints] { return canvas->GetPaintCount() > paints; })) << "it follows";
    ASSERT_TRUE(Settle());
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(canvas->mCamera.mCCamPos.mPos[i], Canvas(0)->mCamera.mCCamPos.mPos[i], 1e-9);
    // The whole screen, without the row of controls, and back.
    extra->Raise();
    ASSERT_TRUE(PumpUntil([extra] { return extra->IsActive(); }));
    canvas->SetFocus();
    Key(WXK_RETURN, wxMOD_ALT);
    ASSERT_TRUE(PumpUntil([extra] { return extra->IsFullScreen(); }));
    EXPECT_FALSE(FindByTip(Frame()->GetPCGLCanvasCtrl(4), "Show/Hide Data"));
    Key(WXK_ESCAPE);
    ASSERT_TRUE(PumpUntil([extra] { return !extra->IsFullScreen(); }));
    EXPECT_TRUE(FindByTip(Frame()->GetPCGLCanvasCtrl(4), "Show/Hide Data"));
    canvas->SetThisToBeActiveGL();
    extra->Close();
    ASSERT_TRUE(PumpUntil([extra] { return !extra->IsShown(); }));
    EXPECT_EQ(GpCurrentGLPanel, Canvas(0));
    EXPECT_FALSE(Frame()->GetMenuBar()->IsChecked(ID_VIEW_EXTRA));
}

TEST_F(Views, MessageLineTellsFileTimeAndCount) {
    const wxString text = Canvas(0)->GetMessageText();
    EXPECT_TRUE(text.Contains("melt0000.bin:1--0 0")) << text;
    EXPECT_TRUE(text.Contains(":PNum=1372*1:MilliSec")) << text;
    EXPECT_TRUE(text.StartsWith("") && text.Contains("Time=0:")) << text;
    EXPECT_TRUE(text.Contains("GMem0 = 10 GMem1 = 10 Count = ") || text.Contains("GMem0 = ")) << text;
    Canvas(0)->mGLPersAngle.mValue = 120.0f;
    Menu(ID_REFRESH_GL);
    EXPECT_TRUE(
        Canvas(0)->GetMessageText().Contains("View angle is limited to 120 deg in perspective view."));
    Canvas(0)->mGLPersAngle.mValue = 35.0f;
    Menu(ID_REFRESH_GL);
    EXPECT_FALSE(Canvas(0)->GetMessageText().Contains("limited"));
}

TEST_F(Views, WithoutDataTheMessageLineHasNoTime) {
    Hub()->CloseData();
    Menu(ID_REFRESH_GL);
    EXPECT_TRUE(Canvas(0)->GetMessageText().Contains("\nTime=Not Defined:PNum=0*1:"))
        << Canvas(0)->GetMessageText();
}

TEST_F(Views, WideAndTallWindowsShowTheSameScene) {
    ShowOnlyData(0);
    for (const wxSize& size : {wxSize(1500, 480), wxSize(700, 1100), wxSize(900, 800)}) {
        Frame()->SetSize(size);
        ASSERT_TRUE(PumpUntil([&size] { return Frame()->GetSize() == size; })) << size.x;
        ASSERT_TRUE(PumpUntil([] {
            const Picture_st picture = Grab(0);
            return wxSize(picture.mW, picture.mH) == Canvas(0)->GetClientSize();
        })) << "painted at the new size";
        ASSERT_TRUE(Settle());
        const wxSize canvas = Canvas(0)->GetClientSize();
        const Picture_st picture = Grab(0);
        EXPECT_EQ(picture.mW, canvas.x);
        EXPECT_EQ(picture.mH, canvas.y);
        EXPECT_GT(ShareLit(0, 0), 0.98) << size.x << " x " << size.y;
    }
}

TEST_F(Views, TallWindowHasBandsAboveAndBelow) {
    Menu(ID_VIEW_PANEL_TYPE_2);
    ShowOnlyData(0);
    Frame()->SetSize(800, 1100);
    ASSERT_TRUE(PumpUntil([] { return Frame()->GetSize().y == 1100; }));
    ASSERT_TRUE(Settle());
    // A camera near the particles fills the square picture; the bands beside it stay dark.
    Wheel(Canvas(0), Middle(Canvas(0)), -6);
    ASSERT_TRUE(Settle());
    const Picture_st picture = Grab(0);
    ASSERT_GT(picture.mH, picture.mW + 40);
    int band = 0;
    for (int y = 0; y < (picture.mH - picture.mW) / 2 - 2; ++y)
        for (int x = 0; x < picture.mW; ++x)
            band += picture.Brightness(x, y) > 30;
    EXPECT_EQ(band, 0);
    EXPECT_GT(picture.CountLit(60), picture.mW * picture.mW / 2);
}

} // namespace
