// Calls from several threads at once.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace hvtest {

// Calls `use` again and again in four threads, each with a number of its own. It tells whether all
// was well; what a test may not do in other threads is counted here.
inline void InFourThreads(int rounds, const std::function<bool(int thread)>& use) {
  std::atomic<int> faults = 0;
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&faults, &use, rounds, number] {
      for (int round = 0; round < rounds; ++round) faults += use(number) ? 0 : 1;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(faults, 0);
}

}  // namespace hvtest
