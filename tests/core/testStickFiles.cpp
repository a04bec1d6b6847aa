// Files of sticks, good and bad.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "BOND/BondFile.h"
#include "StickTestTools.h"

namespace {

class StickFiles : public testing::Test {
protected:
    void SetUp() override {
        std::string folder =
            std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") + "/sticksXXXXXX";
        ASSERT_NE(mkdtemp(folder.data()), nullptr);
        mFolder = folder;
    }
    void TearDown() override { std::system(("rm -rf '" + mFolder + "'").c_str()); }

    wxString Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(mFolder + "/" + name, std::ios::binary) << bytes;
        return wxString::FromUTF8(mFolder + "/" + name);
    }
    static std::string MakeBond(const std::vector<uint32_t>& indices, int count) {
        std::string bytes("bond\0....", 9);
        bytes.append(reinterpret_cast<const char*>(&count), 4);
        bytes.append(reinterpret_cast<const char*>(indices.data()), indices.size() * 4);
        return bytes;
    }
    std::string mFolder;
};

using Sticks = std::vector<StickTuple_t>;

Sticks ReadText(const std::string& text, wxString* pReason = nullptr) {
    StickList_st list;
    const wxString reason = ReadStickText(text.data(), text.size(), &list);
    if (pReason)
        *pReason = reason;
    else
        EXPECT_EQ(reason, "") << text;
    return GetTuples(list);
}

} // namespace

TEST_F(StickFiles, BondFilesAreReadWhole) {
    StickList_st list;
    EXPECT_EQ(ReadStickFile(Write("a.bond", MakeBond({0, 1, 5, 2, 4000000000u, 7}, 3)), &list), "");
    EXPECT_EQ(GetTuples(list),
              (Sticks{{0, 1, 0, 0, 1.0f}, {5, 2, 0, 0, 1.0f}, {4000000000u, 7, 0, 0, 1.0f}}));
    EXPECT_EQ(ReadStickFile(Write("a.BOND", MakeBond({8, 9}, 1)), &list), "");
    EXPECT_EQ(GetTuples(list), (Sticks{{8, 9, 0, 0, 1.0f}}));
    EXPECT_EQ(ReadStickFile(Write("none.bond", MakeBond({}, 0)), &list), "");
    EXPECT_EQ(list.GetNumber(), 0u);
    // More than a piece, and more than a thread's.
    std::vector<uint32_t> many(2 * 600001);
    for (size_t k = 0; k < many.size(); ++k)
        many[k] = static_cast<uint32_t>(k * 2654435761u);
    EXPECT_EQ(ReadStickFile(Write("many.bond", MakeBond(many, 600001)), &list), "");
    ASSERT_EQ(list.GetNumber(), 600001u);
    for (size_t k = 0; k < list.GetNumber(); ++k)
        ASSERT_TRUE(list.mvIndexA[k] == many[2 * k] && list.mvIndexB[k] == many[2 * k + 1] &&
                    list.GetBit(k) == 0 && list.GetFactor(k) == 1.0f)
            << k;
}

TEST_F(StickFiles, WrongBondFilesLeaveNothingAndSayWhy) {
    const std::string good = MakeBond({0, 1, 2, 3}, 2);
    const std::pair<std::string, const char*> cases[] = {
        {good + "x", "2 sticks take 29 bytes, and the file has 30."},
        {good.substr(0, 28), "2 sticks take 29 bytes, and the file has 28."},
        {MakeBond({}, -1), "The number of sticks in its head is -1."},
        {MakeBond({}, std::numeric_limits<int>::max()),
         "2147483647 sticks take 17179869189 bytes, and the file has 13."},
        {good.substr(0, 12), "The file ends within the first 13 bytes."},
        {"bonds and more than 13 bytes",
         "A .bond file begins with the word \"bond\" and a zero byte, and this one doesn't."},
        {"", "A .bond file begins with the word \"bond\" and a zero byte, and this one doesn't."}};
    StickList_st list;
    for (const auto& [bytes, reason] : cases) {
        list.Resize(3);
        EXPECT_EQ(ReadStickFile(Write("bad.bond", bytes), &list), reason);
        EXPECT_EQ(list.GetNumber(), 0u) << reason;
    }
    EXPECT_EQ(ReadStickFile(wxString::FromUTF8(mFolder + "/none.txt"), &list),
              "The file can't be opened: No such file or directory.");
    EXPECT_EQ(ReadStickFile(wxString::FromUTF8(mFolder), &list), "This is no regular file.");
    ASSERT_EQ(mkfifo((mFolder + "/pipe.bond").c_str(), 0600), 0);
    EXPECT_EQ(ReadStickFile(wxString::FromUTF8(mFolder + "/pipe.bond"), &list), "This is no regular file.");
}

