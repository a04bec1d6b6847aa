// Pictures that leave the window: films through the dialog "Save Image Sequence", snapshots, the clipboard.
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/filefn.h>
#include <wx/image.h>
#include <wx/textctrl.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <map>
#include <set>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "IMAGE/clsImgSequenceGUI.h"
#include "PARAM/clsParameters.h"
#include "PictureTest.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsNumField.h"

namespace {

namespace fs = std::filesystem;

class Images : public PictureTest {
protected:
    void SetUp() override {
        PictureTest::SetUp();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        MainGLCanvas_cls::msCFBOSizeIndex.mValue = 0;
        Time()->SetAnimInterpNative(1);
        Time()->SetRepeatNative(0);
        Time()->SetWAMinNative(0);
        Time()->SetWAMaxNative(4);
        Canvas(0)->mShowItems.mValue = false;
        Canvas(0)->mShowMessage.mValue = false;
        OpenDialog();
        SetOutput("f%04d.png", 64, 48);
    }
    void TearDown() override {
        Time()->mbUseMotionBlur.mValue = false;
        Time()->mCMotionBlur.mBlurSteps = 4;
        Time()->mCMotionBlur.mShutter = 0.5f;
        Sequence()->mCInitNum.mValue = 0;
        Dialog()->CloseEXKey();
        PictureTest::TearDown();
    }

    static TimeCtrl_cls* Time() { return Hub()->mpCTimeCtrl; }
    static ImgSequence_cls* Sequence() { return Hub()->mpCImgSequence; }
    static wxDialogEXKey* Dialog() { return Sequence()->GetPCDialog(); }
    static void OpenDialog() {
        Menu(ID_SAVE_IMAGE_SEQ);
        ASSERT_TRUE(WaitForWindow("Save Image Sequence"));
    }
    void SetOutput(const std::string& name, int w, int h) {
        Sequence()->mCFileSequence.Set(wxString::FromUTF8(mDir / name));
        Sequence()->mOutW = w;
        Sequence()->mOutH = h;
        Sequence()->UpdateItems(false);
    }
    /// Press a button of the dialog; the first question, whether to link the view, is answered with no.
    void Press(const wxString& label) {
        mAnswers.push_front(false);
        wxWindow* button = FindByLabel(Dialog(), label);
        ASSERT_TRUE(button) << label;
        ClickOn(button);
    }
    bool Render(const wxString& button = "Render Anim") {
        Sequence()->ForgetWritten();
        Press(button);
        const auto started = [] { return Sequence()->IsRendering() || !Sequence()->GetWritten().empty(); };
        return PumpUntil(started, 2000) && Finish();
    }
    static bool Finish() {
        const bool bDone = PumpUntil([] { return !Sequence()->IsRendering(); }, 60000);
        GCImgIO.Finish();
        return bDone && Settle();
    }
    std::set<std::string> Files() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(mDir.mPath))
            names.insert(entry.path().filename().string());
        return names;
    }
    static std::set<std::string> Names(int first, int last) {
        std::set<std::string> names;
        for (int i = first; i <= last; ++i)
            names.insert(wxString::Format("f%04d.png", i).ToStdString());
        return names;
    }
    wxImage Load(const std::string& name) const { return wxImage(wxString::FromUTF8(mDir / name)); }
    /// Mean difference of the channels of two pictures of one size.
    static double Differ(const unsigned char* a, const unsigned char* b, size_t count) {
        double sum = 0.0;
        for (size_t i = 0; i < count; ++i)
            sum += std::abs(a[i] - b[i]);
        return sum / double(count);
    }
    static size_t Bytes(const wxImage& image) {
        return size_t(image.GetWidth()) * size_t(image.GetHeight()) * 3;
    }
    static bool AreEqual(const wxImage& a, const wxImage& b) {
        return a.IsOk() && b.IsOk() && a.GetSize() == b.GetSize() &&
               std::memcmp(a.GetData(), b.GetData(), Bytes(a)) == 0;
    }
    static int CountLit(const wxImage& image) {
        int lit = 0;
        for (size_t i = 0; i < Bytes(image); i += 3)
            lit += image.GetData()[i] + image.GetData()[i + 1] + image.GetData()[i + 2] > 60;
        return lit;
    }
};

