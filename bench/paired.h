// What benchmarks share that run a work and its peer one after the other in each iteration, so that
// both meet the machine in the same state.
#pragma once

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <functional>

namespace hvbench {

inline double SecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The memory in megabytes that a program had at most.
inline double PeakMegabytes(const rusage& usage) {
  return static_cast<double>(usage.ru_maxrss) / 1024;
}
inline double OwnPeakMegabytes() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return PeakMegabytes(usage);
}

// Measures a pair once an iteration, for the medians of repetitions to be looked at.
inline void Paired(benchmark::internal::Benchmark* pair) {
  pair->Iterations(1)->ReportAggregatesOnly()->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace hvbench
