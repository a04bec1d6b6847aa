// Project and configure files: reading, writing, and the recovery project. What stands in them is told by
// the table of blocks (ProjectBlocks.cpp).
#include "APP/clsMain.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include <wx/filename.h>

#include "APP/ProjectBlocks.h"
#include "APP/ProjectText.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFollowRun.h"
#include "APP/clsFrameMain.h"
#include "APP/clsRecentFiles.h"
#include "APP/clsRecovery.h"
#include "APP/clsToolBar.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"
#include "GL/BASE/clsPreference.h"
#include "GL/DRAW/clsShadowVolume.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsViewFitCtrl.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsMoveItem.h"
#include "SCENE/clsStereoGram.h"

namespace {

bool IsConfigureFile(const wxString& path) { return path.Matches(wxString("*") + kConfigureFileName); }

wxString WhyNotOpened(const wxString& path) {
    struct stat facts {};
    const std::string name = NarrowPath(path);
    if (stat(name.c_str(), &facts) != 0 || (S_ISREG(facts.st_mode) && access(name.c_str(), R_OK) != 0))
        return wxString::FromUTF8(std::strerror(errno));
    return S_ISDIR(facts.st_mode) ? _("it is a folder") : _("it is no file that can be read");
}

/// The folder that data paths are tried in, for the length of a scope.
class ProjectFolderScope_cls {
public:
    explicit ProjectFolderScope_cls(const wxString& folder) { PDataSequence_cls::msStrProjectDir = folder; }
    ~ProjectFolderScope_cls() { PDataSequence_cls::msStrProjectDir.clear(); }
    ProjectFolderScope_cls(const ProjectFolderScope_cls&) = delete;
    ProjectFolderScope_cls& operator=(const ProjectFolderScope_cls&) = delete;
};

wxString FolderOfProject(const wxString& path) {
    const wxString folder = wxFileName(path).GetPath();
    return folder.empty() ? wxString(".") : folder;
}

} // namespace

wxString Main_cls::SerializeAll(bool bFull) {
    wxString text = WriteProjectBlocks(*this, bFull);
    // The configure file goes on with what only it keeps between runs.
    if (bFull) return text;
    text += mpCFrameMain->GetPCUserPreference()->Serialize() + mpCRecentFiles->Serialize();
    if (const ToolBar_cls* bar = mpCFrameMain->GetPCToolBar()) text += bar->Serialize();
    return text;
}

bool Main_cls::SaveProjectFile(const wxString& path, bool bFull) {
    // Before anything is serialised, so that the file names itself.
    const wxString last = mpCFrameMain->GetPCFileMenu()->GetLastProject();
    if (!IsConfigureFile(path)) mpCFrameMain->GetPCFileMenu()->SetLastProject(path);
    const ProjectFolderScope_cls folder(FolderOfProject(path));
    const bool bDone = WriteFileSafely(path, EncodeProject(SerializeAll(bFull))).empty();
    if (!bDone) mpCFrameMain->GetPCFileMenu()->SetLastProject(last);
    return bDone;
}

void Main_cls::QuitProcess() { WriteFileSafely(GetConfigureFilePath(), EncodeProject(SerializeAll(false))); }

bool Main_cls::LoadProjectText(const wxString& path, std::wstring* pText) {
    std::string bytes;
    const ReadFileResult result = ReadWholeFile(path, kLargestProject, &bytes);
    if (result == ReadFileResult::Ok) {
        *pText = DecodeProject(bytes);
        return true;
    }
    if (IsConfigureFile(path)) return false;
    if (result == ReadFileResult::TooLarge)
        MsgBox(wxString::Format(_("%s is larger than %d MB: this is no project. Nothing was changed."), path,
                                int(kLargestProject >> 20)),
               _("Warning"));
    else
        MsgBox(_("Read Configure Fails") + path + ": " + WhyNotOpened(path), _("Warning"));
    return false;
}

