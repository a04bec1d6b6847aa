// The particle store: four sequences of which one is active, and the memory limit.
#pragma once

#include <istream>

#include <wx/string.h>

#include "PDATA/clsPDataSequence.h"

class PDataSnap_cls;

class PDataSeqCtrl_cls {
public:
    static constexpr int kSequenceNumber = 4;

    /// bLarge: limit 4096 MB, else 768 MB.
    PDataSeqCtrl_cls(const MakeSequenceDrawing& makeDrawing, bool bLarge);
    ~PDataSeqCtrl_cls();
    PDataSeqCtrl_cls(const PDataSeqCtrl_cls&) = delete;
    PDataSeqCtrl_cls& operator=(const PDataSeqCtrl_cls&) = delete;

    PDataSequence_cls* GetPCActiveFileSequence() const { return mpCSequence[mActive]; }
    /// seq -2 all, -1 the active one, else that one with every index. index -2: every snapshot.
    void ClearData(int seq, int index, bool bForget);
    void OpenDataFile(const wxString& path);
    wxString GetStrActiveFileSequencePath() const;
    int GetActiveFileSequenceLength() const;

    /// Evict what the limit and the playing step don't allow; called on every idle pass.
    void CleanUpMemory(int current, int step);
    void PrepareIndex(int index, double frac, bool bForce, bool bWait);
    bool IsTheIndexReady(int index, double frac, bool bForce);
    bool IsTheIndexLoaded(int index) const;
    long long CalcAndGetUsedTotalMemoryMB();
    int GetLoadedFrameNumber() const;
    void ClearSnipping();
    void SetSnipping(int index);
    /// Memory is short: release the snapshot furthest from use, but never `pKeep` or the one that waits for
    /// its neighbour. False when nothing is left to release.
    static bool ReleaseForAllocation(const PDataSnap_cls* pKeep = nullptr);

    wxString Serialize() const;
    void ReadStrLine(std::wistream& stream, const wxString& line);

    PDataSequence_cls* mpCSequence[kSequenceNumber]; ///< owned
    int mActive = 0;
    int mUsedMB = 0;
    int mLimitMB;

private:
    void ReleaseMemoryOutofStep(int step);
    bool ReleaseMemoryAStep(int current, int step);
    PDataSnap_cls* FindFurthest(const PDataSnap_cls* pKeep) const;

    static PDataSeqCtrl_cls* mspCThis; ///< the store that gives memory back
    int mLastCurrent = 0;
    int mLastStep = 1;
};
