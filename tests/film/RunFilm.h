// Runs the film maker as a child, as a shell without a display would.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

/// What became of a child.
struct ChildRun_st {
    int mStatus = -1; ///< exit status; 128 + the signal for one that ended by a signal, as shells have it
    std::string mOut;
    std::string mErr;
};

/// A folder of its own, gone with the object, and a small project in it.
class FilmFolder_cls {
public:
    FilmFolder_cls();
    ~FilmFolder_cls();
    FilmFolder_cls(const FilmFolder_cls&) = delete;
    FilmFolder_cls& operator=(const FilmFolder_cls&) = delete;
    std::string operator/(const std::string& name) const { return (mPath / name).string(); }

    /// A project of five frames, drawn small, with these lines behind the others (the last of a key counts).
    /// `data` is a path of its first snapshot.
    std::string MakeProject(const std::string& name, const std::string& lines,
                            const std::string& data = "") const;
    /// Copy the five snapshots into a folder of this one; the path of the first.
    std::string CopyData(const std::string& folder) const;
    /// Names in a folder of this one, and the bytes of its files.
    std::map<std::string, std::string> ReadAll(const std::string& folder) const;

    std::filesystem::path mPath;
};

using Environment = std::map<std::string, std::string>; ///< an empty value takes the variable away

/// What the system gives it; 0: as much as there is.
struct Limits_st {
    int mMegabytes = 0;                   ///< of addresses
    int mFileBytes = 0;                   ///< of each file, as in a full folder
    std::string mProgram = MORENTIS_FILM; ///< another copy of it
};

/// Run it to its end, without DISPLAY unless `environment` has one; but films with nothing special about them
/// (no environment, nothing done meanwhile, no limit) share one. While it runs, `meanwhile` is called a few
/// hundred times a second with its process number.
ChildRun_st RunFilm(const std::vector<std::string>& words, const Environment& environment = {},
                    const std::function<void(pid_t)>& meanwhile = {}, const Limits_st& limits = {});
