// The hands on the graph of a colour curve.
#include "COLORCURVE/EDITOR/clsColorCurveGraph.h"

#include <algorithm>
#include <cmath>

#include <wx/menu.h>

#include "COLORCURVE/EDITOR/clsColorCurveEdit.h"
#include "COLORCURVE/clsColorCurve.h"
#include "PARAM/clsKeyFrame.h"
#include "PARAM/clsParamGroup.h"

namespace {

constexpr int kReach = 7; // pixels around a key in which a press takes it
constexpr int kSlack = 3; // pixels before a press becomes a drag
constexpr double kNudge = 0.01;
constexpr double kNudgeFine = ColorCurveEdit_cls::kGrid;

const Parameters_cls& Channel(const ColorCurve_cls& curve, int c) {
    return curve.mpCParamGroup->mVParams[static_cast<size_t>(c)];
}

} // namespace

void ColorCurveGraph_cls::BindMouse() {
    Bind(wxEVT_LEFT_DOWN, &ColorCurveGraph_cls::OnLeftDown, this);
    Bind(wxEVT_LEFT_DCLICK, &ColorCurveGraph_cls::OnDoubleClick, this);
    Bind(wxEVT_LEFT_UP, &ColorCurveGraph_cls::OnLeftUp, this);
    Bind(wxEVT_MOTION, &ColorCurveGraph_cls::OnMotion, this);
    Bind(wxEVT_RIGHT_UP, &ColorCurveGraph_cls::OnRightUp, this);
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) {
        if (mMode != Mode::NONE) return;
        mHover = Hit_st();
        mStrReadout.clear();
        Refresh();
    });
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { CancelMode(); });
    Bind(wxEVT_CHAR_HOOK, &ColorCurveGraph_cls::OnKey, this);
}

ColorCurveGraph_cls::Hit_st ColorCurveGraph_cls::FindHandle(const wxPoint& point) const {
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    Hit_st hit;
    for (int c = 0; pCurve && c < kChannelNumber; ++c) {
        const auto& keys = Channel(*pCurve, c).GetKeys();
        for (int k = 0; mbShown[c] && k < static_cast<int>(keys.size()); ++k) {
            if (!keys[static_cast<size_t>(k)].mbSelected) continue;
            for (const int side : {-1, 1}) {
                wxPoint2DDouble end;
                if (!GetHandle(c, k, side, &end)) continue;
                if (std::hypot(end.m_x - point.x, end.m_y - point.y) > FromDIP(kReach)) continue;
                hit.mChannel = c;
                hit.mKey = k;
                hit.mSide = side;
                return hit;
            }
        }
    }
    return hit;
}

ColorCurveGraph_cls::Hit_st ColorCurveGraph_cls::FindHit(const wxPoint& point) const {
    Hit_st hit;
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    if (!pCurve) return hit;
    double best = FromDIP(kReach);
    wxRect strip = GetStopStrip();
    strip.Inflate(FromDIP(kReach), 0);
    if (strip.Contains(point)) {
        for (const double stop : mpCEdit->GetStops()) {
            const double distance = std::fabs(ToX(stop) - point.x);
            if (distance >= best) continue;
            best = distance;
            hit.mbStop = true;
            hit.mStop = stop;
        }
        return hit;
    }
    // The one on top first: channels are drawn from alpha to red, selected keys last.
    bool bBestSelected = false;
    for (int c = 0; c < kChannelNumber; ++c) {
        const auto& keys = Channel(*pCurve, c).GetKeys();
        for (size_t k = 0; mbShown[c] && k < keys.size(); ++k) {
            const double distance =
                std::hypot(ToX(keys[k].mDoubleIndex) - point.x, ToY(keys[k].mValue) - point.y);
            const bool bBetter =
                distance < best - 0.5 || (distance <= best && keys[k].mbSelected && !bBestSelected);
            if (!bBetter) continue;
            best = distance;
            bBestSelected = keys[k].mbSelected;
            hit.mChannel = c;
            hit.mKey = static_cast<int>(k);
        }
    }
    return hit.IsAny() ? hit : FindHandle(point);
}

