"""What raster operations make of pattern, source and what is there: by their truth tables, for colours that are full or
empty in each channel."""

from packed import BLACK, BLUE, GREEN, RED, WHITE

OPERATIONS = {
    "SRCCOPY": 0xCC0020, "SRCPAINT": 0xEE0086, "SRCAND": 0x8800C6, "SRCINVERT": 0x660046, "SRCERASE": 0x440328,
    "NOTSRCCOPY": 0x330008, "NOTSRCERASE": 0x1100A6, "MERGECOPY": 0xC000CA, "MERGEPAINT": 0xBB0226,
    "PATCOPY": 0xF00021, "PATPAINT": 0xFB0A09, "PATINVERT": 0x5A0049, "DSTINVERT": 0x550009, "BLACKNESS": 0x000042,
    "WHITENESS": 0xFF0062,
}
SRCCOPY = OPERATIONS["SRCCOPY"]
WITHOUT_SOURCE = ("PATCOPY", "PATINVERT", "DSTINVERT", "BLACKNESS", "WHITENESS")

# By their numbers from 1 on, of pen and destination.
MODES = ("BLACK", "NOTMERGEPEN", "MASKNOTPEN", "NOTCOPYPEN", "MASKPENNOT", "NOT", "XORPEN", "NOTMASKPEN", "MASKPEN",
         "NOTXORPEN", "NOP", "MERGENOTPEN", "COPYPEN", "MERGEPENNOT", "MERGEPEN", "WHITE")


def mix(table, *colours):
    """Bit by bit: the colours' bits are a number, the first the highest, of the bit of the table that is wanted."""
    out = 0
    for bit in range(24):
        at = 0
        for colour in colours:
            at = at << 1 | colour >> bit & 1
        out |= (table >> at & 1) << bit
    return out


def mix3(operation, pattern, source, destination): return mix(operation >> 16, pattern, source, destination)
def mix2(mode, pen, destination): return mix(mode - 1, pen, destination)


# What the tests mix: four columns that are there, and four rows that come over them, of 32 pixels, from (32, 32) on.
COLUMNS = (RED, WHITE, BLUE, BLACK)
ROWS = (RED, GREEN, WHITE, BLACK)
SOURCE_ROWS = [[rgb] * 8 for rgb in ROWS for _ in range(8)]


def base_boxes():
    """Left, top, right, bottom and colour of each column."""
    return [(32 + 32 * at, 32, 64 + 32 * at, 160, rgb) for at, rgb in enumerate(COLUMNS)]


def expected(result):
    """Places and colours, as `look` takes them, of result(source, destination)."""
    return "; ".join(f"{48 + 32 * x},{48 + 32 * y} {result(source, destination):06X}"
                     for x, destination in enumerate(COLUMNS) for y, source in enumerate(ROWS))
