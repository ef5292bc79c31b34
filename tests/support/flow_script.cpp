#include "support/flow_script.h"

#include <algorithm>

namespace support {
namespace {

using namespace pagerex;

RunProperties lookOf(std::string_view words) {
  const std::string spaced = " " + std::string(words) + " ";
  const auto has = [&](const char* word) { return spaced.find(word) != std::string::npos; };
  RunProperties look;
  look.bold = has(" b ");
  look.italic = has(" i ");
  look.strike = has(" s ");
  look.underline = has(" u ");
  look.caps = has(" caps ");
  look.verticalAlignment = static_cast<uint8_t>(has(" sup ") ? 1 : has(" sub ") ? 2 : 0);
  if (has(" code ")) look.characterStyle = ScriptStyles::kCode;
  return look;
}

int32_t numberIn(std::u16string_view label) {
  int32_t number = 0;
  for (const char16_t digit : label) {
    if (digit < '0' || digit > '9' || number > 99999999) break;
    number = number * 10 + (digit - '0');
  }
  return number;
}

}  // namespace

std::u16string_view ScriptStyles::NameOf(uint16_t istd) const {
  if (istd == kCode) return u"HTML Code";
  const auto known = names.find(istd);
  return known == names.end() ? std::u16string_view() : std::u16string_view(known->second);
}

void FlowScript::Document(const Inside& inside, const Inside& behind) {
  to.BeginDocument({summary, language, 720, false, 0, &styles, fonts});
  sections_ = 0;
  to.BeginSection({section, sections_++, {{-1, -1, -1}, {-1, -1, -1}}});
  inside();
  to.EndSection();
  if (behind) behind();
  to.EndDocument();
}

void FlowScript::NextSection(const SectionProperties& properties) {
  to.EndSection();
  to.BeginSection({properties, sections_++, {{-1, -1, -1}, {-1, -1, -1}}});
}

const RunProperties& FlowScript::Look(std::string_view look) {
  for (const auto& [words, known] : looks_) {
    if (words == look) return known;
  }
  looks_.emplace_back(look, lookOf(look));
  return looks_.back().second;
}

FlowScript& FlowScript::Text(std::u16string_view text, std::string_view look) {
  to.Text(text, Look(look));
  return *this;
}

FlowScript& FlowScript::Here(pagerex::Mark mark) {
  to.MarkHere(mark, Look(""));
  return *this;
}

FlowScript& FlowScript::Link(std::u16string_view address, const Inside& inside, std::u16string_view bookmark,
                             std::u16string_view title) {
  to.BeginLink({address, bookmark, title, {}});
  inside();
  to.EndLink();
  return *this;
}

FlowScript& FlowScript::Note(NoteKind kind, uint32_t index, std::u16string_view label) {
  to.NoteReference({kind, index, label, false}, Look("sup"));
  return *this;
}

FlowScript& FlowScript::Mark(NoteKind kind, uint32_t index, std::u16string_view label) {
  to.NoteMark({kind, index, label, false}, Look("sup"));
  return *this;
}

FlowScript& FlowScript::Comment(uint32_t index, std::u16string_view author, std::u16string_view initials) {
  to.CommentReference({index, author, initials, 0});
  return *this;
}

FlowScript& FlowScript::Bookmark(std::u16string_view name) {
  to.BookmarkStart(name);
  to.BookmarkEnd(name);
  return *this;
}

FlowScript& FlowScript::Changed(Revision::Kind kind, const Inside& inside, std::u16string_view author,
                                uint32_t dttm) {
  to.BeginRevision({kind, author, dttm});
  inside();
  to.EndRevision();
  return *this;
}

void FlowScript::Tell(const ParagraphFacts& facts, const Inside& inside) {
  to.BeginParagraph(facts);
  inside();
  to.EndParagraph();
}

void FlowScript::Paragraph(const Inside& inside) {
  ParagraphProperties properties;
  properties.alignment = alignment;
  Paragraph(properties, inside);
}

void FlowScript::Paragraph(const ParagraphProperties& properties, const Inside& inside) {
  Tell({properties,
        u"Normal",
        0,
        {},
        nullptr,
        ParagraphFacts::Follow::kNothing,
        false,
        false,
        0,
        0,
        0,
        Look(""),
        0},
       inside);
}

void FlowScript::Heading(uint8_t level, const Inside& inside) {
  ParagraphProperties properties;
  properties.style = level;
  styles.names[level] = u"heading " + std::u16string(1, static_cast<char16_t>('0' + level));
  Tell({properties,
        u"heading",
        level,
        {},
        nullptr,
        ParagraphFacts::Follow::kNothing,
        false,
        false,
        0,
        0,
        0,
        Look(""),
        0},
       inside);
}

void FlowScript::Styled(std::u16string_view style, const Inside& inside) {
  ParagraphProperties properties;
  properties.style = static_cast<uint16_t>(100 + style.size());
  styles.names[properties.style] = style;
  Tell({properties,
        style,
        0,
        {},
        nullptr,
        ParagraphFacts::Follow::kNothing,
        false,
        false,
        0,
        0,
        0,
        Look(""),
        0},
       inside);
}

void FlowScript::Item(std::u16string_view label, uint8_t level, const Inside& inside, int32_t list) {
  ParagraphProperties properties;
  properties.listNumber = static_cast<uint16_t>(list);
  properties.listLevel = level;
  const bool isBullet = label == u"\u2022";
  Tell({properties, u"List", 0, label, &Look(""), ParagraphFacts::Follow::kTab, true, isBullet, list,
        numberIn(label), static_cast<uint8_t>(isBullet ? 23 : 0), Look(""), 0},
       inside);
}

void FlowScript::Table(const Inside& inside, bool isSimple) {
  TableProperties properties;
  properties.isRegular = properties.hasSingleParagraphs = isSimple;
  properties.hasMergedCells = !isSimple;
  to.BeginTable(properties);
  inside();
  to.EndTable();
}

void FlowScript::Row(const Inside& inside, bool isHeader) {
  RowProperties properties;
  properties.isHeader = isHeader;
  to.BeginRow(properties);
  inside();
  to.EndRow();
}

void FlowScript::Row(std::initializer_list<std::u16string_view> cells) {
  Row([&] {
    for (const std::u16string_view cell : cells) Cell(cell);
  });
}

void FlowScript::Cell(const Inside& inside, uint16_t columns, uint16_t rows) {
  CellProperties properties;
  properties.columnSpan = columns;
  properties.rowSpan = rows;
  to.BeginCell(properties);
  inside();
  to.EndCell();
}

void FlowScript::NoteText(NoteKind kind, uint32_t index, std::u16string_view label, const Inside& inside) {
  to.BeginNote({kind, index, label, false});
  inside();
  to.EndNote();
}

void FlowScript::CommentText(uint32_t index, std::u16string_view author, std::u16string_view initials,
                             uint32_t dttm, const Inside& inside) {
  to.BeginComment({index, author, initials, dttm});
  inside();
  to.EndComment();
}

void FlowScript::Header(const Inside& inside, bool isFooter) {
  to.BeginHeader({HeaderKind::kOdd, isFooter});
  inside();
  to.EndHeader();
}

void FlowScript::TextBox(const Inside& inside) {
  PictureFacts shape;
  shape.isInline = false;
  TextBox(shape, inside);
}

void FlowScript::TextBox(const PictureFacts& shape, const Inside& inside) {
  to.BeginTextBox({shape, 0});
  inside();
  to.EndTextBox();
}

}  // namespace support
