#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"

#include <functional>
#include <string_view>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/dcbuffer.h>
#include <wx/menu.h>
#include <wx/settings.h>

#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COLORCURVE/clsColorCurve.h"
#include "WIDGET/PopUp.h"
#include "WIDGET/clsMultiInputPanel.h"

ColorCurveCtrl_cls* ColorCurveBtn_cls::mspCColorCurveCtrlLinked = nullptr;

namespace {
constexpr int kSquare = 5;
constexpr int kSamples = 64; // of the colours that are compared

void FitCurveRange(ColorCurve_cls* pCurve, bool bSequence) {
    if (ColorCurveBtn_cls::mspCColorCurveCtrlLinked)
        ColorCurveBtn_cls::mspCColorCurveCtrlLinked->FitRange(pCurve, bSequence);
}

wxButton* MakeFitButton(wxWindow* pParent, ColorCurve_cls* pCurve, bool bSequence, const wxString& label,
                        const wxString& tip) {
    auto* button = new wxButton(pParent, wxID_ANY, label);
    button->SetToolTip(tip);
    button->Bind(wxEVT_BUTTON, [pCurve, bSequence](wxCommandEvent&) { FitCurveRange(pCurve, bSequence); });
    return button;
}
} // namespace

ColorCurveBtn_cls::ColorCurveBtn_cls(wxWindow* pParent, ColorCurve_cls* pCurve)
    : mpCCurve(pCurve), mpLife(pCurve->GetLife()) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxWANTS_CHARS);
    SetMinSize(FromDIP(wxSize(64, 24)));
    SetCursor(wxCursor(wxCURSOR_HAND));
    Bind(wxEVT_PAINT, &ColorCurveBtn_cls::OnPaint, this);
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) {
        mbPressed = true;
        SetFocus();
    });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) {
        if (mbPressed) Open();
        mbPressed = false;
    });
    Bind(wxEVT_RIGHT_UP, [this](wxMouseEvent&) { OnMenu(); });
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_SPACE)
            Open();
        else if (event.GetKeyCode() == WXK_TAB)
            Navigate(event.ShiftDown() ? 0 : wxNavigationKeyEvent::IsForward);
        else
            event.Skip();
    });
    const auto hover = [this](wxMouseEvent& event) {
        mbHover = event.Entering();
        if (!mbHover) mbPressed = false;
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_ENTER_WINDOW, hover);
    Bind(wxEVT_LEAVE_WINDOW, hover);
    const auto refresh = [this](wxFocusEvent& event) {
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_SET_FOCUS, refresh);
    Bind(wxEVT_KILL_FOCUS, refresh);
}

wxImage ColorCurveBtn_cls::GetPicture() const {
    const ColorCurve_cls* pCurve = GetPCCurve();
    return pCurve ? pCurve->GetColorImage(kSamples, 1, false) : wxImage(kSamples, 1);
}

void ColorCurveBtn_cls::RefreshIfChanged() {
    const wxImage picture = GetPicture();
    const auto hash = [](const unsigned char* pBytes, size_t count) {
        return pBytes ? std::hash<std::string_view>()(
                            std::string_view(reinterpret_cast<const char*>(pBytes), count))
                      : 0;
    };
    const size_t now = hash(picture.GetData(), 3 * kSamples) * 31 + hash(picture.GetAlpha(), kSamples);
    if (now == mShown) return;
    mShown = now;
    Refresh();
}

void ColorCurveBtn_cls::Open() {
    if (IsEnabled() && mspCColorCurveCtrlLinked && GetPCCurve())
        mspCColorCurveCtrlLinked->OpenCurve(GetPCCurve(), wxTheApp->GetTopWindow());
}

void ColorCurveBtn_cls::Toggle() {
    ColorCurve_cls* pCurve = GetPCCurve();
    if (!pCurve) return;
    ColorSettings_st settings = pCurve->GetSettings();
    settings.mbUseCurve = !settings.mbUseCurve;
    pCurve->SetSettingsCommand(settings, pCurve->GetSettings());
}

void ColorCurveBtn_cls::OnMenu() {
    ColorCurve_cls* pCurve = GetPCCurve();
    if (!pCurve || !IsEnabled()) return;
    enum { ID_EDIT = 1, ID_USE, ID_FLIP, ID_SWAP, ID_FIT_FRAME, ID_FIT_SEQUENCE };
    wxMenu menu;
    menu.Append(ID_EDIT, _("Edit..."));
    menu.AppendSeparator();
    menu.AppendCheckItem(ID_USE, _("By a quantity"))->Check(!pCurve->IsConstant());
    menu.Append(ID_FLIP, _("Flip Color"))->Enable(!pCurve->IsConstant());
    menu.Append(ID_SWAP, _("Swap RGB"))->Enable(!pCurve->IsConstant());
    const bool bRange =
        !pCurve->IsConstant() && mspCColorCurveCtrlLinked && mspCColorCurveCtrlLinked->IsDriven(*pCurve);
    menu.AppendSeparator();
    menu.Append(ID_FIT_FRAME, _("Fit range to the frame"))->Enable(bRange);
    menu.Append(ID_FIT_SEQUENCE, _("Fit range to the sequence"))->Enable(bRange);
    switch (AskPopUpMenu(this, menu)) {
    case ID_EDIT:
        Open();
        break;
    case ID_USE:
        Toggle();
        break;
    case ID_FLIP:
        pCurve->Flip();
        break;
    case ID_SWAP:
        pCurve->SwapRGB();
        break;
    case ID_FIT_FRAME:
        FitCurveRange(pCurve, false);
        break;
    case ID_FIT_SEQUENCE:
        FitCurveRange(pCurve, true);
        break;
    default:
        break;
    }
    RefreshIfChanged();
}

void ColorCurveBtn_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const wxRect all(GetClientSize());
    dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE)));
    dc.Clear();
    if (GetPCCurve() && mbOpaque) {
        wxImage image = GetPCCurve()->GetColorImage(all.width, all.height, false);
        image.ClearAlpha();
        dc.DrawBitmap(wxBitmap(image), 0, 0);
    } else if (GetPCCurve()) {
        GetPCCurve()->DrawOnDC(dc, all, FromDIP(kSquare));
    }
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    const bool bMarked = IsEnabled() && (HasFocus() || mbHover);
    dc.SetPen(wxPen(wxSystemSettings::GetColour(bMarked ? wxSYS_COLOUR_HIGHLIGHT : wxSYS_COLOUR_BTNSHADOW)));
    dc.DrawRectangle(all);
}

int AddColorCurve(MultiInputPanel_cls& panel, const wxString& label, ColorCurve_cls* pCurve,
                  const wxString& tip, bool bOpaque) {
    auto* button = new ColorCurveBtn_cls(&panel, pCurve);
    if (bOpaque) button->ShowOpaque();
    button->SetToolTip(tip);
    const int row = panel.AddWindow(label, button);
    panel.AddRefresh(row, [button] { button->RefreshIfChanged(); });
    return row;
}

int AddFitRange(MultiInputPanel_cls& panel, ColorCurve_cls* pCurve) {
    const int row = panel.AddWindow(
        _("Fit range"),
        MakeFitButton(&panel, pCurve, false, _("Frame"),
                      _("Scaling from the least to the greatest value of the frame on show")));
    panel.AddWindowTo(
        row,
        MakeFitButton(&panel, pCurve, true, _("Sequence"),
                      _("Scaling from the least to the greatest value of all snapshots; reads them all")));
    return row;
}
