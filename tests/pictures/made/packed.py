"""Bytes of numbers as metafiles have them: low byte first."""

import struct


def u8(*values):
    return bytes(value & 0xFF for value in values)


def u16(*values):
    return struct.pack(f"<{len(values)}H", *(value & 0xFFFF for value in values))


def u32(*values):
    return struct.pack(f"<{len(values)}I", *(value & 0xFFFFFFFF for value in values))


def f32(*values):
    return struct.pack(f"<{len(values)}f", *values)


def padded(data, unit):
    return data + bytes(-len(data) % unit)


def flat(points):
    """All numbers of (x, y), (x, y)..."""
    return [value for point in points for value in point]


def colour(rgb):
    """0xRRGGBB as a COLORREF: red lowest."""
    return (rgb & 0xFF) << 16 | rgb & 0xFF00 | rgb >> 16


BLACK, WHITE, RED, GREEN, BLUE = 0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF
YELLOW, CYAN, MAGENTA, GRAY = 0xFFFF00, 0x00FFFF, 0xFF00FF, 0x808080
