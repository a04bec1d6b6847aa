// Whole files: whatever fails on the way, the old one or the new one stands under the name.
#include "COMMON/SafeFile.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "TempFolder.h"

namespace {

namespace fs = std::filesystem;

class SafeFile : public ::testing::Test {
protected:
    ~SafeFile() override { GSafeFileStep = {}; }
    std::string In(const std::string& name) const { return mFolder + "/" + name; }
    static bool Write(const std::string& path, const std::string& bytes) {
        return WriteFileSafely(wxString::FromUTF8(path), bytes).empty();
    }
    static std::string Read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    std::set<std::string> List() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(mFolder))
            names.insert(entry.path().filename().string());
        return names;
    }
    static mode_t ModeOf(const std::string& path) {
        struct stat facts {};
        stat(path.c_str(), &facts);
        return facts.st_mode & 07777;
    }

    TempFolder_cls mTemp;
    const std::string mFolder = mTemp.GetPath();
};

TEST_F(SafeFile, AFailureAtAnyStepKeepsTheOldFileAndLeavesNothingBeside) {
    ASSERT_TRUE(Write(In("a.mrp"), "old"));
    for (const std::string failing : {"open", "write", "sync", "rename"}) {
        GSafeFileStep = [&failing](const char* step) { return failing != step; };
        EXPECT_FALSE(Write(In("a.mrp"), "new")) << failing;
        EXPECT_FALSE(WriteFileSafely(In("b.mrp"), "new").empty()) << "with a reason";
        EXPECT_EQ(Read(In("a.mrp")), "old") << failing;
        EXPECT_EQ(List(), std::set<std::string>{"a.mrp"}) << failing;
    }
    GSafeFileStep = {};
    EXPECT_TRUE(Write(In("a.mrp"), "new"));
    EXPECT_EQ(Read(In("a.mrp")), "new");
}

