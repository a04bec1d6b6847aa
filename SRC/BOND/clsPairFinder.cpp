#include "BOND/clsPairFinder.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <new>
#include <thread>

#include <emmintrin.h>

#include "BOND/clsPairGrid.h"
#include "COMMON/OnThreads.h"

namespace {

constexpr int kRun = 64;            // particles that a thread takes at a time
constexpr int kFewParticles = 2000; // not worth a second thread
constexpr int kMostThreads = 16;

int GetThreadNumber() {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 2, kMostThreads);
}

} // namespace

/// What one thread found: for each particle that it took, its hits one behind the other.
struct PairFinder_cls::Worker_st {
    PairGrid_cls::Near_st mNear;
    uint32_t mCube = 0; ///< of what is gathered
    bool mbGathered = false;
    std::vector<Hit_st> mvPassed;
    std::vector<Hit_st> mvHit;
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
    size_t mRoom; ///< sticks up to the limit
    float mLimit; ///< of squares
    bool mbPlain;
    std::vector<Found_st> mvFound; ///< by particle
    std::vector<Worker_st> mvWorker;
    std::atomic<int> mNext{0};
    std::atomic<size_t> mNumber{0};
    std::atomic<PairEnd> mEnd{PairEnd::Whole};
};

PairFinder_cls::PairFinder_cls(const StickParticles_st& particles, const StickRule_st& rule,
                               const StickCell_st& cell, const BondSet_t* pKept)
    : mThreads(particles.mCount < kFewParticles ? 1 : GetThreadNumber()), mParticles(particles), mRule(rule),
      mCell(cell), mpKept(pKept), mSquareA(rule.mA * rule.mA), mSquareB(rule.mB * rule.mB),
      mSquareKeep(0.0f) {
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
    Search_st search{
        grid, way, mMost - std::min(mMost, pList->GetNumber()), GetLimit(), way.mFirst == way.mSecond,
        {},   {}};
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
        const size_t before = mine.mvHit.size();
        for (int place = begin; place < std::min(begin + kRun, number); ++place) {
            Search_st::Found_st& found = pSearch->mvFound[pSearch->mGrid.GetIndex(place)];
            found.worker = static_cast<uint32_t>(worker);
            found.first = static_cast<uint32_t>(mine.mvHit.size());
            SearchAround(*pSearch, place, &mine);
            found.number = static_cast<uint32_t>(mine.mvHit.size() - found.first);
            if (mine.mvHit.size() - before > pSearch->mRoom) break;
        }
        const size_t more = mine.mvHit.size() - before;
        if (pSearch->mNumber.fetch_add(more) + more > pSearch->mRoom) pSearch->mEnd = PairEnd::TooMany;
        if (worker == 0 && mIsStopped && mIsStopped()) pSearch->mEnd = PairEnd::Stopped;
    }
}

void PairFinder_cls::SearchAround(const Search_st& search, int place, Worker_st* pWorker) const {
    const unsigned i = search.mGrid.GetIndex(place);
    uint32_t cube = search.mGrid.GetCube(place);
    float from[3];
    search.mGrid.GetPos(place, from);
    if (!search.mbPlain) {
        double middle[3];
        for (int k = 0; k < 3; ++k) {
            from[k] += mOffset[search.mWay.mFirst][k];
            middle[k] = static_cast<double>(from[k]) - static_cast<double>(mOffset[search.mWay.mSecond][k]);
        }
        if (!search.mGrid.GetCubeOf(middle, &cube)) return;
    }
    if (!pWorker->mbGathered || pWorker->mCube != cube) {
        search.mGrid.Gather(cube, &pWorker->mNear);
        pWorker->mCube = cube;
        pWorker->mbGathered = true;
        if (pWorker->mvPassed.size() < pWorker->mNear.index.size())
            pWorker->mvPassed.resize(pWorker->mNear.index.size());
    }
    const size_t passed = Pass(search, from, search.mbPlain ? static_cast<int>(i) : -1, pWorker);
    const Hit_st* pPassed = pWorker->mvPassed.data();
    const size_t first = pWorker->mvHit.size();
    for (size_t k = 0; k < passed; ++k)
        if (Hit_st hit = pPassed[k]; Weigh(i, &hit)) pWorker->mvHit.push_back(hit);
    const auto begin = pWorker->mvHit.begin() + static_cast<std::ptrdiff_t>(first);
    const auto less = [](const Hit_st& a, const Hit_st& b) { return a.index < b.index; };
    if (!std::is_sorted(begin, pWorker->mvHit.end(), less)) std::sort(begin, pWorker->mvHit.end(), less);
}

