// The mouse and the keys in the tree.
#include "WIDGET/TIMELINE/clsParamTree.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include <wx/textctrl.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "WIDGET/NumberText.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"

namespace {

constexpr int kDragThreshold = 3; // pixels before a press becomes a drag

/// A pixel moves a value by about a hundredth of its size.
NumSpec ScrubSpec(double value) {
    NumSpec spec;
    spec.mbDouble = true;
    const double size = std::max(std::fabs(value), 0.1);
    spec.mStep = std::pow(10.0, std::floor(std::log10(size)) - 1.0) * (size < 1.0 ? 1.0 : 0.1);
    return spec;
}

wxString HintOf(TreeZone zone, bool bGroup) {
    switch (zone) {
    case TreeZone::FOLD:
        return _("Open or fold the group");
    case TreeZone::CHECK:
        return _("Depends on time: the value has key frames");
    case TreeZone::LINK:
        return _("Linked: keys of one curve are keys of all");
    case TreeZone::SHY:
        return _("Shy: hidden in shy mode");
    case TreeZone::VALUE:
        return _(
            "Value at the current time. Drag sideways (Shift fine, Ctrl coarse), or double click to type");
    case TreeZone::PREVIOUS:
        return _("To the previous key");
    case TreeZone::KEY:
        return bGroup ? _("Set or remove keys of the group at the current time")
                      : _("Set or remove a key at the current time");
    case TreeZone::NEXT:
        return _("To the next key");
    default:
        return wxString();
    }
}

} // namespace

// A pressed button keeps the pointer by itself. Capturing it would keep the keys away, and with them Escape.
void ParamTree_cls::OnMouse(wxMouseEvent& event) {
    if (event.GetEventType() == wxEVT_MOUSEWHEEL) return OnWheel(event);
    if (event.Leaving()) return mpCCtrl->SetHoverRow(-1);
    int row = -1;
    const TreeZone zone = ZoneAt(event.GetPosition(), &row);
    if (event.LeftDown()) {
        OnDown(event, row, zone);
    } else if (event.LeftDClick()) {
        OnDoubleClick(row, zone);
    } else if (event.LeftUp()) {
        ScrubEnd(true);
        // Opened by the press, the field would take the release for a click into it.
        OpenEditor(std::exchange(mOpenRow, -1));
    } else if (event.RightDown()) {
        CloseEditor(true);
        SetFocus();
        if (row >= 0 && !mpCCtrl->IsRowSelected(row)) mpCCtrl->SelectRow(row, false, false);
        mpCCtrl->GetKeyActions().ShowRowMenu(this, row, event.GetPosition());
    } else if (event.Dragging() && mpCScrubbed) {
        Scrub(event);
    } else if (event.Moving()) {
        ScrubEnd(false); // the release went elsewhere
        mpCCtrl->SetHoverRow(row);
        ShowHint(row, zone);
    }
}

void ParamTree_cls::ShowHint(int row, TreeZone zone) {
    if (row == mHintRow && zone == mHintZone) return;
    mHintRow = row;
    mHintZone = zone;
    SetCursor(zone == TreeZone::VALUE ? wxCursor(wxCURSOR_SIZEWE) : wxNullCursor);
    wxString hint = row >= 0 ? HintOf(zone, mpCCtrl->GetRows()[size_t(row)].mDim < 0) : wxString();
    if (row >= 0 && zone == TreeZone::NAME) {
        const TimelineRow& one = mpCCtrl->GetRows()[size_t(row)];
        hint = one.mpCGroup->GetPCGroup()->mID;
        if (one.mDim >= 0) hint += " " + one.mpCGroup->GetPCParam(one.mDim)->mName;
    }
    if (hint.empty())
        UnsetToolTip();
    else
        SetToolTip(hint);
}

