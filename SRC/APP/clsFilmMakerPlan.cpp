// What a film is made of and whither it goes: settled before its first frame.
#include "APP/clsFilmMaker.h"

#include <algorithm>

#include <wx/filename.h>

#include "APP/FilmTargets.h"
#include "APP/PictureProject.h"
#include "APP/ProjectInputs.h"
#include "APP/ProjectText.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFilmPov.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/Globals.h"
#include "COMMON/clsSplitPath.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsPDataSequence.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/Realize.h"

bool FilmMaker_cls::Open() {
    if (!mArgs.mVideo.empty() && FindVideoTool().empty())
        return Fail(FilmStatus::NotOpened, GetVideoToolHint());
    mpCFrame->OpenProject(mArgs.mProject);
    if (!mpCFrame->GetPCFileMenu()->IsProjectNamed())
        return Fail(FilmStatus::NotOpened, mArgs.mProject + " can't be opened");
    const PDataSequence_cls* sequence = mpCFrame->GetPCActiveFileSequence();
    if (sequence->GetStrPath().empty())
        return Fail(FilmStatus::NotOpened, mArgs.mProject + " names no particle data; is it a project?");
    if (sequence->GetSeqLength() <= 0)
        return Fail(FilmStatus::NotOpened, "the data of " + mArgs.mProject + " can't be opened: " +
                                               sequence->mCFileSequence.GetModifiedStr(0, 0));
    return true;
}

bool FilmMaker_cls::TakeView() {
    mpCCanvas = mpCFrame->GetPCGLCanvas(mArgs.mView);
    // OpenGL wants a window of the X server; it needn't be on the screen. The first view's shares its
    // textures.
    for (MainGLCanvas_cls* canvas : {mpCFrame->GetPCGLCanvas(0), mpCCanvas})
        if (!canvas || !canvas->HasGL() || !RealizeWindow(canvas))
            return Fail(FilmStatus::NotOpened,
                        "this display offers no OpenGL; install the packages libgl1 and libgl1-mesa-dri, or "
                        "unset DISPLAY");
    GpCurrentGLPanel = mpCCanvas;
    mpCFrame->GetPCSharedView()->mbFilm = true;
    mpCCanvas->mShowItems.mValue = false;
    return true;
}

bool FilmMaker_cls::TakeOutput() {
    ImgSequence_cls* sequence = mpCMain->mpCImgSequence;
    wxString output = mArgs.mOutput.empty() ? sequence->mCFileSequence.mStrPath : mArgs.mOutput;
    const wxString error = CheckFilmOutput(&output, mArgs);
    if (!error.empty()) return Fail(FilmStatus::WrongArguments, error);
    mNames.Set(output);
    mDataNames.Set(mArgs.mExport);
    if (mArgs.mW > 0) {
        sequence->mOutW = mArgs.mW;
        sequence->mOutH = mArgs.mH;
    }
    if (mArgs.mRate.empty()) mArgs.mRate = MakeVideoRate(sequence->mVideoRate);
    GCImgIO.mbQuiet = true;
    GCImgIO.mbSmallestPNG = sequence->mbSmallestPNG;
    return TakeOrigin();
}

// The project as its file has it: the same in all parts of the film, wherever they are made.
bool FilmMaker_cls::TakeOrigin() {
    std::wstring text;
    if (!mArgs.mbProvenance) return true;
    if (!mpCMain->LoadProjectText(mArgs.mProject, &text))
        return Fail(FilmStatus::NotOpened, mArgs.mProject + " can't be read again");
    mpOrigin = PackProject(EncodeProject(text));
    return true;
}

// Nothing is written before all of this is settled.
bool FilmMaker_cls::TakeTargets() {
    std::vector<wxString> inputs = ListProjectInputs(*mpCMain);
    inputs.push_back(mArgs.mProject);
    std::vector<FilmTarget_st> targets;
    size_t missing = 0;
    for (const FilmFrame_st& frame : mFilm) {
        for (const int eye : GetEyes()) {
            targets.push_back({mpCPov ? (mpCPov->IsRender() ? "--pov-render" : "--pov-export") : "--output",
                               GetPictureName(frame.mNumber, eye)});
            missing += !mArgs.mbResume || !wxFileName::FileExists(targets.back().mPath) ? 1 : 0;
        }
        if (mpCPov && mpCPov->IsRender())
            targets.push_back({"--pov-render", mpCPov->GetScene(frame.mNumber)});
        if (!mArgs.mExport.empty())
            targets.push_back({"--export-data", GetFilmName(mDataNames, frame.mNumber)});
    }
    const wxString first = targets.front().mPath;
    for (const int eye : GetEyes())
        if (!mArgs.mVideo.empty()) targets.push_back({"--video", GetEyePath(mArgs.mVideo, eye)});
    wxString error = CheckFilmTargets(inputs, targets);
    if (error.empty()) error = MakeFilmFolders(targets);
    const wxSize size = GetFileSize();
    const wxString ending = SplitPath_cls(first).mStrExt.Mid(1);
    if (error.empty() && ending != "pov")
        error =
            CheckFilmSpace(first, EstimateFilmBytes(ending, size.x, size.y, missing, mArgs.mbTransparent));
    if (!error.empty()) return Fail(FilmStatus::WrongArguments, error);
    RemoveFilmLeftovers(targets);
    return true;
}

