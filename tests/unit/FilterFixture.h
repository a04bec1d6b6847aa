// Ground for tests of what filters do: the three lists, without windows and undo.
#pragma once

#include <array>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "FILTER/clsFilterBoolean.h"
#include "FILTER/clsFilterLists.h"
#include "GL/DRAW/clsDrawList.h"

using Place_t = std::array<float, 3>;

class FilterTest : public ::testing::Test {
protected:
    FilterTest() : mbUndo(std::exchange(Parameters_cls::msbUndoCommandMake, false)) {}
    ~FilterTest() override { Parameters_cls::msbUndoCommandMake = mbUndo; }

    template <class FILTER>
    FILTER& Add(int type) {
        auto& filter = static_cast<FILTER&>(*mLists.Get(GetFilterKind(type).mList).AddFilter(type));
        SetValues(filter.mpCData->mpCScale, 1, 1, 1);
        return filter;
    }
    /// Curves refuse what isn't finite; what floats have no room for is infinite all the same.
    static void SetValues(ParamGroup_cls* pGroup, double x, double y, double z) {
        const auto finite = [](double v) { return std::isinf(v) ? std::copysign(1e300, v) : v; };
        const double values[3] = {finite(x), finite(y), finite(z)};
        pGroup->SetKeyFrame(values, true, SceneObj_cls::kCurrent);
    }
    FilterBooleanData_cls& AddCut(unsigned op, unsigned region, float border, const Place_t& centre,
                                  const Place_t& scale) {
        FilterBooleanData_cls& data = *Add<FilterBoolean_cls>(FILTER_BOOLEAN).GetPCData();
        data.mCOperatorType.mValue = op;
        data.mCRegionType.mValue = region;
        data.mCBorderFactor.mValue = border;
        SetValues(data.mpCTranslate, double(centre[0]), double(centre[1]), double(centre[2]));
        SetValues(data.mpCScale, double(scale[0]), double(scale[1]), double(scale[2]));
        return data;
    }
    static std::vector<Place_t> Scatter(int count, float reach) {
        std::mt19937 random(17);
        std::uniform_real_distribution<float> side(-reach, reach);
        std::vector<Place_t> places(static_cast<size_t>(count));
        for (Place_t& place : places)
            for (float& v : place)
                v = side(random);
        return places;
    }
    static const float (*Raw(const std::vector<Place_t>& places))[3] {
        return reinterpret_cast<const float(*)[3]>(places.data());
    }
    /// The list that is drawn without any order.
    DrawList_t Kept(const std::vector<Place_t>& places, int step = 1) {
        DrawList_t list;
        MakeDrawList(list, int(places.size()), step, Raw(places), {}, &mLists.GetBoolean(), 0.0);
        return list;
    }

    FilterLists_cls mLists;

private:
    bool mbUndo;
};
