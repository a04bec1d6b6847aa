#include "PDATA/clsAsideReader.h"

#include "COMMON/Globals.h"
#include "COMMON/ThreadStates.h"
#include "PDATA/clsPDataSnap.h"

AsideReader_cls::AsideReader_cls() = default;
AsideReader_cls::~AsideReader_cls() = default;

void AsideReader_cls::Drop() { mpCSnap.reset(); }

AsideReader_cls::State AsideReader_cls::Read(const PDataSnap_cls& snap, bool bWait) {
    if (!mpCSnap || mpCSnap->mIndex != snap.mIndex) {
        if (!bWait && IsReaderBusy()) return State::Reading;
        mpCSnap = std::make_unique<PDataSnap_cls>(snap.mpCSequence, snap.mIndex);
        mpCSnap->SetFilePath(snap.mStrFilePath);
    }
    if (mpCSnap->IsItLoaded() || !mpCSnap->IsFileValid()) return State::Read;
    if (bWait || !IsReaderBusy()) mpCSnap->PrepareData(false, bWait);
    if (mpCSnap->IsItLoaded() || !mpCSnap->IsFileValid()) return State::Read;
    return !mpCSnap->mbLoadStarted && !IsReaderBusy() ? State::NoMemory : State::Reading;
}
