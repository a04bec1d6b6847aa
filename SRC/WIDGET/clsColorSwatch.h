// A colour with alpha as a small field over a checkerboard; a click asks for another colour.
#pragma once

#include <functional>

#include <wx/control.h>

class ColorSwatch_cls : public wxControl {
public:
    explicit ColorSwatch_cls(wxWindow* pParent);

    /// Red, green, blue, alpha, 0..1.
    void SetColor(const float* pColor);
    wxColour GetColour() const;
    /// Called with red, green, blue after the user chose.
    void SetOnChoose(std::function<void(const float*)> handler) { mOnChoose = std::move(handler); }
    bool AcceptsFocus() const override { return IsEnabled() && IsShown(); }

private:
    void OnPaint(wxPaintEvent& event);
    void Choose();

    float mColor[4] = {0.0f, 0.0f, 0.0f, 1.0f};
    std::function<void(const float*)> mOnChoose;
};
