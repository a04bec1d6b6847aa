#include "PDATA/clsDataExporter.h"

#include <algorithm>
#include <climits>

#include <wx/intl.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "PDATA/SnapshotWriter.h"
#include "PDATA/clsDataLoader.h"

namespace {

constexpr long kSliceMillis = 60; // what the window's events wait for a file that is being written
constexpr long kShowMillis = 100;

} // namespace

DataExporter_cls::DataExporter_cls(DataLoader_cls* pLoader)
    : GrammerBase_cls("DataExport"), mpCLoader(pLoader) {
    Add(&mCLastSavedFile, "DataExportLastSavedFile=", "NONE");
    Add(&mCInitNum, "DataExportInitNum=", "0");
    Add(&mCFiltered, "DataExportFiltered=", "0");
}

DataExporter_cls::~DataExporter_cls() = default;

void DataExporter_cls::CopyFromLoader() {
    if (!mpCLoader) return;
    SetHeaderGrammer(mpCLoader->GetHeaderGrammer());
    SetBodyGrammer(mpCLoader->GetBodyGrammer());
}

bool DataExporter_cls::AdoptTypedPath() {
    mCFileSequence = FileSequence_cls(mCLastSavedFile.mStrValue);
    mCFileSequence.AdoptFormat();
    mCLastSavedFile.mStrValue = mCFileSequence.GetFormat();
    return mCFileSequence.GetModifiedStr(0, 0) != mCFileSequence.GetModifiedStr(1, 0);
}

void DataExporter_cls::AppendSequenceTag() {
    mCFileSequence.AppendDefaultSequenceTag();
    mCLastSavedFile.mStrValue = mCFileSequence.GetFormat();
}

wxString DataExporter_cls::GetWXStrModifiedFilename() const {
    const long long number = static_cast<long long>(mCInitNum.mValue) + mExportedCount;
    return mCFileSequence.GetModifiedStr(static_cast<int>(std::min<long long>(number, INT_MAX)), 0);
}

void DataExporter_cls::BeginRun(int total) {
    mpCWriter.reset();
    mExportedCount = 0;
    mLastFrame = -1;
    mStrFailure.clear();
    mFailures = 0;
    mbRan = true;
    mCProgress.Begin(total);
    ShowProgress(true);
}

bool DataExporter_cls::ExportData(const SnapshotSource_st& all, int frame) {
    if (frame == mLastFrame) return true;
    SnapshotSource_st source = all;
    if (mCFiltered.mValue) source.mpKept = mpKept;
    // Between two slices the data may have gone, or come back elsewhere: the file begins anew.
    if (!mpCWriter || mWriterFrame != frame || !mpCWriter->GetSource().IsSame(source)) {
        mpCWriter.reset(); // it may bear the same name
        mpCWriter = std::make_unique<SnapshotWriter_cls>(GetWXStrModifiedFilename(), *this, IsText(), source);
        mWriterFrame = frame;
    }
    const bool bDone = mpCWriter->Write(kSliceMillis) != SnapshotWriter_cls::State::Busy;
    if (bDone) FinishFile(frame);
    ShowProgress(false);
    return bDone;
}

void DataExporter_cls::FinishFile(int frame) {
    if (mpCWriter->GetState() == SnapshotWriter_cls::State::Written) {
        ++mExportedCount;
    } else if (mFailures++ == 0) {
        mStrFailure = mpCWriter->GetReason();
    }
    mpCWriter.reset();
    mLastFrame = frame;
    mCProgress.Done(std::min(mCProgress.GetDone() + 1, mCProgress.GetTotal()));
}

void DataExporter_cls::ExportFinish() {
    mpCWriter.reset();
    mpKept.reset();
    mbExporting = false;
    ShowProgress(true);
}

bool DataExporter_cls::ExportFile(const wxString& path, const PDataBlock_cls& block, double dt, int step,
                                  wxString* pReason) {
    SnapshotWriter_cls writer(path, *this, IsText(), SnapshotSource_st::Of(block, dt, step));
    const bool bDone = writer.Write() == SnapshotWriter_cls::State::Written || writer.IsEmptyFrame();
    if (pReason) *pReason = bDone ? wxString() : writer.GetReason();
    return bDone;
}

wxString DataExporter_cls::GetRunText() const {
    if (!mbRan) return wxString();
    wxString text;
    if (mbExporting) {
        text = mCProgress.GetText();
        if (mpCWriter) text += wxString::Format(_(", writing %d%%"), mpCWriter->GetPercent());
    } else if (mExportedCount == 1) {
        text = _("1 file exported");
    } else {
        text = wxString::Format(_("%d files exported"), mExportedCount);
    }
    if (mFailures > 0) text += wxString::Format(_(", %d failed: "), mFailures) + mStrFailure;
    return text;
}

void DataExporter_cls::ShowProgress(bool bNow) {
    if (!bNow && mCShownWatch.Time() < kShowMillis) return;
    mCShownWatch.Start();
    if (mShowRun) mShowRun();
    PostMenuEvent(ID_REFRESH_SB);
}
