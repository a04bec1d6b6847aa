#include "PDATA/SnapshotRecords.h"

#include <algorithm>
#include <cstring>

#include "PDATA/FixedText.h"
#include "PDATA/SnapshotWriter.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr long long kPiece = 1024; // records whose columns stay in the first-level cache

// The sum that the views draw (clsThreadSnapInterpolate.cpp): at the snapshot's own time the stored values.
class Evaluator_cls {
public:
    explicit Evaluator_cls(const SnapshotSource_st& source)
        : mArrays(source.mArrays), mDT(static_cast<float>(source.mDT)), mbMoves(!(mDT == 0.0f)) {}

    void Position(long long i, float* pOut) const {
        for (int c = 0; c < 3; ++c)
            pOut[c] = mbMoves ? mArrays.mpPos[i][c] + mArrays.mpVel[i][c] * mDT : mArrays.mpPos[i][c];
    }
    float Radius(long long i) const { return Moved(mArrays.mpRadius, mArrays.mpDRadius, i); }
    float Value(long long i) const { return Moved(mArrays.mpValue1, mArrays.mpDValue1, i); }
    const float* Velocity(long long i) const { return mArrays.mpVel[i]; }
    int ID(long long i) const { return mArrays.mpID ? mArrays.mpID[i] : static_cast<int>(i); }
    int Type(long long i) const { return mArrays.mpType[i]; }

private:
    float Moved(const float* pValue, const float* pSlope, long long i) const {
        return mbMoves && pSlope ? pValue[i] + pSlope[i] * mDT : pValue[i];
    }

    const ParticleArrays_st& mArrays;
    float mDT;
    bool mbMoves;
};

/// One item of the records begin to end; pOut is where the first one's stands, `record` bytes to the next.
void PutColumn(char* pOut, size_t record, int code, const Evaluator_cls& values,
               const SnapshotSource_st& source, long long begin, long long end) {
    const auto each = [&](auto get) {
        if (source.mpKept)
            for (long long k = begin; k < end; ++k, pOut += record)
                get(source.GetParticle(k), pOut);
        else
            for (long long k = begin; k < end; ++k, pOut += record)
                get(k * source.mStep, pOut);
    };
    const auto put = [](char* pTo, auto value) { std::memcpy(pTo, &value, sizeof value); };
    switch (code) {
    case BODY_XYZ:
        return each([&](long long i, char* pTo) {
            float pos[3];
            values.Position(i, pos);
            std::memcpy(pTo, pos, sizeof pos);
        });
    case BODY_VXYZ:
        return each([&](long long i, char* pTo) { std::memcpy(pTo, values.Velocity(i), 3 * sizeof(float)); });
    case BODY_RADIUS:
        return each([&](long long i, char* pTo) { put(pTo, values.Radius(i)); });
    case BODY_ID:
        return each([&](long long i, char* pTo) { put(pTo, values.ID(i)); });
    case BODY_TYPE:
        return each([&](long long i, char* pTo) { put(pTo, values.Type(i)); });
    case BODY_VALUE1:
        return each([&](long long i, char* pTo) { put(pTo, values.Value(i)); });
    default: { // dummies; others have no bytes
        const auto length = static_cast<size_t>(GrammerBase_cls::GetBodyItemByte(code));
        if (length > 0) each([&](long long, char* pTo) { std::memset(pTo, 0, length); });
    }
    }
}

char* PutBlank(char* pOut) {
    *pOut = ' ';
    return pOut + 1;
}

char* PutThree(char* pOut, const float* pValue) {
    for (int c = 0; c < 3; ++c)
        pOut = PutBlank(PutFixed(pOut, pValue[c]));
    return pOut;
}

char* PutItem(char* pOut, int code, const Evaluator_cls& values, long long i) {
    float pos[3];
    switch (code) {
    case BODY_XYZ:
        values.Position(i, pos);
        return PutThree(pOut, pos);
    case BODY_VXYZ:
        return PutThree(pOut, values.Velocity(i));
    case BODY_RADIUS:
        return PutBlank(PutFixed(pOut, values.Radius(i)));
    case BODY_ID:
        return PutBlank(PutInteger(pOut, values.ID(i)));
    case BODY_TYPE:
        return PutBlank(PutInteger(pOut, values.Type(i)));
    case BODY_VALUE1:
        return PutBlank(PutFixed(pOut, values.Value(i)));
    default:
        // A single zero whatever the width: such a file doesn't read back with the same grammar.
        return IsBodyDummy(code) ? PutBlank(PutInteger(pOut, 0)) : pOut;
    }
}

} // namespace

size_t GetBinaryRecord(const std::vector<int>& body) {
    size_t bytes = 0;
    for (const int code : body)
        bytes += static_cast<size_t>(GrammerBase_cls::GetBodyItemByte(code));
    return bytes;
}

size_t GetLongestTextRecord(const std::vector<int>& body) {
    return body.size() * 3 * (kLongestFixed + 1) + 1; // three numbers with a blank each, and the line end
}

size_t PutBinaryRecords(char* pOut, const std::vector<int>& body, const SnapshotSource_st& source,
                        long long begin, long long end) {
    const Evaluator_cls values(source);
    const size_t record = GetBinaryRecord(body);
    if (record == 0) return 0;
    char* pRecord = pOut;
    for (long long piece = begin; piece < end; piece += kPiece) {
        const long long pieceEnd = std::min(piece + kPiece, end);
        size_t offset = 0;
        for (const int code : body) {
            PutColumn(pRecord + offset, record, code, values, source, piece, pieceEnd);
            offset += static_cast<size_t>(GrammerBase_cls::GetBodyItemByte(code));
        }
        pRecord += static_cast<size_t>(pieceEnd - piece) * record;
    }
    return static_cast<size_t>(pRecord - pOut);
}

size_t PutTextRecords(char* pOut, const std::vector<int>& body, const SnapshotSource_st& source,
                      long long begin, long long end) {
    const Evaluator_cls values(source);
    char* pTo = pOut;
    for (long long k = begin; k < end; ++k) {
        for (const int code : body)
            pTo = PutItem(pTo, code, values, source.GetParticle(k));
        *pTo++ = '\n';
    }
    return static_cast<size_t>(pTo - pOut);
}
