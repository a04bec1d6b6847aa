// Undo and redo by the user's hands: fields, diamonds, data, the clock, and the dialog "Scene Config".
#include <fstream>
#include <sstream>

#include <wx/checkbox.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/tglbtn.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "PDATA/EDITOR/clsPeriodicBoundaryGUI.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsColourDialogEX.h"
#include "WIDGET/clsDialogEXKey.h"
#include "WIDGET/clsKeyButton.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

class UndoSteps : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        Book()->SetSelection(1);
        ASSERT_TRUE(Settle());
        Canvas(0)->SetFocus();
        GCUndoList.Clear();
    }
    void TearDown() override {
        wxColourDialogEX::sTestAnswer = wxColour();
        Clock()->mbUseTimeRemap.mValue = false;
        Parameters_cls& curve = Clock()->mpCTimeRemapGroup->mVParams[0];
        curve.mbTimeDepend.mValue = false;
        curve.ExecCommandInitSet(0.0);
        GuiTest::TearDown();
        GCUndoList.Clear();
    }
    static TimeCtrl_cls* Clock() { return Hub()->mpCTimeCtrl; }
    static PDataSeqCtrl_cls* Store() { return Hub()->mpCPDataSeqCtrl; }
    static wxNotebook* Book() {
        return static_cast<wxNotebook*>(Frame()->FindWindow(int(ID_NOTEBOOK_ATTRIB)));
    }
    static wxWindow* Side() { return Book()->GetParent(); }
    static GLAttribute_cls* Attribute() {
        return GLSequence_cls::Of(*Store()->GetPCActiveFileSequence()).mpCGLAttribute[1];
    }
    static bool IsEnabled(int id) {
        Frame()->GetMenuBar()->GetMenu(1)->UpdateUI();
        return Frame()->GetMenuBar()->IsEnabled(id);
    }
    /// The project as it would be saved.
    std::string Project() {
        const std::string path = mDir / "now.mrp";
        EXPECT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(path), true));
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
    /// The first line in which two projects differ; empty when they are the same.
    static std::string Difference(const std::string& a, const std::string& b) {
        std::istringstream one(a);
        std::istringstream two(b);
        std::string left;
        std::string right;
        while (true) {
            const bool bLeft = bool(std::getline(one, left));
            const bool bRight = bool(std::getline(two, right));
            if (!bLeft && !bRight) return "";
            if (bLeft != bRight || left != right) return left + " <> " + right;
        }
    }
    static void UndoKey() {
        Key('Z', wxMOD_CONTROL);
        Settle();
    }
    static void RedoKey() {
        Key('Y', wxMOD_CONTROL);
        Settle();
    }
    /// Drag sideways from the arrows at the field's end.
    static void DragField(NumField_cls* field, int pixels) {
        const wxRect text = field->GetPCText()->GetRect();
        const wxPoint arrows(text.GetRight() + 8, text.GetHeight() / 2);
        Drag(field, arrows, arrows + wxPoint(pixels, 0));
        Settle();
    }

    TempDir_cls mDir;
};

} // namespace

