#include "GL/VIEW/clsParticleWatch.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <wx/intl.h>
#include <wx/stopwatch.h>

#include "COMMON/Globals.h"
#include "COMMON/UpdateBits.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterLists.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/ParticleUnder.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "TIME/clsFilmTime.h"

ParticleWatch_cls::ParticleWatch_cls(const PDataSeqCtrl_cls& store, const FilmTime_cls& time,
                                     FilterLists_cls& filters, const PeriodicBoundary_cls& box)
    : mStore(store), mTime(time), mFilters(filters), mBox(box), mTrack(store) {}

ParticleWatch_cls::~ParticleWatch_cls() = default;

void ParticleWatch_cls::Tell() const {
    if (mOnChanged) mOnChanged();
}

// Ticks come and go with undo and redo, and the name with them.
ParticleTrack_cls& ParticleWatch_cls::GetTrack() {
    if (mTrack.GetName() != GetName()) {
        mTrack.SetName(GetName());
        mHeld = Held_st();
        mbStopped = false;
    }
    return mTrack;
}

void ParticleWatch_cls::Pick(const ParticleName_st& name) {
    if (name.IsNone()) {
        End();
        return;
    }
    mbShown = true;
    mShown = name;
    if (IsKept() && mKept != name) KeepShown(true);
    if (mOnPicked) mOnPicked();
    Tell();
}

/// The project's is the session's from now on. `bBefore`: there was one, which undo shows as well.
void ParticleWatch_cls::KeepShown(bool bBefore) {
    const auto command = [this, bBefore](const ParticleName_st& other) {
        const auto call = [this, bBefore, other] {
            mKept = other;
            if (mbShown && bBefore) mShown = other;
        };
        return new CommandCall_cls(call, UPDATE_GL | UPDATE_DRAW_OPTIONS);
    };
    GCUndoList.PushNewCommand(command(mShown), command(mKept));
    GCUndoList.ExecCurrent();
}

bool ParticleWatch_cls::End() {
    if (!mbShown) return false;
    mbShown = false;
    mShown = ParticleName_st();
    Tell();
    return true;
}

void ParticleWatch_cls::Reset() {
    mbFollow = mbTrail = mbLabel = mbShown = false;
    mKept = mShown = ParticleName_st();
    GetTrack();
    Tell();
}

void ParticleWatch_cls::OnTick(bool bFirst) {
    mbStopped = false;
    if (bFirst && IsKept() && mbShown && mKept != mShown) {
        KeepShown(false);
        GCUndoList.JoinLastTwo();
    }
    Tell();
}

wxString ParticleWatch_cls::GetText() const {
    const ParticleName_st& name = GetName();
    if (name.IsNone()) return wxString();
    return name.mbID ? wxString::Format("ID %d", name.mID) : wxString::Format("No. %d", name.mIndex);
}

int ParticleWatch_cls::FindIn(const PDataBlock_cls& block, unsigned long long serial) const {
    if (mFound.mpCBlock != &block || mFound.mSerial != serial || mFound.mName != GetName())
        mFound = {&block, serial, GetName(), FindParticle(block, GetName())};
    return mFound.mIndex;
}

bool ParticleWatch_cls::GetPlace(const SnapData_cls& snap, double out[3]) const {
    if (!IsPicked() || !snap.mbAllocated || !snap.mpCBlock) return false;
    const int index = FindIn(*snap.mpCBlock, snap.mSerial);
    if (index < 0 || index >= snap.mNumber || index % snap.mStep != 0) return false;
    return PlaceParticle(&mFilters, GetName().mCell, snap.mpPos[index], out);
}

/// Data coordinates. As it is drawn, as far as the snapshot is in memory.
bool ParticleWatch_cls::GetDataPlace(double time, float out[3]) {
    const PDataSequence_cls& sequence = *mStore.GetPCActiveFileSequence();
    if (sequence.GetSeqLength() < 1) return false;
    double index = mTime.GetRemappedIndexDouble(-1, -1);
    double step = mTime.GetRemappedIndex(-1) - std::floor(index) + mTime.GetRemappedInterpStepDouble(-1, -1);
    const bool bNow = time == mTime.GetDoubleIndex();
    if (!bNow) {
        const int steps = mTime.GetAnimInterp();
        const double all = time * mTime.GetMaxFrame() * steps;
        const int whole = static_cast<int>(std::lround(all));
        index = mTime.GetRemappedIndexDouble(whole / steps, whole % steps);
        step = index - std::floor(index);
    }
    const int snapshot = static_cast<int>(index);
    const ParticleTrack_cls::Place_st place = GetTrack().GetPlace(snapshot);
    if (place.mKnown != ParticleTrack_cls::Place_st::THERE) {
        const ParticleTrack_cls::Place_st* held = mTrack.GetHeld(snapshot);
        if (held) std::copy_n(held->mPos, 3, out);
        return held != nullptr;
    }
    std::copy_n(place.mPos, 3, out);
    if (step == 0.0) return true;
    const PDataSnap_cls& snap = *sequence.GetSnap(snapshot);
    const PDataBlock_cls& block = *snap.mpCBlock;
    if (snap.IsItLoaded() && block.mbAllocated && snap.mbInterpolated.load(std::memory_order_acquire)) {
        const int at = FindParticle(block, GetName());
        const auto dt = static_cast<float>(sequence.GetDT(snapshot, step));
        for (int i = 0; at >= 0 && i < 3; ++i)
            out[i] = block.mpPos[at][i] + block.mpVel[at][i] * dt;
        return true;
    }
    const ParticleTrack_cls::Place_st next = mTrack.GetPlace(snapshot + 1);
    for (int i = 0; next.mKnown == ParticleTrack_cls::Place_st::THERE && i < 3; ++i)
        out[i] += (next.mPos[i] - out[i]) * static_cast<float>(step);
    return true;
}

