#include "APP/clsFilmMaker.h"

#include <algorithm>
#include <cstdio>
#include <new>

#include <wx/filename.h>

#include "APP/FilmGuard.h"
#include "APP/FilmProgress.h"
#include "APP/FilmStop.h"
#include "APP/FilmTargets.h"
#include "APP/PictureProject.h"
#include "APP/ProjectInputs.h"
#include "APP/ProjectText.h"
#include "APP/clsFilmPov.h"
#include "APP/clsCopyQuestion.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/PictureFault.h"
#include "COMMON/ThreadStates.h"
#include "COMMON/clsSplitPath.h"
#include "GL/BASE/DrawWay.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "IMAGE/ImageCheck.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "IMAGE/clsVideoMaker.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/Realize.h"

namespace {

/// OpenGL and its compiler end the process where they get none.
constexpr size_t kBytesOfPicture = size_t(128) << 20;

} // namespace

FilmMaker_cls::FilmMaker_cls(Main_cls* pMain, const FilmArgs_st& args, FilmProgress_cls* pProgress)
    : mpCMain(pMain), mpCFrame(pMain->mpCFrameMain), mpCTime(pMain->mpCTimeCtrl), mArgs(args),
      mpCProgress(pProgress) {
    mpCFrame->GetCopyQuestion().TellOnly();
}

FilmMaker_cls::~FilmMaker_cls() = default;

FilmStatus FilmMaker_cls::Run() {
    // A stop is told by the caller.
    if (IsFilmStopped() || !Open() || IsFilmStopped()) return mStatus;
    if (!mArgs.mWriteProject.empty()) {
        if (!mpCMain->SaveProjectFile(mArgs.mWriteProject, true))
            Fail(FilmStatus::WrongArguments, "--write-project: " + mArgs.mWriteProject + " can't be written");
        return mStatus;
    }
    if (!TakeView() || !TakeFrames()) return mStatus;
    TakeStereo();
    TakeBlur();
    if (!(IsPovFilm(mArgs) ? TakePov() : TakeOutput()) || !TakeTargets()) return mStatus;
    NoteOddities();
    MakeFrames();
    if (!mArgs.mVideo.empty() && !IsFilmStopped()) MakeVideo();
    return mStatus;
}

bool FilmMaker_cls::Fail(FilmStatus status, const wxString& text) {
    Complain(text);
    mStatus = status;
    return false;
}

void FilmMaker_cls::Complain(const wxString& text) const {
    mpCProgress->ClearBar();
    std::fprintf(stderr, "morentis-film: %s\n", static_cast<const char*>(text.utf8_str()));
}

void FilmMaker_cls::Note(const wxString& text) const {
    if (!mArgs.mbQuiet) Complain("note: " + text);
}

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

void FilmMaker_cls::MakeFrames() {
    TellGuardFilm(mFilm);
    TellGuard(GuardWord::Begun);
    mWatch.Start();
    mpCProgress->Begin(int(mFilm.size()));
    const bool bFirst = !mpCPov || MakePovFirst();
    for (size_t i = 0; bFirst && i < mFilm.size() && !IsFilmStopped(); ++i)
        MakeFrame(i);
    if (mpCPov) EndPov();
    GCImgIO.Finish();
    TakeFailures();
    TellWritten(mWriting);
    GCImgIO.DropSpare();
    mLoopMillis = mWatch.Time();
    wxString text = wxString::Format("%d frames in %.1f s", mpCProgress->GetDrawn() - int(mSLost.size()),
                                     double(mLoopMillis) / 1000.0);
    if (mpCProgress->GetKept() > 0) text += wxString::Format(", %d were there", mpCProgress->GetKept());
    if (mFailures > 0) text += wxString::Format(", %d failed", mFailures);
    if (IsFilmStopped()) text += ", stopped";
    mpCProgress->Say(text.utf8_string());
    if (mFailures > 0) mStatus = FilmStatus::SomeFailed;
    TellDamage();
}

/// The files of a frame are for these: one for both eyes, or one each.
std::vector<int> FilmMaker_cls::GetEyes() const {
    if (mpCCanvas->IsAlongAxis() || !mpCMain->mpCStereoGram->IsDualOutput()) return {EYE_NONE};
    return {EYE_LEFT, EYE_RIGHT};
}

/// What a frame ends as: a picture, or a scene.
wxString FilmMaker_cls::GetPictureName(int number, int eye) const {
    if (!mpCPov) return GetFilmName(mNames, number, eye);
    return mpCPov->IsRender() ? mpCPov->GetPicture(number) : mpCPov->GetScene(number);
}

