// The module has no files, no threads and no environment: these stand where the C library would ask the
// system, so that nothing but the host's functions is imported.

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "convert/output_target.h"

#define IMPORT(name) extern "C" __attribute__((import_module("host"), import_name(#name)))

IMPORT(milliseconds) double hostMilliseconds();
IMPORT(number) double hostNumber(const char* text);

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

namespace {

int failWith(int error) {
  errno = error;
  return -1;
}

}  // namespace

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

// The C library's own goes by numbers of 128 bits, which machines do not have and bring 10 KB along. Of the
// three, which stand together there, the library calls the first one, for whole texts.

double strtod(const char* text, char**) {
  return hostNumber(text);
}
float strtof(const char* text, char**) {
  return static_cast<float>(hostNumber(text));
}
long double strtold(const char* text, char**) {
  return hostNumber(text);
}

// No path leads anywhere, and no descriptor is open.

int open(const char*, int, ...) {
  return failWith(ENOENT);
}
int openat(int, const char*, int, ...) {
  return failWith(ENOENT);
}
int stat(const char*, struct stat*) {
  return failWith(ENOENT);
}
int lstat(const char*, struct stat*) {
  return failWith(ENOENT);
}
int fstatat(int, const char*, struct stat*, int) {
  return failWith(ENOENT);
}
int mkdir(const char*, mode_t) {
  return failWith(ENOENT);
}
int unlinkat(int, const char*, int) {
  return failWith(ENOENT);
}
int unlink(const char*) {
  return failWith(ENOENT);
}
int remove(const char*) {
  return failWith(ENOENT);
}
int fstat(int, struct stat*) {
  return failWith(EBADF);
}
int close(int) {
  return failWith(EBADF);
}
ssize_t pread(int, void*, size_t, off_t) {
  return failWith(EBADF);
}

FILE* fopen(const char*, const char*) {
  return failWith(ENOENT), nullptr;
}
FILE* fdopen(int, const char*) {
  return failWith(EBADF), nullptr;
}
int fclose(FILE*) {
  return failWith(EBADF);
}
DIR* fdopendir(int) {
  return failWith(EBADF), nullptr;
}
int dirfd(DIR*) {
  return failWith(EBADF);
}
struct dirent* readdir(DIR*) {
  return nullptr;
}
int closedir(DIR*) {
  return failWith(EBADF);
}

}  // extern "C"
