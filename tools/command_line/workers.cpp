#include "workers.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>

#include "messages.h"
#include "report.h"
#include "stop_signals.h"
#include "unfinished.h"

namespace cli {

namespace {

/// A child has a second item at hand, so that it need not wait for the parent.
constexpr size_t kMostItems = 2;
constexpr size_t kLargestMessage = size_t{512} << 10;
/// So many children may end one after the other without having come to any document.
constexpr int kMostIdleDeaths = 20;
constexpr std::chrono::milliseconds kShow(200);
/// What a child may take to end, once it is asked to.
constexpr std::chrono::seconds kGrace(5);

}  // namespace

Workers::Workers(const Batch& batch, std::function<void(const Ended&)> ended, std::function<void()> waiting)
    : batch_(batch), ended_(std::move(ended)), waiting_(std::move(waiting)), buffer_(kLargestMessage, '\0') {}

Workers::~Workers() {
  if (desks_) munmap(desks_, children_.size() * sizeof(Desk));
}

int Workers::run(const std::vector<uint32_t>& numbers, int count) {
  numbers_ = numbers;
  children_.resize(std::min(numbers.size(), static_cast<size_t>(count)));
  if (children_.empty()) return 0;
  void* const shared = mmap(nullptr, children_.size() * sizeof(Desk), PROT_READ | PROT_WRITE,
                            MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) return fail(0, "no memory is left");
  desks_ = static_cast<Desk*>(shared);
  const StopSignals signals;
  for (size_t i = 0; i < children_.size(); ++i) children_[i].desk = new (desks_ + i) Desk;
  for (;;) {
    feedAll();
    if (!anyAlive()) break;
    wait();
    endLate();
    waiting_();
    if (stoppedBy_ == 0 && (stoppedBy_ = StopSignals::received()) != 0) stopAll();
  }
  if (takesMore() && idleDeaths_ < kMostIdleDeaths)
    fail(0, std::string("no process: ") + std::strerror(errno));
  return stoppedBy_;
}

bool Workers::anyAlive() const {
  return std::any_of(children_.begin(), children_.end(),
                     [](const Child& child) { return child.process > 0; });
}

// Work is handed out.

void Workers::feedAll() {
  for (Child& child : children_) {
    if (child.process < 0 && takesMore() && idleDeaths_ < kMostIdleDeaths && !start(child)) break;
    if (child.process > 0) feed(child);
  }
}

bool Workers::start(Child& child) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return false;
  const pid_t parent = getpid();
  child.desk->item = Desk::kNothing;
  child.isEnding = false;
  child.process = fork();
  if (child.process == 0) {
    // The parent's ends of the others would keep those from seeing that the parent is gone.
    for (Child& other : children_) other.socket.reset();
    close(ends[0]);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(0);
    work(ends[1], batch_, *child.desk);
  }
  close(ends[1]);
  child.socket = Descriptor(ends[0]);
  if (child.process > 0) return true;
  child.socket.reset();
  return false;
}

void Workers::feed(Child& child) {
  while (!child.isEnding && child.items.size() < kMostItems && takesMore()) {
    uint32_t number;
    if (returned_.empty()) {
      number = numbers_[next_++];
    } else {
      number = returned_.back();
      returned_.pop_back();
    }
    if (child.items.empty()) child.begun = Clock::now();
    child.items.push_back(number);
    // One that has died is found out where it is listened to.
    if (send(child.socket.get(), &number, sizeof number, MSG_NOSIGNAL) < 0) break;
  }
  if (!child.items.empty() || child.isEnding) return;
  child.isEnding = true;
  shutdown(child.socket.get(), SHUT_WR);
}

// Results come in.

void Workers::wait() {
  std::vector<pollfd> sockets;
  Clock::duration pause = kShow;
  for (const Child& child : children_) {
    sockets.push_back({child.socket.get(), POLLIN, 0});
    if (!batch_.timeoutMs || child.items.empty()) continue;
    const Clock::duration left = child.begun + std::chrono::milliseconds(batch_.timeoutMs) - Clock::now();
    pause = std::clamp(left, Clock::duration::zero(), pause);
  }
  const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(pause).count();
  const timespec time = {.tv_sec = 0, .tv_nsec = static_cast<long>(nanoseconds)};
  if (ppoll(sockets.data(), sockets.size(), &time, StopSignals::maskOutside()) <= 0) return;
  for (size_t i = 0; i < children_.size(); ++i) {
    if (sockets[i].revents) receive(children_[i]);
  }
}

