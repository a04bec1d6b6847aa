// The mouse and the keys on the strips.
#include "WIDGET/TIMELINE/clsParamStrips.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "PARAM/clsKeyFrame.h"
#include "PARAM/clsParameters.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/TimeGesture.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"

namespace {

constexpr int kReach = 6;         // pixels from a key's middle that still hit it
constexpr double kZoomStep = 0.8; // of a wheel's click
constexpr double kPanShare = 0.1; // of the frames shown, a wheel's click sideways

/// Is a key at that position selected?
bool IsSelected(const Curves& curves, double at) {
    return std::any_of(curves.begin(), curves.end(), [at](const Parameters_cls* curve) {
        const int i = at >= 0.0 ? KeyAt(*curve, at) : -1;
        return i >= 0 && curve->GetKeys()[size_t(i)].mbSelected;
    });
}

} // namespace

double ParamStrips_cls::KeyUnder(const wxPoint& point, Curves* pCurves) const {
    const int row = mpCCtrl->GetRowScale().ToRow(point.y);
    if (row < 0) return -1.0;
    *pCurves = mpCCtrl->CurvesOfRow(row);
    return ParamTL_cls::FindKey(mpCCtrl->OwnCurvesOfRow(row), GetScale(), point.x, FromDIP(kReach));
}

double ParamStrips_cls::Snapped(int x) const {
    return std::clamp(ToFilmGrid(ParamTL_cls::ToDoubleIndex(GetScale(), x)), 0.0, 1.0);
}

double ParamStrips_cls::SelectionTolerance() const { return Parameters_cls::msResolution * 0.49; }

// A pressed button keeps the pointer by itself. Capturing it would keep the keys away, and with them Escape.
void ParamStrips_cls::OnMouse(wxMouseEvent& event) {
    if (event.GetEventType() == wxEVT_MOUSEWHEEL) return OnWheel(event);
    if (event.Leaving()) {
        LeaveKey();
        return mpCCtrl->SetHoverRow(-1);
    }
    if (event.LeftDown()) {
        OnDown(event);
    } else if (event.LeftDClick()) {
        OnDoubleClick(event);
    } else if (event.RightDown()) {
        OnRightDown(event);
    } else if (event.MiddleDown()) {
        if (mGesture.IsActive()) return;
        mGesture.Grip({event.GetX(), event.GetY()});
        mPanTop = mpCCtrl->GetRowScale().mTop;
        mPanFrom = {mpCTime->GetAAMin(), mpCTime->GetAAMax()};
        TimeGesture_cls::Begin(mpCTime);
    } else if (event.LeftUp() || event.MiddleUp()) {
        if (event.MiddleUp() == (mGesture.Get() == State::GRIP || mGesture.Get() == State::PAN)) OnUp();
    } else if (event.Dragging() && mGesture.IsActive()) {
        OnDrag(event);
    } else if (event.Moving()) {
        if (mGesture.IsActive()) Finish(mGesture.Cancel(), false); // the release went elsewhere
        Hover(event.GetPosition());
    }
}

