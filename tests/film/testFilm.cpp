// The film maker as its users run it: files, exit status, words, slices, interruptions, bad input.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <set>

#include <gtest/gtest.h>
#include <wx/image.h>
#include <wx/log.h>

#include "IMAGE/PictureOrigin.h"
#include "IMAGE/VideoFile.h"
#include "RunFilm.h"

namespace {

namespace fs = std::filesystem;

const std::set<std::string> kFive = {"f0000.png", "f0001.png", "f0002.png", "f0003.png", "f0004.png"};

class FilmCommand : public ::testing::Test {
protected:
    FilmCommand() {
        fs::create_directory(mFolder.mPath / "out");
        mProject = mFolder.MakeProject("film.mrp", "");
    }
    /// Its pictures go to the folder `out`.
    ChildRun_st Film(std::vector<std::string> words, const Environment& environment = {},
                     const std::string& out = "out") {
        fs::create_directory(mFolder.mPath / out);
        words.insert(words.end(), {"--output", mFolder / (out + "/f%04d.png")});
        if (words.front().find(".mrp") == std::string::npos) words.push_back(mProject);
        return RunFilm(words, environment);
    }
    std::set<std::string> Names(const std::string& folder = "out") const {
        std::set<std::string> names;
        for (const auto& [name, bytes] : mFolder.ReadAll(folder))
            names.insert(name);
        return names;
    }
    wxImage Load(const std::string& path) const { return wxImage(wxString(mFolder / path)); }
    void ExpectWhole(const std::string& folder) const {
        for (const std::string& name : Names(folder))
            EXPECT_TRUE(Load(folder + "/" + name).IsOk()) << name;
    }

