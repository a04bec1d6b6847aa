// Sticks as text of a scene for POV-Ray.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "BOND/clsPovObjectSticks.h"
#include "COMMON/OnThreads.h"
#include "POVRAY/TEXT/PovNumber.h"

namespace {

constexpr int kSlices = 4;
constexpr int kMasks = 8;
constexpr size_t kFewSticks = 20000; // that aren't worth a thread
constexpr size_t kMostVector = 3 * kMostFixed + 4;
using Slice_t = std::array<std::string, kMasks>;

/// "x, y, z"; empty where that is no place.
size_t GetCoordString(const float* place, int decimals, char* pText) {
    char* p = pText;
    for (int i = 0; i < 3; ++i) {
        if (!std::isfinite(place[i])) return 0;
        if (i > 0) {
            *p++ = ',';
            *p++ = ' ';
        }
        p = PutFixed(p, place[i], decimals);
    }
    return static_cast<size_t>(p - pText);
}

class SlicesWriter_cls {
public:
    SlicesWriter_cls(const PovObjectSticks_cls& sticks, const float (*pPos)[3], unsigned step, int decimals)
        : mSticks(sticks), mpPos(pPos), mStep(step), mDecimals(decimals),
          mbWeights(!sticks.IsConstantFactor()) {}

    void Write(size_t first, size_t end, Slice_t* pSlice) const {
        for (size_t k = first; k < end; ++k) {
            const PovObjectSticks_cls::Crossing_st way = mSticks.GetCrossing(k);
            const unsigned mask = way.first | way.second;
            const bool bThere = mSticks.mvIndexA[k] % mStep == 0 && mSticks.mvIndexB[k] % mStep == 0;
            if (mask < kMasks && bThere) Add(k, &(*pSlice)[mask]);
        }
    }

private:
    void Add(size_t k, std::string* pLines) const {
        float ends[2][3];
        mSticks.GetEnds(k, mpPos, ends[0], ends[1]);
        char text[2][kMostVector];
        size_t length[2];
        for (int end = 0; end < 2; ++end) {
            length[end] = GetCoordString(ends[end], mDecimals, text[end]);
            if (length[end] == 0) return;
        }
        // POV-Ray refuses a cylinder that ends where it begins.
        if (length[0] == length[1] && std::memcmp(text[0], text[1], length[0]) == 0) return;
        pLines->append("CY(<").append(text[0], length[0]).append(">,<").append(text[1], length[1]);
        if (mbWeights) {
            char weight[kMostFixed];
            pLines->append(">,").append(weight, PutFixed(weight, mSticks.GetFactor(k), 3)).append(")\n");
        } else
            pLines->append(">)\n");
    }

    const PovObjectSticks_cls& mSticks;
    const float (*mpPos)[3];
    const unsigned mStep;
    const int mDecimals;
    const bool mbWeights;
};

} // namespace

void PovObjectSticks_cls::AppendPovSticks(std::string* pText, const float (*pPos)[3], int step, int decimals,
                                          bool bAgain) const {
    if (!mbValid) return;
    const size_t number = GetNumber();
    const SlicesWriter_cls writer(*this, pPos, static_cast<unsigned>(std::max(step, 1)), decimals);
    Slice_t slices[kSlices];
    const auto write = [&](int k) {
        const auto slice = static_cast<size_t>(k);
        writer.Write(number * slice / kSlices, number * (slice + 1) / kSlices, &slices[k]);
    };
    if (number < kFewSticks)
        for (int k = 0; k < kSlices; ++k)
            write(k);
    else
        OnThreads(kSlices, write);
    for (size_t mask = 0; mask < kMasks; ++mask) {
        const std::string name = "STICKS" + std::to_string(mask);
        *pText += "#declare " + name + "=\nunion{\n";
        if (bAgain) *pText += "object{" + name + "}\n";
        for (const Slice_t& slice : slices)
            *pText += slice[mask];
        *pText += "};\n";
    }
}
