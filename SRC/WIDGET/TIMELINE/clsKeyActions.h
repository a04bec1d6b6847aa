// What buttons, menus and the keyboard of the time lines do to keys: to the selected ones, to those at the
// current time, and to a row's.
#pragma once

#include <functional>

#include "WIDGET/TIMELINE/KeyEdits.h"

class ParamGUICtrl_cls;
class wxMenu;
class wxPoint;
class wxWindow;

class KeyActions_cls {
public:
    explicit KeyActions_cls(ParamGUICtrl_cls* pCtrl) : mpCCtrl(pCtrl) {}

    /// Those whose selected keys the user sees: edits concern no others.
    Curves GetCurves() const;
    /// Those of the selected rows, which get keys.
    Curves CurvesToKey() const;

    // The selected keys.
    void Delete();
    void Copy() const;
    /// Keys of the clipboard at the clock: to the selected rows, without any to those with selected keys.
    void Paste();
    /// Empty when there is none.
    static wxString ClipboardText();
    void SelectAll();
    void SetKind(unsigned kind);
    void OpenDialog();

    // The clock.
    void ToggleNow();
    /// To the nearest key before (dir -1) or behind (1) the current time.
    void GoTo(const Curves& curves, int dir);
    void GoToNeighbour(int dir);

    // Menus.
    void ShowMenu(wxWindow* pWindow, const wxPoint& position, double insertAt, const Curves& insertInto);
    void ShowRowMenu(wxWindow* pWindow, int row, const wxPoint& position);

private:
    void AppendKinds(wxMenu* pMenu, const std::function<void(unsigned)>& set, int checked) const;

    ParamGUICtrl_cls* mpCCtrl;
};
