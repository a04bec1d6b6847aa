#include "FILTER/PANEL/clsFilterGridGUI.h"

#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"
#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/clsFilterGrid.h"
#include "WIDGET/clsMultiInputPanel.h"

void FilterGridGUI_cls::SetMNumPanel(MultiInputPanel_cls& panel) {
    auto& data = static_cast<FilterGridData_cls&>(*GetFilter().mpCData);
    panel.AddChoice(_("Grid Type"), &data.mCGridType.mValue,
                    {_("Cartesian(x-y)"), _("Cartesian(y-z)"), _("Cartesian(x-z)"), _("Cubic"), _("Circle"),
                     _("Spherical")},
                    _("Shape of the grid"));
    panel.AddCheck(_("Coordinate"), &data.mCGridCoord.mValue, "", _("Labels with the coordinates"));
    const NumSpec length = RangeSpec(-1e30, 1e30, 0.1);
    const int row = panel.AddNumber(_("Min/Max/Num"), &data.mCGridMin.mValue, 1, length,
                                    _("Lower coordinate, in units of the data"));
    panel.AddNumberTo(row, &data.mCGridMax.mValue, length, _("Upper coordinate, in units of the data"));
    panel.AddNumberTo(row, &data.mCGridLineNum.mValue, IntegerSpec(1, 10000), _("Number of divisions; of a lattice at most 256"));
    AddColorCurve(panel, _("Color"), data.mpCColor, _("Colour of the lines; a click opens the editor"));
    SetMNumBasic(panel, data);
}
