#include "FILTER/clsFilterBoolean.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include <emmintrin.h>

#include "COMMON/DataLoops.h"
#include "FILTER/FilterFrame.h"
#include "GL/DRAW/clsArrayAndIndex.h"

namespace {

constexpr int kMost = WeighedList_st::kMost;
using Data = FilterBooleanData_cls;

// Eight neighbours at a time: the compiler alone takes the tests for jumps, which random places make costly.
// Nothing of that leaves this file, so how such values are passed is nobody's concern.
#pragma GCC diagnostic ignored "-Wpsabi"
constexpr int kLanes = 8;
using Lanes_t = float __attribute__((vector_size(4 * kLanes)));
using Test_t = int __attribute__((vector_size(4 * kLanes)));

// (With the lanes in braces the compiler puts them together in memory, again and again.)
__attribute__((always_inline)) inline Lanes_t All(float v) { return v - Lanes_t{}; }

__attribute__((always_inline)) inline Lanes_t Load(const float* p) {
    Lanes_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

__attribute__((always_inline)) inline void Store(float* p, const Lanes_t& v) { std::memcpy(p, &v, sizeof v); }

__attribute__((always_inline)) inline bool HasAny(const Test_t& test) {
    long long part[sizeof(Test_t) / sizeof(long long)];
    std::memcpy(part, &test, sizeof part);
    return (part[0] | part[1] | part[2] | part[3]) != 0;
}

/// Two floats from here and two from there.
inline __m128 LoadPairs(const float* p, const float* q) {
    const __m128 low = _mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
    return _mm_loadh_pi(low, reinterpret_cast<const __m64*>(q));
}

constexpr long kAhead = 480; // records from here to those whose memory is asked for, three at a time

/// So many bytes from there will be wanted soon; nothing happens where there is nothing.
inline void Prefetch(const void* p, long bytes) {
    const auto at = reinterpret_cast<uintptr_t>(p) + static_cast<uintptr_t>(bytes);
    _mm_prefetch(reinterpret_cast<const char*>(at), _MM_HINT_T0);
}

/// Places relative to the region's centre.
struct Ways_st {
    float mAxis[3][kMost];
};

/// Fills up the last ones. Four at a time, two coordinates with one load: more than half of all the work
/// would be loads and stores.
void Take(const WeighedList_st& list, const float* pCentre, Ways_st& out) {
    const __m128 centre[3] = {_mm_set1_ps(pCentre[0]), _mm_set1_ps(pCentre[1]), _mm_set1_ps(pCentre[2])};
    int i = 0;
    for (; i + 4 <= list.mCount; i += 4) {
        const float* p[4];
        for (int k = 0; k < 4; ++k)
            p[k] = list.mpVertex[list.mpList[i + k].mIndex];
        Prefetch(&list.mpList[i], kAhead * sizeof list.mpList[i]);
        Prefetch(p[0], (p[3] - p[0]) * (kAhead * long(sizeof *p[0]) / 3));
        const __m128 first = LoadPairs(p[0], p[1]), second = LoadPairs(p[2], p[3]);
        const __m128 x = _mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0));
        const __m128 y = _mm_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 3, 1));
        const __m128 z = _mm_movelh_ps(_mm_unpacklo_ps(_mm_load_ss(p[0] + 2), _mm_load_ss(p[1] + 2)),
                                       _mm_unpacklo_ps(_mm_load_ss(p[2] + 2), _mm_load_ss(p[3] + 2)));
        _mm_storeu_ps(out.mAxis[0] + i, _mm_sub_ps(x, centre[0]));
        _mm_storeu_ps(out.mAxis[1] + i, _mm_sub_ps(y, centre[1]));
        _mm_storeu_ps(out.mAxis[2] + i, _mm_sub_ps(z, centre[2]));
    }
    for (; i < list.mCount; ++i)
        for (int axis = 0; axis < 3; ++axis)
            out.mAxis[axis][i] = list.mpVertex[list.mpList[i].mIndex][axis] - pCentre[axis];
    for (; i % kLanes != 0; ++i)
        out.mAxis[0][i] = out.mAxis[1][i] = out.mAxis[2][i] = 0.0f;
}

/// What the factors of a soft box along one axis are made of.
struct SoftAxis_st {
    Lanes_t mHalf;
    Lanes_t mEnd;
    Lanes_t mWidth;
};

