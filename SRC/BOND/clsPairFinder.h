// Finds the pairs of particles whose distance a rule accepts, on several threads: the same pairs in the same
// order, by the same arithmetic of floats, as the plain loop over all i and all j > i.
#pragma once

#include <cstddef>
#include <functional>

#include "BOND/StickCell.h"
#include "BOND/StickList.h"
#include "BOND/clsBondHistory.h"

class PairGrid_cls;

/// How a search ended. All but Whole leave an empty list.
enum class PairEnd {
    Whole,
    TooMany, ///< more than the limit, which no picture could show
    NoMemory,
    Stopped
};

class PairFinder_cls {
public:
    /// `cell`: for rules that go across faces. `pKept`: bonds of the frame before, for rules that keep them;
    /// null: none. All must live as long as the finder.
    PairFinder_cls(const StickParticles_st& particles, const StickRule_st& rule, const StickCell_st& cell,
                   const BondSet_t* pKept = nullptr);

    /// Pairs within the cell come first, by the first index and then the second. Those across faces follow:
    /// for each way of GetStickCrossings, by the index at the first end and then at the second; a particle
    /// may be bound to its own image. Their distance is that of the ends as they are drawn, the coordinates
    /// moved by offsets as MakeStickOffsets sums the vectors of copies.
    PairEnd Find(StickList_st* pList);

    /// Asked now and then on the caller's thread while it takes long; true: stop.
    std::function<bool()> mIsStopped;
    size_t mMost = size_t(1) << 28; ///< sticks
    // Set to what the machine has; they change nothing in the list.
    int mThreads;
    bool mbWide; ///< registers of eight floats

private:
    struct Worker_st;
    struct Search_st;

    /// A distance whose square is at least this counts for nothing.
    float GetLimit() const;
    double GetReach() const;
    /// Is all that is nearer than the limit a stick of weight 1?
    bool IsLimitAll() const;
    void FindOneWay(const PairGrid_cls& grid, const StickCrossing_st& way, StickList_st* pList);
    void Work(Search_st* pSearch, int worker) const;
    void SearchAround(const Search_st& search, int place, Worker_st* pWorker) const;
    bool Weigh(unsigned i, unsigned j, float square, float* pWeight) const;
    void Append(const Search_st& search, StickList_st* pList) const;

    const StickParticles_st& mParticles;
    const StickRule_st& mRule;
    const StickCell_st& mCell;
    const BondSet_t* mpKept;
    float mSquareA;
    float mSquareB;
    float mSquareKeep; ///< 0: the rule doesn't keep
    float mOffset[8][3];
    PairEnd mEnd = PairEnd::Whole;
};
