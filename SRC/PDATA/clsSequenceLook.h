// Looks at the folder of a sequence that a simulation is still writing, and finds which snapshots are
// complete. One look after the other, each at what the file system says then; nothing here waits between
// them.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "PDATA/clsFileSequence.h"

class GrammerBase_cls;

/// What looks have found since it was last taken.
struct SequenceNews_st {
    int mLength = 0;         ///< of the sequence, never less than before
    std::vector<int> mVLate; ///< indices below it whose missing or broken files are there now
    int mRewritten = 0;      ///< files of it that were written anew; known where the kernel tells of them
    bool mbFolderGone = false;

    bool IsAny(int length) const {
        return mLength > length || !mVLate.empty() || mRewritten > 0 || mbFolderGone;
    }
};

class SequenceLook_cls {
public:
    /// A sequence whose first `length` indices are known; it grows to `most` at the most.
    SequenceLook_cls(const FileSequence_cls& sequence, int length, int most);

    /// Look once. A file counts when it is as whole as its head says (GetSnapshotState), and its size and
    /// time are those of the look before or it is one of `finished`, names that were closed or moved there
    /// since. Numbers that are missing are treated as when a sequence is opened; one that is being written
    /// ends the sequence for now. `wanted`: indices whose files couldn't be used. Adds to `pNews`.
    void Look(const GrammerBase_cls& grammar, bool bRegular, const std::set<std::string>& finished,
              const std::vector<int>& wanted, SequenceNews_st* pNews);
    std::string GetFolder() const { return mFolder; }

private:
    struct Stamp_st {
        long long mSize = -1; ///< -1: there is no such file
        long long mSeconds = 0;
        long long mNanos = 0;
        unsigned long long mInode = 0;
        bool operator==(const Stamp_st& o) const {
            return mSize == o.mSize && mSeconds == o.mSeconds && mNanos == o.mNanos && mInode == o.mInode;
        }
    };
    struct File_st {
        Stamp_st mStamp;
        int mLook = 0;  ///< when it was last looked at
        int mRest = -1; ///< regular looks that found it unchanged, but for the first
        bool mbFinished = false;
        int mState = -1; ///< a SnapshotState, of this stamp; -1 unknown
    };

    static Stamp_st GetStamp(const std::string& path);
    std::string GetName(int index) const;
    File_st& LookAt(int index);
    bool IsWhole(int index);
    bool IsInTheMaking(int index);
    bool IsFolderGone();
    int FindLength();
    int GetIndexOf(const std::string& name) const;
    void LookForLate(const std::vector<int>& wanted, SequenceNews_st* pNews);
    void LookForRewritten(SequenceNews_st* pNews);

    const FileSequence_cls mSequence;
    const int mMost;
    std::string mFolder;
    int mLength;
    long long mSince = 0; ///< seconds since the epoch; files that are older were there
    int mLooks = 0;
    int mGone = 0;                    ///< looks without a folder, in a row
    std::map<int, File_st> mFiles;    ///< that may come to the sequence
    std::map<int, Stamp_st> mTaken;   ///< as they came to it
    std::map<int, Stamp_st> mRetried; ///< as they were told to be there after all
    // Of the present look.
    const GrammerBase_cls* mpCGrammar = nullptr;
    const std::set<std::string>* mpFinished = nullptr;
    bool mbRegular = true;
};
