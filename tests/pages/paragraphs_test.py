"""Where paragraphs stand: alignment, indents, spaces, heights of lines, borders, tab stops, directions."""

from pages import PageTest, PIXELS_PER_POINT

RED, PALE = "rgb(255, 0, 0)", "rgb(234, 241, 221)"
HEBREW = {"plain": "\u05e9\u05dc\u05d5\u05dd", "indented": "\u05e2\u05d5\u05dc\u05dd", "one": "\u05d0\u05d7\u05d3",
          "two": "\u05e9\u05e0\u05d9\u05dd"}


class Paragraphs(PageTest):
    document = "paragraphs"

    def lines(self, first):
        """The boxes of the lines of a paragraph, by its first words."""
        found = self.ask(f"""(() => {{
            const all = document.createRange();
            all.selectNodeContents(block("{first}"));
            const boxes = [];
            for (const each of [...all.getClientRects()].filter(each => each.width > 0)) {{
                const last = boxes.at(-1);
                if (last && Math.abs(last.bottom - each.bottom) < 4) {{
                    last.left = Math.min(last.left, each.left);
                    last.right = Math.max(last.right, each.right);
                }} else boxes.push({{left: each.left, right: each.right, top: each.top, bottom: each.bottom}});
            }}
            return boxes; }})()""")
        self.assertGreater(len(found), 2, first)
        return found

    def step(self, first):
        """From line to line."""
        lines = self.lines(first)
        return (lines[-1]["bottom"] - lines[0]["bottom"]) / (len(lines) - 1)

    def gap(self, above, below):
        """What stands between two paragraphs beyond what stands between two without spaces."""
        usual = self.box("tight two").top - self.box("tight one").bottom
        return self.box(below).top - self.box(above).bottom - usual

    def test_stand_on_the_paper(self):
        self.assertTwips(9026, self.text_area().width)

    def test_are_aligned(self):
        area = self.text_area()
        self.assertNear(area.left, self.box("to the left").left)
        self.assertNear(area.centre, self.box("in the middle").centre)
        self.assertNear(area.right, self.box("to the right").right)

    def test_are_justified(self):
        area = self.text_area()
        for line in self.lines("to both sides")[:-1]:
            # A space that hangs over the end of its line is no word.
            self.assertLess(abs(line["right"] - area.right), 6)
            self.assertNear(area.left, line["left"])

    def test_are_indented(self):
        for line in self.lines("indented by an inch"):
            self.assertTwips(1440, line["left"] - self.text_area().left)
        self.assertTwips(1440, self.text_area().right - self.box("right indent of an inch").right)

    def test_have_their_first_line_indented(self):
        first, second = (line["left"] - self.text_area().left for line in self.lines("first line further in")[:2])
        self.assertTwips(1080, first)
        self.assertTwips(720, second)

    def test_hang(self):
        first, second = (line["left"] - self.text_area().left for line in self.lines("hanging first line")[:2])
        self.assertTwips(360, first)
        self.assertTwips(720, second)

    def test_have_their_spaces_added_up(self):
        self.assertNear(22 * PIXELS_PER_POINT, self.gap("space after of ten", "space before of twelve"))
        self.assertNear(0, self.gap("space before of twelve", "plain below"))

    def test_of_one_style_have_no_space_between_where_it_says_so(self):
        self.assertNear(10 * PIXELS_PER_POINT, self.gap("plain below", "list style one"))
        self.assertNear(0, self.gap("list style one", "list style two"))
        self.assertNear(10 * PIXELS_PER_POINT, self.gap("list style two", "below list style"))

    def test_have_lines_of_exact_height(self):
        self.assertNear(30 * PIXELS_PER_POINT, self.step("exactly thirty points"), 0.3)

    def test_have_lines_of_a_least_height(self):
        self.assertNear(30 * PIXELS_PER_POINT, self.step("at least thirty points"), 0.5)
        self.assertNear(self.step("usual lines"), self.step("at least one point"))

    def test_have_lines_of_a_multiple(self):
        self.assertNear(2 * self.step("usual lines"), self.step("double lines"), 2)

    def test_have_lines_as_high_as_the_font_wants(self):
        size = self.pixels("usual lines", "font-size")
        self.assertGreater(self.step("usual lines"), 1.05 * size)
        self.assertLess(self.step("usual lines"), 1.3 * size)

    def test_have_borders_outside_the_text(self):
        text, frame = self.box("framed alone"), self.frame("framed alone")
        self.assertNear(self.text_area().left, text.left, 1.5)
        self.assertNear(text.left - 4 * PIXELS_PER_POINT - frame.width_of_line, frame.left, 1.5)
        self.assertLess(frame.top, text.top)
        self.assertGreater(frame.bottom, text.bottom)

    def frame(self, text):
        """The innermost box with a line on its left."""
        found = self.ask(f"""(() => {{
            let element = at("{text}");
            while (element && parseFloat(getComputedStyle(element).borderLeftWidth) === 0)
                element = element.parentElement;
            const look = element && getComputedStyle(element);
            return element && {{...boxOf(element), colour: look.borderLeftColor, style: look.borderLeftStyle,
                                width_of_line: parseFloat(look.borderLeftWidth)}}; }})()""")
        self.assertIsNotNone(found, f"nothing frames {text!r}")
        return type("Frame", (), found)

    def test_have_borders_of_kinds(self):
        frame = self.frame("framed alone")
        self.assertEqual((RED, "solid"), (frame.colour, frame.style))
        self.assertNear(1.5 * PIXELS_PER_POINT, frame.width_of_line, 0.6)
        self.assertEqual("double", self.block_style("double rule below", "border-bottom-style"))
        self.assertEqual("dashed", self.block_style("dashed rule above", "border-top-style"))

    def test_of_like_borders_stand_in_one_box(self):
        lines = self.ask("""(() => {
            const width = (text, side) => parseFloat(blockStyle(text, `border-${side}-width`));
            return [width("first in one box", "bottom"), width("second in one box", "top")]; })()""")
        self.assertEqual([0, 0], lines)
        gap = self.frame("second in one box").top - self.frame("first in one box").bottom
        self.assertLess(gap, 1)

    def test_have_shading_from_margin_to_margin(self):
        self.assertEqual(PALE, self.ask('ground("pale paragraph")'))
        shade = self.block_box("pale paragraph")
        self.assertNear(self.text_area().left, shade.left, 2)
        self.assertNear(self.text_area().right, shade.right, 2)

    def test_begin_with_a_drop_cap(self):
        letter, lines = self.box("Q"), self.lines("uite a large letter")
        beside = [line for line in lines if line["top"] < letter.top + 3 * self.step("usual lines") - 6]
        self.assertEqual(3, len(beside))
        for line in beside:
            self.assertGreaterEqual(line["left"] + 1, letter.right)
        self.assertNear(self.text_area().left, lines[3]["left"])
        self.assertGreater(self.pixels("Q", "font-size"), 40)

    def test_begin_a_page_in_print(self):
        self.assertIn(self.block_style("on a new page", "break-before"), ("page", "always"))

    def test_know_their_style(self):
        self.assertTwips(720, self.box("quoted words").left - self.text_area().left)
        self.assertStyle("quoted words", font_style="italic")


