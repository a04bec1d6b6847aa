// A session is recorded and replayed to the same project.
#include <cstdlib>
#include <map>
#include <memory>
#include <random>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/menu.h>
#include <wx/wfstream.h>
#include <wx/zipstrm.h>

#include "APP/clsFileMenu.h"
#include "APP/clsRecorder.h"
#include "APP/clsReplay.h"
#include "COMMON/ActLine.h"
#include "COMMON/UserActs.h"
#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterLists.h"
#include "ProjectTest.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsParamStrips.h"
#include "WIDGET/clsNumField.h"

namespace {

/// All shown windows of a class.
template <class T>
void Collect(wxWindow* pRoot, std::vector<T*>* pFound) {
    if (!pRoot->IsShown() || !pRoot->IsEnabled()) return;
    if (auto* found = dynamic_cast<T*>(pRoot)) pFound->push_back(found);
    for (wxWindow* child : pRoot->GetChildren())
        Collect(child, pFound);
}

bool IsOnTop(wxWindow* pWindow, wxPoint point) {
    return pWindow->IsShownOnScreen() && wxFindWindowAtPoint(pWindow->ClientToScreen(point)) == pWindow;
}

bool IsInReach(wxWindow* pWindow) { return IsOnTop(pWindow, wxPoint(0, 0) + pWindow->GetClientSize() / 2); }

constexpr int kMenus[] = {ID_UNDO,
                          ID_UNDO,
                          ID_UNDO,
                          ID_REDO,
                          ID_REDO,
                          ID_TIME_REMAP,
                          ID_FILTER_DATABOX,
                          ID_FILTER_BOOLEAN,
                          ID_FILTER_UP,
                          ID_FILTER_DELETE,
                          ID_VIEW_PANEL_TYPE_0,
                          ID_VIEW_PANEL_TYPE_1,
                          ID_LIGHT_SOURCE,
                          ID_SCENE,
                          ID_STEREOGRAM,
                          ID_PERIODIC_BOUNDARY,
                          ID_COLOR_CURVE,
                          ID_FIT_VIEW,
                          ID_FILTER_FOG,
                          ID_CAMERA_PATH};

/// A user without any plan.
class Hands_cls {
public:
    explicit Hands_cls(unsigned seed) : mRandom(seed) {}
    int Pick(size_t n) { return n == 0 ? 0 : int(mRandom() % n); }
    template <class T>
    T* PickOf(const std::vector<wxWindow*>& roots) {
        std::vector<T*> all;
        for (wxWindow* root : roots)
            Collect(root, &all);
        T* window = all.empty() ? nullptr : all[size_t(Pick(all.size()))];
        return window && IsInReach(window) ? window : nullptr;
    }
    wxPoint Anywhere(wxWindow* pWindow) {
        const wxSize size = pWindow->GetClientSize();
        return {5 + Pick(size_t(std::max(size.x - 10, 1))), 5 + Pick(size_t(std::max(size.y - 10, 1)))};
    }

private:
    std::mt19937 mRandom;
};

class Record : public ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        Fresh();
    }
    void TearDown() override {
        Fresh();
        ProjectTest::TearDown();
    }
    /// As a start leaves it: nothing of a session is left.
    void Fresh() {
        Hub()->EndGestures();
        for (wxWindow* window : wxTopLevelWindows)
            if (auto* dialog = dynamic_cast<wxDialog*>(window)) dialog->Hide();
        Frame()->OpenProject(mDefaults);
        ResetViews();
        Hub()->SelectObject(nullptr);
        Hub()->mpCLightSRCCtrl->SelectLight(0);
        Canvas(0)->SetThisToBeActiveGL();
        Shared().msCFBOSizeIndex.mValue = 0;
        GCUndoList.Clear();
        Time()->SetFrameNative(0, 0);
        Settle();
    }
    /// What a project would hold, but for the name of the file.
    static std::string Text() {
        std::string text;
        for (const std::string& line : Lines(Hub()->MakeProjectText()))
            if (line.rfind("LastOpenedFileMRP=", 0) != 0) text += line + "\n";
        return text;
    }
    /// As the menu does it when its item is chosen.
    static void ChooseMenu(int id) {
        wxMenu* menu = nullptr;
        wxMenuItem* item = Frame()->GetMenuBar()->FindItem(id, &menu);
        ASSERT_TRUE(item) << id;
        menu->UpdateUI();
        if (!item->IsEnabled()) return;
        if (item->IsCheckable()) item->Check(item->GetKind() == wxITEM_RADIO || !item->IsChecked());
        menu->SendEvent(id, item->IsCheckable() ? int(item->IsChecked()) : -1);
        Settle();
    }
    static void DragOver(Hands_cls& hands, wxWindow* pWindow, int button);
    static void Act(Hands_cls& hands, const std::vector<wxWindow*>& roots);
    /// All mistakes, a line each.
    std::string Replay(const wxString& record) {
        Replay_cls replay(*Hub(), ReadActFile(record.utf8_string()), mDir / "a.record", mDir / "files");
        fs::create_directory(mDir / "files");
        replay.Begin();
        EXPECT_TRUE(PumpUntil([&] { return replay.IsDone(); }, 20 * kPatience));
        Settle();
        std::string mistakes;
        for (const wxString& mistake : replay.GetMistakes())
            mistakes += mistake.utf8_string() + "\n";
        return mistakes;
    }
    static wxString Recorded() { return Hub()->mpCRecorder->GetText(); }
    /// Without what only a reader wants.
    static std::string Bare(const wxString& record) {
        std::string text;
        for (ActLine_st line : ReadActFile(record.utf8_string()).mLines) {
            line.mRemark.clear();
            text += WriteActLine(line).utf8_string() + "\n";
        }
        return text;
    }
};

