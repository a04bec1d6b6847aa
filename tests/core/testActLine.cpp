// Lines of a record, and what a process that replays a stranger's may touch.
#include <filesystem>
#include <limits>

#include <gtest/gtest.h>

#include "COMMON/ActLine.h"
#include "COMMON/Confined.h"
#include "COMMON/SafeFile.h"
#include "COMMON/UserActs.h"
#include "TempFolder.h"

namespace {

ActLine_st Read(const wxString& text) {
    ActLine_st line;
    EXPECT_EQ(ReadActLine(text, &line), "") << text;
    return line;
}

TEST(ActLine, WordsComeBackAsTheyWent) {
    ActLine_st line;
    line.mWords = {"text",       "A/B.2",        "", "two words", "a \"quote\" \\ and\nline", "a\ttab",
                   "#no remark", L"\u00e9\u65e5"};
    line.mRemark = "label\nof two lines";
    const ActLine_st back = Read(WriteActLine(line));
    EXPECT_EQ(back.mWords, line.mWords);
    EXPECT_EQ(back.mRemark, "label of two lines");
    EXPECT_EQ(Read("  menu \t ID_UNDO  #  why ").mWords, (std::vector<wxString>{"menu", "ID_UNDO"}));
    // What can't be written isn't read either.
    for (const char* bad : {"text A \"no end", "a\x01 b", "\"\\", "\"a\x01\"", "\"a\rb\"", "a\x7f"})
        EXPECT_NE(ReadActLine(bad, &line), "") << bad;
    EXPECT_NE(ReadActLine(wxString('a', kLongestActLine + 1), &line), "");
}

TEST(ActLine, NumbersAreExact) {
    for (const double number :
         {0.1, -1e-300, 5e-324, 1.0 / 3, 123456789.0, 0.0, std::numeric_limits<double>::max()}) {
        double back = 1.0;
        ASSERT_TRUE(ReadActNumber(WriteActNumber(number), &back));
        EXPECT_EQ(back, number);
    }
    double number = 7.0;
    for (const char* bad : {"", "nan", "inf", "1e999", "0x10", "1,5", "1 ", " 1", "--1", "1a"})
        EXPECT_FALSE(ReadActNumber(bad, &number)) << bad;
    EXPECT_EQ(number, 7.0);
    long count = 7;
    for (const char* bad : {"", "-1", "11", "1.0", "99999999999999999999", "+1"})
        EXPECT_FALSE(ReadActCount(bad, 0, 10, &count)) << bad;
    EXPECT_TRUE(ReadActCount("10", 0, 10, &count));
    EXPECT_EQ(count, 10);
}

TEST(ActLine, AFileTellsItsMistakesByLine) {
    const ActFile_st file =
        ReadActFile("morentis-record 1\r\nmenu ID_UNDO\n\n# only words\ntext \"a\nrest\n");
    EXPECT_EQ(file.mStrReason, "");
    ASSERT_EQ(file.mLines.size(), 2u);
    EXPECT_EQ(file.mLines[1].mNumber, 6);
    ASSERT_EQ(file.mVMistakes.size(), 1u);
    EXPECT_TRUE(file.mVMistakes[0].StartsWith("5: "));
    for (const std::string& bad : {std::string(), std::string("morentis-record 2\n"), std::string(5000, '\0'),
                                   std::string("\xff\xfe\n"), std::string("[Project]\nmorentis-record 1\n")})
        EXPECT_NE(ReadActFile(bad).mStrReason, "");
    const ActFile_st bytes =
        ReadActFile("morentis-record 1\n\xff\xfe\x80\n" + std::string(300000, 'x') + "\nrest");
    ASSERT_FALSE(bytes.mLines.empty());
    EXPECT_EQ(bytes.mLines.back().GetVerb(), "rest") << "what isn't UTF-8, or too long, costs its own line";
}

TEST(ActLine, AnswersAreNotedAndReplayed) {
    std::vector<wxString> noted;
    GUserActs.mNote = [&](const char* verb, const wxString& what) { noted.push_back(verb + (" " + what)); };
    EXPECT_EQ(AskUser("file", [] { return wxString("/a"); }), "/a");
    GUserActs.mAnswer = [](const char*) { return wxString("/b"); };
    EXPECT_EQ(AskUser("file", [] { return wxString("/a"); }), "/b") << "nobody is asked";
    GUserActs = UserActs_st();
    EXPECT_EQ(noted, (std::vector<wxString>{"file /a", "file /b"}));
}

/// In a process of its own: there is no way back.
[[noreturn]] void WriteConfined(const std::string& inside, const std::string& outside) {
    namespace fs = std::filesystem;
    fs::create_directory(inside + "/sub");
    fs::create_directory_symlink(outside, inside + "/link");
    fs::create_symlink(outside + "/kept", inside + "/file");
    ConfineTo(inside);
    const auto writes = [](const std::string& path) { return WriteFileSafely(path, "new").empty(); };
    bool bGood = writes(inside + "/a") && writes(inside + "/sub/b") && !WhyNoProgram().empty();
    for (const std::string& bad : {outside + "/kept", outside + "/new", inside + "/../x", inside + "x",
                                   inside + "/link/kept", inside + "/file", std::string("relative")})
        bGood = bGood && !writes(bad);
    std::string kept;
    ReadWholeFile(outside + "/kept", 10, &kept);
    std::_Exit(bGood && kept == "old" && !fs::exists(outside + "/new") ? 0 : 1);
}

TEST(ActLine, WhoReplaysWritesIntoOneFolder) {
    const TempFolder_cls inside;
    const TempFolder_cls outside;
    outside.Write("kept", "old");
    EXPECT_FALSE(IsConfined());
    EXPECT_EXIT(WriteConfined(inside.GetPath(), outside.GetPath()), ::testing::ExitedWithCode(0), "");
    EXPECT_TRUE(WhyNoProgram().empty());
}

} // namespace
