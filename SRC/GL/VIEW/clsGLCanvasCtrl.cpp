#include "GL/VIEW/clsGLCanvasCtrl.h"

#include <utility>

#include <wx/bmpbuttn.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/tglbtn.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsViewHost.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "WIDGET/DenseStyle.h"
#include "WIDGET/PopUp.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {

constexpr int kSpace = 4;
constexpr int kIconSize = 16;
// Buttons redraw a few pixels around them, for their shadows: where that reaches a view, the toolkit paints
// the view again with every step of a button's animation.
constexpr int kShadow = 8;

struct ToggleLook {
    const char* icon;
    const char* letter; // where the icon is missing
    const char* tip;
};

const ToggleLook kToggles[4] = {
    {"ShowMessage", "M", wxTRANSLATE("Show/Hide Message")},
    {"ShowItem", "I", wxTRANSLATE("Show/Hide Item")},
    {"ShowGrid", "G", wxTRANSLATE("Show/Hide Grid")},
    {"ShowData", "D", wxTRANSLATE("Show/Hide Data")},
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

/// From the longest form to the shortest.
wxString GetPivotLabel(int form) {
    if (form == 0) return _("Pivot Follows Anchor");
    return form == 1 ? wxString(_("Pivot")) : wxString();
}

ConfItemBOOL_cls& GetToggleItem(MainGLCanvas_cls* pCanvas, int which) {
    ConfItemBOOL_cls* const items[4] = {&pCanvas->mShowMessage, &pCanvas->mShowItems, &pCanvas->mShowGrid,
                                        &pCanvas->mShowData};
    return *items[which];
}

} // namespace

GLCanvasCtrl_cls::GLCanvasCtrl_cls(wxWindow* pParent, const ViewLinks_st& links, const wxString& name,
                                   int panelIndex, int displayMode, std::shared_ptr<wxGLContext> pContext)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, name) {
    mpCCanvas = new MainGLCanvas_cls(this, this, links, panelIndex, displayMode, std::move(pContext));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    if (links.mbShown) {
        MakeControls();
        sizer->Add(mpCSizerRow, 0, wxEXPAND);
    }
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
    mpCCheckPivot = new wxCheckBox(this, wxID_ANY, "");
    for (int form = 0; form < kPivotForms; ++form) {
        mpCCheckPivot->SetLabel(GetPivotLabel(form));
        mPivotWidth[form] = mpCCheckPivot->GetBestSize().x;
    }
    mpCCheckPivot->SetToolTip(_("Pivot Follows Anchor: the view turns around the anchor path's position"));
    for (int which = 0; which < 4; ++which)
        MakeToggle(which);
    MakeFitButton();
    mpCSizerControls->Add(mpCComboDisplayMode, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, kSpace);
    mpCSizerControls->Add(mpCComboGeometry, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, kSpace);
    for (wxToggleButton* pToggle : mpCToggle)
        mpCSizerControls->Add(pToggle, 0, wxALIGN_CENTER_VERTICAL);
    mpCSizerControls->Add(mpCButtonFit, 0, wxALIGN_CENTER_VERTICAL);
    mpCSizerRow = new wxBoxSizer(wxVERTICAL);
    mpCSizerRow->AddSpacer(kSpace / 2);
    mpCSizerRow->Add(mpCSizerControls, 0, wxEXPAND | wxLEFT | wxRIGHT, kSpace / 2);
    mpCSizerRow->AddSpacer(kShadow);
    mpCSizerControls->Add(mpCCheckPivot, 0, wxALIGN_CENTER_VERTICAL | wxLEFT, kSpace);
    mpCComboDisplayMode->Bind(wxEVT_CHOICE, &GLCanvasCtrl_cls::OnComboBox, this);
    mpCComboGeometry->Bind(wxEVT_CHOICE, &GLCanvasCtrl_cls::OnComboBox, this);
    mpCCheckPivot->Bind(wxEVT_CHECKBOX, &GLCanvasCtrl_cls::OnPivot, this);
}

