// Runs the importer as a child, and reads what it has written.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "TempFolder.h"

struct ImportRunResult_st {
    int mStatus = -1; ///< exit status; 128 + the signal for one that ended by a signal
    std::string mErr;
    long mPeakKB = 0; ///< of its memory
};

/// One snapshot, read by the layout that the project tells.
struct ReadSnapshot_st {
    float mTime = 0;
    std::vector<float> mPos;
    std::vector<float> mVel;
    std::vector<float> mRadius;
    std::vector<float> mValue;
    std::vector<int> mID;
    std::vector<int> mType;
};

class ImportFolder_st : public TempFolder_cls {
public:
    ImportFolder_st() : TempFolder_cls("morentis_import_") {}
    std::string operator/(const std::string& name) const { return GetPath() + "/" + name; }

    /// Import these words into the folder "out", or `output`. `fileBytes`: the most that a file may get, 0:
    /// no limit.
    ImportRunResult_st Run(const std::vector<std::string>& words, long fileBytes = 0,
                           const std::string& output = "",
                           const std::function<void(int pid)>& meanwhile = {}) const;
    /// Lines of the project by their keys.
    std::map<std::string, std::string> ReadProject() const;
    ReadSnapshot_st ReadSnapshot(int index) const;
    int CountSnapshots() const;
};

std::string ReadBytes(const std::string& path);
/// The file gzipped.
std::string Gzip(const std::string& bytes);
