"""The page as a whole: sections, headers, pictures and shapes; in print, on a phone and in the dark."""

import re
import zlib

import pages
from pages import PageTest, PIXELS_PER_POINT, PIXELS_PER_TWIP

DOCUMENTS = ("characters", "paragraphs", "tabs", "directions", "lists", "tables", "notes", "changes", "contents",
             "sections", "small", "pictures", "shapes")
A4, A5, A4_BROAD = (595.3, 841.9), (419.55, 595.3), (841.9, 595.3)
FILLER = "Words that stand beside what floats"


class Sections(PageTest):
    document = "sections"
    options = ("--headers",)

    def test_have_columns(self):
        left, right = self.box("column line 1."), self.box("column line 40.")
        width = (9026 - 720) / 2 * PIXELS_PER_TWIP
        self.assertNear(self.text_area().left, left.left)
        self.assertNear(width + 720 * PIXELS_PER_TWIP, right.left - left.left, 2)
        self.assertNear(left.top, self.box("column line 21.").top, 20)

    def test_have_a_line_between_columns(self):
        self.assertEqual("solid", self.ask("""(() => { let e = at("column line 1.");
            while (e && getComputedStyle(e).columnCount !== "2") e = e.parentElement;
            return e && getComputedStyle(e).columnRuleStyle; })()"""))

    def test_have_headers_and_footers(self):
        head, foot = self.box("words of the header"), self.box("words of the footer")
        self.assertTrue(self.ask('within("words of the header", "header") && within("words of the footer", "footer") '
                                 '&& true'))
        self.assertLessEqual(head.bottom, self.box("in one column").top + 1)
        self.assertGreater(foot.top, self.box("ends this page").bottom)
        self.assertNear(self.text_area().centre, head.centre)

    def test_show_where_a_page_ends(self):
        self.assertGreater(self.box("begins the next page").top, self.box("ends this page").bottom + 10)

    def test_are_as_wide_as_their_paper(self):
        broad = self.box("second broad cell").left - self.box("broad cell").left
        self.assertTwips(6000, broad, 2)


class Print(PageTest):
    document = "small"

    def papers(self):
        """The sizes of the pages of a PDF in points."""
        pdf = self.engine.printed()
        plain = pdf + b"".join(_inflated(pdf))
        boxes = re.findall(rb"/MediaBox\s*\[\s*0 0 ([\d.]+) ([\d.]+)\s*\]", plain)
        return [(float(width), float(height)) for width, height in boxes]

    def assertPapers(self, expected, found):
        for size in found:
            self.assertTrue(any(abs(size[0] - each[0]) < 1 and abs(size[1] - each[1]) < 1 for each in expected), size)

    def test_is_on_the_paper_of_the_document(self):
        papers = self.papers()
        self.assertPapers([A5], papers)
        self.assertGreater(len(papers), 1)

    def test_is_on_the_paper_of_each_section(self):
        self.show(self.size, "sections")
        papers = self.papers()
        self.assertPapers([A4, A4_BROAD], papers)
        self.assertEqual(1, sum(width > height for width, height in papers))
        self.assertGreaterEqual(len(papers), 3)

    def show_printed(self, document, width):
        """As on paper that leaves text a width in twips."""
        self.engine.media(kind="print")
        self.addCleanup(self.engine.media)
        self.show((round(width * PIXELS_PER_TWIP), 900), document)

    def test_has_text_as_broad_as_the_paper_leaves_room_for(self):
        self.show_printed("small", 8391 - 2880)
        self.assertNear(0, self.text_area().left)
        self.assertTwips(8391 - 2880, self.text_area().right)

    def test_has_indents_as_wide_as_on_a_screen(self):
        self.show_printed("paragraphs", 9026)
        self.assertTwips(1440, self.box("indented by an inch").left - self.text_area().left)


def _inflated(pdf):
    for start in re.finditer(rb"stream\r?\n", pdf):
        try:
            yield zlib.decompressobj().decompress(pdf[start.end():])
        except zlib.error:
            continue


class Narrow(PageTest):
    document = "characters"

    def test_pages_do_not_scroll_sideways(self):
        for document in DOCUMENTS:
            with self.subTest(document):
                self.show_narrow(document)
                self.assertFits()

    def test_letters_are_as_large_as_ever(self):
        self.show_narrow("characters")
        self.assertNear(11 * PIXELS_PER_POINT, self.pixels("size of Normal", "font-size"), 0.05)

    def test_indents_leave_room_for_text(self):
        self.show_narrow("paragraphs")
        self.assertGreater(self.ask('block("indented by an inch").clientWidth'), 200)

    def test_headings_stay_in_the_window(self):
        self.show_narrow("contents")
        self.assertLessEqual(self.box("A part of the part").right, pages.NARROW[self.shelf.name][0])


