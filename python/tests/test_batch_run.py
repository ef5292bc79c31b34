import json
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import time

import pytest

import pagerex
from pagerex.batch import Item, Row, _journal, convert_shard, key_of, rows, run

HERE = pathlib.Path(__file__).resolve().parent
KILLING = (str(HERE / "killing_child.py"),)

#: A run in a process of its own: its output, then its documents' folder, then its child.
RUN = """
import pathlib, signal, sys
from pagerex.batch import run
# A shell's background job ignores it, and so does what it starts.
signal.signal(signal.SIGINT, signal.default_int_handler)
output, folder, *child = sys.argv[1:]
hidden = {"_child": child} if child else {}
paths = sorted(str(path) for path in pathlib.Path(folder).iterdir())
print(run(paths, output, "text", slots=2, timeout=60, **hidden).counts)
"""


def lasting(row):
    return {name: value for name, value in row.items() if name not in ("milliseconds", "attempts")}


def told_of(output):
    return sorted((lasting(row) for row in rows(output)), key=lambda row: row["path"])


def files_of(output):
    """All but the journal, whose lines come in any order."""
    return {
        str(path.relative_to(output)): path.read_bytes()
        for path in pathlib.Path(output).rglob("*")
        if path.is_file() and not path.name.startswith("rows-")
    }


@pytest.fixture
def output(tmp_path):
    return str(tmp_path / "results")


@pytest.fixture
def letters(tmp_path, sample):
    """Some documents, and some that are none."""
    folder = tmp_path / "letters"
    folder.mkdir()
    for number in range(24):
        changed = sample[: 2000 + 1200 * number] + b"\xff" * 20 + sample[2020 + 1200 * number :]
        (folder / f"{number:02}.doc").write_bytes(changed)
    (folder / "empty.doc").write_bytes(b"")
    (folder / "other.doc").write_bytes(b"%PDF-1.7")
    return folder


# What a run writes.


def test_results_lie_under_their_keys(sample, output):
    summary = run([Item("a", sample), Item("b", b"{\\rtf1}")], output, "text")
    assert summary == ({"ok": 1, "not_word": 1}, 0)
    key = key_of(sample, "text")
    place = f"objects/{key[:2]}/{key}.txt"
    assert files_of(output) == {"lock": b"", place: pagerex.convert(sample, "text").content.encode()}
    assert {row["path"]: (row["status"], row["output"]) for row in rows(output)} == {
        "a": ("ok", place),
        "b": ("not_word", ""),
    }


def test_links_to_other_files_hold(sample, output):
    run([Item("a", sample)], output, "markdown", name="letter.md")
    one = pagerex.convert(sample, "markdown", name="letter.md")
    (row,) = rows(output)
    place = pathlib.Path(output, row["output"])
    assert (place.name, place.read_text()) == ("letter.md", one.content)
    for name, asset in one.assets.items():
        assert name in one.content and (place.parent / name).read_bytes() == asset.data


def test_lines_are_rows(sample, output):
    told = []
    run([Item("a", sample)], output, "text", on_row=told.append)
    (line,) = rows(output)
    expected = {**told[0].as_dict(), "output": line["output"], "options": line["options"], "seen": line["seen"]}
    del expected["content"], expected["assets"]
    assert line == expected and isinstance(told[0], Row)
    assert json.loads(line["options"])["timeout"] == 60


def test_rows_are_those_of_a_shard(letters, output):
    paths = [str(path) for path in letters.iterdir()]
    run(paths, output, "text", sync=True)
    shard = {}
    for row in convert_shard(paths, "text"):
        shard[row.path] = {name: value for name, value in row.as_dict().items() if name not in ("content", "assets")}
    assert {row["path"]: lasting({name: row[name] for name in shard[row["path"]]}) for row in rows(output)} == {
        path: lasting(row) for path, row in shard.items()
    }


@pytest.mark.parametrize("name", [b"f\xff.doc", b"new\nline.doc", "späť.doc".encode()])
def test_any_name(name, sample, output, tmp_path):
    path = os.fsdecode(os.path.join(os.fsencode(tmp_path), name))
    pathlib.Path(path).write_bytes(sample)
    run([path], output, "text")
    assert run([path], output, "text").kept == 1
    assert [(row["path"], row["status"]) for row in rows(output)] == [(path, "ok")]


def test_names_that_no_file_has(output, sample):
    summary = run([Item("\ud800", sample), "\ud800", "a\0b"], output, "text")
    assert summary.counts == {"ok": 1, "unreadable": 2}


# Again.


def test_what_is_done_is_not_done_again(letters, output):
    paths = sorted(map(str, letters.iterdir()))
    first = run(paths, output, "text")
    before = files_of(output)
    assert run(paths, output, "text") == (first.counts, len(paths))
    assert files_of(output) == before
    assert [name for name in os.listdir(output) if name.startswith("rows-")] == ["rows-0001.jsonl"]


