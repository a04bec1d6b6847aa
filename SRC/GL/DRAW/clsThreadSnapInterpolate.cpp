#include "GL/DRAW/clsThreadSnapInterpolate.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "COMMON/DataLoops.h"

namespace {

constexpr long long kPiece = 1024;        // particles whose values stay in the first-level cache
constexpr long long kStreamFrom = 200000; // below this the results fit the caches and are read from there

inline int ClassOf(unsigned char type) { return type < ThreadSnapInterpolate_cls::kClassNumber ? type : 0; }

// One bit for each class that occurs.
unsigned ClassesOf(const unsigned char* pType, long long begin, long long end) {
    unsigned seen = 0;
    for (long long i = begin; i < end; ++i)
        seen |= 1u << ClassOf(pType[i]);
    return seen;
}

MORENTIS_DATA_LOOP
void Evaluate(float* pOut, const float* pIn, const float* pSlope, float dt, long long count) {
    for (long long k = 0; k < count; ++k)
        pOut[k] = pIn[k] + pSlope[k] * dt;
}

// The same past the caches, which spares reading the target before it is written.
void EvaluateStream(float* pOut, const float* pIn, const float* pSlope, float dt, long long count) {
    long long k = 0;
#ifdef __SSE2__
    for (; k < count && reinterpret_cast<uintptr_t>(pOut + k) % 16 != 0; ++k)
        pOut[k] = pIn[k] + pSlope[k] * dt;
    const __m128 wide = _mm_set1_ps(dt);
    for (; k + 4 <= count; k += 4)
        _mm_stream_ps(pOut + k,
                      _mm_add_ps(_mm_loadu_ps(pIn + k), _mm_mul_ps(_mm_loadu_ps(pSlope + k), wide)));
#endif
    Evaluate(pOut + k, pIn + k, pSlope + k, dt, count - k);
}

void CopyOrEvaluate(float* pOut, const float* pIn, const float* pSlope, float dt, long long count,
                    bool bStream) {
    if (!pSlope)
        std::memcpy(pOut, pIn, static_cast<size_t>(count) * sizeof(float));
    else if (bStream)
        EvaluateStream(pOut, pIn, pSlope, dt, count);
    else
        Evaluate(pOut, pIn, pSlope, dt, count);
}

inline void StoreColor(float* pOut, const float* pColor) {
#ifdef __SSE2__
    _mm_stream_ps(pOut, _mm_loadu_ps(pColor));
#else
    std::memcpy(pOut, pColor, 4 * sizeof(float));
#endif
}

inline void Fence() {
#ifdef __SSE2__
    _mm_sfence(); // streamed stores are not ordered by the thread's end alone
#endif
}

} // namespace

int ThreadSnapInterpolate_cls::GetThreadCount(long long number) {
    if (number < 100001) return 1;
    if (number < 1000001) return 2;
    return number <= 10000000 ? 3 : 4;
}

bool ThreadSnapInterpolate_cls::IsConstant() const {
    return std::all_of(std::begin(mSource), std::end(mSource),
                       [](const SnapColorSource_st& source) { return source.mCurve.IsConstant(); });
}

void ThreadSnapInterpolate_cls::InterpolateDataLinear(long long begin, long long end) const {
    if (mStep != 1) {
        EvaluateStepped((begin + mStep - 1) / mStep * mStep, end);
        return;
    }
    for (long long piece = begin; piece < end; piece += kPiece)
        EvaluateAll(piece, std::min(piece + kPiece, end), end - begin >= kStreamFrom);
    Fence();
}

void ThreadSnapInterpolate_cls::EvaluateAll(long long begin, long long end, bool bStream) const {
    const long long count = end - begin;
    const auto slope = [begin](const float* pSlope) { return pSlope ? pSlope + begin : nullptr; };
    CopyOrEvaluate(mpPosOut[begin], mpPos[begin], mpVel ? mpVel[begin] : nullptr, mDT, 3 * count, bStream);
    // Radius or value drive the colours right below: these are kept at hand.
    CopyOrEvaluate(mpRadiusOut + begin, mpRadius + begin, slope(mpDRadius), mDT, count, false);
    CopyOrEvaluate(mpValue1Out + begin, mpValue1 + begin, slope(mpDValue1), mDT, count, false);
    if (IsConstant())
        ColorConstant(begin, end);
    else
        ColorAll(begin, end);
}

void ThreadSnapInterpolate_cls::EvaluateStepped(long long begin, long long end) const {
    for (long long i = begin; i < end; i += mStep) {
        for (int c = 0; c < 3; ++c)
            mpPosOut[i][c] = mpVel ? mpPos[i][c] + mpVel[i][c] * mDT : mpPos[i][c];
        mpRadiusOut[i] = mpDRadius ? mpRadius[i] + mpDRadius[i] * mDT : mpRadius[i];
        mpValue1Out[i] = mpDValue1 ? mpValue1[i] + mpDValue1[i] * mDT : mpValue1[i];
        const SnapColorSource_st& source = mSource[ClassOf(mpType[i])];
        source.mCurve.Get(mpColorOut[i], source.mpValue[i]);
    }
}

// First where on its curve each particle would stand in each class that occurs, then the colours.
void ThreadSnapInterpolate_cls::ColorAll(long long begin, long long end) const {
    float t[kClassNumber][kPiece];
    int segment[kClassNumber][kPiece];
    const ColorSegments_cls::Segment_st* pTable[kClassNumber];
    const unsigned seen = ClassesOf(mpType, begin, end);
    for (int k = 0; k < kClassNumber; ++k) {
        pTable[k] = mSource[k].mCurve.GetSegments();
        if ((seen >> k & 1u) != 0)
            mSource[k].mCurve.Locate(mSource[k].mpValue + begin, end - begin, t[k], segment[k]);
    }
    const auto store = [&](auto cubic) {
        for (long long i = begin; i < end; ++i) {
            alignas(16) float color[4];
            const int k = ClassOf(mpType[i]);
            ColorSegments_cls::GetAt<decltype(cubic)::value>(color, pTable[k], segment[k][i - begin],
                                                             t[k][i - begin]);
            StoreColor(mpColorOut[i], color);
        }
    };
    if (std::any_of(std::begin(mSource), std::end(mSource),
                    [](const SnapColorSource_st& source) { return source.mCurve.IsCubic(); }))
        store(std::true_type());
    else
        store(std::false_type());
}

void ThreadSnapInterpolate_cls::ColorConstant(long long begin, long long end) const {
    alignas(16) float color[kClassNumber][4];
    for (int k = 0; k < kClassNumber; ++k)
        mSource[k].mCurve.Get(color[k], 0.0f);
    for (long long i = begin; i < end; ++i)
        StoreColor(mpColorOut[i], color[ClassOf(mpType[i])]);
}
