#include "GL/BASE/ViewFit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <thread>

#include "COMMON/DataLoops.h"
#include "COMMON/OnThreads.h"
#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsPositionAndDirection.h"

namespace {

constexpr double kFilled = 0.95; // of the half side
constexpr long long kBlock = 1024;
constexpr long long kParticlesAThread = 200000;
constexpr int kLanes = 16; // of the loop over a block; divides kBlock

// Places relative to one of the particles: so what is small stays exact far from the origin.
struct Block_st {
    float x[kBlock], y[kBlock], z[kBlock], r[kBlock];
};

// A direction, and the opposite one where that is wanted, too: one product serves both.
struct FloatDirection_st {
    float v[3];
    float length = 1.0f; ///< weight of a radius
    int axis = -1;       ///< 0 to 2: it is just x, y or z
    bool bBack = false;  ///< is the opposite one wanted?
};

/// What is measured, each direction once: fits of several views ask for many of them again.
struct ReachPlan_st {
    std::vector<FloatDirection_st> directions;
    std::vector<size_t>
        slots; ///< of all that are asked for: 2 * place in `directions`, + 1 for opposite ones
};

unsigned ClassOf(const FitCloud_st& cloud, long long i) {
    if (!cloud.mpType || cloud.mpType[i] >= FitCloud_st::kClasses) return 0;
    return cloud.mpType[i];
}

bool Counts(const FitCloud_st& cloud, long long i) {
    const float* p = cloud.mpPos[i];
    const float sum = p[0] + p[1] + p[2];
    return sum - sum == 0.0f && cloud.mbDrawn[ClassOf(cloud, i)];
}

/// Place `i` of the block; a particle that doesn't count stands where the reference does.
void Take(const FitCloud_st& cloud, long long particle, const float* pReference, Block_st& block,
          long long i) {
    const bool bCounts = Counts(cloud, particle);
    const float* p = bCounts ? cloud.mpPos[particle] : pReference;
    block.x[i] = p[0] - pReference[0];
    block.y[i] = p[1] - pReference[1];
    block.z[i] = p[2] - pReference[2];
    block.r[i] = 0.0f;
    if (!bCounts) return;
    const unsigned c = ClassOf(cloud, particle);
    const float radius = cloud.mpRadius ? std::fabs(cloud.mpRadius[particle]) : 0.0f;
    const float drawn = cloud.mRadiusFactor[c] == 0.0f
                            ? cloud.mRadiusConstant[c]
                            : cloud.mRadiusFactor[c] * radius + cloud.mRadiusConstant[c];
    block.r[i] = drawn - drawn == 0.0f ? std::fabs(drawn) : 0.0f;
}

// The same for a whole block of neighbours that are all drawn alike: loops without branches.
MORENTIS_DATA_LOOP void TakePlaces(const float (*pPos)[3], const float* pReference, Block_st& block) {
    const float x = pReference[0], y = pReference[1], z = pReference[2];
    for (int i = 0; i < kBlock; ++i) {
        const float dx = pPos[i][0] - x;
        const float dy = pPos[i][1] - y;
        const float dz = pPos[i][2] - z;
        const float sum = dx + dy + dz;
        const bool bNumber = sum - sum == 0.0f;
        block.x[i] = bNumber ? dx : 0.0f;
        block.y[i] = bNumber ? dy : 0.0f;
        block.z[i] = bNumber ? dz : 0.0f;
        block.r[i] = bNumber ? 1.0f : 0.0f;
    }
}

// Behind TakePlaces: 1 becomes the drawn radius.
MORENTIS_DATA_LOOP void TakeRadii(const float* pRadius, float factor, float constant, Block_st& block) {
    for (int i = 0; i < kBlock; ++i) {
        const float drawn = std::fabs(factor * std::fabs(pRadius[i]) + constant);
        block.r[i] *= drawn - drawn == 0.0f ? drawn : 0.0f;
    }
}

void TakeRadius(float drawn, Block_st& block) {
    drawn = drawn - drawn == 0.0f ? std::fabs(drawn) : 0.0f;
    for (float& r : block.r)
        r *= drawn;
}

/// The largest values of v + r and of r - v; without `pR` r is 0.
MORENTIS_DATA_LOOP void TakeMost(const float* pV, const float* pR, float* pForth, float* pBack) {
    float forth[kLanes], back[kLanes];
    for (int j = 0; j < kLanes; ++j) {
        forth[j] = *pForth;
        back[j] = -*pBack;
    }
    for (int i = 0; i < kBlock; i += kLanes)
        for (int j = 0; j < kLanes; ++j) {
            const float high = pR ? pV[i + j] + pR[i + j] : pV[i + j];
            const float low = pR ? pV[i + j] - pR[i + j] : pV[i + j];
            forth[j] = high > forth[j] ? high : forth[j];
            back[j] = low < back[j] ? low : back[j];
        }
    *pForth = *std::max_element(forth, forth + kLanes);
    *pBack = -*std::min_element(back, back + kLanes);
}

/// The same along any direction.
MORENTIS_DATA_LOOP void TakeMostAlong(const Block_st& block, FloatDirection_st d, bool bRadius, float* pForth,
                                      float* pBack) {
    float forth[kLanes], back[kLanes];
    for (int j = 0; j < kLanes; ++j) {
        forth[j] = *pForth;
        back[j] = -*pBack;
    }
    for (int i = 0; i < kBlock; i += kLanes)
        for (int j = 0; j < kLanes; ++j) {
            const float along = d.v[0] * block.x[i + j] + d.v[1] * block.y[i + j] + d.v[2] * block.z[i + j];
            const float reach = bRadius ? d.length * block.r[i + j] : 0.0f;
            const float high = along + reach;
            const float low = along - reach;
            forth[j] = high > forth[j] ? high : forth[j];
            back[j] = low < back[j] ? low : back[j];
        }
    *pForth = *std::max_element(forth, forth + kLanes);
    *pBack = -*std::min_element(back, back + kLanes);
}

/// Only forth.
MORENTIS_DATA_LOOP void TakeMostForth(const Block_st& block, FloatDirection_st d, bool bRadius,
                                      float* pForth) {
    float forth[kLanes];
    for (int j = 0; j < kLanes; ++j)
        forth[j] = *pForth;
    for (int i = 0; i < kBlock; i += kLanes)
        for (int j = 0; j < kLanes; ++j) {
            const float along = d.v[0] * block.x[i + j] + d.v[1] * block.y[i + j] + d.v[2] * block.z[i + j];
            const float high = bRadius ? along + d.length * block.r[i + j] : along;
            forth[j] = high > forth[j] ? high : forth[j];
        }
    *pForth = *std::max_element(forth, forth + kLanes);
}

void TakeMaximum(const Block_st& block, const FloatDirection_st& d, bool bRadius, float* pMost) {
    const float* const pPlaces[3] = {block.x, block.y, block.z};
    if (d.axis >= 0)
        TakeMost(pPlaces[d.axis], bRadius ? block.r : nullptr, pMost, pMost + 1);
    else if (d.bBack)
        TakeMostAlong(block, d, bRadius, pMost, pMost + 1);
    else
        TakeMostForth(block, d, bRadius, pMost);
}

template <class DIRECTIONS>
ReachPlan_st MakePlan(const DIRECTIONS& wanted) {
    ReachPlan_st plan;
    for (const auto& d : wanted) {
        const auto is = [&d](const FloatDirection_st& one, float sign) {
            for (int i = 0; i < 3; ++i)
                if (one.v[i] != sign * static_cast<float>(d.v[i])) return false;
            return true;
        };
        size_t k = 0;
        while (k < plan.directions.size() && !is(plan.directions[k], 1.0f) && !is(plan.directions[k], -1.0f))
            ++k;
        if (k == plan.directions.size()) {
            FloatDirection_st one;
            for (int i = 0; i < 3; ++i)
                one.v[i] = static_cast<float>(d.v[i]);
            one.length = static_cast<float>(MyVector::GetNorm(d.v));
            for (int i = 0; i < 3; ++i)
                if (one.v[i] == 1.0f && one.v[(i + 1) % 3] == 0.0f && one.v[(i + 2) % 3] == 0.0f)
                    one.axis = i;
            plan.directions.push_back(one);
        }
        const bool bBack = !is(plan.directions[k], 1.0f);
        plan.directions[k].bBack |= bBack;
        plan.slots.push_back(2 * k + (bBack ? 1 : 0));
    }
    return plan;
}

/// All particles are drawn, and in the same way.
bool IsUniform(const FitCloud_st& cloud) {
    if (cloud.mStep != 1) return false;
    for (int c = 0; c < (cloud.mpType ? FitCloud_st::kClasses : 1); ++c)
        if (!cloud.mbDrawn[c] || cloud.mRadiusFactor[c] != cloud.mRadiusFactor[0] ||
            cloud.mRadiusConstant[c] != cloud.mRadiusConstant[0])
            return false;
    return true;
}

/// The drawn particles `begin` to `end` (exclusive); `reference` is one of the cloud's.
void MeasureRange(const FitCloud_st& cloud, bool bUniform, long long reference, long long begin,
                  long long end, const std::vector<FloatDirection_st>& directions, std::vector<float>& most) {
    Block_st block;
    const float* pReference = cloud.mpPos[reference];
    for (long long first = begin; first < end; first += kBlock) {
        const long long count = std::min(kBlock, end - first);
        bool bRadius = true;
        if (bUniform && count == kBlock) {
            TakePlaces(cloud.mpPos + first, pReference, block);
            if (cloud.mpRadius && cloud.mRadiusFactor[0] != 0.0f)
                TakeRadii(cloud.mpRadius + first, cloud.mRadiusFactor[0], cloud.mRadiusConstant[0], block);
            else if ((bRadius = cloud.mRadiusConstant[0] != 0.0f))
                TakeRadius(cloud.mRadiusConstant[0], block);
        } else {
            for (long long i = 0; i < kBlock; ++i)
                Take(cloud, i < count ? (first + i) * cloud.mStep : reference, pReference, block, i);
        }
        for (size_t k = 0; k < directions.size(); ++k)
            TakeMaximum(block, directions[k], bRadius, &most[2 * k]);
    }
}

long long FindFirst(const FitCloud_st& cloud) {
    for (long long i = 0; i < cloud.mNumber; i += cloud.mStep)
        if (Counts(cloud, i)) return i;
    return -1;
}

int GetThreadCount(long long drawn) {
    const long long cores = std::max(1u, std::thread::hardware_concurrency());
    return static_cast<int>(std::clamp(drawn / kParticlesAThread, 1LL, std::min(cores, 8LL)));
}

} // namespace

