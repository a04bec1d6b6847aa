// Guess from the menu to the moving picture, with what it offers beside the layout, and each of its controls.
#include <sstream>

#include <wx/toplevel.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/GuessOffer.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFileDialogEX.h"

namespace {

class Guess : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        mSettings = Settings();
        Data().SetHeaderGrammer({0, 1});
        Data().SetBodyGrammer({0, 1, 5, 6, 7, 8});
        Data().mCItemDataType.mValue = 0;
        Data().mCItemLastOpened.mStrValue = "NONE";
        Data().SetToDefault();
        GCUndoList.Clear();
        mBefore = Settings();
    }
    void TearDown() override {
        wxFileDialogEX::sStrTestAnswer.clear();
        GCUndoList.Clear();
        if (Data().mpCGUI) Data().mpCGUI->Hide();
        std::wistringstream lines(mSettings.ToStdWstring());
        for (std::wstring line; std::getline(lines, line);) {
            Data().ReadStrLine(line);
            Hub()->mpCPeriodicBoundary->ReadStrLine(line);
            Hub()->mpCDrawOption->ReadStrLine(line);
            for (GLAttribute_cls* attribute : Attributes())
                attribute->ReadStrLine(lines, line);
        }
        GuiTest::TearDown();
    }
    static DataLoader_cls& Data() { return *Hub()->mpCDataLoader; }
    static std::vector<GLAttribute_cls*> Attributes() {
        GLSequence_cls& drawing = GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence());
        return {drawing.mpCGLAttribute, drawing.mpCGLAttribute + GLSequence_cls::kAttributeNumber};
    }
    /// All that a guess may change, as a project holds it.
    static wxString Settings() {
        wxString text =
            Data().Serialize() + Hub()->mpCPeriodicBoundary->Serialize() + Hub()->mpCDrawOption->Serialize();
        for (const GLAttribute_cls* attribute : Attributes())
            text += attribute->Serialize();
        return text;
    }
    /// Settings without the path, which undo leaves alone.
    static wxString WithoutPath(const wxString& settings) {
        const size_t begin = settings.find("LastOpenedFile=");
        return settings.Left(begin) + settings.Mid(begin).AfterFirst('\n');
    }
    static bool IsOpen() { return !Hub()->mpCPDataSeqCtrl->GetStrActiveFileSequencePath().empty(); }
    /// The shown dialog; null when none is.
    static wxWindow* Dialog() {
        for (wxWindow* window : wxTopLevelWindows)
            if (window->IsShown() && window->GetLabel() == "Guess") return window;
        return nullptr;
    }
    /// To a control of the dialog that is shown then, and press it.
    void AddPress(const wxString& label, int key = WXK_SPACE) {
        const auto find = [label] {
            wxWindow* dialog = Dialog();
            return dialog ? FindByLabel(dialog, label) : nullptr;
        };
        mActs.push_back({[find] { return HasDialog() && find(); },
                         [label, find] {
                             wxWindow* control = find();
                             EXPECT_TRUE(control) << label;
                             if (control) control->SetFocus();
                             if (!control && Dialog()) KeyNow(WXK_ESCAPE);
                         }});
        mActs.push_back({nullptr, [key] {
                             if (Dialog()) KeyNow(key);
                         }});
    }
    void AddLook(const std::function<void(wxWindow*)>& look) {
        mActs.push_back({HasDialog, [look] {
                             wxWindow* dialog = Dialog();
                             EXPECT_TRUE(dialog);
                             if (dialog) look(dialog);
                         }});
    }
    /// The menu entry, a file, and the acts in the dialog.
    void GuessAt(const std::string& file) {
        wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(Root() + file);
        Later(std::move(mActs));
        mActs.clear();
        Menu(ID_GUESS_DATA);
        ASSERT_TRUE(Settle());
    }

    std::vector<Act_st> mActs;
    wxString mSettings, mBefore;
};

} // namespace

