// The graph's picture. Ground, curves and keys are painted into memory and shown as one bitmap; letters,
// handles and the rubber band go on top.
#include <algorithm>
#include <cmath>
#include <memory>

#include <wx/bitmap.h>
#include <wx/dc.h>
#include <wx/graphics.h>

#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"
#include "WIDGET/clsFontProvider.h"

namespace {

constexpr float kLineWidth = 1.6f;
constexpr float kKeyRadius = 4.5f;
constexpr float kDotRadius = 2.0f;   // of keys too many for diamonds
constexpr double kDenseKeys = 0.2;   // keys a pixel from which they become dots
constexpr double kCrowdedKeys = 1.0; // and from which only selected ones are marked
constexpr int kMostLabels = 12;      // values named at the current time, curves in the legend
constexpr int kTickPixels = 34;      // between two lines of the value axis
constexpr int kPad = 4;

uint32_t ToRGB(const wxColour& colour) {
    return uint32_t(colour.Red()) << 16 | uint32_t(colour.Green()) << 8 | uint32_t(colour.Blue());
}

wxColour ToColour(uint32_t rgb, unsigned char alpha = 255) {
    return wxColour(static_cast<unsigned char>(rgb >> 16), static_cast<unsigned char>(rgb >> 8 & 255),
                    static_cast<unsigned char>(rgb & 255), alpha);
}

/// Keys a pixel in the shown time.
double KeyDensity(const std::vector<KeyFrame_cls>& keys, const GraphScale& scale) {
    const auto before = [](const KeyFrame_cls& key, double t) { return key.mDoubleIndex < t; };
    const auto first = std::lower_bound(keys.begin(), keys.end(), scale.ToTime(0), before);
    const auto last = std::lower_bound(first, keys.end(), scale.ToTime(scale.mWidth), before);
    return double(last - first) / std::max(scale.mWidth, 1);
}

} // namespace

struct GraphPanel_cls::Look_st {
    bool mbDark;
    wxColour mBack;
    wxColour mText;
    wxColour mFaint; ///< letters of the axis
    wxColour mMark;  ///< the current time
};

GraphPanel_cls::Look_st GraphPanel_cls::GetLook() const {
    Look_st look;
    look.mBack = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX);
    look.mText = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT);
    look.mbDark = look.mBack.GetLuminance() < 0.5;
    look.mFaint = Mix(wxSYS_COLOUR_LISTBOX, wxSYS_COLOUR_LISTBOXTEXT, 0.6);
    look.mMark = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    return look;
}

uint32_t GraphPanel_cls::CurveColour(size_t i, bool bDark) const {
    // The first three as axes go: x red, y green, z blue.
    static constexpr uint32_t kLight[] = {0xD03A3A, 0x2E8B45, 0x2F66CC, 0xC77412,
                                          0x8446B8, 0x12868C, 0xC23F86, 0x7A7D14};
    static constexpr uint32_t kDark[] = {0xFF7B72, 0x6FD08C, 0x79B0FF, 0xF2B155,
                                         0xC79BF2, 0x5FD3D6, 0xF58CC0, 0xCFD05A};
    if (i < 8) return bDark ? kDark[i] : kLight[i];
    const double hue = std::fmod(double(i) * 0.61803398875, 1.0);
    const wxImage::RGBValue rgb =
        wxImage::HSVtoRGB(bDark ? wxImage::HSVValue(hue, 0.45, 0.95) : wxImage::HSVValue(hue, 0.75, 0.68));
    return uint32_t(rgb.red) << 16 | uint32_t(rgb.green) << 8 | uint32_t(rgb.blue);
}

wxString GraphPanel_cls::FrameText(double t) const {
    return wxString::Format("%.6g", std::round(t * mpCTime->GetMaxFrame() * 1e4) / 1e4);
}

wxRect GraphPanel_cls::GetFitButton() const {
    const wxSize size = FromDIP(wxSize(34, 20));
    return wxRect(GetClientSize().x - size.x - FromDIP(kPad), FromDIP(kPad), size.x, size.y);
}

