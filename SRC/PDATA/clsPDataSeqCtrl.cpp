#include "PDATA/clsPDataSeqCtrl.h"

#include <algorithm>
#include <cstdlib>

#include "COMMON/FreeMemory.h"
#include "COMMON/Globals.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"

PDataSeqCtrl_cls* PDataSeqCtrl_cls::mspCThis = nullptr;

PDataSeqCtrl_cls::PDataSeqCtrl_cls(const MakeSequenceDrawing& makeDrawing, bool bLarge)
    : mLimitMB(bLarge ? 4096 : 768) {
    for (int k = 0; k < kSequenceNumber; ++k)
        mpCSequence[k] = new PDataSequence_cls(k, makeDrawing);
    mspCThis = this;
}

PDataSeqCtrl_cls::~PDataSeqCtrl_cls() {
    if (mspCThis == this) mspCThis = nullptr;
    for (PDataSequence_cls* pSequence : mpCSequence)
        delete pSequence;
}

void PDataSeqCtrl_cls::ClearData(int seq, int index, bool bForget) {
    if (seq == -2) {
        for (PDataSequence_cls* pSequence : mpCSequence)
            pSequence->Clear(index, bForget);
    } else if (seq == -1) {
        GetPCActiveFileSequence()->Clear(index, bForget);
    } else if (seq >= 0 && seq < kSequenceNumber) {
        mpCSequence[seq]->Clear(-2, bForget);
    }
}

void PDataSeqCtrl_cls::OpenDataFile(const wxString& path) { GetPCActiveFileSequence()->OpenDataFile(path); }
wxString PDataSeqCtrl_cls::GetStrActiveFileSequencePath() const {
    return GetPCActiveFileSequence()->GetStrPath();
}
int PDataSeqCtrl_cls::GetActiveFileSequenceLength() const {
    return GetPCActiveFileSequence()->GetSeqLength();
}

void PDataSeqCtrl_cls::PrepareIndex(int index, double frac, bool bForce, bool bWait) {
    GetPCActiveFileSequence()->PrepareIndex(index, frac, bForce, bWait);
}

bool PDataSeqCtrl_cls::IsTheIndexReady(int index, double frac, bool bForce) {
    return GetPCActiveFileSequence()->IsTheIndexReady(index, frac, bForce);
}

bool PDataSeqCtrl_cls::IsTheIndexLoaded(int index) const {
    return GetPCActiveFileSequence()->IsTheIndexLoaded(index);
}

long long PDataSeqCtrl_cls::CalcAndGetUsedTotalMemoryMB() {
    const long long used = GetPCActiveFileSequence()->GetUsedTotalMemoryMB();
    mUsedMB = static_cast<int>(used);
    return used;
}

int PDataSeqCtrl_cls::GetLoadedFrameNumber() const {
    return GetPCActiveFileSequence()->GetLoadedFrameNumber();
}

void PDataSeqCtrl_cls::ClearSnipping() {
    for (PDataSequence_cls* pSequence : mpCSequence)
        pSequence->ClearSnipping();
}

void PDataSeqCtrl_cls::SetSnipping(int index) {
    for (PDataSequence_cls* pSequence : mpCSequence)
        pSequence->SetSnipping(index);
}

void PDataSeqCtrl_cls::CleanUpMemory(int current, int step) {
    mLastCurrent = current;
    mLastStep = std::max(step, 1);
    CalcAndGetUsedTotalMemoryMB();
    ReleaseMemoryOutofStep(mLastStep);
    while (mUsedMB > mLimitMB && ReleaseMemoryAStep(current, mLastStep))
        CalcAndGetUsedTotalMemoryMB();
}

// Skipping playback shows the multiples of the step, and interpolation needs the one after each.
void PDataSeqCtrl_cls::ReleaseMemoryOutofStep(int step) {
    const PDataSequence_cls* pSequence = GetPCActiveFileSequence();
    const int length = std::min(pSequence->GetSeqLength(), PDataSequence_cls::kMaxSnap);
    for (int i = 1; i < length; ++i)
        if (i % step >= 2 && pSequence->mpCSnap[i]->IsItLoaded() && MayGo(pSequence->mpCSnap[i]))
            pSequence->mpCSnap[i]->ReleaseData();
}

