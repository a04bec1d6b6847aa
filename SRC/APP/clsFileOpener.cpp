#include "APP/clsFileOpener.h"

#include <utility>

#include <wx/filename.h>
#include <wx/stdpaths.h>
#include <wx/utils.h>

#include "APP/ForeignFile.h"
#include "APP/PictureProject.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFilterMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/Confined.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/UserActs.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/GrammarGuess.h"
#include "PDATA/LayoutFit.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsFileSequence.h"

namespace {

constexpr const char* kMeshes[] = {"obj", "pov", "stl", "ply", "glb"};
constexpr const char* kPictures[] = {"png", "jpg", "jpeg", "tif", "tiff", "bmp", "gif", "ppm", "exr", "hdr"};

template <size_t N>
bool IsOneOf(const wxString& word, const char* const (&words)[N]) {
    for (const char* other : words)
        if (word == other) return true;
    return false;
}

} // namespace

FileKind GetFileKind(const wxString& path) {
    const wxString ending = wxFileName(path).GetExt().Lower();
    if (ending == "mrp") return FileKind::Project;
    if (IsOneOf(ending, kMeshes)) return FileKind::Mesh;
    return IsOneOf(ending, kPictures) ? FileKind::Picture : FileKind::Data;
}

FileOpener_cls::FileOpener_cls(FrameMain_cls& frame)
    : mFrame(frame), mHub(*frame.GetPCMain()), mImport(frame) {
    mHub.mpCDataLoader->mTakeFile = [this](const wxString& path) { return TakeForeign({path}, false); };
}

void FileOpener_cls::Open(const std::vector<wxString>& paths, bool bAtStart) {
    for (const wxString& path : paths)
        NoteUserAct("open", path);
    mVWaiting = paths;
    mbAtStart = bAtStart;
    OpenWaiting();
    if (!mVWaiting.empty()) wxWakeUpIdle();
}

void FileOpener_cls::OpenWaiting() {
    if (mVWaiting.empty() || GbGLLockDrawing.load()) return;
    std::vector<wxString> of[4];
    for (const wxString& path : std::exchange(mVWaiting, {})) {
        const FileKind kind = GetFileKind(path);
        const bool bCarries = kind == FileKind::Picture && IsPictureWithProject(path);
        of[size_t(bCarries ? FileKind::Project : kind)].push_back(path);
    }
    const std::vector<wxString>& projects = of[size_t(FileKind::Project)];
    const std::vector<wxString>& data = of[size_t(FileKind::Data)];
    if (!projects.empty())
        mFrame.GetPCFileMenu()->OpenProjectAsked(projects[0]);
    else if (!data.empty())
        OpenData(data);
    for (const wxString& path : of[size_t(FileKind::Mesh)])
        mFrame.GetPCFilterMenu()->AddMesh(path);
    for (size_t i = 1; i < projects.size() && mbAtStart; ++i)
        OpenWindow(projects[i]);
    if (!of[size_t(FileKind::Picture)].empty())
        MsgBox(wxString::Format(_("%s is a picture. Morentis opens projects, snapshots and meshes."),
                                of[size_t(FileKind::Picture)][0]),
               _("Warning"));
}

// Text may be of the present layout. Where a layout can be guessed, "Guess" is offered at the start, and who
// opens it by hand has chosen one.
bool FileOpener_cls::TakeForeign(const std::vector<wxString>& paths, bool bDropped) {
    const ForeignKind kind = GetForeignKind(paths[0]);
    bool bOffer = kind == ForeignKind::Sure;
    if (kind == ForeignKind::Likely)
        bOffer = !FitsLayout(*mHub.mpCDataLoader, paths[0]) &&
                 (bDropped || !GuessGrammar(paths[0], *mHub.mpCDataLoader).mbFound);
    return bOffer && mImport.Offer(paths);
}

void FileOpener_cls::OpenData(const std::vector<wxString>& data) {
    std::vector<wxString> foreign;
    for (const wxString& other : data)
        if (GetForeignKind(other) != ForeignKind::None) foreign.push_back(other);
    const wxString path = data[0];
    const bool bFirst = !foreign.empty() && foreign[0] == path;
    if (bFirst && TakeForeign(foreign, !mbAtStart)) return;
    DataLoader_cls* loader = mHub.mpCDataLoader;
    loader->InitGUI(&mFrame);
    const wxString first = FileSequence_cls(path).GetModifiedStr(0, 0);
    const wxString question = wxString::Format(
        _("%s doesn't look like a file of the present layout.\n\nShall Morentis look at it and "
          "propose a layout? \"No\" opens it as it is."),
        first);
    if (mbAtStart && wxFileName::FileExists(first) && !FitsLayout(*loader, first) &&
        MsgBoxYesno(question, _("Guess")))
        loader->mpCGUI->GuessFile(path);
    else
        loader->mpCGUI->OpenWithCheck(path);
}

// Apart from this one: it ends when its own window closes.
void FileOpener_cls::OpenWindow(const wxString& path) const {
    const wxString program = wxStandardPaths::Get().GetExecutablePath();
    const wchar_t* const argv[] = {program.wc_str(), L"--", path.wc_str(), nullptr};
    if (!WhyNoProgram().empty() || wxExecute(argv, wxEXEC_ASYNC | wxEXEC_MAKE_GROUP_LEADER) == 0)
        MsgBox(wxString::Format(_("No window could be opened for %s."), path), _("Warning"));
}
