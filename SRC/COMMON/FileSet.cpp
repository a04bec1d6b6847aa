#include "COMMON/FileSet.h"

#include <filesystem>
#include <system_error>

#include "COMMON/clsSplitPath.h"

std::string FileSet_cls::Resolve(const wxString& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path whole = fs::absolute(NarrowPath(path), error);
    const fs::path resolved = fs::weakly_canonical(whole, error);
    return error ? whole.lexically_normal().string() : resolved.string();
}
