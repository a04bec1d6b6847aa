// What a killed program leaves, and files that are the same under other names.
#include "COMMON/Leftovers.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "COMMON/FileSet.h"
#include "TempFolder.h"

namespace {

namespace fs = std::filesystem;

class Leftovers : public ::testing::Test {
protected:
    std::string Make(const std::string& name, int minutes) const {
        const fs::path path = mFolder / name;
        std::ofstream(path) << "left";
        fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::minutes(minutes));
        return path.string();
    }

    TempFolder_cls mTemp;
    const fs::path mFolder = mTemp.GetPath();
};

TEST_F(Leftovers, OnlyWhatIsOursOldAndUnusedGoes) {
    const std::string left = Make("ours-left", 5);
    const std::string used = Make("ours-used", 5);
    const std::string fresh = Make("ours-fresh", 0);
    const std::string other = Make("other", 5);
    const auto ours = [](const std::string& name) { return name.rfind("ours-", 0) == 0; };
    {
        InUse_cls mark;
        mark.Hold(used);
        RemoveLeftovers(mFolder.string(), ours);
        EXPECT_FALSE(fs::exists(left));
        EXPECT_TRUE(fs::exists(used) && fs::exists(fresh) && fs::exists(other));
    }
    RemoveLeftovers(mFolder.string(), ours);
    EXPECT_FALSE(fs::exists(used)) << "its user has gone";
    RemoveLeftovers((mFolder / "nowhere").string(), ours);
}

TEST_F(Leftovers, TemporaryFilesFindAPlace) {
    const char* before = std::getenv("TMPDIR");
    const std::string kept = before ? before : "";
    setenv("TMPDIR", mFolder.c_str(), 1);
    EXPECT_EQ(FindTempFolder("x"), mFolder.string());
    setenv("TMPDIR", (mFolder / "gone").c_str(), 1);
    EXPECT_NE(FindTempFolder(mFolder.string()), (mFolder / "gone").string());
    EXPECT_FALSE(FindTempFolder(mFolder.string()).empty());
    if (before)
        setenv("TMPDIR", kept.c_str(), 1);
    else
        unsetenv("TMPDIR");
}

TEST_F(Leftovers, AFileIsTheSameUnderEveryName) {
    const std::string file = Make("data", 0);
    fs::create_directory(mFolder / "sub");
    fs::create_symlink(mFolder, mFolder / "sub/back");
    FileSet_cls set;
    EXPECT_TRUE(set.Add(wxString::FromUTF8(file)));
    EXPECT_FALSE(set.Add(wxString::FromUTF8((mFolder / "sub/../data").string())));
    EXPECT_TRUE(set.Has(wxString::FromUTF8((mFolder / "sub/back/data").string())));
    EXPECT_FALSE(set.Has(wxString::FromUTF8((mFolder / "sub/data").string())));
    EXPECT_TRUE(set.Add(wxString::FromUTF8((mFolder / "none/yet").string())));
    EXPECT_TRUE(set.Has(wxString::FromUTF8((mFolder / "none/./yet").string())));
}

} // namespace
