#include "APP/clsFileMenu.h"

#include <utility>

#include <wx/filename.h>
#include <wx/menu.h>
#include <wx/utils.h>

#include "APP/BindMenu.h"
#include "APP/PictureProject.h"
#include "APP/PovPath.h"
#include "APP/UnaskedEnd.h"
#include "APP/clsFollowRun.h"
#include "APP/clsFrameMain.h"
#include "APP/clsImageRun.h"
#include "APP/clsMain.h"
#include "APP/clsRecentFiles.h"
#include "APP/clsRecovery.h"
#include "APP/clsReplay.h"
#include "COMMON/Confined.h"
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
#include "POVRAY/clsPovRayCtrl.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/Clipboard.h"

namespace {

wxString GetProjectWildcard() { return _("Project file") + wxString(" (*.mrp)|*.mrp"); }

wxString GetPictureWildcard() {
    return _("Picture that carries its project") + wxString(" (*.png;*.tif;*.tiff)|*.png;*.tif;*.tiff");
}

wxString FolderOf(const wxString& path) { return path == "None" ? wxString() : wxFileName(path).GetPath(); }

} // namespace

FileMenu_cls::FileMenu_cls(FrameMain_cls& frame, ConfItemList_cls& list)
    : mFrame(frame), mHub(*frame.GetPCMain()), mOpener(frame) {
    list.Add(&mCItemLastMRP, "LastOpenedFileMRP=", "None");
    BindMenu(mFrame, this, ID_OPEN_PROJECT, &FileMenu_cls::OnMenuOpenProject);
    BindMenu(mFrame, this, ID_SAVE_PROJECT, &FileMenu_cls::OnMenuSaveProject);
    BindMenu(mFrame, this, ID_SAVE_PROJECT_AS, &FileMenu_cls::OnMenuSaveProjectAs);
    for (int place = 0; place < int(RecentFiles_cls::kMost); ++place) {
        BindMenu(mFrame, this, ID_RECENT_PROJECT_0 + place, &FileMenu_cls::OnMenuRecent);
        BindMenu(mFrame, this, ID_RECENT_DATA_0 + place, &FileMenu_cls::OnMenuRecent);
    }
    BindMenu(mFrame, this, ID_LOAD_DATA, &FileMenu_cls::OnMenuLoadData);
    BindMenu(mFrame, this, ID_GUESS_DATA, &FileMenu_cls::OnMenuGuessData);
    BindMenu(mFrame, this, ID_CLOSE_DATA, &FileMenu_cls::OnMenuCloseData);
    BindMenu(mFrame, this, ID_EXPORT_PATH_POV, &FileMenu_cls::OnMenuExportPathPov);
    BindMenu(mFrame, this, ID_QUIT, &FileMenu_cls::OnQuit);
    mFrame.Bind(wxEVT_CLOSE_WINDOW, &FileMenu_cls::OnClose, this);
    mFrame.Bind(wxEVT_IDLE, &FileMenu_cls::OnIdle, this);
}

FileMenu_cls::~FileMenu_cls() = default;

void FileMenu_cls::MakeFollow() { mpCFollow = std::make_unique<FollowRun_cls>(mFrame); }

void FileMenu_cls::OnIdle(wxIdleEvent& event) {
    event.Skip();
    if (!mWaitingProject.empty() && !GbGLLockDrawing.load())
        OpenProjectAsked(std::exchange(mWaitingProject, wxString()));
    mOpener.OpenWaiting();
}

void FileMenu_cls::UpdateTitle(const wxString& projectName) {
    mStrTitleProject = projectName;
    const wxString title = projectName.empty() ? wxString("Morentis 3 v 0.80") : "Morentis3 - " + projectName;
    mFrame.SetTitle((mbShowsStar ? "*" : "") + title);
}