    FilmFolder_cls mFolder;
    std::string mProject;
};

TEST_F(FilmCommand, WritesEveryFrameWithoutADisplay) {
    fs::create_directory(mFolder.mPath / "config");
    const fs::path beside = fs::path(MORENTIS_FILM).parent_path() / "Morentis3Configure.txt";
    const auto written = fs::exists(beside) ? fs::last_write_time(beside) : fs::file_time_type();
    const ChildRun_st run = Film({mProject}, {{"XDG_CONFIG_HOME", mFolder / "config"}});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_EQ(Names(), kFive);
    EXPECT_NE(run.mOut.find("Frame 5 of 5"), std::string::npos) << run.mOut;
    EXPECT_EQ(run.mOut.find('\r'), std::string::npos) << "plain lines where there is no terminal";
    EXPECT_NE(run.mErr.find("camera"), std::string::npos) << "the view is a free one";
    std::set<std::string> different;
    for (const auto& [name, bytes] : mFolder.ReadAll("out")) {
        const wxImage image = Load("out/" + name);
        EXPECT_EQ(image.GetSize(), wxSize(160, 120));
        EXPECT_GT(image.CountColours(), 10u) << "there is something to see";
        different.insert(bytes);
    }
    EXPECT_EQ(different.size(), 5u);
    EXPECT_TRUE(Names("config").empty()) << "settings and recovery are the window's";
    EXPECT_EQ(fs::exists(beside) ? fs::last_write_time(beside) : fs::file_time_type(), written);

    const ChildRun_st quiet = Film({"--quiet", "--size", "7x1"}, {{"DISPLAY", ":9999"}}, "quiet");
    EXPECT_EQ(quiet.mStatus, 0) << "a display that leads nowhere is none";
    EXPECT_EQ(quiet.mOut + quiet.mErr, "");
    EXPECT_EQ(Load("quiet/f0004.png").GetSize(), wxSize(7, 1));
}

TEST_F(FilmCommand, SlicesAreTheFramesOfOneRun) {
    mProject = mFolder.MakeProject("film.mrp", "TimeAnimInterp=2\n");
    ASSERT_EQ(Film({"--quiet", "--blur", "0.5/3"}).mStatus, 0);
    ASSERT_EQ(Names().size(), 9u);
    EXPECT_EQ(Film({"--quiet", "--blur", "0.5/3", "--frames", "3-4"}, {}, "slices").mStatus, 0);
    EXPECT_EQ(Film({"--quiet", "--blur", "0.5/3", "--frames", "0-2"}, {}, "slices").mStatus, 0);
    EXPECT_TRUE(mFolder.ReadAll("slices") == mFolder.ReadAll("out")) << "byte for byte";
    EXPECT_EQ(Film({"--quiet", "--frames", "1-3:2"}, {}, "some").mStatus, 0);
    EXPECT_EQ(Names("some"), (std::set<std::string>{"f0002.png", "f0003.png", "f0006.png", "f0007.png"}));
    EXPECT_NE(mFolder.ReadAll("some")["f0002.png"], mFolder.ReadAll("out")["f0002.png"]) << "blurred";
}

TEST_F(FilmCommand, ResumeKeepsWholeFrames) {
    ASSERT_EQ(Film({"--quiet"}).mStatus, 0);
    const auto whole = mFolder.ReadAll("out");
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(5);
    for (const std::string& name : kFive)
        fs::last_write_time(mFolder.mPath / "out" / name, old);
    fs::remove(mFolder.mPath / "out/f0001.png");
    fs::resize_file(mFolder.mPath / "out/f0003.png", 500);
    const ChildRun_st run = Film({"--resume"});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_NE(run.mOut.find("3 were there"), std::string::npos) << run.mOut;
    EXPECT_TRUE(mFolder.ReadAll("out") == whole);
    for (const std::string& name : kFive) {
        const bool bKept = fs::last_write_time(mFolder.mPath / "out" / name) < old + std::chrono::hours(1);
        EXPECT_EQ(bKept, name != "f0001.png" && name != "f0003.png") << name;
    }
}

TEST_F(FilmCommand, PicturesCarryTheProjectOnRequest) {
    mProject = mFolder.MakeProject("film.mrp", "TimeAnimInterp=2\n");
    ASSERT_EQ(Film({"--quiet", "--frames", "1-2"}, {}, "plain").mStatus, 0);
    ASSERT_EQ(Film({"--quiet", "--provenance", "--frames", "1-2"}).mStatus, 0);
    EXPECT_EQ(Film({"--quiet", "--provenance", "--frames", "2-2"}, {}, "slice").mStatus, 0);
    auto whole = mFolder.ReadAll("out");
    const auto slice = mFolder.ReadAll("slice");
    ASSERT_EQ(slice.size(), 2u);
    for (const auto& [name, bytes] : slice)
        EXPECT_TRUE(whole.at(name) == bytes) << name;
    std::ifstream file(mProject);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    PictureOrigin_st origin;
    wxString reason;
    ASSERT_EQ(ReadPictureOrigin(mFolder / "out/f0003.png", &origin, &reason), OriginFound::Whole) << reason;
    EXPECT_TRUE(origin.mProject == text);
    EXPECT_EQ(origin.mFrame, "1+1/2");
    for (const auto& [name, bytes] : mFolder.ReadAll("plain")) {
        EXPECT_EQ(ReadPictureOrigin(mFolder / ("plain/" + name), &origin, &reason), OriginFound::None);
        const size_t more = whole.at(name).size() - bytes.size();
        EXPECT_TRUE(whole.at(name).erase(33, more) == bytes) << name << ": the rest is the plain picture";
    }
    // Pictures of a film that was begun without it are made again.
    fs::copy_file(mFolder / "plain/f0002.png", mFolder / "out/f0002.png",
                  fs::copy_options::overwrite_existing);
    const ChildRun_st run = Film({"--provenance", "--resume", "--frames", "1-2"});
    EXPECT_NE(run.mOut.find("3 were there"), std::string::npos) << run.mOut;
    EXPECT_EQ(ReadPictureOrigin(mFolder / "out/f0002.png", &origin, &reason), OriginFound::Whole);
}

class FilmStop : public FilmCommand, public ::testing::WithParamInterface<int> {};

TEST_P(FilmStop, LeavesWholeFramesOnly) {
    const std::string project = mFolder.MakeProject("long.mrp", "TimeAnimInterp=250\n");
    bool bSent = false;
    const ChildRun_st run = RunFilm({"--output", mFolder / "out/f%04d.png", project}, {}, [&](pid_t child) {
        if (bSent || !fs::exists(mFolder.mPath / "out/f0003.png")) return;
        bSent = true;
        kill(child, GetParam());
    });
    EXPECT_EQ(run.mStatus, 128 + GetParam());
    const size_t count = Names().size();
    const std::string words = std::to_string(count) + " frames in ";
    EXPECT_NE(run.mOut.find(words), std::string::npos) << run.mOut;
    EXPECT_NE(run.mOut.find(", stopped"), std::string::npos) << run.mOut;
    EXPECT_GE(count, 4u);
    EXPECT_LT(count, 1001u);
    for (const std::string& name : Names())
        EXPECT_EQ(name.size(), 9u) << name << " isn't a frame";
    ExpectWhole("out");
}

INSTANTIATE_TEST_SUITE_P(Signals, FilmStop, ::testing::Values(SIGINT, SIGTERM));

TEST_F(FilmCommand, MakesTheFolderOfThePictures) {
    const ChildRun_st run = RunFilm({mProject, "--frames", "0-0", "--output", mFolder / "fresh/f%04d.png"});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_FALSE(Names("fresh").empty());
}

TEST_F(FilmCommand, TellsWrongArgumentsBeforeItBegins) {
    const std::vector<std::vector<std::string>> cases = {
        {},
        {mProject, "--size", "0x5"},
        {mProject, "--output", mFolder / "missing/deep/f%04d.png"},
        {mProject, "--output", mFolder / "out/f%04d.xyz"},
        {mProject, "--output", mFolder / "out/f%04d.jpg", "--transparent"},
        {mProject, "--output", mFolder / "out/f%06d.png"},
        {mProject, "--output", mFolder / "out/f%04d.png", "--video", mFolder / "missing/deep/film.mp4"},
        {mProject, "--output", mFolder / "out/f%04d.png", "--frames", "9-12"},
    };
    for (const auto& words : cases) {
        const ChildRun_st run = RunFilm(words);
        EXPECT_EQ(run.mStatus, 2) << run.mErr;
        EXPECT_EQ(run.mErr.rfind("morentis-film: ", 0), 0u) << run.mErr;
        EXPECT_EQ(std::count(run.mErr.begin(), run.mErr.end(), '\n'), 1) << run.mErr;
    }
    EXPECT_TRUE(Names().empty());
    const ChildRun_st missing = RunFilm(cases[2]);
    EXPECT_NE(missing.mErr.find(mFolder / "missing"), std::string::npos) << missing.mErr;
    const Environment nothing = {{"PATH", "/nonexistent"}};
    EXPECT_EQ(RunFilm({"--version"}, nothing).mOut, "morentis-film 0.80.0\n");
    const ChildRun_st help = RunFilm({"--help"}, nothing);
    EXPECT_EQ(help.mStatus, 0);
    EXPECT_NE(help.mOut.find("--frames FIRST-LAST"), std::string::npos);
}

TEST_F(FilmCommand, TellsWhatCantBeOpened) {
    std::ofstream(mFolder.mPath / "noise.mrp", std::ios::binary) << std::string(2000, '\x81') << "\n\xff\n";
    const std::string lacking = mFolder.MakeProject("lacking.mrp", "", mFolder / "gone/galaxy0000.bin");
    for (const std::string& project :
         {mFolder / "none.mrp", mFolder / "out", mFolder / "noise.mrp", lacking}) {
        const ChildRun_st run = RunFilm({"--output", mFolder / "out/f%04d.png", project});
        EXPECT_EQ(run.mStatus, 1) << project;
        EXPECT_NE(run.mErr.find(project), std::string::npos) << run.mErr;
    }
    EXPECT_TRUE(Names().empty());
    const ChildRun_st blind = Film({mProject}, {{"PATH", "/nonexistent"}});
    EXPECT_EQ(blind.mStatus, 1);
    EXPECT_NE(blind.mErr.find("xvfb"), std::string::npos) << blind.mErr;
}

TEST_F(FilmCommand, NamesFramesThatCantBeWritten) {
    fs::create_directory(mFolder.mPath / "out/f0002.png"); // in the way
    const ChildRun_st run = Film({mProject});
    EXPECT_EQ(run.mStatus, 3);
    EXPECT_NE(run.mErr.find("frame 2, " + (mFolder / "out/f0002.png")), std::string::npos) << run.mErr;
    EXPECT_EQ(run.mErr.find("frame 3, "), std::string::npos) << run.mErr;
    EXPECT_EQ(Names(), kFive) << "the others are there";
    EXPECT_TRUE(Load("out/f0004.png").IsOk());
}

TEST_F(FilmCommand, NamesFramesWhoseDataCantBeRead) {
    const std::string data = mFolder.CopyData("data");
    fs::resize_file(mFolder.mPath / "data/galaxy0002.bin", 3);
    const std::string project = mFolder.MakeProject("cut.mrp", "", data);
    const ChildRun_st run = Film({project});
    EXPECT_EQ(run.mStatus, 3) << run.mErr;
    EXPECT_NE(run.mErr.find("frame 2, "), std::string::npos) << run.mErr;
    EXPECT_EQ(Names(), (std::set<std::string>{"f0000.png", "f0001.png", "f0003.png", "f0004.png"}));
    // A sequence ends where a file is missing; the film goes on with the last one.
    fs::remove(mFolder.mPath / "data/galaxy0002.bin");
    const ChildRun_st shorter = Film({project}, {}, "shorter");
    EXPECT_EQ(shorter.mStatus, 0) << shorter.mErr;
    EXPECT_NE(shorter.mErr.find("there are 2 snapshots"), std::string::npos) << shorter.mErr;
    auto files = mFolder.ReadAll("shorter");
    EXPECT_EQ(files.size(), 5u);
    EXPECT_EQ(files["f0004.png"], files["f0001.png"]);
}

TEST_F(FilmCommand, TransparentFilmsHaveAlpha) {
    // Large opaque spheres, seen from near.
    std::string lines = "Classify=0\nSEQ0TYPE0DrawType=2\nSEQ0TYPE0BlendType=0\nSEQ0TYPE0AlphaFactro=1\n"
                        "SEQ0TYPE0RadiusType=1\nSEQ0TYPE0RadiusFactorForConst=0.3\n";
    mProject = mFolder.MakeProject("spheres.mrp", lines);
    ASSERT_EQ(Film({"--quiet", "--transparent", "--frames", "0"}).mStatus, 0);
    const wxImage image = Load("out/f0000.png");
    ASSERT_TRUE(image.IsOk() && image.HasAlpha());
    for (const wxPoint corner : {wxPoint(0, 0), wxPoint(159, 0), wxPoint(0, 119), wxPoint(159, 119)})
        EXPECT_EQ(image.GetAlpha(corner.x, corner.y), 0) << corner.x << " " << corner.y;
    const unsigned char* alpha = image.GetAlpha();
    EXPECT_GT(std::count(alpha, alpha + 160 * 120, 255), 200) << "spheres cover the background";
    const ChildRun_st plain = Film({"--quiet", "--frames", "0"}, {}, "plain");
    EXPECT_EQ(plain.mStatus, 0);
    EXPECT_FALSE(Load("plain/f0000.png").HasAlpha());
    const ChildRun_st other = Film({"--resume", "--frames", "0"});
    EXPECT_EQ(other.mOut.find("were there"), std::string::npos) << other.mOut;
    EXPECT_FALSE(Load("out/f0000.png").HasAlpha()) << "one of another film isn't kept";
}

TEST_F(FilmCommand, TakesNamesFromTheProject) {
    fs::create_directory(mFolder.mPath / "a%%b");
    const std::string project =
        mFolder.MakeProject("named.mrp", "ImgSequenceFile=" + (mFolder / "a%%b/x0001") + "\n");
    const ChildRun_st run = RunFilm({"--quiet", "--frames", "1-2", project});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_EQ(Names("a%%b"), (std::set<std::string>{"x0001.png", "x0002.png"}));
}

// Something in the place of the virtual display that never gets ready.
TEST_F(FilmCommand, CanBeStoppedBeforeThereIsADisplay) {
    fs::create_directory(mFolder.mPath / "bin");
    const std::string server = mFolder / "bin/Xvfb", begun = mFolder / "begun";
    std::ofstream(server) << "#!/bin/sh\n: > '" << begun << "'\nexec /bin/sleep 60\n";
    fs::permissions(server, fs::perms::owner_all);
    const auto start = std::chrono::steady_clock::now();
    bool bSent = false;
    const ChildRun_st run = RunFilm({"--output", mFolder / "out/f%04d.png", mProject},
                                    {{"PATH", mFolder / "bin"}}, [&](pid_t child) {
                                        if (bSent || !fs::exists(begun)) return;
                                        bSent = true;
                                        kill(child, SIGINT);
                                    });
    EXPECT_EQ(run.mStatus, 128 + SIGINT);
    EXPECT_EQ(run.mErr, "");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

// As when many films start at the same moment.
TEST_F(FilmCommand, AServerWhoseNumberIsTakenIsFollowedByAnother) {
    fs::create_directory(mFolder.mPath / "bin");
    const std::string server = mFolder / "bin/Xvfb", begun = mFolder / "begun";
    const std::string path = mFolder / "bin" + ":/usr/bin:/bin";
    for (const bool bEver : {true, false}) {
        fs::remove(begun);
        std::ofstream(server) << "#!/bin/sh\necho >> '" << begun << "'\n"
                              << (bEver
                                      ? "[ $(wc -l < '" + begun + "') -lt 3 ] || exec /usr/bin/Xvfb \"$@\"\n"
                                      : std::string())
                              << "echo 'Server is already active for display 7' >&2\nexit 1\n";
        fs::permissions(server, fs::perms::owner_all);
        const ChildRun_st run =
            Film({"--quiet", "--frames", "0"}, {{"PATH", path}}, bEver ? "ever" : "never");
        EXPECT_EQ(run.mStatus, bEver ? 0 : 1) << run.mErr;
        if (bEver)
            EXPECT_EQ(fs::file_size(begun), 3u);
        else
            EXPECT_NE(run.mErr.find("Xvfb doesn't start: Server is already active for display 7"),
                      std::string::npos)
                << run.mErr;
        EXPECT_EQ(Names(bEver ? "ever" : "never").size(), bEver ? 1u : 0u);
    }
}

TEST_F(FilmCommand, MakesAVideoOrSaysWhatIsMissing) {
    // A folder of programs without the one that makes videos.
    fs::create_directory(mFolder.mPath / "bin");
    fs::create_symlink("/usr/bin/Xvfb", mFolder.mPath / "bin/Xvfb");
    const std::string video = mFolder / "film.mp4";
    const ChildRun_st without = Film({"--video", video}, {{"PATH", mFolder / "bin"}});
    EXPECT_EQ(without.mStatus, 1);
    EXPECT_NE(without.mErr.find("ffmpeg"), std::string::npos);
    EXPECT_TRUE(Names().empty()) << "told before anything is drawn";
    ASSERT_FALSE(FindVideoTool().empty()) << "install ffmpeg";
    const ChildRun_st run = Film({"--video", video, "--fps", "24"});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_GT(fs::file_size(video), 1000u);
    fs::create_directory(mFolder.mPath / "taken.mp4");
    const ChildRun_st taken = Film({"--resume", "--video", mFolder / "taken.mp4"});
    EXPECT_EQ(taken.mStatus, 3) << taken.mErr;
    EXPECT_NE(taken.mErr.find("taken.mp4"), std::string::npos) << taken.mErr;
}

TEST_F(FilmCommand, ExportsTheDataOfEachFrame) {
    mProject =
        mFolder.MakeProject("film.mrp", "TimeAnimInterp=2\nDataExportDataType=0\nDataExportGrammerHead=0 1\n"
                                        "DataExportGrammerBody=0 1 5 6 7 8\n");
    fs::create_directory(mFolder.mPath / "data");
    fs::create_directory(mFolder.mPath / "part");
    const std::string names = "/d%03d.bin";
    ASSERT_EQ(Film({"--quiet", "--export-data", mFolder / ("data" + names)}).mStatus, 0);
    auto data = mFolder.ReadAll("data");
    EXPECT_EQ(data.size(), 9u);
    for (const auto& [name, bytes] : data)
        EXPECT_EQ(bytes.size(), 80008u) << name;
    EXPECT_EQ(data["d000.bin"].compare(0, 4, std::string(4, '\0')), 0) << "the time of the first frame";
    EXPECT_NE(data["d000.bin"], data["d001.bin"]) << "between two snapshots";
    ASSERT_EQ(
        Film({"--quiet", "--frames", "2-4", "--export-data", mFolder / ("part" + names)}, {}, "p").mStatus,
        0);
    const auto part = mFolder.ReadAll("part");
    EXPECT_EQ(part.size(), 5u);
    for (const auto& [name, bytes] : part)
        EXPECT_TRUE(bytes == data[name]) << name << " depends on what was made before";
    // What was exported can be filmed in its turn.
    const std::string again =
        mFolder.MakeProject("again.mrp", "LoaderTranslate=0 0 0\nLoaderScale=1\n", mFolder / "data/d000.bin");
    EXPECT_EQ(Film({again, "--quiet"}, {}, "again").mStatus, 0);
    fs::create_directories(mFolder.mPath / "way/d0000.bin"); // in the way
    const ChildRun_st blocked =
        Film({"--export-data", mFolder / "way/d%04d.bin", "--frames", "0"}, {}, "blocked");
    EXPECT_EQ(blocked.mStatus, 3) << blocked.mErr;
    EXPECT_TRUE(Load("blocked/f0000.png").IsOk()) << "the picture is there all the same";
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const wxInitializer initializer;
    wxLog::EnableLogging(false);
    wxImage::AddHandler(new wxPNGHandler);
    return initializer.IsOk() ? RUN_ALL_TESTS() : 1;
}
