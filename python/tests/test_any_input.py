"""Whatever comes in: exceptions of this package only, no crash, no leak."""

import gc
import io
import random
import resource
import sys

import pytest
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

import pagerex

ROUNDS = 100
FORMATS = list(pagerex.formats())
QUICK = settings(max_examples=60, deadline=None, suppress_health_check=list(HealthCheck))

sensible = st.fixed_dictionaries(
    {},
    optional={
        "revisions": st.sampled_from(["final", "original", "all"]),
        "comments": st.booleans(),
        "hidden_text": st.booleans(),
        "links": st.sampled_from(["safe", "all", "none"]),
        "pictures": st.sampled_from([None, "files", "embedded", "none", "web"]),
        "page_size": st.integers(0, 10**6),
        "headers": st.booleans(),
        "width": st.sampled_from([0, 20, 72, 10**6]),
        "front_matter": st.booleans(),
        "page_breaks": st.booleans(),
        "common_mark": st.booleans(),
        "dark": st.booleans(),
        "name": st.text(min_size=1, max_size=20),
        "memory": st.integers(1, 10**7),
        "input_bytes": st.integers(1, 10**6),
        "output_bytes": st.integers(1, 10**6),
        "deadline": st.floats(0.001, 5),
    },
)
nonsense = st.dictionaries(
    st.sampled_from(["revisions", "links", "page_size", "width", "memory", "deadline", "cancel", "progress", "name"]),
    st.one_of(st.none(), st.integers(), st.floats(), st.text(), st.booleans(), st.binary(), st.lists(st.integers())),
    max_size=3,
)


def mutated(data, seed):
    """With a few bytes changed, cut, or moved."""
    chance = random.Random(seed)
    changed = bytearray(data)
    for _ in range(chance.choice((1, 3, 20, 200))):
        place = chance.randrange(len(changed))
        kind = chance.randrange(4)
        if kind == 0:
            changed[place] = chance.randrange(256)
        elif kind == 1:
            changed[place : place + 4] = chance.choice((b"\0\0\0\0", b"\xff\xff\xff\xff", b"\xff\xff\xff\x7f"))
        elif kind == 2:
            other = chance.randrange(len(changed))
            changed[place : place + 16] = changed[other : other + 16]
        elif chance.random() < 0.05:
            del changed[max(place, 512) :]
    return bytes(changed)


def use(document):
    """Asks for everything."""
    text = document.text
    for paragraph in [*document.paragraphs, *(p for box in document.text_boxes for p in box.paragraphs)]:
        assert "".join(run.text for run in paragraph.runs) == paragraph.text
        paragraph.style, paragraph.alignment, paragraph.list_label, paragraph.list_number, paragraph.notes
        paragraph.paragraph_format.line_spacing, paragraph.section, paragraph.text_boxes
        for run in paragraph.runs:
            run.font.size, run.color, run.style, run.change, run.font.highlight_color, run.font.underline_style
    for table in document.tables:
        table.style, table.column_widths, table.columns
        for row in table.rows:
            for cell in row.cells:
                cell.text, cell.width, cell.column_index, cell.vertical_alignment
    for section in document.sections:
        section.header, section.footer, section.first_page_header, section.start_type, section.page_width
    for note in document.notes:
        note.reference, note.paragraph, note.label, note.text
    for comment in document.comments:
        comment.date, comment.quoted, comment.text, comment.author
    for revision in document.revisions:
        revision.kind, revision.date, revision.text
    for bookmark in document.bookmarks:
        bookmark.span, bookmark.text, bookmark.paragraph
    for picture in document.pictures:
        picture.data, picture.media_type, picture.for_web()
    for block in document.blocks():
        assert block.kind == "picture" or text[block.start : block.end] == block.text
        assert isinstance(block.markdown, str)
    for chunk in document.chunks(500):
        assert 0 < len(chunk.text) <= 500
    document.metadata.as_dict(), document.counts, document.complete, document.warnings, document.form_fields
    document.links, document.footnotes, document.endnotes, document.drawings


def read(data):
    try:
        with pagerex.open(data, deadline=20) as document:
            use(document)
            return True
    except pagerex.PagerexError:
        return False


@QUICK
@given(st.binary(max_size=3000))
def test_any_bytes(data):
    for call in (
        pagerex.convert,
        pagerex.open,
        lambda d: pagerex.convert(io.BytesIO(d)),
        lambda d: list(pagerex.pages(d)),
    ):
        with pytest.raises(pagerex.PagerexError):
            call(data)
    assert isinstance(pagerex.detect(data), str)
    assert pagerex.info(data).input_bytes == len(data)


@QUICK
@given(seed=st.integers(0, 2**32), to=st.sampled_from(FORMATS), options=sensible)
def test_mutated_documents_with_any_options(sample, seed, to, options):
    data = mutated(sample, seed)
    try:
        pagerex.convert(data, to, **options)
    except pagerex.PagerexError as error:
        assert str(error)
    try:
        list(pagerex.pages(data, to, **dict(options, page_size=500)))
    except pagerex.PagerexError as error:
        assert str(error)


@QUICK
@given(to=st.one_of(st.sampled_from(FORMATS), st.text()), options=nonsense)
def test_any_values_of_options(sample, to, options):
    try:
        pagerex.convert(sample, to, **options)
    except (pagerex.PagerexError, TypeError):
        pass


@QUICK
@given(seed=st.integers(0, 2**32))
def test_mutated_documents_are_read(sample, seed):
    read(mutated(sample, seed))


def test_most_mutated_documents_can_be_read(sample):
    assert sum(read(mutated(sample, seed)) for seed in range(60)) > 20


def memory():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * resource.getpagesize()


def work(sample):
    pagerex.convert(sample, "html")
    pagerex.convert(io.BytesIO(sample), "markdown")
    with pagerex.open(sample) as document:
        document.paragraphs[3].runs[0].font.size, document.tables[0].rows[1].cells, document.pictures[0].data
        list(document.chunks(500))
    for bad in (sample[:900], b"plain", mutated(sample, 7)):
        try:
            pagerex.convert(bad)
        except pagerex.PagerexError:
            pass
    try:
        pagerex.convert(sample, progress=lambda done: 1 / 0)
    except ZeroDivisionError:
        pass
    pages = pagerex.pages(sample, page_size=500)
    next(pages)
    pages.close()


def test_no_leak(sample):
    """Of one object a call, or one document a round, far more would stay."""
    for _ in range(40):
        work(sample)
    gc.collect()
    blocks, native = sys.getallocatedblocks(), memory()
    for _ in range(ROUNDS):
        work(sample)
    gc.collect()
    assert sys.getallocatedblocks() - blocks < 4 * ROUNDS
    assert memory() - native < ROUNDS * len(sample)
