"""What holds a child within its bounds."""

from __future__ import annotations

import fcntl
import mmap
import os
import resource
import select
import signal
from typing import Optional

#: What a conversion takes beside what the library counts: its writer, and what the interpreter makes of its output.
_BESIDE = 64 << 20
#: Contents up to this size are among that.
_SMALL = 16 << 20

# The document is among the first to go where a machine runs out of memory, its host among the last.
_OOM_SCORE = b"900"


class Fence:
    """The limit of the address space, behind the library's own count."""

    def __init__(self, memory: Optional[int]) -> None:
        self._memory = memory
        self._hard = resource.getrlimit(resource.RLIMIT_AS)[1]
        self._set = -1
        self.rebase()

    def rebase(self) -> None:
        """What the process has now is none of a document's."""
        with open("/proc/self/statm", "rb") as file:
            self._base = int(file.read().split()[0]) * mmap.PAGESIZE

    def put_up(self, content: int) -> None:
        """For a document of this size."""
        if self._memory is None:
            return
        most = self._base + self._memory + _BESIDE + (content if content > _SMALL else 0)
        self._limit(most if self._hard == resource.RLIM_INFINITY else min(most, self._hard))

    def take_down(self) -> None:
        """For what is not a document's."""
        if self._memory is not None:
            self._limit(self._hard)

    def _limit(self, soft: int) -> None:
        if soft != self._set:
            resource.setrlimit(resource.RLIMIT_AS, (soft, self._hard))
            self._set = soft


def set_signals() -> None:
    """Ends by those that end a process, and not by Ctrl-C."""
    for number in (signal.SIGALRM, signal.SIGIO, signal.SIGTERM):
        signal.signal(number, signal.SIG_DFL)
    # A terminal sends it to all; the host decides.
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    signal.pthread_sigmask(signal.SIG_SETMASK, ())


def end_with_host() -> None:
    """Standard input is a pipe into which nobody writes. When the last one who could is gone, SIGIO ends this process,
    whatever it is at."""
    try:
        fcntl.fcntl(0, fcntl.F_SETOWN, os.getpid())
        fcntl.fcntl(0, fcntl.F_SETFL, fcntl.fcntl(0, fcntl.F_GETFL) | os.O_ASYNC)
    except OSError:  # systems that only look like Linux; the document at hand ends first, at the latest by its timer
        pass
    # It may have been gone before.
    poll = select.poll()
    poll.register(0, select.POLLIN)
    if poll.poll(0):
        os._exit(0)


def be_quiet() -> None:
    """What a library prints is nothing to the host."""
    nowhere = os.open(os.devnull, os.O_WRONLY)
    for descriptor in (1, 2):
        os.dup2(nowhere, descriptor)
    os.close(nowhere)


def be_modest() -> None:
    """Leaves no image of itself behind, and goes first where memory is short."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, resource.getrlimit(resource.RLIMIT_CORE)[1]))
    try:
        with open("/proc/self/oom_score_adj", "wb") as file:
            file.write(_OOM_SCORE)
    except OSError:  # where /proc is not as usual
        pass
