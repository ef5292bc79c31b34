"""What a reader sees of the text of converted documents: pages_test.py PAGEREX MAKE_DOCUMENTS [TEST...]"""

import re
import sys
from pathlib import Path

import harness
from harness import PIXELS_PER_POINT, Pages, page

CONVERSIONS = (
    # document, view and its options
    ("text", "normal"),
    ("notes", "normal"),
    ("notes", "mulpages"),
    ("tables", "normal"),
    ("sections", "normal"),
    ("sections", "mulpages", "--pagesize", "300"),
    ("sections", "phone", "--pagesize", "300"),
)


def frame_page(document):
    return f"{document}-normal.html"


def pages_of(document, view):
    folder = Path(Pages.folder, f"{document}-{view}.files")
    return [page(document, view, number) for number in range(1, len(list(folder.glob("[0-9]*.htm"))) + 1)]


class FramePage(Pages):
    def setUp(self):
        super().setUp()
        self.b.open(frame_page("text"))

    def at_top_of_text(self, name):
        self.b.frame("main")
        top = self.b.box(self.b.one(f"a[name^='{name}']")).top
        return -1 <= top <= 1

    def follow(self, link):
        self.b.frame("navigation")
        self.b.click(self.b.with_text(link, "a"))

    def test_shows_the_tree_beside_the_text(self):
        self.assertIn("Formatting", self.tree_links())
        tree, text = (self.b.box(self.b.one(f"iframe[src$='{name}']")) for name in ("navigation.html", "1.htm"))
        self.assertEqual(300, tree.width)
        self.assertGreater(text.width, 800)
        self.assertLessEqual(tree.right, text.left)
        self.assertGreater(min(tree.height, text.height), 500)
        self.b.frame("main")
        self.assertTrue(self.b.with_text("Formatting", "span").is_displayed())

    def tree_links(self):
        self.b.frame("navigation")
        texts = [link.text for link in self.b.all("a[target=main]") if link.is_displayed()]
        self.b.leave_frame()
        return texts

    def test_opens_a_fold_on_a_click_and_shuts_it_on_another(self):
        self.assertEqual(["Formatting", "Links", "The last one"], self.tree_links())
        self.b.frame("navigation")
        fold = self.b.one("#fold0")
        self.assertEqual("+", fold.text)
        self.b.click(fold)
        self.assertEqual("-", fold.text)
        self.assertEqual(["Formatting", "Links", "A bookmark", "The last one"], self.tree_links())
        self.b.frame("navigation")
        self.b.click(self.b.one("#fold0"))
        self.assertEqual(["Formatting", "Links", "The last one"], self.tree_links())

    def test_indents_what_lies_below_a_heading(self):
        self.b.frame("navigation")
        for fold in ("#fold0", "#fold1"):
            self.b.click(self.b.one(fold))
        lefts = [self.b.box(self.b.with_text(text, "a")).left for text in ("Links", "A bookmark", "[Place]")]
        self.assertEqual(sorted(set(lefts)), lefts)

    def test_scrolls_the_text_to_the_heading_of_a_link(self):
        self.follow("Links")
        heading = self.b.with_text("Links", "a").get_attribute("href").split("#")[1]
        self.assertTrue(self.at_top_of_text(heading))

    def test_scrolls_the_text_to_the_bookmark_of_a_link(self):
        self.assertFalse(self.at_top_of_text("BM_"))
        self.b.frame("navigation")
        for fold in ("#fold0", "#fold1"):
            self.b.click(self.b.one(fold))
        self.follow("[Place]")
        self.assertTrue(self.at_top_of_text("BM_"))

    def test_hides_and_shows_the_tree_by_the_bar_between(self):
        bar, tree, text = (self.b.one(css) for css in ("#switchPoint", "#navigation", "iframe[name=main]"))
        width = self.b.box(text).width
        self.b.click(bar)
        self.assertFalse(tree.is_displayed())
        self.assertEqual(">", bar.text)
        self.assertNear(width + 300, self.b.box(text).width, 3)
        self.b.click(bar)
        self.assertTrue(tree.is_displayed())
        self.assertEqual("<", bar.text)

    def test_has_no_tree_without_headings_and_bookmarks(self):
        self.b.open(frame_page("tables"))
        self.assertEqual(["main"], [frame.get_attribute("name") for frame in self.b.all("iframe")])


