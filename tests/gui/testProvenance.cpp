// Pictures that carry their project: what the window writes, and what it makes of one that is opened.
#include <wx/image.h>

#include "APP/clsFileMenu.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "IMAGE/ImageFile.h"
#include "IMAGE/PictureOrigin.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "PDATA/clsPDataSequence.h"
#include "ProjectTest.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class Provenance : public ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        mFolder = CopyMelt("made");
        WriteProject(mFolder + "/film.mrp", "melt0000.bin");
        Open(mFolder + "/film.mrp");
        Sequence()->mCFileSequence.Set(wxString::FromUTF8(mFolder + "/f%04d.png"));
        Sequence()->mOutW = Sequence()->mOutH = 32;
        Time()->SetAnimInterpNative(2);
        Time()->SetWAMaxNative(1);
        ASSERT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(mFolder + "/film.mrp"), true));
    }
    static ImgSequence_cls* Sequence() { return Hub()->mpCImgSequence; }
    static TimeCtrl_cls* Time() { return Hub()->mpCTimeCtrl; }
    void RenderAnim() {
        mAnswers = {false, true};
        Sequence()->Begin(false);
        PostMenuEvent(ID_SAVE_IMGSEQ_BEGIN);
        ASSERT_TRUE(PumpUntil([] { return !Sequence()->IsRendering(); }, 60000));
        GCImgIO.Finish();
    }
    /// As "Save Snapshot" does.
    void Snap(const std::string& path) {
        Answer(path);
        Menu(ID_SAVE_IMAGE_SNAP);
        GCImgIO.Finish();
    }
    PictureOrigin_st Read(const std::string& path, OriginFound expected) {
        PictureOrigin_st origin;
        wxString reason;
        EXPECT_EQ(ReadPictureOrigin(path, &origin, &reason), expected) << path << reason;
        return origin;
    }
    void Drop(const std::string& path) {
        mVMessages.clear();
        Frame()->GetPCFileMenu()->GetOpener().Open({wxString::FromUTF8(path)}, false);
        EXPECT_TRUE(Settle());
    }
    std::string WritePicture(const std::string& name, const std::string& project, const std::string& frame) {
        PictureOrigin_st origin;
        origin.mProject = project;
        ImageFormat_st format;
        format.mOrigin = {std::make_shared<OriginPack_cls>(origin), frame};
        EXPECT_EQ(WriteImageFile(wxImage(2, 2), mDir / name, format), "");
        return mDir / name;
    }
    static bool HasFrame(int frame, int step) {
        return Time()->GetFrame() == frame && Time()->GetInterpStep() == step;
    }

    std::string mFolder;
};

TEST_F(Provenance, ADroppedPictureOpensTheSameProjectAtItsFrame) {
    RenderAnim();
    const std::string text = Read(mFolder + "/f0001.png", OriginFound::Whole).mProject;
    EXPECT_TRUE(text == Read(mFolder + "/f0000.png", OriginFound::Whole).mProject);
    EXPECT_EQ(Read(mFolder + "/f0001.png", OriginFound::Whole).mFrame, "0+1/2");
    EXPECT_EQ(Read(mFolder + "/f0001.png", OriginFound::Whole).mData, "melt0000.bin");
    EXPECT_EQ(Lines(text).size(), Lines(ReadAll(mFolder + "/film.mrp")).size()) << "what saving writes";
    Frame()->OpenProject(mDefaults);
    Drop(mFolder + "/f0001.png");
    EXPECT_TRUE(mVMessages.empty());
    EXPECT_TRUE(HasFrame(0, 1));
    std::string opened = Hub()->MakeProjectText();
    const size_t data = opened.find("\n" + mFolder + "/melt"); // whole, as it has no folder of its own yet
    ASSERT_NE(data, std::string::npos);
    EXPECT_TRUE(opened.erase(data + 1, mFolder.size() + 1) == text);
    EXPECT_EQ(Frame()->GetPCActiveFileSequence()->GetFilename(0), mFolder + "/melt0000.bin");
    // It has no name: the picture and its project stay as they are.
    EXPECT_FALSE(Frame()->GetPCFileMenu()->IsProjectNamed());
    EXPECT_FALSE(HasStar());
    const std::string project = ReadAll(mFolder + "/film.mrp"), picture = ReadAll(mFolder + "/f0001.png");
    Answer("CANCEL");
    Menu(ID_SAVE_PROJECT);
    EXPECT_EQ(GpCFileDialog->GetDirectory() + "/" + GpCFileDialog->GetFilename(), mFolder + "/f0001.mrp");
    Answer(mFolder + "/again.mrp");
    Menu(ID_SAVE_PROJECT);
    EXPECT_TRUE(Frame()->GetTitle().EndsWith("again.mrp"));
    EXPECT_TRUE(ReadAll(mFolder + "/film.mrp") == project);
    EXPECT_TRUE(ReadAll(mFolder + "/f0001.png") == picture);
    // Gone elsewhere with its data, it finds them; without them it tells what a project tells.
    fs::create_directory(fs::path(mDir / "there"));
    fs::rename(mFolder + "/f0002.png", mDir / "there/f.png");
    for (int i = 0; i < 3; ++i)
        fs::rename(mFolder + "/melt000" + std::to_string(i) + ".bin",
                   mDir / ("there/melt000" + std::to_string(i) + ".bin"));
    Drop(mDir / "there/f.png");
    EXPECT_EQ(Frame()->GetPCActiveFileSequence()->GetFilename(0), mDir / "there/melt0000.bin");
    EXPECT_TRUE(HasFrame(1, 0));
    fs::create_directory(fs::path(mDir / "there/out"));
    fs::rename(mDir / "there/f.png", mDir / "there/out/f.png");
    Frame()->OpenProject(mDefaults);
    Drop(mDir / "there/out/f.png");
    EXPECT_EQ(Frame()->GetPCActiveFileSequence()->GetFilename(0), mDir / "there/melt0000.bin");
}

