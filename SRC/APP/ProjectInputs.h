// The files that an open project reads, which nothing that it writes may replace.
#pragma once

#include <vector>

#include <wx/string.h>

class Main_cls;

/// Snapshots, and what filters and attributes name; files that aren't there are among them.
std::vector<wxString> ListProjectInputs(const Main_cls& hub);
