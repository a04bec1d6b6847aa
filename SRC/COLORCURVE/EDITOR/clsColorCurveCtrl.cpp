#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"

#include <algorithm>

#include <wx/intl.h>

#include "COLORCURVE/EDITOR/clsColorCurveGUI.h"

void ColorCurveCtrl_cls::OpenCurve(ColorCurve_cls* pCurve, wxWindow* pParent) {
    if (!pCurve) pCurve = GetPCCurve();
    const std::vector<ColorCurve_cls*> curves = GetCurves();
    if (!pCurve && !curves.empty()) pCurve = curves.front();
    mCEdit.SetCurve(pCurve);
    OpenWindow(pParent);
}

std::vector<ColorCurve_cls*> ColorCurveCtrl_cls::GetCurves() const {
    std::vector<ColorCurve_cls*> curves;
    if (mHooks.mCurves) curves = mHooks.mCurves();
    ColorCurve_cls* pCurve = GetPCCurve();
    if (pCurve && std::find(curves.begin(), curves.end(), pCurve) == curves.end()) curves.push_back(pCurve);
    return curves;
}

bool ColorCurveCtrl_cls::FitRange(bool bSequence) {
    EndGesture();
    ColorCurve_cls* pCurve = GetPCCurve();
    ColorSettings_st settings;
    float low = 0.0f;
    float high = 0.0f;
    if (!pCurve || !mHooks.mRange || !mHooks.mRange(*pCurve, bSequence, &low, &high)) return false;
    settings = pCurve->GetSettings();
    settings.mScalingMin = low;
    settings.mScalingMax = low == high ? low + 1.0f : high; // one value alone has no range
    if (!(settings == pCurve->GetSettings())) pCurve->SetSettingsCommand(settings, pCurve->GetSettings());
    return true;
}

std::vector<wxString> ColorCurveCtrl_cls::GetDependLabels() {
    return {_("VALUE1"),      _("Radius"),      _("Position"), _("Position(X)"),
            _("Position(Y)"), _("Position(Z)"), _("Velocity"), _("Velocity(X)"),
            _("Velocity(Y)"), _("Velocity(Z)"), _("ID")};
}

wxDialogEXKey* ColorCurveCtrl_cls::MakeDialog(wxWindow* pParent) {
    return new ColorCurveGUI_cls(pParent, this);
}