CloudReach_cls::Direction_st CloudReach_cls::Pull(const FitPlace_st& place, const Direction_st& d) {
    Direction_st out{};
    for (int k = 0; k < 3; ++k)
        for (int i = 0; i < 3; ++i)
            out.v[k] += place.mMatrix[4 * k + i] * d.v[i];
    return out;
}

double CloudReach_cls::GetShift(const FitPlace_st& place, const Direction_st& d, const Direction_st& pulled) {
    double shift = MyVector::GetScalarProduct(d.v, place.mMatrix + 12);
    for (int k = 0; k < 3; ++k) {
        const double step = MyVector::GetScalarProduct(pulled.v, place.mVector[k]);
        shift += std::max(step * place.mFirst[k], step * place.mLast[k]);
    }
    return shift;
}

int CloudReach_cls::Add(const double direction[3]) {
    mDirections.push_back({{direction[0], direction[1], direction[2]}});
    return GetCount() - 1;
}

bool CloudReach_cls::Measure(const FitCloud_st& cloud) {
    mReach.clear();
    if (!cloud.mpPos || cloud.mStep < 1) return false;
    const long long reference = FindFirst(cloud);
    if (reference < 0) return false;
    // Asked of the cloud as it lies in its arrays: the same products, but for what all particles share.
    std::vector<Direction_st> pulled;
    for (const Direction_st& asked : mDirections)
        pulled.push_back(Pull(cloud.mPlace, asked));
    const ReachPlan_st plan = MakePlan(pulled);
    const long long drawn = (cloud.mNumber - 1) / cloud.mStep + 1;
    const int threads = GetThreadCount(drawn);
    const bool bUniform = IsUniform(cloud);
    std::vector<std::vector<float>> most(
        static_cast<size_t>(threads),
        std::vector<float>(2 * plan.directions.size(), -std::numeric_limits<float>::infinity()));
    const long long share = ((drawn + threads - 1) / threads + kBlock - 1) / kBlock * kBlock;
    OnThreads(threads, [&](int k) {
        MeasureRange(cloud, bUniform, reference, std::min(drawn, k * share), std::min(drawn, (k + 1) * share),
                     plan.directions, most[static_cast<size_t>(k)]);
    });
    const float* pReference = cloud.mpPos[reference];
    const double origin[3] = {double(pReference[0]), double(pReference[1]), double(pReference[2])};
    for (size_t k = 0; k < mDirections.size(); ++k) {
        float reach = -std::numeric_limits<float>::infinity();
        for (const std::vector<float>& one : most)
            reach = std::max(reach, one[plan.slots[k]]);
        mReach.push_back(MyVector::GetScalarProduct(pulled[k].v, origin) + static_cast<double>(reach) +
                         GetShift(cloud.mPlace, mDirections[k], pulled[k]));
    }
    return true;
}

