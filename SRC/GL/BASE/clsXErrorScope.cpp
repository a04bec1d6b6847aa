#include "GL/BASE/clsXErrorScope.h"

#include <wx/utils.h>

#include <X11/Xlib.h>

namespace {

int sErrorCount = 0; // of the innermost scope

int CountError(Display*, XErrorEvent*) {
    ++sErrorCount;
    return 0;
}

// What was asked so far is answered when this returns.
void WaitForServer() {
    if (Display* pDisplay = wxGetX11Display()) XSync(pDisplay, False);
}

} // namespace

XErrorScope_cls::XErrorScope_cls() {
    WaitForServer();
    mOuterCount = sErrorCount;
    sErrorCount = 0;
    mpOuterHandler = reinterpret_cast<void (*)()>(XSetErrorHandler(CountError));
}

XErrorScope_cls::~XErrorScope_cls() {
    WaitForServer();
    XSetErrorHandler(reinterpret_cast<XErrorHandler>(mpOuterHandler));
    sErrorCount = mOuterCount;
}

bool XErrorScope_cls::HasFailed() const {
    WaitForServer();
    return sErrorCount > 0;
}
