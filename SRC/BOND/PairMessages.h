// What the user is told of a search for pairs that didn't end well.
#pragma once

#include <cstddef>

#include <wx/string.h>

enum class PairEnd;

/// Empty for a search that is whole or was stopped by hand. `most`: sticks that it might have found.
wxString GetPairMessage(PairEnd end, size_t most);
