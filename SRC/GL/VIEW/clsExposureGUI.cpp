#include "GL/VIEW/clsExposureGUI.h"

#include <wx/intl.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "GL/VIEW/clsExposure.h"

ExposureGUI_cls::ExposureGUI_cls(wxWindow* pParent, Exposure_cls* pExposure)
    : MultiInputPanel_cls(pParent), mpCExposure(pExposure) {
    AddNumber(_("Level"), pExposure->mLevel.mValue, 2, RangeSpec(-100, 100, 0.01),
              _("Light that is shown black, and light that is shown at full brightness; 1 is what one opaque "
                "white particle gives"));
    AddNumber(_("Gamma"), &pExposure->mGamma.mValue, 1, RangeSpec(0.01, 10, 0.01),
              _("Above 1 brightens what lies between black and full brightness, below 1 darkens it"));
    AddNumber(_("Hue"), &pExposure->mHueOffset.mValue, 1, RangeSpec(-180, 180, 1),
              _("Turns all colours around the colour circle, in degrees"));
    AddNumber(_("Saturation"), &pExposure->mSaturation.mValue, 1, RangeSpec(-100, 100, 1),
              _("Percent more colour; -100 leaves greys"));
    mRowDefault = AddButton("", _("Default"), _("Show the picture as it is drawn"));
    AddStatic(
        _("Program"), [pExposure] { return pExposure->GetStatus(); },
        _("The shader files GL/exposure.vert and GL/exposure.frag; without them nothing here has an effect"));
    SetUndo(UPDATE_EXPOSURE | UPDATE_GL);
}

void ExposureGUI_cls::FuncHookClick(int row) {
    if (row != mRowDefault) return;
    mpCExposure->SetToDefault();
    UpdateValues();
    PostMenuEvent(ID_REFRESH_GL);
}

void ExposureGUI_cls::FuncHookValue(int, bool) { PostMenuEvent(ID_REFRESH_GL); }

wxWindow* Exposure_cls::InstantiateGUI(wxWindow* pParent) {
    mpCGUI = new ExposureGUI_cls(pParent, this);
    return mpCGUI;
}
