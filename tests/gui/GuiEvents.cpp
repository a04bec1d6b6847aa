#include "GuiEvents.h"

// Before the X headers, whose macros it doesn't stand.
#include <gtest/gtest.h>

#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <X11/extensions/XTest.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include <wx/defs.h>
#include <wx/stopwatch.h>

namespace {

/// Keys count their modifiers; buttons are presses and releases.
struct Count_st {
    int mPresses = 0;
    int mReleases = 0;
    int mButtons = 0;
};

Count_st sSent, sCame;
wxStopWatch sAsked;
constexpr int kFrameMillis = 1000; // a window behind all others may have none
wxPoint sTarget, sPointer;
bool sbMoving = false;
/// Round trips since the last event. The server answers in order: what an act caused is there after one. It
/// never comes where the window that a key was pressed in is gone before the key is let go, or where the
/// toolkit drops a move of the pointer between two windows that open and close.
int sQuietTrips = 0;
constexpr int kQuietTrips = 40;

/// Called before the event is handled: a handler may run a loop of its own.
void See(GdkEvent* event, void*) {
    double x = 0.0, y = 0.0;
    sQuietTrips = 0;
    switch (event->type) {
    case GDK_KEY_PRESS:
        ++sCame.mPresses;
        break;
    case GDK_KEY_RELEASE:
        ++sCame.mReleases;
        break;
    case GDK_BUTTON_PRESS:
    case GDK_BUTTON_RELEASE:
        ++sCame.mButtons;
        break;
    default:
        break;
    }
    if (gdk_event_get_root_coords(event, &x, &y)) sPointer = wxPoint(int(x), int(y));
    gtk_main_do_event(event);
}

GdkDevice* Pointer() { return gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default())); }

bool IsPointerThere() {
    int x = 0, y = 0;
    gdk_device_get_position(Pointer(), nullptr, &x, &y);
    return !sbMoving || wxPoint(x, y) == sTarget;
}

const char* const kAsked = "morentis-test-asked";

void EndFrame(GdkFrameClock* clock, void*) {
    g_object_set_data(G_OBJECT(clock), kAsked, nullptr);
    g_signal_handlers_disconnect_by_func(clock, reinterpret_cast<void*>(EndFrame), nullptr);
}

/// Of the windows on the screen: one that was closed before its frame came has none any more.
std::vector<GdkFrameClock*> GetClocks() {
    std::vector<GdkFrameClock*> clocks;
    GList* windows = gtk_window_list_toplevels();
    for (const GList* item = windows; item; item = item->next) {
        auto* window = static_cast<GtkWidget*>(item->data);
        GdkFrameClock* clock = gtk_widget_get_mapped(window) ? gtk_widget_get_frame_clock(window) : nullptr;
        if (clock) clocks.push_back(clock);
    }
    g_list_free(windows);
    return clocks;
}

bool IsAsked(GdkFrameClock* clock) { return g_object_get_data(G_OBJECT(clock), kAsked) != nullptr; }

const struct {
    int mWX;
    guint mX;
} kSpecialKeys[] = {
    {WXK_RETURN, GDK_KEY_Return},      {WXK_ESCAPE, GDK_KEY_Escape}, {WXK_TAB, GDK_KEY_Tab},
    {WXK_BACK, GDK_KEY_BackSpace},     {WXK_DELETE, GDK_KEY_Delete}, {WXK_LEFT, GDK_KEY_Left},
    {WXK_RIGHT, GDK_KEY_Right},        {WXK_UP, GDK_KEY_Up},         {WXK_DOWN, GDK_KEY_Down},
    {WXK_HOME, GDK_KEY_Home},          {WXK_END, GDK_KEY_End},       {WXK_PAGEUP, GDK_KEY_Page_Up},
    {WXK_PAGEDOWN, GDK_KEY_Page_Down}, {WXK_F5, GDK_KEY_F5},         {WXK_NUMPAD_END, GDK_KEY_KP_End},
    {WXK_NUMPAD_HOME, GDK_KEY_KP_Home}};

void PressCode(guint code, bool bDown) {
    ++(bDown ? sSent.mPresses : sSent.mReleases);
    XTestFakeKeyEvent(gdk_x11_get_default_xdisplay(), code, bDown, CurrentTime);
}

void Press(guint key, bool bWanted, bool bDown) {
    if (bWanted) PressCode(XKeysymToKeycode(gdk_x11_get_default_xdisplay(), key), bDown);
}

} // namespace

void GuiEvents_cls::Watch() { gdk_event_handler_set(See, nullptr, nullptr); }

void GuiEvents_cls::Move(wxPoint screen) {
    int x = 0, y = 0;
    gdk_device_get_position(Pointer(), nullptr, &x, &y);
    sTarget = screen;
    sbMoving = true;
    if (wxPoint(x, y) == screen) sPointer = screen; // no event comes of it
    gdk_device_warp(Pointer(), gdk_screen_get_default(), screen.x, screen.y);
}

void GuiEvents_cls::Button(int button, bool bDown) {
    ++sSent.mButtons;
    XTestFakeButtonEvent(gdk_x11_get_default_xdisplay(), unsigned(button), bDown, CurrentTime);
}

