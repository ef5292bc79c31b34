import datetime
import gc
import struct
import weakref

import pytest

import pagerex


def by_text(document, start):
    return next(p for p in document.paragraphs if p.text.startswith(start))


def test_paragraphs(document):
    first = document.paragraphs[0]
    assert first.text == "A Sampler" and first.style.name == "Title" and first.alignment == "center"
    assert first.heading_level is None and not first.is_list_item
    heading = document.headings[0]
    assert (heading.text, heading.heading_level, heading.style.name) == ("Characters", 1, "heading 1")
    assert [p.heading_level for p in document.headings][-2:] == [2, 3]
    assert by_text(document, "this one keeps to the right").alignment == "end"
    assert by_text(document, "and this one is justified").alignment == "justify"


def test_runs(document):
    paragraph = by_text(document, "Bold, italic")
    runs = {run.text: run for run in paragraph.runs}
    assert "".join(run.text for run in paragraph.runs) == paragraph.text
    assert runs["Bold"].bold and not runs["Bold"].italic and runs["Bold"].font_name == "Times New Roman"
    assert runs["bold italic"].bold and runs["bold italic"].italic
    assert runs["double underlined"].underline and runs["double underlined"].font.underline_style == "double"
    assert runs["struck out"].font.strike and runs["doubly struck out"].font.double_strike
    colours = {run.text: run for run in by_text(document, "Red, green").runs}
    assert colours["Red"].color == "#c00000" and colours[", "].color is None
    assert colours["highlighted"].font.highlight_color == "yellow"
    assert colours["shaded"].font.background is not None
    assert [run.text for run in by_text(document, "Red, green").runs if run.font.subscript] == ["2"]
    sizes = {run.text: run.size for run in by_text(document, "Spaced out").runs}
    assert sizes["eight points"] == 8 and sizes["twenty"] == 20
    strong = next(run for run in by_text(document, "Small Capitals").runs if run.text == "a character style")
    assert strong.style.name == "Strong" and strong.bold


def test_runs_make_up_their_paragraphs(document):
    for paragraph in document.paragraphs:
        assert "".join(run.text for run in paragraph.runs) == paragraph.text


def test_line_breaks_and_tabs(document):
    assert "A line\nbroken" in by_text(document, "A line").text
    assert by_text(document, "Left").text == "Left\tcentre\tright"
    broken = by_text(document, "Here it breaks off")
    assert broken.contains_page_break and "\n" in broken.text
    assert not document.paragraphs[0].contains_page_break


def test_paragraph_format(document):
    assert by_text(document, "Twelve points before").paragraph_format.space_before.pt == 12
    assert by_text(document, "Lines half as far").paragraph_format.line_spacing == 1.5
    at_least = by_text(document, "lines at least").paragraph_format.line_spacing
    assert isinstance(at_least, pagerex.Length) and at_least.pt == 18
    hanging = by_text(document, "A hanging indent").paragraph_format
    assert hanging.first_line_indent < 0 < hanging.left_indent
    quote = by_text(document, "A paragraph in a style").paragraph_format
    assert quote.left_indent.twips == quote.right_indent.twips == 720
    assert quote.left_indent.inches == 0.5 and round(quote.left_indent.cm, 2) == 1.27


def test_lists(document):
    items = [p for p in document.paragraphs if p.is_list_item]
    assert [p.list_label for p in items[:6]] == ["1.", "2.", "1", "1.1", "a)", "2"]
    assert [p.list_level for p in items[:6]] == [0, 0, 0, 1, 2, 0]
    assert items[0].list_id == items[1].list_id != items[2].list_id
    assert items[1].list_number == 2 and items[6].list_number is None and items[6].is_bullet
    assert "1. A numbered list\n2. of two items.\n" in document.text


