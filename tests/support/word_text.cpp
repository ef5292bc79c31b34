#include "support/word_text.h"

#include <algorithm>
#include <iterator>

namespace support {

namespace {

constexpr uint16_t kFSpec = 0x0855;
constexpr char16_t kParagraphMark = 0x0D;
constexpr char16_t kCellMark = 0x07;
constexpr char16_t kNoteMark = 0x02;
constexpr char16_t kAnnotationMark = 0x05;

/// Code page 1252 from 0x80 to 0x9F; the five codes without a character stand for themselves.
constexpr char16_t kCp1252[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

Bytes specialSprms(const Sprms& sprms) {
  return Sprms(sprms).add(sprm(kFSpec, 1)).bytes();
}

}  // namespace

char16_t fromCp1252(uint8_t byte) {
  return byte >= 0x80 && byte < 0xA0 ? kCp1252[byte - 0x80] : byte;
}

std::optional<uint8_t> toCp1252(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<uint8_t>(unit);
  const auto* found = std::find(std::begin(kCp1252), std::end(kCp1252), unit);
  if (found == std::end(kCp1252)) return {};
  return static_cast<uint8_t>(0x80 + (found - kCp1252));
}

Text::Text(std::string_view text) {
  for (char c : text) units_ += fromCp1252(static_cast<uint8_t>(c));
}

Sprms insertedSprms(uint16_t author, uint32_t dttm) {
  return {sprm(0x0801, 1), sprm(0x4804, author), sprm(0x6805, dttm)};
}

Sprms deletedSprms(uint16_t author, uint32_t dttm) {
  return {sprm(0x0800, 1), sprm(0x4863, author), sprm(0x6864, dttm)};
}

// --- Paragraph ---

Paragraph& Paragraph::istd(uint16_t index) {
  istd_ = index;
  return *this;
}

Paragraph& Paragraph::sprms(const Sprms& sprms) {
  sprms_.add(sprms);
  return *this;
}

Paragraph& Paragraph::huge(uint16_t opcode) {
  hugeOpcode_ = opcode;
  return *this;
}

Paragraph& Paragraph::noPapx() {
  hasPapx_ = false;
  return *this;
}

Paragraph& Paragraph::inTable(uint32_t depth) {
  return sprms({sprm(0x2416, 1), sprm(0x6649, depth)});
}

Paragraph& Paragraph::run(const Text& text, const Sprms& sprms) {
  if (text.empty()) return *this;
  runs_.push_back({text.units(), sprms.bytes(), breakNext_});
  breakNext_ = false;
  length_ += text.units().size();
  return *this;
}

Paragraph& Paragraph::special(char16_t unit, const Sprms& sprms) {
  return run(std::u16string(1, unit), specialSprms(sprms));
}

Paragraph& Paragraph::breakRun() {
  breakNext_ = true;
  return *this;
}

Paragraph& Paragraph::mark(const Sprms& sprms) {
  markSprms_ = sprms.bytes();
  return *this;
}

Paragraph& Paragraph::ownMark() {
  ownMark_ = true;
  return *this;
}

Paragraph& Paragraph::endWith(char16_t mark) {
  markUnit_ = mark;
  return *this;
}

Paragraph& Paragraph::noMark() {
  markUnit_.reset();
  return *this;
}

const Bytes& Paragraph::markSprms() const {
  static const Bytes kNone;
  return markSprms_ ? *markSprms_ : runs_.empty() ? kNone : runs_.back().sprms;
}

Paragraph& Paragraph::add(Anchor anchor) {
  anchor.offset = length_;
  anchors_.push_back(std::move(anchor));
  return *this;
}

Paragraph& Paragraph::newPiece(const Piece& piece) {
  return add({.kind = Anchor::Kind::kPiece, .piece = piece});
}

Paragraph& Paragraph::field(uint8_t type, const Text& code, const std::optional<Text>& result,
                            const Sprms& sprms) {
  fieldBegin(type, sprms).run(code, sprms);
  if (result) fieldSeparator(sprms).run(*result, sprms);
  return fieldEnd(result ? 0x80 : 0, sprms);
}

Paragraph& Paragraph::fieldBegin(uint8_t type, const Sprms& sprms) {
  return add({.kind = Anchor::Kind::kField, .fieldMark = 19, .fieldByte = type}).special(19, sprms);
}

Paragraph& Paragraph::fieldSeparator(const Sprms& sprms) {
  return add({.kind = Anchor::Kind::kField, .fieldMark = 20, .fieldByte = 0xFF}).special(20, sprms);
}

Paragraph& Paragraph::fieldEnd(uint8_t flags, const Sprms& sprms) {
  return add({.kind = Anchor::Kind::kField, .fieldMark = 21, .fieldByte = flags}).special(21, sprms);
}

Paragraph& Paragraph::bookmarkStart(const Text& name) {
  return add({.kind = Anchor::Kind::kBookmarkStart, .name = name.units()});
}

Paragraph& Paragraph::bookmarkEnd(const Text& name) {
  return add({.kind = Anchor::Kind::kBookmarkEnd, .name = name.units()});
}

Paragraph& Paragraph::note(Anchor::Kind kind, char16_t unit, const FillStory& fill,
                           const NoteReference& reference) {
  const bool numbered = reference.customMark.empty();
  const Bytes markRun = numbered ? specialSprms(reference.sprms) : reference.sprms.bytes();
  const Text mark = numbered ? Text(std::u16string(1, unit)) : reference.customMark;
  auto content = std::make_shared<Story>();
  content->leadingRun({mark.units(), markRun});
  fill(*content);
  add({.kind = kind, .numbered = numbered, .content = content});
  return run(mark, markRun);
}

namespace {
FillStory oneParagraph(const Text& text) {
  return [text](Story& story) { story.paragraph(text); };
}
}  // namespace

Paragraph& Paragraph::footnote(const Text& text, const NoteReference& reference) {
  return footnote(oneParagraph(text), reference);
}

Paragraph& Paragraph::footnote(const FillStory& fill, const NoteReference& reference) {
  return note(Anchor::Kind::kFootnote, kNoteMark, fill, reference);
}

Paragraph& Paragraph::endnote(const Text& text, const NoteReference& reference) {
  return endnote(oneParagraph(text), reference);
}

Paragraph& Paragraph::endnote(const FillStory& fill, const NoteReference& reference) {
  return note(Anchor::Kind::kEndnote, kNoteMark, fill, reference);
}

Paragraph& Paragraph::floating(const Bytes& place, const Bytes& shape, const Sprms& sprms) {
  constexpr char16_t kShapeMark = 8;
  return add({.kind = Anchor::Kind::kShape, .place = place, .shape = shape}).special(kShapeMark, sprms);
}

Paragraph& Paragraph::inserted(const Text& text, uint16_t author, uint32_t dttm, const Sprms& sprms) {
  return run(text, Sprms(sprms).add(insertedSprms(author, dttm)));
}

Paragraph& Paragraph::deleted(const Text& text, uint16_t author, uint32_t dttm, const Sprms& sprms) {
  return run(text, Sprms(sprms).add(deletedSprms(author, dttm)));
}

Paragraph& Paragraph::annotationStart(int32_t tag) {
  return add({.kind = Anchor::Kind::kAnnotationStart, .tag = tag});
}

Paragraph& Paragraph::annotationEnd(int32_t tag) {
  return add({.kind = Anchor::Kind::kAnnotationEnd, .tag = tag});
}

Paragraph& Paragraph::annotation(const Text& text, const Annotation& annotation_) {
  return annotation(oneParagraph(text), annotation_);
}

Paragraph& Paragraph::annotation(const FillStory& fill, const Annotation& annotation_) {
  note(Anchor::Kind::kAnnotation, kAnnotationMark, fill, {});
  anchors_.back().annotation = annotation_;
  return *this;
}

// --- Story ---

Paragraph& Story::paragraph() {
  paragraphs_.push_back(std::make_unique<Paragraph>());
  Paragraph& added = *paragraphs_.back();
  if (leadingRun_) added.run(leadingRun_->text, leadingRun_->sprms);
  leadingRun_.reset();
  return added;
}

Paragraph& Story::cell(const Text& text, uint32_t depth) {
  Paragraph& cell = paragraph(text).inTable(depth);
  return depth == 1 ? cell.endWith(kCellMark) : cell.sprms({sprm(0x244B, 1)});
}

Paragraph& Story::rowEnd(const Sprms& tableSprms, uint32_t depth) {
  Paragraph& end = paragraph().inTable(depth);
  if (depth == 1) {
    end.endWith(kCellMark).sprms({sprm(0x2417, 1)});
  } else {
    end.endWith(kParagraphMark).sprms({sprm(0x244B, 1), sprm(0x244C, 1)});
  }
  return end.sprms(tableSprms);
}

Story& Story::row(const std::vector<Text>& cells, const Sprms& tableSprms, uint32_t depth) {
  for (const Text& text : cells) cell(text, depth);
  rowEnd(tableSprms, depth);
  return *this;
}

}  // namespace support
