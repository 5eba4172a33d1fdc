// A fleet of 1,000 printers, each on a port of its own, printed to by worker processes: a worker
// takes jobs from a queue in as many threads as it has calls under way, and each job is one call of
// HvDatSendFile. A printer gets its next job when it has taken the one before; one that has failed
// gets no more. "bad" printers of each kind stand between the good ones: slow ones, ones that refuse,
// ones that never read.
//
// Each iteration runs the library and, where all printers are good, a worker beside it that opens,
// connects, writes and closes by itself. The time shown is that of the good printers' jobs with the
// library. Counters: jobs_per_s, job_ms and job99_ms (median and 99th percentile of a call), all of
// the good printers; slowest_s, the longest call of any printer; worker_MB, the most memory of a
// worker; cpu_us, the workers' processor time for a call; to_bare, the time over that of the bare
// workers. Every printer that reads has to have got exactly its bytes, or the program fails.

#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "fleet/printers.h"
#include "hvapi.h"
#include "paired.h"

namespace {

using fleet::Manner;
using fleet::Need;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::size_t PrinterCount = 1000;
constexpr int JobsOfPrinter = 5;
// Seconds that a printer has to take a connection and to end one, and a tenth of those for a byte.
constexpr const char* Timeout = "1";

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// ---- A worker

// Descriptors that a worker has its queue and its reports at. Not standard output: the library
// writes there what a failed printer did.
constexpr int QueueEnd = 3;
constexpr int ReportEnd = 4;

struct Order {
  uint16_t printer;
  uint16_t port;
};

struct Report {
  uint16_t printer;
  uint16_t code;
  float seconds;
};

using Send = uint32_t (*)(const Order& order, const std::string& file);

uint32_t SendByLibrary(const Order& order, const std::string& file) {
  const std::string name = fleet::JobName(order.printer);
  HvJobInfo job = {};
  job.flags = JOB_FLAG_PJL;
  job.emulation = JOB_EMULATION_PCL;
  job.copies = 1;
  job.jobName = name.c_str();
  const std::string destination = "socket://127.0.0.1:" + std::to_string(order.port);
  return HvDatSendFile(file.c_str(), destination.c_str(), &job, 0);
}

uint32_t SendBare(const Order& order, const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::string bytes = fleet::FrameBefore(order.printer) +
                            std::string(std::istreambuf_iterator<char>(stream), {}) +
                            fleet::FrameBehind();
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(order.port);
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  Need(connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0, "a printer");
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t taken = send(socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    Need(taken > 0, "a printer that reads");
    sent += static_cast<std::size_t>(taken);
  }
  shutdown(socket, SHUT_WR);
  char end;
  Need(recv(socket, &end, 1, 0) == 0, "a printer that closes");
  close(socket);
  return HV_OK;
}

std::string FileOf(const fs::path& folder, std::size_t printer) {
  return (folder / std::to_string(printer % fleet::Files)).string();
}

int RunWorker(Send send, int calls, const fs::path& folder) {
  const auto work = [send, &folder] {
    Order order;
    while (read(QueueEnd, &order, sizeof order) == sizeof order) {
      const Clock::time_point start = Clock::now();
      const uint32_t code = send(order, FileOf(folder, order.printer));
      const Report report = {order.printer, static_cast<uint16_t>(code),
                             static_cast<float>(SecondsSince(start))};
      Need(write(ReportEnd, &report, sizeof report) == sizeof report, "the report of a job");
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < calls; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
  return 0;
}

// ---- The site

struct Pipe {
  Pipe() { Need(pipe2(ends, O_CLOEXEC) == 0, "a pipe"); }
  int ends[2];
};

std::vector<pid_t> StartWorkers(const char* way, int count, int calls, const fs::path& folder,
                                const Pipe& queue, const Pipe& reports) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  // Above those that they become.
  const int from = fcntl(queue.ends[0], F_DUPFD_CLOEXEC, 10);
  const int to = fcntl(reports.ends[1], F_DUPFD_CLOEXEC, 10);
  posix_spawn_file_actions_adddup2(&actions, from, QueueEnd);
  posix_spawn_file_actions_adddup2(&actions, to, ReportEnd);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  std::vector<std::string> words = {"fleet_bench", way, std::to_string(calls), folder.string()};
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  std::vector<pid_t> workers(static_cast<std::size_t>(count));
  for (pid_t& worker : workers) {
    Need(posix_spawn(&worker, "/proc/self/exe", &actions, nullptr, arguments.data(), environ) == 0,
         "a worker");
  }
  posix_spawn_file_actions_destroy(&actions);
  for (const int end : {from, to, queue.ends[0], reports.ends[1]}) close(end);
  return workers;
}

struct Run {
  double seconds = 0;             // until the good printers had all their jobs
  std::vector<double> goodCalls;  // how long each of their calls took, in order
  int calls = 0;
  double slowest = 0;
  double workerMegabytes = 0;
  double workerSeconds = 0;  // processor time of all workers
  int failures = 0;
};

double Percentile(const std::vector<double>& sorted, double share) {
  return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

// Sends all jobs of a fleet. Each worker ends when the queue is closed and empty.
Run Drive(const char* way, int workerCount, int calls, const std::vector<Manner>& manners,
          const fs::path& folder) {
  Run run;
  fleet::Printers printers(manners);
  const Pipe queue;
  const Pipe reports;
  const std::vector<pid_t> workers = StartWorkers(way, workerCount, calls, folder, queue, reports);
  const auto order = [&](std::size_t printer) {
    const Order next = {static_cast<uint16_t>(printer), printers.Port(printer)};
    Need(write(queue.ends[1], &next, sizeof next) == sizeof next, "the queue");
  };

  const Clock::time_point start = Clock::now();
  for (std::size_t i = 0; i < manners.size(); ++i) order(i);
  std::vector<int> left(manners.size(), JobsOfPrinter);
  for (std::size_t busy = manners.size(); busy > 0;) {
    Report report;
    Need(read(reports.ends[0], &report, sizeof report) == sizeof report, "a report");
    const bool good = manners[report.printer] == Manner::Quick;
    if (good) {
      run.goodCalls.push_back(report.seconds);
      run.seconds = SecondsSince(start);
    }
    ++run.calls;
    run.slowest = std::max(run.slowest, double{report.seconds});
    if (report.code != HV_OK) ++run.failures;
    if (report.code == HV_OK && --left[report.printer] > 0) {
      order(report.printer);
    } else {
      --busy;
    }
  }
  close(queue.ends[1]);
  for (const pid_t worker : workers) {
    int status = -1;
    rusage usage = {};
    Need(wait4(worker, &status, 0, &usage) == worker && status == 0, "the end of a worker");
    run.workerMegabytes = std::max(run.workerMegabytes, hvbench::PeakMegabytes(usage));
    for (const timeval& time : {usage.ru_utime, usage.ru_stime}) {
      run.workerSeconds +=
          static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    }
  }
  close(reports.ends[0]);

  const std::vector<fleet::Printers::Received> received = printers.Finish();
  for (std::size_t i = 0; i < manners.size(); ++i) {
    const bool reads = manners[i] == Manner::Quick || manners[i] == Manner::Slow;
    Need(received[i].whole == (reads ? JobsOfPrinter : 0) && received[i].wrong == 0,
         "a printer with exactly its bytes");
  }
  std::sort(run.goodCalls.begin(), run.goodCalls.end());
  return run;
}

void Fleet(benchmark::State& state) {
  const auto workers = static_cast<int>(state.range(0));
  const auto calls = static_cast<int>(state.range(1));
  const auto bad = static_cast<std::size_t>(state.range(2));
  std::vector<Manner> manners(PrinterCount, Manner::Quick);
  for (std::size_t i = 0; i < 3 * bad; ++i) {
    constexpr Manner Bad[] = {Manner::Slow, Manner::Refusing, Manner::Silent};
    manners[i * PrinterCount / (3 * bad)] = Bad[i % 3];
  }
  std::string name = (fs::temp_directory_path() / "fleet_benchXXXXXX").string();
  Need(mkdtemp(name.data()) != nullptr, "a folder");
  const fs::path folder = name;
  for (std::size_t i = 0; i < fleet::Files; ++i) {
    std::ofstream(FileOf(folder, i), std::ios::binary) << fleet::FileBytes(i);
  }
  setenv("HVAPI_TIMEOUT", Timeout, 1);

  for ([[maybe_unused]] auto _ : state) {
    const Run run = Drive("library", workers, calls, manners, folder);
    state.SetIterationTime(run.seconds);
    state.counters["jobs_per_s"] = static_cast<double>(run.goodCalls.size()) / run.seconds;
    state.counters["job_ms"] = Percentile(run.goodCalls, 0.5) * 1000;
    state.counters["job99_ms"] = Percentile(run.goodCalls, 0.99) * 1000;
    state.counters["slowest_s"] = run.slowest;
    state.counters["worker_MB"] = run.workerMegabytes;
    state.counters["cpu_us"] = run.workerSeconds / run.calls * 1e6;
    state.counters["failures"] = run.failures;
    if (bad == 0) {
      state.counters["to_bare"] =
          run.seconds / Drive("bare", workers, calls, manners, folder).seconds;
    }
  }
  fs::remove_all(folder);
}

// All printers at once; as many as a site would serve at a time; one call a process; and fewer calls
// than there are printers that hold them up.
BENCHMARK(Fleet)
    ->ArgNames({"workers", "calls", "bad"})
    ->ArgsProduct({{4}, {250, 32, 4}, {0, 10}})
    ->ArgsProduct({{64}, {1}, {0, 10}})
    ->Repetitions(3)
    ->Apply(hvbench::Paired);

}  // namespace

int main(int count, char** words) {
  if (count == 4) {
    const bool bare = std::string(words[1]) == "bare";
    return RunWorker(bare ? SendBare : SendByLibrary, std::atoi(words[2]), words[3]);
  }
  benchmark::Initialize(&count, words);
  if (benchmark::ReportUnrecognizedArguments(count, words)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