TEST_F(Provenance, SnapshotsCarryItUnlessTheProjectSaysNo) {
    Time()->SetFrameNative(1, 0);
    Snap(mDir / "a.tif");
    EXPECT_EQ(Read(mDir / "a.tif", OriginFound::Whole).mFrame, "1");
    Snap(mDir / "a.jpg");
    Read(mDir / "a.jpg", OriginFound::None);
    EXPECT_EQ(Hub()->MakeProjectText().find("ImgSequenceKeepProject="), std::string::npos);
    Sequence()->mbKeepProject = false;
    Snap(mDir / "b.tif");
    Read(mDir / "b.tif", OriginFound::None);
    RenderAnim();
    Read(mFolder + "/f0001.png", OriginFound::None);
    ASSERT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(mFolder + "/no.mrp"), true));
    Frame()->OpenProject(mDefaults);
    EXPECT_TRUE(Sequence()->mbKeepProject) << "a project that says nothing has it";
    Open(mFolder + "/no.mrp");
    EXPECT_FALSE(Sequence()->mbKeepProject);
    // The dialog of File, "Open Project" takes pictures, too; unsaved steps are asked about.
    Step();
    mAnswers = {false}; // "Don't Save"
    Answer(mDir / "a.tif");
    Menu(ID_OPEN_PROJECT);
    EXPECT_TRUE(WasTold("Save the changes"));
    EXPECT_TRUE(HasFrame(1, 0));
    EXPECT_TRUE(Sequence()->mbKeepProject);
    Drop(mDir / "b.tif");
    EXPECT_TRUE(WasTold("b.tif is a picture"));
}

TEST_F(Provenance, WhatIsNoProjectChangesNothingAndAWrongFrameIsTold) {
    Time()->SetFrameNative(1, 0);
    for (const char* text : {"hello\n", "TimeMaxFrame=3\n"}) {
        Drop(WritePicture("wrong.png", text, "1"));
        EXPECT_TRUE(WasTold("wrong.png can't be opened: it is no project"));
        EXPECT_TRUE(HasFrame(1, 0));
        EXPECT_EQ(Frame()->GetPCActiveFileSequence()->GetFilename(0), mFolder + "/melt0000.bin");
    }
    const std::string project = ReadAll(mFolder + "/film.mrp");
    const std::string whole = WritePicture("whole.png", project, "1+1/2");
    Drop(whole);
    EXPECT_TRUE(HasFrame(1, 1));
    for (const char* frame : {"", "-1", "1000", "0+2/3", "1+1/1", "99999999999"}) {
        Time()->SetFrameNative(1, 0);
        Drop(WritePicture("frame.tif", project, frame));
        EXPECT_TRUE(WasTold("doesn't tell a frame")) << frame;
        EXPECT_TRUE(HasFrame(0, 0)) << frame;
    }
}

} // namespace
