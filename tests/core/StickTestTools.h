// Particles for tests of sticks, and the plain loops that tell which pairs are the right ones.
#pragma once

#include <array>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "BOND/StickCell.h"
#include "BOND/StickList.h"

/// Owns what StickParticles_st points to.
struct StickData_st {
    std::vector<std::array<float, 3>> pos;
    std::vector<unsigned char> type;
    std::vector<int> id;
    int step = 1;
    float time = 0.0f;

    StickParticles_st Get() const {
        StickParticles_st particles;
        particles.mpPos = reinterpret_cast<const float(*)[3]>(pos.data());
        particles.mpType = type.empty() ? nullptr : type.data();
        particles.mpID = id.empty() ? nullptr : id.data();
        particles.mCount = static_cast<int>(pos.size());
        particles.mStep = step;
        particles.mTime = time;
        return particles;
    }
};

/// A stick as all its fields.
using StickTuple_t = std::tuple<unsigned, unsigned, unsigned, unsigned, float>;

inline std::vector<StickTuple_t> GetTuples(const StickList_st& list) {
    std::vector<StickTuple_t> sticks;
    for (size_t k = 0; k < list.GetNumber(); ++k)
        sticks.emplace_back(list.mvIndexA[k], list.mvIndexB[k], list.GetBitFirst(k), list.GetBit(k),
                            list.GetFactor(k));
    return sticks;
}

/// What a rule makes of two places; the weight, or -1 for no stick.
inline float WeighPlainly(const StickRule_st& rule, const float* a, const float* b) {
    const float x = b[0] - a[0], y = b[1] - a[1], z = b[2] - a[2];
    const float d2 = x * x + y * y + z * z;
    const float a2 = rule.mA * rule.mA, b2 = rule.mB * rule.mB;
    if (rule.mCritType == 0) return a2 > d2 ? 1.0f : -1.0f;
    if (rule.mCritType == 2) return d2 > a2 && b2 > d2 ? 1.0f : -1.0f;
    if (rule.mCritType != 1 || rule.mA == rule.mB) return -1.0f;
    if (a2 > d2) return 1.0f;
    if (!(d2 > a2 && b2 > d2)) return -1.0f;
    return std::isinf(rule.mB) ? 1.0f : (rule.mB - std::sqrt(d2)) / (rule.mB - rule.mA);
}

inline bool AdmitsPlainly(const StickRule_st& rule, int a, int b) {
    if (rule.mSpecType == 0) return true;
    return rule.mSpecType == 1 &&
           ((a == rule.mSpecA && b == rule.mSpecB) || (a == rule.mSpecB && b == rule.mSpecA));
}

/// All pairs i < j, then those through faces: for each way every first end with every second one.
inline std::vector<StickTuple_t> FindPlainly(const StickData_st& data, const StickRule_st& rule,
                                             const StickCell_st& cell = {}) {
    std::vector<StickCrossing_st> ways = {{0, 0}};
    if (rule.mbAcross)
        for (const StickCrossing_st& way : GetStickCrossings(cell))
            ways.push_back(way);
    float vectors[3][3], offset[8][3];
    for (int k = 0; k < 3; ++k)
        cell.GetCopyVector(k, vectors[k]);
    MakeStickOffsets(vectors, true, offset);
    const size_t number = data.pos.size(), step = static_cast<size_t>(data.step);
    std::vector<StickTuple_t> sticks;
    for (const StickCrossing_st& way : ways)
        for (size_t i = 0; i < number; i += step)
            for (size_t j = way.mSecond == 0 ? i + step : 0; j < number; j += step) {
                if (!AdmitsPlainly(rule, data.type.empty() ? 0 : data.type[i],
                                   data.type.empty() ? 0 : data.type[j]))
                    continue;
                float a[3], b[3];
                for (size_t k = 0; k < 3; ++k) {
                    a[k] = data.pos[i][k] + offset[way.mFirst][k];
                    b[k] = data.pos[j][k] + offset[way.mSecond][k];
                }
                const float weight = WeighPlainly(rule, a, b);
                if (weight != -1.0f) sticks.emplace_back(i, j, way.mFirst, way.mSecond, weight);
            }
    return sticks;
}

/// Evenly in a cube from the origin on, of types 0 to 2.
inline StickData_st MakeRandomParticles(unsigned seed, size_t number, float edge) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> side(0.0f, edge);
    StickData_st data;
    for (size_t i = 0; i < number; ++i) {
        data.pos.push_back({side(random), side(random), side(random)});
        data.type.push_back(static_cast<unsigned char>(random() % 3));
    }
    return data;
}

inline StickCell_st MakeCube(float edge, unsigned type = 2) {
    StickCell_st cell;
    cell.mType = type;
    for (int k = 0; k < 3; ++k)
        cell.mBase[k][k] = edge;
    return cell;
}
