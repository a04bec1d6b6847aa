#include "APP/clsPovExport.h"

#include <algorithm>
#include <utility>

#include <wx/intl.h>

#include "APP/BindMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsPovScene.h"
#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PARAM/clsUndoManager.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kTrialScale = 4;
constexpr int kMostFrames = 10000000; // of a count that would never end

/// Settings that a scope changes and puts back.
class TrialScope_cls {
public:
    explicit TrialScope_cls(PovRayCtrl_cls& ctrl)
        : mFormat(ctrl.mCFormat), mRadiosity(ctrl.mCRadiosity), mW(mFormat.mWidth.mValue),
          mH(mFormat.mHeight.mValue), mReuse(mRadiosity.mReuse.mValue), mbDisplay(mFormat.mDisplay.mValue),
          mbPause(mFormat.mPauseWhenDone.mValue) {
        mFormat.mWidth.mValue = std::max(mW / kTrialScale, 1);
        mFormat.mHeight.mValue = std::max(mH / kTrialScale, 1);
        mFormat.mDisplay.mValue = mFormat.mPauseWhenDone.mValue = false;
        // Its coarse light doesn't take the place of a picture's.
        if (mReuse == PovRadiosity_cls::REUSE_SAVE) mRadiosity.mReuse.mValue = PovRadiosity_cls::REUSE_NONE;
    }
    ~TrialScope_cls() {
        mFormat.mWidth.mValue = mW;
        mFormat.mHeight.mValue = mH;
        mFormat.mDisplay.mValue = mbDisplay;
        mFormat.mPauseWhenDone.mValue = mbPause;
        mRadiosity.mReuse.mValue = mReuse;
    }
    TrialScope_cls(const TrialScope_cls&) = delete;
    TrialScope_cls& operator=(const TrialScope_cls&) = delete;

private:
    PovFormat_cls& mFormat;
    PovRadiosity_cls& mRadiosity;
    int mW;
    int mH;
    unsigned mReuse;
    bool mbDisplay;
    bool mbPause;
};

} // namespace

PovExport_cls::PovExport_cls(FrameMain_cls& frame) : mFrame(frame), mHub(*frame.GetPCMain()) {
    mFrame.mOnPovFrameDrawn = [this] { OnFrameDrawn(); };
    mFrame.mOnPovRunStopped = [this] { OnRunStopped(); };
    BindMenu(mFrame, this, ID_POVRAY, &PovExport_cls::OnMenuPovRay);
    BindMenu(mFrame, this, ID_POV_EXPORT_SNAP, &PovExport_cls::OnMenuPovExportSnap);
    BindMenu(mFrame, this, ID_POV_EXPORT_ANIM, &PovExport_cls::OnMenuPovExportAnim);
    BindMenu(mFrame, this, ID_POV_RENDER_SNAP, &PovExport_cls::OnMenuPovRenderSnap);
    BindMenu(mFrame, this, ID_POV_RENDER_ANIM, &PovExport_cls::OnMenuPovRenderAnim);
    BindMenu(mFrame, this, ID_POV_RENDER_END, &PovExport_cls::OnMenuPovRenderEnd);
    BindMenu(mFrame, this, ID_POV_TRY, &PovExport_cls::OnMenuPovTry);
}

PovRayCtrl_cls& PovExport_cls::Ctrl() const { return *mHub.mpCPovRayCtrl; }

void PovExport_cls::OnMenuPovRay(wxCommandEvent&) { Ctrl().OpenWindow(&mFrame); }
void PovExport_cls::OnMenuPovExportSnap(wxCommandEvent&) { BeginStill(Still::Export); }
void PovExport_cls::OnMenuPovRenderSnap(wxCommandEvent&) { BeginStill(Still::Render); }
void PovExport_cls::OnMenuPovTry(wxCommandEvent&) { BeginStill(Still::Try); }
void PovExport_cls::OnMenuPovExportAnim(wxCommandEvent&) { BeginAnim(false, ID_POV_EXPORT_ANIM); }
void PovExport_cls::OnMenuPovRenderAnim(wxCommandEvent&) { BeginAnim(true, ID_POV_RENDER_ANIM); }

// The idle loop comes behind it, and with it the next frame.
void PovExport_cls::OnMenuPovRenderEnd(wxCommandEvent&) { mFrame.UpdateStatusText(); }

bool PovExport_cls::IsPovrayCondistionSatisfiled() {
    return mHub.mpCLightSRCCtrl->GetNumberLightVisible() > 0 ||
           MsgBoxYesno(_("No Light"), _("Output .pov file"));
}

