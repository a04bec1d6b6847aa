// The particle arrays of one snapshot: a structure of arrays that exists only while the snapshot is cached.
#pragma once

#include <wx/string.h>

#include "PDATA/ParticleArrays.h"

class DataLoader_cls;
class PDataSnap_cls;

/// The arrays are null while there are none: mpPos after the loader's translate and scale; mpVel as read,
/// then the slope to the next snapshot; mpID only with mbHasID.
class PDataBlock_cls : public ParticleArrays_st {
public:
    explicit PDataBlock_cls(PDataSnap_cls* pSnap);
    ~PDataBlock_cls();
    PDataBlock_cls(const PDataBlock_cls&) = delete;
    PDataBlock_cls& operator=(const PDataBlock_cls&) = delete;

    /// Make the arrays for `number` particles, all zero to whoever reads them after the reader has
    /// finished. 0 makes nothing. False when memory is short (the caller evicts and tries again).
    bool Allocate(int number);
    void ReleaseData();
    /// What the memory limit counts: 56 bytes a particle for Hermite interpolation, else 32; fixed weights.
    long long GetUsedMemoryKB() const;

    /// Read the file's head on the UI thread: particle count here, time into the snapshot. False when the
    /// file can't be used; the user has been told then.
    bool LoadHeaderBinary(const wxString& path);
    bool LoadHeaderAscii(const wxString& path);
    /// Head if not yet known, arrays, then the background reader. False when no reader was started: another
    /// one runs, the file can't be used (the snapshot's file status says so then), or it is read ahead and
    /// memory is short.
    bool LoadData(const wxString& path);
    /// The reader alone, for a block whose head is known and whose arrays exist.
    bool StartLoadingData(const wxString& path);
    /// Start the interpolator towards `next` (this block itself for the last snapshot). A request that
    /// meets a running interpolator is dropped: the answer is false then.
    bool InterpolateData(PDataBlock_cls* pNext);
    /// The running interpolator reads or writes this block's arrays.
    bool IsUnderInterpolation() const;

    static DataLoader_cls* mspCDataLoaderLink;

    PDataSnap_cls* mpCSnap;   ///< owner
    int mParticleNumber = -1; ///< -1: head not yet read
    bool mbAllocated = false;
    int mInterpolateType = 1; ///< an InterpolateType (clsDataLoader.h)
    int mVariableNumber = 0;  ///< a VariableNumber
    bool mbHasID = true;

private:
    bool LoadHeader(const wxString& path);
    bool AllocateOrEvict(bool bAhead);

    static PDataBlock_cls* mspInterpolated; ///< the two blocks of the running interpolator
    static PDataBlock_cls* mspInterpolatedNext;
};
