#include "APP/FilmTargets.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>

#include <wx/filename.h>

#include "APP/FilmArgs.h"
#include "COMMON/FileSet.h"
#include "COMMON/Leftovers.h"
#include "COMMON/clsSplitPath.h"

namespace {

constexpr double kMegabyte = 1048576.0;

wxString Quote(const wxString& text) { return "\"" + text + "\""; }

wxString FolderOf(const wxString& path) {
    wxFileName name(path);
    name.MakeAbsolute();
    return name.GetPath();
}

wxString TryToWrite(const wxString& folder) {
    std::string name = NarrowPath(folder) + "/.morentis-try-XXXXXX";
    const int file = mkstemp(name.data());
    if (file < 0)
        return "no file can be made in the folder " + Quote(folder) + ": " +
               wxString::FromUTF8(std::strerror(errno));
    close(file);
    unlink(name.c_str());
    return wxString();
}

} // namespace

wxString GetFilmName(const FileSequence_cls& names, int number, int eye) {
    if (number >= 0) return names.GetModifiedStr(number, eye);
    const long long missing = -static_cast<long long>(number);
    long long power = 1;
    int digits = 0;
    for (; digits < names.mDigits || power <= missing; ++digits)
        power *= 10;
    const wxString tag = wxString::Format("%%0%dd", names.mDigits);
    wxString path = names.mStrPath;
    const wxString letter = eye == EYE_NONE ? "" : eye == EYE_LEFT ? "L" : "R";
    path.Replace(tag, letter + wxString::Format("-%0*lld", digits, power - missing), false);
    path.Replace("%%", "%");
    return path;
}

wxString CheckFilmTargets(const std::vector<wxString>& inputs, const std::vector<FilmTarget_st>& targets) {
    FileSet_cls read;
    FileSet_cls written;
    for (const wxString& input : inputs)
        read.Add(input);
    for (const FilmTarget_st& target : targets) {
        if (read.Has(target.mPath))
            return wxString(target.mpOption) + ": " + Quote(target.mPath) +
                   " is read by the film and would be replaced; give another name or folder";
        if (!written.Add(target.mPath))
            return wxString(target.mpOption) + ": " + Quote(target.mPath) +
                   " is written twice by the film; give different names";
    }
    return wxString();
}

wxString MakeFilmFolders(const std::vector<FilmTarget_st>& targets) {
    std::set<wxString> tried;
    for (const FilmTarget_st& target : targets) {
        const wxString folder = FolderOf(target.mPath);
        if (!tried.insert(folder).second) continue;
        wxString error = MakeFilmFolder(target.mPath);
        if (error.empty()) error = TryToWrite(folder);
        if (!error.empty()) return wxString(target.mpOption) + ": " + error;
    }
    return wxString();
}

wxString CheckFilmSpace(const wxString& path, double bytes) {
    struct statvfs facts {};
    const wxString folder = FolderOf(path);
    if (statvfs(NarrowPath(folder).c_str(), &facts) != 0) return wxString();
    const double room = double(facts.f_bavail) * double(facts.f_frsize);
    if (room >= bytes) return wxString();
    return wxString::Format("the folder %s has room for %.0f MB, and the film takes %.0f MB at least",
                            Quote(folder), room / kMegabyte, std::max(bytes / kMegabyte, 1.0));
}

double EstimateFilmBytes(const wxString& ending, int w, int h, size_t pictures, bool bTransparent) {
    const double plain = double(w) * double(h) * (bTransparent ? 4.0 : 3.0) * double(pictures);
    return ending.IsSameAs("bmp", false) ? plain : plain / 200.0;
}

void RemoveFilmLeftovers(const std::vector<FilmTarget_st>& targets) {
    std::map<std::string, std::set<std::string>> names; // of files, by their folders
    for (const FilmTarget_st& target : targets)
        names[NarrowPath(FolderOf(target.mPath))].insert(NarrowPath(wxFileName(target.mPath).GetFullName()));
    for (const auto& [folder, files] : names)
        RemoveLeftovers(folder, [&files = files](const std::string& name) {
            const size_t saving = name.rfind(".saving");
            if (name.size() > 8 && name[0] == '.' && saving == name.size() - 7)
                return files.count(name.substr(1, saving - 1)) > 0;
            return name.rfind(".morentis-try-", 0) == 0 || files.count(NameOfPart(name)) > 0;
        });
}
