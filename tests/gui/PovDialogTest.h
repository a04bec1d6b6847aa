// Base of tests that have the dialog "Pov-Ray Rendering Configure" open, in front of a film of three frames.
#pragma once

#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "POVRAY/clsPovRayGUI.h"
#include "PictureTest.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFileDialogEX.h"

class PovDialogTest : public PictureTest {
protected:
    static void SetUpTestSuite() { Frame()->SetSize(900, 700); } // little to paint
    void SetUp() override {
        PictureTest::SetUp();
        OpenMelt(2);
        Reset();
        Menu(ID_POVRAY);
        mpGUI = dynamic_cast<PovRayGUI_cls*>(WaitForWindow("Pov-Ray Rendering Configure"));
        ASSERT_TRUE(mpGUI);
        mpGUI->UpdateValues();
        Settle();
    }
    void TearDown() override {
        wxFileDialogEX::sStrTestAnswer.clear();
        Pov().AbortRenderPovAnim();
        Pov().StopRenderer();
        if (Time()->IsPlaying()) Menu(ID_PLAY_STOP);
        Reset();
        mpGUI->CloseEXKey();
        PictureTest::TearDown();
    }
    void Reset() {
        Pov().SetToDefault();
        Pov().mPathPovRay.mStrValue = "/usr/bin/povray";
        Pov().mPathPovWork.mStrValue = wxString::FromUTF8(mDir.mPath.string());
        Pov().mFilePovSnap.mStrValue = "povsnap%04d";
        Pov().mFilePovAnim.mStrValue = "povanim%04d";
        Pov().mSnapNumber = Pov().mAnimInitNumber = 0;
        Pov().mCFormat.mWidth.mValue = 64;
        Pov().mCFormat.mHeight.mValue = 48;
        Pov().mCFormat.mDisplay.mValue = false;
    }
    static PovRayCtrl_cls& Pov() { return *Hub()->mpCPovRayCtrl; }
    void PressButton(const wxString& label) {
        wxWindow* button = FindByLabel(mpGUI, label);
        ASSERT_TRUE(button) << label;
        ASSERT_TRUE(button->IsEnabled()) << label;
        ClickOn(button);
        Arrive(false);
    }
    bool HasButton(const wxString& label) const { return FindByLabel(mpGUI, label) != nullptr; }
    static bool WaitForEnd() {
        return PumpUntil([] { return !Pov().IsBusy(); }, 60000);
    }
    std::set<std::string> Files(const std::string& ending = "") const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(mDir.mPath))
            if (ending.empty() || entry.path().extension() == ending)
                names.insert(entry.path().filename().string());
        return names;
    }
    std::string ReadFile(const std::string& name) const {
        std::ifstream file(mDir / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    /// In the place of POV-Ray; it runs in the folder and is given the .ini.
    void Pretend(const std::string& script) {
        const std::string path = mDir / "renderer";
        std::ofstream(path) << "#!/bin/sh\nbase=\"${1%.ini}\"\n" << script << "\n";
        chmod(path.c_str(), 0755);
        Pov().mPathPovRay.mStrValue = wxString::FromUTF8(path);
        mpGUI->UpdateValues();
    }
    void Go(const std::string& name) { std::ofstream(mDir / name) << "x"; }

    PovRayGUI_cls* mpGUI = nullptr;
};
