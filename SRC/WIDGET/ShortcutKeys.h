// Which key presses a field keeps for itself, and handing the others to the main frame.
#pragma once

class wxKeyEvent;
class wxWindow;

enum class FieldKind {
    None,   ///< no field has the focus
    Number, ///< a number is edited: letters and blanks mean nothing there
    Text    ///< free text is edited
};

/// True when a field of this kind edits with the key. Letters as capitals; modifiers 1 Alt, 2 Ctrl,
/// 4 Shift, 8 Meta, added up.
bool IsFieldKey(FieldKind kind, int keycode, int modifier);

/// The window that a key goes to first: the focused one, or whom a replayed key is for.
wxWindow* FindKeyTarget();

/// What the window edits that keys go to.
FieldKind GetFocusedFieldKind();

/// Offer a key to the main frame unless the focused field needs it: to its menu, when that bears the key,
/// else as ID_SHORTCUT. True when it was handed on.
bool HandBackShortcut(const wxKeyEvent& event);

/// The same without asking who else needs the key.
void GiveShortcut(const wxKeyEvent& event);
