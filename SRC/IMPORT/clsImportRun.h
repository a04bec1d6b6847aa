// One import: from the files to the snapshots and their project.
#pragma once

#include <cstdio>
#include <set>
#include <string>

#include <wx/stopwatch.h>

#include "IMPORT/ImportArgs.h"
#include "IMPORT/ImportProject.h"
#include "IMPORT/clsImportFolder.h"
#include "IMPORT/clsImportNumbers.h"
#include "IMPORT/clsImportRanges.h"
#include "IMPORT/SortByID.h"

class ImportRun_cls {
public:
    /// Says on `pErr` what goes wrong and, unless quiet, how far it is.
    ImportRun_cls(const ImportArgs_st& args, std::FILE* pErr);
    ImportStatus Run();

private:
    void TakeFile(const std::string& path);
    void TakeSnapshot(ParticleSource_cls* pSource, uint64_t source);
    bool KeepOld(ParticleSource_cls* pSource, float time, uint64_t source, IDPrint_cls* pIDs);
    void ReadColumns(ParticleSource_cls* pSource);
    void NoteTypeNames();
    void NoteFacts(const IDPrint_cls& ids);
    void Finish();
    void Complain(const std::string& text);
    void ShowProgress();
    void EndProgress();
    void TellNumbers();

    ImportArgs_st mArgs;
    std::FILE* mpErr;
    bool mbTerminal;
    long mInterval; ///< milliseconds between two words of how far it is
    bool mbBar = false;
    wxStopWatch mWatch;
    long mLastShown = 0;
    ImportFolder_cls mFolder;
    ImportNumbers_cls mNumbers;
    ImportRanges_cls mRanges;
    ImportFacts_st mFacts;
    IDPrint_cls mFirstIDs;
    std::string mProject; ///< its name, as it was written
    ImportSnapshot_st mSnap;
    size_t mFile = 0; ///< the one at work, from 1
    size_t mFiles = 0;
    std::set<std::string> mUsed; ///< parts of a snapshot in several files
    int mKept = 0;
    int mFailed = 0;
    bool mbTimeMissing = false;
    bool mbColumnsTold = false;
};
