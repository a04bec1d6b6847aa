#include "FILTER/clsBondFollower.h"

#include <algorithm>

#include <wx/intl.h>
#include <wx/stopwatch.h>

#include "COMMON/Globals.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterStick.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsFilmTime.h"

namespace {

/// All particles of a snapshot, where they are at its own time; none while it isn't read.
StickParticles_st ParticlesOf(const PDataSnap_cls& snap) {
    StickParticles_st particles;
    const PDataBlock_cls& block = *snap.mpCBlock;
    if (!snap.IsItLoaded() || !block.mbAllocated) return particles;
    particles.mpPos = block.mpPos;
    particles.mpType = block.mpType;
    particles.mpID = block.mpID;
    particles.mCount = snap.GetParticleNumber();
    particles.mTime = static_cast<float>(snap.mTime);
    return particles;
}

} // namespace

BondFollower_cls::BondFollower_cls(FilterLists_cls& filters, const PDataSeqCtrl_cls& store,
                                   const FilmTime_cls& time)
    : mFilters(filters), mStore(store), mTime(time) {}

BondFollower_cls::~BondFollower_cls() = default;

PDataSnap_cls& BondFollower_cls::GetSnap(int frame) const {
    return *mStore.GetPCActiveFileSequence()->GetSnap(mTime.GetRemappedIndex(frame));
}

// Other data, or the film's frames show other snapshots of it.
void BondFollower_cls::ForgetIfOther() {
    const PDataSequence_cls* sequence = mStore.GetPCActiveFileSequence();
    bool bOther = sequence != mpCSequence || PDataSnap_cls::msContents != mContents;
    mpCSequence = sequence;
    mContents = PDataSnap_cls::msContents;
    if (bOther) mOwn.Drop();
    const bool bRemap = mTime.mbUseTimeRemap.mValue;
    bOther = bOther || bRemap == mVPlaces.empty();
    const int first = mTime.GetWAMin();
    const int number = bRemap ? std::max(mTime.GetFrame() - first + 1, 1) : 0;
    if (number > int(mVPlaces.size()) || !bRemap) mVPlaces.resize(size_t(number), -1);
    for (int k = 0; k < number; ++k) {
        const int place = mTime.GetRemappedIndex(first + k);
        int& before = mVPlaces[size_t(k)];
        bOther = bOther || (before != place && before != -1);
        before = place;
    }
    if (bOther) ForgetAll();
}

// Those that don't act just now, too.
void BondFollower_cls::ForgetAll() {
    const FilterCtrl_cls& list = mFilters.GetObject();
    for (int position = 0; position < list.GetCount(); ++position)
        if (list.GetPCFilter(position)->GetType() == FILTER_STICK)
            static_cast<FilterStick_cls*>(list.GetPCFilter(position))->ForgetBonds();
}

/// False: nothing is needed.
bool BondFollower_cls::FindNeeded() {
    mVpCSticks = mFilters.GetObject().GetVpCSticks();
    mVpCSticks.erase(std::remove_if(mVpCSticks.begin(), mVpCSticks.end(),
                                    [](const FilterStick_cls* stick) { return !stick->KeepsBonds(); }),
                     mVpCSticks.end());
    mNeeded = -1;
    if (!mVpCSticks.empty()) ForgetIfOther();
    for (FilterStick_cls* stick : mVpCSticks) {
        const int needed = stick->GetNeededFrame(mTime.GetWAMin(), mTime.GetFrame());
        if (needed >= 0 && (mNeeded < 0 || needed < mNeeded)) mNeeded = needed;
    }
    if (mNeeded < 0) mOwn.Drop();
    return mNeeded >= 0;
}

/// Null: not yet.
PDataSnap_cls* BondFollower_cls::ReadOwn(const PDataSnap_cls& snap, Source source) {
    switch (mOwn.Read(snap, source == Source::Wait)) {
    case AsideReader_cls::State::Read:
        return mOwn.GetPCSnap();
    case AsideReader_cls::State::NoMemory:
        Stop(_("Bonds can't be followed: memory is too short for another snapshot"));
        break;
    case AsideReader_cls::State::Reading:
        break;
    }
    return nullptr;
}

BondFollower_cls::State BondFollower_cls::FollowFrame(Source source) {
    PDataSnap_cls* snap = &GetSnap(mNeeded);
    StickParticles_st particles;
    // The same snapshot again changes nothing.
    const bool bNews = mNeeded == mTime.GetWAMin() || snap != &GetSnap(mNeeded - 1);
    if (bNews && snap->mFileStatus != FILE_UNUSABLE) {
        if (source == Source::Wait) PDataSnap_cls::WaitThreadReading(snap, true); // it may be on its way
        if (!snap->IsItLoaded()) {
            if (source == Source::Memory) return State::Reading;
            if (source == Source::Background && snap->mbLoadStarted) return State::Reading;
            snap = ReadOwn(*snap, source);
        }
        if (!snap) return mbStopped ? State::Stopped : State::Reading;
        particles = ParticlesOf(*snap);
    }
    bool bStopped = false;
    for (FilterStick_cls* stick : mVpCSticks)
        stick->AddFrame(mNeeded, particles,
                        [&] { return bStopped = bStopped || (mIsStopped && mIsStopped()); });
    if (bStopped) Stop();
    return bStopped ? State::Stopped : State::More;
}

BondFollower_cls::State BondFollower_cls::Follow(long millis, Source source) {
    const wxStopWatch watch;
    do {
        if (!FindNeeded()) {
            mbStopped = false;
            return State::Known;
        }
        if (mbStopped && mStoppedAt == std::make_pair(mTime.GetFrame(), mNeeded)) return State::Stopped;
        mbStopped = false;
        const State state = FollowFrame(source);
        if (state != State::More) return state;
    } while (watch.Time() < millis);
    return FindNeeded() ? State::More : State::Known;
}

void BondFollower_cls::Stop(const wxString& reason) {
    if (mNeeded < 0) return;
    mbStopped = true;
    mStoppedAt = {mTime.GetFrame(), mNeeded};
    mStrReason = reason;
}

bool BondFollower_cls::TakeAbort() {
    if (mNeeded < 0 || mbStopped || !GbAbort.exchange(false)) return false;
    Stop();
    return true;
}

wxString BondFollower_cls::GetStatus() const {
    if (mNeeded < 0) return wxString();
    if (mbStopped && !mStrReason.empty()) return mStrReason;
    if (mbStopped) return _("Bonds aren't followed: stopped");
    return wxString::Format(_("Following bonds: frame %d of %d"), mNeeded, mTime.GetFrame());
}
