#include "APP/clsExportRun.h"

#include <algorithm>

#include "APP/BindMenu.h"
#include "APP/ProjectInputs.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/FileSet.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsPDataSequence.h"
#include "TIME/clsTimeCtrl.h"

namespace {

/// The frames that playing once will come to from here on, this one among them.
int CountFrames(const TimeCtrl_cls& time) {
    int count = 1;
    for (int frame = time.GetFrame(); frame < time.GetMaxFrame(); ++count) {
        int next = frame;
        int step = time.GetAnimInterp();
        time.CalcNextFrameFromStep(&next, &step, true, false);
        if (next <= frame) break;
        frame = next;
    }
    return count;
}

/// A file of the project that a run of the work area would write; empty for none.
wxString FindReplacedInput(const Main_cls& hub) {
    const DataExporter_cls& exporter = *hub.mpCDataExporter;
    const TimeCtrl_cls& time = *hub.mpCTimeCtrl;
    FileSet_cls inputs;
    for (const wxString& file : ListProjectInputs(hub))
        inputs.Add(file);
    const int count = time.GetWAMax() - time.GetWAMin() + 1;
    for (int i = 0; i < count; ++i) {
        const wxString name = exporter.mCFileSequence.GetModifiedStr(exporter.mCInitNum.mValue + i, 0);
        if (inputs.Has(name)) return name;
    }
    return wxString();
}

} // namespace

ExportRun_cls::ExportRun_cls(FrameMain_cls& frame) : mFrame(frame), mHub(*frame.GetPCMain()) {
    BindMenu(mFrame, this, ID_EXPORT_DATA, &ExportRun_cls::OnMenuExportData);
    BindMenu(mFrame, this, ID_EXPORT_DATA_BEGIN, &ExportRun_cls::OnMenuExportDataBegin);
    BindMenu(mFrame, this, ID_REFRESH_EXPORTER, &ExportRun_cls::OnMenuRefreshExporter);
}

void ExportRun_cls::OnMenuExportData(wxCommandEvent&) { mHub.mpCDataExporter->OpenWindow(&mFrame); }

void ExportRun_cls::OnMenuRefreshExporter(wxCommandEvent&) { mHub.mpCDataExporter->UpdateItems(true); }

void ExportRun_cls::OnMenuExportDataBegin(wxCommandEvent&) {
    DataExporter_cls* exporter = mHub.mpCDataExporter;
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    if (!exporter->mbExporting) return; // aborted before it began
    const PDataSequence_cls* sequence = mFrame.GetPCActiveFileSequence();
    if (sequence->GetStrPath().empty() || sequence->GetSeqLength() < 1) {
        exporter->ExportFinish();
        MsgBox(_("There are no data to export. Load particle data first."), _("Export Data"));
        return;
    }
    if (time->IsPlaying()) {
        time->StartPlayCommand(1); // its stop comes first
        PostMenuEvent(ID_EXPORT_DATA_BEGIN);
        return;
    }
    const wxString replaced = FindReplacedInput(mHub);
    if (!replaced.empty() &&
        !MsgBoxYesno(
            wxString::Format(_("%s is a file of the data that are open. The export replaces it, and what "
                               "it holds now is lost.\n\nExport all the same?"),
                             replaced),
            _("Export Data"))) {
        exporter->ExportFinish();
        return;
    }
    mFrame.GetPCGLCanvas(0)->StartExportDataProcess(exporter);
    {
        const UndoBlock_cls block;
        time->SetAnimInterpCommand(1, time->GetAnimInterp());
        time->MoveFrameCommandLarge(-1);
        time->StartPlayCommand(1);
    }
    time->mbOutputRun = true;
    exporter->BeginRun(CountFrames(*time));
    mFrame.RefreshGL();
}

void ExportRun_cls::EndExport() {
    if (!mHub.mpCDataExporter->mbExporting) return;
    // As the user stops: a repeated film would go on.
    if (mHub.mpCTimeCtrl->IsPlaying())
        mHub.mpCTimeCtrl->StartPlayCommand(1);
    else
        PostMenuEvent(ID_PLAY_STOP);
}

wxString ExportRun_cls::GetExportStatus() {
    const DataExporter_cls* exporter = mHub.mpCDataExporter;
    const wxString text = exporter->GetRunText();
    if (text.empty()) return wxString();
    const wxString here = wxString::Format("%d ", mHub.mpCTimeCtrl->GetFrame()) +
                          mFrame.GetPCActiveFileSequence()->GetStrPath();
    if (exporter->mbExporting)
        mStrExportEnd.clear();
    else if (mStrExportEnd.empty())
        mStrExportEnd = here;
    return exporter->mbExporting || mStrExportEnd == here ? _("Export: ") + text : wxString();
}
