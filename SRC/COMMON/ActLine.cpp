#include "COMMON/ActLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include <wx/intl.h>

namespace {

bool IsControl(wchar_t c) { return c < L' ' || c == 0x7f; }

bool IsPlain(const wxString& word) {
    if (word.empty()) return false;
    return std::all_of(word.begin(), word.end(), [](const wxUniChar& c) {
        return c.IsAscii() && (wxIsalnum(c) || wxString("_-+./:").Contains(wxString(c)));
    });
}

wxString Quote(const wxString& word) {
    if (IsPlain(word)) return word;
    wxString quoted = "\"";
    for (const wxUniChar c : word) {
        if (c == '"' || c == '\\') quoted += '\\';
        if (c == '\n')
            quoted += "\\n";
        else if (!IsControl(wchar_t(c)) || c == '\t')
            quoted += c;
    }
    return quoted + "\"";
}

wxString TellNoText() { return _("the line holds bytes that are no text"); }

/// The word in quotes behind `at`, which goes to the place behind it. Answers what is wrong with it.
wxString ReadQuoted(const std::wstring& text, size_t& at, wxString* pWord) {
    std::wstring word;
    for (++at; at < text.size(); ++at) {
        if (text[at] == L'"') {
            ++at;
            *pWord = word;
            return wxString();
        }
        if (text[at] == L'\\' && at + 1 < text.size()) {
            ++at;
            if (text[at] == L'n') {
                word += L'\n';
                continue;
            }
        }
        if (IsControl(text[at]) && text[at] != L'\t') return TellNoText();
        word += text[at];
    }
    return _("a quote has no end");
}

} // namespace

wxString WriteActLine(const ActLine_st& line) {
    wxString text;
    for (const wxString& word : line.mWords)
        text += (text.empty() ? "" : " ") + Quote(word);
    if (line.mRemark.empty()) return text;
    text += text.empty() ? "# " : "  # ";
    for (const wxUniChar c : line.mRemark)
        text += IsControl(wchar_t(c)) ? wxUniChar(' ') : c;
    return text;
}

wxString ReadActLine(const wxString& line, ActLine_st* pLine) {
    pLine->mWords.clear();
    pLine->mRemark.clear();
    const std::wstring text = line.ToStdWstring();
    if (text.size() > kLongestActLine) return _("the line is too long");
    for (size_t at = 0; at < text.size();) {
        const wchar_t c = text[at];
        if (c == L' ' || c == L'\t' || c == L'\r') {
            ++at;
        } else if (c == L'#') {
            pLine->mRemark = wxString(text.substr(at + 1)).Trim(false).Trim();
            return wxString();
        } else if (IsControl(c)) {
            return TellNoText();
        } else if (c == L'"') {
            wxString word;
            if (const wxString mistake = ReadQuoted(text, at, &word); !mistake.empty()) return mistake;
            pLine->mWords.push_back(word);
        } else {
            const size_t begin = at;
            while (at < text.size() && text[at] != L'"' && text[at] != L'#' && text[at] != L' ' &&
                   !IsControl(text[at]))
                ++at;
            pLine->mWords.push_back(text.substr(begin, at - begin));
        }
    }
    return wxString();
}

wxString WriteActNumber(double number) {
    char text[64];
    return wxString(text, size_t(std::to_chars(text, text + sizeof text, number).ptr - text));
}

bool ReadActNumber(const wxString& text, double* pNumber) {
    const std::string bytes = text.utf8_string();
    const char* end = bytes.data() + bytes.size();
    double number = 0.0;
    const auto [at, error] = std::from_chars(bytes.data(), end, number);
    if (error != std::errc() || at != end || !std::isfinite(number)) return false;
    *pNumber = number;
    return true;
}

bool ReadActCount(const wxString& text, long least, long most, long* pCount) {
    const std::string bytes = text.utf8_string();
    const char* end = bytes.data() + bytes.size();
    long count = 0;
    const auto [at, error] = std::from_chars(bytes.data(), end, count);
    if (error != std::errc() || at != end || count < least || count > most) return false;
    *pCount = count;
    return true;
}

ActFile_st ReadActFile(const std::string& bytes) {
    ActFile_st file;
    int number = 0;
    for (size_t at = 0; at < bytes.size();) {
        const size_t end = std::min(bytes.find('\n', at), bytes.size());
        const std::string raw = bytes.substr(at, std::min(end - at, 4 * kLongestActLine + 4));
        at = end + 1;
        wxString text = wxString::FromUTF8(raw);
        if (text.empty() && !raw.empty()) text = wxString::From8BitData(raw.data(), raw.size());
        if (++number == 1) {
            if (text.Trim() == kRecordStart) continue;
            file.mStrReason = wxString::Format(_("its first line isn't \"%s\""), kRecordStart);
            return file;
        }
        ActLine_st line;
        line.mNumber = number;
        const wxString mistake = ReadActLine(text, &line);
        if (!mistake.empty())
            file.mVMistakes.push_back(wxString::Format("%d: ", number) + mistake);
        else if (!line.mWords.empty())
            file.mLines.push_back(std::move(line));
    }
    if (number == 0) file.mStrReason = _("it is empty");
    return file;
}
