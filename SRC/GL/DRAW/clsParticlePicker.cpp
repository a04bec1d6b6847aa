#include "GL/DRAW/clsParticlePicker.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "COMMON/DataLoops.h"
#include "COMMON/OnThreads.h"
#include "COMMON/clsMyVector.h"
#include "GL/DRAW/DrawListFilter.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/clsDrawList.h"
#include "GL/DRAW/clsThreadSnapInterpolate.h"
#include "PDATA/ParticleArrays.h"

namespace {

using Reach_st = ParticlePicker_cls::Reach_st;

constexpr long long kRun = 1024;   // particles that are looked at before any of them is looked at closer
constexpr double kSlack = 1e-6;    // of lengths in what is reckoned with floats
constexpr size_t kFirstThin = 256; // hits that a filter looks at first

double Dot(const double* a, const double* b) { return MyVector::GetScalarProduct(a, b); }

double Length(const double* v) { return std::sqrt(Dot(v, v)); }

/// How far outside of what counts each of a run lies; 0 or less inside, no number where its place is none.
/// Without the radii.
MORENTIS_DATA_LOOP
void GetExcess(const float (*__restrict pPos)[3], long long count, const Reach_st& reach,
               float* __restrict pOut) {
    const Reach_st r = reach;
    for (long long k = 0; k < count; ++k) {
        const float x = pPos[k][0] - r.mEye[0], y = pPos[k][1] - r.mEye[1], z = pPos[k][2] - r.mEye[2];
        const float a = std::fabs(r.mRow[0][0] * x + r.mRow[0][1] * y + r.mRow[0][2] * z + r.mShift[0]);
        const float b = std::fabs(r.mRow[1][0] * x + r.mRow[1][1] * y + r.mRow[1][2] * z + r.mShift[1]);
        const float depth = r.mRow[2][0] * x + r.mRow[2][1] * y + r.mRow[2][2] * z + r.mShift[2];
        const float ahead = (depth + std::fabs(depth)) * 0.5f;
        const float across = a > b ? a : b;
        const float aside = across - r.mWidth - r.mWidthAtDepth * ahead;
        const float before = r.mNear - depth, behind = depth - r.mFar;
        const float off = before > behind ? before : behind;
        pOut[k] = aside > off ? aside : off;
    }
}

/// What is no number counts as none.
MORENTIS_DATA_LOOP
void TakeRadii(const float* __restrict pRadius, long long count, float factor, float* __restrict pExcess) {
    for (long long k = 0; k < count; ++k) {
        const float radius = factor * std::fabs(pRadius[k]);
        const float without = pExcess[k], with = without - radius;
        pExcess[k] = radius > 0.0f ? with : without;
    }
}

MORENTIS_DATA_LOOP
bool IsAnyInside(const float* pExcess, long long count) {
    int any = 0;
    for (long long k = 0; k < count; ++k)
        any |= pExcess[k] <= 0.0f ? 1 : 0;
    return any != 0;
}

/// How far a run of particles extends, seen along the ray; without the shift.
struct Extent_st {
    float low[3], high[3];
    float radius;
};

Extent_st GetExtent(const float (*pPos)[3], const float* pRadius, long long count, const Reach_st& r) {
    constexpr float kFar = std::numeric_limits<float>::infinity();
    Extent_st extent = {{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}, 0.0f};
    for (long long i = 0; i < count; ++i) {
        const float x = pPos[i][0] - r.mEye[0], y = pPos[i][1] - r.mEye[1], z = pPos[i][2] - r.mEye[2];
        for (int k = 0; k < 3; ++k) {
            const float v = r.mRow[k][0] * x + r.mRow[k][1] * y + r.mRow[k][2] * z;
            extent.low[k] = v < extent.low[k] ? v : extent.low[k];
            extent.high[k] = v > extent.high[k] ? v : extent.high[k];
        }
        const float radius = pRadius ? r.mRadius * std::fabs(pRadius[i]) : 0.0f;
        extent.radius = radius > extent.radius ? radius : extent.radius;
    }
    return extent;
}

/// May any of a run lie near the ray in a copy that is shifted so?
bool MayBeNear(const Extent_st& run, const double shift[3], const Reach_st& reach) {
    const double deepest = double(run.high[2]) + shift[2], nearest = double(run.low[2]) + shift[2];
    const auto radius = double(run.radius);
    if (!(deepest >= double(reach.mNear) - radius) || !(nearest <= double(reach.mFar) + radius)) return false;
    const double width = double(reach.mWidth) + double(reach.mWidthAtDepth) * std::max(deepest, 0.0) + radius;
    for (int k = 0; k < 2; ++k)
        if (!(double(run.low[k]) + shift[k] <= width && double(run.high[k]) + shift[k] >= -width))
            return false;
    return true;
}

} // namespace

