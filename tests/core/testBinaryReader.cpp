// Binary snapshots: every record lands where the grammar says, whole or cut, with any number of threads.
#include <atomic>
#include <cstring>
#include <random>
#include <thread>

#include <fcntl.h>

#include "ReaderTestTools.h"

namespace {

const std::vector<int> kDefault{0, 1, 5, 6, 7, 8};

// One particle of the default record with numbers that tell where they come from.
std::string Record(int i, int type) {
    const float f = static_cast<float>(i);
    return Pack(f, f + 0.125f, f + 0.25f, -f, -f - 1, -f - 2, f * 0.5f, i, type, f * 2);
}

std::string Records(int first, int last) {
    std::string bytes;
    for (int i = first; i < last; ++i)
        bytes += Record(i, i % 5);
    return bytes;
}

bool IsRecord(const TestArrays_cls& arrays, int i) {
    const float f = static_cast<float>(i);
    const size_t k = static_cast<size_t>(i);
    return arrays->mpPos[k][0] == f && arrays->mpPos[k][2] == f + 0.25f && arrays->mpVel[k][2] == -f - 2 &&
           arrays->mpRadius[k] == f * 0.5f && arrays->mpID[k] == i && arrays->mpType[k] == i % 5 &&
           arrays->mpValue1[k] == f * 2 && arrays->mpDRadius[k] == 0 && arrays->mpDValue1[k] == 0;
}

bool IsZero(const TestArrays_cls& arrays, int i) {
    const size_t k = static_cast<size_t>(i);
    return arrays->mpPos[k][0] == 0 && arrays->mpPos[k][2] == 0 && arrays->mpVel[k][2] == 0 &&
           arrays->mpRadius[k] == 0 && arrays->mpID[k] == 0 && arrays->mpType[k] == 0 &&
           arrays->mpValue1[k] == 0;
}

} // namespace

TEST(BinaryReader, ReadsManyRecordsWithTwoThreads) {
    const int number = 250001; // 10 MB: over the size for two threads, no multiple of anything
    TempDir_cls dir;
    const std::string path = dir.Write("many.bin", Pack(1.5f, number) + Records(0, number));
    TestLoader_cls loader(0, {0, 1}, kDefault);
    TestArrays_cls arrays(number);
    ReadBody(loader, path, number, arrays);
    for (int i = 0; i < number; ++i)
        ASSERT_TRUE(IsRecord(arrays, i)) << i;
}

TEST(BinaryReader, DefaultAndGeneralRecordsDifferInNegativeTypes) {
    std::string standard, swapped;
    const int types[] = {-1, -252, 3, 4, 5, 7, 256, 259, 2147483647};
    for (const int type : types) {
        standard += Record(1, type);
        swapped += Pack(1.0f, 2.0f, 3.0f, type);
    }
    TempDir_cls dir;
    TestArrays_cls arrays(9);
    ReadBody(TestLoader_cls(0, {1}, kDefault), dir.Write("a.bin", Pack(9) + standard), 9, arrays);
    EXPECT_EQ(std::vector<int>({0, 0, 3, 4, 4, 4, 4, 4, 4}),
              std::vector<int>(arrays->mpType, arrays->mpType + 9));
    ReadBody(TestLoader_cls(0, {1}, {0, 7}), dir.Write("b.bin", Pack(9) + swapped), 9, arrays);
    EXPECT_EQ(std::vector<int>({4, 4, 3, 4, 4, 4, 0, 3, 4}),
              std::vector<int>(arrays->mpType, arrays->mpType + 9))
        << "-1 is the byte 255, 256 the byte 0";
}

TEST(BinaryReader, TakesAnyRecordAndClearsWhatItLacks) {
    // Dummies of all sizes, unknown codes (no bytes), the value twice: the last one wins.
    const std::string skip3(12, '\x7f'), skip10(40, '\x7f'), skip1(4, '\x7f');
    std::string bytes(4, 'h');
    bytes += Pack(2);
    for (int i = 0; i < 2; ++i)
        bytes +=
            skip10 + Pack(1.0f + static_cast<float>(i)) + skip3 + Pack(3.0f, 4.0f, 5.0f) + skip1 + Pack(9.0f);
    TempDir_cls dir;
    TestArrays_cls arrays(2);
    ReadBody(TestLoader_cls(0, {2, 1}, {4, 8, 3, 99, 0, 2, -1, 8}), dir.Write("any.bin", bytes), 2, arrays);
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(4.0f, arrays->mpPos[i][1]);
        EXPECT_EQ(9.0f, arrays->mpValue1[i]);
        EXPECT_EQ(0.0f, arrays->mpVel[i][0]);
        EXPECT_EQ(0.0f, arrays->mpRadius[i]);
        EXPECT_EQ(0, arrays->mpID[i]);
        EXPECT_EQ(0, arrays->mpType[i]);
    }
    ReadBody(TestLoader_cls(0, {2, 1}, {}), dir.Name("any.bin"), 2, arrays);
    EXPECT_TRUE(IsZero(arrays, 0) && IsZero(arrays, 1)) << "a record of nothing";
}