void ParamTree_cls::OnDown(const wxMouseEvent& event, int row, TreeZone zone) {
    CloseEditor(true);
    SetFocus();
    if (row < 0) {
        mpCCtrl->DeselectRows();
        PostMenuEvent(ID_DESELECT);
        return;
    }
    if (zone == TreeZone::NAME) return mpCCtrl->SelectRow(row, event.ShiftDown(), event.ControlDown());
    if (zone != TreeZone::VALUE) return Press(row, zone);
    const TimelineRow& one = mpCCtrl->GetRows()[size_t(row)];
    if (!mpCCtrl->IsRowSelected(row)) mpCCtrl->SelectRow(row, false, false);
    mpCScrubbed = one.mpCGroup->GetPCParam(one.mDim);
    mPressed = event.GetPosition();
    mScrubFrom = mScrubTo = ValueNow(*mpCScrubbed);
}

void ParamTree_cls::Press(int row, TreeZone zone) {
    const TimelineRow one = mpCCtrl->GetRows()[size_t(row)];
    ParamGroup_cls* group = one.mpCGroup->GetPCGroup();
    const Curves curves = mpCCtrl->CurvesOfRow(row);
    switch (zone) {
    case TreeZone::FOLD:
        mpCCtrl->ToggleFold(row);
        return;
    case TreeZone::CHECK:
        SetTimeDependent(curves, !IsAnimated(*one.mpCGroup->GetPCParam(one.mDim)));
        break;
    case TreeZone::LINK:
        group->mbLinked = !group->mbLinked;
        break;
    case TreeZone::SHY:
        group->mbShy = !group->mbShy;
        mpCCtrl->HideAndShow();
        return;
    case TreeZone::KEY:
        ToggleKeys(curves, Parameters_cls::kCurrent);
        break;
    case TreeZone::PREVIOUS:
    case TreeZone::NEXT:
        mpCCtrl->GetKeyActions().GoTo(curves, zone == TreeZone::NEXT ? 1 : -1);
        break;
    default:
        break;
    }
    mpCCtrl->RefreshAll();
}

void ParamTree_cls::OnDoubleClick(int row, TreeZone zone) {
    ScrubEnd(false);
    if (zone == TreeZone::VALUE)
        mOpenRow = row;
    else if (zone == TreeZone::NAME)
        mpCCtrl->ToggleFold(row);
    else if (row >= 0)
        Press(row, zone); // two quick clicks on a button are two clicks
}

void ParamTree_cls::Scrub(const wxMouseEvent& event) {
    const int pixels = event.GetX() - mPressed.x;
    if (!mpCGesture) {
        if (std::abs(pixels) < FromDIP(kDragThreshold)) return;
        mpCGesture = std::make_unique<LiveEdit_cls>(LinkedCurves(*mpCScrubbed));
    }
    const double factor = event.ShiftDown() ? 0.1 : event.ControlDown() ? 10.0 : 1.0;
    mScrubTo = DragNumber(mScrubFrom, pixels, factor, ScrubSpec(mScrubFrom));
    mpCGesture->Try([this] { SetValueNow(*mpCScrubbed, mScrubTo); });
    mpCCtrl->RefreshAll();
}

void ParamTree_cls::ScrubEnd(bool bCommit) {
    Parameters_cls* scrubbed = mpCScrubbed;
    mpCScrubbed = nullptr;
    if (!mpCGesture) return;
    const std::unique_ptr<LiveEdit_cls> gesture = std::move(mpCGesture);
    if (bCommit)
        gesture->Commit([this, scrubbed] { SetValueNow(*scrubbed, mScrubTo); });
    else
        gesture->Cancel();
    mpCCtrl->RefreshAll();
}

void ParamTree_cls::EndGesture() {
    CloseEditor(false);
    ScrubEnd(false);
    mHintRow = -1;
}

void ParamTree_cls::OnWheel(const wxMouseEvent& event) {
    if (event.GetWheelAxis() != wxMOUSE_WHEEL_VERTICAL) return;
    const int ticks = event.GetWheelRotation() > 0 ? -1 : 1;
    mpCCtrl->ScrollBy(2 * ticks * mpCCtrl->GetLook().mRow);
}

void ParamTree_cls::OnKey(wxKeyEvent& event) {
    if (mpCScrubbed) { // nothing else may change the curve under the hand
        if (event.GetKeyCode() == WXK_ESCAPE) ScrubEnd(false);
        return;
    }
    if (mpCEdited || !mpCCtrl->OnKey(event)) event.Skip();
}