class Characters(Pages):
    def setUp(self):
        super().setUp()
        self.b.open(page("text"))

    def test_look_as_the_document_says(self):
        for text, properties in {
            "bold": {"font_weight": "700"},
            "italic": {"font_style": "italic"},
            "red": {"color": "rgba(255, 0, 0, 1)"},
            "small capitals": {"font_variant_caps": "small-caps"},
            "highlighted": {"background_color": "rgba(255, 255, 0, 1)"},
            "underlined and struck": {"text_decoration_line": "underline line-through"},
            "raised": {"vertical_align": "super"},
            "lowered": {"vertical_align": "sub"},
            "hidden": {"display": "none"},
            "strong": {"font_weight": "700", "color": "rgba(192, 0, 0, 1)"},
            "plain": {"font_weight": "400", "font_style": "normal", "color": "rgba(0, 0, 0, 1)",
                      "text_decoration_line": "none", "vertical_align": "baseline"},
        }.items():
            with self.subTest(text):
                self.assertStyle(self.b.with_text(text, "span"), **properties)

    def test_have_their_size_and_spacing(self):
        for text, points in {"plain": 11, "twenty points": 20, "raised": 11 * 0.83, "Formatting": 16}.items():
            with self.subTest(text):
                self.assertPoints(points, self.b.with_text(text, "span"), "font-size")
        self.assertPoints(2, self.b.with_text("spaced", "span"), "letter-spacing")

    def test_stand_above_and_below_the_line(self):
        raised, level, lowered = (self.b.box(self.b.with_text(text, "span")) for text in ("raised", "level", "lowered"))
        self.assertLess(raised.bottom, level.bottom)
        self.assertGreater(lowered.bottom, level.bottom)

    def test_arrive_intact(self):
        for text in ("天地玄黄，宇宙洪荒。", "😀 and 🎻"):
            self.assertEqual(text, self.b.text(self.b.with_text(text, "p")))
        marked_up = next(p for p in self.b.all("p") if self.b.text(p).startswith("a <"))
        self.assertEqual('a < b & c > "d"  e', self.b.text(marked_up).replace("\u00a0", " "))


class Paragraphs(Pages):
    def setUp(self):
        super().setUp()
        self.b.open(page("text"))

    def test_are_aligned_as_the_document_says(self):
        for text, align in {"left": "left", "centred": "center", "right": "right", "justified": "justify"}.items():
            with self.subTest(text):
                self.assertStyle(self.b.with_text(text, "p"), text_align=align)

    def test_stand_where_their_alignment_puts_them(self):
        for text, place in {"left": 0, "centred": 0.5, "right": 1}.items():
            with self.subTest(text):
                line = self.b.box(self.b.with_text(text, "p"))
                words = self.b.box(self.b.with_text(text, "span"))
                self.assertNear(line.left + place * (line.width - words.width), words.left)

    def test_are_indented_and_set_apart(self):
        indented, apart = (self.b.with_text(text, "p") for text in ("indented", "apart"))
        for points, element, name in (
            (36, indented, "margin-left"), (72, indented, "margin-right"), (18, indented, "text-indent"),
            (12, apart, "margin-top"), (24, apart, "margin-bottom"),
        ):
            with self.subTest(name):
                self.assertPoints(points, element, name)

    def test_look_as_their_style_says(self):
        quoted = self.b.with_text("quoted", "p")
        self.assertStyle(quoted, font_style="italic", color="rgba(0, 128, 0, 1)", text_align="right")
        self.assertPoints(36, quoted, "margin-left")
        self.assertPoints(6, quoted, "margin-bottom")

    def test_are_as_wide_as_the_paper_between_its_margins(self):
        self.assertNear((11906 - 2 * 1800) / 20 * PIXELS_PER_POINT, self.b.box(self.b.with_text("left", "p")).width)

    def test_hold_links_with_target_and_tip(self):
        link = self.b.with_text("a link", "a")
        self.assertEqual("http://www.example.com/a?b=c", link.get_attribute("href"))
        self.assertEqual("A tip", link.get_attribute("title"))
        self.assertEqual([], self.b.run("return [...document.querySelectorAll('a[href]')]"
                                        ".filter(a => a.textContent.includes('behind it'))"))


