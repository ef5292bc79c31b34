#pragma once

#include "call.h"
#include "tree.h"

namespace pagerex::python {

/// Fills a tree by a walk: begin/end pairs become items, neighbouring texts of one look one run. The text of
/// the body has a line for each paragraph and each row of a table; cells are parted by tabs, the paragraphs
/// of one by spaces.
class TreeBuilder {
 public:
  TreeBuilder(Tree& tree, Call& call) : tree_(tree), call_(call) { Open(ItemKind::kDocument, 0); }

  static pagerex_handler handler();

  void BeginSection(const pagerex_section& section);
  void BeginHeader(const pagerex_header& header);
  void BeginParagraph(const pagerex_paragraph& paragraph);
  void EndParagraph();
  void Text(std::string_view text, const pagerex_run& run);
  void Mark(int mark, const pagerex_run& run);
  void BeginLink(const pagerex_link& link);
  void Bookmark(ItemKind kind, std::string_view name);
  void NoteHere(ItemKind kind, const pagerex_note& note);
  void CommentRange(ItemKind kind, uint32_t index);
  void CommentReference(const pagerex_comment& comment);
  void BeginRevision(const pagerex_revision& revision);
  void FormField(const pagerex_form_field& field, const pagerex_run& run);
  void Picture(const pagerex_picture& picture);
  void BeginTable(const pagerex_table& table);
  void EndTable();
  void BeginRow(const pagerex_row& row);
  void BeginCell(const pagerex_cell& cell);
  void EndRow();
  void BeginTextBox(const pagerex_text_box& box);
  void BeginNote(const pagerex_note& note);
  void BeginComment(const pagerex_comment& comment);
  void End() { Close(); }
  void EndAside();
  /// Closes all that is open, the document too.
  void Finish();

  Call& call() { return call_; }
  bool MayGoOn() { return (++told_ & 1023) != 0 || call_.MayGoOn(); }

 private:
  /// How far a story's text has come.
  struct Place {
    uint32_t bytes = 0, characters = 0;
  };
  std::string& text() { return isAside_ ? tree_.aside : tree_.body; }
  Place& place() { return places_[isAside_]; }

  Item& Add(ItemKind kind, uint32_t facts);
  void Open(ItemKind kind, uint32_t facts);
  void Close();
  void Put(std::string_view text);
  void PutOwedSpace();
  StringId Keep(std::string_view text);
  StringId Keep(const pagerex_text& text) { return Keep(std::string_view(text.data, text.length)); }
  uint32_t KeepRun(const pagerex_run& run);
  uint32_t KeepPicture(const pagerex_picture& picture);

  Tree& tree_;
  Call& call_;
  Place places_[2];
  std::vector<uint32_t> open_;
  std::unordered_map<std::string, StringId> stringIds_;
  std::unordered_map<std::string, uint32_t> runIds_;
  uint32_t lastRun_ = 0;
  uint32_t pictureCount_ = 0;
  uint32_t tables_ = 0;  ///< that are open, one in the other
  uint32_t told_ = 0;
  bool isAside_ = false;
  bool isFirstCell_ = false;
  bool cellHasText_ = false;
  bool owesSpace_ = false;  ///< in a cell, before what follows
};

}  // namespace pagerex::python
