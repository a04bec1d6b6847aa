// Projects, data files, quitting.
#include "APP/clsFrameMain.h"

#include <wx/filename.h>
#include <wx/menu.h>
#include <wx/utils.h>

#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsDataLoaderGUI.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/clsFileDialogEX.h"

namespace {

const char* const kProjectWildcard = "Project file (*.mrp)|*.mrp";

wxString FolderOf(const wxString& path) { return path == "None" ? wxString() : wxFileName(path).GetPath(); }

} // namespace

void FrameMain_cls::OnMenuOpenProject(wxCommandEvent&) {
    GpCFileDialog->SetParams(_("Select a project file"), FolderOf(mCItemLastMRP.mStrValue), "",
                             kProjectWildcard, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (GpCFileDialog->ShowModal() == wxID_OK) OpenProject(GpCFileDialog->GetPath());
}

void FrameMain_cls::OpenProject(const wxString& path) {
    TimeCtrl_cls* time = mpCMain->mpCTimeCtrl;
    if (!wxFileName::FileExists(path)) {
        mpCMain->ReadProjectFile(path); // tells so, and nothing else changes
        return;
    }
    if (time->IsPlaying()) time->StartPlayCommand(1);
    time->SetInterpStepNative(0, 0);
    time->SetFrameNative(0, 0);
    mpCMain->CloseData();
    mpCMain->ReadProjectFile(path);
    mCItemLastMRP.mStrValue = path;
    mbProjectNamed = true;
    mpCTopHalf->ClearStatusGLPanels();
    mpCTopHalf->RefreshGLPanels();
    mpCBtmHalf->RefreshTLPanels();
    mpCTopHalf->RefreshAttrib();
    mpCMain->mpCPeriodicBoundary->UpdateItems(true);
    PostMenuEvent(ID_FILTER_REFRESH);
    PostMenuEvent(ID_REFRESH_DRAW_OPTIONS);
    GetMenuBar()->Check(ID_TIME_REMAP, time->mbUseTimeRemap.mValue);
    UpdateTitle(path);
    UpdateStatusText();
}

void FrameMain_cls::OnMenuSaveProject(wxCommandEvent& event) {
    if (!mbProjectNamed) {
        OnMenuSaveProjectAs(event);
        return;
    }
    SaveProject(mCItemLastMRP.mStrValue);
}

void FrameMain_cls::SaveProject(const wxString& path) {
    if (GbGLLockModalDialog.load()) return;
    const FlagScope_cls modal(GbGLLockModalDialog);
    const wxBusyCursor busy;
    if (mpCMain->SaveProjectFile(path, true)) {
        mbProjectNamed = true;
        UpdateTitle(path);
        return;
    }
    MsgBox(wxString::Format(
               _("%s could not be written. The file is as it was before; save under another name or make "
                 "room in that folder."),
               path),
           _("Warning"));
}

void FrameMain_cls::OnMenuSaveProjectAs(wxCommandEvent&) {
    const wxString last = mCItemLastMRP.mStrValue;
    const wxString name = mbProjectNamed ? wxFileName(last).GetFullName() : wxString(".mrp");
    GpCFileDialog->SetParams(_("Select a file"), FolderOf(last), name, kProjectWildcard,
                             wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (GpCFileDialog->ShowModal() != wxID_OK) return;
    wxString path = GpCFileDialog->GetPath();
    if (!path.EndsWith(".mrp")) path += ".mrp";
    SaveProject(path);
}

void FrameMain_cls::OnMenuLoadData(wxCommandEvent&) { mpCMain->mpCDataLoader->OpenWindow(this); }

void FrameMain_cls::OnMenuCloseData(wxCommandEvent&) {
    mpCMain->CloseDataCommand();
    mpCTopHalf->RefreshGLPanels();
    mpCBtmHalf->RefreshTLPanels();
    UpdateStatusText();
}

void FrameMain_cls::OpenDroppedFile(const wxString& path) {
    if (wxFileName(path).GetExt().Lower() == "mrp") {
        OpenProject(path);
        return;
    }
    DataLoader_cls* loader = mpCMain->mpCDataLoader;
    loader->InitGUI(this);
    loader->mpCGUI->OpenWithCheck(path);
}

bool FrameMain_cls::AskQuit() {
    if (GbGLLockModalDialog.load()) return false; // the question is up already
    const FlagScope_cls modal(GbGLLockModalDialog);
    return MsgBoxYesno(_("Really Quit ?"), _("Query"));
}

void FrameMain_cls::OnQuit(wxCommandEvent&) {
    if (!AskQuit()) return;
    mpCMain->WaitThreadFinish();
    mpCMain->QuitProcess();
    Close(true);
}

void FrameMain_cls::OnClose(wxCloseEvent& event) {
    if (event.CanVeto()) {
        event.Veto();
        PostMenuEvent(ID_QUIT);
        return;
    }
    mpCMain->WaitThreadFinish();
    Destroy();
}
