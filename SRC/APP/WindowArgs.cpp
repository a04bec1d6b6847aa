#include "APP/WindowArgs.h"

#include <wx/filename.h>

wxString FromCommandLine(const char* word) { return wxString(word, *wxConvFileName); }

wxString ParseWindowArgs(const std::vector<wxString>& words, WindowArgs_st* pArgs) {
    bool bOptions = true;
    for (const wxString& word : words) {
        if (bOptions && word == "--") {
            bOptions = false;
        } else if (bOptions && (word == "--help" || word == "-h")) {
            pArgs->mbHelp = true;
        } else if (bOptions && word == "--version") {
            pArgs->mbVersion = true;
        } else if (bOptions && word.StartsWith("-")) {
            return "\"" + word + "\" is no option";
        } else if (word.empty()) {
            return "a file's name is empty";
        } else {
            wxFileName name(word);
            name.MakeAbsolute();
            pArgs->mVFiles.push_back(name.GetFullPath());
        }
    }
    return wxString();
}

wxString GetWindowHelp() {
    return "Usage: morentis [FILE...]\n"
           "Look at the output of particle simulations and make films of it.\n"
           "\n"
           "A project (.mrp) is opened; further ones get windows of their own. Any other file is taken for\n"
           "the first one of a sequence of snapshots in the present layout, and where it doesn't look like\n"
           "one, a layout is proposed. HDF5, VTK and other programs' tables are offered to be imported.\n"
           "Meshes (.obj, .pov, .stl, .ply, .glb) come beside the particles.\n"
           "A picture that carries its project opens it at its frame.\n"
           "\n"
           "  -h, --help   this text\n"
           "  --version    the program's version\n"
           "  --           all that follows are files\n"
           "\n"
           "Films without a window are made by morentis-film.\n";
}

const char* GetVersion() { return MORENTIS_VERSION; }