TEST_F(Images, AFilmIsOnePictureAFrameWhateverTheWindow) {
    ASSERT_TRUE(Render());
    EXPECT_EQ(Files(), Names(0, 4));
    EXPECT_TRUE(WasTold("Panel 0 is not linked to camera"));
    EXPECT_FALSE(WasTold("Items are shown"));
    std::map<std::string, wxImage> first;
    for (const std::string& name : Files()) {
        first[name] = Load(name);
        ASSERT_TRUE(first[name].IsOk()) << name;
        EXPECT_EQ(first[name].GetSize(), wxSize(64, 48));
        EXPECT_GT(CountLit(first[name]), 50) << "the particles";
    }
    EXPECT_FALSE(AreEqual(first["f0000.png"], first["f0001.png"])) << "they move";
    EXPECT_EQ(Time()->GetFrame(), 4);
    // Another window, another split, repeat: the same pictures.
    Menu(ID_VIEW_PANEL_TYPE_3);
    Canvas(0)->SetThisToBeActiveGL();
    Time()->SetRepeatNative(1);
    ASSERT_TRUE(Render());
    EXPECT_FALSE(Time()->IsPlaying());
    EXPECT_EQ(Files(), Names(0, 4));
    for (const auto& [name, image] : first)
        EXPECT_TRUE(AreEqual(image, Load(name))) << name;
    Menu(ID_VIEW_PANEL_TYPE_0);
}

TEST_F(Images, AFilmOfTheWindowsSizeShowsWhatTheWindowShows) {
    const Picture_st shown = Grab(0);
    SetOutput("f%04d.png", shown.mW, shown.mH);
    ASSERT_TRUE(Render("Render Snap"));
    const wxImage image = Load("f0000.png");
    ASSERT_EQ(image.GetSize(), wxSize(shown.mW, shown.mH));
    // The window's picture is stretched with linear filtering, the file's with boxes; moved a little to the
    // side they would be no longer alike.
    const double same = Differ(image.GetData(), shown.mRGB.data(), Bytes(image));
    const size_t aside = 3 * 12;
    const double moved = Differ(image.GetData() + aside, shown.mRGB.data(), Bytes(image) - aside);
    EXPECT_LT(same, 8.0);
    EXPECT_LT(2.0 * same, moved);
    EXPECT_GT(CountLit(image), 500);
    EXPECT_EQ(Time()->GetFrame(), 0);
}

TEST_F(Images, NumbersFollowSteppingIntervalAndStart) {
    Time()->SetAnimStepNative(2);
    mAnswers = {false}; // keep the stepping
    Sequence()->mCInitNum.mValue = 10;
    ASSERT_TRUE(Render());
    EXPECT_TRUE(WasTold("Playing mode is Skipping: 2\nChange Skipping to 1 ?"));
    EXPECT_EQ(Files(), Names(10, 12));
    fs::remove_all(mDir.mPath);
    fs::create_directory(mDir.mPath);
    mAnswers = {true};
    Time()->SetAnimInterpNative(3);
    Time()->SetWAMinNative(2);
    Sequence()->mCInitNum.mValue = 0;
    ASSERT_TRUE(Render());
    EXPECT_EQ(Time()->GetAnimStep(), 1);
    EXPECT_EQ(Files(), Names(0, 6));
    ClickOn(FindByLabel(Dialog(), "Calc. Auto"));
    EXPECT_EQ(Sequence()->mCInitNum.mValue, 6);
}