void FileMenu_cls::ShowModified() {
    const bool bModified = mHub.mpCRecovery && mHub.mpCRecovery->IsModified();
    if (bModified == mbShowsStar) return;
    mbShowsStar = bModified;
    UpdateTitle(mStrTitleProject);
}

void FileMenu_cls::OnMenuOpenProject(wxCommandEvent&) {
    GpCFileDialog->SetParams(_("Select a project file"), FolderOf(mCItemLastMRP.mStrValue), "",
                             GetProjectWildcard() + "|" + GetPictureWildcard(),
                             wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (GpCFileDialog->ShowModal() == wxID_OK) OpenProjectAsked(GpCFileDialog->GetPath());
}

void FileMenu_cls::OpenProjectAsked(const wxString& path) {
    if (GbGLLockDrawing.load()) { // a project takes from the paint in progress what it draws
        mWaitingProject = path;
        wxWakeUpIdle();
        return;
    }
    if (GetFileKind(path) == FileKind::Picture) {
        OpenPictureProject(path);
        return;
    }
    std::wstring text;
    const bool bAsk = mHub.mpCRecovery->IsModified();
    // One that can't be opened is told and costs nothing.
    if (bAsk && (!mHub.LoadProjectText(path, &text) || !AskForSteps(wxString()))) return;
    OpenProject(path);
}

// One question about steps that no project holds; true when they are saved or may go.
bool FileMenu_cls::AskForSteps(const wxString& about) {
    if (GbGLLockModalDialog.load()) return false; // a question is up already
    const wxString name =
        mbProjectNamed ? wxFileName(mCItemLastMRP.mStrValue).GetFullName() : _("this project");
    MessageAnswer answer = MESSAGE_CANCEL;
    {
        const FlagScope_cls modal(GbGLLockModalDialog);
        answer = MsgBoxSave(wxString::Format(_("Save the changes of %s first?"), name) + about, _("Query"));
    }
    if (answer == MESSAGE_YES) return SaveNamedProject();
    return answer == MESSAGE_NO;
}

void FileMenu_cls::OpenProject(const wxString& path) {
    std::wstring text;
    if (!mHub.LoadProjectText(path, &text)) return; // told, and nothing else changes
    TakeProject(text, wxFileName(path).GetPath());
    mCItemLastMRP.mStrValue = path;
    mbProjectNamed = true;
    mHub.mpCRecovery->MarkSaved();
    mHub.mpCRecentFiles->Add(RecentFiles_cls::Projects, path);
    FillRecentMenus();
    UpdateTitle(path);
}

// The picture holds it: nothing is lost when it goes again, and saving asks where to.
void FileMenu_cls::OpenPictureProject(const wxString& path) {
    PictureProject_st project;
    if (!LoadPictureProject(path, &project)) return; // told, and nothing else changes
    if (mHub.mpCRecovery->IsModified() && !AskForSteps(wxString())) return;
    TakeProject(project.mText, project.mFolder);
    GoToPictureFrame(path, project.mFrame, mHub.mpCTimeCtrl);
    ShowProject();
    mbProjectNamed = false;
    mStrSuggested = project.mSuggestedPath;
    mHub.mpCRecovery->MarkSaved();
    UpdateTitle(wxString());
}

void FileMenu_cls::TakeProject(const std::wstring& text, const wxString& folder) {
    mFrame.GetPCImageRun()->StopRun();
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    if (time->IsPlaying()) time->StartPlayCommand(1);
    time->SetInterpStepNative(0, 0);
    time->SetFrameNative(0, 0);
    mHub.CloseData();
    mHub.ClearFilters();
    mHub.ReadProjectText(text, folder.empty() ? wxString(".") : folder, false);
    mStrSuggested.clear();
    ShowProject();
}

// All that the project before it may have left in sight.
void FileMenu_cls::ShowProject() {
    const TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    mFrame.GetPCTopHalf()->ClearStatusGLPanels();
    mFrame.GetPCTopHalf()->RefreshGLPanels();
    mFrame.GetPCBtmHalf()->RefreshTLPanels();
    mFrame.GetPCBtmHalf()
        ->GetPCParamGUICtrl()
        ->GetPCGraph()
        ->FitToView(); // the same curves have other values
    mFrame.GetPCTopHalf()->RefreshAttrib();
    mHub.mpCPeriodicBoundary->UpdateItems(true);
    PostMenuEvent(ID_REFRESH_DRAW_OPTIONS);
    mFrame.GetMenuBar()->Check(ID_TIME_REMAP, time->mbUseTimeRemap.mValue);
    mFrame.UpdateStatusText();
}

void FileMenu_cls::Begin() {
    if (!IsConfined()) OfferRecovery(); // who replays a record throws nothing away
    if (!mVFirstFiles.empty()) mOpener.Open(std::exchange(mVFirstFiles, {}), true);
    if (mpCReplay) mpCReplay->Begin();
}

void FileMenu_cls::OfferRecovery() {
    Recovery_cls* recovery = mHub.mpCRecovery;
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
        if (!mHub.LoadProjectText(found.mStrPath, &text)) return;
        TakeProject(text, Main_cls::GetFolderOfRecovered(text));
        mbProjectNamed = false;
        recovery->AdoptOrphan();
        UpdateTitle(wxString());
        return; // others wait for the next start
    }
}

