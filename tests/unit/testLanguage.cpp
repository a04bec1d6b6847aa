// Which language the program speaks, by the environment.
#include <map>

#include <gtest/gtest.h>

#include "APP/Language.h"

namespace {

std::string Choose(const std::map<std::string, std::string>& variables) {
    return ChooseLanguage({"de", "ja", "pt_BR"}, [&variables](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::string() : found->second;
    });
}

TEST(Language, IsTheFirstWantedThatThereIs) {
    EXPECT_EQ(Choose({{"LANG", "de_AT.UTF-8"}}), "de");
    EXPECT_EQ(Choose({{"LANG", "ja_JP.UTF-8"}, {"LC_MESSAGES", "de_DE@euro"}}), "de");
    EXPECT_EQ(Choose({{"LC_ALL", "ja_JP.eucJP"}, {"LC_MESSAGES", "de_DE"}, {"LANG", "de_DE"}}), "ja");
    EXPECT_EQ(Choose({{"LANG", "pt_BR.UTF-8"}}), "pt_BR");
    EXPECT_EQ(Choose({{"LANG", "pt_PT.UTF-8"}}), "en") << "another country's is none of its own";
    EXPECT_EQ(Choose({{"LANGUAGE", "fr:pt_BR:de"}, {"LANG", "ja_JP.UTF-8"}}), "pt_BR");
    EXPECT_EQ(Choose({{"LANGUAGE", "::ja:"}, {"LANG", "C.UTF-8"}}), "ja")
        << "no locale of its name is needed";
}

TEST(Language, IsEnglishWhereNothingFits) {
    EXPECT_EQ(Choose({}), "en");
    for (const char* locale : {"C", "POSIX", "C.UTF-8", "en_GB.UTF-8", "xx_YY", "_", ".", "@", "d"})
        EXPECT_EQ(Choose({{"LANG", locale}}), "en") << locale;
    EXPECT_EQ(Choose({{"LANGUAGE", "en_GB:de"}}), "en") << "English comes first";
    EXPECT_EQ(Choose({{"LANGUAGE", ":"}, {"LC_ALL", "C"}, {"LANG", "de_DE"}}), "en");
}

} // namespace