void GraphPanel_cls::Draw(wxDC& dc, const wxSize& size) {
    if (mbFitPending) FitToView();
    mShown = Fingerprint();
    const Look_st look = GetLook();
    if (size.x <= 0 || size.y <= 0) return;
    const GraphScale scale = ScaleFor(size);
    PaintGround(scale, look);
    PaintCurves(scale, look);
    mVPicture.resize(3 * size_t(size.x) * size_t(size.y));
    mCRaster.CopyRGB(mVPicture.data());
    dc.DrawBitmap(wxBitmap(wxImage(size.x, size.y, mVPicture.data(), true)), 0, 0);
    DrawAxis(dc, scale, look);
    const std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::CreateFromUnknownDC(dc));
    if (!gc) return;
    DrawHandles(*gc, scale, look);
    DrawCurrent(*gc, scale, look);
    DrawLegend(*gc, size, look);
    if (mGesture.Get() == State::BAND) {
        gc->SetPen(wxPen(look.mMark));
        gc->SetBrush(wxBrush(wxColour(look.mMark.Red(), look.mMark.Green(), look.mMark.Blue(), 40)));
        gc->DrawRectangle(mGesture.GetLeft() + 0.5, mGesture.GetTop() + 0.5,
                          mGesture.GetRight() - mGesture.GetLeft(), mGesture.GetBottom() - mGesture.GetTop());
    }
    DrawReadout(*gc, size, look);
}

void GraphPanel_cls::PaintGround(const GraphScale& scale, const Look_st& look) {
    const uint32_t text = ToRGB(look.mText);
    mCRaster.Resize(scale.mWidth, scale.mHeight);
    mCRaster.Fill(ToRGB(look.mBack));
    // What doesn't play is in the shade.
    const int low = int(std::floor(scale.ToX(mpCTime->GetDoubleIndexWAMin())));
    const int high = int(std::floor(scale.ToX(mpCTime->GetDoubleIndexWAMax())));
    const float shade = look.mbDark ? 0.28f : 0.055f;
    mCRaster.Rectangle(0, 0, low, scale.mHeight, 0, shade);
    mCRaster.Rectangle(high + 1, 0, std::max(scale.mWidth - high - 1, 0), scale.mHeight, 0, shade);
    const FrameScale frames = GetScale();
    const int interval = TimeCtrl_cls::GetInterval(mpCTime->GetMaxFrame());
    const int ticks = TickLabelSpacing(frames, interval, FromDIP(48));
    const long long first = (static_cast<long long>(frames.mFirst) + ticks - 1) / ticks * ticks;
    for (long long frame = first; frame <= frames.mLast; frame += ticks)
        mCRaster.Rectangle(frames.ToPixel(int(frame)), 0, 1, scale.mHeight, text, 0.07f);
    const ValueRange values = mCValues.Sane();
    const double step = TickStep(values, scale.mHeight, FromDIP(kTickPixels));
    const double from = std::ceil(values.mLow / step);
    const int count = int(std::clamp(values.mHigh / step - from, -1.0, 1e3)) + 1;
    for (int i = 0; i < count; ++i) {
        const double tick = from + i;
        mCRaster.Rectangle(0, int(scale.ToY(tick * step)), scale.mWidth, 1, text,
                           tick == 0.0 ? 0.28f : 0.10f);
    }
}

void GraphPanel_cls::PaintCurves(const GraphScale& scale, const Look_st& look) {
    for (size_t i = 0; i < mVCurves.size(); ++i) {
        if (!Parameters_cls::IsAlive(mVCurves[i])) continue;
        mCSampler.Sample(*mVCurves[i], scale, Parameters_cls::msResolution, &mCColumns);
        mCRaster.Curve(mCColumns, scale, CurveColour(i, look.mbDark), kLineWidth);
    }
    const int x = int(std::floor(scale.ToX(mpCTime->GetDoubleIndex())));
    mCRaster.Rectangle(x - 1, 0, 2, scale.mHeight, ToRGB(look.mMark), 1.0f);
    for (size_t i = 0; i < mVCurves.size(); ++i)
        if (Parameters_cls::IsAlive(mVCurves[i]) && mVCurves[i]->mbTimeDepend.mValue)
            PaintKeys(scale, look, i);
}