class Tabs(PageTest):
    document = "tabs"

    def from_left(self, text):
        return self.box(text).left - self.text_area().left

    def test_end_at_a_right_stop(self):
        for text in ("p12", "p345", "right end"):
            with self.subTest(text):
                self.assertNear(self.text_area().right, self.box(text).right)

    def test_stand_on_the_line_of_their_text(self):
        for name, stop in (("Chapter one", "p12"), ("Chapter two, whose name is longer", "p345"),
                           ("left end", "middle word"), ("left end", "right end"), ("from", "left stop")):
            with self.subTest(stop):
                self.assertNear(self.box(name).bottom, self.box(stop).bottom)

    def test_are_filled_with_dots(self):
        picture = self.drawn()
        begin, end = self.box("Chapter one"), self.box("p12")
        rows = range(int(begin.middle), int(begin.bottom) + 1)
        columns = range(int(begin.right) + 8, int(end.left) - 8)
        dark = [any(sum(picture[x, y]) < 600 for y in rows) for x in columns]
        begun = sum(now and not before for before, now in zip(dark, dark[1:]))
        self.assertGreater(begun, 30)
        self.assertGreater(dark.count(False), begun)

    def test_stand_around_a_centre_stop(self):
        self.assertTwips(9026 / 2, self.box("middle word").centre - self.text_area().left, 1.5)

    def test_begin_at_a_left_stop(self):
        self.assertTwips(2880, self.from_left("left stop"))

    def test_go_to_the_next_usual_stop(self):
        self.assertTwips(720, self.from_left("next stop"))
        self.assertTwips(1440, self.from_left("second stop"))

    def test_have_their_points_below_each_other(self):
        self.assertTwips(3600, self.box("4711").right - self.text_area().left)
        self.assertTwips(3600, self.box("8").right - self.text_area().left)

    def test_of_a_hanging_paragraph_go_to_its_indent(self):
        self.assertTwips(1440, self.from_left("behind the tab"))
        self.assertTwips(720, self.from_left("numbered by hand"))


class Directions(PageTest):
    document = "directions"

    def test_from_right_to_left_begin_at_the_right(self):
        area = self.text_area()
        self.assertNear(area.right, self.box(HEBREW["plain"]).right, 2)
        self.assertTwips(1440, area.right - self.box(HEBREW["indented"]).right, 2)
        self.assertNear(area.left, self.box("from left to right").left)

    def test_are_told(self):
        self.assertEqual("rtl", self.style(HEBREW["plain"], "direction"))
        self.assertEqual("ltr", self.style("from left to right", "direction"))

    def test_have_tab_stops_from_the_right(self):
        self.assertTwips(2880, self.text_area().right - self.box(HEBREW["two"]).right, 2)

    def test_of_tables_are_theirs(self):
        self.assertGreater(self.box("column A").left, self.box("column B").right)

    def test_languages_are_told(self):
        for text, language in (("English, then", "en-US"), ("une phrase", "fr-FR"), ("and English again", "en-US"),
                               ("Ein deutscher Absatz", "de-DE"), (HEBREW["plain"], "he-IL")):
            with self.subTest(text):
                told = self.ask(f"""within("{text}", "[lang]")?.lang""")
                self.assertIn(told, (language, language[:2]))
