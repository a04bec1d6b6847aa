#include "IMPORT/clsImportRun.h"

#include <unistd.h>

#include <algorithm>
#include <new>

#include "IMPORT/OpenSource.h"
#include "IMPORT/StopSignal.h"

namespace {

constexpr long kBarMillis = 200;
constexpr long kLogMillis = 10000;
constexpr long kOftenMillis = 500;
constexpr int kMostSnapshots = 10000; // of one sequence

std::string MakeNote(const ImportArgs_st& args) {
    return "from=" + (args.mFrom.empty() ? "contents" : args.mFrom) + " columns=" + args.mColumnText;
}

} // namespace

ImportRun_cls::ImportRun_cls(const ImportArgs_st& args, std::FILE* pErr)
    : mArgs(args), mpErr(pErr), mbTerminal(isatty(fileno(pErr)) != 0 && !args.mbProgress),
      mInterval(args.mbProgress ? kOftenMillis
                : mbTerminal    ? kBarMillis
                                : kLogMillis),
      mFolder(args.mOutput) {}

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
    if (mArgs.mbQuiet || now - mLastShown < mInterval) return;
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
    for (const std::string& name : mFolder.GetNote().mTypeNames)
        mArgs.mChoice.mpTypeNames->emplace(name, static_cast<int>(mArgs.mChoice.mpTypeNames->size()));
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
    } catch (const ImportStop_cls&) {
        Complain("stopped; the same words with --resume go on from here");
        ++mFailed;
        if (mFacts.mSnapshots == 0) {
            mFolder.Undo();
            return ImportStatus::NotOpened;
        }
    } catch (const ImportWriteError_cls& error) {
        Complain(error.what());
        ++mFailed;
        if (mFacts.mSnapshots == 0) {
            mFolder.Undo();
            return ImportStatus::WrongArguments;
        }
    }
    try {
        Finish();
    } catch (const ImportWriteError_cls& error) {
        Complain(error.what());
        return ImportStatus::SomeFailed;
    }
    TellNumbers();
    return mFailed > 0 ? ImportStatus::SomeFailed : ImportStatus::Done;
}

// Also of an import whose disk became full: what is there can be looked at.
void ImportRun_cls::Finish() {
    mProject = mFolder.WriteProject(MakeImportProject(mFacts, mRanges));
    mFolder.WriteNote();
    if (mProject != mFolder.GetProjectName())
        Complain(mFolder.GetProjectName() + " was changed since it was written and stays; the new one is " +
                 mProject);
}

// Numbers of the words go on where an earlier run left them.
void ImportRun_cls::NoteTypeNames() {
    std::vector<std::string>& names = mFolder.GetNote().mTypeNames;
    names.resize(mArgs.mChoice.mpTypeNames->size());
    for (const auto& [name, number] : *mArgs.mChoice.mpTypeNames)
        names[static_cast<size_t>(number)] = name;
}

// What can't be read costs the rest of its file, and nothing else.
void ImportRun_cls::TakeFile(const std::string& path) {
    int here = 0;
    try {
        const std::unique_ptr<ParticleSource_cls> source = OpenImportSource(path, mArgs.mFrom, mArgs.mChoice);
        for (const std::string& part : source->GetFiles())
            mUsed.insert(part);
        for (; source->NextHead(&mSnap); ++here) {
            ThrowIfStopped();
            std::vector<std::string> parts = source->GetFiles();
            mUsed.insert(parts.begin(), parts.end());
            if (parts.empty()) parts = {path};
            TakeSnapshot(source.get(), HashSource(parts, here));
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
bool ImportRun_cls::KeepOld(ParticleSource_cls* pSource, float time, uint64_t source, IDPrint_cls* pIDs) {
    bool bNewIDs = false;
    if (!mArgs.mbResume || !mFolder.IsWhole(mFacts.mSnapshots, mSnap, time, source, &mRanges, pIDs, &bNewIDs))
        return false;
    if (bNewIDs || mNumbers.NeedsTypes(mSnap)) ReadColumns(pSource);
    ++mKept;
    return true;
}

void ImportRun_cls::ReadColumns(ParticleSource_cls* pSource) {
    pSource->ReadBody(&mSnap);
    mNumbers.MapIDs(&mSnap);
    mNumbers.MapTypes(&mSnap);
}

void ImportRun_cls::TakeSnapshot(ParticleSource_cls* pSource, uint64_t source) {
    if (mFacts.mSnapshots == 0) mFolder.SetColumns(mSnap.mColumns);
    if (mSnap.mColumns != mFolder.GetColumns() && !mbColumnsTold) {
        Complain("the columns change at snapshot " + std::to_string(mFacts.mSnapshots) +
                 ": those of the first one count, and what is missing is 0");
        mbColumnsTold = true;
    }
    const float time = mSnap.mbTime ? static_cast<float>(mSnap.mTime) : static_cast<float>(mFacts.mSnapshots);
    IDPrint_cls ids;
    if (!KeepOld(pSource, time, source, &ids)) {
        ids = IDPrint_cls();
        ReadColumns(pSource);
        SortByID(&mSnap);
        for (const long long id : mSnap.mID)
            ids.Add(static_cast<int>(id));
        NoteTypeNames();
        mRanges.Add(mSnap.mPos.data(), 3, mSnap.mValue.empty() ? nullptr : mSnap.mValue.data(), 1,
                    mSnap.mNumber);
        if (mFacts.mSnapshots == 0) mFolder.Begin();
        mFolder.Write(mFacts.mSnapshots, mSnap, time, source);
    }
    if (mRanges.GetOdd() > 0)
        Complain(mFolder.GetName(mFacts.mSnapshots) + ": " + std::to_string(mRanges.GetOdd()) +
                 " coordinates are no finite numbers; they stay as they are");
    mRanges.EndSnapshot();
    NoteFacts(ids);
}

void ImportRun_cls::NoteFacts(const IDPrint_cls& ids) {
    if (mFacts.mSnapshots == 0) {
        mFacts.mFirst = mFolder.GetName(0);
        mFacts.mBody = mFolder.GetBody();
        mFacts.mColumns = mFolder.GetColumns();
        mFacts.mMostParticles = mSnap.mNumber;
        mFirstIDs = ids;
    }
    mFacts.mbUniqueIDs = mFacts.mbUniqueIDs && ids.IsUnique();
    mFacts.mbSameIDs = mFacts.mbSameIDs && ids == mFirstIDs;
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
    std::string names;
    for (const std::string& name : mFolder.GetNote().mTypeNames)
        names += (names.empty() ? "Types: " : ", ") + name + " " +
                 std::to_string(std::min<size_t>(ImportNumbers_cls::kLastType,
                                                 size_t(&name - mFolder.GetNote().mTypeNames.data())));
    if (!names.empty()) std::fprintf(mpErr, "%s.\n", names.c_str());
    if (mNumbers.HasTypesBeyond()) std::fputs("Types beyond the fourth became type 3.\n", mpErr);
    std::fprintf(mpErr, "%d snapshots, %d of them kept, and %s stand in %s (%.1f s).\n", mFacts.mSnapshots,
                 mKept, mProject.c_str(), mArgs.mOutput.c_str(), double(mWatch.Time()) / 1000.0);
}
