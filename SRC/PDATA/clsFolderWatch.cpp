#include "PDATA/clsFolderWatch.h"

#include <atomic>
#include <exception>
#include <system_error>

#include <wx/utils.h>

#include "PDATA/clsFolderEvents.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr long kEndMillis = 300; // that the end waits for a look

} // namespace

struct FolderWatch_cls::Job_st {
    Job_st(const FileSequence_cls& sequence, int length, int most, Way way)
        : mLook(sequence, length, most), mWay(way), mLength(length) {}

    void Do() {
        try {
            // Anew, too, when another folder has taken the place of the one that was listened to.
            if (mWay == Way::Told && !mEvents.IsOpen()) mEvents.Open(mLook.GetFolder());
            mLook.Look(mGrammar, mbRegular, mFinished, mVWanted, &mNews);
        } catch (const std::exception&) {
            return; // memory is short: the next look may find some
        }
        mFinished.clear();
    }

    SequenceLook_cls mLook;
    const Way mWay;
    FolderEvents_cls mEvents;
    GrammerBase_cls mGrammar{wxString()};
    std::set<std::string> mFinished;
    std::vector<int> mVWanted;
    SequenceNews_st mNews;
    bool mbRegular = true;
    int mLength; ///< of the sequence when news were taken last
    std::atomic<bool> mbDone{true};
};

FolderWatch_cls::FolderWatch_cls(const FileSequence_cls& sequence, int length, int most, Way way, long millis)
    : mMillis(millis), mpJob(std::make_shared<Job_st>(sequence, length, most, way)) {}

FolderWatch_cls::~FolderWatch_cls() {
    for (long waited = 0; IsWorking() && waited < kEndMillis; ++waited)
        wxMilliSleep(1);
    if (IsWorking())
        mThread.detach(); // what it works on is its own
    else
        Join();
}

bool FolderWatch_cls::IsWorking() const { return !mpJob->mbDone.load(std::memory_order_acquire); }

void FolderWatch_cls::Join() {
    if (mThread.joinable()) mThread.join();
}

const SequenceNews_st* FolderWatch_cls::FindNews() {
    return !IsWorking() && mpJob->mNews.IsAny(mpJob->mLength) ? &mpJob->mNews : nullptr;
}

void FolderWatch_cls::NewsTaken() {
    mpJob->mLength = mpJob->mNews.mLength;
    mpJob->mNews = SequenceNews_st();
}

bool FolderWatch_cls::IsDue() {
    if (IsWorking()) return false;
    const bool bTold = mpJob->mEvents.Read(&mpJob->mFinished);
    mpJob->mbRegular = mbFirst || mSince.Time() >= mMillis;
    return mpJob->mbRegular || bTold;
}

void FolderWatch_cls::Begin(const GrammerBase_cls& grammar, const std::vector<int>& wanted) {
    Join();
    mbFirst = false;
    if (mpJob->mbRegular) mSince.Start();
    mpJob->mGrammar.mCItemDataType.mValue = grammar.mCItemDataType.mValue;
    mpJob->mGrammar.SetHeaderGrammer(grammar.GetHeaderGrammer());
    mpJob->mGrammar.SetBodyGrammer(grammar.GetBodyGrammer());
    mpJob->mVWanted = wanted;
    mpJob->mbDone.store(false);
    try {
        mThread = std::thread([pJob = mpJob] {
            pJob->Do();
            pJob->mbDone.store(true, std::memory_order_release);
        });
    } catch (const std::system_error&) {
        mpJob->mbDone.store(true); // no more threads: the next look
    }
}
