// Projects in the real program: nothing is lost between two days, whatever happens in the night.
#include <algorithm>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include <wx/filename.h>
#include <wx/menu.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsRecentFiles.h"
#include "APP/clsRecovery.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/SafeFile.h"
#include "GL/BASE/clsPreference.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PARAM/clsCommandItem.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFileDialogEX.h"

namespace {

namespace fs = std::filesystem;

std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::vector<std::string> Lines(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

struct Nothing_cls : CommandItem_cls {
    void Execute(bool) override {}
};

class Projects : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        GCUndoList.Clear();
        Hub()->mpCRecovery->MarkSaved();
        Menu(ID_REFRESH_GL);
        mVMessages.clear();
        mDefaults = mDir / "defaults.mrp";
        ASSERT_TRUE(Hub()->SaveProjectFile(mDefaults, true));
    }
    void TearDown() override {
        GSafeFileStep = {};
        wxFileDialogEX::sStrTestAnswer.clear();
        Hub()->mpCRecovery->mGap = std::chrono::minutes(1);
        Frame()->OpenProject(mDefaults);
        GCUndoList.Clear();
        Hub()->mpCRecovery->MarkSaved();
        GuiTest::TearDown();
    }
    static PDataSeqCtrl_cls* Store() { return Hub()->mpCPDataSeqCtrl; }
    static void Answer(const std::string& path) { wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(path); }
    static void Step() {
        GCUndoList.PushNewCommand(new Nothing_cls, new Nothing_cls);
        GCUndoList.ExecCurrent();
    }
    static bool HasStar() { return Frame()->GetTitle().StartsWith("*"); }
    static std::string ConfigFolder() { return wxFileName(GetConfigureFilePath()).GetPath().ToStdString(); }
    void Open(const std::string& path) {
        Frame()->OpenProject(wxString::FromUTF8(path));
        MainGLCanvas_cls::msCFBOSizeIndex.mValue = 0;
        EXPECT_TRUE(Settle());
    }
    /// The example, its first snapshots beside it in a folder of this name.
    std::string CopyMelt(const std::string& name) {
        const std::string folder = mDir / name;
        fs::create_directories(folder);
        for (int i = 0; i < 3; ++i)
            fs::copy(Root() + "examples/lj_melt_bin/melt000" + std::to_string(i) + ".bin", folder);
        return folder;
    }
    /// A project whose data path is this text.
    void WriteProject(const std::string& path, const std::string& dataPath) {
        std::ofstream file(path, std::ios::binary);
        for (const std::string& line : Lines(ReadAll(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp")))
            file << (line == "melt0000.bin" ? dataPath : line) << "\n";
    }

    TempDir_cls mDir;
    wxString mDefaults; ///< a project of the settings before the test
};

/// Another value for every line of a project: numbers with many digits, names with foreign letters.
std::string OtherValue(const std::string& key, const std::string& value, int seed) {
    if (key.find("File") != std::string::npos)
        return "/daten/\xC3\xBC\xC3\x9F \xE9\x9B\xAA/" + std::to_string(seed) + ".x";
    static const struct {
        const char* mpKey;
        const char* mpValue;
    } kFixed[] = {{"DataLoadGrammerHead=", "2 0 1"}, {"DataLoadGrammerBody=", "6 7 0 1 8 2 2"},
                  {"DataExportGrammerHead=", "3 1"}, {"DataExportGrammerBody=", "8 0 6 4 1"},
                  {"TimeMaxFrame=", "1234"},         {"TimeWorkAreaMin=", "11"},
                  {"TimeWorkAreaMax=", "1201"},      {"TimeActiveAreaMin=", "7"},
                  {"TImeActiveAreaMax=", "1213"},    {"TimeAnimStep=", "3"},
                  {"TimeAnimInterp=", "7"},          {"TimeUseTimeRemap=", "0"},
                  {"PreviewPanelType=", "3"},        {"FBOBufferSize=", "1"},
                  {"Panel0DisplayMode=", "4"},       {"Panel1DisplayMode=", "0"},
                  {"Panel2DisplayMode=", "5"},       {"Panel3DisplayMode=", "2"},
                  {"Panel4DisplayMode=", "8"},       {"OverLayShowLegend=", "0 1 1 0"},
                  {"ImgSequenceOutW=", "1921"},      {"ImgSequenceOutH=", "1079"},
                  {"ImgSequenceBlurSteps=", "17"},   {"ImgSequenceVideoRate=", "23.976000"}};
    for (const auto& fixed : kFixed)
        if (key == fixed.mpKey) return fixed.mpValue;
    std::istringstream in(value);
    std::string out;
    for (std::string word; in >> word; ++seed) {
        char text[64];
        if (word.find('.') != std::string::npos && word.size() - word.find('.') == 7)
            std::snprintf(text, sizeof text, "%f", double(float(0.000123 * seed + 1.0 / (seed % 7 + 3))));
        else if (value.find(' ') != std::string::npos && key.find("_MOD=") == std::string::npos)
            std::snprintf(text, sizeof text, "%g", 1.0 / (seed % 11 + 3));
        else
            std::snprintf(text, sizeof text, "%d", word == "0" ? 1 : 0);
        out += (out.empty() ? "" : " ") + std::string(text);
    }
    return out;
}

TEST_F(Projects, EveryLineComesBackAsItWas) {
    const std::string folder = CopyMelt("Schmelze \xE9\x9B\xAA & ..");
    const std::string original = folder + "/melt0000.bin";
    std::string text;
    std::string key;
    int seed = 0;
    for (const std::string& line : Lines(ReadAll(mDefaults.ToStdString()))) {
        const size_t equals = line.find('=');
        const bool bPlain = equals == std::string::npos || line.rfind("DataSequence", 0) == 0 ||
                            line.rfind("dimension=", 0) == 0 || line[0] == '-' ||
                            line.find("TexFile") != std::string::npos; // a missing picture is told
        if (key == "DataSequence0=0")
            text += original + "\n";
        else if (bPlain)
            text += line + "\n";
        else
            text += line.substr(0, equals + 1) +
                    OtherValue(line.substr(0, equals + 1), line.substr(equals + 1), ++seed) + "\n";
        key = line;
    }
    ASSERT_GT(seed, 500);
    // The four views stand in the file twice: the later lines count, so both must say the same.
    std::map<std::string, std::string> panels;
    std::string same;
    for (const std::string& line : Lines(text)) {
        const size_t equals = line.find('=');
        const bool bPanel = line.rfind("Panel", 0) == 0 && equals != std::string::npos;
        same += (bPanel ? panels.emplace(line.substr(0, equals), line).first->second : line) + "\n";
    }
    const std::string given = mDir / "given.mrp";
    std::ofstream(given, std::ios::binary) << same;

    const auto compare = [](const std::string& a, const std::string& b) {
        const std::vector<std::string> left = Lines(a);
        const std::vector<std::string> right = Lines(b);
        ASSERT_EQ(left.size(), right.size());
        for (size_t i = 0; i < left.size(); ++i)
            if (left[i].rfind("LastOpenedFileMRP=", 0) != 0) {
                EXPECT_EQ(left[i], right[i]) << "line " << i + 1;
            }
    };
    Frame()->OpenProject(wxString::FromUTF8(given));
    const wxString first = wxString::FromUTF8(mDir / "first.mrp");
    ASSERT_TRUE(Hub()->SaveProjectFile(first, true)) << "before anything could touch it";
    compare(ReadAll(first.ToStdString()), same);
    // Everything at its defaults, as a fresh program has it, and painted.
    Open(mDefaults.ToStdString());
    Open(first.ToStdString());
    const std::string before = ReadAll(first.ToStdString());
    Menu(ID_SAVE_PROJECT);
    MainGLCanvas_cls::msCFBOSizeIndex.mValue = 1; // as the file has it
    Menu(ID_SAVE_PROJECT);
    EXPECT_EQ(ReadAll(first.ToStdString()), before) << "byte for byte";
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 3);
    EXPECT_TRUE(mVMessages.empty());
    Hub()->mpCDataLoader->mCItemLastOpened.mStrValue = "NONE";
}

TEST_F(Projects, AMovedProjectKeepsItsText) {
    const std::string folder = CopyMelt("before");
    const std::string given = folder + "/melt0000.bin";
    WriteProject(folder + "/p.mrp", given);
    const std::string moved = mDir / "after";
    fs::rename(folder, moved);
    Open(moved + "/p.mrp");
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 3);
    EXPECT_GT(Grab(0).CountLit(60), 100);
    Menu(ID_SAVE_PROJECT);
    EXPECT_NE(ReadAll(moved + "/p.mrp").find("DataSequence0=0\n" + given + "\n"), std::string::npos);
    ASSERT_TRUE(OpenAndPaint(moved + "/melt0001.bin"));
    Menu(ID_SAVE_PROJECT);
    EXPECT_NE(ReadAll(moved + "/p.mrp").find("DataSequence0=0\n" + moved + "/melt0001.bin\n"),
              std::string::npos)
        << "other data have their own path";
    EXPECT_TRUE(mVMessages.empty());
}

TEST_F(Projects, ASaveThatFailsIsToldAndKeepsAll) {
    Open(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp");
    Answer(mDir / "mine.mrp");
    Menu(ID_SAVE_PROJECT_AS);
    const std::string saved = ReadAll(mDir / "mine.mrp");
    ASSERT_GT(saved.size(), 1000u);
    Step();
    ASSERT_TRUE(PumpUntil(HasStar));
    Hub()->mpCTimeCtrl->SetWAMaxNative(5);
    for (const std::string failing : {"open", "write", "sync", "rename"}) {
        mVMessages.clear();
        GSafeFileStep = [&failing](const char* step) { return failing != step; };
        Menu(ID_SAVE_PROJECT);
        // The recovery project's minute may come meanwhile, and fails too.
        EXPECT_EQ(std::count_if(mVMessages.begin(), mVMessages.end(),
                                [](const ShownMessage_st& message) {
                                    return message.mText.Contains("mine.mrp could not be written");
                                }),
                  1)
            << failing;
        EXPECT_EQ(ReadAll(mDir / "mine.mrp"), saved);
        EXPECT_TRUE(HasStar()) << "still unsaved";
    }
    Answer(mDir / "other.mrp");
    Menu(ID_SAVE_PROJECT_AS);
    GSafeFileStep = {};
    EXPECT_TRUE(Frame()->GetTitle().Contains("mine.mrp")) << "the name that failed isn't taken";
    Menu(ID_SAVE_PROJECT);
    EXPECT_FALSE(fs::exists(mDir / "other.mrp"));
    EXPECT_NE(ReadAll(mDir / "mine.mrp"), saved);
    EXPECT_FALSE(HasStar());
    EXPECT_FALSE(GbGLLockModalDialog.load());
}

TEST_F(Projects, PreferencesAndRecentFilesSurviveARestart) {
    const wxString path = GetConfigureFilePath();
    Preference_cls* preference = Frame()->GetPCPreference();
    const std::string folder = CopyMelt("data");
    WriteProject(folder + "/p.mrp", "melt0000.bin");
    Open(folder + "/p.mrp");
    preference->mCGyration.mValue = 1;
    preference->mCZoomMod.mValue[2] = true;
    preference->mCSortType.mValue = 2;
    Hub()->QuitProcess();
    const std::string text = ReadAll(path.ToStdString());
    const size_t frame = text.find("LastOpenedFileIMG=");
    const size_t mouse = text.find("GUI_GYRATION=1\n");
    const size_t sort = text.find("PREF_SORT_TYPE=2\n");
    const size_t recent = text.find("RecentProject1=" + folder + "/p.mrp\n");
    EXPECT_TRUE(frame < mouse && mouse < sort && sort < recent && recent != std::string::npos) << text;
    EXPECT_EQ(text.find("Panel0"), std::string::npos);
    EXPECT_EQ(text.find("DataSequence"), std::string::npos);
    EXPECT_EQ(ReadAll(folder + "/p.mrp").find("RecentProject"), std::string::npos);

    preference->mCGyration.mValue = 0;
    preference->mCZoomMod.mValue[2] = false;
    preference->mCSortType.mValue = 0;
    Hub()->mpCRecentFiles->Remove(RecentFiles_cls::Projects, folder + "/p.mrp");
    Hub()->ReadProjectFile(path);
    EXPECT_EQ(preference->mCGyration.mValue, 1u);
    EXPECT_TRUE(preference->mCZoomMod.mValue[2]);
    EXPECT_EQ(preference->mCSortType.mValue, 2u);
    const auto& projects = Hub()->mpCRecentFiles->Get(RecentFiles_cls::Projects);
    EXPECT_NE(std::find(projects.begin(), projects.end(), wxString(folder + "/p.mrp")), projects.end());
    wxRemoveFile(path);
}

TEST_F(Projects, AStarTellsOfUnsavedSteps) {
    const wxString plain = Frame()->GetTitle();
    EXPECT_FALSE(HasStar());
    Step();
    ASSERT_TRUE(PumpUntil(HasStar));
    EXPECT_EQ(Frame()->GetTitle(), "*" + plain);
    GCUndoList.UndoCurrent();
    ASSERT_TRUE(PumpUntil([] { return !HasStar(); }));
    GCUndoList.ExecCurrent();
    ASSERT_TRUE(PumpUntil(HasStar));
    Answer(mDir / "a.mrp");
    Menu(ID_SAVE_PROJECT_AS);
    EXPECT_FALSE(HasStar());
    EXPECT_TRUE(Frame()->GetTitle().EndsWith("a.mrp"));
    Step();
    ASSERT_TRUE(PumpUntil(HasStar));
    mAnswers = {false};
    Menu(ID_QUIT);
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mText, "Really Quit ?");
    Open(mDir / "a.mrp");
    EXPECT_FALSE(HasStar());
}

TEST_F(Projects, UnsavedStepsAreKeptBesideTheConfigureFile) {
    Recovery_cls* recovery = Hub()->mpCRecovery;
    recovery->mGap = std::chrono::milliseconds(0);
    Open(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp");
    PumpUntil([] { return false; }, 1200);
    EXPECT_TRUE(recovery->GetPath().empty()) << "nothing is unsaved";
    {
        const FlagScope_cls modal(GbGLLockModalDialog);
        Step();
        PumpUntil([] { return false; }, 1200);
        EXPECT_TRUE(recovery->GetPath().empty()) << "not while a question is up";
    }
    ASSERT_TRUE(PumpUntil([recovery] { return !recovery->GetPath().empty(); }));
    const std::string path = recovery->GetPath().ToStdString();
    EXPECT_EQ(fs::path(path).parent_path(), fs::path(ConfigFolder()));
    const std::string text = ReadAll(path);
    EXPECT_NE(text.find("DataSequence0=0\nmelt0000.bin\n"), std::string::npos);
    EXPECT_NE(text.find("TimeRepeat=1\n"), std::string::npos) << "a whole project";
    // Settings that are no steps come along.
    Hub()->mpCDataLoader->mCItemScale.mValue = 0.375f;
    ASSERT_TRUE(PumpUntil([&path] { return ReadAll(path).find("LoaderScale=0.375") != std::string::npos; }));
    GCUndoList.UndoCurrent();
    ASSERT_TRUE(PumpUntil([&path] { return !fs::exists(path); }));
    Step();
    ASSERT_TRUE(PumpUntil([&path] { return fs::exists(path); }));
    Answer(mDir / "a.mrp");
    Menu(ID_SAVE_PROJECT_AS);
    EXPECT_FALSE(fs::exists(path)) << "saved";
}

TEST_F(Projects, WhatWasLeftIsOfferedAndOpensUnnamed) {
    // Left by a program that was killed: a project beside the data, which it names by a relative path.
    const std::string folder = CopyMelt("work");
    WriteProject(folder + "/p.mrp", "melt0000.bin");
    std::ofstream(folder + "/p.mrp", std::ios::app) << "LastOpenedFileMRP=" << folder << "/p.mrp\n";
    const std::string left = ConfigFolder() + "/Morentis3Recovery-1.mrp";
    fs::copy(folder + "/p.mrp", left);
    mAnswers = {false};
    Frame()->OfferRecovery();
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mKind, MessageKind::Question);
    EXPECT_TRUE(WasTold(wxDateTime::Now().Format("%Y-%m-%d"))) << "with the file's time";
    EXPECT_FALSE(fs::exists(left)) << "no throws it away";
    Frame()->OfferRecovery();
    EXPECT_EQ(mVMessages.size(), 1u) << "once";

    fs::copy(folder + "/p.mrp", left);
    mAnswers = {true};
    Frame()->OfferRecovery();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 3);
    EXPECT_EQ(Frame()->GetTitle(), "*Morentis 3 v 0.80") << "unnamed and modified";
    EXPECT_FALSE(Frame()->IsProjectNamed());
    EXPECT_TRUE(fs::exists(left)) << "until it is saved";
    Answer(folder + "/saved.mrp");
    Menu(ID_SAVE_PROJECT);
    EXPECT_FALSE(fs::exists(left));
    EXPECT_FALSE(HasStar());
    EXPECT_NE(ReadAll(folder + "/saved.mrp").find("DataSequence0=0\nmelt0000.bin\n"), std::string::npos);
}

