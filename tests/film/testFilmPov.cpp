// Films through POV-Ray: scenes and pictures of all frames, in parts and again, with blur, and what goes
// wrong.
#include <signal.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <wx/image.h>

#include "RunFilm.h"

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class FilmPov : public ::testing::Test {
protected:
    FilmPov() {
        mProject = mFolder.MakeProject(
            "film.mrp", "DownSizing=100\nPovCameraWidth=640\nPovDisplay=1\nPovPauseWhenDone=1\n");
        fs::create_directory(mFolder.mPath / "out");
    }
    ChildRun_st Render(const std::string& out, Words words = {}) {
        words.insert(words.end(), {"--size", "48x36", "--pov-render", mFolder / out, mProject});
        return RunFilm(words);
    }
    std::set<std::string> Names(const std::string& folder, const std::string& ending) const {
        std::set<std::string> names;
        for (const auto& [name, bytes] : mFolder.ReadAll(folder))
            if (fs::path(name).extension() == ending) names.insert(name);
        return names;
    }
    /// In the place of POV-Ray; $1 is the .ini, $2 "+Iscene.pov", $3 "+Oname".
    void Pretend(const std::string& script, const std::string& lines = "") {
        const std::string path = mFolder / "renderer";
        std::ofstream(path) << "#!/bin/sh\nname=\"${3#+O}\"\n" << script << "\n";
        chmod(path.c_str(), 0755);
        mProject = mFolder.MakeProject("film.mrp", "DownSizing=100\nPathPovRay=" + path + "\n" + lines);
    }
    FilmFolder_cls mFolder;
    std::string mProject;
};

TEST_F(FilmPov, ScenesAreWrittenWithTheProjectsNames) {
    const ChildRun_st run = RunFilm({"--pov-export", mFolder / "out", "--frames", "1-3", mProject});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_EQ(Names("out", ".pov"),
              (std::set<std::string>{"povanim0001.pov", "povanim0002.pov", "povanim0003.pov"}));
    const auto files = mFolder.ReadAll("out");
    EXPECT_EQ(files.size(), 6u);
    EXPECT_NE(files.at("povanim0001.ini").find("width=640\n"), std::string::npos);
    EXPECT_NE(files.at("povanim0001.ini").find("DISPLAY=off\nPause_When_Done=off\n"), std::string::npos);
    fs::remove(mFolder.mPath / "out/povanim0002.ini");
    const ChildRun_st again =
        RunFilm({"--pov-export", mFolder / "out", "--frames", "1-3", "--resume", mProject});
    EXPECT_NE(again.mOut.find("2 were there"), std::string::npos) << again.mOut;
    EXPECT_TRUE(mFolder.ReadAll("out") == files);
    EXPECT_NE(files.at("povanim0001.pov"), files.at("povanim0002.pov"));
    EXPECT_EQ(files.at("povanim0001.pov").compare(0, 15, "global_settings"), 0);
    // Frames before the work area have numbers below those of the film.
    mProject = mFolder.MakeProject(
        "late.mrp", "DownSizing=100\nTimeWorkAreaMin=3\nTimeAnimInterp=2\nPovRenderRegion=1\n");
    fs::create_directory(mFolder.mPath / "late");
    const ChildRun_st late = RunFilm({"--pov-export", mFolder / "late", mProject});
    EXPECT_EQ(late.mStatus, 0) << late.mErr;
    const std::set<std::string> names = Names("late", ".pov");
    EXPECT_EQ(names.size(), 9u) << "of the whole film";
    EXPECT_TRUE(names.count("povanim-001.pov") && names.count("povanim0000.pov"));
}