void FileMenu_cls::FillRecentMenus() {
    if (!mFrame.GetMenuBar() || !mHub.mpCRecentFiles) return;
    const int menus[] = {ID_RECENT_PROJECTS_MENU, ID_RECENT_DATA_MENU};
    for (int kind = 0; kind < RecentFiles_cls::kKindNumber; ++kind)
        mHub.mpCRecentFiles->FillMenu(RecentFiles_cls::Kind(kind),
                                      mFrame.GetMenuBar()->FindItem(menus[kind])->GetSubMenu());
}

void FileMenu_cls::OnMenuExportPathPov(wxCommandEvent&) { PutOnClipboard(GetPathPov(mHub)); }

void FileMenu_cls::OnMenuRecent(wxCommandEvent& event) {
    const bool bProject = event.GetId() < ID_RECENT_DATA_0;
    const auto kind = bProject ? RecentFiles_cls::Projects : RecentFiles_cls::Data;
    const wxString path = mHub.mpCRecentFiles->GetByMenuId(event.GetId());
    if (path.empty()) return;
    if (bProject ? wxFileName::FileExists(path) : PDataSequence_cls::DoesSequenceExist(path)) {
        // The menu is still open while its entry is chosen.
        mFrame.CallAfter(
            [this, path, bProject] { bProject ? OpenProjectAsked(path) : OpenWithLoader(path); });
        return;
    }
    mHub.mpCRecentFiles->Remove(kind, path);
    mFrame.CallAfter([this, path] {
        FillRecentMenus();
        MsgBox(wxString::Format(_("%s is not there any more. It is taken from the list."), path),
               _("Warning"));
    });
}

void FileMenu_cls::OnMenuSaveProject(wxCommandEvent&) { SaveNamedProject(); }

bool FileMenu_cls::SaveNamedProject() {
    wxString path = mCItemLastMRP.mStrValue;
    return (mbProjectNamed || AskProjectName(&path)) && SaveProject(path);
}

bool FileMenu_cls::SaveProject(const wxString& path) {
    if (GbGLLockModalDialog.load()) return false;
    const FlagScope_cls modal(GbGLLockModalDialog);
    const wxBusyCursor busy;
    if (mHub.SaveProjectFile(path, true)) {
        mbProjectNamed = true;
        mHub.mpCRecovery->MarkSaved();
        mHub.mpCRecentFiles->Add(RecentFiles_cls::Projects, path);
        FillRecentMenus();
        mbShowsStar = false;
        UpdateTitle(path);
        return true;
    }
    MsgBox(wxString::Format(
               _("%s could not be written. The file is as it was before; save under another name or make "
                 "room in that folder."),
               path),
           _("Warning"));
    return false;
}

