// Renderers as processes, well and badly behaved, and the pictures that they make.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <wx/datetime.h>
#include <wx/image.h>

#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"
#include "IMAGE/ImageCheck.h"
#include "POVRAY/LikeDrawn.h"
#include "POVRAY/LinearPicture.h"
#include "POVRAY/PictureHead.h"
#include "POVRAY/clsPovFormat.h"
#include "POVRAY/clsPovJob.h"
#include "TempFolder.h"

namespace {

class PovJobs : public ::testing::Test {
protected:
    wxString Program(const std::string& text) {
        const std::string path = mFolder.Write("renderer", "#!/bin/sh\n" + text + "\n");
        chmod(path.c_str(), 0755);
        return path;
    }
    std::string Scene(const std::string& name) {
        const std::string scene = "camera{location <0,0,-3> look_at 0} light_source{<2,4,-3> color rgb 1}\n"
                                  "sphere{0,1 pigment{rgb 1}}\n";
        const std::string quote = name.find('"') == std::string::npos ? "\"" : "'";
        mFolder.Write(name + ".pov", scene);
        mFolder.Write(name + ".ini", "width=32\nheight=24\nDISPLAY=off\nVersion=3.7\nOutput_File_Type=N\n"
                                     "Input_File_Name=" +
                                         quote + SplitName(name) + ".pov" + quote +
                                         "\nOutput_File_Name=" + quote + SplitName(name) + quote + "\n");
        return mFolder.GetPath() + "/" + name;
    }
    static std::string SplitName(const std::string& name) { return name.substr(name.rfind('/') + 1); }
    static bool Wait(PovJob_cls& job, int millis = 20000) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(millis);
        while (job.IsRunning() && !job.Poll()) {
            if (std::chrono::steady_clock::now() > end) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }
    static std::string ReadFile(const wxString& path) {
        std::ifstream file(NarrowPath(path), std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
    bool HasOnly(const std::string& folder, const std::set<std::string>& endings) {
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            if (!endings.count(entry.path().extension().string())) return false;
        return true;
    }
    TempFolder_cls mFolder;
};

// POV-Ray waits more than it works on such pictures, so all are made at once.
TEST_F(PovJobs, NamesOfAnyKindAreRendered) {
    const std::string names[] = {
        "plain",       "a b", "-x", "\xc3\xa4\xc3\xb6",      "it's", "qu\"ote", "br[a]ck",
        "back\\slash", "e=q", "#h", "deep \xc3\xbc 'x'/-y z"};
    PovJob_cls jobs[std::size(names)];
    for (size_t i = 0; i < std::size(names); ++i)
        ASSERT_TRUE(jobs[i].Start("/usr/bin/povray", wxString::FromUTF8(Scene(names[i])), ".png"))
            << names[i];
    for (size_t i = 0; i < std::size(names); ++i) {
        ASSERT_TRUE(Wait(jobs[i]));
        EXPECT_EQ(jobs[i].GetError(), "") << names[i];
        EXPECT_EQ(ReadFile(jobs[i].GetPicture()).substr(1, 3), "PNG") << names[i];
        EXPECT_EQ(jobs[i].GetPercent(), 100);
    }
    EXPECT_TRUE(HasOnly(mFolder.GetPath(), {".pov", ".ini", ".png", ""})) << "no other names are left";
}

TEST_F(PovJobs, NamesOfOtherMachinesAreLeftAlone) {
    // As a process of this number would have them that shares the folder.
    std::vector<std::string> taken;
    for (int number = 1; number <= 200; ++number)
        taken.push_back(mFolder.GetPath() + "/morentis-render-" + std::to_string(getpid()) + "-" +
                        std::to_string(number) + ".ini");
    for (const std::string& name : taken)
        std::filesystem::create_symlink("elsewhere.ini", name);
    PovJob_cls job;
    ASSERT_TRUE(job.Start("/usr/bin/povray", wxString::FromUTF8(Scene("a b")), ".png"));
    ASSERT_TRUE(Wait(job));
    EXPECT_EQ(job.GetError(), "");
    EXPECT_EQ(ReadFile(job.GetPicture()).substr(1, 3), "PNG");
    for (const std::string& name : taken)
        EXPECT_TRUE(std::filesystem::is_symlink(name)) << name;
}

// Which rows POV-Ray 3.7 takes, and that GetRefusal knows those that it doesn't.
TEST_F(PovJobs, FormatsAreRenderedOrRefused) {
    PovFormat_cls formats[9];
    PovJob_cls jobs[9];
    for (unsigned row = 0; row < 9; ++row) {
        const std::string name = "row" + std::to_string(row);
        const wxString base = Scene(name);
        PovFormat_cls& format = formats[row];
        format.mOutputFormat.mValue = row;
        format.mWidth.mValue = 16;
        format.mHeight.mValue = 12;
        format.mDisplay.mValue = false;
        format.mOutputAlpha.mValue = row == 6;
        mFolder.Write(name + ".ini", format.GetStrPovFormat(base + ".ini", false).utf8_string());
        ASSERT_TRUE(jobs[row].Start("/usr/bin/povray", base, format.GetPictureEnding()));
    }
    for (unsigned row = 0; row < 9; ++row) {
        ASSERT_TRUE(Wait(jobs[row]));
        EXPECT_EQ(jobs[row].GetError().empty(), formats[row].GetRefusal().empty())
            << row << ": " << jobs[row].GetError();
    }
    EXPECT_EQ(ReadFile(jobs[8].GetPicture()).substr(24, 1), "\x10") << "bits of a channel";
    // Numbers are the colours of PNG; a damaged file is no picture.
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) wxImage::AddHandler(new wxPNGHandler);
    const wxImage plain(jobs[0].GetPicture());
    ASSERT_TRUE(plain.IsOk());
    for (const unsigned row : {6u, 7u}) {
        const wxString path = jobs[row].GetPicture();
        const wxImage light = ReadLinearPicture(path, 16 * 12);
        ASSERT_TRUE(light.IsOk() && light.GetSize() == wxSize(16, 12)) << row;
        for (int i = 0; i < 16 * 12 * 3; ++i)
            ASSERT_NEAR(light.GetData()[i], plain.GetData()[i], 3) << row << " at " << i;
        EXPECT_FALSE(ReadLinearPicture(path, 16 * 12 - 1).IsOk()) << "too large";
        const std::string bytes = ReadFile(path);
        for (size_t length = 0; length < bytes.size(); length += 7) {
            const wxString cut = wxString::FromUTF8(mFolder.Write("cut", bytes.substr(0, length)));
            const wxImage part = ReadLinearPicture(cut, 16 * 12);
            EXPECT_TRUE(!part.IsOk() || part.GetSize() == wxSize(16, 12)) << row << " of " << length;
        }
    }
    // Pictures of two days are the same bytes, and of each it can be told whether it is whole.
    if (!wxImage::FindHandler(wxBITMAP_TYPE_JPEG)) wxImage::AddHandler(new wxJPEGHandler);
    const std::string year = wxDateTime::Now().Format("20%y-").utf8_string();
    for (const unsigned row : {0u, 1u, 4u, 5u, 6u, 7u, 8u}) {
        const wxString path = jobs[row].GetPicture();
        EXPECT_NE(ReadFile(path).substr(0, 600).find(year), std::string::npos) << row;
        EXPECT_EQ(MakeLikeDrawn(path), "");
        const std::string bytes = ReadFile(path);
        EXPECT_EQ(bytes.find(year), std::string::npos) << row;
        if (row == 4 || row == 6 || row == 7) {
            const PictureHead_st head = ReadWholePicture(bytes);
            EXPECT_TRUE(head.mW == 16 && head.mH == 12 && head.mbAlpha == (row == 6)) << row;
            for (size_t length = 0; length < bytes.size(); ++length)
                EXPECT_EQ(ReadWholePicture(bytes.substr(0, length)).mW, 0) << row << " of " << length;
        } else {
            EXPECT_TRUE(IsWholeImage(path, 16, 12, false)) << row;
        }
    }
}

TEST_F(PovJobs, FullFoldersAreToldByTheirReasonAlone) {
    const wxString base = Scene("a");
    mFolder.Write("a.ini", ReadFile(base + ".ini") + "width=160\nheight=120\n");
    PovJob_cls job;
    ASSERT_TRUE(job.Start(Program("trap '' XFSZ; ulimit -f 2; exec /usr/bin/povray \"$@\""), base, ".png"));
    ASSERT_TRUE(Wait(job));
    EXPECT_NE(job.GetError(), "");
    EXPECT_FALSE(job.GetError().Contains("Rendered ")) << job.GetError();
    // And of a picture whose date is to be taken out.
    mFolder.Write("a.ppm", "P6\n# Render Date: today\n1 1\n255\nrgb");
    GSafeFileStep = [](const char* step) { return std::string(step) != "write"; };
    EXPECT_TRUE(MakeLikeDrawn(mFolder.GetPath() + "/a.ppm").Contains("a.ppm"));
    GSafeFileStep = nullptr;
    EXPECT_EQ(MakeLikeDrawn(mFolder.GetPath() + "/a.ppm"), "");
    EXPECT_EQ(ReadFile(mFolder.GetPath() + "/a.ppm"), "P6\n1 1\n255\nrgb");
}

TEST_F(PovJobs, OldPicturesArentTakenForNewOnes) {
    PovJob_cls jobs[2];
    const wxString bases[] = {Scene("a"), Scene("b c")};
    for (size_t i = 0; i < 2; ++i) { // as somebody has changed it
        mFolder.Write(i == 0 ? "a.ini" : "b c.ini", ReadFile(bases[i] + ".ini") + "Output_File_Type=J\n");
        mFolder.Write(i == 0 ? "a.png" : "b c.png", "old");
        ASSERT_TRUE(jobs[i].Start("/usr/bin/povray", bases[i], ".png"));
    }
    for (size_t i = 0; i < 2; ++i) {
        ASSERT_TRUE(Wait(jobs[i]));
        EXPECT_TRUE(jobs[i].GetError().StartsWith("there is no new picture")) << jobs[i].GetError();
        EXPECT_EQ(ReadFile(bases[i] + ".png"), "old");
    }
    for (const auto& entry : std::filesystem::directory_iterator(mFolder.GetPath()))
        EXPECT_EQ(entry.path().filename().string().find("morentis"), std::string::npos);
}

TEST_F(PovJobs, FailuresAreToldWithTheLastWords) {
    const wxString base = Scene("a");
    const auto error = [&](const wxString& program) {
        PovJob_cls job;
        if (job.Start(program, base, ".png")) {
            EXPECT_TRUE(Wait(job));
        }
        return job.GetError();
    };
    EXPECT_EQ(error(Program("echo the lamp broke >&2; exit 1")), "it ended with 1:\nthe lamp broke");
    EXPECT_EQ(error(Program("kill -9 $$")), "it was ended by signal 9");
    EXPECT_EQ(error(Program("exit 0")), "there is no new picture " + base + ".png");
    EXPECT_TRUE(error("/no/such/povray").Contains("/no/such/povray")) << error("/no/such/povray");
    mFolder.Write("a.pov", "sphere{0,1\nthis is no scene");
    EXPECT_TRUE(error("/usr/bin/povray").Contains("Parse Error")) << error("/usr/bin/povray");
}

TEST_F(PovJobs, MegabytesOfWordsAreTakenAndForgotten) {
    const wxString base = Scene("a");
    PovJob_cls job;
    ASSERT_TRUE(job.Start(Program("head -c 20000000 /dev/zero | tr '\\0' 'x' >&2; echo >&2; "
                                  "echo 'Rendered 7 of 10 pixels (70%)' >&2; echo last >&2; exit 3"),
                          base, ".png"));
    ASSERT_TRUE(Wait(job));
    EXPECT_TRUE(job.GetError().EndsWith("last")) << job.GetError();
    EXPECT_LT(job.GetError().length(), 4000u);
    EXPECT_EQ(job.GetPercent(), 70);
}

TEST_F(PovJobs, HangingRenderersEndAtOnceWithAllTheyStarted) {
    const wxString base = Scene("a");
    mFolder.Write("a.png", "half a picture");
    PovJob_cls job;
    const std::string mark = mFolder.GetPath() + "/alive";
    ASSERT_TRUE(job.Start(Program("trap '' TERM INT; (while :; do touch " + mark +
                                  "; sleep 0.02; done) & "
                                  "while :; do sleep 1; done"),
                          base, ".png"));
    while (!std::filesystem::exists(mark))
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const auto begin = std::chrono::steady_clock::now();
    job.Stop();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(500));
    EXPECT_FALSE(job.IsRunning());
    EXPECT_FALSE(std::filesystem::exists(NarrowPath(base + ".png"))) << "it isn't whole";
    std::this_thread::sleep_for(std::chrono::milliseconds(100)); // what was on its way
    std::filesystem::remove(mark);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_FALSE(std::filesystem::exists(mark)) << "its child still runs";
}

TEST(LikeDrawn, OtherBytesStayAsTheyAre) {
    for (const std::string& bytes :
         {std::string(), std::string("no picture"), std::string("\x89PNG\r\n\x1a\n\xff\xff\xff\xfftIME", 16),
          std::string("\xff\xd8\xff\xfe\xff\xff"), std::string("P6\n#"),
          std::string("#?RADIANCE\nCREATION_TIME"), std::string("v/1\x01\x02\0\0\0creation\0string\0", 24)})
        EXPECT_EQ(LikeDrawn(bytes), bytes);
}

} // namespace
