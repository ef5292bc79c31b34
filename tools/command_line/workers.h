#pragma once

#include <sys/types.h>

#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "batch.h"
#include "files.h"
#include "worker.h"

namespace cli {

/// One item that has ended, in whatever way.
struct Ended {
  uint32_t item;
  Status status;
  bool isLeftOut;
  std::string sentence;
  std::string line;  ///< of the report; empty if left out
};

/// The children, each of which converts one document after the other. One that dies, or takes too long, costs
/// the document that it was at, and another takes its place.
class Workers {
 public:
  /// `ended` is called for each item, `waiting` at least five times a second.
  Workers(const Batch& batch, std::function<void(const Ended&)> ended, std::function<void()> waiting);
  ~Workers();
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  /// Does the items of these numbers, `count` at a time. Returns the signal that stopped it, or 0. Items that
  /// are not told of as ended were not done.
  int run(const std::vector<uint32_t>& numbers, int count);

 private:
  using Clock = std::chrono::steady_clock;
  struct Child {
    pid_t process = -1;
    Descriptor socket;
    Desk* desk = nullptr;
    std::deque<uint32_t> items;  ///< handed over; the first is the one that it is at
    Clock::time_point begun;     ///< of the first
    bool isEnding = false;       ///< it has been told that there is nothing left
  };

  bool start(Child& child);
  void feed(Child& child);
  void feedAll();
  bool takesMore() const { return stoppedBy_ == 0 && (next_ < numbers_.size() || !returned_.empty()); }
  void wait();
  void receive(Child& child);
  bool take(Child& child, const std::string& message);
  void endLate();
  void bury(Child& child, bool isLate);
  void blame(const Child& child, Status status, const std::string& sentence);
  void stopAll();
  bool anyAlive() const;

  const Batch& batch_;
  const std::function<void(const Ended&)> ended_;
  const std::function<void()> waiting_;
  std::vector<Child> children_;
  Desk* desks_ = nullptr;
  std::vector<uint32_t> numbers_;
  size_t next_ = 0;
  std::vector<uint32_t> returned_;  ///< of children that died before they came to them
  int idleDeaths_ = 0;
  int stoppedBy_ = 0;
  std::string buffer_;
};

}  // namespace cli
