import gc
import hashlib
import io
import itertools
import mmap
import os
import pathlib
import pickle
import random
import signal
import subprocess
import sys
import time
import zipfile

import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import pagerex
from pagerex.batch import STATUSES, Item, Row, _children, convert_shard, key_of, key_prefix

HERE = pathlib.Path(__file__).resolve().parent
#: In the place of the real child.
KILLING = (str(HERE / "killing_child.py"),)


def lasting(row):
    """What is the same on any machine."""
    told = row.as_dict()
    del told["milliseconds"], told["attempts"]
    return told


def by_path(items, *arguments, **options):
    rows = list(convert_shard(items, *arguments, **options))
    told = {row.path: row for row in rows}
    assert len(told) == len(rows)
    return told


def docx():
    packed = io.BytesIO()
    with zipfile.ZipFile(packed, "w") as archive:
        archive.writestr("[Content_Types].xml", "<Types/>")
        archive.writestr("word/document.xml", "<w:document/>")
    return packed.getvalue()


def children_of(process):
    return [int(number) for number in pathlib.Path(f"/proc/{process}/task/{process}/children").read_text().split()]


def is_alive(process):
    try:
        return "\nState:\tZ" not in pathlib.Path(f"/proc/{process}/status").read_text()
    except (FileNotFoundError, ProcessLookupError):
        return False


def all_end(processes, seconds=20):
    end = time.monotonic() + seconds
    while any(map(is_alive, processes)) and time.monotonic() < end:
        time.sleep(0.02)
    return not any(map(is_alive, processes))


# What comes out for what goes in.


def test_each_input_has_one_row(sample, sample_path, tmp_path):
    (tmp_path / "loop").symlink_to("loop")
    os.mkfifo(tmp_path / "pipe")
    with open(tmp_path / "sparse.doc", "wb") as file:
        file.truncate(300 << 20)
    damaged = sample[:3000] + bytes(len(sample) - 3000)
    expected = {
        "bytes": ("ok", "word97"),
        "empty": ("not_word", "empty"),
        "docx": ("not_word", "docx"),
        "pdf": ("not_word", "pdf"),
        "damaged": ("damaged", "word97"),
        str(sample_path): ("ok", "word97"),
        "missing.doc": ("unreadable", "unknown"),
        str(tmp_path): ("unreadable", "unknown"),
        str(tmp_path / "loop"): ("unreadable", "unknown"),
        str(tmp_path / "pipe"): ("unreadable", "unknown"),
        str(tmp_path / "sparse.doc"): ("too_large", "unknown"),
        "with a null byte \0": ("unreadable", "unknown"),
        "of no file \ud800": ("unreadable", "unknown"),
        "long" * 20000: ("unreadable", "unknown"),
    }
    contents = {"bytes": sample, "empty": b"", "docx": docx(), "pdf": b"%PDF-1.7", "damaged": damaged}
    rows = by_path([Item(path, contents.get(path)) for path in expected], slots=2)
    assert {path: (row.status, row.kind) for path, row in rows.items()} == expected
    assert all(row.sentence and row.attempts == 1 and not row.quarantined for row in rows.values())
    assert rows[str(tmp_path / "sparse.doc")].bytes == 300 << 20
    assert rows["missing.doc"].sentence == "The input could not be read: No such file or directory."
    assert lasting(rows["bytes"]) == {**lasting(rows[str(sample_path)]), "path": "bytes"}


def test_a_row_has_what_convert_makes(sample):
    (row,) = convert_shard([("sample", sample)], "markdown", front_matter=True)
    one = pagerex.convert(sample, "markdown", front_matter=True)
    assert row.content == one.content
    assert row.assets == [(name, *asset) for name, asset in one.assets.items()]
    assert row.counts == one.counts._asdict()
    assert (row.metadata["title"], row.metadata["created"][:4]) == ("A Sampler", str(one.metadata.created.year))
    assert (row.bytes, row.sha256) == (len(sample), hashlib.sha256(sample).hexdigest())
    assert row.content_sha256 == hashlib.sha256(one.content.encode()).hexdigest()
    assert (row.version, row.format, row.kind) == (pagerex.__version__, "markdown", "word97")


