// Does the system still give so much memory? For work whose own requests can't fail in order.
#pragma once

#include <cstddef>

/// Asked for and given back at once, untouched: costs no memory and next to no time.
bool IsMemoryFree(size_t bytes);
