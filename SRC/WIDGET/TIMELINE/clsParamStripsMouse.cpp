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
constexpr int kDragThreshold = 3; // pixels before a press becomes a drag
constexpr double kZoomStep = 0.8; // of a wheel's click
constexpr double kPanShare = 0.1; // of the frames shown, a wheel's click sideways

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
    if (event.Leaving()) return mpCCtrl->SetHoverRow(-1);
    if (event.LeftDown()) {
        OnDown(event);
    } else if (event.LeftDClick()) {
        OnDoubleClick(event);
    } else if (event.RightDown()) {
        OnRightDown(event);
    } else if (event.MiddleDown()) {
        if (mAct != Act::NONE) return;
        mAct = Act::PAN;
        mPressed = event.GetPosition();
        mPanTop = mpCCtrl->GetRowScale().mTop;
        mPanFrom = {mpCTime->GetAAMin(), mpCTime->GetAAMax()};
        TimeGesture_cls::Begin(mpCTime);
    } else if (event.LeftUp() || event.MiddleUp()) {
        if (event.MiddleUp() == (mAct == Act::PAN)) OnUp();
    } else if (event.Dragging() && mAct != Act::NONE) {
        OnDrag(event);
    } else if (event.Moving()) {
        EndGesture(); // the release went elsewhere
        Hover(event.GetPosition());
    }
}