TEST_F(SafeFile, AFullDiskKeepsTheOldFile) {
    ASSERT_TRUE(Write(In("a.mrp"), "old"));
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {20000, 20000};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(Write(In("a.mrp"), std::string(100000, 'x')) ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the failure is told";
    EXPECT_EQ(Read(In("a.mrp")), "old");
    EXPECT_EQ(List(), std::set<std::string>{"a.mrp"});
    // A disk without room, where the system has one for tests.
    if (fs::exists("/dev/full")) {
        EXPECT_FALSE(Write("/dev/full", "x")) << "a device is never replaced";
        EXPECT_TRUE(fs::is_character_file("/dev/full"));
    }
}

TEST_F(SafeFile, AKillAtAnyMomentLeavesAWholeFile) {
    const std::string path = In("a.mrp");
    const std::string versions[] = {std::string(60000, 'a') + "end\n", std::string(90000, 'b') + "end\n"};
    ASSERT_TRUE(Write(path, versions[0]));
    std::mt19937 random(5);
    std::set<std::string> seen;
    for (int round = 0; round < 150; ++round) {
        const pid_t child = fork();
        if (child == 0)
            for (unsigned k = 1;; ++k)
                Write(path, versions[k % 2]);
        usleep(unsigned(random() % 8000));
        kill(child, SIGKILL);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        const std::string text = Read(path);
        ASSERT_TRUE(text == versions[0] || text == versions[1]) << "round " << round << ", " << text.size();
        seen.insert(text);
    }
    EXPECT_EQ(seen.size(), 2u) << "the children did write";
    EXPECT_LE(List().size(), 2u) << "what kills leave doesn't pile up";
    ASSERT_TRUE(Write(path, "after"));
    EXPECT_EQ(List(), std::set<std::string>{"a.mrp"}) << "and the next save takes it away";
}

TEST_F(SafeFile, ProgramsThatSaveTheSameFileDontMix) {
    const std::string path = In("a.mrp");
    pid_t children[3];
    for (int c = 0; c < 3; ++c) {
        children[c] = fork();
        if (children[c] != 0) continue;
        bool bAll = true;
        for (int k = 0; k < 60; ++k)
            bAll = Write(path, std::string(size_t(30000 + 7000 * c), char('a' + c))) && bAll;
        _exit(bAll ? 0 : 1);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const std::string text = Read(path);
    EXPECT_EQ(text, std::string(text.size(), text.at(0)));
    EXPECT_EQ(List(), std::set<std::string>{"a.mrp"});
}

TEST_F(SafeFile, PermissionsAreKeptAndNewFilesFollowTheMask) {
    const mode_t mask = umask(027);
    ASSERT_TRUE(Write(In("new.mrp"), "1"));
    umask(mask);
    EXPECT_EQ(ModeOf(In("new.mrp")), 0640u);
    for (const mode_t mode : {0600u, 0664u, 0644u}) {
        ASSERT_EQ(chmod(In("new.mrp").c_str(), mode), 0);
        ASSERT_TRUE(Write(In("new.mrp"), "2"));
        EXPECT_EQ(ModeOf(In("new.mrp")), mode);
    }
    if (geteuid() != 0) {
        ASSERT_EQ(chmod(In("new.mrp").c_str(), 0444), 0);
        EXPECT_FALSE(Write(In("new.mrp"), "3")) << "who protects a file means it";
        EXPECT_EQ(Read(In("new.mrp")), "2");
        return;
    }
    ASSERT_EQ(chown(In("new.mrp").c_str(), 1234, 4321), 0);
    ASSERT_TRUE(Write(In("new.mrp"), "3"));
    struct stat facts {};
    stat(In("new.mrp").c_str(), &facts);
    EXPECT_EQ(facts.st_uid, 1234u);
    EXPECT_EQ(facts.st_gid, 4321u);
}

TEST_F(SafeFile, LinksAreFollowed) {
    fs::create_directory(In("there"));
    ASSERT_TRUE(Write(In("there/real.mrp"), "old"));
    fs::create_symlink("there/real.mrp", In("link.mrp"));
    fs::create_symlink("link.mrp", In("chain.mrp"));
    EXPECT_TRUE(Write(In("chain.mrp"), "new"));
    EXPECT_TRUE(fs::is_symlink(In("chain.mrp")));
    EXPECT_TRUE(fs::is_symlink(In("link.mrp")));
    EXPECT_EQ(Read(In("there/real.mrp")), "new");
    fs::create_symlink("there/later.mrp", In("early.mrp"));
    EXPECT_TRUE(Write(In("early.mrp"), "born")) << "a link to what isn't there yet";
    EXPECT_EQ(Read(In("there/later.mrp")), "born");
    fs::create_symlink("circle.mrp", In("circle.mrp"));
    EXPECT_FALSE(Write(In("circle.mrp"), "x"));
}

TEST_F(SafeFile, WhatIsNoFileIsLeftAlone) {
    fs::create_directory(In("folder.mrp"));
    EXPECT_FALSE(Write(In("folder.mrp"), "x"));
    EXPECT_TRUE(fs::is_directory(In("folder.mrp")));
    ASSERT_EQ(mkfifo(In("pipe.mrp").c_str(), 0600), 0);
    EXPECT_FALSE(Write(In("pipe.mrp"), "x"));
    EXPECT_TRUE(fs::is_fifo(In("pipe.mrp")));
    ASSERT_TRUE(Write(In("file"), "old"));
    EXPECT_FALSE(Write(In("file/a.mrp"), "x")) << "a folder that is a file";
    EXPECT_FALSE(Write(In("missing/a.mrp"), "x"));
    EXPECT_EQ(Read(In("file")), "old");
}

TEST_F(SafeFile, ReadingNeverWaitsAndKnowsItsBound) {
    std::string bytes;
    ASSERT_EQ(mkfifo(In("pipe.mrp").c_str(), 0600), 0);
    EXPECT_EQ(ReadWholeFile(In("pipe.mrp"), 1000, &bytes), ReadFileResult::NotOpened);
    EXPECT_EQ(ReadWholeFile("/dev/zero", 1000, &bytes), ReadFileResult::NotOpened);
    EXPECT_EQ(ReadWholeFile(mFolder, 1000, &bytes), ReadFileResult::NotOpened);
    EXPECT_EQ(ReadWholeFile(In("missing"), 1000, &bytes), ReadFileResult::NotOpened);
    const std::string text = std::string("a\0b", 3) + std::string(997, 'c');
    ASSERT_TRUE(Write(In("a.mrp"), text));
    EXPECT_EQ(ReadWholeFile(In("a.mrp"), 1000, &bytes), ReadFileResult::Ok);
    EXPECT_EQ(bytes, text);
    EXPECT_EQ(ReadWholeFile(In("a.mrp"), 999, &bytes), ReadFileResult::TooLarge);
    EXPECT_EQ(ReadWholeFile("/proc/self/status", 100000, &bytes), ReadFileResult::Ok) << "tells no length";
    EXPECT_GT(bytes.size(), 100u);
}

} // namespace
