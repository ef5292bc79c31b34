#include "worker.h"

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "files.h"
#include "report.h"
#include "sized.h"

namespace cli {

namespace {

/// Other than 0 when this child is to end.
int stopped = 0;

void stop(int) {
  pagerex_cancel(&stopped);
}

void setSignals() {
  struct sigaction action = {};
  action.sa_handler = stop;  // no SA_RESTART: a child that waits for work is to wake
  sigaction(SIGTERM, &action, nullptr);
  std::signal(SIGINT, SIG_IGN);  // a terminal sends it to all; the parent decides
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Files up to this size are read before they are converted, so that they are read once.
constexpr uint64_t kLargestRead = uint64_t{64} << 20;

/// A second fence, behind the library's own count: what the process has, what a document may take, and what
/// stands beside it.
void limitMemory(uint64_t memory) {
  constexpr uint64_t kBeside = kLargestRead + (uint64_t{16} << 20);
  unsigned long pages = 0;
  FILE* const file = std::fopen("/proc/self/statm", "re");
  if (!file) return;
  const bool isRead = std::fscanf(file, "%lu", &pages) == 1;
  std::fclose(file);
  const uint64_t most = uint64_t{pages} * static_cast<uint64_t>(sysconf(_SC_PAGESIZE)) + memory + kBeside;
  rlimit limit;
  if (!isRead || getrlimit(RLIMIT_AS, &limit) != 0) return;
  limit.rlim_cur = static_cast<rlim_t>(std::min<uint64_t>(most, limit.rlim_cur));
  setrlimit(RLIMIT_AS, &limit);
}

class Worker {
 public:
  Worker(int socket, const Batch& batch, Desk& desk) : socket_(socket), batch_(batch), desk_(desk) {}

  void run() {
    uint32_t number;
    while (!stopped) {
      const ssize_t length = recv(socket_, &number, sizeof number, 0);
      if (length < 0 && errno == EINTR) continue;
      if (length != sizeof number || number >= batch_.items.size()) return;
      if (!answer(number)) return;
    }
  }

 private:
  bool answer(uint32_t number) {
    const auto start = std::chrono::steady_clock::now();
    const Item& item = batch_.items[number];
    begin(number);
    Outcome outcome;
    Reply reply = {.item = number};
    std::string line;
    reply.isLeftOut = !convert(item, outcome);
    if (stopped && result_.code == PAGEREX_RESULT_CANCELED) return false;
    reply.status = reply.isLeftOut ? item.earlier.status : outcome.status;
    std::strncpy(reply.sentence, outcome.sentence.c_str(), sizeof reply.sentence - 1);
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    outcome.milliseconds = taken.count();
    if (!reply.isLeftOut) line = reportLine(batch_, item, outcome);
    // What a document has used up may be missing for good: another process does the next one.
    return send(reply, line) && reply.status != Status::kMemory;
  }

  void begin(uint32_t number) {
    desk_.kind = PAGEREX_KIND_UNKNOWN;
    desk_.bytes = 0;
    desk_.hasHash = false;
    desk_.item = number;
    result_.code = PAGEREX_RESULT_OK;
  }

  /// False if the report has it already.
  bool convert(const Item& item, Outcome& outcome) {
    struct stat info;
    const Descriptor file = openRegular(item.path, info, outcome.sentence);
    if (!file) return true;
    const bool isSmall = static_cast<uint64_t>(info.st_size) <= kLargestRead;
    desk_.bytes = static_cast<uint64_t>(info.st_size);
    if ((isSmall && !read(file.get())) || (batch_.hasReport && !hash(file.get(), isSmall))) {
      outcome.sentence = std::strerror(errno);
      return true;
    }
    desk_.hasHash = batch_.hasReport;
    if (isDone(item)) return false;
    desk_.kind = isSmall ? pagerex_detect(content_.data(), content_.size()) : detectFile(item.path, info);
    auto input = sized<pagerex_input>();
    if (isSmall) {
      input.data = content_.data();
      input.length = content_.size();
    } else {
      input.path = item.path.c_str();
    }
    convert(input, item);
    tell(outcome);
    return true;
  }

  /// Takes longer than most conversions: only for a report.
  bool hash(int file, bool isRead) {
    if (!isRead) return sha256OfFile(file, desk_.hash);
    desk_.hash = sha256Of(content_);
    return true;
  }

  /// What the file holds, into `content_`.
  bool read(int file) {
    content_.resize(desk_.bytes);
    size_t length = 0;
    while (length < content_.size()) {
      const ssize_t count = ::read(file, content_.data() + length, content_.size() - length);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return false;
      if (count == 0) break;
      length += static_cast<size_t>(count);
    }
    content_.resize(length);
    desk_.bytes = length;
    return true;
  }

  bool isDone(const Item& item) const {
    if (!item.earlier.isThere || item.earlier.sha256 != spelled(desk_.hash)) return false;
    if (isFailure(item.earlier.status)) return true;
    return item.earlier.output == item.output && access(item.output.c_str(), F_OK) == 0;
  }

  void convert(const pagerex_input& input, const Item& item) {
    auto limits = sized<pagerex_limits>();
    limits.memory = batch_.memory;
    limits.deadline_ms = batch_.timeoutMs - batch_.timeoutMs / 10;  // so that most end by themselves
    limits.cancel = &stopped;
    auto output = sized<pagerex_output>();
    output.path = item.output.c_str();
    result_.size = sizeof result_;
    pagerex_convert(&input, &limits, &batch_.asked, &output, &result_);
  }

  void tell(Outcome& outcome) const {
    outcome.status = statusOf(result_);
    outcome.sentence = result_.sentence;
    outcome.kind = result_.kind == PAGEREX_KIND_UNKNOWN ? desk_.kind : result_.kind;
    outcome.bytes = desk_.bytes;
    outcome.hasHash = desk_.hasHash;
    outcome.hash = desk_.hash;
    outcome.result = &result_;
  }

  bool send(const Reply& reply, const std::string& line) const {
    iovec parts[] = {{const_cast<Reply*>(&reply), sizeof reply},
                     {const_cast<char*>(line.data()), line.size()}};
    msghdr message = {};
    message.msg_iov = parts;
    message.msg_iovlen = 2;
    ssize_t sent;
    do {
      sent = sendmsg(socket_, &message, MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    return sent >= 0;
  }

  const int socket_;
  const Batch& batch_;
  Desk& desk_;
  std::string content_;
  pagerex_result result_ = {};
};

}  // namespace

void work(int socket, const Batch& batch, Desk& desk) {
  setSignals();
  if (batch.memory) limitMemory(batch.memory);
  Worker(socket, batch, desk).run();
  _exit(0);
}

}  // namespace cli