// Light of the first frame and photons are found by chance: the same chance in each part.
TEST_F(FilmPov, PartsAreTheBytesOfOneRun) {
    mProject = mFolder.MakeProject("film.mrp", "DownSizing=100\nPovRadiosityType=1\nPovKeepFirstPretrace=1\n"
                                               "PovPhotonsType=1\nPovPhotonsCount=2\n");
    const std::string video = mFolder / "film.mp4";
    const ChildRun_st whole = Render("whole", {"--jobs", "2", "--frames", "0-1", "--video", video});
    ASSERT_EQ(whole.mStatus, 0) << whole.mErr;
    EXPECT_EQ(Names("whole", ".png").size(), 2u);
    const auto files = mFolder.ReadAll("whole");
    EXPECT_EQ(files.size(), 7u) << "with CommonLight.rca, and nothing else is left";
    EXPECT_NE(files.at("povanim0001.pov").find("photons"), std::string::npos);
    EXPECT_GT(fs::file_size(video), 1000u);
    fs::resize_file(mFolder.mPath / "whole/povanim0001.png", 60);
    const ChildRun_st rest = Render("whole", {"--jobs", "2", "--frames", "0-1", "--resume"});
    EXPECT_EQ(rest.mStatus, 0) << rest.mErr;
    EXPECT_NE(rest.mOut.find("1 were there"), std::string::npos) << rest.mOut;
    EXPECT_TRUE(mFolder.ReadAll("whole") == files);
    EXPECT_EQ(Render("last", {"--frames", "1"}).mStatus, 0) << "which finds the light of the first itself";
    for (const char* name : {"CommonLight.rca", "povanim0001.png"})
        EXPECT_TRUE(mFolder.ReadAll("last")[name] == files.at(name)) << name;
}

// The cut's keys change what is drawn of the one snapshot.
TEST_F(FilmPov, OneSnapshotsDataAreTheSameInAllParts) {
    const std::string melt = std::string(MORENTIS_TEST_ROOT) + "/examples/lj_melt_text/";
    fs::create_directory(mFolder.mPath / "one");
    fs::copy_file(melt + "melt0000.txt", mFolder / "one/melt0000.txt");
    std::ifstream file(melt + "melt_cut.mrp");
    std::string text(std::istreambuf_iterator<char>(file), {});
    const auto getData = [](const std::string& scene) { return scene.find("sphere{"); };
    for (const bool bCut : {true, false}) {
        const size_t valid = text.find("FilterValid=1");
        ASSERT_NE(valid, std::string::npos);
        if (!bCut) text[valid + 12] = '0';
        mProject = mFolder / "one/melt.mrp";
        std::ofstream(mProject) << text << "\nTimeAnimInterp=1\nFBOBufferSize=0\n";
        const std::string sort = bCut ? "cut" : "plain";
        for (const auto& [folder, frames] : {std::pair("whole", "4-5"), {"parts", "5"}}) {
            if (!bCut && std::string(folder) == "parts") continue;
            fs::create_directories(mFolder / (sort + folder));
            const ChildRun_st run =
                RunFilm({"--pov-export", mFolder / (sort + folder), "--frames", frames, mProject});
            EXPECT_EQ(run.mStatus, 0) << run.mErr;
        }
        auto files = mFolder.ReadAll(sort + "whole");
        if (bCut) {
            for (const auto& [name, bytes] : mFolder.ReadAll("cutparts"))
                EXPECT_TRUE(files[name] == bytes) << name;
        }
        EXPECT_NE(getData(files["CommonScene.pov"]), std::string::npos);
        for (const char* name : {"povanim0004.pov", "povanim0005.pov"}) {
            EXPECT_EQ(getData(files[name]) != std::string::npos, bCut) << name;
            EXPECT_EQ(files[name].find("#include \"CommonScene.pov\"") == std::string::npos, bCut) << name;
        }
    }
}

