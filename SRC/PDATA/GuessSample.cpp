#include "PDATA/GuessSample.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>

#include "COMMON/clsSplitPath.h"
#include "PDATA/FileStart.h"
#include "PDATA/SnapshotHeader.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr size_t kFirstBytes = 2 << 20;  // of the first records
constexpr size_t kPieceBytes = 16 << 10; // of each piece of the spread sample
constexpr long long kPieces = 32;        // from all over the file
constexpr size_t kMaxHeadLine = 1024;    // of what is kept of a header's line
constexpr size_t kMinForQuantiles = 200; // fewer particles: all of them count
constexpr double kQuantile = 0.01;       // at each end of an axis, left out as strays
constexpr size_t kMaxColumns = 16 * 10;  // a list of sixteen Dummy*10

/// Where in a record its numbers stand, counted in numbers: words of four bytes, or columns.
struct Layout_st {
    int mPos = -1, mRadius = -1, mId = -1, mType = -1;
    int mCount = 0;
};

Layout_st MakeLayout(const std::vector<int>& body) {
    Layout_st layout;
    for (const int code : body) {
        if (code == BODY_XYZ) layout.mPos = layout.mCount;
        if (code == BODY_RADIUS) layout.mRadius = layout.mCount;
        if (code == BODY_ID) layout.mId = layout.mCount;
        if (code == BODY_TYPE) layout.mType = layout.mCount;
        layout.mCount += GrammerBase_cls::GetBodyItemByte(code) / 4;
    }
    return layout;
}

struct Record_st {
    GuessSample_st::Position mPos = {0, 0, 0};
    float mRadius = 0;
    int mId = 0, mType = 0;
};

template <class T>
T Word(const char* pRecord, int index) {
    T value;
    std::memcpy(&value, pRecord + 4 * index, sizeof value);
    return value;
}

Record_st FromBinary(const char* pRecord, const Layout_st& layout) {
    Record_st record;
    for (int k = 0; k < 3; ++k)
        record.mPos[static_cast<size_t>(k)] = Word<float>(pRecord, layout.mPos + k);
    if (layout.mRadius >= 0) record.mRadius = Word<float>(pRecord, layout.mRadius);
    if (layout.mId >= 0) record.mId = Word<int>(pRecord, layout.mId);
    if (layout.mType >= 0) record.mType = Word<int>(pRecord, layout.mType);
    return record;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

// The numbers of a line; none where a column isn't one.
std::optional<Record_st> FromText(const char* pLine, const char* pEnd, const Layout_st& layout) {
    std::array<double, kMaxColumns> numbers;
    for (int i = 0; i < layout.mCount; ++i) {
        while (pLine < pEnd && IsBlank(*pLine))
            ++pLine;
        if (pLine < pEnd && *pLine == '+') ++pLine;
        const auto scanned = std::from_chars(pLine, pEnd, numbers[static_cast<size_t>(i)]);
        if (scanned.ec != std::errc()) return std::nullopt;
        pLine = scanned.ptr;
    }
    const auto at = [&numbers](int index) { return numbers[static_cast<size_t>(index)]; };
    const auto whole = [&at](int index) {
        const double number = at(index);
        return std::isnan(number) ? 0 : static_cast<int>(std::clamp(number, -2147483648.0, 2147483647.0));
    };
    Record_st record;
    for (int k = 0; k < 3; ++k)
        record.mPos[static_cast<size_t>(k)] = static_cast<float>(at(layout.mPos + k));
    if (layout.mRadius >= 0) record.mRadius = static_cast<float>(at(layout.mRadius));
    if (layout.mId >= 0) record.mId = whole(layout.mId);
    if (layout.mType >= 0) record.mType = whole(layout.mType);
    return record;
}

/// Reads one file into its sample.
class Sampler_cls {
public:
    Sampler_cls(const GrammerBase_cls& grammar, const wxString& path, GuessSample_st* pSample)
        : mbText(grammar.IsText()), mLayout(MakeLayout(grammar.GetBodyGrammer())), mPath(path),
          mSample(*pSample) {
        mRecordBytes = static_cast<size_t>(grammar.GetRecordByte());
        mStart = ReadFileStart(path, kFirstBytes);
        mBegin =
            mbText ? TakeHeadLines(grammar.GetHeaderLine()) : static_cast<size_t>(grammar.GetHeaderByte());
    }

    void ReadFirst() {
        if (mBegin < mStart.mBytes.size()) {
            const size_t length = mStart.mBytes.size() - mBegin;
            const bool bCut = static_cast<long long>(mStart.mBytes.size()) < mStart.mSize;
            const auto keep = [this](const Record_st& record) { Keep(record); };
            EachRecord(&mStart.mBytes[mBegin], length, bCut, keep);
        }
        mSample.mbWhole = mSample.mPos.size() >= static_cast<size_t>(mSample.mNumber);
    }

    void ReadSpread() {
        mSample.mSpread = mSample.mPos;
        if (mSample.mbWhole || static_cast<long long>(mStart.mBytes.size()) >= mStart.mSize) return;
        std::ifstream file(NarrowPath(mPath), std::ios::binary);
        long long end = mStart.mSize;
        const long long begin = static_cast<long long>(mBegin);
        const long long record = static_cast<long long>(mRecordBytes);
        if (!mbText) end = std::min(end, begin + record * mSample.mNumber);
        const long long step = (end - begin) / kPieces;
        if (!file || step <= static_cast<long long>(kPieceBytes)) return;
        mSample.mSpread.clear();
        for (long long k = 0; k < kPieces; ++k) {
            const long long offset = k * step;
            ReadPiece(file, begin + (mbText ? offset : offset / record * record));
        }
    }

private:
    // The lines of the header; where the first particle's begins.
    size_t TakeHeadLines(int lines) {
        size_t pos = 0;
        for (int i = 0; i < lines; ++i) {
            const size_t end = mStart.mBytes.find('\n', pos);
            if (end == std::string::npos) return mStart.mBytes.size();
            mSample.mHeadLines.push_back(mStart.mBytes.substr(pos, std::min(end - pos, kMaxHeadLine)));
            pos = end + 1;
        }
        return pos;
    }

    template <class TAKE>
    void EachRecord(const char* pBytes, size_t length, bool bCut, const TAKE& take) const {
        if (!mbText) {
            for (size_t pos = 0; pos + mRecordBytes <= length; pos += mRecordBytes)
                take(FromBinary(pBytes + pos, mLayout));
            return;
        }
        const char* end = pBytes + length;
        for (const char* line = pBytes; line < end;) {
            const char* stop = std::find(line, end, '\n');
            if (stop == end && bCut) return;
            if (const auto record = FromText(line, stop, mLayout)) take(*record);
            line = stop + 1;
        }
    }

    void Keep(const Record_st& record) {
        if (mSample.mPos.size() >= static_cast<size_t>(mSample.mNumber)) return;
        mSample.mPos.push_back(record.mPos);
        if (mLayout.mId >= 0) mSample.mId.push_back(record.mId);
        if (mLayout.mType >= 0) mSample.mType.push_back(record.mType);
        if (record.mRadius > mSample.mMaxRadius) mSample.mMaxRadius = record.mRadius;
    }

    void ReadPiece(std::ifstream& file, long long offset) {
        std::string bytes(kPieceBytes, '\0');
        file.clear();
        file.seekg(offset);
        file.read(&bytes[0], static_cast<std::streamsize>(bytes.size()));
        const size_t length = static_cast<size_t>(std::max<std::streamsize>(file.gcount(), 0));
        size_t first = 0;
        if (mbText) { // in the middle of a line
            const size_t newline = bytes.find('\n');
            if (newline == std::string::npos || newline >= length) return;
            first = newline + 1;
        }
        EachRecord(&bytes[first], length - first, true,
                   [this](const Record_st& record) { mSample.mSpread.push_back(record.mPos); });
    }

    const bool mbText;
    const Layout_st mLayout;
    const wxString mPath;
    GuessSample_st& mSample;
    FileStart_st mStart;
    size_t mRecordBytes = 0;
    size_t mBegin = 0; ///< of the first record
};

bool IsFinite(const GuessSample_st::Position& pos) {
    return std::isfinite(pos[0]) && std::isfinite(pos[1]) && std::isfinite(pos[2]);
}

} // namespace

