// Edits from keys, menus and the header: of the selected keys, of keys at the current time, and of what the
// strips show of the film.
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"

#include <algorithm>
#include <cmath>

#include <wx/menu.h>

#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/TIMELINE/TimeGesture.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"
#include "WIDGET/TIMELINE/clsParamStrips.h"
#include "WIDGET/TIMELINE/clsKeyDialog.h"
#include "WIDGET/TIMELINE/clsParamTree.h"

Curves ParamGUICtrl_cls::CurvesToKey() const { return WithLinked(GetSelectedCurves()); }

void ParamGUICtrl_cls::DeleteKeys() {
    DeleteSelectedKeys(CurvesInEdit());
    RefreshAll();
}

void ParamGUICtrl_cls::CopyKeys() const {
    const wxString text = CopiedKeys(CurvesInEdit());
    if (!text.empty() && GParamHooks.mClipboard) GParamHooks.mClipboard(text);
}

void ParamGUICtrl_cls::SelectAllKeys() {
    SelectKeys(ShownCurves(), 0.0, 1.0, SelectMode::ADD);
    RefreshAll();
}

void ParamGUICtrl_cls::SetKind(unsigned kind) {
    SetSelectedKinds(CurvesInEdit(), kind);
    RefreshAll();
}

void ParamGUICtrl_cls::ToggleKeysNow() {
    ToggleKeys(CurvesToKey(), Parameters_cls::kCurrent);
    RefreshAll();
}

void ParamGUICtrl_cls::GoToKey(const Curves& curves, int dir) {
    const double to = NeighbourKey(curves, Parameters_cls::msCurrentDoubleIndex, dir);
    if (to == Parameters_cls::msCurrentDoubleIndex) return;
    const int steps = mpCTime->GetAnimInterp();
    const long at = std::lround(to * mpCTime->GetMaxFrame() * steps);
    const int frame = int(at / steps);
    const int step = int(at % steps);
    const UndoBlock_cls block;
    if (step != mpCTime->GetInterpStep()) mpCTime->SetInterpStepCommand(step);
    if (frame != mpCTime->GetFrame()) mpCTime->SetFrameCommand(frame);
    RefreshAll();
}

void ParamGUICtrl_cls::GoToNeighbourKey(int dir) {
    const Curves selected = GetSelectedCurves();
    GoToKey(selected.empty() ? ShownCurves() : selected, dir);
}

void ParamGUICtrl_cls::OpenKeyDialog() {
    if (KeyDialog_cls::Open(this, WithSelectedKeys(CurvesInEdit()))) RefreshAll();
}

void ParamGUICtrl_cls::SetShyMode(bool bShy) {
    mpCTime->mbShyMode = bShy;
    HideAndShow();
    ResizeTL();
}

void ParamGUICtrl_cls::SetActiveArea(const FrameArea& area) {
    const TimeGesture_cls gesture(mpCTime);
    if (area.mFirst != mpCTime->GetAAMin()) mpCTime->SetAAMinCommand(area.mFirst);
    if (area.mLast != mpCTime->GetAAMax()) mpCTime->SetAAMaxCommand(area.mLast);
}

void ParamGUICtrl_cls::Zoom(double anchor, double factor) {
    const FrameArea now = {mpCTime->GetAAMin(), mpCTime->GetAAMax()};
    SetActiveArea(ZoomArea(now, anchor, factor, mpCTime->GetMaxFrame()));
}

void ParamGUICtrl_cls::ZoomTo(bool bWorkArea) {
    if (bWorkArea && mpCTime->GetWAMax() > mpCTime->GetWAMin())
        SetActiveArea({mpCTime->GetWAMin(), mpCTime->GetWAMax()});
    else
        SetActiveArea({0, mpCTime->GetMaxFrame()});
}

bool ParamGUICtrl_cls::OnKey(const wxKeyEvent& event) {
    if (event.AltDown()) return false;
    switch (event.GetKeyCode()) {
    case WXK_DELETE:
    case WXK_NUMPAD_DELETE:
    case WXK_BACK:
        DeleteKeys();
        return true;
    case 'A':
        if (!event.ControlDown()) return false;
        SelectAllKeys();
        return true;
    case 'C':
        if (!event.ControlDown()) return false;
        CopyKeys();
        return true;
    case WXK_ESCAPE:
        DeselectKeys(AllCurves());
        RefreshAll();
        return true;
    case WXK_UP:
    case WXK_DOWN:
        MoveFocusRow(event.GetKeyCode() == WXK_UP ? -1 : 1, event.ShiftDown());
        return true;
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        if (mFocusRow < 0 || mFocusRow >= int(mVRows.size())) return false;
        if (!ToggleFold(mFocusRow)) mpCTree->OpenEditor(mFocusRow);
        return true;
    default:
        return false;
    }
}

