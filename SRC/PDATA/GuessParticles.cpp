#include "PDATA/GuessParticles.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <unordered_map>

#include "PDATA/GuessSample.h"

namespace {

// A search by ID reaches so many places to each side, and the first tenth of the next file.
constexpr int kReach = 10000;
constexpr size_t kStride = 7919;     // a prime: pairs each particle with any other
constexpr double kMayBeLost = 0.001; // of the particles that are in both files

double Distance(const GuessSample_st::Position& a, const GuessSample_st::Position& b) {
    return std::hypot(static_cast<double>(a[0]) - static_cast<double>(b[0]),
                      static_cast<double>(a[1]) - static_cast<double>(b[1]),
                      static_cast<double>(a[2]) - static_cast<double>(b[2]));
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

bool HasUsableIds(const GuessSample_st& sample) {
    std::vector<int> ids = sample.mId;
    std::sort(ids.begin(), ids.end());
    return !ids.empty() && std::adjacent_find(ids.begin(), ids.end()) == ids.end();
}

GuessOrder CompareIds(const GuessSample_st& from, const GuessSample_st& to) {
    const size_t common = std::min(from.mId.size(), to.mId.size());
    const auto end = from.mId.begin() + static_cast<std::ptrdiff_t>(common);
    if (from.mNumber == to.mNumber && common > 0 && std::equal(from.mId.begin(), end, to.mId.begin()))
        return GuessOrder::Same;
    std::unordered_map<int, int> places;
    for (size_t j = 0; j < to.mId.size(); ++j)
        places.emplace(to.mId[j], static_cast<int>(j));
    // What stands near the end of a sample may be found just behind it.
    const size_t margin = to.mbWhole || to.mId.size() <= kReach ? 0 : kReach;
    const size_t last = std::min(from.mId.size(), to.mId.size() - margin);
    double near = 0, far = 0, missing = 0;
    for (size_t i = 0; i < (to.mbWhole ? from.mId.size() : last); ++i) {
        const auto found = places.find(from.mId[i]);
        if (found == places.end()) {
            missing += 1;
            continue;
        }
        const int j = found->second;
        const bool bFar = std::abs(j - static_cast<int>(i)) >= kReach && j >= to.mNumber / 10;
        (bFar ? far : near) += 1;
    }
    // In a file that was read in part, particles that left the simulation are missing as well: only many
    // of them mean another order.
    const bool bElsewhere = !to.mbWhole && missing > near + far;
    return bElsewhere || far > kMayBeLost * (near + far) ? GuessOrder::Shuffled : GuessOrder::Changed;
}

GuessOrder ComparePlaces(const GuessSample_st& from, const GuessSample_st& to) {
    const size_t number = std::min(from.mPos.size(), to.mPos.size());
    if (number < 4) return from.mNumber == to.mNumber ? GuessOrder::Same : GuessOrder::Unknown;
    std::vector<double> same, other;
    for (size_t i = 0; i < number; ++i) {
        const double own = Distance(from.mPos[i], to.mPos[i]);
        const double far = Distance(from.mPos[i], to.mPos[(i * kStride + 1) % number]);
        if (std::isfinite(own) && std::isfinite(far)) {
            same.push_back(own);
            other.push_back(far);
        }
    }
    if (same.empty()) return GuessOrder::Unknown;
    // Medians of distances between any two particles differ by chance, in small sets more.
    const double share = std::clamp(1 - 4 / std::sqrt(static_cast<double>(number)), 0.5, 0.9);
    return Median(same) <= share * Median(other) ? GuessOrder::Same : GuessOrder::Unknown;
}
