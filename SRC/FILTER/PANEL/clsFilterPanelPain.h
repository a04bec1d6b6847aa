// The pane of one list of filters: their panels below each other, in the order in which they act.
#pragma once

#include <memory>
#include <vector>

#include <wx/scrolwin.h>
#include <wx/weakref.h>

#include "FILTER/clsFilterGUI.h"

class DrawOption_cls;
class FilterBase_cls;
class FilterCtrl_cls;
class wxBoxSizer;
class wxPanel;
class wxStaticText;

/// A click on its ground deselects all filters; the right button brings the menu that adds some.
class FilterPanelPain_cls : public wxScrolledWindow, public FilterPane_cls {
public:
    FilterPanelPain_cls(wxWindow* pParent, FilterCtrl_cls& list, const DrawOption_cls& options);
    ~FilterPanelPain_cls() override;

    /// Show the list's filters from now on. Lists that nobody sees stay without panels.
    void Connect();
    std::unique_ptr<FilterGUI_cls> MakeGUI(FilterBase_cls& filter) override;
    void InsertPanel(FilterGUI_cls& gui, int position) override;
    void RemovePanel(FilterGUI_cls& gui) override;

    /// The lines beside the panels: what to do with an empty list, and why this one may have no effect.
    void UpdateNotes();
    /// Place the panels anew when the present event is dealt with.
    void LayOutLater();
    void LayOut();
    /// Open a filter's panel and scroll to it.
    void ShowFilter(int position);
    void Select(FilterBase_cls* pFilter);
    FilterCtrl_cls& GetPCFilterCtrl() const { return mpCFilterCtrl; }

private:
    void MakeHead();
    void DropPanels();

    FilterCtrl_cls& mpCFilterCtrl;
    const DrawOption_cls& mOptions;
    wxBoxSizer* mpCSizer; ///< of the panels, by position
    wxPanel* mpCHead = nullptr;
    wxStaticText* mpCHint = nullptr;           ///< beside "Add", while the list is empty
    wxStaticText* mpCNoEffect = nullptr;       ///< below it
    std::vector<wxWeakRef<wxWindow>> mVpCGone; ///< panels that were removed, and wait for their end
    bool mbConnected = false;
    bool mbLayOut = false; ///< is to come
};
