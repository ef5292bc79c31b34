#include "batch.h"

#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>

#include "formats.h"
#include "inputs.h"
#include "messages.h"
#include "option_table.h"
#include "progress.h"
#include "report.h"
#include "result_names.h"
#include "stop_signals.h"
#include "workers.h"

namespace cli {

namespace {

Batch batchOf(const Request& request) {
  Batch batch;
  batch.format = request.format.empty() ? formatByDefault() : formatNamed(request.format);
  batch.asked = optionsOf(request, *batch.format);
  batch.timeoutMs = request.timeoutMs;
  batch.memory = request.memory;
  batch.hasReport = !request.report.empty();
  batch.options = wordsFor(request, *batch.format);
  batch.limits =
      "timeout_ms=" + std::to_string(request.timeoutMs) + " memory=" + std::to_string(request.memory);
  return batch;
}

int coreCount() {
  cpu_set_t cores;
  return sched_getaffinity(0, sizeof cores, &cores) == 0 ? std::max(CPU_COUNT(&cores), 1) : 1;
}

/// A run from its first file to its sum.
class Run {
 public:
  Run(const Request& request, Batch batch)
      : request_(request), batch_(std::move(batch)), progress_(batch_.items.size()) {}

  int toTheEnd() {
    if (const std::string wrong = report_.open(request_.report); !wrong.empty())
      return fail(kUsageError, wrong);
    const std::vector<uint32_t> numbers = refuseSome();
    const int signal = Workers(
                           batch_, [this](const Ended& ended) { take(ended); }, [this] { progress_.show(); })
                           .run(numbers, request_.jobs ? request_.jobs : coreCount());
    progress_.clear();
    fail(0, progress_.summary());
    if (!report_.isWhole()) fail(0, request_.report + ": could not be written to its end");
    if (signal) endBy(signal);
    return progress_.anyFailed() || !report_.isWhole() || ended_ < batch_.items.size() ? kSomeFailed
                                                                                       : kSuccess;
  }

 private:
  /// Ends the items that are not tried; returns the numbers of the others.
  std::vector<uint32_t> refuseSome() {
    std::vector<uint32_t> numbers;
    for (uint32_t number = 0; number < batch_.items.size(); ++number) {
      const Item& item = batch_.items[number];
      const Outcome outcome = {.status = Status::kRefused, .sentence = item.refusal};
      if (item.refusal.empty())
        numbers.push_back(number);
      else
        take({number, Status::kRefused, false, item.refusal, reportLine(batch_, item, outcome)});
    }
    return numbers;
  }

  void take(const Ended& ended) {
    ++ended_;
    progress_.count(ended.status, ended.isLeftOut);
    if (!ended.isLeftOut) report_.append(ended.line);
    if (!isFailure(ended.status) || ended.isLeftOut) return;
    progress_.clear();
    fail(0, shown(batch_.items[ended.item].path) + ": " + shown(ended.sentence));
  }

  const Request& request_;
  const Batch batch_;
  Report report_;
  Progress progress_;
  size_t ended_ = 0;
};

}  // namespace

int convertManyFiles(const Request& request) {
  std::vector<Input> inputs;
  if (const std::string wrong = collectInputs(request, request.output, inputs); !wrong.empty())
    return fail(kUsageError, wrong);
  Batch batch = batchOf(request);
  batch.items = nameResults(inputs, request.output, *batch.format);
  if (const std::string wrong = prepareFolders(request.output, batch.items); !wrong.empty())
    return fail(kUsageError, wrong);
  if (request.resume) readEarlier(request.report, batch);
  return Run(request, std::move(batch)).toTheEnd();
}

}  // namespace cli
