#include "COMMON/WorkTimes.h"

#include <atomic>
#include <cstdio>

namespace {

constexpr int kParts = static_cast<int>(Work::Number);
const char* const kNames[kParts] = {"read",  "evaluate", "sort", "particles",
                                    "fetch", "convert",  "pack", "write"};
std::atomic<long long> sMicros[kParts];

} // namespace

WorkScope_cls::~WorkScope_cls() {
    const auto took = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - mStart);
    sMicros[static_cast<int>(mWhat)].fetch_add(took.count(), std::memory_order_relaxed);
}

std::string GetWorkTimes() {
    std::string text;
    for (int k = 0; k < kParts; ++k) {
        char part[64];
        const auto micros = static_cast<double>(sMicros[k].load(std::memory_order_relaxed));
        std::snprintf(part, sizeof part, "%s%s=%.3f", k > 0 ? " " : "", kNames[k], micros / 1e6);
        text += part;
    }
    return text;
}
