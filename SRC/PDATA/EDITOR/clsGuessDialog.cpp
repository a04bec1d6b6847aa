#include "PDATA/EDITOR/clsGuessDialog.h"

#include <algorithm>
#include <cmath>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/listctrl.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/utils.h>

#include "COMMON/Globals.h"
#include "PDATA/EDITOR/clsGrammerBaseGUI.h"
#include "PDATA/GuessApply.h"
#include "PDATA/clsGrammerBase.h"
#include "WIDGET/clsFontProvider.h"

namespace {
constexpr int kGap = 4;          // the spacing unit
constexpr int kTextWidth = 520;  // where sentences wrap
constexpr int kLabelWidth = 132; // of the longest name with its tick
constexpr int kItemWidth = 104;  // of a number's name
constexpr int kListHeight = 150; // five numbers of a record; the others scroll
} // namespace

GuessDialog_cls::GuessDialog_cls(wxWindow* pParent, const wxString& path, const GrammerBaseGUI_cls& lists,
                                 const GrammerBase_cls& present, float scale)
    : wxDialogEXKey(pParent, _("Guess"), wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    const wxBusyCursor busy;
    mGuess = GuessGrammar(path, present);
    mOffers = MakeGuessOffers(path, mGuess, scale);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    auto* name = new wxStaticText(this, wxID_ANY, path, wxDefaultPosition, FromDIP(wxSize(kTextWidth, -1)),
                                  wxST_ELLIPSIZE_START | wxST_NO_AUTORESIZE);
    name->SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_CAPTION));
    name->SetToolTip(path);
    sizer->Add(name, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
    if (mGuess.mbFound) AddLayout(sizer, lists);
    AddReasons(sizer);
    if (mGuess.mbFound) AddRecords(sizer);
    if (!mOffers.empty()) AddOffers(sizer);
    AddButtons(sizer);
    SetSizerAndFit(sizer);
    CentreOnParent();
}

