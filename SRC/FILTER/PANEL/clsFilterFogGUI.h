// Kind, colour and strength of the fog.
#pragma once

#include "FILTER/PANEL/clsFilterPanelGUI.h"

class FilterFogGUI_cls final : public FilterPanelGUI_cls {
public:
    FilterFogGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane) : FilterPanelGUI_cls(filter, pane) {}

private:
    void SetMNumPanel(MultiInputPanel_cls& panel) override;
    void HideAndShowRows(MultiInputPanel_cls& panel) override;

    int mRowDensity = 0, mRowNear = 0;
};
