// The mouse on the slider.
#include "WIDGET/TIMELINE/clsFrameSlider.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/TimeGesture.h"

namespace {

constexpr int kDragThreshold = 3; // pixels before a press becomes a drag
constexpr int kHandle = 6;        // pixels around an end in which it is taken hold of
constexpr double kZoomStep = 0.8; // of a wheel's click

} // namespace

void FrameSlider_cls::GoTo(int pixel, bool bWholeFrames) {
    const FrameScale scale = GetScale();
    const int interp = mpCTime->GetAnimInterp();
    FilmPlace place = {mpCTime->RoundFrame(scale.ToFrame(pixel)), 0};
    if (interp > 1 && !bWholeFrames) {
        const double frame = std::clamp(scale.ToFrameExact(pixel), double(scale.mFirst), double(scale.mLast));
        place = NearestPlace(frame, mpCTime->GetAnimStep(), interp, mpCTime->GetMaxFrame());
    }
    if (place == FilmPlace{mpCTime->GetFrame(), mpCTime->GetInterpStep()}) return;
    if (mpCTime->GetInterpStep() != place.mStep) mpCTime->SetInterpStepCommand(place.mStep);
    if (mpCTime->GetFrame() != place.mFrame) mpCTime->SetFrameCommand(place.mFrame);
    Refresh();
}

int FrameSlider_cls::EndAt(const FrameScale& scale, const FrameArea& area, int pixel) const {
    const double low = scale.ToPixelExact(area.mFirst);
    const double high = scale.ToPixelExact(area.mLast);
    const int reach = FromDIP(kHandle);
    if (pixel < low - reach || pixel > high + reach) return kNone;
    // Of a short area each end has its half, and the outside.
    if (pixel <= low + std::min(double(reach), (high - low) / 3)) return -1;
    if (pixel >= high - std::min(double(reach), (high - low) / 3)) return 1;
    return 0;
}

FrameSlider_cls::Act FrameSlider_cls::ActAt(const wxPoint& point, int* pEnd) const {
    *pEnd = kNone;
    const int y = point.y;
    if (y < (GetBandY(0) + GetBandY(1)) / 2 - FromDIP(2)) {
        *pEnd = EndAt(GetFilmScale(), {mpCTime->GetAAMin(), mpCTime->GetAAMax()}, point.x);
        return *pEnd == kNone ? Act::NONE : Act::ACTIVE;
    }
    if (y < (GetBandY(1) + GetBandY(2)) / 2 + FromDIP(1)) return Act::FRAME;
    *pEnd = EndAt(GetScale(), {mpCTime->GetWAMin(), mpCTime->GetWAMax()}, point.x);
    // An area as long as the film can't be moved: there the band is part of the ruler.
    const bool bWhole = mpCTime->GetWAMin() <= 0 && mpCTime->GetWAMax() >= mpCTime->GetMaxFrame();
    if (*pEnd == kNone || (*pEnd == 0 && bWhole)) return Act::FRAME;
    return Act::WORK;
}

void FrameSlider_cls::OnMouse(wxMouseEvent& event) {
    if (event.GetEventType() == wxEVT_MOUSEWHEEL)
        OnWheel(event);
    else if (event.LeftDown())
        OnDown(event);
    else if (event.LeftUp())
        Finish();
    else if (event.LeftDClick() && event.GetY() < (GetBandY(0) + GetBandY(1)) / 2 - FromDIP(2))
        SetArea(Act::ACTIVE, {0, mpCTime->GetMaxFrame()});
    else if (event.LeftDClick())
        OnDown(event);
    else if (event.Dragging() && HasCapture())
        OnDrag(event);
    else if (event.Moving())
        Hover(event.GetPosition());
}

void FrameSlider_cls::OnDown(const wxMouseEvent& event) {
    const wxPoint point = event.GetPosition();
    Finish();
    mAct = ActAt(point, &mEnd);
    if (mAct == Act::NONE) return;
    mPressed = point.x;
    mbMoved = false;
    mbWholeFrames = event.ShiftDown();
    const bool bWork = mAct == Act::WORK;
    mDragScale = bWork ? GetScale() : GetFilmScale();
    mDragFrom = bWork ? FrameArea{mpCTime->GetWAMin(), mpCTime->GetWAMax()}
                      : FrameArea{mpCTime->GetAAMin(), mpCTime->GetAAMax()};
    TimeGesture_cls::Begin(mpCTime);
    CaptureMouse();
    if (mAct == Act::FRAME) GoTo(point.x, mbWholeFrames);
}

