// Taking one item out of packed records into an array of its own.
#pragma once

#include <cstddef>

/// Copy 4 or 3 x 4 bytes from each of `number` records, `stride` bytes apart, to consecutive places. Up to
/// 16 bytes from the start of each item are read, not only the item's. bStream: write past the cache, for
/// arrays that nobody reads soon; call FinishStreams before another thread may look.
void CopyScalars(const unsigned char* pFrom, size_t stride, void* pTo, size_t number, bool bStream);
void CopyVectors(const unsigned char* pFrom, size_t stride, void* pTo, size_t number, bool bStream);
void FinishStreams();
