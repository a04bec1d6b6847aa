#include "APP/ProjectText.h"

#include <wx/strconv.h>
#include <wx/tokenzr.h>

#include "COMMON/TextSplit.h"

namespace {

const wxMBConvUTF8& FileConv() {
    static const wxMBConvUTF8 sConv(wxMBConvUTF8::MAP_INVALID_UTF8_TO_PUA);
    return sConv;
}

/// "DataSequence0=" and what follows; the path stands on the next line.
bool BeginsData(const wxString& line) {
    const wxString key = "DataSequence";
    return line.length() > key.length() + 1 && line.StartsWith(key) && wxIsdigit(line[key.length()]) &&
           line[key.length() + 1] == '=';
}

/// `lower`: in small letters.
bool IsNoNumber(const wxString& lower) {
    const wxString word = lower.StartsWith("-") || lower.StartsWith("+") ? lower.Mid(1) : lower;
    return word == "nan" || word == "inf" || word == "infinity" || word.StartsWith("nan(");
}

/// Values behind the key, all of them numbers but some that are none: else it is a text.
bool HasNoNumber(const wxString& line) {
    bool bFound = false;
    wxStringTokenizer words(line.AfterFirst('=').Lower(), " \t,;\r", wxTOKEN_STRTOK);
    while (words.HasMoreTokens()) {
        const wxString word = words.GetNextToken();
        double value = 0.0;
        if (IsNoNumber(word))
            bFound = true;
        else if (!word.ToCDouble(&value))
            return false;
    }
    return bFound;
}

} // namespace

int CountNoNumbers(const std::wstring& text) {
    int count = 0;
    TextStream_cls stream(text);
    wxString line;
    while (NextProjectLine(stream, &line))
        if (line.Find('=') != wxNOT_FOUND && line.find_first_of("nN") != wxString::npos && HasNoNumber(line))
            ++count;
    return count;
}

std::vector<wxString> ListProjectData(const std::wstring& text) {
    std::vector<wxString> paths;
    TextStream_cls stream(text);
    wxString line;
    while (NextProjectLine(stream, &line))
        if (BeginsData(line) && NextProjectLine(stream, &line) && !line.empty()) paths.push_back(line);
    return paths;
}

bool IsProjectText(const std::wstring& text) {
    TextStream_cls stream(text);
    wxString line;
    while (NextProjectLine(stream, &line))
        if (BeginsData(line)) return true;
    return false;
}

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
