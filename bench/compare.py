#!/usr/bin/env python3
"""What a whole conversion costs, in view normal: beside catdoc's extraction of the bare text, or beside another
build of pagerex. Or what text and Markdown cost, beside those that write the bare text, catdoc and antiword, where
these are installed. Or what the page of the format html costs, beside view normal and text.

    cmake --preset bench && cmake --build --preset bench
    bench/compare.py [--runs N] [--build FOLDER] [--before PROGRAM | --texts | --page] [DOCUMENT_OR_FOLDER...]

Measures generated documents, and those named, or else those in the folder that PAGEREX_CORPUS names. Instructions
are those that callgrind counts, in millions; time is processor time, user and system together, the best of N runs, in
which the programs take turns; memory is the peak less the size of the file. tools/figures writes the same into the
documentation."""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

TURNS = 5
OUR_TEXTS = ("text", "markdown")
OTHER_TEXTS = ("catdoc", "antiword")
OUR_PAGES = ("html", "normal", "text")


@dataclass
class Cost:
    milliseconds: float
    kilobytes: int
    instructions: int | None = None


@dataclass
class Comparison:
    """What the programs, by name, take for a document; None for one that fails."""

    document: str
    file: int  # bytes
    html: int
    text: int
    costs: dict
    sizes: dict  # of the outputs, by name, where one writes several

    def change(self, of):
        """From the program before to this one, in percent."""
        before, after = (getattr(self.costs[name], of) if self.costs[name] else None for name in ("before", "pagerex"))
        return f"{100 * (after - before) / before:+.1f} %" if before and after else "-"


