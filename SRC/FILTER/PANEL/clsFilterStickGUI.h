// How connections of particles look, and where they come from.
#pragma once

#include "FILTER/PANEL/clsFilterPanelGUI.h"

class FilterStickData_cls;

class FilterStickGUI_cls final : public FilterPanelGUI_cls {
public:
    FilterStickGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane)
        : FilterPanelGUI_cls(filter, pane) {}

private:
    void SetMNumPanel(MultiInputPanel_cls& panel) override;
    void HideAndShowRows(MultiInputPanel_cls& panel) override;
    void SetCalcRows(MultiInputPanel_cls& panel, FilterStickData_cls& data);

    int mRowRadius = 0, mRowWidth = 0, mRowPath = 0;
    void MakePairs();

    int mRowRule = 0, mRowDistance = 0, mRowKeep = 0, mRowTypes = 0, mRowTypeAB = 0;
    int mRowAcross = 0, mRowPairs = 0;
};
