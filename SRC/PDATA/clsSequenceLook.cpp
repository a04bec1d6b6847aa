#include "PDATA/clsSequenceLook.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <iterator>

#include <sys/stat.h>

#include "COMMON/clsSplitPath.h"
#include "PDATA/WholeSnapshot.h"

namespace {

constexpr int kGoneLooks = 2;     // a folder may be away for a moment, as when it is replaced
constexpr int kLongRest = 5;      // looks after which a file is taken as it is
constexpr size_t kMostLate = 100; // files that are asked for in a look

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string NameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

} // namespace

SequenceLook_cls::SequenceLook_cls(const FileSequence_cls& sequence, int length, int most)
    : mSequence(sequence), mMost(most), mLength(length), mSince(std::time(nullptr)) {
    mFolder = FolderOf(GetName(0));
}

std::string SequenceLook_cls::GetName(int index) const {
    return NarrowPath(mSequence.GetModifiedStr(index, 0));
}

SequenceLook_cls::Stamp_st SequenceLook_cls::GetStamp(const std::string& path) {
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return {};
    return {facts.st_size, facts.st_mtim.tv_sec, facts.st_mtim.tv_nsec, facts.st_ino};
}

SequenceLook_cls::File_st& SequenceLook_cls::LookAt(int index) {
    File_st& file = mFiles[index];
    if (file.mLook == mLooks) return file;
    const std::string path = GetName(index);
    const Stamp_st stamp = GetStamp(path);
    if (!(stamp == file.mStamp)) file = File_st();
    file.mStamp = stamp;
    file.mRest += mbRegular ? 1 : 0;
    file.mLook = mLooks;
    file.mbFinished = file.mbFinished || mpFinished->count(NameOf(path)) > 0;
    return file;
}

bool SequenceLook_cls::IsWhole(int index) {
    File_st& file = LookAt(index);
    if (file.mStamp.mSize < 0 || (file.mRest < 1 && !file.mbFinished)) return false;
    if (file.mState < 0)
        file.mState = int(GetSnapshotState(*mpCGrammar, mSequence.GetModifiedStr(index, 0),
                                           mSequence.GetModifiedStr(0, 0)));
    if (file.mState == int(SnapshotState::Whole)) return true;
    return file.mState == int(SnapshotState::Unended) && (file.mbFinished || file.mRest >= kLongRest);
}

bool SequenceLook_cls::IsInTheMaking(int index) {
    const File_st& file = LookAt(index);
    return file.mStamp.mSize >= 0 && !IsWhole(index) && file.mRest < kLongRest;
}

bool SequenceLook_cls::IsFolderGone() {
    struct stat facts {};
    const bool bThere =
        stat(mFolder.c_str(), &facts) == 0 ? S_ISDIR(facts.st_mode) : errno != ENOENT && errno != ENOTDIR;
    mGone = bThere ? 0 : mGone + 1;
    return mGone >= kGoneLooks;
}

int SequenceLook_cls::FindLength() {
    // A run of many that are there already is known at the next look.
    for (int i = mLength; i < mMost && LookAt(i).mStamp.mSize >= 0; ++i)
        continue;
    const int end = std::min(mMost, FileSequence_cls::CountBySteps([this](int index) {
                                 return index < mLength || (index < mMost && IsWhole(index));
                             }));
    int length = mLength; // no sequence ends with a hole
    bool bMaking = false;
    for (int i = mLength; i < end; ++i) { // to the end: what is seen now may count at the next look
        bMaking = IsInTheMaking(i) || bMaking;
        if (!bMaking && IsWhole(i)) length = i + 1;
    }
    return length;
}

/// Of a file of the sequence; -1 for others.
int SequenceLook_cls::GetIndexOf(const std::string& name) const {
    const std::string first = NameOf(GetName(0));
    size_t begin = 0;
    while (begin < std::min(first.size(), name.size()) && first[begin] == name[begin])
        ++begin;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    while (begin > 0 && isDigit(name[begin - 1]))
        --begin;
    if (begin == name.size() || !isDigit(name[begin])) return -1;
    errno = 0;
    const long long number = std::strtoll(name.c_str() + begin, nullptr, 10);
    const long long index = number - mSequence.mStartOffset;
    return errno == 0 && index >= 0 && index < mLength && NameOf(GetName(int(index))) == name ? int(index)
                                                                                              : -1;
}

void SequenceLook_cls::LookForRewritten(SequenceNews_st* pNews) {
    for (const std::string& name : *mpFinished) {
        const int index = GetIndexOf(name);
        if (index < 0) continue;
        const Stamp_st stamp = GetStamp(GetName(index));
        const auto taken = mTaken.find(index);
        const bool bOther = taken != mTaken.end() ? !(taken->second == stamp) : stamp.mSeconds > mSince;
        if (stamp.mSize < 0 || !bOther) continue;
        ++pNews->mRewritten;
        mTaken[index] = stamp;
    }
}

void SequenceLook_cls::LookForLate(const std::vector<int>& wanted, SequenceNews_st* pNews) {
    size_t asked = 0;
    for (const int index : wanted) {
        if (index < 0 || index >= mLength || ++asked > kMostLate) continue;
        const Stamp_st stamp = LookAt(index).mStamp;
        const auto retried = mRetried.find(index);
        if ((retried != mRetried.end() && retried->second == stamp) || !IsWhole(index)) continue;
        mRetried[index] = stamp; // one that is whole and yet of no use is tried once
        pNews->mVLate.push_back(index);
    }
}

void SequenceLook_cls::Look(const GrammerBase_cls& grammar, bool bRegular,
                            const std::set<std::string>& finished, const std::vector<int>& wanted,
                            SequenceNews_st* pNews) {
    mbRegular = bRegular;
    mpCGrammar = &grammar;
    mpFinished = &finished;
    ++mLooks;
    pNews->mLength = mLength;
    pNews->mbFolderGone = IsFolderGone();
    if (mGone > 0) return;
    LookForRewritten(pNews);
    LookForLate(wanted, pNews);
    const int length = FindLength();
    for (int i = mLength; i < length; ++i)
        mTaken[i] = LookAt(i).mStamp;
    // Others are waited for or wanted; those that nobody asked about have become part of it.
    for (auto file = mFiles.begin(); file != mFiles.end();) {
        const bool bKeep = file->second.mLook == mLooks && (file->first >= length || file->first < mLength);
        file = bKeep ? std::next(file) : mFiles.erase(file);
    }
    mLength = pNews->mLength = length;
}
