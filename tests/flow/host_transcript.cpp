#include "flow/host_transcript.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace flow_test {
namespace {

std::string spelled(const pagerex_text& text) {
  return "\"" + std::string(text.data, text.length) + "\"";
}

std::string spelled(const pagerex_date& date) {
  if (date.year == 0) return "no date";
  std::ostringstream out;
  out << date.year << '-' << +date.month << '-' << +date.day << ' ' << +date.hour << ':' << +date.minute;
  return out.str();
}

template <class... Parts>
int line(void* user, const Parts&... parts) {
  auto& host = *static_cast<HostTranscript*>(user);
  std::ostringstream out;
  (out << ... << parts) << '\n';
  host.lines += out.str();
  return host.answer(++host.calls);
}

std::string lookOf(const pagerex_run* run) {
  return std::string(run->bold ? " bold" : "") + (run->insertion.kind ? " inserted" : "") +
         (run->deletion.kind ? " deleted" : "") + (run->hidden ? " hidden" : "");
}

int paragraph(void* user, const pagerex_paragraph* p) {
  std::string facts = p->style.length == 6 ? "" : " " + spelled(p->style);  // "Normal" goes without saying
  if (p->heading_level != 0) facts += " heading " + std::to_string(p->heading_level);
  if (p->label.length != 0) facts += " label " + spelled(p->label);
  if ((p->label.length != 0) != (p->label_run != nullptr)) facts += " and no run of it";
  return line(user, "begin paragraph", facts);
}

int picture(void* user, const pagerex_picture* p) {
  pagerex_picture_data data = {};
  data.size = sizeof data;
  const int code = pagerex_picture_read(p, &data);
  return line(user, "picture ", spelled(p->description), ' ', p->width, 'x', p->height, ' ',
              p->is_inline ? "inline" : "floating", " type ", data.type, ' ', pagerex_result_name(code), ' ',
              data.length > 0 ? "with bytes" : "without bytes");
}

/// In the order of the structure.
constexpr pagerex_handler kHandler = {
    .size = sizeof(pagerex_handler),
    .begin_document =
        [](void* user, const pagerex_document_facts* f) {
          return line(user, "begin document ", spelled(f->title), ' ', f->custom_count);
        },
    .end_document = [](void* user) { return line(user, "end document"); },
    .begin_section =
        [](void* user, const pagerex_section* s) {
          return line(user, "begin section ", s->index, ' ', s->page_width, 'x', s->page_height);
        },
    .end_section = [](void* user) { return line(user, "end section"); },
    .begin_header =
        [](void* user, const pagerex_header* h) {
          return line(user, "begin header ", h->kind, h->is_footer ? " footer" : " header");
        },
    .end_header = [](void* user) { return line(user, "end header"); },
    .begin_paragraph = paragraph,
    .end_paragraph = [](void* user) { return line(user, "end paragraph"); },
    .text =
        [](void* user, const char* text, size_t length, const pagerex_run* run) {
          return line(user, "text ", spelled({text, length}), lookOf(run));
        },
    .mark = [](void* user, int mark,
               const pagerex_run* run) { return line(user, "mark ", mark, lookOf(run)); },
    .begin_link =
        [](void* user, const pagerex_link* l) {
          return line(user, "begin link ", spelled(l->address), ' ', spelled(l->bookmark), ' ',
                      spelled(l->title));
        },
    .end_link = [](void* user) { return line(user, "end link"); },
    .bookmark_start =
        [](void* user, const char* name, size_t n) {
          return line(user, "bookmark starts ", spelled({name, n}));
        },
    .bookmark_end =
        [](void* user, const char* name, size_t n) {
          return line(user, "bookmark ends ", spelled({name, n}));
        },
    .note_reference =
        [](void* user, const pagerex_note* n, const pagerex_run* run) {
          return line(user, "note reference ", n->kind, ' ', n->index, ' ', spelled(n->label), lookOf(run));
        },
    .note_mark =
        [](void* user, const pagerex_note* n, const pagerex_run* run) {
          return line(user, "note mark ", n->kind, ' ', n->index, ' ', spelled(n->label), lookOf(run));
        },
    .comment_start = [](void* user, uint32_t index) { return line(user, "comment starts ", index); },
    .comment_end = [](void* user, uint32_t index) { return line(user, "comment ends ", index); },
    .comment_reference =
        [](void* user, const pagerex_comment* c) {
          return line(user, "comment reference ", c->index, ' ', spelled(c->author));
        },
    .begin_revision =
        [](void* user, const pagerex_revision* r) {
          return line(user, "begin revision ", r->kind, ' ', spelled(r->author), ' ', spelled(r->date));
        },
    .end_revision = [](void* user) { return line(user, "end revision"); },
    .form_field =
        [](void* user, const pagerex_form_field* f, const pagerex_run* run) {
          return line(user, "form field ", f->kind, ' ', spelled(f->name), ' ', f->is_checked, ' ',
                      spelled(f->value), lookOf(run));
        },
    .picture = picture,
    .begin_table =
        [](void* user, const pagerex_table* t) {
          return line(user, "begin table ", t->row_count, 'x', t->column_count, " depth ", t->depth);
        },
    .end_table = [](void* user) { return line(user, "end table"); },
    .begin_row = [](void* user,
                    const pagerex_row* r) { return line(user, "begin row", r->is_header ? " header" : ""); },
    .end_row = [](void* user) { return line(user, "end row"); },
    .begin_cell =
        [](void* user, const pagerex_cell* c) {
          return line(user, "begin cell ", c->width, ' ', c->column_span, 'x', c->row_span);
        },
    .end_cell = [](void* user) { return line(user, "end cell"); },
    .begin_text_box =
        [](void* user, const pagerex_text_box* b) {
          return line(user, "begin text_box ", b->index, b->shape->source ? " with a picture" : "");
        },
    .end_text_box = [](void* user) { return line(user, "end text_box"); },
    .begin_note =
        [](void* user, const pagerex_note* n) {
          return line(user, "begin note ", n->kind, ' ', n->index, ' ', spelled(n->label));
        },
    .end_note = [](void* user) { return line(user, "end note"); },
    .begin_comment =
        [](void* user, const pagerex_comment* c) {
          return line(user, "begin comment ", c->index, ' ', spelled(c->author), ' ', spelled(c->initials),
                      ' ', spelled(c->date));
        },
    .end_comment = [](void* user) { return line(user, "end comment"); },
};

}  // namespace

HostTranscript::HostTranscript() : handler(kHandler) {}

bool HostTranscript::isBalanced() const {
  std::vector<std::string> open;
  std::istringstream in(lines);
  for (std::string text, what, name; std::getline(in, text);) {
    std::istringstream(text) >> what >> name;
    if (what == "begin") open.push_back(name);
    if (what != "end") continue;
    if (open.empty() || open.back() != name) return false;
    open.pop_back();
  }
  return open.empty();
}

HostDocument::HostDocument(const std::string& bytes, const pagerex_limits* limits) : bytes_(bytes) {
  pagerex_input input = {};
  input.size = sizeof input;
  input.data = bytes_.data();
  input.length = bytes_.size();
  result.size = sizeof result;
  EXPECT_EQ(pagerex_open(&input, limits, &document_, &result), PAGEREX_RESULT_OK) << result.sentence;
}

}  // namespace flow_test
