// Numbers as files hold them, to columns of a snapshot: floats bit for bit, wider ones rounded once.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

enum class NumberKind { Int8, UInt8, Int16, UInt16, Int32, UInt32, Int64, UInt64, Float32, Float64 };
size_t SizeOf(NumberKind kind);

/// Where one component of an array's tuples goes; one of the pointers is set.
struct NumberTarget_st {
    size_t mComponent = 0;
    size_t mStride = 1; ///< of the place, in its numbers
    float* mpFloats = nullptr;
    double* mpDoubles = nullptr;
    long long* mpIntegers = nullptr; ///< those without sign keep their bits
    int* mpTypes = nullptr;          ///< clamped
};

/// Tuples of `components` numbers each from bytes, to the places of tuple `first` on. `bSwap`: the bytes
/// stand in the other order. False: a number that should be whole isn't.
bool TakeNumbers(const char* pBytes, NumberKind kind, bool bSwap, size_t components, size_t tuples,
                 size_t first, const std::vector<NumberTarget_st>& targets);
/// One number in letters, for tuple `i`; false where it is none.
bool TakeWordAsNumber(std::string_view word, size_t i, const NumberTarget_st& target);
/// 0 for tuples of which nothing is known.
void FillTarget(const NumberTarget_st& target, size_t first, size_t tuples);
