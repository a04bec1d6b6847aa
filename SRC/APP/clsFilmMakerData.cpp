// The film maker's data: waiting for them, reading ahead, and what is missing or damaged in them.
#include "APP/clsFilmMaker.h"

#include <algorithm>

#include <wx/arrstr.h>

#include "APP/FilmFrames.h"
#include "APP/FilmStop.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/ThreadStates.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterLists.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "PDATA/SnapshotBody.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kReadyTries = 10;

} // namespace

// Do frames of this film move particles between snapshots? Velocities in memory become slopes by that: what
// is exported must not depend on which frames were made before.
bool FilmMaker_cls::NeedsSlopes() const {
    return mpCTime->GetAnimInterp() > 1 || mpCTime->mCMotionBlur.mbBlur || mpCTime->mbUseTimeRemap.mValue;
}

void FilmMaker_cls::ExportFrame(const wxString& path) {
    const PDataSequence_cls* sequence = mpCFrame->GetPCActiveFileSequence();
    const double index = mpCTime->GetRemappedIndexDouble(-1, -1);
    const int whole = int(index);
    if (NeedsSlopes()) mpCMain->mpCPDataSeqCtrl->PrepareIndex(whole, index - whole, true, true);
    PDataSnap_cls::WaitInterpolator();
    const double step = mpCTime->GetRemappedIndex(-1) - whole + mpCTime->GetRemappedInterpStepDouble(-1, -1);
    const double dt = sequence->GetDT(whole, step);
    const int downSizing = mpCMain->mpCDrawOption->GetDownSizing();
    wxString reason;
    if (!mpCMain->mpCDataExporter->ExportFile(path, *sequence->GetPCBlock(whole), dt, downSizing, &reason))
        FailFrame(path, reason, false);
}

// From the work area's start, wherever this part of the film begins.
bool FilmMaker_cls::FollowBonds(const wxString& path) {
    constexpr long kMillis = 1000;
    const MillisScope_cls time(mWatch, &mDataMillis);
    BondFollower_cls& bonds = *mpCMain->mpCFilters->mpCBonds;
    if (!mpCCanvas->mShowData.mValue) return true;
    bonds.mIsStopped = [] { return IsFilmStopped(); };
    using State = BondFollower_cls::State;
    State state = State::More;
    while (!IsFilmStopped() && (state == State::More || state == State::Reading))
        state = bonds.Follow(kMillis, BondFollower_cls::Source::Wait);
    bonds.mIsStopped = nullptr;
    if (state == State::Stopped && !IsFilmStopped()) FailFrame(path, bonds.GetReason());
    return state == State::Known;
}

// All that the frame's pictures show of it: the place where the anchor is held, and the whole trail.
bool FilmMaker_cls::FollowParticle(const wxString& path) {
    constexpr long kMillis = 1000;
    const MillisScope_cls time(mWatch, &mDataMillis);
    ParticleWatch_cls& watch = *mpCMain->mpCParticles;
    using State = ParticleWatch_cls::State;
    State state = State::More;
    while (!IsFilmStopped() && (state == State::More || state == State::Reading))
        state = watch.Learn(kMillis, ParticleWatch_cls::Source::Wait);
    if (state == State::NoMemory && !IsFilmStopped()) FailFrame(path, watch.GetStatus());
    return state == State::Known;
}

void FilmMaker_cls::WaitForData() {
    const MillisScope_cls time(mWatch, &mDataMillis);
    for (int tries = 0; tries < kReadyTries && !mpCFrame->IsTheFrameReady(-1) && !IsFilmStopped(); ++tries)
        mpCFrame->PrepareTheFrame(-1);
}

// The paint reads ahead whole frames in the order of playing; the film knows which steps come.
void FilmMaker_cls::ReadAhead(size_t i) {
    PDataSeqCtrl_cls* store = mpCMain->mpCPDataSeqCtrl;
    const bool bForce = mpCTime->IsForceInterpolation();
    for (size_t k = i + 1; k < mFilm.size() && k <= i + size_t(mpCTime->GetPrefetch()); ++k) {
        if (IsAnyThreadBusy()) return;
        const double index = mpCTime->GetRemappedIndexDouble(mFilm[k].mFrame, mFilm[k].mStep);
        const int whole = int(index);
        if (!store->IsTheIndexReady(whole, index - whole, bForce))
            store->PrepareIndex(whole, index - whole, bForce, false);
    }
}

