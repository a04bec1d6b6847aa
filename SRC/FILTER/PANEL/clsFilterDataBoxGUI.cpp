#include "FILTER/PANEL/clsFilterDataBoxGUI.h"

#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/clsFilterDataBox.h"
#include "WIDGET/clsMultiInputPanel.h"

void FilterDataBoxGUI_cls::SetMNumPanel(MultiInputPanel_cls& panel) {
    auto& data = static_cast<FilterDataBoxData_cls&>(*GetFilter().mpCData);
    SetMNumBasic(panel, data);
    panel.AddParam(_("A"), data.mpCAnchor.get(), RangeSpec(-1e30, 1e30, 0.1),
                   _("Anchor: the point about which the data turn and scale, in units of the data"));
}