class Dark(PageTest):
    """What is drawn: a page may be made dark as a whole, which no style of its elements tells."""

    document = "paragraphs"
    scheme = "dark"

    def shades(self, text):
        """The darkest and the lightest point of a text, from 0 to 255."""
        box, picture = self.box(text), self.drawn()
        found = [luminance(picture[x, y]) for y in range(int(box.top), int(box.bottom))
                 for x in range(int(box.left), int(box.right))]
        return min(found), max(found)

    def margin(self):
        """Of the page beside its text."""
        area = self.text_area()
        return luminance(self.drawn()[area.left - 8, area.top + 100])

    def test_pages_are_light_as_paper_unless_asked(self):
        self.assertGreater(self.margin(), 240)
        darkest, lightest = self.shades("to the left")
        self.assertLess(darkest, 60)
        self.assertGreater(lightest, 240)

    def test_pages_are_dark_if_asked(self):
        self.show(self.size, "paragraphs", "--dark")
        self.assertLess(self.margin(), 60)
        darkest, lightest = self.shades("to the left")
        self.assertLess(darkest, 60)
        self.assertGreater(lightest, 160)

    def test_what_has_a_colour_can_be_read_in_the_dark(self):
        self.show(self.size, "characters", "--dark")
        for text in ("red text", "highlighted text", "shaded text", "night words", "marked at night"):
            with self.subTest(text):
                darkest, lightest = self.shades(text)
                self.assertGreater(lightest - darkest, 60)


def luminance(colour):
    red, green, blue = colour
    return 0.299 * red + 0.587 * green + 0.114 * blue


class Pictures(PageTest):
    document = "pictures"

    def picture(self, alternative):
        found = self.ask(f"""(image => image && {{...boxOf(image), natural: image.naturalWidth,
            alternative: image.alt}})(document.querySelector('img[alt="{alternative}"]'))""")
        self.assertIsNotNone(found, alternative)
        return type("Shown", (), found)

    def test_are_shown(self):
        for alternative in ("A green patch", "A red patch"):
            self.assertEqual(30, self.picture(alternative).natural)

    def test_are_shown_from_a_disk(self):
        self.engine.open(f"file://{self.converter.folder}/{self.converter.page('pictures')}")
        self.assertEqual(30, self.picture("A green patch").natural)

    def test_are_shown_if_they_are_in_the_page(self):
        self.show(self.size, "pictures", "--pictures=embedded")
        self.assertEqual(30, self.picture("A green patch").natural)
        self.assertTrue(self.ask('document.querySelector("img").src.startsWith("data:image/png")'))

    def test_are_left_out_if_wanted(self):
        self.show(self.size, "pictures", "--pictures=none")
        self.assertEqual(0, self.ask('document.querySelectorAll("img").length'))

    def test_stand_in_the_line(self):
        green, front, behind = self.picture("A green patch"), self.box("in front"), self.box("and behind")
        self.assertTwips(1440, green.width)
        self.assertTwips(720, green.height)
        self.assertNear(front.bottom, behind.bottom)
        self.assertGreaterEqual(green.left, front.right - 1)
        self.assertLessEqual(green.right, behind.left + 1)
        self.assertNear(front.bottom, green.bottom, 8)
        self.assertGreaterEqual(self.box("below the inline picture").top, green.bottom - 1)

    def test_float_at_their_side(self):
        red, area = self.picture("A red patch"), self.text_area()
        self.assertTwips(2400, red.width)
        self.assertTwips(1600, red.height)
        self.assertTwips(6000, red.left - area.left, 3)
        self.assertNear(self.box("floats at the right").top, red.top, 8)

    def test_are_not_written_over(self):
        over = self.ask(f"""(() => {{ const found = [];
            for (const image of document.querySelectorAll("img")) {{
                const frame = image.getBoundingClientRect();
                for (let i = 0, text; (text = range("{FILLER}", i)); ++i)
                    for (const line of text.getClientRects())
                        if (line.left < frame.right - 1 && line.right > frame.left + 1 &&
                            line.top < frame.bottom - 1 && line.bottom > frame.top + 1) found.push(i);
            }} return found; }})()""")
        self.assertEqual([], over)

    def test_are_no_broader_than_a_phone(self):
        self.show_narrow("pictures")
        for alternative in ("A green patch", "A red patch"):
            self.assertLessEqual(self.picture(alternative).right, pages.NARROW[self.shelf.name][0])


