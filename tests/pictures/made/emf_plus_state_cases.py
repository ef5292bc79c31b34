"""EMF+ records: transforms, clips, regions, containers, images, text, and what goes on beside them."""

import io

from PIL import Image

import emf_maker
from emf_plus_cases import RED_PEN, TRIANGLE
from emf_plus_maker import *
from expectations import box, case, clear_of, empty, look, row, share
from packed import BLUE, CYAN, GREEN, RED, YELLOW

BOX = fill_rects(ink(RED), (0, 0, 40, 40))
EVERYWHERE = fill_rects(ink(RED), (-500, -500, 1500, 1500))

TRANSFORMS = [
    case("move", metafile(set_world_transform(1, 0, 0, 1, 20, 30), BOX), box(20, 30, 60, 70)),
    case("reset", metafile(set_world_transform(1, 0, 0, 1, 20, 30), reset_world_transform(), BOX), box(0, 0, 40, 40)),
    case("multiply_before", metafile(set_world_transform(2, 0, 0, 2, 0, 0), multiply_world_transform(1, 0, 0, 1, 10,
        10), BOX), box(20, 20, 100, 100)),
    case("multiply_after", metafile(set_world_transform(2, 0, 0, 2, 0, 0), multiply_world_transform(1, 0, 0, 1, 10, 10,
        after=True), BOX),
         box(10, 10, 90, 90)),
    case("translate_before", metafile(set_world_transform(2, 0, 0, 2, 0, 0), translate_world_transform(10, 10), BOX),
         box(20, 20, 100, 100)),
    case("translate_after", metafile(set_world_transform(2, 0, 0, 2, 0, 0), translate_world_transform(10, 10, True),
                                     BOX), box(10, 10, 90, 90)),
    case("scale_before", metafile(set_world_transform(1, 0, 0, 1, 10, 10), scale_world_transform(2, 3), BOX),
         box(10, 10, 90, 130)),
    case("scale_after", metafile(set_world_transform(1, 0, 0, 1, 10, 10), scale_world_transform(2, 3, True), BOX),
         box(20, 30, 100, 150)),
    case("rotate", metafile(translate_world_transform(100, 20), rotate_world_transform(90), fill_rects(ink(RED),
        (0, 0, 80, 40))), box(60, 20, 100, 100)),
    case("rotate_after", metafile(translate_world_transform(20, -100), rotate_world_transform(90, True), BOX),
         box(60, 20, 100, 60)),
    *(case(f"page_{name}", metafile(set_page_transform(unit), fill_rects(ink(RED), (near, near, far - near,
        far - near))), box(48, 48, 144, 144))
      for name, unit, near, far in (("pixel", PIXEL, 48, 144), ("point", POINT, 36, 108), ("inch", INCH, 0.5, 1.5),
                                    ("document", DOCUMENT, 150, 450),
                                    ("millimetre", MILLIMETRE, 12.7, 38.1))),
    case("page_scale", metafile(set_page_transform(PIXEL, 2), BOX), box(0, 0, 80, 80)),
    case("world_then_page", metafile(set_page_transform(PIXEL, 2), set_world_transform(1, 0, 0, 1, 10, 20), BOX),
         box(20, 40, 100, 120)),
    case("save_and_restore", metafile(save(3), set_world_transform(2, 0, 0, 2, 0, 0), set_clip_rect(REPLACE, 0, 0, 5,
        5), restore(3), BOX), box(0, 0, 40, 40)),
    case("restore_of_an_outer_one", metafile(save(1), translate_world_transform(50, 0), save(2),
                                             translate_world_transform(50, 50), restore(1), BOX),
         box(0, 0, 40, 40)),
    case("container", metafile(begin_container(0, (20, 30, 80, 40), (0, 0, 40, 40)), BOX, end_container(0),
                               fill_rects(ink(BLUE), (0, 0, 10, 10))),
         look("60,50 red; 5,5 blue; 95,65 red"), box(0, 0, 100, 70)),
    case("plain_container", metafile(translate_world_transform(20, 30), begin_plain_container(0),
                                     translate_world_transform(50, 50), BOX, end_container(0),
                                     fill_rects(ink(BLUE), (0, 0, 10, 10))), look("90,100 red; 25,35 blue")),
]

A, B = (40, 40, 80, 80), (80, 80, 80, 80)
ONLY_A, BOTH, ONLY_B, NEITHER = "60,60", "100,100", "140,140", "140,60"


