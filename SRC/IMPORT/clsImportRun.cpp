#include "IMPORT/clsImportRun.h"

#include <unistd.h>

#include <algorithm>
#include <new>

#include "IMPORT/OpenSource.h"

namespace {

constexpr long kBarMillis = 200;
constexpr long kLogMillis = 10000;
constexpr int kMostSnapshots = 10000; // of one sequence

std::string MakeNote(const ImportArgs_st& args) {
    return "from=" + (args.mFrom.empty() ? "contents" : args.mFrom) + " columns=" + args.mColumnText;
}

} // namespace

ImportRun_cls::ImportRun_cls(const ImportArgs_st& args, std::FILE* pErr)
    : mArgs(args), mpErr(pErr), mbTerminal(isatty(fileno(pErr)) != 0), mFolder(args.mOutput) {}

void ImportRun_cls::EndProgress() {
    if (mbBar) std::fputs("\r\033[K", mpErr);
    mbBar = false;
}

void ImportRun_cls::Complain(const std::string& text) {
    EndProgress();
    std::fprintf(mpErr, "morentis-import: %s\n", text.c_str());
}

void ImportRun_cls::ShowProgress() {
    const long now = mWatch.Time();
    if (mArgs.mbQuiet || now - mLastShown < (mbTerminal ? kBarMillis : kLogMillis)) return;
    mLastShown = now;
    std::fprintf(mpErr,
                 mbTerminal ? "\r\033[KSnapshot %d, file %zu of %zu" : "Snapshot %d, file %zu of %zu\n",
                 mFacts.mSnapshots, mFile, mFiles);
    std::fflush(mpErr);
    mbBar = mbTerminal;
}

ImportStatus ImportRun_cls::Run() {
    const std::string wrong = mFolder.Check(mArgs.mbResume, MakeNote(mArgs));
    if (!wrong.empty()) {
        Complain(wrong);
        return ImportStatus::WrongArguments;
    }
    try {
        const std::vector<std::string> files = OrderImportFiles(mArgs.mFiles);
        mFiles = files.size();
        for (const std::string& file : files) {
            ++mFile;
            if (mUsed.count(file) == 0) TakeFile(file);
        }
        if (mFacts.mSnapshots == 0) {
            Complain("there is no snapshot in " + (files.size() == 1 ? files[0] : "these files"));
            return ImportStatus::NotOpened;
        }
        mFolder.WriteText(mFolder.GetProjectName(), MakeImportProject(mFacts, mRanges));
    } catch (const ImportWriteError_cls& error) {
        Complain(error.what());
        return mFacts.mSnapshots == 0 ? ImportStatus::WrongArguments : ImportStatus::SomeFailed;
    }
    TellNumbers();
    return mFailed > 0 ? ImportStatus::SomeFailed : ImportStatus::Done;
}

// What can't be read costs the rest of its file, and nothing else.
void ImportRun_cls::TakeFile(const std::string& path) {
    int here = 0;
    try {
        const std::unique_ptr<ParticleSource_cls> source = OpenImportSource(path, mArgs.mFrom, mArgs.mChoice);
        for (const std::string& part : source->GetFiles())
            mUsed.insert(part);
        for (; source->NextHead(&mSnap); ++here) {
            TakeSnapshot(source.get());
            ShowProgress();
        }
        if (here == 0) throw ImportError_cls(path + ": there is no snapshot in it");
    } catch (const ImportError_cls& error) {
        Complain(error.what());
        ++mFailed;
    } catch (const std::bad_alloc&) {
        Complain(path + ": memory is too short for a snapshot of it");
        ++mFailed;
    }
}

// A kept one is read all the same where later ones depend on it.
bool ImportRun_cls::KeepOld(ParticleSource_cls* pSource, float time) {
    bool bNewIDs = false;
    if (!mArgs.mbResume || !mFolder.IsWhole(mFacts.mSnapshots, mSnap, time, &mRanges, &bNewIDs)) return false;
    if (bNewIDs || mSnap.mbStateful || mNumbers.NeedsTypes(mSnap)) {
        pSource->ReadBody(&mSnap);
        mNumbers.MapIDs(&mSnap);
        mNumbers.MapTypes(&mSnap);
    }
    ++mKept;
    return true;
}

void ImportRun_cls::TakeSnapshot(ParticleSource_cls* pSource) {
    if (mFacts.mSnapshots == 0) mFolder.SetColumns(mSnap.mColumns);
    if (mSnap.mColumns != mFolder.GetColumns() && !mbColumnsTold) {
        Complain("the columns change at snapshot " + std::to_string(mFacts.mSnapshots) +
                 ": those of the first one count, and what is missing is 0");
        mbColumnsTold = true;
    }
    const float time = mSnap.mbTime ? static_cast<float>(mSnap.mTime) : static_cast<float>(mFacts.mSnapshots);
    if (!KeepOld(pSource, time)) {
        pSource->ReadBody(&mSnap);
        mNumbers.MapIDs(&mSnap);
        mNumbers.MapTypes(&mSnap);
        mRanges.Add(mSnap.mPos.data(), 3, mSnap.mValue.empty() ? nullptr : mSnap.mValue.data(), 1,
                    mSnap.mNumber);
        if (mFacts.mSnapshots == 0) mFolder.Begin(MakeNote(mArgs));
        mFolder.Write(mFacts.mSnapshots, mSnap, time);
    }
    if (mRanges.GetOdd() > 0)
        Complain(mFolder.GetName(mFacts.mSnapshots) + ": " + std::to_string(mRanges.GetOdd()) +
                 " coordinates are no finite numbers; they stay as they are");
    mRanges.EndSnapshot();
    NoteFacts();
}

void ImportRun_cls::NoteFacts() {
    if (mFacts.mSnapshots == 0) {
        mFacts.mFirst = mFolder.GetName(0);
        mFacts.mBody = mFolder.GetBody();
        mFacts.mColumns = mFolder.GetColumns();
        mFacts.mMostParticles = mSnap.mNumber;
    }
    if (mSnap.mNumber != mFacts.mMostParticles) mFacts.mbSameNumber = false;
    mFacts.mMostParticles = std::max(mFacts.mMostParticles, mSnap.mNumber);
    if (mSnap.mBox.mbThere && !mFacts.mBox.mbThere) mFacts.mBox = mSnap.mBox;
    if (++mFacts.mSnapshots == kMostSnapshots + 1)
        Complain("there are more than " + std::to_string(kMostSnapshots) +
                 " snapshots: not all open at once");
}

void ImportRun_cls::TellNumbers() {
    EndProgress();
    if (mArgs.mbQuiet) return;
    if (mNumbers.HasNewIDs())
        std::fputs("IDs that don't fit into 31 bits became -1, -2, ..., the same in all snapshots.\n", mpErr);
    if (mNumbers.GetFirstType() > 0)
        std::fputs("Types count from 1 in these files: type 1 became 0, and so on.\n", mpErr);
    if (mNumbers.HasTypesBeyond()) std::fputs("Types beyond the fourth became type 3.\n", mpErr);
    std::fprintf(mpErr, "%d snapshots, %d of them kept, and %s stand in %s (%.1f s).\n", mFacts.mSnapshots,
                 mKept, mFolder.GetProjectName().c_str(), mArgs.mOutput.c_str(),
                 double(mWatch.Time()) / 1000.0);
}
