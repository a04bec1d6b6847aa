#include "APP/clsFilmPov.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/utils.h>

#include "APP/FilmArgs.h"
#include "APP/FilmPovFiles.h"
#include "APP/FilmStop.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsPovScene.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsSplitPath.h"
#include "PDATA/clsPDataSequence.h"
#include "POVRAY/LikeDrawn.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsStereoGram.h"

namespace {

constexpr unsigned long kPollMillis = 20;

bool IsProgram(const wxString& path) { return wxFileName::FileExists(path) && wxIsExecutable(path); }

/// Where a shell would find it; empty when it wouldn't.
wxString FindOnPath(const wxString& name) {
    wxPathList folders;
    folders.AddEnvList("PATH");
    return folders.FindAbsoluteValidPath(name);
}

void Remove(const wxString& path) { unlink(NarrowPath(path).c_str()); }

/// "NAME-LETTERS" that no other process has, on whichever machine: by its .ini, which is there then. Empty:
/// nothing can be made there.
wxString MakeOwnName(const wxString& folder, const std::string& name) {
    std::string path = NarrowPath(folder) + name + "-XXXXXX.ini";
    const int file = mkstemps(path.data(), 4);
    if (file < 0) return wxString();
    close(file);
    const size_t at = path.rfind('/') + 1;
    return path.substr(at, path.size() - at - 4);
}

} // namespace

FilmPov_cls::FilmPov_cls(Main_cls& hub, const FilmArgs_st& args)
    : mHub(hub), mCtrl(*hub.mpCPovRayCtrl), mArgs(args), mbRender(!args.mPovRender.empty()) {}

FilmPov_cls::~FilmPov_cls() { StopAll(); }

wxString FilmPov_cls::Prepare(int steps, bool* pbMissing) {
    mSteps = mbRender ? steps : 1;
    PovFormat_cls& format = mCtrl.mCFormat;
    mCtrl.mPathPovWork.mStrValue = mbRender ? mArgs.mPovRender : mArgs.mPovExport;
    format.mDisplay.mValue = format.mPauseWhenDone.mValue = false;
    if (mArgs.mW > 0) {
        format.mWidth.mValue = mArgs.mW;
        format.mHeight.mValue = mArgs.mH;
    }
    if (mArgs.mbTransparent) format.mOutputAlpha.mValue = true;
    StereoGram_cls& stereo = *mHub.mpCStereoGram;
    if (stereo.IsStereo()) stereo.mCType.mValue = StereoGram_cls::TYPE_MONOGRAM; // a file a frame
    const wxString name = mCtrl.GetNameProblem(PovRayCtrl_cls::FILE_ANIM);
    if (!name.empty()) return "FilePovAnim=: " + name;
    mbPretrace = mCtrl.GetPretraceOfFrame() >= 0;
    mCtrl.mbCommonSceneWritten = false;
    const wxString ending = format.GetPictureEnding();
    if (mArgs.mbTransparent && !format.HasAlpha())
        return "--transparent: \"" + ending.Mid(1) + "\" files keep no transparency (PovOutputFomat=)";
    if (!mbRender) return wxString();
    if (!format.GetRefusal().empty()) return "PovOutputFomat=: " + format.GetRefusal();
    if (mSteps > 1 && ending != ".png" && ending != ".jpg")
        return "motion blur needs pictures as PNG or JPEG; the project has " + ending.Mid(1) +
               " (PovOutputFomat=)";
    wxString& exe = mCtrl.mPathPovRay.mStrValue;
    if (!IsProgram(exe)) exe = FindOnPath("povray");
    if (!exe.empty()) return wxString();
    *pbMissing = true;
    return "POV-Ray is not there; install the package povray (apt-get install povray), or let PathPovRay= "
           "name it";
}

wxString FilmPov_cls::GetBase(int number, int step) const {
    const wxString base = mCtrl.GetFrameFileStr(0, number);
    return mSteps > 1 ? base + wxString::Format("-blur%03d", step) : base;
}

wxString FilmPov_cls::GetScene(int number) const { return mCtrl.GetFrameFileStr(0, number) + ".pov"; }

wxString FilmPov_cls::GetPicture(int number) const {
    return mCtrl.GetFrameFileStr(0, number) + mCtrl.mCFormat.GetPictureEnding();
}