std::vector<wxString> FilmMaker_cls::GetPictures(size_t i) const {
    std::vector<wxString> paths;
    for (const int eye : GetEyes())
        paths.push_back(GetPictureName(mFilm[i].mNumber, eye));
    return paths;
}

bool FilmMaker_cls::IsPictureThere(const wxString& path) const {
    const wxSize size = GetFileSize();
    return IsWholeImage(path, size.x, size.y, mArgs.mbTransparent) &&
           (!mpOrigin || IsPictureWithProject(path));
}

void FilmMaker_cls::MakeFrame(size_t i) {
    const std::vector<wxString> paths = GetPictures(i);
    const std::vector<int> eyes = GetEyes();
    const wxString data = mArgs.mExport.empty() ? wxString() : GetFilmName(mDataNames, mFilm[i].mNumber);
    if (mArgs.mbResume && (data.empty() || wxFileName::FileExists(data)) &&
        std::all_of(paths.begin(), paths.end(), [&](const wxString& path) {
            return mpCPov ? mpCPov->IsFrameThere(mFilm[i].mNumber) : IsPictureThere(path);
        })) {
        for (size_t k = 0; k < paths.size(); ++k)
            mVDone[eyes[k]].push_back(paths[k]);
        mSPovDone.insert(i);
        mpCProgress->Count(false);
        TellGuardSettled(i);
        return;
    }
    const std::vector<wxString>& whole = mVDone[eyes.back()];
    const size_t done = whole.size();
    mbHandedOn = false;
    try {
        // Stopped; what was whole by then counts.
        if (!DrawFrame(i, paths.front()) && whole.size() == done) return;
    } catch (const std::bad_alloc&) {
        FailFrame(paths.front(), "memory is too short for it");
    }
    DropBehind(i);
    if (mbHandedOn) return; // it counts when it is rendered
    mpCProgress->Count(true);
    TakeFailures();
    TellWritten(mWritten);
    NoteSpace(mFilm.size() - 1 - i);
}

// A picture whose file is finished; what was wrong with it has been told.
void FilmMaker_cls::TellWritten(int i) const {
    if (i >= 0) TellGuardSettled(size_t(i));
}

// What the first picture takes tells more than any guess did before it.
void FilmMaker_cls::NoteSpace(size_t pictures) {
    const std::vector<int> eyes = GetEyes();
    const std::vector<wxString>& done = mVDone[eyes.front()];
    if (mbSpaceNoted || done.empty() || !wxFileName::FileExists(done.front())) return;
    mbSpaceNoted = true;
    const double bytes = wxFileName::GetSize(done.front()).ToDouble();
    const wxString text = CheckFilmSpace(done.front(), bytes * double(pictures * eyes.size()));
    if (!text.empty()) Complain("note: " + text + ", going by the first picture");
}

bool FilmMaker_cls::DrawFrame(size_t i, const wxString& path) {
    const wxString data = mArgs.mExport.empty() ? wxString() : GetFilmName(mDataNames, mFilm[i].mNumber);
    mMFrameOfPath[data] = i;
    for (const wxString& picture : GetPictures(i))
        mMFrameOfPath[picture] = i;
    mpCTime->SetInterpStepNative(mFilm[i].mStep, 0);
    mpCTime->SetFrameNative(mFilm[i].mFrame, 0);
    mpCFrame->TellPresent();
    mpCMain->mpCPDataSeqCtrl->CleanUpMemory(mpCTime->GetRemappedIndex(-1), mpCTime->GetDataStep());
    TakePictureFault(); // another frame's
    mpCCanvas->RequestImage(
        [this, i](const ImageBuffers_st& buffers, wxSize size) {
            if (!mpCPov) Save(buffers, size, GetFilmName(mNames, mFilm[i].mNumber, buffers.mEye));
        },
        GetDrawnSize(), mArgs.mbTransparent);
    MotionBlurCtrl_cls& blur = mpCTime->mCMotionBlur;
    const int steps = blur.mbBlur ? blur.mBlurSteps : 1;
    for (int step = 0; step < steps; ++step) {
        blur.mBlurStep = blur.mbBlur ? step : 0;
        WaitForData();
        if (IsFilmStopped()) return false;
        const wxString missing = FindMissing();
        if (!missing.empty()) {
            FailFrame(path, missing);
            return true;
        }
        NoteDamage(mFilm[i].mFrame);
        if (step == 0 && !(FollowBonds(path) && FollowParticle(path))) return !IsFilmStopped();
        if (step == 0 && !data.empty()) ExportFrame(data);
        ReadAhead(i);
        wxString fault = DrawStep();
        if (fault.empty() && mpCPov && !IsFilmStopped())
            fault = mpCPov->WriteStep(mpCCanvas, i, mFilm[i].mNumber, step);
        if (fault.empty()) continue;
        FailFrame(path, fault);
        return true;
    }
    NoteFilterFaults(mFilm[i].mFrame);
    if (!mpCPov || IsFilmStopped()) return !IsFilmStopped();
    mbHandedOn = true;
    mpCPov->Render(i, mFilm[i].mNumber);
    return !IsFilmStopped();
}

