#include "APP/clsSeriesVideo.h"

#include <wx/intl.h>

#include "COMMON/Eye.h"
#include "COMMON/MsgBox.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImgSequence.h"

namespace {
constexpr long kToldMillis = 10000; // long enough to be seen
}

void SeriesVideo_cls::Begin(const ImgSequence_cls& sequence, int failures, VideoStereo stereo) {
    Tick(); // what has ended meanwhile
    mStrDone.clear();
    if (!sequence.mbVideo) return;
    const wxString path = MakeVideoPath(sequence.mCFileSequence.mStrPath);
    if (failures > 0) {
        TellFailure(path, wxString::Format(_("%d of its pictures could not be written"), failures));
        return;
    }
    if (IsRunning()) TellFailure(mCMaker.GetPath(), _("it was given up for that of the next series"));
    mVWaiting.clear();
    for (const int eye : {EYE_RIGHT, EYE_LEFT, EYE_NONE}) {
        if (sequence.GetWritten(eye).empty()) continue;
        VideoJob_st job;
        job.mFrames = sequence.GetWritten(eye);
        job.mPath = GetEyePath(path, eye);
        job.mRate = MakeVideoRate(sequence.mVideoRate);
        job.mStereo = eye == EYE_NONE ? stereo : VideoStereo::None;
        mVWaiting.push_back(std::move(job));
    }
    StartNext();
}

// The last one that waits.
void SeriesVideo_cls::StartNext() {
    if (mVWaiting.empty()) return;
    const VideoJob_st job = std::move(mVWaiting.back());
    mVWaiting.pop_back();
    if (!mCMaker.Start(job).empty()) TellFailure(job.mPath, mCMaker.GetError());
}

void SeriesVideo_cls::TellFailure(const wxString& path, const wxString& reason) {
    ForgetNotices();
    Notice("video", wxString::Format(_("The video %s could not be made: %s."), path, reason));
}

bool SeriesVideo_cls::Tick() {
    if (mCMaker.Poll()) {
        if (mCMaker.GetError().empty())
            mStrDone = wxString::Format(_("The video %s is made"), mCMaker.GetPath());
        else
            TellFailure(mCMaker.GetPath(), mCMaker.GetError());
        mDoneWatch.Start();
        StartNext();
        return true;
    }
    if (mStrDone.empty() || mDoneWatch.Time() < kToldMillis) return false;
    mStrDone.clear();
    return true;
}

wxString SeriesVideo_cls::GetQuitWarning() const {
    if (!IsRunning()) return wxString();
    return "\n" +
           wxString::Format(_("The video %s is not made yet and would be given up."), mCMaker.GetPath());
}

wxString SeriesVideo_cls::GetStatusText() const {
    if (IsRunning()) return wxString::Format(_("Making the video %s ..."), mCMaker.GetPath());
    return mStrDone;
}
