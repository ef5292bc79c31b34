#include "support/random_script.h"

#include <array>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "flow/shape_facts.h"

namespace support {
namespace {

using namespace pagerex;

constexpr std::u16string_view kStyles[] = {u"Normal",      u"heading 1", u"caption",  u"caption",
                                           u"toc 1",       u"toc 2",     u"List",     u"Strong",
                                           u"Emphasis \"", u"",          u"</style>", u"x{}"};
constexpr std::u16string_view kTexts[] = {
    u"a",        u" ",      u"words and more ", u"<b>&\"'",      u"\u05D0\u05D1",
    u"\u4E00 x", u"\u0416", u"\xD83D\xDE00",    u"</p></table>", u"\u0001\u0085"};
constexpr std::u16string_view kNames[] = {u"a",     u"A b", u"g1",      u"footnote-1",    u"comment-1",
                                          u"_Toc1", u"\"",  u"_GoBack", u"x\u0085\uFFFE", u"",
                                          u"\u4E00"};
constexpr std::u16string_view kAddresses[] = {
    u"", u"http://x.example/?a=b&c=\"d\"", u"javascript:x", u"a b", u"#", u"mailto:a@b\u0080"};
constexpr std::u16string_view kLabels[] = {u"\u2022", u"1.", u"(a)", u"", u"<"};

class Styles final : public StyleNames {
 public:
  Styles() {
    odd_.spaceBefore = 240;
    odd_.isRightToLeft = true;
    oddRun_.bold = true;
    oddRun_.sizeHalfPoints = 36;
  }
  std::u16string_view NameOf(uint16_t istd) const override { return kStyles[istd % std::size(kStyles)]; }
  const ParagraphProperties& ParagraphOf(uint16_t istd) const override {
    return istd % 3 == 1 ? odd_ : plain_;
  }
  const RunProperties& RunOf(uint16_t istd) const override { return istd % 2 == 1 ? oddRun_ : plainRun_; }

 private:
  const ParagraphProperties plain_{};
  ParagraphProperties odd_;
  const RunProperties plainRun_{};
  RunProperties oddRun_;
};

class Fonts final : public ToldFonts {
 public:
  std::u16string_view NameOf(uint16_t ftc) const override { return ftc % 2 ? u"Arial" : u"</style>\"'"; }
  FontFacts FactsOf(uint16_t ftc) const override { return {.name = NameOf(ftc), .alternateName = {}}; }
};

class OnePicture final : public PictureSource {
 public:
  explicit OnePicture(PictureType type) : type_(type) {}
  PictureData Read() override { return {type_, ByteView(kBytes, sizeof kBytes)}; }

 private:
  static constexpr uint8_t kBytes[40] = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
  const PictureType type_;
};

class RandomScript {
 public:
  RandomScript(FlowHandler& to, uint32_t seed) : to_(to), random_(seed) {}

  void Document();

 private:
  uint32_t Below(uint32_t limit) { return static_cast<uint32_t>(random_()) % limit; }
  bool Now(uint32_t in) { return Below(in) == 0; }
  template <class T, size_t N>
  const T& Of(const T (&items)[N]) {
    return items[Below(N)];
  }

  SectionProperties Section();
  ParagraphProperties Properties();
  const RunProperties& Run();
  Border SomeBorder();
  void Blocks(uint32_t most, int depth);
  void Paragraph(int depth);
  void Inlines(uint32_t most, int depth);
  void Inline(int depth);
  void Note(bool isReference);
  void Picture();
  void TextBox(int depth);
  void Table(int depth);
  void Shape(ShapeFacts& shape);
  PictureFacts Facts(ShapeFacts& shape, PictureSource& source);