def seen(*places):
    return look("; ".join(f"{each} {'red' if each in places else 'white'}" for each in (ONLY_A, BOTH, ONLY_B, NEITHER)))


MODES = (("replace", REPLACE, (BOTH, ONLY_B)), ("and", CLIP_AND, (BOTH,)), ("or", CLIP_OR, (ONLY_A, BOTH, ONLY_B)),
         ("xor", CLIP_XOR, (ONLY_A, ONLY_B)), ("exclude", CLIP_EXCLUDE, (ONLY_A,)), ("complement", CLIP_COMPLEMENT,
             (ONLY_B,)))
SET_A = set_clip_rect(REPLACE, *A)
B_PATH = object_(PATH, 1, polygon_path((80, 80), (160, 80), (160, 160), (80, 160)))
NODE_A, NODE_B = box_node(*A), box_node(*B)


def by_region(node, children=0): return metafile(object_(REGION, 2, region(node, children)), set_clip_region(REPLACE,
    2), EVERYWHERE)


REGIONS = (("and", AND, (BOTH,)), ("or", OR, (ONLY_A, BOTH, ONLY_B)), ("xor", XOR, (ONLY_A, ONLY_B)),
           ("exclude", EXCLUDE, (ONLY_A,)),
           ("complement", COMPLEMENT, (ONLY_B,)))
CLIPS = [
    *(case(f"clip_rect_{name}", metafile(SET_A, set_clip_rect(mode, *B), EVERYWHERE), seen(*places)) for name, mode,
      places in MODES),
    *(case(f"clip_path_{name}", metafile(B_PATH, SET_A, set_clip_path(mode, 1), EVERYWHERE), seen(*places)) for name,
      mode, places in MODES),
    *(case(f"clip_region_{name}", metafile(object_(REGION, 2, region(NODE_B)), SET_A, set_clip_region(mode, 2),
                                           EVERYWHERE), seen(*places))
      for name, mode, places in MODES),
    *(case(f"region_{name}", by_region(both(operation, NODE_A, NODE_B), 2), seen(*places)) for name, operation,
      places in REGIONS),
    *(case(f"fill_region_{name}", metafile(object_(REGION, 2, region(both(operation, NODE_A, NODE_B), 2)),
                                           fill_region(ink(RED), 2)), seen(*places))
      for name, operation, places in REGIONS),
    case("region_of_a_path", by_region(path_node(TRIANGLE)), look("130,70 red; 70,130 white"), box(40, 40, 160, 160,
        3)),
    case("empty_region", by_region(empty_node()), empty),
    case("infinite_region", by_region(infinite_node()), seen(ONLY_A, BOTH, ONLY_B, NEITHER)),
    case("region_of_three", by_region(both(OR, both(AND, NODE_A, NODE_B), box_node(140, 20, 40, 40)), 4),
         look("100,100 red; 160,40 red; 60,60 white")),
    case("reset_clip", metafile(SET_A, reset_clip(), EVERYWHERE), seen(ONLY_A, BOTH, ONLY_B, NEITHER)),
    case("offset_clip", metafile(SET_A, offset_clip(40, 40), EVERYWHERE), seen(BOTH, ONLY_B)),
    case("clip_under_a_transform", metafile(set_world_transform(2, 0, 0, 2, 0, 0), set_clip_rect(REPLACE, 20, 20, 40,
        40), reset_world_transform(),
                                            EVERYWHERE), seen(ONLY_A, BOTH)),
    case("clip_and_save", metafile(save(0), SET_A, restore(0), EVERYWHERE), seen(ONLY_A, BOTH, ONLY_B, NEITHER)),
]

QUARTERS = [[(RED, 255)] * 8 + [(GREEN, 255)] * 8] * 8 + [[(BLUE, 255)] * 8 + [(YELLOW, 255)] * 8] * 8
CLEAR_HALF = [[(RED, 255)] * 8 + [(BLUE, 128)] * 8] * 16
WHOLE, TO = (0, 0, 16, 16), (32, 32, 128, 128)
SEEN = look("48,48 red; 144,48 green; 48,144 blue; 144,144 yellow")
FRAME = box(32, 32, 160, 160)


def shown(data, *records): return metafile(object_(IMAGE, 4, data), *(records or (draw_image(4, WHOLE, TO),)))


def compressed(kind):
    """The same picture as a file of another kind."""
    image = Image.new("RGB", (16, 16))
    image.putdata([(rgb >> 16, rgb >> 8 & 255, rgb & 255) for line in QUARTERS for rgb, _ in line])
    out = io.BytesIO()
    image.save(out, kind, **({"quality": 95, "subsampling": 0} if kind == "JPEG" else {}))
    return compressed_bitmap(out.getvalue())


