// The background thread that reads the body of one snapshot. At most one runs at a time.
#pragma once

#include <atomic>
#include <string>

#include <wx/thread.h>

#include "PDATA/SnapshotBody.h"

class DataLoader_cls;
class wxString;

/// Detached: deletes itself. It writes only into the arrays that it was given, then, in this order, sets
/// *pbFinished (release) and the percentage to 100, posts ID_REFRESH_SB and ID_REFRESH_TL, sets
/// GThreadReaderIndex to -1, GbThreadReaderFinished (release) and, if GpCThreadReader still is this thread,
/// that to null. Who waits for it waits for GbThreadReaderFinished.
class ThreadFileReader_cls : public wxThread {
public:
    ThreadFileReader_cls() : wxThread(wxTHREAD_DETACHED) {}

    /// Take the arguments and the loader's present settings. `number` counts particles; *pDamage and
    /// *pPlaceless get what ReadSnapshotBody tells, before *pbFinished is set.
    void SetParameters(std::atomic<bool>* pbFinished, std::string* pDamage, long long* pPlaceless,
                       DataLoader_cls* pLoader, const wxString& path, int number,
                       const ParticleArrays_st& arrays, bool bHasID);
    /// Begin. Where the system gives no more threads, the file is read here and now.
    void Start();

protected:
    ExitCode Entry() override;

private:
    std::atomic<bool>* mpbFinished = nullptr; ///< the snapshot's mbLoaded
    std::string* mpDamage = nullptr;          ///< the snapshot's
    long long* mpPlaceless = nullptr;
    SnapshotBody_st mBody;
};