void ParamStrips_cls::Hover(const wxPoint& point) {
    mpCCtrl->SetHoverRow(mpCCtrl->GetRowScale().ToRow(point.y));
    Curves curves;
    const double at = KeyUnder(point, &curves);
    if (at == mHintAt) return;
    mHintAt = at;
    SetCursor(at >= 0.0 ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
    if (at < 0.0) return UnsetToolTip();
    wxString hint =
        wxString::Format(_("Frame %g"), std::round(at * Parameters_cls::msFrameNumber * 100.0) / 100.0);
    const Curves own = mpCCtrl->OwnCurvesOfRow(mpCCtrl->GetRowScale().ToRow(point.y));
    if (own.size() == 1) {
        const int i = KeyAt(*own[0], at);
        if (i >= 0)
            hint += ": " + ParametersPanel_cls::GetValueText(own[0]->GetKeyFrameValue(i)) + ", " +
                    KeyFrame_cls::msAstrInterp[std::min(own[0]->GetKeys()[size_t(i)].mInterpType, 4u)];
    }
    SetToolTip(hint);
}

void ParamStrips_cls::OnDown(const wxMouseEvent& event) {
    if (mAct != Act::NONE) return;
    SetFocus();
    if (event.AltDown()) return Insert(event.GetPosition());
    mPressed = mNow = event.GetPosition();
    mbDouble = false;
    mbAdd = event.ShiftDown();
    mbToggle = event.ControlDown();
    Curves curves;
    const double at = KeyUnder(mPressed, &curves);
    if (at >= 0.0) return PressKey(event, curves, at);
    mAct = Act::PRESSED_EMPTY;
    KeepSelection();
}

void ParamStrips_cls::PressKey(const wxMouseEvent& event, const Curves& curves, double at) {
    mAct = Act::PRESSED_KEY;
    mPressedKey = at;
    mbDeselectOthers = false;
    const double reach = SelectionTolerance();
    if (event.ControlDown()) {
        SelectKeys(curves, at - reach, at + reach, SelectMode::TOGGLE);
    } else if (event.ShiftDown()) {
        SelectKeys(curves, at - reach, at + reach, SelectMode::ADD);
    } else {
        const bool bSelected = std::any_of(curves.begin(), curves.end(), [at](const Parameters_cls* curve) {
            const int i = KeyAt(*curve, at);
            return i >= 0 && curve->GetKeys()[size_t(i)].mbSelected;
        });
        if (!bSelected) DeselectKeys(mpCCtrl->AllCurves());
        SelectKeys(curves, at - reach, at + reach, SelectMode::ADD);
        mbDeselectOthers = bSelected;
    }
    mpCCtrl->RefreshAll();
}

void ParamStrips_cls::OnDoubleClick(const wxMouseEvent& event) {
    Finish(false);
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
    if (mAct != Act::NONE) return;
    SetFocus();
    Curves curves;
    const double at = KeyUnder(event.GetPosition(), &curves);
    if (at >= 0.0) {
        const bool bSelected = std::any_of(curves.begin(), curves.end(), [at](const Parameters_cls* curve) {
            const int i = KeyAt(*curve, at);
            return i >= 0 && curve->GetKeys()[size_t(i)].mbSelected;
        });
        if (!bSelected) DeselectKeys(mpCCtrl->AllCurves());
        SelectKeys(curves, at - SelectionTolerance(), at + SelectionTolerance(), SelectMode::ADD);
        mpCCtrl->RefreshAll();
        curves.clear();
    }
    mpCCtrl->ShowKeyMenu(this, event.GetPosition(), Snapped(event.GetX()), curves);
}

void ParamStrips_cls::OnDrag(const wxMouseEvent& event) {
    mNow = event.GetPosition();
    if (mAct == Act::PAN) return Pan(mNow);
    const int away = std::max(std::abs(mNow.x - mPressed.x), std::abs(mNow.y - mPressed.y));
    const bool bPressed = mAct == Act::PRESSED_KEY || mAct == Act::PRESSED_EMPTY;
    if (bPressed && away < FromDIP(kDragThreshold)) return;
    if (mAct == Act::PRESSED_KEY) {
        mAct = Act::MOVING;
        mDelta = 0.0;
        mCGesture.Begin(WithSelectedKeys(mpCCtrl->CurvesInEdit()), true);
    } else if (mAct == Act::PRESSED_EMPTY) {
        mAct = Act::BAND;
    }
    if (mAct == Act::MOVING) MoveKeys(mNow.x);
    if (mAct == Act::BAND) SelectBand();
}

void ParamStrips_cls::MoveKeys(int x) {
    const FrameScale scale = GetScale();
    const double moved = ParamTL_cls::ToDoubleIndex(scale, x) - ParamTL_cls::ToDoubleIndex(scale, mPressed.x);
    mDelta = mCGesture.Move(ToFilmGrid(mPressedKey + moved) - mPressedKey, 0.0);
    mpCCtrl->RefreshAll();
}

wxRect ParamStrips_cls::Band() const {
    return wxRect(wxPoint(std::min(mPressed.x, mNow.x), std::min(mPressed.y, mNow.y)),
                  wxPoint(std::max(mPressed.x, mNow.x), std::max(mPressed.y, mNow.y)));
}

void ParamStrips_cls::KeepSelection() {
    mVKept.clear();
    for (Parameters_cls* curve : mpCCtrl->AllCurves()) {
        std::vector<bool> bits;
        for (const KeyFrame_cls& key : curve->GetKeys())
            bits.push_back(key.mbSelected);
        mVKept.emplace_back(curve, std::move(bits));
    }
}

void ParamStrips_cls::RestoreSelection() {
    for (const auto& [curve, bits] : mVKept)
        for (int i = 0; Parameters_cls::IsAlive(curve) && i < int(bits.size()); ++i)
            curve->SelectKey(i, bits[size_t(i)]);
}

void ParamStrips_cls::SelectBand() {
    RestoreSelection();
    if (!mbAdd && !mbToggle) DeselectKeys(mpCCtrl->AllCurves());
    const wxRect band = Band();
    const RowScale rows = mpCCtrl->GetRowScale();
    Curves curves;
    for (int row = rows.FirstSeen(); row <= rows.LastSeen(); ++row) {
        const int middle = rows.ToPixel(row) + rows.mHeight / 2;
        if (middle < band.GetTop() || middle > band.GetBottom()) continue;
        for (Parameters_cls* curve : mpCCtrl->OwnCurvesOfRow(row))
            curves.push_back(curve);
    }
    const FrameScale scale = GetScale();
    SelectKeys(WithLinked(curves), ParamTL_cls::ToDoubleIndex(scale, band.GetLeft()),
               ParamTL_cls::ToDoubleIndex(scale, band.GetRight()),
               mbToggle ? SelectMode::TOGGLE : SelectMode::ADD);
    mpCCtrl->RefreshAll();
}

void ParamStrips_cls::Pan(const wxPoint& point) {
    const double perFrame = GetScale().PixelsPerFrame();
    const int frames = perFrame > 0.0 ? int(std::lround((mPressed.x - point.x) / perFrame)) : 0;
    const FrameArea area = ShiftArea(mPanFrom, frames, mpCTime->GetMaxFrame());
    if (area.mFirst != mpCTime->GetAAMin()) mpCTime->SetAAMinCommand(area.mFirst);
    if (area.mLast != mpCTime->GetAAMax()) mpCTime->SetAAMaxCommand(area.mLast);
    mpCCtrl->ScrollTo(mPanTop + mPressed.y - point.y);
}

void ParamStrips_cls::OnUp() {
    if (mAct == Act::PRESSED_EMPTY) {
        if (!mbAdd && !mbToggle) DeselectKeys(mpCCtrl->AllCurves());
    } else if (mAct == Act::PRESSED_KEY && mbDeselectOthers) {
        Curves curves;
        KeyUnder(mPressed, &curves);
        DeselectKeys(mpCCtrl->AllCurves());
        SelectKeys(curves, mPressedKey - SelectionTolerance(), mPressedKey + SelectionTolerance(),
                   SelectMode::ADD);
    }
    const bool bOpen = mAct == Act::PRESSED_KEY && mbDouble;
    Finish(true);
    if (bOpen) mpCCtrl->OpenKeyDialog();
}

void ParamStrips_cls::Finish(bool bCommit) {
    const Act act = std::exchange(mAct, Act::NONE);
    if (act == Act::PAN) TimeGesture_cls::End(mpCTime);
    if (act == Act::BAND && !bCommit) RestoreSelection();
    mVKept.clear();
    if (bCommit)
        mCGesture.Commit();
    else
        mCGesture.Cancel();
    if (act != Act::NONE) mpCCtrl->RefreshAll();
}

void ParamStrips_cls::EndGesture() {
    if (mAct != Act::NONE) Finish(false);
    mHintAt = -1.0;
}

void ParamStrips_cls::OnWheel(const wxMouseEvent& event) {
    if (mAct != Act::NONE) return;
    const int ticks = event.GetWheelRotation() > 0 ? -1 : 1;
    const bool bSideways = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL;
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
    if (mAct != Act::NONE) { // nothing else may change the curves under the hand
        if (event.GetKeyCode() == WXK_ESCAPE) Finish(false);
        return;
    }
    if (!mpCCtrl->OnKey(event)) event.Skip();
}
