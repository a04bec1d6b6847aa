#include "FILTER/PANEL/clsFilterCopyGUI.h"

#include <wx/button.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/clsFilterCopy.h"
#include "WIDGET/clsMultiInputPanel.h"

void FilterCopyGUI_cls::SetMNumPanel(MultiInputPanel_cls& panel) {
    auto& data = static_cast<FilterCopyData_cls&>(*GetFilter().mpCData);
    const NumSpec cells = IntegerSpec(-1000000, 1000000);
    for (int axis = 0; axis < 3; ++axis) {
        const int row = panel.AddNumber(wxString::Format("%s %d", _("Array"), axis), &data.mCMin[axis].mValue,
                                        1, cells, _("First cell along this vector of the periodic box"));
        panel.AddNumberTo(row, &data.mCMax[axis].mValue, cells, _("One past the last cell"));
    }
    const int row = panel.AddButton("", _("Boundary Size"), _("Size and vectors of the periodic box"));
    static_cast<wxButton*>(panel.GetField(row))->Bind(wxEVT_BUTTON, [](wxCommandEvent& event) {
        PostMenuEvent(ID_PERIODIC_BOUNDARY);
        event.Skip();
    });
}
