#include "IMPORT/clsImportRanges.h"

#include <algorithm>

namespace {

/// Comparisons with what is no number are false.
inline bool IsFinite(float x, float most) { return x >= -most && x <= most; }

} // namespace

void ImportRanges_cls::Add(const float* pPos, long posStride, const float* pValue, long valueStride,
                           long long number) {
    for (int axis = 0; axis < 3; ++axis) {
        float low = mLow[axis];
        float high = mHigh[axis];
        long long odd = 0;
        const float* p = pPos + axis;
        for (long long i = 0; i < number; ++i, p += posStride) {
            const float x = *p;
            const bool bFinite = IsFinite(x, kFar);
            low = bFinite && x < low ? x : low;
            high = bFinite && x > high ? x : high;
            odd += bFinite ? 0 : 1;
        }
        mLow[axis] = low;
        mHigh[axis] = high;
        mOdd += odd;
    }
    for (long long i = 0; pValue && i < number; ++i, pValue += valueStride) {
        const float x = *pValue;
        const bool bFinite = IsFinite(x, kFar);
        mValue[0] = bFinite && x < mValue[0] ? x : mValue[0];
        mValue[1] = bFinite && x > mValue[1] ? x : mValue[1];
    }
}

void ImportRanges_cls::EndSnapshot() {
    for (int axis = 0; axis < 3; ++axis) {
        if (mLow[axis] <= mHigh[axis]) {
            mLows[axis].push_back(mLow[axis]);
            mHighs[axis].push_back(mHigh[axis]);
        }
        mLow[axis] = kFar;
        mHigh[axis] = -kFar;
    }
    mOdd = 0;
}

bool ImportRanges_cls::GetBounds(double (*pBounds)[2]) const {
    for (int axis = 0; axis < 3; ++axis) {
        if (mLows[axis].empty()) return false;
        for (int end = 0; end < 2; ++end) {
            std::vector<float> all = end == 0 ? mLows[axis] : mHighs[axis];
            const auto middle = all.begin() + static_cast<long>(all.size() / 2);
            std::nth_element(all.begin(), middle, all.end());
            pBounds[axis][end] = *middle;
        }
    }
    return true;
}
