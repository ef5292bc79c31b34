"""Made pictures, as a browser shows them: run_made.py PAGEREX [--keep FOLDER] [--list] [NAME...]

Each case of the *_cases.py beside this file is converted, laid with the others on a few large pages, and looked at in
one screenshot of each. Exits with 77 where there is no browser, but not in continuous integration (CI=true), which must
have it."""

import argparse
import base64
import importlib
import io
import os
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent.parent / "pages")]

try:
    from PIL import Image
except ImportError:
    Image = None

CELL, COLUMNS, ROWS = 200, 10, 10
EAST_ASIAN = {"emf_text.double_bytes", "emf_text.chinese", "wmf_text.double_byte"}  # their letters are in few fonts


def all_cases():
    cases = []
    for path in sorted(HERE.glob("*_cases.py")):
        module = importlib.import_module(path.stem)
        for each in module.CASES:
            each.name = f"{path.stem.removesuffix('_cases')}.{each.name}"
            cases.append(each)
    names = [each.name for each in cases]
    twice = {name for name in names if names.count(name) > 1}
    if twice:
        raise ValueError(f"cases with one name: {sorted(twice)}")
    return cases


def convert(pagerex, folder, each):
    """What is wrong, or None."""
    source, target = folder / f"{each.name}.in", folder / f"{each.name}.svg"
    source.write_bytes(each.data)
    done = subprocess.run([pagerex, "picture", source, "-o", target], capture_output=True, text=True, timeout=60,
                          check=False)
    if done.returncode != 0 or not target.exists():
        return f"pagerex ended with {done.returncode}: {done.stderr.strip()}"
    return None


def sheet(folder, number, cases):
    places = [f"left:{at % COLUMNS * CELL}px;top:{at // COLUMNS * CELL}px" for at in range(len(cases))]
    pictures = "".join(f'<img src="{each.name}.svg" style="position:absolute;{place}">'
                       for each, place in zip(cases, places))
    path = folder / f"sheet{number}.html"
    path.write_text("<!doctype html><meta charset=utf-8><title>Made pictures</title>"
                    f"<body style='margin:0;background:#fff'>{pictures}", encoding="utf-8")
    return path


def look_at(engine, folder, number, cases):
    """The view of each case on one sheet."""
    from expectations import View
    engine.size(CELL * COLUMNS, CELL * ROWS)
    engine.open(sheet(folder, number, cases).as_uri())
    sizes = engine.script("Promise.all([...document.images].map(i => i.decode().catch(() => {}).then("
                          "() => [i.naturalWidth, i.naturalHeight])))")
    shot = Image.open(io.BytesIO(base64.b64decode(engine.shot()))).convert("RGB")
    for at, (each, size) in enumerate(zip(cases, sizes)):
        left, top = at % COLUMNS * CELL, at // COLUMNS * CELL
        view = View(shot.crop((left, top, left + CELL - 4, top + CELL - 4)))
        view.natural = tuple(size)
        yield each, view


def check(each, view):
    if view.natural == (0, 0):
        return ["the browser does not read the picture"]
    return [told for told in (expected(view) for expected in each.expectations) if told]


def run(pagerex, engine, folder, cases):
    """The cases with what is wrong in them."""
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        told = list(pool.map(lambda each: convert(pagerex, folder, each), cases))
    wrong = [(each, [why]) for each, why in zip(cases, told) if why]
    cases = [each for each, why in zip(cases, told) if not why]
    most = COLUMNS * ROWS
    for number, first in enumerate(range(0, len(cases), most)):
        for each, view in look_at(engine, folder, number, cases[first:first + most]):
            whys = check(each, view)
            if whys:
                wrong.append((each, whys))
                view.image.save(folder / f"{each.name}.png")
    return wrong


def missing(engines):
    return engines.Chromium.missing("") + ([] if Image else ["python3-pil"])


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("pagerex")
    parser.add_argument("--keep", type=Path, help="a folder for the files, the pages, and pictures of what is wrong")
    parser.add_argument("--list", action="store_true", help="only tell the names")
    parser.add_argument("names", nargs="*", help="parts of the names of the cases that are run")
    return parser.parse_args()


def has_east_asian_font():
    try:
        return bool(subprocess.run(["fc-list", ":lang=ja"], capture_output=True, check=False).stdout.strip())
    except OSError:
        return False


def main():
    import engines
    arguments = parse_arguments()
    lacks = missing(engines)
    if lacks:
        print("Made pictures: nothing was looked at, for want of", ", ".join(lacks))
        return 1 if os.environ.get("CI") == "true" else 77
    cases = [each for each in all_cases()
             if not arguments.names or any(name in each.name for name in arguments.names)]
    if os.environ.get("CI") != "true" and not has_east_asian_font():
        print("Left out for want of an East Asian font:", ", ".join(sorted(EAST_ASIAN)))
        cases = [each for each in cases if each.name not in EAST_ASIAN]
    if arguments.list:
        print("\n".join(each.name for each in cases))
        return 0
    begin = time.monotonic()
    with tempfile.TemporaryDirectory() as temporary:
        folder = arguments.keep or Path(temporary)
        folder.mkdir(parents=True, exist_ok=True)
        engine = engines.Chromium("")
        try:
            wrong = run(Path(arguments.pagerex).resolve(), engine, folder.resolve(), cases)
        finally:
            engine.close()
    for each, whys in wrong:
        for why in whys:
            print(f"FAILED {each.name}: {why}")
    print(f"{len(cases)} pictures, {len(wrong)} wrong, {time.monotonic() - begin:.1f} s")
    return 1 if wrong or not cases else 0


if __name__ == "__main__":
    sys.exit(main())