TEST_F(Images, QuestionsChangeWhatTheyAskFor) {
    Canvas(0)->mShowItems.mValue = true;
    Hub()->mpCDrawOption->mDownSizing.mValue = 3;
    Time()->SetWAMaxNative(1);
    mAnswers = {true, true};
    ASSERT_TRUE(Render());
    EXPECT_TRUE(WasTold("Items are shown. Hide them ?"));
    EXPECT_TRUE(WasTold("Partiecles are downsized.\nShow full particles?"));
    EXPECT_FALSE(Canvas(0)->mShowItems.mValue);
    EXPECT_EQ(Hub()->mpCDrawOption->mDownSizing.mValue, 1);
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 0);
}

TEST_F(Images, AbortEndsAtOnceAndANewStartBeginsAnew) {
    Time()->SetWAMaxNative(19);
    Press("Render Anim");
    ASSERT_TRUE(PumpUntil([this] { return Files().count("f0002.png") == 1; }, 20000));
    wxWindow* button = FindByLabel(Dialog(), "Abort Anim");
    ASSERT_TRUE(button);
    EXPECT_EQ(button->GetBackgroundColour(), wxColour("RED"));
    EXPECT_TRUE(Frame()->GetStatusBar()->GetStatusText(0).StartsWith("Frame "));
    ClickOn(button);
    ASSERT_TRUE(Finish());
    EXPECT_FALSE(Time()->IsPlaying());
    const size_t count = Files().size();
    EXPECT_LT(count, 20u);
    ASSERT_TRUE(FindByLabel(Dialog(), "Render Anim"));
    fs::remove(mDir / "f0000.png");
    Time()->SetWAMaxNative(1);
    ASSERT_TRUE(Render());
    EXPECT_EQ(Files().size(), count);
    EXPECT_TRUE(Load("f0000.png").IsOk());
}

TEST_F(Images, ABlurIsTheMeanOfItsSteps) {
    // A blur of half a frame in four steps meets steps 0 to 3 of eight.
    SetOutput("step%04d.png", 256, 256);
    Time()->SetWAMaxNative(1);
    Time()->SetAnimInterpNative(8);
    ASSERT_TRUE(Render());
    Time()->SetAnimInterpNative(1);
    SetOutput("blur%04d.png", 256, 256);
    Time()->mbUseMotionBlur.mValue = true;
    ASSERT_TRUE(Render());
    EXPECT_FALSE(Time()->mCMotionBlur.mbBlur);
    const wxImage blurred = Load("blur0000.png");
    ASSERT_TRUE(blurred.IsOk());
    ASSERT_TRUE(Load("blur0001.png").IsOk()) << "the last frame, too";
    std::vector<wxImage> steps;
    for (int i = 0; i < 4; ++i)
        steps.push_back(Load(wxString::Format("step%04d.png", i).ToStdString()));
    ASSERT_FALSE(AreEqual(steps[0], steps[3]));
    double worst = 0.0;
    for (size_t i = 0; i < Bytes(blurred); ++i) {
        double mean = 0.0;
        for (const wxImage& step : steps)
            mean += step.GetData()[i] / 4.0;
        worst = std::max(worst, std::abs(mean - blurred.GetData()[i]));
    }
    EXPECT_LE(worst, 2.0);
    EXPECT_GT(Differ(blurred.GetData(), steps[0].GetData(), Bytes(blurred)), 0.1);
}

TEST_F(Images, WhatCantBeWrittenIsToldOnceAndTheRunGoesOn) {
    fs::create_directories(mDir / "f0001.png");
    fs::create_directories(mDir / "f0002.png");
    ASSERT_TRUE(Render());
    ASSERT_TRUE(PumpUntil([] { return Sequence()->GetFailures() == 2; }, 3000));
    EXPECT_TRUE(Load("f0000.png").IsOk());
    EXPECT_TRUE(Load("f0004.png").IsOk());
    EXPECT_TRUE(fs::is_directory(mDir / "f0001.png"));
    int told = 0;
    for (const ShownMessage_st& message : mVMessages)
        told += message.mText.Contains("could not be written");
    EXPECT_EQ(told, 1);
    // No such folder; an ending that is none.
    for (const std::string name : {"gone/f%04d.png", "f%04d.xyz"}) {
        mVMessages.clear();
        SetOutput(name, 8, 8);
        ASSERT_TRUE(Render("Render Snap"));
        EXPECT_TRUE(PumpUntil([this] { return WasTold("could not be written"); }, 3000)) << name;
    }
}

