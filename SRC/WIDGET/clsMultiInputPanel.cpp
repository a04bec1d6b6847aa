#include "WIDGET/clsMultiInputPanel.h"

#include <algorithm>
#include <set>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "PARAM/clsParamGroup.h"
#include "WIDGET/DenseStyle.h"
#include "WIDGET/ShortcutKeys.h"
#include "WIDGET/clsDialogEXKey.h"
#include "WIDGET/clsFieldUndo.h"
#include "WIDGET/clsFontProvider.h"
#include "WIDGET/clsGripLabel.h"
#include "WIDGET/clsKeyButton.h"
#include "WIDGET/clsMultiInputRow.h"
#include "WIDGET/clsNumField.h"
#include "WIDGET/clsParamEdit.h"

namespace {
constexpr int kGap = 4; // the spacing unit
constexpr int kDefaultLabelWidth = 104;
/// Panels whose values undo or the time may change.
std::set<MultiInputPanel_cls*>& LivingPanels() {
    static std::set<MultiInputPanel_cls*> sPanels;
    return sPanels;
}

} // namespace

MultiInputPanel_cls::MultiInputPanel_cls(wxWindow* pParent, int labelWidth)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL) {
    InstallDenseStyle();
    SetSizer(new wxBoxSizer(wxVERTICAL));
    BeginColumns(labelWidth);
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        // A dialog decides about its keys itself.
        const bool bOwn = !dynamic_cast<wxDialog*>(wxGetTopLevelParent(this));
        if (!bOwn || GetFocusedFieldKind() == FieldKind::None || !HandBackShortcut(event)) event.Skip();
    });
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_RIGHT_DOWN, wxEVT_RIGHT_UP})
        Bind(type, [this](wxMouseEvent& event) { FuncHookMouse(event); });
}

void MultiInputPanel_cls::BeginColumns(int labelWidth) {
    const int sides = mpCGrid ? wxLEFT | wxRIGHT | wxBOTTOM : wxALL;
    mpCGrid = new wxFlexGridSizer(2, FromDIP(wxSize(2 * kGap, kGap / 2)));
    mpCGrid->AddGrowableCol(1, 1);
    // An empty first row gives the label column its least width.
    mpCGrid->Add(FromDIP(labelWidth > 0 ? labelWidth : kDefaultLabelWidth), 0);
    mpCGrid->Add(0, 0);
    GetSizer()->Add(mpCGrid, 0, wxEXPAND | sides, FromDIP(kGap));
}

MultiInputPanel_cls::~MultiInputPanel_cls() { LivingPanels().erase(this); }

int MultiInputPanel_cls::NewRow(const wxString& label, const wxString& tip, bool bGrip) {
    auto row = std::make_unique<Row>();
    if (bGrip)
        row->mpLabel = new GripLabel_cls(this, label);
    else
        row->mpLabel = new wxStaticText(this, wxID_ANY, label);
    if (!tip.empty()) row->mpLabel->SetToolTip(tip);
    row->mpFields = new wxBoxSizer(wxHORIZONTAL);
    row->mpGrid = mpCGrid;
    mpCGrid->Add(row->mpLabel, 0, wxALIGN_CENTRE_VERTICAL);
    mpCGrid->Add(row->mpFields, 1, wxEXPAND);
    row->mpLabel->Bind(wxEVT_RIGHT_UP, [this](wxMouseEvent& event) { FuncHookMouse(event); });
    mRows.push_back(std::move(row));
    return static_cast<int>(mRows.size()) - 1;
}

wxWindow* MultiInputPanel_cls::Place(int row, wxWindow* pWindow, int proportion) {
    Row& r = *mRows[static_cast<size_t>(row)];
    const wxSize least = pWindow->GetMinSize();
    pWindow->SetMinSize(wxSize(least.x, std::max(least.y, FromDIP(kFieldHeight))));
    const int left = r.mFields.empty() ? 0 : FromDIP(kGap);
    r.mpFields->Add(pWindow, proportion, wxALIGN_CENTRE_VERTICAL | wxLEFT, left);
    r.mFields.push_back(pWindow);
    return pWindow;
}

