// Base of tests of filters' panels, menus and dialogs.
#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "FILTER/PANEL/clsFilterPanelGUI.h"
#include "FILTER/PANEL/clsFilterPanelPain.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsFilterLists.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "ProjectTest.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"
#include "WIDGET/TIMELINE/clsParamTree.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

class FilterTest : public ProjectTest {
protected:
    static FilterLists_cls& Lists() { return *Hub()->mpCFilters; }
    static wxString Text() { return Lists().Serialize(); }
    static FilterBase_cls* At(int list, int position) { return Lists().Get(list).GetPCFilter(position); }
    static FilterPanelPain_cls* Pane(int list) { return Frame()->GetPCTopHalf()->GetPCFilterPane(list); }
    static FilterPanelGUI_cls& Panel(const FilterBase_cls* pFilter) {
        return static_cast<FilterPanelGUI_cls&>(*pFilter->mpCGUI);
    }
    static ParamGUICtrl_cls* Strips() { return Frame()->GetPCBtmHalf()->GetPCParamGUICtrl(); }
    static int PageOf() {
        return static_cast<wxNotebook*>(wxWindow::FindWindowById(ID_NOTEBOOK_FILTER, Frame()))
            ->GetSelection();
    }
    /// A new one by its entry of the menu, which is the last of its list.
    static FilterBase_cls* Add(int id, int list) {
        Menu(id);
        return At(list, Lists().Get(list).GetCount() - 1);
    }
    /// The dialog of a menu entry, as the user opens it; null when another comes or none.
    template <class GUI>
    static GUI* OpenDialog(int id, const wxString& title) {
        Menu(id);
        auto* pGUI = dynamic_cast<GUI*>(WaitForWindow(title));
        EXPECT_TRUE(pGUI) << title;
        return pGUI;
    }
    /// Its panel is seen, open.
    static void Show(int list, int position) {
        Frame()->GetPCTopHalf()->ShowFilter(list, position);
        Settle();
    }
    /// As a hand would, another value into whatever field this is; false when it isn't one.
    static bool Change(wxWindow* field) {
        if (auto* number = dynamic_cast<NumField_cls*>(field)) {
            const double now = number->GetValue();
            const NumSpec& spec = number->GetSpec();
            const double other = now + 1 <= spec.mMax ? now + 1 : now / 2;
            number->GetPCText()->ChangeValue(FormatNumber(other, spec));
            number->GetPCText()->MarkDirty();
            number->Commit();
        } else if (auto* choice = dynamic_cast<wxChoice*>(field)) {
            choice->SetSelection((choice->GetSelection() + 1) % int(choice->GetCount()));
            Send(choice, wxEVT_CHOICE, choice->GetSelection());
        } else if (auto* check = dynamic_cast<wxCheckBox*>(field)) {
            check->SetValue(!check->GetValue());
            Send(check, wxEVT_CHECKBOX, check->GetValue());
        } else if (auto* text = dynamic_cast<wxTextCtrl*>(field)) {
            text->ChangeValue(text->GetValue() + "7");
            Send(text, wxEVT_TEXT_ENTER, 0);
        } else {
            return false;
        }
        return true;
    }
    static void Send(wxWindow* field, const wxEventTypeTag<wxCommandEvent>& type, int value) {
        wxCommandEvent event(type, field->GetId());
        event.SetEventObject(field);
        event.SetInt(value);
        field->ProcessWindowEvent(event);
    }
    /// Change each field of a panel, and take it back; how many there were.
    static int ChangeAll(const std::function<MultiInputPanel_cls*()>& panel, const wxString& what,
                         const std::function<wxString()>& text = Text) {
        int fields = 0;
        for (int row = 0; row < panel()->GetRowCount(); ++row)
            for (int k = 0; panel()->GetField(row, k); ++k) {
                const wxString before = text();
                const unsigned steps = GCUndoList.GetCurrent();
                if (!Change(panel()->GetField(row, k))) continue;
                ++fields;
                const wxString after = text();
                EXPECT_TRUE(after != before) << what << " row " << row << " field " << k;
                EXPECT_GT(GCUndoList.GetCurrent(), steps) << what << " row " << row << " field " << k;
                Hub()->Undo();
                EXPECT_TRUE(text() == before) << what << " row " << row << " field " << k;
                Hub()->Redo();
                EXPECT_TRUE(text() == after) << what << " row " << row << " field " << k;
                Hub()->Undo();
            }
        return fields;
    }
};
