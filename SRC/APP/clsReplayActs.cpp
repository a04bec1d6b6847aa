// What the lines of a record do to the program's windows: what the toolkit would do for hands.
#include "APP/clsReplay.h"

#include <cmath>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/frame.h>
#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/scrolbar.h>
#include <wx/textctrl.h>
#include <wx/tglbtn.h>

#include "APP/MenuNames.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsRecorder.h"
#include "COMMON/EventIds.h"
#include "COMMON/UserActs.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/ShortcutKeys.h"
#include "WIDGET/TIMELINE/TimeGesture.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr long kMostKeys = 1000;   // above all of the toolkit's key codes
constexpr long kMostPixels = 8192; // a window's side
constexpr long kMostSteps = 1000000;

wxString NotThat() { return _("that isn't what the window is"); }
wxString NoNumber() { return _("a number isn't one, or out of its range"); }

void SendCommand(wxWindow* pWindow, wxEventType type, int value, const wxString& text = wxString()) {
    wxCommandEvent event(type, pWindow->GetId());
    event.SetEventObject(pWindow);
    event.SetInt(value);
    event.SetString(text);
    pWindow->HandleWindowEvent(event);
}

bool HasWord(const ActLine_st& line, const char* word) {
    for (size_t i = 5; i < line.mWords.size(); ++i)
        if (line.mWords[i] == word) return true;
    return false;
}

wxMouseEvent MakeMouse(const ActLine_st& line, wxEventType type, wxWindow* pWindow, wxPoint point) {
    wxMouseEvent event(type);
    event.SetEventObject(pWindow);
    event.SetId(pWindow->GetId());
    event.SetPosition(point);
    event.SetShiftDown(HasWord(line, "shift"));
    event.SetControlDown(HasWord(line, "ctrl"));
    event.SetAltDown(HasWord(line, "alt"));
    event.SetLeftDown(HasWord(line, "left"));
    event.SetMiddleDown(HasWord(line, "mid"));
    event.SetRightDown(HasWord(line, "right"));
    return event;
}

bool ReadTurn(const ActLine_st& line, wxMouseEvent* pEvent) {
    constexpr long kMostTurn = 12000;
    const wxString word = line.mWords.back();
    long turn = 0;
    if (!ReadActCount(word.AfterFirst(':'), -kMostTurn, kMostTurn, &turn) || turn == 0) return false;
    pEvent->m_wheelRotation = int(turn);
    pEvent->m_wheelDelta = 120;
    pEvent->m_wheelAxis = word.StartsWith("across") ? wxMOUSE_WHEEL_HORIZONTAL : wxMOUSE_WHEEL_VERTICAL;
    pEvent->m_linesPerAction = pEvent->m_columnsPerAction = 3;
    return true;
}

} // namespace

wxString Replay_cls::DoMenu(const ActLine_st& line, wxWindow*) {
    const int id = GetMenuId(line.GetWord(1));
    wxMenu* menu = nullptr;
    wxMenuItem* item = mHub.mpCFrameMain->GetMenuBar()->FindItem(id, &menu);
    if (!item || !menu) return wxString::Format(_("there is no menu command \"%s\""), line.GetWord(1));
    if (id == ID_QUIT) return wxString(); // the window stays, for who looks at what came of it
    menu->UpdateUI();
    if (!item->IsEnabled()) return wxString::Format(_("\"%s\" can't be chosen now"), line.GetWord(1));
    if (item->IsCheckable()) item->Check(line.GetWord(2) != "off");
    menu->SendEvent(id, item->IsCheckable() ? int(item->IsChecked()) : -1);
    return wxString();
}

wxString Replay_cls::DoMouse(const ActLine_st& line, wxWindow* pWindow) {
    wxEventType type = wxEVT_NULL;
    for (const MouseName_st& name : GetMouseNames())
        if (line.GetWord(2) == name.mName) type = name.mType;
    if (type == wxEVT_NULL) return wxString::Format(_("\"%s\" is nothing that can be done"), line.GetWord(2));
    double x = 0.0;
    double y = 0.0;
    if (!ReadActNumber(line.GetWord(3), &x) || !ReadActNumber(line.GetWord(4), &y) || std::abs(x) > 10.0 ||
        std::abs(y) > 10.0)
        return NoNumber();
    const wxSize size = pWindow->GetClientSize();
    const wxPoint point(int(std::floor(x * size.x)), int(std::floor(y * size.y)));
    wxMouseEvent event = MakeMouse(line, type, pWindow, point);
    if (type == wxEVT_MOUSEWHEEL && !ReadTurn(line, &event)) return NoNumber();
    if (event.ButtonDown() || event.ButtonDClick() || type == wxEVT_MOUSEWHEEL) {
        wxMouseEvent hover = MakeMouse({}, wxEVT_MOTION, pWindow, point); // a pointer comes before it presses
        if (!mbPressed) pWindow->HandleWindowEvent(hover);
    }
    if (event.ButtonDown() || event.ButtonDClick()) {
        mbPressed = true;
        if (event.LeftDown() && pWindow->IsFocusable()) pWindow->SetFocus();
    }
    if (event.ButtonUp()) mbPressed = false;
    pWindow->HandleWindowEvent(event);
    return wxString();
}

