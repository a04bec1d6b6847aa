// Edits of keys from buttons, menus and the keyboard.
#include "WIDGET/TIMELINE/clsKeyActions.h"

#include <algorithm>
#include <cmath>

#include <wx/clipbrd.h>
#include <wx/menu.h>

#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/PopUp.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"
#include "WIDGET/TIMELINE/clsKeyDialog.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"

Curves KeyActions_cls::GetCurves() const {
    return mpCCtrl->IsGraphShown() ? mpCCtrl->GetPCGraph()->GetCurves() : mpCCtrl->ShownCurves();
}

Curves KeyActions_cls::CurvesToKey() const { return WithLinked(mpCCtrl->GetSelectedCurves()); }

void KeyActions_cls::Delete() {
    DeleteSelectedKeys(GetCurves());
    mpCCtrl->RefreshAll();
}

void KeyActions_cls::Copy() const {
    const wxString text = CopiedKeys(GetCurves());
    if (!text.empty() && GParamHooks.mClipboard) GParamHooks.mClipboard(text);
}

wxString KeyActions_cls::ClipboardText() {
    wxTextDataObject data;
    const wxClipboardLocker locker;
    return !!locker && wxTheClipboard->GetData(data) ? data.GetText() : wxString();
}

void KeyActions_cls::Paste() {
    Curves into = mpCCtrl->GetSelectedCurves();
    if (into.empty()) into = WithSelectedKeys(GetCurves());
    if (!PasteKeys(into, ClipboardText(), Parameters_cls::kCurrent)) return;
    Curves others = mpCCtrl->AllCurves();
    others.erase(std::remove_if(others.begin(), others.end(),
                                [&](Parameters_cls* curve) {
                                    return std::find(into.begin(), into.end(), curve) != into.end();
                                }),
                 others.end());
    DeselectKeys(others);
    mpCCtrl->RefreshAll();
}

void KeyActions_cls::SelectAll() {
    SelectKeys(mpCCtrl->ShownCurves(), 0.0, 1.0, SelectMode::ADD);
    mpCCtrl->RefreshAll();
}

void KeyActions_cls::SetKind(unsigned kind) {
    SetSelectedKinds(GetCurves(), kind);
    mpCCtrl->RefreshAll();
}

void KeyActions_cls::ToggleNow() {
    ToggleKeys(CurvesToKey(), Parameters_cls::kCurrent);
    mpCCtrl->RefreshAll();
}

void KeyActions_cls::GoTo(const Curves& curves, int dir) {
    const double to = NeighbourKey(curves, Parameters_cls::msCurrentDoubleIndex, dir);
    if (to == Parameters_cls::msCurrentDoubleIndex) return;
    TimeCtrl_cls* time = mpCCtrl->GetPCTime();
    const int steps = time->GetAnimInterp();
    const long at = std::lround(to * time->GetMaxFrame() * steps);
    const int frame = int(at / steps);
    const int step = int(at % steps);
    const UndoBlock_cls block;
    if (step != time->GetInterpStep()) time->SetInterpStepCommand(step);
    if (frame != time->GetFrame()) time->SetFrameCommand(frame);
    mpCCtrl->RefreshAll();
}

void KeyActions_cls::GoToNeighbour(int dir) {
    const Curves selected = mpCCtrl->GetSelectedCurves();
    GoTo(selected.empty() ? mpCCtrl->ShownCurves() : selected, dir);
}

void KeyActions_cls::OpenDialog() {
    if (KeyDialog_cls::Open(mpCCtrl, WithSelectedKeys(GetCurves()))) mpCCtrl->RefreshAll();
}

void KeyActions_cls::AppendKinds(wxMenu* pMenu, const std::function<void(unsigned)>& set, int checked) const {
    for (unsigned kind = 0; kind < KeyFrame_cls::INTERP_COUNT; ++kind) {
        wxMenuItem* item = pMenu->AppendCheckItem(wxID_ANY, KeyFrame_cls::msAstrInterp[kind]);
        item->Check(int(kind) == checked);
        pMenu->Bind(
            wxEVT_MENU, [set, kind](wxCommandEvent&) { set(kind); }, item->GetId());
    }
}

namespace {

wxMenuItem* AppendAct(wxMenu& menu, const wxString& text, const std::function<void()>& act) {
    wxMenuItem* item = menu.Append(wxID_ANY, text);
    menu.Bind(
        wxEVT_MENU, [act](wxCommandEvent&) { act(); }, item->GetId());
    return item;
}

wxMenuItem* AppendCheck(wxMenu& menu, const wxString& text, bool bOn, const std::function<void(bool)>& act) {
    wxMenuItem* item = menu.AppendCheckItem(wxID_ANY, text);
    item->Check(bOn);
    menu.Bind(
        wxEVT_MENU, [act, bOn](wxCommandEvent&) { act(!bOn); }, item->GetId());
    return item;
}

} // namespace

