#pragma once

#include <string>
#include <vector>

#include "flow/handler.h"

namespace support {

/// What a transcript tells beside the text.
enum TranscriptParts : unsigned {
  kWithFormats = 1,    ///< properties that differ from the defaults
  kWithDocument = 2,   ///< the facts of the document
  kWithSections = 4,   ///< where sections begin, with their properties
  kWithBookmarks = 8,  ///< of all names; without, none
  kWithStyles = 16,    ///< names of paragraph styles other than "Normal"
};

/// Writes down what a walk tells, one call a line, indented by what it stands in:
///
///     paragraph label="1."
///       text "See "
///       link "http://www.example.com/"
///         text "here" bold
///
/// What a call does not say of interest is not written: paragraphs without properties are just "paragraph".
/// Neighbouring texts of one look are one line.
class FlowTranscript : public pagerex::FlowHandler {
 public:
  explicit FlowTranscript(unsigned parts = kWithFormats | kWithStyles | kWithBookmarks) : parts_(parts) {}

  /// All lines.
  const std::string& text();
  /// The characters alone, with "\n" behind each paragraph, and marks as characters.
  const std::u16string& characters() const { return characters_; }
  /// Whether each thing that began has ended, in its order, and stood where it may stand.
  bool isBalanced() const { return hasEnded_ && open_.empty() && !isWrong_; }

  void BeginDocument(const pagerex::DocumentFacts&) override;
  void EndDocument() override;
  void BeginSection(const pagerex::SectionFacts&) override;
  void EndSection() override;
  void BeginHeader(const pagerex::HeaderFacts&) override;
  void EndHeader() override;
  void BeginParagraph(const pagerex::ParagraphFacts&) override;
  void EndParagraph() override;
  void Text(std::u16string_view text, const pagerex::RunProperties& properties) override;
  void MarkHere(pagerex::Mark, const pagerex::RunProperties&) override;
  void BeginLink(const pagerex::LinkFacts&) override;
  void EndLink() override;
  void BookmarkStart(std::u16string_view name) override;
  void BookmarkEnd(std::u16string_view name) override;
  void NoteReference(const pagerex::NoteFacts&, const pagerex::RunProperties&) override;
  void NoteMark(const pagerex::NoteFacts&, const pagerex::RunProperties&) override;
  void CommentStart(uint32_t index) override;
  void CommentEnd(uint32_t index) override;
  void CommentReference(const pagerex::CommentFacts&) override;
  void BeginRevision(const pagerex::RevisionFacts&) override;
  void EndRevision() override;
  void FormField(const pagerex::FormFieldFacts&, const pagerex::RunProperties&) override;
  void Picture(const pagerex::PictureFacts&) override;
  void BeginTable(const pagerex::TableProperties&) override;
  void EndTable() override;
  void BeginRow(const pagerex::RowProperties&) override;
  void EndRow() override;
  void BeginCell(const pagerex::CellProperties&) override;
  void EndCell() override;
  void BeginTextBox(const pagerex::TextBoxFacts&) override;
  void EndTextBox() override;
  void BeginNote(const pagerex::NoteFacts&) override;
  void EndNote() override;
  void BeginComment(const pagerex::CommentFacts&) override;
  void EndComment() override;

 private:
  enum class Open : uint8_t {
    kDocument,
    kSection,
    kHeader,
    kParagraph,
    kLink,
    kRevision,
    kTable,
    kRow,
    kCell,
    kTextBox,
    kNote,
    kComment
  };
  bool tells(TranscriptParts part) const { return parts_ & part; }
  void Line(const std::string& line);
  void Begin(Open what, const std::string& line);
  void End(Open what);
  void FlushText();
  bool IsInParagraph() const;
  bool MayBegin(Open what) const;

  const unsigned parts_;
  std::string lines_;
  std::u16string characters_;
  std::vector<Open> open_;
  bool isWrong_ = false, hasEnded_ = false;
  std::u16string pendingText_;
  std::string pendingLook_;
};

}  // namespace support
