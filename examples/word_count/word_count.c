/* Counts what Word documents hold, without writing them anywhere.
 *
 *     word_count FILE...     a line for each: words, headings, tables, links, pictures, name */
#include <pagerex/walk.h>
#include <stdio.h>

typedef struct Counts {
  unsigned long words, headings, tables, links, pictures;
  int in_word;   /* the last character was one of a word */
  int in_header; /* headers and footers do not count */
} Counts;

/* A word goes on from one text to the next, whatever they look like. */
static int text(void* user, const char* text, size_t length, const pagerex_run* run) {
  Counts* const counts = user;
  (void)run;
  if (counts->in_header) return 0;
  for (size_t i = 0; i < length; ++i) {
    const int is_space = text[i] == ' ';
    if (!is_space && !counts->in_word) ++counts->words;
    counts->in_word = !is_space;
  }
  return 0;
}

static int mark(void* user, int mark, const pagerex_run* run) {
  (void)mark, (void)run;
  ((Counts*)user)->in_word = 0;
  return 0;
}

static int begin_paragraph(void* user, const pagerex_paragraph* paragraph) {
  Counts* const counts = user;
  counts->in_word = 0;
  if (!counts->in_header && paragraph->heading_level != 0) ++counts->headings;
  return 0;
}

static int begin_header(void* user, const pagerex_header* header) {
  (void)header;
  ((Counts*)user)->in_header = 1;
  return 0;
}

static int end_header(void* user) {
  ((Counts*)user)->in_header = 0;
  return 0;
}

static int begin_table(void* user, const pagerex_table* table) {
  (void)table;
  ((Counts*)user)->tables += !((Counts*)user)->in_header;
  return 0;
}

static int begin_link(void* user, const pagerex_link* link) {
  (void)link;
  ((Counts*)user)->links += !((Counts*)user)->in_header;
  return 0;
}

static int picture(void* user, const pagerex_picture* picture) {
  ((Counts*)user)->pictures += picture->source && !((Counts*)user)->in_header;
  return 0;
}

static int count(const char* path, Counts* counts, pagerex_result* result) {
  const pagerex_handler handler = {.size = sizeof handler,
                                   .begin_header = begin_header,
                                   .end_header = end_header,
                                   .begin_paragraph = begin_paragraph,
                                   .text = text,
                                   .mark = mark,
                                   .begin_link = begin_link,
                                   .picture = picture,
                                   .begin_table = begin_table};
  const pagerex_input input = {.size = sizeof input, .path = path};
  pagerex_document* document;
  if (pagerex_open(&input, NULL, &document, result) == PAGEREX_RESULT_OK)
    pagerex_walk(document, NULL, &handler, counts, result);
  pagerex_close(document);
  return result->code == PAGEREX_RESULT_OK;
}

int main(int argc, char** argv) {
  int failed = argc < 2;
  for (int i = 1; i < argc; ++i) {
    Counts counts = {0};
    pagerex_result result = {.size = sizeof result};
    if (count(argv[i], &counts, &result)) {
      printf("%lu words, %lu headings, %lu tables, %lu links, %lu pictures: %s\n", counts.words,
             counts.headings, counts.tables, counts.links, counts.pictures, argv[i]);
    } else {
      fprintf(stderr, "%s: %s\n", argv[i], result.sentence);
      failed = 1;
    }
  }
  return failed;
}
