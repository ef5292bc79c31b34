"""What a child leaves on its desk, where it is found if the child dies: which document it is at, and its facts."""

from __future__ import annotations

import mmap
import struct
from typing import NamedTuple

SIZE = mmap.ALLOCATIONGRANULARITY

NOTHING, BEGUN, DONE = 0, 1, 2
_STATE = struct.Struct("<Q")
#: Number, state, whether it was read, size, when it was begun, mark.
_HEAD = struct.Struct("<QBB6xQd32s")
#: Hash, kind.
_FACTS = struct.Struct("<32s32s")


class OnDesk(NamedTuple):
    """Of one document."""

    number: int
    state: int
    is_read: bool
    size: int
    begun: float
    mark: bytes
    sha256: str
    kind: str


class Desk:
    """One page of a file that run and child both have."""

    def __init__(self, descriptor: int, place: int) -> None:
        self._page = mmap.mmap(descriptor, SIZE, offset=place * SIZE)

    def begin(self, number: int, begun: float, mark: bytes) -> None:
        """By the child, before it looks at a document."""
        _HEAD.pack_into(self._page, 0, number, BEGUN, 0, 0, begun, mark)

    def tell_size(self, size: int) -> None:
        """By the child."""
        _STATE.pack_into(self._page, 16, size)

    def tell(self, sha256: bytes, kind: str) -> None:
        """By the child, of a document that was read."""
        _FACTS.pack_into(self._page, _HEAD.size, sha256, kind.encode())
        self._page[9] = 1

    def done(self) -> None:
        """By the child, when nothing of the document runs any more."""
        self._page[8] = DONE

    def clear(self) -> None:
        """By the run, before a child has it."""
        self._page[: _HEAD.size] = bytes(_HEAD.size)

    def look(self) -> OnDesk:
        """By the run."""
        number, state, is_read, size, begun, mark = _HEAD.unpack_from(self._page)
        sha256, kind = _FACTS.unpack_from(self._page, _HEAD.size)
        told = kind.rstrip(b"\0").decode("ascii", "replace") if is_read else "unknown"
        return OnDesk(number, state, bool(is_read), size, begun, mark, sha256.hex() if is_read else "", told)

    def close(self) -> None:
        """May be called again."""
        self._page.close()
