#include "APP/ForeignFile.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include <wx/dir.h>
#include <wx/ffile.h>
#include <wx/filename.h>
#include <wx/mstream.h>
#include <wx/zstream.h>

#include <wx/log.h>

namespace {

constexpr size_t kBegin = 4096; // bytes that are looked at
constexpr const char* kTables[] = {"xyz", "extxyz", "csv"};

std::string ReadBegin(const wxString& path) {
    if (!wxFileName::FileExists(path)) return std::string(); // a pipe would hold us
    std::string bytes(kBegin, '\0');
    wxLogNull quiet;
    wxFFile file(path, "rb");
    if (!file.IsOpened()) return std::string();
    bytes.resize(file.Read(bytes.data(), bytes.size()));
    if (bytes.compare(0, 2, "\x1f\x8b") != 0) return bytes;
    wxMemoryInputStream packed(bytes.data(), bytes.size());
    wxZlibInputStream stream(packed, wxZLIB_GZIP);
    std::string text(kBegin, '\0');
    text.resize(stream.Read(text.data(), text.size()).LastRead());
    return text;
}

bool BeginsWith(const std::string& bytes, const std::string& begin) {
    return bytes.compare(0, begin.size(), begin) == 0;
}

/// Where the digits of the last number of a name stand; none: the second is 0.
std::pair<size_t, size_t> FindNumber(const wxString& name) {
    size_t end = name.size();
    while (end > 0 && !wxIsdigit(name[end - 1]))
        --end;
    size_t begin = end;
    while (begin > 0 && wxIsdigit(name[begin - 1]))
        --begin;
    return {begin, end - begin};
}

wxString Stem(const wxString& path) {
    wxFileName name(path);
    if (name.GetExt().Lower() == "gz") name = wxFileName(name.GetPath(), name.GetName());
    return name.GetName();
}

} // namespace

ForeignKind GetForeignKind(const wxString& path) {
    const std::string bytes = ReadBegin(path);
    if (bytes.empty()) return ForeignKind::None;
    const std::string text = bytes.substr(std::min(bytes.find_first_not_of(" \t\r\n"), bytes.size()));
    if (BeginsWith(bytes, "\x89HDF\r\n\x1a\n") || BeginsWith(text, "# vtk DataFile") ||
        bytes.find("<VTKFile") != std::string::npos)
        return ForeignKind::Sure;
    const wxFileName name(path);
    // The present layout may be of such text, where it isn't packed.
    const ForeignKind kind = name.GetExt().Lower() == "gz" ? ForeignKind::Sure : ForeignKind::Likely;
    if (BeginsWith(text, "ITEM:")) return kind;
    wxString ending = name.GetExt().Lower();
    if (ending == "gz") ending = wxFileName(name.GetName()).GetExt().Lower();
    return std::any_of(std::begin(kTables), std::end(kTables), [&](const char* one) { return ending == one; })
               ? kind
               : ForeignKind::None;
}

// "snap.2.h5" is before "snap.10.h5". A digit of the ending (".h5") is no number.
std::vector<wxString> ListNumberedAlike(const wxString& path) {
    const wxFileName name(path);
    const wxString stem = Stem(path);
    const wxString ending = name.GetFullName().substr(stem.size());
    const auto [begin, length] = FindNumber(stem);
    if (length == 0) return {path};
    const wxString before = stem.substr(0, begin);
    const wxString behind = stem.substr(begin + length) + ending;
    std::vector<std::pair<double, wxString>> found;
    wxDir folder(name.GetPath());
    wxString file;
    for (bool bMore = folder.IsOpened() && folder.GetFirst(&file, wxEmptyString, wxDIR_FILES | wxDIR_HIDDEN);
         bMore; bMore = folder.GetNext(&file)) {
        wxString rest;
        if (!file.StartsWith(before, &rest) || !rest.EndsWith(behind, &rest) || rest.empty()) continue;
        double number = 0;
        if (FindNumber(rest) == std::make_pair(size_t(0), rest.size()) && rest.ToCDouble(&number))
            found.emplace_back(number, wxFileName(name.GetPath(), file).GetFullPath());
    }
    std::sort(found.begin(), found.end());
    std::vector<wxString> files;
    for (const auto& one : found)
        files.push_back(one.second);
    return files.empty() ? std::vector<wxString>{path} : files;
}

wxString ProposeImportFolder(const wxString& path) {
    const wxString base = wxFileName(wxFileName(path).GetPath(), Stem(path) + "_import").GetFullPath();
    wxString folder = base;
    for (int i = 2; wxFileName::Exists(folder); ++i)
        folder = base + wxString::Format("%d", i);
    return folder;
}
