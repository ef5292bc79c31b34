"""What can go wrong, by its cause. All are :class:`PagerexError`."""

from __future__ import annotations

import errno
from typing import TYPE_CHECKING, Dict, NoReturn, Optional, Type

from . import _native

if TYPE_CHECKING:
    from ._results import Kind, Outcome

__all__ = [
    "CanceledError",
    "DamagedError",
    "DeadlineError",
    "EncryptedError",
    "InputLimitError",
    "LimitError",
    "MemoryLimitError",
    "NotPictureError",
    "NotWordError",
    "OptionError",
    "OutOfMemoryError",
    "OutputLimitError",
    "PagerexError",
    "RefusedError",
    "SourceError",
    "SourceIsDirectoryError",
    "SourceNotFoundError",
    "SourcePermissionError",
    "WriteError",
]


class PagerexError(Exception):
    """What every exception of this package is."""

    #: A short word for reports, which stays as it is: ``"not_word"``.
    code: str = "error"
    #: What the input is, as far as it is known.
    kind: Optional[Kind] = None
    #: What came of the conversion until then, with its warnings, and with what was written of the document where it
    #: was written into memory. None where it had not begun.
    result: Optional[Outcome] = None


class OptionError(PagerexError, ValueError):
    """An option has a value that makes no sense, or the format is unknown."""

    code = "invalid_argument"


class NotWordError(PagerexError):
    """The input is something else than a Word 97-2003 document; ``kind`` tells what."""

    kind: Kind


class NotPictureError(PagerexError):
    """The bytes are no picture; ``kind`` tells what they are."""

    kind: Kind


class EncryptedError(PagerexError):
    """The document needs a password."""


class DamagedError(PagerexError):
    """A Word document of which nothing can be read, or not to its end: ``result`` has what was read."""


class SourceError(PagerexError, OSError):
    """The input cannot be read."""


class SourceNotFoundError(SourceError, FileNotFoundError):
    """There is no such file."""


class SourcePermissionError(SourceError, PermissionError):
    """The file may not be read."""


class SourceIsDirectoryError(SourceError, IsADirectoryError):
    """The path is that of a folder."""


class WriteError(PagerexError, OSError):
    """The output cannot be written: a full disk, a folder that is not there."""


class RefusedError(PagerexError, FileExistsError):
    """The output would destroy what no conversion has made. Nothing was written."""


class CanceledError(PagerexError):
    """The option ``cancel`` ended the call."""


class LimitError(PagerexError):
    """A limit was reached that an option has set."""


class DeadlineError(LimitError, TimeoutError):
    """The option ``deadline``."""


class MemoryLimitError(LimitError):
    """The option ``memory``."""


class OutputLimitError(LimitError):
    """The option ``output_bytes``."""


class InputLimitError(LimitError):
    """The option ``input_bytes``, or more than the format can hold."""


class OutOfMemoryError(PagerexError, MemoryError):
    """The machine has no more memory."""


_BY_CODE: Dict[int, Type[PagerexError]] = {
    1: OptionError,
    2: NotWordError,
    3: EncryptedError,
    4: DamagedError,
    5: SourceError,
    6: WriteError,
    7: RefusedError,
    8: CanceledError,
    9: DeadlineError,
    10: OutOfMemoryError,
    11: MemoryLimitError,
    12: OutputLimitError,
    13: InputLimitError,
    14: NotPictureError,
}
_SOURCE_BY_ERRNO: Dict[int, Type[SourceError]] = {
    errno.ENOENT: SourceNotFoundError,
    errno.ENOTDIR: SourceNotFoundError,
    errno.EACCES: SourcePermissionError,
    errno.EPERM: SourcePermissionError,
    errno.EISDIR: SourceIsDirectoryError,
}


def raise_for(outcome: Outcome, filename: Optional[str] = None) -> NoReturn:
    """Raises what stands for an outcome other than success."""
    number = outcome._code
    error_type = _BY_CODE.get(number, PagerexError)
    if error_type is SourceError:
        error_type = _SOURCE_BY_ERRNO.get(outcome._system_error, SourceError)
    error: PagerexError
    if issubclass(error_type, OSError) and outcome._system_error:
        error = error_type(outcome._system_error, outcome.sentence, filename)
    else:
        error = error_type(outcome.sentence)
    error.code = _native.result_name(number)
    error.kind = outcome.kind
    error.result = outcome
    raise error


def source_error(error: OSError, filename: str) -> SourceError:
    """The same as of this package."""
    error_type = _SOURCE_BY_ERRNO.get(error.errno or 0, SourceError)
    made = error_type(error.errno, error.strerror, filename)
    made.code = _native.result_name(5)
    return made