wxString Replay_cls::DoTouch(const ActLine_st& line, wxWindow* pWindow) {
    const bool bRight = line.GetWord(2) == "right";
    for (const wxEventType type :
         {bRight ? wxEVT_RIGHT_DOWN : wxEVT_LEFT_DOWN, bRight ? wxEVT_RIGHT_UP : wxEVT_LEFT_UP}) {
        wxMouseEvent event = MakeMouse({}, type, pWindow, wxPoint(1, 1));
        pWindow->HandleWindowEvent(event);
    }
    return wxString();
}

// As the toolkit: first for who wants it before the window, then for the window.
wxString Replay_cls::DoKey(const ActLine_st& line, wxWindow* pWindow) {
    long code = 0;
    long modifiers = 0;
    if (!ReadActCount(line.GetWord(2), 1, kMostKeys, &code) ||
        !ReadActCount(line.GetWord(3), 0, wxMOD_ALL, &modifiers))
        return NoNumber();
    for (const wxEventType type : {wxEVT_CHAR_HOOK, wxEVT_KEY_DOWN, wxEVT_CHAR}) {
        wxKeyEvent event(type);
        event.SetEventObject(pWindow);
        event.m_keyCode = code;
        event.SetShiftDown((modifiers & wxMOD_SHIFT) != 0);
        event.SetControlDown((modifiers & wxMOD_CONTROL) != 0);
        event.SetAltDown((modifiers & wxMOD_ALT) != 0);
        GUserActs.mpKeyTarget = pWindow;
        const bool bDone = pWindow->HandleWindowEvent(event);
        GUserActs.mpKeyTarget = nullptr;
        if (bDone) break;
    }
    return wxString();
}

wxString Replay_cls::DoShortcut(const ActLine_st& line, wxWindow*) {
    long code = 0;
    long modifiers = 0;
    if (!ReadActCount(line.GetWord(1), 1, kMostKeys, &code) ||
        !ReadActCount(line.GetWord(2), 0, wxMOD_ALL, &modifiers))
        return NoNumber();
    wxKeyEvent event(wxEVT_CHAR_HOOK);
    event.m_keyCode = code;
    event.SetShiftDown((modifiers & wxMOD_SHIFT) != 0);
    event.SetControlDown((modifiers & wxMOD_CONTROL) != 0);
    event.SetAltDown((modifiers & wxMOD_ALT) != 0);
    GiveShortcut(event); // its field didn't need it
    return wxString();
}

wxString Replay_cls::DoSet(const ActLine_st& line, wxWindow* pWindow) {
    auto* field = dynamic_cast<NumField_cls*>(pWindow);
    if (!field) return NotThat();
    double value = 0.0;
    if (!ReadActNumber(line.GetWord(2), &value)) return NoNumber();
    field->Enter(value);
    return wxString();
}

wxString Replay_cls::DoText(const ActLine_st& line, wxWindow* pWindow) {
    auto* text = dynamic_cast<wxTextCtrl*>(pWindow);
    if (!text || !text->IsEditable() || dynamic_cast<NumField_cls*>(text->GetParent())) return NotThat();
    text->SetValue(line.GetWord(2)); // tells that it changed
    text->MarkDirty();
    if (text->HasFlag(wxTE_PROCESS_ENTER)) {
        SendCommand(text, wxEVT_TEXT_ENTER, 0, line.GetWord(2));
    } else {
        wxFocusEvent event(wxEVT_KILL_FOCUS, text->GetId());
        event.SetEventObject(text);
        text->HandleWindowEvent(event);
    }
    return wxString();
}

