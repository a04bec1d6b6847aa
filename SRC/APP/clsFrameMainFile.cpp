// Projects, data files, quitting.
#include "APP/clsFrameMain.h"

#include <wx/filename.h>
#include <wx/menu.h>
#include <wx/utils.h>

#include "APP/UnaskedEnd.h"
#include "APP/clsMain.h"
#include "APP/clsRecentFiles.h"
#include "APP/clsRecovery.h"
#include "APP/clsSeriesVideo.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
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
    std::wstring text;
    if (!mpCMain->LoadProjectText(path, &text)) return; // told, and nothing else changes
    TakeProject(text, wxFileName(path).GetPath());
    mCItemLastMRP.mStrValue = path;
    mbProjectNamed = true;
    mpCMain->mpCRecovery->MarkSaved();
    mpCMain->mpCRecentFiles->Add(RecentFiles_cls::Projects, path);
    FillRecentMenus();
    UpdateTitle(path);
}

void FrameMain_cls::TakeProject(const std::wstring& text, const wxString& folder) {
    StopRun();
    TimeCtrl_cls* time = mpCMain->mpCTimeCtrl;
    if (time->IsPlaying()) time->StartPlayCommand(1);
    time->SetInterpStepNative(0, 0);
    time->SetFrameNative(0, 0);
    mpCMain->CloseData();
    mpCMain->ReadProjectText(text, folder.empty() ? wxString(".") : folder, false);
    mpCTopHalf->ClearStatusGLPanels();
    mpCTopHalf->RefreshGLPanels();
    mpCBtmHalf->RefreshTLPanels();
    mpCTopHalf->RefreshAttrib();
    mpCMain->mpCPeriodicBoundary->UpdateItems(true);
    PostMenuEvent(ID_FILTER_REFRESH);
    PostMenuEvent(ID_REFRESH_DRAW_OPTIONS);
    GetMenuBar()->Check(ID_TIME_REMAP, time->mbUseTimeRemap.mValue);
    UpdateStatusText();
}

void FrameMain_cls::OfferRecovery() {
    Recovery_cls* recovery = mpCMain->mpCRecovery;
    Recovery_cls::Found_st found;
    while (recovery->FindOrphan(&found)) {
        const wxString question = wxString::Format(
            _("Morentis ended on %s with changes that stood in no project.\n\nOpen what was kept of them? "
              "\"No\" throws them away."),
            found.mWhen.Format("%Y-%m-%d %H:%M"));
        std::wstring text;
        if (!MsgBoxYesno(question, _("Recovery"))) {
            recovery->DropOrphan();
            continue;
        }
        if (!mpCMain->LoadProjectText(found.mStrPath, &text)) return;
        TakeProject(text, Main_cls::GetFolderOfRecovered(text));
        mbProjectNamed = false;
        recovery->AdoptOrphan();
        UpdateTitle(wxString());
        return; // others wait for the next start
    }
}

void FrameMain_cls::FillRecentMenus() {
    if (!GetMenuBar() || !mpCMain->mpCRecentFiles) return;
    const int menus[] = {ID_RECENT_PROJECTS_MENU, ID_RECENT_DATA_MENU};
    for (int kind = 0; kind < RecentFiles_cls::kKindNumber; ++kind)
        mpCMain->mpCRecentFiles->FillMenu(RecentFiles_cls::Kind(kind),
                                          GetMenuBar()->FindItem(menus[kind])->GetSubMenu());
}

void FrameMain_cls::OnMenuRecent(wxCommandEvent& event) {
    const bool bProject = event.GetId() < ID_RECENT_DATA_0;
    const auto kind = bProject ? RecentFiles_cls::Projects : RecentFiles_cls::Data;
    const wxString path = mpCMain->mpCRecentFiles->GetByMenuId(event.GetId());
    if (path.empty()) return;
    if (bProject ? wxFileName::FileExists(path) : PDataSequence_cls::DoesSequenceExist(path)) {
        // The menu is still open while its entry is chosen.
        CallAfter([this, path, bProject] { bProject ? OpenProject(path) : OpenWithLoader(path); });
        return;
    }
    mpCMain->mpCRecentFiles->Remove(kind, path);
    CallAfter([this, path] {
        FillRecentMenus();
        MsgBox(wxString::Format(_("%s is not there any more. It is taken from the list."), path),
               _("Warning"));
    });
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
        mpCMain->mpCRecovery->MarkSaved();
        mpCMain->mpCRecentFiles->Add(RecentFiles_cls::Projects, path);
        FillRecentMenus();
        mbShowsStar = false;
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

void FrameMain_cls::OnMenuGuessData(wxCommandEvent&) {
    DataLoader_cls* loader = mpCMain->mpCDataLoader;
    loader->InitGUI(this);
    loader->mpCGUI->GuessAnyFile();
}

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
    OpenWithLoader(path);
}

void FrameMain_cls::OpenWithLoader(const wxString& path) {
    DataLoader_cls* loader = mpCMain->mpCDataLoader;
    loader->InitGUI(this);
    loader->mpCGUI->OpenWithCheck(path);
}

bool FrameMain_cls::AskQuit() {
    if (GbGLLockModalDialog.load()) return false; // the question is up already
    const FlagScope_cls modal(GbGLLockModalDialog);
    return MsgBoxYesno(_("Really Quit ?") + mpCSeriesVideo->GetQuitWarning(), _("Query"));
}

void FrameMain_cls::OnQuit(wxCommandEvent&) {
    if (!AskQuit()) return;
    mpCMain->WaitThreadFinish();
    mpCMain->QuitProcess();
    ForgetUnaskedEnds();
    mpCMain->mpCRecovery->Discard();
    mbQuitAsked = true;
    Close(true);
}

void FrameMain_cls::OnClose(wxCloseEvent& event) {
    if (event.CanVeto()) {
        event.Veto();
        PostMenuEvent(ID_QUIT);
        return;
    }
    if (!mbQuitAsked) SayLastWords();
    StopOutputs();
    mpCMain->WaitThreadFinish();
    Destroy();
}
