// Projects in the real program: what is saved comes back as it was, and bad files end nothing.
#include <algorithm>
#include <map>
#include <set>

#include <sys/stat.h>

#include "APP/clsFileMenu.h"
#include "APP/clsRecentFiles.h"
#include "COMMON/Globals.h"
#include "GL/VIEW/clsSharedView.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "ProjectTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"

namespace {

using Projects = ProjectTest;

/// Another value for every line of a project: numbers with many digits, names with foreign letters.
std::string OtherValue(const std::string& key, const std::string& value, int seed) {
    static const struct {
        const char* mpKey;
        const char* mpValue;
    } kFixed[] = {{"DataLoadGrammerHead=", "2 0 1"},
                  {"DataLoadGrammerBody=", "6 7 0 1 8 2 2"},
                  {"DataExportGrammerHead=", "3 1"},
                  {"DataExportGrammerBody=", "8 0 6 4 1"},
                  {"TimeMaxFrame=", "1234"},
                  {"TimeWorkAreaMin=", "11"},
                  {"TimeWorkAreaMax=", "1201"},
                  {"TimeActiveAreaMin=", "7"},
                  {"TImeActiveAreaMax=", "1213"},
                  {"TimeAnimStep=", "3"},
                  {"TimeAnimInterp=", "7"},
                  {"TimeUseTimeRemap=", "0"},
                  {"PreviewPanelType=", "3"},
                  {"FBOBufferSize=", "1"},
                  {"Panel0DisplayMode=", "4"},
                  {"Panel1DisplayMode=", "0"},
                  {"Panel2DisplayMode=", "5"},
                  {"Panel3DisplayMode=", "2"},
                  {"Panel4DisplayMode=", "8"},
                  {"OverLayShowLegend=", "0 1 1 0"},
                  {"ImgSequenceOutW=", "1921"},
                  {"ImgSequenceOutH=", "1079"},
                  {"ImgSequenceBlurSteps=", "17"},
                  {"ImgSequenceVideoRate=", "23.976000"},
                  {"UseCommonSceneFile=", "0"},
                  {"PovRadiosityCount=", "77"},
                  {"PovRadiosityRecursionLimit=", "7"},
                  {"PovRadiosityNearestCount=", "9"},
                  {"PovPhotonsCount=", "33"},
                  {"PovPhotonsMaxTrace=", "8"},
                  {"PovCameraWidth=", "321"},
                  {"PovCameraHeight=", "123"},
                  {"PovFileAbsolute=", "1"},
                  {"PovAntiAliasDepth=", "4"},
                  {"PovMaxTraceLevel=", "21"},
                  {"LightAreaQuality=", "3"},
                  {"LightNumber=", "2"}}; // as many blocks follow
    for (const auto& fixed : kFixed)
        if (key == fixed.mpKey) return fixed.mpValue;
    if (key.find("File") != std::string::npos)
        return "/daten/\xC3\xBC\xC3\x9F \xE9\x9B\xAA/" + std::to_string(seed) + ".x";
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
    Shared().msCFBOSizeIndex.mValue = 1; // as the file has it
    Menu(ID_SAVE_PROJECT);
    EXPECT_EQ(ReadAll(first.ToStdString()), before) << "byte for byte";
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 3);
    EXPECT_TRUE(mVMessages.empty());
    Hub()->mpCDataLoader->mCItemLastOpened.mStrValue = "NONE";
}

// What was the project's before this one ends with it, also where the new one says nothing of it.
TEST_F(Projects, OneWithoutCameraBlocksHasTheDefaults) {
    std::string text;
    bool bPath = false;
    for (const std::string& line : Lines(ReadAll(mDefaults.ToStdString()))) {
        if (line.rfind("---", 0) == 0) bPath = line == "---CameraPath" || line == "---AnchorPath";
        if (!bPath) text += line + "\n";
    }
    ASSERT_LT(text.size(), ReadAll(mDefaults.ToStdString()).size());
    const std::string bare = mDir / "bare.mrp";
    std::ofstream(bare, std::ios::binary) << text;
    const auto paths = [] { return Hub()->mpCCameraPath->Serialize() + Hub()->mpCAnchorPath->Serialize(); };
    Frame()->OpenProject(mDefaults);
    const wxString fresh = paths();
    Frame()->OpenProject(wxString::FromUTF8(Root() + "examples/galaxy_small_bin/galaxy_film.mrp"));
    ASSERT_NE(paths(), fresh);
    Frame()->OpenProject(wxString::FromUTF8(bare));
    EXPECT_EQ(paths().ToStdString(), fresh.ToStdString());
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
    std::string failing;
    GSafeFileStep = [&failing](const char* step) { return failing != step; };
    for (const char* step : {"open", "write", "sync", "rename"}) {
        failing = step;
        mVMessages.clear();
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
        Shared().msCFBOSizeIndex.ReadStrLine(
            wxString(text.substr(text.find("FBOBufferSize="), 30)).BeforeFirst('\n'));
        ASSERT_TRUE(Hub()->SaveProjectFile(first, true));
        EXPECT_EQ(ReadAll(first.ToStdString()), text) << entry.path();
        Shared().msCFBOSizeIndex.mValue = 0;
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
    EXPECT_TRUE(mVMessages[0].mText == wxString("Read Configure Fails") + wxString(mDir / "missing.mrp") +
                                           ": No such file or directory");
    std::ofstream endless(mDir / "endless.mrp");
    endless << std::string(60u << 20, 'x') << "\nTimeMaxFrame=17\n";
    endless.close();
    Open(mDir / "endless.mrp");
    EXPECT_EQ(Hub()->mpCTimeCtrl->GetMaxFrame(), 17);
}

TEST_F(Projects, TheNameThatIsWrittenIsTheNameThatIsAskedAbout) {
    Answer(mDir / "fresh");
    Menu(ID_SAVE_PROJECT_AS);
    EXPECT_TRUE(fs::exists(mDir / "fresh.mrp"));
    EXPECT_TRUE(mVMessages.empty()) << "nothing is replaced";
    std::ofstream(mDir / "other") << "of another program";
    std::ofstream(mDir / "other.mrp") << "precious";
    // "No" leads back to the choice, and there somebody gives up.
    SetMessageHandler([this](MessageKind kind, const wxString& text, const wxString& title) {
        mVMessages.push_back({kind, text, title});
        Answer("CANCEL");
        return false;
    });
    Answer(mDir / "other");
    Menu(ID_SAVE_PROJECT_AS);
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mKind, MessageKind::Question);
    EXPECT_TRUE(WasTold("/other.mrp exists already"));
    EXPECT_EQ(GpCFileDialog->GetFilename(), "other.mrp") << "the choice begins there";
    EXPECT_EQ(ReadAll(mDir / "other.mrp"), "precious");
    SetMessageHandler([](MessageKind, const wxString&, const wxString&) { return true; });
    Answer(mDir / "other");
    Menu(ID_SAVE_PROJECT_AS);
    EXPECT_NE(ReadAll(mDir / "other.mrp").find("LoaderScale="), std::string::npos);
    EXPECT_EQ(ReadAll(mDir / "other"), "of another program");
}

