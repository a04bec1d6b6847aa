// The background thread that reads the body of one snapshot. At most one runs at a time.
#pragma once

#include <atomic>

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

    /// Take the arguments and the loader's present settings and create the thread; `Run` starts it. A
    /// thread that can't be made ends the program with a message. `number` counts particles.
    void SetParameters(std::atomic<bool>* pbFinished, DataLoader_cls* pLoader, const wxString& path,
                       int number, const ParticleArrays_st& arrays, bool bHasID);

protected:
    ExitCode Entry() override;

private:
    std::atomic<bool>* mpbFinished = nullptr; ///< the snapshot's mbLoaded
    SnapshotBody_st mBody;
};
