#include "FILTER/PANEL/clsFilterPanelGUI.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/gdicmn.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "FILTER/PANEL/clsFilterPanelPain.h"
#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"
#include "WIDGET/clsFieldUndo.h"
#include "WIDGET/clsGripLabel.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr long long kUpdateMask = UPDATE_FILTER_REFRESH | UPDATE_GL; // 4098
constexpr int kGap = 4;                                              // the spacing unit
const wxColour kSelectedGround(240, 230, 180);                       // light in dark themes, too
const wxColour kText(0, 0, 0);
const wxSize kFirstSize(300, 400); // panels of no size would squeeze their contents
constexpr int kLeastField = 54;    // three stand in a row of a narrow pane

bool IsLabel(const wxWindow* pWindow) {
    return dynamic_cast<const wxStaticText*>(pWindow) || dynamic_cast<const GripLabel_cls*>(pWindow);
}

} // namespace

FilterPanelGUI_cls::FilterPanelGUI_cls(FilterBase_cls& filter, FilterPanelPain_cls& pane)
    : mpCFilterBase(&filter), mpCPane(&pane) {}

// Where the frame took the window along there is nothing left to do.
FilterPanelGUI_cls::~FilterPanelGUI_cls() {
    if (mpCWindow) mpCWindow->Destroy();
}

wxWindow* FilterPanelGUI_cls::GetWindow() const { return mpCWindow.get(); }

wxWindow* FilterPanelGUI_cls::ShowWindow(FilterPanelPain_cls& pane) {
    mpCPane = &pane;
    if (!mpCWindow) InitializeMInputCommon();
    mpCWindow->Show();
    return mpCWindow.get();
}

void FilterPanelGUI_cls::InitializeMInputCommon() {
    auto* window = new wxPanel(mpCPane);
    window->SetSize(mpCPane->FromDIP(kFirstSize));
    mpCWindow = window;
    mpCPanel = nullptr; // went with the former one
    mpCValid = new wxCheckBox(window, wxID_ANY, "");
    mpCValid->SetToolTip(_("Whether it acts"));
    mpCValid->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { SetValid(event.IsChecked()); });
    mpCFold = new wxButton(window, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxBU_LEFT);
    mpCFold->SetToolTip(_("Show or hide its settings; the right button moves and deletes it"));
    mpCFold->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { SetOpen(!mbOpen); });
    auto* head = new wxBoxSizer(wxHORIZONTAL);
    head->Add(mpCValid, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT | wxRIGHT, window->FromDIP(kGap));
    head->Add(mpCFold, 1, wxEXPAND);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(head, 0, wxEXPAND | wxALL, window->FromDIP(kGap / 2));
    window->SetSizer(sizer);
    BindMouse(window, true);
    BindMouse(mpCValid, true);
    BindMouse(mpCFold, true);
    if (mbOpen) MakeRows();
    UpdateButtonName();
    UpdateValues();
    ShowColors();
}

void FilterPanelGUI_cls::MakeRows() {
    mpCPanel = new MultiInputPanel_cls(mpCWindow.get(), kLabelWidth);
    mpCPanel->SetSize(mpCPanel->FromDIP(kFirstSize));
    mpCPanel->SetForegroundColour(kText); // rows take it from here
    SetMNumPanel(*mpCPanel);
    mpCPanel->SetUndo(kUpdateMask | UPDATE_TEXTURE); // that dialog shows some of them, too
    mpCPanel->SetOnChange([this](int, bool) {
        HideAndShow();
        PostMenuEvent(ID_REFRESH_GL);
    });
    mpCWindow->GetSizer()->Add(mpCPanel, 0, wxEXPAND);
    HideAndShowRows(*mpCPanel);
    BindMouseBelow(mpCPanel);
    ShowColors();
}

void FilterPanelGUI_cls::SetValid(bool bValid) {
    bool* value = &mpCFilterBase->mpCData->mCValid.mValue;
    FieldUndo_cls::ForCheck(value).Edit([value, bValid] { *value = bValid; }, true, int(kUpdateMask));
    PostMenuEvent(ID_REFRESH_GL);
}

// Whatever is pressed in a panel selects its filter; what has no menu of its own brings the filter's.
void FilterPanelGUI_cls::BindMouse(wxWindow* pWindow, bool bMenu) {
    pWindow->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        event.Skip();
        mpCPane->Select(mpCFilterBase);
    });
    pWindow->Bind(wxEVT_RIGHT_DOWN, [this, bMenu](wxMouseEvent& event) {
        event.Skip(!bMenu);
        mpCPane->Select(mpCFilterBase);
        if (bMenu) PostMenuEvent(ID_FILTER_MANIPULATE);
    });
}

void FilterPanelGUI_cls::BindMouseBelow(wxWindow* pWindow) {
    BindMouse(pWindow, pWindow == mpCPanel || IsLabel(pWindow));
    for (wxWindow* child : pWindow->GetChildren()) {
        if (dynamic_cast<wxStaticText*>(child)) child->SetForegroundColour(kText);
        if (dynamic_cast<wxChoice*>(child) || dynamic_cast<NumField_cls*>(child))
            child->SetMinSize(wxSize(child->FromDIP(kLeastField), child->GetMinSize().y));
        BindMouseBelow(child);
    }
}

void FilterPanelGUI_cls::ShowColors() {
    const bool bSelected = mpCFilterBase->mpCData->mbSelected;
    const wxColour ground = bSelected ? kSelectedGround : wxColour("LIGHT BLUE");
    mpCWindow->SetBackgroundColour(ground);
    if (mpCPanel) mpCPanel->SetBackgroundColour(ground);
    mpCWindow->Refresh();
}

void FilterPanelGUI_cls::ShowSelected(bool) {
    if (mpCWindow) ShowColors();
}

void FilterPanelGUI_cls::UpdateButtonName() {
    if (!mpCWindow) return;
    // An ampersand in a name is no mnemonic.
    mpCFold->SetLabel(
        wxControl::EscapeMnemonics((mbOpen ? "[-] " : "[+] ") + mpCFilterBase->mpCData->mCName.mStrValue));
}

void FilterPanelGUI_cls::UpdateValues() {
    if (!mpCWindow) return;
    const bool bValid = mpCFilterBase->mpCData->mCValid.mValue;
    if (mpCValid->GetValue() != bValid) mpCValid->SetValue(bValid);
    if (mpCPanel && mbOpen) mpCPanel->UpdateValues();
}

void FilterPanelGUI_cls::HideAndShow() {
    if (!mpCWindow || !mpCPanel || !mbOpen) return;
    const wxSize before = mpCPanel->GetBestSize();
    HideAndShowRows(*mpCPanel);
    if (mpCPanel->GetBestSize() != before) mpCPane->LayOutLater();
}

void FilterPanelGUI_cls::SetOpen(bool bOpen) {
    if (mbOpen == bOpen) return;
    mbOpen = bOpen;
    if (!mpCWindow) return;
    if (mbOpen && !mpCPanel) MakeRows();
    if (mpCPanel) mpCPanel->Show(mbOpen);
    UpdateButtonName();
    UpdateValues();
    HideAndShow();
    mpCWindow->InvalidateBestSize();
    mpCWindow->Layout();
    PostMenuEvent(ID_FILTER_RESIZE);
}
