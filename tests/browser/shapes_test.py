"""What a reader sees of shapes and pictures: shapes_test.py PAGEREX MAKE_DOCUMENTS [TEST...]

Browsers of today know no VML: what they show is the plain HTML that stands beside it."""

import sys

import harness
from harness import PIXELS_PER_POINT, Pages, page

CONVERSIONS = (
    ("shapes", "normal"),
    ("shapes", "phone", "--pagesize", "1000"),
    ("pictures", "normal"),
    ("pictures", "mulpages", "--pagesize", "1000"),
    ("pictures", "phone", "--pagesize", "1000"),
)
RED, GREEN, BLUE, YELLOW, WHITE = (255, 0, 0), (0, 128, 0), (0, 0, 255), (255, 255, 0), (255, 255, 255)


def pixels(*points):
    return [point * PIXELS_PER_POINT for point in points]


class Floating(Pages):
    """Finds what is anchored in a paragraph, and the place where the document wants it."""

    document = "shapes"

    def setUp(self):
        super().setUp()
        self.b.open(page(self.document))

    def anchor(self, text):
        paragraph = self.b.with_text(text, "p")
        self.b.show(paragraph)
        return paragraph

    def anchored(self, text):
        """The elements of all shapes of a paragraph. In a browser they end it, and so come behind it."""
        return self.b.run(
            """const shapes = [];
            for (let e = arguments[0].nextElementSibling; e && e.tagName != "P"; e = e.nextElementSibling)
                if (e.tagName == "DIV") shapes.push(e);
            return shapes""", self.anchor(text))

    def assertAt(self, anchor, element, left, top, width=None, height=None):
        """All in points. Shapes count from the text's left edge and the anchor's lower edge."""
        corner, box = self.b.box(self.anchor(anchor)), self.b.box(element)
        left, top = pixels(left, top)
        self.assertNear(corner.left + left, box.left)
        self.assertNear(corner.bottom + top, box.top)
        for wanted, name in ((width, "width"), (height, "height")):
            if wanted is not None:
                self.assertPoints(wanted, element, name)

    def assertColours(self, box, wanted):
        """`wanted` tells colours, nearly, by points, as pixels from the left top corner of a box."""
        seen = self.b.colours([(round(box.left + x), round(box.top + y)) for x, y in wanted])
        for point, colour in zip(wanted, seen):
            with self.subTest(point=point):
                difference = max(abs(a - b) for a, b in zip(wanted[point], colour))
                self.assertLessEqual(difference, 4, f"{colour} is not {wanted[point]}")


class TextBoxes(Floating):
    def setUp(self):
        super().setUp()
        self.box, = self.anchored("text box")

    def test_lie_where_the_document_says(self):
        self.assertAt("text box", self.box, 30, 20, 150, 60)

    def test_have_their_fill_and_line(self):
        self.assertStyle(self.box, background_color="rgba(255, 255, 0, 1)", border_left_color="rgba(0, 0, 255, 1)",
                         border_left_style="solid", border_left_width="4px")

    def test_show_their_text_inside_behind_line_and_padding(self):
        box, text = self.b.box(self.box), self.b.with_text("in the box", "span")
        self.assertTrue(text.is_displayed())
        place = self.b.box(text)
        self.assertTrue(box.contains(place))
        line, across, down = pixels(3, 7.2, 3.6)
        self.assertNear(box.left + line + across, place.left)
        paragraph = self.b.box(self.b.run("return arguments[0].closest('p')", text))
        self.assertNear(box.top + line + down, paragraph.top, 2)

    def test_format_their_text(self):
        first, second = (self.b.box(self.b.with_text(text, "span")) for text in ("in the box", "to the right"))
        self.assertNear(self.b.box(self.box).right - sum(pixels(3, 7.2)), second.right)
        self.assertGreater(second.top, (first.top + first.bottom) / 2)

    def test_leave_the_text_behind_them_alone(self):
        self.assertGreater(self.b.box(self.b.with_text("rectangles", "p")).top, self.b.box(self.box).bottom)


class Rectangles(Floating):
    def test_lie_side_by_side_with_their_fills_and_lines(self):
        shapes = self.anchored("rectangles")
        for shape, left in zip(shapes, (0, 90, 180), strict=True):
            self.assertAt("rectangles", shape, left, 10, 60, 45)
        self.assertStyle(shapes[2], background_color="rgba(0, 0, 0, 0)", border_top_style="dashed")
        full, half, empty = (self.b.box(shape) for shape in shapes)
        self.assertColours(full, {(2, 2): GREEN, (40, 30): RED, (-3, 30): WHITE})
        self.assertColours(half, {(40, 30): (255, 127, 127)})
        self.assertColours(empty, {(40, 30): WHITE})


