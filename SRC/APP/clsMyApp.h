// The application object: locale, image handlers, the hub.
#pragma once

#include <memory>

#include <wx/app.h>
#include <wx/intl.h>

class Main_cls;
class Replay_cls;

class MyApp : public wxApp {
public:
    MyApp();
    ~MyApp() override;
    bool OnInit() override;
    int OnExit() override;
    bool OnExceptionInMainLoop() override;
    void OnUnhandledException() override;
    Main_cls* GetPCMain() const { return mpCMain; }

private:
    void OnEndSession(wxCloseEvent& event);

    wxLocale mLocale;
    Main_cls* mpCMain = nullptr;
    std::unique_ptr<Replay_cls> mpCReplay;
};

wxDECLARE_APP(MyApp);

/// Run the program until its window closes, with the files of its command line (WindowArgs.h).
int RunMorentis(int argc, char** argv);