// A film doesn't come back: what lies behind gives its memory to what comes, which is faster than fresh
// memory and leaves room for other films on the same machine.
void FilmMaker_cls::DropBehind(size_t i) {
    if (i + 1 >= mFilm.size() || mpCTime->mbUseTimeRemap.mValue) return;
    const PDataSequence_cls* sequence = mpCFrame->GetPCActiveFileSequence();
    const int end = std::min(mFilm[i + 1].mFrame, sequence->GetSeqLength() - 1);
    for (int snapshot = mFilm[i].mFrame; snapshot < end; ++snapshot)
        if (sequence->IsTheIndexLoaded(snapshot)) sequence->mpCSnap[snapshot]->ReleaseData();
}

/// The snapshots that this moment is made of: the first and the last.
std::pair<int, int> FilmMaker_cls::GetSnapshots() const {
    const double index = mpCTime->GetRemappedIndexDouble(-1, -1);
    const int first = int(index);
    const bool bNext =
        mpCFrame->GetPCActiveFileSequence()->NeedsSlopes(index - first, mpCTime->IsForceInterpolation());
    return {first, bNext ? first + 1 : first};
}

// What is told of damaged data, once a file.
void FilmMaker_cls::NoteDamage(int frame) {
    const PDataSequence_cls* sequence = mpCFrame->GetPCActiveFileSequence();
    const auto [first, last] = GetSnapshots();
    for (int snapshot = first; snapshot <= last && mpCCanvas->mShowData.mValue; ++snapshot) {
        const PDataSnap_cls& snap = *sequence->GetSnap(snapshot);
        if (!snap.IsItLoaded() || snap.mStrDamage.empty()) continue;
        mSDamagedFrames.insert(frame);
        if (!mSDamagedFiles.insert(snap.mStrFilePath).second) continue;
        for (const wxString& line : wxSplit(wxString::FromUTF8(snap.mStrDamage), '\n', '\0'))
            Complain(line);
    }
}

// Pictures without a mesh or bonds that the project names. What is wrong with the file is told already.
void FilmMaker_cls::NoteFilterFaults(int frame) {
    FilterLists_cls& filters = *mpCMain->mpCFilters;
    for (int list = 0; list < kFilterLists; ++list)
        for (int i = 0; i < filters.Get(list).GetCount(); ++i)
            if (filters.Get(list).GetPCFilter(i)->HasBrokenFile()) mSDamagedFrames.insert(frame);
}

void FilmMaker_cls::TellDamage() {
    if (mSDamagedFrames.empty() || mArgs.mbDamagedOk) return;
    Fail(FilmStatus::SomeFailed,
         "damaged data are in " + ListFrames(mSDamagedFrames) + "; --damaged ok takes them as they are");
}

/// What of this moment's data can't be read or isn't there.
wxString FilmMaker_cls::FindMissing() const {
    const PDataSequence_cls* sequence = mpCFrame->GetPCActiveFileSequence();
    const auto [first, last] = GetSnapshots();
    for (int snapshot = first; snapshot <= last && mpCCanvas->mShowData.mValue; ++snapshot) {
        const PDataSnap_cls& snap = *sequence->GetSnap(snapshot);
        if (snap.IsItLoaded() && IsShortOfMemory(snap.mStrDamage)) return wxString::FromUTF8(snap.mStrDamage);
        if (mArgs.mbDamagedOk && snap.mbNoSnapshot) continue; // it shows no particles, and that is told
        if (sequence->GetFilenameStatus(snapshot) == FILE_UNUSABLE)
            return sequence->GetFilename(snapshot) +
                   " can't be read: " + sequence->GetSnap(snapshot)->mStrProblem;
    }
    if (!mpCCanvas->mShowData.mValue || mpCFrame->IsTheFrameReady(-1)) return wxString();
    return sequence->GetFilename(first) + " is not in memory";
}
