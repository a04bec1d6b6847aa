// A label that takes the mouse: dragging it sideways changes the number it stands for.
#pragma once

#include <wx/window.h>

class GripLabel_cls : public wxWindow {
public:
    GripLabel_cls(wxWindow* pParent, const wxString& text);
    void SetLabel(const wxString& text) override;
    wxString GetLabel() const override { return mStrText; }
    bool AcceptsFocus() const override { return false; }

protected:
    wxSize DoGetBestClientSize() const override;

private:
    void OnPaint(wxPaintEvent& event);

    wxString mStrText;
};
