#include "WIDGET/Realize.h"

#include <dlfcn.h>

#include <wx/window.h>

// The toolkit below ours is loaded with it; its headers needn't be installed for this call.
bool RealizeWindow(wxWindow* pWindow) {
    using Realize = void (*)(void* pWidget);
    const auto realize = reinterpret_cast<Realize>(dlsym(RTLD_DEFAULT, "gtk_widget_realize"));
    if (!realize || !pWindow->GetHandle()) return false;
    realize(pWindow->GetHandle());
    return true;
}
