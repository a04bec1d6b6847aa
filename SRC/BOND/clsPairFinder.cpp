#include "BOND/clsPairFinder.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <new>
#include <thread>

#include "BOND/PairScan.h"
#include "BOND/clsPairGrid.h"
#include "COMMON/OnThreads.h"
#include "COMMON/WideRegisters.h"

namespace {

constexpr int kRun = 64;            // particles that a thread takes at a time
constexpr int kFewParticles = 2000; // not worth a second thread
constexpr int kMostThreads = 16;

int GetThreadNumber() {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 2, kMostThreads);
}

/// The column that may be empty gets `number` masks behind the `old` ones.
void LengthenMasks(unsigned char mask, size_t old, size_t number, StickColumn_t<unsigned char>* pMasks) {
    if (mask == 0 && pMasks->empty()) return;
    const size_t told = pMasks->size();
    pMasks->resize(old + number);
    std::fill_n(pMasks->begin(), old - told, static_cast<unsigned char>(0));
    std::fill_n(pMasks->begin() + static_cast<std::ptrdiff_t>(old), number, mask);
}

} // namespace

/// What one thread found: for each particle that it took, its hits one behind the other.
struct PairFinder_cls::Worker_st {
    PairGrid_cls::Near_st mNear;
    uint32_t mCube = 0; ///< of what is gathered
    bool mbGathered = false;
    std::vector<int> mvPassed; ///< of one particle: who is near enough
    std::vector<float> mvSquare;
    StickColumn_t<unsigned> mvHit;
    StickColumn_t<float> mvWeight; ///< of hits; empty where all are 1
    size_t mNumber = 0;            ///< hits

    /// Room for all who are gathered.
    void ReservePassed() {
        const size_t room = static_cast<size_t>(mNear.number) + kPairScanRoom;
        if (mvPassed.size() >= room) return;
        mvPassed.resize(room);
        mvSquare.resize(room);
    }
    void ReserveHits(size_t more, bool bWeights) {
        if (mvHit.size() >= mNumber + more) return;
        mvHit.resize(2 * mvHit.size() + more);
        if (bWeights) mvWeight.resize(mvHit.size());
    }
};

struct PairFinder_cls::Search_st {
    /// Where the hits of a particle stand.
    struct Found_st {
        uint32_t first = 0;
        uint32_t number = 0;
        uint32_t worker = 0;
    };

    const PairGrid_cls& mGrid;
    StickCrossing_st mWay;
    size_t mRoom;                  ///< sticks up to the limit
    float mLimit;                  ///< of squares
    bool mbPlain;                  ///< not across faces
    bool mbWeights;                ///< that differ from 1
    std::vector<Found_st> mvFound; ///< by particle
    std::vector<Worker_st> mvWorker;
    std::atomic<int> mNext{0};
    std::atomic<size_t> mNumber{0};
    std::atomic<PairEnd> mEnd{PairEnd::Whole};
};

PairFinder_cls::PairFinder_cls(const StickParticles_st& particles, const StickRule_st& rule,
                               const StickCell_st& cell, const BondSet_t* pKept)
    : mThreads(particles.mCount < kFewParticles ? 1 : GetThreadNumber()), mbWide(HasWideRegisters()),
      mParticles(particles), mRule(rule), mCell(cell), mpKept(pKept), mSquareA(rule.mA * rule.mA),
      mSquareB(rule.mB * rule.mB), mSquareKeep(0.0f) {
    if (rule.mCritType == STICK_STEP && rule.mKeepUntil * rule.mKeepUntil > mSquareA && pKept &&
        !pKept->empty())
        mSquareKeep = rule.mKeepUntil * rule.mKeepUntil;
    float vectors[3][3];
    for (int k = 0; k < 3; ++k)
        cell.GetCopyVector(k, vectors[k]);
    MakeStickOffsets(vectors, true, mOffset);
}

float PairFinder_cls::GetLimit() const {
    float limit = 0.0f;
    if (mRule.mSpecType != STICK_ANY_TYPE && mRule.mSpecType != STICK_TYPES_A_B) return limit;
    if (mRule.mCritType == STICK_STEP) limit = std::max(mSquareA, mSquareKeep);
    if (mRule.mCritType == STICK_STEP_BETWEEN) limit = mSquareB;
    // A being B, no stick at all: not even for what is nearer.
    if (mRule.mCritType == STICK_RAMP && mRule.mA != mRule.mB) limit = std::fmax(mSquareA, mSquareB);
    return limit > 0.0f ? limit : 0.0f;
}