TEST_F(Images, ANameWithoutANumberIsAskedAbout) {
    SetOutput("plain.png", 32, 32);
    mAnswers = {false};
    ClickOn(FindByLabel(Dialog(), "Render Anim"));
    ASSERT_TRUE(PumpUntil([this] { return WasTold("Not Sequence. Append 4-digit tag ?"); }, 3000));
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(Sequence()->IsRendering());
    EXPECT_TRUE(Files().empty());
    Time()->SetWAMaxNative(0);
    mAnswers = {true, false};
    ClickOn(FindByLabel(Dialog(), "Render Anim"));
    ASSERT_TRUE(PumpUntil([this] { return Files().size() == 1; }, 5000) && Finish());
    EXPECT_EQ(Files(), std::set<std::string>{"plain0000.png"});
    SetOutput("single.png", 32, 32);
    ASSERT_TRUE(Render("Render Snap"));
    EXPECT_TRUE(Load("single.png").IsOk());
}

TEST_F(Images, SizesAreChosenOrTypedAndUndone) {
    auto* sizes = dynamic_cast<wxChoice*>(FindByTip(Dialog(), "The usual sizes"));
    NumField_cls* width = FindField(Dialog(), "Width of the pictures");
    ASSERT_TRUE(sizes && width);
    EXPECT_EQ(sizes->GetSelection(), 0);
    EXPECT_TRUE(width->IsEnabled());
    Choose(sizes, 4); // 640x480
    EXPECT_EQ(Sequence()->mOutW, 640);
    EXPECT_EQ(Sequence()->mOutH, 480);
    EXPECT_FALSE(width->IsEnabled());
    Choose(sizes, 0);
    EXPECT_TRUE(width->IsEnabled());
    TypeInto(width, "7");
    EXPECT_EQ(Sequence()->mOutW, 7);
    TypeInto(width, "0");
    EXPECT_EQ(Sequence()->mOutW, 1);
    Menu(ID_UNDO);
    EXPECT_EQ(Sequence()->mOutW, 7);
    Menu(ID_UNDO);
    Menu(ID_UNDO);
    EXPECT_EQ(Sequence()->mOutW, 64);
    EXPECT_EQ(Sequence()->mOutH, 48);
    const wxString before = Sequence()->mCFileSequence.mStrPath;
    wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(mDir / "chosen%03d.tif");
    ClickOn(FindByLabel(Dialog(), "Reference"));
    EXPECT_TRUE(Sequence()->mCFileSequence.mStrPath.EndsWith("chosen%03d.tif"));
    Menu(ID_UNDO);
    EXPECT_EQ(Sequence()->mCFileSequence.mStrPath, before);
}

TEST_F(Images, OddSizesAreWritten) {
    Time()->SetWAMaxNative(0);
    for (const wxSize size : {wxSize(1, 1), wxSize(7, 5), wxSize(3, 400), wxSize(2000, 10)}) {
        SetOutput("f%04d.png", size.x, size.y);
        ASSERT_TRUE(Render());
        EXPECT_EQ(Load("f0000.png").GetSize(), size);
    }
}

TEST_F(Images, AWindowThatIsPutAwayDoesntStopAFilm) {
    Menu(ID_VIEW_PANEL_TYPE_3); // views that nobody sees must not be waited for either
    Canvas(0)->SetThisToBeActiveGL();
    Time()->SetWAMaxNative(9);
    Press("Render Anim");
    ASSERT_TRUE(PumpUntil([this] { return Files().count("f0000.png") == 1; }, 20000));
    Frame()->Iconize(true);
    ASSERT_TRUE(Finish());
    EXPECT_EQ(Files(), Names(0, 9));
    Frame()->Iconize(false);
    Frame()->Raise();
    Menu(ID_VIEW_PANEL_TYPE_0);
}