class Comparer:
    def __init__(self, build, runs, folder, before=None, formats=None):
        self.build, self.runs, self.folder, self.before, self.formats = build, runs, folder, before, formats
        self.pages, self.text = folder / "out", folder / "catdoc.txt"
        self.pages.mkdir()

    def commands(self, document):
        if self.formats:
            return self.commands_for_formats(document)
        target = self.pages / "out.html"
        commands = {"pagerex": [self.build / "pagerex", document, target]}
        if self.before:
            commands["before"] = [self.before, document, target]
        if shutil.which("catdoc"):
            commands["catdoc"] = ["catdoc", document]
        return commands

    def commands_for_formats(self, document):
        commands = {name: [self.build / "pagerex", "-t", name, "-o", self.pages / name / "out.html", document]
                    for name in self.formats}
        for name in self.formats:
            (self.pages / name).mkdir(exist_ok=True)
        if self.formats == OUR_TEXTS:
            commands.update({name: [name, document] for name in OTHER_TEXTS if shutil.which(name)})
        return commands

    def measure(self, command, runs):
        done = subprocess.run([self.build / "bench/measure", str(runs), self.text, *command], stdout=subprocess.PIPE,
                              text=True)
        if done.returncode != 0:
            return None
        microseconds, kilobytes = map(int, done.stdout.split())
        return Cost(microseconds / 1000, kilobytes)

    def instructions(self, command):
        """None where there is no valgrind."""
        if not shutil.which("valgrind"):
            return None
        done = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command],
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, errors="replace")
        counted = re.search(r"Collected *: *(\d+)", done.stderr)
        return int(counted.group(1)) if counted and done.returncode == 0 else None

    def writable(self, document):
        """A document that cannot be written is not opened: a copy of such a one."""
        return document if os.access(document, os.W_OK) else shutil.copyfile(document, self.folder / document.name)

    def compare(self, document):
        document = self.writable(document)
        commands, costs = self.commands(document), {}
        turns = min(TURNS, self.runs)
        for _ in range(turns):
            for name, command in commands.items():
                new, old = self.measure(command, -(-self.runs // turns)), costs.get(name)
                costs[name] = new if not old or not new else Cost(min(new.milliseconds, old.milliseconds),
                                                                  min(new.kilobytes, old.kilobytes))
        for name in ("pagerex", "before", *(self.formats or ())):
            if costs.get(name):
                costs[name].instructions = self.instructions(commands[name])
        html = size_of(self.pages)
        sizes = {name: size_of(self.pages / name) for name in self.formats or ()}
        text = self.text.stat().st_size if costs.get("catdoc") else 0
        return Comparison(document.stem, document.stat().st_size, html, text, costs, sizes)


def size_of(folder):
    return sum(path.stat().st_size for path in folder.rglob("*") if path.is_file())


def documents_at(places):
    for place in map(Path, places):
        yield from sorted(place.glob("*.doc")) if place.is_dir() else [place]


def compared(build, runs, before, places, formats=None):
    """One after the other, the documents that the benchmarks make and those at `places`."""
    if not shutil.which("catdoc"):
        print("catdoc is not installed: its columns stay empty", file=sys.stderr)
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        subprocess.run([build / "bench/make_bench_documents", folder], check=True)
        comparer = Comparer(build, runs, folder, before, formats)
        for document in [*documents_at([folder]), *documents_at(places)]:
            yield comparer.compare(document)


def millions(cost):
    return f"{cost.instructions / 1e6:.1f}" if cost and cost.instructions else "-"


def milliseconds(cost):
    return f"{cost.milliseconds:.1f}" if cost else "-"


def beside_catdoc(row):
    ours, theirs = row.costs["pagerex"], row.costs.get("catdoc")
    size = row.file / 1024
    return [row.document, f"{size:.0f}", millions(ours), milliseconds(ours), milliseconds(theirs),
            f"{ours.milliseconds / theirs.milliseconds:.2f}" if ours and theirs else "-",
            f"{ours.kilobytes - size:.0f}" if ours else "-", f"{theirs.kilobytes - size:.0f}" if theirs else "-"]


def beside_before(row):
    after, before = row.costs["pagerex"], row.costs["before"]
    size = row.file / 1024
    return [row.document, millions(before), millions(after), row.change("instructions"), milliseconds(before),
            milliseconds(after), row.change("milliseconds"), f"{before.kilobytes - size:.0f}" if before else "-",
            f"{after.kilobytes - size:.0f}" if after else "-"]


def ratio(cost, other, of):
    """Of two costs, either of which may not be there."""
    part, whole = (getattr(each, of) if each else None for each in (cost, other))
    return f"{part / whole:.2f}" if part and whole else "-"


def beside_texts(row):
    text, markdown, *others = (row.costs.get(name) for name in (*OUR_TEXTS, *OTHER_TEXTS))
    size = row.file / 1024
    return [row.document, millions(text), millions(markdown), ratio(markdown, text, "instructions"),
            *(milliseconds(cost) for cost in (text, markdown, *others)),
            *(ratio(ours, other, "milliseconds") for other in others for ours in (text, markdown)),
            *(f"{cost.kilobytes - size:.0f}" if cost else "-" for cost in (text, markdown))]


def beside_view(row):
    html, normal, text = (row.costs.get(name) for name in OUR_PAGES)
    size, (html_bytes, normal_bytes, text_bytes) = row.file / 1024, (row.sizes[name] for name in OUR_PAGES)
    return [row.document, f"{size:.0f}", *(milliseconds(cost) for cost in (html, normal, text)),
            ratio(html, normal, "milliseconds"), ratio(html, text, "milliseconds"),
            ratio(html, normal, "instructions"), ratio(html, text, "instructions"), f"{html_bytes / 1024:.0f}",
            f"{html_bytes / max(normal_bytes, 1):.2f}", f"{html_bytes / max(text_bytes, 1):.2f}",
            *(f"{cost.kilobytes - size:.0f}" if cost else "-" for cost in (html, normal, text))]


PAGE_HEADER = ("document", "KB", "html ms", "normal ms", "text ms", "ms/normal", "ms/text", "M/normal", "M/text",
               "html KB", "KB/normal", "KB/text", "html +KB", "normal +KB", "text +KB")
TEXTS_HEADER = ("document", "M text", "M markdown", "ratio", "text ms", "markdown ms", "catdoc ms", "antiword ms",
                "text/catd.", "md/catd.", "text/antiw.", "md/antiw.", "text +KB", "md +KB")
CATDOC_HEADER = ("document", "KB", "M instr.", "pagerex ms", "catdoc ms", "ratio", "pagerex +KB", "catdoc +KB")
BEFORE_HEADER = ("document", "M before", "M after", "change", "ms before", "ms after", "change", "+KB before",
                 "+KB after")


def print_row(cells):
    name, *numbers = cells
    print(f"{name:<20}" + "".join(f"{number:>13}" for number in numbers), flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--runs", type=int, default=20)
    parser.add_argument("--build", type=Path, default=Path(__file__).parent.parent / "build/bench")
    parser.add_argument("--before", type=Path, help="the command line of another build")
    parser.add_argument("--texts", action="store_true", help="text and Markdown instead of the view")
    parser.add_argument("--page", action="store_true", help="the page of the format html, beside view normal and text")
    parser.add_argument("documents", nargs="*", default=list(filter(None, [os.environ.get("PAGEREX_CORPUS")])))
    options = parser.parse_args()
    header, cells = CATDOC_HEADER, beside_catdoc
    if options.before:
        header, cells = BEFORE_HEADER, beside_before
    if options.texts:
        header, cells = TEXTS_HEADER, beside_texts
    if options.page:
        header, cells = PAGE_HEADER, beside_view
    formats = OUR_PAGES if options.page else OUR_TEXTS if options.texts else None
    print_row(header)
    for row in compared(options.build, options.runs, options.before, options.documents, formats):
        print_row(cells(row))


if __name__ == "__main__":
    main()