TEST_F(UndoSteps, EveryHandAtTheFieldsIsOneStepThatComesBackByteForByte) {
    std::vector<std::string> texts = {Project()};
    std::vector<const char*> names;
    const auto step = [&](const char* name, const std::function<void()>& act) {
        act();
        Settle();
        const std::string now = Project();
        EXPECT_NE(Difference(now, texts.back()), "") << name << " changed nothing";
        texts.push_back(now);
        names.push_back(name);
    };
    step("drag", [] { DragField(FindField(Side(), "Multiplies the colour's alpha"), 40); });
    step("type", [] { TypeInto(FindField(Side(), "Edge of a point"), "7"); });
    step("colour", [] {
        wxColourDialogEX::sTestAnswer = wxColour(250, 20, 10);
        ClickOn(FindByTip(Side(), "Colour of all particles"));
    });
    step("alpha", [] { DragField(FindField(Side(), "Alpha: 0 is clear"), -30); });
    step("check", [] { ClickOn(FindByTip(Side(), "Colour each particle")); });
    step("choice", [] { Choose(FindByTip(Side(), "The quantity that chooses"), 4); });
    step("wheel", [] {
        NumField_cls* field = FindField(Side(), "Quantity at the start");
        ClickOn(field->GetPCText());
        Wheel(field->GetPCText(), Middle(field->GetPCText()), 5);
        Wheel(field->GetPCText(), Middle(field->GetPCText()), -2);
        Canvas(0)->SetFocus();
    });
    step("option", [] { Choose(FindByTip(Side(), "Order in which particles"), 2); });
    step("view toggle", [] { ClickOn(FindByTip(Frame(), "Show/Hide Grid")); });
    step("view geometry", [] { Choose(FindByTip(Frame(), "Geometry"), 1); });
    step("view mode", [] { Choose(FindByTip(Frame(), "Point of View"), 3); });
    step("hide", [] { Choose(FindByTip(Side(), "What stands for a particle"), 1); });
    Snap("undo_fields");
    EXPECT_FALSE(FindField(Side(), "Edge of a point"));

    Canvas(0)->SetFocus();
    for (size_t k = names.size(); k-- > 0;) {
        UndoKey();
        EXPECT_EQ(Difference(Project(), texts[k]), "") << "undoing " << names[k];
    }
    EXPECT_FALSE(GCUndoList.IsUndoable());
    EXPECT_FALSE(IsEnabled(ID_UNDO));
    ASSERT_TRUE(FindField(Side(), "Edge of a point")) << "the page shows what is there again";
    EXPECT_EQ(FindField(Side(), "Edge of a point")->GetValue(), Attribute()->mPointSize.mValue);
    EXPECT_TRUE(static_cast<wxToggleButton*>(FindByTip(Frame(), "Show/Hide Grid"))->GetValue());
    EXPECT_FALSE(static_cast<wxCheckBox*>(FindByTip(Side(), "Colour each particle"))->GetValue());
    for (size_t k = 0; k < names.size(); ++k) {
        RedoKey();
        EXPECT_EQ(Difference(Project(), texts[k + 1]), "") << "redoing " << names[k];
    }
    EXPECT_FALSE(IsEnabled(ID_REDO));
    EXPECT_TRUE(IsEnabled(ID_UNDO));
    Menu(ID_UNDO);
    EXPECT_EQ(Difference(Project(), texts[names.size() - 1]), "") << "by the menu";
}

