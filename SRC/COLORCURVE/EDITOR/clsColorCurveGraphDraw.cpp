// The picture of a colour curve and its keys.
#include "COLORCURVE/EDITOR/clsColorCurveGraph.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/settings.h>

#include "COLORCURVE/EDITOR/clsColorCurveEdit.h"
#include "COLORCURVE/EDITOR/clsTics.h"
#include "COLORCURVE/clsColorCurve.h"
#include "PARAM/clsParamGroup.h"
#include "WIDGET/clsFontProvider.h"

namespace {

constexpr double kLineWidth = 1.7;
constexpr double kKeyRadius = 5.0;
constexpr int kSquare = 6; // of the checkerboard
constexpr int kPad = 4;
constexpr int kGridLines = 4; // between value 0 and 1

wxColour Blend(const wxColour& from, const wxColour& to, double share) {
    return wxColour(wxColour::AlphaBlend(to.Red(), from.Red(), share),
                    wxColour::AlphaBlend(to.Green(), from.Green(), share),
                    wxColour::AlphaBlend(to.Blue(), from.Blue(), share));
}

wxColour Clear(const wxColour& colour, unsigned char alpha) {
    return wxColour(colour.Red(), colour.Green(), colour.Blue(), alpha);
}

void DrawDiamond(wxGraphicsContext& gc, double x, double y, double radius) {
    wxGraphicsPath path = gc.CreatePath();
    path.MoveToPoint(x - radius, y);
    path.AddLineToPoint(x, y - radius);
    path.AddLineToPoint(x + radius, y);
    path.AddLineToPoint(x, y + radius);
    path.CloseSubpath();
    gc.DrawPath(path);
}

} // namespace

struct ColorCurveGraph_cls::Look_st {
    bool mbDark;
    wxColour mPanel; ///< around everything
    wxColour mBack;  ///< of the plot
    wxColour mText;
    wxColour mFaint;
    wxColour mLine;
    wxColour mMark;
};

ColorCurveGraph_cls::Look_st ColorCurveGraph_cls::GetLook() const {
    Look_st look;
    look.mPanel = GetParent()->GetBackgroundColour();
    look.mBack = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX);
    look.mText = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT);
    look.mbDark = look.mBack.GetLuminance() < 0.5;
    look.mFaint = Blend(look.mPanel, look.mText, 0.6);
    look.mLine = Blend(look.mPanel, look.mText, 0.25);
    look.mMark = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    return look;
}

void ColorCurveGraph_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const Look_st look = GetLook();
    dc.SetBackground(wxBrush(look.mPanel));
    dc.Clear();
    const ColorCurve_cls* pCurve = mpCEdit->GetPCCurve();
    if (!pCurve) return;
    const wxRect bar = GetBar();
    // The curve's colours, also while the constant one is in use.
    pCurve->DrawCurveOnDC(dc, bar, FromDIP(kSquare));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.SetPen(wxPen(look.mLine));
    dc.DrawRectangle(bar);
    {
        const std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::CreateFromUnknownDC(dc));
        if (!gc) return;
        DrawGround(*gc, look);
        DrawCurves(*gc, look);
        DrawHandles(*gc, look);
        DrawKeys(*gc, look);
        DrawStops(*gc, look);
        if (mGesture.Get() == State::BAND) {
            gc->SetPen(wxPen(look.mMark));
            gc->SetBrush(wxBrush(Clear(look.mMark, 40)));
            gc->DrawRectangle(mGesture.GetLeft() + 0.5, mGesture.GetTop() + 0.5,
                              mGesture.GetRight() - mGesture.GetLeft(),
                              mGesture.GetBottom() - mGesture.GetTop());
        }
        DrawReadout(*gc, look);
    }
    DrawAxes(dc, look);
}

