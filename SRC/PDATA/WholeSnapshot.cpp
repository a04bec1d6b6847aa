#include "PDATA/WholeSnapshot.h"

#include <algorithm>
#include <array>

#include <fcntl.h>
#include <unistd.h>

#include "COMMON/clsSplitPath.h"
#include "PDATA/FileStart.h"
#include "PDATA/SnapshotHeader.h"
#include "PDATA/clsGrammerBase.h"

namespace {

struct Lines_st {
    long long mEnds = 0;
    bool mbEnded = false; ///< nothing stands behind the last end
};

Lines_st CountLines(const wxString& path) {
    Lines_st lines;
    const int file = open(NarrowPath(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return lines;
    std::array<char, 65536> buffer; // not filled first: there may be many small files
    ssize_t got = 0;
    while ((got = read(file, buffer.data(), buffer.size())) > 0) {
        lines.mEnds += std::count(buffer.begin(), buffer.begin() + got, '\n');
        lines.mbEnded = buffer[size_t(got) - 1] == '\n';
    }
    close(file);
    return lines;
}

/// Bytes behind what the head declares; negative: so many are missing.
long long GetSurplus(const GrammerBase_cls& grammar, const SnapshotHeader_st& head, long long size) {
    return size - grammar.GetHeaderByte() - head.mNumber * 1LL * grammar.GetRecordByte();
}

bool HasBytesBehind(const GrammerBase_cls& grammar, const wxString& path) {
    const FileStart_st start = ReadFileStart(path, 1);
    if (!start.mStrError.empty()) return false;
    const SnapshotHeader_st head = ReadSnapshotHeader(grammar, path);
    return head.mbOk && GetSurplus(grammar, head, start.mSize) > 0;
}

} // namespace

SnapshotState GetSnapshotState(const GrammerBase_cls& grammar, const wxString& path, const wxString& first) {
    const FileStart_st start = ReadFileStart(path, 1);
    if (!start.mStrError.empty() || start.mSize == 0) return SnapshotState::Partial;
    const SnapshotHeader_st head = ReadSnapshotHeader(grammar, path);
    if (!head.mbOk) return SnapshotState::Partial;
    if (grammar.IsText()) {
        const Lines_st lines = CountLines(path);
        const long long wanted = grammar.GetHeaderLine() + 1LL * head.mNumber;
        if (lines.mEnds >= wanted && lines.mbEnded) return SnapshotState::Whole;
        return lines.mEnds + 1 >= wanted && !lines.mbEnded ? SnapshotState::Unended : SnapshotState::Partial;
    }
    const long long surplus = GetSurplus(grammar, head, start.mSize);
    if (surplus == 0) return SnapshotState::Whole;
    // A count that is still 0 would let any bytes pass.
    const bool bWhole = surplus > 0 && head.mNumber > 0 && HasBytesBehind(grammar, first);
    return bWhole ? SnapshotState::Whole : SnapshotState::Partial;
}
