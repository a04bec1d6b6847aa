#include "APP/clsHelpMenu.h"

#include <wx/filedlg.h>
#include <wx/intl.h>
#include <wx/platinfo.h>
#include <wx/thread.h>
#include <wx/utils.h>
#include <wx/versioninfo.h>

#include "APP/BindMenu.h"
#include "APP/Report.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/SafeFile.h"
#include "GL/BASE/clsGLInfo.h"
#include "WIDGET/clsFileDialogEX.h"

HelpMenu_cls::HelpMenu_cls(FrameMain_cls& frame)
    : mHub(*frame.GetPCMain()), mpCGLInfo(std::make_unique<GLInfo_cls>()) {
    BindMenu(frame, this, ID_UNLOCK, &HelpMenu_cls::OnMenuUnlock);
    BindMenu(frame, this, ID_SPECIAL, &HelpMenu_cls::OnMenuSpecial);
    BindMenu(frame, this, ID_ABOUT, &HelpMenu_cls::OnAbout);
    BindMenu(frame, this, ID_SAVE_REPORT, &HelpMenu_cls::OnMenuSaveReport);
    BindMenu(frame, this, ID_ABOUT_GL, &HelpMenu_cls::OnMenuAboutGL);
}

HelpMenu_cls::~HelpMenu_cls() = default;

void HelpMenu_cls::OnMenuUnlock(wxCommandEvent&) { GbGLLockDrawing.store(false); }

void HelpMenu_cls::OnMenuSpecial(wxCommandEvent&) { mHub.Special(); }

void HelpMenu_cls::OnAbout(wxCommandEvent&) {
    const auto orUnknown = [](bool bKnown, const wxString& text) {
        return bKnown ? text : wxString(_("Unknown"));
    };
    const wxVersionInfo toolkit = wxGetLibraryVersionInfo();
    const wxMemorySize memory = wxGetFreeMemory();
    const int cores = wxThread::GetCPUCount();
    wxString text = "Morentis 3 v 0.80\n\n";
    text += wxString::Format("%s %s %d.%d.%d\n", _("Powered by"), toolkit.GetName(), toolkit.GetMajor(),
                             toolkit.GetMinor(), toolkit.GetMicro());
    text += wxString::Format("%s %s\n", _("running under"), wxGetOsDescription());
    text +=
        wxString::Format("%s %s\n", _("free memory"),
                         orUnknown(memory >= 0, wxString::Format("%lld MB", memory.GetValue() / 1048576)));
    text += wxString::Format("%s %s", _("CoreNumber:"), orUnknown(cores > 0, wxString::Format("%d", cores)));
    MsgBox(text, _("About Morentis3"));
}

void HelpMenu_cls::OnMenuAboutGL(wxCommandEvent&) { MsgBox(mpCGLInfo->GetText(), _("About Open GL")); }

// Made before the name is asked for: asking is an act that would be recorded.
void HelpMenu_cls::OnMenuSaveReport(wxCommandEvent&) {
    const std::string bytes = ZipReport(MakeReport(mHub));
    GpCFileDialog->SetParams(_("Save Report"), "", "morentis-report.zip",
                             _("Zip archive") + wxString(" (*.zip)|*.zip"),
                             wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (GpCFileDialog->ShowModal() != wxID_OK) return;
    const wxString path = GpCFileDialog->GetPath();
    if (const wxString reason = WriteFileSafely(path, bytes); !reason.empty()) {
        MsgBox(wxString::Format(_("%s could not be written: %s"), path, reason), _("Warning"));
        return;
    }
    MsgBox(
        wxString::Format(_("The report is in %s. It holds:\n\n"
                           "report.txt: the versions of program and system, what OpenGL says about itself, "
                           "the last messages\n"
                           "record.txt: what you did in this window (menus, values, clicks, names of "
                           "files)\n"
                           "project.mrp: the project as it is now\n\n"
                           "None of your data is in it, and your home folder is written as \"~\". All "
                           "three are plain text: look at them before you send the report."),
                         path),
        _("Save Report"));
}