def test_a_row_has_warnings(sample):
    cut = sample[: len(sample) * 3 // 4]
    one = pagerex.convert(cut, "text")
    (row,) = convert_shard([("cut", cut)], "text")
    assert (row.status, row.content) == ("partial", one.content)
    assert row.warnings == [(told.code, told.sentence, told.where, told.times) for told in one.warnings] != []


def test_a_row_is_a_value(sample):
    (row,) = convert_shard([("sample", sample)], "markdown")
    assert pickle.loads(pickle.dumps(row)) == row
    assert row.as_dict()["assets"][0]["name"] == row.assets[0].name
    assert row.status in STATUSES
    with pytest.raises(AttributeError):
        row.status = "ok"
    assert not hasattr(row, "__dict__")


def test_contents_are_anything_with_a_buffer(sample, sample_path):
    with open(sample_path, "rb") as file, mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as mapped:
        contents = [bytearray(sample), memoryview(sample), memoryview(sample + sample)[: len(sample)], mapped]
        contents.append(memoryview(bytes(itertools.chain(*zip(sample, sample))))[::2])
        rows = by_path(((str(number), content) for number, content in enumerate(contents)), "text", slots=1)
        assert {row.content for row in rows.values()} == {pagerex.convert(sample, "text").content}
        assert len(rows) == 5
        del contents


def test_items_are_paths_or_tuples(sample_path):
    items = [str(sample_path), sample_path, (str(sample_path),), Item(str(sample_path)), (sample_path, None, 5)]
    assert [row.status for row in convert_shard(items, "text", slots=1)] == ["ok"] * 5


@pytest.mark.parametrize("nonsense", [None, 7, b"bytes", ("path", "text")])
def test_what_is_no_item_raises_behind_the_others(nonsense, sample):
    rows = convert_shard([("one", sample), ("two", sample), nonsense, ("three", sample)], "text", slots=2)
    assert {next(rows).path, next(rows).path} == {"one", "two"}
    with pytest.raises(TypeError):
        next(rows)


def test_what_the_items_raise_comes_behind_their_rows(sample):
    def items():
        yield "one", sample
        raise KeyError("out of items")

    rows = convert_shard(items(), "text", slots=2)
    assert next(rows).status == "ok"
    with pytest.raises(KeyError, match="out of items"):
        next(rows)


def test_addresses(sample_path, tmp_path):
    pytest.importorskip("fsspec")
    rows = by_path([f"file://{sample_path}", f"file://{tmp_path}/missing.doc", "nowhere://x"], "text", slots=1)
    assert [row.status for row in rows.values()] == ["ok", "unreadable", "unreadable"]
    (row,) = convert_shard([f"file://{sample_path}"], "text", input_bytes=1000)
    assert (row.status, row.bytes) == ("too_large", sample_path.stat().st_size)


@given(
    st.lists(
        st.binary(max_size=600) | st.binary(max_size=200).map(lambda tail: b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + tail)
    )
)
@settings(max_examples=8, deadline=None)
def test_any_bytes(contents):
    rows = by_path([(str(number), content) for number, content in enumerate(contents)], "text", slots=1)
    assert {row.path: row.sha256 for row in rows.values()} == {
        str(number): hashlib.sha256(content).hexdigest() for number, content in enumerate(contents)
    }
    assert all(row.status in STATUSES and not row.quarantined for row in rows.values())


# Options, limits and keys.


@pytest.mark.parametrize(
    "wrong",
    [
        {"to": "word"},
        {"pictures": "some"},
        {"to": "text", "pictures": "embedded"},
        {"name": "a/b"},
        {"slots": 0},
        {"slots": True},
        {"strikes": 0},
        {"recycle": 1.5},
        {"timeout": 0},
        {"timeout": "1"},
        {"memory": 0},
        {"input_bytes": -1},
        {"deadline": 3},
        {"cancel": pagerex.Cancel()},
        {"progress": print},
    ],
)
def test_wrong_options_raise_at_the_call(wrong):
    with pytest.raises(pagerex.OptionError):
        convert_shard([], **wrong)
    with pytest.raises(TypeError):
        convert_shard([], colour="red")


def test_the_message_names_the_option():
    with pytest.raises(pagerex.OptionError, match="timeout must be"):
        convert_shard([], timeout=-1)


def test_limits(sample):
    def only(content=sample, **options):
        (row,) = convert_shard([Item("it", content, 5000)], "text", slots=1, **options)
        return row.status, row.bytes, row.sha256 != "", row.quarantined

    assert only(input_bytes=len(sample)) == ("ok", len(sample), True, False)
    assert only(input_bytes=len(sample) - 1) == ("too_large", len(sample), False, False)
    assert only(None, input_bytes=4999) == ("too_large", 5000, False, False)
    assert only(output_bytes=10) == ("too_large", len(sample), True, False)
    assert only(memory=1000) == ("memory", len(sample), True, False)
    assert only(memory=None, input_bytes=None, output_bytes=None, timeout=None) == ("ok", len(sample), True, False)


def test_keys_are_what_databases_compute(sample):
    options = {"width": 72, "timeout": 5}
    (row,) = convert_shard([("it", sample)], "text", **options)
    prefix = key_prefix("text", **options)
    assert prefix.isascii() and pagerex.__version__ in prefix
    assert row.key == hashlib.sha256(prefix.encode() + hashlib.sha256(sample).hexdigest().encode()).hexdigest()
    assert row.key == key_of(sample, "text", **options)
    assert next(convert_shard(["missing"])).key is None


def test_keys_tell_what_changes_the_output():
    same = [{}, {"comments": True}, {"links": "safe"}, {"timeout": 60}, {"memory": 1 << 30}, {"pictures": None}]
    same += [{"name": "document.html"}, {"name": None}, {"page_size": 0}]
    assert len({key_prefix("html", **options) for options in same}) == 1
    other = [{}, {"comments": False}, {"links": "all"}, {"timeout": 61}, {"memory": None}, {"pictures": "none"}]
    other += [{"name": "letter.html"}, {"page_size": 500}]
    assert len({key_prefix("html", **options) for options in other} | {key_prefix("text")}) == len(other) + 1


# Documents that kill.

DEADLY = {
    "crash": "crash",
    "exit": "crash",
    "raise": "crash",
    "nonsense": "crash",
    "eat": "memory",
    "eat slowly": "memory",
}


def deadly_items(names, good):
    for name in names:
        yield name, b"<" + name.encode() + b">"
        for number in range(2):
            yield f"{name} {number}", good


@pytest.mark.parametrize("slots", [1, 3])
def test_only_the_guilty_die(slots, sample):
    rows = by_path(deadly_items(DEADLY, sample), "text", slots=slots, memory=64 << 20, _child=KILLING)
    assert {name: rows[name].status for name in DEADLY} == DEADLY
    for name, row in rows.items():
        guilty = name in DEADLY
        assert (row.attempts, row.quarantined, row.status == "ok") == ((2, True, False) if guilty else (1, False, True))
        assert row.key and row.sentence and row.kind == ("text" if guilty else "word97")
    assert rows["crash"].bytes == len("<crash>") and rows["crash"].content is None


def test_only_those_that_take_long_are_late():
    late = ("sleep", "hang")
    rows = by_path(deadly_items(late, b"%PDF"), "text", slots=2, timeout=1.5, strikes=1, _child=KILLING)
    assert {name: rows[name].status for name in late} == {"sleep": "timeout", "hang": "timeout"}
    assert all(rows[name].quarantined == (name in late) for name in rows)
    assert [row.status for name, row in rows.items() if name not in late] == ["not_word"] * 4


def test_a_process_that_is_stopped_is_late(monkeypatch, sample):
    monkeypatch.setattr(_children, "_GRACE_SECONDS", 0.1)
    rows = by_path([("stop", b"<stop>"), ("good", sample)], "text", slots=1, timeout=1, strikes=1, _child=KILLING)
    assert (rows["stop"].status, rows["stop"].attempts, rows["good"].status) == ("timeout", 1, "ok")


@pytest.mark.parametrize("strikes", [1, 3])
def test_strikes(strikes):
    (row,) = convert_shard([("crash", b"<crash>")], "text", slots=1, strikes=strikes, _child=KILLING)
    assert (row.attempts, row.quarantined) == (strikes, True)


def test_who_dies_once_is_tried_again(sample, tmp_path):
    once = sample[:512].ljust(512, b"\0") + b""  # the mark stands behind the document
    mark = tmp_path / "died"
    items = [("first", sample), ("once", b"<once %s>" % os.fsencode(mark)), ("last", once)]
    rows = by_path(items, "text", slots=1, _child=KILLING)
    assert mark.exists()
    assert (rows["once"].status, rows["once"].attempts, rows["once"].quarantined) == ("not_word", 2, False)
    assert rows["first"].attempts == rows["last"].attempts == 1


def test_a_process_lives_for_some_documents(monkeypatch, sample):
    started = []
    start = _children._start
    monkeypatch.setattr(_children, "_start", lambda *arguments: started.append(1) or start(*arguments))
    assert {row.status for row in convert_shard([("it", sample)] * 7, "text", slots=1, recycle=3)} == {"ok"}
    assert len(started) == 3


def test_a_child_that_cannot_start_is_told_of():
    with pytest.raises(RuntimeError, match="ModuleNotFoundError: No module named 'nothing_like_it'"):
        list(convert_shard(["it"], _child=("-c", "import nothing_like_it")))


@pytest.mark.parametrize("name", ["../x", "/x", "a/../x", "a//x", "", "a\0b"])
def test_no_file_lies_outside(name):
    assert not _children.is_below(name)
    assert _children.is_below("document.files/picture-1.png")


# Any order, any number.


def test_rows_are_the_same_in_any_order_and_number(sample):
    changed = [sample[:offset] + b"\xff" * 40 + sample[offset + 40 :] for offset in range(1000, 37000, 2400)]
    items = [(str(number), content) for number, content in enumerate([sample, b"", b"{\\rtf1}", *changed])]
    once = {path: lasting(row) for path, row in by_path(items, "markdown", slots=1).items()}
    random.Random(5).shuffle(items)
    twice = {path: lasting(row) for path, row in by_path(items, "markdown", slots=2, recycle=7).items()}
    assert once == twice
    assert len({row["status"] for row in once.values()}) > 1


def test_many_items_are_never_many_at_hand():
    drawn, at_hand, kinds = 0, [], set()

    def items():
        nonlocal drawn
        for number in range(2000):
            drawn += 1
            yield str(number), b"%%PDF-1.7 %d" % number

    for number, row in enumerate(convert_shard(items(), "text", slots=2), 1):
        at_hand.append(drawn - number)
        kinds.add(row.kind)
    assert (drawn, len(at_hand), kinds) == (2000, 2000, {"pdf"})
    assert max(at_hand) <= 2 * 2 + 2


def test_items_that_are_not_read_do_not_heap_up():
    drawn, at_hand = 0, []

    def items():
        nonlocal drawn
        for number in range(1000):
            drawn += 1
            yield Item(str(number), None, 1 << 40)

    for number, row in enumerate(convert_shard(items(), slots=2), 1):
        at_hand.append(drawn - number)
        assert row.status == "too_large"
    assert len(at_hand) == 1000 and max(at_hand) < 100


def test_large_contents_and_results_pass_while_nobody_reads(sample):
    large = sample + bytes(5 << 20)
    rows = convert_shard(((str(number), large) for number in range(8)), "html", slots=2)
    first = next(rows)
    time.sleep(0.3)
    rest = list(rows)
    assert {row.content for row in rest} == {first.content} == {pagerex.convert(large).content}
    assert len(rest) == 7


# The end.


def open_files():
    return sorted(os.listdir("/proc/self/fd"))


def test_nothing_is_left(sample):
    before = open_files()
    rows = convert_shard([("sleep", b"<sleep>"), ("good", sample)] * 3, "text", slots=2, _child=KILLING)
    assert next(rows).path == "good"
    processes = children_of(os.getpid())
    assert len(processes) >= 2
    rows.close()
    assert not any(map(is_alive, processes))
    assert open_files() == before
    unused = convert_shard(["it"])
    abandoned = convert_shard([("good", sample)] * 9, "text", slots=1)
    next(abandoned)
    del abandoned, unused
    gc.collect()
    assert children_of(os.getpid()) == [] and open_files() == before


HOST = """
import signal, sys
# A shell's background job ignores it, and so does what it starts.
signal.signal(signal.SIGINT, signal.default_int_handler)
from pagerex.batch import convert_shard
rows = convert_shard([("good", b"")] + [("sleep", b"<sleep>")] * 8, "text", slots=3, _child=sys.argv[1:])
print(next(rows).status, flush=True)
next(rows)
"""


@pytest.mark.parametrize("number", [signal.SIGKILL, signal.SIGTERM, signal.SIGINT])
def test_children_end_with_their_host(number, tmp_path):
    pipe = subprocess.PIPE
    with subprocess.Popen([sys.executable, "-c", HOST, *KILLING], stdout=pipe, stderr=pipe, cwd=tmp_path) as host:
        assert host.stdout.readline() == b"not_word\n"
        end = time.monotonic() + 20
        while len(children_of(host.pid)) < 3 and time.monotonic() < end:
            time.sleep(0.01)
        processes = children_of(host.pid)
        assert len(processes) == 3
        host.send_signal(number)
        assert all_end(processes)
        host.wait(20)
        assert host.stdout.read() == b""


FORKING_HOST = """
import os, sys, time
from pagerex.batch import convert_shard

def items():
    yield "a", b""
    yield "b", b""
    if os.fork() == 0:
        print(os.getpid(), flush=True)
        time.sleep(1000)
    time.sleep(1000)

list(convert_shard(items(), "text", slots=2, _child=sys.argv[1:]))
"""


def test_children_without_work_end_though_a_copy_of_their_host_lives_on(tmp_path):
    pipe = subprocess.PIPE
    with subprocess.Popen([sys.executable, "-c", FORKING_HOST, *KILLING], stdout=pipe, cwd=tmp_path) as host:
        copy = int(host.stdout.readline())
        processes = set(children_of(host.pid)) - {copy}
        host.kill()
        try:
            assert len(processes) == 2 and all_end(processes) and is_alive(copy)
        finally:
            os.kill(copy, signal.SIGKILL)


def test_children_print_nothing(tmp_path):
    host = """
import sys
from pagerex.batch import convert_shard
content = open(sys.argv[1], "rb").read()
rows = list(convert_shard([("noise", b"<noise>"), ("it", content)] * 3, "text", slots=2, _child=sys.argv[2:]))
assert len(rows) == 6
"""
    path = str(HERE / "killing_child.py")
    done = subprocess.run([sys.executable, "-c", host, path, *KILLING], capture_output=True, timeout=60, cwd=tmp_path)
    assert (done.returncode, done.stdout, done.stderr) == (0, b"", b"")


def test_a_row_has_what_was_promised():
    assert Row.__slots__ == tuple(Row.__dataclass_fields__)
