// One slot of a sequence: how far its snapshot has come (four flags), its time, file and arrays.
#pragma once

#include <atomic>
#include <string>

#include <wx/string.h>

/// What is known of a snapshot's file.
enum SnapFileStatus { FILE_UNCHECKED = 0, FILE_OPENS = 1, FILE_UNUSABLE = 2 };

class DataExporter_cls;
class PDataBlock_cls;
class PDataSequence_cls;

class PDataSnap_cls {
public:
    PDataSnap_cls(PDataSequence_cls* pSequence, int index);
    ~PDataSnap_cls();
    PDataSnap_cls(const PDataSnap_cls&) = delete;
    PDataSnap_cls& operator=(const PDataSnap_cls&) = delete;

    /// Also forgets what was known of the file.
    void SetFilePath(const wxString& path);
    /// 0 while the head is unread.
    int GetParticleNumber() const;
    /// The file opens and its head made sense; looked up once, and again before every read.
    bool IsFileValid();
    /// Bring the snapshot to the point of being drawn: read, and with `bNeed` its slopes; with `bWait`
    /// the call returns when that is done.
    void PrepareData(bool bNeed, bool bWait);
    /// True also for a file that doesn't open: nothing will ever come.
    bool IsItReady(bool bNeed);
    bool IsItLoaded() const;
    void LoadData();
    void InterpolateData(bool bWait);
    /// The next snapshot is another one: the slopes towards it are to be made anew. False, nothing changed:
    /// they are being made just now.
    bool ForgetSlopes();
    /// Wait for the own read, free the arrays, clear the flags. The head is read again next time.
    void ReleaseData();
    /// ReleaseData; with `bForget` path, time and file status go too.
    void Clear(bool bForget);
    long long GetUsedMemoryKB() const;
    /// Go on writing this snapshot, `dt` after its time, as the film's frame `frame`; true when that is done.
    bool ExportData(DataExporter_cls* pExporter, double dt, int step, int frame);

    /// Wait until the running reader is done, when `bExpect` equals "target is being read".
    static void WaitThreadReading(PDataSnap_cls* pTarget, bool bExpect);
    static void WaitThreadInterpolate(PDataSnap_cls* pTarget, bool bExpect);
    /// Wait for the running interpolator, whosever it is.
    static void WaitInterpolator();
    /// The user has to know that this snapshot's file can't be used; it counts as ready with no particles.
    /// `bNoSnapshot`: the file is there, but holds none; else something is in the way of it.
    void SetUnusable(const wxString& text, bool bNoSnapshot = false);

    PDataBlock_cls* mpCBlock; ///< owned
    PDataSequence_cls* mpCSequence;
    PDataSnap_cls* mpCNext = nullptr;
    PDataSnap_cls* mpCPrev = nullptr;
    int mIndex;
    double mTime = -9999.0;  ///< simulation time; -9999 when unset
    bool mbSnipping = false; ///< a key stands here: eviction prefers others
    wxString mStrFilePath;   ///< empty for unused slots
    SnapFileStatus mFileStatus = FILE_UNCHECKED;
    bool mbLoadStarted = false;
    std::atomic<bool> mbLoaded{false}; ///< set by the reader (release)
    bool mbInterpolateStarted = false;
    std::atomic<bool> mbInterpolated{false}; ///< set by the interpolator (release)

    wxString mStrProblem;      ///< why the file can't be used
    bool mbNoSnapshot = false; ///< what makes the file unusable
    std::string mStrDamage;    ///< what of the file is missing or no number; the reader's, with mbLoaded
    long long mPlaceless = 0;  ///< its particles whose place is no number; the reader's as well

    /// Grows when what was read of a snapshot is to be read anew, as from another file or with other
    /// settings; eviction leaves it.
    static unsigned long long msContents;
    /// The snapshot that is being drawn: memory is not taken from it.
    static const PDataSnap_cls* mspCDrawn;
    /// The snapshot for whose slopes its next one is being read: memory is not taken from it.
    static PDataSnap_cls* mspCOnBehalf;

private:
    bool IsUnderRead() const { return mbLoadStarted && !mbLoaded.load(std::memory_order_acquire); }
    void LookForFile();
    bool PrepareNext(bool bWait);
};
