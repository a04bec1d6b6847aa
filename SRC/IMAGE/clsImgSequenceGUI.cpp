#include "IMAGE/clsImgSequenceGUI.h"

#include <utility>

#include <wx/bmpbndl.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/gauge.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsMyArtProvider.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr int kGap = 4; // the spacing unit
constexpr int kPathWidth = 260;

} // namespace

ImgSequenceGUI_cls::ImgSequenceGUI_cls(wxWindow* pParent, ImgSequence_cls* pSequence)
    : wxDialogEXKey(pParent, _("Save Image Sequence")), mpCSequence(pSequence) {
    const wxBitmapBundle icon = MyArtProvider::GetIcon("ImgSequence");
    if (icon.IsOk()) SetIcon(icon.GetIcon(icon.GetDefaultSize()));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    MakePanel();
    sizer->Add(mpCPanel, 0, wxEXPAND | wxALL, FromDIP(kGap));
    MakeProgress(sizer);
    MakeButtons(sizer);
    SetSizerAndFit(sizer);
    UpdateValues();
}

void ImgSequenceGUI_cls::MakePanel() {
    mpCPanel = new MultiInputPanel_cls(this);
    mpCPanel->AddStatic(
        _("Preview (W, H, V)"),
        [this] {
            return wxString::Format(L"%d \u00d7 %d, %g\u00b0", mpCSequence->mPreviewW, mpCSequence->mPreviewH,
                                    double(mpCSequence->mPreviewAngle));
        },
        _("Width and height of the active view's window in pixels, and its view angle"));
    MakeSizeRows();
    MakeFileRows();
    MakeBlurRow();
    MakeVideoRow();
    mpCPanel->AddCheck(_("PNG"), &mpCSequence->mbSmallestPNG, _("Smallest files"),
                       _("Compress PNG files as well as can be; this takes several times as long"));
    mpCPanel->AddCheck(_("Project"), &mpCSequence->mbKeepProject, _("Kept in the pictures"),
                       _("PNG and TIFF pictures, snapshots too, carry the project, with the paths of its "
                         "data: dropped on the window, they open it at their frame"));
    mpCPanel->SetUndo(UPDATE_IMGSEQ);
}

void ImgSequenceGUI_cls::MakeSizeRows() {
    NumSpec size = IntegerSpec(1, ImgSequence_cls::kMaxSize);
    mRowSize = mpCPanel->AddNumber(_("Output Size"), &mpCSequence->mOutW, 1, size,
                                   _("Width of the pictures in pixels"));
    mpCPanel->AddNumberTo(mRowSize, &mpCSequence->mOutH, size, _("Height of the pictures in pixels"));
    mpCSizes = new wxChoice(mpCPanel, wxID_ANY);
    for (const wxString& label : GetLabels())
        mpCSizes->Append(label);
    mpCSizes->SetToolTip(_("The usual sizes; \"Custom\" lets you type any other"));
    mpCSizes->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { HookGeometry(); });
    const int row = mpCPanel->AddWindow(wxEmptyString, mpCSizes);
    mpCPanel->AddRefresh(row, [this] { ShowGeometry(); });
}

void ImgSequenceGUI_cls::MakeFileRows() {
    const int first = mpCPanel->AddNumber(_("Initial sequence"), &mpCSequence->mCInitNum.mValue, 1,
                                          IntegerSpec(-1000000000, 1000000000),
                                          _("Number of the file of the work area's first frame"));
    mpCPanel->AddButtonTo(first, _("Calc. Auto"), _("Number files as the frames are numbered"),
                          [this] { OnButtonInitSeq(); });
    const int path = mpCPanel->AddText(
        _("File name"), &mpCSequence->mCFileSequence.mStrPath,
        _("Path of the pictures, with %04d where the number goes; the ending chooses the format"));
    mpCPanel->GetField(path)->SetMinSize(FromDIP(wxSize(kPathWidth, -1)));
    mpCPanel->AddButtonTo(path, _("Reference"), _("Choose the folder and the name"),
                          [this] { OnButtonReference(); });
}

void ImgSequenceGUI_cls::MakeBlurRow() {
    TimeCtrl_cls* pTime = mpCSequence->GetPCTimeCtrl();
    const int row = mpCPanel->AddCheck(_("Motion Blur (Length/Quality)"), &pTime->mbUseMotionBlur.mValue,
                                       _("Use"), _("Let moving things leave traces in each picture"));
    NumSpec length;
    length.mMin = 0.0;
    length.mMax = 1.0;
    length.mStep = 0.05;
    mpCPanel->AddNumberTo(row, &pTime->mCMotionBlur.mShutter, length,
                          _("Share of a frame that the shutter is open"));
    mpCPanel->AddNumberTo(row, &pTime->mCMotionBlur.mBlurSteps,
                          IntegerSpec(1, ImgSequence_cls::kMaxBlurSteps),
                          _("Pictures that are added up to one"));
}

void ImgSequenceGUI_cls::MakeVideoRow() {
    const int row = mpCPanel->AddCheck(
        _("Video"), &mpCSequence->mbVideo, _("Make one"),
        _("When a series is whole, make a video of it (H.264) in the same folder, in the background"));
    NumSpec rate;
    rate.mMin = 0.01;
    rate.mMax = 1000.0;
    mpCPanel->AddNumberTo(row, &mpCSequence->mVideoRate, rate, _("Pictures a second of the video"));
    if (!FindVideoTool().empty()) return;
    mpCPanel->EnableRow(row, false);
    mpCPanel->GetField(row)->SetToolTip(GetVideoToolHint());
}

