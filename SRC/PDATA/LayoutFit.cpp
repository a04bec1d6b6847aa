#include "PDATA/LayoutFit.h"

#include <cstdlib>
#include <string>
#include <vector>

#include <locale.h>

#include "COMMON/TextSplit.h"
#include "PDATA/FileStart.h"
#include "PDATA/SnapshotHeader.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr size_t kTextStart = 65536; // bytes in which head and first record are looked for

bool IsNumber(const std::string& word) {
    static const locale_t sLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    char* rest = nullptr;
    strtod_l(word.c_str(), &rest, sLocale);
    return rest != word.c_str() && *rest == '\0';
}

bool IsRecord(const std::vector<int>& body, const std::vector<std::string>& words) {
    size_t column = 0;
    for (const int code : body) {
        const size_t end = column + size_t(GrammerBase_cls::GetBodyItemByte(code)) / 4;
        if (end > words.size()) return false;
        for (; column < end; ++column)
            if (!IsBodyDummy(code) && !IsNumber(words[column])) return false;
    }
    return true;
}

bool FitsText(const GrammerBase_cls& grammar, const FileStart_st& start) {
    const size_t head = size_t(grammar.GetHeaderLine());
    const bool bWhole = start.mSize == static_cast<long long>(start.mBytes.size());
    const std::vector<std::string> lines = SplitLines(start.mBytes, head + 1, bWhole);
    return lines.size() > head && IsRecord(grammar.GetBodyGrammer(), SplitWords(lines[head]));
}

} // namespace

bool FitsLayout(const GrammerBase_cls& grammar, const wxString& path) {
    const FileStart_st start = ReadFileStart(path, grammar.IsText() ? kTextStart : 1);
    if (!start.mStrError.empty()) return false;
    const SnapshotHeader_st header = ReadSnapshotHeader(grammar, path);
    if (!header.mbOk) return false;
    if (grammar.IsText()) return header.mNumber == 0 || FitsText(grammar, start);
    return start.mSize == grammar.GetHeaderByte() + header.mNumber * 1LL * grammar.GetRecordByte();
}
