// A file sequence as a fixed array of 10000 snapshots. What draws it is known only by what the store asks of
// it.
#pragma once

#include <istream>
#include <vector>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "PDATA/clsFileSequence.h"
#include "PDATA/clsSequenceDrawing.h"

class DataExporter_cls;
class PDataBlock_cls;
class PDataSnap_cls;

class PDataSequence_cls {
public:
    static constexpr int kMaxSnap = 10000;

    PDataSequence_cls(int seqIndex, const MakeSequenceDrawing& makeDrawing);
    ~PDataSequence_cls();
    PDataSequence_cls(const PDataSequence_cls&) = delete;
    PDataSequence_cls& operator=(const PDataSequence_cls&) = delete;

    /// Work out the sequence of `path` and give each slot its file. No data is read. A path that doesn't
    /// exist is also looked for in msStrProjectDir, down to its bare name; Serialize writes the text as
    /// given.
    void OpenDataFile(const wxString& path);
    wxString GetStrPath() const { return mStrGivenPath; }
    /// index -2: every slot (with bForget the file sequence goes too); else one slot.
    void Clear(int index, bool bForget);
    int ClampIndexWithinRange(int index) const;
    PDataSnap_cls* GetSnap(int index) const; ///< the nearest one there is
    int GetSeqLength() const { return mCFileSequence.mMaxOffset; }
    void SetSeqLength(int length) { mCFileSequence.mMaxOffset = length; }
    /// Files have come behind the last one, up to a length of `length` (at most kMaxSnap), and the files of
    /// `late`, which were missing: as if the sequence were opened now, but what was read stays. False,
    /// nothing changed: slopes that depend on them are being made just now.
    bool Grow(int length, const std::vector<int>& late);
    /// Indices below the length whose files couldn't be used when they were asked for.
    std::vector<int> GetUnusable() const;

    wxString GetFilename(int index) const;
    int GetFilenameStatus(int index) const; ///< a SnapFileStatus
    int GetParticleNumber(int index) const;
    double GetTime(int index) const;
    /// step (0..1) times the time from snapshot `index` to the next.
    double GetDT(int index, double step) const;
    bool IsTheIndexLoaded(int index) const;
    const PDataBlock_cls* GetPCBlock(int index) const; ///< its arrays stand only while the index is loaded
    /// Does a moment `frac` behind a snapshot, or a colour, take slopes towards the next one?
    bool NeedsSlopes(double frac, bool bForce) const;
    bool IsTheIndexReady(int index, double frac, bool bForce);
    void PrepareIndex(int index, double frac, bool bForce, bool bWait);
    void SetSnipping(int index);
    void ClearSnipping();
    long long GetUsedTotalMemoryMB() const;
    int GetLoadedFrameNumber() const;

    /// What draws this sequence; GLSequence_cls::Of has it whole.
    SequenceDrawing_cls& GetDrawing() const { return *mpCDrawing; }
    /// Go on writing the data `dt` after snapshot `index`, thinned out as the views show them, as the film's
    /// frame `frame`; true when that is done.
    bool ExportData(DataExporter_cls* pExporter, int index, double dt, int frame);
    void Special_Copy(int dst, int src);

    wxString Serialize() const;
    void ReadStrLine(std::wistream& stream, const wxString& line);

    /// Is there a first file?
    static bool DoesSequenceExist(const wxString& path);
    static wxString msStrProjectDir; ///< folder of the project under reading or writing, empty otherwise

    PDataSnap_cls* mpCSnap[kMaxSnap]; ///< owned, chained by mpCNext and mpCPrev
    int mSeqIndex;                    ///< 0 to 3
    FileSequence_cls mCFileSequence;
    ConfItemSTR_cls mCItemFile;

private:
    wxString GetPathForProject() const;
    wxString FindPath(const wxString& path);
    void SetIndividualFilenames();

    std::unique_ptr<SequenceDrawing_cls> mpCDrawing;
    std::vector<PDataSnap_cls*> mvpCSnipped; ///< those with a key, as ClearSnipping finds them
    wxString mStrGivenPath;
    wxString mStrLastProjectDir; ///< folder that a relative path was last found in: undo opens it again
};