void Main_cls::ReadProjectText(const std::wstring& text, const wxString& folder, bool bConfigure) {
    MoveItem_cls::CancelDrag();
    Preference_cls* acting = mpCFrameMain->GetPCPreference();
    Preference_cls* user = mpCFrameMain->GetPCUserPreference();
    // Those of the project before this one end with it.
    if (!bConfigure) {
        acting->CopyFrom(*user);
        mpCLightSRCCtrl->SetToDefault(); // projects without lights are made for these
        mpCCameraPath->SetToDefault();
        mpCAnchorPath->SetToDefault();
        ShadowVolume_cls::SetToDefault();
        mpCStereoGram->Reset();
        mpCPovRayCtrl->ResetOwnSettings();
        mpCParticles->Reset();
        mpCImgSequence->ResetOwnSettings();
        if (FollowRun_cls* follow = mpCFrameMain->GetPCFileMenu()->GetFollow()) follow->Reset();
    }
    {
        const FlagScope_cls loading(GbGLLockProjectLoading);
        const ProjectFolderScope_cls projectFolder(folder);
        TextStream_cls stream(text);
        ToolBar_cls* bar = bConfigure ? mpCFrameMain->GetPCToolBar() : nullptr;
        wxString line;
        while (NextProjectLine(stream, &line)) {
            // A path of these lists may hold anything, another object's key too.
            if (bConfigure && mpCRecentFiles->ReadStrLine(line)) continue;
            if (bar && bar->ReadStrLine(line)) continue;
            ReadProjectBlocks(*this, stream, line);
        }
    }
    if (bConfigure) user->CopyFrom(*acting);
    mpCLightSRCCtrl->UpdateTLShown();
    mpCStereoGram->UpdateTLShown();
    mpCPovRayCtrl->UpdateItems(true);
    mpCFrameMain->ApplySettings();
    if (!bConfigure) mpCFrameMain->GetPCViewFit()->KeepCameras();
    const int lines = bConfigure ? 0 : CountNoNumbers(text);
    if (lines > 0) {
        const wxString words = wxString::Format(
            wxPLURAL("%d line of the project has values that are no numbers: left out",
                     "%d lines of the project have values that are no numbers: left out", lines),
            lines);
        Notice(words, words);
    }
    GCUndoList.Clear(); // a project begins a history of its own
}

void Main_cls::ReadProjectFile(const wxString& path) {
    std::wstring text;
    if (LoadProjectText(path, &text)) ReadProjectText(text, FolderOfProject(path), IsConfigureFile(path));
}

std::string Main_cls::MakeProjectText() {
    // Paths stay as they lead from the project's folder, where it has one; else they become whole: the next
    // start may be from another folder, and nothing lies below this one.
    const bool bNamed = mpCFrameMain->GetPCFileMenu()->IsProjectNamed();
    const ProjectFolderScope_cls projectFolder(
        bNamed ? FolderOfProject(mpCFrameMain->GetPCFileMenu()->GetLastProject()) : wxString("/dev/null"));
    return EncodeProject(SerializeAll(true));
}

wxString Main_cls::GetFolderOfRecovered(const std::wstring& text) {
    const wxString key = "LastOpenedFileMRP=";
    TextStream_cls stream(text);
    wxString line;
    wxString folder;
    wxString path;
    while (NextProjectLine(stream, &line)) // the last one holds, as for all settings
        if (line.StartsWith(key, &path)) folder = FolderOfProject(path);
    return folder;
}

void Main_cls::LastWords() {
    // Half read settings are nobody's work: then the latest file is what there is.
    if (GbGLLockProjectLoading.load()) return;
    mpCRecovery->WriteNow();
    QuitProcess();
}

void Main_cls::NoteOpenedData(const wxString& path) {
    if (!PDataSequence_cls::DoesSequenceExist(path)) return;
    mpCRecentFiles->Add(RecentFiles_cls::Data, path);
    mpCFrameMain->GetPCFileMenu()->FillRecentMenus();
}
