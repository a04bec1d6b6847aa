#include "WIDGET/clsGripLabel.h"

#include <wx/dcclient.h>
#include <wx/settings.h>

GripLabel_cls::GripLabel_cls(wxWindow* pParent, const wxString& text)
    : wxWindow(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE), mStrText(text) {
    SetInitialSize();
    Bind(wxEVT_PAINT, &GripLabel_cls::OnPaint, this);
}

void GripLabel_cls::SetLabel(const wxString& text) {
    if (mStrText == text) return;
    mStrText = text;
    InvalidateBestSize();
    Refresh();
}

wxSize GripLabel_cls::DoGetBestClientSize() const { return GetTextExtent(mStrText); }

void GripLabel_cls::OnPaint(wxPaintEvent&) {
    wxPaintDC dc(this); // no buffer of its own: the page's background shows through
    dc.SetFont(GetFont());
    // A panel with a ground of its own says what can be read on it.
    if (IsEnabled() && GetParent()->UseForegroundColour())
        dc.SetTextForeground(GetParent()->GetForegroundColour());
    else
        dc.SetTextForeground(
            wxSystemSettings::GetColour(IsEnabled() ? wxSYS_COLOUR_BTNTEXT : wxSYS_COLOUR_GRAYTEXT));
    dc.DrawText(mStrText, 0, (GetClientSize().y - dc.GetTextExtent(mStrText).y) / 2);
}