void ImgSequenceGUI_cls::MakeProgress(wxSizer* pSizer) {
    mpCGauge = new wxGauge(this, wxID_ANY, 1);
    mpCProgress = new wxStaticText(this, wxID_ANY, wxEmptyString);
    pSizer->Add(mpCGauge, 0, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(2 * kGap));
    pSizer->Add(mpCProgress, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
}

void ImgSequenceGUI_cls::MakeButtons(wxSizer* pSizer) {
    mpCRender = new wxButton(this, wxID_ANY, _("Render Anim"));
    mpCRender->SetToolTip(_("Write a picture of each frame of the work area"));
    mpCSnap = new wxButton(this, wxID_ANY, _("Render Snap"));
    mpCSnap->SetToolTip(_("Write a picture of the current frame"));
    auto* close = new wxButton(this, ID_DIALOG_CLOSE, _("Close"));
    mpCRender->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnButtonRender(); });
    mpCSnap->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnButtonSnap(); });
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(mpCRender, 0, wxRIGHT, FromDIP(kGap));
    buttons->Add(mpCSnap, 0);
    buttons->AddStretchSpacer();
    buttons->Add(close, 0);
    pSizer->Add(buttons, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
}

// A field that is still being typed in counts as it stands.
void ImgSequenceGUI_cls::CommitFields() {
    for (int row = 0; row < mpCPanel->GetRowCount(); ++row)
        for (int k = 0; k < MultiInputPanel_cls::kMaxField; ++k)
            if (auto* field = dynamic_cast<NumField_cls*>(mpCPanel->GetField(row, k))) field->Commit();
}

void ImgSequenceGUI_cls::OnButtonRender() {
    if (mpCSequence->IsRendering())
        AbortRender();
    else
        Start(false);
}

void ImgSequenceGUI_cls::OnButtonSnap() {
    if (!mpCSequence->IsRendering()) Start(true);
}

void ImgSequenceGUI_cls::AbortRender() {
    PostMenuEvent(ID_PLAY_STOP);
    mpCSequence->OutputFinish();
}

void ImgSequenceGUI_cls::Start(bool bSnap) {
    CommitFields();
    if (!mpCSequence->NormalizeName(!bSnap)) return;
    mpCSequence->Begin(bSnap);
    PostMenuEvent(ID_SAVE_IMGSEQ_BEGIN);
    UpdateValues();
}

void ImgSequenceGUI_cls::OnButtonInitSeq() {
    const int before = mpCSequence->mCInitNum.mValue;
    mpCSequence->CalcInitNum();
    const int after = std::exchange(mpCSequence->mCInitNum.mValue, before);
    PushSetValue(&mpCSequence->mCInitNum.mValue, after, UPDATE_IMGSEQ);
    UpdateValues();
}

void ImgSequenceGUI_cls::OnButtonReference() {
    wxFileDialogEX local(this);
    wxFileDialogEX* pDialog = GpCFileDialog ? GpCFileDialog : &local;
    const wxFileName name(mpCSequence->mCFileSequence.mStrPath);
    pDialog->SetParams(_("Select a image file to save"), name.GetPath(), name.GetFullName(),
                       "image(*.png;*.jpg;*.tif)|*.png;*.jpg;*.tif|png (*.png)|*.png|jpg (*.jpg)|*.jpg|"
                       "tiff (*.tif)|*.tif",
                       wxFD_SAVE);
    if (pDialog->ShowModal() != wxID_OK) return;
    PushSetValue(&mpCSequence->mCFileSequence.mStrPath, pDialog->GetPath(), UPDATE_IMGSEQ);
    UpdateValues();
}

void ImgSequenceGUI_cls::HookGeometry() {
    int w = mpCSequence->mOutW;
    int h = mpCSequence->mOutH;
    mbCustom = SetGeometry(mpCSizes->GetSelection(), &w, &h);
    {
        const UndoBlock_cls block;
        PushSetValue(&mpCSequence->mOutW, w, UPDATE_IMGSEQ);
        PushSetValue(&mpCSequence->mOutH, h, UPDATE_IMGSEQ);
    }
    UpdateValues();
}

void ImgSequenceGUI_cls::ShowGeometry() {
    const int index = mbCustom ? 0 : SetIndexFromGeometry(mpCSequence->mOutW, mpCSequence->mOutH);
    if (mpCSizes->GetSelection() != index) mpCSizes->SetSelection(index);
    mpCPanel->EnableRow(mRowSize, index == 0);
}

void ImgSequenceGUI_cls::ShowState() {
    const bool bRendering = mpCSequence->IsRendering();
    const RunProgress_cls& progress = mpCSequence->GetProgress();
    const int total = std::max(progress.GetTotal(), 1);
    if (mpCGauge->GetRange() != total) mpCGauge->SetRange(total);
    mpCGauge->SetValue(bRendering ? std::min(progress.GetDone(), total) : 0);
    mpCProgress->SetLabel(mpCSequence->GetProgressText());
    if (bRendering == mbShownRendering) return;
    mbShownRendering = bRendering;
    mpCRender->SetLabel(bRendering ? _("Abort Anim") : _("Render Anim"));
    mpCRender->SetBackgroundColour(bRendering ? wxColour("RED") : wxNullColour);
    mpCRender->SetForegroundColour(bRendering ? wxColour("WHITE") : wxNullColour);
    mpCSnap->Enable(!bRendering);
    Layout();
}

void ImgSequenceGUI_cls::UpdateValues() {
    mpCPanel->UpdateValues();
    ShowState();
}