// In a perspective view a particle at p (from the anchor) is inside where |right * p| <= w * (front * p + d):
// two functions of place, and two more for up, whose largest value is the least distance d.
ViewFitter_cls::ViewFitter_cls(const PositionAndDirection_cls& camera, const FitShape_st& shape,
                               CloudReach_cls* pReach)
    : mShape(shape) {
    const double half[2] = {std::max(shape.mHalfW, 1e-9) * kFilled, std::max(shape.mHalfH, 1e-9) * kFilled};
    for (int side = 0; side < 4; ++side) {
        const double* axis = side < 2 ? camera.mRight : camera.mUp;
        const double factor = (side % 2 == 0 ? 1.0 : -1.0) / half[side / 2];
        for (int i = 0; i < 3; ++i)
            mAcross[side][i] = axis[i] * factor - (shape.mbPerspective ? camera.mFront[i] : 0.0);
    }
    std::copy_n(camera.mFront, 3, mFront);
    mBox = pReach->GetCount();
    for (int k = 0; k < 6; ++k) {
        double axis[3] = {0, 0, 0};
        axis[k / 2] = k % 2 == 0 ? 1.0 : -1.0;
        pReach->Add(axis);
    }
    mSide = pReach->GetCount();
    for (const auto& across : mAcross)
        pReach->Add(across);
    mDepth = pReach->GetCount();
    const double back[3] = {-mFront[0], -mFront[1], -mFront[2]};
    pReach->Add(mFront);
    pReach->Add(back);
}

