#include "IMAGE/BoxFilter.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr double kInside = 0.001; // an end beyond the picture is put this much before its edge
// A mean of equal numbers must not fall below them by a rounding.
constexpr float kRounding = 0.001f;

/// For each target pixel along one axis, the source pixels under it with weights that add up to 1.
struct Spans_st {
    std::vector<int> mFirst; ///< source pixel of the first weight
    std::vector<int> mBegin; ///< first weight; one entry more than there are pixels
    std::vector<float> mWeight;
};

void AddSpan(Spans_st& spans, double start, double end, int size) {
    end = std::min(end, size - kInside);
    const int first = std::clamp(int(std::floor(start)), 0, size - 1);
    const int last = std::clamp(int(std::ceil(end)) - 1, first, size - 1);
    std::vector<double> weight(size_t(last - first) + 1, 1.0);
    weight.front() -= start - first;
    weight.back() -= last + 1 - end;
    double sum = 0.0;
    for (const double w : weight)
        sum += w;
    spans.mFirst.push_back(first);
    for (const double w : weight)
        spans.mWeight.push_back(sum > 0.0 ? float(w / sum) : 1.0f / float(weight.size()));
    spans.mBegin.push_back(int(spans.mWeight.size()));
}

Spans_st MakeSpans(double offset, double scale, int count, int size) {
    Spans_st spans;
    spans.mBegin.push_back(0);
    for (int i = 0; i < count; ++i)
        AddSpan(spans, offset + i * scale, offset + i * scale + scale, size);
    return spans;
}

} // namespace

MiddlePart_st GetMiddlePart(int srcW, int srcH, int w, int h) {
    if (srcW != srcH) return {0.0, 0.0, double(srcW) / w, double(srcH) / h};
    const double scale = double(srcW) / std::max(w, h);
    if (w >= h) return {0.0, (1.0 - double(h) / w) / 2.0 * srcH, scale, scale};
    return {(1.0 - double(w) / h) / 2.0 * srcW, 0.0, scale, scale};
}

void ResampleMiddle(const unsigned char* pSource, int srcW, int srcH, unsigned char* pTarget, int w, int h) {
    const MiddlePart_st part = GetMiddlePart(srcW, srcH, w, h);
    const Spans_st columns = MakeSpans(part.mX, part.mScaleX, w, srcW);
    const Spans_st rows = MakeSpans(part.mY, part.mScaleY, h, srcH);
    const size_t rowBytes = size_t(srcW) * 3;
    std::vector<float> sum(rowBytes);
    for (int y = 0; y < h; ++y) {
        const size_t row = size_t(y);
        std::fill(sum.begin(), sum.end(), 0.0f);
        const unsigned char* pRow = pSource + size_t(rows.mFirst[row]) * rowBytes;
        for (int k = rows.mBegin[row]; k < rows.mBegin[row + 1]; ++k, pRow += rowBytes) {
            const float weight = rows.mWeight[size_t(k)];
            for (size_t i = 0; i < rowBytes; ++i)
                sum[i] += weight * float(pRow[i]);
        }
        unsigned char* pOut = pTarget + row * size_t(w) * 3;
        for (size_t x = 0; x < size_t(w); ++x, pOut += 3) {
            const float* pIn = sum.data() + size_t(columns.mFirst[x]) * 3;
            float mean[3] = {kRounding, kRounding, kRounding};
            for (int k = columns.mBegin[x]; k < columns.mBegin[x + 1]; ++k, pIn += 3)
                for (int c = 0; c < 3; ++c)
                    mean[c] += columns.mWeight[size_t(k)] * pIn[c];
            for (int c = 0; c < 3; ++c)
                pOut[c] = static_cast<unsigned char>(std::min(mean[c], 255.0f));
        }
    }
}
