// Which language the program speaks.
#pragma once

#include <functional>
#include <string>
#include <vector>

/// The first language that the user wants and that there is a catalogue for, by the environment's rules:
/// LANGUAGE is a list such as "de_AT:ja", else LC_ALL, LC_MESSAGES or LANG name one. A territory may be left
/// out by the catalogue ("de" serves "de_AT"). "en" where nothing is wanted, English comes first or no
/// catalogue fits, and in the locales "C" and "POSIX" without a LANGUAGE. `getVariable` gives a variable's
/// value, empty for none.
std::string ChooseLanguage(const std::vector<std::string>& available,
                           const std::function<std::string(const char*)>& getVariable);