int MultiInputPanel_cls::AddButton(const wxString& label, const wxString& text, const wxString& tip) {
    const int row = NewRow(label, "");
    auto* button = new wxButton(this, wxID_ANY, text);
    button->SetToolTip(tip);
    button->Bind(wxEVT_BUTTON, [this, row](wxCommandEvent&) { Tell(row, Hook::Click, true); });
    Place(row, button, 1);
    return row;
}

wxButton* MultiInputPanel_cls::AddButtonTo(int row, const wxString& text, const wxString& tip,
                                           std::function<void()> press) {
    auto* button = new wxButton(this, wxID_ANY, text, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    button->SetToolTip(tip);
    button->Bind(wxEVT_BUTTON, [press](wxCommandEvent&) { press(); });
    Place(row, button, 0);
    return button;
}

int MultiInputPanel_cls::AddCaption(const wxString& text) {
    const int row = NewRow(text, "");
    wxWindow* label = mRows[static_cast<size_t>(row)]->mpLabel;
    const wxFont font = FontProvider_cls::GetFont(FontProvider_cls::FONT_CAPTION);
    label->SetFont(font);
    // Bold letters are wider, which the toolkit finds out only when the window stands.
    int width = 0;
    int height = 0;
    label->GetTextExtent(text, &width, &height, nullptr, nullptr, &font);
    label->SetMinSize(wxSize(width + FromDIP(kGap), height));
    return row;
}

int MultiInputPanel_cls::AddWindow(const wxString& label, wxWindow* pWindow) {
    const int row = NewRow(label, "");
    Place(row, pWindow, 1);
    return row;
}

void MultiInputPanel_cls::AddWindowTo(int row, wxWindow* pWindow) { Place(row, pWindow, 1); }

void MultiInputPanel_cls::AddRefresh(int row, std::function<void()> refresh) {
    mRows[static_cast<size_t>(row)]->mRefresh.push_back(std::move(refresh));
}

int MultiInputPanel_cls::AddStatic(const wxString& label, std::function<wxString()> get,
                                   const wxString& tip) {
    const int row = NewRow(label, tip);
    auto* text = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE);
    text->SetToolTip(tip);
    Place(row, text, 1);
    text->SetMinSize(wxDefaultSize); // a row of text stands at half its height
    mRows[static_cast<size_t>(row)]->mRefresh.push_back([text, get] {
        const wxString now = get();
        if (text->GetLabelText() != now) text->SetLabelText(now);
    });
    UpdateValues(row);
    return row;
}

int MultiInputPanel_cls::AddText(const wxString& label, wxString* pValue, const wxString& tip) {
    const int row = NewRow(label, tip);
    PlaceText(row, pValue, tip);
    return row;
}

void MultiInputPanel_cls::UpdateValues(int which) {
    for (int i = 0; i < GetRowCount(); ++i) {
        if (which >= 0 && which != i) continue;
        for (const auto& refresh : mRows[static_cast<size_t>(i)]->mRefresh)
            refresh();
    }
}

void MultiInputPanel_cls::SetUndo(long long updateMask) {
    mbUndo = true;
    mUndoMask = int(updateMask);
    LivingPanels().insert(this);
}

void MultiInputPanel_cls::Edit(const Undo& undo, const std::function<void()>& write, bool bFinal) {
    if (mbUndo && undo)
        undo->Edit(write, bFinal, mUndoMask);
    else
        write();
}

void MultiInputPanel_cls::UpdateAllPanels() {
    for (MultiInputPanel_cls* panel : LivingPanels())
        panel->UpdateValues();
}

void MultiInputPanel_cls::UpdateAllParams() {
    for (MultiInputPanel_cls* panel : LivingPanels())
        for (int row = 0; row < panel->GetRowCount(); ++row)
            if (panel->mRows[static_cast<size_t>(row)]->mbParam) panel->UpdateValues(row);
}

int MultiInputPanel_cls::AddParam(const wxString& label, ParamGroup_cls* pGroup, const NumSpec& spec,
                                  const wxString& tip) {
    const int count = std::min(pGroup->GetDimension(), kMaxField);
    const int row = NewRow(label, tip, count == 1);
    const auto edit = std::make_shared<ParamEdit_cls>(pGroup);
    for (int dim = 0; dim < count; ++dim)
        PlaceParam(row, edit, pGroup, dim, spec, tip, count == 1);
    return row;
}

