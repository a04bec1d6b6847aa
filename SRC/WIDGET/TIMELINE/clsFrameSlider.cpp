#include "WIDGET/TIMELINE/clsFrameSlider.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFontProvider.h"

namespace {
constexpr int kHeight = 32;
constexpr int kBandHeight = 10; // of the work area, at the lower edge
constexpr int kLeastTick = 4;   // pixels between two ticks
} // namespace

FrameSlider_cls::FrameSlider_cls(wxWindow* pParent, TimeCtrl_cls* pTime)
    : TimelineStrip_cls(pParent, pTime, kHeight) {
    SetToolTip(
        _("Frames of the film. Drag: go to a frame. Wheel: step. The band is the work area, which plays."));
    Bind(wxEVT_PAINT, &FrameSlider_cls::OnPaint, this);
    for (const auto& type :
         {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP, wxEVT_MOTION, wxEVT_MOUSEWHEEL})
        Bind(type, &FrameSlider_cls::OnMouse, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { mpCTime->EndGesture(); });
}

bool FrameSlider_cls::Shown::operator==(const Shown& o) const {
    return std::tie(mFrame, mStep, mInterp, mFirst, mLast, mLow, mHigh, mMax) ==
           std::tie(o.mFrame, o.mStep, o.mInterp, o.mFirst, o.mLast, o.mLow, o.mHigh, o.mMax);
}

FrameSlider_cls::Shown FrameSlider_cls::Current() const {
    Shown now;
    now.mFrame = mpCTime->GetFrame();
    now.mStep = mpCTime->GetInterpStep();
    now.mInterp = mpCTime->GetAnimInterp();
    now.mFirst = mpCTime->GetAAMin();
    now.mLast = mpCTime->GetAAMax();
    now.mLow = mpCTime->GetWAMin();
    now.mHigh = mpCTime->GetWAMax();
    now.mMax = mpCTime->GetMaxFrame();
    return now;
}

void FrameSlider_cls::RefreshIfChanged() {
    if (!(Current() == mShown)) Refresh();
}

void FrameSlider_cls::GoTo(int pixel) {
    const int frame = mpCTime->RoundFrame(GetScale().ToFrame(pixel));
    if (frame == mpCTime->GetFrame() && mpCTime->GetInterpStep() == 0) return;
    if (mpCTime->GetInterpStep() != 0) mpCTime->SetInterpStepCommand(0);
    mpCTime->SetFrameCommand(frame);
    Refresh();
}

void FrameSlider_cls::OnMouse(wxMouseEvent& event) {
    if (event.LeftDown() || event.LeftDClick()) {
        if (!HasCapture()) CaptureMouse();
        mpCTime->BeginGesture();
        GoTo(event.GetX());
    } else if (event.LeftUp()) {
        if (HasCapture()) ReleaseMouse();
        mpCTime->EndGesture();
    } else if (event.Dragging() && HasCapture()) {
        GoTo(event.GetX());
    } else if (event.GetEventType() == wxEVT_MOUSEWHEEL) {
        mpCTime->MoveFrameCommand(event.GetWheelRotation() > 0 ? -1 : 1);
        Refresh();
    }
}

void FrameSlider_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    mShown = Current();
    const wxSize size = GetClientSize();
    const FrameScale scale = GetScale();
    dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE)));
    dc.Clear();
    const int band = FromDIP(kBandHeight);
    const int top = size.y - band;
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_BTNTEXT, 0.12)));
    dc.DrawRectangle(scale.mLeft, top, scale.mWidth + 1, band);
    const int low = std::clamp(mShown.mLow, scale.mFirst, scale.mLast);
    const int high = std::clamp(mShown.mHigh, scale.mFirst, scale.mLast);
    dc.SetBrush(wxBrush(Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_BTNTEXT, 0.35)));
    dc.DrawRectangle(scale.ToPixel(low), top, scale.ToPixel(high) - scale.ToPixel(low) + 1, band);
    DrawRuler(dc, scale);
    DrawMarker(dc, scale);
}

void FrameSlider_cls::DrawRuler(wxDC& dc, const FrameScale& scale) {
    const int bottom = GetClientSize().y;
    const int band = FromDIP(kBandHeight);
    dc.SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_SMALL));
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT));
    dc.SetPen(wxPen(Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_BTNTEXT, 0.7)));
    const int interval = TimeCtrl_cls::GetInterval(mShown.mMax);
    const int widest = dc.GetTextExtent(wxString::Format("%d", scale.mLast)).x + FromDIP(12);
    const int labels = TickLabelSpacing(scale, interval, widest);
    const int ticks = TickLabelSpacing(scale, interval, FromDIP(kLeastTick));
    const int first = (scale.mFirst + ticks - 1) / ticks * ticks;
    for (int frame = first; frame <= scale.mLast; frame += ticks) {
        const bool bLabel = frame % labels == 0;
        const int x = scale.ToPixel(frame);
        dc.DrawLine(x, bottom - band + (bLabel ? 0 : band / 2), x, bottom);
        if (!bLabel) continue;
        const wxString text = wxString::Format("%d", frame);
        dc.DrawText(text, x - dc.GetTextExtent(text).x / 2, FromDIP(4));
    }
}

void FrameSlider_cls::DrawMarker(wxDC& dc, const FrameScale& scale) {
    if (mShown.mFrame < scale.mFirst || mShown.mFrame > scale.mLast) return;
    const int step = static_cast<int>(std::lround(scale.PixelsPerFrame() * mShown.mStep / mShown.mInterp));
    const int x = scale.ToPixel(mShown.mFrame) + (scale.mLast > scale.mFirst ? step : 0);
    const wxColour colour = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    const wxString text = mShown.mStep > 0
                              ? wxString::Format("%d + %d/%d", mShown.mFrame, mShown.mStep, mShown.mInterp)
                              : wxString::Format("%d", mShown.mFrame);
    const wxSize extent = dc.GetTextExtent(text);
    const int pad = FromDIP(4);
    const int width = extent.x + 2 * pad;
    const int right = std::max(GetClientSize().x - width, 0);
    dc.SetPen(wxPen(colour, FromDIP(2)));
    dc.DrawLine(x, extent.y, x, GetClientSize().y);
    dc.SetBrush(wxBrush(colour));
    const int left = std::clamp(x - width / 2, 0, right);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.DrawRoundedRectangle(left, FromDIP(2), width, extent.y + FromDIP(4), FromDIP(3));
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT));
    dc.DrawText(text, left + pad, FromDIP(4));
}
