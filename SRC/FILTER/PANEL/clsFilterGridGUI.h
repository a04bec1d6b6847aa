// Shape, extent and colour of a grid.
#pragma once

#include "FILTER/PANEL/clsFilterPanelGUI.h"

class FilterGridGUI_cls final : public FilterPanelGUI_cls {
public:
    FilterGridGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane) : FilterPanelGUI_cls(filter, pane) {}

private:
    void SetMNumPanel(MultiInputPanel_cls& panel) override;
};