TEST_F(Guess, FourClicksFromTheMenuToTheMovingPicture) {
    AddLook([](wxWindow*) { Snap("guess_offers"); });
    AddPress("Use and Open", WXK_RETURN);
    GuessAt("examples/lj_unsorted_text/unsorted001.txt"); // the menu's entry, the file, the button
    EXPECT_TRUE(mVMessages.empty());
    ASSERT_EQ(Hub()->mpCPDataSeqCtrl->GetActiveFileSequenceLength(), 16);
    EXPECT_FALSE(Data().mpCGUI->IsShown()) << "nothing stands before the picture";
    EXPECT_EQ(Data().mCItemVariableNumber.mValue, 1u);
    EXPECT_EQ(Data().mCItemInterpolateType.mValue, 0u);
    EXPECT_EQ(Hub()->mpCPeriodicBoundary->mCPeriodicType.mValue, 2u);
    EXPECT_EQ(Hub()->mpCDrawOption->mClassify.mValue, 1u);
    for (size_t k = 0; k < 4; ++k) {
        const GLAttribute_cls& attribute = *Attributes()[k];
        for (size_t c = 0; c < 3; ++c) {
            EXPECT_FLOAT_EQ(attribute.mColor.mConstantColor.mValue[c], kGuessColors[k][c]);
            EXPECT_FLOAT_EQ(attribute.mDiffuse.mConstantColor.mValue[c], kGuessColors[k][c]);
            EXPECT_FLOAT_EQ(attribute.mAmbient.mConstantColor.mValue[c], 0.2f * kGuessColors[k][c]);
        }
        EXPECT_EQ(attribute.mRadiusType.mValue, 1u);
        EXPECT_FLOAT_EQ(attribute.mRadiusFactorForConst.mValue, 0.388f);
    }
    const wxString after = Settings();

    Menu(ID_UNDO);
    EXPECT_FALSE(IsOpen()) << "one step takes all of it back";
    EXPECT_EQ(WithoutPath(Settings()), WithoutPath(mBefore));
    EXPECT_FALSE(GCUndoList.IsUndoable());
    Menu(ID_REDO);
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(WithoutPath(Settings()), WithoutPath(after));

    wxWindow* play = FindByTip(Frame(), "Play (Space)");
    ASSERT_TRUE(play);
    ClickOn(play); // the fourth
    TimeCtrl_cls* time = Hub()->mpCTimeCtrl;
    ASSERT_TRUE(PumpUntil([time] { return time->GetFrame() >= 3; }, 30000));
    const Picture_st picture = Grab(0);
    EXPECT_GT(picture.CountLit(60), 100);
    Snap("guess_moving");
}

TEST_F(Guess, TakesWhatIsTickedAndOpensNothingWithUse) {
    for (const char* tick : {"Radius", "Classification", "Boundary", "Particle Number"})
        AddPress(tick);
    AddPress("Particle Number"); // on again
    AddPress("Use");
    GuessAt("examples/lj_unsorted_text/unsorted001.txt");
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(Data().mpCGUI->IsShown()) << "the loader shows what was taken";
    EXPECT_EQ(Data().mCItemDataType.mValue, 1);
    EXPECT_EQ(Data().GetBodyGrammer(), (std::vector<int>{0, 6, 7, 1, 8}));
    EXPECT_EQ(Data().mpCGUI->GetVGrammer(Data().mpCGUI->mpCListBody), Data().GetBodyGrammer());
    EXPECT_EQ(Data().mCItemInterpolateType.mValue, 0u);
    EXPECT_EQ(Data().mCItemVariableNumber.mValue, 1u);
    EXPECT_EQ(Hub()->mpCPeriodicBoundary->mCPeriodicType.mValue, 0u);
    EXPECT_EQ(Attributes()[0]->mRadiusType.mValue, 0u);
    EXPECT_EQ(Attributes()[1]->mColor.mConstantColor.mValue[1], 0.8f) << "the colour of the start";
    Menu(ID_UNDO);
    EXPECT_EQ(Settings(), mBefore);
    EXPECT_EQ(Data().mpCGUI->GetVGrammer(Data().mpCGUI->mpCListBody), Data().GetBodyGrammer())
        << "the lists follow undo";
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(Guess, OtherFileAndCancelChangeNothing) {
    AddLook([](wxWindow* dialog) {
        EXPECT_TRUE(FindByLabel(dialog, "Radius"));
        wxFileDialogEX::sStrTestAnswer =
            wxString::FromUTF8(Root() + "tests/data/small/pour_radius_text/pour01.txt");
    });
    AddPress("Other File...");
    AddLook([](wxWindow* dialog) {
        EXPECT_FALSE(FindByLabel(dialog, "Radius")) << "that file has radii";
        EXPECT_TRUE(FindByLabel(dialog, "Boundary"));
        wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(Root() + "README.md");
    });
    AddPress("Other File...");
    AddLook([](wxWindow* dialog) {
        EXPECT_FALSE(FindByLabel(dialog, "Use")) << "what isn't understood can't be used";
        EXPECT_FALSE(FindByLabel(dialog, "Use and Open"));
        Snap("guess_nothing");
    });
    AddPress("Close");
    GuessAt("examples/lj_melt_text/melt0000.txt");
    EXPECT_FALSE(Dialog());
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Settings(), mBefore);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

// Narrow and wide: all controls stay inside, one below the other.
TEST_F(Guess, StaysWholeAtAnyWidth) {
    const auto look = [](const std::string& name) {
        return [name](wxWindow* dialog) {
            Snap(name);
            for (const char* label :
                 {"Other File...", "Use", "Use and Open", "Cancel", "Radius", "Interpolation"}) {
                const wxWindow* control = FindByLabel(dialog, label);
                ASSERT_TRUE(control) << label;
                EXPECT_TRUE(dialog->GetClientRect().Contains(control->GetRect())) << label;
            }
        };
    };
    AddLook([](wxWindow* dialog) { dialog->SetSize(1200, 900); });
    AddLook(look("guess_wide"));
    AddLook([](wxWindow* dialog) { dialog->SetSize(10, 10); });
    AddLook(look("guess_narrow"));
    AddPress("Cancel");
    GuessAt("examples/deposit_text/deposit0.txt");
    EXPECT_FALSE(IsOpen());
}
