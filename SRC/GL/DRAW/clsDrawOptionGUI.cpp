#include "GL/DRAW/clsDrawOptionGUI.h"

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsShadowVolume.h"

DrawOptionGUI_cls::DrawOptionGUI_cls(wxWindow* pParent, DrawOption_cls* pDrawOption)
    : MultiInputPanel_cls(pParent), mpCDrawOption(pDrawOption) {
    NumSpec downsize;
    downsize.mMin = 1;
    downsize.mMax = 10000;
    AddNumber(_("Downsize"), &mpCDrawOption->mDownSizing.mValue, 1, downsize,
              _("Every n-th particle is drawn"));
    AddChoice(_("Zsort Type"), &mpCDrawOption->mSortOrder.mValue,
              {_("No Sort (fast)"), _("Zsort (for transparency)"), _("Zsort (for solid object)")},
              _("Order in which particles are drawn: as in the data, far to near, or near to far"));
    AddChoice(_("Classification"), &mpCDrawOption->mClassify.mValue,
              {_("Use Attrib0 Only (fast)"), _("Use All Attrib")},
              _("Whether a particle's type picks its attribute"));
    AddChoice(
        _("Shadow"), &mpCDrawOption->mShadow.mValue, {_("No Shadow"), _("Shadow Volume"), _("Show Shadow")},
        _("Shadows that spheres throw onto all that lights reach, from each light with \"Cast Shadow\";\n"
          "the last also shows the volumes that are dark"));
    ShadowVolume_cls::Settings_st& shadow = ShadowVolume_cls::GetSettings();
    mRowShadow = AddChoice(_("Q./Length"), &shadow.mQuality.mValue, {_("Low"), _("Middle"), _("High")},
                           _("How round shadows are"));
    AddNumberTo(mRowShadow, &shadow.mLength.mValue, RangeSpec(0.0, double(ShadowVolume_cls::kLongest), 1.0),
                _("Length of a shadow, in radii of the sphere"));
    mRowDarkness = AddNumber(_("Shadow Darkness"), &shadow.mDarkness.mValue, 1, RangeSpec(0.0, 1.0, 0.01),
                             _("Share of the light that a shadow keeps away: 1 all of it"));
    SetUndo(UPDATE_SNAPDATA | UPDATE_DRAW_OPTIONS | UPDATE_GL);
    HideAndShow();
}

void DrawOptionGUI_cls::UpdateValues() {
    MultiInputPanel_cls::UpdateValues(kAllRows);
    HideAndShow();
}

void DrawOptionGUI_cls::HideAndShow() {
    const bool bShadow = mpCDrawOption->mShadow.mValue != SHADOW_NONE;
    ShowRow(mRowShadow, bShadow);
    ShowRow(mRowDarkness, bShadow);
}

void DrawOptionGUI_cls::FuncHookCombobox(int row) {
    if (row + 1 == mRowShadow) HideAndShow();
    Redraw();
}

void DrawOptionGUI_cls::FuncHookValue(int, bool) { Redraw(); }

void DrawOptionGUI_cls::Redraw() {
    GbSnapDataRefresh.store(true);
    PostMenuEvent(ID_REFRESH_GL);
}

wxWindow* DrawOption_cls::InstantiateGUI(wxWindow* pParent) {
    mpCGUI = new DrawOptionGUI_cls(pParent, this);
    return mpCGUI;
}