bool FilmPov_cls::IsFrameThere(int number) const {
    const PovFormat_cls& format = mCtrl.mCFormat;
    if (!mbRender)
        return wxFileName::FileExists(GetScene(number)) &&
               wxFileName::FileExists(GetBase(number, 0) + ".ini");
    return IsWholePovPicture(GetPicture(number), format.mWidth.mValue, format.mHeight.mValue,
                             format.mOutputAlpha.mValue && format.HasAlpha());
}

wxString FilmPov_cls::WriteScene(MainGLCanvas_cls* pCanvas, const wxString& base, int pretrace) {
    const wxString failed = base + ".pov can't be written";
    PovScene_cls scene(mHub, pCanvas);
    const wxString question = scene.GetMemoryQuestion();
    if (!question.empty()) { // nobody is there to answer
        Notice("pov-ray memory", question);
        scene.AllowMemory();
    }
    if (!mCtrl.OutputPovRayIni(base + ".ini", pretrace)) return failed;
    const wxString include = mCtrl.GetFileStr(PovRayCtrl_cls::FILE_COMMON_SCENE, 0, -1);
    return scene.OutputPovRayPov(base + ".pov", include, mCtrl.GetCommonScenePath()) ? wxString() : failed;
}

/// What several threads find of light depends on which is faster.
bool FilmPov_cls::NeedsOneThread() const {
    return mCtrl.mCRadiosity.mType.mValue != PovRadiosity_cls::TYPE_NONE || mCtrl.mCPhotons.mType.mValue != 0;
}

bool FilmPov_cls::NeedsPretrace() const {
    return mbRender && mbPretrace && !(mArgs.mbResume && wxFileName::FileExists(mCtrl.GetPretracePath()));
}

bool FilmPov_cls::NeedsCommonScene() const {
    return mCtrl.mUseCommonSceneFile.mValue &&
           mHub.mpCFrameMain->GetPCActiveFileSequence()->GetSeqLength() == 1;
}

bool FilmPov_cls::NeedsFirst() const { return NeedsPretrace() || NeedsCommonScene(); }

void FilmPov_cls::SetFirst(int number) { mCtrl.mAnimInitNumber = number; }

wxString FilmPov_cls::MakeFirst(MainGLCanvas_cls* pCanvas) {
    const wxString common = mCtrl.GetCommonScenePath();
    if (NeedsCommonScene() && !PovScene_cls(mHub, pCanvas).OutputPovRayCommonScene(common))
        return common + " can't be written";
    return NeedsPretrace() ? MakePretrace(pCanvas) : wxString();
}

// Other parts of the film may be doing the same at this moment: a name of its own until it is whole.
wxString FilmPov_cls::MakePretrace(MainGLCanvas_cls* pCanvas) {
    const wxString folder = mCtrl.GetWorkingDirWithSep(true);
    const wxString name = MakeOwnName(folder, "pretrace");
    if (name.empty()) return "nothing can be written in " + folder;
    const wxString light = folder + name + ".rca";
    const bool bFilm = std::exchange(mCtrl.mKeepFirstPretrace.mValue, false);
    const unsigned reuse =
        std::exchange(mCtrl.mCRadiosity.mReuse.mValue, unsigned(PovRadiosity_cls::REUSE_SAVE));
    const wxString path = std::exchange(mCtrl.mCRadiosity.mPath.mStrValue, name + ".rca");
    wxString error = WriteScene(pCanvas, folder + name, -1);
    mCtrl.mKeepFirstPretrace.mValue = bFilm;
    mCtrl.mCRadiosity.mReuse.mValue = reuse;
    mCtrl.mCRadiosity.mPath.mStrValue = path;
    PovJob_cls job;
    job.MakeReproducible(true);
    const wxString ending = mCtrl.mCFormat.GetPictureEnding();
    if (error.empty() && job.Start(mCtrl.mPathPovRay.mStrValue, folder + name, ending))
        while (job.IsRunning() && !job.Poll()) {
            if (IsFilmStopped()) job.Stop();
            wxMilliSleep(kPollMillis);
        }
    if (error.empty()) error = job.GetError();
    if (error.empty() &&
        std::rename(NarrowPath(light).c_str(), NarrowPath(mCtrl.GetPretracePath()).c_str()) != 0)
        error = mCtrl.GetPretracePath() + " is not there";
    for (const wxString& one : {wxString(".pov"), wxString(".ini"), wxString(".rca"), ending})
        Remove(folder + name + one);
    return error;
}

