// What the dialog's buttons do, and what it shows of a run.
#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/gauge.h>
#include <wx/image.h>
#include <wx/imagpnm.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/wfstream.h>

#include "COMMON/EventIds.h"
#include "COMMON/FramePath.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "PARAM/clsCommandSetValue.h"
#include "POVRAY/LinearPicture.h"
#include "POVRAY/clsPovOptions.h"
#include "POVRAY/clsPovRayGUI.h"
#include "WIDGET/clsFileDialogEX.h"

namespace {

constexpr int kGap = 4;
constexpr long long kMostPixels = 64000000; // of a picture that is read for the small one
const wxColour kThere(226, 244, 222);
const wxColour kMissing(250, 218, 214);

/// The field says whether what it names is there.
void ShowExistence(wxWindow* pField, bool bThere, const wxString& what) {
    pField->SetBackgroundColour(bThere ? kThere : kMissing);
    pField->SetForegroundColour(*wxBLACK);
    pField->SetToolTip(what + "\n" + (bThere ? _("File exists.") : _("File dose not exist.")));
    pField->Refresh();
}

wxString TextOf(wxWindow* pField) { return static_cast<wxTextCtrl*>(pField)->GetValue(); }

void SetButton(wxButton* pButton, const wxString& label, bool bRed) {
    if (pButton->GetLabel() != label) pButton->SetLabel(label);
    pButton->SetBackgroundColour(bRed ? wxColour("RED") : wxNullColour);
    pButton->SetForegroundColour(bRed ? wxColour("WHITE") : wxNullColour);
}

} // namespace

void PovRayGUI_cls::PickExe() {
    wxFileDialogEX local(this);
    wxFileDialogEX* dialog = GpCFileDialog ? GpCFileDialog : &local;
    const wxFileName name(mpCCtrl->mPathPovRay.mStrValue);
    dialog->SetParams(_("Choose POV-Ray's program"), name.GetPath(), name.GetFullName(), "*",
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog->ShowModal() != wxID_OK) return;
    PushSetValue(&mpCCtrl->mPathPovRay.mStrValue, dialog->GetPath(), 0);
    UpdateValues();
}

void PovRayGUI_cls::PickFolder() {
    wxFileDialogEX local(this);
    wxFileDialogEX* dialog = GpCFileDialog ? GpCFileDialog : &local;
    if (dialog->ShowModalFolder(_("Choose the folder of scenes and pictures"),
                                mpCCtrl->mPathPovWork.mStrValue) != wxID_OK)
        return;
    PushSetValue(&mpCCtrl->mPathPovWork.mStrValue, dialog->GetPath(), 0);
    UpdateValues();
}

bool PovRayGUI_cls::CheckFileExistencePov() {
    wxWindow* field = mpCFiles->GetField(mRowExe);
    const wxString path = TextOf(field);
    const bool bThere = wxFileName::FileExists(path) && wxIsExecutable(path);
    ShowExistence(field, bThere, _("POV-Ray's program"));
    return bThere;
}

bool PovRayGUI_cls::CheckFileExistenceWorkdir() {
    wxWindow* field = mpCFiles->GetField(mRowWork);
    const bool bThere = wxFileName::DirExists(MakeAbsolutePath(TextOf(field)));
    ShowExistence(field, bThere, _("Folder of scenes and pictures"));
    return bThere;
}

bool PovRayGUI_cls::CheckConsistency(unsigned kind) {
    UpdateFromText();
    wxString warnings;
    if (!CheckFileExistencePov()) warnings += _("Path discrepancy.") + wxString("\n");
    if (!CheckFileExistenceWorkdir())
        warnings += wxString::Format(_("The folder %s is not there; it will be made."),
                                     mpCCtrl->mPathPovWork.mStrValue) +
                    "\n";
    const wxString odd = mpCCtrl->GetNameProblem(kind);
    if (!odd.empty()) warnings += odd + "\n";
    return warnings.empty() || MsgBoxYesno(warnings + _("Above warnings detected. Continue?"), _("Warning"));
}