int ColorCurveGraph_cls::FindCurve(const wxPoint& point) const {
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    int found = -1;
    double best = FromDIP(kReach);
    for (int c = 0; pCurve && c < kChannelNumber; ++c) {
        const double distance =
            std::fabs(ToY(Channel(*pCurve, c).Evaluate(ToPosition(point.x), 0.0)) - point.y);
        if (!mbShown[c] || distance >= best) continue;
        best = distance;
        found = c;
    }
    return found;
}

void ColorCurveGraph_cls::OnLeftDown(wxMouseEvent& event) {
    SetFocus();
    if (!mpCEdit->GetPCCurve() || mMode != Mode::NONE) return;
    mFrom = mPointer = event.GetPosition();
    mbToggle = event.ControlDown();
    mbAdd = mbToggle || event.ShiftDown();
    mHit = FindHit(mFrom);
    if (!mHit.IsAny()) {
        if (!mbAdd) mpCEdit->SelectAll(false);
        mMode = GetPlot().Contains(mFrom) ? Mode::BAND : Mode::NONE;
    } else if (mHit.mSide != 0) {
        mMode = Mode::TANGENT;
        mpCEdit->Begin();
    } else {
        // A press on what is selected keeps it: a drag moves all of it.
        const ColorCurve_cls& curve = *mpCEdit->GetPCCurve();
        const bool bSelected =
            mHit.mbStop ? mpCEdit->IsStopSelected(mHit.mStop)
                        : Channel(curve, mHit.mChannel).GetKeys()[static_cast<size_t>(mHit.mKey)].mbSelected;
        if (!bSelected || mbToggle) {
            if (mHit.mbStop)
                mpCEdit->SelectStop(mHit.mStop, mbAdd, mbToggle);
            else
                mpCEdit->SelectKey(mHit.mChannel, mHit.mKey, mbAdd, mbToggle);
        }
        mMode = Mode::PRESSED;
    }
    if (mMode != Mode::NONE && !HasCapture()) CaptureMouse();
    Edited();
}

void ColorCurveGraph_cls::OnMotion(wxMouseEvent& event) {
    mPointer = event.GetPosition();
    if (mMode == Mode::NONE) {
        OnHover(mPointer);
        return;
    }
    if (mMode == Mode::PRESSED && mpCEdit->GetSelectedCount() > 0 &&
        std::max(std::abs(mPointer.x - mFrom.x), std::abs(mPointer.y - mFrom.y)) > FromDIP(kSlack)) {
        mMode = Mode::MOVE;
        mpCEdit->Begin();
    }
    DragTo(mPointer, event.ShiftDown());
}

void ColorCurveGraph_cls::DragTo(const wxPoint& point, bool bOneAxis) {
    if (mMode == Mode::MOVE) {
        double dx = point.x - mFrom.x;
        double dy = mHit.mbStop ? 0.0 : point.y - mFrom.y;
        if (bOneAxis && std::fabs(dx) > std::fabs(dy)) dy = 0.0;
        if (bOneAxis && dy != 0.0) dx = 0.0;
        mpCEdit->MoveSelected(dx / GetPlot().width, ToValue(dy) - ToValue(0.0), mbLinked || mHit.mbStop);
    } else if (mMode == Mode::TANGENT && mpCEdit->GetPCCurve()) {
        const KeyFrame_cls& key =
            Channel(*mpCEdit->GetPCCurve(), mHit.mChannel).GetKeys()[static_cast<size_t>(mHit.mKey)];
        // A handle never stands upright: that would be no function of the scalar.
        const double dx = std::max(mHit.mSide * (ToPosition(point.x) - key.mDoubleIndex), 0.002);
        mpCEdit->SetTangent(mHit.mChannel, mHit.mKey, mHit.mSide * (ToValue(point.y) - key.mValue) / dx);
    }
    mStrReadout = Readout(point);
    Edited();
}

