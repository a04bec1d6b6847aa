// The frame's part in the export of data: its menu entry, the run through the film, and the words about it.
#pragma once

#include <wx/string.h>

class FrameMain_cls;
class Main_cls;
class wxCommandEvent;

class ExportRun_cls {
public:
    /// Takes the frame's commands about exports from here on. A part of the frame.
    explicit ExportRun_cls(FrameMain_cls& frame);

    /// The export has come to its end.
    void EndExport();
    /// For the status bar; empty without an export to tell of.
    wxString GetExportStatus();

private:
    void OnMenuExportData(wxCommandEvent& event);
    void OnMenuExportDataBegin(wxCommandEvent& event);
    void OnMenuRefreshExporter(wxCommandEvent& event);

    FrameMain_cls& mFrame;
    Main_cls& mHub;
    wxString mStrExportEnd; ///< where an export ended: its words stay until the film moves on
};