TEST_F(FilmPov, FullFoldersAreToldAndKeepNoHalfFiles) {
    mProject = mFolder.MakeProject("full.mrp", "DownSizing=1\n");
    Limits_st limits;
    limits.mFileBytes = 65536; // which Xvfb needs for its own
    const ChildRun_st run =
        RunFilm({"--pov-export", mFolder / "out", "--frames", "0-1", mProject}, {}, {}, limits);
    EXPECT_EQ(run.mStatus, 3) << run.mErr;
    EXPECT_NE(run.mErr.find("frame 1, " + mFolder / "out/povanim0001.pov"), std::string::npos) << run.mErr;
    EXPECT_NE(run.mErr.find("File too large"), std::string::npos) << run.mErr;
    EXPECT_TRUE(Names("out", ".pov").empty());
}

TEST_F(FilmPov, TheLightIsThatOfTheFilmsFirstFrame) {
    mProject =
        mFolder.MakeProject("film.mrp", "DownSizing=100\nPovRadiosityType=1\nPovKeepFirstPretrace=1\n"
                                        "PovRenderRegion=2\nPovRegionCustomMin=2\nPovRegionCustomMax=3\n");
    const ChildRun_st run = RunFilm({"--pov-export", mFolder / "out", mProject});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    auto files = mFolder.ReadAll("out");
    EXPECT_NE(files["povanim0002.ini"].find("Radiosity_To_File=on"), std::string::npos);
    EXPECT_NE(files["povanim0003.ini"].find("Radiosity_From_File=on"), std::string::npos);
    fs::create_directory(mFolder.mPath / "part");
    const ChildRun_st part = RunFilm({"--pov-export", mFolder / "part", "--frames", "3", mProject});
    EXPECT_NE(part.mErr.find("the light that the scene of frame 2 leaves"), std::string::npos) << part.mErr;
    EXPECT_TRUE(mFolder.ReadAll("part")["povanim0003.ini"] == files["povanim0003.ini"]);
}

// Other machines may be at the same film in the same folder.
TEST_F(FilmPov, TheLightIsFoundUnderANameOfItsOwn) {
    Pretend("readlink \"$1\" >> ../names; echo x > \"$name.png\"",
            "PovRadiosityType=1\nPovKeepFirstPretrace=1\n---AllLightSource\nLightNumber=0\n");
    fs::create_directories(mFolder / "out");
    std::ofstream(mFolder / "out/pretrace.ini") << "another's";
    for (int run = 0; run < 2; ++run) {
        const ChildRun_st film = Render("out");
        EXPECT_EQ(film.mStatus, 3);
        EXPECT_NE(film.mErr.find("there is no light in the scene"), std::string::npos) << film.mErr;
        EXPECT_NE(film.mErr.find("can't be made: " + (mFolder / "out/CommonLight.rca") + " is not there"),
                  std::string::npos)
            << film.mErr;
        EXPECT_EQ(mFolder.ReadAll("out").size(), 1u) << "no frame was begun, nothing is left";
    }
    std::ifstream file(mFolder / "names");
    std::set<std::string> names;
    for (std::string name; std::getline(file, name);)
        names.insert(name);
    EXPECT_EQ(names.size(), 2u) << "a name for each";
}

TEST_F(FilmPov, BlurIsTheMeanOfPicturesOfMoments) {
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) wxImage::AddHandler(new wxPNGHandler);
    for (const auto& [moment, grey] : {std::pair("000", 20), {"001", 50}, {"002", 200}}) {
        wxImage image(48, 36);
        std::fill_n(image.GetData(), 48 * 36 * 3, static_cast<unsigned char>(grey));
        ASSERT_TRUE(image.SaveFile(wxString(mFolder / (std::string(moment) + ".png"))));
    }
    Pretend("scene=$(basename \"$(readlink \"$name.pov\")\" .pov); cp \"$scene.pov\" ..; "
            "cp \"../${scene#*-blur}.png\" \"$name.png\"");
    const ChildRun_st run = Render("out", {"--frames", "1-2", "--blur", "1/3", "--jobs", "4"});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_EQ(mFolder.ReadAll("out").size(), 2u) << "the moments are gone";
    for (const char* name : {"out/povanim0001.png", "out/povanim0002.png"}) {
        const wxImage mean(wxString(mFolder / name));
        ASSERT_TRUE(mean.IsOk());
        EXPECT_TRUE(std::all_of(mean.GetData(), mean.GetData() + 48 * 36 * 3, [](int v) { return v == 90; }))
            << name << ": (20 + 50 + 200) / 3";
    }
    std::set<std::string> scenes;
    for (const char* moment : {"000", "001", "002"}) {
        std::ifstream file(mFolder / ("povanim0001-blur" + std::string(moment) + ".pov"));
        scenes.insert(std::string(std::istreambuf_iterator<char>(file), {}));
    }
    EXPECT_EQ(scenes.size(), 3u) << "particles move between the snapshots";
}