  FlowHandler& to_;
  std::mt19937 random_;
  const Styles styles_;
  const Fonts fonts_;
  std::vector<RunProperties> runs_;
  uint32_t references_ = 0, comments_ = 0, boxes_ = 0;
  int budget_ = 120;
  int tables_ = 0;
};

void RandomScript::Document() {
  for (int i = 0; i < 12; ++i) {
    RunProperties run;
    run.bold = Now(3);
    run.italic = Now(4);
    run.underline = static_cast<uint8_t>(Now(4) ? 1 + Below(12) : 0);
    run.strike = Now(6);
    run.verticalAlignment = static_cast<uint8_t>(Below(3));
    run.isRightToLeft = Now(6);
    run.sizeHalfPoints = static_cast<uint16_t>(16 + Below(20));
    run.colour = {Below(0x1000000), Now(2)};
    run.shading = {Now(4), {Below(0x1000000), Now(2)}};
    run.fonts = {static_cast<uint16_t>(Below(3)), static_cast<uint16_t>(Below(3)),
                 static_cast<uint16_t>(Below(3)), static_cast<uint16_t>(Below(3))};
    run.language = static_cast<uint16_t>(Now(3) ? 0x407 : 0x409);
    run.characterStyle = static_cast<uint16_t>(Below(12));
    runs_.push_back(run);
  }
  DocumentSummary summary;
  if (Now(2)) summary.title = u"A </title> & more";
  to_.BeginDocument({summary, 0x409, 720, Now(2), 0, &styles_, &fonts_});
  for (uint32_t index = 0, count = 1 + Below(3); index < count; ++index) {
    const SectionProperties section = Section();
    to_.BeginSection({section, index, {{-1, -1, -1}, {-1, -1, -1}}});
    for (uint32_t headers = Below(4); headers > 0; --headers) {
      to_.BeginHeader({static_cast<HeaderKind>(Below(3)), Now(2)});
      Blocks(2, 1);
      to_.EndHeader();
    }
    Blocks(12, 0);
    to_.EndSection();
  }
  budget_ = 40;
  for (const NoteKind kind : {NoteKind::kFootnote, NoteKind::kEndnote}) {
    for (uint32_t index = 0; index < references_; ++index) {
      to_.BeginNote({kind, index, u"1", false});
      Blocks(2, 1);
      to_.EndNote();
    }
  }
  for (uint32_t index = 0; index < comments_; ++index) {
    to_.BeginComment({index, Of(kTexts), Of(kLabels), Below(2) * 0x35A12345u});
    Blocks(2, 1);
    to_.EndComment();
  }
  to_.EndDocument();
}

SectionProperties RandomScript::Section() {
  SectionProperties section;
  section.start = static_cast<SectionProperties::Start>(Below(5));
  section.columnCount = static_cast<uint16_t>(1 + Below(2));
  if (Now(3)) std::swap(section.pageWidth, section.pageHeight);
  section.isRightToLeft = Now(4);
  return section;
}

Border RandomScript::SomeBorder() {
  Border border;
  if (Now(5)) border = {1, 8, 1, false, {}};
  return border;
}

ParagraphProperties RandomScript::Properties() {
  ParagraphProperties p;
  p.style = static_cast<uint16_t>(Below(12));
  p.alignment = static_cast<Alignment>(Below(5));
  p.isRightToLeft = Now(5);
  p.spacesOnlyBetweenStyles = Now(3);
  p.indentStart = static_cast<int32_t>(Below(4)) * 360;
  if (Now(3)) p.indentFirstLine = -360;
  p.top = SomeBorder();
  p.bottom = p.start = p.end = p.top;
  p.shading = {Now(5), {0x102030, Now(2)}};
  if (Now(6))
    p.frame.isThere = true, p.frame.width = static_cast<uint16_t>(1000 + Below(2)),
    p.frame.dropCapLines = Now(4);
  if (Now(3)) p.tabs = {{1000, 0, 0}, {3000, static_cast<uint8_t>(Below(4)), static_cast<uint8_t>(Below(6))}};
  if (Now(4)) p.tabs.push_back({5000, 2, 1});
  p.listLevel = static_cast<uint8_t>(Below(4));
  return p;
}

const RunProperties& RandomScript::Run() {
  return runs_[Below(static_cast<uint32_t>(runs_.size()))];
}

void RandomScript::Blocks(uint32_t most, int depth) {
  for (uint32_t count = Below(most + 1); count > 0 && budget_ > 0; --count) {
    --budget_;
    if (depth < 4 && Now(5)) {
      Table(depth);
    } else {
      Paragraph(depth);
    }
  }
}

void RandomScript::Paragraph(int depth) {
  const ParagraphProperties properties = Properties();
  const bool isItem = Now(3);
  const std::u16string_view label = isItem || Now(8) ? Of(kLabels) : std::u16string_view();
  OnePicture source(PictureType::kPng);
  PictureFacts picture;
  picture.source = &source;
  to_.BeginParagraph({properties, Of(kStyles), static_cast<uint8_t>(Now(4) ? 1 + Below(9) : 0), label,
                      label.empty() ? nullptr : &Run(), static_cast<ParagraphFacts::Follow>(Below(3)), isItem,
                      label == u"\u2022", 1, 1, 0, Run(), 0, isItem && Now(5) ? &picture : nullptr});
  if (properties.frame.dropCapLines != 0) {
    to_.BeginDropCap(properties);
    to_.Text(u"D", Run());
    to_.EndDropCap();
  }
  Inlines(6, 0);
  to_.EndParagraph();
  while (depth < 4 && Now(5) && budget_ > 0) TextBox(depth);
}

void RandomScript::Inlines(uint32_t most, int depth) {
  for (uint32_t count = Below(most + 1); count > 0; --count) Inline(depth);
}

void RandomScript::Inline(int depth) {
  if (depth == 0 && Now(20)) return to_.Ruby(Of(kTexts), Of(kTexts), Of(kTexts), Run());
  switch (Below(14)) {
    case 0:
    case 1:
    case 2:
      return to_.Text(Of(kTexts), Run());
    case 3:
      return to_.MarkHere(static_cast<Mark>(Below(5)), Run());
    case 4:
      return to_.MarkHere(Mark::kTab, Run());
    case 5:
      to_.BookmarkStart(Of(kNames));
      return Now(2) ? to_.BookmarkEnd(Of(kNames)) : void();
    case 6:
      return Note(Now(2));
    case 7:
      return to_.CommentStart(comments_), to_.CommentEnd(comments_),
             to_.CommentReference({comments_++, Of(kTexts), Of(kLabels), 0});
    case 8:
      return to_.FormField({static_cast<FormFieldFacts::Kind>(Below(3)), Of(kNames), Now(2), Of(kTexts)},
                           Run());
    case 9:
    case 10:
      return Picture();
    case 11:
    case 12:
      if (depth >= 3) return;
      to_.BeginLink({Of(kAddresses), Of(kNames), Of(kTexts), {}});
      Inlines(4, depth + 1);
      return to_.EndLink();
    default:
      if (depth >= 3) return;
      to_.BeginRevision({static_cast<Revision::Kind>(1 + Below(4)), Of(kTexts), Below(2) * 0x35A12345u});
      Inlines(4, depth + 1);
      return to_.EndRevision();
  }
}

void RandomScript::Note(bool isReference) {
  const NoteFacts note{Now(2) ? NoteKind::kFootnote : NoteKind::kEndnote, isReference ? references_ : 0,
                       Now(6) ? std::u16string_view() : u"1", false};
  if (!isReference) return to_.NoteMark(note, Run());
  ++references_;
  to_.NoteReference(note, Run());
}

void RandomScript::Shape(ShapeFacts& shape) {
  constexpr uint16_t kTypes[] = {1, 2, 3, 20, 75, 136, 202, 201, 32, 61};
  shape.geometry.type = Of(kTypes);
  shape.geometry.flipsX = Now(4);
  shape.geometry.rotation = static_cast<float>(Below(2) * 30);
  shape.fill.kind = static_cast<ShapeFill::Kind>(Below(8));
  shape.line.isThere = Now(2);
  shape.line.end.kind = static_cast<Arrowhead::Kind>(Below(6));
  shape.shadow.isThere = Now(3);
  shape.text.anchor = static_cast<ShapeText::Anchor>(Below(3));
  shape.text.flow = static_cast<uint8_t>(Below(4));
  shape.text.wraps = !Now(4);
  shape.place.horizontal = static_cast<ShapePlace::Side>(Below(6));
  shape.place.fromX = static_cast<ShapePlace::From>(Below(4));
  shape.place.fromY = static_cast<ShapePlace::From>(Below(4));
  shape.picture.cropLeft = Now(4) ? 0.25F : 0.0F;
  shape.picture.isGrey = Now(4);
  if (Now(3)) shape.art.text = u"Art <&>\r\u0001";
}

PictureFacts RandomScript::Facts(ShapeFacts& shape, PictureSource& source) {
  Shape(shape);
  PictureFacts facts;
  facts.description = Of(kTexts);
  facts.width = static_cast<int32_t>(Below(9000));
  facts.height = static_cast<int32_t>(Below(5000));
  facts.isInline = Now(3);
  facts.wrap = static_cast<uint8_t>(Below(6));
  facts.isBehindText = Now(2);
  facts.left = static_cast<int32_t>(Below(9000)) - 1000;
  facts.top = static_cast<int32_t>(Below(9000)) - 1000;
  if (Now(2)) facts.source = &source;
  if (!Now(3)) facts.shape = &shape;
  return facts;
}

void RandomScript::Picture() {
  ShapeFacts shape;
  OnePicture source(Now(2) ? PictureType::kPng : PictureType::kWmf);
  to_.Picture(Facts(shape, source));
}

void RandomScript::TextBox(int depth) {
  ShapeFacts shape;
  OnePicture source(PictureType::kPng);
  to_.BeginTextBox({Facts(shape, source), boxes_++});
  Blocks(3, depth + 1);
  to_.EndTextBox();
}

void RandomScript::Table(int depth) {
  TableProperties table;
  table.depth = static_cast<uint8_t>(++tables_);
  table.isRightToLeft = Now(5);
  table.columnWidths.assign(1 + Below(4), 1500);
  table.headerRowCount = Below(3);
  table.floats = Now(4);
  table.hasSingleParagraphs = false;
  to_.BeginTable(table);
  for (uint32_t rows = 1 + Below(4), row = 0; row < rows; ++row) {
    RowProperties properties;
    properties.isHeader = row < table.headerRowCount || Now(5);
    properties.columnsBefore = static_cast<uint16_t>(Below(2));
    properties.columnsAfter = static_cast<uint16_t>(Below(2));
    to_.BeginRow(properties);
    for (uint32_t cells = 1 + Below(3); cells > 0; --cells) {
      CellProperties cell;
      cell.columnSpan = static_cast<uint16_t>(1 + Below(2));
      cell.rowSpan = static_cast<uint16_t>(Below(3));
      cell.shading = {Now(3), {0x202020, false}};
      to_.BeginCell(cell);
      Blocks(3, depth + 1);
      to_.EndCell();
    }
    to_.EndRow();
  }
  to_.EndTable();
  --tables_;
}

}  // namespace

void tellRandomDocument(FlowHandler& handler, uint32_t seed) {
  RandomScript(handler, seed).Document();
}

}  // namespace support
