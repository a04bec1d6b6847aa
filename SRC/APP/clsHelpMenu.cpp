#include "APP/clsHelpMenu.h"

#include <wx/intl.h>
#include <wx/platinfo.h>
#include <wx/thread.h>
#include <wx/utils.h>
#include <wx/versioninfo.h>

#include "APP/BindMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "GL/BASE/clsGLInfo.h"

HelpMenu_cls::HelpMenu_cls(FrameMain_cls& frame)
    : mHub(*frame.GetPCMain()), mpCGLInfo(std::make_unique<GLInfo_cls>()) {
    BindMenu(frame, this, ID_UNLOCK, &HelpMenu_cls::OnMenuUnlock);
    BindMenu(frame, this, ID_SPECIAL, &HelpMenu_cls::OnMenuSpecial);
    BindMenu(frame, this, ID_ABOUT, &HelpMenu_cls::OnAbout);
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