/// What is asked once, before a still or an animation.
bool PovExport_cls::MayBegin(bool bRender) {
    const wxString caption = _("Output .pov file");
    if (!mFrame.GetPCGLCanvas(0)->HasGL()) {
        MsgBox(_("Scenes are made of what OpenGL has drawn, and there is no OpenGL here."), caption);
        return false;
    }
    if (mHub.mpCTimeCtrl->mbOutputRun) {
        MsgBox(_("Another run through the film is writing its files. Let it end first."), caption);
        return false;
    }
    if (bRender && !Ctrl().mbRenderDone) {
        MsgBox(_("POV-Ray is still at work."), caption);
        return false;
    }
    const wxString refusal = bRender ? Ctrl().mCFormat.GetRefusal() : wxString();
    if (!refusal.empty() && !MsgBoxYesno(refusal + "\n" + _("Go on all the same?"), caption)) return false;
    return IsPovrayCondistionSatisfiled();
}

bool PovExport_cls::WriteScene(const wxString& base, int pretrace) {
    PovRayCtrl_cls& ctrl = Ctrl();
    const wxString problem = ctrl.MakeWorkingDir();
    if (!problem.empty()) {
        Notice("pov-ray", problem);
        return false;
    }
    PovScene_cls scene(mHub, mFrame.GetPCGLCanvas(0));
    if (!ctrl.OutputPovRayIni(base + ".ini", pretrace)) return false;
    const wxString include = ctrl.GetFileStr(PovRayCtrl_cls::FILE_COMMON_SCENE, 0, -1);
    return scene.OutputPovRayPov(base + ".pov", include, ctrl.GetCommonScenePath());
}

bool PovExport_cls::ExportPovSnap(int eye, bool bForRender) {
    PovRayCtrl_cls& ctrl = Ctrl();
    ctrl.mbForRender = bForRender;
    // Frames that are still to be rendered include the one that stands there.
    if (!ctrl.mbExportingAnim && !ctrl.mbRenderingAnim) ctrl.mbCommonSceneWritten = false;
    const bool bDone = WriteScene(ctrl.GetFileStr(PovRayCtrl_cls::FILE_SNAP, unsigned(eye), -1), -1);
    ctrl.mbForRender = false;
    return bDone;
}

bool PovExport_cls::ExportPovAnim(int eye) {
    PovRayCtrl_cls& ctrl = Ctrl();
    const wxString base = ctrl.GetFileStr(PovRayCtrl_cls::FILE_ANIM, unsigned(eye), -1);
    const int pretrace = ctrl.GetPretraceOfFrame();
    ++ctrl.mAnimNumber;
    ctrl.mVPictures.push_back(ctrl.mCFormat.GetPicture());
    // A renderer that waits for a hand would hold the frames behind it up.
    bool& bPause = ctrl.mCFormat.mPauseWhenDone.mValue;
    const bool bWasPause = std::exchange(bPause, bPause && !ctrl.mbForRender);
    const bool bDone = WriteScene(base, pretrace);
    bPause = bWasPause;
    return bDone;
}

bool PovExport_cls::RenderPovSnap(int eye) { return Ctrl().RenderByPovSnap(unsigned(eye)); }

// What is written is what is drawn, so it is drawn first.
void PovExport_cls::BeginStill(Still still) {
    if (mStill != Still::None || !MayBegin(still != Still::Export)) return;
    ForgetNotices();
    mStill = still;
    mFrame.GetPCGLCanvas(0)->mPov.StartExportPovStringProcess();
}

void PovExport_cls::EndStill() {
    const Still still = mStill;
    mStill = Still::None;
    mFrame.GetPCGLCanvas(0)->mPov.StopExportPovStringProcess();
    if (still == Still::Try)
        TryStill();
    else if (ExportPovSnap(0, still == Still::Render) && still == Still::Render)
        RenderPovSnap(0);
}

void PovExport_cls::TryStill() {
    PovRayCtrl_cls& ctrl = Ctrl();
    const TrialScope_cls trial(ctrl);
    ctrl.mbCommonSceneWritten = false;
    ctrl.mbForRender = true;
    const wxString base = ctrl.GetWorkingDirWithSep(true) + "povtry";
    if (WriteScene(base, -1)) ctrl.RenderTrial(base, CountFrames());
    ctrl.mbForRender = false;
}

void PovExport_cls::SetTimeForPovAnim() {
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    const PovRayCtrl_cls& ctrl = Ctrl();
    const unsigned region = ctrl.GetRegionType();
    if (time->IsRepeat()) time->SetRepeatCommand(0); // the play comes to an end
    if (region == PovRender_cls::REGION_WORK_AREA) {
        time->MoveFrameCommandLarge(-1);
        return;
    }
    const bool bAll = region == PovRender_cls::REGION_ALL;
    const int last = time->GetMaxFrame();
    time->mRangeMin = bAll ? 0 : std::clamp(ctrl.GetRegionInit(), 0, last);
    time->mRangeMax = bAll ? last : std::clamp(ctrl.GetRegionFin(), time->mRangeMin, last);
    time->mbCustomRange = true;
    time->SetInterpStepCommand(0);
    time->SetFrameCommand(time->mRangeMin);
}

