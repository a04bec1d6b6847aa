// Are the background threads at work? A thread whose end nobody has noticed yet is not.
#pragma once

#include "COMMON/Globals.h"

/// A snapshot is being read.
inline bool IsReaderBusy() {
    return GpCThreadReader.load() && !GbThreadReaderFinished.load(std::memory_order_acquire);
}

/// Slopes are being worked out.
inline bool IsInterpolatorBusy() {
    return GpCThreadInterpolate.load() && !GbThreadInterpolateFinished.load(std::memory_order_acquire);
}

inline bool IsAnyThreadBusy() { return IsReaderBusy() || IsInterpolatorBusy(); }

/// Its end is known: the next reader may start. Who calls this has seen that it is not busy.
inline void ForgetReader() { GpCThreadReader.store(nullptr); }
inline void ForgetInterpolator() { GpCThreadInterpolate.store(nullptr); }