double ViewFitter_cls::ReachFrom(const CloudReach_cls& reach, int direction, const double anchor[3]) const {
    double d[3];
    if (direction < mDepth)
        std::copy_n(mAcross[direction - mSide], 3, d);
    else
        for (int i = 0; i < 3; ++i)
            d[i] = direction == mDepth ? mFront[i] : -mFront[i];
    return reach.Get(direction) - MyVector::GetScalarProduct(d, anchor);
}

double ViewFitter_cls::GetDistance(const CloudReach_cls& reach, const double anchor[3],
                                   double distance) const {
    double least = 0.0;
    for (int side = 0; side < 4; ++side)
        least = std::max(least, ReachFrom(reach, mSide + side, anchor));
    if (!mShape.mbPerspective) {
        // The width of which half is shown to each side.
        return least > 0.0 ? least : distance;
    }
    // What lies along the line of sight alone must not reach the eye.
    const double before = ReachFrom(reach, mDepth + 1, anchor);
    const double behind = ReachFrom(reach, mDepth, anchor);
    least = std::max(least, before + 0.1 * (before + behind));
    return least > 0.0 ? least : distance;
}

ViewFit_st ViewFitter_cls::Get(const CloudReach_cls& reach, double distance) const {
    ViewFit_st fit;
    for (int i = 0; i < 3; ++i)
        fit.mAnchor[i] = (reach.Get(mBox + 2 * i) - reach.Get(mBox + 2 * i + 1)) / 2.0;
    fit.mDistance = GetDistance(reach, fit.mAnchor, distance);
    fit.mNearest = fit.mDistance - ReachFrom(reach, mDepth + 1, fit.mAnchor);
    fit.mFarthest = fit.mDistance + ReachFrom(reach, mDepth, fit.mAnchor);
    return fit;
}

void FitDepths(double nearest, double farthest, float* pNear, float* pFar) {
    constexpr double kRatio = 5000.0 / 0.03; // of the planes' defaults: depths of 24 bits stay apart
    constexpr double kRoom = 10.0;           // to come nearer or to go away
    const double nearPlane = static_cast<double>(*pNear);
    const double farPlane = static_cast<double>(*pFar);
    if (nearest >= nearPlane && farthest <= farPlane) return;
    const double newFar = farthest * kRoom;
    const double newNear = std::max(nearest / kRoom, newFar / kRatio / kRoom);
    *pNear = static_cast<float>(std::min(newNear, nearest));
    *pFar = static_cast<float>(newFar);
}
