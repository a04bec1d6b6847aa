// The command line of the importer: what it asks for, and what is wrong with it.
#pragma once

#include <string>
#include <vector>

#include "IMPORT/ParticleSource.h"

/// What the importer ends with.
enum class ImportStatus {
    Done = 0,           ///< every snapshot is written, and the project
    NotOpened = 1,      ///< no snapshot could be read
    WrongArguments = 2, ///< nothing was begun
    SomeFailed = 3      ///< some snapshots are missing
};

struct ImportArgs_st {
    std::vector<std::string> mFiles;
    std::string mFrom; ///< hdf5, xyz, dump or csv; empty: by the files' contents
    std::string mOutput;
    ImportChoice_st mChoice;
    std::string mColumnText; ///< as it was given
    bool mbResume = false;
    bool mbQuiet = false;
    bool mbProgress = false; ///< in lines, and often
    bool mbHelp = false;
    bool mbVersion = false;
};

/// Read the words behind the program's name. Empty on success, else what is wrong, in one line.
std::string ParseImportArgs(const std::vector<std::string>& words, ImportArgs_st* pArgs);
std::string GetImportHelp();
