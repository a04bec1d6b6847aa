// The hands on the graph of a colour curve.
#include "COLORCURVE/EDITOR/clsColorCurveGraph.h"

#include <algorithm>
#include <cmath>

#include <wx/menu.h>

#include "COLORCURVE/EDITOR/clsColorCurveEdit.h"
#include "COLORCURVE/clsColorCurve.h"
#include "PARAM/clsKeyFrame.h"
#include "PARAM/clsParamGroup.h"
#include "WIDGET/PopUp.h"

namespace {

constexpr int kReach = 7; // pixels around a key in which a press takes it
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
        if (mGesture.IsActive()) return;
        mHover = Hit_st();
        mStrReadout.clear();
        Refresh();
    });
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { CancelGesture(); });
    Bind(wxEVT_CHAR_HOOK, &ColorCurveGraph_cls::OnKey, this);
}

ColorCurveGraph_cls::Hit_st ColorCurveGraph_cls::FindHit(const wxPoint& point, bool bKeyFirst) const {
    Hit_st hit;
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    if (!pCurve) return hit;
    KeyPicker_cls picker(point.x, point.y, FromDIP(kReach));
    wxRect strip = GetStopStrip();
    strip.Inflate(FromDIP(kReach), 0);
    if (strip.Contains(point)) {
        const std::vector<double> stops = mpCEdit->GetStops();
        for (size_t i = 0; i < stops.size(); ++i)
            picker.OfferKey(0, static_cast<int>(i), ToX(stops[i]), point.y, false);
        hit.mbStop = picker.GetKey().IsAny();
        if (hit.mbStop) hit.mStop = stops[static_cast<size_t>(picker.GetKey().mKey)];
        return hit;
    }
    for (int c = kChannelNumber; c-- > 0;) { // red is drawn last
        const auto& keys = Channel(*pCurve, c).GetKeys();
        for (int k = 0; IsChannelShown(c) && k < static_cast<int>(keys.size()); ++k) {
            const KeyFrame_cls& key = keys[static_cast<size_t>(k)];
            picker.OfferKey(c, k, ToX(key.mDoubleIndex), ToY(key.mValue), key.mbSelected);
            for (const int side : {-1, 1}) {
                wxPoint2DDouble end;
                if (key.mbSelected && GetHandle(c, k, side, &end))
                    picker.OfferHandle(c, k, side, end.m_x, end.m_y);
            }
        }
    }
    const KeyHit found = picker.GetHit(bKeyFirst);
    hit.mChannel = found.mCurve;
    hit.mKey = found.mKey;
    hit.mSide = found.mSide;
    return hit;
}

bool ColorCurveGraph_cls::IsHitSelected() const {
    if (mHit.mbStop) return mpCEdit->IsStopSelected(mHit.mStop);
    return mHit.mKey >= 0 && Channel(*mpCEdit->GetPCCurve(), mHit.mChannel)
                                 .GetKeys()[static_cast<size_t>(mHit.mKey)]
                                 .mbSelected;
}

int ColorCurveGraph_cls::FindCurve(const wxPoint& point) const {
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    int found = -1;
    double best = FromDIP(kReach);
    for (int c = 0; pCurve && c < kChannelNumber; ++c) {
        const double distance =
            std::fabs(ToY(Channel(*pCurve, c).Evaluate(ToPosition(point.x), 0.0)) - point.y);
        if (!IsChannelShown(c) || distance >= best) continue;
        best = distance;
        found = c;
    }
    return found;
}

void ColorCurveGraph_cls::OnLeftDown(wxMouseEvent& event) {
    SetFocus();
    if (!mpCEdit->GetPCCurve() || mGesture.IsActive()) return;
    mPointer = event.GetPosition();
    mHit = FindHit(mPointer, event.ShiftDown() || event.ControlDown());
    KeyHit hit;
    if (mHit.IsAny()) hit = {std::max(mHit.mChannel, 0), std::max(mHit.mKey, 0), mHit.mSide};
    if (!hit.IsAny() && !GetPlot().Contains(mPointer)) { // no band begins beside the curves
        if (!event.ShiftDown() && !event.ControlDown()) mpCEdit->SelectAll(false);
        return Edited();
    }
    Pick(mGesture.Press({mPointer.x, mPointer.y}, hit, IsHitSelected(), event.ShiftDown(),
                        event.ControlDown()));
    if (!hit.IsAny()) {
        std::vector<Parameters_cls*> channels;
        for (Parameters_cls& channel : mpCEdit->GetPCCurve()->mpCParamGroup->mVParams)
            channels.push_back(&channel);
        mCBand.Begin(channels);
    }
    if (!HasCapture()) CaptureMouse();
    Edited();
}

