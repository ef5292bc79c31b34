// Conversions that run at once in one process: each writes what it writes alone.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "support/snapshot.h"
#include "threads/converting.h"

using namespace threads_test;
namespace fs = std::filesystem;

namespace {

/// A document, and a way to convert it.
struct Job {
  std::string source;
  const Way* way;
  Outcome alone;  ///< of one thread
};

std::vector<Job> jobsOf(const Sources& sources) {
  std::vector<Job> jobs;
  for (const std::string& source : sources.paths()) {
    for (const Way& way : kWays) jobs.push_back({source, &way, {}});
  }
  return jobs;
}

std::string placeOf(const std::string& folder, size_t job) {
  return folder + "/" + std::to_string(job);
}

Outcome convertTo(const std::string& place, const Job& job) {
  fs::create_directories(place);
  return convert(*job.way, job.source, place + "/out.htm");
}

/// The jobs in an order of each thread's own: from another one on, every second thread backwards.
size_t jobAt(size_t step, size_t thread, size_t threads, size_t jobs) {
  const size_t forward = (step + thread * jobs / threads) % jobs;
  return thread % 2 == 0 ? forward : jobs - 1 - forward;
}

std::string described(const Job& job) {
  return fs::path(job.source).filename().string() + " " + job.way->name;
}

/// All jobs in the order of thread number `thread`, in a folder of its own; tells of what differs from what
/// one thread wrote in `alone`.
std::vector<std::string> convertAll(const std::vector<Job>& jobs, size_t thread, size_t threads,
                                    const std::string& alone) {
  const support::TempFolder mine;
  std::vector<std::string> wrong;
  for (size_t step = 0; step < jobs.size(); ++step) {
    const size_t number = jobAt(step, thread, threads, jobs.size());
    const Job& job = jobs[number];
    const std::string place = placeOf(mine.path(), number);
    const Outcome outcome = convertTo(place, job);
    if (!(outcome == job.alone)) wrong.push_back(described(job) + ": " + testing::PrintToString(outcome));
    const std::string other =
        support::differences(support::snapshotOf(place), support::snapshotOf(placeOf(alone, number)));
    if (!other.empty()) wrong.push_back(described(job) + ": " + other);
    fs::remove_all(place);
  }
  return wrong;
}

}  // namespace

TEST(SideBySide, ThreadsWriteWhatOneWritesAlone) {
  constexpr size_t kThreads = 8, kTold = 5;
  Sources sources;
  sources.addCorpus();
  convertEachOnce(sources);
  const support::TempFolder alone;
  std::vector<Job> jobs = jobsOf(sources);
  for (size_t number = 0; number < jobs.size(); ++number) {
    jobs[number].alone = convertTo(placeOf(alone.path(), number), jobs[number]);
  }
  std::promise<void> gate;
  const std::shared_future<void> opened = gate.get_future().share();
  std::vector<std::vector<std::string>> wrong(kThreads);
  std::vector<std::thread> threads;
  for (size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread, opened] {
      opened.wait();
      wrong[thread] = convertAll(jobs, thread, kThreads, alone.path());
    });
  }
  gate.set_value();
  for (std::thread& thread : threads) thread.join();
  for (size_t thread = 0; thread < kThreads; ++thread) {
    EXPECT_EQ(wrong[thread].size(), 0u) << "thread " << thread << " of " << jobs.size() << " conversions";
    for (size_t i = 0; i < std::min(kTold, wrong[thread].size()); ++i) ADD_FAILURE() << wrong[thread][i];
  }
}
