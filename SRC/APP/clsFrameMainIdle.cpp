// The idle loop: evict, read ahead, refresh what is behind, advance playing by one frame a paint.
#include "APP/clsFrameMain.h"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>

#include <wx/utils.h>

#include "APP/clsFileMenu.h"
#include "APP/clsImageRun.h"
#include "APP/clsMain.h"
#include "APP/clsRecovery.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/ThreadStates.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterLists.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "TIME/clsTimeCtrl.h"

namespace {

// The status bar needs no more than this many milliseconds' news of a reader; posting at every idle pass
// would keep the loop spinning.
constexpr long kReaderPostMillis = 100;

/// To be asked before a frame is prepared: inside the wait for a reader that can't be.
void CheckPreparePossible() {
    if (!GbGLLockForLoadingData.load()) return;
    std::puts("GbGLLockForLoadingData == TRUE");
    std::puts("Prepare impossible");
    std::exit(1);
}

struct DataIndex_st {
    int mIndex;
    double mFrac;
};

DataIndex_st SplitIndex(double index) {
    const int whole = int(index);
    return {whole, index - whole};
}

DataIndex_st IndexOfFrame(const TimeCtrl_cls* time, int frame) {
    return SplitIndex(time->GetRemappedIndexDouble(frame, frame == -1 ? -1 : 0));
}

/// A bit of following bonds; true while there is more of it, and reading ahead had better wait.
bool FollowBonds(FrameMain_cls& frame, wxIdleEvent& event) {
    constexpr long kMillis = 40; // what a user doesn't feel as a halt
    constexpr long kTellMillis = 200;
    static wxStopWatch sTold;
    static wxString sToldText;
    using State = BondFollower_cls::State;
    BondFollower_cls* bonds = frame.GetPCFilters()->mpCBonds.get();
    if (GbGLLockDrawing.load() || GbGLLockForLoadingData.load() || GbGLLockProjectLoading.load())
        return false;
    if (bonds->TakeAbort() && frame.GetPCTimeCtrl()->mbOutputRun) frame.StopRun();
    const State state = bonds->Follow(kMillis, BondFollower_cls::Source::Background);
    if (state == State::Known && bonds->TakeMissed()) frame.RefreshGL();
    const bool bWorks = state == State::More || state == State::Reading;
    const wxString text = bonds->GetStatus(); // a paint may have changed it
    if (text != sToldText && (!bWorks || sTold.Time() > kTellMillis)) {
        sTold.Start();
        sToldText = text;
        frame.UpdateStatusText();
        if (state == State::Stopped) frame.RefreshGL(); // for the views' line
        if (state == State::Stopped && !bonds->GetReason().empty())
            frame.GetPCFilters()->Tell(bonds->GetReason());
    }
    if (state == State::More) event.RequestMore();
    return bWorks;
}

/// The same for the picked particle's anchor and trail.
bool FollowParticle(FrameMain_cls& frame, wxIdleEvent& event) {
    constexpr long kMillis = 40;
    constexpr long kTellMillis = 200;
    static wxStopWatch sTold;
    static wxString sToldText;
    using State = ParticleWatch_cls::State;
    ParticleWatch_cls& watch = *frame.GetPCMain()->mpCParticles;
    if (GbGLLockDrawing.load() || GbGLLockForLoadingData.load() || GbGLLockProjectLoading.load())
        return false;
    if (watch.TakeAbort() && frame.GetPCTimeCtrl()->mbOutputRun) frame.StopRun();
    const State state = watch.Learn(kMillis, ParticleWatch_cls::Source::Background);
    const bool bWorks = state == State::More || state == State::Reading;
    const wxString text = watch.GetStatus();
    if (text != sToldText && (!bWorks || sTold.Time() > kTellMillis)) {
        sTold.Start();
        sToldText = text;
        frame.UpdateStatusText();
        frame.RefreshGL(); // the trail grows
    }
    if (state == State::More) event.RequestMore();
    return bWorks;
}

} // namespace

