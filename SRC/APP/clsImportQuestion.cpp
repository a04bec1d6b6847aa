#include "APP/clsImportQuestion.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "APP/ForeignFile.h"
#include "COMMON/Globals.h"
#include "WIDGET/clsFileDialogEX.h"

namespace {

constexpr int kGap = 6;
constexpr int kTextWidth = 460;

} // namespace

ImportQuestion_cls::ImportQuestion_cls(wxWindow* pParent, const std::vector<wxString>& files)
    : wxDialogEXKey(pParent, _("Import")), mFiles(files) {
    if (files.size() == 1) mAlike = ListNumberedAlike(files[0]);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    const wxString name = wxFileName(files[0]).GetFullName();
    const wxString what = files.size() == 1
                              ? wxString::Format(_("%s is a file of another program."), name)
                              : wxString::Format(_("%s and others are files of other programs."), name);
    auto* text = new wxStaticText(
        this, wxID_ANY,
        what + "\n\n" + _("Shall Morentis make snapshots of its own and a project of them, and open it?"));
    text->Wrap(FromDIP(kTextWidth));
    sizer->Add(text, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
    if (mAlike.size() > 1) {
        mpCAlike =
            new wxCheckBox(this, wxID_ANY,
                           wxString::Format(_("All %d files that are numbered like it"), int(mAlike.size())));
        mpCAlike->SetValue(true);
        mpCAlike->SetToolTip(_("The sequence that this file belongs to; else this file alone"));
        sizer->Add(mpCAlike, 0, wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
    }
    AddFolder(sizer);
    AddButtons(sizer);
    SetSizerAndFit(sizer);
    CentreOnParent();
}

void ImportQuestion_cls::AddFolder(wxSizer* pSizer) {
    auto* line = new wxBoxSizer(wxHORIZONTAL);
    mpCFolder = new wxTextCtrl(this, wxID_ANY, ProposeImportFolder(mFiles[0]), wxDefaultPosition,
                               FromDIP(wxSize(kTextWidth - 120, -1)));
    mpCFolder->SetToolTip(_("New folder for the snapshots and their project"));
    auto* browse = new wxButton(this, wxID_ANY, _("Browse..."));
    browse->SetToolTip(_("Choose another folder"));
    browse->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnBrowse(); });
    line->Add(new wxStaticText(this, wxID_ANY, _("Folder")), 0, wxALIGN_CENTER_VERTICAL | wxRIGHT,
              FromDIP(2 * kGap));
    line->Add(mpCFolder, 1, wxALIGN_CENTER_VERTICAL | wxRIGHT, FromDIP(kGap));
    line->Add(browse, 0, wxALIGN_CENTER_VERTICAL);
    pSizer->Add(line, 0, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(2 * kGap));
}

void ImportQuestion_cls::AddButtons(wxSizer* pSizer) {
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    const auto add = [&](const wxString& label, const wxString& tip, int answer) {
        auto* button = new wxButton(this, wxID_ANY, label);
        button->SetToolTip(tip);
        button->Bind(wxEVT_BUTTON, [this, answer](wxCommandEvent&) { EndModal(answer); });
        buttons->Add(button, 0, wxLEFT, FromDIP(kGap));
        return button;
    };
    buttons->AddStretchSpacer();
    add(_("Open as It Is"), _("Read the file by the present layout"), AsItIs);
    add(_("Import"), _("Make the snapshots and open their project (Enter)"), Import)->SetDefault();
    buttons->Add(new wxButton(this, wxID_CANCEL, _("Cancel")), 0, wxLEFT, FromDIP(2 * kGap));
    pSizer->Add(buttons, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
}

// The new folder is made in the chosen one.
void ImportQuestion_cls::OnBrowse() {
    wxFileDialogEX dialog(this);
    if (dialog.ShowModalFolder(_("Choose a folder"), wxFileName(GetFolder()).GetPath()) == wxID_OK)
        mpCFolder->SetValue(
            wxFileName(dialog.GetPath(), wxFileName(GetFolder()).GetFullName()).GetFullPath());
}

ImportQuestion_cls::Answer ImportQuestion_cls::Ask() {
    const FlagScope_cls modal(GbGLLockModalDialog);
    const int answer = ShowModal();
    return answer == Import || answer == AsItIs ? Answer(answer) : Cancel;
}

std::vector<wxString> ImportQuestion_cls::GetFiles() const {
    return mpCAlike && mpCAlike->IsChecked() ? mAlike : mFiles;
}

wxString ImportQuestion_cls::GetFolder() const {
    wxFileName folder(mpCFolder->GetValue().Strip(wxString::both));
    folder.MakeAbsolute(wxFileName(mFiles[0]).GetPath());
    return folder.GetFullPath();
}
