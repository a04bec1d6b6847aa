#include "PDATA/clsThreadFileReader.h"

#include <wx/log.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/WorkTimes.h"
#include "PDATA/clsDataLoader.h"

void ThreadFileReader_cls::SetParameters(std::atomic<bool>* pbFinished, std::string* pDamage,
                                         long long* pPlaceless, DataLoader_cls* pLoader, const wxString& path,
                                         int number, const ParticleArrays_st& arrays, bool bHasID) {
    mpbFinished = pbFinished;
    mpDamage = pDamage;
    mpPlaceless = pPlaceless;
    mBody = MakeSnapshotBody(*pLoader, path, number, arrays, bHasID);
}

void ThreadFileReader_cls::Start() {
    const wxLogNull quiet; // the lack of a thread is no news
    if (Create() == wxTHREAD_NO_ERROR && Run() == wxTHREAD_NO_ERROR) return;
    Entry();
    delete this;
}

wxThread::ExitCode ThreadFileReader_cls::Entry() {
    GThreadReaderPercentage.store(0, std::memory_order_relaxed);
    {
        const WorkScope_cls work(Work::Read);
        *mpDamage = ReadSnapshotBody(mBody, mpPlaceless);
    }
    mpbFinished->store(true, std::memory_order_release);
    GThreadReaderPercentage.store(100, std::memory_order_relaxed);
    PostMenuEvent(ID_REFRESH_SB);
    PostMenuEvent(ID_REFRESH_TL);
    GThreadReaderIndex.store(-1);
    GbThreadReaderFinished.store(true, std::memory_order_release);
    // The UI thread may have gone on already, even with the next reader.
    ThreadFileReader_cls* self = this;
    GpCThreadReader.compare_exchange_strong(self, nullptr);
    return nullptr;
}
