#include "PDATA/clsParticleTrack.h"

#include <algorithm>
#include <cmath>

#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"

namespace {

bool IsNumber(float x) { return std::isfinite(x); }

} // namespace

void ParticleTrack_cls::SetName(const ParticleName_st& name) {
    if (name == mName) return;
    mName = name;
    ++mNames;
    mbNoMemory = false;
    mVPlaces.clear();
    mAside.Drop();
}

void ParticleTrack_cls::ForgetIfOther() {
    const PDataSequence_cls* sequence = mStore.GetPCActiveFileSequence();
    const auto length =
        static_cast<size_t>(std::clamp(sequence->GetSeqLength(), 0, int(PDataSequence_cls::kMaxSnap)));
    if (sequence != mpCSequence || PDataSnap_cls::msContents != mContents || mVPlaces.size() > length) {
        mVPlaces.assign(length, Place_st());
        mbNoMemory = false;
        mAside.Drop();
    }
    mVPlaces.resize(length); // what is known of a sequence that grows stays
    mpCSequence = sequence;
    mContents = PDataSnap_cls::msContents;
}

int ParticleTrack_cls::Clamp(int index) const {
    return std::clamp(index, 0, std::max(static_cast<int>(mVPlaces.size()) - 1, 0));
}

void ParticleTrack_cls::Take(const PDataSnap_cls& snap) {
    Place_st& place = mVPlaces[static_cast<size_t>(snap.mIndex)];
    const PDataBlock_cls& block = *snap.mpCBlock;
    const int index = snap.IsItLoaded() ? FindParticle(block, mName) : -1;
    place.mKnown = Place_st::MISSING;
    // One whose place is no number is nowhere.
    if (index < 0 || !std::all_of(block.mpPos[index], block.mpPos[index] + 3, IsNumber)) return;
    place.mKnown = Place_st::THERE;
    std::copy_n(block.mpPos[index], 3, place.mPos);
}

/// True when the snapshot is known now.
bool ParticleTrack_cls::LookInMemory(int index) {
    if (mVPlaces[static_cast<size_t>(index)].mKnown != Place_st::UNKNOWN) return true;
    const PDataSnap_cls& snap = *mpCSequence->GetSnap(index);
    if (!snap.IsItLoaded() && snap.mFileStatus != FILE_UNUSABLE) return false;
    Take(snap);
    return true;
}

ParticleTrack_cls::State ParticleTrack_cls::LearnOne(int index, Source source) {
    PDataSnap_cls& snap = *mpCSequence->GetSnap(index);
    if (source == Source::Wait) PDataSnap_cls::WaitThreadReading(&snap, true); // it may be on its way
    if (LookInMemory(index)) return State::More;
    if (source == Source::Memory) return mbNoMemory ? State::NoMemory : State::Reading;
    if (source == Source::Background && snap.mbLoadStarted) return State::Reading;
    const AsideReader_cls::State state = mAside.Read(snap, source == Source::Wait);
    mbNoMemory = state == AsideReader_cls::State::NoMemory;
    switch (state) {
    case AsideReader_cls::State::Read:
        Take(*mAside.GetPCSnap());
        return State::More;
    case AsideReader_cls::State::NoMemory:
        return State::NoMemory;
    case AsideReader_cls::State::Reading:
        break;
    }
    return State::Reading;
}

ParticleTrack_cls::State ParticleTrack_cls::Learn(int first, int last, Source source) {
    ForgetIfOther();
    if (mName.IsNone() || mVPlaces.empty()) return State::Known;
    first = Clamp(first);
    last = Clamp(last);
    // What is in memory first, one by one: each is a look through all its particles.
    int lacking = -1;
    for (int i = last; i >= first; --i) {
        if (mVPlaces[static_cast<size_t>(i)].mKnown != Place_st::UNKNOWN) continue;
        if (LookInMemory(i)) return State::More;
        lacking = i;
    }
    return lacking < 0 ? State::Known : LearnOne(lacking, source);
}

ParticleTrack_cls::State ParticleTrack_cls::LearnHeld(int index, Source source) {
    ForgetIfOther();
    if (mName.IsNone() || mVPlaces.empty()) return State::Known;
    index = Clamp(index);
    const int number = static_cast<int>(mVPlaces.size());
    // Backwards first, then from there on.
    for (int k = 0; k < number; ++k) {
        const int i = k <= index ? index - k : k;
        if (!LookInMemory(i)) return LearnOne(i, source);
        if (mVPlaces[static_cast<size_t>(i)].mKnown == Place_st::THERE) break;
    }
    return State::Known;
}

ParticleTrack_cls::Place_st ParticleTrack_cls::GetPlace(int index) {
    ForgetIfOther();
    if (mVPlaces.empty() || mName.IsNone()) return Place_st();
    LookInMemory(Clamp(index));
    return mVPlaces[static_cast<size_t>(Clamp(index))];
}

ParticleTrack_cls::Place_st ParticleTrack_cls::GetKnownPlace(int index) {
    ForgetIfOther();
    return mVPlaces.empty() || mName.IsNone() ? Place_st() : mVPlaces[static_cast<size_t>(Clamp(index))];
}

int ParticleTrack_cls::CountUnknown(int first, int last) {
    ForgetIfOther();
    if (mVPlaces.empty() || mName.IsNone()) return 0;
    return static_cast<int>(
        std::count_if(mVPlaces.begin() + Clamp(first), mVPlaces.begin() + Clamp(last) + 1,
                      [](const Place_st& place) { return place.mKnown == Place_st::UNKNOWN; }));
}

const ParticleTrack_cls::Place_st* ParticleTrack_cls::GetHeld(int index) {
    if (LearnHeld(index, Source::Memory) != State::Known || mVPlaces.empty()) return nullptr;
    const auto isThere = [](const Place_st& place) { return place.mKnown == Place_st::THERE; };
    const auto behind = mVPlaces.begin() + Clamp(index) + 1;
    const auto before = std::find_if(std::make_reverse_iterator(behind), mVPlaces.rend(), isThere);
    if (before != mVPlaces.rend()) return &*before;
    const auto after = std::find_if(behind, mVPlaces.end(), isThere);
    return after != mVPlaces.end() ? &*after : nullptr;
}
