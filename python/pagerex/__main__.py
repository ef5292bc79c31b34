"""Converts a document: python -m pagerex letter.doc -t markdown -o letter.md"""

from __future__ import annotations

import argparse
import json
import sys
from typing import Any, Dict, List, Optional

from . import __version__, convert, convert_file, errors, info
from ._options import FORMATS

_CONVERTED, _NONSENSE, _NOT_CONVERTED = 0, 1, 2


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(prog="python -m pagerex", description="Converts Word 97-2003 documents (.doc).")
    parser.add_argument("file", help="the document; - for standard input")
    parser.add_argument("-t", "--to", choices=tuple(FORMATS), help="the format; otherwise the name of OUT tells it")
    parser.add_argument("-o", "--output", metavar="OUT", help="where to; otherwise to standard output")
    add_options(parser)
    parser.add_argument("--info", action="store_true", help="tell what the file is, as JSON")
    parser.add_argument("--version", action="version", version=__version__)
    return parser


def add_options(parser: argparse.ArgumentParser) -> None:
    """Of what is written."""
    parser.add_argument("--revisions", choices=("final", "original", "all"))
    parser.add_argument("--no-comments", dest="comments", action="store_false", default=None)
    parser.add_argument("--hidden-text", action="store_true", default=None)
    parser.add_argument("--links", choices=("safe", "all", "none"))
    parser.add_argument("--pictures", choices=("files", "embedded", "web", "none"))
    parser.add_argument("--page-size", type=int, metavar="N")
    parser.add_argument("--headers", action="store_true", default=None)
    parser.add_argument("--width", type=int, metavar="N")
    parser.add_argument("--front-matter", action="store_true", default=None)
    parser.add_argument("--page-breaks", action="store_true", default=None)
    parser.add_argument("--common-mark", action="store_true", default=None)
    parser.add_argument("--dark", action="store_true", default=None)


def _tell(source: Any) -> None:
    known = info(source)
    told: Dict[str, Any] = {"kind": known.kind, "sentence": known.kind.sentence, "bytes": known.input_bytes}
    if known.counts is not None and known.metadata is not None:
        told.update(counts=known.counts._asdict(), metadata=known.metadata.as_dict())
    print(json.dumps(told, indent=2, ensure_ascii=False))


def main(arguments: Optional[List[str]] = None) -> int:
    """0 if all went well, 1 if the arguments make no sense, 2 if nothing was converted."""
    options = vars(_parser().parse_args(arguments))
    file, to, output = options.pop("file"), options.pop("to"), options.pop("output")
    tells = options.pop("info")
    chosen = {name: value for name, value in options.items() if value is not None}
    source = sys.stdin.buffer.read() if file == "-" else file
    try:
        if tells:
            _tell(source)
        elif output is None or output == "-":
            sys.stdout.buffer.write(convert(source, to or "html", **chosen).content.encode())
        else:
            convert_file(source, output, to, **chosen)
    except (errors.OptionError, errors.RefusedError) as error:
        print(f"pagerex: {error}", file=sys.stderr)
        return _NONSENSE
    except (errors.PagerexError, OSError) as error:
        print(f"pagerex: {error}", file=sys.stderr)
        return _NOT_CONVERTED
    return _CONVERTED


if __name__ == "__main__":
    sys.exit(main())
