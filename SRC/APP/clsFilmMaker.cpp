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
#include "APP/clsFilmPov.h"
#include "APP/clsCopyQuestion.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/PictureFault.h"
#include "COMMON/WorkTimes.h"
#include "GL/BASE/DrawWay.h"
#include "GL/BASE/clsGLState.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "IMAGE/ImageCheck.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsVideoMaker.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

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
    return text + (" " + GetWorkTimes());
}
