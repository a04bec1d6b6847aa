// How many cells of the periodic box are shown.
#pragma once

#include "FILTER/PANEL/clsFilterPanelGUI.h"

class FilterCopyGUI_cls final : public FilterPanelGUI_cls {
public:
    FilterCopyGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane) : FilterPanelGUI_cls(filter, pane) {}

private:
    void SetMNumPanel(MultiInputPanel_cls& panel) override;
};
