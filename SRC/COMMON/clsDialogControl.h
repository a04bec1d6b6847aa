// Base of objects that have one dialog, made when it is first wanted. It knows no window: floors without a
// toolkit have such objects, too, and are given their dialog through mMakeDialog.
#pragma once

#include <functional>

class DialogControl_cls;
class wxDialogEXKey;
class wxWindow;

/// A dialog as the object sees it that it shows.
class OwnedDialog_cls {
public:
    OwnedDialog_cls(const OwnedDialog_cls&) = delete;
    OwnedDialog_cls& operator=(const OwnedDialog_cls&) = delete;

    /// Up to date and in front.
    virtual void OpenWindow() = 0;
    /// Fields from their data.
    virtual void UpdateValues() = 0;
    virtual bool IsDialogShown() const = 0;
    virtual wxDialogEXKey* AsWindow() = 0;

protected:
    OwnedDialog_cls() = default;
    virtual ~OwnedDialog_cls();

private:
    friend class DialogControl_cls;
    DialogControl_cls* mpCOwner = nullptr; ///< dialog and object may go in either order
};

class DialogControl_cls {
public:
    virtual ~DialogControl_cls();
    DialogControl_cls(const DialogControl_cls&) = delete;
    DialogControl_cls& operator=(const DialogControl_cls&) = delete;

    /// Make the dialog if there is none yet.
    void InitGUI(wxWindow* pParent);
    /// InitGUI, then show the dialog in front.
    void OpenWindow(wxWindow* pParent);
    /// Fields from data, if the dialog exists; with bOnlyShown only while it can be seen.
    void UpdateItems(bool bOnlyShown);
    /// Null while there is none.
    wxDialogEXKey* GetPCDialog() const { return mpCDialog ? mpCDialog->AsWindow() : nullptr; }

    /// Makes the dialog where the class doesn't do so itself.
    std::function<OwnedDialog_cls*(wxWindow* pParent)> mMakeDialog;

protected:
    DialogControl_cls() = default;
    virtual OwnedDialog_cls* MakeDialog(wxWindow* pParent);

private:
    friend class OwnedDialog_cls;
    OwnedDialog_cls* mpCDialog = nullptr; ///< owned by its parent window
};
