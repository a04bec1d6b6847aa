// Where films go, and what they depend on: nothing is replaced that the film reads, nothing is begun that
// can't end, and no setting of this machine's user shows.
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <set>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "RunFilm.h"

namespace {

namespace fs = std::filesystem;

class FilmTargets : public ::testing::Test {
protected:
    FilmTargets() { mProject = mFolder.MakeProject("film.mrp", ""); }
    ChildRun_st Film(std::vector<std::string> words, const Environment& environment = {},
                     const std::string& out = "out") {
        words.insert(words.end(), {"--output", mFolder / (out + "/f%04d.png")});
        if (words.front().find(".mrp") == std::string::npos) words.push_back(mProject);
        return RunFilm(words, environment);
    }
    std::set<std::string> Names(const std::string& folder) const {
        std::set<std::string> names;
        for (const auto& [name, bytes] : mFolder.ReadAll(folder))
            names.insert(name);
        return names;
    }
    /// A child of this process, of the name that /proc has.
    static pid_t FindChild(pid_t parent, const std::string& name) {
        const std::string id = std::to_string(parent);
        std::ifstream children("/proc/" + id + "/task/" + id + "/children");
        for (pid_t child = 0; children >> child;) {
            std::string called;
            std::getline(std::ifstream("/proc/" + std::to_string(child) + "/comm"), called);
            if (called == name) return child;
        }
        return 0;
    }

