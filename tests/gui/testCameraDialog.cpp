// The dialog "View and Camera Config": every control, with undo, and what it follows.
#include <wx/stattext.h>

#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COLORCURVE/EDITOR/clsColorCurveGUI.h"
#include "FilterTest.h"
#include "GL/VIEW/clsCameraPathCtrl.h"
#include "GL/VIEW/clsCameraPathGUI.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GL/VIEW/clsViewPage.h"
#include "GroupValue.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsColourDialogEX.h"

namespace {

using GUI = CameraPathGUI_cls;
using Page = ViewPage_cls;

class CameraDialog : public FilterTest {
protected:
    void SetUp() override {
        FilterTest::SetUp();
        ResetViews();
        Canvas(0)->SetThisToBeActiveGL();
        mpGUI = OpenDialog<GUI>(ID_CAMERA_PATH, "View and Camera Config");
        ASSERT_TRUE(mpGUI);
        EXPECT_EQ(mpGUI, GUI::mspCThis);
        mpGUI->Move(700, 60);
        Settle();
    }
    void TearDown() override {
        mpGUI->CloseEXKey();
        while (GCUndoList.IsUndoable())
            Hub()->Undo();
        ResetViews();
        FilterTest::TearDown();
    }
    static wxString TextOfPaths() {
        return Hub()->mpCCameraPath->Serialize() + Hub()->mpCAnchorPath->Serialize();
    }
    static wxString TextOfSettings() { return Shared().SerializeStaticMember() + Canvas(0)->Serialize(); }
    static wxString TextOfView() {
        const PositionAndDirection_cls& camera = *Canvas(0)->mCamera.GetPCCameraPosition();
        const double* pivot = Canvas(0)->mCamera.GetPCAnchorPosition();
        wxString text = Canvas(0)->Serialize();
        for (const double* three : {camera.mPos, camera.mFront, camera.mUp, pivot})
            text += wxString::Format("%.12g %.12g %.12g\n", three[0], three[1], three[2]);
        return text;
    }
    /// Dialogs come back as they were left.
    void OpenFold(int which) {
        if (mpGUI->GetPCFold(which)->GetLabel().StartsWith("[+]")) PressFold(which);
    }
    void PressFold(int which) {
        ClickOn(mpGUI->GetPCFold(which));
        Arrive();
    }
    NumField_cls* ViewField(int row, int k = 0) {
        return dynamic_cast<NumField_cls*>(mpGUI->GetPCPage(0)->GetField(row, k));
    }
    GUI* mpGUI = nullptr;
};

TEST_F(CameraDialog, EachFieldIsAStep) {
    EXPECT_EQ(ChangeAll([&] { return mpGUI->GetPCPage(0); }, "view", TextOfView), 16);
    OpenFold(0);
    EXPECT_EQ(ChangeAll([&] { return mpGUI->GetPCAdvanced(); }, "advanced", TextOfSettings), 5);
    OpenFold(1);
    EXPECT_EQ(ChangeAll([&] { return mpGUI->GetPCPath(); }, "camera", TextOfPaths), 13);
    Snap("camera_dialog");
    for (int k = 0; k < 3; ++k)
        EXPECT_TRUE(mpGUI->GetPCAdvanced()->GetField(0, k)) << k;
    ASSERT_TRUE(FindByLabel(mpGUI, "Close"));
    ClickOn(FindByLabel(mpGUI, "Close"));
    Arrive();
    EXPECT_FALSE(mpGUI->IsShown());
}

TEST_F(CameraDialog, NumbersMoveTheViewsCamera) {
    MainGLCanvas_cls& canvas = *Canvas(0);
    TypeInto(ViewField(Page::ROW_PIVOT, 1), "2");
    EXPECT_EQ(Shared().msCAnchorPos[1], 2.0);
    TypeInto(ViewField(Page::ROW_TRANSLATE, 0), "-5");
    const PositionAndDirection_cls& camera = *canvas.mCamera.GetPCCameraPosition();
    EXPECT_EQ(camera.mPos[0], -5.0);
    EXPECT_EQ(Shared().msCAnchorPos[1], 2.0) << "it looks at the pivot from there";
    // A turn takes the pivot along at its distance.
    const double far = canvas.mCamera.GetDistanceToAnchor();
    TypeInto(ViewField(Page::ROW_ROTATE, 1), "0");
    TypeInto(ViewField(Page::ROW_ROTATE, 2), "90");
    EXPECT_NEAR(camera.mFront[1], 1.0, 1e-4);
    EXPECT_EQ(camera.mPos[0], -5.0);
    EXPECT_NEAR(Shared().msCAnchorPos[1], camera.mPos[1] + far, 1e-3);
    // The angle of the width belongs to that of the height.
    const wxSize size = canvas.GetPixelSize();
    TypeInto(ViewField(Page::ROW_ANGLE, 1), "90");
    EXPECT_NEAR(std::tan(double(canvas.mGLPersAngle.mValue) * M_PI / 360.0), double(size.y) / size.x, 1e-3);
    for (const char* angle : {"0", "180"}) {
        TypeInto(ViewField(Page::ROW_ANGLE), angle);
        EXPECT_EQ(canvas.mGLPersAngle.mValue, float(std::atof(angle)));
        Settle();
    }
    ClickOn(mpGUI->GetPCPage(0)->GetField(Page::ROW_GEOMETRY, 1));
    Arrive();
    EXPECT_NEAR(camera.mPos[0], -1.12 * 3.5, 1e-9);
    Menu(ID_UNDO);
    EXPECT_EQ(camera.mPos[0], -5.0);
    Menu(ID_REDO);
    // In a view along an axis the pivot alone can be moved; one that follows the path has no default.
    canvas.ChooseDisplayMode(3);
    Settle();
    EXPECT_FALSE(ViewField(Page::ROW_ROTATE)->IsEnabled());
    TypeInto(ViewField(Page::ROW_PIVOT, 2), "0.5");
    EXPECT_EQ(Shared().msCAnchorPosOrtho[2], 0.5);
    canvas.ChooseDisplayMode(7);
    Settle();
    EXPECT_FALSE(mpGUI->GetPCPage(0)->GetField(Page::ROW_GEOMETRY)->IsEnabled());
    const wxString before = TextOfView();
    mpGUI->GetPCPage(0)->SetViewToDefault();
    EXPECT_EQ(TextOfView(), before);
}

TEST_F(CameraDialog, ColourButtonsPaintAllViews) {
    OpenFold(0);
    const wxColour other(255, 0, 51);
    const wxString before = TextOfSettings();
    int k = 0;
    for (const auto* pCurve :
         {&Shared().mspCClrCurveBG, &Shared().mspCClrCurveOut, &Shared().mspCClrCurveTag}) {
        auto* button = dynamic_cast<ColorCurveBtn_cls*>(mpGUI->GetPCAdvanced()->GetField(0, k));
        ASSERT_TRUE(button) << k;
        ClickOn(button);
        Arrive();
        auto* editor = static_cast<ColorCurveGUI_cls*>(Hub()->mpCColorCurveCtrl->GetPCDialog());
        ASSERT_TRUE(editor && PumpUntil([&] { return editor->IsShown(); })) << k;
        EXPECT_EQ(Hub()->mpCColorCurveCtrl->GetPCCurve(), pCurve->get()) << k;
        wxWindow* swatch = FindByTip(editor, "Color where no curve is in use");
        ASSERT_TRUE(swatch) << k;
        wxColourDialogEX::sTestAnswer = other;
        ClickOn(swatch);
        Arrive();
        const float* color = (*pCurve)->mConstantColor.mValue;
        EXPECT_NEAR(color[0], 1.0f, 1e-6) << k;
        EXPECT_NEAR(color[2], 0.2f, 1e-6) << k;
        if (k == 0) {
            const Picture_st view = Grab(0);
            const unsigned char* pCorner = &view.mRGB[size_t(3 * (5 * view.mW + 5))];
            for (int c = 0; c < 3; ++c)
                EXPECT_NEAR(pCorner[c], c == 0 ? other.Red() : c == 1 ? other.Green() : other.Blue(), 1) << c;
        }
        editor->CloseEXKey();
        Arrive();
        Snap("camera_colours");
        ++k;
    }
    for (int step = 0; step < 3; ++step)
        Menu(ID_UNDO);
    EXPECT_EQ(TextOfSettings().ToStdString(), before.ToStdString());
}

TEST_F(CameraDialog, DefaultAlongAnAxisIsAStepOfTheFreeCamera) {
    PositionAndDirection_cls& free = Canvas(0)->mCamera.GetFreeCamera();
    free.Set(3, 4, 5);
    Canvas(0)->ChooseDisplayMode(DISPLAY_TO_MINUS_Y);
    Settle();
    const unsigned steps = GCUndoList.GetCurrent();
    mpGUI->GetPCPage(0)->SetViewToDefault();
    EXPECT_NE(free.mPos[0], 3);
    Menu(ID_UNDO);
    EXPECT_EQ(free.mPos[0], 3);
    EXPECT_EQ(GCUndoList.GetCurrent(), steps);
    Menu(ID_REDO);
    EXPECT_NE(free.mPos[0], 3);
}

TEST_F(CameraDialog, TabsAndRowsFollowTheViews) {
    EXPECT_EQ(mpGUI->GetPCNotebook()->GetSelection(), 0);
    EXPECT_EQ(mpGUI->GetPCNotebook()->GetPageText(4), "Extra");
    Frame()->GetPCTopHalf()->SplitPanel(3);
    Settle();
    Canvas(2)->SetThisToBeActiveGL();
    EXPECT_EQ(mpGUI->GetPCNotebook()->GetSelection(), 2);
    EXPECT_EQ(mpGUI->GetPCActiveGLCanvas(), Canvas(2));
    mpGUI->GetPCNotebook()->SetSelection(1);
    EXPECT_EQ(mpGUI->GetPCActiveGLCanvas(), Canvas(1));
    OpenFold(0);
    EXPECT_TRUE(mpGUI->GetPCAdvanced()->IsShown());
    EXPECT_TRUE(mpGUI->GetPCFold(0)->GetLabel().StartsWith("[-]"));
    auto* scale = dynamic_cast<NumField_cls*>(mpGUI->GetPCAdvanced()->GetField(1, 2));
    TypeInto(scale, "7");
    EXPECT_EQ(Canvas(1)->mGLOrthoScale.mValue, 7.0f) << "of the view in front";
    PressFold(0);
    EXPECT_FALSE(mpGUI->GetPCAdvanced()->IsShown());
    Canvas(0)->SetThisToBeActiveGL();
    EXPECT_FALSE(mpGUI->GetPCPage(0)->GetField(Page::ROW_FISHEYE)->IsShown());
    Choose(mpGUI->GetPCPage(0)->GetField(Page::ROW_GEOMETRY), 2);
    EXPECT_EQ(Canvas(0)->GetGeometry(), 2);
    EXPECT_TRUE(mpGUI->GetPCPage(0)->GetField(Page::ROW_FISHEYE)->IsShown());
    Menu(ID_UNDO);
    EXPECT_EQ(Canvas(0)->GetGeometry(), 0);
    EXPECT_FALSE(mpGUI->GetPCPage(0)->GetField(Page::ROW_FISHEYE)->IsShown());
}

TEST_F(CameraDialog, FastTurnsAreToldAndPathsEased) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    OpenFold(1);
    auto* warning = dynamic_cast<wxStaticText*>(mpGUI->GetPCPath()->GetField(GUI::ROW_WARNING));
    Hub()->mpCCameraPath->mCLookAnchor.mValue = false;
    Hub()->mpCTimeCtrl->SetAnimInterpNative(1);
    Hub()->mpCTimeCtrl->SetWAMinNative(0);
    Hub()->mpCTimeCtrl->SetWAMaxNative(Hub()->mpCTimeCtrl->GetMaxFrame());
    for (const double time : {0.0, 0.5, 1.0}) {
        const double angles[3] = {0, 0, time * 100.0 * (time + 1.0)};
        SceneObj_cls::SetKeyAt(Hub()->mpCCameraPath->mpCRotate, angles, time);
    }

    EXPECT_TRUE(PumpUntil([&] { return warning->GetLabel().StartsWith("Turns by "); }, 5000));
    Snap("camera_warning");
    const auto kinds = [] {
        unsigned all = 0;
        for (const KeyFrame_cls& key : Hub()->mpCCameraPath->mpCRotate->mVParams[2].GetKeys())
            all += key.mInterpType == INTERP_HERMITE_AUTO;
        return all;
    };
    for (Parameters_cls& param : Hub()->mpCCameraPath->mpCRotate->mVParams)
        for (KeyFrame_cls key : std::vector<KeyFrame_cls>(param.GetKeys())) {
            key.mInterpType = INTERP_STEP;
            param.SetKey(key, Parameters_cls::kCurrent);
        }
    EXPECT_EQ(kinds(), 0u);
    ClickOn(mpGUI->GetPCPath()->GetField(GUI::ROW_EASE));
    Arrive();
    EXPECT_EQ(kinds(), 3u);
    Menu(ID_UNDO);
    EXPECT_EQ(kinds(), 0u);
}

} // namespace
