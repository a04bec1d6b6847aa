// Particles to the bytes of their records, in loops over the codes of a body grammar
// (PDATA/clsGrammerBase.h).
#pragma once

#include <cstddef>
#include <vector>

struct SnapshotSource_st;

/// Bytes of a binary record.
size_t GetBinaryRecord(const std::vector<int>& body);
/// Bytes of the longest possible line of text.
size_t GetLongestTextRecord(const std::vector<int>& body);

/// Write the records begin to end (exclusive) of a source at `pOut`; the number of bytes.
size_t PutBinaryRecords(char* pOut, const std::vector<int>& body, const SnapshotSource_st& source,
                        long long begin, long long end);
size_t PutTextRecords(char* pOut, const std::vector<int>& body, const SnapshotSource_st& source,
                      long long begin, long long end);
