/* Runs a command several times and prints what it took: measure RUNS OUTPUT COMMAND [ARGUMENT...]
 *
 * The command's standard output goes to the file OUTPUT. Printed are its least processor time, user and
 * system together, in microseconds, and its peak memory in kilobytes. Small, since a process counts as its
 * own peak the memory of whoever started it. */

#include <fcntl.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;

static long long microseconds(struct timeval time) {
  return time.tv_sec * 1000000LL + time.tv_usec;
}

/* Returns 0 if the command ran and succeeded. */
static int run(char** command, const posix_spawn_file_actions_t* actions, struct rusage* usage) {
  pid_t child;
  int status;
  if (posix_spawnp(&child, command[0], actions, NULL, command, environ) != 0) return -1;
  if (wait4(child, &status, 0, usage) != child) return -1;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : -1;
}

int main(int argc, char** argv) {
  if (argc < 4) {
    fprintf(stderr, "usage: %s RUNS OUTPUT COMMAND [ARGUMENT...]\n", argv[0]);
    return 2;
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, argv[2], O_WRONLY | O_CREAT | O_TRUNC, 0666);
  long long leastTime = -1;
  long leastPeak = -1;
  for (int i = atoi(argv[1]); i > 0; --i) {
    struct rusage usage;
    if (run(argv + 3, &actions, &usage) != 0) {
      fprintf(stderr, "%s: %s failed\n", argv[0], argv[3]);
      return 1;
    }
    const long long time = microseconds(usage.ru_utime) + microseconds(usage.ru_stime);
    if (leastTime < 0 || time < leastTime) leastTime = time;
    if (leastPeak < 0 || usage.ru_maxrss < leastPeak) leastPeak = usage.ru_maxrss;
  }
  posix_spawn_file_actions_destroy(&actions);
  printf("%lld %ld\n", leastTime, leastPeak);
  return 0;
}