    FilmFolder_cls mFolder;
    std::string mProject;
};

TEST_F(FilmTargets, NothingReplacesWhatTheFilmReadsOrWrites) {
    const std::string data = mFolder.CopyData("data");
    std::ofstream(mFolder / "hull00.obj") << "v 0 0 0\n";
    std::ofstream(mFolder / "grain00.png") << "no image";
    mProject = mFolder.MakeProject("own.mrp",
                                   "SEQ0TYPE1TexFileBillboard=" + mFolder / "grain00.png" +
                                       "\n---FilterCtrl1Begin\n-FilterBegin\nFilterType=2\nImportPath=" +
                                       mFolder / "hull%02d.obj" + "\n-FilterEnd\n---FilterCtrl1End\n",
                                   data);
    fs::create_symlink(mFolder.mPath / "data", mFolder.mPath / "link");
    const auto before = mFolder.ReadAll("data");
    const std::string good = mFolder / "out/f%04d.png";
    const std::vector<std::vector<std::string>> cases = {
        {mProject, "--output", good, "--export-data", mFolder / "data/galaxy%04d.bin"},
        {mProject, "--output", good, "--export-data", mFolder / "link/galaxy%04d.bin"},
        {mProject, "--output", good, "--export-data", mFolder / "data/../data/./galaxy%04d.bin"},
        {mProject, "--output", good, "--export-data", good},
        {mProject, "--output", good, "--export-data", mFolder / "hull%02d.obj"},
        {mProject, "--output", mFolder / "grain%02d.png"},
    };
    for (const auto& words : cases) {
        const ChildRun_st run = RunFilm(words);
        EXPECT_EQ(run.mStatus, 2) << run.mErr;
        EXPECT_NE(run.mErr.find(words[words.size() - 2] + ": "), std::string::npos) << run.mErr;
        EXPECT_FALSE(fs::exists(mFolder.mPath / "out")) << "nothing is written before";
        EXPECT_TRUE(mFolder.ReadAll("data") == before);
    }
}

TEST_F(FilmTargets, RefusesClosedAndFullFoldersBeforeItBegins) {
    const ChildRun_st closed = RunFilm({mProject, "--output", "/proc/f%04d.png"});
    EXPECT_EQ(closed.mStatus, 2);
    EXPECT_NE(closed.mErr.find("\"/proc\""), std::string::npos) << closed.mErr;
    EXPECT_EQ(std::count(closed.mErr.begin(), closed.mErr.end(), '\n'), 1) << closed.mErr;
    const ChildRun_st full =
        Film({"--quiet"}, {{"LD_PRELOAD", MORENTIS_NO_THREADS}, {"MORENTIS_NO_SPACE", "0"}});
    EXPECT_EQ(full.mStatus, 2) << full.mErr;
    EXPECT_NE(full.mErr.find("room"), std::string::npos) << full.mErr;
    EXPECT_NE(full.mErr.find(mFolder / "out"), std::string::npos) << full.mErr;
    EXPECT_TRUE(Names("out").empty());
    // Enough for what was guessed; the first picture tells more.
    const ChildRun_st tight =
        Film({"--quiet"}, {{"LD_PRELOAD", MORENTIS_NO_THREADS}, {"MORENTIS_NO_SPACE", "1"}}, "tight");
    EXPECT_EQ(tight.mStatus, 0) << "there was room";
    EXPECT_NE(tight.mErr.find("MB at least, going by the first picture"), std::string::npos) << tight.mErr;
    EXPECT_EQ(std::count(tight.mErr.begin(), tight.mErr.end(), '\n'), 1) << tight.mErr;
}

TEST_F(FilmTargets, FoldersAndNamesAreWhatTheyAreCalled) {
    // Percents in a folder, a number for each folder, and bytes that are no UTF-8.
    ASSERT_EQ(RunFilm({mProject, "--frames", "0-1", "--output", mFolder / "100%%/f%04d.png"}).mStatus, 0);
    EXPECT_EQ(Names("100%"), (std::set<std::string>{"f0000.png", "f0001.png"}));
    ASSERT_EQ(RunFilm({mProject, "--frames", "0-1", "--output", mFolder / "t%02d/f.png"}).mStatus, 0);
    EXPECT_EQ(Names("t01"), std::set<std::string>{"f.png"});
    const std::string odd = "caf\xe9";
    fs::copy_file(mProject, mFolder.mPath / (odd + ".mrp"));
    for (const char* locale : {"C", "C.UTF-8"}) {
        const std::string out = odd + locale;
        const ChildRun_st run = RunFilm(
            {mFolder / (odd + ".mrp"), "--frames", "0", "--output", mFolder / (out + "/\xff%04d.png")},
            {{"LC_ALL", locale}});
        ASSERT_EQ(run.mStatus, 0) << run.mErr;
        EXPECT_EQ(Names(out), std::set<std::string>{"\xff"
                                                    "0000.png"});
    }
    const ChildRun_st foreign = Film({"--quiet", "--frames", "0"}, {{"LC_ALL", "xx_YY.UTF-8"}}, "locale");
    EXPECT_EQ(foreign.mStatus, 0);
    EXPECT_EQ(foreign.mErr, "") << "a locale that isn't installed is no fault of the film";
}

TEST_F(FilmTargets, WorksWithoutATemporaryFolder) {
    const ChildRun_st run = Film({"--quiet", "--frames", "0"}, {{"TMPDIR", mFolder / "gone"}});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_EQ(run.mErr, "");
}

TEST_F(FilmTargets, LeftoversOfAKilledFilmGo) {
    fs::create_directory(mFolder.mPath / "out");
    fs::create_directory(mFolder.mPath / "tmp");
    fs::create_directory(mFolder.mPath / "tmp/morentis-video-abc123");
    const std::vector<std::string> left = {"out/.f0003.png.saving", "tmp/morentis-display-abc123",
                                           "tmp/morentis-video-abc123/00000000.png", "out/film.12.part.mp4"};
    const std::vector<std::string> foreign = {"out/.other.png.saving", "out/other.12.part.mp4", "tmp/other"};
    for (const auto* names : {&left, &foreign})
        for (const std::string& name : *names)
            std::ofstream(mFolder.mPath / name) << "left";
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(5);
    for (const auto* names : {&left, &foreign})
        for (const std::string& name : *names)
            fs::last_write_time(mFolder.mPath / name, old);
    fs::last_write_time(mFolder.mPath / "tmp/morentis-video-abc123", old);
    const std::vector<std::string> words = {mProject,
                                            "--frames",
                                            "0-3",
                                            "--output",
                                            mFolder / "out/f%04d.png",
                                            "--video",
                                            mFolder / "out/film.mp4"};
    const ChildRun_st run = RunFilm(words, {{"TMPDIR", mFolder / "tmp"}});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    for (const std::string& name : left)
        EXPECT_FALSE(fs::exists(mFolder.mPath / name)) << name;
    for (const std::string& name : foreign)
        EXPECT_TRUE(fs::exists(mFolder.mPath / name)) << name;
    EXPECT_EQ(Names("tmp"), std::set<std::string>{"other"}) << "nor does it leave anything of its own";
}

TEST_F(FilmTargets, ADisplayThatDiesHasAStatusAndASentence) {
    // About a second from the fourth frame to the end: where the display isn't missed, all of it is drawn.
    const std::string project = mFolder.MakeProject("long.mrp", "TimeAnimInterp=25\n");
    for (const char* file : {"none", "out/f0003.png"}) {
        fs::remove_all(mFolder.mPath / "out");
        bool bKilled = false;
        const ChildRun_st run =
            RunFilm({"--quiet", "--output", mFolder / "out/f%04d.png", project}, {}, [&](pid_t guard) {
                if (bKilled || (std::string(file) != "none" && !fs::exists(mFolder.mPath / file))) return;
                const pid_t film = FindChild(guard, "morentis-film");
                const pid_t display = film > 0 ? FindChild(film, "Xvfb") : 0;
                if (display <= 0) return;
                bKilled = true;
                kill(display, SIGKILL);
            });
        ASSERT_TRUE(bKilled);
        // What draws in this process may not need its display any more: then the film is whole.
        if (run.mStatus == 0) {
            EXPECT_EQ(Names("out").size(), 101u);
            continue;
        }
        EXPECT_TRUE(run.mStatus == 1 || run.mStatus == 3) << file << " " << run.mStatus;
        EXPECT_NE(run.mErr.find("isplay"), std::string::npos) << run.mErr;
    }
}

// A server that takes the connection and then says nothing.
TEST_F(FilmTargets, ADisplayThatHangsIsToldAndReplaced) {
    const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int number = 100; // its port is 6000 and that
    do {
        address.sin_port = htons(uint16_t(6000 + ++number));
    } while (bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 && number < 900);
    ASSERT_EQ(listen(server, 16), 0);
    const std::string name = "127.0.0.1:" + std::to_string(number);
    Environment environment = {
        {"DISPLAY", name}, {"LD_PRELOAD", MORENTIS_NO_THREADS}, {"MORENTIS_NO_PATIENCE", "1"}};
    const ChildRun_st run = Film({"--quiet", "--frames", "0"}, environment);
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_EQ(run.mErr,
              "morentis-film: the display " + name + " doesn't answer; a virtual one takes its place\n");
    EXPECT_EQ(Names("out").size(), 1u);
    environment["PATH"] = "/nonexistent"; // nor is there one to take its place
    const ChildRun_st none = Film({"--quiet", "--frames", "0"}, environment, "none");
    EXPECT_EQ(none.mStatus, 1);
    EXPECT_NE(none.mErr.find("there is no display, and no virtual one can be started"), std::string::npos)
        << none.mErr;
    // Who waits for an answer can still be stopped.
    environment.erase("MORENTIS_NO_PATIENCE");
    const auto start = std::chrono::steady_clock::now();
    bool bSent = false;
    const ChildRun_st stopped = RunFilm({"--quiet", "--output", mFolder / "stopped/f%04d.png", mProject},
                                        environment, [&](pid_t guard) {
                                            const pid_t film = FindChild(guard, "morentis-film");
                                            if (bSent || film <= 0 || FindChild(film, "morentis-film") <= 0)
                                                return;
                                            bSent = true;
                                            kill(guard, SIGTERM);
                                        });
    EXPECT_EQ(stopped.mStatus, 128 + SIGTERM);
    EXPECT_EQ(stopped.mErr, "");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(8));
    close(server);
}

