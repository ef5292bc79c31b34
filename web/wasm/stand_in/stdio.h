// What musl lacks of glibc's <stdio.h>: answers as a file system without it does.

#ifndef PAGEREX_STAND_IN_STDIO_H
#define PAGEREX_STAND_IN_STDIO_H

#include_next <stdio.h>

#include <errno.h>

#if defined(__cplusplus) && !defined(RENAME_NOREPLACE)
#define RENAME_NOREPLACE 1
#define RENAME_EXCHANGE 2

inline int renameat2(int, const char*, int, const char*, unsigned) {
  errno = ENOSYS;
  return -1;
}
#endif

#endif
