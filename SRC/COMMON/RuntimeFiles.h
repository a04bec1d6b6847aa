// Where the files live that the program reads at run time and does not make.
#pragma once

#include <wx/string.h>

/// The path of a run-time file such as "ICONS/Camera.png": looked for in the working directory, then
/// beside the executable, then in share/morentis of the tree that the executable stands in (which may have
/// been moved), then in the installed data directory. When it is nowhere, the name as given.
wxString FindRuntimeFile(const wxString& name);

/// Directory of the running executable, without a trailing slash.
wxString GetExecutableDir();

/// Path of the configure file: beside the executable when that directory can be written, else under the
/// user's XDG configuration directory (made when missing).
wxString GetConfigureFilePath();

/// The configure file's name, by which it is known among project files.
extern const char* const kConfigureFileName;