int MultiInputPanel_cls::AddParam(const wxString& label, ParamGroup_cls* pGroup, int dimension,
                                  const NumSpec& spec, const wxString& tip) {
    const int row = NewRow(label, tip, true);
    PlaceParam(row, std::make_shared<ParamEdit_cls>(pGroup), pGroup, dimension, spec, tip, true);
    return row;
}

void MultiInputPanel_cls::AddParamTo(int row, ParamGroup_cls* pGroup, int dimension, const NumSpec& spec,
                                     const wxString& tip) {
    PlaceParam(row, std::make_shared<ParamEdit_cls>(pGroup), pGroup, dimension, spec, tip, false);
}

void MultiInputPanel_cls::PlaceParam(int row, const std::shared_ptr<ParamEdit_cls>& edit,
                                     ParamGroup_cls* pGroup, int dimension, const NumSpec& spec,
                                     const wxString& tip, bool bGripLabel) {
    LivingPanels().insert(this);
    Row& r = *mRows[static_cast<size_t>(row)];
    r.mbParam = true;
    NumSpec each = spec;
    each.mbDouble = true;
    auto* diamond = new KeyButton_cls(this, pGroup, dimension);
    PlaceNumber(
        row, [edit, dimension] { return edit->GetValue(dimension); }, nullptr, each, tip, bGripLabel,
        nullptr);
    auto* field = static_cast<NumField_cls*>(r.mFields.back());
    field->SetOnChange([this, row, edit, dimension, diamond](double value, bool bFinal) {
        edit->SetValue(dimension, value, bFinal);
        diamond->RefreshIfChanged();
        Tell(row, Hook::Value, bFinal);
    });
    r.mpFields->Add(diamond, 0, wxALIGN_CENTRE_VERTICAL);
    r.mRefresh.push_back([diamond] { diamond->RefreshIfChanged(); });
    r.mKeyButtons.push_back(diamond);
}

KeyButton_cls* MultiInputPanel_cls::GetKeyButton(int row, int dimension) const {
    if (row < 0 || row >= GetRowCount()) return nullptr;
    const auto& buttons = mRows[static_cast<size_t>(row)]->mKeyButtons;
    return dimension >= 0 && dimension < int(buttons.size()) ? buttons[static_cast<size_t>(dimension)]
                                                             : nullptr;
}

void MultiInputPanel_cls::ShowRow(int row, bool bShow) {
    Row& r = *mRows[static_cast<size_t>(row)];
    if (r.mbShown == bShow) return;
    r.mbShown = bShow;
    r.mpGrid->Show(r.mpLabel, bShow);
    r.mpGrid->Show(r.mpFields, bShow, true);
    InvalidateBestSize();
    Layout();
    // A page that has grown or shrunk scrolls by as much.
    if (auto* pScroll = dynamic_cast<wxScrolledWindow*>(GetParent())) pScroll->FitInside();
}

void MultiInputPanel_cls::EnableRow(int row, bool bEnable) {
    Row& r = *mRows[static_cast<size_t>(row)];
    r.mpLabel->Enable(bEnable);
    for (wxWindow* field : r.mFields)
        field->Enable(bEnable);
    for (KeyButton_cls* button : r.mKeyButtons)
        button->Enable(bEnable);
}

wxWindow* MultiInputPanel_cls::GetField(int row, int k) const {
    if (row < 0 || row >= GetRowCount()) return nullptr;
    const Row& r = *mRows[static_cast<size_t>(row)];
    return k >= 0 && k < static_cast<int>(r.mFields.size()) ? r.mFields[static_cast<size_t>(k)] : nullptr;
}

int MultiInputPanel_cls::GetRowCount() const { return static_cast<int>(mRows.size()); }

void MultiInputPanel_cls::Tell(int row, Hook hook, bool bFinal) {
    switch (hook) {
    case Hook::Click:
        FuncHookClick(row);
        break;
    case Hook::Choice:
        FuncHookCombobox(row);
        break;
    case Hook::Value:
        FuncHookValue(row, bFinal);
        break;
    }
    if (mOnChange) mOnChange(row, bFinal);
}
