#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "flow/handler.h"

namespace support {

/// Names that a script has used, all of one look.
class ScriptStyles final : public pagerex::StyleNames {
 public:
  static constexpr uint16_t kCode = 77;

  std::u16string_view NameOf(uint16_t istd) const override;
  const pagerex::ParagraphProperties& ParagraphOf(uint16_t) const override { return paragraph; }
  const pagerex::RunProperties& RunOf(uint16_t) const override { return run; }

  pagerex::ParagraphProperties paragraph;
  pagerex::RunProperties run;
  std::map<uint16_t, std::u16string> names;
};

/// Tells a handler a document, call by call, with facts that need not be spelled.
class FlowScript {
 public:
  using Inside = std::function<void()>;

  /// `handler` is not owned.
  explicit FlowScript(pagerex::FlowHandler& handler) : to(handler) {}

  /// A document of one section, unless others begin in it.
  void Document(const Inside& inside, const Inside& behind = {});
  void NextSection(const pagerex::SectionProperties& properties);

  /// Words of `look`: b i s(trike) u caps sup sub code; one object for each look.
  const pagerex::RunProperties& Look(std::string_view look);
  FlowScript& Text(std::u16string_view text, std::string_view look = {});
  FlowScript& Here(pagerex::Mark mark);
  FlowScript& Link(std::u16string_view address, const Inside& inside, std::u16string_view bookmark = {},
                   std::u16string_view title = {});
  FlowScript& Note(pagerex::NoteKind kind, uint32_t index, std::u16string_view label);
  FlowScript& Mark(pagerex::NoteKind kind, uint32_t index, std::u16string_view label);
  FlowScript& Comment(uint32_t index, std::u16string_view author, std::u16string_view initials);
  FlowScript& Bookmark(std::u16string_view name);
  FlowScript& Changed(pagerex::Revision::Kind kind, const Inside& inside, std::u16string_view author = {},
                      uint32_t dttm = 0);

  void Paragraph(const Inside& inside);
  void Paragraph(std::u16string_view text) {
    Paragraph([&] { Text(text); });
  }
  void Paragraph(const pagerex::ParagraphProperties& properties, const Inside& inside);
  void Heading(uint8_t level, const Inside& inside);
  void Heading(uint8_t level, std::u16string_view text) {
    Heading(level, [&] { Text(text); });
  }
  void Styled(std::u16string_view style, const Inside& inside);
  /// "•" is a bullet.
  void Item(std::u16string_view label, uint8_t level, const Inside& inside, int32_t list = 1);
  void Item(std::u16string_view label, uint8_t level, std::u16string_view text, int32_t list = 1) {
    Item(
        label, level, [&] { Text(text); }, list);
  }

  void Table(const Inside& inside, bool isSimple = true);
  void Row(const Inside& inside, bool isHeader = false);
  void Cell(const Inside& inside, uint16_t columns = 1, uint16_t rows = 1);
  void Cell(std::u16string_view text) {
    Cell([&] { Paragraph(text); });
  }
  /// Cells of a paragraph each.
  void Row(std::initializer_list<std::u16string_view> cells);

  void NoteText(pagerex::NoteKind kind, uint32_t index, std::u16string_view label, const Inside& inside);
  void CommentText(uint32_t index, std::u16string_view author, std::u16string_view initials, uint32_t dttm,
                   const Inside& inside);
  void Header(const Inside& inside, bool isFooter = false);
  void TextBox(const Inside& inside);
  void TextBox(const pagerex::PictureFacts& shape, const Inside& inside);

  pagerex::FlowHandler& to;
  pagerex::DocumentSummary summary;
  ScriptStyles styles;
  const pagerex::ToldFonts* fonts = nullptr;
  uint16_t language = 0x409;
  pagerex::SectionProperties section;                         ///< the first one
  pagerex::Alignment alignment = pagerex::Alignment::kStart;  ///< of the paragraphs that come

 private:
  void Tell(const pagerex::ParagraphFacts& facts, const Inside& inside);

  std::deque<std::pair<std::string, pagerex::RunProperties>> looks_;
  uint32_t sections_ = 0;
};

}  // namespace support
