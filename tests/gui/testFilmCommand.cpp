// The film maker without a window against the window's "Render Anim", byte for byte; and the video behind a
// series.
#include <cstdlib>
#include <fstream>

#include <wx/image.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "IMAGE/ImageFile.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsParamGroup.h"
#include "RunFilm.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

namespace {

namespace fs = std::filesystem;

class FilmCommand : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        for (const char* folder : {"window", "command"})
            fs::create_directory(mFolder.mPath / folder);
    }
    void TearDown() override {
        Sequence()->SetToDefault();
        Hub()->mpCTimeCtrl->mbUseMotionBlur.mValue = false;
        ResetViews();
        GuiTest::TearDown();
    }
    static ImgSequence_cls* Sequence() { return Hub()->mpCImgSequence; }
    /// As "Render Anim" does, into the folder "window".
    void RenderAnim(std::deque<bool> answers) {
        Sequence()->mCFileSequence.Set(mFolder / "window/f%04d.png");
        Sequence()->mCInitNum.mValue = Hub()->mpCTimeCtrl->GetWAMin();
        mAnswers = std::move(answers);
        ASSERT_TRUE(Sequence()->NormalizeName(true));
        Sequence()->Begin(false);
        PostMenuEvent(ID_SAVE_IMGSEQ_BEGIN);
        ASSERT_TRUE(PumpUntil([] { return !Sequence()->IsRendering(); }, 60000));
        GCImgIO.Finish();
    }
    void Compare(const std::string& lines, std::deque<bool> answers, size_t files, int view = 0) {
        const std::string project = mFolder.MakeProject("film.mrp", lines + "ImgSequenceKeepProject=0\n");
        ASSERT_TRUE(OpenProjectAndPaint(project));
        Canvas(view)->SetThisToBeActiveGL();
        RenderAnim(std::move(answers));
        const ChildRun_st run = RunFilm(
            {"--quiet", "--view", std::to_string(view), "--output", mFolder / "command/f%04d.png", project});
        EXPECT_EQ(run.mStatus, 0) << run.mErr;
        const auto window = mFolder.ReadAll("window");
        const auto command = mFolder.ReadAll("command");
        EXPECT_EQ(window.size(), files);
        ASSERT_EQ(command.size(), window.size());
        for (const auto& [name, bytes] : window)
            EXPECT_TRUE(command.at(name) == bytes) << name << " differs";
    }

    FilmFolder_cls mFolder;
};

TEST_F(FilmCommand, WritesWhatTheWindowWrites) {
    // No camera, as it is; items hidden.
    Compare("Panel0ShowGrid=1\nOverLayTimePos=2\n", {false, true}, 5);
}

TEST_F(FilmCommand, WritesTheSameOfAFollowedParticle) {
    // The camera looks at the anchor, and the trail and the label are seen; parts know nothing of the whole.
    const std::string lines =
        "PickedParticle=1 40 40 0\nPickedMarks=1 1 1\nPanel0DisplayMode=7\nCareraLookAnchor=1\n";
    Compare(lines, {true}, 5);
    const std::string project = mFolder.MakeProject("film.mrp", lines);
    const ChildRun_st part =
        RunFilm({"--quiet", "--frames", "3-4", "--output", mFolder / "part/f%04d.png", project});
    EXPECT_EQ(part.mStatus, 0) << part.mErr;
    const auto whole = mFolder.ReadAll("command");
    for (const auto& [name, bytes] : mFolder.ReadAll("part"))
        EXPECT_TRUE(whole.at(name) == bytes) << name << " differs";
    // The free camera turns to the particle: from where the film began, not from the picture before.
    const std::string turning = mFolder.MakeProject(
        "turning.mrp", "PickedParticle=1 40 40 0\nPickedMarks=1 0 0\nPanel0PivotMode=1\n");
    for (const char* frames : {"0-4", "3-4"})
        ASSERT_EQ(RunFilm({"--quiet", "--frames", frames, "--output",
                           mFolder / (std::string("turn") + frames + "/f%04d.png"), turning})
                      .mStatus,
                  0);
    const auto turned = mFolder.ReadAll("turn0-4");
    const auto slice = mFolder.ReadAll("turn3-4");
    EXPECT_EQ(slice.size(), 2u);
    for (const auto& [name, bytes] : slice)
        EXPECT_TRUE(turned.at(name) == bytes) << name << " differs";
    const std::string plain = mFolder.MakeProject("plain.mrp", "");
    ASSERT_EQ(RunFilm({"--quiet", "--output", mFolder / "plain/f%04d.png", plain}).mStatus, 0);
    for (const auto& [name, bytes] : mFolder.ReadAll("plain"))
        EXPECT_FALSE(whole.at(name) == bytes) << name;
}

TEST_F(FilmCommand, WritesTheSameBlurAndSteps) {
    Compare(
        "Panel0DisplayMode=7\nTimeAnimInterp=2\nTimeUseMotionBlur=1\nImgSequenceBlurLength=0.7\n"
        "ImgSequenceBlurSteps=3\nTimeWorkAreaMin=1\nTimeWorkAreaMax=3\nImgSequenceOutW=90\nTimeRepeat=0\n",
        {true}, 5);
}