wxString Replay_cls::DoPress(const ActLine_st&, wxWindow* pWindow) {
    if (!dynamic_cast<wxAnyButton*>(pWindow)) return NotThat();
    SendCommand(pWindow, wxEVT_BUTTON, 0);
    return wxString();
}

wxString Replay_cls::DoCheck(const ActLine_st& line, wxWindow* pWindow) {
    const bool bOn = line.GetWord(2) == "on";
    if (auto* check = dynamic_cast<wxCheckBox*>(pWindow)) {
        check->SetValue(bOn);
        SendCommand(check, wxEVT_CHECKBOX, bOn);
    } else if (auto* button = dynamic_cast<wxToggleButtonBase*>(pWindow)) {
        button->SetValue(bOn);
        SendCommand(button, wxEVT_TOGGLEBUTTON, bOn);
    } else {
        return NotThat();
    }
    return wxString();
}

wxString Replay_cls::DoChoose(const ActLine_st& line, wxWindow* pWindow) {
    auto* choice = dynamic_cast<wxChoice*>(pWindow);
    if (!choice) return NotThat();
    long row = 0;
    if (!ReadActCount(line.GetWord(2), 0, long(choice->GetCount()) - 1, &row)) return NoNumber();
    choice->SetSelection(int(row));
    SendCommand(choice, wxEVT_CHOICE, int(row), choice->GetStringSelection());
    return wxString();
}

wxString Replay_cls::DoPage(const ActLine_st& line, wxWindow* pWindow) {
    auto* book = dynamic_cast<wxNotebook*>(pWindow);
    if (!book) return NotThat();
    long page = 0;
    if (!ReadActCount(line.GetWord(2), 0, long(book->GetPageCount()) - 1, &page)) return NoNumber();
    book->SetSelection(size_t(page)); // tells that it changed
    return wxString();
}

wxString Replay_cls::DoScroll(const ActLine_st& line, wxWindow* pWindow) {
    auto* bar = dynamic_cast<wxScrollBar*>(pWindow);
    if (!bar) return NotThat();
    long place = 0;
    if (!ReadActCount(line.GetWord(2), 0, bar->GetRange(), &place)) return NoNumber();
    bar->SetThumbPosition(int(place));
    for (const wxEventType type : {wxEVT_SCROLL_THUMBTRACK, wxEVT_SCROLL_CHANGED}) {
        wxScrollEvent event(type, bar->GetId(), int(place), bar->IsVertical() ? wxVERTICAL : wxHORIZONTAL);
        event.SetEventObject(bar);
        bar->HandleWindowEvent(event);
    }
    return wxString();
}

wxString Replay_cls::DoClose(const ActLine_st&, wxWindow* pWindow) {
    if (!pWindow->IsTopLevel()) return NotThat();
    if (pWindow != mHub.mpCFrameMain) pWindow->Close(); // the main window stays
    return wxString();
}

// Where it is already, as a rule; a film that played may have come to another place.
wxString Replay_cls::DoFrame(const ActLine_st& line, wxWindow*) {
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    long frame = 0;
    long step = 0;
    if (!ReadActCount(line.GetWord(1), 0, time->GetMaxFrame(), &frame) ||
        !ReadActCount(line.GetWord(2), 0, kMostSteps, &step))
        return NoNumber();
    if (time->GetFrame() == frame && time->GetInterpStep() == step) return wxString();
    time->SetFrameNative(int(frame), -1);
    time->SetInterpStepNative(int(step), -1);
    return wxString();
}

wxString Replay_cls::DoSize(const ActLine_st& line, wxWindow*) {
    long width = 0;
    long height = 0;
    if (!ReadActCount(line.GetWord(1), 1, kMostPixels, &width) ||
        !ReadActCount(line.GetWord(2), 1, kMostPixels, &height))
        return NoNumber();
    mHub.mpCFrameMain->SetClientSize(int(width), int(height));
    return wxString();
}

wxString Replay_cls::DoOpen(const ActLine_st& line, wxWindow*) {
    if (line.GetWord(1).empty()) return _("a file's name is empty");
    mHub.mpCFrameMain->GetPCFileMenu()->GetOpener().Open({GetFileToOpen(line.GetWord(1))}, false);
    return wxString();
}

wxString Replay_cls::DoRest(const ActLine_st&, wxWindow*) {
    TimeGesture_cls::EndBurst(); // and nothing else: a hand may be dragging meanwhile
    return wxString();
}

wxString Replay_cls::DoNothing(const ActLine_st&, wxWindow*) { return wxString(); }