void ColorCurveGraph_cls::DrawGround(wxGraphicsContext& gc, const Look_st& look) {
    const wxRect plot = GetPlot();
    gc.SetPen(wxPen(HasFocus() ? look.mMark : look.mLine));
    gc.SetBrush(wxBrush(look.mBack));
    gc.DrawRectangle(plot.x - 0.5, plot.y - 0.5, plot.width + 1, plot.height + 1);
    gc.Clip(plot.x, plot.y, plot.width, plot.height);
    // What lies beyond the colours' range is in the shade.
    gc.SetPen(*wxTRANSPARENT_PEN);
    gc.SetBrush(wxBrush(Clear(look.mText, look.mbDark ? 26 : 14)));
    gc.DrawRectangle(plot.x, plot.y, plot.width, ToY(1.0) - plot.y);
    gc.DrawRectangle(plot.x, ToY(0.0), plot.width, plot.GetBottom() + 1 - ToY(0.0));
    if (!mVHistogram.empty()) {
        const float most = std::max(*std::max_element(mVHistogram.begin(), mVHistogram.end()), 1e-30f);
        const double wide = double(plot.width) / double(mVHistogram.size());
        gc.SetBrush(wxBrush(Clear(look.mText, look.mbDark ? 58 : 40)));
        wxGraphicsPath path = gc.CreatePath();
        path.MoveToPoint(plot.x, ToY(0.0));
        for (size_t i = 0; i < mVHistogram.size(); ++i) {
            // The square root lets rare values be seen beside common ones.
            const double y = ToY(std::sqrt(std::max(double(mVHistogram[i] / most), 0.0)));
            path.AddLineToPoint(plot.x + double(i) * wide, y);
            path.AddLineToPoint(plot.x + double(i + 1) * wide, y);
        }
        path.AddLineToPoint(plot.x + plot.width, ToY(0.0));
        path.CloseSubpath();
        gc.FillPath(path);
    }
    for (int i = 0; i <= kGridLines; ++i) {
        const double y = std::floor(ToY(double(i) / kGridLines)) + 0.5;
        gc.SetPen(wxPen(Clear(look.mText, i == 0 || i == kGridLines ? 70 : 24)));
        gc.StrokeLine(plot.x, y, plot.x + plot.width, y);
    }
    gc.ResetClip();
}

void ColorCurveGraph_cls::DrawCurves(wxGraphicsContext& gc, const Look_st& look) {
    const wxRect plot = GetPlot();
    gc.Clip(plot.x, plot.y, plot.width, plot.height);
    const auto& params = mpCEdit->GetPCCurve()->mpCParamGroup->mVParams;
    std::vector<wxPoint2DDouble> points(size_t(plot.width) + 1);
    for (int c = kChannelNumber; c-- > 0;) {
        const double fallback = IsChannelShown(c) ? 1.0 : 0.22;
        for (size_t x = 0; x < points.size(); ++x) {
            const double place = double(x) / plot.width;
            const double y = ToY(params[size_t(c)].Evaluate(place, 0.0));
            points[x] = {plot.x + double(x), std::clamp(y, plot.y - 1e3, plot.y + plot.height + 1e3)};
        }
        const wxColour colour = GetChannelColour(c, look.mbDark);
        wxPen pen(Clear(colour, static_cast<unsigned char>(255 * fallback)));
        pen.SetWidth(std::max(FromDIP(int(std::lround(kLineWidth))), 1));
        if (c == 3) pen.SetStyle(wxPENSTYLE_SHORT_DASH);
        gc.SetPen(pen);
        gc.StrokeLines(points.size(), points.data());
    }
    gc.ResetClip();
}

void ColorCurveGraph_cls::DrawKeys(wxGraphicsContext& gc, const Look_st& look) {
    const auto& params = mpCEdit->GetPCCurve()->mpCParamGroup->mVParams;
    const wxRect plot = GetPlot();
    for (const bool bSelected : {false, true}) { // selected ones lie on top
        for (int c = kChannelNumber; c-- > 0;) {
            const auto& keys = params[size_t(c)].GetKeys();
            for (size_t k = 0; IsChannelShown(c) && k < keys.size(); ++k) {
                if (keys[k].mbSelected != bSelected) continue;
                const bool bHover = mHover.mChannel == c && mHover.mKey == int(k) && mHover.mSide == 0;
                const double r = FromDIP(1) * (kKeyRadius + (bSelected || bHover ? 1.5 : 0.0));
                // Beyond the plot a key waits at its edge.
                const double y = std::clamp(ToY(keys[k].mValue), double(plot.y), double(plot.GetBottom()));
                const double x = std::clamp(ToX(keys[k].mDoubleIndex), double(plot.x) - 0.5 * FromDIP(8),
                                            plot.x + plot.width + 0.5 * FromDIP(8));
                gc.SetPen(wxPen(bSelected ? look.mText : look.mBack, bSelected ? 2 : 1));
                gc.SetBrush(wxBrush(GetChannelColour(c, look.mbDark)));
                DrawDiamond(gc, x, y, r);
            }
        }
    }
}

