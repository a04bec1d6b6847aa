#include "PDATA/EDITOR/clsGuessDialog.h"

#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COMMON/Globals.h"
#include "PDATA/clsGrammerBase.h"
#include "PDATA/EDITOR/clsGrammerBaseGUI.h"
#include "WIDGET/clsFontProvider.h"

namespace {
constexpr int kGap = 4;          // the spacing unit
constexpr int kTextWidth = 520;  // where sentences wrap
constexpr int kLabelWidth = 104; // as on the panels
} // namespace

GuessDialog_cls::GuessDialog_cls(wxWindow* pParent, const wxString& path, const GrammerBaseGUI_cls& lists,
                                 const GrammerBase_cls& present)
    : wxDialogEXKey(pParent, _("Guess"), wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      mGuess(GuessGrammar(path, present)) {
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    auto* name = new wxStaticText(this, wxID_ANY, path, wxDefaultPosition, FromDIP(wxSize(kTextWidth, -1)),
                                  wxST_ELLIPSIZE_START | wxST_NO_AUTORESIZE);
    name->SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_CAPTION));
    name->SetToolTip(path);
    sizer->Add(name, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
    if (mGuess.mbFound) AddLayout(sizer, lists);
    AddReasons(sizer);
    if (mGuess.mbFound) AddRecords(sizer);

    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    auto* other = new wxButton(this, wxID_OPEN, _("Other File..."));
    other->SetToolTip(_("Look at another file; nothing is opened"));
    other->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(wxID_OPEN); });
    buttons->Add(other);
    buttons->AddStretchSpacer();
    if (mGuess.mbFound) {
        auto* use = new wxButton(this, wxID_OK, _("Use"));
        use->SetToolTip(_("Take data type and lists over; nothing is opened yet"));
        use->SetDefault();
        buttons->Add(use);
    }
    buttons->Add(new wxButton(this, wxID_CANCEL, mGuess.mbFound ? _("Cancel") : _("Close")), 0, wxLEFT,
                 FromDIP(2 * kGap));
    sizer->Add(buttons, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
    SetSizerAndFit(sizer);
    CentreOnParent();
}

void GuessDialog_cls::AddLayout(wxSizer* pSizer, const GrammerBaseGUI_cls& lists) {
    auto* grid = new wxFlexGridSizer(2, FromDIP(wxSize(2 * kGap, kGap)));
    const wxString rows[3][2] = {
        {_("Data Type"), mGuess.mDataType == 1 ? _("Simple Ascii") : _("Simple Binary")},
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
    auto* list = new wxListCtrl(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(kTextWidth, 252)),
                                wxLC_REPORT | wxLC_SINGLE_SEL);
    list->AppendColumn(_("Item"), wxLIST_FORMAT_LEFT, FromDIP(kLabelWidth));
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

int GuessDialog_cls::Ask() {
    const bool bWasLocked = GbGLLockModalDialog.exchange(true);
    const int answer = ShowModal();
    GbGLLockModalDialog.store(bWasLocked);
    return answer;
}

void GuessDialog_cls::CopyTo(GrammerBase_cls* pGrammer) const {
    if (!mGuess.mbFound) return;
    pGrammer->mCItemDataType.mValue = mGuess.mDataType;
    pGrammer->SetHeaderGrammer(mGuess.mHead);
    pGrammer->SetBodyGrammer(mGuess.mBody);
}
