// Moves, turns and scales the whole data about an anchor.
#pragma once

#include <memory>

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"

class FilterDataBoxData_cls final : public FilterData_cls {
public:
    FilterDataBoxData_cls();
    ~FilterDataBoxData_cls() override;

    /// Placed so that it turns and scales about the anchor.
    void UpdateCurrentObj(double time) override;
    void ToScene(double* pPlace) const override;
    void FromScene(double* pPlace) const override;
    void GetGuideAxes(int mode, double out[3][3]) const override;
    /// What GLSetMatrix multiplies by after that, column by column. False: it is nothing that could be drawn
    /// under, as a scale isn't finite.
    bool GetMatrix(double out[16]) const;
    /// A point of the data goes to where the box has it at the present time.
    void PlaceNow(float* pPos);

    const std::unique_ptr<ParamGroup_cls> mpCAnchor;
};

class FilterDataBox_cls final : public FilterOf_cls<FilterDataBoxData_cls, FILTER_DATABOX> {
public:
    void GLDraw(MarkPainter_cls& painter, double time) const override;
};