void ColorCurveGraph_cls::DrawHandles(wxGraphicsContext& gc, const Look_st& look) {
    const auto& params = mpCEdit->GetPCCurve()->mpCParamGroup->mVParams;
    const double radius = FromDIP(4);
    for (int c = 0; c < kChannelNumber; ++c) {
        const auto& keys = params[size_t(c)].GetKeys();
        for (int k = 0; IsChannelShown(c) && k < int(keys.size()); ++k) {
            if (!keys[size_t(k)].mbSelected) continue;
            for (const int side : {-1, 1}) {
                wxPoint2DDouble end;
                if (!GetHandle(c, k, side, &end)) continue;
                gc.SetPen(wxPen(GetChannelColour(c, look.mbDark)));
                gc.StrokeLine(ToX(keys[size_t(k)].mDoubleIndex), ToY(keys[size_t(k)].mValue), end.m_x,
                              end.m_y);
                const bool bHover = mHover.mChannel == c && mHover.mKey == k && mHover.mSide == side;
                gc.SetBrush(wxBrush(bHover ? look.mText : look.mBack));
                gc.DrawEllipse(end.m_x - radius, end.m_y - radius, 2 * radius, 2 * radius);
            }
        }
    }
}

void ColorCurveGraph_cls::DrawStops(wxGraphicsContext& gc, const Look_st& look) {
    const ColorCurve_cls& curve = *mpCEdit->GetPCCurve();
    const wxRect strip = GetStopStrip();
    const double w = FromDIP(5);
    for (const double stop : mpCEdit->GetStops()) {
        const bool bSelected = mpCEdit->IsStopSelected(stop);
        const bool bHover = mHover.mbStop && mHover.mStop == stop;
        const double x = ToX(stop);
        const double top = strip.y + FromDIP(1);
        const double bottom = strip.GetBottom() - FromDIP(1);
        unsigned char rgb[3];
        for (size_t c = 0; c < 3; ++c)
            rgb[c] = static_cast<unsigned char>(std::lround(
                255.0 * std::clamp(curve.mpCParamGroup->mVParams[c].Evaluate(stop, 0.0), 0.0, 1.0)));
        wxGraphicsPath path = gc.CreatePath();
        path.MoveToPoint(x, top);
        path.AddLineToPoint(x + w, top + w);
        path.AddLineToPoint(x + w, bottom);
        path.AddLineToPoint(x - w, bottom);
        path.AddLineToPoint(x - w, top + w);
        path.CloseSubpath();
        gc.SetPen(wxPen(bSelected ? look.mMark : bHover ? look.mText : look.mFaint, bSelected ? 2 : 1));
        gc.SetBrush(wxBrush(wxColour(rgb[0], rgb[1], rgb[2])));
        gc.DrawPath(path);
    }
}

void ColorCurveGraph_cls::DrawAxes(wxDC& dc, const Look_st& look) {
    const ColorCurve_cls& curve = *mpCEdit->GetPCCurve();
    const wxRect plot = GetPlot();
    dc.SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_SMALL));
    dc.SetTextForeground(look.mFaint);
    for (int i = 0; i <= 2; ++i) {
        const wxString label = wxString::Format("%g", i / 2.0);
        const wxSize size = dc.GetTextExtent(label);
        dc.DrawText(label, plot.x - size.x - FromDIP(kPad), int(ToY(i / 2.0)) - size.y / 2);
    }
    const Tics_cls tics(plot.width, GetClientSize().y - plot.GetBottom() - 1,
                        double(curve.mScalingMin.mValue), double(curve.mScalingMax.mValue));
    tics.DrawOnDC(dc, plot.x, plot.GetBottom() + 2, look.mLine, look.mFaint);
}

void ColorCurveGraph_cls::DrawReadout(wxGraphicsContext& gc, const Look_st& look) {
    if (mStrReadout.empty()) return;
    double w = 0;
    double h = 0;
    gc.SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_SMALL), look.mText);
    gc.GetTextExtent(mStrReadout, &w, &h);
    const wxSize size = GetClientSize();
    const double pad = FromDIP(6);
    const double x = std::clamp(mPointer.x + double(FromDIP(14)), 0.0, std::max(size.x - w - 2 * pad, 0.0));
    const double y = std::clamp(mPointer.y + double(FromDIP(16)), 0.0, std::max(size.y - h - pad, 0.0));
    gc.SetPen(wxPen(look.mLine));
    gc.SetBrush(wxBrush(Clear(look.mBack, 235)));
    gc.DrawRoundedRectangle(x, y, w + 2 * pad, h + pad, 4);
    gc.DrawText(mStrReadout, x + pad, y + pad / 2);
}
