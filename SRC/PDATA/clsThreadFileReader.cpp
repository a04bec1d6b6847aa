#include "PDATA/clsThreadFileReader.h"

#include <wx/intl.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "PDATA/clsDataLoader.h"

void ThreadFileReader_cls::SetParameters(std::atomic<bool>* pbFinished, DataLoader_cls* pLoader,
                                         const wxString& path, int number, const ParticleArrays_st& arrays,
                                         bool bHasID) {
    mpbFinished = pbFinished;
    mBody = MakeSnapshotBody(*pLoader, path, number, arrays, bHasID);
    if (Create() != wxTHREAD_NO_ERROR) MsgBoxExit(_("Can't create thread"), _("Error!"));
}

wxThread::ExitCode ThreadFileReader_cls::Entry() {
    GThreadReaderPercentage.store(0, std::memory_order_relaxed);
    ReadSnapshotBody(mBody);
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