void Record::DragOver(Hands_cls& hands, wxWindow* pWindow, int button) {
    const wxPoint from = hands.Anywhere(pWindow);
    const wxPoint to = hands.Anywhere(pWindow);
    if (IsOnTop(pWindow, from)) Drag(pWindow, from, to, button, 3);
}

void Record::Act(Hands_cls& hands, const std::vector<wxWindow*>& roots) {
    constexpr int kKeys[] = {WXK_LEFT, WXK_RIGHT, 'R', 'S', 'T', 'B', 'N', '5', '-', '\''};
    const wxPoint point = hands.Anywhere(Canvas(0));
    switch (hands.Pick(11)) {
    case 0:
    case 1:
        return ChooseMenu(kMenus[hands.Pick(std::size(kMenus))]);
    case 2:
        return DragOver(hands, Canvas(0), 1 + hands.Pick(2));
    case 3:
        if (IsOnTop(Canvas(0), point)) Wheel(Canvas(0), point, hands.Pick(2) == 0 ? 2 : -1);
        return;
    case 4:
        if (!IsOnTop(Canvas(0), point)) return;
        Click(Canvas(0), point);
        return Key(kKeys[hands.Pick(std::size(kKeys))]);
    case 5:
        if (auto* strips = hands.PickOf<ParamStrips_cls>(roots)) DragOver(hands, strips, 1);
        return;
    case 6:
        if (auto* tick = hands.PickOf<wxCheckBox>(roots)) ClickOn(tick);
        return;
    case 7:
        if (auto* choice = hands.PickOf<wxChoice>(roots); choice && choice->GetCount() > 1)
            Choose(choice, hands.Pick(choice->GetCount()));
        return;
    case 8:
        if (auto* dialog = dynamic_cast<wxDialog*>(roots[size_t(hands.Pick(roots.size()))])) dialog->Close();
        Settle();
        return;
    case 9:
        ChooseMenu(ID_LIGHT_SOURCE);
        [[fallthrough]];
    default:
        if (auto* field = hands.PickOf<NumField_cls>(roots); field && IsInReach(field->GetPCText()))
            TypeInto(field, std::to_string(hands.Pick(40)) + "." + std::to_string(hands.Pick(10)));
    }
}