// Playing goes forward, so what lies behind counts double; what is near ahead is kept, and what bears a key
// (snipped) goes last.
bool PDataSeqCtrl_cls::ReleaseMemoryAStep(int current, int step) {
    const PDataSequence_cls* pSequence = GetPCActiveFileSequence();
    const int length = std::min(pSequence->GetSeqLength(), PDataSequence_cls::kMaxSnap);
    PDataSnap_cls* pAhead[2] = {nullptr, nullptr};  // [snipped]: the last one after current
    PDataSnap_cls* pBehind[2] = {nullptr, nullptr}; // [snipped]: the first one before current
    for (int i = 0; i < length; ++i) {
        PDataSnap_cls* pSnap = pSequence->mpCSnap[i];
        if (i == current || !pSnap->IsItLoaded() || !MayGo(pSnap)) continue;
        if (i > current)
            pAhead[pSnap->mbSnipping] = pSnap;
        else if (!pBehind[pSnap->mbSnipping])
            pBehind[pSnap->mbSnipping] = pSnap;
    }
    const auto distance = [current](const PDataSnap_cls* pSnap) {
        return pSnap ? std::abs(static_cast<long long>(pSnap->mIndex) - current) : 0LL;
    };
    const long long keep = 3LL * step;
    const long long ahead = distance(pAhead[0]);
    const long long behind = 2 * distance(pBehind[0]);
    const long long snippedAhead = distance(pAhead[1]);
    const long long snippedBehind = distance(pBehind[1]);
    PDataSnap_cls* pRelease = nullptr;
    if (ahead > behind && ahead > keep && snippedAhead < 2 * ahead)
        pRelease = pAhead[0];
    else if (pBehind[0] && snippedBehind < behind)
        pRelease = pBehind[0];
    else if (snippedAhead > 2 * snippedBehind && snippedAhead > keep)
        pRelease = pAhead[1];
    else
        pRelease = pBehind[1];
    if (pRelease) pRelease->ReleaseData();
    return pRelease != nullptr;
}

void PDataSeqCtrl_cls::SetPresent(int index, double frac, bool bForce) {
    const PDataSequence_cls* pSequence = GetPCActiveFileSequence();
    const PDataSnap_cls* pShown = index >= 0 ? pSequence->GetSnap(index) : nullptr;
    const PDataSnap_cls* pNext = pShown && pSequence->NeedsSlopes(frac, bForce) ? pShown->mpCNext : nullptr;
    if (pShown == mpCPresent[0] && pNext == mpCPresent[1]) return;
    mpCPresent[0] = pShown;
    mpCPresent[1] = pNext;
    mbRoomAhead = true;
}

bool PDataSeqCtrl_cls::IsPresent(const PDataSnap_cls* pSnap) const {
    return pSnap && (pSnap == mpCPresent[0] || pSnap == mpCPresent[1]);
}

bool PDataSeqCtrl_cls::IsAhead(const PDataSnap_cls* pSnap) {
    return mspCThis && mspCThis->mpCPresent[0] && !mspCThis->IsPresent(pSnap) &&
           !mspCThis->IsPresent(PDataSnap_cls::mspCOnBehalf);
}

bool PDataSeqCtrl_cls::IsRoomAhead() { return !mspCThis || mspCThis->mbRoomAhead; }

void PDataSeqCtrl_cls::RefuseAhead() {
    if (mspCThis) mspCThis->mbRoomAhead = false;
}

bool PDataSeqCtrl_cls::MayGo(const PDataSnap_cls* pSnap) const {
    return !IsPresent(pSnap) && pSnap != PDataSnap_cls::mspCOnBehalf && pSnap != PDataSnap_cls::mspCDrawn &&
           !pSnap->mpCBlock->IsUnderInterpolation();
}

// From the current one, counted as above.
long long PDataSeqCtrl_cls::GetDistance(const PDataSnap_cls* pSnap) const {
    const long long offset = static_cast<long long>(pSnap->mIndex) - mLastCurrent;
    return offset < 0 ? -2 * offset : offset;
}

PDataSnap_cls* PDataSeqCtrl_cls::FindFurthest(const PDataSnap_cls* pFor) const {
    const bool bAhead = pFor && IsAhead(pFor);
    PDataSnap_cls* pFurthest = nullptr;
    long long furthest = bAhead ? GetDistance(pFor) : -1;
    for (const PDataSequence_cls* pSequence : mpCSequence)
        for (PDataSnap_cls* pSnap : pSequence->mpCSnap) {
            // One that is still being read is waited for first, which only the present is worth.
            const bool bThere = bAhead ? pSnap->IsItLoaded() : pSnap->mbLoadStarted;
            if (pSnap == pFor || !bThere || !MayGo(pSnap)) continue;
            const long long distance = GetDistance(pSnap);
            if (distance <= furthest) continue;
            furthest = distance;
            pFurthest = pSnap;
        }
    return pFurthest;
}

bool PDataSeqCtrl_cls::ReleaseForAllocation(const PDataSnap_cls* pFor) {
    // No success by itself: an allocation that fails half way gives its first half to the pool each time.
    ArrayPool_cls::Shared().Trim();
    if (!mspCThis) return false;
    PDataSnap_cls* pSnap = mspCThis->FindFurthest(pFor);
    if (!pSnap && GpCThreadInterpolate.load() && !(pFor && IsAhead(pFor))) {
        PDataSnap_cls::WaitInterpolator();
        pSnap = mspCThis->FindFurthest(pFor);
    }
    if (!pSnap) return false;
    pSnap->ReleaseData();
    ArrayPool_cls::Shared().Trim();
    return true;
}

bool PDataSeqCtrl_cls::MakeRoom(size_t bytes) {
    while (!IsMemoryFree(bytes))
        if (!ReleaseForAllocation()) return false;
    return true;
}

wxString PDataSeqCtrl_cls::Serialize() const {
    wxString text;
    for (const PDataSequence_cls* pSequence : mpCSequence)
        text += pSequence->Serialize();
    return text;
}

void PDataSeqCtrl_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    for (PDataSequence_cls* pSequence : mpCSequence)
        pSequence->ReadStrLine(stream, line);
}