TEST_F(Images, AViewThatIsHiddenLeavesTheWorkToTheFirst) {
    Menu(ID_VIEW_PANEL_TYPE_3);
    Canvas(2)->SetThisToBeActiveGL();
    Menu(ID_VIEW_PANEL_TYPE_0);
    EXPECT_EQ(Frame()->GetPCOutputCanvas(), Canvas(0));
    ASSERT_TRUE(Render("Render Snap"));
    EXPECT_EQ(Files(), Names(0, 0));
}

TEST_F(Images, ARunEndsWithItsData) {
    for (const bool bProject : {false, true}) {
        Time()->SetWAMaxNative(19);
        Press("Render Anim");
        ASSERT_TRUE(PumpUntil([this] { return Files().count("f0001.png") == 1; }, 20000));
        if (bProject)
            Frame()->OpenProject(Root() + "examples/lj_melt_text/lj_melt_text.mrp");
        else
            Menu(ID_CLOSE_DATA);
        EXPECT_TRUE(PumpUntil([] { return !Sequence()->IsRendering(); }, 3000));
        GCImgIO.Finish();
        ASSERT_TRUE(Settle());
        EXPECT_FALSE(Time()->IsPlaying());
        EXPECT_LT(Files().size(), 19u);
        for (const std::string& name : Files())
            EXPECT_GT(CountLit(Load(name)), 50) << name;
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        MainGLCanvas_cls::msCFBOSizeIndex.mValue = 0;
        Time()->SetAnimInterpNative(1);
        Canvas(0)->mShowItems.mValue = false;
        SetOutput("f%04d.png", 64, 48);
    }
}

TEST_F(Images, AnAbortInABlurLeavesWholePicturesAndTheClockAtAFrame) {
    Time()->mbUseMotionBlur.mValue = true;
    Time()->mCMotionBlur.mBlurSteps = 8;
    Press("Render Anim");
    ASSERT_TRUE(
        PumpUntil([] { return Time()->GetFrame() == 1 && Time()->mCMotionBlur.mBlurStep == 4; }, 20000));
    ClickOn(FindByLabel(Dialog(), "Abort Anim"));
    ASSERT_TRUE(Finish());
    EXPECT_FALSE(Time()->mCMotionBlur.mbBlur);
    EXPECT_DOUBLE_EQ(Parameters_cls::msCurrentDoubleIndex, Time()->GetDoubleIndex(Time()->GetFrame(), 0));
    for (const std::string& name : Files())
        EXPECT_TRUE(Load(name).IsOk()) << name;
    // What was added to the picture that is given up isn't in the next one.
    SetOutput("again%04d.png", 64, 48);
    Time()->SetWAMaxNative(0);
    ASSERT_TRUE(Render());
    EXPECT_TRUE(AreEqual(Load("again0000.png"), Load("f0000.png")));
}

TEST_F(Images, DomesAndPanoramasAreCutFromTheirSquare) {
    Time()->SetWAMaxNative(0);
    for (const int geometry : {2, 3}) {
        Canvas(0)->SetGeometry(geometry);
        SetOutput("f%04d.png", 64, 64);
        ASSERT_TRUE(Render());
        const wxImage image = Load("f0000.png");
        EXPECT_GT(CountLit(image), 20);
        // Nothing of a dome lies in the corners, nothing of a panorama above its band.
        EXPECT_EQ(image.GetRed(0, 0) + image.GetGreen(0, 0) + image.GetBlue(0, 0), 0);
    }
    Canvas(0)->SetGeometry(0);
}

