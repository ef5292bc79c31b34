#ifndef PAGEREX_WALK_H
#define PAGEREX_WALK_H

/* A document told to functions of the host, in the order in which it is read: for search, statistics, and
 * formats of the host's own. Usable from C99 and C++.
 *
 *     static int text(void* user, const char* text, size_t length, const pagerex_run* run) { ...; return 0; }
 *
 *     pagerex_handler handler = {.size = sizeof handler, .text = text};
 *     pagerex_walk(document, NULL, &handler, user, NULL);
 *
 * What is said of convert.h holds here. Structures that the library fills in begin with their size too:
 * fields behind it are not there, where an older library runs. The small ones without a size stay as they
 * are. Whatever a function is handed is valid until it returns, and not to be changed.
 *
 * Lengths are in twips, twentieths of a point, unless the name says otherwise. Texts are UTF-8 without
 * an end mark; their pointers are never null. Flags are 0 or 1. */

#include <stddef.h>
#include <stdint.h>

#include "pagerex/convert.h"

#ifdef __cplusplus
extern "C" {
#endif

/* --- Small things -------------------------------------------------------------------------------------- */

typedef struct pagerex_text {
  const char* data;
  size_t length; /* in bytes; 0 for none */
} pagerex_text;

typedef struct pagerex_colour {
  uint32_t rgb;         /* 0xRRGGBB */
  int32_t is_automatic; /* the reader's: text that can be read on what lies under it */
} pagerex_colour;

typedef struct pagerex_border {
  uint8_t kind;          /* 0 none, 1 single, 3 double, 6 dotted, 7 dashed, ... as Word numbers them */
  uint8_t width_eighths; /* of a point */
  uint8_t space_points;  /* to the text */
  uint8_t has_shadow;
  pagerex_colour colour;
} pagerex_border;

/* What lies under text, a paragraph or a cell: one colour, the pattern mixed in. */
typedef struct pagerex_shading {
  int32_t is_there;
  pagerex_colour fill;
} pagerex_shading;

/* Local, without a zone. */
typedef struct pagerex_date {
  uint16_t year; /* 0 for no date */
  uint8_t month, day, hour, minute;
} pagerex_date;

enum {
  PAGEREX_CHANGE_NONE = 0,
  PAGEREX_CHANGE_INSERTED = 1,
  PAGEREX_CHANGE_DELETED = 2,
  PAGEREX_CHANGE_MOVED_HERE = 3,
  PAGEREX_CHANGE_MOVED_AWAY = 4
};

typedef struct pagerex_change {
  int32_t kind;    /* PAGEREX_CHANGE_... */
  uint32_t author; /* the same number for the same author */
  pagerex_date date;
} pagerex_change;

/* The start is the side that lines begin at: the right one in right-to-left paragraphs. */
enum {
  PAGEREX_ALIGN_START = 0,
  PAGEREX_ALIGN_CENTRE = 1,
  PAGEREX_ALIGN_END = 2,
  PAGEREX_ALIGN_JUSTIFY = 3,
  PAGEREX_ALIGN_DISTRIBUTE = 4
};

/* --- The document -------------------------------------------------------------------------------------- */

/* A property that someone gave a name. */
typedef struct pagerex_custom_property {
  pagerex_text name;
  int64_t kind; /* PAGEREX_PROPERTY_...: which of the others counts */
  pagerex_text text;
  int64_t integer; /* and of a boolean: 0 or 1 */
  double real;
  int64_t time;
} pagerex_custom_property;

/* What is known before the text. Times are seconds since 1970, UTC; 0 for none. Counts are those that Word
 * wrote into the file last; 0 for none. */
typedef struct pagerex_document_facts {
  size_t size;
  pagerex_text title, subject, author, keywords, comments, template_name, last_author, revision_number;
  pagerex_text application, category, manager, company, content_status, language_name;
  int64_t created, saved, printed;
  int64_t editing_seconds;
  int32_t pages, words, characters, characters_with_spaces, lines, paragraphs;
  int32_t security;
  uint32_t custom_count;
  const pagerex_custom_property* custom;
  uint32_t page_count;       /* from the document itself, not its summary */
  uint16_t language;         /* LCID of the text of style "Normal"; 0x0400 is none */
  uint16_t default_tab_stop; /* tabs behind the last tab stop are so far apart */
  int32_t has_odd_even_headers;
} pagerex_document_facts;

enum {
  PAGEREX_SECTION_CONTINUOUS = 0,
  PAGEREX_SECTION_NEW_COLUMN = 1,
  PAGEREX_SECTION_NEW_PAGE = 2,
  PAGEREX_SECTION_EVEN_PAGE = 3,
  PAGEREX_SECTION_ODD_PAGE = 4
};

enum { PAGEREX_HEADER_EVEN = 0, PAGEREX_HEADER_ODD = 1, PAGEREX_HEADER_FIRST = 2 };

typedef struct pagerex_column {
  uint16_t width, space; /* the space behind it */
} pagerex_column;

/* How a section numbers its footnotes or endnotes; what is not set is the document's. */
typedef struct pagerex_note_numbering {
  uint8_t sets_restart, sets_start, sets_format;
  uint8_t restart; /* 0 numbers go on, 1 begin anew in each section, 2 on each page */
  uint16_t start;
  uint16_t format; /* as pagerex_paragraph.number_format */
} pagerex_note_numbering;

typedef struct pagerex_section {
  size_t size;
  uint32_t index; /* from 0 */
  int32_t start;  /* PAGEREX_SECTION_... */
  int32_t page_width, page_height;
  int32_t margin_top, margin_bottom; /* negative: exactly so much, whatever the header needs */
  int32_t margin_left, margin_right, gutter;
  int32_t header_distance, footer_distance;
  uint32_t column_count; /* columns of the page */
  int32_t column_space;
  const pagerex_column* columns; /* `columns_told` of them; 0 where all are equal */
  uint32_t columns_told;
  uint8_t has_line_between_columns;
  uint8_t is_landscape;
  uint8_t has_title_page; /* the first page has a header and footer of its own */
  uint8_t is_right_to_left;
  uint8_t restarts_page_numbers;
  uint8_t page_number_format; /* as pagerex_paragraph.number_format */
  uint8_t vertical_alignment; /* 0 top, 1 centre, 2 justified, 3 bottom */
  uint16_t first_page_number;
  uint16_t text_flow; /* 0 horizontal, 1 vertical, ... */
  pagerex_border page_top, page_left, page_bottom, page_right;
  pagerex_note_numbering footnotes, endnotes;
  /* Whose header (0) and footer (1) of each PAGEREX_HEADER_... is shown: the index of a section, this one or
   * an earlier one that it is linked to; -1 for none. */
  int32_t header_sections[2][3];
} pagerex_section;

typedef struct pagerex_header {
  size_t size;
  int32_t kind; /* PAGEREX_HEADER_... */
  int32_t is_footer;
} pagerex_header;

/* --- Text ---------------------------------------------------------------------------------------------- */

/* How text looks: document defaults, table style, styles with their bases and what stands at the text itself
 * are put together. */
typedef struct pagerex_run {
  size_t size;
  /* By script of the characters. Empty for a font that is not there. */
  pagerex_text font, east_asian_font, other_font, complex_font;
  pagerex_text character_style; /* name; that of "Default Paragraph Font" for none */
  uint8_t bold, italic, strike, double_strike, outline, shadow, emboss, imprint, small_caps, caps, hidden;
  uint8_t is_right_to_left, is_complex_script, no_proof;
  uint8_t underline;          /* 0 none, 1 single, 2 words, 3 double, 4 dotted, ... as Word numbers them */
  uint8_t highlight;          /* 0 none, 1 to 16 a colour of Word's palette */
  uint8_t vertical_alignment; /* 0 in the line, 1 superscript, 2 subscript */
  uint8_t emphasis_mark;      /* 0 none, 1 dot, 2 comma, 3 circle, 4 dot below */
  uint16_t size_half_points, complex_size_half_points;
  int16_t spacing;                                          /* between characters */
  uint16_t scale_percent;                                   /* width of characters */
  int16_t raised_half_points;                               /* negative: lowered */
  uint16_t kerning_half_points;                             /* from this size on; 0 never */
  uint16_t language, east_asian_language, complex_language; /* LCID; 0x0400 is none */
  uint16_t character_style_index;
  pagerex_colour colour;
  pagerex_colour underline_colour; /* automatic: that of the text */
  pagerex_border border;
  pagerex_shading shading;
  pagerex_change insertion; /* inserted or moved here */
  pagerex_change deletion;  /* deleted or moved away; text may be both */
} pagerex_run;

typedef struct pagerex_tab_stop {
  int16_t position;  /* from the margin of the paragraph */
  uint8_t alignment; /* 0 left, 1 centre, 2 right, 3 decimal, 4 bar */
  uint8_t leader;    /* 0 none, 1 dots, 2 hyphens, 3 line, 4 thick line, 5 middle dots */
} pagerex_tab_stop;

/* A place of its own on the page. */
typedef struct pagerex_frame {
  uint8_t is_there;
  uint8_t is_least_height;
  uint8_t horizontal_anchor; /* 0 column, 1 margin, 2 page */
  uint8_t vertical_anchor;   /* 0 margin, 1 page, 2 paragraph */
  uint8_t wrap;
  uint8_t drop_cap_lines; /* 0 for no drop cap */
  uint8_t is_drop_cap_in_margin;
  int16_t left, top; /* some values stand for "centre", "right", ... as in sprmPDxaAbs and sprmPDyaAbs */
  uint16_t width;    /* 0 for that of the text */
  uint16_t height;
} pagerex_frame;

enum {
  PAGEREX_LINES_MULTIPLE = 0, /* line_height in 240ths of a line */
  PAGEREX_LINES_AT_LEAST = 1,
  PAGEREX_LINES_EXACTLY = 2
};

enum { PAGEREX_FOLLOW_TAB = 0, PAGEREX_FOLLOW_SPACE = 1, PAGEREX_FOLLOW_NOTHING = 2 };

typedef struct pagerex_paragraph {
  size_t size;
  uint32_t position; /* character position in its story */
  uint32_t style_index;
  pagerex_text style; /* as the file spells it, of built-in styles the English name */

  /* What it is. */
  uint8_t heading_level; /* 1 to 9; 0 for no heading */
  uint8_t outline_level; /* 0 to 8; 9 is body text */
  uint8_t is_list_item;  /* whether or not it has a label */
  uint8_t is_bullet;
  uint8_t list_level;           /* 0 to 8 */
  uint8_t label_follow;         /* PAGEREX_FOLLOW_...: what stands behind the label */
  uint8_t number_format;        /* 0 1 2, 1 I II, 2 i ii, 3 A B, 4 a b, 23 bullet, ... as Word numbers them */
  int32_t list_id;              /* one for all items that count together */
  int32_t number;               /* of the item in its level */
  pagerex_text label;           /* as shown, with bullets as Unicode; empty for none */
  const pagerex_run* label_run; /* null without a label */
  const pagerex_run* mark_run;  /* of the mark that ends the paragraph */

  /* How it looks. */
  uint8_t alignment; /* PAGEREX_ALIGN_... */
  uint8_t is_right_to_left, keep_lines, keep_with_next, page_break_before, widow_control;
  uint8_t spaces_only_between_styles; /* none between paragraphs of one style */
  uint8_t no_hyphens, no_line_numbers;
  uint8_t auto_space_before, auto_space_after; /* as browsers space paragraphs */
  uint8_t line_spacing;                        /* PAGEREX_LINES_... */
  uint16_t line_height;
  uint16_t space_before, space_after;
  uint16_t text_flow;
  int32_t indent_start, indent_end;
  int32_t indent_first_line; /* negative: the other lines hang */
  pagerex_border top, start, bottom, end, between, bar;
  pagerex_shading shading;
  const pagerex_tab_stop* tabs; /* by position */
  uint32_t tab_count;
  pagerex_frame frame;
  /* A picture in the place of the label; null for none. */
  const struct pagerex_picture* label_picture;
} pagerex_paragraph;

enum {
  PAGEREX_MARK_TAB = 0,
  PAGEREX_MARK_LINE_BREAK = 1,
  PAGEREX_MARK_PAGE_BREAK = 2,
  PAGEREX_MARK_COLUMN_BREAK = 3,
  PAGEREX_MARK_RULE = 4 /* a horizontal line */
};

typedef struct pagerex_link {
  size_t size;
  pagerex_text address;  /* of something outside; empty for a place in the document. As the document has it:
                            to be judged before anyone follows it */
  pagerex_text bookmark; /* a place in the document, or below the address */
  pagerex_text title;    /* screen tip */
  pagerex_text target;   /* frame */
} pagerex_link;

enum { PAGEREX_NOTE_FOOTNOTE = 0, PAGEREX_NOTE_ENDNOTE = 1 };

typedef struct pagerex_note {
  size_t size;
  int32_t kind;       /* PAGEREX_NOTE_... */
  uint32_t index;     /* of its kind, from 0, in the order of the document */
  pagerex_text label; /* the number in Word, or the custom mark */
  int32_t is_custom;
} pagerex_note;

typedef struct pagerex_comment {
  size_t size;
  uint32_t index; /* from 0, in the order of the document */
  pagerex_date date;
  pagerex_text author, initials;
} pagerex_comment;

/* What follows was inserted, deleted or moved. */
typedef struct pagerex_revision {
  size_t size;
  int32_t kind; /* PAGEREX_CHANGE_... */
  pagerex_date date;
  pagerex_text author;
} pagerex_revision;

enum { PAGEREX_FIELD_TEXT = 0, PAGEREX_FIELD_CHECK_BOX = 1, PAGEREX_FIELD_DROP_DOWN = 2 };

typedef struct pagerex_form_field {
  size_t size;
  int32_t kind; /* PAGEREX_FIELD_... */
  int32_t is_checked;
  pagerex_text name;
  pagerex_text value; /* the choice that was made; of a text field empty: its text follows as such */
} pagerex_form_field;

/* --- Pictures and text boxes --------------------------------------------------------------------------- */

/* What reads a picture's bytes. */
typedef struct pagerex_picture_source pagerex_picture_source;

typedef struct pagerex_picture {
  size_t size;
  pagerex_text description; /* alternative text */
  pagerex_text name;
  pagerex_text linked_address;    /* of one that is only linked */
  pagerex_picture_source* source; /* null for a drawing, and for a picture that is only linked */
  uint32_t identity;     /* the same, and not 0, for each showing of one stored picture; 0 if not known */
  int32_t width, height; /* as shown */
  int32_t left, top;     /* of a floating one, from what its position refers to */
  uint8_t is_inline;     /* in the line; otherwise floating */
  uint8_t wrap;          /* of a floating one: 0 and 2 around, 1 top and bottom, 3 over the text */
  uint8_t is_behind_text;
} pagerex_picture;

enum {
  PAGEREX_PICTURE_NONE = 0,
  PAGEREX_PICTURE_EMF = 2,
  PAGEREX_PICTURE_WMF = 3,
  PAGEREX_PICTURE_PICT = 4,
  PAGEREX_PICTURE_JPEG = 5,
  PAGEREX_PICTURE_PNG = 6,
  PAGEREX_PICTURE_DIB = 7, /* a bitmap without its file header */
  PAGEREX_PICTURE_TIFF = 8
};

typedef struct pagerex_picture_data {
  size_t size;
  int32_t type;        /* PAGEREX_PICTURE_... */
  int32_t is_deflated; /* EMF, WMF and PICT: zlib around them */
  const void* data;    /* the image alone, as it is stored */
  size_t length;
  uint32_t raw_length; /* of what is deflated, as the file says: not to be relied on */
} pagerex_picture_data;

/* Reads the picture that a function was handed, before that returns. `data` has its size set. Returns
 * PAGEREX_RESULT_OK, _INVALID_ARGUMENT, _UNREADABLE where there is no picture or it cannot be read, and
 * _OUT_OF_MEMORY, which ends the walk too. */
PAGEREX_API int pagerex_picture_read(const pagerex_picture* picture, pagerex_picture_data* data);

typedef struct pagerex_text_box {
  size_t size;
  uint32_t index;               /* from 0 */
  const pagerex_picture* shape; /* without a picture to be read */
} pagerex_text_box;

/* --- Tables -------------------------------------------------------------------------------------------- */

typedef struct pagerex_table {
  size_t size;
  uint32_t depth; /* 1 for a table of the text, 2 for one in its cell, ... */
  uint32_t row_count;
  uint32_t header_row_count; /* at its top */
  uint32_t column_count;
  const int32_t* column_widths; /* column_count of them */
  int32_t indent;
  int32_t width;      /* 0 for that of its cells */
  uint8_t width_kind; /* 0 none, 1 automatic, 2 fiftieths of a percent, 3 twips */
  uint8_t alignment;  /* PAGEREX_ALIGN_... */
  uint8_t is_right_to_left;
  uint8_t is_regular; /* each row begins and ends where the others do, and cells stand below each other */
  uint8_t has_merged_cells;
  uint8_t has_single_paragraphs; /* each cell has one paragraph, and no table in it */
  uint8_t floats;
  uint32_t style_index; /* 0 for none */
  pagerex_text style;
} pagerex_table;

typedef struct pagerex_row {
  size_t size;
  uint8_t is_header; /* repeated on each page */
  uint8_t cant_split;
  uint8_t is_exact_height;
  int32_t height;          /* 0 for that of the text */
  uint32_t columns_before; /* of the table's columns, in front of the first cell */
  uint32_t columns_after;  /* and behind the last */
  pagerex_change change;
} pagerex_row;

typedef struct pagerex_cell {
  size_t size;
  int32_t left; /* of its left edge, from the section's margin */
  int32_t width;
  uint32_t column_span;
  uint32_t row_span; /* 0 for a cell that belongs to the one above: it is told, and has no text that shows */
  uint8_t vertical_alignment; /* 0 top, 1 centre, 2 bottom */
  uint8_t text_flow;
  uint8_t no_wrap;
  pagerex_border top, start, bottom, end;
  pagerex_shading shading;
  int32_t padding_top, padding_start, padding_bottom, padding_end;
} pagerex_cell;

/* --- The walk ------------------------------------------------------------------------------------------ */

/* Functions of the host, called on the thread of the call; null ones are not. Each gets the `user` of the
 * call and returns 0 to go on; anything else ends the walk as PAGEREX_RESULT_CANCELED, and nothing is called
 * any more. Where a flag, a deadline or the input ends it, what has begun is told to end; not where memory
 * ends.
 *
 *     document  = begin_document section* notes comments end_document
 *     section   = begin_section header* block* end_section
 *     header    = begin_header block* end_header               (not told where linked to an earlier one)
 *     block     = paragraph | table
 *     paragraph = begin_paragraph inline* end_paragraph text_box*      (those that are anchored in it)
 *     inline    = text | mark | bookmark_start | bookmark_end | note_reference | note_mark | comment_start
 *               | comment_end | comment_reference | form_field | picture
 *               | begin_link inline* end_link | begin_revision inline* end_revision
 *     table     = begin_table row+ end_table;  row = begin_row cell+ end_row;  cell = begin_cell block*
 * end_cell notes     = (begin_note block* end_note)*;  comments = (begin_comment block* end_comment)*
 *     text_box  = begin_text_box block* end_text_box
 *
 * Links and revisions end with their paragraph, and begin anew in the next one. No function may use the
 * document in another call. docs/flow.md tells more. */
typedef struct pagerex_handler {
  size_t size;
  int (*begin_document)(void* user, const pagerex_document_facts* facts);
  int (*end_document)(void* user);
  int (*begin_section)(void* user, const pagerex_section* section);
  int (*end_section)(void* user);
  int (*begin_header)(void* user, const pagerex_header* header);
  int (*end_header)(void* user);
  int (*begin_paragraph)(void* user, const pagerex_paragraph* paragraph);
  int (*end_paragraph)(void* user);
  /* Characters of one look, none of them cut in two: neither marks nor controls. Optional hyphens are U+00AD,
   * non-breaking ones U+2011. Long ones come in several calls. */
  int (*text)(void* user, const char* text, size_t length, const pagerex_run* run);
  int (*mark)(void* user, int mark, const pagerex_run* run); /* PAGEREX_MARK_... */
  int (*begin_link)(void* user, const pagerex_link* link);
  int (*end_link)(void* user);
  int (*bookmark_start)(void* user, const char* name, size_t length);
  int (*bookmark_end)(void* user, const char* name, size_t length);
  int (*note_reference)(void* user, const pagerex_note* note, const pagerex_run* run);
  int (*note_mark)(void* user, const pagerex_note* note, const pagerex_run* run); /* the label, in the note */
  int (*comment_start)(void* user, uint32_t index);
  int (*comment_end)(void* user, uint32_t index);
  int (*comment_reference)(void* user, const pagerex_comment* comment);
  int (*begin_revision)(void* user, const pagerex_revision* revision); /* with PAGEREX_REVISIONS_ALL alone */
  int (*end_revision)(void* user);
  int (*form_field)(void* user, const pagerex_form_field* field, const pagerex_run* run);
  int (*picture)(void* user, const pagerex_picture* picture);
  int (*begin_table)(void* user, const pagerex_table* table);
  int (*end_table)(void* user);
  int (*begin_row)(void* user, const pagerex_row* row);
  int (*end_row)(void* user);
  int (*begin_cell)(void* user, const pagerex_cell* cell);
  int (*end_cell)(void* user);
  int (*begin_text_box)(void* user, const pagerex_text_box* box);
  int (*end_text_box)(void* user);
  int (*begin_note)(void* user, const pagerex_note* note);
  int (*end_note)(void* user);
  int (*begin_comment)(void* user, const pagerex_comment* comment);
  int (*end_comment)(void* user);
} pagerex_handler;

typedef struct pagerex_walk_options {
  size_t size;
  int32_t revisions;            /* PAGEREX_REVISIONS_... */
  int32_t hidden_text;          /* not 0: text that Word hides is told, marked as such */
  const pagerex_limits* limits; /* of the walk; may be null. Only `deadline_ms` and `cancel` count */
} pagerex_walk_options;

/* Tells `handler` what the document says, as often as wanted. `options` and `result` may be null; `user` is
 * handed to each function. Damage leaves text out only where its bytes are not there, with a warning. Returns
 * PAGEREX_RESULT_OK, _INVALID_ARGUMENT, _UNREADABLE, _DAMAGED, _CANCELED, _DEADLINE, _OUT_OF_MEMORY or
 * _MEMORY_LIMIT; `result` counts what was told of the main text, and has the warnings. */
PAGEREX_API int pagerex_walk(pagerex_document* document, const pagerex_walk_options* options,
                             const pagerex_handler* handler, void* user, pagerex_result* result);

#ifdef __cplusplus
}
#endif

#endif
