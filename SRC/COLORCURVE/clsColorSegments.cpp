#include "COLORCURVE/clsColorSegments.h"

#include <algorithm>

#include "COLORCURVE/clsColorCurve.h"

ColorSegments_cls::ColorSegments_cls(const ColorCurve_cls& curve)
    : mOffset(curve.GetScaleOffset()), mRange(curve.GetScaleRange()) {
    const auto& keys = curve.GetKeys();
    const auto at = [](const ColorCurve_cls::Key& key) {
        Segment segment;
        segment.mBegin = static_cast<float>(key[0]);
        for (size_t c = 0; c < 4; ++c)
            segment.mColor[c] = static_cast<float>(key[c + 1]);
        return segment;
    };
    mSegments.clear();
    if (curve.IsConstant()) {
        mSegments.resize(1);
        std::copy_n(curve.mConstantColor.mValue, 4, mSegments[0].mColor);
        return;
    }
    mFirst = static_cast<float>(keys.front()[0]);
    mLast = static_cast<float>(keys.back()[0]);
    // Every key opens a segment; the last one has no slope.
    for (size_t k = 0; k < keys.size(); ++k) {
        Segment segment = at(keys[k]);
        const double width = k + 1 < keys.size() ? keys[k + 1][0] - keys[k][0] : 0.0;
        for (size_t c = 0; width > 0.0 && c < 4; ++c)
            segment.mSlope[c] = static_cast<float>((keys[k + 1][c + 1] - keys[k][c + 1]) / width);
        mSegments.push_back(segment);
    }
}
