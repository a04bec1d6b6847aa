// An X display that nobody sees, for as long as the object lives: Xvfb, on a number of its own, which only
// this process may use.
#pragma once

#include <sys/types.h>

#include <string>

#include "COMMON/Leftovers.h"

class VirtualDisplay_cls {
public:
    VirtualDisplay_cls() = default;
    ~VirtualDisplay_cls() { Stop(); }
    VirtualDisplay_cls(const VirtualDisplay_cls&) = delete;
    VirtualDisplay_cls& operator=(const VirtualDisplay_cls&) = delete;

    /// Can the display that DISPLAY names be used? One that doesn't answer for ten seconds can't.
    static bool IsThereOne();
    /// Start one and name it in DISPLAY; `folder` takes its key where there is no temporary folder. Empty on
    /// success, else what is missing. No other thread may run.
    std::string Start(const std::string& folder);
    /// Whoever still uses it loses it.
    void Stop();

private:
    bool MakeKey(const std::string& folder);
    /// The number that the server writes when it is ready; empty when it ended before, never does, or the
    /// film is stopped.
    std::string ReadNumber(int pipe) const;
    [[noreturn]] static void Become(int pipe, int words, const std::string& key);

    pid_t mPid = -1;
    InUse_cls mKeyInUse;
    std::string mKeyFile; ///< what the server and its clients know each other by
};
