#include "WIDGET/TIMELINE/GraphModel.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "PARAM/clsParameters.h"
#include "WIDGET/TIMELINE/TimelineModel.h"

namespace {

constexpr double kLargest = 1e300;    // beyond it spans overflow
constexpr double kLeastSpan = 1e-30;  // of values
constexpr double kLeastShare = 1e-12; // of the span in the values: what a double's digits tell apart
constexpr double kMargin = 0.12;      // above and below what fits

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Takes a value in, unless it is a NaN.
void Widen(CurveColumns::Hard_st* pHard, double value) {
    if (std::isnan(value)) return;
    if (!(pHard->mLow <= value)) pHard->mLow = value;
    if (!(pHard->mHigh >= value)) pHard->mHigh = value;
}

double CutValue(double value) { return std::isnan(value) ? 0.0 : std::clamp(value, -kLargest, kLargest); }

} // namespace

ValueRange ValueRange::Sane() const {
    ValueRange r{CutValue(std::min(mLow, mHigh)), CutValue(std::max(mLow, mHigh))};
    const double least = std::max(kLeastSpan, kLeastShare * std::max(std::fabs(r.mLow), std::fabs(r.mHigh)));
    if (r.Span() >= least) return r;
    const double middle = r.mLow + r.Span() / 2;
    return {middle - least / 2, middle + least / 2};
}

ValueRange ValueRange::Zoomed(double around, double factor) const {
    return ValueRange{around + (mLow - around) * factor, around + (mHigh - around) * factor}.Sane();
}

double GraphScale::Cut(double pixel) { return std::isnan(pixel) ? kFar : std::clamp(pixel, -kFar, kFar); }

GraphScale MakeGraphScale(const FrameScale& frames, int maxFrame, const ValueRange& values, int width,
                          int height) {
    GraphScale scale;
    const double perFrame = 1.0 / std::max(maxFrame, 1);
    const ValueRange sane = values.Sane();
    scale.mTimePerPixel = perFrame / std::max(frames.PixelsPerFrame(), 1e-6);
    scale.mTimeLeft = frames.mFirst * perFrame - frames.mLeft * scale.mTimePerPixel;
    scale.mValueTop = sane.mHigh;
    scale.mValuePerPixel = sane.Span() / std::max(height, 1);
    scale.mWidth = std::max(width, 0);
    scale.mHeight = std::max(height, 0);
    return scale;
}

void CurveSampler_cls::CollectSeams(const Parameters_cls& param, double resolution) {
    mVSeams.clear();
    const std::vector<KeyFrame_cls>& keys = param.GetKeys();
    if (!param.mbTimeDepend.mValue || keys.size() < 2) return;
    // The held value before key 0 ends at the key, each segment half a resolution before its right key.
    const double half = resolution / 2;
    const double first = keys[0].mDoubleIndex;
    const double from = mVEdges.front();
    const double to = mVEdges.back();
    if (first >= from && first < to) mVSeams.push_back(first);
    auto key = std::lower_bound(keys.begin() + 1, keys.end(), from, [half](const KeyFrame_cls& k, double t) {
        return k.mDoubleIndex - half < t;
    });
    double last = std::max(first, from);
    for (; key != keys.end() && key->mDoubleIndex - half < to; ++key) {
        const double seam = key->mDoubleIndex - half;
        if (!(seam > last)) continue;
        mVSeams.push_back(std::max(std::nextafter(seam, -HUGE_VAL), last));
        mVSeams.push_back(last = seam);
    }
}

void CurveSampler_cls::Sample(const Parameters_cls& param, const GraphScale& scale, double resolution,
                              CurveColumns* pOut) {
    const size_t columns = size_t(scale.mWidth);
    mVEdges.resize(columns + 1);
    for (size_t x = 0; x <= columns; ++x)
        mVEdges[x] = scale.ToTime(double(x));
    pOut->mVEdge.resize(columns + 1);
    param.EvaluateMany(mVEdges.data(), columns + 1, resolution, pOut->mVEdge.data());
    CollectSeams(param, resolution);
    mVValues.resize(mVSeams.size());
    param.EvaluateMany(mVSeams.data(), mVSeams.size(), resolution, mVValues.data());
    pOut->mVHard.clear();
    size_t x = 0;
    for (size_t i = 0; i < mVSeams.size(); ++i) {
        while (x + 1 < columns && mVEdges[x + 1] <= mVSeams[i])
            ++x;
        if (pOut->mVHard.empty() || pOut->mVHard.back().mColumn != int(x)) {
            pOut->mVHard.push_back({int(x), kNaN, kNaN});
            Widen(&pOut->mVHard.back(), pOut->mVEdge[x]);
            Widen(&pOut->mVHard.back(), pOut->mVEdge[x + 1]);
        }
        Widen(&pOut->mVHard.back(), mVValues[i]);
    }
}

double TickStep(const ValueRange& values, int pixels, int leastPixels) {
    const double least = values.Span() / std::max(pixels, 1) * std::max(leastPixels, 1);
    if (!(least > 0.0) || !std::isfinite(least)) return 1.0;
    const double decade = std::pow(10.0, std::floor(std::log10(least)));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * decade >= least * (1 - 1e-9)) return digit * decade;
    return 10.0 * decade;
}

wxString TickText(double value, double step) {
    if (std::fabs(value) < step / 2) return "0";
    const int decimals = int(std::max(0.0, -std::floor(std::log10(step) + 1e-9)));
    const double largest = std::fabs(value);
    if (largest < 1e6 && decimals <= 6) return wxString::FromCDouble(value, decimals);
    const int digits =
        int(std::clamp(std::floor(std::log10(largest)) - std::floor(std::log10(step) + 1e-9), 0.0, 14.0));
    return wxString::Format("%.*e", digits, value);
}

wxString ValueText(double value) { return wxString::Format("%.5g", value); }

ValueRange FitValues(const std::vector<CurveColumns>& curves) {
    double low = kLargest;
    double high = -kLargest;
    const auto widen = [&](double value) {
        if (!std::isfinite(value)) return;
        low = std::min(low, value);
        high = std::max(high, value);
    };
    for (const CurveColumns& curve : curves) {
        for (const double value : curve.mVEdge)
            widen(value);
        for (const CurveColumns::Hard_st& hard : curve.mVHard) {
            widen(hard.mLow);
            widen(hard.mHigh);
        }
    }
    if (low > high) return {};
    low = CutValue(low);
    high = CutValue(high);
    if (high - low <= kLeastShare * std::max(std::fabs(low), std::fabs(high))) {
        const double half = low == 0.0 ? 1.0 : std::fabs(low) / 2;
        return ValueRange{low - half, high + half}.Sane();
    }
    const double margin = (high - low) * kMargin;
    return ValueRange{low - margin, high + margin}.Sane();
}

int PlaceAxisLabels(double cursor, int widest, int pad, int width) {
    const bool bInTheWay = cursor >= 0 && cursor <= widest + 2 * pad;
    return bInTheWay ? std::max(width - widest - pad, widest + 2 * pad) : pad;
}
