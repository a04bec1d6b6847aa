#include "IMAGE/BoxFilter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <thread>
#include <vector>

#include "COMMON/OnThreads.h"

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

namespace {

typedef float F4 __attribute__((vector_size(16)));
typedef int I4 __attribute__((vector_size(16)));

/// The rows of a source, asked for by one thread; a row stays as it is until the next one is asked for.
class ByteRows_cls {
public:
    ByteRows_cls(const unsigned char* pSource, int srcW) : mpSource(pSource), mBytes(size_t(srcW) * 3) {}
    const unsigned char* Get(int row) { return mpSource + size_t(row) * mBytes; }
    static bool Halve(int, size_t, unsigned char*) { return false; }

private:
    const unsigned char* mpSource;
    size_t mBytes;
};

class HalfRows_cls {
public:
    HalfRows_cls(const std::uint16_t* pSource, const ShownPart_st& part, int srcW, const HalfBytes& table)
        : mpSource(pSource), mPart(part), mTable(table), mVRow(size_t(srcW) * 3) {}
    // The last row under one target row is often the first under the next.
    const unsigned char* Get(int row) {
        if (row == mRow) return mVRow.data();
        mRow = row;
        if (row >= mPart.mY && row < mPart.mY + mPart.mH)
            ConvertHalfPixels(mpSource + size_t(row - mPart.mY) * size_t(mPart.mW) * 4,
                              mVRow.data() + size_t(mPart.mX) * 3, size_t(mPart.mW), mTable);
        else
            std::fill(mVRow.begin(), mVRow.end(), static_cast<unsigned char>(0));
        return mVRow.data();
    }
    /// Means of two pixels each of this row and of the next, `count` of them; false: not all are there.
    bool Halve(int row, size_t count, unsigned char* pOut) const {
        const bool bThere = mPart.mX == 0 && size_t(mPart.mW) >= 2 * count && row >= mPart.mY &&
                            row + 1 < mPart.mY + mPart.mH;
        if (!bThere) return false;
        const std::uint16_t* const pRow = mpSource + size_t(row - mPart.mY) * size_t(mPart.mW) * 4;
        HalveHalfPixels(pRow, pRow + size_t(mPart.mW) * 4, pOut, count, mTable);
        return true;
    }

private:
    const std::uint16_t* mpSource;
    ShownPart_st mPart;
    const HalfBytes& mTable;
    std::vector<unsigned char> mVRow;
    int mRow = -1;
};

/// Means along a row, from a target pixel on: `pSum` holds a float for each channel of a source pixel, and
/// one more.
void MeanOfColumns(const Spans_st& columns, const float* pSum, size_t first, size_t w, unsigned char* pOut) {
    pOut += 3 * first;
    for (size_t x = first; x < w; ++x, pOut += 3) {
        const float* pIn = pSum + size_t(columns.mFirst[x]) * 3;
        F4 mean = {kRounding, kRounding, kRounding, 0.0f};
        for (int k = columns.mBegin[x]; k < columns.mBegin[x + 1]; ++k, pIn += 3) {
            F4 in;
            std::memcpy(&in, pIn, sizeof in);
            mean += columns.mWeight[size_t(k)] * in;
        }
        const I4 bytes =
            __builtin_convertvector(mean < 255.0f ? mean : F4{255.0f, 255.0f, 255.0f, 255.0f}, I4);
        for (int c = 0; c < 3; ++c)
            pOut[c] = static_cast<unsigned char>(bytes[c]);
    }
}

/// The first spans that are two whole pixels each, one behind the other from the first source pixel on.
size_t CountPairs(const Spans_st& spans) {
    size_t i = 0;
    while (i < spans.mFirst.size() && spans.mFirst[i] == int(2 * i) &&
           spans.mBegin[i + 1] == int(2 * i + 2) && spans.mWeight[2 * i] == 0.5f &&
           spans.mWeight[2 * i + 1] == 0.5f)
        ++i;
    return i;
}

template <class ROWS>
void ResampleRows(ROWS& source, const Spans_st& columns, const Spans_st& rows, size_t sourceW, int first,
                  int end, unsigned char* pTarget) {
    const size_t w = columns.mFirst.size();
    const size_t to =
        std::min(size_t(columns.mFirst.back() + columns.mBegin[w] - columns.mBegin[w - 1]) * 3, sourceW * 3);
    std::vector<float> sum(sourceW * 3 + 1);
    const size_t pairs = CountPairs(columns);
    for (int y = first; y < end; ++y) {
        const auto row = size_t(y);
        // A square of four pixels each, in whole numbers: their mean has no more than two binary places.
        const bool bHalf = rows.mBegin[row + 1] - rows.mBegin[row] == 2 &&
                           rows.mWeight[size_t(rows.mBegin[row])] == 0.5f && pairs > 0 &&
                           source.Halve(rows.mFirst[row], pairs, pTarget + row * w * 3);
        const size_t done = bHalf ? pairs : 0;
        if (done == w) continue;
        const size_t from = size_t(columns.mFirst[done]) * 3; // what lies outside isn't asked for
        std::fill(sum.begin() + std::ptrdiff_t(from), sum.end(), 0.0f);
        for (int k = rows.mBegin[row]; k < rows.mBegin[row + 1]; ++k) {
            const unsigned char* pRow = source.Get(rows.mFirst[row] + k - rows.mBegin[row]);
            const float weight = rows.mWeight[size_t(k)];
            float* pSum = sum.data();
            for (size_t i = from; i < to; ++i)
                pSum[i] += weight * float(pRow[i]);
        }
        MeanOfColumns(columns, sum.data(), done, w, pTarget + row * w * 3);
    }
}

/// Runs of target rows in threads; each row is made as if alone, so their number doesn't show.
template <class MAKE>
void Resample(MAKE makeRows, int srcW, int srcH, unsigned char* pTarget, int w, int h) {
    const MiddlePart_st part = GetMiddlePart(srcW, srcH, w, h);
    const Spans_st columns = MakeSpans(part.mX, part.mScaleX, w, srcW);
    const Spans_st rows = MakeSpans(part.mY, part.mScaleY, h, srcH);
    constexpr double kPixelsOfThread = 250000.0; // of the source; less isn't worth one
    const int cores = std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
    const double pixels = std::min(part.mScaleY * h, double(srcH)) * srcW;
    const int threads =
        std::clamp(static_cast<int>(pixels / kPixelsOfThread), 1, std::clamp(h, 1, std::min(cores, 16)));
    OnThreads(threads, [&](int k) {
        const auto start = [&](int i) { return static_cast<int>(static_cast<long long>(h) * i / threads); };
        auto source = makeRows();
        ResampleRows(source, columns, rows, size_t(srcW), start(k), start(k + 1), pTarget);
    });
}

} // namespace

void ResampleMiddle(const unsigned char* pSource, int srcW, int srcH, unsigned char* pTarget, int w, int h) {
    Resample([&] { return ByteRows_cls(pSource, srcW); }, srcW, srcH, pTarget, w, h);
}

void ResampleHalves(const std::uint16_t* pSource, const ShownPart_st& shown, int srcW, int srcH,
                    const HalfBytes& table, unsigned char* pTarget, int w, int h) {
    Resample([&] { return HalfRows_cls(pSource, shown, srcW, table); }, srcW, srcH, pTarget, w, h);
}