def test_what_has_changed_is_done_again(letters, output, sample):
    def kept(**options):
        return run([str(letters / "00.doc"), Item("a", content)], output, "text", **options).kept

    content = b"one"
    assert kept() == 0
    assert kept() == 2
    assert kept(width=60) == 0
    assert kept(timeout=50) == 0
    assert kept() == 2
    content = b"two"
    assert kept() == 1
    (letters / "00.doc").write_bytes(sample)
    assert kept() == 1
    pathlib.Path(output, next(row["output"] for row in rows(output) if row["output"])).unlink()
    assert (kept(), kept()) == (1, 2)


def test_what_was_not_there_is_tried_again(letters, output, sample):
    late = letters / "late.doc"
    assert run([late], output, "text").counts == {"unreadable": 1}
    late.write_bytes(sample)
    assert run([late], output, "text") == ({"ok": 1}, 0)
    assert [row["status"] for row in rows(output)] == ["ok"]


def test_who_is_given_up_stays_so(output):
    assert run([Item("a", b"<crash>")], output, "text", _child=KILLING).counts == {"crash": 1}
    assert run([Item("a", b"<crash>")], output, "text", _child=KILLING) == ({"crash": 1}, 1)
    assert next(rows(output))["quarantined"]


def test_a_result_that_cannot_be_written(output, sample):
    os.mkdir(output)
    pathlib.Path(output, "objects").write_text("in the way")
    assert run([Item("a", sample), Item("b", b"")], output, "text").counts == {"not_word": 1, "write_failed": 1}
    os.unlink(os.path.join(output, "objects"))
    assert run([Item("a", sample), Item("b", b"")], output, "text") == ({"ok": 1, "not_word": 1}, 1)
    assert sorted(os.listdir(output)) == ["lock", "objects", "rows-0001.jsonl", "rows-0002.jsonl"]


def test_broken_lines_are_nothing(letters, output):
    paths = sorted(map(str, letters.iterdir()))
    run(paths, output, "text")
    journal = pathlib.Path(output, "rows-0001.jsonl")
    lines = journal.read_bytes().splitlines(keepends=True)
    nonsense = [b"\xff\xfe\n", b"[1]\n", b"{}\n", b"null\n", b'{"path": 3, "status": [], "output": 5}\n']
    journal.write_bytes(b"".join(lines[:-1] + nonsense) + lines[-1][:50])
    assert run(paths, output, "text").kept == len(paths) - 1
    assert run(paths, output, "text").kept == len(paths)


def test_folders_whose_files_cannot_be_shared(output, sample, monkeypatch):
    def refuses(descriptor, place):
        raise OSError("no such device")

    monkeypatch.setattr(_journal, "Desk", refuses)
    assert run([Item("a", sample)], output, "text").counts == {"ok": 1}
    assert run([Item("a", sample)], output, "text").kept == 1


def test_one_run_at_a_time(output, sample):
    def try_another(row):
        with pytest.raises(pagerex.RefusedError):
            run([], output)

    assert run([Item("a", sample)], output, "text", on_row=try_another).counts == {"ok": 1}
    assert run([], output).counts == {}


def test_errors_leave_a_run_that_goes_on(output, sample):
    def fails(row):
        raise KeyError("no more")

    with pytest.raises(KeyError, match="no more"):
        run([Item("a", sample), Item("b", b"")], output, "text", slots=1, on_row=fails)
    with pytest.raises(pagerex.OptionError):
        run([], output, slots=0)
    assert sorted(set(os.listdir(output)) - {"objects"}) == ["lock", "rows-0001.jsonl"]
    assert run([Item("a", sample), Item("b", b"")], output, "text", slots=1) == ({"ok": 1, "not_word": 1}, 1)


# Killed.


def start(*arguments, **environment):
    return subprocess.Popen(
        [sys.executable, "-c", RUN, *map(str, arguments)],
        cwd=os.path.dirname(arguments[0]),
        env={**os.environ, **environment},
        stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL,
        text=True,
    )


def line_count(output):
    return sum(path.read_bytes().count(b"\n") for path in pathlib.Path(output).glob("rows-*.jsonl"))


@pytest.mark.parametrize("number", [signal.SIGKILL, signal.SIGINT])
def test_a_run_that_was_ended_ends_as_one_that_was_not(number, letters, tmp_path, output):
    whole = str(tmp_path / "whole")
    run(sorted(map(str, letters.iterdir())), whole, "text", slots=1)
    chance = random.Random(3)
    for wanted in (3, 14):
        with start(output, letters, *KILLING, EACH_SECONDS="0.03") as process:
            while process.poll() is None and line_count(output) < wanted:
                time.sleep(0.001)
            time.sleep(chance.random() / 50)
            process.send_signal(number)
    with start(output, letters) as process:
        told, _ = process.communicate()
    assert process.returncode == 0 and "'not_word': 2" in told
    assert len(list(pathlib.Path(output).glob("rows-*"))) == 3
    assert told_of(output) == told_of(whole)
    assert files_of(output) == files_of(whole)


