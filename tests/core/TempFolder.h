// A folder of a test's own.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

/// Goes at the end with all that is in it.
class TempFolder_cls {
public:
    /// `stem`: how the folder's name begins.
    /// `place`: the folder that it is made in.
    explicit TempFolder_cls(const std::string& stem = "morentis_",
                            const std::filesystem::path& place = std::filesystem::temp_directory_path())
        : mPath((place / (stem + "XXXXXX")).string()) {
        if (!mkdtemp(mPath.data())) std::abort();
    }
    ~TempFolder_cls() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TempFolder_cls(const TempFolder_cls&) = delete;
    TempFolder_cls& operator=(const TempFolder_cls&) = delete;

    const std::string& GetPath() const { return mPath; }
    /// Write a file with the folders that it needs; its path.
    std::string Write(const std::string& name, const std::string& bytes) const {
        const std::filesystem::path path = mPath + "/" + name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream file(path, std::ios::binary);
        file << bytes;
        if (!file.flush()) std::abort();
        return path.string();
    }

private:
    std::string mPath;
};
