// The settings of POV-Ray and the texts that they become; renderers as processes, well and badly behaved.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <wx/arrstr.h>
#include <wx/datetime.h>
#include <wx/image.h>

#include "COMMON/Eye.h"
#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"
#include "IMAGE/ImageCheck.h"
#include "POVRAY/LikeDrawn.h"
#include "POVRAY/LinearPicture.h"
#include "POVRAY/PictureHead.h"
#include "POVRAY/clsPovJob.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "TempFolder.h"

namespace {

void ReadAll(PovRayCtrl_cls& ctrl, const wxString& text) {
    for (const wxString& line : wxSplit(text, '\n', '\0'))
        ctrl.ReadStrLine(line);
}

bool Has(const wxString& text, const wxString& line) { return ("\n" + text).Contains("\n" + line + "\n"); }

const char* const kEnd = "#Initial_Frame=0\n#Final_Frame=10\n#Subset_Start_Frame=0\n#Subset_End_Frame=9\n";
const char* const kFixed =
    "Version=3.7\nDisplay_Gamma=1\nFile_Gamma=1\nRender_Block_Size=48\nRender_Pattern=3\n";

TEST(PovSettings, DefaultsMakeThisIni) {
    const PovRayCtrl_cls ctrl;
    EXPECT_EQ(ctrl.GetStrPovIni("/scenes/povsnap0000.ini", -1),
              wxString("width=640\nheight=480\nDISPLAY=on\nPause_When_Done=off\n") + kFixed +
                  "Bounding_Method=2\nAntialias=0\nJitter=0\nOutput_File_Type=N\nOutput_Alpha=0\n"
                  "Input_File_Name=\"povsnap0000.pov\"\nOutput_File_Name=\"povsnap0000\"\n" +
                  kEnd);
    EXPECT_EQ(ctrl.GetStrPovGlobal(), "global_settings {\n\tmax_trace_level 12\n}\n");
    EXPECT_EQ(ctrl.GetPovRayCommand("/scenes/a"), "nice /usr/bin/povray /scenes/a.ini");
}

TEST(PovSettings, EverySettingReachesTheIni) {
    PovRayCtrl_cls ctrl;
    ReadAll(ctrl,
            "PovAntialias=1\nPovAntiAliasThreshold=0.25\nPovAntiAliasDepth=4\nPovJitter=1\n"
            "PovJitterAmount=0.5\nPovDisplay=0\nPovPauseWhenDone=1\nPovOutputAlpha=1\nPovFileAbsolute=1\n"
            "PovBoundingMethod=0\nPovOutputFomat=5\nPathPovWork=/scenes/\n");
    EXPECT_EQ(ctrl.GetStrPovIni("/scenes/a.ini", -1),
              wxString("width=640\nheight=480\nDISPLAY=off\nPause_When_Done=on\n") + kFixed +
                  "Antialias=1\nAntialias_Threshold=0.250000\nAntialias_Depth=4\n"
                  "Jitter=1\nJitter_Amount=0.500000\nOutput_File_Type=J\nCompression=95\nOutput_Alpha=1\n"
                  "Input_File_Name=\"/scenes/a.pov\"\nOutput_File_Name=\"/scenes/a\"\n" +
                  kEnd);
}

// The rows stand as projects know them, with two that POV-Ray refuses, and one behind them.
TEST(PovSettings, FormatsWriteTheirRows) {
    const struct {
        const char* mLines;
        const char* mEnding;
        bool mbRefused;
    } rows[] = {{"Output_File_Type=N\n", ".png", false},
                {"Bits_Per_Color=12\nOutput_File_Type=N\n", ".png", false},
                {"Output_File_Type=\n", ".png", true},
                {"Bits_Per_Color=16\nOutput_File_Type=S\n", ".bmp", true},
                {"Output_File_Type=P\n", ".ppm", false},
                {"Output_File_Type=J\nCompression=95\n", ".jpg", false},
                {"Output_File_Type=E\n", ".exr", false},
                {"Output_File_Type=H\n", ".hdr", false},
                {"Bits_Per_Color=16\nOutput_File_Type=N\n", ".png", false}};
    PovRayCtrl_cls ctrl;
    ASSERT_EQ(PovFormat_cls::GetFormatNames().size(), std::size(rows));
    for (unsigned i = 0; i < std::size(rows); ++i) {
        ctrl.mCFormat.mOutputFormat.mValue = i;
        EXPECT_TRUE(ctrl.GetStrPovIni("/a.ini", -1)
                        .Contains(wxString("Jitter=0\n") + rows[i].mLines + "Output_Alpha=0\n"))
            << i;
        EXPECT_EQ(ctrl.mCFormat.GetPictureEnding(), rows[i].mEnding);
        EXPECT_EQ(!ctrl.mCFormat.GetRefusal().empty(), rows[i].mbRefused) << i;
    }
}

TEST(PovSettings, RadiosityAndPhotonsWriteTheirBlocks) {
    PovRayCtrl_cls ctrl;
    ReadAll(ctrl, "PovRadiosityType=2\nPovRadiosityMedia=1\nPovPhotonsType=1\nPovPhotonsCount=30\n");
    EXPECT_EQ(
        ctrl.GetStrPovGlobal(),
        "global_settings {\n\tmax_trace_level 12\n\tradiosity {\n\t\talways_sample on\n"
        "\t\tpretrace_start 0.080000\n\t\tpretrace_end 0.040000\n\t\tcount 35\n\t\tnearest_count 5\n"
        "\t\terror_bound 1.800000\n\t\tminimum_reuse 0.015000\n\t\trecursion_limit 3\n"
        "\t\tmedia on\n\t\tnormal on\n\t}\n\tambient_light 0\n"
        "\tphotons {\n\t\tcount 30000\n\t\tautostop 0\n\t\tjitter 0.4\n\t\tmax_trace_level 5\n\t}\n}\n");
    ReadAll(ctrl,
            "PovRadiosityType=1\nPovRadiosityZeroAmbient=0\nPovRadiosityNormal=0\nPovRadiosityMedia=0\n");
    EXPECT_TRUE(ctrl.GetStrPovGlobal().Contains("\t\talways_sample off\n"));
    EXPECT_FALSE(ctrl.GetStrPovGlobal().Contains("ambient_light"));
    EXPECT_FALSE(ctrl.GetStrPovGlobal().Contains("normal on"));
}

TEST(PovSettings, PretraceFilesAreNamedWhereTheyCanBeUsed) {
    const TempFolder_cls folder;
    PovRayCtrl_cls ctrl;
    ctrl.mPathPovWork.mStrValue = folder.GetPath();
    ReadAll(ctrl, "PovRadiosityType=2\nPovRadiosityReuse=2\n");
    EXPECT_EQ(ctrl.mCRadiosity.mPath.mStrValue, "NONE");
    const auto ini = [&ctrl] { return ctrl.GetStrPovIni("/a.ini", -1); };
    EXPECT_TRUE(Has(ini(), "Radiosity_From_File=on"));
    EXPECT_FALSE(ini().Contains("Radiosity_File_Name"));
    ReadAll(ctrl, "PovRadiosityPathDir=light.rca\n");
    EXPECT_FALSE(ini().Contains("Radiosity_File_Name")) << "there is no such file";
    folder.Write("light.rca", "");
    EXPECT_TRUE(Has(ini(), "Radiosity_File_Name=\"./light.rca\""));
    ReadAll(ctrl, "PovRadiosityReuse=1\nPovFileAbsolute=1\nPovRadHighReproduce=1\n");
    EXPECT_TRUE(ini().Contains("Radiosity_File_Name=\"" + wxString(folder.GetPath()) +
                               "/light.rca\"\nRadiosity_To_File=on\nRadiosity_Vain_Pretrace=off\n"
                               "High_Reproducibility=on\n"));
    ctrl.mPathPovWork.mStrValue = folder.GetPath() + "/none";
    EXPECT_FALSE(ini().Contains("Radiosity_File_Name")) << "nothing can be written there";
}

TEST(PovSettings, FilmsSaveTheLightOfTheirFirstFrame) {
    PovRayCtrl_cls ctrl;
    EXPECT_EQ(ctrl.GetPretraceOfFrame(), -1);
    ctrl.SetPreset(true);
    ctrl.mAnimInitNumber = ctrl.mAnimNumber = 5;
    EXPECT_EQ(ctrl.GetPretraceOfFrame(), PovRadiosity_cls::REUSE_SAVE);
    ++ctrl.mAnimNumber;
    EXPECT_EQ(ctrl.GetPretraceOfFrame(), PovRadiosity_cls::REUSE_LOAD);
    EXPECT_TRUE(ctrl.GetStrPovIni("/a.ini", ctrl.GetPretraceOfFrame())
                    .Contains("Radiosity_File_Name=\"./CommonLight.rca\"\nRadiosity_From_File=on\n"));
    ctrl.SetPreset(false);
    EXPECT_EQ(ctrl.GetPretraceOfFrame(), -1) << "a still has a light of its own";
}

TEST(PovSettings, ProjectsKeepAllAndOldOnesStayAsTheyWere) {
    PovRayCtrl_cls ctrl;
    EXPECT_TRUE(ctrl.mColorByParticle.mValue && ctrl.mGroupMaterials.mValue && ctrl.mLikeView.mValue)
        << "of a new project";
    ctrl.SetPreset(true);
    ReadAll(ctrl, "FilePovAnim=film%03d\nPovTweaks=7\nPovDigits=5\nPovMaxTraceLevel=20\n");
    const wxString text = ctrl.Serialize();
    PovRayCtrl_cls other;
    ReadAll(other, text);
    EXPECT_EQ(other.Serialize(), text);
    other.ResetOwnSettings();
    EXPECT_FALSE(other.mColorByParticle.mValue || other.mGroupMaterials.mValue || other.mLikeView.mValue ||
                 other.mKeepFirstPretrace.mValue);
    EXPECT_EQ(other.mDigits.mValue, 0);
    EXPECT_TRUE(text.StartsWith("PathPovRay=/usr/bin/povray\nPathPovWork="));
    EXPECT_TRUE(text.StartsWith(ctrl.SerializeForConfigure()));
}

TEST(PovSettings, FilesMaySayAnything) {
    PovRayCtrl_cls ctrl;
    ReadAll(ctrl,
            "PovOutputFomat=99\nPovCameraWidth=-5\nPovCameraHeight=99999999\nPovAntiAliasDepth=0\n"
            "PovAntiAliasThreshold=nan\nPovRadiosityType=9\nPovRadiosityReuse=9\nPovRadiosityError=inf\n"
            "PovRenderRegion=9\nPovRegionCustomMin=-4\nPovMaxTraceLevel=-1\nPovDigits=99\n"
            "PovPhotonsType=7\nPovPhotonsCount=-1\nPovBoundingMethod=8\n");
    EXPECT_EQ(ctrl.mCFormat.mOutputFormat.mValue, 8u);
    EXPECT_EQ(ctrl.mCFormat.mWidth.mValue, 1);
    EXPECT_EQ(ctrl.mCFormat.mHeight.mValue, PovFormat_cls::kMaxSize);
    EXPECT_EQ(ctrl.GetRegionType(), 0u);
    EXPECT_EQ(ctrl.GetRegionInit(), 0);
    EXPECT_EQ(ctrl.mDigits.mValue, 9);
    const wxString all = ctrl.GetStrPovIni("/a.ini", -1) + ctrl.GetStrPovGlobal();
    EXPECT_FALSE(all.Contains("nan") || all.Contains("inf") || all.Contains("-")) << all;
}

TEST(PovNames, PatternsAreFilledByNumberAndEye) {
    PovRayCtrl_cls ctrl;
    ctrl.mPathPovWork.mStrValue = "/scenes//";
    ctrl.mSnapNumber = 7;
    const auto snap = [&ctrl](unsigned eye, int number) { return ctrl.GetFileStr(0, eye, number); };
    EXPECT_EQ(snap(EYE_NONE, -1), "/scenes/povsnap0007");
    EXPECT_EQ(snap(EYE_LEFT, 12), "/scenes/povsnapL0012");
    EXPECT_EQ(snap(EYE_RIGHT, 12345), "/scenes/povsnapR12345");
    EXPECT_EQ(ctrl.GetFileStr(PovRayCtrl_cls::FILE_COMMON_SCENE, 0, 0), "CommonScene.pov");
    EXPECT_EQ(ctrl.GetWorkingDirWithSep(false), "./");
    ctrl.mCFormat.mFileAbsolute.mValue = true;
    EXPECT_EQ(ctrl.GetFileStr(PovRayCtrl_cls::FILE_COMMON_SCENE, 0, 0), "/scenes/CommonScene.pov");
}

TEST(PovNames, OddPatternsAreTextAndAreTold) {
    PovRayCtrl_cls ctrl;
    for (const char* pattern : {"%s", "%n", "%5.2f", "%", "plain", "%d%n%s"}) {
        ctrl.mFilePovAnim.mStrValue = pattern;
        const wxString name = ctrl.GetFileStr(PovRayCtrl_cls::FILE_ANIM, EYE_NONE, 3);
        EXPECT_TRUE(
            name.EndsWith(wxString(pattern).substr(0, 2) == "%d" ? "/3%n%s" : wxString("/") + pattern))
            << name;
        EXPECT_EQ(ctrl.GetNameProblem(PovRayCtrl_cls::FILE_ANIM).empty(), wxString(pattern).StartsWith("%d"));
        ctrl.GetFileStr(PovRayCtrl_cls::FILE_ANIM, EYE_LEFT, 3); // and nothing ends
    }
    for (const char* pattern : {"", "a/b%04d", "it's\"%04d"}) {
        ctrl.mFilePovAnim.mStrValue = pattern;
        EXPECT_FALSE(ctrl.GetNameProblem(PovRayCtrl_cls::FILE_ANIM).empty()) << pattern;
    }
}

TEST(PovNames, LightOfOddNamesIsFoundAnew) {
    const TempFolder_cls folder;
    PovRayCtrl_cls ctrl;
    ctrl.mPathPovWork.mStrValue = folder.GetPath();
    ctrl.mCRadiosity.mType.mValue = PovRadiosity_cls::TYPE_FULL;
    ctrl.mCRadiosity.mReuse.mValue = PovRadiosity_cls::REUSE_SAVE;
    for (const char* name : {"light.rca", "li\"ght", "it's", "back\\slash", "l\xc3\xbcght"}) {
        ctrl.mCRadiosity.mPath.mStrValue = wxString::FromUTF8(name);
        const wxString ini = ctrl.GetStrPovIni("/a.ini", -1);
        EXPECT_EQ(ini.Contains("Radiosity_File_Name"), ctrl.mCRadiosity.GetNameProblem().empty()) << name;
        EXPECT_EQ(ini.Contains("Radiosity_File_Name"), std::string(name) == "light.rca") << name;
        EXPECT_TRUE(Has(ini, "Radiosity_To_File=on")) << name;
    }
}

TEST(PovNames, NumbersBelowZeroAreNamesLikeOthers) {
    PovRayCtrl_cls ctrl;
    ctrl.mAnimNumber = 7;
    EXPECT_TRUE(ctrl.GetFileStr(PovRayCtrl_cls::FILE_ANIM, EYE_NONE, -1).EndsWith("povanim0007"));
    EXPECT_TRUE(ctrl.GetFrameFileStr(EYE_NONE, -1).EndsWith("povanim-001"));
}

TEST(PovRuns, AbortingAnExportLeavesARenderedStillAlone) {
    PovRayCtrl_cls ctrl;
    ctrl.mbRenderDone = false;
    ctrl.mbExportingAnim = true;
    EXPECT_FALSE(ctrl.StartExportPovAnim(0)) << "a second press";
    EXPECT_FALSE(ctrl.mbAborted);
    ctrl.mbRenderingAnim = true;
    EXPECT_FALSE(ctrl.StartExportPovAnim(1));
    EXPECT_TRUE(ctrl.mbAborted);
    ctrl.mbRenderDone = true;
}

// POV-Ray reads no letter but English ones in the names of an .ini file: there they stay bare.
TEST(PovNames, FoldersThatPovRayCantReadAreLeftAway) {
    PovRayCtrl_cls ctrl;
    ctrl.mCFormat.mFileAbsolute.mValue = true;
    ctrl.mPathPovWork.mStrValue = wxString::FromUTF8("/scènes");
    EXPECT_TRUE(Has(ctrl.GetStrPovIni(wxString::FromUTF8("/scènes/a.ini"), -1), "Input_File_Name=\"a.pov\""));
    EXPECT_EQ(ctrl.GetFileStr(PovRayCtrl_cls::FILE_COMMON_SCENE, 0, 0), "CommonScene.pov");
    ctrl.mCFormat.mFileAbsolute.mValue = false;
    EXPECT_TRUE(Has(ctrl.GetStrPovIni("/say \"a\".ini", -1), "Input_File_Name='say \"a\".pov'"));
}

// Renderers.

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
    const std::string names[] = {"plain",   "a b", "-x", "\xc3\xa4\xc3\xb6",      "it's", "qu\"ote",
                                 "br[a]ck", "e=q", "#h", "deep \xc3\xbc 'x'/-y z"};
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
