#include "WIDGET/TIMELINE/clsTimeHeader.h"

#include <wx/dcbuffer.h>

#include "PARAM/clsKeyFrame.h"
#include "PARAM/clsParameters.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"

namespace {
constexpr int kButton = 22;    // logical pixels, both ways
constexpr double kStep = 0.5;  // zoom of a click
constexpr int kRowPadding = 1; // above and below the rows
} // namespace

TimeHeader_cls::TimeHeader_cls(wxWindow* pParent, ParamGUICtrl_cls* pCtrl) : mpCCtrl(pCtrl) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE);
    MakePartA();
    MakePartB();
    Bind(wxEVT_PAINT, &TimeHeader_cls::OnPaint, this);
    for (const auto& type :
         {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP, wxEVT_MOTION, wxEVT_LEAVE_WINDOW})
        Bind(type, &TimeHeader_cls::OnMouse, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) {
        mPressed = -1;
        Refresh();
    });
}

void TimeHeader_cls::Add(int part, TimelineIcon icon, const wxString& tip, std::function<void()> act,
                         std::function<bool()> on, std::function<bool()> enabled) {
    mVButtons.push_back(
        {icon, -1, part, mNext[part], tip, std::move(act), std::move(on), std::move(enabled)});
    mNext[part] += kButton;
}

void TimeHeader_cls::MakePartA() {
    ParamGUICtrl_cls* ctrl = mpCCtrl;
    Add(
        0, TimelineIcon::GRAPH, _("Graph: the selected rows as curves"),
        [ctrl] { ctrl->ShowGraph(!ctrl->IsGraphShown()); }, [ctrl] { return ctrl->IsGraphShown(); });
    Space(0);
    Add(
        0, TimelineIcon::SHY, _("Shy mode: hide the groups that are marked shy"),
        [ctrl] { ctrl->SetShyMode(!ctrl->GetPCTime()->mbShyMode); },
        [ctrl] { return ctrl->GetPCTime()->mbShyMode; });
    Add(0, TimelineIcon::FOLD_ALL, _("Fold all groups"), [ctrl] { ctrl->FoldAll(true); });
    Add(0, TimelineIcon::UNFOLD_ALL, _("Open all groups"), [ctrl] { ctrl->FoldAll(false); });
    Space(0);
    const auto frame = [ctrl] { return double(ctrl->GetPCTime()->GetFrame()); };
    Add(0, TimelineIcon::ZOOM_IN, _("Show less of the film, around the current frame (')"),
        [ctrl, frame] { ctrl->Zoom(frame(), kStep); });
    Add(0, TimelineIcon::ZOOM_OUT, _("Show more of the film, around the current frame (-)"),
        [ctrl, frame] { ctrl->Zoom(frame(), 1.0 / kStep); });
    Add(0, TimelineIcon::ZOOM_FILM, _("Show the whole film"), [ctrl] { ctrl->ZoomTo(false); });
    Add(0, TimelineIcon::ZOOM_WORK, _("Show the work area"), [ctrl] { ctrl->ZoomTo(true); });
}

void TimeHeader_cls::MakePartB() {
    ParamGUICtrl_cls* ctrl = mpCCtrl;
    const auto selectedKeys = [ctrl] { return CountSelectedKeys(ctrl->GetKeyActions().GetCurves()) > 0; };
    Add(1, TimelineIcon::PREVIOUS_KEY, _("To the previous key of the selected rows, or of all"),
        [ctrl] { ctrl->GetKeyActions().GoToNeighbour(-1); });
    Add(
        1, TimelineIcon::TOGGLE_KEY, _("Set or remove keys of the selected rows at the current time"),
        [ctrl] { ctrl->GetKeyActions().ToggleNow(); },
        [ctrl] { return HasKeyAt(ctrl->GetSelectedCurves(), Parameters_cls::msCurrentDoubleIndex); },
        [ctrl] { return !ctrl->GetSelectedCurves().empty(); });
    Add(1, TimelineIcon::NEXT_KEY, _("To the next key of the selected rows, or of all"),
        [ctrl] { ctrl->GetKeyActions().GoToNeighbour(1); });
    Add(
        1, TimelineIcon::DELETE_KEY, _("Delete the selected keys (Del)"),
        [ctrl] { ctrl->GetKeyActions().Delete(); }, {}, selectedKeys);
    Space(1);
    for (unsigned kind = 0; kind < KeyFrame_cls::INTERP_COUNT; ++kind) {
        Add(
            1, TimelineIcon::COUNT,
            wxString::Format(_("Selected keys: %s"), KeyFrame_cls::msAstrInterp[kind]),
            [ctrl, kind] { ctrl->GetKeyActions().SetKind(kind); },
            [ctrl, kind] { return CommonKind(ctrl->GetKeyActions().GetCurves()) == int(kind); },
            selectedKeys);
        mVButtons.back().mKind = int(kind);
    }
}

