#include "StartProbe.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <wx/app.h>
#include <wx/evtloop.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsMyApp.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PDATA/clsPDataSeqCtrl.h"

namespace {

using Clock = std::chrono::steady_clock;

double MillisSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void PumpUntilPainted(int paints) {
    MainGLCanvas_cls* canvas = wxGetApp().GetPCMain()->mpCFrameMain->GetPCGLCanvas(0);
    wxEventLoopBase* loop = wxEventLoopBase::GetActive();
    while (canvas->GetPaintCount() < paints) {
        while (loop->Pending())
            loop->Dispatch();
        wxTheApp->ProcessPendingEvents();
        loop->ProcessIdle();
    }
}

} // namespace

void RunStartProbeIfAsked(int argc, char** argv) {
    if (argc < 2 || std::strcmp(argv[1], "--start-probe") != 0) return;
    const Clock::time_point start = Clock::now();
    setenv("GDK_BACKEND", "x11", 1);
    int noArguments = 1;
    if (!wxEntryStart(noArguments, argv) || !wxTheApp->CallOnInit()) std::_Exit(1);
    wxEventLoop loop;
    const wxEventLoopActivator active(&loop);
    double shown = 0.0;
    if (argc > 2) {
        Main_cls* hub = wxGetApp().GetPCMain();
        hub->mpCFrameMain->OpenProject(wxString::FromUTF8(argv[2]));
        shown = MillisSince(start);
        // The first picture may be one without data, drawn while they are being read.
        PumpUntilPainted(1);
        while (!hub->IsTheIndexLoaded(0))
            PumpUntilPainted(wxGetApp().GetPCMain()->mpCFrameMain->GetPCGLCanvas(0)->GetPaintCount() + 1);
    } else {
        PumpUntilPainted(1);
        shown = MillisSince(start);
    }
    std::printf("start-probe %f %f\n", shown, MillisSince(start));
    std::fflush(stdout);
    std::_Exit(0);
}
