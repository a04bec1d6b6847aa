// The project that opens what was imported.
#pragma once

#include <string>

#include "IMPORT/ParticleSource.h"

class ImportRanges_cls;

/// What the project is made of, besides how far the particles reach.
struct ImportFacts_st {
    int mSnapshots = 0;
    std::string mFirst;    ///< file of the first snapshot
    std::string mBody;     ///< codes of a record's items
    unsigned mColumns = 0; ///< ImportColumn
    ImportBox_st mBox;     ///< of the first snapshot that has one
    bool mbTime = false;   ///< snapshots have times of their own
    bool mbSameNumber = true;
    bool mbUniqueIDs = true; ///< in each snapshot, whose particles stand in the order of their IDs
    bool mbSameIDs = true;   ///< in all snapshots
    long long mMostParticles = 0;
};

/// Lines for all that differs from a new project.
std::string MakeImportProject(const ImportFacts_st& facts, const ImportRanges_cls& ranges);
