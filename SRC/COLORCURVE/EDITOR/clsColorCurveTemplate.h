// Ready-made curves as two rows of bars; a click takes one over.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <wx/panel.h>

class ColorCurve_cls;

class ColorCurveTemplate_cls : public wxPanel {
public:
    explicit ColorCurveTemplate_cls(wxWindow* pParent);
    ~ColorCurveTemplate_cls() override;

    /// Called with the curve that was clicked.
    void SetOnChoose(std::function<void(const ColorCurve_cls&)> handler) { mOnChoose = std::move(handler); }
    int GetCount() const { return static_cast<int>(mVCurves.size()); }
    const ColorCurve_cls& GetCurve(int index) const { return *mVCurves[static_cast<size_t>(index)]; }
    wxRect GetCell(int index) const;
    bool AcceptsFocus() const override { return IsEnabled() && IsShown(); }

private:
    void OnPaint(wxPaintEvent& event);
    void OnKey(wxKeyEvent& event);
    int FindCell(const wxPoint& point) const;
    void Choose(int index);

    std::vector<std::unique_ptr<ColorCurve_cls>> mVCurves;
    int mFirstRow; ///< curves in the upper row
    int mHover = -1;
    int mPressed = -1;
    int mFocus = 0; ///< where the keyboard stands
    std::function<void(const ColorCurve_cls&)> mOnChoose;
};