AnchorPath_cls::Followed ParticleWatch_cls::GetFollowed(double time, double out[3]) {
    if (!mbFollow || !IsPicked()) return AnchorPath_cls::NOTHING;
    float place[3];
    const bool bKnown = GetDataPlace(time, place);
    if (bKnown && time == mTime.GetDoubleIndex()) {
        mHeld.mbThere = true;
        std::copy_n(place, 3, mHeld.mPos);
    } else if (!bKnown) {
        if (!mHeld.mbThere) return AnchorPath_cls::NOTHING;
        std::copy_n(mHeld.mPos, 3, place);
    }
    if (FilterDataBoxData_cls* box = mFilters.GetObject().GetPCDataBox()) box->UpdateCurrentObj(time);
    if (!PlaceParticle(&mFilters, GetName().mCell, place, out) ||
        !std::all_of(out, out + 3, [](double v) { return std::isfinite(v); }))
        return AnchorPath_cls::NOTHING;
    return bKnown ? AnchorPath_cls::PRESENT : AnchorPath_cls::LATE;
}

unsigned long long ParticleWatch_cls::GetFollowState() {
    if (!mbFollow || !IsPicked()) return 0;
    const int length = mStore.GetPCActiveFileSequence()->GetSeqLength();
    const auto unknown = static_cast<unsigned long long>(GetTrack().CountUnknown(0, length - 1));
    return 1 + unknown + (mTrack.GetNameCount() << 20) + (PDataSnap_cls::msContents << 40);
}

/// Snapshots that the work area shows.
ParticleWatch_cls::Range_st ParticleWatch_cls::GetTrailRange() const {
    double low = mTime.GetRemappedIndexDouble(mTime.GetWAMin(), 0);
    double high = low;
    for (int frame = mTime.GetWAMin(); frame <= mTime.GetWAMax(); ++frame) {
        const double index = mTime.GetRemappedIndexDouble(frame, 0);
        low = std::min(low, index);
        high = std::max(high, index);
    }
    const int last = std::max(mStore.GetPCActiveFileSequence()->GetSeqLength() - 1, 0);
    return {std::clamp(static_cast<int>(std::floor(low)), 0, last),
            std::clamp(static_cast<int>(std::ceil(high)), 0, last)};
}

namespace {

/// The way from one place to the next, the short way round a periodic box; true when it goes round.
bool GetShortWay(const PeriodicBoundary_cls& box, const float* pFrom, const float* pTo, float out[3]) {
    bool bRound = false;
    for (int k = 0; k < 3; ++k) {
        out[k] = pTo[k] - pFrom[k];
        const unsigned type = box.mCPeriodicType.mValue;
        const bool bWraps = type == PERIODIC_XYZ || (type == PERIODIC_XY && k < 2);
        float vector[3];
        box.GetBoundaryVector(vector, k);
        const float length = std::fabs(vector[k]);
        if (!bWraps || !(std::fabs(out[k]) > 0.5f * length) || !(length > 0.0f)) continue;
        out[k] -= std::copysign(length, out[k]);
        bRound = true;
    }
    return bRound;
}

} // namespace