TEST_F(FilmTargets, TheWindowsSettingsHaveNoPartInIt) {
    // A project that says nothing of loader, exporter and preferences.
    std::ifstream file(mProject);
    std::stringstream bare;
    for (std::string line; std::getline(file, line);)
        if (line.rfind("Loader", 0) != 0 && line.rfind("DataExport", 0) != 0 && line.rfind("PREF_", 0) != 0)
            bare << line << "\n";
    std::ofstream(mFolder.mPath / "bare.mrp") << bare.str();
    // A copy of the program, with the settings beside it as the window keeps them.
    fs::create_directory(mFolder.mPath / "bin");
    Limits_st copy;
    copy.mProgram = mFolder / "bin/morentis-film";
    fs::copy_file(MORENTIS_FILM, copy.mProgram);
    const auto run = [&](const std::string& out) {
        return RunFilm({mFolder / "bare.mrp", "--quiet", "--frames", "0", "--output",
                        mFolder / (out + "/f%04d.png"), "--export-data", mFolder / (out + "/d%04d.txt")},
                       {}, {}, copy);
    };
    EXPECT_EQ(run("plain").mStatus, 0);
    std::ofstream(mFolder.mPath / "bin/Morentis3Configure.txt")
        << "LoaderTranslate=5 5 5\nLoaderScale=0.100000\nLoaderLogarithm=1\nDataExportDataType=1\n"
           "DataExportGrammerBody=6\nPREF_SORT_TYPE=3\n";
    EXPECT_EQ(run("set").mStatus, 0);
    EXPECT_TRUE(mFolder.ReadAll("set") == mFolder.ReadAll("plain"));
}

