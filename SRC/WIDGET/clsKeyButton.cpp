#include "WIDGET/clsKeyButton.h"

#include <algorithm>

#include <wx/dcclient.h>
#include <wx/menu.h>
#include <wx/settings.h>

#include "PARAM/clsParamGroup.h"
#include "WIDGET/PopUp.h"
#include "WIDGET/clsNumField.h"

namespace {
constexpr int kWidth = 16;
constexpr int kRadius = 5;
} // namespace

KeyButton_cls::KeyButton_cls(wxWindow* pParent, ParamGroup_cls* pGroup, int dimension)
    : wxWindow(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE), mpCGroup(pGroup),
      mDimension(dimension) {
    SetMinSize(FromDIP(wxSize(kWidth, kWidth)));
    SetCursor(wxCursor(wxCURSOR_HAND));
    Bind(wxEVT_PAINT, &KeyButton_cls::OnPaint, this);
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) {
        if (IsEnabled()) Toggle();
    });
    Bind(wxEVT_RIGHT_UP, [this](wxMouseEvent&) {
        if (IsEnabled()) OpenMenu();
    });
    const auto hover = [this](wxMouseEvent& event) {
        mbHover = event.Entering();
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_ENTER_WINDOW, hover);
    Bind(wxEVT_LEAVE_WINDOW, hover);
    mShown = GetState();
    TellState();
}

Parameters_cls& KeyButton_cls::Param() const { return mpCGroup->mVParams[size_t(mDimension)]; }

KeyState KeyButton_cls::GetState() const { return GetKeyState(Param(), Parameters_cls::kCurrent); }

void KeyButton_cls::RefreshIfChanged() {
    if (GetState() == mShown) return;
    mShown = GetState();
    TellState();
    Refresh();
}

void KeyButton_cls::TellState() {
    switch (mShown) {
    case KeyState::CONSTANT:
        SetToolTip(_("Constant over the film; a click animates it"));
        break;
    case KeyState::ANIMATED:
        SetToolTip(_("Animated; a click sets a key at the current time"));
        break;
    case KeyState::KEY:
        SetToolTip(_("A key stands at the current time; a click removes it"));
        break;
    }
}

void KeyButton_cls::Toggle() {
    NumField_cls::EndAnyGesture(); // its end would write over what is done here
    Parameters_cls& param = Param();
    switch (GetState()) {
    case KeyState::CONSTANT:
        Animate(true);
        break;
    case KeyState::ANIMATED:
        param.InsertKeyQueue(Parameters_cls::kCurrent);
        break;
    case KeyState::KEY:
        // The last key holds the value and stays.
        if (param.GetKeyNumber() > 1) param.DeleteKeyQueue(Parameters_cls::kCurrent);
        break;
    }
    RefreshIfChanged();
}

void KeyButton_cls::Animate(bool bTimeDepend) {
    if (mpCGroup->mbLinked)
        mpCGroup->SetTimeDependent(bTimeDepend);
    else
        Param().SetTimeDependent(bTimeDepend);
    RefreshIfChanged();
}

void KeyButton_cls::OpenMenu() {
    NumField_cls::EndAnyGesture();
    const bool bAnimated = GetState() != KeyState::CONSTANT;
    wxMenu menu;
    const int id = wxWindow::NewControlId();
    menu.Append(id, bAnimated ? _("Don't animate") : _("Animate"));
    if (AskPopUpMenu(this, menu) == id) Animate(!bAnimated);
}

void KeyButton_cls::OnPaint(wxPaintEvent&) {
    wxPaintDC dc(this); // no buffer of its own: the page's background shows through
    const wxSize size = GetClientSize();
    const bool bHint = mShown == KeyState::CONSTANT && mbHover; // what a click would bring
    const bool bGrey = bHint || !IsEnabled();
    // A panel with a ground of its own says what can be read on it.
    const bool bOwn = !bGrey && GetParent()->UseForegroundColour();
    const wxColour colour =
        bOwn ? GetParent()->GetForegroundColour()
             : wxSystemSettings::GetColour(bGrey ? wxSYS_COLOUR_GRAYTEXT : wxSYS_COLOUR_BTNTEXT);
    DrawKeyMark(dc, size.x / 2, size.y / 2, FromDIP(kRadius), bHint ? KeyState::ANIMATED : mShown, colour);
}
