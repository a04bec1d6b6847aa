// The fence around the floors without a toolkit: this very binary holds all of them and loads no window
// system.
#include <link.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// File names of all libraries that this process has loaded, without their folders.
std::vector<std::string> LoadedLibraries() {
    std::vector<std::string> names;
    dl_iterate_phdr(
        [](dl_phdr_info* pInfo, size_t, void* pNames) {
            const std::string path = pInfo->dlpi_name;
            static_cast<std::vector<std::string>*>(pNames)->push_back(path.substr(path.rfind('/') + 1));
            return 0;
        },
        &names);
    return names;
}

bool Begins(const std::string& name, const std::string& with) {
    return name.compare(0, with.size(), with) == 0;
}

} // namespace

TEST(Fence, NoLibraryOfWindowsOrOpenGLIsLoaded) {
    bool bBase = false;
    for (const std::string& name : LoadedLibraries()) {
        bBase = bBase || Begins(name, "libwx_baseu-");
        for (const char* with : {"libwx_gtk", "libgtk", "libgdk", "libGL", "libOpenGL", "libEGL", "libepoxy",
                                 "libglut", "libX11", "libxcb", "libwayland"})
            EXPECT_FALSE(Begins(name, with)) << name;
    }
    EXPECT_TRUE(bBase) << "the list of libraries can't be read";
}