void GraphPanel_cls::PaintKeys(const GraphScale& scale, const Look_st& look, size_t i) {
    const std::vector<KeyFrame_cls>& keys = mVCurves[i]->GetKeys();
    const double density = KeyDensity(keys, scale);
    const uint32_t colour = CurveColour(i, look.mbDark);
    const uint32_t back = ToRGB(look.mBack);
    const auto at = std::lower_bound(keys.begin(), keys.end(), scale.ToTime(-FromDIP(8)),
                                     [](const KeyFrame_cls& key, double t) { return key.mDoubleIndex < t; });
    const double end = scale.ToTime(scale.mWidth + FromDIP(8));
    const float radius = static_cast<float>(FromDIP(1)) * (density > kDenseKeys ? kDotRadius : kKeyRadius);
    const float larger = static_cast<float>(FromDIP(1)) * (density > kDenseKeys ? 3.0f : 6.5f);
    for (const bool bSelected : {false, true}) { // selected ones lie on top
        if (!bSelected && density > kCrowdedKeys) continue;
        int lastX = -1;
        int lastY = -1;
        for (auto key = at; key != keys.end() && key->mDoubleIndex <= end; ++key) {
            if (key->mbSelected != bSelected) continue;
            const double x = scale.ToX(key->mDoubleIndex);
            const double y = scale.ToY(key->mValue);
            if (int(x) == lastX && int(y) == lastY) continue;
            lastX = int(x);
            lastY = int(y);
            const bool bHover = mVCurves[i] == mHover.mpCParam && key - keys.begin() == mHover.mKey;
            const float r = bSelected ? larger : bHover && density <= kDenseKeys ? radius + 1.5f : radius;
            const float fx = static_cast<float>(x);
            const float fy = static_cast<float>(y);
            if (density <= kDenseKeys) mCRaster.Diamond(fx, fy, r + 1.8f, back);
            mCRaster.Diamond(fx, fy, r, bSelected ? ToRGB(look.mText) : colour);
            if (bSelected) mCRaster.Diamond(fx, fy, r - 2.0f, colour);
        }
    }
}

void GraphPanel_cls::DrawAxis(wxDC& dc, const GraphScale& scale, const Look_st& look) {
    dc.SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_SMALL));
    dc.SetTextForeground(look.mFaint);
    const ValueRange values = mCValues.Sane();
    const double step = TickStep(values, scale.mHeight, FromDIP(kTickPixels));
    const double from = std::ceil(values.mLow / step);
    const int count = int(std::clamp(values.mHigh / step - from, -1.0, 1e3)) + 1;
    const int tall = dc.GetCharHeight();
    int widest = 0;
    for (int i = 0; i < count; ++i)
        widest = std::max(widest, dc.GetTextExtent(TickText((from + i) * step, step)).x);
    const int left =
        PlaceAxisLabels(scale.ToX(mpCTime->GetDoubleIndex()), widest, FromDIP(kPad), scale.mWidth);
    for (int i = 0; i < count; ++i) {
        const int y = int(scale.ToY((from + i) * step)) - tall;
        if (y >= 0) dc.DrawText(TickText((from + i) * step, step), left, y);
    }
}

