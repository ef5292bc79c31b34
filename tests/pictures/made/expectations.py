"""What a picture is expected to show, by its pixels. Each function makes one that takes a View and tells what is wrong,
or None.

A case is a name, the bytes of a file, and any number of these."""

from dataclasses import dataclass, field

from PIL import Image, ImageChops

COLOURS = {
    "black": (0, 0, 0), "white": (255, 255, 255), "red": (255, 0, 0), "green": (0, 255, 0), "blue": (0, 0, 255),
    "yellow": (255, 255, 0), "cyan": (0, 255, 255), "magenta": (255, 0, 255), "gray": (128, 128, 128),
}
TOLERANCE = 48  # of a channel
LEAST_INK = 40  # what a channel must differ by from paper


@dataclass
class Case:
    name: str
    data: bytes
    expectations: list = field(default_factory=list)


def case(name, data, *expectations):
    return Case(name, data, list(expectations))


class View:
    """The pixels of one picture."""

    def __init__(self, image):
        self.image = image
        self.size = image.size
        difference = ImageChops.difference(image, Image.new("RGB", image.size, COLOURS["white"]))
        red, green, blue = difference.split()
        most = ImageChops.lighter(ImageChops.lighter(red, green), blue)
        self.ink = most.point(lambda value: 255 if value > LEAST_INK else 0)

    def share(self, box, rgb=None):
        """Of the pixels in a box: those with ink, or those of about a colour."""
        part = self.ink.crop(box)
        if rgb is not None:
            part = Image.new("L", part.size)
            part.putdata([255 if near(pixel, rgb) else 0 for pixel in self.image.crop(box).getdata()])
        return part.histogram()[255] / (part.width * part.height)


def near(actual, expected, tolerance=TOLERANCE):
    return all(abs(a - e) <= tolerance for a, e in zip(actual, expected))


def rgb_of(colour):
    if isinstance(colour, int):
        return colour >> 16, colour >> 8 & 255, colour & 255
    return COLOURS[colour] if colour in COLOURS else rgb_of(int(colour, 16))


def look(places, tolerance=TOLERANCE):
    """Colours at places: "50,50 red; 10,10 white", a colour by name or as RRGGBB."""
    def check(view):
        for place in filter(None, map(str.strip, places.split(";"))):
            at, colour = place.split()
            actual = view.image.getpixel(tuple(map(int, at.split(","))))
            if not near(actual, rgb_of(colour), tolerance):
                return f"at {at} there is %02X%02X%02X, not {colour}" % actual
        return None
    return check


def box(left, top, right, bottom, within=2):
    """The bounds of all ink."""
    def check(view):
        actual = view.ink.getbbox()
        if actual is None:
            return "there is no ink"
        if any(abs(a - e) > within for a, e in zip(actual, (left, top, right, bottom))):
            return f"ink fills {actual}, not {(left, top, right, bottom)}"
        return None
    return check


def share(area, least, most=1.0, colour=None):
    """The share of an area that has ink, or that is of a colour."""
    def check(view):
        actual = view.share(area, None if colour is None else rgb_of(colour))
        if least <= actual <= most:
            return None
        return f"{actual:.3f} of {area} is {colour or 'ink'}, not {least} to {most}"
    return check


def empty(view):
    """Nothing is drawn."""
    bounds = view.ink.getbbox()
    return f"ink in {bounds}, but there should be none" if bounds else None


def clear_of(*areas):
    """No ink in any of these."""
    def check(view):
        for area in areas:
            bounds = view.ink.crop(area).getbbox()
            if bounds:
                return f"ink in {area}, at {bounds} of it"
        return None
    return check


def runs_of(values):
    """Lengths of the runs of ink and of what lies between them."""
    runs, gaps, last = [], [], None
    for value in values:
        if value != last:
            (runs if value else gaps).append(0)
            last = value
        (runs if value else gaps)[-1] += 1
    return runs, gaps


def row(y, count, left=0, right=None, lengths=None):
    """So many runs of ink along a row; perhaps of these lengths, the first and the last apart."""
    def check(view):
        return _check_line(view.ink.crop((left, y, right or view.size[0], y + 1)), f"row {y}", count, lengths)
    return check


def column(x, count, top=0, bottom=None, lengths=None):
    def check(view):
        return _check_line(view.ink.crop((x, top, x + 1, bottom or view.size[1])), f"column {x}", count, lengths)
    return check


def _check_line(line, name, count, lengths):
    runs, _ = runs_of(list(line.getdata()))
    least, most = count if isinstance(count, tuple) else (count, count)
    if not least <= len(runs) <= most:
        return f"{name} has {len(runs)} runs of ink {runs}, not {count}"
    if lengths:
        inner = runs[1:-1]
        for at, length in enumerate(inner):
            if not any(abs(length - each) <= 1.5 for each in lengths):
                return f"run {at + 1} of {name} is {length} long, not one of {lengths}: {runs}"
    return None


def natural(width, height, within=1):
    """The size that the picture shows itself at."""
    def check(view):
        actual = view.natural
        if abs(actual[0] - width) > within or abs(actual[1] - height) > within:
            return f"it is {actual} large, not {(width, height)}"
        return None
    return check


def changes_along(*places):
    """A change of colour from each place to the next one, in one direction, of one channel ("r", "g", "b")."""
    def check(view):
        channel = "rgb".index(places[0])
        values = [view.image.getpixel(place)[channel] for place in places[1:]]
        ordered = all(a < b for a, b in zip(values, values[1:])) or all(a > b for a, b in zip(values, values[1:]))
        return None if ordered else f"colours go {values}"
    return check


def slants(area, step):
    """The ink of each row stands `step` pixels beside that of the row above it."""
    def check(view):
        left, top, right, bottom = area
        ink = view.ink.load()
        agree = count = 0
        for y in range(top + 1, bottom):
            for x in range(left + 1, right - 1):
                if ink[x, y - 1]:
                    count += 1
                    agree += ink[x + step, y] != 0
        other = sum(ink[x - step, y] != 0 for y in range(top + 1, bottom) for x in range(left + 1, right - 1)
                    if ink[x, y - 1])
        return None if count and agree > other * 1.2 and agree > 0.8 * count else f"of {count} only {agree} lie so"
    return check