void ColorCurveGraph_cls::SelectBand(bool bAdd) {
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    if (!pCurve) return;
    if (!bAdd) mpCEdit->SelectAll(false);
    const wxRect band(wxPoint(std::min(mFrom.x, mPointer.x), std::min(mFrom.y, mPointer.y)),
                      wxPoint(std::max(mFrom.x, mPointer.x), std::max(mFrom.y, mPointer.y)));
    for (int c = 0; c < kChannelNumber; ++c) {
        const int count = Channel(*pCurve, c).GetKeyNumber();
        for (int k = 0; mbShown[c] && k < count; ++k) {
            const KeyFrame_cls& key = Channel(*pCurve, c).GetKeys()[static_cast<size_t>(k)];
            if (band.Contains(static_cast<int>(ToX(key.mDoubleIndex)), static_cast<int>(ToY(key.mValue))))
                mpCEdit->SelectKey(c, k, true, false);
        }
    }
}

void ColorCurveGraph_cls::OnLeftUp(wxMouseEvent& event) {
    mPointer = event.GetPosition();
    EndMode();
}

void ColorCurveGraph_cls::EndMode() {
    const Mode mode = mMode;
    mMode = Mode::NONE;
    if (HasCapture()) ReleaseMouse();
    if (mode == Mode::NONE) return;
    if (mode == Mode::MOVE || mode == Mode::TANGENT) {
        mpCEdit->Commit();
    } else if (mode == Mode::BAND && mPointer != mFrom) {
        SelectBand(mbAdd);
    } else if (mode == Mode::PRESSED && !mbAdd) {
        // A click without a drag leaves what was clicked alone selected.
        if (mHit.mbStop)
            mpCEdit->SelectStop(mHit.mStop, false, false);
        else
            mpCEdit->SelectKey(mHit.mChannel, mHit.mKey, false, false);
    }
    mStrReadout.clear();
    Edited();
}

void ColorCurveGraph_cls::CancelMode() {
    if (mMode == Mode::MOVE || mMode == Mode::TANGENT) mpCEdit->Cancel();
    mMode = Mode::NONE;
    mStrReadout.clear();
    if (HasCapture()) ReleaseMouse();
    Edited();
}

void ColorCurveGraph_cls::OnDoubleClick(wxMouseEvent& event) {
    if (!mpCEdit->GetPCCurve()) return;
    const wxPoint point = event.GetPosition();
    const Hit_st hit = FindHit(point);
    if (hit.mbStop) {
        AskStopColor(hit.mStop);
        return;
    }
    if (hit.IsAny()) return;
    const int channel = FindCurve(point);
    if (GetPlot().Contains(point) && channel >= 0)
        mpCEdit->InsertKey(mbLinked ? -1 : channel, ToPosition(point.x));
    else if (GetPlot().Contains(point) || GetBar().Contains(point) || GetStopStrip().Contains(point))
        mpCEdit->InsertKey(-1, ToPosition(point.x));
    OnHover(point);
    Edited();
}

