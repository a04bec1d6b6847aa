#include "PDATA/SnapshotHeader.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <locale.h>

#include <wx/intl.h>

#include "PDATA/FileStart.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr size_t kLineLength = 254; // of a text head's line at most
constexpr size_t kHeadMax = GrammerBase_cls::kMaxItem * kLineLength;

wxString EndsEarly(const FileStart_st& start) {
    if (start.mSize == 0) return _("The file is empty.");
    return wxString::Format(_("The file ends within its header (it has %lld bytes). "
                              "Check the header format in the data loader."),
                            start.mSize);
}

// What a head tells, before anybody has believed it.
struct Head_st {
    double mTime = 0.0;
    long long mNumber = 0;
    wxString mStrError;
};

Head_st ScanBinary(const std::vector<int>& codes, const FileStart_st& start) {
    Head_st head;
    size_t pos = 0;
    for (const int code : codes) {
        const size_t size = static_cast<size_t>(GrammerBase_cls::GetHeadItemByte(code));
        if (start.mBytes.size() - pos < size) {
            head.mStrError = EndsEarly(start);
            return head;
        }
        if (code == HEAD_TIME) {
            float time;
            std::memcpy(&time, &start.mBytes[pos], sizeof time);
            head.mTime = static_cast<double>(time);
        } else if (code == HEAD_NUMBER) {
            int number;
            std::memcpy(&number, &start.mBytes[pos], sizeof number);
            head.mNumber = number;
        }
        pos += size;
    }
    return head;
}

Head_st ScanText(const std::vector<int>& codes, const FileStart_st& start) {
    static const locale_t sLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    Head_st head;
    size_t pos = 0;
    for (size_t i = 0; i < codes.size(); ++i) {
        if (pos >= start.mBytes.size()) {
            head.mStrError = EndsEarly(start);
            return head;
        }
        size_t length = std::min(kLineLength, start.mBytes.size() - pos);
        const size_t end = start.mBytes.find('\n', pos);
        if (end != std::string::npos && end - pos < length) length = end - pos + 1;
        const std::string line = start.mBytes.substr(pos, length);
        pos += length;
        if (codes[i] == HEAD_TIME) head.mTime = strtod_l(line.c_str(), nullptr, sLocale);
        if (codes[i] != HEAD_NUMBER) continue;
        char* rest = nullptr;
        head.mNumber = std::strtoll(line.c_str(), &rest, 10);
        if (rest != line.c_str()) continue;
        head.mStrError = wxString::Format(_("There is no particle count in line %d of the file. "
                                            "Check the header format in the data loader."),
                                          static_cast<int>(i) + 1);
        return head;
    }
    return head;
}

wxString CheckNumber(long long number, long long bytes) {
    if (number < 0 || number > bytes)
        return wxString::Format(_("The header says %lld particles, but the file has %lld bytes. "
                                  "Check data type and header format in the data loader."),
                                number, bytes);
    if (number > INT_MAX)
        return wxString::Format(_("The header says %lld particles in %lld bytes; "
                                  "a snapshot holds 2147483647 at most."),
                                number, bytes);
    return wxString();
}

} // namespace

SnapshotHeader_st ReadSnapshotHeader(const GrammerBase_cls& grammar, const wxString& path) {
    const bool bText = grammar.IsText();
    SnapshotHeader_st header;
    header.mbHasTime = grammar.IsItemExistHead(HEAD_TIME);
    const FileStart_st start = ReadFileStart(path, kHeadMax);
    wxString error = start.mStrError;
    if (!error.empty()) std::puts(bText ? "Load Header Ascii Error" : "Read Header Fails!!");
    if (error.empty()) {
        const std::vector<int> codes = grammar.GetHeaderGrammer();
        const Head_st head = bText ? ScanText(codes, start) : ScanBinary(codes, start);
        header.mTime = head.mTime;
        error = head.mStrError;
        if (error.empty() && !grammar.IsItemExistHead(HEAD_NUMBER))
            error = _("The header format has no \"Number\", so the particle count is unknown. "
                      "Add it in the data loader.");
        if (error.empty()) error = CheckNumber(head.mNumber, start.mSize);
        if (error.empty()) header.mNumber = static_cast<int>(head.mNumber);
    }
    header.mbOk = error.empty();
    if (!header.mbOk) header.mStrError = path + "\n" + error;
    return header;
}