def test_who_kills_the_run_twice_is_given_up(letters, output):
    for path in sorted(letters.iterdir())[5:]:
        path.unlink()
    (letters / "01.doc").write_bytes(b"<host>")
    for _ in range(2):
        with start(output, letters, *KILLING) as process:
            process.communicate()
        assert process.returncode == -signal.SIGKILL
    # Another one may have been at hand as well, and come behind it.
    assert line_count(output) >= 3
    with start(output, letters, *KILLING) as process:
        process.communicate()
    assert process.returncode == 0
    told = {os.path.basename(row["path"]): row for row in rows(output)}
    assert {name: row["quarantined"] for name, row in told.items()} == {
        name: name == "01.doc" for name in ("00.doc", "01.doc", "02.doc", "03.doc", "04.doc")
    }
    killer = told["01.doc"]
    assert (killer["status"], killer["bytes"], killer["kind"]) == ("crash", len(b"<host>"), "text")
    assert killer["key"] == key_of(b"<host>", "text")
    assert not os.path.exists(os.path.join(output, "kills.jsonl"))


def test_one_kill_is_nobodys_fault(letters, output):
    for path in sorted(letters.iterdir())[3:]:
        path.unlink()
    (letters / "01.doc").write_bytes(b"<host>")
    with start(output, letters, *KILLING) as process:
        process.communicate()
    with start(output, letters) as process:
        process.communicate()
    told = {os.path.basename(row["path"]): row for row in rows(output)}
    assert (told["01.doc"]["status"], told["01.doc"]["quarantined"]) == ("not_word", False)
    assert {name for name in os.listdir(output) if not name.startswith("rows-")} == {"lock", "objects"}


# The command.


def command(tmp_path, *arguments, **options):
    return subprocess.run(
        [sys.executable, "-m", "pagerex.batch", *map(str, arguments)],
        cwd=tmp_path,
        capture_output=True,
        text=True,
        timeout=60,
        **options,
    )


def test_the_command_converts_folders(letters, tmp_path, sample):
    (letters / "notes.txt").write_text("not asked for")
    (letters / "deep").mkdir()
    (letters / "deep" / "x.DOT").write_bytes(sample)
    done = command(tmp_path, "letters", "letters/notes.txt", "-o", "letters/results", "-t", "text", "-j", 2)
    assert done.returncode == 2 and done.stdout == ""
    assert "pagerex: letters/other.doc: This is a PDF document" in done.stderr
    assert "28 files, in" in done.stderr and "3 not_word" in done.stderr
    again = command(tmp_path, "letters", "-o", "letters/results", "-t", "text")
    assert "27 files, 27 of them before" in again.stderr
    assert {row["path"] for row in rows(letters / "results")} >= {"letters/deep/x.DOT", "letters/notes.txt"}


def test_the_command_takes_names_and_options(letters, tmp_path, sample):
    shutil.copy(letters / "00.doc", letters / "b")
    names = b"letters/00.doc\n\nletters/b\n"
    arguments = (
        "-o",
        "results",
        "-t",
        "text",
        "--files-from",
        "-",
        "--width",
        40,
        "--no-comments",
        "--memory",
        1 << 28,
    )
    with open(tmp_path / "names", "wb") as file:
        file.write(names)
    with open(tmp_path / "names", "rb") as file:
        done = command(tmp_path, *arguments, stdin=file)
    assert done.returncode == 0, done.stderr
    told = list(rows(tmp_path / "results"))
    assert {row["path"] for row in told} == {"letters/00.doc", "letters/b"}
    assert len({row["key"] for row in told}) == 1
    options = json.loads(told[0]["options"])
    assert (options["width"], options["comments"], options["memory"]) == (40, False, 1 << 28)


@pytest.mark.parametrize(
    "arguments",
    [["x.doc"], ["x.doc", "-o", "results", "-j", "0"], ["x.doc", "-o", "x/y/\0"], ["-o", "r", "--files-from", "none"]],
)
def test_the_command_refuses_nonsense(arguments, tmp_path):
    if "\0" in arguments[-1]:
        (tmp_path / "x").write_text("a file")
        arguments = [*arguments[:-1], "x/y"]
    done = command(tmp_path, *arguments)
    assert done.returncode in (1, 2) and done.stderr and "Traceback" not in done.stderr
