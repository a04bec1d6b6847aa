#include "COMMON/OnThreads.h"

#include <exception>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

void OnThreads(int count, const std::function<void(int)>& job) {
    std::exception_ptr thrown;
    std::mutex mutex;
    const auto guarded = [&](int k) {
        try {
            job(k);
        } catch (...) {
            const std::lock_guard<std::mutex> lock(mutex);
            if (!thrown) thrown = std::current_exception();
        }
    };
    std::vector<std::thread> threads;
    if (count > 1) threads.reserve(static_cast<size_t>(count - 1));
    for (int k = 1; k < count; ++k) {
        try {
            threads.emplace_back(guarded, k);
        } catch (const std::system_error&) {
            guarded(k);
        } catch (const std::bad_alloc&) {
            guarded(k);
        }
    }
    if (count > 0) guarded(0);
    for (std::thread& thread : threads)
        thread.join();
    if (thrown) std::rethrow_exception(thrown);
}
