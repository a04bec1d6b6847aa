#include "GL/DRAW/clsDrawOptionGUI.h"

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "GL/DRAW/clsDrawOption.h"

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
    // Shadow volumes aren't drawn yet: not offered, but kept where a project holds them.
    mRowShadow = AddChoice(_("Shadow"), &mpCDrawOption->mShadow.mValue,
                           std::vector<ChoiceItem>{{0, _("No Shadow"), true},
                                                   {1, _("Shadow Volume"), false},
                                                   {2, _("Show Shadow"), false}},
                           _("Shadows that particles throw"));
    SetUndo(UPDATE_SNAPDATA | UPDATE_DRAW_OPTIONS | UPDATE_GL);
    HideAndShow();
}

void DrawOptionGUI_cls::UpdateValues() {
    MultiInputPanel_cls::UpdateValues(kAllRows);
    HideAndShow();
}

void DrawOptionGUI_cls::HideAndShow() { ShowRow(mRowShadow, mpCDrawOption->mShadow.mValue != SHADOW_NONE); }

void DrawOptionGUI_cls::FuncHookCombobox(int) { Redraw(); }

void DrawOptionGUI_cls::FuncHookValue(int, bool) { Redraw(); }

void DrawOptionGUI_cls::Redraw() {
    GbSnapDataRefresh.store(true);
    PostMenuEvent(ID_REFRESH_GL);
}

wxWindow* DrawOption_cls::InstantiateGUI(wxWindow* pParent) {
    mpCGUI = new DrawOptionGUI_cls(pParent, this);
    return mpCGUI;
}
