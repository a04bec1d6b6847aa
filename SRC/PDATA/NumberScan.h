// Numbers of a text as scanf's "%f" and "%d" give them, several times faster. Plain decimal numbers are
// worked out here, rounded exactly once; for everything else the scanners step aside.
#pragma once

#include "COMMON/DigitScan.h"
#include "COMMON/TextSplit.h"

/// The float that begins at `cursor` (no blank before it). True: it was a plain decimal number that is
/// followed by a blank, a line end or a NUL, and the cursor stands there. False: ask the C library; cursor
/// and value are as they were. The text must end in a NUL with kScanPad more bytes that can be read.
bool ScanFloat(const char*& cursor, float& value);
/// The same for an int of up to nine digits.
bool ScanInt(const char*& cursor, int& value);
