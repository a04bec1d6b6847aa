#include "BOND/clsBondHistory.h"

#include <algorithm>
#include <new>

#include "BOND/PairMessages.h"
#include "BOND/clsPairFinder.h"

namespace {

constexpr size_t kFrameBytes = 64; // of a frame without bonds

size_t GetBytesOf(const BondSet_t& bonds) { return bonds.capacity() * sizeof(bonds[0]) + kFrameBytes; }

unsigned long long NextSerial() {
    static unsigned long long sSerial = 0;
    return ++sSerial;
}

BondSet_t MakeSet(const StickParticles_st& particles, const StickList_st& list) {
    BondSet_t bonds(list.GetNumber());
    for (size_t k = 0; k < bonds.size(); ++k)
        bonds[k] = GetBondKey(particles, list.mvIndexA[k], list.mvIndexB[k]);
    if (!std::is_sorted(bonds.begin(), bonds.end())) std::sort(bonds.begin(), bonds.end());
    bonds.erase(std::unique(bonds.begin(), bonds.end()), bonds.end());
    return bonds;
}

} // namespace

void BondHistory_cls::Set(const StickRule_st& rule, const StickCell_st& cell, int firstFrame) {
    if (mSerial != 0 && rule == mRule && cell == mCell && firstFrame == mFirstFrame) return;
    mRule = rule;
    mCell = cell;
    mFirstFrame = firstFrame;
    Clear();
}

void BondHistory_cls::Clear() {
    mBonds.clear();
    mBytes = 0;
    mSerial = NextSerial();
}

int BondHistory_cls::GetNeededFrame(int frame) const {
    if (frame < mFirstFrame) return -1;
    auto after = mBonds.upper_bound(frame);
    if (after == mBonds.begin()) return mFirstFrame;
    const int known = (--after)->first;
    return known == frame ? -1 : known + 1;
}

wxString BondHistory_cls::AddFrame(int frame, const StickParticles_st& particles) {
    static const BondSet_t kNone;
    if (frame < mFirstFrame || mBonds.count(frame) > 0) return {};
    const BondSet_t* pBefore = frame == mFirstFrame ? &kNone : GetBonds(frame - 1);
    if (!pBefore) return {};
    wxString reason;
    try {
        BondSet_t bonds;
        if (particles.mCount < 1) {
            bonds = *pBefore;
        } else {
            StickList_st list;
            PairFinder_cls finder(particles, mRule, mCell, pBefore);
            finder.mIsStopped = mIsStopped;
            const PairEnd end = finder.Find(&list);
            if (end == PairEnd::Stopped) return {};
            reason = GetPairMessage(end, finder.mMost);
            bonds = MakeSet(particles, list);
        }
        mBytes += GetBytesOf(bonds);
        mBonds[frame] = std::move(bonds);
    } catch (const std::bad_alloc&) {
        reason = GetPairMessage(PairEnd::NoMemory, 0);
        mBytes += kFrameBytes;
        mBonds[frame] = {};
    }
    Thin(frame);
    return reason;
}

const BondSet_t* BondHistory_cls::GetBonds(int frame) const {
    const auto found = mBonds.find(frame);
    return found == mBonds.end() ? nullptr : &found->second;
}

// Steps back are mostly short: the farther from the present, the wider the gaps that are left.
void BondHistory_cls::Thin(int present) {
    while (mBytes > mBudget && mBonds.size() > 1) {
        auto least = mBonds.end();
        double leastGap = 0.0;
        for (auto it = mBonds.begin(); it != mBonds.end(); ++it) {
            if (it->first == present) continue;
            const auto next = std::next(it);
            const double before = it == mBonds.begin() ? mFirstFrame - 1 : std::prev(it)->first;
            const double after = next == mBonds.end() ? it->first + 1 : next->first;
            const double gap = (after - before) / (1.0 + std::abs(present - it->first));
            if (least != mBonds.end() && gap >= leastGap) continue;
            least = it;
            leastGap = gap;
        }
        mBytes -= GetBytesOf(least->second);
        mBonds.erase(least);
    }
}
