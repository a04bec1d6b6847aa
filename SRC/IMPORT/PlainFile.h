// Opening a file of somebody else's.
#pragma once

#include <string>

/// A plain file for reading; throws ImportError_cls for anything else: a pipe would hold us until somebody
/// writes. `pBytes` gets its size.
int OpenPlainFile(const std::string& path, long long* pBytes);

/// Bytes that one byte of a gzipped file can stand for.
constexpr long long kMostInflated = 1032;
