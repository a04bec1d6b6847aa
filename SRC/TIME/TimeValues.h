// The values of the clock that commands write.
#pragma once

#include <array>

enum TimeValue : int {
    TIME_FRAME = 0,
    TIME_INTERP_STEP = 1,
    TIME_WA_MIN = 2,
    TIME_WA_MAX = 3,
    TIME_AA_MIN = 4,
    TIME_AA_MAX = 5,
    TIME_REPEAT = 6,
    TIME_ANIM_STEP = 7,
    TIME_ANIM_INTERP = 8,
    TIME_PREFETCH = 9,
    TIME_MAX_FRAME = 10,
    TIME_VALUE_COUNT = 11
};

/// All of them, by TimeValue.
struct TimeState_st {
    std::array<int, TIME_VALUE_COUNT> mValue{};
    bool operator==(const TimeState_st& other) const { return mValue == other.mValue; }
};