void FrameMain_cls::OnIdle(wxIdleEvent& event) {
    event.Skip();
    if (!mbPlaced) PlaceAtStart();
    mpCFileMenu->ShowModified();
    // Between long pictures, which let the clock strike only while they are drawn.
    if (mpCMain->mpCRecovery && mpCMain->mpCRecovery->IsLate()) TickRecovery();
    // Views keep still while a question is up: not before there is a picture.
    if (mbPlaced && !mbRecoveryOffered && (mpCMainCanvas->GetPaintCount() > 0 || !mpCMainCanvas->HasGL())) {
        mbRecoveryOffered = true;
        CallAfter([this] { mpCFileMenu->Begin(); });
    }
    mpCMain->mpCPovRayCtrl->ProcessRenderPovAnim();
    TimeCtrl_cls* time = mpCMain->mpCTimeCtrl;
    PDataSeqCtrl_cls* store = mpCMain->mpCPDataSeqCtrl;
    TellPresent();
    store->CleanUpMemory(time->GetRemappedIndex(-1), time->GetDataStep());
    if (GpCThreadReader.load()) {
        if (mStatusWatch.Time() - mLastReaderPost >= kReaderPostMillis) {
            mLastReaderPost = mStatusWatch.Time();
            PostMenuEvent(ID_REFRESH_SB);
        }
    } else if (IsTheFrameReady(-1) && !FollowBonds(*this, event) && !FollowParticle(*this, event)) {
        PrepareFramesAhead(time->GetPrefetch());
    }
    if (GbGLLockPlayWait.load()) return;
    MainGLCanvas_cls* extra = GetPCGLCanvas(MainGLCanvas_cls::kExtraPanel);
    const bool bWait =
        extra && extra->WritesOutput() && !extra->CheckGLRefresh(time->GetFrame(), time->GetInterpStep());
    if (!mpCTopHalf->CheckGLRefresh(time->GetFrame(), time->GetInterpStep()) || bWait) {
        wxMilliSleep(13); // a paint is on its way: don't spin
        return;
    }
    if (time->IsPlaying() && time->ProcPlaying()) GbGLLockPlayWait.store(true);
}

void FrameMain_cls::OnTimer(wxTimerEvent&) {
    // Safety net for a reader that ended between its last two stores.
    if (!IsReaderBusy()) ForgetReader();
    mpCImageRun->TellImageFailures();
    if (!mpCMain->mpCImgSequence->IsRendering()) GCImgIO.DropSpare(); // up to a gigabyte
    mpCImageRun->TickVideo();
    TickRecovery();
    // A film of a scene with many small parts (sticks, names, shaders that are compiled) leaves a hundred
    // megabytes of holes in the heap, which the C library keeps for as long as the last block above them
    // stays.
    const bool bBusy = GpCThreadReader.load() || mpCMain->mpCImgSequence->IsRendering();
    if (!bBusy && mQuietMoment.Strike(mpCMainCanvas->GetPaintCount())) malloc_trim(0);
}

void FrameMain_cls::TickRecovery() {
    if (!mpCMain->mpCRecovery) return; // the hub is still being made
    // A question or a file dialog may stay for hours: only half read settings and data aren't written.
    const bool bBusy = GbGLLockProjectLoading.load() || GbGLLockDrawing.load() ||
                       GbGLLockForLoadingData.load() || GbGLLockForInterplateData.load();
    mpCMain->mpCRecovery->Tick(!bBusy);
}

bool FrameMain_cls::IsTheFrameReady(int frame) const {
    const DataIndex_st data = IndexOfFrame(mpCMain->mpCTimeCtrl, frame);
    return mpCMain->IsTheIndexReady(data.mIndex, data.mFrac);
}

void FrameMain_cls::PrepareTheFrame(int frame) {
    CheckPreparePossible();
    if (frame == -1) TellPresent();
    const DataIndex_st data = IndexOfFrame(mpCMain->mpCTimeCtrl, frame);
    mpCMain->mpCPDataSeqCtrl->PrepareIndex(data.mIndex, data.mFrac,
                                           mpCMain->mpCTimeCtrl->IsForceInterpolation(), frame == -1);
}

void FrameMain_cls::TellPresent() const {
    const DataIndex_st data = IndexOfFrame(mpCMain->mpCTimeCtrl, -1);
    mpCMain->mpCPDataSeqCtrl->SetPresent(data.mIndex, data.mFrac,
                                         mpCMain->mpCTimeCtrl->IsForceInterpolation());
}

bool FrameMain_cls::PrepareAhead(int frame) {
    if (IsTheFrameReady(frame)) return false;
    PrepareTheFrame(frame);
    return true;
}

void FrameMain_cls::PrepareFramesAhead(int count) {
    const TimeCtrl_cls* time = mpCMain->mpCTimeCtrl;
    const int dir = time->GetPlayDirection();
    for (int k = 1; k <= count; ++k) {
        const int frame = time->CalcNextFrame(-1, k * dir, false, true);
        if (frame < 0 || frame > time->GetMaxFrame()) continue;
        if (PrepareAhead(frame)) return; // one at a time: the nearest first
    }
}
