// The graph under the user's hands.
#include <algorithm>
#include <cmath>

#include <wx/menu.h>

#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/PopUp.h"
#include "WIDGET/TIMELINE/TimeGesture.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"
#include "WIDGET/TIMELINE/clsKeyDialog.h"

namespace {

constexpr int kReach = 7;         // pixels around a key that belong to it
constexpr int kHandleLength = 48; // pixels from a key to its tangent's handle
constexpr int kMostHandles = 64;  // selected keys; more would only hide the curves
constexpr double kZoomStep = 0.8;
constexpr double kScrollStep = 0.1; // of the shown values

bool HasHandle(const KeyFrame_cls& key) {
    return key.mInterpType == INTERP_HERMITE ||
           (key.mInterpType == INTERP_HERMITE_SEMIAUTO && key.mValueD1 != 0.0);
}

} // namespace

bool GraphPanel_cls::GetHandle(const Parameters_cls& param, int key, int side,
                               wxPoint2DDouble* pPoint) const {
    const KeyFrame_cls& k = param.GetKeys()[size_t(key)];
    if (!HasHandle(k)) return false;
    const GraphScale scale = GetGraphScale();
    const double slope = -param.GetHermiteVelocity(key) * scale.mTimePerPixel / scale.mValuePerPixel;
    const double length = FromDIP(kHandleLength);
    const double angle = std::isnan(slope) ? 0.0 : std::atan(slope);
    pPoint->m_x = scale.ToX(k.mDoubleIndex) + side * length * std::cos(angle);
    pPoint->m_y = scale.ToY(k.mValue) + side * length * std::sin(angle);
    return true;
}

KeyPicker_cls GraphPanel_cls::PickAt(const wxPoint& point, bool bHandles) const {
    const GraphScale scale = GetGraphScale();
    const double reach = FromDIP(kReach);
    KeyPicker_cls picker(point.x + 0.5, point.y + 0.5, reach);
    const std::vector<Parameters_cls*> curves = GetCurves();
    bHandles = bHandles && CountSelectedKeys(curves) <= kMostHandles;
    for (size_t c = 0; c < curves.size(); ++c) {
        if (!curves[c]->mbTimeDepend.mValue) continue;
        const std::vector<KeyFrame_cls>& keys = curves[c]->GetKeys();
        const double from = scale.ToTime(point.x + 0.5 - reach);
        const double to = scale.ToTime(point.x + 0.5 + reach);
        auto key = std::lower_bound(keys.begin(), keys.end(), from,
                                    [](const KeyFrame_cls& k, double t) { return k.mDoubleIndex < t; });
        for (; key != keys.end() && key->mDoubleIndex <= to; ++key)
            picker.OfferKey(int(c), int(key - keys.begin()), scale.ToX(key->mDoubleIndex),
                            scale.ToY(key->mValue), key->mbSelected);
        for (int k = 0; bHandles && k < curves[c]->GetKeyNumber(); ++k) {
            if (!keys[size_t(k)].mbSelected) continue;
            for (const int side : {-1, 1}) {
                wxPoint2DDouble end;
                if (GetHandle(*curves[c], k, side, &end))
                    picker.OfferHandle(int(c), k, side, end.m_x, end.m_y);
            }
        }
    }
    return picker;
}

GraphPanel_cls::Hit_st GraphPanel_cls::ToHit(const KeyHit& hit) const {
    if (!hit.IsAny()) return {};
    return {GetCurves()[size_t(hit.mCurve)], hit.mKey, hit.mSide};
}

GraphPanel_cls::Hit_st GraphPanel_cls::FindKey(const wxPoint& point) const {
    return ToHit(PickAt(point, false).GetKey());
}

Parameters_cls* GraphPanel_cls::FindCurve(const wxPoint& point) const {
    const GraphScale scale = GetGraphScale();
    const double t = scale.ToTime(point.x + 0.5);
    Parameters_cls* best = nullptr;
    double bestDistance = 0.0;
    for (Parameters_cls* param : GetCurves()) {
        if (!param->mbTimeDepend.mValue) continue;
        const double distance =
            std::fabs(scale.ToY(param->Evaluate(t, Parameters_cls::msResolution)) - point.y - 0.5);
        if (best && distance >= bestDistance) continue;
        best = param;
        bestDistance = distance;
    }
    return best;
}

