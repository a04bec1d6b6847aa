// The settings of POV-Ray and the texts and names that they become.

#include <iterator>

#include <gtest/gtest.h>
#include <wx/arrstr.h>

#include "COMMON/Eye.h"
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

} // namespace
