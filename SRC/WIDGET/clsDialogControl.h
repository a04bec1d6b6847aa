// Base of objects that have one dialog, made when it is first wanted.
#pragma once

class wxDialogEXKey;
class wxWindow;
class wxWindowDestroyEvent;

class DialogControl_cls {
public:
    virtual ~DialogControl_cls();

    /// Make the dialog if there is none yet.
    void InitGUI(wxWindow* pParent);
    /// InitGUI, then show the dialog in front.
    void OpenWindow(wxWindow* pParent);
    /// Fields from data, if the dialog exists; with bOnlyShown only while it can be seen.
    void UpdateItems(bool bOnlyShown);
    wxDialogEXKey* GetPCDialog() const { return mpCDialog; }

protected:
    DialogControl_cls() = default;
    virtual wxDialogEXKey* MakeDialog(wxWindow* pParent) = 0;

private:
    void OnDestroyDialog(wxWindowDestroyEvent& event);

    wxDialogEXKey* mpCDialog = nullptr; ///< owned by its parent window
};
