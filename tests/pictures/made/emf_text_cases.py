"""Text of enhanced metafiles; for the sizes of letters see wmf_text_cases.py."""

from emf_maker import *
from expectations import box, case, clear_of, empty, look, row, share
from packed import BLUE, RED, YELLOW
from wmf_text_cases import BASELINE, BOTTOM, CENTER, LEFT, RIGHT, TOP, UPDATE

THREE = box(23, 27, 104, 56, 4)  # HHH at (20, 20)
RTL_READING = 0x100


def written(*records, height=-40, face="Arial", **rest):
    return metafile(create_font(1, height, face, **rest), select(1), set_bk_mode(1), set_text_color(RED), *records)


ALIGNMENTS = [
    case(f"align_{across_name}_{down_name}", written(set_text_align(across | down), ext_text_out(96, 96, "HHH")),
         box(round(96 - 87 * from_left), base - 29, round(183 - 87 * from_left), base, 4))
    for across_name, across, from_left in (("left", LEFT, 0), ("center", CENTER, 0.5), ("right", RIGHT, 1))
    for down_name, down, base in (("top", TOP, 132), ("baseline", BASELINE, 96), ("bottom", BOTTOM, 87.5))
] + [
    case(f"align_{name}_with_distances", written(set_text_align(across | BASELINE), ext_text_out(96, 96, "HHH",
        dx=(30, 30, 30))),
         box(round(98 - 90 * from_left), 67, round(183 - 90 * from_left), 96, 5))
    for name, across, from_left in (("left", LEFT, 0), ("center", CENTER, 0.5), ("right", RIGHT, 1))
]

RECORDS = [
    case("wide", written(ext_text_out(20, 20, "HHH")), THREE, share((0, 0, 192, 192), 0.01, colour="red")),
    case("bytes", written(ext_text_out(20, 20, "HHH", wide=False)), THREE),
    case("small", written(small_text_out(20, 20, "HHH")), THREE),
    case("small_bytes", written(small_text_out(20, 20, "HHH", NO_RECT | SMALL)), THREE),
    case("small_with_box", written(small_text_out(20, 20, "HHH", 0, (0, 0, 192, 192))), THREE),
    case("small_clipped", written(small_text_out(20, 20, "HHHH", CLIPPED, (0, 0, 60, 192))), box(23, 27, 60, 56, 4)),
    case("poly_wide", written(poly_text_out((20, 20, "HHH"), (20, 100, "H"))), box(23, 27, 104, 136, 4)),
    case("poly_bytes", written(poly_text_out((20, 20, "HHH"), (20, 100, "H"), wide=False)), box(23, 27, 104, 136, 4)),
    case("poly_with_distances", written(poly_text_out((20, 20, "HH", 0, None, (100, 40)), (20, 100, "H"))),
         box(23, 27, 146, 136, 4), clear_of((60, 20, 115, 140))),
    case("without_text", written(ext_text_out(20, 20, "")), empty),
    case("one_pair_of_characters", written(ext_text_out(20, 20, "H\U0001D400H", dx=(40, 40, 0, 40))),
         share((20, 20, 60, 60), 0.05)),
]

