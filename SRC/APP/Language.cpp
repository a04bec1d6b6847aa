#include "APP/Language.h"

#include <algorithm>

namespace {

/// "de_AT" of "de_AT.UTF-8@euro".
std::string StripEncoding(const std::string& locale) { return locale.substr(0, locale.find_first_of(".@")); }

std::vector<std::string> GetWanted(const std::function<std::string(const char*)>& getVariable) {
    std::vector<std::string> wanted;
    const std::string list = getVariable("LANGUAGE");
    for (size_t at = 0; at < list.size();) {
        const size_t end = std::min(list.find(':', at), list.size());
        if (end > at) wanted.push_back(StripEncoding(list.substr(at, end - at)));
        at = end + 1;
    }
    if (!wanted.empty()) return wanted;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const std::string locale = StripEncoding(getVariable(name));
        if (!locale.empty()) return {locale};
    }
    return {};
}

} // namespace

std::string ChooseLanguage(const std::vector<std::string>& available,
                           const std::function<std::string(const char*)>& getVariable) {
    const auto has = [&available](const std::string& language) {
        return std::find(available.begin(), available.end(), language) != available.end();
    };
    for (const std::string& wanted : GetWanted(getVariable)) {
        const std::string language = wanted.substr(0, wanted.find('_'));
        if (has(wanted)) return wanted;
        if (has(language)) return language;
        if (language == "en") break;
    }
    return "en";
}
