/* Prints the peak memory of a program that runs under qemu's user emulation, without that of qemu itself:
 *
 *     guest_peak FIRST END qemu-arm -B FIRST [OPTION...] COMMAND [ARGUMENT...]
 *
 * qemu maps the whole address space of a 32-bit program at the address of its option -B, so that the
 * program's pages are those of the process between FIRST and END, 4 GiB further. Given 0 and -1 instead, and
 * a program of this machine, it counts all of its pages, which shows how exact it is: the kernel's own figure
 * stands beside.
 *
 * Pages become resident one by one, but cease to be only in a few system calls. So the process is stopped
 * before each of these and before its end, and the greatest of the sums is the peak. Printed are, in
 * kilobytes, the peak of all resident pages, that of those which no file backs or which were written to (the
 * others may be shared with other processes), and the peak that the kernel counted for the process as a
 * whole. */

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

struct Memory {
  long resident;
  long anonymous;
};

/* The field behind `name`, in kilobytes; 0 on a line of another name. */
static long fieldOf(const char* line, const char* name) {
  const size_t length = strlen(name);
  return strncmp(line, name, length) == 0 ? atol(line + length) : 0;
}

static struct Memory memoryOf(pid_t process, uint64_t first, uint64_t end) {
  struct Memory sum = {0, 0};
  char path[64];
  char line[512];
  int counts = 0;
  snprintf(path, sizeof path, "/proc/%d/smaps", (int)process);
  FILE* const file = fopen(path, "r");
  if (!file) return sum;
  while (fgets(line, sizeof line, file)) {
    uint64_t from, to;
    if (sscanf(line, "%" SCNx64 "-%" SCNx64 " ", &from, &to) == 2) counts = from >= first && to <= end;
    if (!counts) continue;
    sum.resident += fieldOf(line, "Rss:");
    sum.anonymous += fieldOf(line, "Anonymous:");
  }
  fclose(file);
  return sum;
}

static int canRelease(uint64_t systemCall) {
  switch (systemCall) {
    case SYS_mmap:  // over what is mapped there
    case SYS_munmap:
    case SYS_mremap:
    case SYS_madvise:
    case SYS_brk:
    case SYS_exit_group:
      return 1;
    default:
      return 0;
  }
}

static void raiseTo(struct Memory* peak, struct Memory now) {
  if (now.resident > peak->resident) peak->resident = now.resident;
  if (now.anonymous > peak->anonymous) peak->anonymous = now.anonymous;
}

/* Runs the stopped child to its end; its status. */
static int follow(pid_t child, uint64_t first, uint64_t end, struct Memory* peak, struct rusage* usage) {
  int status = 0;
  int signal = 0;
  for (;;) {
    ptrace(PTRACE_SYSCALL, child, NULL, (void*)(intptr_t)signal);
    if (wait4(child, &status, 0, usage) != child || !WIFSTOPPED(status)) return status;
    signal = WSTOPSIG(status);
    if (signal != (SIGTRAP | 0x80)) continue;  // its own, passed on to it
    signal = 0;
    struct user_regs_struct registers;
    ptrace(PTRACE_GETREGS, child, NULL, &registers);
    if (canRelease(registers.orig_rax)) raiseTo(peak, memoryOf(child, first, end));
  }
}

int main(int argc, char** argv) {
  if (argc < 4) {
    fprintf(stderr, "usage: %s FIRST END COMMAND [ARGUMENT...]\n", argv[0]);
    return 2;
  }
  const pid_t child = fork();
  if (child == 0) {
    prctl(PR_SET_THP_DISABLE, 1, 0, 0, 0);  // a huge page counts 2 MiB as soon as one byte of it is used
    ptrace(PTRACE_TRACEME, 0, NULL, NULL);
    execvp(argv[3], argv + 3);
    perror(argv[3]);
    _exit(127);
  }
  int status = 0;
  if (waitpid(child, &status, 0) != child || !WIFSTOPPED(status)) return 1;
  ptrace(PTRACE_SETOPTIONS, child, NULL, (void*)(PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL));
  struct Memory peak = {0, 0};
  struct rusage usage;
  status = follow(child, strtoull(argv[1], NULL, 0), strtoull(argv[2], NULL, 0), &peak, &usage);
  printf("%ld %ld %ld\n", peak.resident, peak.anonymous, usage.ru_maxrss);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
