"""What documents are read from."""

from __future__ import annotations

import errno
import io
import os
import stat
from typing import IO, TYPE_CHECKING, Any, Optional, Union

from .errors import source_error

if TYPE_CHECKING:
    from typing_extensions import Protocol

    class Readable(Protocol):
        """The least that a file object has."""

        def read(self, size: int = -1, /) -> bytes: ...

    Buffer = Union[bytes, bytearray, memoryview]
    Source = Union[str, os.PathLike[str], Buffer, IO[bytes], Readable]


class Reader:
    """A seekable file object as the library reads it. Where it stood, it stands again after `restore`."""

    __slots__ = ("file", "place", "length")

    def __init__(self, file: Any) -> None:
        self.file = file
        self.place: int = file.tell()
        self.length: int = file.seek(0, io.SEEK_END)
        if self.length is None:
            self.length = file.tell()

    def byte_count(self) -> int:
        return self.length

    def read_at(self, offset: int, length: int) -> bytes:
        self.file.seek(offset)
        return _bytes(self.file.read(length))

    def restore(self) -> None:
        self.file.seek(self.place)


def _bytes(data: Any) -> bytes:
    if isinstance(data, str):
        raise TypeError("the file was opened as text: open it with 'rb'")
    return data if type(data) is bytes else bytes(data)


class Opened:
    """A source as the library takes it, and how the file behind it is let go of."""

    __slots__ = ("native", "name", "_reader", "_owned")

    def __init__(self, native: Any, name: Optional[str] = None, reader: Optional[Reader] = None, owned: Any = None):
        self.native = native
        self.name = name
        self._reader = reader
        self._owned = owned

    def close(self) -> None:
        """May be called again."""
        reader, self._reader = self._reader, None
        owned, self._owned = self._owned, None
        if owned is not None:
            owned.close()
        elif reader is not None:
            reader.restore()


def opened(source: Any, keeps: bool = False) -> Opened:
    """Of anything that a document may come from. `keeps`: the bytes are read from when the caller may have changed
    them, so that such that can change are copied."""
    if type(source) is bytes:
        return Opened(source)
    if isinstance(source, str):
        return _of_remote_path(source) if "://" in source else Opened(source, source)
    if isinstance(source, (bytes, bytearray, memoryview)):
        return Opened(_stable(memoryview(source)) if keeps else _flat(source))
    if hasattr(source, "fs") and hasattr(source, "path") and hasattr(source, "open"):
        return _of_file(source.open(), str(source.path), owned=True)
    if hasattr(source, "__fspath__"):
        path = os.fsdecode(source)
        return Opened(path, path)
    if hasattr(source, "read") and not isinstance(source, type):
        try:
            view = memoryview(source)  # a map of a file has both
        except TypeError:
            return _of_file(source, None)
        return Opened(_stable(view) if keeps else view)
    return Opened(_flat(source))


def _flat(source: Any) -> Any:
    try:
        view = memoryview(source)
    except TypeError:
        raise TypeError(
            f"a document is read from a path, bytes or a binary file, not from {type(source).__name__}"
        ) from None
    return view if view.c_contiguous else view.tobytes()


def _stable(view: memoryview) -> Any:
    return view if view.readonly and view.c_contiguous else view.tobytes()


def _of_file(file: Any, name: Optional[str], owned: bool = False) -> Opened:
    try:
        if getattr(file, "seekable", None) is not None and file.seekable():
            reader = Reader(file)
            return Opened(reader, name, reader, file if owned else None)
        return Opened(_bytes(file.read()), name, None, file if owned else None)
    except BaseException:
        if owned:
            file.close()
        raise


def _of_remote_path(path: str) -> Opened:
    """Of "s3://bucket/letter.doc" and all else that fsspec, where it is installed, knows."""
    if os.path.exists(path):
        return Opened(path, path)
    try:
        import fsspec
    except ImportError:
        raise ImportError(f"to read {path!r}: pip install 'pagerex[fsspec]'") from None
    return _of_file(fsspec.open(path, "rb").open(), path, owned=True)


def bytes_of(held: Opened, count: int = -1) -> Any:
    """The first `count` bytes at least; all without it."""
    native = held.native
    if isinstance(native, str):
        return _bytes_of_path(native, count)
    if isinstance(native, Reader):
        return native.read_at(0, native.byte_count() if count < 0 else count)
    return native


def _bytes_of_path(path: str, count: int) -> bytes:
    try:
        if not stat.S_ISREG(os.stat(path).st_mode):  # a pipe could hold the call up for ever
            raise OSError(errno.EISDIR if os.path.isdir(path) else errno.ENODEV, "it is no file")
        with open(path, "rb") as file:
            return file.read(count)
    except OSError as error:
        raise source_error(error, path) from None


def name_of(source: Any) -> str:
    """For people: the path, as far as there is one."""
    if isinstance(source, str):
        return source
    if hasattr(source, "__fspath__"):
        return os.fsdecode(source)
    name = getattr(source, "name", None) or getattr(source, "path", None)
    return name if isinstance(name, str) else ""