TEST_F(Projects, RecentFilesOpenAgainAndTheLostOnesGo) {
    const std::string folder = CopyMelt("recent & old");
    WriteProject(folder + "/one.mrp", "melt0000.bin");
    WriteProject(folder + "/two.mrp", "melt0001.bin");
    Open(folder + "/one.mrp");
    Open(folder + "/two.mrp");
    ASSERT_TRUE(OpenAndPaint(folder + "/melt0002.bin"));
    wxMenuBar* bar = Frame()->GetMenuBar();
    EXPECT_TRUE(bar->FindItem(ID_RECENT_PROJECT_0)->GetItemLabelText().EndsWith("two.mrp"));
    EXPECT_TRUE(bar->FindItem(ID_RECENT_PROJECT_0 + 1)->GetItemLabelText().EndsWith("/recent & old/one.mrp"));
    EXPECT_TRUE(bar->FindItem(ID_RECENT_DATA_0)->GetItemLabelText().EndsWith("melt0002.bin"));
    Menu(ID_RECENT_PROJECT_0 + 1);
    EXPECT_TRUE(Frame()->GetTitle().EndsWith("one.mrp"));
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 3);
    EXPECT_TRUE(bar->FindItem(ID_RECENT_PROJECT_0)->GetItemLabelText().EndsWith("one.mrp")) << "newest first";
    Menu(ID_RECENT_DATA_0);
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 1);
    EXPECT_TRUE(mVMessages.empty());
    Snap("recent");

    fs::remove(folder + "/two.mrp");
    fs::remove(folder + "/melt0002.bin");
    Menu(ID_RECENT_PROJECT_0 + 1);
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_TRUE(WasTold("two.mrp is not there any more"));
    EXPECT_TRUE(Frame()->GetTitle().EndsWith("one.mrp")) << "nothing else changed";
    Menu(ID_RECENT_DATA_0);
    EXPECT_EQ(mVMessages.size(), 2u);
    const auto& data = Hub()->mpCRecentFiles->Get(RecentFiles_cls::Data);
    EXPECT_TRUE(data.empty() || !data[0].EndsWith("melt0002.bin"));
    EXPECT_FALSE(bar->FindItem(ID_RECENT_PROJECT_0 + 1) &&
                 bar->FindItem(ID_RECENT_PROJECT_0 + 1)->GetItemLabelText().EndsWith("two.mrp"));
}