def test_tables(document):
    table, outer = document.tables
    assert len(table.rows) == 5 and len(table.columns) == 3 and table.depth == 1
    assert [cell.text for cell in table.rows[0].cells] == ["Kind", "Example", "Remark"]
    wide = table.rows[1].cells
    assert wide[0] == wide[1] != wide[2] and wide[0].column_span == 2
    tall = table.cell(2, 0)
    assert tall == table.cell(3, 0) and tall.row_span == 2 and tall.text == "A cell as tall as two"
    assert [cell.text for cell in table.columns[2].cells] == ["Remark", "and a narrow one", "1", "2", "in red"]
    assert len(table.cells) == 13 and len({cell.text for cell in table.cells}) == 13
    assert [cell.column_index for cell in table.rows[1].own_cells] == [0, 2]
    assert table.text.splitlines()[0] == "Kind\tExample\tRemark"
    inner = outer.rows[0].cells[0].tables[0]
    assert inner.depth == 2 and [[c.text for c in row.cells] for row in inner] == [
        ["inner 1", "inner 2"],
        ["inner 3", "inner 4"],
    ]
    assert outer.rows[0].cells[0].paragraphs[0].table == outer
    assert all(width > 0 for width in table.column_widths) and table.columns[0].width == table.column_widths[0]


def test_inner_content_is_in_order(document):
    kinds = [type(block).__name__ for block in document.iter_inner_content()]
    assert kinds.count("Table") == 2 and kinds.count("Paragraph") == len(document.paragraphs)
    assert sum(len(list(section.iter_inner_content())) for section in document.sections) == len(kinds)


def test_sections(document):
    sections = document.sections
    assert [section.index for section in sections] == [0, 1, 2, 3]
    assert [section.orientation for section in sections] == ["portrait", "landscape", "portrait", "portrait"]
    assert round(sections[0].page_width.mm) == 210 and round(sections[0].page_height.mm) == 297
    assert sections[3].column_count == 2 and sections[0].start_type == "new_page"
    assert sections[0].header is None and sections[0].headers_and_footers == []
    assert document.paragraphs[0].section == sections[0]


def test_notes(document):
    assert [note.label for note in document.notes] == ["1", "2", "*", "1"]
    assert len(document.footnotes) == 3 and len(document.endnotes) == 1
    first = document.notes[0]
    assert first.text == "The text of the first footnote." and first.span is None
    assert document.text[: first.reference].endswith("A footnote")
    assert first in first.paragraph.notes and len(first.paragraph.notes) == 4
    assert len(document.notes[1].paragraphs) == 2


def test_comments(document):
    (comment,) = document.comments
    assert (comment.author, comment.quoted) == ("A. Reader", "something to say")
    assert comment.text == "Is this clear enough?" and comment.date == datetime.datetime(2004, 3, 1, 10, 15)
    assert document.text[slice(*comment.span)] == comment.quoted


def test_revisions(sample, document):
    assert [(r.kind, r.text) for r in document.revisions] == [("inserted", "added this"), ("deleted", "removed that")]
    assert document.revisions[0].date == datetime.datetime(2004, 3, 1, 9, 30)
    assert "removed that" not in document.text
    with pagerex.open(sample, revisions="all") as marked:
        assert "added this and removed that." in marked.text
        run = next(run for run in by_text(marked, "A colleague").runs if run.text == "removed that")
        assert run.change == "deleted" and run.revision.kind == "deleted" and run.link is None
    with pagerex.open(sample, revisions="original") as original:
        assert "added this" not in original.text and len(original.revisions) == 2


def test_hidden_text(sample, document):
    assert ", hidden," not in document.text
    with pagerex.open(sample, hidden_text=True) as all_text:
        assert any(run.font.hidden for p in all_text.paragraphs for run in p.runs)


def test_links_and_bookmarks(document):
    links = document.links
    assert (links[0].text, links[0].address) == ("an example", "http://www.example.com/")
    assert links[1].bookmark == "Place" and links[0].paragraph.links == [links[0]]
    assert links[0].paragraph.runs[1].link == links[0]
    place = next(bookmark for bookmark in document.bookmarks if bookmark.name == "Place")
    assert place.text == "a bookmarked place" and document.text[slice(*place.span)] == place.text


def test_pictures(document):
    pictures = document.pictures
    assert [picture.media_type for picture in pictures] == ["image/png", "image/png", "image/jpeg"]
    for picture in pictures:
        assert picture.data.startswith((b"\x89PNG", b"\xff\xd8")) and picture.for_web().data == picture.data
        assert picture.width > 0 < picture.height and picture in picture.paragraph.pictures
    assert len(document.drawings) > 10 and all(drawing.data == b"" for drawing in document.drawings)
    assert document.drawings[0].for_web() is None and document.drawings[0].media_type == ""