bool PairFinder_cls::IsLimitAll() const {
    return mRule.mCritType == STICK_STEP && mRule.mSpecType == STICK_ANY_TYPE && mSquareKeep == 0.0f;
}

// Squares of floats are a little off, and where they are as small as the smallest floats, a lot; across
// faces, sums of places and offsets are rounded, too.
double PairFinder_cls::GetReach() const {
    double far = 0.0;
    const auto count = [&far](const float* p, double factor) {
        for (int k = 0; k < 3; ++k) {
            const double x = std::fabs(static_cast<double>(p[k]));
            if (std::isfinite(x)) far = std::max(far, factor * x);
        }
    };
    const size_t step = static_cast<size_t>(std::max(mParticles.mStep, 1));
    for (size_t i = 0; mRule.mbAcross && i < static_cast<size_t>(mParticles.mCount); i += step)
        count(mParticles.mpPos[i], 1.0);
    for (size_t mask = 0; mRule.mbAcross && mask < 8; ++mask)
        count(mOffset[mask], 2.0);
    return std::sqrt(static_cast<double>(GetLimit()) + 1e-44) * 1.00001 + far * 1e-6;
}

PairEnd PairFinder_cls::Find(StickList_st* pList) {
    pList->Clear();
    mEnd = PairEnd::Whole;
    if (GetLimit() == 0.0f || mParticles.mCount < 1 || !mParticles.mpPos) return mEnd;
    try {
        const PairGrid_cls grid(mParticles, mRule, GetReach(), mThreads);
        FindOneWay(grid, {0, 0}, pList);
        for (const StickCrossing_st& way :
             mRule.mbAcross ? GetStickCrossings(mCell) : std::vector<StickCrossing_st>())
            if (mEnd == PairEnd::Whole) FindOneWay(grid, way, pList);
    } catch (const std::bad_alloc&) {
        mEnd = PairEnd::NoMemory;
    }
    if (mEnd != PairEnd::Whole) pList->Clear();
    return mEnd;
}

void PairFinder_cls::FindOneWay(const PairGrid_cls& grid, const StickCrossing_st& way, StickList_st* pList) {
    Search_st search{grid,
                     way,
                     mMost - std::min(mMost, pList->GetNumber()),
                     GetLimit(),
                     way.mFirst == way.mSecond,
                     mRule.mCritType == STICK_RAMP,
                     {},
                     {}};
    search.mvFound.resize(static_cast<size_t>(mParticles.mCount));
    search.mvWorker.resize(static_cast<size_t>(mThreads));
    OnThreads(mThreads, [&](int worker) {
        try {
            Work(&search, worker);
        } catch (const std::bad_alloc&) {
            search.mEnd = PairEnd::NoMemory;
        }
    });
    mEnd = search.mEnd;
    if (mEnd == PairEnd::Whole) Append(search, pList);
}

void PairFinder_cls::Work(Search_st* pSearch, int worker) const {
    Worker_st& mine = pSearch->mvWorker[static_cast<size_t>(worker)];
    const int number = pSearch->mGrid.GetNumber();
    for (;;) {
        const int begin = pSearch->mNext.fetch_add(kRun);
        if (begin >= number || begin < 0 || pSearch->mEnd != PairEnd::Whole) return;
        const size_t before = mine.mNumber;
        for (int place = begin; place < std::min(begin + kRun, number); ++place) {
            Search_st::Found_st& found = pSearch->mvFound[pSearch->mGrid.GetIndex(place)];
            found.worker = static_cast<uint32_t>(worker);
            found.first = static_cast<uint32_t>(mine.mNumber);
            SearchAround(*pSearch, place, &mine);
            found.number = static_cast<uint32_t>(mine.mNumber - found.first);
            if (mine.mNumber - before > pSearch->mRoom) break;
        }
        const size_t more = mine.mNumber - before;
        if (pSearch->mNumber.fetch_add(more) + more > pSearch->mRoom) pSearch->mEnd = PairEnd::TooMany;
        if (worker == 0 && mIsStopped && mIsStopped()) pSearch->mEnd = PairEnd::Stopped;
    }
}

