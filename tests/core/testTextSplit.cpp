// Lines and words: one rule for readers of particles, projects, meshes and guesses.
#include "COMMON/TextSplit.h"

#include <cctype>
#include <sstream>

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;

TEST(TextSplit, BlanksAreThoseOfTheCLibrary) {
    for (int c = 0; c < 256; ++c) {
        EXPECT_EQ(IsBlank(static_cast<char>(c)), std::isspace(c) != 0) << c;
        EXPECT_EQ(IsLineBlank(static_cast<char>(c)), std::isspace(c) && c != '\n') << c;
    }
}

TEST(TextSplit, WordsStandBetweenBlanksOfAnyKindAndNumber) {
    EXPECT_EQ(SplitWords(" \t1.5  abc\t-2\v\f7 \r"), Words({"1.5", "abc", "-2", "7"}));
    EXPECT_EQ(SplitWords("one"), Words({"one"}));
    EXPECT_EQ(SplitWords(""), Words());
    EXPECT_EQ(SplitWords(" \r"), Words());
    EXPECT_EQ(SplitWords("a\xc2\xa0"
                         "b"),
              Words({"a\xc2\xa0"
                     "b"}))
        << "letters of an alphabet";
    EXPECT_EQ(FirstWord("\t vn 1 2"), "vn");
    EXPECT_EQ(FirstWord("  "), "");
}

TEST(TextSplit, ALineThatTheSampleCutsIsLeftOut) {
    EXPECT_EQ(SplitLines("a\nb\r\n\nc", 9, true), Words({"a", "b\r", "", "c"}));
    EXPECT_EQ(SplitLines("a\nb\r\n\nc", 9, false), Words({"a", "b\r", ""}));
    EXPECT_EQ(SplitLines("a\nb\n", 9, true), Words({"a", "b"}));
    EXPECT_EQ(SplitLines("a\nb\n", 1, true), Words({"a"}));
    EXPECT_EQ(SplitLines("", 9, true), Words());
}

TEST(TextSplit, LinesOfAStreamLoseTheirEndsAndTooLongOnesArePassedOver) {
    std::wistringstream stream(L"a=1\r\n\n0123456789\nb \r\r\nlast");
    std::wstring line;
    std::vector<std::wstring> lines;
    while (ReadTextLine(stream, &line, 8))
        lines.push_back(line);
    EXPECT_EQ(lines, (std::vector<std::wstring>{L"a=1", L"", L"b ", L"last"}));
}

} // namespace