void GraphPanel_cls::OnMouse(wxMouseEvent& event) {
    mPointer = event.GetPosition();
    if (event.LeftDown()) {
        OnLeftDown(event);
    } else if (event.LeftDClick()) {
        OnDoubleClick(mPointer);
    } else if (event.MiddleDown()) {
        if (mGesture.IsActive()) return;
        mGesture.Grip({mPointer.x, mPointer.y});
        BeginDrag();
    } else if (event.LeftUp() || event.MiddleUp()) {
        const bool bPans = mGesture.Get() == State::GRIP || mGesture.Get() == State::PAN;
        if (mGesture.IsActive() && bPans == event.MiddleUp()) OnRelease();
    } else if (event.RightUp()) {
        if (!mGesture.IsActive()) OnMenu(mPointer);
    } else if (event.Leaving()) {
        if (!mGesture.IsActive()) OnHover(wxPoint(-1000, -1000));
    } else if (mGesture.IsActive()) {
        OnDrag(event);
    } else {
        OnHover(mPointer);
    }
}

/// A press: from here on the view pans and the hand moves.
void GraphPanel_cls::BeginDrag() {
    mPanValues = mCValues;
    mPanFirst = mpCTime->GetAAMin();
    mPanLast = mpCTime->GetAAMax();
}

void GraphPanel_cls::EndGesture() {
    mReadout.clear();
    Refresh();
}

void GraphPanel_cls::CancelGesture() {
    if (!mGesture.IsActive()) return;
    const State state = mGesture.Cancel();
    if (mCGesture.IsActive()) mCGesture.Cancel();
    if (state == State::BAND) mCBand.Restore();
    if (state == State::PAN) {
        mCValues = mPanValues;
        mpCTime->SetAAMinNative(mPanFirst);
        mpCTime->SetAAMaxNative(mPanLast);
    }
    EndGesture();
}

void GraphPanel_cls::OnLeftDown(const wxMouseEvent& event) {
    SetFocus();
    if (mGesture.IsActive()) return;
    const wxPoint point = event.GetPosition();
    if (GetFitButton().Contains(point)) {
        FitToView();
        return;
    }
    const KeyHit hit = PickAt(point, true).GetHit(event.ShiftDown() || event.ControlDown());
    mHit = ToHit(hit);
    if (hit.IsAny()) mHitKey = mHit.mpCParam->GetKeys()[size_t(mHit.mKey)];
    const KeyGesture_cls::Pick pick = mGesture.Press({point.x, point.y}, hit, mHitKey.mbSelected,
                                                     event.ShiftDown(), event.ControlDown(), event.AltDown());
    BeginDrag();
    if (!hit.IsAny()) mCBand.Begin(GetCurves());
    Pick(pick);
    if (hit.IsAny()) mHitKey = mHit.mpCParam->GetKeys()[size_t(mHit.mKey)];
    Refresh();
}

void GraphPanel_cls::Pick(KeyGesture_cls::Pick pick) {
    using Picks = KeyGesture_cls::Pick;
    if (pick == Picks::ALONE || pick == Picks::CLEAR) DeselectAll();
    if (pick == Picks::KEEP || pick == Picks::CLEAR || !Parameters_cls::IsAlive(mHit.mpCParam)) return;
    mHit.mpCParam->SelectKey(mHit.mKey, !(pick == Picks::TOGGLE && mHitKey.mbSelected));
}

void GraphPanel_cls::DeselectAll() {
    for (Parameters_cls* param : GetCurves())
        param->DeselectAll();
}

void GraphPanel_cls::OnDoubleClick(const wxPoint& point) {
    if (mGesture.IsActive() || GetFitButton().Contains(point)) return;
    if (FindKey(point).mpCParam) {
        // The button must be up before a dialog takes the pointer.
        CallAfter([this] {
            if (KeyDialog_cls::Open(this, GetCurves())) Edited();
        });
        return;
    }
    Parameters_cls* param = FindCurve(point);
    if (!param) return;
    InsertKeyAt(param, GetGraphScale().ToTime(point.x + 0.5), GetCurves());
    Edited();
}