TEST_F(Images, ASnapshotIsTheWindowWithoutMessages) {
    Canvas(0)->mShowMessage.mValue = true;
    Menu(ID_REFRESH_GL);
    const Picture_st shown = Grab(0);
    wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(mDir / "snapshot.png");
    Menu(ID_SAVE_IMAGE_SNAP);
    GCImgIO.Finish();
    const wxImage image = Load("snapshot.png");
    ASSERT_EQ(image.GetSize(), wxSize(shown.mW / 8 * 8, shown.mH));
    int differ = 0;
    for (int y = 40; y < shown.mH - 40; ++y) // messages stand above and below
        for (int x = 0; x < image.GetWidth(); ++x)
            differ += image.GetGreen(x, y) != shown.mRGB[size_t(y * shown.mW + x) * 3 + 1];
    EXPECT_EQ(differ, 0);
    int brighter = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 5; x < 100; ++x)
            brighter += shown.mRGB[size_t(y * shown.mW + x) * 3] > image.GetRed(x, y) + 50;
    EXPECT_GT(brighter, 5) << "the message line is in the window alone";
    // The dialog's name comes from it.
    Dialog()->CloseEXKey();
    OpenDialog();
    EXPECT_TRUE(Sequence()->mCFileSequence.mStrPath.EndsWith("/preview%04d.png"));
    wxFileDialogEX::sStrTestAnswer = "CANCEL";
    Menu(ID_SAVE_IMAGE_SNAP);
    EXPECT_EQ(Files().size(), 1u);
}

TEST_F(Images, TheViewGoesToTheClipboard) {
    Canvas(0)->SetFocus();
    Key('C', wxMOD_CONTROL | wxMOD_SHIFT);
    wxBitmapDataObject data;
    ASSERT_TRUE(PumpUntil(
        [&data] {
            wxClipboardLocker clipboard;
            return !!clipboard && wxTheClipboard->IsSupported(wxDF_BITMAP) && wxTheClipboard->GetData(data);
        },
        5000));
    const wxImage image = data.GetBitmap().ConvertToImage();
    const Picture_st shown = Grab(0);
    ASSERT_EQ(image.GetSize(), wxSize(shown.mW, shown.mH));
    EXPECT_LT(Differ(image.GetData(), shown.mRGB.data(), Bytes(image)), 0.01);
    EXPECT_GT(CountLit(image), 100);
}

TEST_F(Images, AClearBackgroundLetsThroughWhatNothingCovers) {
    SetBackground(0.0f, 0.0f, 1.0f); // must not be in the file
    const wxString path = wxString::FromUTF8(mDir / "clear.png");
    bool bTaken = false;
    Canvas(0)->RequestImage(
        [&](const ImageBuffers_st& buffers, wxSize size) {
            GCImgIO.SaveImageFromTexture(buffers, size.x, size.y, path, false);
            bTaken = true;
        },
        wxSize(128, 128), true);
    ASSERT_TRUE(PumpUntil([&bTaken] { return bTaken; }));
    GCImgIO.Finish();
    const wxImage image(path);
    ASSERT_TRUE(image.HasAlpha());
    int clear = 0, covered = 0;
    for (int i = 0; i < 128 * 128; ++i) {
        clear += image.GetAlpha()[i] == 0;
        covered += image.GetAlpha()[i] > 200;
    }
    EXPECT_GT(clear, 1000);
    EXPECT_GT(covered, 100);
    SetBackground(0.0f, 0.0f, 0.0f);
}

TEST_F(Images, SettingsOfTheDialogAreTheProjects) {
    SetOutput("kept%04d.jpg", 321, 123);
    Time()->mCMotionBlur.mBlurSteps = 7;
    const wxString project = wxString::FromUTF8(mDir / "p.mrp");
    ASSERT_TRUE(Hub()->SaveProjectFile(project, true));
    SetOutput("other.png", 10, 10);
    Time()->mCMotionBlur.mBlurSteps = 2;
    ASSERT_TRUE(OpenProjectAndPaint(project.ToStdString()));
    EXPECT_EQ(Sequence()->mOutW, 321);
    EXPECT_TRUE(Sequence()->mCFileSequence.mStrPath.EndsWith("kept%04d.jpg"));
    EXPECT_EQ(Time()->mCMotionBlur.mBlurSteps, 7);
}

} // namespace
