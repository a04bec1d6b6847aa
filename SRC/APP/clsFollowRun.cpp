#include "APP/clsFollowRun.h"

#include <algorithm>

#include <wx/filename.h>
#include <wx/utils.h>

#include "APP/BindMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsFolderWatch.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kTickMillis = 250;
constexpr long kTellMillis = 10000; // that news stay in the status bar

const char* const kFollow = "FollowRun=";
const char* const kNewest = "FollowNewest=";

} // namespace

FollowRun_cls::FollowRun_cls(FrameMain_cls& frame) : mFrame(frame), mHub(*frame.GetPCMain()) {
    BindMenu(mFrame, this, ID_FOLLOW, &FollowRun_cls::OnMenuFollow);
    BindMenu(mFrame, this, ID_FOLLOW_NEWEST, &FollowRun_cls::OnMenuNewest);
    mFrame.Bind(
        wxEVT_UPDATE_UI,
        [this](wxUpdateUIEvent& event) {
            event.Enable(IsFollowable());
            event.Check(mpCWatch != nullptr);
        },
        ID_FOLLOW);
    mFrame.Bind(
        wxEVT_UPDATE_UI,
        [this](wxUpdateUIEvent& event) {
            event.Enable(mpCWatch != nullptr);
            event.Check(mbNewest);
        },
        ID_FOLLOW_NEWEST);
    mTimer.Bind(wxEVT_TIMER, &FollowRun_cls::OnTimer, this);
}

FollowRun_cls::~FollowRun_cls() = default;

bool FollowRun_cls::IsFollowable() const {
    const PDataSequence_cls& sequence = *mFrame.GetPCActiveFileSequence();
    return !sequence.GetStrPath().empty() && sequence.GetSeqLength() >= 1 &&
           sequence.GetSeqLength() < PDataSequence_cls::kMaxSnap && sequence.mCFileSequence.mDigits >= 0;
}

void FollowRun_cls::Begin() {
    const PDataSequence_cls& sequence = *mFrame.GetPCActiveFileSequence();
    mStrPath = sequence.mCFileSequence.mStrPath;
    mpCWatch = std::make_unique<FolderWatch_cls>(sequence.mCFileSequence, sequence.GetSeqLength(),
                                                 int(PDataSequence_cls::kMaxSnap));
    mbResume = false;
    mTimer.Start(kTickMillis);
}

void FollowRun_cls::End(const wxString& words) {
    mpCWatch.reset();
    mbResume = false;
    Tell(words);
}

void FollowRun_cls::OnData() {
    const PDataSequence_cls& sequence = *mFrame.GetPCActiveFileSequence();
    const bool bSame = IsFollowable() && sequence.mCFileSequence.mStrPath == mStrPath;
    if (bSame && (mpCWatch || mbResume)) return SetFollow(true);
    const bool bClosed = sequence.GetStrPath().empty();
    const bool bResume = bClosed && (mpCWatch || mbResume);
    if (mpCWatch) End(_("Following ended: its data are closed"));
    mbResume = bResume;
}

void FollowRun_cls::Reset() {
    mpCWatch.reset();
    mbResume = false;
    mbNewest = false;
}

// With the number of snapshots, by which one knows later whether the film's end stood at theirs.
wxString FollowRun_cls::Serialize() const {
    wxString text;
    if (mpCWatch) text << kFollow << mFrame.GetPCActiveFileSequence()->GetSeqLength() << "\n";
    if (mbNewest) text << kNewest << "1\n";
    return text;
}

void FollowRun_cls::ReadStrLine(const wxString& line) {
    wxString value;
    long before = 0;
    if (line.StartsWith(kFollow, &value) && value.ToLong(&before) && before >= 1) {
        SetFollow(true);
        const int length = mFrame.GetPCActiveFileSequence()->GetSeqLength();
        if (mpCWatch && length > before) GrowFilm(int(before), length);
    }
    if (line.StartsWith(kNewest, &value) && value.Trim() == "1") SetNewest(true);
}

void FollowRun_cls::OnMenuFollow(wxCommandEvent& event) {
    if (event.IsChecked() && !IsFollowable()) return;
    const auto set = [this](bool b) { return new CommandCall_cls([this, b] { SetFollow(b); }, 0); };
    GCUndoList.PushNewCommand(set(event.IsChecked()), set(!event.IsChecked()));
    GCUndoList.ExecCurrent();
}

void FollowRun_cls::OnMenuNewest(wxCommandEvent& event) {
    const auto set = [this](bool b) { return new CommandCall_cls([this, b] { SetNewest(b); }, 0); };
    GCUndoList.PushNewCommand(set(event.IsChecked()), set(!event.IsChecked()));
    GCUndoList.ExecCurrent();
}

