#include "PDATA/clsPDataBlock.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include <wx/intl.h>

#include "COMMON/FreeMemory.h"
#include "COMMON/Globals.h"
#include "COMMON/ThreadStates.h"
#include "PDATA/SnapshotHeader.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSnap.h"
#include "PDATA/clsThreadFileReader.h"
#include "PDATA/clsThreadInterpolator.h"

DataLoader_cls* PDataBlock_cls::mspCDataLoaderLink = nullptr;
PDataBlock_cls* PDataBlock_cls::mspInterpolated = nullptr;
PDataBlock_cls* PDataBlock_cls::mspInterpolatedNext = nullptr;

namespace {

// The last interpolator, at work or done; the next one or the program's end joins it.
std::unique_ptr<ThreadInterpolator_cls> sInterpolator;

/// Drawing takes a draw-time snapshot, a list to sort, and what OpenGL copies of both.
bool HasRoomToDraw(int number) {
    constexpr size_t kBytesOfParticle = 128;
    constexpr size_t kBytesOfPicture = size_t(128) << 20;
    const size_t bytes = size_t(std::max(number, 0)) * kBytesOfParticle + kBytesOfPicture;
    return IsMemoryFree(bytes);
}

} // namespace

PDataBlock_cls::PDataBlock_cls(PDataSnap_cls* pSnap) : mpCSnap(pSnap) {}

PDataBlock_cls::~PDataBlock_cls() { ReleaseData(); }

bool PDataBlock_cls::Allocate(int number) {
    ReleaseData();
    mParticleNumber = number;
    if (number <= 0) return true;
    if (!ArrayPool_cls::Shared().AllocateParticles(static_cast<size_t>(number), mbHasID, this)) return false;
    mbAllocated = true;
    std::printf("Allocate %d\n", number);
    return true;
}

void PDataBlock_cls::ReleaseData() {
    mParticleNumber = -1;
    if (!mbAllocated) return;
    ArrayPool_cls::Shared().FreeParticles(this);
    mbAllocated = false;
}

long long PDataBlock_cls::GetUsedMemoryKB() const {
    if (mParticleNumber == -1) return 0;
    return static_cast<long long>(mParticleNumber) * (mInterpolateType == INTERPOLATE_HERMITE ? 56 : 32) /
           1024;
}

bool PDataBlock_cls::LoadHeaderBinary(const wxString& path) { return LoadHeader(path); }
bool PDataBlock_cls::LoadHeaderAscii(const wxString& path) { return LoadHeader(path); }

bool PDataBlock_cls::LoadHeader(const wxString& path) {
    const SnapshotHeader_st header = ReadSnapshotHeader(*mspCDataLoaderLink, path);
    if (!header.mbOk) {
        mpCSnap->SetUnusable(header.mStrError, true);
        return false;
    }
    mParticleNumber = header.mNumber;
    mpCSnap->mTime = header.mbHasTime ? header.mTime : mpCSnap->mIndex;
    return true;
}

bool PDataBlock_cls::LoadData(const wxString& path) {
    if (GpCThreadReader.load()) return false;
    const bool bAhead = PDataSeqCtrl_cls::IsAhead(mpCSnap);
    if (bAhead && !PDataSeqCtrl_cls::IsRoomAhead()) return false;
    if (mParticleNumber == -1) {
        const bool bText = mspCDataLoaderLink->IsText();
        if (!(bText ? LoadHeaderAscii(path) : LoadHeaderBinary(path))) return false;
        mInterpolateType = static_cast<int>(mspCDataLoaderLink->mCItemInterpolateType.mValue);
        mVariableNumber = static_cast<int>(mspCDataLoaderLink->mCItemVariableNumber.mValue);
    }
    if (!mbAllocated && !AllocateOrEvict(bAhead)) {
        if (bAhead)
            PDataSeqCtrl_cls::RefuseAhead();
        else
            mpCSnap->SetUnusable(
                wxString::Format(_("%s: memory is too short for its %d particles. Lower \"Memory "
                                   "Limit(MB)\" or close other programs, then remove the cache."),
                                 path, mParticleNumber));
        mParticleNumber = -1;
        return false;
    }
    return StartLoadingData(path);
}

bool PDataBlock_cls::AllocateOrEvict(bool bAhead) {
    const int number = mParticleNumber;
    while (!Allocate(number))
        if (!PDataSeqCtrl_cls::ReleaseForAllocation(mpCSnap)) {
            mParticleNumber = number;
            return false;
        }
    if (!bAhead || HasRoomToDraw(number)) return true;
    ReleaseData();
    ArrayPool_cls::Shared().Trim();
    mParticleNumber = number;
    return false;
}

bool PDataBlock_cls::StartLoadingData(const wxString& path) {
    if (GpCThreadReader.load()) return false;
    GbThreadReaderFinished.store(false);
    GThreadReaderIndex.store(mpCSnap->mIndex);
    ThreadFileReader_cls* pReader = new ThreadFileReader_cls;
    GpCThreadReader.store(pReader);
    pReader->SetParameters(&mpCSnap->mbLoaded, &mpCSnap->mStrDamage, &mpCSnap->mPlaceless, mspCDataLoaderLink,
                           path, mParticleNumber, *this, mbHasID);
    pReader->Start();
    return true;
}

bool PDataBlock_cls::IsUnderInterpolation() const {
    return IsInterpolatorBusy() && (this == mspInterpolated || this == mspInterpolatedNext);
}

bool PDataBlock_cls::InterpolateData(PDataBlock_cls* pNext) {
    if (GpCThreadInterpolate.load()) return false;
    float dt = static_cast<float>(pNext->mpCSnap->mTime - mpCSnap->mTime);
    if (dt == 0.0f) dt = 1.0f;
    mspInterpolated = this;
    mspInterpolatedNext = pNext;
    GbThreadInterpolateFinished.store(false);
    sInterpolator = std::make_unique<ThreadInterpolator_cls>();
    const PeriodicBoundary_cls* pPeriodic = mspCDataLoaderLink ? mspCDataLoaderLink->mpCPeriodic : nullptr;
    sInterpolator->SetParameters(&mpCSnap->mbInterpolated, pPeriodic, *this, *pNext, dt);
    GpCThreadInterpolate.store(sInterpolator.get());
    sInterpolator->Run();
    return true;
}
