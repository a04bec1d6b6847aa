#include "POVRAY/clsPovRayGUI.h"

#include <wx/bmpbndl.h>
#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/hyperlink.h>
#include <wx/intl.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "COMMON/EventIds.h"
#include "POVRAY/clsPovOptions.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {

constexpr int kGap = 4; // the spacing unit
constexpr int kPathWidth = 300;
constexpr int kPictureWidth = 160;
constexpr int kPictureHeight = 120;
constexpr int kFailuresHeight = 60;
constexpr int kProgressLines = 3; // as many as a trial's words need in the narrowest dialog

} // namespace

PovRayGUI_cls::PovRayGUI_cls(wxWindow* pParent, PovRayCtrl_cls* pCtrl)
    : wxDialogEXKey(pParent, _("Pov-Ray Rendering Configure")), mpCCtrl(pCtrl), mpHooks(pCtrl->mpHooks) {
    const wxBitmapBundle icon = MyArtProvider::GetIcon("PovRay");
    if (icon.IsOk()) SetIcon(icon.GetIcon(icon.GetDefaultSize()));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    MakeFiles(sizer);
    MakeBooks(sizer);
    MakeProgress(sizer);
    MakeButtons(sizer);
    for (PovOptions_cls* page : mVPages)
        page->ShowAllRows();
    for (wxNotebook* book : mpCBooks) // the dialog is fitted again when it is shown, with rows hidden
        book->SetMinSize(book->GetBestSize());
    SetSizerAndFit(sizer);
    mpHooks->mCommitFields = [this] { UpdateFromText(); };
    mpHooks->mOnTick = [this] {
        if (IsShown()) ShowProgress();
    };
    mpHooks->mOnState = [this] { ShowRun(); };
    UpdateValues();
}

PovRayGUI_cls::~PovRayGUI_cls() { *mpHooks = PovRayCtrl_cls::Hooks_st(); }

void PovRayGUI_cls::MakeFiles(wxSizer* pSizer) {
    mpCFiles = new MultiInputPanel_cls(this);
    const wxSize width = FromDIP(wxSize(kPathWidth, -1));
    mRowExe = mpCFiles->AddText(_("Exe Path"), &mpCCtrl->mPathPovRay.mStrValue, wxEmptyString);
    mpCFiles->GetField(mRowExe)->SetMinSize(width);
    mpCFiles->AddButtonTo(mRowExe, "...", _("Choose POV-Ray's program"), [this] { PickExe(); });
    mRowWork = mpCFiles->AddText(_("WorkPath"), &mpCCtrl->mPathPovWork.mStrValue, wxEmptyString);
    mpCFiles->AddButtonTo(mRowWork, "...", _("Choose the folder of scenes and pictures"),
                          [this] { PickFolder(); });
    const NumSpec number = IntegerSpec(0, 1000000);
    const int snap = mpCFiles->AddText(_("SnapFile"), &mpCCtrl->mFilePovSnap.mStrValue,
                                       _("Name of a still, with %04d where its number goes"));
    AddWord(snap, _("current"));
    mpCFiles->AddNumberTo(snap, &mpCCtrl->mSnapNumber, number, _("Number of the still"));
    const int anim = mpCFiles->AddText(_("AnimFile"), &mpCCtrl->mFilePovAnim.mStrValue,
                                       _("Name of an animation's frames, with %04d where the number goes"));
    AddWord(anim, _("initnum"));
    mpCFiles->AddNumberTo(anim, &mpCCtrl->mAnimInitNumber, number, _("Number of the first frame"));
    for (const int row : {mRowExe, mRowWork})
        mpCFiles->GetField(row)->Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
            event.Skip();
            CheckFileExistencePov();
            CheckFileExistenceWorkdir();
        });
    mpCFiles->AddRefresh(anim, [this] {
        CheckFileExistencePov();
        CheckFileExistenceWorkdir();
    });
    mpCFiles->SetUndo(0);
    pSizer->Add(mpCFiles, 0, wxEXPAND | wxALL, FromDIP(kGap));
}

// In the middle of the row: a field's height would have it at the top.
void PovRayGUI_cls::AddWord(int row, const wxString& word) {
    auto* text = new wxStaticText(mpCFiles, wxID_ANY, word);
    mpCFiles->AddWindowTo(row, text);
    text->SetMinSize(wxDefaultSize);
}

