#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/utf8_output.h"
#include "flow/handler.h"

namespace pagerex {

struct TextOptions {
  /// Columns that lines are wrapped at, and tables fitted to; 0 for a line a paragraph. Less than
  /// kLeastTextWidth counts as that.
  int width = 0;
  bool headers = false;  ///< headers and footers, in front of their section
  bool comments = true;  ///< behind the text
  bool pictures = true;  ///< their descriptions in brackets
};
constexpr int kLeastTextWidth = 20;

class WrappedText;

/// Writes a document as plain text in UTF-8.
class TextWriter final : public FlowHandler {
 public:
  /// `out` is not owned.
  TextWriter(Utf8Output& out, const TextOptions& options);
  ~TextWriter() override;

  void BeginHeader(const HeaderFacts&) override;
  void EndHeader() override;
  void BeginParagraph(const ParagraphFacts& facts) override;
  void EndParagraph() override;
  void Text(std::u16string_view text, const RunProperties& properties) override;
  void MarkHere(Mark mark, const RunProperties& properties) override;
  void NoteReference(const NoteFacts& note, const RunProperties&) override;
  void NoteMark(const NoteFacts&, const RunProperties&) override;
  void CommentReference(const CommentFacts& comment) override;
  void FormField(const FormFieldFacts& field, const RunProperties&) override;
  void Picture(const PictureFacts& picture) override;
  void BeginTable(const TableProperties&) override;
  void EndTable() override;
  void BeginRow(const RowProperties&) override;
  void EndRow() override;
  void BeginCell(const CellProperties& cell) override;
  void BeginNote(const NoteFacts& note) override;
  void EndNote() override;
  void BeginComment(const CommentFacts& comment) override;
  void EndComment() override;

 private:
  void Put(std::u16string_view text);
  void PutSpace();
  void PutBracketed(std::u16string_view text);
  void CloseLine();
  void BeginPart(std::u16string_view label);
  void EndPart();

  Utf8Output& out_;
  const TextOptions options_;
  std::unique_ptr<WrappedText> wrapped_;  ///< null where lines are not wrapped
  uint32_t muted_ = 0;                    ///< parts around this place that are left out
  uint32_t tables_ = 0;                   ///< that are open, one in the other
  bool isFirstCell_ = true;               ///< of its row
  bool hasText_ = false;                  ///< the line or cell
  bool owesSpace_ = false;                ///< in a cell, before what follows
  bool hasParts_ = false;                 ///< notes or comments were begun
  bool beginsPart_ = false;               ///< its label stands, its text does not
};

}  // namespace pagerex
