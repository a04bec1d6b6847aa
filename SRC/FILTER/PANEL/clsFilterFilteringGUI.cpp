#include "FILTER/PANEL/clsFilterFilteringGUI.h"

#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/clsFilterFiltering.h"
#include "WIDGET/clsMultiInputPanel.h"

void FilterFilteringGUI_cls::SetMNumPanel(MultiInputPanel_cls& panel) {
    auto& data = static_cast<FilterFilteringData_cls&>(*GetFilter().mpCData);
    panel.AddChoice(_("Type"), &data.mCFilteringType.mValue,
                    {_("Show following particles"), _("Hide following particles"), _("Force showing")},
                    _("What happens to the particles of the list"));
    panel.AddChoice(_("Classify by"), &data.mCIndexType.mValue, {_("Particle index"), _("Particle ID")},
                    _("Kept with the project; the numbers are places in the file either way"));
    panel.AddText(_("Particles"), &data.mCFilteringString.mStrValue,
                  _("Numbers and ranges from 0, such as 0-99,200"));
}