wxString FilmPov_cls::WriteStep(MainGLCanvas_cls* pCanvas, size_t, int number, int step) {
    int pretrace = -1;
    if (mbPretrace && mbRender) {
        pretrace = PovRadiosity_cls::REUSE_LOAD;
    } else if (mbPretrace) {
        mCtrl.mAnimNumber = number;
        pretrace = mCtrl.GetPretraceOfFrame();
    }
    const wxString base = GetBase(number, step);
    if (mSteps > 1) mSSteps.insert(base);
    return WriteScene(pCanvas, base, pretrace);
}

void FilmPov_cls::Render(size_t i, int number) {
    if (!mbRender) {
        mOnDone(i, wxString());
        return;
    }
    auto frame = std::make_shared<Frame_st>();
    frame->mIndex = i;
    frame->mNumber = number;
    frame->mLeft = size_t(mSteps);
    for (int step = 0; step < mSteps; ++step) {
        frame->mBases.push_back(GetBase(number, step));
        mWaiting.push_back({frame, frame->mBases.back(), nullptr});
    }
    StartJobs();
    while (!mWaiting.empty() && !IsFilmStopped()) {
        wxMilliSleep(kPollMillis);
        PollJobs();
    }
}

void FilmPov_cls::StartJobs() {
    while (!mWaiting.empty() && mRunning.size() < size_t(std::max(mArgs.mJobs, 1)) && !IsFilmStopped()) {
        Work_st work = std::move(mWaiting.front());
        mWaiting.pop_front();
        work.mpJob = std::make_unique<PovJob_cls>();
        work.mpJob->MakeReproducible(NeedsOneThread());
        if (work.mpJob->Start(mCtrl.mPathPovRay.mStrValue, work.mBase, mCtrl.mCFormat.GetPictureEnding()))
            mRunning.push_back(std::move(work));
        else
            EndJob(work);
    }
}

void FilmPov_cls::PollJobs() {
    for (size_t k = 0; k < mRunning.size();) {
        if (!mRunning[k].mpJob->Poll()) {
            ++k;
            continue;
        }
        Work_st work = std::move(mRunning[k]);
        mRunning.erase(mRunning.begin() + long(k));
        EndJob(work);
    }
    StartJobs();
}

void FilmPov_cls::EndJob(Work_st& work) {
    Frame_st& frame = *work.mpFrame;
    if (frame.mError.empty()) frame.mError = work.mpJob->GetError();
    if (--frame.mLeft == 0) EndFrame(frame);
}

void FilmPov_cls::EndFrame(Frame_st& frame) {
    const wxString ending = mCtrl.mCFormat.GetPictureEnding();
    const wxString picture = GetPicture(frame.mNumber);
    if (mSteps > 1) {
        std::vector<wxString> pictures;
        for (const wxString& base : frame.mBases)
            pictures.push_back(base + ending);
        if (frame.mError.empty()) frame.mError = AveragePictures(pictures, picture);
        for (const wxString& base : frame.mBases)
            RemoveStep(base);
    } else if (frame.mError.empty()) {
        frame.mError = MakeLikeDrawn(picture);
    }
    mOnDone(frame.mIndex, frame.mError);
}

void FilmPov_cls::Finish() {
    while (!mRunning.empty() && !IsFilmStopped()) {
        wxMilliSleep(kPollMillis);
        PollJobs();
    }
    StopAll();
}

void FilmPov_cls::RemoveStep(const wxString& base) {
    for (const wxString& one : {wxString(".pov"), wxString(".ini"), mCtrl.mCFormat.GetPictureEnding()})
        Remove(base + one);
    mSSteps.erase(base);
}

// Scenes of steps are left of frames that weren't rendered to their end.
void FilmPov_cls::StopAll() {
    mWaiting.clear();
    for (Work_st& work : mRunning)
        work.mpJob->Stop();
    mRunning.clear();
    while (!mSSteps.empty())
        RemoveStep(wxString(*mSSteps.begin()));
}
