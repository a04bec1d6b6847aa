// The dialog of image sequences, snapshots of a view, the clipboard, clear backgrounds.
#include <wx/bitmap.h>
#include <wx/choice.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>

#include "GL/DRAW/clsDrawOption.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsNumField.h"

#include "ImageTest.h"

namespace {

class Snapshots : public ImageTest {};

TEST_F(Snapshots, QuestionsChangeWhatTheyAskFor) {
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

TEST_F(Snapshots, ANameWithoutANumberIsAskedAbout) {
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
    ASSERT_TRUE(PumpUntil([this] { return Files().size() == 1; }) && Finish());
    EXPECT_EQ(Files(), std::set<std::string>{"plain0000.png"});
    SetOutput("single.png", 32, 32);
    ASSERT_TRUE(Render("Render Snap"));
    EXPECT_TRUE(Load("single.png").IsOk());
}

TEST_F(Snapshots, SizesAreChosenOrTypedAndUndone) {
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

TEST_F(Snapshots, ASnapshotIsTheWindowWithoutMessages) {
    Canvas(0)->mShowMessage.mValue = true;
    Menu(ID_REFRESH_GL);
    const Picture_st shown = Grab(0);
    wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(mDir / "snapshot.png");
    Menu(ID_SAVE_IMAGE_SNAP);
    GCImgIO.Finish();
    const wxImage image = Load("snapshot.png");
    ASSERT_EQ(image.GetSize(), wxSize(shown.mW / 8 * 8, shown.mH));
    int differ = 0;
    for (int y = 42; y < shown.mH - 42; ++y) // messages and their rims stand above and below
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

TEST_F(Snapshots, TheViewGoesToTheClipboard) {
    // An earlier dialog may still be going, and would take the keys.
    ASSERT_TRUE(PumpUntil([] {
        Canvas(0)->SetFocus();
        return Frame()->IsActive() && wxWindow::FindFocus() == Canvas(0);
    }));
    Key('C', wxMOD_CONTROL | wxMOD_SHIFT);
    wxBitmapDataObject data;
    ASSERT_TRUE(PumpUntil([&data] {
        wxClipboardLocker clipboard;
        return !!clipboard && wxTheClipboard->IsSupported(wxDF_BITMAP) && wxTheClipboard->GetData(data);
    }));
    const wxImage image = data.GetBitmap().ConvertToImage();
    const Picture_st shown = Grab(0);
    ASSERT_EQ(image.GetSize(), wxSize(shown.mW, shown.mH));
    EXPECT_LT(Differ(image.GetData(), shown.mRGB.data(), Bytes(image)), 0.01);
    EXPECT_GT(CountLit(image), 100);
}

TEST_F(Snapshots, AClearBackgroundLetsThroughWhatNothingCovers) {
    SetBackground(0.0f, 0.0f, 1.0f); // must not be in the file
    const wxString path = wxString::FromUTF8(mDir / "clear.png");
    bool bTaken = false;
    Canvas(0)->RequestImage(
        [&](const ImageBuffers_st& buffers, wxSize size) {
            GCImgIO.SaveImageFromTexture(buffers, size.x, size.y, path);
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

TEST_F(Snapshots, SettingsOfTheDialogAreTheProjects) {
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