TEST_F(UndoSteps, TypedTextHasCtrlZForItselfAndAHandStillAtWorkEndsFirst) {
    NumField_cls* size = FindField(Side(), "Edge of a point");
    const double before = size->GetValue();
    TypeInto(size, "9");
    ClickOn(size->GetPCText());
    Key('A', wxMOD_CONTROL);
    Type("55");
    UndoKey();
    EXPECT_EQ(size->GetPCText()->GetValue(), "9") << "first the typing";
    EXPECT_EQ(Attribute()->mPointSize.mValue, 9);
    UndoKey();
    EXPECT_EQ(Attribute()->mPointSize.mValue, before) << "then the step, with the field still in focus";
    EXPECT_EQ(size->GetValue(), before);
    // The wheel's burst is still open when the key comes.
    ClickOn(size->GetPCText());
    Wheel(size->GetPCText(), Middle(size->GetPCText()), 3);
    EXPECT_EQ(size->GetValue(), before + 3);
    UndoKey();
    EXPECT_EQ(size->GetValue(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    RedoKey();
    EXPECT_EQ(size->GetValue(), before + 3);
}

TEST_F(UndoSteps, DialogsTakeTheKeysAndShowWhatTheyDid) {
    PeriodicBoundary_cls* periodic = Hub()->mpCPeriodicBoundary;
    Menu(ID_PERIODIC_BOUNDARY);
    wxTopLevelWindow* dialog = WaitForWindow("Periodic Boundary");
    ASSERT_TRUE(dialog);
    NumField_cls* field = FindField(dialog, "Factors of the x");
    const float before = periodic->mCPeriodicSize.mValue[0];
    TypeInto(field, "3.25");
    EXPECT_EQ(periodic->mCPeriodicSize.mValue[0], 3.25f);
    ASSERT_TRUE(PumpUntil([dialog] { return dialog->IsActive(); }));
    UndoKey();
    EXPECT_EQ(periodic->mCPeriodicSize.mValue[0], before);
    EXPECT_EQ(field->GetValue(), double(before));
    RedoKey();
    EXPECT_EQ(field->GetValue(), 3.25);
    UndoKey();
    Key(WXK_ESCAPE);
    EXPECT_TRUE(PumpUntil([dialog] { return !dialog->IsShown(); }));
}

TEST_F(UndoSteps, OpeningAndClosingDataGoBackWithTheClock) {
    const wxString melt = Store()->GetStrActiveFileSequencePath();
    const int meltLast = Clock()->GetMaxFrame();
    Clock()->SetWAMaxCommand(meltLast - 1);
    Clock()->SetFrameCommand(2);
    GCUndoList.Clear();
    const TimeState_st clock = Clock()->GetState();
    TempDir_cls dir;
    for (int i = 0; i < 3; ++i)
        std::filesystem::copy_file(Root() + "examples/lj_melt_bin/melt0000.bin",
                                   dir / ("other" + std::to_string(i) + ".bin"));
    const std::string other = dir / "other0.bin";
    ASSERT_TRUE(OpenAndPaint(other));
    EXPECT_EQ(Clock()->GetMaxFrame(), 2);
    UndoKey();
    EXPECT_EQ(Store()->GetStrActiveFileSequencePath(), melt);
    EXPECT_EQ(Clock()->GetState().mValue, clock.mValue);
    EXPECT_TRUE(Store()->IsTheIndexLoaded(Clock()->GetRemappedIndex(-1)))
        << "the old data are on the screen again";
    EXPECT_FALSE(GCUndoList.IsUndoable());
    RedoKey();
    EXPECT_EQ(Store()->GetStrActiveFileSequencePath(), other);
    EXPECT_EQ(Clock()->GetMaxFrame(), 2);
    Menu(ID_CLOSE_DATA);
    EXPECT_TRUE(Store()->GetStrActiveFileSequencePath().empty());
    UndoKey();
    EXPECT_EQ(Store()->GetStrActiveFileSequencePath(), other);
    EXPECT_TRUE(Store()->IsTheIndexLoaded(Clock()->GetRemappedIndex(-1)));
    EXPECT_TRUE(mVMessages.empty());
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "a project begins a history of its own";
    EXPECT_FALSE(GCUndoList.IsRedoable());
}

TEST_F(UndoSteps, ADragOfTheSliderAndAStartOfPlayingAreOneStepEach) {
    wxWindow* slider = FindByTip(Frame(), "Frames of the film");
    ASSERT_TRUE(slider);
    Drag(slider, wxPoint(40, slider->GetClientSize().y / 2),
         wxPoint(slider->GetClientSize().x - 40, slider->GetClientSize().y / 2));
    Settle();
    EXPECT_GT(Clock()->GetFrame(), 3);
    UndoKey();
    EXPECT_EQ(Clock()->GetFrame(), 0);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    Clock()->SetFrameCommand(1);
    Canvas(0)->SetFocus();
    Clock()->SetRepeatNative(1);
    Clock()->StartPlayCommand(1);
    ASSERT_TRUE(PumpUntil([] { return Clock()->GetFrame() > 2; }));
    Key('Z', wxMOD_CONTROL);
    EXPECT_TRUE(PumpUntil([] { return !Clock()->IsPlaying(); }));
    Settle();
    EXPECT_EQ(Clock()->GetFrame(), 1);
    UndoKey();
    EXPECT_EQ(Clock()->GetFrame(), 0);
}

TEST_F(UndoSteps, TimeRemapIsSwitchedByTheMenuAndBack) {
    Hub()->mpCTimeCtrl->mpCTimeRemapGroup->mVParams[0].ExecCommandInitSet(3.0);
    Menu(ID_TIME_REMAP, true);
    EXPECT_TRUE(Clock()->mbUseTimeRemap.mValue);
    EXPECT_EQ(Clock()->GetRemappedIndex(0), 3);
    EXPECT_TRUE(Store()->IsTheIndexLoaded(Clock()->GetRemappedIndex(0)));
    UndoKey();
    EXPECT_FALSE(Clock()->mbUseTimeRemap.mValue);
    Frame()->GetMenuBar()->GetMenu(1)->UpdateUI();
    EXPECT_FALSE(Frame()->GetMenuBar()->IsChecked(ID_TIME_REMAP));
    RedoKey();
    Frame()->GetMenuBar()->GetMenu(1)->UpdateUI();
    EXPECT_TRUE(Frame()->GetMenuBar()->IsChecked(ID_TIME_REMAP));
}

TEST_F(UndoSteps, SceneDialogSetsLengthAndAreaInOneStep) {
    const TimeState_st before = Clock()->GetState();
    const auto open = [] {
        Menu(ID_SCENE);
        return WaitForWindow("Scene Config");
    };
    const auto put = [](NumField_cls* field, const char* text) {
        ClickOn(field->GetPCText());
        Key('A', wxMOD_CONTROL);
        Type(text);
    };
    wxTopLevelWindow* dialog = open();
    ASSERT_TRUE(dialog);
    Snap("undo_scene");
    EXPECT_TRUE(FindByTip(dialog, "Is kept with the project; keys are moved by neither"));
    put(FindField(dialog, "Number of the film's last"), "80");
    ClickOn(FindByLabel(dialog, "Cancel"));
    EXPECT_TRUE(PumpUntil([dialog] { return !dialog->IsShown(); }));
    EXPECT_EQ(Clock()->GetState().mValue, before.mValue) << "Cancel changes nothing";

    dialog = open();
    NumField_cls* length = FindField(dialog, "Number of the film's last");
    EXPECT_EQ(length->GetValue(), before.mValue[TIME_MAX_FRAME]) << "what was cancelled is forgotten";
    put(length, "80");
    auto* panel = dynamic_cast<MultiInputPanel_cls*>(length->GetParent());
    ASSERT_TRUE(panel);
    put(static_cast<NumField_cls*>(panel->GetField(1, 0)), "5");
    Choose(panel->GetField(2), 1);
    put(static_cast<NumField_cls*>(panel->GetField(1, 1)), "60");
    Key(WXK_RETURN); // takes all, as OK does
    EXPECT_TRUE(PumpUntil([dialog] { return !dialog->IsShown(); }));
    EXPECT_EQ(Clock()->GetMaxFrame(), 80);
    EXPECT_EQ(Clock()->GetWAMin(), before.mValue[TIME_WA_MIN]) << "the area's beginning stays";
    EXPECT_EQ(Clock()->GetWAMax(), 60);
    EXPECT_EQ(Clock()->mSceneLengthType.mValue, 1u);
    const TimeState_st after = Clock()->GetState();
    Settle();
    Canvas(0)->SetFocus();
    UndoKey();
    EXPECT_EQ(Clock()->GetState().mValue, before.mValue);
    EXPECT_EQ(Clock()->mSceneLengthType.mValue, 0u);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    RedoKey();
    EXPECT_EQ(Clock()->GetState().mValue, after.mValue);
    UndoKey();
}

TEST_F(UndoSteps, DiamondsSetAndRemoveKeys) {
    auto* dialog = new wxDialogEXKey(Frame(), "Params");
    auto* panel = new MultiInputPanel_cls(dialog);
    const wxString suffixes[] = {"x", "y", "z"};
    static ParamGroup_cls sGroup("Test Place", 3, suffixes, 6, false); // commands may point to it for long
    NumSpec spec;
    spec.mStep = 0.1;
    ParamGroup_cls* remap = Clock()->mpCTimeRemapGroup;
    const int row = panel->AddParam("Time", remap, spec, "Snapshot at the current time");
    panel->AddParam("Place", &sGroup, spec, "A place");
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(panel, 1, wxEXPAND);
    dialog->SetSizerAndFit(sizer);
    dialog->OpenWindow();
    ASSERT_TRUE(PumpUntil([dialog] { return dialog->IsActive(); }));
    KeyButton_cls* diamond = panel->GetKeyButton(row);
    auto* field = static_cast<NumField_cls*>(panel->GetField(row));
    Parameters_cls& curve = remap->mVParams[0];
    EXPECT_EQ(diamond->GetState(), KeyState::CONSTANT);
    const wxString start = remap->Serialize();
    ClickPopup(diamond, Middle(diamond), {WXK_DOWN, WXK_RETURN}); // Animate
    EXPECT_EQ(diamond->GetState(), KeyState::KEY);
    EXPECT_TRUE(curve.mbTimeDepend.mValue);
    Clock()->SetFrameNative(5, 0);
    Menu(ID_REFRESH_TL);
    EXPECT_EQ(diamond->GetState(), KeyState::ANIMATED);
    Snap("undo_diamond_hollow");
    DragField(field, 30);
    EXPECT_EQ(diamond->GetState(), KeyState::KEY) << "an edit is a key";
    EXPECT_NEAR(curve.Evaluate(Parameters_cls::msCurrentDoubleIndex, 0.01), 3.0, 0.2);
    EXPECT_EQ(curve.GetKeyNumber(), 2);
    Clock()->SetFrameNative(2, 0);
    Menu(ID_REFRESH_TL);
    EXPECT_GT(field->GetValue(), 0.5) << "the field follows the time";
    ClickOn(diamond);
    EXPECT_EQ(curve.GetKeyNumber(), 3);
    EXPECT_EQ(diamond->GetState(), KeyState::KEY);
    Snap("undo_diamond_filled");
    ClickOn(diamond);
    EXPECT_EQ(curve.GetKeyNumber(), 2);
    const wxString end = remap->Serialize();
    int steps = 0;
    for (; GCUndoList.IsUndoable() && steps < 10; ++steps)
        UndoKey();
    EXPECT_EQ(steps, 4);
    EXPECT_EQ(remap->Serialize(), start);
    EXPECT_EQ(diamond->GetState(), KeyState::CONSTANT) << "the diamond shows what undo did";
    for (int k = 0; k < steps; ++k)
        RedoKey();
    EXPECT_EQ(remap->Serialize(), end);
    while (GCUndoList.IsUndoable())
        GCUndoList.UndoCurrent();
    dialog->Destroy();
}
