// The film maker's films through POV-Ray: which frames, how they are drawn for their scenes, and what becomes
// of them.
#include "APP/clsFilmMaker.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "APP/FilmGuard.h"
#include "APP/FilmProgress.h"
#include "APP/FilmStop.h"
#include "APP/clsFilmPov.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kDrawnSide = 64; // pixels: nobody sees it

} // namespace

// The frames that the project's dialog would render.
void FilmMaker_cls::TakePovRegion(wxString* pError) {
    const PovRayCtrl_cls& ctrl = *mpCMain->mpCPovRayCtrl;
    if (ctrl.GetRegionType() == PovRender_cls::REGION_ALL)
        mFilm = ListFilmPart(*mpCTime, 0, mpCTime->GetMaxFrame(), 0, pError);
    else if (ctrl.GetRegionType() == PovRender_cls::REGION_CUSTOM)
        mFilm = ListFilmPart(*mpCTime, std::min(ctrl.GetRegionInit(), mpCTime->GetMaxFrame()),
                             std::max(ctrl.GetRegionInit(), ctrl.GetRegionFin()), 0, pError);
    else
        mFilm = ListFilm(*mpCTime, pError);
}

bool FilmMaker_cls::TakePov() {
    mpCPov = std::make_unique<FilmPov_cls>(*mpCMain, mArgs);
    mpCPov->mOnDone = [this](size_t i, const wxString& error) { EndPovFrame(i, error); };
    MotionBlurCtrl_cls& blur = mpCTime->mCMotionBlur;
    if (!mpCPov->IsRender() && blur.mbBlur) {
        blur.mbBlur = false;
        Note("the scenes are of one moment each; --pov-render makes pictures with motion blur");
    }
    bool bMissing = false;
    const wxString error = mpCPov->Prepare(blur.mbBlur ? blur.mBlurSteps : 1, &bMissing);
    if (!error.empty()) return Fail(bMissing ? FilmStatus::NotOpened : FilmStatus::WrongArguments, error);
    mDataNames.Set(mArgs.mExport);
    if (mArgs.mRate.empty()) mArgs.mRate = MakeVideoRate(mpCMain->mpCImgSequence->mVideoRate);
    if (mpCMain->mpCLightSRCCtrl->GetNumberLightVisible() == 0) Note("there is no light in the scene");
    return true;
}

/// Of the picture that a scene is made behind: the shape of the rendered one, for the camera's angle.
wxSize FilmMaker_cls::GetDrawnSize() const {
    const ImgSequence_cls* sequence = mpCMain->mpCImgSequence;
    if (!mpCPov) return wxSize(sequence->mOutW, sequence->mOutH);
    const PovFormat_cls& format = mpCMain->mpCPovRayCtrl->mCFormat;
    const double scale = double(kDrawnSide) / std::max(format.mWidth.mValue, format.mHeight.mValue);
    return wxSize(std::max(int(std::lround(format.mWidth.mValue * scale)), 1),
                  std::max(int(std::lround(format.mHeight.mValue * scale)), 1));
}

// Of the whole film, whichever part of it is made here.
FilmFrame_st FilmMaker_cls::FindPovFirst() {
    wxString error;
    const std::vector<FilmFrame_st> part = mFilm;
    TakePovRegion(&error);
    const FilmFrame_st first = mFilm.empty() ? part.front() : mFilm.front();
    mFilm = part;
    return first;
}

bool FilmMaker_cls::MakePovFirst() {
    if (mFilm.empty()) return true;
    const std::vector<FilmFrame_st> part = mFilm;
    const FilmFrame_st first = FindPovFirst();
    mpCPov->SetFirst(first.mNumber);
    const bool bThere = std::any_of(part.begin(), part.end(), [&first](const FilmFrame_st& frame) {
        return frame.mNumber == first.mNumber;
    });
    if (mpCPov->IsLightKept() && !mpCPov->IsRender() && !bThere)
        Note(wxString::Format("rendering these scenes needs the light that the scene of frame %d leaves",
                              first.mNumber));
    if (!mpCPov->NeedsFirst()) return true;
    mFilm = {first};
    mpCTime->SetInterpStepNative(first.mStep, 0);
    mpCTime->SetFrameNative(first.mFrame, 0);
    mpCFrame->TellPresent();
    const bool bBlur = std::exchange(mpCTime->mCMotionBlur.mbBlur, false);
    mpCCanvas->RequestImage([](const ImageBuffers_st&, wxSize) {}, GetDrawnSize(), mArgs.mbTransparent);
    WaitForData();
    wxString error = FindMissing();
    if (error.empty() && FollowBonds(GetPictureName(first.mNumber, EYE_NONE))) error = DrawStep();
    if (error.empty() && !IsFilmStopped()) error = mpCPov->MakeFirst(mpCCanvas);
    mpCTime->mCMotionBlur.mbBlur = bBlur;
    mFilm = part;
    if (error.empty() || IsFilmStopped()) return !IsFilmStopped();
    ++mFailures;
    error.Replace("\n", " ");
    Complain("what the other frames need of the film's first one can't be made: " + error);
    return false;
}

void FilmMaker_cls::EndPovFrame(size_t i, const wxString& error) {
    mpCProgress->Count(true);
    if (error.empty()) {
        mSPovDone.insert(i);
        TellGuardSettled(i);
    } else {
        mMFrameOfPath[GetPictureName(mFilm[i].mNumber, EYE_NONE)] = i;
        FailFrame(GetPictureName(mFilm[i].mNumber, EYE_NONE), error);
    }
}

// Pictures in the film's order, in whichever they were finished.
void FilmMaker_cls::EndPov() {
    mpCPov->Finish();
    mVDone[EYE_NONE].clear();
    for (const size_t i : mSPovDone)
        mVDone[EYE_NONE].push_back(GetPictureName(mFilm[i].mNumber, EYE_NONE));
}
