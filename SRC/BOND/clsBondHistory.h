// Which bonds last from frame to frame: a bond forms when its particles come nearer than A and breaks when
// they are as far apart as a second, larger distance, so that bonds at the limit don't flicker in a film.
//
// What holds at a frame follows from all frames since the first one, and from nothing else: pictures of a
// slice of a film are those of the whole. A frame without particles (its file is missing, say) changes
// nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include <wx/string.h>

#include "BOND/StickCell.h"
#include "BOND/StickList.h"

/// Bonds as keys of two particles, ascending, each once.
using BondSet_t = std::vector<uint64_t>;

/// Same for both orders, and through whatever face the bond goes: a particle that leaves the box on one side
/// keeps its bonds.
inline uint64_t GetBondKey(const StickParticles_st& particles, unsigned i, unsigned j) {
    const uint32_t a = particles.mpID ? static_cast<uint32_t>(particles.mpID[i]) : i;
    const uint32_t b = particles.mpID ? static_cast<uint32_t>(particles.mpID[j]) : j;
    return (static_cast<uint64_t>(a < b ? a : b) << 32) | (a < b ? b : a);
}

class BondHistory_cls {
public:
    /// `budget`: bytes that the frames kept for going back may take; the last frame's bonds are kept anyway.
    explicit BondHistory_cls(size_t budget = size_t(256) << 20) : mBudget(budget) {}

    /// What bonds follow. Any change, of the first frame too, forgets all.
    void Set(const StickRule_st& rule, const StickCell_st& cell, int firstFrame);
    /// The particles of some frames may have changed.
    void Clear();
    /// The frame whose particles are to be handed over next so that the bonds of `frame` become known; -1:
    /// they are, or there are none because it lies before the first.
    int GetNeededFrame(int frame) const;
    /// Particles of the needed frame, all of them and as they are at that frame's own time. Others are
    /// ignored. Returns why bonds are missing from it, empty when none are.
    wxString AddFrame(int frame, const StickParticles_st& particles);
    /// The bonds at a frame; null when they are unknown, as they are before the first one.
    const BondSet_t* GetBonds(int frame) const;
    /// No two states of any history that differ share it.
    unsigned long long GetSerial() const { return mSerial; }
    /// Of the frames kept.
    size_t GetBytes() const { return mBytes; }

    std::function<bool()> mIsStopped; ///< as of PairFinder_cls; a stopped frame is needed again

private:
    void Thin(int present);

    size_t mBudget;
    size_t mBytes = 0;
    StickRule_st mRule;
    StickCell_st mCell;
    int mFirstFrame = 0;
    unsigned long long mSerial = 0;
    std::map<int, BondSet_t> mBonds; ///< by frame
};
