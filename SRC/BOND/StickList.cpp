#include "BOND/StickList.h"

#include <cstring>

namespace {
bool IsSameFloat(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }
} // namespace

bool operator==(const StickRule_st& a, const StickRule_st& b) {
    return a.mCritType == b.mCritType && IsSameFloat(a.mA, b.mA) && IsSameFloat(a.mB, b.mB) &&
           a.mSpecType == b.mSpecType && a.mSpecA == b.mSpecA && a.mSpecB == b.mSpecB &&
           a.mbAcross == b.mbAcross && IsSameFloat(a.mKeepUntil, b.mKeepUntil);
}

void StickList_st::Resize(size_t number) {
    mvIndexA.resize(number);
    mvIndexB.resize(number);
}

void StickList_st::Clear() {
    Resize(0);
    mvBit.clear();
    mvBitFirst.clear();
    mvFactor.clear();
}
