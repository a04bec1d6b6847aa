// The same work on several threads at a time.
#pragma once

#include <functional>

/// job(k) for k from 0 to count - 1, each on a thread of its own, 0 on the caller's; back when all are done.
/// Where the system gives no more threads, the caller does their part. What a job throws ends that job, and
/// the first of it reaches the caller when all are done.
void OnThreads(int count, const std::function<void(int)>& job);
