"""Lists, tables, and what stands at another place than its reference: notes, comments, contents, changes."""

from pages import PageTest, PIXELS_PER_POINT

RED, NIGHT, WHITE = "rgb(255, 0, 0)", "rgb(0, 0, 64)", "rgb(255, 255, 255)"

# The text of an item, its label and its depth.
ITEMS = (
    ("first item", "1.", 1), ("second item", "2.", 1), ("item below", "a)", 2), ("another below", "b)", 2),
    ("deep item", "(i)", 3), ("third item", "3.", 1), ("fourth item", "4.", 1), ("a point", "\u2022", 1),
    ("another point", "\u2022", 1), ("item seven", "7.", 1), ("of law", "Article I", 1), ("paragraph of law", "I.1", 2),
)


class Lists(PageTest):
    document = "lists"

    def label_box(self, text, label):
        """Of the label that stands in front of a text, on its line."""
        return self.ask(f"""(() => {{
            const all = document.createRange();
            all.selectNodeContents(within("{text}", "li"));
            const walker = document.createTreeWalker(within("{text}", "li"), NodeFilter.SHOW_TEXT);
            for (let node; (node = walker.nextNode());) {{
                const at = node.data.indexOf("{label}");
                if (at < 0) continue;
                all.setStart(node, at);
                all.setEnd(node, at + "{label}".length);
                return pixels(all.getBoundingClientRect());
            }}
            return null; }})()""")

    def test_items_are_items(self):
        for text, _, depth in ITEMS:
            with self.subTest(text):
                self.assertTrue(self.ask(f'within("{text}", "li") !== null'))
                found = self.ask(f"""(() => {{ let count = 0;
                    for (let e = at("{text}"); e; e = e.parentElement) count += /^(OL|UL)$/.test(e.tagName);
                    return count; }})()""")
                self.assertEqual(depth, found)

    def test_labels_are_text(self):
        for text, label, _ in ITEMS:
            with self.subTest(text):
                item = self.ask(f'within("{text}", "li").innerText.trim()')
                self.assertTrue(item.startswith(label), item)

    def test_labels_are_shown_once(self):
        for text, _, _ in ITEMS:
            with self.subTest(text):
                self.assertEqual("none", self.ask(f'getComputedStyle(within("{text}", "li")).listStyleType'))

    def test_labels_are_copied_with_the_text(self):
        copied = self.ask('copied("third item", "no item at all")') + self.ask('copied("first item", "fourth item")')
        for label in ("2.", "a)", "(i)", "3.", "4."):
            self.assertIn(label, copied)

    def test_labels_hang(self):
        area = self.text_area()
        for text, label, depth in ITEMS[:9]:
            with self.subTest(text):
                found = self.label_box(text, label)
                self.assertIsNotNone(found)
                self.assertTwips(720 * depth - 360, found["left"] - area.left)
                self.assertTwips(720 * depth, self.box(text).left - area.left)

    def test_labels_have_looks_of_their_own(self):
        self.assertGreaterEqual(int(self.ask("""(() => { const walker = document.createTreeWalker(
            within("deep item", "li"), NodeFilter.SHOW_TEXT);
            while (walker.nextNode()) if (walker.currentNode.data.includes("(i)"))
                return getComputedStyle(walker.currentNode.parentElement).fontWeight; })()""")), 600)
        self.assertStyle("deep item", font_weight="400")

    def test_are_no_items_outside(self):
        self.assertTrue(self.ask('within("no item at all", "li, ol, ul") === null'))


