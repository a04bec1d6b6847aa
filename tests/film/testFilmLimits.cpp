// Films where something is short: threads, memory, whole data. Nothing but a whole film ends with 0.
#include <signal.h>
#include <sys/resource.h>

#include <cstdint>
#include <fstream>
#include <regex>

#include <gtest/gtest.h>

#include "RunFilm.h"

namespace {

namespace fs = std::filesystem;

class FilmLimits : public ::testing::Test {
protected:
    ChildRun_st Film(std::vector<std::string> words, const Environment& environment = {},
                     const std::string& out = "out", const Limits_st& limits = {}) {
        fs::create_directory(mFolder.mPath / out);
        words.insert(words.end(), {"--output", mFolder / (out + "/f%04d.png")});
        return RunFilm(words, environment, {}, limits);
    }
    std::map<std::string, std::string> Pictures(const std::string& out = "out") const {
        return mFolder.ReadAll(out);
    }
    /// Two snapshots of so many particles in a cube, in the layout of the example; the path of the first.
    std::string MakeBigData(int number) const {
        for (int index = 0; index < 3; ++index) {
            std::ofstream file(mFolder.mPath / ("big000" + std::to_string(index) + ".bin"), std::ios::binary);
            const float time = float(index);
            file.write(reinterpret_cast<const char*>(&time), 4);
            file.write(reinterpret_cast<const char*>(&number), 4);
            std::vector<char> records;
            for (int i = 0; i < number; ++i) {
                const float values[7] = {
                    float(i % 97) / 50 - 1, float(i % 89) / 50 - 1, float(i % 83) / 50 - 1, 0, 0, 0, 0.01f};
                const std::int32_t numbers[2] = {i, 0};
                const float value = 1.0f;
                const auto put = [&records](const void* p, size_t size) {
                    records.insert(records.end(), static_cast<const char*>(p),
                                   static_cast<const char*>(p) + size);
                };
                put(values, sizeof values);
                put(numbers, sizeof numbers);
                put(&value, sizeof value);
            }
            file.write(records.data(), std::streamsize(records.size()));
        }
        return mFolder / "big0000.bin";
    }

