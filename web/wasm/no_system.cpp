// The module has no files, no threads and no environment: these stand where the C library would ask the system,
// so that nothing but the host's functions is imported.

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "convert/output_target.h"

extern "C" __attribute__((import_module("host"), import_name("milliseconds"))) double hostMilliseconds();

namespace pagerex {

TargetPath splitTargetPath(const std::string&) {
  return {};
}

std::unique_ptr<OutputTarget> makePathTarget(const TargetPath&, const std::string&, const InputSource&,
                                             TargetRefusal& refusal) {
  refusal.code = PAGEREX_RESULT_CANNOT_WRITE;
  return nullptr;
}

}  // namespace pagerex

extern "C" {

int clock_gettime(clockid_t, struct timespec* time) {
  const double now = hostMilliseconds();
  time->tv_sec = static_cast<time_t>(now / 1000);
  time->tv_nsec = static_cast<long>((now - static_cast<double>(time->tv_sec) * 1000) * 1e6);
  return 0;
}

int nanosleep(const struct timespec*, struct timespec*) {
  return 0;
}

int open(const char*, int, ...) {
  errno = ENOENT;
  return -1;
}

int stat(const char*, struct stat*) {
  errno = ENOENT;
  return -1;
}

int fstat(int, struct stat*) {
  errno = EBADF;
  return -1;
}

int close(int) {
  errno = EBADF;
  return -1;
}

ssize_t pread(int, void*, size_t, off_t) {
  errno = EBADF;
  return -1;
}

}  // extern "C"
