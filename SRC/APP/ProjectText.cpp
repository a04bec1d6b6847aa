#include "APP/ProjectText.h"

#include <wx/strconv.h>

#include "COMMON/TextSplit.h"

namespace {

const wxMBConvUTF8& FileConv() {
    static const wxMBConvUTF8 sConv(wxMBConvUTF8::MAP_INVALID_UTF8_TO_PUA);
    return sConv;
}

} // namespace

std::wstring DecodeProject(const std::string& bytes) {
    if (bytes.empty()) return std::wstring();
    const bool bMark = bytes.compare(0, 3, "\xEF\xBB\xBF") == 0;
    const size_t skip = bMark ? 3 : 0;
    size_t length = 0;
    const wxWCharBuffer wide = FileConv().cMB2WC(bytes.data() + skip, bytes.size() - skip, &length);
    return std::wstring(wide.data(), length);
}

std::string EncodeProject(const wxString& text) {
    const wxScopedCharBuffer bytes = text.mb_str(FileConv());
    return std::string(bytes.data(), bytes.length());
}

bool NextProjectLine(std::wistream& stream, wxString* pLine) {
    std::wstring line;
    if (!ReadTextLine(stream, &line, kLongestProjectLine)) return false;
    *pLine = line;
    return true;
}
