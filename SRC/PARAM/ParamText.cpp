#include "PARAM/ParamText.h"

#include <string>

bool ReadParamLine(std::wistream& stream, wxString* pLine) {
    std::wstring line;
    if (!std::getline(stream, line)) return false;
    while (!line.empty() && line.back() == L'\r')
        line.pop_back();
    *pLine = line;
    return true;
}
