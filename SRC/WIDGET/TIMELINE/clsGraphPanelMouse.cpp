// The graph under the user's hands.
#include <algorithm>
#include <cmath>

#include <wx/menu.h>

#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"
#include "WIDGET/TIMELINE/clsKeyDialog.h"

namespace {

constexpr int kReach = 7;         // pixels around a key that belong to it
constexpr int kHandleLength = 48; // pixels from a key to its tangent's handle
constexpr int kMostHandles = 64;  // selected keys; more would only hide the curves
constexpr int kDragThreshold = 3;
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

GraphPanel_cls::Hit_st GraphPanel_cls::FindHandle(const wxPoint& point) const {
    const std::vector<Parameters_cls*> curves = GetCurves();
    if (CountSelectedKeys(curves) > kMostHandles) return {};
    for (Parameters_cls* param : curves) {
        for (int i = 0; param->mbTimeDepend.mValue && i < param->GetKeyNumber(); ++i) {
            if (!param->GetKeys()[size_t(i)].mbSelected) continue;
            for (const int side : {-1, 1}) {
                wxPoint2DDouble at;
                if (!GetHandle(*param, i, side, &at)) continue;
                if (std::hypot(at.m_x - point.x - 0.5, at.m_y - point.y - 0.5) <= FromDIP(kReach))
                    return {param, i, side};
            }
        }
    }
    return {};
}

GraphPanel_cls::Hit_st GraphPanel_cls::FindKey(const wxPoint& point) const {
    const GraphScale scale = GetGraphScale();
    const double reach = FromDIP(kReach);
    Hit_st best;
    double bestDistance = reach;
    for (Parameters_cls* param : GetCurves()) {
        if (!param->mbTimeDepend.mValue) continue;
        const std::vector<KeyFrame_cls>& keys = param->GetKeys();
        const double from = scale.ToTime(point.x + 0.5 - reach);
        const double to = scale.ToTime(point.x + 0.5 + reach);
        auto key = std::lower_bound(keys.begin(), keys.end(), from,
                                    [](const KeyFrame_cls& k, double t) { return k.mDoubleIndex < t; });
        for (; key != keys.end() && key->mDoubleIndex <= to; ++key) {
            double distance = std::hypot(scale.ToX(key->mDoubleIndex) - point.x - 0.5,
                                         scale.ToY(key->mValue) - point.y - 0.5);
            if (distance > reach) continue;
            if (key->mbSelected) distance -= 1.0; // of two at one place the one to be dragged
            if (distance > bestDistance) continue;
            bestDistance = distance;
            best = {param, int(key - keys.begin()), 0};
        }
    }
    return best;
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
        if (mMode == Mode::NONE) StartMode(Mode::PAN, mPointer);
    } else if (event.LeftUp() || event.MiddleUp()) {
        const bool bPans = mMode == Mode::PAN;
        if (mMode != Mode::NONE && bPans == event.MiddleUp()) OnRelease();
    } else if (event.RightUp()) {
        if (mMode == Mode::NONE) OnMenu(mPointer);
    } else if (event.Leaving()) {
        if (mMode == Mode::NONE) OnHover(wxPoint(-1000, -1000));
    } else if (mMode != Mode::NONE) {
        OnDrag(event);
    } else {
        OnHover(mPointer);
    }
}

void GraphPanel_cls::StartMode(Mode mode, const wxPoint& point) {
    mMode = mode;
    mFrom = mPointer = point;
    mbMoved = false;
    mPanValues = mCValues;
    mPanFirst = mpCTime->GetAAMin();
    mPanLast = mpCTime->GetAAMax();
}

void GraphPanel_cls::EndMode() {
    mMode = Mode::NONE;
    mReadout.clear();
    Refresh();
}

void GraphPanel_cls::CancelMode() {
    if (mMode == Mode::NONE) return;
    if (mCGesture.IsActive()) mCGesture.Cancel();
    if (mMode == Mode::PAN) {
        mCValues = mPanValues;
        mpCTime->SetAAMinNative(mPanFirst);
        mpCTime->SetAAMaxNative(mPanLast);
    }
    EndMode();
}

void GraphPanel_cls::OnLeftDown(const wxMouseEvent& event) {
    SetFocus();
    if (mMode != Mode::NONE) return;
    const wxPoint point = event.GetPosition();
    if (GetFitButton().Contains(point)) {
        FitToView();
        return;
    }
    mbToggle = event.ControlDown();
    mbAdd = event.ShiftDown() || mbToggle;
    mHit = mbAdd ? Hit_st() : FindHandle(point);
    const bool bHandle = mHit.mpCParam != nullptr;
    if (!bHandle) mHit = FindKey(point);
    if (!mHit.mpCParam) {
        StartMode(Mode::BAND, point);
        return;
    }
    if (!bHandle) SelectByClick(mbAdd, mbToggle);
    mHitKey = mHit.mpCParam->GetKeys()[size_t(mHit.mKey)];
    StartMode(bHandle ? Mode::TANGENT : Mode::KEY_PRESSED, point);
    Refresh();
}

void GraphPanel_cls::SelectByClick(bool bAdd, bool bToggle) {
    const bool bSelected = mHit.mpCParam->GetKeys()[size_t(mHit.mKey)].mbSelected;
    if (!bAdd && !bSelected) DeselectAll();
    mHit.mpCParam->SelectKey(mHit.mKey, !(bToggle && bSelected));
}

void GraphPanel_cls::DeselectAll() {
    for (Parameters_cls* param : GetCurves())
        param->DeselectAll();
}