__attribute__((always_inline)) inline SoftAxis_st MakeAxis(float halfEdge, float border) {
    return {All(halfEdge), All(halfEdge * (1.0f + border)), All(halfEdge * border)};
}

// How far inside a soft box places are along one axis: 1 inside, falling to 0 over the border of this width
// outside of it. What is no number is outside.
__attribute__((always_inline)) inline Lanes_t GetFactor(const SoftAxis_st& axis, const Lanes_t& d) {
    const Lanes_t one = All(1.0f), none = All(0.0f);
    const Test_t above = axis.mHalf < d;
    const Lanes_t edge = one - (above ? d - axis.mHalf : -(d + axis.mHalf)) / axis.mWidth;
    const Test_t atBorder = (above & (d <= axis.mEnd)) | ((-axis.mEnd < d) & (d <= -axis.mHalf));
    const Test_t inside = (-axis.mHalf < d) & (d <= axis.mHalf);
    const Lanes_t factor = atBorder ? edge : inside ? one : none;
    return d > axis.mEnd ? none : factor;
}

MORENTIS_DATA_LOOP void OddSoftBox(const Ways_st& ways, int count, const float* pHalf, float border,
                                   float* pFactor) {
    const SoftAxis_st x = MakeAxis(pHalf[0], border), y = MakeAxis(pHalf[1], border),
                      z = MakeAxis(pHalf[2], border);
    for (int i = 0; i < count; i += kLanes)
        Store(pFactor + i, GetFactor(x, Load(ways.mAxis[0] + i)) * GetFactor(y, Load(ways.mAxis[1] + i)) *
                               GetFactor(z, Load(ways.mAxis[2] + i)));
}

// The same for a box and a border that have a width, to the bit: both sides are alike but for the very end,
// which belongs to one of them.
__attribute__((always_inline)) inline Lanes_t GetMildFactor(const SoftAxis_st& axis, const Lanes_t& d) {
    const Lanes_t one = All(1.0f), none = All(0.0f);
    const Lanes_t beyond = Lanes_t(Test_t(d) & 0x7fffffff) - axis.mHalf; // without its sign
    const Lanes_t factor = one - (beyond > none ? beyond : none) / axis.mWidth;
    return (d <= axis.mEnd) & (d > -axis.mEnd) ? factor : none;
}

MORENTIS_DATA_LOOP void MildSoftBox(const Ways_st& ways, int count, const float* pHalf, float border,
                                    float* pFactor) {
    const SoftAxis_st x = MakeAxis(pHalf[0], border), y = MakeAxis(pHalf[1], border),
                      z = MakeAxis(pHalf[2], border);
    for (int i = 0; i < count; i += kLanes)
        Store(pFactor + i, GetMildFactor(x, Load(ways.mAxis[0] + i)) *
                               GetMildFactor(y, Load(ways.mAxis[1] + i)) *
                               GetMildFactor(z, Load(ways.mAxis[2] + i)));
}

void SoftBox(const Ways_st& ways, int count, const float* pHalf, float border, float* pFactor) {
    const bool bMild = std::all_of(pHalf, pHalf + 3, [border](float half) {
        const float end = half * (1.0f + border);
        return half > 0.0f && half * border > 0.0f && end >= half && end < HUGE_VALF;
    });
    (bMild ? MildSoftBox : OddSoftBox)(ways, count, pHalf, border, pFactor);
}

__attribute__((always_inline)) inline Test_t IsBetween(const Lanes_t& half, const Lanes_t& d) {
    return (half > d) & (d > -half);
}

/// 1 inside, 0 outside and on the wall.
MORENTIS_DATA_LOOP void HardBox(const Ways_st& ways, int count, const float* pHalf, float* pFactor) {
    const Lanes_t x = All(pHalf[0]), y = All(pHalf[1]), z = All(pHalf[2]);
    for (int i = 0; i < count; i += kLanes) {
        const Test_t inside = IsBetween(x, Load(ways.mAxis[0] + i)) & IsBetween(y, Load(ways.mAxis[1] + i)) &
                              IsBetween(z, Load(ways.mAxis[2] + i));
        Store(pFactor + i, inside ? All(1.0f) : All(0.0f));
    }
}