long long PickCloud_st::CountListed() const { return GetListLength(mNumber, mStep, mSortOrder); }

bool PickCloud_st::IsSeen(long long index) const {
    const int c = mpType ? GetParticleClass(mpType[index]) : 0;
    if (!mbDrawn[c]) return false;
    return mbBall[c] || !mpColor || mpColor[index][3] > 0.0f;
}

bool ParticlePicker_cls::Hit_st::operator<(const Hit_st& other) const {
    if (mDepth != other.mDepth) return mDepth < other.mDepth;
    return mIndex != other.mIndex ? mIndex < other.mIndex : mCopy < other.mCopy;
}

ParticlePicker_cls::ParticlePicker_cls(const PickCloud_st& cloud, const PickRay_st& ray,
                                       const double* pMatrix, const Shifts_t& shifts)
    : mCloud(cloud), mRay(ray) {
    static const double kUnit[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::copy_n(pMatrix ? pMatrix : kUnit, 16, mPlace);
    SetRows(mPlace);
    SetCopies(shifts);
    SetReach();
}

void ParticlePicker_cls::SetRows(const double* m) {
    double seen[3][3]; // data to the camera's own axes
    for (int k = 0; k < 3; ++k)
        PullDirection(m, mRay.mBasis[k], seen[k]);
    for (int i = 0; i < 3; ++i) {
        mRow[0][i] = seen[0][i] - mRay.mSlope[0] * seen[2][i];
        mRow[1][i] = seen[1][i] - mRay.mSlope[1] * seen[2][i];
        mRow[2][i] = seen[2][i];
    }
    mEllipse[0] = Dot(seen[0], seen[0]);
    mEllipse[1] = Dot(seen[0], seen[1]);
    mEllipse[2] = Dot(seen[1], seen[1]);
    mStretch = std::sqrt(mEllipse[0] + mEllipse[2] + Dot(seen[2], seen[2])) *
               std::sqrt(1.0 + mRay.mSlope[0] * mRay.mSlope[0] + mRay.mSlope[1] * mRay.mSlope[1]);
    std::fill_n(mOrigin, 3, 0.0);
    mbSolid = UnplacePoint(m, mRay.mEye, mOrigin);
    const double rowMatrix[16] = {mRow[0][0], mRow[1][0], mRow[2][0], 0,          mRow[0][1], mRow[1][1],
                                  mRow[2][1], 0,          mRow[0][2], mRow[1][2], mRow[2][2], 0,
                                  0,          0,          0,          1};
    const double start[3] = {mRay.mOffset[0], mRay.mOffset[1], 0.0};
    const double ahead[3] = {mRay.mOffset[0], mRay.mOffset[1], 1.0};
    double end[3] = {0, 0, 0};
    mbSolid = mbSolid && UnplacePoint(rowMatrix, start, mStart) && UnplacePoint(rowMatrix, ahead, end);
    for (int i = 0; i < 3; ++i) {
        mRowShift[i] = i < 2 ? -mRay.mOffset[i] : 0.0;
        mWay[i] = mbSolid ? end[i] - mStart[i] : 0.0;
    }
    if (mbSolid) return;
    std::fill_n(mOrigin, 3, 0.0);
    const double way[3] = {m[12] - mRay.mEye[0], m[13] - mRay.mEye[1], m[14] - mRay.mEye[2]};
    const double depth = Dot(mRay.mBasis[2], way);
    for (int k = 0; k < 2; ++k)
        mRowShift[k] += Dot(mRay.mBasis[k], way) - mRay.mSlope[k] * depth;
    mRowShift[2] = depth;
}

void ParticlePicker_cls::SetCopies(const Shifts_t& shifts) {
    for (const std::vector<float>& shift : shifts) {
        Copy_st copy{};
        for (size_t i = 0; i < 3; ++i)
            copy.mSum[i] = i < shift.size() ? double(shift[i]) : 0.0;
        for (int k = 0; k < 3; ++k)
            copy.mShift[k] = Dot(mRow[k], copy.mSum);
        mCopies.push_back(copy);
    }
}

void ParticlePicker_cls::SetReach() {
    double pixels = kPixels, factor = 0.0, constant = 0.0, slack = Length(mOrigin);
    for (int c = 0; c < PickCloud_st::kClasses; ++c) {
        if (!mCloud.mbDrawn[c]) continue;
        pixels = std::max(pixels, mCloud.mPixels[c]);
        factor = std::max(factor, std::fabs(double(mCloud.mRadiusFactor[c])));
        constant = std::max(constant, std::fabs(double(mCloud.mRadiusConstant[c])));
    }
    for (const Copy_st& copy : mCopies)
        slack = std::max(slack, Length(copy.mSum));
    for (int k = 0; k < 3; ++k) {
        mReach.mEye[k] = float(mOrigin[k]);
        mReach.mShift[k] = float(mRowShift[k]);
        std::transform(mRow[k], mRow[k] + 3, mReach.mRow[k], [](double v) { return float(v); });
    }
    slack = kSlack *
            (slack * mStretch + std::fabs(mRowShift[0]) + std::fabs(mRowShift[1]) + std::fabs(mRowShift[2]));
    const double most = 1.01 * pixels; // what turns a camera to the place goes by angles, not tangents
    mReach.mWidth = float(most * mRay.mPixel[0] + 1.001 * mStretch * constant + slack);
    mReach.mWidthAtDepth = float(most * mRay.mPixel[1] + kSlack);
    mReach.mRadius = mCloud.mpRadius ? float(1.001 * mStretch * factor) : 0.0f;
    const double before = mStretch * constant + slack;
    mReach.mNear = float(mRay.mNear - before - kSlack * std::fabs(mRay.mNear));
    mReach.mFar = float(std::min(mRay.mFar * (1.0 + kSlack) + before, 3e38));
}

PickedParticle_st ParticlePicker_cls::Find() const {
    const long long number = mCloud.mpPos ? mCloud.CountListed() : 0;
    if (number < 1 || mCopies.empty()) return {};
    const int count = ThreadSnapInterpolate_cls::GetThreadCount(number);
    std::vector<Hits_t> found(static_cast<size_t>(count));
    OnThreads(count, [&](int k) {
        Search(number * k / count, number * (k + 1) / count, found[static_cast<size_t>(k)]);
    });
    Hits_t hits;
    for (const Hits_t& some : found)
        hits.insert(hits.end(), some.begin(), some.end());
    return GetFirstKept(hits);
}

/// Begin and end count those that are drawn.
void ParticlePicker_cls::Search(long long begin, long long end, Hits_t& hits) const {
    if (mCloud.mStep > 1) {
        for (long long i = begin; i < end; ++i)
            for (size_t copy = 0; copy < mCopies.size(); ++copy)
                Test(i * mCloud.mStep, copy, hits);
        return;
    }
    for (long long first = begin; first < end; first += kRun)
        if (mCopies.size() == 1)
            SearchRun(first, std::min(first + kRun, end), hits);
        else
            SearchCopies(first, std::min(first + kRun, end), hits);
}

void ParticlePicker_cls::SearchRun(long long begin, long long end, Hits_t& hits) const {
    Reach_st reach = mReach;
    for (int k = 0; k < 3; ++k)
        reach.mShift[k] += float(mCopies[0].mShift[k]);
    const float* pRadius = reach.mRadius > 0.0f ? mCloud.mpRadius + begin : nullptr;
    float excess[kRun];
    GetExcess(mCloud.mpPos + begin, end - begin, reach, excess);
    if (pRadius) TakeRadii(pRadius, end - begin, reach.mRadius, excess);
    if (!IsAnyInside(excess, end - begin)) return;
    for (long long i = begin; i < end; ++i)
        if (excess[i - begin] <= 0.0f) Test(i, 0, hits);
}

void ParticlePicker_cls::SearchCopies(long long begin, long long end, Hits_t& hits) const {
    const float* pRadius = mReach.mRadius > 0.0f ? mCloud.mpRadius + begin : nullptr;
    const Extent_st extent = GetExtent(mCloud.mpPos + begin, pRadius, end - begin, mReach);
    for (size_t copy = 0; copy < mCopies.size(); ++copy) {
        double shift[3];
        for (int k = 0; k < 3; ++k)
            shift[k] = mCopies[copy].mShift[k] + mRowShift[k];
        if (!MayBeNear(extent, shift, mReach)) continue;
        for (long long i = begin; i < end; ++i)
            Test(i, copy, hits);
    }
}

// Without a filter only the best hit is kept; with one it may be left out.
void ParticlePicker_cls::Test(long long index, size_t copy, Hits_t& hits) const {
    const double limit =
        mCloud.mpCFilter || hits.empty() ? std::numeric_limits<double>::infinity() : hits.front().mDepth;
    Hit_st hit{0.0, static_cast<int>(index), static_cast<long long>(copy)};
    if (!Meet(index, mCopies[copy], limit, &hit.mDepth)) return;
    if (mCloud.mpCFilter || hits.empty())
        hits.push_back(hit);
    else if (hit < hits.front())
        hits.front() = hit;
}

/// Does the ray meet a particle, or pass it within some pixels, no deeper than `limit`?
bool ParticlePicker_cls::Meet(long long index, const Copy_st& copy, double limit, double* pDepth) const {
    const int c = mCloud.mpType ? GetParticleClass(mCloud.mpType[index]) : 0;
    if (!mCloud.mbDrawn[c]) return false; // the quick way out; all of IsSeen comes behind the place
    double point[3], seen[3];             // from the origin, data units; right of the ray, above it, depth
    for (int i = 0; i < 3; ++i)
        point[i] = double(mCloud.mpPos[index][i]) + copy.mSum[i] - mOrigin[i];
    for (int k = 0; k < 3; ++k)
        seen[k] = Dot(mRow[k], point) + mRowShift[k];
    const auto factor = double(mCloud.mRadiusFactor[c]);
    const double own = mCloud.mpRadius && factor != 0.0 ? factor * double(mCloud.mpRadius[index]) : 0.0;
    const double radius = std::fabs(own + double(mCloud.mRadiusConstant[c]));
    if (!std::isfinite(radius)) return false; // nor is it drawn
    if (!(seen[2] - radius * mStretch <= limit)) return false;
    if (!mCloud.IsSeen(index)) return false;
    if (mCloud.mbBall[c] && mbSolid && MeetBall(point, radius, pDepth)) return *pDepth <= limit;
    if (!(seen[2] >= mRay.mNear && seen[2] <= mRay.mFar && seen[2] <= limit)) return false;
    *pDepth = seen[2];
    if (!mCloud.mbBall[c] && IsInDisc(seen, radius)) return true;
    return IsWithin(std::max(kPixels, mCloud.mPixels[c]), seen, point);
}

bool ParticlePicker_cls::MeetBall(const double point[3], double radius, double* pDepth) const {
    double way[3];
    for (int i = 0; i < 3; ++i)
        way[i] = mStart[i] - point[i];
    const double square = Dot(mWay, mWay);
    const double middle = -Dot(way, mWay) / square;
    for (int i = 0; i < 3; ++i)
        way[i] += middle * mWay[i];
    const double rest = radius * radius - Dot(way, way);
    if (!(rest >= 0.0)) return false;
    const double half = std::sqrt(rest / square);
    if (middle + half < mRay.mNear || middle - half > mRay.mFar) return false;
    *pDepth = std::max(middle - half, mRay.mNear); // the eye may be inside
    return true;
}

bool ParticlePicker_cls::IsInDisc(const double across[2], double radius) const {
    const double determinant = mEllipse[0] * mEllipse[2] - mEllipse[1] * mEllipse[1];
    if (!(determinant > 0.0) || !(radius > 0.0)) return false;
    const double square = mEllipse[2] * across[0] * across[0] - 2.0 * mEllipse[1] * across[0] * across[1] +
                          mEllipse[0] * across[1] * across[1];
    return square <= radius * radius * determinant;
}

/// Is a particle so many pixels from the place at most?
bool ParticlePicker_cls::IsWithin(double most, const double seen[3], const double point[3]) const {
    const double pixel = mRay.mPixel[0] + mRay.mPixel[1] * seen[2];
    if (!(pixel > 0.0)) return false;
    const double pixels = std::hypot(seen[0], seen[1]) / pixel;
    if (!mRay.mDistance) return pixels <= most;
    if (!(pixels <= 1.02 * most)) return false;
    double scene[3];
    for (int i = 0; i < 3; ++i) {
        scene[i] = mPlace[12 + i];
        for (int k = 0; k < 3; ++k)
            scene[i] += mPlace[4 * k + i] * (point[k] + mOrigin[k]);
    }
    return mRay.mDistance(scene) <= most;
}

// Filters look at a few at a time: most often the nearest stays.
PickedParticle_st ParticlePicker_cls::GetFirstKept(Hits_t& hits) const {
    std::sort(hits.begin(), hits.end());
    size_t some = kFirstThin;
    for (size_t first = 0; first < hits.size(); first += some, some *= 4) {
        const size_t last = std::min(first + some, hits.size());
        if (!mCloud.mpCFilter) return {hits[0].mIndex, hits[0].mCopy, hits[0].mDepth};
        DrawList_t list;
        for (size_t i = first; i < last; ++i)
            list.push_back({hits[i].mIndex, float(i - first), 1.0f});
        mCloud.mpCFilter->Thin(list, mCloud.mNumber, mCloud.mpPos, mCloud.mTime);
        if (list.empty()) continue;
        const Hit_st& hit = hits[first + static_cast<size_t>(list.front().mKey)];
        return {hit.mIndex, hit.mCopy, hit.mDepth};
    }
    return {};
}
