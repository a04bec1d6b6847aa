#include "PDATA/clsFileSequence.h"

#include <algorithm>
#include <climits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <wx/intl.h>

#include "COMMON/Eye.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsSplitPath.h"

namespace {

constexpr size_t kMaxStemLength = 1000; // of a path without its extension

bool IsDigit(wxUniChar c) { return c >= '0' && c <= '9'; }

int AddClamped(int a, int b) {
    const long long sum = static_cast<long long>(a) + b;
    return static_cast<int>(std::clamp<long long>(sum, INT_MIN, INT_MAX));
}

// The number that printf makes of one integer tag "%[-+ 0][width]d".
wxString PrintTag(const wxString& tag, int number) {
    bool bLeft = false, bZero = false, bPlus = false, bBlank = false;
    size_t i = 1;
    for (; i < tag.length(); ++i) {
        if (tag[i] == '-')
            bLeft = true;
        else if (tag[i] == '0')
            bZero = true;
        else if (tag[i] == '+')
            bPlus = true;
        else if (tag[i] == ' ')
            bBlank = true;
        else
            break;
    }
    size_t width = 0;
    for (; i < tag.length() && IsDigit(tag[i]); ++i)
        width = std::min<size_t>(10 * width + (tag[i].GetValue() - '0'), 2 * kMaxStemLength);
    const long long value = number;
    const wxString digits = wxString::Format("%lld", value < 0 ? -value : value);
    const wxString sign = value < 0 ? "-" : bPlus ? "+" : bBlank ? " " : "";
    const size_t length = sign.length() + digits.length();
    const size_t pad = width > length ? width - length : 0;
    if (bLeft) return sign + digits + wxString(' ', pad);
    return bZero ? sign + wxString('0', pad) + digits : wxString(' ', pad) + sign + digits;
}

// Length of an integer tag that stands at a "%", 0 when there is none.
size_t GetTagLength(const wxString& format, size_t pos) {
    size_t i = pos + 1;
    while (i < format.length() &&
           (format[i] == '-' || format[i] == '+' || format[i] == ' ' || IsDigit(format[i])))
        ++i;
    const bool bTag = i < format.length() && (format[i] == 'd' || format[i] == 'i') && i - pos < 8;
    return bTag ? i + 1 - pos : 0;
}

} // namespace

void FileSequence_cls::Set(const wxString& path) {
    mStrPath = path;
    if (path.empty()) return;
    const int pos = SequenceFormatPos();
    if (pos >= 0)
        SplitFormat(pos);
    else
        InitFormat();
}

int FileSequence_cls::SequenceFormatPos() {
    for (int width = 1; width <= 5; ++width) {
        const size_t pos = mStrPath.find(wxString::Format("%s0%dd", "%", width));
        if (pos == wxString::npos) continue;
        mDigits = width;
        mStartOffset = 0;
        return static_cast<int>(pos);
    }
    return -1;
}

void FileSequence_cls::SplitFormat(int pos) {
    const size_t start = static_cast<size_t>(pos);
    mStrPrefix = mStrPath.substr(0, start + 1);
    mStrFormat = mStrPath;
    mStrSuffix = SplitPath_cls(mStrPath).GetPathStr(8);
    SetTag(start, 4, true);
}

void FileSequence_cls::InitFormat() {
    const int pos = SequenceFormatPos();
    if (pos >= 0) {
        SplitFormat(pos);
        return;
    }
    const SplitPath_cls split(mStrPath);
    const wxString& stem = split.mStrNoExt;
    if (stem.length() > kMaxStemLength) return;
    size_t first = stem.length();
    while (first > 0 && IsDigit(stem[first - 1]))
        --first;
    const wxString digits = stem.substr(first);
    long long number = 0;
    mStrSuffix = split.mStrExt;
    if (digits.ToLongLong(&number) && number <= INT_MAX) {
        mStrPrefix = stem.substr(0, first);
        mStartOffset = static_cast<int>(number);
        mDigits = static_cast<int>(digits.length());
        const wxString tag = wxString::Format("%s0%dd", "%", mDigits);
        mStrFormat = mStrPrefix + tag + mStrSuffix;
        SetTag(first, tag.length(), false);
        return;
    }
    mStartOffset = 0;
    mDigits = -1;
    mStrPrefix = stem;
    mStrFormat = mStrPath;
    FindOddTag();
}

