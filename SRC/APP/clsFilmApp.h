// The application object of the film maker, and its way from the command line to the exit status.
#pragma once

#include <wx/app.h>
#include <wx/intl.h>

#include "APP/FilmArgs.h"

class FilmProgress_cls;
class Main_cls;

class FilmApp_cls : public wxApp {
public:
    FilmApp_cls(const FilmArgs_st& args, FilmProgress_cls* pProgress) : mArgs(args), mpCProgress(pProgress) {}
    bool OnInit() override;
    int OnRun() override;
    int OnExit() override;
    void OnAssertFailure(const wxChar* file, int line, const wxChar* function, const wxChar* condition,
                         const wxChar* text) override;

private:
    FilmArgs_st mArgs;
    FilmProgress_cls* mpCProgress;
    wxLocale mLocale;
    Main_cls* mpCMain = nullptr;
};

/// The whole program; the answer is the exit status.
int RunMorentisFilm(int argc, char** argv);
