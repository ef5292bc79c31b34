#!/usr/bin/env python3
"""What a whole conversion costs, beside catdoc's extraction of the bare text.

    cmake --preset bench && cmake --build --preset bench
    bench/compare.py [--runs N] [--build FOLDER] [DOCUMENT_OR_FOLDER...]

Measures generated documents, and those named, or else those in the folder that PAGEREX_CORPUS names. Time is
processor time, user and system together, the best of N runs; memory is the peak less the size of the file."""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HEADER = ("document", "KB", "pagerex ms", "catdoc ms", "ratio", "pagerex +KB", "catdoc +KB")


def documents_at(places):
    for place in map(Path, places):
        yield from sorted(place.glob("*.doc")) if place.is_dir() else [place]


class Measure:
    def __init__(self, program, runs, folder):
        self.prefix = [program, str(runs), str(folder / "output.txt")]

    def __call__(self, *command):
        """Milliseconds of processor time and peak kilobytes; None if the command fails."""
        done = subprocess.run([*self.prefix, *map(str, command)], stdout=subprocess.PIPE, text=True)
        if done.returncode != 0:
            return None
        microseconds, kilobytes = map(int, done.stdout.split())
        return microseconds / 1000, kilobytes


def row(document, build, measure, folder):
    size = document.stat().st_size / 1024
    ours = measure(build / "pagerex", document, folder / "out.html")
    theirs = measure("catdoc", document) if shutil.which("catdoc") else None
    yield document.stem
    yield f"{size:.0f}"
    yield f"{ours[0]:.1f}" if ours else "-"
    yield f"{theirs[0]:.1f}" if theirs else "-"
    yield f"{ours[0] / theirs[0]:.2f}" if ours and theirs else "-"
    yield f"{ours[1] - size:.0f}" if ours else "-"
    yield f"{theirs[1] - size:.0f}" if theirs else "-"


def print_row(cells):
    name, *numbers = cells
    print(f"{name:<20}" + "".join(f"{number:>13}" for number in numbers), flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runs", type=int, default=20)
    parser.add_argument("--build", type=Path, default=Path(__file__).parent.parent / "build/bench")
    parser.add_argument("documents", nargs="*", default=list(filter(None, [os.environ.get("PAGEREX_CORPUS")])))
    options = parser.parse_args()
    if not shutil.which("catdoc"):
        print("catdoc is not installed: its columns stay empty", file=sys.stderr)
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        subprocess.run([options.build / "bench/make_bench_documents", folder], check=True)
        measure = Measure(options.build / "bench/measure", options.runs, folder)
        print_row(HEADER)
        for document in [*documents_at([folder]), *documents_at(options.documents)]:
            print_row(row(document, options.build, measure, folder))


if __name__ == "__main__":
    main()
