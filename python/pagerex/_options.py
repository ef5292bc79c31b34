"""Options of conversions, and how the library is told of them."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Callable, Dict, Mapping, Optional, Tuple

from . import _native
from .errors import OptionError

if TYPE_CHECKING:
    from typing_extensions import Literal, TypedDict

    Format = Literal["html", "markdown", "text", "normal", "phone", "preview", "mulpages"]

    class Options(TypedDict, total=False):
        """See :func:`pagerex.convert`."""

        revisions: Literal["final", "original", "all"]
        comments: bool
        hidden_text: bool
        links: Literal["safe", "all", "none"]
        pictures: Optional[Literal["files", "embedded", "web", "none"]]
        page_size: int
        headers: bool
        width: int
        front_matter: bool
        page_breaks: bool
        common_mark: bool
        dark: bool
        name: str
        memory: Optional[int]
        input_bytes: Optional[int]
        output_bytes: Optional[int]
        deadline: Optional[float]
        cancel: Optional[_native.Cancel]
        progress: Optional[Callable[[float], object]]


Settings = Tuple[Any, ...]
# The places of a settings tuple are those of Settings::Take in native/settings.cpp.
_FIRST: Tuple[Any, ...] = (0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, None, None)
_MOST_INT = 2**31 - 1
_MOST_LONG = 2**63 - 1


def _choice(*names: Optional[str]) -> Callable[[str, Any], int]:
    def number(option: str, value: Any) -> int:
        if not (value is None or isinstance(value, str)) or value not in names:
            told = ", ".join(repr(name) for name in names)
            raise OptionError(f"{option} must be one of {told}, not {value!r}")
        return names.index(value)

    return number


def _flag(option: str, value: Any) -> int:
    if not isinstance(value, bool):
        raise OptionError(f"{option} must be True or False, not {value!r}")
    return int(value)


def _no_flag(option: str, value: Any) -> int:
    return 1 - _flag(option, value)


def _count(least: int, most: int) -> Callable[[str, Any], int]:
    def number(option: str, value: Any) -> int:
        if isinstance(value, bool) or not isinstance(value, int) or not (value == 0 or least <= value <= most):
            raise OptionError(f"{option} must be 0 or a whole number from {least} on, not {value!r}")
        return value

    return number


def _limit(option: str, value: Any) -> int:
    if value is None:
        return 0
    if isinstance(value, bool) or not isinstance(value, int) or not 0 < value <= _MOST_LONG:
        raise OptionError(f"{option} must be None or a whole number above 0, not {value!r}")
    return value


def _seconds(option: str, value: Any) -> int:
    if value is None:
        return 0
    if isinstance(value, bool) or not isinstance(value, (int, float)) or not 0 < value <= _MOST_INT:
        raise OptionError(f"{option} must be None or a number of seconds above 0, not {value!r}")
    return max(1, round(value * 1000))


def _cancel(option: str, value: Any) -> Optional[_native.Cancel]:
    if value is not None and type(value) is not _native.Cancel:
        raise OptionError(f"{option} must be None or a pagerex.Cancel, not {value!r}")
    return value


def _function(option: str, value: Any) -> Optional[Callable[..., object]]:
    if value is not None and not callable(value):
        raise OptionError(f"{option} must be None or a function, not {value!r}")
    return value  # type: ignore[no-any-return]


#: Option: its place in the tuple, and what makes a number of its value.
_OPTIONS: Dict[str, Tuple[int, Callable[[str, Any], Any]]] = {
    "page_size": (0, _count(1, _MOST_LONG)),
    "links": (1, _choice("safe", "all", "none")),
    "pictures": (2, _choice(None, "files", "embedded", "none", "web")),
    "revisions": (3, _choice("final", "original", "all")),
    "hidden_text": (4, _flag),
    "comments": (5, _no_flag),
    "headers": (6, _flag),
    "front_matter": (7, _flag),
    "page_breaks": (8, _flag),
    "common_mark": (9, _flag),
    "width": (10, _count(20, _MOST_INT)),
    "dark": (11, _flag),
    "memory": (12, _limit),
    "input_bytes": (13, _limit),
    "output_bytes": (14, _limit),
    "deadline": (15, _seconds),
    "cancel": (16, _cancel),
    "progress": (17, _function),
}
OPTION_NAMES = frozenset(_OPTIONS) | {"name"}

#: Name: extension, media type.
FORMATS: Dict[str, Tuple[str, str]] = {name: (extension, media) for name, extension, media, *_ in _native.formats()}
_NOTHING_SAID = {name: (name,) + _FIRST for name in FORMATS}
_MAIN_NAMES = {name: "document" + extension for name, (extension, _) in FORMATS.items()}


def settings_of(to: str, options: Mapping[str, Any], among: Optional[frozenset[str]] = None) -> Settings:
    """What the library takes. `among` holds the options that the call knows; all, if it is not given."""
    try:
        settings = _NOTHING_SAID[to]
    except (KeyError, TypeError):
        raise OptionError(f"to must be one of {', '.join(FORMATS)}, not {to!r}") from None
    if not options:
        return settings
    places = list(settings)
    for option, value in options.items():
        if option not in _OPTIONS or (among is not None and option not in among):
            if option == "name" and among is None:
                continue
            raise TypeError(f"unknown option {option!r}")
        place, take = _OPTIONS[option]
        places[place + 1] = take(option, value)
    return tuple(places)


def main_name_of(to: str, options: Mapping[str, Any]) -> str:
    """The name of the main file."""
    name = options.get("name")
    if name is None:
        return _MAIN_NAMES[to]
    if not isinstance(name, str) or not name or "\0" in name or "/" in name:
        raise OptionError(f"name must be that of a file, without a folder, not {name!r}")
    try:
        name.encode()
    except UnicodeEncodeError:
        raise OptionError(f"name must be a text that UTF-8 can say, not {name!r}") from None
    return name


def format_of_path(path: str) -> str:
    """By its extension."""
    extension = path[path.rfind(".") :].lower()
    to = {".html": "html", ".htm": "html", ".xhtml": "html", ".md": "markdown", ".markdown": "markdown", ".txt": "text"}
    try:
        return to[extension]
    except KeyError:
        raise OptionError(f"the name of {path!r} does not tell a format: say to=") from None