TEST_F(StickFiles, TextLinesHaveTwoToFourFields) {
    EXPECT_EQ(ReadText("3 7\n"), (Sticks{{3, 7, 0, 0, 1.0f}}));
    EXPECT_EQ(ReadText("3 7 1 0.5\n4 8\r\n5 9 2\n6 1\n1 2 3 0.25 77 text"),
              (Sticks{{3, 7, 0, 1, 0.5f},
                      {4, 8, 0, 0, 0.5f}, // keeps the weight of the line before
                      {5, 9, 0, 2, 1.0f},
                      {6, 1, 0, 0, 1.0f},
                      {1, 2, 0, 3, 0.25f}}));
    EXPECT_EQ(ReadText("1 2\n\n3 4\n"), (Sticks{{1, 2, 0, 0, 1.0f}})) << "ends at the first empty line";
    EXPECT_EQ(ReadText("1 2\r\n \t\r\nwords"), (Sticks{{1, 2, 0, 0, 1.0f}}));
    EXPECT_EQ(ReadText("\xef\xbb\xbf\t+1\t2 \n"), (Sticks{{1, 2, 0, 0, 1.0f}}));
    EXPECT_EQ(ReadText(""), Sticks());
    EXPECT_EQ(ReadText("1 2 3 nan\n"), (Sticks{{1, 2, 0, 3, 1.0f}}));
    // The numbers of scanf: nothing need stand between two of them.
    EXPECT_EQ(ReadText("3-7 1.5\n"), (Sticks{{3, unsigned(-7), 0, 1, 0.5f}}));
    EXPECT_EQ(ReadText("3 7 x 4"), (Sticks{{3, 7, 0, 0, 1.0f}}));
    EXPECT_EQ(ReadText("3 7 256 +2.5e-1\n1 2 -1 0x1p-2\n1 2 9 1e"),
              (Sticks{{3, 7, 0, 0, 0.25f}, {1, 2, 0, 255, 0.25f}, {1, 2, 0, 9, 1.0f}}));
    EXPECT_EQ(ReadText("99999999999999999999 -99999999999\n"),
              (Sticks{{unsigned(std::numeric_limits<int>::max()), unsigned(std::numeric_limits<int>::min()),
                       0, 0, 1.0f}}));
    EXPECT_EQ(ReadText("1 2 0 inf\n1 2 0 1e99\n"),
              (Sticks{{1, 2, 0, 0, HUGE_VALF}, {1, 2, 0, 0, HUGE_VALF}}));
}

TEST_F(StickFiles, ALineThatCantBeReadEndsTheListAndIsNamed) {
    wxString reason;
    EXPECT_EQ(ReadText("1 2\n3 4\n5\n6 7\n", &reason), (Sticks{{1, 2, 0, 0, 1.0f}, {3, 4, 0, 0, 1.0f}}));
    EXPECT_EQ(reason, "Line 3 has no second particle; the list ends there.");
    EXPECT_EQ(ReadText("# a b\n1 2\n", &reason), Sticks());
    EXPECT_EQ(reason, "Line 1 doesn't begin with a particle's number; the list ends there.");
    EXPECT_EQ(ReadText(std::string("1 2\n\0 1 2\n", 10), &reason), (Sticks{{1, 2, 0, 0, 1.0f}}));
    EXPECT_EQ(reason, "Line 2 doesn't begin with a particle's number; the list ends there.");
    // A megabyte in one line, and one without an end.
    const std::string longLine(1 << 20, '7');
    EXPECT_EQ(ReadText("1 2\n" + longLine + "\n3 4\n", &reason), (Sticks{{1, 2, 0, 0, 1.0f}}));
    EXPECT_EQ(reason, "Line 2 has no second particle; the list ends there.");
    EXPECT_EQ(ReadText("1 2 0 " + longLine).size(), 1u);
    EXPECT_EQ(ReadText("1 2" + std::string(1 << 20, ' ') + "0 0.5\n3 4"),
              (Sticks{{1, 2, 0, 0, 0.5f}, {3, 4, 0, 0, 0.5f}}));
    StickList_st list;
    EXPECT_EQ(ReadStickFile(Write("a.txt", "1 2\nend"), &list),
              "Line 2 doesn't begin with a particle's number; the list ends there.");
    EXPECT_EQ(list.GetNumber(), 1u);
}
