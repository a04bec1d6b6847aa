// Work on threads, also where the system gives none.
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <system_error>
#include <thread>

#include <gtest/gtest.h>

#include "COMMON/OnThreads.h"

namespace {

constexpr int kJobs = 4;

/// Each job once, however many threads there are.
bool DoesEachOnce() {
    std::atomic<int> done[kJobs] = {};
    OnThreads(kJobs, [&done](int k) { ++done[k]; });
    for (const auto& count : done)
        if (count.load() != 1) return false;
    return true;
}

/// Ends with 0 when all was done without any thread, with 2 when this machine gives threads to anybody.
[[noreturn]] void WorkWithoutThreads() {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setuid(kNobody) != 0) std::_Exit(2); // no limit holds for root
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_NPROC, &none);
    try {
        std::thread([] {}).join();
        std::_Exit(2);
    } catch (const std::system_error&) {
    }
    std::_Exit(DoesEachOnce() ? 0 : 1);
}

} // namespace

TEST(OnThreads, WhatAJobThrowsReachesTheCaller) {
    std::atomic<int> done{0};
    const auto job = [&done](int k) {
        if (k % 2 == 1) throw std::bad_alloc();
        ++done;
    };
    EXPECT_THROW(OnThreads(kJobs, job), std::bad_alloc);
    EXPECT_EQ(done.load(), kJobs / 2) << "the others do theirs";
}

TEST(OnThreads, DoesAllWithThreadsAndWithout) {
    EXPECT_TRUE(DoesEachOnce());
    OnThreads(0, [](int) { FAIL(); });
    EXPECT_EXIT(
        WorkWithoutThreads(),
        [](int status) {
            return WIFEXITED(status) && (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == 2);
        },
        "");
}
