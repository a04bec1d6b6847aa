#include "GL/VIEW/clsGLCanvasCtrl.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/tglbtn.h>

#include "COMMON/RuntimeFiles.h"
#include "GL/VIEW/clsMainGLCanvas.h"

namespace {

constexpr int kSpace = 4;
// Buttons redraw a few pixels around them, for their shadows: where that reaches a view, the toolkit paints
// the view again with every step of a button's animation.
constexpr int kShadow = 8;

struct ToggleLook {
    const char* icon;
    const char* letter; // where the icon is missing
    const char* tip;
};

const ToggleLook kToggles[4] = {
    {"ICONS/ShowMessage.png", "M", wxTRANSLATE("Show/Hide Message")},
    {"ICONS/ShowItem.png", "I", wxTRANSLATE("Show/Hide Item")},
    {"ICONS/ShowGrid.png", "G", wxTRANSLATE("Show/Hide Grid")},
    {"ICONS/ShowData.png", "D", wxTRANSLATE("Show/Hide Data")},
};

wxArrayString GetDisplayModeNames(bool bExtraPanel) {
    wxArrayString names;
    names.Add(_("Free"));
    names.Add(_("From -X to +X"));
    names.Add(_("From +X to -X"));
    names.Add(_("From -Y to +Y"));
    names.Add(_("From +Y to -Y"));
    names.Add(_("From -Z to +Z"));
    names.Add(_("From +Z to -Z"));
    names.Add(wxString::Format("%s%d", _("Cam"), 0));
    if (bExtraPanel) names.Add(_("Copy of View 0"));
    return names;
}

wxArrayString GetGeometryNames() {
    wxArrayString names;
    names.Add(_("Point of View"));
    names.Add(_("Orthographic"));
    names.Add(_("Fisheye"));
    names.Add(_("Panoramic"));
    return names;
}

ConfItemBOOL_cls& GetToggleItem(MainGLCanvas_cls* pCanvas, int which) {
    ConfItemBOOL_cls* const items[4] = {&pCanvas->mShowMessage, &pCanvas->mShowItems, &pCanvas->mShowGrid,
                                        &pCanvas->mShowData};
    return *items[which];
}

} // namespace

GLCanvasCtrl_cls::GLCanvasCtrl_cls(wxWindow* pParent, FrameMain_cls* pFrame, DrawOption_cls* pDrawOption,
                                   Preference_cls* pPreference, const wxString& name, int panelIndex,
                                   int displayMode, wxGLContext* pShare)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, name) {
    mpCCanvas =
        new MainGLCanvas_cls(this, this, pFrame, pDrawOption, pPreference, panelIndex, displayMode, pShare);
    MakeControls();
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCSizerRow, 0, wxEXPAND);
    sizer->Add(mpCCanvas, 1, wxEXPAND);
    SetSizer(sizer);
    UpdateWindow();
    FitControls(GetSize().x);
    Bind(wxEVT_SIZE, &GLCanvasCtrl_cls::OnSize, this);
    Bind(wxEVT_RIGHT_UP, &GLCanvasCtrl_cls::OnRightUp, this);
}

void GLCanvasCtrl_cls::MakeControls() {
    mpCSizerControls = new wxBoxSizer(wxHORIZONTAL);
    const bool bExtraPanel = mpCCanvas->mPanelIndex == MainGLCanvas_cls::kExtraPanel;
    mpCComboDisplayMode =
        new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, GetDisplayModeNames(bExtraPanel));
    mpCComboDisplayMode->SetToolTip(_("Point of View"));
    mpCComboGeometry = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, GetGeometryNames());
    mpCComboGeometry->SetToolTip(_("Geometry"));
    mpCPivotClip = new wxPanel(this);
    mpCCheckPivot = new wxCheckBox(mpCPivotClip, wxID_ANY, _("Pivot Follows Anchor"));
    mpCPivotClip->SetMinSize(wxSize(1, mpCCheckPivot->GetBestSize().y));
    mpCCheckPivot->SetToolTip(_("The view turns around the anchor path's position"));
    for (int which = 0; which < 4; ++which)
        MakeToggle(which);
    // The long label stands last: where room is short, it alone is cut.
    mpCSizerControls->Add(mpCComboDisplayMode, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, kSpace);
    mpCSizerControls->Add(mpCComboGeometry, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, kSpace);
    for (wxToggleButton* pToggle : mpCToggle)
        mpCSizerControls->Add(pToggle, 0, wxALIGN_CENTER_VERTICAL);
    mpCSizerRow = new wxBoxSizer(wxVERTICAL);
    mpCSizerRow->AddSpacer(kSpace / 2);
    mpCSizerRow->Add(mpCSizerControls, 0, wxEXPAND | wxLEFT | wxRIGHT, kSpace / 2);
    mpCSizerRow->AddSpacer(kShadow);
    mpCSizerControls->Add(mpCPivotClip, 1, wxALIGN_CENTER_VERTICAL | wxLEFT, 2 * kSpace);
    mpCComboDisplayMode->Bind(wxEVT_CHOICE, &GLCanvasCtrl_cls::OnComboBox, this);
    mpCComboGeometry->Bind(wxEVT_CHOICE, &GLCanvasCtrl_cls::OnComboBox, this);
    mpCCheckPivot->Bind(wxEVT_CHECKBOX, &GLCanvasCtrl_cls::OnPivot, this);
}