void ParamStrips_cls::Hover(const wxPoint& point) {
    mpCCtrl->SetHoverRow(mpCCtrl->GetRowScale().ToRow(point.y));
    mHintPoint = point;
    Curves curves;
    const double at = KeyUnder(point, &curves);
    if (at == mHintAt) return;
    mHintAt = at;
    SetCursor(at >= 0.0 ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
    Refresh();
}

// Asked at each paint: the key may have gone from under a pointer that rests.
wxString ParamStrips_cls::GetHint() const {
    Curves curves;
    if (mHintAt < 0.0 || mGesture.IsActive() || KeyUnder(mHintPoint, &curves) != mHintAt) return wxString();
    wxString hint =
        wxString::Format(_("Frame %g"), std::round(mHintAt * Parameters_cls::msFrameNumber * 100.0) / 100.0);
    const Curves own = mpCCtrl->OwnCurvesOfRow(mpCCtrl->GetRowScale().ToRow(mHintPoint.y));
    const int i = own.size() == 1 ? KeyAt(*own[0], mHintAt) : -1;
    if (i >= 0)
        hint += ": " + ParametersPanel_cls::GetValueText(own[0]->GetKeyFrameValue(i)) + ", " +
                KeyFrame_cls::msAstrInterp[std::min(own[0]->GetKeys()[size_t(i)].mInterpType, 4u)];
    return hint;
}

void ParamStrips_cls::OnDown(const wxMouseEvent& event) {
    if (mGesture.IsActive()) return;
    SetFocus();
    mbDouble = false;
    mVPressed.clear();
    mPressedKey = KeyUnder(event.GetPosition(), &mVPressed);
    KeyHit hit;
    if (mPressedKey >= 0.0)
        hit.mKey = 0;
    else if (event.AltDown())
        return Insert(event.GetPosition());
    const KeyGesture_cls::Pick pick =
        mGesture.Press({event.GetX(), event.GetY()}, hit, IsSelected(mVPressed, mPressedKey),
                       event.ShiftDown(), event.ControlDown(), event.AltDown());
    if (!hit.IsAny()) return mCBand.Begin(mpCCtrl->AllCurves());
    Pick(pick, mVPressed, mPressedKey);
}

void ParamStrips_cls::Pick(KeyGesture_cls::Pick pick, const Curves& curves, double at) {
    using Picks = KeyGesture_cls::Pick;
    if (pick == Picks::ALONE || pick == Picks::CLEAR) DeselectKeys(mpCCtrl->AllCurves());
    if (pick == Picks::ALONE || pick == Picks::ADD || pick == Picks::TOGGLE)
        SelectKeys(curves, at - SelectionTolerance(), at + SelectionTolerance(),
                   pick == Picks::TOGGLE ? SelectMode::TOGGLE : SelectMode::ADD);
    mpCCtrl->RefreshAll();
}

void ParamStrips_cls::OnDoubleClick(const wxMouseEvent& event) {
    Finish(mGesture.Cancel(), false);
    Curves curves;
    if (KeyUnder(event.GetPosition(), &curves) < 0.0) return Insert(event.GetPosition());
    // The second press may still become a drag.
    OnDown(event);
    mbDouble = true;
}

void ParamStrips_cls::Insert(const wxPoint& point) {
    const int row = mpCCtrl->GetRowScale().ToRow(point.y);
    if (row < 0) return;
    const double at = Snapped(point.x);
    const Curves curves = mpCCtrl->CurvesOfRow(row);
    InsertKeys(curves, at);
    DeselectKeys(mpCCtrl->AllCurves());
    SelectKeys(curves, at - SelectionTolerance(), at + SelectionTolerance(), SelectMode::ADD);
    mpCCtrl->RefreshAll();
}

void ParamStrips_cls::OnRightDown(const wxMouseEvent& event) {
    if (mGesture.IsActive()) return;
    SetFocus();
    Curves curves;
    const double at = KeyUnder(event.GetPosition(), &curves);
    if (at >= 0.0) {
        Pick(IsSelected(curves, at) ? KeyGesture_cls::Pick::ADD : KeyGesture_cls::Pick::ALONE, curves, at);
        curves.clear();
    }
    mpCCtrl->GetKeyActions().ShowMenu(this, event.GetPosition(), Snapped(event.GetX()), curves);
}

void ParamStrips_cls::OnDrag(const wxMouseEvent& event) {
    const bool bBegins = mGesture.Drag({event.GetX(), event.GetY()}, FromDIP(KeyGesture_cls::kThreshold));
    if (bBegins && mGesture.Get() == State::MOVE) {
        mDelta = 0.0;
        mCGesture.Begin(WithSelectedKeys(mpCCtrl->GetKeyActions().GetCurves()), true);
        if (mGesture.IsCopying()) mCGesture.MoveCopies();
    }
    if (mGesture.Get() == State::PAN) Pan(event.GetPosition());
    if (mGesture.Get() == State::MOVE) MoveKeys(event.GetX());
    if (mGesture.Get() == State::BAND) SelectBand();
}

void ParamStrips_cls::MoveKeys(int x) {
    const FrameScale scale = GetScale();
    const double moved =
        ParamTL_cls::ToDoubleIndex(scale, x) - ParamTL_cls::ToDoubleIndex(scale, mGesture.GetFrom().mX);
    mDelta = mCGesture.Move(ToFilmGrid(mPressedKey + moved) - mPressedKey, 0.0);
    mpCCtrl->RefreshAll();
}

void ParamStrips_cls::SelectBand() {
    const RowScale rows = mpCCtrl->GetRowScale();
    Curves curves;
    for (int row = rows.FirstSeen(); row <= rows.LastSeen(); ++row) {
        const int middle = rows.ToPixel(row) + rows.mHeight / 2;
        if (middle < mGesture.GetTop() || middle > mGesture.GetBottom()) continue;
        for (Parameters_cls* curve : mpCCtrl->OwnCurvesOfRow(row))
            curves.push_back(curve);
    }
    curves = WithLinked(curves);
    std::sort(curves.begin(), curves.end());
    const FrameScale scale = GetScale();
    const double from = ParamTL_cls::ToDoubleIndex(scale, mGesture.GetLeft());
    const double to = ParamTL_cls::ToDoubleIndex(scale, mGesture.GetRight());
    mCBand.Select(mGesture, [&](Parameters_cls& curve, int key) {
        const double at = curve.GetKeys()[size_t(key)].mDoubleIndex;
        return at >= from && at <= to && IsAnimated(curve) &&
               std::binary_search(curves.begin(), curves.end(), &curve);
    });
    mpCCtrl->RefreshAll();
}

void ParamStrips_cls::Pan(const wxPoint& point) {
    const double perFrame = GetScale().PixelsPerFrame();
    const int frames = perFrame > 0.0 ? int(std::lround((mGesture.GetFrom().mX - point.x) / perFrame)) : 0;
    const FrameArea area = ShiftArea(mPanFrom, frames, mpCTime->GetMaxFrame());
    if (area.mFirst != mpCTime->GetAAMin()) mpCTime->SetAAMinCommand(area.mFirst);
    if (area.mLast != mpCTime->GetAAMax()) mpCTime->SetAAMaxCommand(area.mLast);
    mpCCtrl->ScrollTo(mPanTop + mGesture.GetFrom().mY - point.y);
}

void ParamStrips_cls::OnUp() {
    KeyGesture_cls::Pick pick = KeyGesture_cls::Pick::KEEP;
    const State state = mGesture.Release(&pick);
    if (pick != KeyGesture_cls::Pick::KEEP) Pick(pick, mVPressed, mPressedKey);
    Finish(state, true);
    if (state == State::KEY && mbDouble) mpCCtrl->GetKeyActions().OpenDialog();
}

void ParamStrips_cls::Finish(State state, bool bCommit) {
    if (state == State::GRIP || state == State::PAN) TimeGesture_cls::End(mpCTime);
    if (state == State::BAND && !bCommit) mCBand.Restore();
    if (bCommit)
        mCGesture.Commit();
    else
        mCGesture.Cancel();
    if (state != State::NONE) mpCCtrl->RefreshAll();
}

void ParamStrips_cls::EndGesture() {
    if (mGesture.IsActive()) Finish(mGesture.Cancel(), false);
    LeaveKey();
}

// No key is known to be under the pointer any more.
void ParamStrips_cls::LeaveKey() {
    if (mHintAt < 0.0) return;
    mHintAt = -1.0;
    SetCursor(wxNullCursor);
    Refresh();
}

void ParamStrips_cls::OnWheel(const wxMouseEvent& event) {
    if (mGesture.IsActive()) return;
    const int ticks = event.GetWheelRotation() > 0 ? -1 : 1;
    const bool bSideways = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL;
    const bool bTime = event.ControlDown() || bSideways || event.ShiftDown();
    if (bTime) TimeGesture_cls::Burst(mpCTime);
    if (event.ControlDown()) {
        mpCCtrl->Zoom(GetScale().ToFrameExact(event.GetX()), ticks < 0 ? kZoomStep : 1.0 / kZoomStep);
    } else if (bSideways || event.ShiftDown()) {
        const FrameArea area = {mpCTime->GetAAMin(), mpCTime->GetAAMax()};
        const int frames = std::max(int(std::lround((area.mLast - area.mFirst) * kPanShare)), 1);
        // A wheel that tilts to the right turns forwards.
        mpCCtrl->SetActiveArea(
            ShiftArea(area, (bSideways ? -ticks : ticks) * frames, mpCTime->GetMaxFrame()));
    } else {
        mpCCtrl->ScrollBy(2 * ticks * mpCCtrl->GetLook().mRow);
    }
}

void ParamStrips_cls::OnKey(wxKeyEvent& event) {
    if (mGesture.IsActive()) { // nothing else may change the curves under the hand
        if (event.GetKeyCode() == WXK_ESCAPE) Finish(mGesture.Cancel(), false);
        return;
    }
    if (!mpCCtrl->OnKey(event)) event.Skip();
}