TEST_F(FilmTargets, FramesWithoutParticlesAreLegal) {
    const std::string data = mFolder.CopyData("data");
    std::ofstream(mFolder.mPath / "data/galaxy0001.bin", std::ios::binary) << std::string(8, '\0');
    const std::string project =
        mFolder.MakeProject("none.mrp", "DataExportDataType=0\nOverLayTimePos=0\n", data);
    const ChildRun_st run =
        Film({project, "--quiet", "--frames", "0-2", "--export-data", mFolder / "d/d%04d.bin"});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_EQ(Names("out").size(), 3u);
    EXPECT_EQ(Names("d").size(), 3u);
}

TEST_F(FilmTargets, BlurOfNoLengthIsThePlainPicture) {
    ASSERT_EQ(Film({"--quiet", "--frames", "0-1"}, {}, "plain").mStatus, 0);
    const ChildRun_st blurred = Film({"--quiet", "--frames", "0-1", "--blur", "0/4"}, {}, "blurred");
    EXPECT_EQ(blurred.mStatus, 0) << blurred.mErr;
    EXPECT_TRUE(mFolder.ReadAll("blurred") == mFolder.ReadAll("plain"));
}

TEST_F(FilmTargets, TellsWhereAFilmEndsEarlyAndWhereDataRepeat) {
    mProject = mFolder.MakeProject("off.mrp",
                                   "TimeAnimInterp=2\nTimeAnimStep=3\nTimeMaxFrame=20\nTimeWorkAreaMin=1\n"
                                   "TimeWorkAreaMax=20\n");
    const ChildRun_st run = Film({"--quiet"});
    EXPECT_EQ(run.mStatus, 0);
    EXPECT_EQ(Names("out").size(), 1u);
    EXPECT_NE(run.mErr.find("Let it begin at frame 3"), std::string::npos) << run.mErr;
    mProject = mFolder.MakeProject("past.mrp", "TimeMaxFrame=20\nTimeWorkAreaMin=0\nTimeWorkAreaMax=20\n");
    const ChildRun_st past = Film({"--quiet", "--frames", "10-13"}, {}, "past");
    EXPECT_EQ(past.mStatus, 0);
    EXPECT_NE(past.mErr.find("frames from 12 on show the last one"), std::string::npos) << past.mErr;
    EXPECT_EQ(Film({"--quiet", "--frames", "10-11"}, {}, "data").mErr, "");
}

TEST_F(FilmTargets, FramesBeforeTheWorkAreaSortAndFailuresNameTheirStep) {
    mProject = mFolder.MakeProject("late.mrp", "TimeAnimInterp=3\nTimeWorkAreaMin=3\nTimeWorkAreaMax=4\n");
    fs::create_directories(mFolder.mPath / "out/f-9999.png"); // in the way
    const ChildRun_st run = Film({"--quiet", "--frames", "0-3"});
    EXPECT_EQ(run.mStatus, 3);
    // Number 3 is the first frame of the work area; three steps a frame.
    const std::vector<std::string> sorted = {"f-9994.png", "f-9995.png", "f-9996.png",
                                             "f-9997.png", "f-9998.png", "f-9999.png",
                                             "f0000.png",  "f0001.png",  "f0002.png"};
    for (const std::string& name : sorted)
        EXPECT_TRUE(fs::exists(mFolder.mPath / "out" / name)) << name;
    EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end()));
    EXPECT_NE(run.mErr.find("frame 1 step 2, "), std::string::npos) << run.mErr;
}

TEST_F(FilmTargets, ProjectsThatCantBeReadAreNamedWithTheReason) {
    const ChildRun_st none = RunFilm({mFolder / "none.mrp"});
    EXPECT_EQ(none.mStatus, 1);
    EXPECT_NE(none.mErr.find("none.mrp: No such file or directory"), std::string::npos) << none.mErr;
    fs::create_directory(mFolder.mPath / "folder.mrp");
    const ChildRun_st folder = RunFilm({mFolder / "folder.mrp"});
    EXPECT_NE(folder.mErr.find("folder.mrp: it is a folder"), std::string::npos) << folder.mErr;
}

} // namespace