void GLCanvasCtrl_cls::MakeToggle(int which) {
    const ToggleLook& look = kToggles[which];
    const wxBitmapBundle icon = MyArtProvider::GetIcon(look.icon, kIconSize);
    if (icon.IsOk())
        MakeNarrow(mpCToggle[which] = new wxBitmapToggleButton(this, wxID_ANY, icon));
    else
        mpCToggle[which] =
            new wxToggleButton(this, wxID_ANY, look.letter, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    mpCToggle[which]->SetToolTip(wxGetTranslation(look.tip));
    mpCToggle[which]->Bind(wxEVT_TOGGLEBUTTON, [this, which](wxCommandEvent&) { OnToggle(which); });
}

void GLCanvasCtrl_cls::MakeFitButton() {
    const wxBitmapBundle icon = MyArtProvider::GetIcon("FitView", kIconSize);
    if (icon.IsOk())
        MakeNarrow(mpCButtonFit = new wxBitmapButton(this, wxID_ANY, icon));
    else
        mpCButtonFit = new wxButton(this, wxID_ANY, "F", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    mpCButtonFit->SetToolTip(_("Fit View: all drawn particles in the picture (Home)"));
    mpCButtonFit->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        mpCCanvas->SetThisToBeActiveGL();
        mpCCanvas->SetFocus();
        PostMenuEvent(ID_FIT_VIEW);
    });
}

void GLCanvasCtrl_cls::UpdateWindow() {
    SyncComboboxToDisplayMode();
    UpdateToggleButtonsAndParams();
}

void GLCanvasCtrl_cls::SyncComboboxToDisplayMode() {
    if (!mpCSizerRow) return;
    mpCComboDisplayMode->SetSelection(mpCCanvas->GetDisplayMode());
    const bool bLinked = mpCCanvas->IsCameraLinked(); // the camera path brings its own geometry
    mpCComboGeometry->SetSelection(bLinked ? mpCCanvas->GetEffectiveGeometry() : mpCCanvas->GetGeometry());
    mpCComboGeometry->Enable(!bLinked);
}

void GLCanvasCtrl_cls::SyncDisplayModeToCombobox() {
    const int mode = mpCComboDisplayMode->GetSelection();
    if (mode != mpCCanvas->GetDisplayMode()) {
        if (mode == DISPLAY_PATH)
            mpCCanvas->LinkageConnect();
        else
            mpCCanvas->SetDisplayMode(mode);
        SyncComboboxToDisplayMode(); // the mode may have brought another geometry
    } else {
        mpCCanvas->SetGeometry(mpCComboGeometry->GetSelection());
    }
    UpdateToggleButtonsAndParams();
    mpCCanvas->mCamera.ForceUpdateCameraPos();
    mpCCanvas->SetThisToBeActiveGL();
    mpCCanvas->RefreshEX();
}

void GLCanvasCtrl_cls::UpdateToggleButtonsAndParams() {
    mpCCanvas->mCGLPerspective.mbPerspective = !mpCCanvas->IsOrthographic();
    if (!mpCSizerRow) return;
    for (int which = 0; which < 4; ++which)
        mpCToggle[which]->SetValue(GetToggleItem(mpCCanvas, which).mValue);
    mpCButtonFit->Enable(mpCCanvas->HasOwnCamera());
    mpCCheckPivot->SetValue(mpCCanvas->mPivotMode.mValue);
}

bool GLCanvasCtrl_cls::Settings_st::operator==(const Settings_st& other) const {
    return mMode == other.mMode && mGeometry == other.mGeometry && mbPivot == other.mbPivot &&
           mbToggle == other.mbToggle && mbDistortion == other.mbDistortion &&
           mbFisheyeGrid == other.mbFisheyeGrid && mAngle == other.mAngle;
}

GLCanvasCtrl_cls::Settings_st GLCanvasCtrl_cls::GetSettings() const {
    Settings_st settings;
    settings.mMode = mpCCanvas->GetDisplayMode();
    settings.mGeometry = mpCCanvas->GetGeometry();
    settings.mbPivot = mpCCanvas->mPivotMode.mValue;
    for (int which = 0; which < 4; ++which)
        settings.mbToggle[size_t(which)] = GetToggleItem(mpCCanvas, which).mValue;
    settings.mbDistortion = mpCCanvas->mDistortion.mValue;
    settings.mbFisheyeGrid = mpCCanvas->mFisheyeGrid.mValue;
    settings.mAngle = mpCCanvas->mGLPersAngle.mValue;
    return settings;
}

