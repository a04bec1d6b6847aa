// The heavy headers that nearly every file needs, compiled once. A file still
// includes what it uses: this is speed only.
#pragma once
// epoxy must come before any other GL header.
#include <epoxy/gl.h>

#include <wx/wx.h>
#include <wx/glcanvas.h>
#include <wx/notebook.h>
#include <wx/splitter.h>

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
