// The heavy headers of the floors without a toolkit, compiled once: what of wxWidgets needs no window, and
// nothing of OpenGL (tools/check_layers.py has the list). Speed only, as cmake/pch.h.
#pragma once
#include <wx/defs.h>
#include <wx/intl.h>
#include <wx/string.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>