void PovRayGUI_cls::MakeBooks(wxSizer* pSizer) {
    auto* books = new wxBoxSizer(wxHORIZONTAL);
    for (wxNotebook*& book : mpCBooks) {
        book = new wxNotebook(this, wxID_ANY);
        books->Add(book, 1, wxEXPAND | wxALL, FromDIP(kGap));
    }
    mVPages = {new PovFormatPage_cls(mpCBooks[0], *mpCCtrl),
               new PovRenderPage_cls(mpCBooks[0], mpCCtrl->mCRender),
               new PovRadiosityPage_cls(mpCBooks[1], *mpCCtrl),
               new PovPhotonsPage_cls(mpCBooks[1], mpCCtrl->mCPhotons)};
    mpCBooks[0]->AddPage(mVPages[0], _("Format"));
    mpCBooks[0]->AddPage(mVPages[1], _("RenderType"));
    mpCBooks[1]->AddPage(mVPages[2], _("Radiosity"));
    mpCBooks[1]->AddPage(mVPages[3], _("Photons"));
    pSizer->Add(books, 1, wxEXPAND);
}

void PovRayGUI_cls::MakeProgress(wxSizer* pSizer) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* words = new wxBoxSizer(wxVERTICAL);
    mpCGauge = new wxGauge(this, wxID_ANY, 1);
    mpCProgress = new wxStaticText(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                   wxST_NO_AUTORESIZE); // breaks lines by itself
    mpCProgress->SetMinSize(wxSize(-1, kProgressLines * mpCProgress->GetCharHeight()));
    mpCFailures = new wxTextCtrl(this, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                 FromDIP(wxSize(-1, kFailuresHeight)), wxTE_MULTILINE | wxTE_READONLY);
    mpCFailures->SetToolTip(_("Frames without a picture, with POV-Ray's last words"));
    auto* link = new wxHyperlinkCtrl(this, wxID_ANY, _("Open folder"), "file:");
    link->SetToolTip(_("Show scenes and pictures in the file manager"));
    link->Bind(wxEVT_HYPERLINK, [this](wxHyperlinkEvent&) { mpCCtrl->OpenWorkingDir(); });
    words->Add(mpCGauge, 0, wxEXPAND | wxBOTTOM, FromDIP(kGap));
    words->Add(mpCProgress, 0, wxEXPAND | wxBOTTOM, FromDIP(kGap));
    words->Add(mpCFailures, 1, wxEXPAND | wxBOTTOM, FromDIP(kGap));
    words->Add(link, 0, wxALIGN_LEFT);
    mpCPicture = new wxStaticBitmap(this, wxID_ANY, wxNullBitmap, wxDefaultPosition,
                                    FromDIP(wxSize(kPictureWidth, kPictureHeight)), wxBORDER_SIMPLE);
    mpCPicture->SetToolTip(_("The last finished picture"));
    row->Add(words, 1, wxEXPAND | wxRIGHT, FromDIP(2 * kGap));
    row->Add(mpCPicture, 0);
    pSizer->Add(row, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
}

wxButton* PovRayGUI_cls::AddButton(wxSizer* pSizer, const wxString& label, const wxString& tip,
                                   std::function<void()> press) {
    auto* button = new wxButton(this, wxID_ANY, label);
    button->SetToolTip(tip);
    button->Bind(wxEVT_BUTTON, [press](wxCommandEvent&) { press(); });
    pSizer->Add(button, 0, wxRIGHT, FromDIP(kGap));
    return button;
}

void PovRayGUI_cls::MakeButtons(wxSizer* pSizer) {
    auto* settings = new wxBoxSizer(wxHORIZONTAL);
    mVSettingButtons = {AddButton(settings, _("Advanced"), _("Settings that few touch"),
                                  [this] {
                                      GetPCAdvanced();
                                      mpCAdvanced->OpenWindow();
                                  }),
                        AddButton(settings, _("Set to Defalt"),
                                  _("All settings of these pages as they were at first"),
                                  [this] { ApplyDefault(); }),
                        AddButton(settings, _("Still"), _("Settings for a single picture: fine, and slow"),
                                  [this] { ApplyPreset(false); }),
                        AddButton(settings, _("Film"), _("Settings for a film: fast, and without flicker"),
                                  [this] { ApplyPreset(true); })};
    mpCTry =
        AddButton(settings, _("Try"),
                  _("Render the present frame at a quarter of its width and height, and tell the time that "
                    "the film would take"),
                  [this] { OnButtonTry(); });
    pSizer->Add(settings, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    mpCExportSnap = AddButton(buttons, _("ExportSnap"), _("Write the scene of the present frame"),
                              [this] { OnButtonSnap(false); });
    mpCExportAnim = AddButton(buttons, _("ExportAnim"), _("Write a scene of each frame"),
                              [this] { OnButtonAnim(false); });
    mpCRenderSnap = AddButton(buttons, _("RenderSnap"), _("Write and render the present frame"),
                              [this] { OnButtonSnap(true); });
    mpCRenderAnim =
        AddButton(buttons, _("RenderAnim"), _("Write and render each frame"), [this] { OnButtonAnim(true); });
    buttons->AddStretchSpacer();
    buttons->Add(new wxButton(this, ID_DIALOG_CLOSE, _("Close")), 0);
    pSizer->Add(buttons, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
}
