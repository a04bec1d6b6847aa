#include "WIDGET/clsColorSwatch.h"

#include <algorithm>
#include <cmath>

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include "COMMON/Globals.h"
#include "WIDGET/clsColourDialogEX.h"

namespace {

constexpr int kSquare = 5; // edge of a checkerboard square

unsigned char ToByte(float value) {
    return static_cast<unsigned char>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f));
}

/// The colour over one shade of the checkerboard.
wxColour Over(const float* pColor, float shade) {
    const float alpha = std::clamp(pColor[3], 0.0f, 1.0f);
    auto mix = [&](float value) {
        return ToByte(std::clamp(value, 0.0f, 1.0f) * alpha + shade * (1.0f - alpha));
    };
    return wxColour(mix(pColor[0]), mix(pColor[1]), mix(pColor[2]));
}

} // namespace

ColorSwatch_cls::ColorSwatch_cls(wxWindow* pParent) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxWANTS_CHARS);
    SetMinSize(FromDIP(wxSize(48, 24)));
    SetCursor(wxCursor(wxCURSOR_HAND));
    Bind(wxEVT_PAINT, &ColorSwatch_cls::OnPaint, this);
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { Choose(); });
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_SPACE)
            Choose();
        else if (event.GetKeyCode() == WXK_TAB)
            Navigate(event.ShiftDown() ? 0 : wxNavigationKeyEvent::IsForward);
        else
            event.Skip();
    });
    auto refresh = [this](wxFocusEvent& event) {
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_SET_FOCUS, refresh);
    Bind(wxEVT_KILL_FOCUS, refresh);
}

void ColorSwatch_cls::SetColor(const float* pColor) {
    if (std::equal(pColor, pColor + 4, mColor)) return;
    std::copy_n(pColor, 4, mColor);
    Refresh();
}

wxColour ColorSwatch_cls::GetColour() const {
    return wxColour(ToByte(mColor[0]), ToByte(mColor[1]), ToByte(mColor[2]));
}

void ColorSwatch_cls::Choose() {
    if (!IsEnabled()) return;
    wxColourDialogEX local(wxGetTopLevelParent(this));
    wxColourDialogEX* dialog = GpCClrDialog ? GpCClrDialog : &local;
    dialog->SetColour(GetColour());
    if (dialog->ShowModal() != wxID_OK) return;
    const wxColour chosen = dialog->GetColour();
    if (chosen == GetColour()) return; // values outside 0..1 and finer than a byte stay
    mColor[0] = static_cast<float>(chosen.Red()) / 255.0f;
    mColor[1] = static_cast<float>(chosen.Green()) / 255.0f;
    mColor[2] = static_cast<float>(chosen.Blue()) / 255.0f;
    Refresh();
    if (mOnChoose) mOnChoose(mColor);
}

void ColorSwatch_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const wxSize size = GetClientSize();
    const int square = FromDIP(kSquare);
    const wxBrush brush[2] = {wxBrush(Over(mColor, 0.8f)), wxBrush(Over(mColor, 0.5f))};
    dc.SetPen(*wxTRANSPARENT_PEN);
    for (int y = 0; y * square < size.y; ++y) {
        for (int x = 0; x * square < size.x; ++x) {
            dc.SetBrush(brush[(x + y) % 2]);
            dc.DrawRectangle(x * square, y * square, square, square);
        }
    }
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.SetPen(
        wxPen(wxSystemSettings::GetColour(HasFocus() ? wxSYS_COLOUR_HIGHLIGHT : wxSYS_COLOUR_BTNSHADOW)));
    dc.DrawRectangle(0, 0, size.x, size.y);
}