TEST_F(FilmPov, FailedFramesAreNamedAndTheOthersMade) {
    Pretend("case \"$(readlink \"$1\")\" in *2.ini) echo the lamp broke >&2; exit 1;; esac; echo x > "
            "\"$name.png\"");
    const ChildRun_st run = Render("out");
    EXPECT_EQ(run.mStatus, 3);
    EXPECT_NE(run.mErr.find("frame 2, " + mFolder / "out/povanim0002.png"), std::string::npos) << run.mErr;
    EXPECT_NE(run.mErr.find("it ended with 1: the lamp broke"), std::string::npos) << run.mErr;
    EXPECT_EQ(Names("out", ".png").size(), 4u);
}

TEST_F(FilmPov, StoppedFilmsLeaveNoRendererAndNoHalfPicture) {
    Pretend("echo half > \"$name.png\"; echo $$ > new; mv new pid; while :; do sleep 0.05; done");
    const Words words = {"--size", "48x36", "--blur", "1/2", "--pov-render", mFolder / "out", mProject};
    bool bStopped = false;
    const ChildRun_st run = RunFilm(words, {}, [&](pid_t film) {
        if (bStopped || !fs::exists(mFolder.mPath / "out/pid")) return;
        bStopped = kill(film, SIGTERM) == 0;
    });
    EXPECT_EQ(run.mStatus, 128 + SIGTERM);
    pid_t renderer = 0;
    std::ifstream(mFolder / "out/pid") >> renderer;
    ASSERT_GT(renderer, 0);
    EXPECT_NE(kill(renderer, 0), 0);
    EXPECT_EQ(mFolder.ReadAll("out").size(), 1u) << "and no scene of a moment";
}

TEST_F(FilmPov, WrongWordsAndMissingRenderersAreToldFirst) {
    const auto told = [&](const Words& words, int status, const std::string& text) {
        const ChildRun_st run = RunFilm(words);
        EXPECT_EQ(run.mStatus, status) << run.mErr;
        EXPECT_NE(run.mErr.find(text), std::string::npos) << run.mErr;
    };
    const std::string out = mFolder / "out";
    told({"--pov-export", "/proc/self", mProject}, 2, "--pov-export: no file can be made");
    mProject = mFolder.MakeProject("odd.mrp", "PovOutputFomat=3\n");
    told({"--pov-render", out, mProject}, 2, "PovOutputFomat=: POV-Ray 3.7 refuses");
    mProject = mFolder.MakeProject("odd.mrp", "PovOutputFomat=5\n");
    told({"--pov-render", out, "--transparent", mProject}, 2, "\"jpg\" files keep no transparency");
    mProject = mFolder.MakeProject("odd.mrp", "FilePovAnim=%s\n");
    told({"--pov-render", out, mProject}, 2, "FilePovAnim=: \"%s\" has no number");
    mProject = mFolder.MakeProject("odd.mrp", "PathPovRay=/no/such/povray\n");
    const ChildRun_st run = RunFilm({"--pov-render", out, mProject}, {{"PATH", "/nowhere"}, {"DISPLAY", ""}});
    EXPECT_EQ(run.mStatus, 1) << run.mErr;
    EXPECT_TRUE(fs::is_empty(out)) << "nothing was begun";
}

} // namespace