TEST(BinaryReader, ReadsWithoutAnIdArray) {
    TempDir_cls dir;
    TestArrays_cls arrays(2);
    const std::string path = dir.Write("id.bin", Pack(2) + Records(0, 2));
    const TestLoader_cls loader(0, {1}, kDefault);
    ReadSnapshotBody(MakeSnapshotBody(loader, wxString::FromUTF8(path.c_str()), 2, arrays.mArrays, false));
    EXPECT_EQ(0x44444444, arrays->mpID[1]);
    EXPECT_EQ(2.0f, arrays->mpValue1[1]);
}

TEST(BinaryReader, KeepsWhatAShortFileHolds) {
    const int number = 200000;
    TempDir_cls dir;
    const TestLoader_cls loader(0, {1}, kDefault);
    // Whole records and one cut in its radius: position and velocity of that one stay.
    for (const int whole : {0, 1, 99999, 150000}) {
        const std::string path = dir.Write(
            "cut.bin",
            Pack(number) + Records(0, whole + 1).substr(0, 40u * static_cast<unsigned>(whole) + 26));
        TestArrays_cls arrays(number);
        testing::internal::CaptureStdout();
        ReadBody(loader, path, number, arrays);
        EXPECT_EQ(path + ": the file ends after " + std::to_string(whole) +
                      " of 200000 particles, the others are zero\n",
                  testing::internal::GetCapturedStdout());
        for (int i = 0; i < whole; ++i)
            ASSERT_TRUE(IsRecord(arrays, i)) << i;
        const size_t k = static_cast<size_t>(whole);
        EXPECT_EQ(static_cast<float>(whole) + 0.25f, arrays->mpPos[k][2]);
        EXPECT_EQ(0.0f, arrays->mpRadius[k]) << "half a number is none";
        for (int i = whole + 1; i < number; ++i)
            ASSERT_TRUE(IsZero(arrays, i)) << i;
    }
}

TEST(BinaryReader, SurvivesAFileThatIsGoneOrADirectory) {
    TempDir_cls dir;
    const TestLoader_cls loader(0, {1}, kDefault);
    for (const std::string& path : {dir.Name("missing.bin"), testing::TempDir()}) {
        TestArrays_cls arrays(3);
        testing::internal::CaptureStdout();
        ReadBody(loader, path, 3, arrays);
        EXPECT_FALSE(testing::internal::GetCapturedStdout().empty());
        EXPECT_TRUE(IsZero(arrays, 0) && IsZero(arrays, 2));
    }
}

// The simulation still writes: each record that was read is whole, or zero.
TEST(BinaryReader, SurvivesAFileThatGrowsAndShrinksWhileItReads) {
    const int number = 300000;
    const std::string body = Records(0, number);
    TempDir_cls dir;
    const std::string path = dir.Write("grow.bin", Pack(number) + body.substr(0, 4000));
    const TestLoader_cls binary(0, {1}, kDefault), text(1, {1}, kDefault);
    std::atomic<bool> bStop{false};
    std::thread writer([&] {
        const int file = open(path.c_str(), O_WRONLY);
        while (!bStop) {
            for (size_t pos = 0; pos < body.size() && !bStop; pos += 1000000)
                EXPECT_GT(pwrite(file, body.data() + pos, std::min<size_t>(1000000, body.size() - pos),
                                 static_cast<off_t>(pos + 4)),
                          0);
            EXPECT_EQ(0, ftruncate(file, 4004));
        }
        close(file);
    });
    testing::internal::CaptureStdout();
    TestArrays_cls arrays(number);
    for (int round = 0; round < 20; ++round) {
        ReadBody(binary, path, number, arrays);
        for (int i = 0; i < 100; ++i)
            ASSERT_TRUE(IsRecord(arrays, i)) << i;
        ReadBody(text, path, number, arrays);
    }
    bStop = true;
    writer.join();
    testing::internal::GetCapturedStdout();
}

TEST(BinaryReader, SortsPositionsAndIdsAlone) {
    const int ids[] = {5, -3, 2147483647, 5, 0};
    std::string bytes = Pack(5);
    for (int i = 0; i < 5; ++i) {
        const float f = static_cast<float>(i);
        bytes += Pack(f, f, f, f, f, f, f, ids[i], i % 4, f);
    }
    TempDir_cls dir;
    TestLoader_cls loader(0, {1}, kDefault);
    loader.ReadStrLine("VariableNumber=2");
    TestArrays_cls arrays(5);
    ReadBody(loader, dir.Write("sort.bin", bytes), 5, arrays);
    EXPECT_EQ(std::vector<int>({-3, 0, 5, 5, 2147483647}), std::vector<int>(arrays->mpID, arrays->mpID + 5));
    const float order[] = {1, 4, 0, 3, 2};
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(order[i], arrays->mpPos[i][1]);
        EXPECT_EQ(static_cast<float>(i), arrays->mpVel[i][0]) << "everything else stays in the file's order";
        EXPECT_EQ(static_cast<float>(i), arrays->mpValue1[i]);
    }
}
