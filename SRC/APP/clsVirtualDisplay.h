// An X display that nobody sees, for as long as the object lives: Xvfb, on a number of its own, which only
// this process may use.
#pragma once

#include <sys/types.h>

#include <chrono>
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
    /// success, else what is missing. A server that ends at once is followed by another, a few times. No
    /// other thread may run.
    std::string Start(const std::string& folder);
    /// Whoever still uses it loses it.
    void Stop();

private:
    using Clock = std::chrono::steady_clock;
    enum class Outcome {
        Runs,
        Ended,     ///< another one may do better
        Impossible ///< no server, or no means to start one
    };
    bool MakeKey(const std::string& folder);
    /// One server; unless it runs, `pWords` tells why.
    Outcome StartServer(Clock::time_point end, std::string* pWords);
    /// The number that the server writes when it is ready; empty when it ended before, never does until
    /// `end`, or the film is stopped.
    std::string ReadNumber(int pipe, Clock::time_point end) const;
    [[noreturn]] static void Become(int pipe, int words, const std::string& key);

    pid_t mPid = -1;
    InUse_cls mKeyInUse;
    std::string mKeyFile; ///< what the server and its clients know each other by
};
