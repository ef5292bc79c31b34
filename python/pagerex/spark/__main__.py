"""The command ``pagerex-spark``. For Spark's own: ``spark-submit "$(pagerex-spark --script)" SOURCE TARGET``."""

from __future__ import annotations

import argparse
import os
import sys
from typing import TYPE_CHECKING, Any, Dict, List, Optional

from pagerex import __version__, errors
from pagerex._options import FORMATS

if TYPE_CHECKING:
    from pagerex.spark import Report, Wave

_CONVERTED, _NONSENSE, _NOT_CONVERTED = 0, 1, 2
_SIZES = {"K": 10, "M": 20, "G": 30}


def main(arguments: Optional[List[str]] = None) -> int:
    """0 if all was converted, 1 if the arguments make no sense, 2 if something was not converted."""
    options = vars(_parser().parse_args(arguments))
    options.pop("script")
    source, target = options.pop("source"), options.pop("target")
    session = {name: options.pop(name) for name in ("master", "conf")}
    names_all = options.pop("all")
    chosen = {name: value for name, value in options.items() if value is not None}
    if names_all:
        chosen["names"] = None
    # Workers of this machine; those of others, if they have Python elsewhere, are told by the same variable.
    os.environ.setdefault("PYSPARK_PYTHON", sys.executable)
    from pyspark.errors import AnalysisException

    from pagerex.spark import convert_files

    try:
        report = convert_files(_session(**session), source, target, on_wave=_tell_wave, **chosen)
    except (errors.OptionError, AnalysisException, ValueError) as error:
        print(f"pagerex-spark: {str(error).splitlines()[0]}", file=sys.stderr)
        return _NONSENSE
    _tell(report)
    return _NOT_CONVERTED if set(report.statuses) - {"ok", "partial"} else _CONVERTED


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="pagerex-spark",
        description="Converts Word 97-2003 documents into Parquet, on a Spark cluster. What is in TARGET already is not"
        " converted again. Exit code: 0 all converted, 1 arguments that make no sense, 2 some were not converted.",
    )
    parser.add_argument("source", nargs="+", help="folders or patterns, as Spark takes them: s3a://archive/letters")
    parser.add_argument("target", help="a folder for Parquet")
    parser.add_argument("-t", "--to", choices=tuple(FORMATS), default="html", help="the format (html)")
    parser.add_argument("--all", action="store_true", help="files of any name, not only *.doc, *.dot and *.wbk")
    parser.add_argument("--master", help="of the cluster; otherwise what spark-submit or Spark's configuration says")
    parser.add_argument("--conf", action="append", default=[], metavar="NAME=VALUE", help="of Spark")
    parser.add_argument("--wave-files", type=int, metavar="N", help="files that become visible together (100000)")
    parser.add_argument("--shard-bytes", type=_size, metavar="N", help="of files for a task (64M)")
    limits = parser.add_argument_group("limits for a document")
    limits.add_argument("--timeout", type=float, metavar="SECONDS", help="60")
    limits.add_argument("--memory", type=_size, metavar="N", help="1G")
    limits.add_argument("--input-bytes", type=_size, metavar="N", help="64M")
    limits.add_argument("--output-bytes", type=_size, metavar="N", help="128M")
    written = parser.add_argument_group("what is written, as in the command pagerex")
    written.add_argument("--revisions", choices=("final", "original", "all"))
    written.add_argument("--no-comments", dest="comments", action="store_false", default=None)
    written.add_argument("--hidden-text", action="store_true", default=None)
    written.add_argument("--links", choices=("safe", "all", "none"))
    written.add_argument("--pictures", choices=("files", "embedded", "web", "none"))
    written.add_argument("--page-size", type=int, metavar="N")
    written.add_argument("--headers", action="store_true", default=None)
    written.add_argument("--width", type=int, metavar="N")
    written.add_argument("--front-matter", action="store_true", default=None)
    written.add_argument("--page-breaks", action="store_true", default=None)
    written.add_argument("--common-mark", action="store_true", default=None)
    written.add_argument("--dark", action="store_true", default=None)
    parser.add_argument("--script", action=_Script, nargs=0, help="tell where the program for spark-submit lies")
    parser.add_argument("--version", action="version", version=__version__)
    return parser


class _Script(argparse.Action):
    """Tells, and ends."""

    def __call__(self, *_: object) -> None:
        print(os.path.abspath(__file__))
        sys.exit(_CONVERTED)


def _size(text: str) -> int:
    unit = text[-1:].upper()
    return int(text[:-1]) << _SIZES[unit] if unit in _SIZES else int(text)


def _session(master: Optional[str], conf: List[str]) -> Any:
    from pyspark.sql import SparkSession

    builder = SparkSession.builder.appName("pagerex")
    if master is not None:
        builder = builder.master(master)
    for setting in conf:
        name, _, value = setting.partition("=")
        builder = builder.config(name, value)
    return builder.getOrCreate()


def _tell_wave(wave: Wave) -> None:
    print(f"{wave.number} of {wave.of}: {_counts(wave.statuses)}", file=sys.stderr, flush=True)


def _tell(report: Report) -> None:
    rate = f", {report.converted / report.seconds * 3600:,.0f} an hour" if report.converted else ""
    print(f"{report.documents:,} documents: {_counts(report.statuses)}")
    print(f"{report.converted:,} converted in {report.seconds:,.1f} s{rate}; the others were there already")


def _counts(statuses: Dict[str, int]) -> str:
    return ", ".join(f"{count:,} {status}" for status, count in statuses.items()) or "nothing to do"


if __name__ == "__main__":
    sys.exit(main())
