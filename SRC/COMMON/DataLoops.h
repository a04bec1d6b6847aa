// How the straight loops over particle arrays are compiled: fully vectorised, and once more for processors
// with wider registers. No fused operations are let in, so that every machine computes the same bits.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__x86_64__)
// The choice at load time comes before a sanitizer's runtime is up.
#define MORENTIS_DATA_LOOP
#else
#define MORENTIS_DATA_LOOP __attribute__((target_clones("avx2", "default")))
#endif
