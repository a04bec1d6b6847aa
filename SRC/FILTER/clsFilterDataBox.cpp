#include "FILTER/clsFilterDataBox.h"

#include "FILTER/FilterFrame.h"

namespace {
const wxString kSuffixes[3] = {"x", "y", "z"};
} // namespace

FilterDataBoxData_cls::FilterDataBoxData_cls()
    : FilterData_cls(true, true), mpCAnchor(MakeGroup("Filter Anchor", 3, kSuffixes)) {}

FilterDataBoxData_cls::~FilterDataBoxData_cls() = default;

void FilterDataBoxData_cls::UpdateCurrentObj(double time) { FilterData_cls::UpdateCurrentObj(time); }

void FilterDataBox_cls::GLDraw(double time) const { DrawFilterFrame(*GetPCData(), time); }
