// Films through the dialog "Save Image Sequence".
#include <algorithm>
#include <cmath>
#include <map>

#include <wx/statusbr.h>

#include "COLORCURVE/clsColorCurve.h"
#include "GL/BASE/clsFBO.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/WideImageSize.h"
#include "PARAM/clsParameters.h"

#include "ImageTest.h"

namespace {

class Images : public ImageTest {
protected:
    // Software rendering: half the side that users get, which is still twice the largest picture's.
    Images() { GWideImageSize /= 2; }
    ~Images() override { GWideImageSize *= 2; }
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

// Of a face only the part that window or file show is cleared and drawn; what is left in the rest never
// shows.
TEST_F(Images, PartsOfAFaceMakeThePictureOfTheWhole) {
    MotionBlurCtrl_cls& blur = Time()->mCMotionBlur;
    const auto take = [this, &blur](wxSize size, bool bTransparent, bool bBlur, bool bWhole) {
        const wxString path = wxString::FromUTF8(mDir / "part.png");
        FBO_cls::msbWhole = bWhole;
        blur.mbBlur = bBlur;
        bool bTaken = false;
        Canvas(0)->RequestImage(
            [&](const ImageBuffers_st& buffers, wxSize taken) {
                GCImgIO.SaveImageFromTexture(buffers, taken.x, taken.y, path);
                bTaken = true;
            },
            size, bTransparent);
        for (int step = 0; step < (bBlur ? blur.mBlurSteps : 1); ++step) {
            blur.mBlurStep = bBlur ? step : 0;
            Canvas(0)->MarkStale();
            Repaint();
        }
        EXPECT_TRUE(PumpUntil([&bTaken] { return bTaken; }));
        blur.mbBlur = false;
        blur.mBlurStep = 0;
        GCImgIO.Finish();
        return wxImage(path);
    };
    blur.mBlurSteps = 2;
    for (const wxString exposure : {"Gamma=1", "Gamma=1.7", "Saturation=40"}) {
        Hub()->mpCExposure->ReadStrLine("Exposure" + exposure);
        for (const wxSize size : {wxSize(96, 40), wxSize(40, 96)})
            for (const int kind : {0, 1, 2}) {
                SetBackground(0.9f, 0.7f, 0.8f);
                take(wxSize(64, 64), kind == 1, kind == 2, true); // what must not show
                SetBackground(0.1f, 0.2f, 0.05f);
                const wxImage part = take(size, kind == 1, kind == 2, false);
                const wxImage whole = take(size, kind == 1, kind == 2, true);
                EXPECT_TRUE(AreEqual(part, whole)) << exposure << " " << size.x << " " << kind;
                if (kind == 1) {
                    EXPECT_EQ(0, std::memcmp(part.GetAlpha(), whole.GetAlpha(), Bytes(part) / 3));
                }
                EXPECT_GT(CountLit(part), 100);
            }
        FBO_cls::msbWhole = true;
        Repaint();
        const Picture_st whole = Grab(0);
        FBO_cls::msbWhole = false;
        Repaint();
        EXPECT_TRUE(Grab(0).mRGB == whole.mRGB) << exposure;
    }
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

TEST_F(Images, AStartOffTheSteppingIsAskedAbout) {
    Time()->SetAnimStepNative(3);
    Time()->SetAnimInterpNative(2);
    Time()->SetWAMinNative(1);
    Time()->SetWAMaxNative(9);
    mAnswers = {false, false}; // keep the stepping, and the start
    ASSERT_TRUE(Render());
    EXPECT_TRUE(WasTold("The work area begins at frame 1, which the stepping of 3 leaves out"));
    EXPECT_EQ(Files().size(), 1u) << "as it was told";
    EXPECT_EQ(Time()->GetWAMin(), 1);
    mAnswers = {false, true};
    ASSERT_TRUE(Render());
    EXPECT_EQ(Time()->GetWAMin(), 3);
    EXPECT_GT(Files().size(), 3u);
    mVMessages.clear();
    mAnswers = {false};
    ASSERT_TRUE(Render());
    EXPECT_FALSE(WasTold("The work area begins"));
    Time()->SetAnimStepNative(1);
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
        Shared().msCFBOSizeIndex.mValue = 0;
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

TEST_F(Images, WideViewsAreWrittenAsAWindowOfTheirShapeShowsThem) {
    Time()->SetWAMaxNative(0);
    Shared().msCFBOSizeIndex.mValue = 2;
    std::vector<Point> points;
    for (int around = 0; around < 360; around += 45)
        for (const double polar : {20.0, 50.0, 84.0}) {
            Point point = Direction(polar, around + polar);
            for (double& x : point)
                x *= 4.0;
            points.push_back(point);
        }
    ShowParticles(points, 12);
    LookAlongX();
    Shared().mspCClrCurveOut->mConstantColor.mValue[2] = 1.0f; // what no dome covers
    SetBackground(0, 0.3f, 0);
    Canvas(0)->mGLPersAngle.mValue = 180.0f;
    for (const wxSize size : {wxSize(640, 480), wxSize(480, 640), wxSize(512, 288)}) {
        ASSERT_TRUE(SizeView(size.x, size.y));
        for (const std::string look : {"dome", "strip", "mesh"}) {
            if (look != "dome" && size.x != 480) continue;
            SCOPED_TRACE(look + " " + std::to_string(size.x) + " x " + std::to_string(size.y));
            Canvas(0)->SetGeometry(look == "strip" ? 3 : 2);
            Canvas(0)->mDistortion.mValue = look == "mesh";
            Repaint();
            const Picture_st shown = Grab(0);
            SetOutput("f%04d.png", size.x, size.y);
            ASSERT_TRUE(Render("Render Snap"));
            const wxImage image = Load("f0000.png");
            ASSERT_EQ(image.GetSize(), size);
            // One is drawn at its size with linear filtering, the other larger and brought to it with boxes.
            const double same = Differ(image.GetData(), shown.mRGB.data(), Bytes(image));
            const size_t aside = 3 * size_t(size.x) * 4; // rows
            const double moved = Differ(image.GetData() + aside, shown.mRGB.data(), Bytes(image) - aside);
            EXPECT_LT(same, 1.0);
            EXPECT_LT(2.0 * same, moved);
            if (look != "dome") continue;
            // The whole dome: its rim is at the picture's shorter sides.
            const int side = std::min(size.x, size.y);
            for (const int sign : {-1, 1})
                for (const int inside : {-4, 4}) {
                    const int away = sign * (side / 2 - inside);
                    const int x = size.x / 2 + (size.x > size.y ? away : 0);
                    const int y = size.y / 2 + (size.x > size.y ? 0 : away);
                    EXPECT_EQ(image.GetGreen(x, y) > 60, inside > 0) << x << " " << y;
                }
        }
    }
    Shared().mspCClrCurveOut->mConstantColor.mValue[2] = 0.0f;
    Canvas(0)->SetGeometry(0);
}

TEST_F(Images, SquareDomesAndPanoramasLeaveTheirCornersEmpty) {
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

} // namespace