void GuessDialog_cls::AddButtons(wxSizer* pSizer) {
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    const auto add = [this, buttons](const wxString& label, const wxString& tip, Answer answer) {
        auto* button = new wxButton(this, wxID_ANY, label);
        button->SetToolTip(tip);
        button->Bind(wxEVT_BUTTON, [this, answer](wxCommandEvent&) { EndModal(answer); });
        buttons->Add(button, 0, answer == OtherFile ? 0 : wxLEFT, FromDIP(2 * kGap));
        return button;
    };
    add(_("Other File..."), _("Look at another file; nothing is opened"), OtherFile);
    buttons->AddStretchSpacer();
    if (mGuess.mbFound) {
        add(_("Use"), _("Take layout and ticked settings over; nothing is opened yet"), Use);
        add(_("Use and Open"), _("Take them over and open the sequence that begins with this file (Enter)"),
            UseAndOpen)
            ->SetDefault();
    }
    buttons->Add(new wxButton(this, wxID_CANCEL, mGuess.mbFound ? _("Cancel") : _("Close")), 0, wxLEFT,
                 FromDIP(2 * kGap));
    pSizer->Add(buttons, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
}

void GuessDialog_cls::AddLayout(wxSizer* pSizer, const GrammerBaseGUI_cls& lists) {
    auto* grid = new wxFlexGridSizer(2, FromDIP(wxSize(2 * kGap, kGap)));
    const wxString rows[3][2] = {
        {_("Data Type"), mGuess.mDataType == DATA_TEXT ? _("Simple Ascii") : _("Simple Binary")},
        {_("Header Format"), lists.Describe(GrammerBaseGUI_cls::HEAD, mGuess.mHead)},
        {_("Body Format"), lists.Describe(GrammerBaseGUI_cls::BODY, mGuess.mBody)}};
    for (const auto& row : rows) {
        auto* label = new wxStaticText(this, wxID_ANY, row[0]);
        label->SetMinSize(FromDIP(wxSize(kLabelWidth, -1)));
        auto* value = new wxStaticText(this, wxID_ANY, row[1].empty() ? wxString("-") : row[1]);
        value->Wrap(FromDIP(kTextWidth - kLabelWidth));
        grid->Add(label);
        grid->Add(value);
    }
    pSizer->Add(grid, 0, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(2 * kGap));
}

void GuessDialog_cls::AddReasons(wxSizer* pSizer) {
    wxString text = mGuess.mStrProblem;
    for (const wxString& reason : mGuess.mReasons)
        text += (text.empty() ? wxString() : wxString("\n")) + wxString::FromUTF8("\xe2\x80\xa2 ") + reason;
    auto* reasons = new wxStaticText(this, wxID_ANY, text);
    reasons->Wrap(FromDIP(kTextWidth));
    pSizer->Add(reasons, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
}

void GuessDialog_cls::AddRecords(wxSizer* pSizer) {
    auto* list = new wxListCtrl(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(kTextWidth, kListHeight)),
                                wxLC_REPORT | wxLC_SINGLE_SEL);
    list->AppendColumn(_("Item"), wxLIST_FORMAT_LEFT, FromDIP(kItemWidth));
    for (size_t k = 0; k < mGuess.mRecords.size(); ++k) {
        list->AppendColumn(wxString::Format(_("Record %d"), static_cast<int>(k)), wxLIST_FORMAT_RIGHT,
                           FromDIP(132));
        const std::vector<wxString>& record = mGuess.mRecords[k];
        for (size_t i = 0; i < record.size(); ++i) {
            const long row = static_cast<long>(i);
            while (list->GetItemCount() <= row)
                list->InsertItem(list->GetItemCount(), record[i].BeforeFirst('='));
            list->SetItem(row, static_cast<int>(k) + 1, record[i].AfterFirst('='));
        }
    }
    pSizer->Add(list, 1, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(2 * kGap));
}

// A tick, the value and below it why. Ticks are kept in the offers.
void GuessDialog_cls::AddOffers(wxSizer* pSizer) {
    auto* title = new wxStaticText(this, wxID_ANY, _("Take over as well"));
    title->SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_CAPTION));
    pSizer->Add(title, 0, wxLEFT | wxRIGHT | wxTOP, FromDIP(2 * kGap));
    auto* grid = new wxFlexGridSizer(2, FromDIP(wxSize(2 * kGap, kGap)));
    for (GuessOffer_st& offer : mOffers) {
        auto* tick = new wxCheckBox(this, wxID_ANY, offer.mStrName);
        tick->SetValue(offer.mbTicked);
        tick->SetToolTip(_("Take this over"));
        tick->SetMinSize(wxSize(std::max(FromDIP(kLabelWidth), tick->GetBestSize().x), -1));
        tick->Bind(wxEVT_CHECKBOX, [&offer](wxCommandEvent& event) { offer.mbTicked = event.IsChecked(); });
        grid->Add(tick);
        auto* texts = new wxBoxSizer(wxVERTICAL);
        AddOfferValue(texts, offer);
        auto* reason = new wxStaticText(this, wxID_ANY, offer.mStrReason);
        reason->Wrap(FromDIP(kTextWidth - kLabelWidth));
        texts->Add(reason);
        grid->Add(texts);
    }
    pSizer->Add(grid, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
}

void GuessDialog_cls::AddOfferValue(wxSizer* pSizer, const GuessOffer_st& offer) {
    auto* line = new wxBoxSizer(wxHORIZONTAL);
    auto* value = new wxStaticText(this, wxID_ANY, offer.mStrValue);
    value->SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_CAPTION));
    value->Wrap(FromDIP(kTextWidth - kLabelWidth));
    line->Add(value, 0, wxALIGN_CENTRE_VERTICAL);
    for (size_t k = 0; offer.mbColors && k < kGuessColors.size(); ++k) {
        const auto& color = kGuessColors[k];
        const auto byte = [](float channel) {
            return static_cast<unsigned char>(std::lround(255 * channel));
        };
        auto* swatch = new wxPanel(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(20, 14)));
        swatch->SetBackgroundColour(wxColour(byte(color[0]), byte(color[1]), byte(color[2])));
        swatch->SetToolTip(wxString::Format(_("Colour of \"Attrib %d\""), static_cast<int>(k)));
        line->Add(swatch, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, FromDIP(k == 0 ? 2 * kGap : kGap));
    }
    pSizer->Add(line);
}

GuessDialog_cls::Answer GuessDialog_cls::Ask() {
    const bool bWasLocked = GbGLLockModalDialog.exchange(true);
    const int answer = ShowModal();
    GbGLLockModalDialog.store(bWasLocked);
    return answer == OtherFile || answer == Use || answer == UseAndOpen ? Answer(answer) : Cancel;
}

void GuessDialog_cls::Apply(DataLoader_cls* pLoader) const { ApplyGuess(pLoader, mGuess, mOffers); }
