// How far positions and values reach, snapshot by snapshot.
#pragma once

#include <vector>

class ImportRanges_cls {
public:
    /// A snapshot, or a part of one, of strided floats (strides in floats). What isn't finite is counted and
    /// left out. `pValue` may be null.
    void Add(const float* pPos, long posStride, const float* pValue, long valueStride, long long number);
    /// What was added since the last call is a whole snapshot.
    void EndSnapshot();

    /// Median of the snapshots' bounds, so that a late stray doesn't make all else tiny; false: no particles.
    bool GetBounds(double (*pBounds)[2]) const;
    bool HasValues() const { return mValue[0] <= mValue[1]; }
    float GetLeastValue() const { return mValue[0]; }
    float GetMostValue() const { return mValue[1]; }
    /// Positions that aren't finite, of the snapshot since the last EndSnapshot.
    long long GetOdd() const { return mOdd; }

private:
    static constexpr float kFar = 3.4028234e38f;
    float mLow[3] = {kFar, kFar, kFar};
    float mHigh[3] = {-kFar, -kFar, -kFar};
    float mValue[2] = {kFar, -kFar};
    long long mOdd = 0;
    std::vector<float> mLows[3];
    std::vector<float> mHighs[3];
};
