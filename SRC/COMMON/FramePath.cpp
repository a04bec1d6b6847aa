#include "COMMON/FramePath.h"

#include <wx/filename.h>

namespace {

constexpr size_t kLongestPath = 4096; // no system opens a longer one
constexpr size_t kWidestDigits = 2;

bool IsDigit(wxUniChar c) { return c >= '0' && c <= '9'; }

bool IsWhole(const wxString& path) { return wxFileName(path).IsAbsolute(); }

/// How a whole path goes on from the folder that it leads through; empty when it doesn't.
wxString GoOnFrom(const wxString& folder, const wxString& path) {
    const wxString root = MakeAbsolutePath(folder + "/x").RemoveLast();
    const wxString whole = MakeAbsolutePath(path);
    wxString rest;
    if (!whole.StartsWith(root, &rest)) return wxString();
    // A folder whose name looks like a place for a number isn't one.
    return FramePath_cls(rest).HasNumber() == FramePath_cls(whole).HasNumber() &&
                   FramePath_cls(whole).GetText(0).StartsWith(root)
               ? rest
               : wxString();
}

} // namespace

wxString FindEndOfPath(const wxString& path, const std::function<bool(const wxString& end)>& isThere) {
    if (path.length() > kLongestPath) return wxString();
    wxString end = path;
    // Written on another machine: "D:\run\snap0000.bin".
    end.Replace("\\", "/");
    while (!end.empty()) {
        if (end[0] != '/' && isThere(end)) return end;
        const size_t slash = end.find('/');
        end = slash == wxString::npos ? wxString() : end.substr(slash + 1);
    }
    return wxString();
}

wxString MakeAbsolutePath(const wxString& path) {
    wxFileName name(path);
    name.MakeAbsolute();
    return name.GetFullPath();
}

FramePath_cls::FramePath_cls(const wxString& pattern, const wxString& folder)
    : mStrPattern(pattern), mStrFolder(folder) {
    FindTag();
}

void FramePath_cls::FindTag() {
    for (size_t pos = mStrPattern.find('%'); pos != wxString::npos; pos = mStrPattern.find('%', pos + 1)) {
        size_t at = pos + 1;
        const auto is = [&](char c) { return at < mStrPattern.length() && mStrPattern[at] == c; };
        const bool bZeros = is('0');
        if (bZeros) ++at;
        int width = 0;
        const size_t digits = at;
        for (; at < mStrPattern.length() && at - digits < kWidestDigits && IsDigit(mStrPattern[at]); ++at)
            width = 10 * width + int(mStrPattern[at].GetValue() - '0');
        if (!is('d') && !is('i') && !is('u')) continue;
        mTagPos = pos;
        mTagLength = at + 1 - pos;
        mWidth = width;
        mbZeros = bZeros;
        mbUnsigned = is('u');
        return;
    }
}

wxString FramePath_cls::GetText(int frame) const {
    if (!HasNumber()) return mStrPattern;
    const bool bMinus = frame < 0 && !mbUnsigned;
    wxString digits = wxString::Format("%u", bMinus ? 0u - unsigned(frame) : unsigned(frame));
    const size_t width = size_t(mWidth);
    const size_t length = digits.length() + (bMinus ? 1 : 0);
    const size_t fill = length < width ? width - length : 0;
    const wxString minus = bMinus ? wxString("-") : wxString();
    const wxString number =
        mbZeros ? minus + wxString('0', fill) + digits : wxString(' ', fill) + minus + digits;
    return mStrPattern.substr(0, mTagPos) + number + mStrPattern.substr(mTagPos + mTagLength);
}

// Taken from the pattern, so that the folder's own name never counts as one.
wxString FramePath_cls::FindEnd(const wxString& folder, int frame) const {
    if (folder.empty()) return wxString();
    return FindEndOfPath(mStrPattern, [&](const wxString& end) {
        return wxFileName::FileExists(folder + "/" + FramePath_cls(end).GetText(frame));
    });
}

// What a project calls by a way from its folder stands there, whatever folder the program was started in.
wxString FramePath_cls::GetFile(int frame) const {
    const wxString text = GetText(frame);
    const wxString inFolder = mStrFolder + "/" + text;
    if (!mStrFolder.empty() && !IsWhole(text) && wxFileName::FileExists(inFolder)) return inFolder;
    if (wxFileName::FileExists(text)) return text;
    const wxString end = FindEnd(mStrFolder, frame);
    return end.empty() ? text : mStrFolder + "/" + FramePath_cls(end).GetText(frame);
}

wxString FramePath_cls::GetForProject(const wxString& folder, int frame) const {
    if (folder.empty() || mStrPattern.empty()) return mStrPattern;
    const bool bWhole = IsWhole(mStrPattern);
    const wxString below = bWhole ? GoOnFrom(folder, mStrPattern) : wxString();
    if (!below.empty()) return below;
    const wxString file = GetFile(frame);
    const bool bAsGiven = file == GetText(frame);
    if (!wxFileName::FileExists(file) || (bAsGiven && bWhole)) return mStrPattern;
    const wxString there = FindEnd(folder, frame);
    const wxString whole = MakeAbsolutePath(file);
    if (!there.empty() && MakeAbsolutePath(folder + "/" + FramePath_cls(there).GetText(frame)) == whole)
        return mStrPattern;
    const wxString pattern =
        MakeAbsolutePath(bAsGiven ? mStrPattern : mStrFolder + "/" + FindEnd(mStrFolder, frame));
    // A folder whose name looks like a place for a number can't be told in a pattern.
    if (FramePath_cls(pattern).GetText(frame) != whole) return mStrPattern;
    const wxString rest = GoOnFrom(folder, pattern);
    return rest.empty() ? pattern : rest;
}
