// The functions that a walk calls.

#include <new>

#include "tree_builder.h"

namespace pagerex::python {
namespace {

/// 0 to go on.
template <class Function>
int told(void* user, const Function& function) {
  TreeBuilder& builder = *static_cast<TreeBuilder*>(user);
  try {
    function(builder);
  } catch (const std::bad_alloc&) {
    builder.call().KeepNoMemory();
    return 1;
  }
  return builder.MayGoOn() ? 0 : 1;
}

/// What hands one structure on.
template <class Facts, void (TreeBuilder::*kMember)(const Facts&)>
int hand(void* user, const Facts* facts) {
  return told(user, [&](TreeBuilder& b) { (b.*kMember)(*facts); });
}

template <void (TreeBuilder::*kMember)()>
int end(void* user) {
  return told(user, [&](TreeBuilder& b) { (b.*kMember)(); });
}

template <ItemKind kKind>
int bookmark(void* user, const char* name, size_t length) {
  return told(user, [&](TreeBuilder& b) { b.Bookmark(kKind, {name, length}); });
}

template <ItemKind kKind>
int noteHere(void* user, const pagerex_note* note, const pagerex_run*) {
  return told(user, [&](TreeBuilder& b) { b.NoteHere(kKind, *note); });
}

template <ItemKind kKind>
int commentRange(void* user, uint32_t index) {
  return told(user, [&](TreeBuilder& b) { b.CommentRange(kKind, index); });
}

int textHere(void* user, const char* text, size_t length, const pagerex_run* run) {
  return told(user, [&](TreeBuilder& b) { b.Text({text, length}, *run); });
}

int markHere(void* user, int mark, const pagerex_run* run) {
  return told(user, [&](TreeBuilder& b) { b.Mark(mark, *run); });
}

int formField(void* user, const pagerex_form_field* field, const pagerex_run* run) {
  return told(user, [&](TreeBuilder& b) { b.FormField(*field, *run); });
}

}  // namespace

pagerex_handler TreeBuilder::handler() {
  pagerex_handler handler{};
  handler.size = sizeof handler;
  handler.begin_section = hand<pagerex_section, &TreeBuilder::BeginSection>;
  handler.end_section = end<&TreeBuilder::End>;
  handler.begin_header = hand<pagerex_header, &TreeBuilder::BeginHeader>;
  handler.end_header = end<&TreeBuilder::EndAside>;
  handler.begin_paragraph = hand<pagerex_paragraph, &TreeBuilder::BeginParagraph>;
  handler.end_paragraph = end<&TreeBuilder::EndParagraph>;
  handler.text = textHere;
  handler.mark = markHere;
  handler.begin_link = hand<pagerex_link, &TreeBuilder::BeginLink>;
  handler.end_link = end<&TreeBuilder::End>;
  handler.bookmark_start = bookmark<ItemKind::kBookmarkStart>;
  handler.bookmark_end = bookmark<ItemKind::kBookmarkEnd>;
  handler.note_reference = noteHere<ItemKind::kNoteReference>;
  handler.note_mark = noteHere<ItemKind::kNoteMark>;
  handler.comment_start = commentRange<ItemKind::kCommentStart>;
  handler.comment_end = commentRange<ItemKind::kCommentEnd>;
  handler.comment_reference = hand<pagerex_comment, &TreeBuilder::CommentReference>;
  handler.begin_revision = hand<pagerex_revision, &TreeBuilder::BeginRevision>;
  handler.end_revision = end<&TreeBuilder::End>;
  handler.form_field = formField;
  handler.picture = hand<pagerex_picture, &TreeBuilder::Picture>;
  handler.begin_table = hand<pagerex_table, &TreeBuilder::BeginTable>;
  handler.end_table = end<&TreeBuilder::EndTable>;
  handler.begin_row = hand<pagerex_row, &TreeBuilder::BeginRow>;
  handler.end_row = end<&TreeBuilder::EndRow>;
  handler.begin_cell = hand<pagerex_cell, &TreeBuilder::BeginCell>;
  handler.end_cell = end<&TreeBuilder::End>;
  handler.begin_text_box = hand<pagerex_text_box, &TreeBuilder::BeginTextBox>;
  handler.end_text_box = end<&TreeBuilder::End>;
  handler.begin_note = hand<pagerex_note, &TreeBuilder::BeginNote>;
  handler.end_note = end<&TreeBuilder::EndAside>;
  handler.begin_comment = hand<pagerex_comment, &TreeBuilder::BeginComment>;
  handler.end_comment = end<&TreeBuilder::EndAside>;
  return handler;
}

}  // namespace pagerex::python