class Notes(Pages):
    view = "normal"

    def setUp(self):
        super().setUp()
        self.b.open(page("notes", self.view))

    def check(self, kind, number, mark, text):
        anchor = self.b.one(f"#anchor_{kind}{number}")
        content = self.b.one(f"#content_{kind}{number}")
        self.assertEqual(mark, anchor.text)
        self.b.rest_pointer()
        self.assertFalse(content.is_displayed())
        self.b.hover(anchor)
        self.assertTrue(content.is_displayed())
        self.assertEqual(text, re.sub(r"\s+", " ", content.text))
        self.b.rest_pointer()
        self.assertFalse(content.is_displayed())

    def test_show_a_footnote_while_the_pointer_is_over_its_mark(self):
        self.check("footnote", 0, "0", "The first footnote.")

    def test_show_all_paragraphs_of_a_footnote_with_their_formatting(self):
        self.check("footnote", 1, "1", "Of two paragraphs, in part bold")
        self.assertStyle(self.b.with_text("bold", "span"), font_weight="700")

    def test_show_an_endnote(self):
        self.check("endnote", 0, "0", "The endnote.")

    def test_show_an_annotation_with_author_and_time(self):
        self.check("annotation", 0, "|", "A. Reader, 2004-3-1 9:5:00 星期1 批注： Is this clear?")

    def test_lie_where_the_pointer_was(self):
        anchor = self.b.one("#anchor_endnote0")
        self.b.hover(anchor)
        content, mark = self.b.box(self.b.one("#content_endnote0")), self.b.box(anchor)
        self.assertNear((mark.left + mark.right) / 2, content.left, 2)
        self.assertNear((mark.top + mark.bottom) / 2, content.top, 2)

    def test_stay_open_while_the_pointer_is_over_them(self):
        self.b.hover(self.b.one("#anchor_footnote1"))
        content = self.b.one("#content_footnote1")
        self.b.hover(content)
        self.assertTrue(content.is_displayed())


class NotesInPagedView(Notes):
    view = "mulpages"


class Tables(Pages):
    def setUp(self):
        super().setUp()
        self.b.open(page("tables"))

    def cell(self, text):
        return next(cell for cell in self.b.all("td") if cell.text == text)

    def boxes(self, *texts):
        return [self.b.box(self.cell(text)) for text in texts]

    def test_have_columns_that_align_through_all_rows(self):
        for column in (("tall", "h"), ("d", "f", "i"), ("c", "e", "g", "j")):
            for edge in ("left", "right"):
                with self.subTest(column=column, edge=edge):
                    places = [getattr(box, edge) for box in self.boxes(*column)]
                    self.assertNear(min(places), max(places), 0.5)

    def test_have_columns_as_wide_as_the_document_says(self):
        for box in self.boxes("h", "i", "j"):
            self.assertNear(133, box.width)

    def test_have_cells_that_span_columns(self):
        wide, left, right = self.boxes("wide", "h", "i")
        self.assertNear(left.left, wide.left)
        self.assertNear(right.right, wide.right)

    def test_have_cells_that_span_rows(self):
        tall, upper, lower = self.boxes("tall", "d", "f")
        self.assertNear(upper.top, tall.top)
        self.assertNear(lower.bottom, tall.bottom)
        self.assertNear(upper.bottom, lower.top)

    def test_have_rows_at_least_as_high_as_the_document_says(self):
        for box in self.boxes("h", "i", "j"):
            self.assertNear(80, box.height)
        self.assertLess(self.boxes("c")[0].height, 60)

    def test_hold_nested_tables_inside_a_cell(self):
        outer, inner = self.b.all("table")[1], self.b.one("td table")
        holder, beside = self.b.box(self.b.one("td:has(table)")), self.boxes("beside")[0]
        self.assertTrue(self.b.box(outer).contains(holder))
        self.assertTrue(holder.contains(self.b.box(inner)))
        self.assertNear(holder.right, beside.left)
        above, below = (self.b.box(self.b.with_text(text, "p")) for text in ("above", "below"))
        self.assertLessEqual(above.bottom, self.b.box(inner).top)
        self.assertGreaterEqual(below.top, self.b.box(inner).bottom)

    def test_hold_the_cells_of_nested_tables_in_their_rows(self):
        p, q, r, s = self.boxes("p", "q", "r", "s")
        self.assertEqual((p.top, r.top), (q.top, s.top))
        self.assertEqual((p.left, q.left), (r.left, s.left))
        self.assertGreaterEqual(q.left, p.right - 0.5)
        self.assertGreaterEqual(r.top, p.bottom - 0.5)

    def test_have_borders_padding_and_shading(self):
        framed = self.cell("framed")
        self.assertStyle(framed, background_color="rgba(217, 226, 243, 1)")
        for side in ("top", "left", "bottom", "right"):
            self.assertStyle(framed, **{f"border_{side}_color": "rgba(255, 0, 0, 1)",
                                        f"border_{side}_style": "solid"})
        self.assertPoints(10, framed, "padding-left")
        self.assertPoints(0, framed, "padding-top")


