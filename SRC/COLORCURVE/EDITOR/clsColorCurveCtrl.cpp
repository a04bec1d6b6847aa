#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"

#include <algorithm>

#include <wx/display.h>
#include <wx/intl.h>

#include "COLORCURVE/EDITOR/clsColorCurveGUI.h"
#include "PARAM/clsUndoManager.h"

void ColorCurveCtrl_cls::OpenCurve(ColorCurve_cls* pCurve, wxWindow* pParent) {
    if (!pCurve) pCurve = GetPCCurve();
    const std::vector<ColorCurve_cls*> curves = GetCurves();
    if (!pCurve && !curves.empty()) pCurve = curves.front();
    mCEdit.SetCurve(pCurve);
    const bool bFirst = !GetPCDialog();
    OpenWindow(pParent);
    if (bFirst && pParent) PlaceBeside(pParent);
}

// The views must be seen while colours are tried out: beside the main window, or over its right edge.
void ColorCurveCtrl_cls::PlaceBeside(const wxWindow* pParent) {
    const int display = wxDisplay::GetFromWindow(pParent);
    const wxRect area = wxDisplay(static_cast<unsigned>(std::max(display, 0))).GetClientArea();
    const wxRect parent = pParent->GetScreenRect();
    const wxSize size = GetPCDialog()->GetSize();
    int x = std::min(parent.GetRight() + 1, area.GetRight() + 1 - size.x);
    if (x <= parent.GetRight() && parent.x - size.x >= area.x) x = parent.x - size.x;
    const int y = std::min(parent.y, area.GetBottom() + 1 - size.y);
    GetPCDialog()->Move(std::max(x, area.x), std::max(y, area.y));
}

void ColorCurveCtrl_cls::TakeTemplate(const ColorCurve_cls& chosen) {
    EndGesture();
    ColorCurve_cls* pCurve = GetPCCurve();
    if (!pCurve) return;
    const UndoBlock_cls block;
    pCurve->CopyColorFromP(&chosen, true);
    ColorSettings_st settings = pCurve->GetSettings();
    if (settings.mbUseCurve || !IsDriven(*pCurve)) return;
    settings.mbUseCurve = true;
    pCurve->SetSettingsCommand(settings, pCurve->GetSettings());
}

std::vector<ColorCurve_cls*> ColorCurveCtrl_cls::GetCurves() const {
    std::vector<ColorCurve_cls*> curves;
    if (mHooks.mCurves) curves = mHooks.mCurves();
    ColorCurve_cls* pCurve = GetPCCurve();
    if (pCurve && std::find(curves.begin(), curves.end(), pCurve) == curves.end()) curves.push_back(pCurve);
    return curves;
}

bool ColorCurveCtrl_cls::FitRange(ColorCurve_cls* pCurve, bool bSequence) {
    EndGesture();
    float low = 0.0f;
    float high = 0.0f;
    if (!pCurve || !mHooks.mRange || !mHooks.mRange(*pCurve, bSequence, &low, &high)) return false;
    ColorSettings_st settings = pCurve->GetSettings();
    settings.mScalingMin = low;
    settings.mScalingMax = low == high ? low + 1.0f : high; // one value alone has no range
    if (!(settings == pCurve->GetSettings())) pCurve->SetSettingsCommand(settings, pCurve->GetSettings());
    return true;
}

std::vector<wxString> ColorCurveCtrl_cls::GetDependLabels() const {
    return mHooks.mDependLabels ? mHooks.mDependLabels() : std::vector<wxString>();
}

OwnedDialog_cls* ColorCurveCtrl_cls::MakeDialog(wxWindow* pParent) {
    return new ColorCurveGUI_cls(pParent, this);
}
