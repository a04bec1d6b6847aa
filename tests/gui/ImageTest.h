// Base of the tests of pictures that leave the program: an example, its dialog "Save Image Sequence", a
// folder for the files.
#pragma once

#include <cstring>
#include <filesystem>
#include <set>
#include <string>

#include <wx/image.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "PictureTest.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsDialogEXKey.h"

namespace fs = std::filesystem;

class ImageTest : public PictureTest {
protected:
    void SetUp() override {
        PictureTest::SetUp();
        OpenMelt(4);
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