bool FilmMaker_cls::TakeFrames() {
    wxString error;
    if (IsPovFilm(mArgs) && !mArgs.mbFrames) {
        TakePovRegion(&error);
        return error.empty() || Fail(FilmStatus::NotOpened, error);
    }
    if (!mArgs.mbFrames) {
        mFilm = ListFilm(*mpCTime, &error);
        return error.empty() || Fail(FilmStatus::NotOpened, error);
    }
    mFilm = ListFilmPart(*mpCTime, mArgs.mFirst, mArgs.mLast, mArgs.mStep, &error);
    if (!error.empty()) return Fail(FilmStatus::WrongArguments, "--frames: " + error);
    if (mArgs.mLast > mpCTime->GetMaxFrame())
        Note(wxString::Format("the film's last frame is %d", mpCTime->GetMaxFrame()));
    return true;
}

void FilmMaker_cls::TakeBlur() {
    MotionBlurCtrl_cls& blur = mpCTime->mCMotionBlur;
    if (mArgs.mbBlur) {
        blur.mShutter = mArgs.mBlurLength;
        blur.mBlurSteps = mArgs.mBlurSteps;
    }
    // Open for no time, it is the plain picture.
    blur.mbBlur = (mArgs.mbBlur || mpCTime->mbUseMotionBlur.mValue) && blur.mShutter > 0.0f;
}

// From the start of the work area, wherever this part of the film begins.
void FilmMaker_cls::TakeStereo() {
    if (mArgs.mStereo == FilmArgs_st::kProjectStereo) return;
    StereoGram_cls& stereo = *mpCMain->mpCStereoGram;
    if (mArgs.mStereo == FilmArgs_st::kStereoOff) {
        stereo.mCType.mValue = StereoGram_cls::TYPE_MONOGRAM;
        return;
    }
    if (stereo.GetType() == StereoGram_cls::TYPE_MONOGRAM)
        stereo.mCType.mValue = StereoGram_cls::TYPE_OFF_AXIS;
    stereo.mCEye.mValue = mArgs.mStereo;
    stereo.mCDualOutput.mValue = mArgs.mbStereoSeparate;
    mpCTime->SetFrameNative(mpCTime->GetWAMin(), 0);
    const double begin = mpCTime->GetDoubleIndex();
    if (stereo.mpCParallax->mVParams[0].mbTimeDepend.mValue || stereo.GetParallax(begin) != 0.0) return;
    mpCCanvas->mCamera.EvaluatePaths(begin);
    mpCCanvas->mCamera.UpdateCameraPos();
    stereo.Fit(mpCCanvas->mCamera.GetDistanceToAnchor());
    Note(wxString::Format("the eyes stand %g apart", stereo.GetParallax(begin)));
}

/// Of a picture file.
wxSize FilmMaker_cls::GetFileSize() const {
    const ImgSequence_cls* sequence = mpCMain->mpCImgSequence;
    const StereoGram_cls& stereo = *mpCMain->mpCStereoGram;
    const PovFormat_cls& format = mpCMain->mpCPovRayCtrl->mCFormat;
    if (mpCPov) return wxSize(format.mWidth.mValue, format.mHeight.mValue);
    wxSize size(sequence->mOutW, sequence->mOutH);
    if (mpCCanvas->IsAlongAxis() || !stereo.IsFull() || stereo.IsDualOutput()) return size;
    (stereo.IsAbove() ? size.y : size.x) *= 2;
    return size;
}

// What the window would ask about.
void FilmMaker_cls::NoteOddities() const {
    if (mpCCanvas->GetDisplayMode() < DISPLAY_PATH)
        Note(wxString::Format("view %d doesn't look through the project's camera", mArgs.mView));
    if (mpCTime->GetAnimStep() != 1 && mArgs.mStep == 0)
        Note(wxString::Format("the project's stepping leaves out frames: it is %d", mpCTime->GetAnimStep()));
    const int downSizing = mpCMain->mpCDrawOption->mDownSizing.mValue;
    if (downSizing != 1) Note(wxString::Format("particles are downsized: one of %d is drawn", downSizing));
    const int snapshots = mpCFrame->GetPCActiveFileSequence()->GetSeqLength();
    const auto pastData = std::find_if(mFilm.begin(), mFilm.end(), [&](const FilmFrame_st& frame) {
        return mpCTime->GetRemappedIndexDouble(frame.mFrame, frame.mStep) > double(snapshots - 1);
    });
    // Nobody asked for these: told whatever is to be said.
    if (pastData != mFilm.end())
        Complain(wxString::Format("note: there are %d snapshots; frames from %d on show the last one",
                                  snapshots, pastData->mFrame + (pastData->mStep > 0 ? 1 : 0)));
    const wxString early = mArgs.mbFrames ? wxString() : GetEarlyEnd(*mpCTime, mFilm, nullptr);
    if (!early.empty()) Complain("note: " + early);
}
