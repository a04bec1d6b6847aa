#include "CONFITEM/clsConfItemList.h"

#include <clocale>
#include <cstdlib>
#include <locale>

#include <wx/filename.h>
#include <wx/utils.h>

#include <gtest/gtest.h>

namespace {

class CommaPunct_cls : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

// Puts the process under a locale that writes 1,5; builds German into a folder of its own where the
// system has none.
class CommaLocale_cls {
public:
    CommaLocale_cls() : mSaved(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "nl_NL.UTF-8"})
            if (Enter(name)) return;
        mDir = wxFileName::CreateTempFileName("morentis_locale");
        wxRemoveFile(mDir);
        wxMkdir(mDir);
        // A small set of characters takes a fifth of the time of UTF-8.
        const wxString command = "localedef -i de_DE -f ISO-8859-1 " + mDir + "/de_DE >/dev/null 2>&1";
        if (std::system(command.utf8_str()) != 0) return;
        wxSetEnv("LOCPATH", mDir);
        Enter("de_DE");
    }
    ~CommaLocale_cls() {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, mSaved.c_str());
        if (mDir.empty()) return;
        wxUnsetEnv("LOCPATH");
        wxFileName::Rmdir(mDir, wxPATH_RMDIR_RECURSIVE);
    }
    bool mbActive = false;

private:
    bool Enter(const char* name) {
        if (!std::setlocale(LC_ALL, name)) return false;
        mbActive = std::localeconv()->decimal_point[0] == ',';
        // Streams follow this one. Made by hand: glibc leaks in making it from a LOCPATH.
        if (mbActive) std::locale::global(std::locale(std::locale::classic(), new CommaPunct_cls));
        return mbActive;
    }
    std::string mSaved;
    wxString mDir;
};

} // namespace

TEST(ConfItemLocale, numbersKeepThePointWhereUsersWriteAComma) {
    CommaLocale_cls locale;
    if (!locale.mbActive) GTEST_SKIP() << "no locale with a decimal comma, and none can be built";
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
