// Paths with a place for the frame's number, and where their files are looked for.
#include <climits>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "COMMON/FramePath.h"
#include "TempFolder.h"

namespace {

wxString TextOf(const char* pattern, int frame) { return FramePath_cls(pattern).GetText(frame); }

} // namespace

TEST(FramePath, PutsTheFrameInItsPlace) {
    EXPECT_EQ("hull0012.obj", TextOf("hull%04d.obj", 12));
    EXPECT_EQ("hull  12.obj", TextOf("hull%4d.obj", 12));
    EXPECT_EQ("hull12.obj", TextOf("hull%d.obj", 12));
    EXPECT_EQ("12/h012", TextOf("%i/h012", 12));
    EXPECT_EQ("h00012", TextOf("h%05u", 12));
    EXPECT_EQ("h12345", TextOf("h%02d", 12345)) << "a width cuts nothing";
    EXPECT_EQ("h-003", TextOf("h%04d", -3));
    EXPECT_EQ("h  -3", TextOf("h%4d", -3));
    EXPECT_EQ("h-2147483648", TextOf("h%d", INT_MIN));
    EXPECT_EQ("h4294967293", TextOf("h%u", -3));
}

TEST(FramePath, AllElseIsPlainText) {
    for (const char* text :
         {"", "NONE", "100%", "a%s.obj", "a%n%n.obj", "%x", "%-4d", "%ld", "%.3d", "%c%f%e", "%*d", "%1$d",
          "%2147483647d", "%100d", "% d", "%+d", "50%/mesh.obj", "%%"}) {
        EXPECT_EQ(text, TextOf(text, 7));
        EXPECT_FALSE(FramePath_cls(text).HasNumber()) << text;
    }
    EXPECT_EQ("%s7%d%n", TextOf("%s%d%d%n", 7)) << "one number, the first";
    EXPECT_EQ("%7", TextOf("%%d", 7));
    EXPECT_EQ(wxString::FromUTF8("r\u00f6hre%7.obj"),
              FramePath_cls(wxString::FromUTF8("r\u00f6hre%%d.obj")).GetText(7));
}

TEST(FramePath, LooksInTheProjectsFolder) {
    const TempFolder_cls dir;
    const std::string root = dir.GetPath();
    dir.Write("project/meshes/h0003.obj", "x");
    dir.Write("project/h0004.obj", "x");
    const wxString folder(root + "/project");
    const FramePath_cls whole("/elsewhere/meshes/h%04d.obj", folder);
    EXPECT_EQ(folder + "/meshes/h0003.obj", whole.GetFile(3));
    EXPECT_EQ(folder + "/h0004.obj", whole.GetFile(4)) << "down to the bare name";
    EXPECT_EQ("/elsewhere/meshes/h0005.obj", whole.GetFile(5)) << "nothing there";
    EXPECT_EQ(folder + "/meshes/h0003.obj", FramePath_cls("D:\\run\\meshes\\h%04d.obj", folder).GetFile(3));
    EXPECT_EQ("meshes/h0003.obj", FramePath_cls("meshes/h%04d.obj").GetFile(3)) << "without a folder";
    EXPECT_EQ("h", FramePath_cls("h", folder).GetFile(0));
}

TEST(FramePath, APlacesNameIsNoNumber) {
    const TempFolder_cls dir;
    const std::string root = dir.GetPath() + "/run%d";
    dir.Write("run%d/h3.obj", "x");
    EXPECT_EQ(root + "/h3.obj", FramePath_cls("h%d.obj", root).GetFile(3));
    EXPECT_EQ(root + "/h.obj", FramePath_cls(root + "/h.obj").GetForProject(root, 3)) << "a folder a frame";
    EXPECT_EQ(root + "/h%d.obj", FramePath_cls(root + "/h%d.obj").GetForProject(root, 3));
}

TEST(FramePath, AWayFromTheProjectsFolderLeadsThereFirst) {
    const TempFolder_cls dir;
    const auto started = std::filesystem::current_path();
    dir.Write("here/m.obj", "x");
    dir.Write("here/n.obj", "x");
    dir.Write("project/m.obj", "x");
    std::filesystem::current_path(dir.GetPath() + "/here");
    const wxString folder(dir.GetPath() + "/project");
    EXPECT_EQ(folder + "/m.obj", FramePath_cls("m.obj", folder).GetFile(0));
    EXPECT_EQ("n.obj", FramePath_cls("n.obj", folder).GetFile(0));
    EXPECT_EQ("m.obj", FramePath_cls("m.obj", folder).GetForProject(folder, 0));
    // Below the folder of the project that is written, whole where it isn't.
    EXPECT_EQ("m.obj", FramePath_cls("m.obj").GetForProject(".", 0));
    EXPECT_EQ(dir.GetPath() + "/here/m.obj", FramePath_cls("m.obj").GetForProject(folder, 0));
    std::filesystem::current_path(started);
}

TEST(FramePath, AProjectKeepsTheTextThatLeadsThere) {
    const TempFolder_cls dir;
    const std::string root = dir.GetPath();
    dir.Write("a/m/h3.obj", "x");
    dir.Write("b/m/h3.obj", "x");
    dir.Write("other/h3.obj", "x");
    const FramePath_cls relative("m/h%d.obj", root + "/a");
    EXPECT_EQ("m/h%d.obj", relative.GetForProject(root + "/a", 3));
    EXPECT_EQ(root + "/a/m/h%d.obj", relative.GetForProject(root + "/b", 3)) << "another file stands there";
    EXPECT_EQ("a/m/h%d.obj", relative.GetForProject(root, 3)) << "below that folder, too";
    EXPECT_EQ("m/h%d.obj", relative.GetForProject(root + "/b", 9)) << "nothing to go by";
    const wxString whole = root + "/other/h%d.obj";
    EXPECT_EQ(whole, FramePath_cls(whole).GetForProject(root + "/a", 3));
    EXPECT_EQ(whole, FramePath_cls(whole).GetForProject(root + "/oth", 3)) << "no folder, a beginning";
    EXPECT_EQ("h%d.obj", FramePath_cls(whole).GetForProject(root + "/other", 3));
    EXPECT_EQ("other/h%d.obj", FramePath_cls(root + "/a/../other/h%d.obj").GetForProject(root + "/", 9));
}
