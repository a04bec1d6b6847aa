// The dialog "Preference": which row edits what, and whose preferences act and are kept.
#include <signal.h>
#include <unistd.h>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/notebook.h>

#include "APP/clsPreferenceGUI.h"
#include "COMMON/Globals.h"
#include "GL/BASE/DrawWay.h"
#include "GL/BASE/clsPreference.h"
#include "IMAGE/clsImageIO.h"
#include "ProjectTest.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

class Preferences : public ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        Menu(ID_PREFERENCE);
        mpGUI = dynamic_cast<PreferenceGUI_cls*>(WaitForWindow("Preference"));
        ASSERT_TRUE(mpGUI);
    }
    void TearDown() override {
        mpGUI->CloseEXKey();
        if (wxFileExists(GetConfigureFilePath())) wxRemoveFile(GetConfigureFilePath());
        ProjectTest::TearDown();
    }
    static Preference_cls* Acting() { return Frame()->GetPCPreference(); }
    static Preference_cls* User() { return Frame()->GetPCUserPreference(); }
    wxChoice* ChoiceAt(int row) const {
        return dynamic_cast<wxChoice*>(mpGUI->GetPCMousePanel()->GetField(row));
    }
    /// As a hand that chose this line.
    static void Pick(wxChoice* choice, int line) {
        choice->SetSelection(line);
        wxCommandEvent event(wxEVT_CHOICE, choice->GetId());
        event.SetEventObject(choice);
        event.SetInt(line);
        choice->ProcessWindowEvent(event);
    }
    static void Tick(wxWindow* box) {
        auto* check = dynamic_cast<wxCheckBox*>(box);
        ASSERT_TRUE(check);
        check->SetValue(!check->GetValue());
        wxCommandEvent event(wxEVT_CHECKBOX, check->GetId());
        event.SetEventObject(check);
        event.SetInt(check->GetValue());
        check->ProcessWindowEvent(event);
    }
    /// The lines that differ, each with a line end.
    static std::string Changes(const wxString& before, const wxString& after) {
        const std::vector<std::string> left = Lines(before.ToStdString());
        const std::vector<std::string> right = Lines(after.ToStdString());
        std::string changes;
        for (size_t i = 0; i < right.size(); ++i)
            if (i >= left.size() || left[i] != right[i]) changes += right[i] + "\n";
        return changes;
    }
    PreferenceGUI_cls* mpGUI = nullptr;
};

TEST_F(Preferences, AProjectsOwnActWhileItIsOpenAndReplaceNothing) {
    Choose(ChoiceAt(0), 1); // "Gyration" on the middle button
    EXPECT_EQ(Acting()->mCGyration.mValue, 1u);
    EXPECT_EQ(User()->mCGyration.mValue, 1u) << "what the user changes is the user's";
    const wxString own = User()->Serialize();

    const std::string project = mDir / "theirs.mrp";
    std::ofstream(project) << "GUI_GYRATION=2\nGUI_MENU=0\nGUI_ZOOM_MOD=1 1 0\nPREF_SORT_TYPE=1\n";
    Open(project);
    EXPECT_EQ(Acting()->mCGyration.mValue, 2u);
    EXPECT_EQ(ChoiceAt(0)->GetSelection(), 2) << "the open dialog shows what acts";
    EXPECT_EQ(ChoiceAt(4)->GetSelection(), 0);
    EXPECT_EQ(User()->Serialize(), own);
    Hub()->LastWords(); // the session ends
    EXPECT_NE(ReadAll(GetConfigureFilePath().ToStdString()).find(own.ToStdString()), std::string::npos);
    ASSERT_TRUE(Hub()->SaveProjectFile(mDir / "again.mrp", true));
    EXPECT_NE(ReadAll(mDir / "again.mrp").find(Acting()->Serialize().ToStdString()), std::string::npos)
        << "the project keeps its own";

    // What is changed meanwhile goes to both, and nothing else with it.
    Tick(mpGUI->GetPCMousePanel()->GetField(2, 3)); // "Move Center" with Alt
    EXPECT_EQ(Changes(own, User()->Serialize()), "GUI_CENTER_MOD=1 1 1\n");
    EXPECT_TRUE(Acting()->mCCenterMod.mValue[2]);
    EXPECT_EQ(Acting()->mCGyration.mValue, 2u);

    // The next project says nothing of them.
    const std::string silent = mDir / "silent.mrp";
    std::ofstream(silent) << "LoaderScale=1\n";
    Open(silent);
    EXPECT_EQ(Acting()->Serialize(), User()->Serialize());
    EXPECT_EQ(ChoiceAt(0)->GetSelection(), 1);
}

