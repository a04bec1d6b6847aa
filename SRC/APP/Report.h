// The report of Help, "Save Report...": what somebody needs to find out what went wrong.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <wx/string.h>

class Main_cls;

/// Text that names the user's home folder with "~" in its place, and the user's name nowhere in paths.
wxString WithoutHome(const wxString& text);
/// Names and bytes: report.txt, record.txt, project.mrp. All text, without the user's home folder.
std::vector<std::pair<wxString, std::string>> MakeReport(Main_cls& hub);
/// A .zip of such files.
std::string ZipReport(const std::vector<std::pair<wxString, std::string>>& files);
