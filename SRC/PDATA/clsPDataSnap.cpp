#include "PDATA/clsPDataSnap.h"

#include <cstdio>

#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/utils.h>

#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/ThreadStates.h"
#include "COMMON/clsUpdateStatusBar.h"
#include "PDATA/SnapshotWriter.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsSequenceDrawing.h"

unsigned long long PDataSnap_cls::msContents = 0;
const PDataSnap_cls* PDataSnap_cls::mspCDrawn = nullptr;
PDataSnap_cls* PDataSnap_cls::mspCOnBehalf = nullptr;

namespace {

constexpr double kTimeUnset = -9999.0;

// The status bar stays alive through a wait, but nothing else may run: events could change the store.
void UpdateStatusTextOnly() {
    const bool bAllowed = UpdateStatusBar_cls::sbAllowDispach;
    UpdateStatusBar_cls::sbAllowDispach = false;
    UpdateStatusBar_cls::UpdateStatusBar();
    UpdateStatusBar_cls::sbAllowDispach = bAllowed;
}

void PollReader() {
    for (int poll = 1; IsReaderBusy(); ++poll) {
        wxMilliSleep(5);
        if (poll % 100 == 0) UpdateStatusTextOnly();
    }
    ForgetReader();
}

} // namespace

PDataSnap_cls::PDataSnap_cls(PDataSequence_cls* pSequence, int index)
    : mpCBlock(new PDataBlock_cls(this)), mpCSequence(pSequence), mIndex(index) {}

PDataSnap_cls::~PDataSnap_cls() {
    ReleaseData();
    delete mpCBlock;
}

void PDataSnap_cls::SetFilePath(const wxString& path) {
    mStrFilePath = path;
    mFileStatus = FILE_UNCHECKED;
}

int PDataSnap_cls::GetParticleNumber() const {
    return mpCBlock->mParticleNumber == -1 ? 0 : mpCBlock->mParticleNumber;
}

bool PDataSnap_cls::IsFileValid() {
    if (mFileStatus == FILE_UNCHECKED) LookForFile();
    return mFileStatus == FILE_OPENS;
}

void PDataSnap_cls::LookForFile() {
    if (mStrFilePath.empty()) {
        mFileStatus = FILE_UNUSABLE;
    } else if (wxFileName::IsFileReadable(mStrFilePath)) {
        mFileStatus = FILE_OPENS;
    } else {
        SetUnusable(
            wxString::Format(_("%s: this file of the sequence can't be opened. Its frame shows no particles. "
                               "When the file is there, remove the cache to read it."),
                             mStrFilePath));
    }
}

void PDataSnap_cls::SetUnusable(const wxString& text, bool bNoSnapshot) {
    mFileStatus = FILE_UNUSABLE;
    mbNoSnapshot = bNoSnapshot;
    mStrProblem = text;
    Notice(mpCSequence->GetStrPath(), text);
}

bool PDataSnap_cls::IsItLoaded() const { return mbLoaded.load(std::memory_order_acquire) && mbLoadStarted; }

bool PDataSnap_cls::IsItReady(bool bNeed) {
    if (!IsFileValid()) return true;
    if (!IsItLoaded()) return false;
    return !bNeed || (mbInterpolateStarted && mbInterpolated.load(std::memory_order_acquire));
}

void PDataSnap_cls::PrepareData(bool bNeed, bool bWait) {
    if (mbLoaded.load(std::memory_order_acquire) && mbInterpolated.load(std::memory_order_acquire)) return;
    if (!mbLoaded.load(std::memory_order_acquire)) {
        if (!mbLoadStarted) {
            WaitThreadReading(this, false);
            LoadData();
        }
        if (bWait) WaitThreadReading(this, true);
    }
    if (bNeed && !mbInterpolateStarted) InterpolateData(bWait);
    if (bWait && (bNeed || mbInterpolateStarted)) WaitThreadInterpolate(this, true);
}

void PDataSnap_cls::LoadData() {
    // A file may have gone since it was last read.
    if (mFileStatus == FILE_OPENS) mFileStatus = FILE_UNCHECKED;
    if (!IsFileValid()) return;
    mbLoaded.store(false);
    mbLoadStarted = mpCBlock->LoadData(mStrFilePath);
}

