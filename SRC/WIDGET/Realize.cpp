#include "WIDGET/Realize.h"

#include <dlfcn.h>

#include <wx/window.h>

// The toolkit below ours is loaded with it; its headers needn't be installed for these calls.
bool RealizeWindow(wxWindow* pWindow) {
    using Realize = void (*)(void* pWidget);
    const auto realize = reinterpret_cast<Realize>(dlsym(RTLD_DEFAULT, "gtk_widget_realize"));
    if (!realize || !pWindow->GetHandle()) return false;
    realize(pWindow->GetHandle());
    return true;
}

void SilenceToolkit() {
    using Handler = void (*)(const char* domain, int level, const char* text, void* pData);
    using SetHandler = unsigned (*)(const char* domain, int levels, Handler handler, void* pData);
    constexpr int kCritical = 1 << 3;
    constexpr int kWarning = 1 << 4;
    const auto set = reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, "g_log_set_handler"));
    if (!set) return;
    for (const char* domain : {"Gtk", "Gdk", "GLib-GObject"})
        set(
            domain, kCritical | kWarning, [](const char*, int, const char*, void*) {}, nullptr);
}
