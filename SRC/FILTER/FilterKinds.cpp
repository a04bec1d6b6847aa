#include "FILTER/FilterKinds.h"

#include <wx/intl.h>

#include "FILTER/clsFilterBoolean.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFiltering.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"

namespace {

template <class FILTER>
std::unique_ptr<FilterBase_cls> Make() {
    return std::make_unique<FILTER>();
}

const FilterKind_st kKinds[kFilterTypes] = {
    {wxTRANSLATE("Boolean"), FILTER_LIST_BOOLEAN, Make<FilterBoolean_cls>},
    {wxTRANSLATE("DataBox"), FILTER_LIST_OBJECT, Make<FilterDataBox_cls>},
    {wxTRANSLATE("Object"), FILTER_LIST_OBJECT, Make<FilterObject_cls>},
    {wxTRANSLATE("Grid"), FILTER_LIST_OBJECT, Make<FilterGrid_cls>},
    {wxTRANSLATE("Fog"), FILTER_LIST_WORLD, Make<FilterFog_cls>},
    {wxTRANSLATE("Filtering"), FILTER_LIST_BOOLEAN, Make<FilterFiltering_cls>},
    {wxTRANSLATE("CopyBox"), FILTER_LIST_WORLD, Make<FilterCopy_cls>},
    {wxTRANSLATE("Stick"), FILTER_LIST_OBJECT, Make<FilterStick_cls>},
};

} // namespace

bool IsFilterType(int type) { return type >= 0 && type < kFilterTypes; }

const FilterKind_st& GetFilterKind(int type) { return kKinds[type]; }

wxString GetFilterLabel(int type) { return wxGetTranslation(kKinds[type].mWord); }
