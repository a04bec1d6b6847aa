#include "WIDGET/Realize.h"

#include <dlfcn.h>

#include <wx/window.h>

// The toolkit below ours is loaded with it; its headers need not be installed for these calls.
bool RealizeWindow(wxWindow* pWindow) {
    using Realize = void (*)(void* pWidget);
    const auto realize = reinterpret_cast<Realize>(dlsym(RTLD_DEFAULT, "gtk_widget_realize"));
    if (!realize || !pWindow->GetHandle()) return false;
    realize(pWindow->GetHandle());
    return true;
}

void SetFirstSize(wxWindow* pTopLevel) {
    struct Allocation_st {
        int mX, mY, mW, mH;
    };
    using Allocate = void (*)(void* pWidget, const Allocation_st*);
    const auto allocate = reinterpret_cast<Allocate>(dlsym(RTLD_DEFAULT, "gtk_widget_set_allocation"));
    if (!allocate || !pTopLevel->GetHandle()) return;
    const wxSize size = pTopLevel->GetSize();
    const Allocation_st allocation = {0, 0, size.x, size.y};
    allocate(pTopLevel->GetHandle(), &allocation);
}