std::vector<std::vector<ParticleWatch_cls::Point_st>> ParticleWatch_cls::GetTrail() {
    std::vector<std::vector<Point_st>> lines;
    if (!mbTrail || !IsPicked()) return lines;
    bool bOpen = false;
    float before[3] = {0, 0, 0};
    const auto add = [&](const float* pPos) {
        double place[3];
        if (!PlaceParticle(&mFilters, GetName().mCell, pPos, place)) return;
        if (!bOpen) lines.emplace_back();
        bOpen = true;
        lines.back().push_back({float(place[0]), float(place[1]), float(place[2])});
    };
    const Range_st range = GetTrailRange();
    for (int i = range.mFirst; i <= range.mLast; ++i) {
        const ParticleTrack_cls::Place_st place = GetTrack().GetKnownPlace(i);
        if (place.mKnown != ParticleTrack_cls::Place_st::THERE) {
            bOpen = false;
            continue;
        }
        float way[3];
        if (bOpen && GetShortWay(mBox, before, place.mPos, way)) {
            // Out through one face and in through the other.
            const float out[3] = {before[0] + way[0], before[1] + way[1], before[2] + way[2]};
            const float in[3] = {place.mPos[0] - way[0], place.mPos[1] - way[1], place.mPos[2] - way[2]};
            add(out);
            bOpen = false;
            add(in);
        }
        add(place.mPos);
        std::copy_n(place.mPos, 3, before);
    }
    return lines;
}

// The anchor is more urgent than the trail.
ParticleWatch_cls::State ParticleWatch_cls::LearnSome(Source source) {
    State state = State::Known;
    if (mbFollow) {
        const int snapshot = static_cast<int>(mTime.GetRemappedIndexDouble(-1, -1));
        state = GetTrack().LearnHeld(snapshot, source);
    }
    if (state != State::Known || !mbTrail || mbStopped) return state;
    const Range_st range = GetTrailRange();
    return GetTrack().Learn(range.mFirst, range.mLast, source);
}

ParticleWatch_cls::State ParticleWatch_cls::Learn(long millis, Source source) {
    mState = State::Known;
    if (!IsPicked() || !(mbFollow || mbTrail)) return mState;
    const int present = static_cast<int>(mTime.GetRemappedIndexDouble(-1, -1));
    if (present != mPresent) mTrack.TryAgain(); // what another frame holds in memory is another
    mPresent = present;
    const wxStopWatch watch;
    do {
        mState = LearnSome(source);
    } while (mState == State::More && watch.Time() < millis);
    if (mState == State::Known) mTrack.DropSnapshot();
    return mState;
}

bool ParticleWatch_cls::TakeAbort() {
    const bool bWorks = mState == State::More || mState == State::Reading;
    if (!bWorks || !mbTrail || mbStopped || !GbAbort.exchange(false)) return false;
    mbStopped = true;
    return true;
}

wxString ParticleWatch_cls::GetStatus() {
    if (!IsPicked()) return wxString();
    if (mState == State::Known && !(mbTrail && mbStopped)) return wxString();
    if (mState == State::NoMemory)
        return _("The picked particle can't be followed: memory is too short for another snapshot");
    const Range_st range = GetTrailRange();
    const int number = range.mLast - range.mFirst + 1;
    const int unknown = mbTrail ? GetTrack().CountUnknown(range.mFirst, range.mLast) : 0;
    if (mbStopped && unknown == 0) return wxString();
    if (mbStopped)
        return wxString::Format(_("Trail stopped at %d of %d snapshots"), number - unknown, number);
    if (!mbTrail || unknown == 0) return _("Looking for the followed particle in other snapshots");
    return wxString::Format(_("Trail: %d of %d snapshots"), number - unknown, number);
}

namespace {

const char* const kParticle = "PickedParticle=";
const char* const kMarks = "PickedMarks=";

} // namespace

// Only what is in use.
wxString ParticleWatch_cls::Serialize() const {
    if (!IsKept() || !IsPicked()) return wxString();
    const ParticleName_st& name = GetName();
    return wxString::Format("%s%d %d %d %d %d %d\n%s%d %d %d\n", kParticle, int(name.mbID), name.mID,
                            name.mIndex, name.mCell[0], name.mCell[1], name.mCell[2], kMarks, int(mbFollow),
                            int(mbTrail), int(mbLabel));
}

void ParticleWatch_cls::ReadStrLine(const wxString& line) {
    wxString values;
    if (line.StartsWith(kParticle, &values)) {
        int bID = 0;
        ParticleName_st name;
        const int count = std::sscanf(values.utf8_str(), "%d %d %d %d %d %d", &bID, &name.mID, &name.mIndex,
                                      &name.mCell[0], &name.mCell[1], &name.mCell[2]);
        name.mbID = bID != 0;
        if (count < 6) name.mCell = {0, 0, 0}; // once copies had numbers here
        if (count >= 4 && name.mIndex >= 0) mKept = name;
    } else if (line.StartsWith(kMarks, &values)) {
        int marks[3] = {0, 0, 0};
        if (std::sscanf(values.utf8_str(), "%d %d %d", marks, marks + 1, marks + 2) != 3) return;
        mbFollow = marks[0] != 0;
        mbTrail = marks[1] != 0;
        mbLabel = marks[2] != 0;
    }
}