class Tables(PageTest):
    document = "tables"

    def cell(self, text, name):
        return self.ask(f'getComputedStyle(within("{text}", "td, th")).getPropertyValue("{name}")')

    def cell_box(self, text):
        return type("CellBox", (), self.ask(f'boxOf(within("{text}", "td, th"))'))

    def test_have_widths(self):
        for text, twips in (("apples", 3000), ("as wide as two", 6000), ("inner one", 1200), ("i2", 2000)):
            with self.subTest(text):
                self.assertTwips(twips, self.cell_box(text).width, 2)

    def test_have_spans(self):
        self.assertEqual([2, 1], self.ask('[within("as wide as two", "td").colSpan, within("single", "td").colSpan]'))
        self.assertEqual(2, self.ask('within("as tall as two", "td").rowSpan'))
        tall = self.cell_box("as tall as two")
        self.assertNear(tall.top, self.cell_box("upper").top, 2)
        self.assertNear(tall.bottom, self.cell_box("lower").bottom, 2)

    def test_have_head_rows(self):
        self.assertEqual(["TH col"] * 3, self.ask(
            """["Kind", "Count", "Remark"].map(text => within(text, "td, th")).map(c => c.tagName + " " + c.scope)"""))
        self.assertTrue(self.ask('within("Kind", "thead") !== null && within("apples", "thead") === null'))

    def test_have_borders(self):
        for side in ("top", "right", "bottom", "left"):
            self.assertEqual("solid", self.cell("apples", f"border-{side}-style"))
            self.assertEqual(RED, self.cell("framed in red", f"border-{side}-color"))
        self.assertNear(3 * PIXELS_PER_POINT, float(self.cell("framed in red", "border-top-width")[:-2]), 1)

    def test_have_shading_on_which_text_can_be_read(self):
        self.assertEqual(NIGHT, self.ask('ground("night cell")'))
        self.assertStyle("night cell", color=WHITE)
        self.assertStyle("day cell", color="rgb(0, 0, 0)")

    def test_have_padding(self):
        self.assertTwips(108, self.box("apples").left - self.cell_box("apples").left, 1.5)

    def test_are_aligned_from_top_to_bottom(self):
        top, middle, bottom = (self.cell_box(text) for text in ("high row", "half way down", "framed in red"))
        self.assertTwips(1440, top.height, 3)
        self.assertLess(self.box("high row").top - top.top, 8)
        self.assertNear((middle.top + middle.bottom) / 2, self.box("half way down").middle, 3)
        self.assertLess(bottom.bottom - self.box("framed in red").bottom, 12)

    def test_have_turned_text(self):
        self.assertIn(self.style("turned letters", "writing-mode"), ("vertical-rl", "sideways-rl"))
        self.assertEqual("horizontal-tb", self.style("upright letters", "writing-mode"))
        turned = self.box("turned letters")
        self.assertGreater(turned.height, turned.width)

    def test_have_turned_text_in_one_line(self):
        turned = self.box("turned letters")
        self.assertGreater(turned.height, 2 * turned.width)

    def test_stand_where_they_belong(self):
        area = self.text_area()
        self.assertNear(area.left, self.cell_box("apples").left, 1.5)
        self.assertTwips(1440, self.cell_box("indented table").left - area.left, 2)
        centre = (self.cell_box("centred table").left + self.cell_box("c2").right) / 2
        self.assertNear(area.centre, centre, 2)

    def test_stand_in_tables(self):
        outer = self.cell_box("outer cell")
        inner = self.cell_box("inner one")
        self.assertTrue(self.ask('within("inner one", "table").parentElement.closest("td") !== null'))
        self.assertGreaterEqual(inner.left, outer.left)
        self.assertGreater(self.box("behind the inner table").top, self.box("inner two").top)
        self.assertLess(self.box("beside it").top, self.box("inner one").top)

    def test_that_are_too_wide_scroll_in_their_own_box(self):
        self.show_narrow("tables")
        self.assertFits()
        wide = self.ask("""(() => { let e = within("column-16", "table");
            while (e && e.scrollWidth <= e.clientWidth) e = e.parentElement;
            return e && [e.tagName, getComputedStyle(e).overflowX, e.tabIndex]; })()""")
        self.assertIsNotNone(wide)
        self.assertNotIn(wide[0], ("HTML", "BODY"))
        self.assertIn(wide[1], ("auto", "scroll"))


class Notes(PageTest):
    document = "notes"

    # What stands in front of the reference, the label, the text in the note, and the note. The role of a single
    # endnote is no longer one to use: it is an item of all endnotes.
    NOTES = (("Words with a footnote", "1", "Text of the first footnote.", "[role=doc-footnote]"),
             (", with another one", "2", "Text of the second footnote,", "[role=doc-footnote]"),
             (", with one marked by hand", "*", "Text of the third footnote.", "[role=doc-footnote]"),
             (" and an endnote", "1", "Text of the endnote.", "[role=doc-endnotes] [id]"))

    def reference(self, number):
        return f'[...document.querySelectorAll("[role=doc-noteref]")][{number}]'

    def test_are_reached_from_their_references(self):
        self.assertEqual([each[1] for each in self.NOTES], self.ask('texts("[role=doc-noteref]")'))
        for number, (_, _, text, _) in enumerate(self.NOTES):
            with self.subTest(text):
                self.assertIn(text, self.ask(f"landing({self.reference(number)}).textContent"))

    def test_lead_back(self):
        for number, (_, _, text, _) in enumerate(self.NOTES):
            with self.subTest(text):
                back = self.ask(f"""[...landing({self.reference(number)}).querySelectorAll('a[href^="#"]')]
                    .some(link => {{ const end = landing(link), from = {self.reference(number)};
                                     return end && (end === from || end.contains(from) || from.contains(end)); }})""")
                self.assertTrue(back)

    def test_say_what_they_are(self):
        for _, label, text, note in self.NOTES:
            with self.subTest(text):
                self.assertTrue(self.ask(f'within("{text}", "{note}").innerText.trim()').startswith(label))

    def test_of_two_paragraphs_are_one(self):
        self.assertTrue(self.ask("""within("Text of the second footnote,", "[role=doc-footnote]") ===
                                    within("which has two paragraphs.", "[role=doc-footnote]")"""))

    def test_stand_below_the_text(self):
        self.assertGreater(self.box("Text of the first footnote.").top, self.box("Words with a footnote").bottom)

    def test_references_are_raised(self):
        self.assertLess(self.ask(f"boxOf({self.reference(0)}).bottom"), self.box("Words with a footnote").bottom)

    def test_comments_are_reached_and_lead_back(self):
        self.assertTrue(self.ask("""[...document.querySelectorAll('a[href^="#"]')].some(link =>
            landing(link)?.textContent.includes("Is this clear enough?") &&
            block("on these words").contains(link))"""))
        self.assertTrue(self.ask("""[...document.querySelectorAll('a[href^="#"]')].some(link =>
            link.parentElement.closest("aside, li, section, div")?.textContent.includes("Is this clear enough?") &&
            block("on these words").contains(landing(link)))"""))

    def test_comments_tell_who_and_when(self):
        told = self.ask('within("Is this clear enough?", "aside")?.innerText ?? ""')
        self.assertIn("Ada Reader", told)
        self.assertIn("2004", told)

    def test_comments_can_be_left_out(self):
        self.show(self.size, "notes", "--no-comments")
        self.assertIsNone(self.ask('range("Is this clear enough?")'))
        self.assertIsNotNone(self.box("on these words"))


