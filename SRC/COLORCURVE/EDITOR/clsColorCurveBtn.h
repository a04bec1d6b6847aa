// A button that shows a colour curve, or the constant colour in its place, and opens the editor with it.
#pragma once

#include <memory>

#include <wx/control.h>

class ColorCurveCtrl_cls;
class ColorCurve_cls;
class MultiInputPanel_cls;

class ColorCurveBtn_cls : public wxControl {
public:
    /// The curve may go before the button.
    ColorCurveBtn_cls(wxWindow* pParent, ColorCurve_cls* pCurve);

    /// Its alpha has no meaning.
    void ShowOpaque() { mbOpaque = true; }
    ColorCurve_cls* GetPCCurve() const { return mpLife.expired() ? nullptr : mpCCurve; }
    /// Draw again if the colours are others than those shown.
    void RefreshIfChanged();
    bool AcceptsFocus() const override { return IsEnabled() && IsShown(); }

    static ColorCurveCtrl_cls* mspCColorCurveCtrlLinked; ///< the editor; the hub sets it

private:
    void OnPaint(wxPaintEvent& event);
    void OnMenu();
    void Open();
    void Toggle();
    wxImage GetPicture() const;

    ColorCurve_cls* mpCCurve;
    std::weak_ptr<const bool> mpLife;
    bool mbHover = false;
    bool mbPressed = false;
    bool mbOpaque = false;
    size_t mShown = 0; ///< what was drawn last
};

/// A row with such a button; its number. `bOpaque`: as ShowOpaque.
int AddColorCurve(MultiInputPanel_cls& panel, const wxString& label, ColorCurve_cls* pCurve,
                  const wxString& tip, bool bOpaque = false);
/// A row of buttons that set the curve's scaling to what occurs; its number. The curve outlives the panel.
int AddFitRange(MultiInputPanel_cls& panel, ColorCurve_cls* pCurve);