TEST_F(Projects, UnsavedStepsAreAskedAboutBeforeTheyGo) {
    const std::string next = mDir / "next.mrp";
    std::ofstream(next) << "LoaderScale=1\nTimeMaxFrame=23\n";
    const auto open = [&next](int way) {
        if (way == 0) Answer(next);
        if (way == 0) Menu(ID_OPEN_PROJECT);
        if (way == 1) Frame()->GetPCFileMenu()->GetOpener().Open({next}, false);
        if (way == 2) Hub()->mpCRecentFiles->Add(RecentFiles_cls::Projects, next);
        if (way == 2) Menu(ID_RECENT_PROJECT_0);
        Settle();
    };
    for (const int way : {0, 1, 2}) {
        SCOPED_TRACE(way);
        const std::string mine = mDir / ("mine" + std::to_string(way) + ".mrp");
        Open(mDefaults.ToStdString());
        open(way);
        EXPECT_TRUE(mVMessages.empty()) << "nothing is unsaved";
        Answer(mine);
        Menu(ID_SAVE_PROJECT_AS);
        const std::string saved = ReadAll(mine);
        Hub()->mpCTimeCtrl->SetMaxFrameNative(41);
        Step();
        mSaveAnswers = {MESSAGE_CANCEL};
        open(way);
        ASSERT_EQ(mVMessages.size(), 1u);
        EXPECT_EQ(mVMessages[0].mKind, MessageKind::Save);
        EXPECT_TRUE(WasTold(fs::path(mine).filename().string()));
        EXPECT_EQ(Hub()->mpCTimeCtrl->GetMaxFrame(), 41) << "Cancel stays";
        EXPECT_EQ(ReadAll(mine), saved);
        mSaveAnswers = {MESSAGE_YES};
        GSafeFileStep = [](const char*) { return false; };
        open(way);
        EXPECT_EQ(Hub()->mpCTimeCtrl->GetMaxFrame(), 41) << "what couldn't be saved stays";
        GSafeFileStep = {};
        mSaveAnswers = {MESSAGE_YES};
        open(way);
        EXPECT_EQ(Hub()->mpCTimeCtrl->GetMaxFrame(), 23);
        EXPECT_NE(ReadAll(mine).find("TimeMaxFrame=41\n"), std::string::npos) << "Save saves";
        const std::string unchanged = ReadAll(next);
        Hub()->mpCTimeCtrl->SetMaxFrameNative(42);
        Step();
        mSaveAnswers = {MESSAGE_NO};
        open(way);
        EXPECT_EQ(Hub()->mpCTimeCtrl->GetMaxFrame(), 23) << "Don't Save goes on";
        EXPECT_EQ(ReadAll(next), unchanged);
        mVMessages.clear();
    }
    // One that can't be opened costs nothing.
    Step();
    Answer(mDir / "nowhere.mrp");
    Menu(ID_OPEN_PROJECT);
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mKind, MessageKind::Inform);
}

// Every setting that the program knows stands in the examples: nothing of what was open before shows in them.
TEST_F(Projects, ExamplesAreComplete) {
    const auto keys = [](const std::string& path) {
        std::set<std::string> found;
        for (const std::string& line : Lines(ReadAll(path)))
            if (line.rfind("---", 0) == 0 || line.find('=') != std::string::npos)
                found.insert(line.rfind("-ParamGroup=", 0) == 0 ? line : line.substr(0, line.find('=')));
        return found;
    };
    int count = 0;
    const std::string written = mDir / "written.mrp";
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(Root() + "examples")) {
        if (entry.path().extension() != ".mrp") continue;
        ++count;
        Frame()->OpenProject(wxString::FromUTF8(entry.path().string()));
        ASSERT_TRUE(Hub()->SaveProjectFile(written, true));
        const std::set<std::string> has = keys(entry.path().string());
        for (const std::string& key : keys(written))
            EXPECT_TRUE(has.count(key) > 0) << entry.path() << " lacks " << key;
    }
    EXPECT_GE(count, 10);
    EXPECT_TRUE(mVMessages.empty()) << mVMessages.front().mText;
}

} // namespace
