#include "WIDGET/ShortcutKeys.h"

#include <memory>

#include <wx/accel.h>
#include <wx/app.h>
#include <wx/combobox.h>
#include <wx/event.h>
#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/textctrl.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UserActs.h"
#include "WIDGET/clsNumField.h"

namespace {

bool IsModifierKey(int key) {
    return key == WXK_NONE || key == WXK_SHIFT || key == WXK_ALT || key == WXK_CONTROL ||
           key == WXK_RAW_CONTROL || key == WXK_WINDOWS_LEFT || key == WXK_WINDOWS_RIGHT ||
           key == WXK_CAPITAL || key == WXK_NUMLOCK || key == WXK_MENU || key == WXK_WINDOWS_MENU;
}

bool IsNavigation(int key) {
    switch (key) {
    case WXK_TAB:
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
    case WXK_ESCAPE:
    case WXK_BACK:
    case WXK_DELETE:
    case WXK_NUMPAD_DELETE:
    case WXK_INSERT:
    case WXK_LEFT:
    case WXK_RIGHT:
    case WXK_UP:
    case WXK_DOWN:
    case WXK_HOME:
    case WXK_END:
    case WXK_PAGEUP:
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_LEFT:
    case WXK_NUMPAD_RIGHT:
    case WXK_NUMPAD_UP:
    case WXK_NUMPAD_DOWN:
    case WXK_NUMPAD_HOME:
    case WXK_NUMPAD_END:
        return true;
    default:
        return false;
    }
}

bool IsNumberKey(int key) {
    if (key >= '0' && key <= '9') return true;
    if (key >= WXK_NUMPAD0 && key <= WXK_NUMPAD9) return true;
    return key == '.' || key == ',' || key == '-' || key == '+' || key == 'E' || key == WXK_NUMPAD_DECIMAL ||
           key == WXK_NUMPAD_SEPARATOR || key == WXK_NUMPAD_SUBTRACT || key == WXK_NUMPAD_ADD;
}

/// The item of a menu, or of its sub-menus, that bears this accelerator.
wxMenuItem* FindAccelerated(const wxMenu& menu, int key, int modifier) {
    for (wxMenuItem* item : menu.GetMenuItems()) {
        if (const wxMenu* sub = item->GetSubMenu()) {
            if (wxMenuItem* found = FindAccelerated(*sub, key, modifier)) return found;
            continue;
        }
        const std::unique_ptr<wxAcceleratorEntry> entry(item->GetAccel());
        // Flags of accelerators and modifiers of keys count alike: 1 Alt, 2 Ctrl, 4 Shift.
        if (entry && entry->GetKeyCode() == key && entry->GetFlags() == modifier) return item;
    }
    return nullptr;
}

wxMenuItem* FindAccelerated(const wxFrame* pFrame, int key, int modifier) {
    const wxMenuBar* bar = pFrame ? pFrame->GetMenuBar() : nullptr;
    for (size_t i = 0; bar && i < bar->GetMenuCount(); ++i)
        if (wxMenuItem* item = FindAccelerated(*bar->GetMenu(i), key, modifier)) return item;
    return nullptr;
}

const wxFrame* FindMainFrame() {
    return wxTheApp ? dynamic_cast<wxFrame*>(wxTheApp->GetTopWindow()) : nullptr;
}

/// What choosing the item would do.
void PostItem(wxMenuItem* pItem) {
    pItem->GetMenu()->UpdateUI(); // what follows the program's state may be behind it
    if (!pItem->IsEnabled()) return;
    if (pItem->IsCheckable()) pItem->Check(pItem->GetKind() == wxITEM_RADIO || !pItem->IsChecked());
    PostMenuEvent(pItem->GetId(), pItem->IsCheckable() && pItem->IsChecked() ? 1 : 0);
}

/// What is typed into a field isn't recorded, but what it hands back is.
void NoteKey(FieldKind kind, const wxKeyEvent& event) {
    if (kind != FieldKind::None)
        NoteUserAct("shortcut", wxString::Format("%d %d", event.GetKeyCode(), event.GetModifiers()));
}

bool IsClipboardKey(int key) { return key == 'A' || key == 'C' || key == 'V' || key == 'X'; }

} // namespace

bool IsFieldKey(FieldKind kind, int key, int modifier) {
    const int strong = modifier & ~wxMOD_SHIFT;
    if (IsModifierKey(key)) return true;
    if (strong == wxMOD_ALT) return true; // mnemonics and the window manager
    if (kind == FieldKind::None)
        return strong == 0 && (IsNavigation(key) || key == WXK_SPACE); // Space presses the focused button
    if (strong == wxMOD_CONTROL) return IsClipboardKey(key) || IsNavigation(key);
    if (strong != 0) return false;
    if (IsNavigation(key)) return true;
    if (kind == FieldKind::Number) return IsNumberKey(key);
    return key < WXK_F1 || key > WXK_F24;
}

wxWindow* FindKeyTarget() { return GUserActs.mpKeyTarget ? GUserActs.mpKeyTarget : wxWindow::FindFocus(); }

FieldKind GetFocusedFieldKind() {
    wxWindow* focus = FindKeyTarget();
    if (!focus) return FieldKind::None;
    if (dynamic_cast<NumField_cls*>(focus->GetParent())) return FieldKind::Number;
    if (dynamic_cast<wxTextCtrl*>(focus) || dynamic_cast<wxComboBox*>(focus)) return FieldKind::Text;
    return FieldKind::None;
}

bool HandBackShortcut(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const int modifier = event.GetModifiers();
    const FieldKind kind = GetFocusedFieldKind();
    if (IsFieldKey(kind, key, modifier)) return false;
    // The frame's own menu bar sees the key, but a plain letter the field would see first.
    const wxFrame* frame = FindMainFrame();
    const bool bPlain = (modifier & ~wxMOD_SHIFT) == 0 && key < WXK_START;
    if (!bPlain && FindAccelerated(frame, key, modifier) && wxGetTopLevelParent(FindKeyTarget()) == frame)
        return false;
    NoteKey(kind, event);
    GiveShortcut(event);
    return true;
}

void GiveShortcut(const wxKeyEvent& event) {
    if (wxMenuItem* item = FindAccelerated(FindMainFrame(), event.GetKeyCode(), event.GetModifiers()))
        return PostItem(item);
    GShortcutKeycode = event.GetKeyCode();
    GShortcutModifier = event.GetModifiers();
    PostMenuEvent(ID_SHORTCUT);
}
