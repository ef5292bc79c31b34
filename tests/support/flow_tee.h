#pragma once

#include "flow/handler.h"

namespace support {

/// Tells two handlers one document.
class FlowTee final : public pagerex::FlowHandler {
 public:
  /// Neither is owned.
  FlowTee(pagerex::FlowHandler& first, pagerex::FlowHandler& second) : both_{&first, &second} {}

  void BeginDocument(const pagerex::DocumentFacts& facts) override {
    Tell(&FlowHandler::BeginDocument, facts);
  }
  void EndDocument() override { Tell(&FlowHandler::EndDocument); }
  void BeginSection(const pagerex::SectionFacts& facts) override { Tell(&FlowHandler::BeginSection, facts); }
  void EndSection() override { Tell(&FlowHandler::EndSection); }
  void BeginHeader(const pagerex::HeaderFacts& facts) override { Tell(&FlowHandler::BeginHeader, facts); }
  void EndHeader() override { Tell(&FlowHandler::EndHeader); }
  void BeginParagraph(const pagerex::ParagraphFacts& facts) override {
    Tell(&FlowHandler::BeginParagraph, facts);
  }
  void EndParagraph() override { Tell(&FlowHandler::EndParagraph); }
  void Text(std::u16string_view text, const pagerex::RunProperties& look) override {
    Tell(&FlowHandler::Text, text, look);
  }
  void MarkHere(pagerex::Mark mark, const pagerex::RunProperties& look) override {
    Tell(&FlowHandler::MarkHere, mark, look);
  }
  void BeginLink(const pagerex::LinkFacts& facts) override { Tell(&FlowHandler::BeginLink, facts); }
  void EndLink() override { Tell(&FlowHandler::EndLink); }
  void BookmarkStart(std::u16string_view name) override { Tell(&FlowHandler::BookmarkStart, name); }
  void BookmarkEnd(std::u16string_view name) override { Tell(&FlowHandler::BookmarkEnd, name); }
  void NoteReference(const pagerex::NoteFacts& facts, const pagerex::RunProperties& look) override {
    Tell(&FlowHandler::NoteReference, facts, look);
  }
  void NoteMark(const pagerex::NoteFacts& facts, const pagerex::RunProperties& look) override {
    Tell(&FlowHandler::NoteMark, facts, look);
  }
  void CommentStart(uint32_t index) override { Tell(&FlowHandler::CommentStart, index); }
  void CommentEnd(uint32_t index) override { Tell(&FlowHandler::CommentEnd, index); }
  void CommentReference(const pagerex::CommentFacts& facts) override {
    Tell(&FlowHandler::CommentReference, facts);
  }
  void BeginRevision(const pagerex::RevisionFacts& facts) override {
    Tell(&FlowHandler::BeginRevision, facts);
  }
  void EndRevision() override { Tell(&FlowHandler::EndRevision); }
  void FormField(const pagerex::FormFieldFacts& facts, const pagerex::RunProperties& look) override {
    Tell(&FlowHandler::FormField, facts, look);
  }
  void Picture(const pagerex::PictureFacts& facts) override { Tell(&FlowHandler::Picture, facts); }
  void BeginTable(const pagerex::TableProperties& facts) override { Tell(&FlowHandler::BeginTable, facts); }
  void EndTable() override { Tell(&FlowHandler::EndTable); }
  void BeginRow(const pagerex::RowProperties& facts) override { Tell(&FlowHandler::BeginRow, facts); }
  void EndRow() override { Tell(&FlowHandler::EndRow); }
  void BeginCell(const pagerex::CellProperties& facts) override { Tell(&FlowHandler::BeginCell, facts); }
  void EndCell() override { Tell(&FlowHandler::EndCell); }
  void BeginTextBox(const pagerex::TextBoxFacts& facts) override { Tell(&FlowHandler::BeginTextBox, facts); }
  void EndTextBox() override { Tell(&FlowHandler::EndTextBox); }
  void BeginNote(const pagerex::NoteFacts& facts) override { Tell(&FlowHandler::BeginNote, facts); }
  void EndNote() override { Tell(&FlowHandler::EndNote); }
  void BeginComment(const pagerex::CommentFacts& facts) override { Tell(&FlowHandler::BeginComment, facts); }
  void EndComment() override { Tell(&FlowHandler::EndComment); }

 private:
  template <class Call, class... Facts>
  void Tell(Call call, const Facts&... facts) {
    for (FlowHandler* const handler : both_) (handler->*call)(facts...);
  }

  FlowHandler* const both_[2];
};

}  // namespace support
