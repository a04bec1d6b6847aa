// The driver: scenes are written while the film plays, and then rendered, one process at a time.
#include <algorithm>
#include <cstdio>

#include <wx/app.h>
#include <wx/intl.h>
#include <wx/timer.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsSplitPath.h"
#include "POVRAY/LikeDrawn.h"
#include "POVRAY/clsPovRayCtrl.h"

namespace {

constexpr int kTickMillis = 50;
constexpr int kTrialScale = 4; // of each side

class TickTimer_cls : public wxTimer {
public:
    explicit TickTimer_cls(PovRayCtrl_cls* pCtrl) : mpCCtrl(pCtrl) {}
    void Notify() override { mpCCtrl->Tick(); }

private:
    PovRayCtrl_cls* mpCCtrl;
};

wxString Duration(long long millis) {
    const long long seconds = (millis + 500) / 1000;
    if (millis < 1000) return wxString::Format(_("%.1f s"), double(millis) / 1000.0);
    return seconds < 3600
               ? wxString::Format("%lld:%02lld", seconds / 60, seconds % 60)
               : wxString::Format("%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

} // namespace

void PovRayCtrl_cls::TellChange() {
    if (mpHooks->mOnState) mpHooks->mOnState();
}

bool PovRayCtrl_cls::StartJob(const wxString& base, const wxString& exe, const PovPicture_st& picture) {
    mbAborted = false;
    mShape = picture;
    std::printf("Commands=%s\n", static_cast<const char*>(GetPovRayCommand(base).utf8_str()));
    if (!mJob.Start(exe, base, picture.mEnding)) {
        NoteEnd();
        return false;
    }
    mbRenderDone = false;
    if (wxTheApp && !mpCTimer) mpCTimer = std::make_unique<TickTimer_cls>(this);
    if (mpCTimer && !mpCTimer->IsRunning()) mpCTimer->Start(kTickMillis);
    return true;
}

void PovRayCtrl_cls::PushBackCommands(unsigned kind, unsigned eye) {
    for (int number = mAnimInitNumber; number < mAnimNumber; ++number)
        mVStrCommands.push_back(GetFileStr(kind, eye, number));
}

bool PovRayCtrl_cls::RenderByPovSnap(unsigned eye) {
    if (!mbRenderDone) return false;
    mVFailures.clear();
    mbAnimRun = false;
    mTrialFrames = 0;
    mProgress.Begin(1);
    const bool bStarted =
        StartJob(GetFileStr(FILE_SNAP, eye, -1), mPathPovRay.mStrValue, mCFormat.GetPicture());
    TellChange();
    return bStarted;
}

bool PovRayCtrl_cls::RenderTrial(const wxString& base, int frames) {
    if (!mbRenderDone) return false;
    mVFailures.clear();
    mbAnimRun = false;
    mTrialFrames = std::max(frames, 1);
    mStrTrial.clear();
    mProgress.Begin(1);
    const bool bStarted = StartJob(base, mPathPovRay.mStrValue, mCFormat.GetPicture());
    TellChange();
    return bStarted;
}

bool PovRayCtrl_cls::StartExportPovAnim(int bRender) {
    if (mpHooks->mCommitFields) mpHooks->mCommitFields();
    const bool bStop = mbRenderingAnim || mbExportingAnim;
    if (bStop) {
        AbortRenderPovAnim();
        return false;
    }
    mbCommonSceneWritten = false;
    mAnimNumber = mAnimInitNumber;
    mVPictures.clear();
    mbExportingAnim = true;
    mbRenderingAnim = bRender != 0;
    TellChange();
    return true;
}

void PovRayCtrl_cls::AbortExportPovAnim() {
    if (!mbExportingAnim) return;
    mbExportingAnim = false;
    mbForRender = false;
    if (mbRenderingAnim) StartRenderPovAnim();
    TellChange();
}

void PovRayCtrl_cls::StartRenderPovAnim() {
    mVStrCommands.clear();
    mVFailures.clear();
    PushBackCommands(FILE_ANIM, 0);
    mStrAnimExe = mPathPovRay.mStrValue;
    mVPictures.resize(mVStrCommands.size(), mCFormat.GetPicture());
    mAnimNumber = 0;
    mProgress.Begin(int(mVStrCommands.size()));
}

void PovRayCtrl_cls::ProcessRenderPovAnim() {
    if (!mbRenderingAnim || mbExportingAnim || !mbRenderDone) return;
    const int number = int(mVStrCommands.size());
    if (mAnimNumber < number) {
        mbAnimRun = true;
        mTrialFrames = 0;
        const auto i = size_t(mAnimNumber++);
        StartJob(mVStrCommands[i], mStrAnimExe, mVPictures[i]);
    }
    // The buttons come back while the last frame still renders.
    if (mAnimNumber >= number) mbRenderingAnim = mbExportingAnim = false;
    TellChange();
    if (mbRenderingAnim && mbRenderDone) PostMenuEvent(ID_POV_RENDER_END); // that one couldn't be begun
}

void PovRayCtrl_cls::AbortRenderPovAnim() {
    mbAborted = mbRenderingAnim && !mbRenderDone; // a still has nothing to do with it
    mbExportingAnim = mbRenderingAnim = mbForRender = false;
    TellChange();
}

void PovRayCtrl_cls::StopRenderer() {
    if (mbRenderDone) return;
    mJob.Stop();
    NoteEnd();
}

void PovRayCtrl_cls::Tick() {
    if (mbRenderDone) return;
    if (mJob.Poll())
        NoteEnd();
    else if (mpHooks->mOnTick)
        mpHooks->mOnTick();
}

// Whatever became of a scene.
void PovRayCtrl_cls::NoteEnd() {
    const wxString name = SplitPath_cls(mJob.GetBase()).GetPathStr(12);
    wxString error = mJob.GetError();
    if (error.empty()) error = MakeLikeDrawn(mJob.GetPicture());
    std::printf("Return Value=%d\n", mJob.GetStatus());
    mbRenderDone = true;
    mbAborted = false;
    if (mpCTimer) mpCTimer->Stop();
    if (error.empty()) {
        mStrLastPicture = mJob.GetPicture();
        ++mFinished;
    } else {
        mVFailures.push_back({name, error});
        Notice("pov-ray", wxString::Format(_("POV-Ray made no picture of %s: %s"), name, error));
    }
    mProgress.Done(mbAnimRun ? mProgress.GetDone() + 1 : 1);
    if (mTrialFrames > 0 && error.empty()) {
        const long long whole = (long long)mJob.GetMillis() * kTrialScale * kTrialScale;
        mStrTrial = wxString::Format(
            _("A quarter of the width and height took %s. A whole picture will take about %s, a film of %d "
              "frames about %s."),
            Duration(mJob.GetMillis()), Duration(whole), mTrialFrames, Duration(whole * mTrialFrames));
    }
    TellChange();
    PostMenuEvent(ID_POV_RENDER_END);
}

wxString PovRayCtrl_cls::GetProgressText() const {
    if (mbExportingAnim) return wxString::Format(_("Scenes written: %d"), mAnimNumber - mAnimInitNumber);
    if (mbRenderDone && !mbRenderingAnim) return wxString();
    wxString text;
    if (mbAnimRun) { // the frame in work, not how many there are
        const int total = mProgress.GetTotal();
        text = wxString::Format(_("Frame %d of %d"), std::min(mProgress.GetDone() + 1, total), total);
        const long long left = mProgress.GetLeftMillis();
        if (left > 0) text += wxString::Format(_(", %s left"), Duration(left));
    }
    const int percent = mJob.GetPercent();
    if (!mbRenderDone && percent >= 0) {
        text += (text.empty() ? "" : ", ") + wxString::Format("%d %%", percent);
        if (!mbAnimRun && percent > 0 && percent < 100)
            text +=
                wxString::Format(_(", %s left"), Duration(mJob.GetMillis() * (100LL - percent) / percent));
    } else if (!mbRenderDone) {
        text += (text.empty() ? "" : ", ") + wxString(_("POV-Ray reads the scene"));
    }
    return text;
}

wxString PovRayCtrl_cls::GetQuitWarning() const {
    return IsBusy() ? "\n" + wxString(_("POV-Ray is at work; what it hasn't finished is lost.")) : wxString();
}
