#pragma once

#include <string_view>
#include <type_traits>
#include <vector>

#include "base/run_control.h"
#include "convert/host_properties.h"
#include "convert/host_texts.h"
#include "flow/handler.h"
#include "pagerex/walk.h"

/// The picture that a host's function was handed, until that returns.
struct pagerex_picture_source {
  /// PAGEREX_RESULT_...
  int Read(pagerex_picture_data& out);

  pagerex::PictureSource* source = nullptr;
  bool hasNoMemory = false;  ///< which ends the walk, once the host's function has returned
};

namespace pagerex {

/// Hands a walk on to a host's functions, and ends it when they say so or throw.
class HostHandler final : public FlowHandler {
 public:
  /// None is owned.
  HostHandler(const pagerex_handler& host, void* user, RunControl& control)
      : host_(host), user_(user), control_(control) {}

  void BeginDocument(const DocumentFacts& facts) override;
  void EndDocument() override { Call(host_.end_document); }
  void BeginSection(const SectionFacts& facts) override;
  void EndSection() override { Call(host_.end_section); }
  void BeginHeader(const HeaderFacts& facts) override;
  void EndHeader() override { Call(host_.end_header); }
  void BeginParagraph(const ParagraphFacts& facts) override;
  void EndParagraph() override { Call(host_.end_paragraph); }
  void Text(std::u16string_view text, const RunProperties& properties) override;
  void MarkHere(Mark mark, const RunProperties& properties) override;
  void BeginLink(const LinkFacts& facts) override;
  void EndLink() override { Call(host_.end_link); }
  void BookmarkStart(std::u16string_view name) override { TellName(host_.bookmark_start, name); }
  void BookmarkEnd(std::u16string_view name) override { TellName(host_.bookmark_end, name); }
  void NoteReference(const NoteFacts& facts, const RunProperties& properties) override;
  void NoteMark(const NoteFacts& facts, const RunProperties& properties) override;
  void CommentStart(uint32_t index) override { Call(host_.comment_start, index); }
  void CommentEnd(uint32_t index) override { Call(host_.comment_end, index); }
  void CommentReference(const CommentFacts& facts) override { TellComment(host_.comment_reference, facts); }
  void BeginRevision(const RevisionFacts& facts) override;
  void EndRevision() override { Call(host_.end_revision); }
  void FormField(const FormFieldFacts& facts, const RunProperties& properties) override;
  void Picture(const PictureFacts& facts) override;
  void BeginTable(const TableProperties& properties) override;
  void EndTable() override { Call(host_.end_table); }
  void BeginRow(const RowProperties& properties) override;
  void EndRow() override { Call(host_.end_row); }
  void BeginCell(const CellProperties& properties) override;
  void EndCell() override { Call(host_.end_cell); }
  void BeginTextBox(const TextBoxFacts& facts) override;
  void EndTextBox() override { Call(host_.end_text_box); }
  void BeginNote(const NoteFacts& facts) override;
  void EndNote() override { Call(host_.end_note); }
  void BeginComment(const CommentFacts& facts) override { TellComment(host_.begin_comment, facts); }
  void EndComment() override { Call(host_.end_comment); }

 private:
  template <class... Given>
  void Call(int (*function)(void*, Given...), std::type_identity_t<Given>... given);
  void TellName(int (*function)(void*, const char*, size_t), std::u16string_view name);
  void TellComment(int (*function)(void*, const pagerex_comment*), const CommentFacts& facts);
  void TellNote(int (*function)(void*, const pagerex_note*, const pagerex_run*), const NoteFacts& facts,
                const RunProperties& properties);
  pagerex_note Note(const NoteFacts& facts);
  pagerex_picture Shape(const PictureFacts& facts);

  const pagerex_handler& host_;
  void* const user_;
  RunControl& control_;
  bool hasStopped_ = false;  ///< by a function of the host
  HostNames names_;
  HostTexts texts_;  ///< of the call
  HostRun run_, labelRun_, markRun_;
  HostParagraph paragraph_;
  std::vector<pagerex_column> columns_;
  std::vector<char> characters_;
};

}  // namespace pagerex