void ColorCurveGraph_cls::OnRightUp(wxMouseEvent& event) {
    if (!mpCEdit->GetPCCurve() || mMode != Mode::NONE) return;
    const wxPoint point = event.GetPosition();
    const Hit_st hit = FindHit(point);
    if (hit.mbStop && !mpCEdit->IsStopSelected(hit.mStop)) mpCEdit->SelectStop(hit.mStop, false, false);
    if (hit.mKey >= 0 &&
        !Channel(*mpCEdit->GetPCCurve(), hit.mChannel).GetKeys()[static_cast<size_t>(hit.mKey)].mbSelected)
        mpCEdit->SelectKey(hit.mChannel, hit.mKey, false, false);
    Edited();
    const bool bAny = mpCEdit->GetSelectedCount() > 0;
    double place = 0.0;
    unsigned present = 0;
    mpCEdit->GetSelected(&place, nullptr, &present);
    enum { ID_KIND = 1, ID_COLOR = ID_KIND + KeyFrame_cls::INTERP_COUNT, ID_INSERT, ID_DELETE, ID_ALL };
    wxMenu menu;
    menu.Append(ID_INSERT, _("Insert Key"));
    menu.Append(ID_COLOR, _("Color of the Stop..."))->Enable(bAny);
    menu.Append(ID_DELETE, _("Delete\tDel"))->Enable(bAny);
    menu.Append(ID_ALL, _("Select All\tCtrl-A"));
    menu.AppendSeparator();
    for (unsigned kind = 0; kind < KeyFrame_cls::INTERP_COUNT; ++kind) {
        wxMenuItem* item =
            menu.AppendRadioItem(ID_KIND + static_cast<int>(kind), KeyFrame_cls::msAstrInterp[kind]);
        item->Enable(bAny);
        if (bAny && kind == present) item->Check();
    }
    const int answer = GetPopupMenuSelectionFromUser(menu, point);
    if (answer >= ID_KIND && answer < ID_KIND + static_cast<int>(KeyFrame_cls::INTERP_COUNT))
        mpCEdit->SetKind(static_cast<unsigned>(answer - ID_KIND));
    else if (answer == ID_INSERT)
        mpCEdit->InsertKey(-1, ToPosition(point.x));
    else if (answer == ID_COLOR)
        AskStopColor(place);
    else if (answer == ID_DELETE)
        mpCEdit->DeleteSelected();
    else if (answer == ID_ALL)
        mpCEdit->SelectAll(true);
    Edited();
}

void ColorCurveGraph_cls::OnKey(wxKeyEvent& event) {
    if (!HandleKey(event.GetKeyCode(), event.GetModifiers())) event.Skip();
}

bool ColorCurveGraph_cls::HandleKey(int key, int modifiers) {
    if (mMode != Mode::NONE) {
        if (key == WXK_ESCAPE) CancelMode();
        return true; // no other edit while one is under way
    }
    const double step = modifiers == wxMOD_SHIFT ? kNudgeFine : kNudge;
    const bool bPlain = modifiers == wxMOD_NONE || modifiers == wxMOD_SHIFT;
    if (modifiers == wxMOD_NONE && (key == WXK_DELETE || key == WXK_NUMPAD_DELETE))
        mpCEdit->DeleteSelected();
    else if (modifiers == wxMOD_CONTROL && key == 'A')
        mpCEdit->SelectAll(true);
    else if (bPlain && (key == WXK_LEFT || key == WXK_RIGHT))
        Nudge(key == WXK_LEFT ? -step : step, 0.0);
    else if (bPlain && (key == WXK_UP || key == WXK_DOWN))
        Nudge(0.0, key == WXK_DOWN ? -step : step);
    else
        return false;
    Edited();
    return true;
}

void ColorCurveGraph_cls::Nudge(double dPosition, double dValue) {
    mpCEdit->Begin();
    mpCEdit->MoveSelected(dPosition, dValue, mbLinked);
    mpCEdit->Commit();
}

void ColorCurveGraph_cls::OnHover(const wxPoint& point) {
    const Hit_st hover = FindHit(point);
    SetCursor(hover.IsAny() ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
    const wxString readout = Readout(point);
    if (hover == mHover && readout == mStrReadout) return;
    mHover = hover;
    mStrReadout = readout;
    Refresh();
}

wxString ColorCurveGraph_cls::Readout(const wxPoint& point) const {
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    const wxRect all = GetBar().Union(GetPlot());
    if (!pCurve || (mMode == Mode::NONE && !all.Contains(point))) return "";
    double place = std::clamp(ToPosition(point.x), 0.0, 1.0);
    if (mMode == Mode::MOVE) mpCEdit->GetSelected(&place, nullptr, nullptr);
    const double low = static_cast<double>(pCurve->mScalingMin.mValue);
    const double high = static_cast<double>(pCurve->mScalingMax.mValue);
    wxString text = wxString::Format("%.4g", low + place * (high - low));
    const wchar_t* pName = L"RGBA";
    for (int c = 0; c < kChannelNumber; ++c)
        text += wxString::Format("   %c %.2f", pName[c], Channel(*pCurve, c).Evaluate(place, 0.0));
    return text;
}
