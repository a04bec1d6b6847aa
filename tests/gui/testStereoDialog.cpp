// The dialog "Stereogram Configure": every control by hand, with undo, and what it follows.
#include <string>

#include <wx/stattext.h>

#include "FilterTest.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PARAM/clsParamGroup.h"
#include "SCENE/clsStereoGram.h"
#include "SCENE/clsStereoGramGUI.h"
#include "WIDGET/clsKeyButton.h"

namespace {

using GUI = StereoGramGUI_cls;
using Eyes = StereoGram_cls;

class StereoDialog : public FilterTest {
protected:
    void SetUp() override {
        FilterTest::SetUp();
        mpGUI = OpenDialog<GUI>(ID_STEREOGRAM, "Stereogram Configure");
        ASSERT_TRUE(mpGUI);
    }
    void TearDown() override {
        mpGUI->CloseEXKey();
        Ctrl().Reset();
        Ctrl().UpdateTLShown();
        FilterTest::TearDown();
    }
    static Eyes& Ctrl() { return *Hub()->mpCStereoGram; }
    static wxString TextOfEyes() { return Ctrl().Serialize(); }
    wxWindow* Field(int row, int k = 0) const { return mpGUI->GetPCPanel()->GetField(row, k); }
    void PressButton(const wxString& label) {
        wxWindow* button = FindByLabel(mpGUI, label);
        ASSERT_TRUE(button) << label;
        ClickOn(button);
        Arrive();
    }
    void Pick(int row, int item) {
        auto* choice = static_cast<wxChoice*>(Field(row));
        choice->SetSelection(item);
        Send(choice, wxEVT_CHOICE, item);
        Settle();
    }
    static bool IsOnTimeLines() {
        for (const TimelineRow& row : Strips()->GetRows())
            if (row.mpCGroup->GetPCGroup() == Ctrl().mpCParallax) return true;
        return false;
    }
    GUI* mpGUI = nullptr;
};

TEST_F(StereoDialog, EachFieldIsAStep) {
    Ctrl().mCType.mValue = Eyes::TYPE_TOE_IN;
    mpGUI->UpdateValues();
    EXPECT_EQ(ChangeAll([&] { return mpGUI->GetPCPanel(); }, "stereo", TextOfEyes), 5);
    EXPECT_TRUE(mVMessages.empty());
    const wxString before = TextOfEyes();
    ClickOn(mpGUI->GetPCPanel()->GetKeyButton(GUI::ROW_PARALLAX));
    Arrive();
    EXPECT_TRUE(Ctrl().mpCParallax->mVParams[0].mbTimeDepend.mValue);
    Menu(ID_UNDO);
    EXPECT_EQ(TextOfEyes().ToStdString(), before.ToStdString());
}

TEST_F(StereoDialog, FromOneCameraToDepthByHand) {
    EXPECT_FALSE(IsOnTimeLines());
    for (const int row : {GUI::ROW_TYPE, GUI::ROW_PARALLAX, GUI::ROW_TOE_IN, GUI::ROW_FILE})
        EXPECT_FALSE(Field(row)->IsEnabled()) << row;
    Choose(Field(GUI::ROW_CAMERA), Eyes::TYPE_OFF_AXIS);
    EXPECT_TRUE(IsOnTimeLines());
    EXPECT_TRUE(Field(GUI::ROW_TYPE)->IsEnabled());
    EXPECT_FALSE(Field(GUI::ROW_TOE_IN)->IsEnabled());
    Choose(Field(GUI::ROW_CAMERA), Eyes::TYPE_TOE_IN);
    EXPECT_TRUE(Field(GUI::ROW_TOE_IN)->IsEnabled());
    Choose(Field(GUI::ROW_TYPE), Eyes::OUTPUT_RED_CYAN_DUBOIS);
    EXPECT_TRUE(FindByLabel(mpGUI, "Both eyes stand at one place: press Fit."));
    Snap("stereo_dialog");
    const double far = Canvas(0)->mCamera.GetDistanceToAnchor();
    PressButton("Fit");
    EXPECT_NEAR(Ctrl().GetParallax(0.0), far / 30.0, 1e-9 * far);
    EXPECT_FALSE(FindByLabel(mpGUI, "Both eyes stand at one place: press Fit."));
    EXPECT_NEAR(std::stod(static_cast<wxStaticText*>(Field(GUI::ROW_FOCUS))->GetLabel().ToStdString()), far,
                1e-4 * far);
    TypeInto(dynamic_cast<NumField_cls*>(Field(GUI::ROW_TOE_IN)), "0");
    EXPECT_TRUE(FindByLabel(mpGUI, "endless"));
    // No is no, yes is one step.
    mAnswers = {false};
    const wxString set = TextOfEyes();
    PressButton("Set to Defalt");
    EXPECT_EQ(TextOfEyes(), set);
    EXPECT_TRUE(WasTold("Set to default ?"));
    EXPECT_EQ(mVMessages.back().mTitle, "Query");
    mAnswers = {true};
    PressButton("Set to Defalt");
    EXPECT_EQ(TextOfEyes(), Eyes().Serialize());
    EXPECT_FALSE(IsOnTimeLines());
    Menu(ID_UNDO);
    EXPECT_EQ(TextOfEyes(), set);
    EXPECT_TRUE(IsOnTimeLines());
    EXPECT_TRUE(Field(GUI::ROW_TOE_IN)->IsEnabled()) << "the dialog follows";
    while (GCUndoList.IsUndoable())
        Menu(ID_UNDO);
    EXPECT_FALSE(IsOnTimeLines());
    PressButton("Close");
    EXPECT_FALSE(mpGUI->IsShown());
    Menu(ID_STEREOGRAM);
    EXPECT_TRUE(mpGUI->IsShown());
}

TEST_F(StereoDialog, LinesInOneFileAreRefused) {
    Choose(Field(GUI::ROW_CAMERA), Eyes::TYPE_OFF_AXIS);
    Choose(Field(GUI::ROW_FILE), 0);
    EXPECT_TRUE(mVMessages.empty());
    Pick(GUI::ROW_TYPE, Eyes::OUTPUT_LINE_BY_LINE); // which goes back at once
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mTitle, "Warning");
    EXPECT_EQ(mVMessages[0].mText, "Saving LINE BY LINE images are not supported.");
    EXPECT_EQ(Ctrl().GetOutput(), Eyes::OUTPUT_NO_PARALLAX);
    EXPECT_FALSE(GCUndoList.IsRedoable()) << "nor can it be redone";
    EXPECT_EQ(static_cast<wxChoice*>(Field(GUI::ROW_TYPE))->GetSelection(), Eyes::OUTPUT_NO_PARALLAX);
    Choose(Field(GUI::ROW_FILE), 1);
    Choose(Field(GUI::ROW_TYPE), Eyes::OUTPUT_LINE_BY_LINE);
    EXPECT_EQ(mVMessages.size(), 1u);
    Pick(GUI::ROW_FILE, 0);
    EXPECT_EQ(mVMessages.size(), 2u);
    EXPECT_EQ(Ctrl().mCDualOutput.mValue, 1);
}

TEST_F(StereoDialog, AProjectBringsItsEyesOrNone) {
    Choose(Field(GUI::ROW_CAMERA), Eyes::TYPE_TOE_IN);
    Choose(Field(GUI::ROW_TYPE), Eyes::OUTPUT_SIDE_BY_SIDE);
    const wxString text = TextOfEyes();
    const std::string path = mDir / "eyes.mrp";
    ASSERT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(path), true));
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    EXPECT_EQ(Ctrl().GetType(), Eyes::TYPE_MONOGRAM) << "made for one camera";
    EXPECT_FALSE(IsOnTimeLines());
    EXPECT_EQ(static_cast<wxChoice*>(Field(GUI::ROW_CAMERA))->GetSelection(), 0);
    ASSERT_TRUE(OpenProjectAndPaint(path));
    EXPECT_EQ(TextOfEyes(), text);
    EXPECT_TRUE(IsOnTimeLines());
    EXPECT_EQ(static_cast<wxChoice*>(Field(GUI::ROW_TYPE))->GetSelection(), Eyes::OUTPUT_SIDE_BY_SIDE);
}

} // namespace