class Ellipses(Floating):
    # 120 by 80 and 80 by 80 pixels; the line is 4 pixels wide.
    def test_are_drawn_in_their_line_and_fill(self):
        ellipse = self.anchored("ellipses")[0]
        self.assertAt("ellipses", ellipse, 0, 15, 90, 60)
        self.assertColours(self.b.box(ellipse), {
            (60, 40): RED, (60, 8): RED, (60, 72): RED, (10, 40): RED, (110, 40): RED, (22, 18): RED, (98, 62): RED,
            (60, 2): BLUE, (60, 79): BLUE, (2, 40): BLUE, (119, 40): BLUE, (19, 13): BLUE,
        })

    def test_leave_the_corners_of_their_box_free(self):
        ellipse = self.anchored("ellipses")[0]
        self.assertColours(self.b.box(ellipse), {point: WHITE for point in ((5, 5), (115, 5), (5, 75), (115, 75),
                                                                            (14, 9), (60, -4), (-4, 40))})

    def test_without_a_fill_show_what_is_behind(self):
        circle = self.anchored("ellipses")[1]
        self.assertAt("ellipses", circle, 120, 15, 60, 60)
        self.assertColours(self.b.box(circle), {(40, 40): WHITE, (20, 20): WHITE, (40, 2): BLUE, (2, 40): BLUE})


class Lines(Floating):
    def check(self, anchor, width, height):
        falling = {(width / 4, height / 4), (width * 3 / 4, height * 3 / 4)}
        rising = {(width / 4, height * 3 / 4), (width * 3 / 4, height / 4)}
        lines = self.anchored(anchor)
        for index, (line, falls) in enumerate(zip(lines, (True, False, False, True), strict=True)):
            with self.subTest(anchor=anchor, flipped_across=index & 1, flipped_down=index >> 1):
                self.assertAt(anchor, line, index * 90, 15)
                hit, missed = (falling, rising) if falls else (rising, falling)
                # The line is 4 pixels wide, and its box begins where the line does.
                self.assertColours(self.b.box(line), {
                    **{(x + 2, y + 2): RED for x, y in hit}, **{(x + 2, y + 2): WHITE for x, y in missed},
                    (width / 2 + 2, height / 2 + 2): RED, (-3, -3): WHITE, (width + 7, height + 7): WHITE,
                })

    def test_run_from_corner_to_corner_by_their_flips(self):
        self.check("flat lines", 80, 60)

    def test_run_from_corner_to_corner_by_their_flips_when_steep(self):
        self.check("steep lines", 40, 80)


class Groups(Floating):
    def setUp(self):
        super().setUp()
        self.group, = self.anchored("group")
        self.shapes = self.b.run("return [...arguments[0].querySelectorAll('div[id]')]", self.group)

    def test_lie_where_the_document_says(self):
        self.assertAt("group", self.group, 40, 15, 200, 100)

    def test_hold_their_shapes_and_inner_groups(self):
        group = self.b.box(self.group)
        for shape in self.shapes:
            self.assertTrue(group.contains(self.b.box(shape)))

    def test_place_their_shapes_by_their_own_units(self):
        group = self.b.box(self.group)
        # A unit is a fifth of a point; the last two lie in an inner group.
        places = ((0, 0, 1000, 500), (50, 100, 200, 300), (500, 100, 100, 300), (800, 300, 100, 100))
        for shape, place in zip(self.shapes, places, strict=True):
            left, top, width, height = pixels(*(unit / 5 for unit in place))
            box = self.b.box(shape)
            with self.subTest(place):
                self.assertNear(group.left + left, box.left)
                self.assertNear(group.top + top, box.top)
                self.assertNear(width, box.width)
                self.assertNear(height, box.height)

    def test_show_their_shapes_above_each_other_in_order(self):
        self.assertColours(self.b.box(self.group), {(5, 5): YELLOW, (40, 60): RED, (146, 60): GREEN, (226, 92): BLUE,
                                                    (180, 60): YELLOW, (262, 130): YELLOW, (262, 136): WHITE})


class Links(Floating):
    def link(self, shape):
        """The attributes of a shape for a browser that knows VML, which is a comment for all others."""
        return self.b.run(
            """const comments = document.createTreeWalker(document.body, NodeFilter.SHOW_COMMENT);
            while (comments.nextNode()) {
                const markup = comments.currentNode.data.replace("[if gte vml 1]>", "");
                const shape = new DOMParser().parseFromString(markup, "text/html").getElementById(arguments[0]);
                if (shape) return Object.fromEntries([...shape.attributes].map(a => [a.name, a.value]));
            }""", shape.get_attribute("id"))

    def test_of_shapes_lead_to_their_address(self):
        link = self.link(self.anchored("text box")[0])
        self.assertEqual("http://www.example.com/a?b=c", link["href"])
        self.assertEqual("_parent", link["target"])

    def test_of_shapes_lead_to_their_place(self):
        plain, _, linked = map(self.link, self.anchored("rectangles"))
        self.assertEqual("#Place", linked["href"])
        self.assertNotIn("href", plain)