class Metafiles(PageTest):
    document = "metafiles"
    RED, BLUE = (255, 0, 0), (0, 0, 255)

    def colours(self, description):
        """Of the left and the right half, at the top and at the bottom of the frame."""
        frame = self.element_box(f'[alt="{description}"], [aria-label="{description}"]')
        self.assertTwips(1440, frame.width)
        self.assertTwips(1440, frame.height)
        picture = self.drawn()
        return [[picture[frame.left + frame.width * across, frame.top + frame.height * down]
                 for down in (0.1, 0.9)] for across in (0.2, 0.8)]

    def test_fill_their_frame(self):
        self.assertEqual([[self.RED] * 2, [self.BLUE] * 2], self.colours("Whole"))

    def test_are_cropped(self):
        self.assertEqual([[self.BLUE] * 2] * 2, self.colours("Right half"))

    def test_are_grey(self):
        for side in self.colours("Grey"):
            for colour in side:
                self.assertLess(max(colour) - min(colour), 3)

    def test_lose_a_colour(self):
        self.assertEqual([[(255, 255, 255)] * 2, [self.BLUE] * 2], self.colours("Without red"))

    def test_lose_no_colour(self):
        self.assertEqual([[self.RED] * 2, [self.BLUE] * 2], self.colours("Without any"))


class Shapes(PageTest):
    document = "shapes"

    def setUp(self):
        super().setUp()
        self.picture = self.drawn()

    def colour(self, anchor, left, top):
        """Of the point so many twips right of the text area and below the top of a paragraph."""
        area, paragraph = self.text_area(), self.block_box(anchor)
        return self.picture[area.left + left * PIXELS_PER_TWIP, paragraph.top + top * PIXELS_PER_TWIP]

    def assertColour(self, expected, anchor, left, top):
        found = self.colour(anchor, left, top)
        self.assertTrue(all(abs(a - b) < 12 for a, b in zip(expected, found)), f"{found} at {left}, {top}")

    def test_are_drawn_at_their_place(self):
        anchor = "anchor of the rectangle"
        for left, top in ((1440 + 100, 600 + 100), (1440 + 2780, 600 + 100), (1440 + 1440, 600 + 1340)):
            self.assertColour((0, 0, 255), anchor, left, top)
        for left, top in ((1440 - 100, 700), (1440 + 2980, 700), (2880, 600 + 1540)):
            self.assertColour((255, 255, 255), anchor, left, top)

    def test_are_lines(self):
        self.assertColour((255, 0, 0), "anchor of the line", 2000, 600)
        self.assertColour((255, 255, 255), "anchor of the line", 4200, 600)

    def test_are_drawings(self):
        self.assertGreaterEqual(self.ask('document.querySelectorAll("svg").length'), 2)

    def test_text_boxes_stand_at_their_place(self):
        self.assertColour((255, 255, 0), "anchor of the text box", 4320 + 2700, 600 + 1300)
        area, words = self.text_area(), self.box("words in the box")
        left, top = area.left + 4320 * PIXELS_PER_TWIP, self.block_box("anchor of the text box").top + 40
        self.assertGreater(words.left, left)
        self.assertLess(words.left, left + 20)
        self.assertGreater(words.top, top - 2)
        self.assertLess(words.top, top + 20)
        self.assertGreater(self.box("more in the box").top, words.top + 10)

    def test_nothing_is_lost_on_a_phone(self):
        self.show_narrow("shapes")
        words = self.box("words in the box")
        self.assertLessEqual(words.right, pages.NARROW[self.shelf.name][0])
        self.assertGreater(words.width, 20)


class Safety(PageTest):
    document = "characters"

    def test_no_script_runs_and_nothing_is_loaded(self):
        for document in DOCUMENTS:
            with self.subTest(document):
                self.show(self.size, document)
                self.assertEqual([0, 0], self.ask("""[document.scripts.length,
                    performance.getEntriesByType("resource").filter(each => !/(\\.png|favicon\\.ico)$/.test(each.name)).length]"""))

    def test_browsers_have_nothing_to_complain_of(self):
        for document in DOCUMENTS:
            self.engine.complaints()
            self.show(self.size, document)
            told = [each for each in self.engine.complaints() if "favicon" not in each]
            self.assertEqual([], told, document)
