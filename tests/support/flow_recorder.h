#pragma once

#include <string>
#include <vector>

#include "base/link_policy.h"
#include "flow/handler.h"
#include "formats/markdown/code_styles.h"

namespace support {

/// A paragraph, a cell or a line of code, as it is to be read.
struct ShownText {
  std::string label;     ///< of a list item that Markdown can show: "3." or "-"
  std::string text;      ///< UTF-8; blanks in a row are one space, there are none at the ends
  std::u16string looks;  ///< bits of pagerex::LookBit of each character that is not blank

  friend bool operator==(const ShownText&, const ShownText&) = default;
};

/// Appends a character with its look.
void addShown(ShownText& shown, char32_t code, uint16_t look);
/// Without a blank at the end.
ShownText trimmed(ShownText shown);

/// Keeps what a reader of the Markdown of a document is to see: the texts that show, in their order. Marks of
/// notes and pictures are left out.
class FlowRecorder final : public pagerex::FlowHandler {
 public:
  std::vector<ShownText> body;
  std::vector<ShownText> notes;  ///< and comments

  void BeginDocument(const pagerex::DocumentFacts& facts) override { styles_.Begin(facts.styles); }
  void BeginHeader(const pagerex::HeaderFacts&) override { ++muted_; }
  void EndHeader() override { --muted_; }
  void BeginParagraph(const pagerex::ParagraphFacts& facts) override;
  void EndParagraph() override;
  void Text(std::u16string_view text, const pagerex::RunProperties& properties) override;
  void MarkHere(pagerex::Mark mark, const pagerex::RunProperties&) override;
  void BeginLink(const pagerex::LinkFacts& link) override;
  void EndLink() override;
  void BeginRevision(const pagerex::RevisionFacts& revision) override;
  void EndRevision() override { revisions_.pop_back(); }
  void FormField(const pagerex::FormFieldFacts& field, const pagerex::RunProperties& properties) override;
  void Picture(const pagerex::PictureFacts& picture) override;
  void BeginTable(const pagerex::TableProperties&) override { ++tables_; }
  void EndTable() override { --tables_; }
  void BeginCell(const pagerex::CellProperties& cell) override;
  void EndCell() override;
  void BeginNote(const pagerex::NoteFacts&) override { isInNotes_ = true; }
  void EndNote() override { isInNotes_ = false; }
  void BeginComment(const pagerex::CommentFacts& comment) override;
  void EndComment() override;

 private:
  void Add(std::u16string_view text, uint16_t look);
  void Keep();

  ShownText shown_;
  std::u16string author_, time_;
  pagerex::CodeStyles styles_;
  std::vector<uint16_t> revisions_;
  uint32_t openLinks_ = 0;
  bool isLinkKept_ = false;
  uint32_t tables_ = 0;
  uint32_t muted_ = 0;
  std::vector<bool> isCellMuted_;
  bool isInNotes_ = false;
  bool isCode_ = false;
  bool isHeading_ = false;
};

}  // namespace support
