#include "IMPORT/ImportArgs.h"

#include <algorithm>

#include "IMPORT/ImportText.h"

namespace {

const char* const kFormats[] = {"hdf5", "h5md", "xyz", "dump", "csv", "vtk"};
const char* const kRoles[] = {"x",      "y",  "z",    "vx",    "vy",   "vz",
                              "radius", "id", "type", "value", "time", "group"};

template <size_t N>
std::string CheckWord(const std::string& word, const char* const (&words)[N], const std::string& what) {
    std::string all;
    for (const char* one : words) {
        if (word == one) return std::string();
        all += (all.empty() ? "" : ", ") + std::string(one);
    }
    return "\"" + word + "\" is no " + what + "; there are " + all;
}

/// "value=c_pe,radius=rad"
std::string ReadColumns(const std::string& text, ImportArgs_st* pArgs) {
    std::vector<std::string_view> pairs;
    SplitFields(text, ',', &pairs);
    for (const std::string_view pair : pairs) {
        const size_t equal = pair.find('=');
        if (equal == std::string_view::npos)
            return "--columns: \"" + std::string(pair) + "\" is no ROLE=NAME";
        const std::string role(Trim(pair.substr(0, equal)));
        const std::string wrong = CheckWord(role, kRoles, "role of a column");
        if (!wrong.empty()) return "--columns: " + wrong;
        pArgs->mChoice.mColumns[role] = std::string(Trim(pair.substr(equal + 1)));
    }
    pArgs->mColumnText += (pArgs->mColumnText.empty() ? "" : ",") + text;
    return std::string();
}

std::string TakeValue(const std::string& name, const std::string& value, ImportArgs_st* pArgs) {
    if (value.empty()) return name + " lacks its value";
    if (name == "--columns") return ReadColumns(value, pArgs);
    if (name == "--output") {
        pArgs->mOutput = value;
        return std::string();
    }
    pArgs->mFrom = value;
    const std::string wrong = CheckWord(value, kFormats, "format");
    return wrong.empty() ? wrong : "--from: " + wrong;
}

bool* FindFlag(const std::string& name, ImportArgs_st* pArgs) {
    if (name == "--resume") return &pArgs->mbResume;
    if (name == "--quiet") return &pArgs->mbQuiet;
    if (name == "--progress") return &pArgs->mbProgress;
    if (name == "--help") return &pArgs->mbHelp;
    if (name == "--version") return &pArgs->mbVersion;
    return nullptr;
}

std::string ReadOption(const std::vector<std::string>& words, size_t* pI, ImportArgs_st* pArgs) {
    const std::string& word = words[*pI];
    const size_t equal = word.find('=');
    const std::string name = word.substr(0, equal);
    const bool bInWord = equal != std::string::npos;
    if (bool* pFlag = FindFlag(name, pArgs)) {
        if (bInWord) return name + " takes no value";
        *pFlag = true;
        return std::string();
    }
    if (name != "--from" && name != "--output" && name != "--columns")
        return "there is no option \"" + name + "\"";
    if (bInWord) return TakeValue(name, word.substr(equal + 1), pArgs);
    if (*pI + 1 >= words.size()) return name + " lacks its value";
    return TakeValue(name, words[++*pI], pArgs);
}

} // namespace

std::string ParseImportArgs(const std::vector<std::string>& words, ImportArgs_st* pArgs) {
    bool bOptions = true;
    for (size_t i = 0; i < words.size(); ++i) {
        if (bOptions && words[i] == "--") {
            bOptions = false;
        } else if (bOptions && StartsWith(words[i], "-")) {
            const std::string wrong = ReadOption(words, &i, pArgs);
            if (!wrong.empty()) return wrong;
        } else if (words[i].empty()) {
            return "a file of no name can't be opened";
        } else {
            pArgs->mFiles.push_back(words[i]);
        }
    }
    if (pArgs->mbHelp || pArgs->mbVersion) return std::string();
    if (pArgs->mFiles.empty()) return "no file is named";
    if (pArgs->mOutput.empty()) return "--output is missing: name the folder for snapshots and project";
    return std::string();
}

std::string GetImportHelp() {
    return R"(Usage: morentis-import [--from FORMAT] FILE... --output FOLDER

Makes snapshots that Morentis opens of other programs' files, and a project with their layout, box, colours
and length of the film. Files are taken in the order of the numbers in their names.

  --from FORMAT    what the files are; without it their contents tell:
                   hdf5   snapshots of N-body and SPH codes: groups PartType0 to PartType5, one file a snapshot
                          or several (name any of them)
                   h5md   HDF5 trajectories of the H5MD layout: the group "all", else all groups with positions
                   xyz    XYZ files, plain or extended, with any number of frames
                   dump   LAMMPS-style dumps in text with any columns and any number of time steps
                   csv    tables with a header line; rows of one time are a snapshot
                   vtk    points of VTK files, legacy (.vtk) and XML (.vtp, .vtu, .pvtp, .pvtu, .pvd)
                   All but HDF5 may be gzipped.
  --output FOLDER  for snap0000.bin, snap0001.bin, ... and the project, which is named after the folder; it is
                   made where its own folder is there
  --columns ROLE=NAME,...
                   what the files call a column; the roles are x, y, z, vx, vy, vz, radius, id, type, value and
                   time. No name leaves a column out (value=). Of HDF5 snapshots value and radius can be chosen,
                   such as value=InternalEnergy, and group=NAME takes one group of an H5MD file. Parts of a
                   vector are force:0, force:1 and so on
  --resume         keep snapshots that are there already, whole, and whose source hasn't changed; a project
                   that was changed stays, and the new one is NAME-import.mrp
  --quiet          say nothing but what went wrong
  --progress       say how far it is twice a second, in lines
  --help, --version

Numbers of four bytes come through bit for bit, longer ones and text rounded to the nearest float. IDs that
don't fit into 31 bits become negative ones, the same in all snapshots; of more than four types the last ones
become type 3. Lengths stay as they are; the project moves and scales them to what its views show.

Ends with 0: all snapshots are written; 1: none could be read; 2: wrong arguments, or files that can't go where
they shall, and nothing was begun; 3: some snapshots are missing, each named on stderr with its reason.
)";
}
