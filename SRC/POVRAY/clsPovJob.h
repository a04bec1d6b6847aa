// One scene that is rendered: the process, the files that it needs beside the scene, and what came of it.
#pragma once

#include <wx/stopwatch.h>
#include <wx/string.h>

#include "POVRAY/clsPovProcess.h"

class PovJob_cls {
public:
    PovJob_cls() = default;
    ~PovJob_cls() { Stop(); }
    PovJob_cls(const PovJob_cls&) = delete;
    PovJob_cls& operator=(const PovJob_cls&) = delete;

    /// From now on the picture gets its name only when it is whole, and is the same at every run: renderers
    /// of radiosity and photons then have one thread.
    void MakeReproducible(bool bOneThread) {
        mbWhole = true;
        mbOneThread = bOneThread;
    }
    /// Render the scene of this absolute name without an ending, whose .ini says how; the picture gets
    /// `ending`. False: it couldn't be begun, and GetError says why.
    bool Start(const wxString& exe, const wxString& base, const wxString& ending);
    bool IsRunning() const { return mProcess.IsRunning(); }
    /// True once, when it ended.
    bool Poll();
    /// End it now; no picture is left that isn't whole.
    void Stop();

    /// Of the last one: why there is no picture, with the renderer's last words; empty when there is one.
    const wxString& GetError() const { return mStrError; }
    int GetStatus() const { return mProcess.GetStatus(); }
    const wxString& GetBase() const { return mStrBase; }
    const wxString& GetPicture() const { return mStrPicture; } ///< its path
    int GetPercent() const { return mProcess.GetPercent(); }
    long GetMillis() const { return mbTimed ? mMillis : mWatch.Time(); } ///< so far, or that it took

    /// Can POV-Ray read such a path on its command line?
    static bool IsPlainPath(const wxString& path);

private:
    bool MakeAlias(const wxString& folder);
    void RemoveAlias();
    void End();
    void TakePicture();

    PovProcess_cls mProcess;
    wxStopWatch mWatch;
    long mMillis = 0;
    bool mbTimed = false;
    bool mbWhole = false;
    bool mbOneThread = false;
    wxString mStrBase;
    wxString mStrEnding;
    wxString mStrPicture;
    long long mOldPicture = 0; ///< when the one that stood there was written; 0: there was none
    wxString mStrAlias;        ///< stands for the base where that is no name for a command line; else empty
    wxString mStrError;
};
