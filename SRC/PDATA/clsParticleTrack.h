// Where one particle is in each snapshot of a sequence, as far as that is known.
#pragma once

#include <vector>

#include "PDATA/ParticleName.h"
#include "PDATA/clsAsideReader.h"

class PDataSeqCtrl_cls;
class PDataSequence_cls;
class PDataSnap_cls;

/// Of the store's active sequence. Snapshots that are in memory are looked at first and cost nothing, others
/// are read aside, one at a time. Main thread only.
class ParticleTrack_cls {
public:
    /// The store lives longer.
    explicit ParticleTrack_cls(const PDataSeqCtrl_cls& store) : mStore(store) {}
    ParticleTrack_cls(const ParticleTrack_cls&) = delete;
    ParticleTrack_cls& operator=(const ParticleTrack_cls&) = delete;

    /// Another particle, or none: what is known is forgotten.
    void SetName(const ParticleName_st& name);
    const ParticleName_st& GetName() const { return mName; }
    unsigned long long GetNameCount() const { return mNames; } ///< how many it has had

    enum class State {
        Known,    ///< all that was asked for
        More,     ///< there is more to look at
        Reading,  ///< a snapshot has to come first
        NoMemory, ///< for it
    };
    /// What snapshots come from.
    enum class Source {
        Memory,     ///< alone
        Background, ///< what lacks is read, when no other one is
        Wait,       ///< the same, waiting for it
    };
    /// Get to know all snapshots from `first` to `last`, one that isn't known yet a call.
    State Learn(int first, int last, Source source);
    /// Get to know where it is held in snapshot `index` (GetHeld).
    State LearnHeld(int index, Source source);

    struct Place_st {
        enum Known_e : char { UNKNOWN, MISSING, THERE } mKnown = UNKNOWN;
        float mPos[3] = {0, 0, 0}; ///< at the snapshot's own time
    };
    /// In the nearest snapshot there is.
    Place_st GetPlace(int index);
    /// The same without a look at what is in memory.
    Place_st GetKnownPlace(int index);
    /// Snapshots from `first` to `last` that aren't known yet.
    int CountUnknown(int first, int last);
    /// Where it stays in a snapshot that lacks it: where it was in the last one before that has it, or where
    /// it appears first. Null: nowhere, or that isn't known yet.
    const Place_st* GetHeld(int index);
    /// What had no memory is tried anew; until then it is said again (Source::Memory).
    void TryAgain() { mbNoMemory = false; }
    /// No longer needed: gives its memory back, and keeps what is known.
    void DropSnapshot() { mAside.Drop(); }

private:
    void ForgetIfOther();
    void Take(const PDataSnap_cls& snap);
    bool LookInMemory(int index);
    State LearnOne(int index, Source source);
    int Clamp(int index) const;

    const PDataSeqCtrl_cls& mStore;
    ParticleName_st mName;
    unsigned long long mNames = 0;
    bool mbNoMemory = false;
    AsideReader_cls mAside;
    std::vector<Place_st> mVPlaces;
    // What is known is good for these.
    const PDataSequence_cls* mpCSequence = nullptr;
    unsigned long long mContents = 0;
};