TEXTS = [
    case("distances", written(ext_text_out(20, 20, "HIH", dx=(60, 40, 60))), box(23, 27, 146, 56, 4),
         clear_of((54, 20, 80, 70)), row(32, 5)),
    case("distances_that_climb", written(ext_text_out(20, 120, "HHH", PDY, dx=(30, 40, 30, 20, 30, 0))),
         box(23, 67, 106, 156, 4), clear_of((20, 60, 50, 120), (80, 100, 190, 190)), share((20, 60, 110, 160), 0.05)),
    case("distances_that_stay_level", written(ext_text_out(20, 20, "HIH", PDY, dx=(60, 0, 40, 0, 60, 0))),
         box(23, 27, 146, 56, 4), clear_of((54, 20, 80, 70))),
    case("opaque_box", written(set_bk_color(YELLOW), ext_text_out(40, 50, "H", OPAQUE, (20, 30, 170, 120))),
         box(20, 30, 170, 120),
         look("150,100 yellow; 25,35 yellow"), share((40, 50, 75, 90), 0.1, 0.9, "red")),
    case("clipped", written(ext_text_out(20, 20, "HHHH", CLIPPED, (0, 0, 60, 192))), box(23, 27, 60, 56, 4)),
    case("opaque_box_without_text", written(set_bk_color(YELLOW), ext_text_out(0, 0, "", OPAQUE, (20, 30, 170, 120))),
         box(20, 30, 170, 120), look("100,100 yellow")),
    case("opaque_ground", metafile(create_font(1, -40, "Arial"), select(1), set_text_color(RED), set_bk_mode(2),
                                   set_bk_color(YELLOW),
                                   ext_text_out(20, 20, "HHH")), box(20, 20, 107, 65, 4), share((20, 20, 106, 64), 0.3,
                                       0.9, "yellow")),
    case("black_at_first", metafile(create_font(1, -40, "Arial"), select(1), set_bk_mode(1), ext_text_out(20, 20,
        "HHH")),
         share((20, 20, 110, 60), 0.1, 0.6, "black")),
    case("cell_height", written(ext_text_out(20, 20, "HHH"), height=45), box(23, 27, 104, 56, 5)),
    case("bold", written(ext_text_out(20, 20, "IIII"), weight=700), share((20, 27, 66, 56), 0.4, 0.8)),
    case("italic", written(ext_text_out(20, 20, "III"), italic=1), row(50, 3), row(30, 3)),
    case("underlined", written(ext_text_out(20, 20, "HHH"), underline=1), share((24, 57, 100, 64), 0.2, 0.8)),
    case("struck_out", written(ext_text_out(20, 20, "    H"), strike_out=1), share((24, 35, 60, 52), 0.05, 0.5)),
    case("turned_up", written(ext_text_out(60, 170, "HHH"), escapement=900), box(67, 86, 96, 167, 4)),
    case("turned_over", written(ext_text_out(170, 100, "HHH"), escapement=1800), box(86, 64, 167, 93, 4)),
    case("turned_down", written(ext_text_out(130, 20, "HHH"), escapement=2700), box(94, 23, 123, 104, 4)),
    case("turned_with_distances", written(set_text_align(BASELINE), ext_text_out(60, 170, "HH", dx=(100, 40)),
                                          escapement=900),
         box(31, 41, 60, 167, 5), clear_of((20, 75, 70, 125))),
    case("turned_by_the_world", written(set_world_transform(0, 1, -1, 0, 150, 0), ext_text_out(20, 20, "HHH")),
         box(94, 23, 123, 104, 4)),
    case("scaled_by_the_world", written(set_world_transform(2, 0, 0, 2, 0, 0), ext_text_out(10, 10, "HHH"), height=-20),
         THREE),
    case("scaled_page", written(set_map_mode(8), set_window_ext(1920, 1920), set_viewport_ext(192, 192),
                                ext_text_out(200, 200, "HHH"),
                                height=-400), THREE),
    case("y_upwards", written(set_map_mode(8), set_window_ext(192, -192), set_viewport_ext(192, 192),
                              set_window_org(0, 192),
                              ext_text_out(20, 172, "HHH")), THREE),
    case("low_metric", written(set_map_mode(2), ext_text_out(53, -53, "HHH"), height=-106), THREE),
    case("place_goes_on", written(set_text_align(UPDATE | BASELINE), move_to(20, 100), ext_text_out(0, 0, "HH",
        dx=(30, 30)),
                                  ext_text_out(0, 0, "HH", dx=(30, 30))), box(22, 71, 138, 100, 5), row(90, 8)),
    case("right_to_left", written(set_text_align(RTL_READING), ext_text_out(20, 20, "אבג", RTL)),
         share((15, 20, 110, 70), 0.05)),
    case("cyrillic_bytes", written(ext_text_out(20, 20, b"\xcf\xcf\xcf", wide=False), charset=204), row(50, 6)),
    case("symbol", written(ext_text_out(20, 20, "\uf070\uf070"), face="Symbol", charset=2), row(50, (3, 5))),
    case("double_bytes", written(ext_text_out(20, 20, "川".encode("cp932"), wide=False), charset=128), row(44, 3)),
    case("chinese", written(ext_text_out(20, 20, "田田"), face="SimSun"), box(21, 20, 99, 65, 7)),
    case("name_of_a_font_that_is_none", written(ext_text_out(20, 20, "HHH"), face="\uffff\ufffeA'\"<&\x01"), THREE),
    case("markup_is_text", written(ext_text_out(20, 20, "<&>\"'")), share((20, 20, 150, 70), 0.03, 0.5)),
    case("control_characters", written(ext_text_out(20, 20, "H\0\1H\ufffe")), share((20, 20, 60, 60), 0.05)),
    case("glyph_numbers_are_no_text", written(ext_text_out(20, 20, "\3\4", GLYPHS), ext_text_out(20, 100, "H")),
         share((20, 100, 60, 150), 0.1)),
    case("text_in_a_path", metafile(create_font(1, -40, "Arial", weight=700), select(1), set_bk_mode(1),
                                    create_brush(2, 0, BLUE), select(2),
                                    begin_path(), ext_text_out(20, 20, "HHH"), end_path(), fill_path()), share((20, 20,
                                        110, 60), 0.1)),
    case("justified", written(set_text_justification(30, 1), ext_text_out(20, 20, "H H")), box(23, 27, 116, 56, 6)),
]

CASES = [*ALIGNMENTS, *RECORDS, *TEXTS]