void GuiEvents_cls::Char(int keycode, int modifiers) {
    guint key =
        gdk_unicode_to_keyval(guint(keycode >= 'A' && keycode <= 'Z' ? keycode + 'a' - 'A' : keycode));
    for (const auto& special : kSpecialKeys)
        if (special.mWX == keycode) key = special.mX;
    GdkKeymapKey* places = nullptr;
    gint count = 0;
    if (!gdk_keymap_get_entries_for_keyval(gdk_keymap_get_for_display(gdk_display_get_default()), key,
                                           &places, &count)) {
        ADD_FAILURE() << "no key for " << keycode;
        return;
    }
    if (places[0].level == 1) modifiers |= wxMOD_SHIFT;
    const guint code = places[0].keycode;
    g_free(places);
    Press(GDK_KEY_Control_L, modifiers & wxMOD_CONTROL, true);
    Press(GDK_KEY_Alt_L, modifiers & wxMOD_ALT, true);
    Press(GDK_KEY_Shift_L, modifiers & wxMOD_SHIFT, true);
    PressCode(code, true);
    PressCode(code, false);
    Press(GDK_KEY_Shift_L, modifiers & wxMOD_SHIFT, false);
    Press(GDK_KEY_Alt_L, modifiers & wxMOD_ALT, false);
    Press(GDK_KEY_Control_L, modifiers & wxMOD_CONTROL, false);
}

void GuiEvents_cls::Modifier(int keycode, bool bDown) {
    const guint key = keycode == WXK_SHIFT     ? GDK_KEY_Shift_L
                      : keycode == WXK_CONTROL ? GDK_KEY_Control_L
                                               : GDK_KEY_Alt_L;
    Press(key, true, bDown);
}

void GuiEvents_cls::Text(const std::string& text) {
    for (const char c : text)
        Char(c, c >= 'A' && c <= 'Z' ? wxMOD_SHIFT : 0);
}

void GuiEvents_cls::Tell() {
    std::printf("sent %d keys, %d released, %d buttons, to %d,%d; came %d, %d, %d, at %d,%d\n",
                sSent.mPresses, sSent.mReleases, sSent.mButtons, sTarget.x, sTarget.y, sCame.mPresses,
                sCame.mReleases, sCame.mButtons, sPointer.x, sPointer.y);
}

bool GuiEvents_cls::AllArrived() {
    // A window manager may hold buttons back, so that they are waited for whatever the server says.
    if (sCame.mPresses < sSent.mPresses || sCame.mButtons < sSent.mButtons) return false;
    if (sCame.mReleases >= sSent.mReleases && (!sbMoving || sPointer == sTarget)) return true;
    RoundTrip();
    return sQuietTrips > kQuietTrips && IsPointerThere();
}

void GuiEvents_cls::GiveUp() {
    sSent = sCame;
    sbMoving = false;
}

void GuiEvents_cls::SetDoubleClickMillis(int millis) {
    g_object_set(gtk_settings_get_default(), "gtk-double-click-time", millis, nullptr);
}

void GuiEvents_cls::RoundTrip() {
    GdkDisplay* display = gdk_display_get_default();
    gdk_display_sync(display);
    sQuietTrips = gdk_events_pending() ? 0 : sQuietTrips + 1;
}

void GuiEvents_cls::AskForFrame() {
    sAsked.Start();
    for (GdkFrameClock* clock : GetClocks()) {
        if (!IsAsked(clock)) g_signal_connect(clock, "after-paint", G_CALLBACK(EndFrame), nullptr);
        g_object_set_data(G_OBJECT(clock), kAsked, clock);
        gdk_frame_clock_request_phase(clock, GDK_FRAME_CLOCK_PHASE_AFTER_PAINT);
    }
}

bool GuiEvents_cls::HadFrame() {
    const std::vector<GdkFrameClock*> clocks = GetClocks();
    return std::none_of(clocks.begin(), clocks.end(), IsAsked) || sAsked.Time() > kFrameMillis;
}

bool GuiEvents_cls::HasPopup() {
    GdkDisplay* display = gdk_display_get_default();
    GtkWidget* owner = gtk_grab_get_current();
    return owner && gtk_widget_get_mapped(owner) &&
           gdk_display_device_is_grabbed(display,
                                         gdk_seat_get_keyboard(gdk_display_get_default_seat(display)));
}

namespace {

void FindToolBar(GtkWidget* widget, void* pFound) {
    auto** found = static_cast<GtkWidget**>(pFound);
    if (GTK_IS_TOOLBAR(widget))
        *found = widget;
    else if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), FindToolBar, pFound);
}

} // namespace

wxPoint GuiEvents_cls::GetToolMiddle(void* pBar, int place) {
    auto* bar = static_cast<GtkWidget*>(pBar);
    GtkWidget* tools = nullptr;
    FindToolBar(bar, &tools);
    GtkToolItem* item = tools ? gtk_toolbar_get_nth_item(GTK_TOOLBAR(tools), place) : nullptr;
    int x = -1, y = -1;
    if (item)
        gtk_widget_translate_coordinates(GTK_WIDGET(item), bar,
                                         gtk_widget_get_allocated_width(GTK_WIDGET(item)) / 2,
                                         gtk_widget_get_allocated_height(GTK_WIDGET(item)) / 2, &x, &y);
    return wxPoint(x, y);
}
