// An OpenGL context for benchmarks that draw.
#pragma once

/// Once; false without a display.
bool MakeBenchContext();
