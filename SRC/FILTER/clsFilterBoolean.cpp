#include "FILTER/clsFilterBoolean.h"

#include <algorithm>
#include <cstring>

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

__attribute__((always_inline)) inline Lanes_t All(float v) { return Lanes_t{v, v, v, v, v, v, v, v}; }

__attribute__((always_inline)) inline Lanes_t Load(const float* p) {
    Lanes_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

__attribute__((always_inline)) inline void Store(float* p, const Lanes_t& v) { std::memcpy(p, &v, sizeof v); }

/// Places relative to the region's centre.
struct Ways_st {
    float mAxis[3][kMost];
};

/// Fills up the last ones.
void Take(const WeighedList_st& list, const float* pCentre, Ways_st& out) {
    const float x = pCentre[0], y = pCentre[1], z = pCentre[2];
    for (int i = 0; i < list.mCount; ++i) {
        const float* p = list.mpVertex[list.mpList[i].mIndex];
        out.mAxis[0][i] = p[0] - x;
        out.mAxis[1][i] = p[1] - y;
        out.mAxis[2][i] = p[2] - z;
    }
    for (int i = list.mCount; i % kLanes != 0; ++i)
        out.mAxis[0][i] = out.mAxis[1][i] = out.mAxis[2][i] = 0.0f;
}

// How far inside a soft box places are along one axis, times what is there already: 1 inside, falling to 0
// over the border of this width outside of it. What is no number is outside.
MORENTIS_DATA_LOOP void SoftAxis(const float* pWay, int count, float halfEdge, float border, float* pFactor) {
    const Lanes_t half = All(halfEdge), end = All(halfEdge * (1.0f + border));
    const Lanes_t width = All(halfEdge * border), one = All(1.0f), none = All(0.0f);
    for (int i = 0; i < count; i += kLanes) {
        const Lanes_t d = Load(pWay + i);
        const Test_t above = half < d;
        const Lanes_t edge = one - (above ? d - half : -(d + half)) / width;
        const Test_t atBorder = (above & (d <= end)) | ((-end < d) & (d <= -half));
        const Test_t inside = (-half < d) & (d <= half);
        const Lanes_t factor = atBorder ? edge : inside ? one : none;
        Store(pFactor + i, Load(pFactor + i) * (d > end ? none : factor));
    }
}

/// 1 inside, 0 outside and on the wall.
MORENTIS_DATA_LOOP void HardBox(const Ways_st& ways, int count, const float* pHalf, float* pFactor) {
    for (int i = 0; i < count; i += kLanes) {
        Test_t inside = ~Test_t{};
        for (int axis = 0; axis < 3; ++axis) {
            const Lanes_t d = Load(ways.mAxis[axis] + i), half = All(pHalf[axis]);
            inside &= (half > d) & (d > -half);
        }
        Store(pFactor + i, inside ? All(1.0f) : All(0.0f));
    }
}

MORENTIS_DATA_LOOP void Ellipsoid(const Ways_st& ways, int count, const float* pScale, float* pFactor) {
    const Lanes_t x = All(pScale[0]), y = All(pScale[1]), z = All(pScale[2]);
    for (int i = 0; i < count; i += kLanes) {
        const Lanes_t dx = Load(ways.mAxis[0] + i), dy = Load(ways.mAxis[1] + i),
                      dz = Load(ways.mAxis[2] + i);
        const Lanes_t square = dx * dx / x / x + dy * dy / y / y + dz * dz / z / z;
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

void TakeValues(ParamGroup_cls& group, double time, float* pOut) {
    double values[3];
    group.GetInterpolatedValue(values, time, Parameters_cls::kCurrent);
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
    TakeValues(*GetPCData()->mpCTranslate, time, mPosition);
    TakeValues(*GetPCData()->mpCScale, time, mScale);
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
        std::fill_n(factor, kMost, 1.0f);
        for (int axis = 0; axis < 3; ++axis)
            SoftAxis(ways.mAxis[axis], count, half[axis], border, factor);
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

void FilterBoolean_cls::GLDraw(double time) const { DrawFilterFrame(*GetPCData(), time); }
