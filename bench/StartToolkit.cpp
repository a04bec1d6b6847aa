#include "StartToolkit.h"

#include <cstdlib>

#include <wx/app.h>
#include <wx/init.h>

#include "WIDGET/clsFontProvider.h"

bool StartToolkit() {
    static const bool sbStarted = [] {
        if (!std::getenv("DISPLAY")) return false;
        setenv("GDK_BACKEND", "x11", 1);
        int argc = 0;
        if (!wxTheApp && !wxEntryStart(argc, static_cast<char**>(nullptr))) return false;
        FontProvider_cls::InitializeStatic();
        return true;
    }();
    return sbStarted;
}
