#include "progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace cli {

namespace {

bool isTerminal() {
  const char* const kind = std::getenv("TERM");
  return isatty(STDERR_FILENO) && (!kind || std::strcmp(kind, "dumb") != 0);
}

int columns() {
  winsize size = {};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

/// "1:02:03", "2:03" or "3 s".
std::string timeText(double seconds) {
  char text[48];
  const auto whole = static_cast<long long>(std::ceil(seconds));
  if (whole < 60)
    std::snprintf(text, sizeof text, "%lld s", whole);
  else if (whole < 3600)
    std::snprintf(text, sizeof text, "%lld:%02lld", whole / 60, whole % 60);
  else
    std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60, whole % 60);
  return text;
}

std::string rateText(double perSecond) {
  char text[48];
  std::snprintf(text, sizeof text, perSecond < 10 ? "%.1f a second" : "%.0f a second", perSecond);
  return text;
}

}  // namespace

Progress::Progress(size_t total) : total_(total), isTerminal_(isTerminal()) {}

void Progress::count(Status status, bool isLeftOut) {
  ++ended_;
  ++counts_[static_cast<size_t>(status)];
  if (isLeftOut) ++leftOut_;
}

double Progress::perSecond() const {
  return static_cast<double>(ended_ - leftOut_) / std::max(seconds(), 1e-6);
}

void Progress::show() {
  constexpr std::chrono::milliseconds kPause(100);
  constexpr int kWidest = 40;
  if (!isTerminal_ || Clock::now() < shown_ + kPause) return;
  shown_ = Clock::now();
  const double done = total_ ? static_cast<double>(ended_) / static_cast<double>(total_) : 1;
  const double rate = static_cast<double>(ended_) / std::max(seconds(), 1e-6);
  std::string text = std::to_string(ended_) + "/" + std::to_string(total_) + "  " + rateText(rate);
  if (ended_ > 0) text += ", " + timeText(static_cast<double>(total_ - ended_) / rate) + " left";
  const int width = std::min(kWidest, columns() - static_cast<int>(text.size()) - 5);
  std::string bar;
  for (int i = 0; i < width; ++i) bar += i < done * width ? '#' : '.';
  if (width > 0) text = "[" + bar + "] " + text;
  std::fprintf(stderr, "\r%s\x1b[K", text.c_str());
  isDrawn_ = true;
}

void Progress::clear() {
  if (isDrawn_) std::fputs("\r\x1b[K", stderr);
  isDrawn_ = false;
}

bool Progress::anyFailed() const {
  for (int i = 0; i < kStatusCount; ++i) {
    if (counts_[i] && isFailure(static_cast<Status>(i))) return true;
  }
  return false;
}

std::string Progress::summary() const {
  char time[32];
  std::snprintf(time, sizeof time, "%.2f s", seconds());
  std::string text = std::to_string(ended_) + (ended_ == 1 ? " file in " : " files in ") + time;
  if (ended_ > leftOut_) text += ", " + rateText(perSecond());
  const char* separator = ": ";
  for (int i = 0; i < kStatusCount; ++i) {
    if (!counts_[i]) continue;
    text += separator + std::to_string(counts_[i]) + " " + nameOf(static_cast<Status>(i));
    separator = ", ";
  }
  if (leftOut_) text += "; " + std::to_string(leftOut_) + " of them done before";
  if (ended_ < total_) text += "; " + std::to_string(total_ - ended_) + " not done";
  return text;
}

}  // namespace cli