/// Those near enough whose index is above the given one, in order, with their squared distances; their
/// number.
size_t PairFinder_cls::Pass(const Search_st& search, const float* pFrom, int above,
                            Worker_st* pWorker) const {
    const PairGrid_cls::Near_st& near = pWorker->mNear;
    const float* pOffset = mOffset[search.mWay.mSecond];
    const __m128 ox = _mm_set1_ps(pOffset[0]), oy = _mm_set1_ps(pOffset[1]), oz = _mm_set1_ps(pOffset[2]);
    const __m128 fx = _mm_set1_ps(pFrom[0]), fy = _mm_set1_ps(pFrom[1]), fz = _mm_set1_ps(pFrom[2]);
    const __m128 limit = _mm_set1_ps(search.mLimit);
    const __m128i least = _mm_set1_epi32(above);
    const float *x = near.x.data(), *y = near.y.data(), *z = near.z.data();
    const int* index = near.index.data();
    Hit_st* const pPassed = pWorker->mvPassed.data();
    size_t passed = 0;
    for (int k = 0; k < near.number; k += static_cast<int>(PairGrid_cls::kBlock)) {
        const __m128 dx = _mm_sub_ps(_mm_add_ps(_mm_loadu_ps(x + k), ox), fx);
        const __m128 dy = _mm_sub_ps(_mm_add_ps(_mm_loadu_ps(y + k), oy), fy);
        const __m128 dz = _mm_sub_ps(_mm_add_ps(_mm_loadu_ps(z + k), oz), fz);
        const __m128 square =
            _mm_add_ps(_mm_add_ps(_mm_mul_ps(dx, dx), _mm_mul_ps(dy, dy)), _mm_mul_ps(dz, dz));
        const __m128i indices = _mm_loadu_si128(reinterpret_cast<const __m128i*>(index + k));
        const __m128 good =
            _mm_and_ps(_mm_cmplt_ps(square, limit), _mm_castsi128_ps(_mm_cmpgt_epi32(indices, least)));
        unsigned bits = static_cast<unsigned>(_mm_movemask_ps(good));
        if (bits == 0) continue;
        alignas(16) float squares[PairGrid_cls::kBlock];
        _mm_store_ps(squares, square);
        for (; bits != 0; bits &= bits - 1) {
            const int lane = __builtin_ctz(bits);
            pPassed[passed++] = {static_cast<unsigned>(index[k + lane]), squares[lane]};
        }
    }
    return passed;
}

// The square of a hit becomes its weight.
bool PairFinder_cls::Weigh(unsigned i, Hit_st* pHit) const {
    if (mRule.mSpecType == STICK_TYPES_A_B) {
        const int a = mParticles.mpType ? mParticles.mpType[i] : 0;
        const int b = mParticles.mpType ? mParticles.mpType[pHit->index] : 0;
        if (!(a == mRule.mSpecA && b == mRule.mSpecB) && !(a == mRule.mSpecB && b == mRule.mSpecA))
            return false;
    }
    const float square = pHit->value;
    pHit->value = 1.0f;
    switch (mRule.mCritType) {
    case STICK_STEP:
        return mSquareA > square ||
               (mSquareKeep > square &&
                std::binary_search(mpKept->begin(), mpKept->end(), GetBondKey(mParticles, i, pHit->index)));
    case STICK_STEP_BETWEEN:
        return square > mSquareA && mSquareB > square;
    default:
        break;
    }
    if (mSquareA > square) return true;
    if (!(square > mSquareA && mSquareB > square)) return false;
    const float weight = (mRule.mB - std::sqrt(square)) / (mRule.mB - mRule.mA);
    pHit->value = weight == weight ? weight : 1.0f; // B is infinite
    return true;
}

void PairFinder_cls::Append(const Search_st& search, StickList_st* pList) const {
    const size_t old = pList->GetNumber();
    const size_t number = search.mNumber;
    if (number == 0) return;
    pList->Resize(old + number);
    if (search.mWay.mFirst != 0 || !pList->mvBitFirst.empty()) {
        const size_t told = pList->mvBitFirst.size();
        pList->mvBitFirst.resize(old + number);
        if (told == 0) std::fill_n(pList->mvBitFirst.begin(), old, static_cast<unsigned char>(0));
    }
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
            const Hit_st* pHit = &search.mvWorker[found.worker].mvHit[found.first];
            for (uint32_t k = 0; k < found.number; ++k, ++to) {
                pList->mvIndexA[to] = static_cast<unsigned>(i);
                pList->mvIndexB[to] = pHit[k].index;
                pList->mvFactor[to] = pHit[k].value;
            }
        }
        std::fill(pList->mvBit.begin() + static_cast<std::ptrdiff_t>(starts[part]),
                  pList->mvBit.begin() + static_cast<std::ptrdiff_t>(starts[part + 1]), search.mWay.mSecond);
        if (!pList->mvBitFirst.empty())
            std::fill(pList->mvBitFirst.begin() + static_cast<std::ptrdiff_t>(starts[part]),
                      pList->mvBitFirst.begin() + static_cast<std::ptrdiff_t>(starts[part + 1]),
                      search.mWay.mFirst);
    });
}