void GraphPanel_cls::OnDrag(const wxMouseEvent& event) {
    if (mGesture.Drag({event.GetX(), event.GetY()}, FromDIP(KeyGesture_cls::kThreshold))) {
        if (mGesture.Get() == State::MOVE) mCGesture.Begin(GetCurves(), true);
        if (mGesture.Get() == State::MOVE && mGesture.IsCopying()) mCGesture.MoveCopies();
        if (mGesture.Get() == State::TURN) mCGesture.Begin({mHit.mpCParam}, false);
    }
    if (mGesture.Get() == State::MOVE) DragKeys(event.ShiftDown());
    if (mGesture.Get() == State::TURN) DragHandle(event.GetPosition());
    if (mGesture.Get() == State::PAN) DragView();
    if (mGesture.Get() == State::BAND) SelectBand();
    Refresh();
}

void GraphPanel_cls::DragKeys(bool bOneAxis) {
    const GraphScale scale = GetGraphScale();
    const KeyPoint way = mGesture.GetWay(bOneAxis);
    const double dT = way.mX * scale.mTimePerPixel;
    const double dV = -way.mY * scale.mValuePerPixel;
    const double went = mCGesture.Move(dT, dV);
    const double at = went == 0.0 ? mHitKey.mDoubleIndex : ToFilmGrid(mHitKey.mDoubleIndex + went);
    mReadout = wxString::Format(_("frame %s, %s"), FrameText(at), ValueText(mHitKey.mValue + dV));
}

void GraphPanel_cls::DragHandle(const wxPoint& point) {
    const GraphScale scale = GetGraphScale();
    // The handle stays on its side of the key.
    const double least = mHit.mSide * 1.0;
    double across = point.x + 0.5 - scale.ToX(mHitKey.mDoubleIndex);
    across = mHit.mSide > 0 ? std::max(across, least) : std::min(across, least);
    const double up = mHitKey.mValue - scale.ToValue(point.y + 0.5);
    const double slope = -up / (across * scale.mTimePerPixel);
    const bool bEase = mHitKey.mInterpType == INTERP_HERMITE_SEMIAUTO;
    const double value = bEase ? slope / mHitKey.mValueD1 : slope;
    if (!std::isfinite(value)) return;
    mCGesture.Show([&](const CurveGesture_cls::Entry_st&, std::vector<KeyFrame_cls>* pKeys) {
        if (size_t(mHit.mKey) >= pKeys->size()) return;
        KeyFrame_cls& key = (*pKeys)[size_t(mHit.mKey)];
        (bEase ? key.mValueD2 : key.mValueD1) = value;
    });
    mReadout = wxString::Format(bEase ? _("ease factor %s") : _("slope %s"), ValueText(value));
}

void GraphPanel_cls::DragView() {
    const GraphScale scale = GetGraphScale();
    const KeyPoint way = mGesture.GetWay(false);
    mCValues = mPanValues.Shifted(way.mY * scale.mValuePerPixel);
    const double perFrame = std::max(GetScale().PixelsPerFrame(), 1e-6);
    const int end = mpCTime->GetMaxFrame();
    const int span = mPanLast - mPanFirst;
    const int first = std::clamp(mPanFirst - int(std::lround(way.mX / perFrame)), 0, std::max(end - span, 0));
    if (first == mpCTime->GetAAMin()) return;
    mpCTime->SetAAMinNative(first);
    mpCTime->SetAAMaxNative(std::min(first + span, end));
}

void GraphPanel_cls::OnRelease() {
    KeyGesture_cls::Pick pick = KeyGesture_cls::Pick::KEEP;
    const State state = mGesture.Release(&pick);
    if (state == State::GRIP || state == State::PAN) {
        const int first = mpCTime->GetAAMin();
        const int last = mpCTime->GetAAMax();
        if (first != mPanFirst || last != mPanLast) {
            const UndoBlock_cls block;
            mpCTime->SetAAMinCommand(first, mPanFirst);
            mpCTime->SetAAMaxCommand(last, mPanLast);
        }
        EndGesture();
        return;
    }
    Pick(pick);
    if (mCGesture.IsActive()) mCGesture.Commit();
    EndGesture();
    Edited();
}