void PDataSnap_cls::WaitThreadReading(PDataSnap_cls* pTarget, bool bExpect) {
    if (!GpCThreadReader.load() || bExpect != pTarget->IsUnderRead()) return;
    if (GbGLLockForLoadingData.load()) {
        std::puts("waitnig??");
        return;
    }
    const FlagScope_cls lock(GbGLLockForLoadingData);
    PollReader();
}

void PDataSnap_cls::WaitThreadInterpolate(PDataSnap_cls* pTarget, bool bExpect) {
    const bool bBusy = pTarget->IsItLoaded() ? !pTarget->mbInterpolated.load(std::memory_order_acquire)
                                             : pTarget->mbLoadStarted || pTarget->mbInterpolateStarted;
    if (bExpect == bBusy) WaitInterpolator();
}

void PDataSnap_cls::WaitInterpolator() {
    if (!GpCThreadInterpolate.load()) return;
    const FlagScope_cls lock(GbGLLockForInterplateData);
    while (IsInterpolatorBusy())
        wxMilliSleep(3);
    ForgetInterpolator();
}

// True when the next snapshot's arrays are there or never will be.
bool PDataSnap_cls::PrepareNext(bool bWait) {
    if (!mpCNext || mpCNext->IsItLoaded() || !mpCNext->IsFileValid()) return true;
    if (!mpCNext->mbLoadStarted) {
        WaitThreadReading(mpCNext, false);
        mspCOnBehalf = this;
        mpCNext->LoadData();
        mspCOnBehalf = nullptr;
    }
    if (bWait) WaitThreadReading(mpCNext, true);
    return bWait && (mpCNext->IsItLoaded() || !mpCNext->IsFileValid());
}

void PDataSnap_cls::InterpolateData(bool bWait) {
    if (!IsItLoaded() || !PrepareNext(bWait)) return;
    if (bWait) WaitInterpolator();
    const bool bNext = mpCNext && mpCNext->IsFileValid() && mpCNext->IsItLoaded();
    mbInterpolated.store(false);
    // A request that met an interpolator busy with others was not taken: it has to be made again.
    mbInterpolateStarted = mpCBlock->InterpolateData(bNext ? mpCNext->mpCBlock : mpCBlock);
}

bool PDataSnap_cls::ForgetSlopes() {
    if (mpCBlock->IsUnderInterpolation()) return false;
    mbInterpolateStarted = false;
    mbInterpolated.store(false);
    return true;
}

bool PDataSnap_cls::ExportData(DataExporter_cls* pExporter, double dt, int step, int frame) {
    if (IsUnderRead()) return false;
    // Velocities that are just becoming slopes are neither.
    if (mpCBlock->IsUnderInterpolation()) WaitInterpolator();
    return pExporter->ExportData(SnapshotSource_st::Of(*mpCBlock, dt, step), frame);
}

void PDataSnap_cls::ReleaseData() {
    WaitThreadReading(this, true);
    if (IsUnderRead()) PollReader(); // arrays under the reader's hands never go, whatever flag is up
    if (mpCBlock->IsUnderInterpolation()) WaitInterpolator();
    if (mpCSequence) mpCSequence->GetDrawing().LetGo(*mpCBlock);
    mpCBlock->ReleaseData();
    mbLoadStarted = false;
    mbInterpolateStarted = false;
    mbLoaded.store(false);
    mbInterpolated.store(false);
}

void PDataSnap_cls::Clear(bool bForget) {
    ++msContents;
    ReleaseData();
    if (bForget) {
        mTime = kTimeUnset;
        mStrFilePath.clear();
        mFileStatus = FILE_UNCHECKED;
    } else if (mFileStatus == FILE_UNUSABLE) {
        mFileStatus = FILE_UNCHECKED; // a second chance for what was missing or too large
    }
}

long long PDataSnap_cls::GetUsedMemoryKB() const { return mpCBlock->GetUsedMemoryKB(); }