class Sheets(Pages):
    """The white sheet of each section, and how its load script sets it."""

    def check(self, path, index, margins):
        parent, child = self.b.one(f"#parent{index}"), self.b.one(f"#child{index}")
        sheet, text = self.b.box(parent), self.b.box(child)
        self.assertNear(text.height + margins, sheet.height)
        self.assertTrue(sheet.contains(text), path)
        for paragraph in child.find_elements("css selector", "p"):
            self.assertTrue(sheet.contains(self.b.box(paragraph)), path)
        return sheet

    def test_are_as_high_as_their_text_and_margins(self):
        self.b.open(page("sections"))
        self.check(page("sections"), 0, 144)
        self.check(page("sections"), 1, 50)

    def test_are_as_wide_as_their_paper_and_follow_each_other(self):
        self.b.open(page("sections"))
        first, second = (self.b.box(self.b.one(css)) for css in ("#parent0", "#parent1"))
        self.assertNear(11906 / 20 * PIXELS_PER_POINT, first.width)
        self.assertNear(8000 / 20 * PIXELS_PER_POINT, second.width)
        self.assertGreaterEqual(second.top, first.bottom)

    def test_hold_the_text_between_their_margins(self):
        self.b.open(page("sections"))
        for index, (left, right) in enumerate(((50, 50), (25, 75))):
            with self.subTest(index):
                sheet = self.b.box(self.b.one(f"#parent{index}"))
                text = self.b.box(self.b.one(f"#child{index} > div"))
                self.assertNear(sheet.left + left * PIXELS_PER_POINT, text.left)
                self.assertNear(sheet.right - right * PIXELS_PER_POINT, text.right)

    def test_are_set_on_each_page_of_a_long_section(self):
        paths = pages_of("sections", "mulpages")
        self.assertGreaterEqual(len(paths), 4)
        for path in paths:
            with self.subTest(path):
                self.b.open(path)
                for sheet in self.b.all("[id^=parent]"):
                    index = int(sheet.get_attribute("id").removeprefix("parent"))
                    self.check(path, index, (144, 50)[index])


class ManyPages(Pages):
    def check_pages(self, view):
        paths = pages_of("sections", view)
        self.assertGreaterEqual(len(paths), 4)
        numbers = []
        for path in paths:
            with self.subTest(path):
                self.b.open(path)
                quoted = [p for p in self.b.all("p.std15") if p.text]
                self.assertStyle(quoted[-1], font_style="italic", color="rgba(0, 128, 0, 1)", text_align="right")
                self.assertPoints(14, quoted[-1], "font-size")
                numbers += map(int, re.findall(r"Paragraph (\d+)", self.b.text(self.b.one("body"))))
        self.assertEqual(list(range(1, 31)), numbers)

    def test_of_mulpages_have_their_style_and_all_the_text(self):
        self.check_pages("mulpages")

    def test_of_the_phone_view_have_their_style_and_all_the_text(self):
        self.check_pages("phone")

    def test_are_reached_from_the_list_of_the_phone_view(self):
        self.b.open("sections-phone.html")
        links = self.b.all("a")
        self.assertEqual(len(pages_of("sections", "phone")), len(links))
        self.b.click(links[1])
        self.assertTrue(self.b.run("return location.href").endswith(page("sections", "phone", 2)))
        self.assertTrue(self.b.all("p.std15"))


if __name__ == "__main__":
    sys.exit(harness.main(CONVERSIONS))
