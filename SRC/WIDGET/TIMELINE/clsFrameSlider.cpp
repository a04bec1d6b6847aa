#include "WIDGET/TIMELINE/clsFrameSlider.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFontProvider.h"

namespace {
constexpr int kFilmHeight = 10; // logical pixels: the film as a whole, at the upper edge
constexpr int kRulerHeight = 18;
constexpr int kBandHeight = 12; // of the work area, at the lower edge
constexpr int kHeight = kFilmHeight + kRulerHeight + kBandHeight;
constexpr int kLeastTick = 4; // pixels between two ticks
} // namespace

FrameSlider_cls::FrameSlider_cls(wxWindow* pParent, TimeCtrl_cls* pTime)
    : TimelineStrip_cls(pParent, pTime, kHeight) {
    Bind(wxEVT_PAINT, &FrameSlider_cls::OnPaint, this);
    for (const auto& type :
         {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP, wxEVT_MOTION, wxEVT_MOUSEWHEEL})
        Bind(type, &FrameSlider_cls::OnMouse, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { Finish(); });
    SetToolTip(GetFramesTip());
}

bool FrameSlider_cls::Shown::operator==(const Shown& o) const {
    return std::tie(mFrame, mStep, mAnimStep, mInterp, mFirst, mLast, mLow, mHigh, mMax) ==
           std::tie(o.mFrame, o.mStep, o.mAnimStep, o.mInterp, o.mFirst, o.mLast, o.mLow, o.mHigh, o.mMax);
}

FrameSlider_cls::Shown FrameSlider_cls::Current() const {
    Shown now;
    now.mFrame = mpCTime->GetFrame();
    now.mStep = mpCTime->GetInterpStep();
    now.mAnimStep = mpCTime->GetAnimStep();
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

void FrameSlider_cls::SetMarks(std::vector<double> marks) {
    if (marks == mVMarks) return;
    mVMarks = std::move(marks);
    Refresh();
}

FrameScale FrameSlider_cls::GetFilmScale() const {
    FrameScale scale = GetScale();
    scale.mFirst = 0;
    scale.mLast = mpCTime->GetMaxFrame();
    return scale;
}

int FrameSlider_cls::GetBandY(int band) const {
    const int middles[] = {kFilmHeight / 2, kFilmHeight + kRulerHeight / 2,
                           kFilmHeight + kRulerHeight + kBandHeight / 2};
    return FromDIP(middles[band]);
}

void FrameSlider_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    mShown = Current();
    const FrameScale scale = GetScale();
    dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE)));
    dc.Clear();
    DrawFilm(dc);
    DrawWorkArea(dc, scale);
    DrawRuler(dc, scale);
    DrawMarks(dc, scale);
    DrawMarker(dc, scale);
}

void FrameSlider_cls::DrawHandle(wxDC& dc, int x, int top, int height, const wxColour& colour) const {
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(colour));
    dc.DrawRoundedRectangle(x - FromDIP(2), top, FromDIP(5), height, FromDIP(2));
}

void FrameSlider_cls::DrawFilm(wxDC& dc) const {
    const FrameScale film = GetFilmScale();
    const int top = FromDIP(2);
    const int height = FromDIP(kFilmHeight - 3);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_BTNTEXT, 0.08)));
    dc.DrawRoundedRectangle(film.mLeft - FromDIP(3), top, film.mWidth + FromDIP(7), height, FromDIP(3));
    const int low = film.ToPixel(std::min(mShown.mFirst, mShown.mMax));
    const int high = film.ToPixel(std::min(mShown.mLast, mShown.mMax));
    dc.SetBrush(wxBrush(Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_BTNTEXT, 0.22)));
    dc.DrawRoundedRectangle(low - FromDIP(3), top, high - low + FromDIP(7), height, FromDIP(3));
    // Where the current frame is in the film, however much is shown.
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.DrawRectangle(film.ToPixel(std::min(mShown.mFrame, mShown.mMax)), top, FromDIP(2), height);
    const wxColour handle = Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_BTNTEXT, 0.55);
    DrawHandle(dc, low, top, height, handle);
    DrawHandle(dc, high, top, height, handle);
}

void FrameSlider_cls::DrawWorkArea(wxDC& dc, const FrameScale& scale) const {
    const int band = FromDIP(kBandHeight);
    const int top = GetClientSize().y - band;
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_BTNTEXT, 0.08)));
    dc.DrawRectangle(scale.mLeft, top, scale.mWidth + 1, band);
    if (mShown.mHigh < scale.mFirst || mShown.mLow > scale.mLast) return;
    const int low = scale.ToPixel(std::clamp(mShown.mLow, scale.mFirst, scale.mLast));
    const int high = scale.ToPixel(std::clamp(mShown.mHigh, scale.mFirst, scale.mLast));
    dc.SetBrush(wxBrush(Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_HIGHLIGHT, 0.35)));
    dc.DrawRectangle(low, top, high - low + 1, band);
    const wxColour handle = Mix(wxSYS_COLOUR_HIGHLIGHT, wxSYS_COLOUR_BTNTEXT, 0.35);
    if (mShown.mLow >= scale.mFirst) DrawHandle(dc, low, top, band, handle);
    if (mShown.mHigh <= scale.mLast) DrawHandle(dc, high, top, band, handle);
}

void FrameSlider_cls::DrawMarks(wxDC& dc, const FrameScale& scale) const {
    const int y = GetClientSize().y - FromDIP(kBandHeight) / 2;
    const int r = FromDIP(2);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT)));
    int last = -100;
    for (const double mark : mVMarks) {
        const double frame = mark * mShown.mMax;
        if (frame < scale.mFirst - 1e-6 || frame > scale.mLast + 1e-6) continue;
        const int x = int(std::lround(scale.ToPixelExact(frame)));
        if (x - last < r) continue;
        last = x;
        const wxPoint corners[] = {{x - r, y}, {x, y - r}, {x + r + 1, y}, {x, y + r + 1}};
        dc.DrawPolygon(4, corners);
    }
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
        dc.DrawLine(x, bottom - band - FromDIP(bLabel ? 5 : 3), x, bottom - band - 1);
        if (!bLabel) continue;
        const wxString text = wxString::Format("%d", frame);
        dc.DrawText(text, x - dc.GetTextExtent(text).x / 2, FromDIP(kFilmHeight - 1));
    }
    const int top = bottom - band - FromDIP(2);
    for (const double tick : StepTicks(scale, mShown.mAnimStep, mShown.mInterp, FromDIP(kLeastTick))) {
        const int x = int(std::lround(scale.ToPixelExact(tick)));
        dc.DrawLine(x, top, x, bottom - band - 1);
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
    const int top = FromDIP(kFilmHeight - 1);
    dc.SetPen(wxPen(colour));
    dc.DrawLine(x, top, x, GetClientSize().y);
    dc.SetBrush(wxBrush(colour));
    const int left = std::clamp(x - width / 2, 0, right);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.DrawRoundedRectangle(left, top, width, extent.y + FromDIP(1), FromDIP(3));
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT));
    dc.DrawText(text, left + pad, top);
}
