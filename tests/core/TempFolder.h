// A folder that goes with everything in it at the end of the test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

class TempFolder_cls {
public:
    TempFolder_cls() {
        mPath = testing::TempDir() + "morentis_XXXXXX";
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
