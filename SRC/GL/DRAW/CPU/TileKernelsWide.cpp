// The kernels for processors with registers of 32 bytes.
#include "GL/DRAW/CPU/TileKernels.h"

#include <algorithm>

#ifdef __x86_64__
#include <immintrin.h>

#pragma GCC push_options
#pragma GCC target("avx2,f16c")
#define TILE_WIDE 1
namespace TileWide {
namespace {
#include "GL/DRAW/CPU/TileKernels.inl"
} // namespace
} // namespace TileWide
#pragma GCC pop_options

const TileKernels_st& GetTileKernels() {
    static const bool sbWide = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("f16c");
    return sbWide ? TileWide::kKernels : GetPlainTileKernels();
}
#else
const TileKernels_st& GetTileKernels() { return GetPlainTileKernels(); }
#endif