void FollowRun_cls::SetFollow(bool bFollow) {
    if (!bFollow && mpCWatch) End(_("Following ended"));
    if (!bFollow || !IsFollowable()) return; // an undone step may be of data that aren't open any more
    Begin();
    const FileSequence_cls& files = mFrame.GetPCActiveFileSequence()->mCFileSequence;
    Tell(wxString::Format(_("Following: waiting for %s"),
                          wxFileName(files.GetModifiedStr(files.mMaxOffset, 0)).GetFullName()));
}

void FollowRun_cls::SetNewest(bool bNewest) {
    mbNewest = bNewest;
    if (mbNewest && mpCWatch) GoToNewest();
}

void FollowRun_cls::Tell(const wxString& words) {
    mStrWords = words;
    mTold.Start();
    mFrame.UpdateStatusText();
}

wxString FollowRun_cls::GetStatus() const { return mTold.Time() < kTellMillis ? mStrWords : wxString(); }

/// Not under somebody's hands: a paint, a drag, a wait for a reader, a question, a run that writes the film.
bool FollowRun_cls::MayGrow() const {
    const TimeCtrl_cls& time = *mHub.mpCTimeCtrl;
    return !GbGLLockDrawing.load() && !GbGLLockForLoadingData.load() && !GbGLLockForInterplateData.load() &&
           !GbGLLockProjectLoading.load() && !GbGLLockModalDialog.load() && !time.mbOutputRun &&
           !time.mbCustomRange && !time.IsGesture() && !wxGetMouseState().ButtonIsDown(wxMOUSE_BTN_ANY);
}

void FollowRun_cls::OnTimer(wxTimerEvent&) {
    if (!mStrWords.empty() && mTold.Time() >= kTellMillis) Tell(wxString());
    if (!mpCWatch) {
        if (mStrWords.empty()) mTimer.Stop();
        return;
    }
    if (!MayGrow()) return;
    const PDataSequence_cls& sequence = *mFrame.GetPCActiveFileSequence();
    const SequenceNews_st* pNews =
        mpCWatch->Tick(*mHub.mpCDataLoader, [&sequence] { return sequence.GetUnusable(); });
    if (pNews) Take(*pNews);
}

void FollowRun_cls::Take(const SequenceNews_st& news) {
    PDataSequence_cls& sequence = *mFrame.GetPCActiveFileSequence();
    const int before = sequence.GetSeqLength();
    if (news.mbFolderGone) {
        const wxString folder = wxFileName(mStrPath).GetPath();
        const wxString words = wxString::Format(
            _("Following ended: the folder %s is not there any more. What was read stays."), folder);
        Notice(words, words);
        return End(_("Following ended: the folder is gone"));
    }
    if (!sequence.Grow(news.mLength, news.mVLate)) return; // at the next tick
    const int length = sequence.GetSeqLength();
    const int rewritten = news.mRewritten;
    const bool bLate = !news.mVLate.empty();
    mpCWatch->NewsTaken(); // which ends `news`
    if (length > before) GrowFilm(before, length);
    if (bLate || length > before) {
        GbSnapDataRefresh.store(true); // the last snapshot may move on now
        for (const int id : {ID_REFRESH_GL, ID_REFRESH_TL, ID_REFRESH_IMGSEQ})
            PostMenuEvent(id);
    }
    if (length > before)
        Tell(wxString::Format(
            wxPLURAL("%d new snapshot, frame %d", "%d new snapshots, frame %d", length - before),
            length - before, length - 1));
    else if (rewritten > 0)
        Tell(wxString::Format(wxPLURAL("%d snapshot was written anew: \"Remove Cache\" reads it",
                                       "%d snapshots were written anew: \"Remove Cache\" reads them",
                                       rewritten),
                              rewritten));
    if (length < PDataSequence_cls::kMaxSnap) return;
    const wxString words =
        wxString::Format(_("Following ended: a sequence has %d snapshots at most."), length);
    Notice(words, words);
    End(words);
}

/// The film's end, and with it the areas, go on to the end of the data if they stood there. Keys keep their
/// share of the film, as with any change of its length.
void FollowRun_cls::GrowFilm(int before, int length) {
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    // Frames past the data showed the last snapshot that there was; what was made of them is no longer so.
    int frame = 0;
    while (frame <= time->GetMaxFrame() && time->GetRemappedIndexDouble(frame, 0) <= before - 1)
        ++frame;
    if (frame <= time->GetMaxFrame()) ++PDataSnap_cls::msContents;
    if (!time->mbUseTimeRemap.mValue && time->GetMaxFrame() == before - 1)
        time->SetMaxFrameNative(length - 1);
    if (mbNewest && !time->IsPlaying()) GoToNewest();
}

void FollowRun_cls::GoToNewest() {
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    const int last = mFrame.GetPCActiveFileSequence()->GetSeqLength() - 1;
    if (time->mbUseTimeRemap.mValue || last > time->GetMaxFrame()) return;
    time->SetInterpStepNative(0, 0);
    time->SetFrameNative(last / time->GetAnimStep() * time->GetAnimStep(), UPDATE_GL | UPDATE_TL);
    GCUndoList.ExecUpdate();
}