class PicturePage(Floating):
    """A PNG of 30 by 20 pixels and a JPEG of 16 by 8, both red on the left and blue on the right."""

    document = "pictures"

    def picture(self, holder):
        return self.b.run("return arguments[0].querySelector('img')", holder)

    def assertPicture(self, image, own, shown):
        """It has loaded with its own size, is drawn, and is shown in this size, all in pixels."""
        self.b.show(image)
        box = self.b.box(image)
        self.assertEqual(own, (self.b.run("return arguments[0].naturalWidth", image),
                               self.b.run("return arguments[0].naturalHeight", image)))
        self.assertEqual(shown, (box.width, box.height))
        self.assertColours(box, {(box.width / 4, box.height / 2): RED, (box.width * 3 / 4, box.height / 2): BLUE})


class FloatingPictures(PicturePage):
    def test_lie_where_the_document_says(self):
        shape = self.anchored("floating")[0]
        self.assertAt("floating", shape, 30, 15, 90, 60)
        self.assertPicture(self.picture(shape), (30, 20), (120, 80))
        self.assertTrue(self.b.box(shape).contains(self.b.box(self.picture(shape))))

    def test_fill_shapes(self):
        shape = self.anchored("floating")[1]
        self.assertAt("floating", shape, 150, 15, 60, 60)
        self.assertPicture(self.picture(shape), (30, 20), (80, 80))


class PicturesInTheText(PicturePage):
    def setUp(self):
        super().setUp()
        self.pictures = self.b.run(
            """const between = [...document.querySelectorAll("span")].find(e => e.textContent == "between them");
            return [between.previousElementSibling, between.nextElementSibling].map(e => e.querySelector("img"))""")

    def test_load_with_their_size(self):
        png, jpeg = self.pictures
        self.assertPicture(png, (30, 20), (120, 80))
        self.assertPicture(jpeg, (16, 8), (80, 40))

    def test_stand_between_the_text_before_and_behind_them(self):
        png, jpeg = map(self.b.box, self.pictures)
        before, between, behind, end = (self.b.box(self.b.with_text(text, "span")) for text in (
            "before the PNG", "between them", "behind the JPEG", "end"))
        parts = (before, png, between, jpeg, behind, end)
        for upper, lower in zip(parts, parts[1:]):
            self.assertLessEqual(upper.bottom, lower.top + 1)
            self.assertLess(lower.top - upper.bottom, 20)
            self.assertNear(before.left, lower.left)


class PictureBullets(PicturePage):
    def bullet(self, item):
        """The last picture before the text of an item."""
        return self.b.run(
            """const item = arguments[0], following = Node.DOCUMENT_POSITION_FOLLOWING;
            const before = i => i.compareDocumentPosition(item) & following;
            return [...document.querySelectorAll("img")].filter(before).pop()""", item)

    def test_are_pictures_in_front_of_the_text_of_each_item(self):
        first = self.anchor("bullets behind")
        above = first
        for text in ("first item", "second item"):
            with self.subTest(text):
                item = self.b.with_text(text, "span")
                image = self.bullet(item)
                self.assertPicture(image, (30, 20), (20, 13))
                bullet = self.b.box(image)
                self.assertNear(self.b.box(first).left, bullet.left)
                self.assertLessEqual(self.b.box(above).bottom, bullet.top + 1)
                self.assertLessEqual(bullet.bottom, self.b.box(item).top + 1)
                self.assertLess(self.b.box(item).top - bullet.bottom, 5)
                above = item

    def test_are_hidden_where_the_document_keeps_them(self):
        pictures = {"floating": 2, "in the text": 2, "bullets": 2}
        self.assertEqual(sum(pictures.values()), len(self.b.all("img")))


class Views(Pages):
    def widths_of_pictures(self, view):
        self.b.open(page("pictures", view))
        return sorted(self.b.run("return arguments[0].naturalWidth", image) for image in self.b.all("img"))

    def test_of_many_pages_show_all_pictures(self):
        self.assertEqual([16, 30, 30, 30, 30, 30], self.widths_of_pictures("mulpages"))

    def test_for_phones_show_the_pictures_of_the_text_alone(self):
        self.assertEqual([16, 30, 30, 30], self.widths_of_pictures("phone"))

    def test_for_phones_have_no_shapes(self):
        self.b.open(page("shapes", "phone"))
        self.assertTrue(self.b.with_text("text box", "span").is_displayed())
        self.assertNotIn("in the box", self.b.text(self.b.one("body")))


if __name__ == "__main__":
    sys.exit(harness.main(CONVERSIONS))