void PovRayGUI_cls::UpdateFromText() {
    CommitFields(*mpCFiles);
    for (PovOptions_cls* page : mVPages)
        CommitFields(*page);
    if (mpCAdvancedPage) CommitFields(*mpCAdvancedPage);
}

void PovRayGUI_cls::OnButtonSnap(bool bRender) {
    if (bRender && !mpCCtrl->mbRenderDone) {
        mpCCtrl->StopRenderer();
        return;
    }
    if (CheckConsistency(PovRayCtrl_cls::FILE_SNAP))
        PostMenuEvent(bRender ? ID_POV_RENDER_SNAP : ID_POV_EXPORT_SNAP);
}

void PovRayGUI_cls::OnButtonAnim(bool bRender) {
    if (bRender && mpCCtrl->mbAborted) {
        mpCCtrl->StopRenderer(); // the second press
        return;
    }
    const bool bStop = mpCCtrl->mbExportingAnim || mpCCtrl->mbRenderingAnim;
    if (bStop || CheckConsistency(PovRayCtrl_cls::FILE_ANIM))
        PostMenuEvent(bRender ? ID_POV_RENDER_ANIM : ID_POV_EXPORT_ANIM);
}

void PovRayGUI_cls::OnButtonTry() {
    if (CheckConsistency(PovRayCtrl_cls::FILE_SNAP)) PostMenuEvent(ID_POV_TRY);
}

void PovRayGUI_cls::ApplyPreset(bool bFilm) {
    mpCCtrl->ChangeSettings([this, bFilm] { mpCCtrl->SetPreset(bFilm); });
    UpdateValues();
}

void PovRayGUI_cls::ApplyDefault() {
    mpCCtrl->ChangeSettings([this] { mpCCtrl->SetToDefault(); });
    UpdateValues();
}

PovOptions_cls* PovRayGUI_cls::GetPCAdvanced() {
    if (mpCAdvanced) return mpCAdvancedPage;
    mpCAdvanced = new wxDialogEXKey(this, _("Pov-Ray Advanced Settings"));
    mpCAdvancedPage = new PovAdvancedPage_cls(mpCAdvanced, *mpCCtrl);
    auto* close = new wxButton(mpCAdvanced, ID_DIALOG_CLOSE, _("Close"));
    close->SetDefault();
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCAdvancedPage, 1, wxEXPAND | wxALL, FromDIP(kGap));
    sizer->Add(close, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
    mpCAdvanced->SetSizerAndFit(sizer);
    return mpCAdvancedPage;
}

wxString PovRayGUI_cls::GetStatusText() const {
    const wxString running = mpCCtrl->GetProgressText();
    return running.empty() ? mpCCtrl->GetTrialText() : running;
}

void PovRayGUI_cls::ShowProgress() {
    const RunProgress_cls& progress = mpCCtrl->GetProgress();
    const int total = std::max(progress.GetTotal(), 1);
    if (mpCGauge->GetRange() != total * 100) mpCGauge->SetRange(total * 100);
    const int percent = mpCCtrl->mbRenderDone ? 0 : std::max(mpCCtrl->GetPercent(), 0);
    const bool bShow = !mpCCtrl->GetProgressText().empty() && !mpCCtrl->mbExportingAnim;
    mpCGauge->SetValue(bShow ? std::min(progress.GetDone() * 100 + percent, total * 100) : 0);
    const wxString text = GetStatusText();
    if (mpCProgress->GetLabel() != text) {
        mpCProgress->SetLabel(text);
        mpCProgress->SetToolTip(text);
    }
}

