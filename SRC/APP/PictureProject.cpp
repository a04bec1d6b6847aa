#include "APP/PictureProject.h"

#include <wx/filename.h>
#include <wx/intl.h>

#include "APP/ProjectText.h"
#include "APP/WindowArgs.h"
#include "APP/clsMain.h"
#include "COMMON/FramePath.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsSplitPath.h"
#include "IMAGE/PictureOrigin.h"
#include "PDATA/clsPDataSequence.h"
#include "TIME/clsTimeCtrl.h"

namespace {

static_assert(kLongestOrigin <= kLargestProject, "what a picture carries can be opened");

/// Data of the text stand where it says, or under the folder.
bool HasData(const std::wstring& text, const wxString& folder) {
    for (const wxString& path : ListProjectData(text)) {
        const auto isThere = [&folder](const wxString& end) {
            return PDataSequence_cls::DoesSequenceExist(folder + "/" + end);
        };
        if (PDataSequence_cls::DoesSequenceExist(path) || !FindEndOfPath(path, isThere).empty()) return true;
    }
    return false;
}

/// The folder with the data: that of the project which the picture was made of, else the picture's or the one
/// above it, as films often have a folder beside their project. The picture's where there are none.
wxString FindFolder(const std::wstring& text, const wxString& picture) {
    const wxString beside = wxFileName(picture).GetPath();
    const wxString made = Main_cls::GetFolderOfRecovered(text);
    for (const wxString& folder : {made, beside, wxFileName(beside).GetPath()})
        if (folder.StartsWith("/") && HasData(text, folder)) return folder;
    return beside;
}

} // namespace

std::shared_ptr<const OriginPack_cls> PackProject(const std::string& text) {
    PictureOrigin_st origin;
    origin.mProject = text;
    origin.mSoftware = std::string("Morentis ") + GetVersion();
    for (const wxString& path : ListProjectData(DecodeProject(text)))
        origin.mData += (origin.mData.empty() ? "" : "\n") + SplitPath_cls(path).GetPathStr(12).utf8_string();
    return std::make_shared<OriginPack_cls>(origin);
}

bool IsPictureWithProject(const wxString& path) {
    PictureOrigin_st origin;
    wxString reason;
    return ReadPictureOrigin(path, &origin, &reason) != OriginFound::None;
}

bool LoadPictureProject(const wxString& path, PictureProject_st* pProject) {
    PictureOrigin_st origin;
    wxString reason;
    const OriginFound found = ReadPictureOrigin(path, &origin, &reason);
    if (found == OriginFound::None) {
        MsgBox(wxString::Format(_("%s is a picture. Morentis opens projects, snapshots and meshes."), path),
               _("Warning"));
        return false;
    }
    pProject->mText = DecodeProject(origin.mProject);
    if (found == OriginFound::Whole && !IsProjectText(pProject->mText)) reason = _("it is no project");
    if (!reason.empty()) {
        MsgBox(wxString::Format(_("The project in the picture %s can't be opened: %s. Nothing was changed."),
                                path, reason),
               _("Warning"));
        return false;
    }
    pProject->mFolder = FindFolder(pProject->mText, path);
    pProject->mFrame = origin.mFrame;
    pProject->mSuggestedPath = SplitPath_cls(path).mStrNoExt + ".mrp";
    return true;
}

void GoToPictureFrame(const wxString& path, const std::string& frame, TimeCtrl_cls* pTime) {
    int number = 0, step = 0, steps = 1;
    const bool bRead = ReadFrameText(frame, &number, &step, &steps);
    if (!bRead || number > pTime->GetMaxFrame() || step >= pTime->GetAnimInterp()) {
        MsgBox(wxString::Format(_("The picture %s doesn't tell a frame of its project's film, which has 0 to "
                                  "%d. The project is open at the first one."),
                                path, pTime->GetMaxFrame()),
               _("Warning"));
        return;
    }
    pTime->SetFrameNative(number, 0);
    pTime->SetInterpStepNative(step, 0);
}