// The whole program in a child, which a scheduler ends while somebody else's project is open.
TEST_F(Preferences, ATerminatedProgramKeepsTheUsersOwn) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto end = [this] {
        Pick(ChoiceAt(0), 1);
        const std::string project = mDir / "theirs.mrp";
        std::ofstream(project) << "GUI_GYRATION=2\nGUI_MENU=0\nPREF_SORT_TYPE=1\n";
        Open(project);
        if (Acting()->mCGyration.mValue == 2) kill(getpid(), SIGTERM);
        PumpUntil([] { return false; });
    };
    EXPECT_EXIT(end(), testing::KilledBySignal(SIGTERM), "");
    const std::string text = ReadAll(GetConfigureFilePath().ToStdString());
    EXPECT_NE(text.find("GUI_GYRATION=1\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("GUI_MENU=0\n"), std::string::npos);
    EXPECT_EQ(text.find("PREF_SORT_TYPE=1\n"), std::string::npos);
}

TEST_F(Preferences, EveryRowEditsItsOwnLine) {
    const struct {
        int mRow;
        int mField;
        int mPick; ///< line of a choice; -1 a check box
        const char* mpLine;
    } kMouse[] = {{0, 0, 2, "GUI_GYRATION=2\n"},
                  {0, 1, -1, "GUI_GYRATION_MOD=1 0 0\n"},
                  {0, 2, -1, "GUI_GYRATION_MOD=1 1 0\n"},
                  {0, 3, -1, "GUI_GYRATION_MOD=1 1 1\n"},
                  {1, 0, 3, "GUI_ZOOM=3\n"},
                  {1, 1, -1, "GUI_ZOOM_MOD=1 0 0\n"},
                  {2, 0, 1, "GUI_CENTER=1\n"},
                  {2, 3, -1, "GUI_CENTER_MOD=1 1 1\n"},
                  {3, 0, 2, "GUI_ITEM=2\n"},
                  {3, 2, -1, "GUI_ITEM_MOD=1 1 0\n"},
                  {4, 0, 0, "GUI_MENU=0\n"},
                  {4, 1, -1, "GUI_MENU_MOD=1 0 0\n"},
                  {5, 0, 1, "GUI_HITTEST=1\n"},
                  {5, 2, -1, "GUI_HITTEST_MOD=1 1 0\n"},
                  {6, 0, 1, "GUI_PICK=1\nGUI_PICK_MOD=0 1 0\n"}, // not written before
                  {6, 2, -1, "GUI_PICK_MOD=0 0 0\n"},
                  {7, 0, 1, "GUI_MBUTTON_EMULATE=1\n"},
                  {8, 0, -1, "GUI_ZOOM_INVERT=1\n"},
                  {8, 1, -1, "GUI_GYRATION_INVERT=1\n"},
                  {9, 0, 1, ""}};
    MultiInputPanel_cls* panel = mpGUI->GetPCMousePanel();
    for (const auto& step : kMouse) {
        SCOPED_TRACE(testing::Message() << "row " << step.mRow << " field " << step.mField);
        wxWindow* field = panel->GetField(step.mRow, step.mField);
        ASSERT_TRUE(field);
        const wxString before = Acting()->Serialize();
        if (step.mPick < 0)
            Tick(field);
        else
            Pick(dynamic_cast<wxChoice*>(field), step.mPick);
        EXPECT_EQ(Changes(before, Acting()->Serialize()), step.mpLine);
    }
    for (const auto& [row, label] :
         {std::pair(0, "Gyration"), std::pair(1, "Zoom"), std::pair(2, "Move Center"),
          std::pair(3, "Move Item"), std::pair(4, "Menu"), std::pair(5, "Item Selection"),
          std::pair(6, "Pick Particle"), std::pair(7, "MButton Emulate"), std::pair(8, "Invert"),
          std::pair(9, "Template")}) {
        const wxWindow* text = FindByLabel(panel, label);
        ASSERT_TRUE(text) << label;
        const wxRect line = panel->GetField(row)->GetRect();
        EXPECT_TRUE(text->GetRect().y < line.GetBottom() && line.y < text->GetRect().GetBottom()) << label;
    }

    auto* book = dynamic_cast<wxNotebook*>(panel->GetGrandParent());
    ASSERT_TRUE(book);
    book->SetSelection(1);
    ASSERT_TRUE(Settle());
    panel = mpGUI->GetPCPerformancePanel();
    const auto field = [panel](int row) { return dynamic_cast<NumField_cls*>(panel->GetField(row)); };
    const int limit = Store()->mLimitMB;
    const int threads = GThreadNumberReadAscii.load();
    const int quality = ImageIO_cls::msJPEGQuality;
    ASSERT_TRUE(field(1) && field(4) && field(5));
    TypeInto(field(1), "777");
    TypeInto(field(4), "7");
    TypeInto(field(5), "77");
    const wxString before = Acting()->Serialize();
    Pick(dynamic_cast<wxChoice*>(panel->GetField(6)), 2);
    EXPECT_EQ(Store()->mLimitMB, 777);
    EXPECT_EQ(GThreadNumberReadAscii.load(), 7);
    EXPECT_EQ(ImageIO_cls::msJPEGQuality, 77);
    EXPECT_EQ(Changes(before, Acting()->Serialize()), "PREF_SORT_TYPE=2\n");
    EXPECT_EQ(User()->mCSortType.mValue, 2u);
    const wxString sorted = Acting()->Serialize();
    Pick(dynamic_cast<wxChoice*>(panel->GetField(10)), 1);
    EXPECT_EQ(Changes(sorted, Acting()->Serialize()), "PREF_DRAW_WAY=1\n"); // not written before
    EXPECT_EQ(GetDrawWay(), DrawWay::GL);
    Pick(dynamic_cast<wxChoice*>(panel->GetField(10)), 0);
    EXPECT_EQ(Acting()->Serialize(), sorted);
    EXPECT_EQ(User()->mCDrawWay.mValue, 0u);
    Store()->mLimitMB = limit;
    GThreadNumberReadAscii.store(threads);
    ImageIO_cls::msJPEGQuality = quality;
}

} // namespace
