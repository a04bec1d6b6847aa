#include "PARAM/ParamText.h"

#include <string>

#include "COMMON/TextSplit.h"

bool ReadParamLine(std::wistream& stream, wxString* pLine) {
    std::wstring line;
    if (!ReadTextLine(stream, &line)) return false;
    *pLine = line;
    return true;
}

bool IsParamHeading(const wxString& line) {
    return line.StartsWith("Parameter_") || line.StartsWith("-ParamGroup=") || line.StartsWith("---");
}

void GoBackTo(std::wistream& stream, std::wistream::pos_type position) {
    stream.clear();
    stream.seekg(position);
}