void GLCanvasCtrl_cls::MakeToggle(int which) {
    const ToggleLook& look = kToggles[which];
    const wxString path = FindRuntimeFile(look.icon);
    wxBitmap bitmap;
    if (wxFileExists(path)) bitmap.LoadFile(path, wxBITMAP_TYPE_PNG);
    const wxString label = bitmap.IsOk() ? wxString() : wxString(look.letter);
    mpCToggle[which] =
        new wxToggleButton(this, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    if (bitmap.IsOk()) mpCToggle[which]->SetBitmap(bitmap);
    mpCToggle[which]->SetToolTip(wxGetTranslation(look.tip));
    mpCToggle[which]->Bind(wxEVT_TOGGLEBUTTON, [this, which](wxCommandEvent&) { OnToggle(which); });
}

void GLCanvasCtrl_cls::UpdateWindow() {
    SyncComboboxToDisplayMode();
    UpdateToggleButtonsAndParams();
}

void GLCanvasCtrl_cls::SyncComboboxToDisplayMode() {
    mpCComboDisplayMode->SetSelection(mpCCanvas->GetDisplayMode());
    const bool bLinked = mpCCanvas->GetDisplayMode() == 7; // the camera path brings its own geometry
    mpCComboGeometry->SetSelection(bLinked ? mpCCanvas->GetEffectiveGeometry() : mpCCanvas->GetGeometry());
    mpCComboGeometry->Enable(!bLinked);
}

void GLCanvasCtrl_cls::SyncDisplayModeToCombobox() {
    const int mode = mpCComboDisplayMode->GetSelection();
    if (mode != mpCCanvas->GetDisplayMode()) {
        if (mode == 7)
            mpCCanvas->LinkageConnect();
        else
            mpCCanvas->SetDisplayMode(mode);
        SyncComboboxToDisplayMode(); // the mode may have brought another geometry
    } else {
        mpCCanvas->SetGeometry(mpCComboGeometry->GetSelection());
    }
    UpdateToggleButtonsAndParams();
    mpCCanvas->ForceUpdateCameraPos();
    mpCCanvas->SetThisToBeActiveGL();
    mpCCanvas->RefreshEX();
}

void GLCanvasCtrl_cls::UpdateToggleButtonsAndParams() {
    for (int which = 0; which < 4; ++which)
        mpCToggle[which]->SetValue(GetToggleItem(mpCCanvas, which).mValue);
    mpCCheckPivot->SetValue(mpCCanvas->mPivotMode.mValue);
    mpCCanvas->mCGLPerspective.mbPerspective = !mpCCanvas->IsOrthographic();
}

void GLCanvasCtrl_cls::OnComboBox(wxCommandEvent&) {
    SyncDisplayModeToCombobox();
    mpCCanvas->SetFocus();
}

void GLCanvasCtrl_cls::OnPivot(wxCommandEvent& event) {
    mpCCanvas->mPivotMode.mValue = event.IsChecked();
    mpCCanvas->RefreshEX();
    mpCCanvas->SetFocus();
}

void GLCanvasCtrl_cls::OnToggle(int which) {
    GetToggleItem(mpCCanvas, which).mValue = mpCToggle[which]->GetValue();
    mpCCanvas->MarkStale();
    mpCCanvas->RefreshEX();
    mpCCanvas->SetFocus(); // keys belong to the view
}

// The geometry goes first, the toggles last.
void GLCanvasCtrl_cls::FitControls(int width) {
    const bool bRow = mbPanelShown;
    mpCComboGeometry->Show(bRow && width >= 420);
    mpCPivotClip->Show(bRow && width >= 300);
    mpCComboDisplayMode->Show(bRow && width >= 220);
    for (wxToggleButton* pToggle : mpCToggle)
        pToggle->Show(bRow && width >= 120);
}

void GLCanvasCtrl_cls::OnSize(wxSizeEvent& event) {
    FitControls(event.GetSize().x);
    Layout();
    event.Skip();
}

void GLCanvasCtrl_cls::OnRightUp(wxMouseEvent&) {
    wxMenu menu;
    const int id = wxWindow::NewControlId();
    menu.Append(id, _("Hide this row"));
    if (GetPopupMenuSelectionFromUser(menu) == id) OnMenuHide();
}

void GLCanvasCtrl_cls::OnMenuHide() {
    mbPanelShown = false;
    FitControls(GetSize().x);
    GetSizer()->Show(mpCSizerRow, false, true);
    Layout();
}

void GLCanvasCtrl_cls::ShowPanel() {
    mbPanelShown = true;
    GetSizer()->Show(mpCSizerRow, true, true);
    FitControls(GetSize().x);
    Layout();
}

int GLCanvasCtrl_cls::GetDisplayMode() const { return mpCCanvas->GetDisplayMode(); }

wxString GLCanvasCtrl_cls::Serialize() { return mpCCanvas->Serialize(); }

void GLCanvasCtrl_cls::ReadStrLine(const wxString& line) { mpCCanvas->ReadStrLine(line); }