void GraphPanel_cls::DrawHandles(wxGraphicsContext& gc, const GraphScale& scale, const Look_st& look) {
    const std::vector<Parameters_cls*> alive = GetCurves();
    if (CountSelectedKeys(alive) > 64) return;
    const double radius = FromDIP(4);
    for (const Parameters_cls* param : alive) {
        for (int k = 0; param->mbTimeDepend.mValue && k < param->GetKeyNumber(); ++k) {
            const KeyFrame_cls& key = param->GetKeys()[size_t(k)];
            if (!key.mbSelected) continue;
            for (const int side : {-1, 1}) {
                wxPoint2DDouble end;
                if (!GetHandle(*param, k, side, &end)) continue;
                const double x = scale.ToX(key.mDoubleIndex);
                const double y = scale.ToY(key.mValue);
                if (std::fabs(x) > 1e5 || std::fabs(y) > 1e5) continue;
                gc.SetPen(wxPen(look.mText));
                gc.StrokeLine(x, y, end.m_x, end.m_y);
                const bool bHover = mHover.mpCParam == param && mHover.mKey == k && mHover.mSide == side;
                gc.SetBrush(wxBrush(bHover ? look.mText : look.mBack));
                gc.DrawEllipse(end.m_x - radius, end.m_y - radius, 2 * radius, 2 * radius);
            }
        }
    }
}

void GraphPanel_cls::DrawCurrent(wxGraphicsContext& gc, const GraphScale& scale, const Look_st& look) {
    struct Label_st {
        double mY, mValueY;
        wxString mText;
        uint32_t mColour;
    };
    const double t = mpCTime->GetDoubleIndex();
    const double x = std::floor(scale.ToX(t));
    if (x < 0 || x > scale.mWidth) return;
    std::vector<Label_st> labels;
    for (size_t i = 0; i < mVCurves.size() && labels.size() < size_t(kMostLabels); ++i) {
        if (!Parameters_cls::IsAlive(mVCurves[i])) continue;
        const double value = mVCurves[i]->Evaluate(t, Parameters_cls::msResolution);
        const double y = scale.ToY(value);
        if (y < 0 || y > scale.mHeight) continue;
        labels.push_back({y, y, ValueText(value), CurveColour(i, look.mbDark)});
    }
    std::sort(labels.begin(), labels.end(), [](const auto& a, const auto& b) { return a.mY < b.mY; });
    gc.SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_SMALL), look.mText);
    double tall = 0;
    double wide = 0;
    for (const Label_st& label : labels) {
        double w = 0;
        double h = 0;
        gc.GetTextExtent(label.mText, &w, &h);
        wide = std::max(wide, w);
        tall = std::max(tall, h);
    }
    // Beside each other, never on top: from above downwards, then back up from the lower edge.
    for (size_t i = 1; i < labels.size(); ++i)
        labels[i].mY = std::max(labels[i].mY, labels[i - 1].mY + tall);
    double limit = scale.mHeight - tall / 2;
    for (size_t i = labels.size(); i-- > 0; limit = labels[i].mY - tall)
        labels[i].mY = std::min(labels[i].mY, limit);
    const double gap = FromDIP(8);
    const double left = x + gap + wide + kPad > scale.mWidth ? x - gap - wide : x + gap;
    const double radius = FromDIP(3);
    for (const Label_st& label : labels) {
        gc.SetPen(wxPen(look.mBack));
        gc.SetBrush(wxBrush(ToColour(label.mColour)));
        gc.DrawEllipse(x - radius, label.mValueY - radius, 2 * radius, 2 * radius);
        double w = 0;
        double h = 0;
        gc.GetTextExtent(label.mText, &w, &h);
        gc.SetPen(*wxTRANSPARENT_PEN);
        gc.SetBrush(wxBrush(wxColour(look.mBack.Red(), look.mBack.Green(), look.mBack.Blue(), 210)));
        gc.DrawRoundedRectangle(left - 3, label.mY - tall / 2, w + 6, tall, 3);
        gc.SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_SMALL), ToColour(label.mColour));
        gc.DrawText(label.mText, left, label.mY - tall / 2);
    }
}