GuessSample_st ReadGuessSample(const GrammerBase_cls& grammar, const wxString& path) {
    GuessSample_st sample;
    if (!grammar.IsItemExistBody(BODY_XYZ) || grammar.GetRecordByte() <= 0) return sample;
    const SnapshotHeader_st header = ReadSnapshotHeader(grammar, path);
    if (!header.mbOk) return sample;
    sample.mbOk = true;
    sample.mNumber = header.mNumber;
    Sampler_cls sampler(grammar, path, &sample);
    sampler.ReadFirst();
    sampler.ReadSpread();
    return sample;
}

double GetMeanDistance(const std::vector<GuessSample_st::Position>& positions, long long number) {
    std::vector<GuessSample_st::Position> finite;
    std::copy_if(positions.begin(), positions.end(), std::back_inserter(finite), IsFinite);
    if (finite.size() < 2 || number < 2) return 0;
    const size_t strays = finite.size() < kMinForQuantiles
                              ? 0
                              : static_cast<size_t>(kQuantile * static_cast<double>(finite.size()));
    float low[3], high[3];
    for (size_t k = 0; k < 3; ++k) {
        std::vector<float> axis;
        for (const auto& pos : finite)
            axis.push_back(pos[k]);
        const auto first = axis.begin() + static_cast<std::ptrdiff_t>(strays);
        std::nth_element(axis.begin(), first, axis.end());
        low[k] = *first;
        const auto last = axis.end() - 1 - static_cast<std::ptrdiff_t>(strays);
        std::nth_element(axis.begin(), last, axis.end());
        high[k] = *last;
    }
    const auto inside = std::count_if(finite.begin(), finite.end(), [&](const auto& pos) {
        for (size_t k = 0; k < 3; ++k)
            if (pos[k] < low[k] || pos[k] > high[k]) return false;
        return true;
    });
    const double share =
        static_cast<double>(std::max<std::ptrdiff_t>(inside, 1)) / static_cast<double>(finite.size());
    const double count = share * static_cast<double>(number);
    double extent[3];
    for (size_t k = 0; k < 3; ++k)
        extent[k] = static_cast<double>(high[k]) - static_cast<double>(low[k]);
    std::sort(extent, extent + 3, std::greater<>());
    for (int axes = 3; axes > 1; --axes) {
        double volume = 1;
        for (int k = 0; k < axes; ++k)
            volume *= extent[k];
        const double distance = std::pow(volume / count, 1.0 / axes);
        if (distance > 0 && extent[axes - 1] >= distance) return distance;
    }
    return extent[0] / count;
}
