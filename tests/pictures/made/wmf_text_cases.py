"""Text of Windows metafiles. Letters without descent, of a font of which there is a double everywhere: H of Arial fills
0.72 of the em above the base line and is 0.72 em wide; ascent is 0.905 em, descent 0.212."""

from expectations import box, case, clear_of, empty, look, row, share
from packed import RED, YELLOW
from wmf_maker import *

LEFT, RIGHT, CENTER, TOP, BOTTOM, BASELINE, UPDATE = 0, 2, 6, 0, 8, 24, 1


def written(*records, height=-40, face="Arial", **rest):
    return metafile(create_font(height, face, **rest), select(0), set_bk_mode(1), set_text_color(RED), *records)


# With the em of 40: H is 29 high and wide.
ALIGNMENTS = [
    case(f"align_{across_name}_{down_name}", written(set_text_align(across | down), text_out(96, 96, "HHH")),
         box(round(96 - 87 * from_left), base - 29, round(183 - 87 * from_left), base, 4))
    for across_name, across, from_left in (("left", LEFT, 0), ("center", CENTER, 0.5), ("right", RIGHT, 1))
    for down_name, down, base in (("top", TOP, 132), ("baseline", BASELINE, 96), ("bottom", BOTTOM, 87.5))
]

TEXTS = [
    case("text_out", written(text_out(20, 20, "HHH")), box(23, 27, 104, 56, 4), share((20, 20, 110, 60), 0.2, 0.6),
         share((0, 0, 192, 192), 0.01, colour="red")),
    case("text_out_empty", written(text_out(20, 20, "")), empty),
    case("text_of_odd_length_then_more", written(text_out(20, 20, "HHH"), text_out(20, 100, "H")), box(23, 27, 104, 136,
        4)),
    case("cell_height", written(text_out(20, 20, "HHH"), height=45), box(23, 27, 104, 56, 5)),
    case("ext_text_out", written(ext_text_out(20, 20, "HHH")), box(23, 27, 104, 56, 4)),
    case("distances", written(ext_text_out(20, 20, "HIH", dx=(60, 40, 60))), box(23, 27, 146, 56, 4),
         clear_of((54, 20, 80, 70)), row(32, 5)),
    case("opaque_box", written(set_bk_color(YELLOW), ext_text_out(40, 50, "H", OPAQUE, (20, 30, 170, 120))),
         box(20, 30, 170, 120), look("150,100 yellow; 25,35 yellow"), share((40, 50, 75, 90), 0.1, 0.9, "red")),
    case("clipped_text", written(ext_text_out(20, 20, "HHHH", CLIPPED, (0, 0, 60, 192))), box(23, 27, 60, 56, 4)),
    case("opaque_box_without_text", written(set_bk_color(YELLOW), ext_text_out(0, 0, "", OPAQUE, (20, 30, 170, 120))),
         box(20, 30, 170, 120), look("100,100 yellow")),
    case("opaque_ground", metafile(create_font(-40, "Arial"), select(0), set_text_color(RED), set_bk_mode(2),
                                   set_bk_color(YELLOW), text_out(20, 20, "HHH")),
         box(20, 20, 106.5, 65, 4), share((20, 20, 106, 64), 0.3, 0.9, "yellow")),
    case("text_is_black", metafile(create_font(-40, "Arial"), select(0), set_bk_mode(1), text_out(20, 20, "HHH")),
         share((20, 20, 110, 60), 0.1, 0.6, "black")),
    case("bold", written(text_out(20, 20, "IIII"), weight=700), share((20, 27, 66, 56), 0.4, 0.8)),
    case("underlined", written(text_out(20, 20, "HHH"), underline=1), share((24, 57, 100, 64), 0.2, 0.8)),
    case("struck_out", written(text_out(20, 20, "    H"), strike_out=1), share((24, 35, 60, 52), 0.05, 0.5)),
    case("italic", written(text_out(20, 20, "III"), italic=1), share((20, 20, 70, 60), 0.05, 0.5), row(50, 3),
         row(30, 3)),
    case("turned_up", written(text_out(60, 170, "HHH"), escapement=900), box(67, 86, 96, 167, 4)),
    case("turned_over", written(text_out(170, 100, "HHH"), escapement=1800), box(86, 64, 167, 93, 4)),
    case("turned_down", written(text_out(130, 20, "HHH"), escapement=2700), box(94, 23, 123, 104, 4)),
    case("turned_half", written(set_text_align(BASELINE), text_out(40, 160, "HHHH"), escapement=450),
         look("20,20 white; 170,170 white"), share((40, 40, 130, 160), 0.05)),
    case("place_goes_on", written(set_text_align(UPDATE | BASELINE), move_to(20, 100), text_out(0, 0, "HH"),
                                  text_out(0, 0, "HH")), box(23, 71, 132, 100, 5), row(90, 8)),
    case("char_extra", written(set_text_char_extra(20), text_out(20, 20, "HHH")), box(23, 27, 144, 56, 5)),
    case("justified_by_breaks", written(set_text_justification(1, 30), text_out(20, 20, "H H")), box(23, 27, 116, 56,
        6)),
    case("cyrillic", written(text_out(20, 20, b"\xcf\xcf\xcf"), charset=204), box(23, 27, 104, 56, 5), row(50, 6)),
    case("greek", written(text_out(20, 20, b"\xd0\xd0"), charset=161), row(50, 4)),
    case("symbol", written(text_out(20, 20, b"\x70\x70"), face="Symbol", charset=2), row(50, (3, 5))),
    case("double_byte", written(text_out(20, 20, "川".encode("cp932")), charset=128), box(20, 18, 60, 64, 7),
         row(44, 3)),
    case("own_face", written(text_out(20, 20, "iiii"), face="Courier New"), box(24, 26, 114, 56, 6)),
    case("narrow_letters", written(text_out(20, 20, "HHH"), width=9), box(21, 27, 63, 56, 8)),
    case("text_in_large_units", placeable(
        set_map_mode(8), set_window_org(0, 0), set_window_ext(1920, 1920), create_font(-400, "Arial"), select(0),
        set_bk_mode(1), text_out(200, 200, "HHH"), box=(0, 0, 1920, 1920), inch=960), box(23, 27, 104, 56, 4)),
    case("text_where_y_goes_up", placeable(
        set_map_mode(8), set_window_org(0, 192), set_window_ext(192, -192), create_font(-40, "Arial"), select(0),
        set_bk_mode(1), text_out(20, 172, "HHH"), box=(0, 192, 192, 0)), box(23, 27, 104, 56, 4)),
    case("markup_is_text", written(text_out(20, 20, "<&>\"'")), share((20, 20, 150, 70), 0.03, 0.5)),
]

CASES = [*ALIGNMENTS, *TEXTS]
