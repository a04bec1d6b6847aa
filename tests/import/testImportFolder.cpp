// The folder that is written: arguments, existing files, taking up an import, full disks.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include <gtest/gtest.h>

#include "RunImport.h"

namespace {

std::string Table(int rows, int first) {
    std::string text = "id,x,y,z\n";
    for (int i = 0; i < rows; ++i)
        text += std::to_string(first + i) + ",1,2," + std::to_string(i) + "\n";
    return text;
}

} // namespace

TEST(ImportFolder, WrongArgumentsBeginNothing) {
    const ImportFolder_st folder;
    const std::string file = folder.Write("a.csv", Table(2, 1));
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{}, "no file is named"},
        {{file, "--from", "pdf"}, "\"pdf\" is no format"},
        {{file, "--columns", "colour=x"}, "is no role of a column"},
        {{file, "--nothing"}, "there is no option \"--nothing\""},
    };
    for (const auto& [words, reason] : cases) {
        const ImportRunResult_st run = folder.Run(words);
        EXPECT_EQ(run.mStatus, 2) << reason;
        EXPECT_NE(run.mErr.find(reason), std::string::npos) << run.mErr;
        EXPECT_EQ(folder.CountSnapshots(), 0);
    }
    for (const std::string& output : {folder / "no/where", std::string("/dev/full")})
        EXPECT_EQ(folder.Run({file}, 0, output).mStatus, 2) << output;
    EXPECT_EQ(folder.Run({folder / "missing.csv"}).mStatus, 1);
    EXPECT_NE(access((folder / "out").c_str(), F_OK), 0) << "nothing was begun";
}

TEST(ImportFolder, ResumeKeepsWhatIsWholeAndNothingElse) {
    const ImportFolder_st folder;
    std::vector<std::string> files;
    for (int i = 0; i < 3; ++i)
        files.push_back(folder.Write("t" + std::to_string(i) + ".csv", Table(50 + i, 7)));
    ASSERT_EQ(folder.Run(files).mStatus, 0);
    const std::string project = ReadBytes(folder / "out/out.mrp");
    const ImportRunResult_st again = folder.Run(files);
    EXPECT_EQ(again.mStatus, 2);
    EXPECT_NE(again.mErr.find("--resume to go on"), std::string::npos) << again.mErr;

    const std::string whole = ReadBytes(folder / "out/snap0001.bin");
    ASSERT_EQ(truncate((folder / "out/snap0001.bin").c_str(), 100), 0);
    ASSERT_EQ(unlink((folder / "out/out.mrp").c_str()), 0);
    struct stat before {};
    struct stat after {};
    stat((folder / "out/snap0000.bin").c_str(), &before);
    files.push_back("--resume");
    const ImportRunResult_st resumed = folder.Run(files);
    ASSERT_EQ(resumed.mStatus, 0) << resumed.mErr;
    EXPECT_NE(resumed.mErr.find("2 of them kept"), std::string::npos) << resumed.mErr;
    stat((folder / "out/snap0000.bin").c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(ReadBytes(folder / "out/snap0001.bin"), whole);
    EXPECT_EQ(ReadBytes(folder / "out/out.mrp"), project) << "its ranges are those of all snapshots";

    files.insert(files.end(), {"--columns", "value=z"});
    EXPECT_EQ(folder.Run(files).mStatus, 2) << "other columns are another import";
}

TEST(ImportFolder, FullDiskIsToldAndLosesNothing) {
    const ImportFolder_st folder;
    const std::string small = folder.Write("t1.csv", Table(10, 1));
    const std::string large = folder.Write("t2.csv", Table(5000, 1));
    const ImportRunResult_st run = folder.Run({small, large}, 20000);
    EXPECT_EQ(run.mStatus, 3);
    EXPECT_NE(run.mErr.find("snap0001.bin: File too large"), std::string::npos) << run.mErr;
    EXPECT_EQ(folder.CountSnapshots(), 1);
    EXPECT_EQ(folder.Run({small, large, "--resume"}).mStatus, 0);
    EXPECT_EQ(folder.CountSnapshots(), 2);
}

TEST(ImportFolder, ResumeLooksAtTheSourcesAndLeavesTheUsersProject) {
    const ImportFolder_st folder;
    const std::vector<std::string> files = {folder.Write("b1.csv", "x,y,z\n1,1,1\n"),
                                            folder.Write("b2.csv", "x,y,z\nbad,1,1\n"),
                                            folder.Write("b3.csv", "x,y,z\n3,1,1\n"), "--resume"};
    EXPECT_EQ(folder.Run(files).mStatus, 3);
    folder.Write("b2.csv", "x,y,z\n2,1,1\n");
    const std::string mine = ReadBytes(folder / "out/out.mrp") + "Classify=0\n";
    folder.Write("out/out.mrp", mine);
    const ImportRunResult_st run = folder.Run(files);
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    ASSERT_EQ(folder.CountSnapshots(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(folder.ReadSnapshot(i).mPos[0], float(i + 1));
    EXPECT_EQ(ReadBytes(folder / "out/out.mrp"), mine);
    EXPECT_NE(ReadBytes(folder / "out/out-import.mrp").find("TimeMaxFrame=2"), std::string::npos);
}

TEST(ImportFolder, SignalsLeaveWholeFilesThatResumeTakesUp) {
    const ImportFolder_st folder;
    constexpr int kFrames = 400, kAtoms = 3000;
    std::string text;
    for (int frame = 0; frame < kFrames; ++frame) {
        text += std::to_string(kAtoms) + "\nframe\n";
        for (int i = 0; i < kAtoms; ++i)
            text += "Ar " + std::to_string(frame) + " 2 " + std::to_string(i) + "\n";
    }
    std::vector<std::string> words = {folder.Write("long.xyz", text)};
    const ImportRunResult_st run = folder.Run(words, 0, "", [&folder](int pid) {
        while (folder.CountSnapshots() < 3 && kill(pid, 0) == 0)
            usleep(500);
        kill(pid, SIGTERM);
    });
    EXPECT_EQ(run.mStatus, 128 + SIGTERM);
    EXPECT_NE(run.mErr.find("with --resume go on"), std::string::npos) << run.mErr;
    const int whole = folder.CountSnapshots();
    EXPECT_LT(whole, kFrames);
    for (const auto& entry : std::filesystem::directory_iterator(folder / "out"))
        EXPECT_EQ(entry.path().string().find(".saving"), std::string::npos) << entry.path();
    EXPECT_EQ(folder.ReadSnapshot(whole - 1).mPos.size(), size_t(3 * kAtoms));
    words.push_back("--resume");
    const ImportRunResult_st resumed = folder.Run(words);
    ASSERT_EQ(resumed.mStatus, 0) << resumed.mErr;
    EXPECT_NE(resumed.mErr.find(std::to_string(whole) + " of them kept"), std::string::npos) << resumed.mErr;
    EXPECT_EQ(folder.CountSnapshots(), kFrames);
}
