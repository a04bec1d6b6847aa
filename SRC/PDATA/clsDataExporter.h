// Writes what the views see, frame by frame, into a numbered sequence of data files of a layout that the
// user describes. Driven by the paints of view 0: every frame that comes up is written.
#pragma once

#include <functional>
#include <memory>

#include "COMMON/clsRunProgress.h"
#include "PDATA/clsFileSequence.h"
#include "PDATA/clsGrammerBase.h"
#include "COMMON/clsDialogControl.h"

class DataLoader_cls;
class PDataBlock_cls;
class SnapshotWriter_cls;
struct SnapshotSource_st;

class DataExporter_cls : public GrammerBase_cls, public DialogControl_cls {
public:
    /// pLoader may be null: nothing can be copied from it then.
    explicit DataExporter_cls(DataLoader_cls* pLoader);
    ~DataExporter_cls() override;

    /// Head and body of the loader's grammar; the data type stays.
    void CopyFromLoader();
    /// Bring mCFileSequence and the shown name in line with what was typed: a number that ends a name
    /// becomes a tag. False when all files would have one name.
    bool AdoptTypedPath();
    /// Give a name without a number the tag "%04d".
    void AppendSequenceTag();
    /// Name of the next file.
    wxString GetWXStrModifiedFilename() const;

    /// The run begins: `total` frames.
    void BeginRun(int total);
    /// Go on writing the frame of the film `frame`, a moment long; a frame is written once, however often it
    /// is painted. True when it has been dealt with, be it that writing failed.
    bool ExportData(const SnapshotSource_st& source, int frame);
    bool IsRunComplete() const { return mCProgress.GetDone() >= mCProgress.GetTotal(); }
    /// The run is over, one way or the other; a file under way is dropped.
    void ExportFinish();

    /// One whole file now, as the data type has it; false when there is none, and *pReason, if given, tells
    /// why. A frame without particles is legal: its binary file is empty.
    bool ExportFile(const wxString& path, const PDataBlock_cls& block, double dt, int step,
                    wxString* pReason = nullptr);

    /// How far the run is or how it ended, with the first thing that went wrong; empty before the first run.
    wxString GetRunText() const;
    bool HasFailed() const { return !mStrFailure.empty(); }

    bool ReadStrLine(const wxString& line) { return ReadStrLineAll(line); }
    wxString Serialize() { return SerializeAll(); }

    ConfItemSTR_cls mCLastSavedFile; ///< name pattern of the files, "NONE" at first
    ConfItemINT_cls mCInitNum;       ///< number of the first file
    ConfItemBOOL_cls mCFiltered;     ///< a run writes only what mpKept tells
    /// Particles of the frame to come that filters keep, for whoever drives a run; null: all of them.
    std::shared_ptr<const std::vector<int>> mpKept;
    DataLoader_cls* mpCLoader;
    FileSequence_cls mCFileSequence;
    int mExportedCount = 0;         ///< files written by this run
    int mLastFrame = -1;            ///< frame of the film dealt with last
    bool mbExporting = false;       ///< from the button to ExportFinish
    std::function<void()> mShowRun; ///< the dialog's button and progress as the run stands

private:
    void FinishFile(int frame);
    void ShowProgress(bool bNow);

    std::unique_ptr<SnapshotWriter_cls> mpCWriter; ///< of the file under way
    int mWriterFrame = -1;
    RunProgress_cls mCProgress;
    wxString mStrFailure; ///< the first of the run
    int mFailures = 0;
    bool mbRan = false;
    wxStopWatch mCShownWatch; ///< since the progress was shown last
};
