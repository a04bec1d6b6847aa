#include "Trace.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr size_t kPlaces = 1 << 16;
// Ways from one stretch of code to the next, by their hash. Threads may lose a count to each other.
unsigned char gHits[kPlaces];
unsigned char gSeen[kPlaces]; ///< bits: how often, in steps that double
thread_local uintptr_t gBefore = 0;

unsigned char StepOf(unsigned char hits) {
    unsigned char step = 1;
    for (; hits > 1 && step < 128; hits = static_cast<unsigned char>(hits / 2))
        step = static_cast<unsigned char>(step * 2);
    return step;
}

} // namespace

#define NO_TRACE __attribute__((no_sanitize("address", "undefined"), no_sanitize_coverage))

// The compiler calls it at each stretch of code.
extern "C" NO_TRACE void __sanitizer_cov_trace_pc();
void __sanitizer_cov_trace_pc() {
    const auto here = reinterpret_cast<uintptr_t>(__builtin_return_address(0)) * 0x9E3779B97F4A7C15u >> 40;
    unsigned char* hits = &gHits[(here ^ gBefore) % kPlaces];
    if (*hits < 255) ++*hits;
    gBefore = here >> 1;
}

NO_TRACE void BeginTrace() { std::memset(gHits, 0, sizeof gHits); }

NO_TRACE bool EndTrace() {
    bool bNew = false;
    for (size_t i = 0; i < kPlaces; i += 8) {
        uint64_t eight = 0;
        std::memcpy(&eight, &gHits[i], 8);
        if (eight == 0) continue;
        for (size_t k = i; k < i + 8; ++k) {
            const unsigned char step = gHits[k] == 0 ? 0 : StepOf(gHits[k]);
            if ((step & ~gSeen[k]) == 0) continue;
            gSeen[k] = static_cast<unsigned char>(gSeen[k] | step);
            bNew = true;
        }
    }
    return bNew;
}
