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
    /// What is shown or waited for now: snapshot `index` of the active sequence and, where particles move
    /// (`frac` isn't 0, `bForce`, or colours ask for it), the one behind it. Neither is ever evicted.
    void SetPresent(int index, double frac, bool bForce);
    /// Would reading this snapshot be reading ahead? Then it takes no memory from the present, and a lack of
    /// memory is no reason to give its file up.
    static bool IsAhead(const PDataSnap_cls* pSnap);
    /// Reading ahead: is there memory for it, and enough left to draw what is shown? Not asked again before
    /// another present is set.
    static bool IsRoomAhead();
    static void RefuseAhead();
    /// Memory is short for `pFor`, or for drawing: give back what the pool keeps, then the snapshot furthest
    /// from use, but never `pFor`, one of the present, one that is drawn or interpolated, or the one that
    /// waits for its neighbour; for reading ahead only what is further away. False when nothing is left.
    static bool ReleaseForAllocation(const PDataSnap_cls* pFor = nullptr);
    /// Give back as much that the system gives so many bytes to somebody else; false where it can't be done.
    static bool MakeRoom(size_t bytes);

    wxString Serialize() const;
    void ReadStrLine(std::wistream& stream, const wxString& line);

    PDataSequence_cls* mpCSequence[kSequenceNumber]; ///< owned
    int mActive = 0;
    int mUsedMB = 0;
    int mLimitMB;

private:
    void ReleaseMemoryOutofStep(int step);
    bool ReleaseMemoryAStep(int current, int step);
    PDataSnap_cls* FindFurthest(const PDataSnap_cls* pFor) const;
    bool IsPresent(const PDataSnap_cls* pSnap) const;
    bool MayGo(const PDataSnap_cls* pSnap) const;
    long long GetDistance(const PDataSnap_cls* pSnap) const;

    static PDataSeqCtrl_cls* mspCThis; ///< the store that gives memory back
    const PDataSnap_cls* mpCPresent[2] = {nullptr, nullptr};
    bool mbRoomAhead = true;
    int mLastCurrent = 0;
    int mLastStep = 1;
};
