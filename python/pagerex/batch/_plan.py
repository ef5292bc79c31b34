"""What is asked of a run, and the keys of its results."""

from __future__ import annotations

import hashlib
import json
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, Dict, Mapping, Optional, Tuple

from .. import _native, errors
from .._convert import convert
from .._options import main_name_of, settings_of

if TYPE_CHECKING:
    from ._rows import Buffer

#: Of each document, unless something else is said.
DEFAULT_LIMITS: Dict[str, Any] = {
    "timeout": 60.0,
    "memory": 1 << 30,
    "input_bytes": 256 << 20,
    "output_bytes": 256 << 20,
}
#: Options of single calls that have no place here.
_NOT_HERE = {"deadline": "say timeout=", "cancel": "close the iterator", "progress": "count the rows"}
#: What the library has of the time of a document; the rest is for ending by itself.
_SHARE_OF_LIBRARY = 0.9


@dataclass(frozen=True)
class Plan:
    """Options that make sense, as a child takes them."""

    to: str
    name: str
    settings: Tuple[Any, ...]
    timeout: Optional[float]
    memory: Optional[int]
    input_bytes: Optional[int]
    output_bytes: Optional[int]
    #: Those that change the output, as JSON.
    options: str

    @property
    def prefix(self) -> str:
        """See :func:`key_prefix`."""
        return prefix_of(_native.version(), self.to, self.options)

    def for_child(self) -> Dict[str, Any]:
        """Of this run, for JSON."""
        return {
            "name": self.name,
            "settings": self.settings,
            "timeout": self.timeout,
            "memory": self.memory,
            "input_bytes": self.input_bytes,
            "output_bytes": self.output_bytes,
            "prefix": self.prefix,
        }


def plan_of(to: str, options: Mapping[str, Any]) -> Plan:
    """Raises what :func:`pagerex.convert` would of options that make no sense."""
    for name in options:
        if name in _NOT_HERE:
            raise errors.OptionError(f"{name} is no option of many documents: {_NOT_HERE[name]}")
    limits = {**DEFAULT_LIMITS, **{name: options[name] for name in DEFAULT_LIMITS if name in options}}
    timeout = limits.pop("timeout")
    library = {name: value for name, value in options.items() if name not in DEFAULT_LIMITS}
    try:
        settings_of(to, {"deadline": timeout})
    except errors.OptionError as error:
        raise errors.OptionError(str(error).replace("deadline", "timeout", 1)) from None
    library.update(limits, deadline=timeout and timeout * _SHARE_OF_LIBRARY)
    settings = settings_of(to, library)
    name = main_name_of(to, library)
    try:
        # What only the library knows, such as that a format does not do what is asked of pictures.
        convert(b"", to, **library)  # type: ignore[arg-type]
    except errors.OptionError:
        raise
    except errors.PagerexError:
        pass
    spelled = _spelled(to, options, {"timeout": timeout, **limits})
    return Plan(to, name, settings, timeout, limits["memory"], limits["input_bytes"], limits["output_bytes"], spelled)


def prefix_of(version: object, to: object, options: object) -> str:
    """Of what a journal has, too."""
    return f"pagerex {version} {to} {options} "


def _spelled(to: str, options: Mapping[str, Any], limits: Mapping[str, Any]) -> str:
    said = {name: value for name, value in options.items() if name not in limits and _is_unusual(to, name, value)}
    said.update(limits, timeout=limits["timeout"] and float(limits["timeout"]))
    return json.dumps(said, sort_keys=True, separators=(",", ":"))


def _is_unusual(to: str, name: str, value: Any) -> bool:
    if name == "name":
        return main_name_of(to, {name: value}) != main_name_of(to, {})
    return settings_of(to, {name: value}) != settings_of(to, {})


def key_prefix(to: str = "html", **options: Any) -> str:
    """What a key depends on beside the content: library's version, format, options that change the output, and limits.

    ``sha256(prefix + sha256(content) in hexadecimal)`` is the key, which engines of SQL have functions for:
    ``sha2(concat(prefix, sha2(content, 256)), 256)``.

    >>> key_prefix("text", width=72, comments=True, memory=None, input_bytes=None, output_bytes=None)
    'pagerex 0.1.0 text {"input_bytes":null,"memory":null,"output_bytes":null,"timeout":60.0,"width":72} '
    """
    return plan_of(to, options).prefix


def key_of(content: Buffer, to: str = "html", **options: Any) -> str:
    """The key of the row that these bytes get. Options are those of :func:`convert_shard`.

    >>> key_of(b"", "text") == key_of(b"", "text", comments=True), key_of(b"", "text") == key_of(b"", "html")
    (True, False)
    """
    return key_with(key_prefix(to, **options), hashlib.sha256(content).hexdigest())


def key_with(prefix: str, sha256: str) -> str:
    """Of a content by its own hash."""
    return hashlib.sha256((prefix + sha256).encode()).hexdigest()