class Changes(PageTest):
    document = "changes"

    def test_are_carried_out(self):
        self.assertIsNone(self.ask('range("these were removed")'))
        self.assertTrue(self.ask('within("these were added", "ins") === null'))

    def test_are_shown_if_wanted(self):
        self.show(self.size, "changes", "--revisions=all")
        self.assertTrue(self.ask('within("these were added", "ins") && within("these were removed", "del") && true'))
        self.assertTrue(self.ask('within("These words stayed", "ins, del") === null'))
        when = self.ask('["these were added", "these were removed"].map(t => within(t, "ins, del").dateTime)')
        self.assertEqual(["2004-03-01"] * 2, [each[:10] for each in when])

    def test_are_undone_if_wanted(self):
        self.show(self.size, "changes", "--revisions=original")
        self.assertIsNone(self.ask('range("these were added")'))
        self.assertIsNotNone(self.box("these were removed"))


class Contents(PageTest):
    document = "contents"

    def test_tell_of_the_document(self):
        self.assertEqual(["A title of its own", "en-US", "UTF-8", "CSS1Compat"], self.ask(
            "[document.title, document.documentElement.lang, document.characterSet, document.compatMode]"))

    def test_have_headings_of_their_levels(self):
        for text, level in (("The beginning", 1), ("A part of it", 2), ("A part of the part", 3), ("The ending", 1)):
            with self.subTest(text):
                self.assertIn(text, self.ask(f'texts("h{level}")'))

    def test_have_a_table_of_contents_that_leads_to_the_headings(self):
        found = self.ask("""["p1", "p2", "p3"].map(page => within(page, "a"))
            .map(link => link && [landing(link)?.textContent ?? "", landing(link)?.closest("h1, h2")?.tagName ?? ""])""")
        for told, (text, tag) in zip(found, (("The beginning", "H1"), ("A part of it", "H2"), ("The ending", "H1"))):
            self.assertIsNotNone(told, text)
            self.assertEqual(tag, told[1])

    def test_table_of_contents_is_navigation(self):
        self.assertTrue(self.ask('within("p1", "nav, [role=navigation], [role=doc-toc]") !== null'))
        self.assertTrue(self.ask("""within("p1", "nav, [role]") === within("p3", "nav, [role]")"""))

    def test_numbers_of_pages_end_at_the_right(self):
        for text in ("p1", "p2", "p3"):
            self.assertNear(self.text_area().right, self.box(text).right)

    def test_links_land(self):
        self.assertTrue(self.ask("""(() => { const end = landing(within("the marked place", "a"));
            return end !== null && block("what was marked").contains(end); })()"""))

    def test_a_click_goes_there(self):
        self.ask('within("the marked place", "a").click()')
        self.assertTrue(self.ask('(top => top >= -5 && top < innerHeight)(range("what was marked")'
                                 '.getBoundingClientRect().top)'))

    def test_links_lead_outside(self):
        self.assertEqual(["http://www.example.com/a?b=c&d=e", "A tip"], self.ask(
            '(link => [link.getAttribute("href"), link.title])(within("an example outside", "a"))'))

    def test_dangerous_links_do_not(self):
        self.assertTrue(self.ask('!within("a dangerous place", "a[href]")'))

    def test_links_look_as_in_the_document(self):
        self.assertStyle("an example outside", color="rgb(0, 0, 255)")
        self.assertEqual("underline", self.ask('decorations("an example outside")[0]?.line'))

    def test_all_links_of_the_page_land(self):
        self.assertEqual([], self.ask("""[...document.querySelectorAll('a[href^="#"]')]
            .filter(link => !landing(link)).map(link => link.getAttribute("href"))"""))