TEST_F(Projects, BadProjectsEndNothing) {
    for (const auto& entry : fs::directory_iterator(Root() + "tests/data/bad/project")) {
        if (entry.path().extension() != ".mrp") continue;
        Open(entry.path().string());
        EXPECT_TRUE(Frame()->GetTitle().EndsWith(entry.path().filename().string()));
        Menu(ID_REFRESH_DRAW_OPTIONS);
        const wxString first = wxString(mDir / "again.mrp");
        ASSERT_TRUE(Hub()->SaveProjectFile(first, true));
        const std::string text = ReadAll(first.ToStdString());
        Open(first.ToStdString());
        MainGLCanvas_cls::msCFBOSizeIndex.ReadStrLine(
            wxString(text.substr(text.find("FBOBufferSize="), 30)).BeforeFirst('\n'));
        ASSERT_TRUE(Hub()->SaveProjectFile(first, true));
        EXPECT_EQ(ReadAll(first.ToStdString()), text) << entry.path();
        MainGLCanvas_cls::msCFBOSizeIndex.mValue = 0;
    }
}

TEST_F(Projects, WhatIsNoProjectIsToldAndNothingChanges) {
    Open(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp");
    const wxString title = Frame()->GetTitle();
    ASSERT_EQ(mkfifo((mDir / "pipe.mrp").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", mDir / "zero.mrp");
    fs::create_directory(mDir / "folder.mrp");
    fs::create_symlink("nowhere", mDir / "lost.mrp");
    std::ofstream(mDir / "huge.mrp") << "LoaderScale=3\n";
    fs::resize_file(mDir / "huge.mrp", 70u << 20);
    for (const char* name : {"pipe.mrp", "zero.mrp", "folder.mrp", "lost.mrp", "huge.mrp", "missing.mrp"}) {
        mVMessages.clear();
        Open(mDir / name);
        ASSERT_EQ(mVMessages.size(), 1u) << name;
        EXPECT_TRUE(WasTold(name)) << mVMessages[0].mText;
        EXPECT_EQ(Frame()->GetTitle(), title);
        EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 20) << name;
    }
    EXPECT_TRUE(mVMessages[0].mText == wxString("Read Configure Fails") + wxString(mDir / "missing.mrp"));
    std::ofstream endless(mDir / "endless.mrp");
    endless << std::string(60u << 20, 'x') << "\nTimeMaxFrame=17\n";
    endless.close();
    Open(mDir / "endless.mrp");
    EXPECT_EQ(Hub()->mpCTimeCtrl->GetMaxFrame(), 17);
}

} // namespace
