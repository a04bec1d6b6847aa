// Ready-made colour curves.
#pragma once

#include <vector>

#include <wx/string.h>

#include "COLORCURVE/clsColorCurve.h"

struct ColorTable_st {
    wxString mStrName;
    std::vector<ColorCurve_cls::Key> mVKeys;
};

/// Hues and glows.
const std::vector<ColorTable_st>& GetClassicTables();
/// Tables whose steps look equally large, most of them also to those who see fewer colours.
const std::vector<ColorTable_st>& GetEvenTables();