void FileMenu_cls::OnMenuSaveProjectAs(wxCommandEvent&) {
    wxString path;
    if (AskProjectName(&path)) SaveProject(path);
}

bool FileMenu_cls::AskProjectName(wxString* pPath) {
    const wxString last = mCItemLastMRP.mStrValue;
    wxString folder = FolderOf(last);
    wxString name = mbProjectNamed ? wxFileName(last).GetFullName() : wxString("untitled.mrp");
    if (!mbProjectNamed && !mStrSuggested.empty()) {
        folder = wxFileName(mStrSuggested).GetPath();
        name = wxFileName(mStrSuggested).GetFullName();
    }
    while (true) {
        // The dialog would ask about the name as typed; what counts is the one with its ending.
        GpCFileDialog->SetParams(_("Select a file"), folder, name, GetProjectWildcard(), wxFD_SAVE);
        if (GpCFileDialog->ShowModal() != wxID_OK) return false;
        *pPath = GpCFileDialog->GetPath();
        if (!pPath->EndsWith(".mrp")) *pPath += ".mrp";
        const wxString question = wxString::Format(_("%s exists already. Replace it?"), *pPath);
        if (!wxFileName::Exists(*pPath) || MsgBoxYesno(question, _("Save Project As"))) return true;
        folder = wxFileName(*pPath).GetPath();
        name = wxFileName(*pPath).GetFullName();
    }
}

void FileMenu_cls::OnMenuLoadData(wxCommandEvent&) { mHub.mpCDataLoader->OpenWindow(&mFrame); }

void FileMenu_cls::OnMenuGuessData(wxCommandEvent&) {
    DataLoader_cls* loader = mHub.mpCDataLoader;
    loader->InitGUI(&mFrame);
    loader->mpCGUI->GuessAnyFile();
}

void FileMenu_cls::OnMenuCloseData(wxCommandEvent&) {
    if (mHub.mpCPDataSeqCtrl->GetStrActiveFileSequencePath().empty()) return; // no step for nothing
    mHub.CloseDataCommand();
    mFrame.GetPCTopHalf()->RefreshGLPanels();
    mFrame.GetPCBtmHalf()->RefreshTLPanels();
    mFrame.UpdateStatusText();
}

void FileMenu_cls::OpenWithLoader(const wxString& path) {
    DataLoader_cls* loader = mHub.mpCDataLoader;
    loader->InitGUI(&mFrame);
    loader->mpCGUI->OpenWithCheck(path);
}

bool FileMenu_cls::AskQuit() {
    if (GbGLLockModalDialog.load()) return false; // the question is up already
    const wxString warning = mFrame.GetPCImageRun()->GetQuitWarning() + mHub.mpCPovRayCtrl->GetQuitWarning();
    if (mHub.mpCRecovery->IsModified()) return AskForSteps(warning);
    const FlagScope_cls modal(GbGLLockModalDialog);
    return MsgBoxYesno(_("Really Quit ?") + warning, _("Query"));
}

void FileMenu_cls::OnQuit(wxCommandEvent&) {
    if (!AskQuit()) return;
    mHub.WaitThreadFinish();
    mHub.QuitProcess();
    ForgetUnaskedEnds();
    mHub.mpCRecovery->Discard();
    mbQuitAsked = true;
    mFrame.Close(true);
}

void FileMenu_cls::OnClose(wxCloseEvent& event) {
    if (event.CanVeto()) {
        event.Veto();
        PostMenuEvent(ID_QUIT);
        return;
    }
    if (!mbQuitAsked) SayLastWords();
    mFrame.GetPCImageRun()->StopOutputs();
    mHub.mpCPovRayCtrl->AbortRenderPovAnim();
    mHub.mpCPovRayCtrl->StopRenderer();
    mHub.WaitThreadFinish();
    mFrame.Destroy();
}
