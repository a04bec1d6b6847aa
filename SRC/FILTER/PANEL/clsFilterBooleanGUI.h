// Operator, region and border of a Boolean filter.
#pragma once

#include "FILTER/PANEL/clsFilterPanelGUI.h"

class FilterBooleanGUI_cls final : public FilterPanelGUI_cls {
public:
    FilterBooleanGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane)
        : FilterPanelGUI_cls(filter, pane) {}

private:
    void SetMNumPanel(MultiInputPanel_cls& panel) override;
};
