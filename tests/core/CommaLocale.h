// A locale in which numbers have a comma, as German's: few systems have one, so it is built here.
#pragma once

#include <clocale>
#include <cstdlib>
#include <string>

#include "TempFolder.h"

/// As long as this lives, the process is under it, for numbers or for all.
class CommaLocale_cls {
public:
    explicit CommaLocale_cls(int category) : mCategory(category), mSaved(std::setlocale(category, nullptr)) {
        const std::string source =
            mFolder.Write("source", "LC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep "
                                    "\"<U002E>\"\ngrouping 3;3\nEND LC_NUMERIC\n");
        const std::string map =
            mFolder.Write("map", "<code_set_name> ASCII\n<mb_cur_min> 1\n<mb_cur_max> 1\n<escape_char> /\n"
                                 "CHARMAP\n<U0000>..<U007F> /x00 ASCII\nEND CHARMAP\n");
        // It warns of all the categories that aren't there, and has a status for that.
        const std::string command =
            "localedef -c -i " + source + " -f " + map + " " + mFolder.GetPath() + "/comma >/dev/null 2>&1";
        if (std::system(command.c_str()) < 0) return;
        setenv("LOCPATH", mFolder.GetPath().c_str(), 1);
        mbActive = std::setlocale(category, "comma") && *std::localeconv()->decimal_point == ',';
    }
    ~CommaLocale_cls() {
        std::setlocale(mCategory, mSaved.c_str());
        unsetenv("LOCPATH");
    }
    CommaLocale_cls(const CommaLocale_cls&) = delete;
    CommaLocale_cls& operator=(const CommaLocale_cls&) = delete;

    bool mbActive = false;

private:
    TempFolder_cls mFolder;
    int mCategory;
    std::string mSaved;
};
