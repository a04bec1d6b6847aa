#include "WIDGET/TIMELINE/clsParamTL.h"

#include <algorithm>
#include <cmath>

#include <wx/brush.h>
#include <wx/dc.h>
#include <wx/pen.h>

#include "PARAM/KeyGesture.h"
#include "PARAM/clsParameters.h"
#include "WIDGET/TIMELINE/KeyEdits.h"

TimeCtrl_cls* ParamTL_cls::mspCTimeCtrlLink = nullptr;

namespace {

constexpr double kLeastGap = 2.0; // pixels; marks closer together can't be told apart

using KeyIt = std::vector<KeyFrame_cls>::const_iterator;

/// The first key whose position is not before `t`.
KeyIt FirstFrom(const std::vector<KeyFrame_cls>& keys, double t) {
    return std::lower_bound(keys.begin(), keys.end(), t,
                            [](const KeyFrame_cls& key, double at) { return key.mDoubleIndex < at; });
}

/// From this key on the value doesn't change up to the next.
bool IsHeld(const KeyFrame_cls& key, const KeyFrame_cls& next) {
    return key.mInterpType == INTERP_STEP || key.mValue == next.mValue;
}

} // namespace

ParamTL_cls::ParamTL_cls(Parameters_cls* pCurve) : mpCParam(pCurve) { mpCParam->mpCParamTL = this; }

ParamTL_cls::~ParamTL_cls() {
    if (Parameters_cls::IsAlive(mpCParam) && mpCParam->mpCParamTL == this) mpCParam->mpCParamTL = nullptr;
}

double ParamTL_cls::ToPixel(const FrameScale& scale, double doubleIndex) {
    return scale.ToPixelExact(doubleIndex * Parameters_cls::msFrameNumber);
}

double ParamTL_cls::ToDoubleIndex(const FrameScale& scale, int pixel) {
    return scale.ToFrameExact(pixel) / std::max(Parameters_cls::msFrameNumber, 1);
}

void ParamTL_cls::DrawKeys(wxDC& dc, const Parameters_cls& curve, const FrameScale& scale, int y,
                           const TimelineLook& look) {
    const std::vector<KeyFrame_cls>& keys = curve.GetKeys();
    if (!curve.mbTimeDepend.mValue || keys.empty()) return;
    const int reach = look.mMark / 2;
    const int right = scale.mLeft + scale.mWidth + scale.mLeft;
    KeyIt from = FirstFrom(keys, ToDoubleIndex(scale, -reach));
    const KeyIt to = FirstFrom(keys, ToDoubleIndex(scale, right + reach));
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(look.mHold));
    const int half = std::max(look.mMark / 10, 1);
    for (KeyIt key = from == keys.begin() ? from : from - 1; key != to && key + 1 != keys.end(); ++key) {
        if (!IsHeld(*key, *(key + 1))) continue;
        const int x0 = std::max(int(std::lround(ToPixel(scale, key->mDoubleIndex))), 0);
        const int x1 = std::min(int(std::lround(ToPixel(scale, (key + 1)->mDoubleIndex))), right);
        if (x1 - x0 > look.mMark) dc.DrawRectangle(x0, y - half, x1 - x0, 2 * half + 1);
    }
    double last = -1e9;
    for (; from != to; ++from) {
        const double x = ToPixel(scale, from->mDoubleIndex);
        if (x - last < kLeastGap && !from->mbSelected) continue;
        look.DrawMark(dc, x, y, from->mInterpType, from->mbSelected ? MarkLook::SELECTED : MarkLook::PLAIN);
        last = x;
    }
}

void ParamTL_cls::DrawSummary(wxDC& dc, const std::vector<Parameters_cls*>& curves, const FrameScale& scale,
                              int y, const TimelineLook& look) {
    enum : unsigned char { NONE, PLAIN, SELECTED };
    const int right = scale.mLeft + scale.mWidth + scale.mLeft;
    std::vector<unsigned char> columns(size_t(std::max(right, 0)) + 1, NONE);
    for (const Parameters_cls* curve : curves) {
        if (!curve->mbTimeDepend.mValue) continue;
        const std::vector<KeyFrame_cls>& keys = curve->GetKeys();
        const KeyIt to = FirstFrom(keys, ToDoubleIndex(scale, right));
        for (KeyIt key = FirstFrom(keys, ToDoubleIndex(scale, 0)); key != to; ++key) {
            const double x = std::clamp(std::round(ToPixel(scale, key->mDoubleIndex)), 0.0, double(right));
            unsigned char& column = columns[size_t(x)];
            column = std::max(column, static_cast<unsigned char>(key->mbSelected ? SELECTED : PLAIN));
        }
    }
    double last = -1e9;
    for (size_t x = 0; x < columns.size(); ++x) {
        if (columns[x] == NONE || (columns[x] == PLAIN && double(x) - last < 2 * kLeastGap)) continue;
        look.DrawMark(dc, double(x), y, INTERP_LINEAR,
                      columns[x] == SELECTED ? MarkLook::SELECTED : MarkLook::SUMMARY);
        last = double(x);
    }
}

double ParamTL_cls::FindKey(const std::vector<Parameters_cls*>& curves, const FrameScale& scale, int pixel,
                            int reach) {
    KeyPicker_cls picker(pixel, 0.0, reach + 0.5);
    for (size_t i = 0; i < curves.size(); ++i) {
        if (!IsAnimated(*curves[i])) continue;
        const std::vector<KeyFrame_cls>& keys = curves[i]->GetKeys();
        const KeyIt to = FirstFrom(keys, ToDoubleIndex(scale, pixel + reach + 1));
        for (KeyIt key = FirstFrom(keys, ToDoubleIndex(scale, pixel - reach - 1)); key != to; ++key)
            picker.OfferKey(int(i), int(key - keys.begin()), ToPixel(scale, key->mDoubleIndex), 0.0,
                            key->mbSelected);
    }
    const KeyHit& hit = picker.GetKey();
    return hit.IsAny() ? curves[size_t(hit.mCurve)]->GetKeys()[size_t(hit.mKey)].mDoubleIndex : -1.0;
}