void FileSequence_cls::SetTag(size_t pos, size_t length, bool bTyped) {
    mTagPos = pos;
    mTagLength = length;
    mbTyped = bTyped;
}

// A tag that makes no sequence, such as "%06d", still prints its number.
void FileSequence_cls::FindOddTag() {
    SetTag(wxString::npos, 0, false);
    for (size_t pos = mStrFormat.find('%'); pos != wxString::npos; pos = mStrFormat.find('%', pos + 1)) {
        const size_t length = GetTagLength(mStrFormat, pos);
        if (length == 0) continue;
        SetTag(pos, length, true);
        return;
    }
}

wxString FileSequence_cls::GetModifiedStr(int index, int eye) const {
    const wxString mark = eye == EYE_LEFT ? "L" : eye == EYE_RIGHT ? "R" : "";
    if (mTagPos == wxString::npos) {
        if (mark.empty()) return mStrFormat;
        const SplitPath_cls split(mStrPath);
        return split.mStrNoExt + mark + split.mStrExt;
    }
    wxString head = mStrFormat.substr(0, mTagPos);
    wxString tail = mStrFormat.substr(mTagPos + mTagLength);
    if (mbTyped) {
        head.Replace("%%", "%");
        tail.Replace("%%", "%");
    }
    const wxString tag = mStrFormat.substr(mTagPos, mTagLength);
    return head + mark + PrintTag(tag, AddClamped(index, mStartOffset)) + tail;
}

bool FileSequence_cls::DoesTheIndexOpen(int index) const {
    // Past the largest number there is no file; the clamped name would be that of the last one.
    if (static_cast<long long>(index) + mStartOffset > INT_MAX) return false;
    const std::string name = NarrowPath(GetModifiedStr(index, 0));
    const int file = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return false;
    struct stat status;
    const bool bFile = fstat(file, &status) == 0 && !S_ISDIR(status.st_mode);
    close(file);
    return bFile;
}

void FileSequence_cls::CalcMaxOffset() {
    if (mDigits < 0) {
        mMaxOffset = 1;
        return;
    }
    mMaxOffset = 0;
    if (!DoesTheIndexOpen(0)) {
        MsgBoxf(_("Can not open file"), L"FileSequence_cls::CalcMaxOffset\n%ls\nFile open fails",
                static_cast<const wchar_t*>(GetModifiedStr(0, 0).wc_str()));
        return;
    }
    mMaxOffset = CountBySteps([this](int index) { return DoesTheIndexOpen(index); });
}

int FileSequence_cls::CountBySteps(const std::function<bool(int)>& opens) {
    int last = 0;
    for (int step = 100; step >= 1; step /= 10)
        while (last < INT_MAX - step && opens(last + step))
            last += step;
    return last + 1;
}

wxString FileSequence_cls::GetInfoStr() const {
    if (mDigits < 0) return mStrFormat;
    return mStrFormat + wxString::Format(" (%d-%d)", mStartOffset, AddClamped(mMaxOffset, mStartOffset));
}

// Beside a typed tag "%%" means "%".
wxString FileSequence_cls::ProtectPercents(const wxString& text) {
    wxString result = text;
    if (text.Contains("%%")) result.Replace("%", "%%");
    return result;
}

void FileSequence_cls::AdoptFormat() {
    if (mTagPos == wxString::npos || mbTyped) return;
    const wxString head = ProtectPercents(mStrFormat.substr(0, mTagPos));
    const wxString tag = mStrFormat.substr(mTagPos, mTagLength);
    Set(head + tag + ProtectPercents(mStrFormat.substr(mTagPos + mTagLength)));
}

void FileSequence_cls::AppendDefaultSequenceTag() {
    mStrPath = ProtectPercents(mStrPrefix) + "%04d" + ProtectPercents(mStrSuffix);
    const int pos = SequenceFormatPos();
    if (pos >= 0) SplitFormat(pos);
}
