// Base of our dialogs. They don't block: Escape hides them, Enter presses the default button, and keys
// that no field edits with go to the main frame, so that its shortcuts work from every window.
#pragma once

#include <wx/dialog.h>

#include "COMMON/clsDialogControl.h"

class wxDialogEXKey : public wxDialog, public OwnedDialog_cls {
public:
    wxDialogEXKey(wxWindow* pParent, const wxString& title, long style = wxDEFAULT_DIALOG_STYLE);

    /// Show, raise and bring the fields up to date. A dialog comes back where it was left.
    void OpenWindow() override;
    /// Hide (a modal dialog ends with Cancel).
    void CloseEXKey();
    /// Fields from their data.
    void UpdateValues() override {}
    bool IsDialogShown() const override { return IsShown(); }
    wxDialogEXKey* AsWindow() override { return this; }

protected:
    /// A key before any field sees it; true when it is dealt with.
    virtual bool OnKeyDown(wxKeyEvent&) { return false; }

private:
    void OnCharHook(wxKeyEvent& event);
    void KeepOnScreen();

    wxPoint mLastPosition = wxDefaultPosition;
};
