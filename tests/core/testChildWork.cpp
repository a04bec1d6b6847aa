// What a child did, or why it didn't.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "COMMON/ChildWork.h"

TEST(ChildWork, BringsWhatItWrote) {
    std::vector<int> numbers(300000);
    int changed = 1;
    SharedFile_cls file;
    ASSERT_TRUE(file.IsOpen());
    EXPECT_EQ(ChildEnd::Done, RunInChild(
                                  [&] {
                                      for (size_t i = 0; i < numbers.size(); ++i)
                                          numbers[i] = int(i);
                                      changed = 2;
                                      file.Write(numbers.data(), 1000);
                                      file.Write(numbers.data() + 250, numbers.size() * sizeof(int) - 1000);
                                  },
                                  60, nullptr));
    EXPECT_EQ(1, changed) << "the child has memory of its own";
    ASSERT_TRUE(file.Read(numbers.data(), numbers.size() * sizeof(int)));
    for (size_t i = 0; i < numbers.size(); ++i)
        ASSERT_EQ(int(i), numbers[i]);
    EXPECT_FALSE(file.Read(numbers.data(), 1)) << "there is no more";
}

TEST(ChildWork, FaultsEndTheChildAlone) {
    EXPECT_EQ(ChildEnd::Fault, RunInChild([] { std::abort(); }, 60, nullptr));
    EXPECT_EQ(ChildEnd::Fault, RunInChild([] { kill(getpid(), SIGSEGV); }, 60, nullptr));
    EXPECT_EQ(ChildEnd::Fault, RunInChild([] { throw std::runtime_error("no"); }, 60, nullptr));
    EXPECT_EQ(ChildEnd::Fault, RunInChild(
                                   [] {
                                       for (volatile int turns = 0;; turns = turns + 1) {
                                       }
                                   },
                                   1, nullptr))
        << "without an end";
    EXPECT_EQ(ChildEnd::NoMemory, RunInChild([] { throw std::bad_alloc(); }, 60, nullptr));
}

TEST(ChildWork, AStopEndsIt) {
    std::atomic<bool> bStop{false};
    std::thread hand([&bStop] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        bStop = true;
    });
    EXPECT_EQ(ChildEnd::Stopped, RunInChild(
                                     [] {
                                         while (true)
                                             pause();
                                     },
                                     60, &bStop));
    hand.join();
}