void PovRayGUI_cls::ShowPicture() {
    const wxString& path = mpCCtrl->GetLastPicture();
    const wxString stamp = path + wxString::Format("%d", mpCCtrl->GetFinished());
    if (path.empty() || mStrShownPicture == stamp) return;
    mStrShownPicture = stamp;
    const PovPicture_st& shape = mpCCtrl->GetLastShape();
    const wxLogNull quiet;
    wxImage image;
    if ((long long)shape.mW * shape.mH <= kMostPixels) {
        if (shape.mEnding == ".ppm") { // no format of the file dialogs
            wxFFileInputStream file(path);
            wxPNMHandler().LoadFile(&image, file, false);
        } else if (shape.mEnding == ".exr" || shape.mEnding == ".hdr") {
            image = ReadLinearPicture(path, kMostPixels);
        } else if (wxImage::FindHandler(shape.mEnding.Mid(1), wxBITMAP_TYPE_ANY)) {
            image.LoadFile(path);
        }
    }
    if (image.IsOk()) {
        ShowSmall(image, path);
        return;
    }
    mpCPicture->SetBitmap(wxNullBitmap); // not an older one
    mpCPicture->SetToolTip(path + "\n" + _("Such a picture can't be shown here."));
}

void PovRayGUI_cls::ShowSmall(wxImage image, const wxString& path) {
    const wxSize room = mpCPicture->GetClientSize();
    const double scale = std::min(double(room.x) / image.GetWidth(), double(room.y) / image.GetHeight());
    image.Rescale(std::max(int(image.GetWidth() * scale), 1), std::max(int(image.GetHeight() * scale), 1),
                  wxIMAGE_QUALITY_BOX_AVERAGE);
    image.Resize(room, wxPoint((room.x - image.GetWidth()) / 2, (room.y - image.GetHeight()) / 2));
    mpCPicture->SetBitmap(wxBitmap(image));
    mpCPicture->SetToolTip(path);
}

void PovRayGUI_cls::UpdateButtonLabel() {
    const bool bRendering = mpCCtrl->mbRenderingAnim;
    const bool bExporting = mpCCtrl->mbExportingAnim;
    if (bRendering)
        SetButton(mpCRenderAnim, _("Abort"), true);
    else
        SetButton(mpCRenderAnim, mpCCtrl->mbAborted ? _("Stop now") : _("RenderAnim"), mpCCtrl->mbAborted);
    if (bRendering)
        SetButton(mpCExportAnim, bExporting ? _("Exporting...") : _("ExportAnim"), false);
    else
        SetButton(mpCExportAnim, bExporting ? _("Abort") : _("ExportAnim"), bExporting);
    SetButton(mpCRenderSnap, mpCCtrl->mbRenderDone ? _("RenderSnap") : _("Rendering.."), false);
    mpCRenderSnap->SetToolTip(mpCCtrl->mbRenderDone ? _("Write and render the present frame")
                                                    : _("Press to give up what is being rendered"));
}

void PovRayGUI_cls::EnableButtons(bool bFields) {
    for (wxWindow* window : {static_cast<wxWindow*>(mpCFiles), static_cast<wxWindow*>(mpCBooks[0]),
                             static_cast<wxWindow*>(mpCBooks[1])})
        window->Enable(bFields);
    for (wxButton* button : mVSettingButtons)
        button->Enable(bFields);
    const bool bIdle = !mpCCtrl->IsBusy();
    mpCExportSnap->Enable(bFields);
    mpCTry->Enable(bIdle);
    mpCRenderSnap->Enable(bFields && !mpCCtrl->mbRenderingAnim && !mpCCtrl->mbAborted);
    mpCExportAnim->Enable(!mpCCtrl->mbRenderingAnim);
}

void PovRayGUI_cls::ShowFailures() {
    const std::vector<PovFailure_st>& failures = mpCCtrl->GetFailures();
    if (failures.size() == mShownFailures) return;
    mShownFailures = failures.size();
    wxString text;
    for (const PovFailure_st& failure : failures)
        text += failure.mName + ": " + failure.mWords + "\n";
    mpCFailures->ChangeValue(text);
}

// Leaves the fields alone: somebody may be typing.
void PovRayGUI_cls::ShowRun() {
    UpdateButtonLabel();
    EnableButtons(!mpCCtrl->mbExportingAnim);
    ShowProgress();
    ShowPicture();
    ShowFailures();
}

void PovRayGUI_cls::UpdateValues() {
    mpCFiles->UpdateValues();
    for (PovOptions_cls* page : mVPages)
        page->UpdateValues();
    if (mpCAdvancedPage) mpCAdvancedPage->UpdateValues();
    ShowRun();
}
