#include "FILTER/PANEL/clsFilterPanelPain.h"

#include <algorithm>
#include <utility>

#include <wx/button.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/PANEL/clsFilterPanelGUI.h"
#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterLists.h"
#include "GL/DRAW/clsDrawOption.h"

namespace {

constexpr int kGap = 4; // the spacing unit
constexpr int kScrollStep = 5;
constexpr int kScrollUnits = 50;
constexpr unsigned kSortSolid = 2; // "Zsort (for solid object)"

wxString HintOf(int list) {
    if (list == FILTER_LIST_BOOLEAN) return _("what cuts or picks particles");
    if (list == FILTER_LIST_OBJECT) return _("a mesh, a grid, bonds, a data box");
    return _("copies of the cell, or fog");
}

} // namespace

FilterPanelPain_cls::FilterPanelPain_cls(wxWindow* pParent, FilterCtrl_cls& list,
                                         const DrawOption_cls& options)
    : wxScrolledWindow(pParent), mpCFilterCtrl(list), mOptions(options),
      mpCSizer(new wxBoxSizer(wxVERTICAL)) {
    SetScrollbars(kScrollStep, kScrollStep, kScrollUnits, kScrollUnits);
    MakeHead();
    for (wxWindow* ground : {static_cast<wxWindow*>(this), static_cast<wxWindow*>(mpCHead)}) {
        ground->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
            Select(nullptr);
            event.Skip();
        });
        ground->Bind(wxEVT_RIGHT_DOWN,
                     [this](wxMouseEvent&) { PostMenuEvent(ID_FILTER_POPUP, mpCFilterCtrl.GetIndex()); });
    }
    UpdateNotes();
}

FilterPanelPain_cls::~FilterPanelPain_cls() {
    if (mbConnected) mpCFilterCtrl.SetPane(nullptr);
}

// A window of its own: the toolkit complains of hidden windows in one that scrolls.
void FilterPanelPain_cls::MakeHead() {
    mpCHead = new wxPanel(this);
    auto* add = new wxButton(mpCHead, wxID_ANY, _("Add"), wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    add->SetToolTip(_("Choose a filter that is put at the end of this list"));
    add->Bind(wxEVT_BUTTON,
              [this](wxCommandEvent&) { PostMenuEvent(ID_FILTER_POPUP, mpCFilterCtrl.GetIndex()); });
    mpCHint = new wxStaticText(mpCHead, wxID_ANY, HintOf(mpCFilterCtrl.GetIndex()), wxDefaultPosition,
                               wxDefaultSize, wxST_ELLIPSIZE_END);
    mpCNoEffect = new wxStaticText(mpCHead, wxID_ANY, _("No effect with \"Zsort (for solid object)\""),
                                   wxDefaultPosition, wxDefaultSize, wxST_ELLIPSIZE_END);
    mpCNoEffect->SetToolTip(_("This order of drawing takes all particles; choose another \"Zsort Type\" on "
                              "the page \"Option\""));
    for (wxStaticText* text : {mpCHint, mpCNoEffect})
        text->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
    auto* line = new wxBoxSizer(wxHORIZONTAL);
    line->Add(add, 0, wxALIGN_CENTRE_VERTICAL | wxRIGHT, FromDIP(2 * kGap));
    line->Add(mpCHint, 1, wxALIGN_CENTRE_VERTICAL);
    auto* head = new wxBoxSizer(wxVERTICAL);
    head->Add(line, 0, wxEXPAND | wxALL, FromDIP(kGap));
    head->Add(mpCNoEffect, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(kGap));
    mpCHead->SetSizer(head);
    auto* outer = new wxBoxSizer(wxVERTICAL);
    outer->Add(mpCHead, 0, wxEXPAND);
    outer->Add(mpCSizer, 0, wxEXPAND);
    SetSizer(outer);
}

void FilterPanelPain_cls::Connect() {
    mbConnected = true;
    mpCFilterCtrl.SetPane(this);
}

void FilterPanelPain_cls::Select(FilterBase_cls* pFilter) {
    mpCFilterCtrl.GetLists().SelectFilter(pFilter, true);
}

std::unique_ptr<FilterGUI_cls> FilterPanelPain_cls::MakeGUI(FilterBase_cls& filter) {
    return MakeFilterGUI(filter, *this);
}

void FilterPanelPain_cls::InsertPanel(FilterGUI_cls& gui, int position) {
    auto& panel = static_cast<FilterPanelGUI_cls&>(gui);
    wxWindow* window = panel.ShowWindow(*this);
    mVpCGone.erase(std::remove_if(mVpCGone.begin(), mVpCGone.end(),
                                  [window](const wxWeakRef<wxWindow>& gone) { return gone == window; }),
                   mVpCGone.end());
    const size_t place = std::min(size_t(std::max(position, 0)), mpCSizer->GetItemCount());
    mpCSizer->Insert(place, window, 0, wxEXPAND | wxBOTTOM, 1);
    LayOutLater();
}

// The panel may be the one in whose event the filter goes, and one that only moves comes back at once.
void FilterPanelPain_cls::RemovePanel(FilterGUI_cls& gui) {
    wxWindow* window = static_cast<FilterPanelGUI_cls&>(gui).GetWindow();
    if (!window) return;
    mpCSizer->Detach(window);
    window->Hide();
    mVpCGone.emplace_back(window);
    LayOutLater();
}

void FilterPanelPain_cls::DropPanels() {
    for (const wxWeakRef<wxWindow>& gone : std::exchange(mVpCGone, {}))
        if (gone) gone->Destroy();
}

void FilterPanelPain_cls::LayOutLater() {
    if (std::exchange(mbLayOut, true)) return;
    CallAfter([this] {
        DropPanels();
        UpdateNotes();
        LayOut();
    });
}

void FilterPanelPain_cls::LayOut() {
    if (!mVpCGone.empty()) return LayOutLater(); // hidden windows may not scroll
    mbLayOut = false;
    Freeze();
    Layout();
    FitInside();
    Thaw();
}

void FilterPanelPain_cls::UpdateNotes() {
    const bool bEmpty = mpCFilterCtrl.GetCount() == 0;
    const bool bNoEffect = !bEmpty && mpCFilterCtrl.GetIndex() == FILTER_LIST_BOOLEAN &&
                           mOptions.mSortOrder.mValue == kSortSolid;
    if (bEmpty == mpCHint->IsShown() && bNoEffect == mpCNoEffect->IsShown()) return;
    mpCHint->Show(bEmpty);
    mpCNoEffect->Show(bNoEffect);
    mpCHead->InvalidateBestSize();
    mpCHead->Layout();
    LayOut();
}

void FilterPanelPain_cls::ShowFilter(int position) {
    if (position < 0 || position >= mpCFilterCtrl.GetCount()) return;
    auto* panel = static_cast<FilterPanelGUI_cls*>(mpCFilterCtrl.GetPCFilter(position)->mpCGUI.get());
    if (!panel || !panel->GetWindow()) return;
    panel->SetOpen(true);
    LayOut();
    const int top = CalcUnscrolledPosition(panel->GetWindow()->GetPosition()).y;
    Scroll(wxDefaultCoord, top / kScrollStep);
}
