// The diamond beside an animated number: filled where a key stands at the current time, hollow where the
// value is animated, nothing where it is constant. A click sets or removes the key, and animates a constant;
// the right button has a menu.
#pragma once

#include <wx/window.h>

#include "WIDGET/KeyMark.h"

class ParamGroup_cls;
class Parameters_cls;

class KeyButton_cls : public wxWindow {
public:
    KeyButton_cls(wxWindow* pParent, ParamGroup_cls* pGroup, int dimension);

    /// Drawn again when the state has changed.
    void RefreshIfChanged();
    KeyState GetState() const;
    bool AcceptsFocus() const override { return false; }

private:
    Parameters_cls& Param() const;
    void OnPaint(wxPaintEvent& event);
    void Toggle();
    void OpenMenu();
    void Animate(bool bTimeDepend);
    void TellState();

    ParamGroup_cls* mpCGroup;
    int mDimension;
    KeyState mShown = KeyState::CONSTANT;
    bool mbHover = false;
};
