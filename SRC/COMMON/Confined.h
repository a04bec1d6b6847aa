// A process that does what a stranger's record says is confined: it starts no program, and writes into one
// folder alone. There is no way back: what was begun meanwhile may go on for long.
#pragma once

#include <string>

#include <wx/string.h>

/// The folder is there. From now on, for the whole process.
void ConfineTo(const wxString& folder);
bool IsConfined();
/// May this file be written, made or removed? Its folder counts as it is behind all links.
bool MayWriteFile(const std::string& path);
/// Empty when programs may be started, else what to tell.
wxString WhyNoProgram();
