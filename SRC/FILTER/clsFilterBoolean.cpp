#include "FILTER/clsFilterBoolean.h"

#include <algorithm>

#include "COMMON/DataLoops.h"
#include "FILTER/FilterFrame.h"
#include "GL/DRAW/clsArrayAndIndex.h"

namespace {

constexpr int kMost = WeighedList_st::kMost;
using Data = FilterBooleanData_cls;

/// Places relative to the region's centre.
struct Ways_st {
    float mAxis[3][kMost];
};

void Take(const WeighedList_st& list, const float* pCentre, Ways_st& out) {
    const float x = pCentre[0], y = pCentre[1], z = pCentre[2];
    for (int i = 0; i < list.mCount; ++i) {
        const float* p = list.mpVertex[list.mpList[i].mIndex];
        out.mAxis[0][i] = p[0] - x;
        out.mAxis[1][i] = p[1] - y;
        out.mAxis[2][i] = p[2] - z;
    }
}

// How far inside a soft box a place is along one axis, times what is there already: 1 inside, falling to 0
// over the border of this width outside of it. What is no number is outside.
MORENTIS_DATA_LOOP void SoftAxis(const float* pWay, int count, float half, float border, float* pFactor) {
    const float end = half * (1.0f + border);
    const float width = half * border;
    for (int i = 0; i < count; ++i) {
        const float d = pWay[i];
        const bool bAbove = half < d;
        const float edge = 1.0f - (bAbove ? d - half : -(d + half)) / width;
        const bool bBorder = (bAbove & (d <= end)) | ((-end < d) & (d <= -half));
        const bool bInside = (-half < d) & (d <= half);
        const float factor = bBorder ? edge : bInside ? 1.0f : 0.0f;
        pFactor[i] *= d > end ? 0.0f : factor;
    }
}

/// 1 inside, 0 outside and on the wall.
MORENTIS_DATA_LOOP void HardBox(const Ways_st& ways, int count, const float* pHalf, float* pFactor) {
    const float x = pHalf[0], y = pHalf[1], z = pHalf[2];
    for (int i = 0; i < count; ++i) {
        const float dx = ways.mAxis[0][i], dy = ways.mAxis[1][i], dz = ways.mAxis[2][i];
        const bool bInside = (x > dx) & (dx > -x) & (y > dy) & (dy > -y) & (z > dz) & (dz > -z);
        pFactor[i] = bInside ? 1.0f : 0.0f;
    }
}

MORENTIS_DATA_LOOP void Ellipsoid(const Ways_st& ways, int count, const float* pScale, float* pFactor) {
    const float x = pScale[0], y = pScale[1], z = pScale[2];
    for (int i = 0; i < count; ++i) {
        const float dx = ways.mAxis[0][i], dy = ways.mAxis[1][i], dz = ways.mAxis[2][i];
        const float square = dx * dx / x / x + dy * dy / y / y + dz * dz / z / z;
        pFactor[i] = square < 0.25f ? 1.0f : 0.0f;
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
        std::fill_n(factor, count, 1.0f);
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
