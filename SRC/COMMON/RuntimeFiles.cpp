#include "COMMON/RuntimeFiles.h"

#include <cstdlib>

#include <wx/filename.h>
#include <wx/stdpaths.h>
#include <wx/utils.h>

const char* const kConfigureFileName = "Morentis3Configure.txt";

wxString GetExecutableDir() { return wxFileName(wxStandardPaths::Get().GetExecutablePath()).GetPath(); }

wxString FindRuntimeFile(const wxString& name) {
    if (wxFileName::Exists(name)) return name;
    const wxString beside = GetExecutableDir();
    for (const wxString& dir :
         {beside, beside + "/../share/morentis", wxString::FromUTF8(MORENTIS_DATADIR)}) {
        const wxString path = dir + "/" + name;
        if (wxFileName::Exists(path)) return path;
    }
    return name;
}

wxString GetConfigureFilePath() {
    const wxString dir = GetExecutableDir();
    // What packages own stays as it is, also where root starts the program.
    if (!dir.StartsWith("/usr/") && wxFileName::IsDirWritable(dir)) return dir + "/" + kConfigureFileName;
    wxString config;
    if (!wxGetEnv("XDG_CONFIG_HOME", &config) || config.empty())
        config = wxFileName::GetHomeDir() + "/.config";
    config += "/morentis";
    wxFileName::Mkdir(config, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    return config + "/" + kConfigureFileName;
}
