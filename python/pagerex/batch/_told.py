"""What a child tells of a document."""

from __future__ import annotations

from typing import Dict, List, NamedTuple, Optional, Tuple


class Told(NamedTuple):
    """Of a row, what the child knows, with the length of the content; as it passes over the socket."""

    status: str
    sentence: str
    kind: str
    size: int
    sha256: str
    key: Optional[str]
    milliseconds: float
    content_length: int
    content_sha256: str
    assets: List[Tuple[str, str, int]]
    warnings: List[Tuple[str, str, str, int]]
    metadata: Dict[str, str]
    counts: Dict[str, int]
    #: Whether another process may come to something else.
    may_differ: bool
