// Sticks between particles, and what they are made from.
#pragma once

#include <vector>

#include "COMMON/BigAllocator.h"

/// What sticks need of a snapshot. Nothing is owned.
struct StickParticles_st {
    const float (*mpPos)[3] = nullptr;
    const unsigned char* mpType = nullptr; ///< null: all 0
    const int* mpID = nullptr; ///< who is who in other frames; null: a particle keeps its place in the list
    int mCount = 0;
    int mStep = 1;                   ///< only multiples of it are filled
    float mTime = 0.0f;              ///< stamp of the snapshot
    unsigned long long mVersion = 0; ///< of the positions, where the stamp alone doesn't tell them apart
};

/// When two particles at distance d get a stick. Squares of float are compared, so a sign of A or B is lost.
enum StickCrit : int {
    STICK_STEP = 0,        ///< d < A
    STICK_RAMP = 1,        ///< d < A; for A < d < B it fades, its weight being (B - d) / (B - A)
    STICK_STEP_BETWEEN = 2 ///< A < d < B
};
enum StickSpec : int { STICK_ANY_TYPE = 0, STICK_TYPES_A_B = 1 };

struct StickRule_st {
    int mCritType = STICK_STEP; ///< a StickCrit; others make no stick
    float mA = 1.0f;
    float mB = 2.0f;
    int mSpecType = STICK_ANY_TYPE; ///< a StickSpec; others make no stick
    int mSpecA = 0;                 ///< particle types, in either order
    int mSpecB = 1;
    bool mbAcross = false;   ///< through the faces of the periodic box, too
    float mKeepUntil = 0.0f; ///< with STICK_STEP: a bond that formed breaks at this distance; 0: at A
};

/// Bit for bit, so that what is no number equals itself.
bool operator==(const StickRule_st& a, const StickRule_st& b);

/// A column of a list; new elements of a longer one are left as they are.
template <class T>
using StickColumn_t = std::vector<T, BigAllocator_cls<T>>;

/// Columns of one length; those that say the same of every stick may be empty, as memory costs more time than
/// most else. A crossing mask tells in which directions of the periodic box (bits 0 to 2) an end of a stick
/// stands in the next cell.
struct StickList_st {
    StickColumn_t<unsigned> mvIndexA;        ///< particles of the first ends
    StickColumn_t<unsigned> mvIndexB;        ///< and of the second ends
    StickColumn_t<unsigned char> mvBit;      ///< crossing masks of the second ends; empty: all 0
    StickColumn_t<unsigned char> mvBitFirst; ///< of the first ends; empty: all 0
    StickColumn_t<float> mvFactor;           ///< weights, 0 to 1; empty: all 1

    size_t GetNumber() const { return mvIndexA.size(); }
    /// All columns but those that may be empty; what is new is not yet filled. Throws bad_alloc.
    void Resize(size_t number);
    void Clear();
    /// Crossing masks of a stick's ends, and its weight.
    unsigned GetBitFirst(size_t k) const { return mvBitFirst.empty() ? 0u : mvBitFirst[k]; }
    unsigned GetBit(size_t k) const { return mvBit.empty() ? 0u : mvBit[k]; }
    float GetFactor(size_t k) const { return mvFactor.empty() ? 1.0f : mvFactor[k]; }
};
