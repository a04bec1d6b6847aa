#include "FILTER/PANEL/clsFilterBooleanGUI.h"

#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/clsFilterBoolean.h"
#include "WIDGET/clsMultiInputPanel.h"

void FilterBooleanGUI_cls::SetMNumPanel(MultiInputPanel_cls& panel) {
    auto& data = static_cast<FilterBooleanData_cls&>(*GetFilter().mpCData);
    panel.AddChoice(_("Operator"), &data.mCOperatorType.mValue, {_("Intersect"), _("Difference"), _("Add")},
                    _("What lies inside is kept, removed, or brought back"));
    panel.AddChoice(_("Region"), &data.mCRegionType.mValue, {_("Box"), _("Plane"), _("Sphere")},
                    _("Shape of the region; a plane is a box that its scale makes thin"));
    SetMNumBasic(panel, data);
    panel.BeginColumns(kLabelWidth);
    panel.AddNumber(_("Border"), &data.mCBorderFactor.mValue, 1, RangeSpec(0, 1000, 0.01),
                    _("Width of the soft border outside a box, in parts of each half edge; 0 is hard"));
}
