// The kernels for any processor.
#include "GL/DRAW/CPU/TileKernels.h"

#include <algorithm>

#pragma GCC diagnostic ignored "-Wpsabi" // of eight numbers as an argument: all is in line

namespace TilePlain {
namespace {
#include "GL/DRAW/CPU/TileKernels.inl"
} // namespace
} // namespace TilePlain

const TileKernels_st& GetPlainTileKernels() { return TilePlain::kKernels; }
