#include "FILTER/PANEL/clsFilterFogGUI.h"

#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"
#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/clsFilterFog.h"
#include "WIDGET/clsMultiInputPanel.h"

void FilterFogGUI_cls::SetMNumPanel(MultiInputPanel_cls& panel) {
    auto& data = static_cast<FilterFogData_cls&>(*GetFilter().mpCData);
    panel.AddChoice(_("Fog Type"), &data.mCFogType.mValue, {_("EXP"), _("EXP 2"), _("LINEAR")},
                    _("How the fog grows with the distance"));
    const int row = AddColorCurve(panel, _("Color/alpha"), data.mvpCColorCurve.front().get(),
                                  _("Colour of the fog; a click opens the editor"));
    panel.AddParamTo(row, data.mpCFogParam.get(), 1, RangeSpec(0, 1, 0.01), _("Strength of the fog"));
    mRowDensity = panel.AddParam(_("Density"), data.mpCFogParam.get(), 0, RangeSpec(0, 1e30, 0.01),
                                 _("Growth of the fog over a unit of length"));
    const NumSpec length = RangeSpec(-1e30, 1e30, 0.1);
    mRowNear = panel.AddNumber(_("Near/Far"), &data.mCFogStart.mValue, 1, length,
                               _("Distance from the eye at which the fog begins"));
    panel.AddNumberTo(mRowNear, &data.mCFogEnd.mValue, length,
                      _("Distance from the eye at which nothing else is seen"));
}

void FilterFogGUI_cls::HideAndShowRows(MultiInputPanel_cls& panel) {
    const auto& data = static_cast<const FilterFogData_cls&>(*GetFilter().mpCData);
    const bool bLinear = data.mCFogType.mValue == FilterFogData_cls::LINEAR;
    panel.ShowRow(mRowDensity, !bLinear);
    panel.ShowRow(mRowNear, bLinear);
}