    FilmFolder_cls mFolder;
};

TEST_F(FilmLimits, WithoutThreadsTheWorkIsDoneInPlace) {
    const std::string project = mFolder.MakeProject("film.mrp", "TimeAnimInterp=2\n");
    const Environment none = {{"LD_PRELOAD", MORENTIS_NO_THREADS}};
    const ChildRun_st run = Film({project, "--quiet"}, none);
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_EQ(run.mErr, "");
    ASSERT_EQ(Film({project, "--quiet"}, {}, "plain").mStatus, 0);
    EXPECT_EQ(Pictures().size(), 9u);
    EXPECT_TRUE(Pictures() == Pictures("plain")) << "byte for byte";
}

// Where room goes out differs from driver to driver: at every limit the film is whole or says what it isn't.
TEST_F(FilmLimits, ShortMemoryNeverLeavesEmptyPictures) {
    const std::string project = mFolder.MakeProject(
        "big.mrp", "TimeMaxFrame=1\nTimeWorkAreaMax=1\nTimeActiveAreaMax=1\n", MakeBigData(3000000));
    const ChildRun_st plain = Film({project, "--quiet"}, {}, "plain");
    ASSERT_EQ(plain.mStatus, 0) << plain.mErr;
    const auto whole = Pictures("plain");
    ASSERT_EQ(whole.size(), 2u);
    // Too little for the toolkit, for OpenGL's compiler, for the data, for what draws them.
    for (const int megabytes : {600, 1000, 1150}) {
        const std::string out = "m" + std::to_string(megabytes);
        Limits_st limits;
        limits.mMegabytes = megabytes;
        const ChildRun_st run = Film({project, "--quiet"}, {}, out, limits);
        const auto pictures = Pictures(out);
        if (run.mStatus == 0) {
            EXPECT_TRUE(pictures == whole) << megabytes;
            EXPECT_EQ(run.mErr, "") << megabytes;
            continue;
        }
        EXPECT_TRUE(run.mStatus == 1 || run.mStatus == 3) << megabytes << ": " << run.mStatus << run.mErr;
        EXPECT_EQ(run.mErr.rfind("morentis-film: ", 0), 0u) << megabytes << ": " << run.mErr;
        EXPECT_EQ(run.mErr.find("signal"), std::string::npos) << megabytes << ": " << run.mErr;
        const bool bNamed = run.mErr.find("frame 0, ") != std::string::npos;
        EXPECT_EQ(bNamed, run.mStatus == 3) << megabytes << ": " << run.mErr;
        for (const auto& [name, bytes] : pictures)
            if (name.size() == 9) {
                EXPECT_TRUE(bytes == whole.at(name)) << name << " isn't whole at " << megabytes;
            }
    }
}

// A texture a sphere, and the machine has what the limit leaves; with the smaller one the text has no room.
TEST_F(FilmLimits, ScenesTooLargeForPovRayAreTold) {
    const std::string project =
        mFolder.MakeProject("big.mrp", "DownSizing=1\nPovGroupMaterials=0\n", MakeBigData(1000000));
    int written = 0;
    for (const int megabytes : {1450, 1900}) {
        const std::string out = "scenes" + std::to_string(megabytes);
        fs::create_directory(mFolder.mPath / out);
        Limits_st limits;
        limits.mMegabytes = megabytes;
        const ChildRun_st run =
            RunFilm({"--pov-export", mFolder / out, "--frames", "0", project}, {}, {}, limits);
        EXPECT_NE(run.mErr.find("1.6 GB of memory for this scene; this machine has 1."), std::string::npos)
            << run.mErr;
        const bool bWhole = run.mStatus == 0;
        written += bWhole ? 1 : 0;
        EXPECT_EQ(fs::exists(mFolder.mPath / out / "povanim0000.pov"), bWhole) << run.mErr;
        if (bWhole) continue;
        EXPECT_EQ(run.mStatus, 3) << run.mErr;
        EXPECT_NE(run.mErr.find("could not be written: there is not enough memory"), std::string::npos)
            << run.mErr;
    }
    EXPECT_GE(written, 1);
}

TEST_F(FilmLimits, AKilledFilmHasAStatusAndAReason) {
    const std::string project = mFolder.MakeProject("long.mrp", "TimeAnimInterp=250\n");
    bool bSent = false;
    fs::create_directory(mFolder.mPath / "out");
    const ChildRun_st run = RunFilm({"--output", mFolder / "out/f%04d.png", project}, {}, [&](pid_t child) {
        if (bSent || !fs::exists(mFolder.mPath / "out/f0003.png")) return;
        std::ifstream children("/proc/" + std::to_string(child) + "/task/" + std::to_string(child) +
                               "/children");
        pid_t worker = 0;
        ASSERT_TRUE(children >> worker);
        bSent = true;
        kill(worker, SIGKILL);
    });
    EXPECT_EQ(run.mStatus, 3);
    EXPECT_NE(run.mErr.find("ended early"), std::string::npos) << run.mErr;
    EXPECT_NE(run.mErr.find("signal 9"), std::string::npos) << run.mErr;
    // What is left to do is named: all that isn't there, and at most the two that were under way.
    std::smatch found;
    const std::regex named("morentis-film: not made: frames 0 \\(from step (\\d+)\\), 1 to 4; --resume .*\n");
    ASSERT_TRUE(std::regex_search(run.mErr, found, named)) << run.mErr;
    const size_t left = size_t(std::stoi(found[1]));
    EXPECT_LE(left, Pictures().size());
    EXPECT_LE(Pictures().size(), left + 2);
    EXPECT_GE(left, 2u);
}

TEST_F(FilmLimits, DamagedDataAreToldOnceAFileAndCount) {
    const std::string data = mFolder.CopyData("data");
    fs::resize_file(mFolder.mPath / "data/galaxy0002.bin", 40000);
    const std::string project = mFolder.MakeProject("cut.mrp", "TimeAnimInterp=2\n", data);
    const ChildRun_st run = Film({project, "--quiet"});
    EXPECT_EQ(run.mStatus, 3) << run.mErr;
    EXPECT_EQ(Pictures().size(), 9u) << "they are written all the same";
    const std::string words = "galaxy0002.bin: the file ends after 999 of 2000 particles";
    const size_t first = run.mErr.find(words);
    EXPECT_NE(first, std::string::npos) << run.mErr;
    EXPECT_EQ(run.mErr.find(words, first + 1), std::string::npos) << run.mErr;
    EXPECT_NE(run.mErr.find("damaged data are in frames 1, 2;"), std::string::npos) << run.mErr;
    const ChildRun_st ok = Film({project, "--damaged", "ok"}, {}, "ok");
    EXPECT_EQ(ok.mStatus, 0) << ok.mErr;
    EXPECT_NE(ok.mErr.find(words), std::string::npos) << "told all the same";
    const ChildRun_st elsewhere = Film({project, "--frames", "3-4"}, {}, "elsewhere");
    EXPECT_EQ(elsewhere.mStatus, 0) << elsewhere.mErr;
    // A count that can't be: no picture, or one without particles.
    const int count = -5;
    std::fstream file(mFolder / "data/galaxy0002.bin", std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4);
    file.write(reinterpret_cast<const char*>(&count), sizeof count);
    file.close();
    const ChildRun_st none = Film({project, "--quiet", "--frames", "2"}, {}, "none");
    EXPECT_EQ(none.mStatus, 3) << none.mErr;
    EXPECT_NE(none.mErr.find("galaxy0002.bin"), std::string::npos) << none.mErr;
    EXPECT_EQ(Pictures("none").size(), 0u);
    const ChildRun_st empty = Film({project, "--quiet", "--frames", "2", "--damaged", "ok"}, {}, "empty");
    EXPECT_EQ(empty.mStatus, 0) << empty.mErr;
    EXPECT_NE(empty.mErr.find("galaxy0002.bin"), std::string::npos) << empty.mErr;
    EXPECT_EQ(Pictures("empty").size(), 2u) << "two steps";
}

} // namespace
