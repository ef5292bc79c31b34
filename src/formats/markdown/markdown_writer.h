#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/link_policy.h"
#include "base/utf8_output.h"
#include "base/warnings.h"
#include "flow/handler.h"
#include "formats/markdown/block_writer.h"
#include "formats/markdown/code_styles.h"
#include "formats/markdown/inline_text.h"
#include "formats/markdown/inline_writer.h"
#include "formats/markdown/table_text.h"
#include "formats/picture_output.h"

namespace pagerex {

struct MarkdownOptions {
  /// Nothing of GitHub's beyond CommonMark: tables as HTML, notes as links, `<del>`.
  bool commonMarkOnly = false;
  bool comments = true;
  bool frontMatter = false;
  bool pageBreaks = false;  ///< as `<!-- page break -->`
  bool htmlTables = true;  ///< for tables that a pipe table cannot show; otherwise these are brought into its
                           ///< form
  LinkPolicy links = LinkPolicy::kSafe;
};

/// Writes a document as Markdown, GitHub's unless it is to be CommonMark only.
class MarkdownWriter final : public FlowHandler {
 public:
  /// None is owned. `pictures` and `warnings` may be null; without `pictures` their descriptions are shown.
  MarkdownWriter(Utf8Output& out, const MarkdownOptions& options, PictureOutput* pictures,
                 Warnings* warnings);

  void BeginDocument(const DocumentFacts& facts) override;
  void EndDocument() override;
  void BeginSection(const SectionFacts& facts) override;
  void BeginHeader(const HeaderFacts&) override { ++muted_; }
  void EndHeader() override { --muted_; }
  void BeginParagraph(const ParagraphFacts& facts) override;
  void EndParagraph() override;
  void Text(std::u16string_view text, const RunProperties& properties) override;
  void MarkHere(Mark mark, const RunProperties& properties) override;
  void BeginLink(const LinkFacts& link) override;
  void EndLink() override;
  void BookmarkStart(std::u16string_view name) override;
  void NoteReference(const NoteFacts& note, const RunProperties&) override;
  void CommentReference(const CommentFacts& comment) override;
  void BeginRevision(const RevisionFacts& revision) override;
  void EndRevision() override;
  void FormField(const FormFieldFacts& field, const RunProperties& properties) override;
  void Picture(const PictureFacts& picture) override;
  void BeginTable(const TableProperties& table) override;
  void EndTable() override;
  void BeginRow(const RowProperties& row) override;
  void EndRow() override;
  void BeginCell(const CellProperties& cell) override;
  void EndCell() override;
  void BeginNote(const NoteFacts& note) override;
  void EndNote() override;
  void BeginComment(const CommentFacts& comment) override;
  void EndComment() override;

 private:
  enum class Place : uint8_t { kBody, kPipeTable, kHtmlTable };
  /// What becomes of a paragraph of the body.
  enum class Shape : uint8_t { kPlain, kHeading, kItem, kInItem, kCode };

  Shape ShapeOf(const ParagraphFacts& facts);
  uint16_t LookOf(const RunProperties& properties);
  void PutPicture(const std::string& markup, bool isInline);
  void WriteParagraph();
  void WriteHeading();
  void WriteInCell();
  void AddCodeLine();
  void EndCode();
  void PutInline(const InlineForm& form, uint16_t ignoredLooks);
  void Spell(const InlineForm& form, uint16_t ignoredLooks, std::string& out);
  void PutBlock(std::string_view text);
  void PutPageBreak();
  void PutRule();
  void PutDue(uint32_t& rules, uint32_t& pageBreaks);
  void AddReference(const std::string& id, std::u16string_view label);
  void BeginPart(const std::string& id, std::u16string_view label);
  void EndPart();

  const MarkdownOptions options_;
  PictureOutput* const pictures_;
  Warnings* const warnings_;
  BlockWriter blocks_;
  CodeStyles codeStyles_;

  InlineText inline_;  ///< of the paragraph
  Shape shape_ = Shape::kPlain;
  uint8_t headingLevel_ = 0;
  uint8_t listLevel_ = 0;
  ListItem item_{};
  uint32_t rulesBefore_ = 0, rulesBehind_ = 0;  ///< lines that the paragraph has at its ends
  uint32_t pageBreaksBefore_ = 0, pageBreaksBehind_ = 0;
  std::vector<std::string> floating_;  ///< pictures that stand behind the text
  std::string spelled_;                ///< kept for its memory
  std::string anchors_;                ///< that the next text is to have
  std::u16string partLabel_;  ///< owed to the first paragraph of a note that has no mark of Markdown's
  bool beginsPart_ = false;   ///< this label stands, its text does not
  std::u16string partAuthor_, partTime_;  ///< owed to the first paragraph of a comment

  const RunProperties* lastProperties_ = nullptr;  ///< and their look, without revisions
  uint16_t lastLook_ = 0;
  uint32_t openLinks_ = 0;
  std::vector<uint16_t> revisions_;  ///< looks of those that are open

  std::string code_;            ///< lines that wait for the end of their block
  std::string codeReferences_;  ///< of these lines; they stand behind them
  bool hasCode_ = false;

  Place place_ = Place::kBody;
  uint32_t tables_ = 0;  ///< that are open
  PipeTable pipeTable_;
  HtmlTable htmlTable_;
  std::vector<bool> isCellSkipped_;  ///< of each open cell
  uint32_t muted_ = 0;               ///< parts around this place that are left out

  std::unordered_set<std::string> referenced_;  ///< notes that Markdown's own mark stands for
};

}  // namespace pagerex