void ParamGUICtrl_cls::SetHoverRow(int row) {
    if (row == mHoverRow) return;
    const RowScale rows = GetRowScale();
    for (const int one : {mHoverRow, row})
        if (one >= 0)
            mpCTree->RefreshRect(wxRect(0, rows.ToPixel(one), mpCTree->GetClientSize().x, rows.mHeight),
                                 false);
    mHoverRow = row;
}

void ParamGUICtrl_cls::AppendKinds(wxMenu* pMenu, const std::function<void(unsigned)>& set,
                                   int checked) const {
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

void ParamGUICtrl_cls::ShowKeyMenu(wxWindow* pWindow, const wxPoint& position, double insertAt,
                                   const Curves& insertInto) {
    wxMenu menu;
    const bool bSome = CountSelectedKeys(CurvesInEdit()) > 0;
    AppendKinds(
        &menu, [this](unsigned kind) { SetKind(kind); }, CommonKind(CurvesInEdit()));
    for (wxMenuItem* item : menu.GetMenuItems())
        item->Enable(bSome);
    menu.AppendSeparator();
    AppendAct(menu, _("Delete"), [this] { DeleteKeys(); })->Enable(bSome);
    AppendAct(menu, _("Copy"), [this] { CopyKeys(); })->Enable(bSome);
    AppendAct(menu, _(L"Key settings\u2026"), [this] { OpenKeyDialog(); })->Enable(bSome);
    if (!insertInto.empty()) {
        menu.AppendSeparator();
        AppendAct(menu, _("Insert key here"), [this, insertAt, insertInto] {
            InsertKeys(insertInto, insertAt);
            RefreshAll();
        });
    }
    pWindow->PopupMenu(&menu, position);
}

void ParamGUICtrl_cls::ShowRowMenu(wxWindow* pWindow, int row, const wxPoint& position) {
    if (row < 0 || row >= int(mVRows.size())) return;
    const TimelineRow one = mVRows[size_t(row)];
    ParamGroup_cls* group = one.mpCGroup->GetPCGroup();
    const Curves curves = OwnCurvesOfRow(row);
    const Curves linked = CurvesOfRow(row);
    const bool bAnimated =
        std::any_of(curves.begin(), curves.end(), [](auto* curve) { return IsAnimated(*curve); });
    const bool bSome = CountSelectedKeys(curves) > 0;
    wxMenu menu;
    AppendCheck(menu, _("Depends on time"), bAnimated, [this, linked](bool bOn) {
        SetTimeDependent(linked, bOn);
        RefreshAll();
    });
    AppendAct(menu, HasKeyAt(linked, Parameters_cls::msCurrentDoubleIndex) ? _("Toggle key") : _("Set key"),
              [this, linked] {
                  ToggleKeys(linked, Parameters_cls::kCurrent);
                  RefreshAll();
              });
    menu.AppendSeparator();
    AppendAct(menu, _("Select all keys"), [this, linked] {
        DeselectKeys(AllCurves());
        SelectKeys(linked, 0.0, 1.0, SelectMode::SET);
        RefreshAll();
    })->Enable(bAnimated);
    AppendAct(menu, _("Copy selected keys"), [curves] {
        if (GParamHooks.mClipboard) GParamHooks.mClipboard(CopiedKeys(curves));
    })->Enable(bSome);
    auto* kinds = new wxMenu;
    AppendKinds(
        kinds,
        [this, linked](unsigned kind) {
            SetSelectedKinds(linked, kind);
            RefreshAll();
        },
        CommonKind(curves));
    menu.AppendSubMenu(kinds, _("Interpolation"))->Enable(bSome);
    AppendAct(menu, _(L"Key settings\u2026"), [this] { OpenKeyDialog(); })->Enable(bSome);
    AppendAct(menu, _("Flip in time"), [this, linked] {
        FlipCurves(linked);
        RefreshAll();
    })->Enable(bAnimated);
    menu.AppendSeparator();
    if (group->GetDimension() > 1)
        AppendCheck(menu, _("Linked"), group->mbLinked, [this, group](bool bOn) {
            group->mbLinked = bOn;
            RefreshAll();
        });
    AppendCheck(menu, _("Shy"), group->mbShy, [this, group](bool bOn) {
        group->mbShy = bOn;
        HideAndShow();
    });
    if (!group->mbFolder) AppendAct(menu, _("Export group to the clipboard"), [group] { group->Export(); });
    if (one.mDim >= 0 && curves[0]->mPeriodic.mValue != 0) {
        menu.AppendSeparator();
        menu.Append(wxID_ANY, wxString::Format(_("Period: %d"), curves[0]->mPeriodic.mValue))->Enable(false);
    }
    pWindow->PopupMenu(&menu, position);
}
