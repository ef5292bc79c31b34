"""How characters look: fonts, sizes, colours, lines under and through them."""

from pages import PageTest, PIXELS_PER_POINT

WHITE, BLACK, RED, GREEN = "rgb(255, 255, 255)", "rgb(0, 0, 0)", "rgb(255, 0, 0)", "rgb(0, 128, 0)"
YELLOW, NIGHT, PALE = "rgb(255, 255, 0)", "rgb(0, 0, 64)", "rgb(234, 241, 221)"

# The text, the name in the document and the generic family.
FAMILIES = (
    ("size of Normal", "Times New Roman", "serif"),
    ("in Arial", "Arial", "sans-serif"),
    ("in Courier", "Courier New", "monospace"),
    ("in script", "Brush Script MT", "cursive"),
    ("in fantasy", "Jokerman", "fantasy"),
    ("in unknown sans", "Frobnitz", "sans-serif"),
    ("in unknown mono", "Quux Letters", "monospace"),
)
SIZES = (("size of Normal", 11), ("eight points", 8), ("twenty-four points", 24), ("ten and a half", 10.5))
UNDERLINES = (
    ("singly underlined", "solid"), ("words underlined", "solid"), ("doubly underlined", "double"),
    ("dotted underline", "dotted"), ("thickly underlined", "solid"), ("dashed underline", "dashed"),
    ("wavy underline", "wavy"),
)


class Characters(PageTest):
    document = "characters"

    def families(self, text):
        return self.ask(f'families("{text}")')

    def decorations(self, text):
        return self.ask(f'decorations("{text}")')

    def ground(self, text):
        return self.ask(f'ground("{text}")')

    def test_have_the_font_of_the_document_first_and_a_generic_one_last(self):
        for text, name, generic in FAMILIES:
            with self.subTest(text):
                self.assertEqual((name, generic), (self.families(text)[0], self.families(text)[-1]))

    def test_have_fonts_of_odd_names(self):
        self.assertEqual(r"Odd\"}</style>\\Name", self.families("in an odd name")[0])

    def test_have_their_sizes(self):
        for text, points in SIZES:
            with self.subTest(text):
                self.assertNear(points * PIXELS_PER_POINT, self.pixels(text, "font-size"), 0.05)

    def test_are_bold_or_not(self):
        for text, is_bold in (("bold text", True), ("plain text", False), ("strong text", True),
                              ("Heading with", True), ("a light word", False)):
            with self.subTest(text):
                self.assertEqual(is_bold, int(self.style(text, "font-weight")) >= 600)

    def test_are_italic_or_not(self):
        self.assertStyle("italic text", font_style="italic")
        self.assertStyle("plain text", font_style="normal")

    def test_are_struck_out(self):
        self.assertEqual([("line-through", "solid")],
                         [(each["line"], each["style"]) for each in self.decorations("struck text")])
        self.assertEqual([("line-through", "double")],
                         [(each["line"], each["style"]) for each in self.decorations("doubly struck")])

    def test_are_underlined_in_kinds(self):
        for text, style in UNDERLINES:
            with self.subTest(text):
                self.assertEqual([("underline", style)],
                                 [(each["line"], each["style"]) for each in self.decorations(text)])
        self.assertEqual([], self.decorations("plain text"))

    def test_are_underlined_in_colours(self):
        self.assertEqual([RED], [each["colour"] for each in self.decorations("red underline")])

    def test_are_underlined_and_struck_out(self):
        lines = " ".join(each["line"] for each in self.decorations("under and through"))
        self.assertEqual({"underline", "line-through"}, set(lines.split()))

    def test_are_in_capitals(self):
        self.assertStyle("every capital", text_transform="uppercase")
        self.assertIn("small-caps", self.style("small capitals", "font-variant-caps"))

    def test_are_spaced(self):
        self.assertNear(2 * PIXELS_PER_POINT, self.pixels("spaced text", "letter-spacing"), 0.05)

    def test_have_emphasis_marks(self):
        self.assertNotIn(self.ask('getComputedStyle(at("emphasised")).textEmphasisStyle'), (None, "", "none"))

    def test_that_are_hidden_are_not_there(self):
        self.assertIsNone(self.ask('range("secret words")'))

    def test_stand_above_and_below_the_line(self):
        level, above, below = (self.box(each) for each in ("level text", "superscript", "subscript"))
        self.assertLess(above.bottom, level.bottom)
        self.assertGreater(below.bottom, level.bottom - 1)
        self.assertLess(above.height, level.height)
        self.assertLess(below.height, level.height)

    def test_are_raised_by_points(self):
        level = self.box("level text")
        self.assertNear(6 * PIXELS_PER_POINT, level.bottom - self.box("raised six").bottom, 1)
        self.assertNear(-6 * PIXELS_PER_POINT, level.bottom - self.box("lowered six").bottom, 1)
        self.assertNear(level.height, self.box("raised six").height, 1)

    def test_have_colours(self):
        self.assertStyle("red text", color=RED)
        self.assertEqual([YELLOW, PALE], [self.ground("highlighted text"), self.ground("shaded text")])

    def test_of_automatic_colour_can_be_read_on_dark_shading(self):
        self.assertEqual(NIGHT, self.ground("night words"))
        self.assertStyle("night words", color=WHITE)
        self.assertEqual(NIGHT, self.ground("night paragraph"))
        self.assertStyle("night paragraph", color=WHITE)

    def test_of_automatic_colour_can_be_read_on_a_light_mark_in_the_dark(self):
        self.assertEqual(YELLOW, self.ground("marked at night"))
        self.assertStyle("marked at night", color=BLACK)

    def test_of_a_colour_keep_it_in_the_dark(self):
        self.assertStyle("green at night", color=GREEN)

    def test_have_borders(self):
        for side in ("top", "right", "bottom", "left"):
            self.assertStyle("framed text", **{f"border_{side}_style": "solid", f"border_{side}_color": GREEN})
            self.assertNear(PIXELS_PER_POINT, self.pixels("framed text", f"border-{side}-width"), 0.5)


class Letters(PageTest):
    document = "characters"

    def test_that_markup_is_made_of_are_text(self):
        self.assertTrue(self.ask('range(`a < b & c > "d" \'e\' &amp; <b>no markup</b>`) !== null'))

    def test_keep_their_spaces(self):
        broad = self.box("broader     gap").width - self.box("broader").width - self.box("gap").width
        self.assertGreater(broad, 3 * self.ask('box(" ").width'))

    def test_break_their_line(self):
        self.assertGreater(self.box("below the break").top, self.box("above the break").top + 5)
        self.assertEqual(*self.ask('[block("above the break"), block("below the break")].map(boxOf).map(b => b.top)'))

    def test_have_hyphens_of_kinds(self):
        self.assertTrue(self.ask(r'range("non\u2011breaking and op\u00ADtional") !== null'))

    def test_of_all_planes_and_fonts_are_there(self):
        self.assertTrue(self.ask(r'range("Beyond \u{1F600} and \u4E2D\u6587") !== null'))
        self.assertTrue(self.ask(r'range("a letter of Symbol: \u03B1 alpha") !== null'))
