#include "COMMON/Leftovers.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr time_t kMomentSeconds = 1; // between making and marking

bool IsWritableFolder(const std::string& path) {
    std::error_code error;
    return !path.empty() && fs::is_directory(path, error) && access(path.c_str(), W_OK | X_OK) == 0;
}

/// Ours, and nobody marks it. A mark of our own is given back with the file.
bool IsLeft(int file) {
    struct stat facts {};
    if (fstat(file, &facts) != 0 || facts.st_uid != geteuid()) return false;
    if (!S_ISREG(facts.st_mode) && !S_ISDIR(facts.st_mode)) return false;
    return time(nullptr) - facts.st_mtime > kMomentSeconds && flock(file, LOCK_EX | LOCK_NB) == 0;
}

} // namespace

std::string FindTempFolder(const std::string& fallback) {
    const char* wanted = std::getenv("TMPDIR");
    for (const std::string& folder :
         {std::string(wanted ? wanted : ""), std::string("/tmp"), std::string("/var/tmp"),
          fallback.empty() ? std::string(".") : fallback})
        if (IsWritableFolder(folder)) return folder;
    return std::string();
}

void InUse_cls::Hold(const std::string& path) {
    Release();
    mFile = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (mFile >= 0 && flock(mFile, LOCK_EX | LOCK_NB) != 0) Release();
}

void InUse_cls::Release() {
    if (mFile >= 0) close(mFile);
    mFile = -1;
}

void RemoveLeftovers(const std::string& folder, const std::function<bool(const std::string& name)>& isOurs) {
    std::error_code error;
    std::vector<fs::path> left;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        if (isOurs(at->path().filename().string())) left.push_back(at->path());
    for (const fs::path& path : left) {
        const int file = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (file < 0) continue;
        if (IsLeft(file)) fs::remove_all(path, error);
        close(file);
    }
}

std::string NameOfPart(const std::string& name) {
    const size_t part = name.find(".part.");
    if (part == std::string::npos || part == 0) return std::string();
    const size_t dot = name.rfind('.', part - 1);
    if (dot == std::string::npos) return std::string();
    const std::string number = name.substr(dot + 1, part - dot - 1);
    const bool bNumber = !number.empty() && number.find_first_not_of("0123456789") == std::string::npos;
    return bNumber ? name.substr(0, dot) + name.substr(part + 5) : std::string();
}
