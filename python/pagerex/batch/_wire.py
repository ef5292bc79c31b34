"""What passes between a run and its children: messages over a socket that keeps their bounds, what is large in files
without a name."""

from __future__ import annotations

import mmap
import os
import socket
import struct
import tempfile
from typing import Any, List, NamedTuple, Optional, Sequence, Tuple, Union

Part = Union[bytes, bytearray, memoryview, mmap.mmap]

#: Up to this size a message has its contents with it. Some of such a size fit into a socket at a time.
INLINE = 64 << 10
_LARGEST_MESSAGE = 72 << 10
_DESCRIPTOR = struct.Struct("i")
_ROOM_BESIDE = socket.CMSG_LEN(_DESCRIPTOR.size)

INLINE_CONTENT, FILE_CONTENT, NO_CONTENT = 1, 2, 3
#: How contents come, number of the document, its mark in the journal.
TASK = struct.Struct("<B7xQ32s")
#: How contents come, number of the document, lengths of what is told and of all.
REPLY = struct.Struct("<B7xQQQ")


def pair() -> Tuple[socket.socket, socket.socket]:
    """Two ends."""
    return socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)


def nameless_file(parts: Sequence[Part] = ()) -> int:
    """A descriptor of a file in memory, with these contents."""
    if hasattr(os, "memfd_create"):
        descriptor = os.memfd_create("pagerex", os.MFD_CLOEXEC)
    else:
        folder = "/dev/shm" if os.path.isdir("/dev/shm") else None
        with tempfile.TemporaryFile(dir=folder) as file:
            descriptor = os.dup(file.fileno())
    try:
        for part in parts:
            _write_all(descriptor, part)
    except BaseException:
        os.close(descriptor)
        raise
    return descriptor


def _write_all(descriptor: int, part: Part) -> None:
    with memoryview(part) as view, view.cast("B") as left:
        done = 0
        while done < len(left):
            done += os.write(descriptor, left[done:])


def read_all(descriptor: int, length: int) -> bytes:
    """From its beginning."""
    if os.fstat(descriptor).st_size < length:
        raise ValueError("a message is shorter than it says")
    pieces, done = [], 0
    while done < length:
        pieces.append(os.pread(descriptor, length - done, done))
        if not pieces[-1]:
            raise ValueError("a message ends early")
        done += len(pieces[-1])
    return pieces[0] if len(pieces) == 1 else b"".join(pieces)


class Message(NamedTuple):
    """As it came; empty at the end."""

    data: bytes
    descriptor: Optional[int]


def send(end: socket.socket, parts: Sequence[Any], descriptor: Optional[int] = None, flags: int = 0) -> None:
    """Whole or not at all."""
    beside = () if descriptor is None else ((socket.SOL_SOCKET, socket.SCM_RIGHTS, _DESCRIPTOR.pack(descriptor)),)
    end.sendmsg(parts, beside, flags)


def receive(end: socket.socket, flags: int = 0) -> Message:
    """The next one."""
    # The functions that the library of Python 3.9 has for this forget the flags.
    data, beside, _, _ = end.recvmsg(_LARGEST_MESSAGE, _ROOM_BESIDE, flags | socket.MSG_CMSG_CLOEXEC)
    return Message(data, _DESCRIPTOR.unpack(beside[0][2])[0] if beside else None)


def byte_length(parts: List[bytes]) -> int:
    """Of all together."""
    return sum(map(len, parts))
