// The HDF5 library ends the program over some damaged files: a child looks first.
#pragma once

#include <functional>
#include <string>

/// Run `look` in a child, and answer as it does; false when it threw, which the reader tells later. Throws
/// ImportError_cls where the child was ended by a signal. The caller has no threads.
bool LookFirst(const std::string& path, const std::function<bool()>& look);
