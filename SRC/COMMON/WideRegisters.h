// Functions for processors with registers of 32 bytes, which are asked for at run time. Their results are
// those of the plain ways.
#pragma once

#define MORENTIS_WIDE __attribute__((target("avx2,bmi,bmi2,popcnt")))

/// May functions that are marked MORENTIS_WIDE be called?
inline bool HasWideRegisters() {
    static const bool sbWide = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
                               __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
    return sbWide;
}
