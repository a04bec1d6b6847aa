#include "GL/VIEW/clsOverlayGUI.h"

#include <algorithm>

#include <wx/intl.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "GL/VIEW/clsOverlay.h"

namespace {

std::vector<wxString> GetPlaces() {
    return {_("Top Left"), _("Top Right"), _("Btm Left"), _("Btm Right"), _("Do not show")};
}

} // namespace

OverlayGUI_cls::OverlayGUI_cls(wxWindow* pParent, Overlay_cls* pOverlay)
    : MultiInputPanel_cls(pParent), mpCOverlay(pOverlay) {
    AddTimeRows();
    AddLegendRows();
    SetUndo(UPDATE_DRAW_OPTIONS | UPDATE_GL);
    HideAndShow();
}

void OverlayGUI_cls::AddTimeRows() {
    Overlay_cls& o = *mpCOverlay;
    AddChoice(_("Time"), &o.mTimePos.mValue, GetPlaces(),
              _("Where the snapshot's time stands in the picture"));
    mRowStyle = AddChoice(_("Time Style"), &o.mTimeFontFamily.mValue,
                          {_("Default"), _("Decorative"), _("Roman"), _("Script"), _("Swiss"), _("Modern"),
                           _("Teletype"), _("Custom")},
                          _("Kind of letters of the time"));
    mRowFace = AddText(_("Custom Font"), &o.mTimeCustomFont.mStrValue, _("Name of a font of this machine"));
    mRowAsk = AddButton("", _("Choose Font..."), _("Choose the font of the time from a list"));
    NumSpec points;
    points.mMin = 6;
    points.mMax = 72;
    mRowPoint =
        AddNumber(_("Font Size"), &o.mTimeFontPoint.mValue, 1, points, _("Size of the time in points"));
    mRowTag = AddText(_("Time Tag"), &o.mTimeTag.mStrValue, _("Text ahead of the time"));
}

void OverlayGUI_cls::AddLegendRows() {
    Overlay_cls& o = *mpCOverlay;
    const int row =
        AddCheck(_("Legend"), &o.mShowLegend.mValue[0], "0", _("Show the colours of attribute 0"));
    for (int i = 1; i < Overlay_cls::kLegends; ++i)
        AddCheckTo(row, &o.mShowLegend.mValue[i], wxString::Format("%d", i),
                   wxString::Format(_("Show the colours of attribute %d"), i));
    mRowLegendPos = AddChoice(_("Legend Place"), &o.mLegendPos.mValue, GetPlaces(),
                              _("Where the legends stand in the picture"));
    mRowAlpha = AddChoice(_("Legend Alpha"), &o.mLegendIgnoreAlpha.mValue, {_("Show Alpha"), _("Hide Alpha")},
                          _("Whether a legend is as transparent as its colours"));
    mRowTics = AddChoice(_("Legend Tics"), &o.mLegendIgnoreTics.mValue, {_("Show Tics"), _("Hide Tics")},
                         _("Whether values stand under a legend, in units of the data"));
}

void OverlayGUI_cls::UpdateValues() {
    MultiInputPanel_cls::UpdateValues(kAllRows);
    HideAndShow();
}

void OverlayGUI_cls::HideAndShow() {
    const Overlay_cls& o = *mpCOverlay;
    const bool bTime = o.mTimePos.mValue != Overlay_cls::DO_NOT_SHOW;
    const bool bCustom = o.mTimeFontFamily.mValue > Overlay_cls::kModernFont;
    const bool* pShow = o.mShowLegend.mValue;
    const bool bLegend = std::any_of(pShow, pShow + Overlay_cls::kLegends, [](bool b) { return b; }) &&
                         o.mLegendPos.mValue != Overlay_cls::DO_NOT_SHOW;
    Freeze();
    for (const int row : {mRowStyle, mRowPoint, mRowTag})
        ShowRow(row, bTime);
    for (const int row : {mRowFace, mRowAsk})
        ShowRow(row, bTime && bCustom);
    for (const int row : {mRowAlpha, mRowTics})
        ShowRow(row, bLegend);
    Thaw();
}

void OverlayGUI_cls::FuncHookClick(int row) {
    if (row == mRowAsk) mpCOverlay->SetCustomFont(this);
    UpdateValues();
    Redraw();
}

void OverlayGUI_cls::FuncHookCombobox(int) {
    HideAndShow();
    Redraw();
}

void OverlayGUI_cls::FuncHookValue(int, bool) { Redraw(); }

void OverlayGUI_cls::Redraw() { PostMenuEvent(ID_REFRESH_GL); }

wxWindow* Overlay_cls::InstantiateGUI(wxWindow* pParent) {
    mpCGUI = new OverlayGUI_cls(pParent, this);
    return mpCGUI;
}