void GraphPanel_cls::SelectBand() {
    const GraphScale scale = GetGraphScale();
    mCBand.Select(mGesture, [&](Parameters_cls& param, int i) {
        if (!param.mbTimeDepend.mValue) return false;
        const KeyFrame_cls& key = param.GetKeys()[size_t(i)];
        const double x = scale.ToX(key.mDoubleIndex);
        const double y = scale.ToY(key.mValue);
        return x >= mGesture.GetLeft() && x <= mGesture.GetRight() + 1 && y >= mGesture.GetTop() &&
               y <= mGesture.GetBottom() + 1;
    });
}

void GraphPanel_cls::OnHover(const wxPoint& point) {
    const Hit_st hover = ToHit(PickAt(point, true).GetHit(false));
    const bool bButton = GetFitButton().Contains(point);
    SetCursor(hover.mpCParam || bButton ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
    if (bButton && GetToolTipText().empty()) SetToolTip(_("Show all values of these frames (F)"));
    if (!bButton && !GetToolTipText().empty()) UnsetToolTip();
    if (hover == mHover) return;
    mHover = hover;
    mReadout.clear();
    if (hover.mpCParam && hover.mSide == 0) {
        const KeyFrame_cls& key = hover.mpCParam->GetKeys()[size_t(hover.mKey)];
        mReadout = wxString::Format(_("%s: frame %s, %s"), NameOf(*hover.mpCParam),
                                    FrameText(key.mDoubleIndex), ValueText(key.mValue));
    }
    Refresh();
}

void GraphPanel_cls::OnWheel(wxMouseEvent& event) {
    if (mGesture.IsActive() || event.GetWheelRotation() == 0) return;
    // Shift may turn the wheel's axis; what was meant is plain.
    const int clicks = event.GetWheelRotation() > 0 ? 1 : -1;
    const double factor = clicks > 0 ? kZoomStep : 1.0 / kZoomStep;
    if (event.ControlDown()) {
        TimeGesture_cls::Burst(mpCTime);
        ZoomTime(event.GetX(), factor);
    } else if (event.ShiftDown() || event.AltDown())
        mCValues = mCValues.Zoomed(GetGraphScale().ToValue(event.GetY() + 0.5), factor);
    else
        mCValues = mCValues.Shifted(clicks * kScrollStep * mCValues.Span());
    Refresh();
}

void GraphPanel_cls::OnMenu(const wxPoint& point) {
    SetFocus();
    const Hit_st hit = FindKey(point);
    if (hit.mpCParam && !hit.mpCParam->GetKeys()[size_t(hit.mKey)].mbSelected) {
        DeselectAll();
        hit.mpCParam->SelectKey(hit.mKey, true);
        Refresh();
    }
    const std::vector<Parameters_cls*> curves = GetCurves();
    const bool bAny = CountSelectedKeys(curves) > 0;
    constexpr int kFirst = 1;
    constexpr int kSettings = kFirst + KeyFrame_cls::INTERP_COUNT;
    wxMenu menu;
    for (int kind = 0; kind < KeyFrame_cls::INTERP_COUNT; ++kind) {
        bool bAll = bAny;
        for (const Parameters_cls* param : curves)
            for (const KeyFrame_cls& key : param->GetKeys())
                bAll &= !key.mbSelected || key.mInterpType == unsigned(kind);
        menu.AppendCheckItem(kFirst + kind, KeyFrame_cls::msAstrInterp[kind])->Check(bAll);
    }
    menu.AppendSeparator();
    menu.Append(kSettings, _("Key settings..."));
    menu.Append(kSettings + 1, _("Delete"));
    menu.AppendSeparator();
    menu.Append(kSettings + 2, _("Fit"));
    for (int id = kFirst; id <= kSettings + 1; ++id)
        menu.Enable(id, bAny);
    const int chosen = AskPopUpMenu(this, menu, point);
    bool bEdited = false;
    if (chosen >= kFirst && chosen < kSettings)
        bEdited = SetSelectedKinds(GetCurves(), unsigned(chosen - kFirst));
    if (chosen == kSettings) bEdited = KeyDialog_cls::Open(this, GetCurves());
    if (chosen == kSettings + 1) bEdited = DeleteSelectedKeys(GetCurves());
    if (chosen == kSettings + 2) FitToView();
    if (bEdited) Edited();
    Refresh();
}
