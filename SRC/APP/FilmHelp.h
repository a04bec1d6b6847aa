// What morentis-film --help prints.
#pragma once

#include <wx/string.h>

wxString GetFilmHelp();
