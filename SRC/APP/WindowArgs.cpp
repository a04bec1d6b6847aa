#include "APP/WindowArgs.h"

#include <wx/filename.h>

wxString FromCommandLine(const char* word) { return wxString(word, *wxConvFileName); }

namespace {

wxString WholePath(const wxString& word) {
    wxFileName name(word);
    name.MakeAbsolute();
    return name.GetFullPath();
}

/// Where the path of an option goes, null for a word that is no such option.
wxString* FindPathOption(const wxString& word, WindowArgs_st* pArgs) {
    if (word == "--record") return &pArgs->mStrRecord;
    if (word == "--replay") return &pArgs->mStrReplay;
    return word == "--replay-folder" ? &pArgs->mStrReplayFolder : nullptr;
}

} // namespace

wxString ParseWindowArgs(const std::vector<wxString>& words, WindowArgs_st* pArgs) {
    bool bOptions = true;
    for (size_t i = 0; i < words.size(); ++i) {
        const wxString& word = words[i];
        wxString* path = bOptions ? FindPathOption(word, pArgs) : nullptr;
        if (path) {
            if (++i == words.size() || words[i].empty()) return "\"" + word + "\" wants a name behind it";
            *path = WholePath(words[i]);
        } else if (bOptions && word == "--") {
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
            pArgs->mVFiles.push_back(WholePath(word));
        }
    }
    if (!pArgs->mStrReplayFolder.empty() && pArgs->mStrReplay.empty())
        return "\"--replay-folder\" goes with --replay";
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
           "  --record FILE\n"
           "               write what you do into a new file, a line at a time\n"
           "  --replay FILE\n"
           "               do again what such a file says; no other program is started\n"
           "  --replay-folder FOLDER\n"
           "               an empty folder for what the replay saves (FILE.files)\n"
           "  --           all that follows are files\n"
           "\n"
           "Films without a window are made by morentis-film.\n";
}

const char* GetVersion() { return MORENTIS_VERSION; }
