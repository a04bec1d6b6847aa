#include "WIDGET/clsMultiInputPanel.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "COMMON/Globals.h"
#include "WIDGET/clsFieldUndo.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsMultiInputRow.h"

namespace {

/// Entries of a choice with the present value among them; a value that no entry bears shows as itself.
void ShowChoice(wxChoice* pChoice, const std::vector<ChoiceItem>& items, unsigned value,
                std::vector<unsigned>& shown) {
    wxArrayString labels;
    std::vector<unsigned> values;
    for (const ChoiceItem& item : items) {
        if (!item.mbOffered && item.mValue != value) continue;
        labels.Add(item.mLabel);
        values.push_back(item.mValue);
    }
    if (std::find(values.begin(), values.end(), value) == values.end()) {
        labels.Add(wxString::Format("%u", value));
        values.push_back(value);
    }
    if (values != shown) {
        shown = values;
        pChoice->Set(labels);
    }
    const auto at = std::find(values.begin(), values.end(), value) - values.begin();
    if (pChoice->GetSelection() != static_cast<int>(at)) pChoice->SetSelection(static_cast<int>(at));
}

std::vector<ChoiceItem> Numbered(const std::vector<wxString>& labels) {
    std::vector<ChoiceItem> items;
    for (const wxString& label : labels)
        items.push_back({static_cast<unsigned>(items.size()), label, true});
    return items;
}

} // namespace

int MultiInputPanel_cls::PlaceChoice(int row, std::function<unsigned()> get,
                                     std::function<void(unsigned)> set, const std::vector<ChoiceItem>& items,
                                     const wxString& tip, Undo undo) {
    auto* choice = new wxChoice(this, wxID_ANY);
    choice->SetToolTip(tip);
    auto shown = std::make_shared<std::vector<unsigned>>();
    auto refresh = [choice, get, items, shown] { ShowChoice(choice, items, get(), *shown); };
    refresh();
    choice->Bind(wxEVT_CHOICE, [this, row, choice, set, shown, refresh, undo](wxCommandEvent&) {
        const int selection = choice->GetSelection();
        if (selection < 0 || selection >= static_cast<int>(shown->size())) return;
        Edit(undo, [&] { set((*shown)[static_cast<size_t>(selection)]); });
        refresh(); // an entry that was only shown as the old value goes
        Tell(row, Hook::Choice, true);
    });
    // The wheel scrolls the page; it must not change a value by passing over it.
    choice->Bind(wxEVT_MOUSEWHEEL, [choice](wxMouseEvent& event) {
        if (choice->HasFocus())
            event.Skip();
        else
            event.ResumePropagation(wxEVENT_PROPAGATE_MAX);
    });
    Place(row, choice, 1);
    mRows[static_cast<size_t>(row)]->mRefresh.push_back(refresh);
    return row;
}

int MultiInputPanel_cls::AddChoice(const wxString& label, unsigned* pValue,
                                   const std::vector<ChoiceItem>& items, const wxString& tip) {
    return PlaceChoice(
        NewRow(label, tip), [pValue] { return *pValue; }, [pValue](unsigned value) { *pValue = value; },
        items, tip, std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForNumber(pValue)));
}

int MultiInputPanel_cls::AddChoice(const wxString& label, unsigned* pValue,
                                   const std::vector<wxString>& labels, const wxString& tip) {
    return AddChoice(label, pValue, Numbered(labels), tip);
}

int MultiInputPanel_cls::AddChoice(const wxString& label, int* pValue, const std::vector<wxString>& labels,
                                   const wxString& tip) {
    return PlaceChoice(
        NewRow(label, tip), [pValue] { return static_cast<unsigned>(*pValue); },
        [pValue](unsigned value) { *pValue = static_cast<int>(value); }, Numbered(labels), tip,
        std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForNumber(pValue)));
}

int MultiInputPanel_cls::AddChoice(const wxString& label, bool* pValue, const std::vector<wxString>& labels,
                                   const wxString& tip) {
    return PlaceChoice(
        NewRow(label, tip), [pValue] { return *pValue ? 1u : 0u; },
        [pValue](unsigned value) { *pValue = value != 0; }, Numbered(labels), tip,
        std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForCheck(pValue)));
}