TEST_F(FilmCommand, WritesTheSameOfAnotherView) {
    Compare("PreviewPanelType=3\nPanel2ShowMessage=1\n", {false, true}, 5, 2);
}

TEST_F(FilmCommand, WritesTheSameMeshInAHighPicture) {
    Compare("Panel0GLGeometry=2\nPanel0GLPersAngle=180\nPanel0Distortion1\nPanel0FisheyeGrid1\n"
            "ImgSequenceOutW=48\nImgSequenceOutH=64\nTimeWorkAreaMax=0\n",
            {false, true}, 1);
}

TEST_F(FilmCommand, WritesTheSameShadows) {
    std::string spheres = "TimeWorkAreaMax=1\nPanel0GLGeometry=0\nClassify=0\n";
    for (int type = 0; type < 4; ++type)
        for (const char* line : {"DrawType=2", "DrawQuality=3", "RadiusType=1", "RadiusFactorForConst=0.04"})
            spheres += "SEQ0TYPE" + std::to_string(type) + line + "\n";
    Compare(spheres + "Shadow=1\nShadowLength=50\n", {false, true}, 2);
    const auto dark = mFolder.ReadAll("command");
    const ChildRun_st run = RunFilm({"--quiet", "--output", mFolder / "command/f%04d.png",
                                     mFolder.MakeProject("lit.mrp", spheres + "Shadow=0\n")});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_FALSE(mFolder.ReadAll("command") == dark) << "there were shadows";
}

TEST_F(FilmCommand, WritesTheSameForTwoEyes) {
    StereoGram_cls stereo;
    const double parallax = 0.3;
    Parameters_cls::msbUndoCommandMake = false;
    stereo.mpCParallax->SetKeyFrame(&parallax, true, 0.0);
    Parameters_cls::msbUndoCommandMake = true;
    stereo.mCType.mValue = StereoGram_cls::TYPE_OFF_AXIS;
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_LINE_BY_LINE;
    const std::string blur = "TimeUseMotionBlur=1\nImgSequenceBlurSteps=2\nTimeWorkAreaMax=0\n";
    Compare(blur + stereo.Serialize().ToStdString(), {false, true}, 2);
    EXPECT_FALSE(mFolder.ReadAll("command").at("fL0000.png") == mFolder.ReadAll("command").at("fR0000.png"));
    for (const char* folder : {"window", "command"})
        for (const auto& [name, bytes] : mFolder.ReadAll(folder))
            fs::remove(mFolder / (folder + ("/" + name)));
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_SIDE_BY_SIDE;
    stereo.mCDualOutput.mValue = 0;
    Compare("TimeWorkAreaMax=0\n" + stereo.Serialize().ToStdString(), {false, true}, 1);
}

TEST_F(FilmCommand, TheOptionTakesTwoEyesFromAnyProject) {
    const std::string project = mFolder.MakeProject("film.mrp", "TimeWorkAreaMax=0\nPanel0ShowGrid=1\n");
    const auto film = [&](const std::string& output, const std::string& name) {
        const ChildRun_st run = RunFilm({"--quiet", "--size", "96x64", "--stereo", output, "--output",
                                         mFolder / ("command/" + name + "%04d.png"), project});
        EXPECT_EQ(run.mStatus, 0) << run.mErr;
    };
    const auto load = [&](const std::string& name) {
        return wxImage(wxString::FromUTF8(mFolder / ("command/" + name + ".png")));
    };
    film("off", "one");
    film("separate", "eye");
    film("side-by-side-full", "beside");
    film("red-cyan", "red");
    const wxImage one = load("one0000"), left = load("eyeL0000"), right = load("eyeR0000");
    const wxImage beside = load("beside0000"), red = load("red0000");
    ASSERT_EQ(left.GetSize(), wxSize(96, 64));
    ASSERT_EQ(beside.GetSize(), wxSize(192, 64));
    const auto same = [](const wxImage& a, const wxImage& b) {
        return a.GetSize() == b.GetSize() &&
               std::equal(a.GetData(), a.GetData() + 3 * a.GetWidth() * a.GetHeight(), b.GetData());
    };
    EXPECT_FALSE(same(left, right));
    EXPECT_FALSE(same(left, one));
    EXPECT_TRUE(same(beside.GetSubImage(wxRect(0, 0, 96, 64)), left)) << "what the eye's own file shows";
    EXPECT_TRUE(same(beside.GetSubImage(wxRect(96, 0, 96, 64)), right));
    for (int i = 0; i < 96 * 64 * 3; i += 3) {
        ASSERT_EQ(red.GetData()[i], left.GetData()[i]);
        ASSERT_EQ(red.GetData()[i + 1], right.GetData()[i + 1]);
    }
    // Squeezed to half, each shows the whole of its eye: as much light a row, and as far up.
    struct Light_st {
        double sum, mean;
    };
    const auto light = [](const wxImage& image, int top, int rows) {
        Light_st all{0.0, 0.0};
        for (int y = 0; y < rows; ++y)
            for (int x = 0; x < image.GetWidth(); ++x) {
                all.sum += image.GetGreen(x, top + y);
                all.mean += image.GetGreen(x, top + y) * (y + 0.5) / rows;
            }
        return Light_st{all.sum / rows, all.mean / all.sum};
    };
    film("top-bottom", "squeezed");
    const wxImage squeezed = load("squeezed0000");
    ASSERT_EQ(squeezed.GetSize(), wxSize(96, 64));
    for (const int top : {0, 32}) {
        const Light_st half = light(squeezed, top, 32), whole = light(top == 0 ? left : right, 0, 64);
        EXPECT_NEAR(half.sum, whole.sum, 0.15 * whole.sum) << top;
        EXPECT_NEAR(half.mean, whole.mean, 0.02) << top;
    }
    const ChildRun_st resumed = RunFilm({"--size", "96x64", "--stereo", "side-by-side-full", "--resume",
                                         "--output", mFolder / "command/beside%04d.png", project});
    EXPECT_NE(resumed.mOut.find("1 were there"), std::string::npos) << resumed.mOut;
    EXPECT_NE(resumed.mErr.find("note: the eyes stand"), std::string::npos) << resumed.mErr;
}

