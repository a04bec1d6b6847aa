// What a test sends through the X server and what of it has reached the program.
#pragma once

#include <string>

#include <wx/gdicmn.h>

/// wxUIActionSimulator is of no use here: it lets events run before it returns. Keeps count of events that
/// were sent and that arrived, so that a test waits for arrivals and never for a time.
class GuiEvents_cls {
public:
    /// See what arrives from now on. To be said again in each pass of a loop: a yield takes the watcher away.
    static void Watch();
    static void Move(wxPoint screen);
    static void Button(int button, bool bDown); ///< 1 left, 2 middle, 3 right, 4 and 5 the wheel
    static void Char(int keycode, int modifiers);
    /// One of Shift, Ctrl and Alt (WXK_...).
    static void Modifier(int keycode, bool bDown);
    static void Text(const std::string& text);
    /// Have all keys and buttons arrived, and the pointer where it was sent?
    static bool AllArrived();
    static void Tell(); ///< prints what was sent and what came
    /// Don't wait for what hasn't come so far.
    static void GiveUp();
    /// How long two presses at one place may be apart to make a double click. A window manager that is slow
    /// holds the second one back.
    static void SetDoubleClickMillis(int millis);
    /// Everything that the server had for the program is in the program's queue.
    static void RoundTrip();
    /// Windows are laid out and painted by a clock that ticks 60 times a second: ask for the next tick, and
    /// has it been since for all that are shown?
    static void AskForFrame();
    static bool HadFrame();
    /// Does a menu or a list stand open and have the keyboard?
    static bool HasPopup();
    /// Middle of the button at a place of a tool bar, pixels of the bar, which comes as the toolkit's own
    /// handle; gaps count as places.
    static wxPoint GetToolMiddle(void* pBar, int place);
};