/// Of the animation, by the way that the clock will go.
int PovExport_cls::CountFrames() const {
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    const PovRayCtrl_cls& ctrl = Ctrl();
    int frame = time->GetWAMin();
    int last = time->GetWAMax();
    if (ctrl.GetRegionType() == PovRender_cls::REGION_ALL) {
        frame = 0;
        last = time->GetMaxFrame();
    } else if (ctrl.GetRegionType() == PovRender_cls::REGION_CUSTOM) {
        frame = std::clamp(ctrl.GetRegionInit(), 0, time->GetMaxFrame());
        last = std::clamp(ctrl.GetRegionFin(), frame, time->GetMaxFrame());
    }
    const long long count = (long long)(last - frame) / time->GetAnimStep() * time->GetAnimInterp() + 1;
    return int(std::min(count, (long long)kMostFrames));
}

void PovExport_cls::BeginAnim(bool bRender, int id) {
    PovRayCtrl_cls& ctrl = Ctrl();
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    const bool bStop = ctrl.mbExportingAnim || ctrl.mbRenderingAnim;
    if (!bStop) {
        if (mStill != Still::None || !MayBegin(bRender)) return;
        if (time->IsPlaying()) {
            time->StartPlayCommand(1); // its stop comes first
            PostMenuEvent(id);
            return;
        }
    }
    if (!ctrl.StartExportPovAnim(bRender)) {
        PostMenuEvent(ID_PLAY_STOP);
        return;
    }
    ForgetNotices();
    ctrl.mbForRender = bRender;
    mLastFrame = mLastStep = -1;
    {
        const UndoBlock_cls block;
        SetTimeForPovAnim();
        mFrame.GetPCGLCanvas(0)->mPov.StartExportPovStringProcess();
        const bool bCustom = time->mbCustomRange;
        const TimeState_st before = time->GetState();
        time->StartPlayCommand(1);
        if (bCustom) time->SetState(before); // starting goes into the work area
    }
    time->mbOutputRun = true;
    mFrame.RefreshGL();
}

// A paint that only repeats a frame writes nothing. A question waits for the paint's end; until it is
// answered the film stands still.
void PovExport_cls::OnFrameDrawn() {
    const TimeCtrl_cls& time = *mHub.mpCTimeCtrl;
    if (mbAsking) return;
    if (mStill == Still::None) {
        if (!Ctrl().mbExportingAnim) return;
        if (time.GetFrame() == mLastFrame && time.GetInterpStep() == mLastStep) return;
        mLastFrame = time.GetFrame();
        mLastStep = time.GetInterpStep();
    }
    const wxString question = PovScene_cls(mHub, mFrame.GetPCGLCanvas(0)).GetMemoryQuestion();
    mbAsking = !question.empty();
    if (mbAsking)
        mFrame.CallAfter([this, question] { AskMemory(question); });
    else
        WriteDrawn();
}

void PovExport_cls::AskMemory(const wxString& question) {
    const bool bGo = MsgBoxYesno(question + "\n" + _("Write it all the same?"), _("Output .pov file"));
    mbAsking = false;
    if (bGo) {
        PovScene_cls(mHub, mFrame.GetPCGLCanvas(0)).AllowMemory();
        WriteDrawn();
    } else if (mStill != Still::None) {
        mFrame.GetPCGLCanvas(0)->mPov.StopExportPovStringProcess();
        mStill = Still::None;
    } else {
        StopAnim();
    }
}

void PovExport_cls::WriteDrawn() {
    if (mStill != Still::None) {
        EndStill();
        return;
    }
    if (!Ctrl().mbExportingAnim) return;
    if (!ExportPovAnim(0)) StopAnim(); // the next frames would fare no better
    mFrame.UpdateStatusText();
}

void PovExport_cls::StopAnim() {
    Ctrl().AbortRenderPovAnim();
    PostMenuEvent(ID_PLAY_STOP);
}

void PovExport_cls::OnRunStopped() {
    if (mStill != Still::None) return;
    Ctrl().AbortExportPovAnim();
}

wxString PovExport_cls::GetStatus() const {
    const wxString text = mHub.mpCPovRayCtrl ? Ctrl().GetProgressText() : wxString();
    return text.empty() ? text : "POV-Ray: " + text;
}