TEST_F(FilmCommand, KnowsTheEndingsThatCanBeWritten) {
    for (const std::string ending : {"png", "jpg", "jpeg", "tif", "tiff", "bmp"}) {
        const wxString path = wxString::FromUTF8(mFolder / ("ending." + ending));
        EXPECT_EQ(WriteImageFile(wxImage(2, 2), path, ImageFormat_st()), "") << ending;
        EXPECT_EQ(wxImage(path).GetSize(), wxSize(2, 2)) << ending;
    }
}

TEST_F(FilmCommand, AWholeSeriesGetsItsVideo) {
    ASSERT_FALSE(FindVideoTool().empty()) << "install ffmpeg";
    ASSERT_TRUE(OpenProjectAndPaint(mFolder.MakeProject("film.mrp", "")));
    Sequence()->mbVideo = true;
    RenderAnim({false, true});
    const std::string video = mFolder / "window/f.mp4";
    ASSERT_TRUE(PumpUntil([&] { return fs::exists(video); }, 20000));
    EXPECT_GT(fs::file_size(video), 1000u);
    EXPECT_EQ(mFolder.ReadAll("window").size(), 6u) << "five pictures and the video";
    ASSERT_TRUE(
        PumpUntil([] { return Frame()->GetStatusBar()->GetStatusText(0).Contains("f.mp4 is made"); }));
    fs::remove(video);
    // One that is given up gets none.
    Sequence()->Begin(false);
    PostMenuEvent(ID_SAVE_IMGSEQ_BEGIN);
    mAnswers = {false, true};
    ASSERT_TRUE(PumpUntil([] { return Sequence()->GetProgress().GetDone() >= 2; }));
    PostMenuEvent(ID_PLAY_STOP);
    ASSERT_TRUE(PumpUntil([] { return !Sequence()->IsRendering(); }));
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(Frame()->GetStatusBar()->GetStatusText(0).Contains("Making the video"));
}

// A program in the place of the tool works until it is told.
TEST_F(FilmCommand, AVideoThatIsGivenUpIsTold) {
    fs::create_directory(mFolder.mPath / "bin");
    const std::string tool = mFolder / "bin/ffmpeg", end = mFolder / "end";
    std::ofstream(tool) << "#!/bin/sh\nuntil [ -e '" << end << "' ]; do sleep 0.1; done\nexit 1\n";
    fs::permissions(tool, fs::perms::owner_all);
    const std::string path = std::getenv("PATH");
    setenv("PATH", (mFolder / "bin:" + path).c_str(), 1);
    const auto isMaking = [] {
        return Frame()->GetStatusBar()->GetStatusText(0).Contains("Making the video");
    };
    ASSERT_TRUE(OpenProjectAndPaint(mFolder.MakeProject("film.mrp", "TimeWorkAreaMax=1\n")));
    Sequence()->mbVideo = true;
    RenderAnim({false, true});
    EXPECT_TRUE(PumpUntil(isMaking));
    mSaveAnswers = {MESSAGE_CANCEL};
    Frame()->Close();
    EXPECT_TRUE(PumpUntil([&] { return WasTold("f.mp4 is not made yet and would be given up"); }));
    EXPECT_TRUE(isMaking()) << "the answer was no";
    EXPECT_FALSE(WasTold("next series"));
    RenderAnim({false, true});
    EXPECT_TRUE(PumpUntil([&] { return WasTold("given up for that of the next series"); }));
    EXPECT_TRUE(PumpUntil(isMaking)) << "the next one";
    std::ofstream(end) << "now";
    EXPECT_TRUE(PumpUntil([&] { return !isMaking(); }));
    setenv("PATH", path.c_str(), 1);
}

} // namespace