void GLCanvasCtrl_cls::SetSettings(const Settings_st& settings) {
    mpCCanvas->SetDisplayMode(settings.mMode); // may bring another geometry
    mpCCanvas->SetGeometry(settings.mGeometry);
    mpCCanvas->mPivotMode.mValue = settings.mbPivot;
    for (int which = 0; which < 4; ++which)
        GetToggleItem(mpCCanvas, which).mValue = settings.mbToggle[size_t(which)];
    mpCCanvas->mDistortion.mValue = settings.mbDistortion;
    mpCCanvas->mFisheyeGrid.mValue = settings.mbFisheyeGrid;
    mpCCanvas->mGLPersAngle.mValue = settings.mAngle;
    UpdateWindow();
    mpCCanvas->mCamera.ForceUpdateCameraPos();
    mpCCanvas->MarkStale();
}

void GLCanvasCtrl_cls::ChangeBy(const std::function<void()>& change) {
    const Settings_st before = GetSettings();
    change();
    const Settings_st now = GetSettings();
    if (now == before) return;
    const auto command = [this](const Settings_st& settings) {
        return new CommandCall_cls([this, settings] { SetSettings(settings); }, UPDATE_GL);
    };
    GCUndoList.PushNewCommand(command(now), command(before));
    GCUndoList.ExecCurrent();
}

void GLCanvasCtrl_cls::OnComboBox(wxCommandEvent&) {
    ChangeBy([this] { SyncDisplayModeToCombobox(); });
    mpCCanvas->SetFocus();
}

void GLCanvasCtrl_cls::OnPivot(wxCommandEvent& event) {
    ChangeBy([&] { mpCCanvas->mPivotMode.mValue = event.IsChecked(); });
    mpCCanvas->RefreshEX();
    mpCCanvas->SetFocus();
}

void GLCanvasCtrl_cls::OnToggle(int which) {
    ChangeBy([&] { GetToggleItem(mpCCanvas, which).mValue = mpCToggle[which]->GetValue(); });
    mpCCanvas->MarkStale();
    mpCCanvas->RefreshEX();
    mpCCanvas->SetFocus(); // keys belong to the view
}

// The geometry goes first, the toggles last; the button, which has a key and menus beside it, stands wherever
// there is room beside the others, the short label counted in. The label of the check box takes the longest
// form that has room, down to the box alone, which tells by its tooltip what it is.
void GLCanvasCtrl_cls::FitControls(int width) {
    if (!mpCSizerRow) return;
    const bool bRow = mbPanelShown;
    mpCComboGeometry->Show(bRow && width >= 420);
    mpCCheckPivot->Show(bRow && width >= 300);
    mpCComboDisplayMode->Show(bRow && width >= 220);
    for (wxToggleButton* pToggle : mpCToggle)
        pToggle->Show(bRow && width >= 120);
    int used = 2 * kSpace;
    for (const wxWindow* pControl : GetChildren())
        if (pControl != mpCCanvas && pControl != mpCCheckPivot && pControl != mpCButtonFit &&
            pControl->IsShown())
            used +=
                pControl->GetEffectiveMinSize().x + (dynamic_cast<const wxChoice*>(pControl) ? kSpace : 0);
    const int button = mpCButtonFit->GetEffectiveMinSize().x;
    const int pivot = mpCCheckPivot->IsShown() ? mPivotWidth[1] : 0; // with a word
    mpCButtonFit->Show(bRow && used + pivot + button <= width);
    if (mpCButtonFit->IsShown()) used += button;
    for (int form = 0; form < kPivotForms; ++form) {
        if (form < kPivotForms - 1 && used + mPivotWidth[form] > width) continue;
        if (mpCCheckPivot->GetLabel() != GetPivotLabel(form)) mpCCheckPivot->SetLabel(GetPivotLabel(form));
        mPivotWidth[form] = mpCCheckPivot->GetBestSize().x; // grows when the toolkit's style has come
        if (used + mPivotWidth[form] <= width) break;
    }
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
    if (AskPopUpMenu(this, menu) == id) OnMenuHide();
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

wxString GLCanvasCtrl_cls::Serialize() { return mpCCanvas->Serialize(); }

void GLCanvasCtrl_cls::ReadStrLine(const wxString& line) { mpCCanvas->ReadStrLine(line); }