void GraphPanel_cls::OnDoubleClick(const wxPoint& point) {
    if (mMode != Mode::NONE || GetFitButton().Contains(point)) return;
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
    const wxPoint way = event.GetPosition() - mFrom;
    if (!mbMoved && std::max(std::abs(way.x), std::abs(way.y)) < FromDIP(kDragThreshold)) return;
    if (!mbMoved && mMode == Mode::KEY_PRESSED) {
        mMode = Mode::MOVE;
        mCGesture.Begin(GetCurves(), true);
    }
    if (!mbMoved && mMode == Mode::TANGENT) mCGesture.Begin({mHit.mpCParam}, false);
    mbMoved = true;
    if (mMode == Mode::MOVE) DragKeys(event);
    if (mMode == Mode::TANGENT) DragHandle(event.GetPosition());
    if (mMode == Mode::PAN) DragView(event.GetPosition());
    Refresh();
}

void GraphPanel_cls::DragKeys(const wxMouseEvent& event) {
    const GraphScale scale = GetGraphScale();
    const wxPoint way = event.GetPosition() - mFrom;
    const bool bOneAxis = event.ShiftDown();
    const bool bAcross = std::abs(way.x) >= std::abs(way.y);
    const double dT = bOneAxis && !bAcross ? 0.0 : way.x * scale.mTimePerPixel;
    const double dV = bOneAxis && bAcross ? 0.0 : -way.y * scale.mValuePerPixel;
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

void GraphPanel_cls::DragView(const wxPoint& point) {
    const GraphScale scale = GetGraphScale();
    const wxPoint way = point - mFrom;
    mCValues = mPanValues.Shifted(way.y * scale.mValuePerPixel);
    const double perFrame = std::max(GetScale().PixelsPerFrame(), 1e-6);
    const int end = mpCTime->GetMaxFrame();
    const int span = mPanLast - mPanFirst;
    const int first = std::clamp(mPanFirst - int(std::lround(way.x / perFrame)), 0, std::max(end - span, 0));
    if (first == mpCTime->GetAAMin()) return;
    mpCTime->SetAAMinNative(first);
    mpCTime->SetAAMaxNative(std::min(first + span, end));
}

void GraphPanel_cls::OnRelease() {
    const Mode mode = mMode;
    if (mode == Mode::PAN) {
        const int first = mpCTime->GetAAMin();
        const int last = mpCTime->GetAAMax();
        if (first != mPanFirst || last != mPanLast) {
            const UndoBlock_cls block;
            mpCTime->SetAAMinCommand(first, mPanFirst);
            mpCTime->SetAAMaxCommand(last, mPanLast);
        }
        EndMode();
        return;
    }
    if (mode == Mode::BAND) SelectBand();
    if (mode == Mode::KEY_PRESSED && !mbAdd && Parameters_cls::IsAlive(mHit.mpCParam)) {
        DeselectAll(); // a click on one of many selected ones
        mHit.mpCParam->SelectKey(mHit.mKey, true);
    }
    if (mCGesture.IsActive()) mCGesture.Commit();
    EndMode();
    Edited();
}

void GraphPanel_cls::SelectBand() {
    if (!mbAdd) DeselectAll();
    if (!mbMoved) return;
    const GraphScale scale = GetGraphScale();
    for (Parameters_cls* param : GetCurves()) {
        if (!param->mbTimeDepend.mValue) continue;
        for (int i = 0; i < param->GetKeyNumber(); ++i) {
            const KeyFrame_cls& key = param->GetKeys()[size_t(i)];
            const double x = scale.ToX(key.mDoubleIndex);
            const double y = scale.ToY(key.mValue);
            if (x < std::min(mFrom.x, mPointer.x) || x > std::max(mFrom.x, mPointer.x) + 1) continue;
            if (y < std::min(mFrom.y, mPointer.y) || y > std::max(mFrom.y, mPointer.y) + 1) continue;
            param->SelectKey(i, !(mbToggle && key.mbSelected));
        }
    }
}

void GraphPanel_cls::OnHover(const wxPoint& point) {
    Hit_st hover = FindHandle(point);
    if (!hover.mpCParam) hover = FindKey(point);
    const bool bButton = GetFitButton().Contains(point);
    SetCursor(hover.mpCParam || bButton ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
    if (bButton && GetToolTipText().empty()) SetToolTip(_("Show all values of these frames (F)"));
    if (!bButton && !GetToolTipText().empty()) UnsetToolTip();
    if (hover == mHover) return;
    mHover = hover;
    mReadout.clear();
    if (hover.mpCParam && hover.mSide == 0) {
        const KeyFrame_cls& key = hover.mpCParam->GetKeys()[size_t(hover.mKey)];
        mReadout = wxString::Format(_("%s: frame %s, %s"), hover.mpCParam->mName, FrameText(key.mDoubleIndex),
                                    ValueText(key.mValue));
    }
    Refresh();
}

void GraphPanel_cls::OnWheel(wxMouseEvent& event) {
    if (mMode != Mode::NONE || event.GetWheelRotation() == 0) return;
    // Shift may turn the wheel's axis; what was meant is plain.
    const int clicks = event.GetWheelRotation() > 0 ? 1 : -1;
    const double factor = clicks > 0 ? kZoomStep : 1.0 / kZoomStep;
    if (event.ControlDown())
        ZoomTime(event.GetX(), factor);
    else if (event.ShiftDown() || event.AltDown())
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
    const int chosen = GetPopupMenuSelectionFromUser(menu, point);
    bool bEdited = false;
    if (chosen >= kFirst && chosen < kSettings)
        bEdited = SetSelectedKinds(GetCurves(), unsigned(chosen - kFirst));
    if (chosen == kSettings) bEdited = KeyDialog_cls::Open(this, GetCurves());
    if (chosen == kSettings + 1) bEdited = DeleteSelectedKeys(GetCurves());
    if (chosen == kSettings + 2) FitToView();
    if (bEdited) Edited();
    Refresh();
}