void PairFinder_cls::SearchAround(const Search_st& search, int place, Worker_st* pWorker) const {
    const unsigned i = search.mGrid.GetIndex(place);
    uint32_t cube = search.mGrid.GetCube(place);
    PairScan_st scan;
    search.mGrid.GetPos(place, scan.mFrom);
    std::copy_n(mOffset[search.mWay.mSecond], 3, scan.mOffset);
    scan.mLimit = search.mLimit;
    scan.mAbove = search.mbPlain ? static_cast<int>(i) : -1;
    if (!search.mbPlain) {
        double middle[3];
        for (int k = 0; k < 3; ++k) {
            scan.mFrom[k] += mOffset[search.mWay.mFirst][k];
            middle[k] = static_cast<double>(scan.mFrom[k]) - static_cast<double>(scan.mOffset[k]);
        }
        if (!search.mGrid.GetCubeOf(middle, &cube)) return;
    }
    if (!pWorker->mbGathered || pWorker->mCube != cube) {
        search.mGrid.Gather(cube, &pWorker->mNear);
        pWorker->mCube = cube;
        pWorker->mbGathered = true;
        pWorker->ReservePassed();
    }
    int* const pPassed = pWorker->mvPassed.data();
    float* const pSquare = pWorker->mvSquare.data();
    size_t number = ScanNear(scan, pWorker->mNear, mbWide, pPassed, pSquare);
    if (!IsLimitAll()) {
        size_t kept = 0;
        for (size_t k = 0; k < number; ++k) {
            pPassed[kept] = pPassed[k];
            kept += Weigh(i, static_cast<unsigned>(pPassed[k]), pSquare[k], &pSquare[kept]) ? 1 : 0;
        }
        number = kept;
    }
    pWorker->ReserveHits(number, search.mbWeights);
    unsigned* const pHit = pWorker->mvHit.data() + pWorker->mNumber;
    if (search.mbWeights)
        SortHits(pPassed, pSquare, number, mbWide, pHit, pWorker->mvWeight.data() + pWorker->mNumber);
    else
        SortHits(pPassed, nullptr, number, mbWide, pHit, nullptr);
    pWorker->mNumber += number;
}

// Is it a stick, and of which weight?
bool PairFinder_cls::Weigh(unsigned i, unsigned j, float square, float* pWeight) const {
    if (mRule.mSpecType == STICK_TYPES_A_B) {
        const int a = mParticles.mpType ? mParticles.mpType[i] : 0;
        const int b = mParticles.mpType ? mParticles.mpType[j] : 0;
        if (!(a == mRule.mSpecA && b == mRule.mSpecB) && !(a == mRule.mSpecB && b == mRule.mSpecA))
            return false;
    }
    *pWeight = 1.0f;
    switch (mRule.mCritType) {
    case STICK_STEP:
        return mSquareA > square ||
               (mSquareKeep > square &&
                std::binary_search(mpKept->begin(), mpKept->end(), GetBondKey(mParticles, i, j)));
    case STICK_STEP_BETWEEN:
        return square > mSquareA && mSquareB > square;
    default:
        break;
    }
    if (mSquareA > square) return true;
    if (!(square > mSquareA && mSquareB > square)) return false;
    const float weight = (mRule.mB - std::sqrt(square)) / (mRule.mB - mRule.mA);
    *pWeight = weight == weight ? weight : 1.0f; // B is infinite
    return true;
}

void PairFinder_cls::Append(const Search_st& search, StickList_st* pList) const {
    const size_t old = pList->GetNumber();
    const size_t number = search.mNumber;
    if (number == 0) return;
    pList->Resize(old + number);
    LengthenMasks(search.mWay.mFirst, old, number, &pList->mvBitFirst);
    LengthenMasks(search.mWay.mSecond, old, number, &pList->mvBit);
    if (search.mbWeights) pList->mvFactor.resize(old + number);
    // Where the sticks of each part's first particle begin.
    const size_t particles = search.mvFound.size();
    const size_t parts = static_cast<size_t>(mThreads);
    std::vector<size_t> starts(parts + 1, old);
    for (size_t part = 0; part < parts; ++part) {
        size_t sum = 0;
        for (size_t i = particles * part / parts; i < particles * (part + 1) / parts; ++i)
            sum += search.mvFound[i].number;
        starts[part + 1] = starts[part] + sum;
    }
    OnThreads(mThreads, [&](int worker) {
        const size_t part = static_cast<size_t>(worker);
        size_t to = starts[part];
        for (size_t i = particles * part / parts; i < particles * (part + 1) / parts; ++i) {
            const Search_st::Found_st& found = search.mvFound[i];
            if (found.number == 0) continue;
            const Worker_st& from = search.mvWorker[found.worker];
            std::fill_n(&pList->mvIndexA[to], found.number, static_cast<unsigned>(i));
            std::copy_n(&from.mvHit[found.first], found.number, &pList->mvIndexB[to]);
            if (search.mbWeights)
                std::copy_n(&from.mvWeight[found.first], found.number, &pList->mvFactor[to]);
            to += found.number;
        }
    });
}