void ColorCurveGraph_cls::Pick(KeyGesture_cls::Pick pick) {
    using Picks = KeyGesture_cls::Pick;
    if (pick == Picks::CLEAR) mpCEdit->SelectAll(false);
    if (pick == Picks::KEEP || pick == Picks::CLEAR) return;
    const bool bAdd = pick != Picks::ALONE;
    if (mHit.mbStop)
        mpCEdit->SelectStop(mHit.mStop, bAdd, pick == Picks::TOGGLE);
    else
        mpCEdit->SelectKey(mHit.mChannel, mHit.mKey, bAdd, pick == Picks::TOGGLE);
}

void ColorCurveGraph_cls::OnMotion(wxMouseEvent& event) {
    mPointer = event.GetPosition();
    if (!mGesture.IsActive()) {
        OnHover(mPointer);
        return;
    }
    if (mGesture.Drag({mPointer.x, mPointer.y}, FromDIP(KeyGesture_cls::kThreshold))) BeginDrag();
    DragTo(mPointer, event.ShiftDown());
}

void ColorCurveGraph_cls::BeginDrag() {
    if (mGesture.Get() == State::MOVE || mGesture.Get() == State::TURN) mpCEdit->Begin();
}

void ColorCurveGraph_cls::DragTo(const wxPoint& point, bool bOneAxis) {
    if (mGesture.Get() == State::MOVE) {
        const KeyPoint way = mGesture.GetWay(bOneAxis && !mHit.mbStop);
        const double dy = mHit.mbStop ? 0.0 : way.mY;
        mpCEdit->MoveSelected(double(way.mX) / GetPlot().width, ToValue(dy) - ToValue(0.0),
                              mbLinked || mHit.mbStop);
    } else if (mGesture.Get() == State::TURN && mpCEdit->GetPCCurve()) {
        const KeyFrame_cls& key =
            Channel(*mpCEdit->GetPCCurve(), mHit.mChannel).GetKeys()[static_cast<size_t>(mHit.mKey)];
        // A handle never stands upright: that would be no function of the scalar.
        const double dx = std::max(mHit.mSide * (ToPosition(point.x) - key.mDoubleIndex), 0.002);
        mpCEdit->SetTangent(mHit.mChannel, mHit.mKey, mHit.mSide * (ToValue(point.y) - key.mValue) / dx);
    } else if (mGesture.Get() == State::BAND) {
        SelectBand();
    }
    mStrReadout = Readout(point);
    Edited();
}

void ColorCurveGraph_cls::SelectBand() {
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    if (!pCurve) return;
    const wxRect band(wxPoint(mGesture.GetLeft(), mGesture.GetTop()),
                      wxPoint(mGesture.GetRight(), mGesture.GetBottom()));
    const Parameters_cls* pFirst = pCurve->mpCParamGroup->mVParams.data();
    mCBand.Select(mGesture, [&](Parameters_cls& channel, int k) {
        const KeyFrame_cls& key = channel.GetKeys()[static_cast<size_t>(k)];
        return IsChannelShown(int(&channel - pFirst)) &&
               band.Contains(static_cast<int>(ToX(key.mDoubleIndex)), static_cast<int>(ToY(key.mValue)));
    });
}

void ColorCurveGraph_cls::OnLeftUp(wxMouseEvent& event) {
    mPointer = event.GetPosition();
    if (HasCapture()) ReleaseMouse();
    KeyGesture_cls::Pick pick = KeyGesture_cls::Pick::KEEP;
    const State state = mGesture.Release(&pick);
    if (state == State::NONE) return;
    if (state == State::MOVE || state == State::TURN) mpCEdit->Commit();
    Pick(pick);
    mStrReadout.clear();
    Edited();
}

void ColorCurveGraph_cls::CancelGesture() {
    const State state = mGesture.Cancel();
    if (state == State::MOVE || state == State::TURN) mpCEdit->Cancel();
    if (state == State::BAND) mCBand.Restore();
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
    if (!mpCEdit->GetPCCurve() || mGesture.IsActive()) return;
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
    const int answer = AskPopUpMenu(this, menu, point);
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
    if (mGesture.IsActive()) {
        if (key == WXK_ESCAPE) CancelGesture();
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
    if (!pCurve || (!mGesture.IsActive() && !all.Contains(point))) return "";
    double place = std::clamp(ToPosition(point.x), 0.0, 1.0);
    if (mGesture.Get() == State::MOVE) mpCEdit->GetSelected(&place, nullptr, nullptr);
    const double low = static_cast<double>(pCurve->mScalingMin.mValue);
    const double high = static_cast<double>(pCurve->mScalingMax.mValue);
    wxString text = wxString::Format("%.4g", low + place * (high - low));
    const wchar_t* pName = L"RGBA";
    for (int c = 0; c < kChannelNumber; ++c)
        text += wxString::Format("   %c %.2f", pName[c], Channel(*pCurve, c).Evaluate(place, 0.0));
    return text;
}
