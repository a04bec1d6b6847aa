#include "COMMON/OnThreads.h"

#include <system_error>
#include <thread>
#include <vector>

void OnThreads(int count, const std::function<void(int)>& job) {
    std::vector<std::thread> threads;
    for (int k = 1; k < count; ++k) {
        try {
            threads.emplace_back(job, k);
        } catch (const std::system_error&) {
            job(k);
        }
    }
    if (count > 0) job(0);
    for (std::thread& thread : threads)
        thread.join();
}
