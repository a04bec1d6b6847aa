// Where the files of a film go: whether they may go there, and whether there is room.
#pragma once

#include <set>
#include <string>
#include <vector>

#include <wx/string.h>

#include "COMMON/Eye.h"
#include "PDATA/clsFileSequence.h"

/// Name of the file with this number. Numbers below 0 (frames before the work area) get names that sort
/// before the others and among themselves: "-" and how much is missing to one more digit, -1 of four digits
/// being "-9999".
wxString GetFilmName(const FileSequence_cls& names, int number, int eye = EYE_NONE);

/// Everything that a film is going to write, by the option that asks for it.
struct FilmTarget_st {
    const char* mpOption;
    wxString mPath;
};

/// Does one of the targets replace an input, or another target? Empty when not.
wxString CheckFilmTargets(const std::vector<wxString>& inputs, const std::vector<FilmTarget_st>& targets);
/// Make the targets' folders and see that files can be made there. Empty on success.
wxString MakeFilmFolders(const std::vector<FilmTarget_st>& targets);
/// Is there room for `bytes` in the folder of `path`? Empty when there is, or nobody knows.
wxString CheckFilmSpace(const wxString& path, double bytes);
/// Bytes that the pictures take at least: what the format packs tightest, of a film that is mostly dark.
double EstimateFilmBytes(const wxString& ending, int w, int h, size_t pictures, bool bTransparent);
/// Remove what a killed film left beside these targets.
void RemoveFilmLeftovers(const std::vector<FilmTarget_st>& targets);