void MultiInputPanel_cls::AddChoiceTo(int row, unsigned* pValue, const std::vector<wxString>& labels,
                                      const wxString& tip) {
    PlaceChoice(
        row, [pValue] { return *pValue; }, [pValue](unsigned value) { *pValue = value; }, Numbered(labels),
        tip, std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForNumber(pValue)));
}

void MultiInputPanel_cls::AddChoiceTo(int row, int* pValue, const std::vector<wxString>& labels,
                                      const wxString& tip) {
    PlaceChoice(
        row, [pValue] { return static_cast<unsigned>(*pValue); },
        [pValue](unsigned value) { *pValue = static_cast<int>(value); }, Numbered(labels), tip,
        std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForNumber(pValue)));
}

int MultiInputPanel_cls::AddCheck(const wxString& label, bool* pValue, const wxString& text,
                                  const wxString& tip) {
    const int row = NewRow(label, tip);
    PlaceCheck(row, pValue, text, tip);
    return row;
}

void MultiInputPanel_cls::AddCheckTo(int row, bool* pValue, const wxString& text, const wxString& tip) {
    PlaceCheck(row, pValue, text, tip);
}

void MultiInputPanel_cls::PlaceCheck(int row, bool* pValue, const wxString& text, const wxString& tip) {
    auto* check = new wxCheckBox(this, wxID_ANY, text);
    check->SetToolTip(tip);
    check->SetValue(*pValue);
    auto undo = std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForCheck(pValue));
    check->Bind(wxEVT_CHECKBOX, [this, row, pValue, undo](wxCommandEvent& event) {
        Edit(undo, [&] { *pValue = event.IsChecked(); });
        Tell(row, Hook::Click, true);
    });
    Place(row, check, 0);
    mRows[static_cast<size_t>(row)]->mRefresh.push_back([check, pValue] {
        if (check->GetValue() != *pValue) check->SetValue(*pValue);
    });
}

wxWindow* MultiInputPanel_cls::PlaceText(int row, wxString* pValue, const wxString& tip) {
    auto* text =
        new wxTextCtrl(this, wxID_ANY, *pValue, wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
    text->SetToolTip(tip);
    auto undo = std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForText(pValue));
    auto commit = [this, row, text, pValue, undo] {
        if (text->GetValue() == *pValue) return;
        Edit(undo, [=] { *pValue = text->GetValue(); });
        Tell(row, Hook::Value, true);
    };
    text->Bind(wxEVT_TEXT_ENTER, [commit](wxCommandEvent&) { commit(); });
    text->Bind(wxEVT_KILL_FOCUS, [commit](wxFocusEvent& event) {
        commit();
        event.Skip();
    });
    text->Bind(wxEVT_CHAR_HOOK, [text, pValue](wxKeyEvent& event) {
        const bool bUndo = event.GetKeyCode() == 'Z' && event.GetModifiers() == wxMOD_CONTROL;
        if ((event.GetKeyCode() == WXK_ESCAPE || bUndo) && text->GetValue() != *pValue)
            text->ChangeValue(*pValue);
        else
            event.Skip();
    });
    Place(row, text, 1);
    mRows[static_cast<size_t>(row)]->mRefresh.push_back([text, pValue] {
        if (text->GetValue() != *pValue) text->ChangeValue(*pValue);
    });
    return text;
}

int MultiInputPanel_cls::AddFile(const wxString& label, wxString* pValue, const wxString& message,
                                 const wxString& wildcard, const wxString& tip) {
    const int row = NewRow(label, tip);
    PlaceText(row, pValue, tip);
    auto* button = new wxButton(this, wxID_ANY, "...", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    button->SetToolTip(message);
    button->Bind(wxEVT_BUTTON, [=](wxCommandEvent&) { AskForFile(row, pValue, message, wildcard); });
    Place(row, button, 0);
    return row;
}

void MultiInputPanel_cls::AskForFile(int row, wxString* pValue, const wxString& message,
                                     const wxString& wildcard) {
    wxFileDialogEX local(wxGetTopLevelParent(this));
    wxFileDialogEX* dialog = GpCFileDialog ? GpCFileDialog : &local;
    const wxFileName name(*pValue);
    dialog->SetParams(message, name.GetPath(), name.GetFullName(), wildcard,
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog->ShowModal() != wxID_OK) return;
    Edit(std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForText(pValue)),
         [&] { *pValue = dialog->GetPath(); });
    UpdateValues(row);
    Tell(row, Hook::Click, true);
}
