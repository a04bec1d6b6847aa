// A program that works for this one (renders, imports), as a process of its own that this one looks at from
// time to time. It runs without a shell, and what it says is read without waiting. It ends when this program
// does, however that ends.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include <wx/string.h>

class PovProcess_cls {
public:
    PovProcess_cls() = default;
    ~PovProcess_cls() { Stop(); }
    PovProcess_cls(const PovProcess_cls&) = delete;
    PovProcess_cls& operator=(const PovProcess_cls&) = delete;

    /// Run `words` in `folder`; one that still runs is ended. Empty on success, else why not.
    wxString Start(const std::vector<std::string>& words, const std::string& folder);
    bool IsRunning() const { return mPid > 0; }
    /// Take what it said, and look whether it is done: true once, when it ended.
    bool Poll();
    /// Ask it to end; Poll tells when it has.
    void AskToEnd();
    /// End it now, and what it started.
    void Stop();

    /// Of the last one that ended: its exit status, 128 and the signal, or -1 when Stop ended it.
    int GetStatus() const { return mStatus; }
    /// What the renderer itself says of how far it is, 0 to 100; -1 while it says nothing.
    int GetPercent() const { return mPercent; }
    /// The last lines that it said.
    wxString GetLastLines() const;

private:
    void TakeWords();
    void Close();

    pid_t mPid = -1;
    int mPipe = -1;
    int mStatus = 0;
    int mPercent = -1;
    std::string mSaid; ///< the end of it
};
