// Place of the whole data.
#pragma once

#include "FILTER/PANEL/clsFilterPanelGUI.h"

class FilterDataBoxGUI_cls final : public FilterPanelGUI_cls {
public:
    FilterDataBoxGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane)
        : FilterPanelGUI_cls(filter, pane) {}

private:
    void SetMNumPanel(MultiInputPanel_cls& panel) override;
};
