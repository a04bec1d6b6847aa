#include "CONFITEM/clsConfItemList.h"

#include <clocale>
#include <locale>

#include <gtest/gtest.h>

#include "CommaLocale.h"

namespace {

class CommaPunct_cls : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

// Streams follow this one. Made by hand: glibc leaks in making it from a LOCPATH.
class StreamLocale_cls {
public:
    StreamLocale_cls() { std::locale::global(std::locale(std::locale::classic(), new CommaPunct_cls)); }
    ~StreamLocale_cls() { std::locale::global(std::locale::classic()); }
};

} // namespace

TEST(ConfItemLocale, numbersKeepThePointWhereUsersWriteAComma) {
    const CommaLocale_cls locale(LC_ALL);
    const StreamLocale_cls streams;
    ASSERT_TRUE(locale.mbActive);
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    ASSERT_STREQ(text, "1,5");

    ConfItemFLOAT_cls item("F=", "1.5");
    EXPECT_EQ(item.mValue, 1.5f);
    EXPECT_EQ(item.Serialize(), "F=1.500000\n");
    EXPECT_TRUE(item.ReadStrLine("F=2,5"));
    EXPECT_EQ(item.mValue, 2.0f);
    ConfItemDOUBLE_cls number("D=", "1234.5");
    EXPECT_EQ(number.Serialize(), "D=1234.5\n");
    ConfItemDOUBLEARRAY_cls array("A=", "1.25 -0.5 1e-3");
    EXPECT_EQ(array.mValue[0], 1.25);
    EXPECT_EQ(array.Serialize(), "A=1.25 -0.5 0.001\n");
    EXPECT_EQ(ConfItemINTARRAY_cls("I=", "1234567 89").Serialize(), "I=1234567 89\n");
}