INNER = emf_maker.metafile(emf_maker.create_brush(1, 0, RED), emf_maker.select(1), emf_maker.rectangle(0, 0, 96, 191))
IMAGES = [
    case("image_argb", shown(bitmap(QUARTERS)), SEEN, FRAME),
    case("image_premultiplied", shown(bitmap(QUARTERS, PARGB32)), SEEN, FRAME),
    case("image_rgb", shown(bitmap(QUARTERS, RGB24)), SEEN, FRAME),
    case("image_indexed", shown(indexed_bitmap([[rgb for rgb, _ in line] for line in QUARTERS], (RED, GREEN, BLUE,
        YELLOW))), SEEN, FRAME),
    *(case(f"image_{kind.lower()}", shown(compressed(kind)), SEEN, FRAME) for kind in ("PNG", "JPEG", "GIF", "BMP")),
    case("image_half_clear", shown(bitmap(CLEAR_HALF), fill_rects(ink(CYAN), TO), draw_image(4, WHOLE, TO)),
         look("48,96 red; 144,96 007FFF")),
    case("image_half_clear_premultiplied", shown(bitmap(CLEAR_HALF, PARGB32), fill_rects(ink(CYAN), TO),
                                                 draw_image(4, WHOLE, TO)), look("48,96 red; 144,96 007FFF")),
    case("image_in_part", shown(bitmap(QUARTERS), draw_image(4, (8, 0, 8, 8), TO)), look("96,96 green"), FRAME),
    case("image_short_numbers", shown(bitmap(QUARTERS), draw_image(4, WHOLE, TO, short=True)), SEEN, FRAME),
    case("image_by_points", shown(bitmap(QUARTERS), draw_image_points(4, WHOLE, ((60, 40), (160, 40), (20, 120)))),
         look("75,60 red; 125,60 green; 55,100 blue; 105,100 yellow; 30,50 white"), box(20, 40, 160, 120, 3)),
    case("image_turned", shown(bitmap(QUARTERS), draw_image_points(4, WHOLE, ((160, 32), (160, 160), (32, 32)),
                                                                   short=True)),
         look("144,48 red; 144,144 green; 48,48 blue; 48,144 yellow"), FRAME),
    case("image_under_a_transform", shown(bitmap(QUARTERS), set_world_transform(2, 0, 0, 2, 0, 0), draw_image(4, WHOLE,
        (16, 16, 64, 64))), SEEN, FRAME),
    case("image_in_pieces", metafile(pieces(IMAGE, 4, bitmap(QUARTERS), 200), draw_image(4, WHOLE, TO)), SEEN, FRAME),
    case("image_over_comments", emf_maker.metafile(*(comment(each) for each in (header(),
        object_(IMAGE, 4, bitmap(QUARTERS)), draw_image(4, WHOLE, TO), end()))),
         SEEN, FRAME),
    case("image_clipped", shown(bitmap(QUARTERS), set_clip_rect(REPLACE, 32, 32, 64, 128), draw_image(4, WHOLE, TO)),
         box(32, 32, 96, 160)),
    case("metafile_as_image", shown(metafile_image(INNER), draw_image(4, (0, 0, 192, 192), TO)),
         look("64,96 red; 128,96 white")),
]


def written(text, size=40, family="Arial", style=0, form=None, to=(20, 20, 0, 0), **rest):
    forms = () if form is None else (object_(FORMAT, 7, form),)
    return metafile(object_(FONT, 6, font(size, family, style=style, **rest)), *forms, draw_string(6, ink(RED), text,
        to, 0xFFFFFFFF if form is None else 7))