void FrameSlider_cls::OnDrag(const wxMouseEvent& event) {
    const wxPoint point = event.GetPosition();
    if (mAct == Act::FRAME) return GoTo(point.x, event.ShiftDown());
    if (!mbMoved && std::abs(point.x - mPressed) < FromDIP(kDragThreshold)) return;
    mbMoved = true;
    const double frames = (point.x - mPressed) / std::max(mDragScale.PixelsPerFrame(), 1e-9);
    const int most = mpCTime->GetMaxFrame() + 1;
    const int moved = int(std::lround(std::clamp(frames, double(-most), double(most))));
    FrameArea area = DragArea(mDragFrom, mEnd, moved, mpCTime->GetMaxFrame());
    // The strips show at least one frame's length.
    if (mAct == Act::ACTIVE && area.mFirst == area.mLast && mpCTime->GetMaxFrame() > 0) return;
    SetArea(mAct, area);
}

void FrameSlider_cls::SetArea(Act act, const FrameArea& area) {
    if (act == Act::WORK) {
        if (area.mFirst != mpCTime->GetWAMin()) mpCTime->SetWAMinCommand(area.mFirst);
        if (area.mLast != mpCTime->GetWAMax()) mpCTime->SetWAMaxCommand(area.mLast);
    } else {
        if (area.mFirst != mpCTime->GetAAMin()) mpCTime->SetAAMinCommand(area.mFirst);
        if (area.mLast != mpCTime->GetAAMax()) mpCTime->SetAAMaxCommand(area.mLast);
    }
    Refresh();
}

void FrameSlider_cls::Finish() {
    if (HasCapture()) ReleaseMouse();
    const Act act = mAct;
    mAct = Act::NONE;
    if (act == Act::NONE) return;
    // A click into the work area, without a drag, goes to the frame as on the ruler.
    if (act == Act::WORK && !mbMoved && mEnd == 0) GoTo(mPressed, mbWholeFrames);
    TimeGesture_cls::End(mpCTime);
}

void FrameSlider_cls::OnWheel(const wxMouseEvent& event) {
    if (mAct != Act::NONE) return;
    const bool bForward = event.GetWheelRotation() > 0;
    TimeGesture_cls::Burst(mpCTime);
    if (event.ControlDown()) {
        const FrameArea now = {mpCTime->GetAAMin(), mpCTime->GetAAMax()};
        SetArea(Act::ACTIVE, ZoomArea(now, GetScale().ToFrameExact(event.GetX()),
                                      bForward ? kZoomStep : 1.0 / kZoomStep, mpCTime->GetMaxFrame()));
        return;
    }
    mpCTime->MoveFrameCommand(bForward ? -1 : 1);
    Refresh();
}

wxString FrameSlider_cls::GetFramesTip() {
    return _("Frames of the film. Drag: go to a frame (Shift: whole ones). Wheel: step, with Ctrl zoom");
}

void FrameSlider_cls::Hover(const wxPoint& point) {
    int end = kNone;
    const Act act = ActAt(point, &end);
    const bool bEnd = (act == Act::WORK || act == Act::ACTIVE) && end != 0;
    SetCursor(bEnd ? wxCursor(wxCURSOR_SIZEWE) : wxNullCursor);
    const bool bFilm = point.y < (GetBandY(0) + GetBandY(1)) / 2 - FromDIP(2);
    const bool bWork = act == Act::WORK;
    const wxString tip =
        bFilm   ? _("The whole film; the bar is the part shown. Drag it or its ends; double click: all")
        : bWork ? wxString::Format(_("Work area, which plays: %d to %d. Drag it or its ends"),
                                   mpCTime->GetWAMin(), mpCTime->GetWAMax())
                : GetFramesTip();
    if (tip != GetToolTipText()) SetToolTip(tip);
}