void GraphPanel_cls::DrawLegend(wxGraphicsContext& gc, const wxSize& size, const Look_st& look) {
    const wxRect button = GetFitButton();
    const wxFont& font = FontProvider_cls::GetFont(FontProvider_cls::FONT_SMALL);
    double w = 0;
    double h = 0;
    gc.SetFont(font, look.mText);
    gc.GetTextExtent(_("Fit"), &w, &h);
    gc.SetPen(wxPen(wxColour(look.mText.Red(), look.mText.Green(), look.mText.Blue(), 90)));
    gc.SetBrush(wxBrush(look.mBack));
    gc.DrawRoundedRectangle(button.x + 0.5, button.y + 0.5, button.width - 1, button.height - 1, 4);
    gc.DrawText(_("Fit"), button.x + (button.width - w) / 2, button.y + (button.height - h) / 2);
    std::vector<size_t> shown;
    for (size_t i = 0; i < mVCurves.size(); ++i)
        if (Parameters_cls::IsAlive(mVCurves[i])) shown.push_back(i);
    if (shown.empty()) {
        const wxString hint = _("Select parameters to see their curves");
        gc.SetFont(font, look.mFaint);
        gc.GetTextExtent(hint, &w, &h);
        gc.DrawText(hint, (size.x - w) / 2, (size.y - h) / 2);
        return;
    }
    const size_t named = std::min(shown.size(), size_t(kMostLabels));
    double right = button.x - FromDIP(2 * kPad);
    const auto place = [&](const wxString& text, const wxColour& colour, bool bChip) {
        gc.SetFont(font, bChip ? look.mText : look.mFaint);
        gc.GetTextExtent(text, &w, &h);
        const double chip = bChip ? FromDIP(12) : 0;
        const double left = right - w - chip - FromDIP(2 * kPad);
        if (left < size.x / 4.0) return;
        gc.SetPen(*wxTRANSPARENT_PEN);
        gc.SetBrush(wxBrush(wxColour(look.mBack.Red(), look.mBack.Green(), look.mBack.Blue(), 200)));
        gc.DrawRectangle(left, button.y, right - left, button.height);
        gc.SetBrush(wxBrush(colour));
        const double y = button.y + button.height / 2.0;
        if (bChip) gc.DrawRoundedRectangle(left + kPad, y - FromDIP(2), FromDIP(9), FromDIP(4), 2);
        gc.DrawText(text, left + kPad + chip, y - h / 2);
        right = left;
    };
    if (named < shown.size()) place(wxString::Format("+%d", int(shown.size() - named)), look.mFaint, false);
    for (size_t k = named; k-- > 0;) {
        const Parameters_cls& param = *mVCurves[shown[k]];
        place(shown.size() <= 6 ? NameOf(param) : param.mName, ToColour(CurveColour(shown[k], look.mbDark)),
              true);
    }
}

// Short names of several groups are alike; the whole one tells them apart.
wxString GraphPanel_cls::NameOf(const Parameters_cls& param) const {
    const bool bTwice = std::any_of(mVCurves.begin(), mVCurves.end(), [&param](const Parameters_cls* other) {
        return Parameters_cls::IsAlive(other) && other != &param && other->mName == param.mName;
    });
    return bTwice ? param.mID : param.mName;
}

void GraphPanel_cls::DrawReadout(wxGraphicsContext& gc, const wxSize& size, const Look_st& look) {
    if (mReadout.empty()) return;
    double w = 0;
    double h = 0;
    gc.SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_SMALL), look.mText);
    gc.GetTextExtent(mReadout, &w, &h);
    const double pad = FromDIP(6);
    const double x = std::clamp(mPointer.x + double(FromDIP(14)), 0.0, std::max(size.x - w - 2 * pad, 0.0));
    const double above = mPointer.y - h - 2 * pad - FromDIP(4);
    const double y = above < 0 ? mPointer.y + FromDIP(18) : above;
    gc.SetPen(wxPen(wxColour(look.mText.Red(), look.mText.Green(), look.mText.Blue(), 90)));
    gc.SetBrush(wxBrush(look.mBack));
    gc.DrawRoundedRectangle(x + 0.5, y + 0.5, w + 2 * pad, h + pad, 4);
    gc.DrawText(mReadout, x + pad, y + pad / 2);
}
