"""Converts many documents into a folder: python -m pagerex.batch LETTERS -o RESULTS -t markdown"""

from __future__ import annotations

import argparse
import os
import signal
import sys
import time
from typing import Any, Iterator, List, NoReturn, Optional

from .. import __main__ as single
from .. import __version__, errors
from .._options import FORMATS
from ._rows import CONVERTED, Row
from ._run import Summary, run

_CONVERTED, _NONSENSE, _NOT_CONVERTED = 0, 1, 2
_EXTENSIONS = (".doc", ".dot", ".wbk")


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="python -m pagerex.batch",
        description="Converts many Word 97-2003 documents (.doc). Called again, it goes on where it was ended.",
    )
    parser.add_argument("files", nargs="*", metavar="FILE", help="a document, or a folder with all in and below it")
    parser.add_argument("-o", "--output", required=True, metavar="FOLDER", help="where results and journal lie")
    parser.add_argument("-t", "--to", choices=tuple(FORMATS), default="html", help="the format; html, if none is named")
    parser.add_argument("-j", "--jobs", dest="slots", type=int, metavar="N", help="processes; one for each core")
    parser.add_argument("--all", action="store_true", help="of folders all files, not only .doc, .dot and .wbk")
    parser.add_argument(
        "--files-from", metavar="FILE", help="reads more names of files from FILE, one a line; - for stdin"
    )
    parser.add_argument("--timeout", type=float, metavar="SECONDS", help="for a document, 60")
    parser.add_argument("--memory", type=int, metavar="BYTES", help="that a document may take, 1 GiB")
    parser.add_argument("--input-bytes", type=int, metavar="BYTES", help="of a document, 256 MiB")
    parser.add_argument("--output-bytes", type=int, metavar="BYTES", help="of what is made of one, 256 MiB")
    parser.add_argument("--strikes", type=int, metavar="N", help="processes that may die of a document, 2")
    parser.add_argument("--recycle", type=int, metavar="N", help="documents that a process lives for, 10000")
    parser.add_argument("--sync", action="store_true", default=None, help="waits until each result is on the disk")
    single.add_options(parser)
    parser.add_argument("--version", action="version", version=__version__)
    return parser


def _found(named: List[str], files_from: Optional[str], takes_all: bool, output: str) -> Iterator[str]:
    for name in named:
        yield from _below(name, takes_all, os.path.realpath(output)) if os.path.isdir(name) else (name,)
    if files_from is None:
        return
    with os.fdopen(0, "rb", closefd=False) if files_from == "-" else open(files_from, "rb") as file:
        for line in file:
            if line.rstrip(b"\n"):
                yield os.fsdecode(line.rstrip(b"\n"))


def _below(folder: str, takes_all: bool, output: str) -> Iterator[str]:
    """In an order that stays; links are not followed, and results not looked at."""
    for place, folders, files in os.walk(folder):
        folders[:] = sorted(name for name in folders if os.path.realpath(os.path.join(place, name)) != output)
        for name in sorted(files):
            if takes_all or name.lower().endswith(_EXTENSIONS):
                yield os.path.join(place, name)


def _tell(row: Row) -> None:
    if row.status not in CONVERTED:
        print(f"pagerex: {_shown(row.path)}: {row.sentence}", file=sys.stderr)


def _shown(path: str) -> str:
    return "".join(letter if letter.isprintable() else "\N{REPLACEMENT CHARACTER}" for letter in path)


def _sum(summary: Summary, seconds: float) -> str:
    total = sum(summary.counts.values())
    told = ", ".join(f"{count} {status}" for status, count in summary.counts.items())
    kept = f", {summary.kept} of them before" if summary.kept else ""
    rate = (total - summary.kept) / max(seconds, 1e-9)
    return f"{total} files{kept}, in {seconds:.2f} s, {rate:.0f} a second" + (f": {told}" if told else "")


def _stop(number: int, frame: Any) -> NoReturn:
    raise KeyboardInterrupt


def main(arguments: Optional[List[str]] = None) -> int:
    """0 if all were converted, 1 if the arguments make no sense, 2 if some were not."""
    options = vars(_parser().parse_args(arguments))
    output = options.pop("output")
    found = _found(options.pop("files"), options.pop("files_from"), options.pop("all"), output)
    chosen = {name: value for name, value in options.items() if value is not None}
    begun = time.monotonic()
    try:
        summary = run(found, output, on_row=_tell, **chosen)
    except (errors.OptionError, errors.RefusedError, OSError) as error:
        print(f"pagerex: {error}", file=sys.stderr)
        return _NONSENSE
    print(_sum(summary, time.monotonic() - begun), file=sys.stderr)
    return _CONVERTED if not summary.counts.keys() - CONVERTED else _NOT_CONVERTED


def _main() -> NoReturn:
    """Ends by a signal as those are expected to who started it."""
    signal.signal(signal.SIGTERM, _stop)
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        signal.signal(signal.SIGINT, signal.SIG_DFL)
        os.kill(os.getpid(), signal.SIGINT)
        sys.exit(1)


if __name__ == "__main__":
    _main()