/// What is wrong with the picture that comes of it; empty: nothing.
wxString FilmMaker_cls::DrawStep() {
    const MillisScope_cls time(mWatch, &mDrawMillis);
    if (!PDataSeqCtrl_cls::MakeRoom(kBytesOfPicture)) return "memory is too short for OpenGL";
    const bool bDrawn = mpCCanvas->DrawImage();
    if (!mbWayTold) mpCProgress->Say(GetDrawWayText().utf8_string());
    mbWayTold = true;
    const wxString fault = TakePictureFault();
    if (!fault.empty() || IsFilmStopped()) return fault;
    return bDrawn ? FindMissing() : wxString("it can't be drawn");
}

// Of the picture that a paint has finished. What a stop has cut short is no picture.
void FilmMaker_cls::Save(const ImageBuffers_st& buffers, wxSize size, const wxString& path) {
    if (HasGLRunOutOfMemory()) TellPictureFault("memory is too short for OpenGL");
    if ((IsFilmStopped() && buffers.mEye != EYE_RIGHT) || HasPictureFault()) return;
    {
        const MillisScope_cls time(mWatch, &mFileMillis);
        GCImgIO.Finish();
    }
    const int frame = int(mMFrameOfPath[path]);
    if (mWriting != frame) mWritten = mWriting; // the eyes of a frame are finished together
    mWriting = frame;
    mVDone[buffers.mEye].push_back(path);
    GCImgIO.SaveImageFromTexture(buffers, size.x, size.y, path, MakeImageOrigin(mpOrigin, *mpCTime));
}

void FilmMaker_cls::TakeFailures() {
    for (const ImageFailure_st& failure : GCImgIO.TakeFailures())
        FailFrame(failure.mPath, failure.mReason);
}

void FilmMaker_cls::FailFrame(const wxString& path, const wxString& reason, bool bPicture) {
    ++mFailures;
    if (bPicture) mSLost.insert(mMFrameOfPath[path]);
    wxString line = reason;
    line.Replace("\n", " ");
    const FilmFrame_st& frame = mFilm[mMFrameOfPath[path]];
    const wxString step = frame.mStep > 0 ? wxString::Format(" step %d", frame.mStep) : wxString();
    Complain(wxString::Format("frame %d%s, %s: %s", frame.mFrame, step, path, line));
    if (bPicture) TellGuardSettled(mMFrameOfPath[path]);
}

void FilmMaker_cls::MakeVideo() {
    for (const int eye : GetEyes())
        if (!IsFilmStopped()) MakeVideoOf(eye);
}

void FilmMaker_cls::MakeVideoOf(int eye) {
    const wxString path = GetEyePath(mArgs.mVideo, eye);
    const wxString what = "the video " + path + " isn't made: ";
    if (!mSLost.empty()) {
        Fail(FilmStatus::SomeFailed, what + "pictures are missing");
        return;
    }
    VideoMaker_cls maker;
    maker.Start({mVDone[eye], path, mArgs.mRate, mArgs.mbTransparent,
                 mpCCanvas->IsAlongAxis() ? VideoStereo::None : GetVideoStereo(*mpCMain->mpCStereoGram)});
    maker.Wait([] { return IsFilmStopped(); });
    if (maker.GetError().empty())
        mpCProgress->Say("video " + path.utf8_string());
    else
        Fail(FilmStatus::SomeFailed, what + maker.GetError());
}

std::string FilmMaker_cls::GetTiming() const {
    const auto seconds = [](long millis) { return double(millis) / 1000.0; };
    char text[200];
    std::snprintf(text, sizeof(text), "timing: frames=%d loop=%.3f draw=%.3f data=%.3f files=%.3f",
                  mpCProgress->GetDrawn(), seconds(mLoopMillis), seconds(mDrawMillis - mFileMillis),
                  seconds(mDataMillis), seconds(mFileMillis));
    return text;
}
