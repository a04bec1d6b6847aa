// Taking one item out of packed records into an array of its own, and a look at what it holds.
#pragma once

#include <cstddef>

/// Copy 4 or 3 x 4 bytes from each of `number` records, `stride` bytes apart, to consecutive places. Up to
/// 16 bytes from the start of each item are read, not only the item's. bStream: write past the cache, for
/// arrays that nobody reads soon; call FinishStreams before another thread may look.
void CopyScalars(const unsigned char* pFrom, size_t stride, void* pTo, size_t number, bool bStream);
void CopyVectors(const unsigned char* pFrom, size_t stride, void* pTo, size_t number, bool bStream);
void FinishStreams();

/// Of `number` records, `stride` bytes apart and with a place in front, those whose place is no number or
/// without end: nothing draws them.
size_t CountPlaceless(const unsigned char* pFrom, size_t stride, size_t number);