void KeyActions_cls::ShowMenu(wxWindow* pWindow, const wxPoint& position, double insertAt,
                              const Curves& insertInto) {
    wxMenu menu;
    const bool bSome = CountSelectedKeys(GetCurves()) > 0;
    AppendKinds(
        &menu, [this](unsigned kind) { SetKind(kind); }, CommonKind(GetCurves()));
    for (wxMenuItem* item : menu.GetMenuItems())
        item->Enable(bSome);
    menu.AppendSeparator();
    AppendAct(menu, _("Delete"), [this] { Delete(); })->Enable(bSome);
    AppendAct(menu, _("Copy"), [this] { Copy(); })->Enable(bSome);
    AppendAct(menu, _("Paste at the current time"), [this] { Paste(); });
    AppendAct(menu, _(L"Key settings\u2026"), [this] { OpenDialog(); })->Enable(bSome);
    if (!insertInto.empty()) {
        menu.AppendSeparator();
        AppendAct(menu, _("Insert key here"), [this, insertAt, insertInto] {
            InsertKeys(insertInto, insertAt);
            mpCCtrl->RefreshAll();
        });
    }
    PopUpMenu(pWindow, menu, position);
}

void KeyActions_cls::ShowRowMenu(wxWindow* pWindow, int row, const wxPoint& position) {
    if (row < 0 || row >= int(mpCCtrl->GetRows().size())) return;
    const TimelineRow one = mpCCtrl->GetRows()[size_t(row)];
    ParamGroup_cls* group = one.mpCGroup->GetPCGroup();
    const Curves curves = mpCCtrl->OwnCurvesOfRow(row);
    const Curves linked = mpCCtrl->CurvesOfRow(row);
    const bool bAnimated =
        std::any_of(curves.begin(), curves.end(), [](auto* curve) { return IsAnimated(*curve); });
    const bool bSome = CountSelectedKeys(curves) > 0;
    wxMenu menu;
    AppendCheck(menu, _("Depends on time"), bAnimated, [this, linked](bool bOn) {
        SetTimeDependent(linked, bOn);
        mpCCtrl->RefreshAll();
    });
    AppendAct(menu, HasKeyAt(linked, Parameters_cls::msCurrentDoubleIndex) ? _("Toggle key") : _("Set key"),
              [this, linked] {
                  ToggleKeys(linked, Parameters_cls::kCurrent);
                  mpCCtrl->RefreshAll();
              });
    menu.AppendSeparator();
    AppendAct(menu, _("Select all keys"), [this, linked] {
        DeselectKeys(mpCCtrl->AllCurves());
        SelectKeys(linked, 0.0, 1.0, SelectMode::SET);
        mpCCtrl->RefreshAll();
    })->Enable(bAnimated);
    AppendAct(menu, _("Copy selected keys"), [curves] {
        if (GParamHooks.mClipboard) GParamHooks.mClipboard(CopiedKeys(curves));
    })->Enable(bSome);
    auto* kinds = new wxMenu;
    AppendKinds(
        kinds,
        [this, linked](unsigned kind) {
            SetSelectedKinds(linked, kind);
            mpCCtrl->RefreshAll();
        },
        CommonKind(curves));
    menu.AppendSubMenu(kinds, _("Interpolation"))->Enable(bSome);
    AppendAct(menu, _(L"Key settings\u2026"), [this] { OpenDialog(); })->Enable(bSome);
    AppendAct(menu, _("Flip in time"), [this, linked] {
        FlipCurves(linked);
        mpCCtrl->RefreshAll();
    })->Enable(bAnimated);
    menu.AppendSeparator();
    if (group->GetDimension() > 1)
        AppendCheck(menu, _("Linked"), group->mbLinked, [this, group](bool bOn) {
            group->mbLinked = bOn;
            mpCCtrl->RefreshAll();
        });
    AppendCheck(menu, _("Shy"), group->mbShy, [this, group](bool bOn) {
        group->mbShy = bOn;
        mpCCtrl->HideAndShow();
    });
    if (!group->mbFolder) AppendAct(menu, _("Export group to the clipboard"), [group] { group->Export(); });
    if (one.mDim >= 0 && curves[0]->mPeriodic.mValue != 0) {
        menu.AppendSeparator();
        menu.Append(wxID_ANY, wxString::Format(_("Period: %d"), curves[0]->mPeriodic.mValue))->Enable(false);
    }
    PopUpMenu(pWindow, menu, position);
}
