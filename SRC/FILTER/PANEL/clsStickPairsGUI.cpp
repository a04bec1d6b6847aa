#include "FILTER/PANEL/clsStickPairsGUI.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COMMON/EventIds.h"
#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/clsFilterStick.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {

constexpr int kGap = 8;
constexpr int kMostHeight = 420; // of the table; the rest is scrolled to
constexpr int kScrollStep = 10;

wxString Describe(const std::vector<TypeCount_st>& types) {
    constexpr size_t kTold = 8;
    wxString text = _("Types in this frame:");
    for (size_t k = 0; k < std::min(types.size(), kTold); ++k)
        text += wxString::Format("%s %d (%lld)", k > 0 ? "," : "", types[k].mType, types[k].mCount);
    if (types.size() > kTold) text += ", ...";
    if (int(types.size()) > kMostPairTypes)
        text +=
            "\n" + wxString::Format(_("The table has the %d types with the most particles."), kMostPairTypes);
    return text;
}

} // namespace

StickPairsGUI_cls::StickPairsGUI_cls(wxWindow* pParent, FilterStick_cls& filter,
                                     const std::vector<TypeCount_st>& types)
    : wxDialogEXKey(pParent, _("One filter a pair of types")), mFilter(filter),
      mVPairs(ListStickPairs(types, *filter.GetPCData())) {
    auto* inPlace = new wxCheckBox(this, wxID_ANY, _("In place of this filter"));
    inPlace->SetToolTip(_("Without it this filter stays beside them"));
    inPlace->SetValue(mbInPlace);
    inPlace->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { mbInPlace = event.IsChecked(); });
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    auto* ok = new wxButton(this, wxID_OK, _("OK"));
    ok->SetDefault();
    ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        AddStickPairs(mFilter, mVPairs, mbInPlace);
        EndModal(wxID_OK);
    });
    buttons->Add(inPlace, 0, wxALIGN_CENTRE_VERTICAL);
    buttons->AddStretchSpacer();
    buttons->Add(ok, 0, wxRIGHT, FromDIP(kGap));
    buttons->Add(new wxButton(this, ID_DIALOG_CLOSE, _("Cancel")), 0);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(new wxStaticText(this, wxID_ANY, Describe(types)), 0, wxALL, FromDIP(kGap));
    sizer->Add(MakeTable(), 1, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(kGap));
    sizer->Add(buttons, 0, wxEXPAND | wxALL, FromDIP(kGap));
    SetSizerAndFit(sizer);
}

wxWindow* StickPairsGUI_cls::MakeTable() {
    const bool bStep = mFilter.GetPCData()->mCCritType.mValue == STICK_STEP;
    auto* scrolled = new wxScrolledWindow(this);
    scrolled->SetScrollRate(0, FromDIP(kScrollStep));
    mpCPanel = new MultiInputPanel_cls(scrolled);
    mpCPanel->AddCaption(bStep ? _("Pair of types; distance A; keep until")
                               : _("Pair of types; distances A and B"));
    const NumSpec length = RangeSpec(0, 1e30, 0.1);
    for (StickPair_st& pair : mVPairs) {
        const int row = mpCPanel->AddCheck(wxString::Format("%d - %d", pair.mTypeA, pair.mTypeB), &pair.mbOn,
                                           wxString(), _("Whether this pair gets a filter"));
        mpCPanel->AddNumberTo(row, &pair.mA, length, _("Distance A, in units of the data"));
        mpCPanel->AddNumberTo(row, &pair.mSecond, length,
                              bStep ? _("A bond that formed breaks at this distance; 0: at A")
                                    : _("Distance B, in units of the data"));
    }
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCPanel, 1, wxEXPAND);
    scrolled->SetSizer(sizer);
    const wxSize best = mpCPanel->GetBestSize();
    scrolled->SetMinSize(wxSize(best.x + FromDIP(24), std::min(best.y, FromDIP(kMostHeight))));
    return scrolled;
}
