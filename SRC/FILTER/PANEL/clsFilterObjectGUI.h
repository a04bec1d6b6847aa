// Shape, place and material of an object.
#pragma once

#include "FILTER/PANEL/clsFilterPanelGUI.h"

class FilterObjectData_cls;

class FilterObjectGUI_cls final : public FilterPanelGUI_cls {
public:
    FilterObjectGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane)
        : FilterPanelGUI_cls(filter, pane) {}

    /// The dialog of the mesh's matrix, as if its button was pressed.
    void FuncHookArrayVector();

private:
    void SetMNumPanel(MultiInputPanel_cls& panel) override;
    void HideAndShowRows(MultiInputPanel_cls& panel) override;
    void SetMaterialRow(MultiInputPanel_cls& panel);
    FilterObjectData_cls& GetData() const;

    int mRowPath = 0, mRowVectors = 0;
};
