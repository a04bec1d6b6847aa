// What a filter and its list ask of their windows. Films made without a window have none.
#pragma once

#include <memory>

class FilterBase_cls;

/// The panel of one filter, which owns it.
class FilterGUI_cls {
public:
    virtual ~FilterGUI_cls() = default;

    virtual void UpdateValues() = 0;
    /// Show the lines that its settings leave a meaning.
    virtual void HideAndShow() = 0;
    virtual void ShowSelected(bool bSelected) = 0;
    /// The filter's name on its head line.
    virtual void UpdateButtonName() = 0;
};

/// The pane of one list.
class FilterPane_cls {
public:
    virtual ~FilterPane_cls() = default;

    virtual std::unique_ptr<FilterGUI_cls> MakeGUI(FilterBase_cls& filter) = 0;
    /// The panel takes its place among those of the list.
    virtual void InsertPanel(FilterGUI_cls& gui, int position) = 0;
    /// The panel goes from sight; its filter may come back with an undone step.
    virtual void RemovePanel(FilterGUI_cls& gui) = 0;
};