void Workers::receive(Child& child) {
  const ssize_t length = recv(child.socket.get(), buffer_.data(), buffer_.size(), 0);
  // A child that ends before it has taken all of its work is told of in front of its last answer.
  if (length < 0 && (errno == EINTR || errno == ECONNRESET)) return;
  if (length > 0 && take(child, buffer_.substr(0, static_cast<size_t>(length)))) return;
  if (length > 0) kill(child.process, SIGKILL);  // it talks nonsense
  bury(child, false);
}

/// False for what no sound child sends.
bool Workers::take(Child& child, const std::string& message) {
  Reply reply;
  if (message.size() < sizeof reply || child.items.empty()) return false;
  std::memcpy(static_cast<void*>(&reply), message.data(), sizeof reply);
  const std::string line = message.substr(sizeof reply);
  const bool isLine = reply.isLeftOut ? line.empty() : line.find('\n') == line.size() - 1;
  if (reply.item != child.items.front() || static_cast<int>(reply.status) >= kStatusCount || !isLine)
    return false;
  reply.sentence[sizeof reply.sentence - 1] = '\0';
  child.items.pop_front();
  child.begun = Clock::now();
  idleDeaths_ = 0;
  if (stoppedBy_ == 0) feed(child);
  ended_({reply.item, reply.status, reply.isLeftOut, reply.sentence, line});
  return true;
}

// Children go.

void Workers::endLate() {
  if (!batch_.timeoutMs) return;
  for (Child& child : children_) {
    if (child.process < 0 || child.items.empty()) continue;
    if (Clock::now() < child.begun + std::chrono::milliseconds(batch_.timeoutMs)) continue;
    kill(child.process, SIGKILL);
    bury(child, true);
  }
}

void Workers::bury(Child& child, bool isLate) {
  int status = 0;
  while (waitpid(child.process, &status, 0) < 0 && errno == EINTR) continue;
  const bool hasBegun = !child.items.empty() && child.desk->item == child.items.front();
  if (hasBegun) removeUnfinished(batch_.items[child.items.front()].output, child.process);
  child.socket.reset();
  child.process = -1;
  if (stoppedBy_ != 0 || child.items.empty()) return child.items.clear();
  if (hasBegun) {
    const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    if (isLate)
      blame(child, Status::kTimeout, "It took longer than it was given.");
    else
      blame(child, Status::kCrash,
            signal ? std::string("The conversion was ended by a signal: ") + strsignal(signal) + "."
                   : "The conversion ended its process.");
    child.items.pop_front();
  } else if (++idleDeaths_ == kMostIdleDeaths) {
    fail(0, "processes end before they come to a document");
  }
  returned_.insert(returned_.end(), child.items.rbegin(), child.items.rend());
  child.items.clear();
}

void Workers::blame(const Child& child, Status status, const std::string& sentence) {
  const Item& item = batch_.items[child.items.front()];
  Outcome outcome = {.status = status, .sentence = sentence};
  outcome.kind = child.desk->kind;
  outcome.bytes = child.desk->bytes;
  outcome.hasHash = child.desk->hasHash;
  outcome.hash = child.desk->hash;
  outcome.milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - child.begun).count();
  ended_({child.items.front(), status, false, sentence, reportLine(batch_, item, outcome)});
}

/// Asks all to end, and ends those that do not. What they finish by then counts.
void Workers::stopAll() {
  const Clock::time_point last = Clock::now() + kGrace;
  for (const Child& child : children_) {
    if (child.process > 0) kill(child.process, SIGTERM);
  }
  while (anyAlive() && Clock::now() < last) wait();
  for (Child& child : children_) {
    if (child.process < 0) continue;
    kill(child.process, SIGKILL);
    bury(child, false);
  }
}

}  // namespace cli