wxRect TimeHeader_cls::RectOf(const Button& button) const {
    const int height = (GetClientSize().y - 2 * FromDIP(kRowPadding)) / 2;
    return wxRect(FromDIP(button.mX), FromDIP(kRowPadding) + button.mPart * height, FromDIP(kButton), height);
}

int TimeHeader_cls::ButtonAt(const wxPoint& point) const {
    for (size_t i = 0; i < mVButtons.size(); ++i)
        if (RectOf(mVButtons[i]).Contains(point)) return int(i);
    return -1;
}

std::vector<int> TimeHeader_cls::States() const {
    std::vector<int> states;
    for (const Button& button : mVButtons)
        states.push_back((button.mOn && button.mOn() ? 1 : 0) +
                         (!button.mEnabled || button.mEnabled() ? 2 : 0));
    return states;
}

void TimeHeader_cls::RefreshIfChanged() {
    if (States() != mShown) Refresh();
}

void TimeHeader_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const TimelineLook& look = mpCCtrl->GetLook();
    dc.SetBackground(wxBrush(look.mBack));
    dc.Clear();
    mShown = States();
    for (size_t i = 0; i < mVButtons.size(); ++i)
        DrawButton(dc, i);
    const wxSize size = GetClientSize();
    dc.SetPen(wxPen(look.mHold));
    dc.DrawLine(size.x - 1, 0, size.x - 1, size.y);
    dc.DrawLine(0, size.y - 1, size.x, size.y - 1);
}

void TimeHeader_cls::DrawButton(wxDC& dc, size_t i) const {
    const TimelineLook& look = mpCCtrl->GetLook();
    const Button& button = mVButtons[i];
    const bool bOn = mShown[i] & 1;
    const bool bEnabled = mShown[i] & 2;
    wxRect rect = RectOf(button).Deflate(FromDIP(1));
    if (bEnabled && (bOn || int(i) == mHover)) {
        dc.SetPen(wxPen(int(i) == mHover ? look.mFaint : look.mHold));
        dc.SetBrush(wxBrush(bOn || int(i) == mPressed ? look.mHold : look.mGroupBack));
        dc.DrawRoundedRectangle(rect, FromDIP(3));
    }
    const int x = rect.x + rect.width / 2;
    const int y = rect.y + rect.height / 2;
    if (button.mKind >= 0)
        look.DrawMark(dc, x, y, unsigned(button.mKind), bEnabled ? MarkLook::PLAIN : MarkLook::SUMMARY);
    else
        look.DrawIcon(dc, button.mIcon, x - look.mIcon / 2, y - look.mIcon / 2, !bEnabled);
}

void TimeHeader_cls::OnMouse(wxMouseEvent& event) {
    const int at = event.Leaving() ? -1 : ButtonAt(event.GetPosition());
    if (event.LeftDown() || event.LeftDClick()) {
        mPressed = at;
        if (!HasCapture()) CaptureMouse();
    } else if (event.LeftUp()) {
        if (HasCapture()) ReleaseMouse();
        const int pressed = mPressed;
        mPressed = -1;
        if (at >= 0 && at == pressed && (States()[size_t(at)] & 2)) mVButtons[size_t(at)].mAct();
        Refresh();
    }
    if (at == mHover) return;
    mHover = at;
    if (at >= 0)
        SetToolTip(mVButtons[size_t(at)].mTip);
    else
        UnsetToolTip();
    Refresh();
}