TEST_F(Record, ARandomSessionIsReplayedToTheSameProject) {
    const char* more = std::getenv("MORENTIS_RECORD_ACTS");
    const int acts = more ? std::atoi(more) : 45;
    const char* seed = std::getenv("MORENTIS_RECORD_SEED");
    Hands_cls hands(seed ? unsigned(std::atoi(seed)) : 18);
    Hub()->mpCRecorder->Restart();
    Frame()->GetPCFileMenu()->GetOpener().Open({Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"}, false);
    Settle();
    const std::string start = Text();
    for (int act = 0; act < acts; ++act) {
        std::vector<wxWindow*> roots;
        for (wxWindow* window : wxTopLevelWindows)
            if (window->IsShown()) roots.push_back(window);
        Act(hands, roots);
        if (HasFatalFailure()) return;
    }
    Settle();
    Hub()->EndGestures();
    const std::string end = Text();
    const wxString record = Recorded();
    if (const char* keep = std::getenv("MORENTIS_RECORD_KEEP")) {
        std::ofstream(std::string(keep) + ".record") << record.utf8_string();
        std::ofstream(std::string(keep) + ".mrp") << end;
    }
    EXPECT_NE(end, start) << "something has been done";
    Fresh();
    Hub()->mpCRecorder->Restart();
    EXPECT_EQ(Replay(record), "");
    const std::string replayed = Text();
    if (const char* keep = std::getenv("MORENTIS_RECORD_KEEP")) {
        std::ofstream(std::string(keep) + "2.record") << Recorded().utf8_string();
        std::ofstream(std::string(keep) + "2.mrp") << replayed;
    }
    EXPECT_TRUE(replayed == end);
}

// What goes around the windows' own events: files, questions, popups, colours, text.
TEST_F(Record, QuestionsAndPopupsAreAnsweredInTheUsersPlace) {
    const std::string saved = mDir / "saved.mrp";
    Hub()->mpCRecorder->Restart();
    const std::string melt = Root() + "examples/lj_melt_bin/lj_melt_bin.mrp";
    Answer(melt);
    ChooseMenu(ID_OPEN_PROJECT);
    ClickPopup(Canvas(0), wxPoint(50, 50), {WXK_DOWN, WXK_RETURN});
    ChooseMenu(ID_FILTER_DATABOX);
    Answer(saved);
    ChooseMenu(ID_SAVE_PROJECT_AS);
    ChooseMenu(ID_FILTER_DATABOX);
    mSaveAnswers = {MESSAGE_CANCEL};
    Answer(melt);
    ChooseMenu(ID_OPEN_PROJECT);
    const wxString record = Recorded();
    for (const char* part : {"\nfile ", "\npopup 0", "\nsave ", "\nanswer cancel"})
        EXPECT_TRUE(record.Contains(part)) << part << "\n" << record;
    fs::remove(saved);
    Fresh();
    EXPECT_EQ(Replay(record), "") << record;
    EXPECT_EQ(Hub()->mpCFilters->GetObject().GetCount(), 2) << "the project with the unsaved step stays";
    EXPECT_FALSE(fs::exists(saved)) << "a replay saves into its own folder";
    EXPECT_TRUE(fs::exists(mDir / "files/saved.mrp"));
}

// A record may come from anyone: each line that can't be done is told, and the last one is still done.
TEST_F(Record, WrongLinesAreToldAndTheNextOnesDone) {
    const std::vector<std::string> wrong = {"fly away",
                                            "menu",
                                            "menu ID_NOTHING",
                                            "menu 6011",
                                            "set Nowhere 1",
                                            "set FrameMain 1",
                                            "set FrameMain/NumField nan",
                                            "set FrameMain/NumField.99999999999 1",
                                            "press FrameMain/MainGLCanvas",
                                            "mouse FrameMain/MainGLCanvas jump 0 0",
                                            "mouse FrameMain/MainGLCanvas left-down 1e300 0",
                                            "mouse FrameMain/MainGLCanvas wheel 0.5 0.5 turn:99999999999",
                                            "key FrameMain -1 0",
                                            "shortcut 5 99999",
                                            "choose FrameMain/wxChoice -1",
                                            "page FrameMain/wxNotebook 7000",
                                            "frame 100000 0",
                                            "frame -1 0",
                                            "window 0 1000000",
                                            "close FrameMain/MainGLCanvas",
                                            "file /etc/passwd",
                                            "text FrameMain/NumField/wxTextCtrl 5",
                                            "menu ID_OPEN_PROJECT",
                                            std::string(300, '/') + " 1"};
    std::string record = "morentis-record 1\n";
    for (const std::string& line : wrong)
        record += line + "\n";
    record += "mouse FrameMain/MainGLCanvas left-up 0.5 0.5\nclose FrameMain\nmenu ID_QUIT\n" +
              std::string("menu ID_FILTER_DATABOX\n");
    const std::vector<std::string> mistakes = Lines(Replay(record));
    EXPECT_EQ(mistakes.size(), wrong.size());
    for (size_t i = 0; i < std::min(wrong.size(), mistakes.size()); ++i)
        EXPECT_EQ(mistakes[i].rfind(std::to_string(i + 2) + ": ", 0), 0u)
            << mistakes[i] << " for " << wrong[i];
    EXPECT_EQ(Hub()->mpCFilters->GetObject().GetCount(), 1);
}

TEST_F(Record, AReportHoldsNoHomeFolder) {
    const std::string path = mDir / "report.zip";
    Hub()->mpCRecorder->Restart();
    GUserActs.mTold(wxGetHomeDir() + "/secret is gone");
    Frame()->GetPCFileMenu()->GetOpener().Open({wxGetHomeDir() + "/nothing.mrp"}, false);
    Answer(path);
    ChooseMenu(ID_SAVE_REPORT);
    EXPECT_TRUE(WasTold("report.txt"));
    wxFFileInputStream file(path);
    wxZipInputStream zip(file);
    std::map<wxString, std::string> parts;
    while (const std::unique_ptr<wxZipEntry> entry{zip.GetNextEntry()}) {
        std::string& bytes = parts[entry->GetName()];
        for (int c = zip.GetC(); zip.LastRead() > 0; c = zip.GetC())
            bytes += char(c);
    }
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_NE(parts["report.txt"].find("~/secret is gone"), std::string::npos) << parts["report.txt"];
    EXPECT_NE(parts["report.txt"].find("GL"), std::string::npos);
    EXPECT_NE(parts["record.txt"].find("open ~/nothing.mrp"), std::string::npos) << parts["record.txt"];
    EXPECT_FALSE(ReadActFile(parts["record.txt"]).mLines.empty());
    for (const auto& [name, bytes] : parts)
        EXPECT_EQ(bytes.find(wxGetHomeDir().utf8_string() + "/"), std::string::npos) << name;
}

} // namespace