def test_pictures_are_read_in_any_order(sample, document):
    expected = [picture.data for picture in document.pictures]
    with pagerex.open(sample) as other:
        assert [picture.data for picture in reversed(other.pictures)] == expected[::-1]
        other.close()
        kept = other.pictures
        with pytest.raises(ValueError):
            [picture.data for picture in kept]


def test_bitmaps_get_the_header_of_a_file():
    from pagerex._parts import _with_file_header

    dib = struct.pack("<IiiHHIIiiII", 40, 2, 2, 1, 8, 0, 0, 0, 0, 0, 0) + bytes(1024) + bytes(8)
    file = _with_file_header(dib)
    assert pagerex.detect(file) == "bmp" and struct.unpack("<I", file[10:14])[0] == 14 + 40 + 1024
    for cut in range(60):
        assert _with_file_header(dib[:cut]).startswith(b"BM")


def test_text_boxes(document):
    boxes = document.text_boxes
    assert boxes[0].paragraphs[0].text == "A text box" and len(boxes[1].tables) == 1
    anchor = by_text(document, "Boxes with text")
    assert anchor.text_boxes == boxes[:2] and document.paragraphs[0].text_boxes == []


def test_blocks(document):
    blocks = list(document.blocks())
    assert {block.kind for block in blocks} == {"heading", "paragraph", "list_item", "table", "picture"}
    last = 0
    for block in blocks:
        assert last <= block.start <= block.end
        assert block.kind == "picture" or document.text[block.start : block.end] == block.text != ""
        last = block.start
    item = next(block for block in blocks if block.kind == "list_item")
    assert item.text == "1. A numbered list" and item.item.text == "A numbered list"
    assert item.heading_path == ("Lists",) and item.markdown == "- 1. A numbered list"
    deep = blocks[-1]
    assert deep.heading_path == ("Groups and pictures", "Another page size", "A heading of the third level")
    table = next(block for block in blocks if block.kind == "table").markdown
    assert table.splitlines()[:2] == ["| Kind | Example | Remark |", "| --- | --- | --- |"]
    assert next(block for block in blocks if block.kind == "heading").markdown == "# Characters"


@pytest.mark.parametrize("most", [1, 7, 40, 300, 2000, 10**6])
def test_chunks(document, most):
    chunks = list(document.chunks(most))
    covered = set()
    last = 0
    for chunk in chunks:
        assert 0 < len(chunk.text) <= most and chunk.text == document.text[chunk.start : chunk.end]
        assert chunk.start >= last
        last = chunk.end
        covered.update(range(chunk.start, chunk.end))
    left_out = {document.text[place] for place in set(range(len(document.text))) - covered}
    assert all(character.isspace() for character in left_out)
    assert most < 10**6 or len(chunks) == 1


def test_a_heading_goes_with_what_it_stands_above(document):
    headings = {heading.text for heading in document.headings}
    for chunk in document.chunks(400):
        assert chunk.text.splitlines()[-1] not in headings


@pytest.mark.parametrize("most", [0, -1, 1.5, True, None])
def test_chunks_of_no_size(document, most):
    with pytest.raises(ValueError):
        document.chunks(most)


def test_metadata(document):
    assert document.core_properties == document.metadata and document.metadata.author == "The pagerex team"
    assert document.metadata.modified == document.metadata.saved and document.complete and document.warnings == []
    assert document.counts.paragraphs == 102 and document.kind == "word97"


def test_objects_stand_for_what_they_are(document):
    first, again = document.paragraphs[0], document.paragraphs[0]
    assert first == again and hash(first) == hash(again) and first != document.paragraphs[1] and first != "x"
    assert repr(first) == "<Paragraph 'A Sampler'>" and "..." in repr(document.paragraphs[1])


def test_objects_outlive_their_document(sample):
    paragraph = pagerex.open(sample).paragraphs[0]
    gc.collect()
    assert paragraph.text == "A Sampler" and paragraph.runs[0].bold


def test_documents_are_let_go_of(sample):
    document = pagerex.open(sample)
    document.paragraphs[0].runs[0].font.size  # noqa: B018
    gone = weakref.ref(document)
    del document
    gc.collect()
    assert gone() is None


def test_one_document_many_formats(sample, document):
    for to in pagerex.formats():
        assert document.convert(to).content == pagerex.convert(sample, to).content