// Six divisions are most of an ellipsoid's work: first its square with products alone, which is right to a
// few millionths of itself, and the true one where that isn't enough.
MORENTIS_DATA_LOOP void Ellipsoid(const Ways_st& ways, int count, const float* pScale, float* pFactor) {
    const Lanes_t x = All(pScale[0]), y = All(pScale[1]), z = All(pScale[2]);
    const Lanes_t perX = All(1.0f) / (x * x), perY = All(1.0f) / (y * y), perZ = All(1.0f) / (z * z);
    bool bMild = true;
    for (int axis = 0; axis < 3; ++axis)
        bMild = bMild && std::fabs(pScale[axis]) > 1e-9f && std::fabs(pScale[axis]) < 1e9f;
    const Lanes_t low = All(0.25f * (1.0f - 1e-5f)), high = All(0.25f * (1.0f + 1e-5f));
    for (int i = 0; i < count; i += kLanes) {
        const Lanes_t dx = Load(ways.mAxis[0] + i), dy = Load(ways.mAxis[1] + i),
                      dz = Load(ways.mAxis[2] + i);
        Lanes_t square = dx * dx * perX + dy * dy * perY + dz * dz * perZ;
        if (!bMild || HasAny(~((square < low) | (square > high))))
            square = dx * dx / x / x + dy * dy / y / y + dz * dz / z / z;
        Store(pFactor + i, square < All(0.25f) ? All(1.0f) : All(0.0f));
    }
}

MORENTIS_DATA_LOOP void Intersect(const float* pFactor, int count, float* pWeight) {
    for (int i = 0; i < count; ++i)
        pWeight[i] *= pFactor[i];
}

MORENTIS_DATA_LOOP void Subtract(const float* pFactor, int count, float* pWeight) {
    for (int i = 0; i < count; ++i)
        pWeight[i] *= 1.0f - pFactor[i];
}

MORENTIS_DATA_LOOP void Add(const float* pFactor, int count, float* pWeight) {
    for (int i = 0; i < count; ++i) {
        const float sum = pWeight[i] + pFactor[i];
        pWeight[i] = sum < 1.0f ? sum : 1.0f;
    }
}

void ToFloats(const double values[3], float* pOut) {
    for (int axis = 0; axis < 3; ++axis)
        pOut[axis] = float(values[axis]);
}

} // namespace

FilterBooleanData_cls::FilterBooleanData_cls() : FilterData_cls(true, true) {
    mCConfItemList.Add(&mCOperatorType, "OperatorType=", "0");
    mCConfItemList.Add(&mCRegionType, "RegionType=", "0");
    mCConfItemList.Add(&mCBorderFactor, "BorderFactor=", "0.01");
}

void FilterBoolean_cls::BeginWeigh(double time, long long) {
    const FilterPlacement_st placement(*GetPCData(), time);
    ToFloats(placement.mPlace, mPosition);
    ToFloats(placement.mScale, mScale);
}

// Operators and regions that files alone know change nothing.
void FilterBoolean_cls::Weigh(const WeighedList_st& list, float* pWeight) const {
    const Data& data = *GetPCData();
    if (data.mCRegionType.mValue > Data::SPHERE || data.mCOperatorType.mValue > Data::ADD) return;
    Ways_st ways;
    float factor[kMost];
    const int count = list.mCount;
    Take(list, mPosition, ways);
    const float border = data.mCBorderFactor.mValue;
    const float half[3] = {mScale[0] * 0.5f, mScale[1] * 0.5f, mScale[2] * 0.5f};
    if (data.mCRegionType.mValue == Data::SPHERE) {
        Ellipsoid(ways, count, mScale, factor);
    } else if (border == 0.0f) {
        HardBox(ways, count, half, factor);
    } else {
        SoftBox(ways, count, half, border, factor);
    }
    switch (data.mCOperatorType.mValue) {
    case Data::INTERSECT:
        return Intersect(factor, count, pWeight);
    case Data::DIFFERENCE:
        return Subtract(factor, count, pWeight);
    default:
        return Add(factor, count, pWeight);
    }
}

void FilterBoolean_cls::GLDraw(MarkPainter_cls& painter, double time) const {
    DrawFilterFrame(painter, *GetPCData(), time);
}
