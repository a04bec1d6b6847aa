// The scanners for plain numbers.
#include <climits>
#include <cstring>

#include <gtest/gtest.h>

#include "COMMON/clsAsciiReader.h"

TEST(AsciiReader, ScansPlainNumbers) {
    EXPECT_EQ(-12.5f, AsciiReader_cls::fast_atof32(" \t-12.5,"));
    EXPECT_EQ(0.25f, AsciiReader_cls::fast_atof32("+.25e9")) << "no exponents";
    EXPECT_EQ(5.0f, AsciiReader_cls::fast_atof32("5."));
    EXPECT_EQ(0.0f, AsciiReader_cls::fast_atof32("word"));
    EXPECT_NEAR(0.123456789f, AsciiReader_cls::fast_atof32("0.12345678901234567890"), 1e-7f);
    EXPECT_NEAR(1.2345678e19f, AsciiReader_cls::fast_atof32("12345678901234567890"), 1e13f);
    EXPECT_EQ(-42, AsciiReader_cls::fast_atoi(" -42abc"));
    EXPECT_EQ(INT_MAX, AsciiReader_cls::fast_atoi("99999999999999999999"));
    EXPECT_EQ(INT_MIN, AsciiReader_cls::fast_atoi("-99999999999"));
}

TEST(AsciiReader, MovesItsCursorBehindTheTerminator) {
    const char* cursor = "1.5, 7 x,tail";
    EXPECT_EQ(1.5f, AsciiReader_cls::ReadFloat(&cursor, ','));
    EXPECT_EQ(7, AsciiReader_cls::ReadInt(&cursor, ','));
    EXPECT_STREQ("tail", cursor);
    EXPECT_EQ(0, AsciiReader_cls::ReadInt(&cursor, ','));
    EXPECT_STREQ("", cursor) << "stays at the end";
    const char text[] = "abc<d>";
    cursor = text;
    EXPECT_TRUE(AsciiReader_cls::SearchChar(&cursor, '<', text + 6));
    EXPECT_STREQ("<d>", cursor);
    EXPECT_FALSE(AsciiReader_cls::SearchChar(&cursor, 'd', text + 4));
    EXPECT_EQ(nullptr, cursor);
}
