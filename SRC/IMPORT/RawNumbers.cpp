#include "IMPORT/RawNumbers.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "IMPORT/ImportText.h"

namespace {

template <class T>
T Load(const char* pBytes, bool bSwap) {
    char bytes[sizeof(T)];
    std::memcpy(bytes, pBytes, sizeof(T));
    if (bSwap) std::reverse(bytes, bytes + sizeof(T));
    T number;
    std::memcpy(&number, bytes, sizeof(T));
    return number;
}

template <class T>
bool ToInteger(T number, long long* pOut) {
    if constexpr (std::is_floating_point_v<T>) {
        if (!(number >= T(-9e15) && number <= T(9e15))) return false;
        *pOut = static_cast<long long>(number);
        return static_cast<T>(*pOut) == number;
    } else {
        *pOut = static_cast<long long>(number);
        return true;
    }
}

template <class T>
bool Take(const char* pBytes, bool bSwap, size_t components, size_t tuples, size_t first,
          const NumberTarget_st& target) {
    pBytes += target.mComponent * sizeof(T);
    const size_t step = components * sizeof(T);
    const size_t place = first * target.mStride;
    if (target.mpFloats) {
        float* pOut = target.mpFloats + place;
        for (size_t i = 0; i < tuples; ++i, pBytes += step, pOut += target.mStride) {
            if constexpr (std::is_same_v<T, float>) { // by its bits: a load may quieten what is no number
                const auto bits = Load<uint32_t>(pBytes, bSwap);
                std::memcpy(pOut, &bits, sizeof bits);
            } else {
                *pOut = static_cast<float>(Load<T>(pBytes, bSwap));
            }
        }
        return true;
    }
    bool bWhole = true;
    for (size_t i = 0; i < tuples; ++i, pBytes += step) {
        const T number = Load<T>(pBytes, bSwap);
        if (target.mpDoubles) {
            target.mpDoubles[place + i * target.mStride] = static_cast<double>(number);
            continue;
        }
        long long whole = 0;
        bWhole = ToInteger(number, &whole) && bWhole;
        if (target.mpIntegers) target.mpIntegers[place + i * target.mStride] = whole;
        if (target.mpTypes)
            target.mpTypes[place + i * target.mStride] =
                static_cast<int>(std::clamp<long long>(whole, INT_MIN, INT_MAX));
    }
    return bWhole;
}

} // namespace

size_t SizeOf(NumberKind kind) {
    constexpr size_t kSizes[] = {1, 1, 2, 2, 4, 4, 8, 8, 4, 8};
    return kSizes[static_cast<size_t>(kind)];
}

bool TakeNumbers(const char* pBytes, NumberKind kind, bool bSwap, size_t components, size_t tuples,
                 size_t first, const std::vector<NumberTarget_st>& targets) {
    using Taker = bool (*)(const char*, bool, size_t, size_t, size_t, const NumberTarget_st&);
    constexpr Taker kTakers[] = {Take<int8_t>,   Take<uint8_t>, Take<int16_t>,  Take<uint16_t>, Take<int32_t>,
                                 Take<uint32_t>, Take<int64_t>, Take<uint64_t>, Take<float>,    Take<double>};
    bool bWhole = true;
    for (const NumberTarget_st& target : targets)
        bWhole =
            kTakers[static_cast<size_t>(kind)](pBytes, bSwap, components, tuples, first, target) && bWhole;
    return bWhole;
}

bool TakeWordAsNumber(std::string_view word, size_t i, const NumberTarget_st& target) {
    const size_t place = i * target.mStride;
    if (target.mpFloats) return ReadNumber(word, target.mpFloats + place);
    if (target.mpDoubles) return ReadNumber(word, target.mpDoubles + place);
    long long whole = 0;
    if (!ReadNumber(word, &whole)) return false;
    if (target.mpIntegers) target.mpIntegers[place] = whole;
    if (target.mpTypes)
        target.mpTypes[place] = static_cast<int>(std::clamp<long long>(whole, INT_MIN, INT_MAX));
    return true;
}

void FillTarget(const NumberTarget_st& target, size_t first, size_t tuples) {
    for (size_t i = first * target.mStride; i < (first + tuples) * target.mStride; i += target.mStride) {
        if (target.mpFloats) target.mpFloats[i] = 0.0f;
        if (target.mpDoubles) target.mpDoubles[i] = 0.0;
        if (target.mpIntegers) target.mpIntegers[i] = 0;
        if (target.mpTypes) target.mpTypes[i] = 0;
    }
}