TEXTS = [
    case("string", written("HHH"), box(25, 27, 112, 60, 8), share((0, 0, 192, 192), 0.01, colour="red")),
    case("string_in_points", written("HHH", 30, unit=POINT), box(25, 27, 112, 60, 8)),
    case("string_bold", written("IIII", style=1), share((24, 27, 80, 56), 0.25, 0.8)),
    case("string_italic", written("III", style=2), row(48, 3)),
    case("string_underlined", written("HHH", style=4), share((28, 57, 104, 66), 0.1, 0.7)),
    case("string_centred", written("HHH", form=string_format(alignment=1), to=(0, 20, 192, 60)), box(52, 27, 140, 60,
        8)),
    case("string_far", written("HHH", form=string_format(alignment=2), to=(0, 20, 180, 60)), box(85, 27, 172, 60, 12)),
    case("string_at_the_bottom", written("HHH", form=string_format(line_alignment=2), to=(20, 20, 160, 150)),
         box(25, 132, 112, 164, 9)),
    case("string_in_the_middle", written("HHH", form=string_format(line_alignment=1), to=(20, 20, 160, 150)),
         box(25, 80, 112, 110, 9)),
    case("string_of_two_lines", written("H\r\nH"), box(25, 27, 58, 104, 12)),
    case("string_turned", metafile(object_(FONT, 6, font(40, "Arial")), translate_world_transform(150, 20),
                                   rotate_world_transform(90),
                                   draw_string(6, ink(RED), "HHH", (0, 0, 0, 0))), box(110, 23, 143, 112, 9)),
    case("driver_string", metafile(object_(FONT, 6, font(40, "Arial")), draw_driver_string(6, ink(RED), "HH",
        ((20, 80), (120, 120)))),
         box(23, 51, 146, 120, 4), clear_of((60, 85, 115, 192), (60, 40, 115, 85))),
    case("driver_string_by_steps", metafile(object_(FONT, 6, font(40, "Arial")), draw_driver_string(6, ink(RED), "HH",
        ((20, 80),), options=5)),
         box(23, 51, 75, 80, 5)),
    case("driver_string_transformed", metafile(object_(FONT, 6, font(20, "Arial")), draw_driver_string(
        6, ink(RED), "HH", ((40, 80), (60, 80)), transform=(2, 0, 0, 2, 0, 0))), share((0, 0, 192, 192), 0.003)),
    case("markup_is_text", written("<&>\"'"), share((20, 20, 160, 70), 0.03, 0.5)),
]

OLD_BOX = (emf_maker.create_brush(1, 0, GREEN), emf_maker.select(1), emf_maker.rectangle(100, 100, 160, 160))
BESIDE = [
    case("dual_is_drawn_once", metafile(fill_rects(ink(RED), (20, 20, 40, 40)), dual=True, others=OLD_BOX),
         share((0, 0, 192, 192), 0.02)),
    case("old_records_of_one_without_dual_are_passed_over", metafile(fill_rects(ink(RED), (20, 20, 40, 40)),
                                                                     others=OLD_BOX), look("40,40 red; 130,130 white")),
    case("device_is_lent", emf_maker.metafile(comment(header(), fill_rects(ink(RED), (20, 20, 40, 40)), get_dc()),
                                              *OLD_BOX,
                                              comment(fill_rects(ink(BLUE), (20, 120, 40, 40)),
                                                      end())), look("40,40 red; 130,130 green; 40,140 blue")),
    case("device_comes_back", emf_maker.metafile(comment(header(), get_dc()), *OLD_BOX,
                                                 comment(fill_rects(ink(BLUE), (20, 120, 40, 40))),
                                                 emf_maker.create_brush(2, 0,
                                                     RED), emf_maker.select(2), emf_maker.rectangle(20, 20, 60,
                                                         60), comment(end())),
         look("40,40 white; 130,130 green; 40,140 blue")),
    case("records_over_comments", emf_maker.metafile(comment(header()), comment(RED_PEN),
                                                     comment(draw_lines(0, (20, 96), (160, 96))), comment(end())),
         look("96,96 red")),
    case("unknown_records_are_passed_over", metafile(record(0x4003, 0, b"text"), record(0x403F, 0, b"1234"), BOX),
         look("20,20 red")),
    case("modes_change_nothing", metafile(set_anti_alias_mode(True), set_compositing_mode(0), set_rendering_origin(3,
        4), BOX), look("20,20 red")),
    case("object_taken_over", metafile(object_(BRUSH, 1, solid_brush(BLUE)), object_(BRUSH, 1, solid_brush(RED)),
                                       fill_rects(1, (20, 20, 40, 40))),
         look("40,40 red")),
    case("wrong_kind_of_object", metafile(RED_PEN, fill_rects(0, (20, 20, 40, 40)), fill_rects(ink(BLUE),
        (100, 100, 40, 40))), look("120,120 blue")),
    case("source_copy", metafile(fill_rects(ink(BLUE), (20, 20, 100, 100)), set_compositing_mode(1),
                                 fill_rects(ink(RED), (40, 40, 40, 40))), look("60,60 red; 30,30 blue")),
]

CASES = [*TRANSFORMS, *CLIPS, *IMAGES, *TEXTS, *BESIDE]
