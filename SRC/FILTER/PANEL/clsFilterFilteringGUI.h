// Which particles are shown or hidden, by their numbers.
#pragma once

#include "FILTER/PANEL/clsFilterPanelGUI.h"

class FilterFilteringGUI_cls final : public FilterPanelGUI_cls {
public:
    FilterFilteringGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane)
        : FilterPanelGUI_cls(filter, pane) {}

private:
    void SetMNumPanel(MultiInputPanel_cls& panel) override;
};
