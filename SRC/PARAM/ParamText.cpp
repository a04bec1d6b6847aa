#include "PARAM/ParamText.h"

#include <string>

#include "COMMON/TextSplit.h"

bool ReadParamLine(std::wistream& stream, wxString* pLine) {
    std::wstring line;
    if (!ReadTextLine(stream, &line)) return false;
    *pLine = line;
    return true;
}
