// The panel of one filter: a head line with its tick and its name, and below, while it is open, its rows.
#pragma once

#include <wx/panel.h>
#include <wx/weakref.h>

#include "FILTER/clsFilterGUI.h"

class FilterPanelPain_cls;
class MultiInputPanel_cls;
class wxButton;
class wxCheckBox;
class wxMouseEvent;
class wxWindow;

/// Kinds of filters add their rows, when the panel is opened for the first time: in long lists most stay
/// folded. The windows belong to the pane, and go while the filter lives in the undo list alone.
class FilterPanelGUI_cls : public FilterGUI_cls {
public:
    ~FilterPanelGUI_cls() override;

    void UpdateValues() override;
    void HideAndShow() override;
    void ShowSelected(bool bSelected) override;
    void UpdateButtonName() override;

    /// Its window, made where there is none, as a child of this pane.
    wxWindow* ShowWindow(FilterPanelPain_cls& pane);
    wxWindow* GetWindow() const;
    void SetOpen(bool bOpen);
    bool IsOpen() const { return mbOpen; }
    // Pieces of the window; null while there is none, the rows before they are made.
    MultiInputPanel_cls* GetPCPanel() const { return mpCWindow ? mpCPanel : nullptr; }
    wxButton* GetPCFold() const { return mpCWindow ? mpCFold : nullptr; }
    wxCheckBox* GetPCValid() const { return mpCWindow ? mpCValid : nullptr; }

    static constexpr int kLabelWidth = 80;

protected:
    FilterPanelGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane);

    virtual void SetMNumPanel(MultiInputPanel_cls& panel) = 0;
    /// Rows that the settings leave a meaning.
    virtual void HideAndShowRows(MultiInputPanel_cls&) {}
    FilterBase_cls& GetFilter() const { return *mpCFilterBase; }
    FilterPanelPain_cls& GetPane() const { return *mpCPane; }

private:
    void InitializeMInputCommon();
    void MakeRows();
    void SetValid(bool bValid);
    void BindMouse(wxWindow* pWindow, bool bMenu);
    void BindMouseBelow(wxWindow* pWindow);
    void ShowColors();

    FilterBase_cls* mpCFilterBase;
    FilterPanelPain_cls* mpCPane;
    bool mbOpen = false;
    wxWeakRef<wxPanel> mpCWindow;
    // These are good while the window is there.
    MultiInputPanel_cls* mpCPanel = nullptr;
    wxButton* mpCFold = nullptr;
    wxCheckBox* mpCValid = nullptr;
};
