#include "support/flow_transcript.h"

#include <cstdio>

#include "base/encoding.h"
#include "base/file_time.h"

namespace support {

using namespace pagerex;

namespace {

std::string utf8(std::u16string_view text) {
  std::string out;
  Utf16Joiner joiner;
  for (const char16_t unit : text) appendUtf8(out, joiner.Join(unit));
  return out;
}

std::string quoted(std::u16string_view text) {
  return "\"" + utf8(text) + "\"";
}

/// Collects words: those that say nothing are left out.
class Words {
 public:
  explicit Words(std::string first) : line_(std::move(first)) {}

  Words& Flag(const char* name, bool isSet) { return isSet ? Add(name) : *this; }
  /// `name=value` where it is not `usual`.
  Words& Number(const char* name, int64_t value, int64_t usual = 0) {
    return value == usual ? *this : Add(std::string(name) + "=" + std::to_string(value));
  }
  Words& Named(const char* name, std::u16string_view value) {
    return value.empty() ? *this : Add(std::string(name) + "=" + quoted(value));
  }
  Words& Date(uint32_t dttm) { return dttm ? Add(iso8601OfDttm(dttm)) : *this; }
  Words& Tint(const char* name, const pagerex::Colour& colour) {
    if (colour.isAutomatic) return *this;
    char text[16];
    std::snprintf(text, sizeof text, "#%06X", colour.rgb & 0xFFFFFFu);
    return Add(std::string(name) + "=" + text);
  }
  Words& Ground(const pagerex::Shading& shading) {
    return shading.isThere ? Tint("fill", shading.fill) : *this;
  }
  Words& Line(const char* name, const pagerex::Border& border) {
    if (!border.isThere()) return *this;
    Add(std::string(name) + "=" + std::to_string(border.kind) + "/" + std::to_string(border.widthEighths));
    return Tint((std::string(name) + "Colour").c_str(), border.colour);
  }
  Words& Add(const std::string& word) {
    if (!line_.empty()) line_ += ' ';
    line_ += word;
    return *this;
  }
  const std::string& str() const { return line_; }

 private:
  std::string line_;
};

std::string lookOf(const RunProperties& run) {
  struct {
    const char* name;
    bool RunProperties::*flag;
  } constexpr kFlags[] = {
      {"bold", &RunProperties::bold},           {"italic", &RunProperties::italic},
      {"strike", &RunProperties::strike},       {"doubleStrike", &RunProperties::doubleStrike},
      {"outline", &RunProperties::outline},     {"shadow", &RunProperties::shadow},
      {"emboss", &RunProperties::emboss},       {"imprint", &RunProperties::imprint},
      {"smallCaps", &RunProperties::smallCaps}, {"caps", &RunProperties::caps},
      {"hidden", &RunProperties::hidden},       {"rtl", &RunProperties::isRightToLeft},
  };
  Words words("");
  for (const auto& [name, flag] : kFlags) words.Flag(name, run.*flag);
  return words.Number("underline", run.underline)
      .Number("highlight", run.highlight)
      .Number("raised", run.verticalAlignment)
      .Number("size", run.sizeHalfPoints, 20)
      .Number("spacing", run.spacing)
      .Tint("colour", run.colour)
      .Ground(run.shading)
      .Number("style", run.characterStyle, 10)
      .str();
}

void addFormat(Words& words, const ParagraphProperties& properties) {
  words.Number("align", static_cast<int>(properties.alignment))
      .Flag("rtl", properties.isRightToLeft)
      .Flag("keepWithNext", properties.keepWithNext)
      .Flag("pageBreakBefore", properties.pageBreakBefore)
      .Number("indent", properties.indentStart)
      .Number("indentEnd", properties.indentEnd)
      .Number("firstLine", properties.indentFirstLine)
      .Number("before", properties.spaceBefore)
      .Number("after", properties.spaceAfter)
      .Line("top", properties.top)
      .Line("bottom", properties.bottom)
      .Ground(properties.shading)
      .Flag("frame", properties.frame.isThere)
      .Number("dropCap", properties.frame.dropCapLines);
}

Words noteWords(const char* what, const NoteFacts& note) {
  Words words(what);
  words.Add(note.kind == NoteKind::kFootnote ? "footnote" : "endnote").Add(std::to_string(note.index));
  return words.Named("label", note.label).Flag("custom", note.isCustom);
}

Words commentWords(const char* what, const CommentFacts& comment) {
  Words words(what);
  return words.Add(std::to_string(comment.index))
      .Named("author", comment.author)
      .Named("initials", comment.initials)
      .Date(comment.dttm);
}

void addPicture(Words& words, const PictureFacts& picture) {
  words.Named("description", picture.description)
      .Named("name", picture.name)
      .Add(std::to_string(picture.width) + "x" + std::to_string(picture.height))
      .Flag("inline", picture.isInline)
      .Flag("behind", picture.isBehindText)
      .Named("linked", picture.linkedAddress);
  if (!picture.isInline) {
    words.Number("wrap", picture.wrap).Number("left", picture.left).Number("top", picture.top);
  }
  if (!picture.source) return;
  const PictureData data = picture.source->Read();
  words.Number("type", static_cast<int>(data.type))
      .Number("bytes", static_cast<int64_t>(data.bytes.size()))
      .Flag("deflated", data.isDeflated);
}

constexpr const char* kHeaderNames[] = {"even", "odd", "first"};
constexpr const char* kMarkNames[] = {"tab", "lineBreak", "pageBreak", "columnBreak", "rule"};
constexpr char16_t kMarkCharacters[] = {u'\t', u'\v', u'\f', 0x0E, u'-'};
constexpr const char* kFieldNames[] = {"text", "checkBox", "dropDown"};
constexpr const char* kRevisionNames[] = {"none", "inserted", "deleted", "movedHere", "movedAway"};

}  // namespace

// --- Lines ---

const std::string& FlowTranscript::text() {
  FlushText();
  return lines_;
}

void FlowTranscript::Line(const std::string& line) {
  FlushText();
  lines_.append(open_.size() * 2, ' ');
  lines_ += line;
  lines_ += '\n';
}

bool FlowTranscript::IsInParagraph() const {
  return !open_.empty() &&
         (open_.back() == Open::kParagraph || open_.back() == Open::kLink || open_.back() == Open::kRevision);
}

bool FlowTranscript::MayBegin(Open what) const {
  switch (what) {
    case Open::kRow:
      return !open_.empty() && open_.back() == Open::kTable;
    case Open::kCell:
      return !open_.empty() && open_.back() == Open::kRow;
    case Open::kLink:
    case Open::kRevision:
      return IsInParagraph();
    default:
      return !IsInParagraph() &&
             (open_.empty() || (open_.back() != Open::kTable && open_.back() != Open::kRow));
  }
}

void FlowTranscript::Begin(Open what, const std::string& line) {
  FlushText();
  isWrong_ |= !MayBegin(what);
  Line(line);
  open_.push_back(what);
}

void FlowTranscript::End(Open what) {
  FlushText();
  if (open_.empty() || open_.back() != what) {
    isWrong_ = true;
    Line("WRONG END");
    return;
  }
  open_.pop_back();
}

void FlowTranscript::FlushText() {
  if (pendingText_.empty()) return;
  const std::u16string pending = std::move(pendingText_);
  pendingText_.clear();
  Line(Words("text").Add(quoted(pending)).Flag(pendingLook_.c_str(), !pendingLook_.empty()).str());
}

void FlowTranscript::Text(std::u16string_view text, const RunProperties& properties) {
  isWrong_ |= !IsInParagraph() || text.empty();
  const std::string look = tells(kWithFormats) ? lookOf(properties) : "";
  if (look != pendingLook_) FlushText();
  pendingLook_ = look;
  pendingText_ += text;
  characters_ += text;
}

// --- Calls, in the order of the handler ---

void FlowTranscript::BeginDocument(const DocumentFacts& facts) {
  if (!tells(kWithDocument)) return;
  Line(Words("document")
           .Named("title", facts.summary.title)
           .Number("language", facts.language, 0x0400)
           .Number("tab", facts.defaultTabStop)
           .Flag("oddAndEven", facts.hasOddAndEvenHeaders)
           .Number("pages", facts.pageCount)
           .str());
}

void FlowTranscript::EndDocument() {
  FlushText();
  isWrong_ |= hasEnded_ || !open_.empty();
  hasEnded_ = true;
}

void FlowTranscript::BeginSection(const SectionFacts& facts) {
  FlushText();
  if (!tells(kWithSections)) return;
  const SectionProperties& properties = facts.properties;
  Words words("section");
  words.Add(std::to_string(facts.index))
      .Number("start", static_cast<int>(properties.start), 2)
      .Number("width", properties.pageWidth, 12240)
      .Number("height", properties.pageHeight, 15840)
      .Flag("landscape", properties.isLandscape)
      .Number("columns", properties.columnCount, 1)
      .Flag("titlePage", properties.hasTitlePage)
      .Flag("rtl", properties.isRightToLeft);
  for (int isFooter = 0; isFooter < 2; ++isFooter) {
    for (int kind = 0; kind < 3; ++kind) {
      const std::string name = std::string(kHeaderNames[kind]) + (isFooter ? "Footer" : "Header");
      words.Number(name.c_str(), facts.headerSections[isFooter][kind], -1);
    }
  }
  Begin(Open::kSection, words.str());
}

void FlowTranscript::EndSection() {
  FlushText();
  if (tells(kWithSections)) End(Open::kSection);
}

void FlowTranscript::BeginHeader(const HeaderFacts& facts) {
  Begin(Open::kHeader,
        Words(facts.isFooter ? "footer" : "header").Add(kHeaderNames[static_cast<int>(facts.kind)]).str());
}

void FlowTranscript::EndHeader() {
  End(Open::kHeader);
}

void FlowTranscript::BeginParagraph(const ParagraphFacts& facts) {
  Words words("paragraph");
  if (tells(kWithStyles) && facts.styleName != u"Normal") words.Named("style", facts.styleName);
  words.Number("heading", facts.headingLevel).Named("label", facts.label);
  words.Number("follow", static_cast<int>(facts.labelFollow));
  if (facts.isListItem) {
    words.Flag("bullet", facts.isBullet)
        .Number("level", facts.properties.listLevel)
        .Number("number", facts.number, 0);
  }
  if (tells(kWithFormats)) addFormat(words, facts.properties);
  Begin(Open::kParagraph, words.str());
}

void FlowTranscript::EndParagraph() {
  End(Open::kParagraph);
  characters_ += u'\n';
}

void FlowTranscript::MarkHere(Mark mark, const RunProperties&) {
  isWrong_ |= !IsInParagraph();
  Line(kMarkNames[static_cast<int>(mark)]);
  characters_ += kMarkCharacters[static_cast<int>(mark)];
}

void FlowTranscript::BeginLink(const LinkFacts& facts) {
  Words words("link");
  if (!facts.address.empty()) words.Add(quoted(facts.address));
  if (!facts.bookmark.empty()) words.Add("#" + utf8(facts.bookmark));
  Begin(Open::kLink, words.Named("title", facts.title).Named("target", facts.target).str());
}

void FlowTranscript::EndLink() {
  End(Open::kLink);
}

void FlowTranscript::BookmarkStart(std::u16string_view name) {
  isWrong_ |= !IsInParagraph();
  if (tells(kWithBookmarks)) Line("bookmarkStart " + utf8(name));
}

void FlowTranscript::BookmarkEnd(std::u16string_view name) {
  isWrong_ |= !IsInParagraph();
  if (tells(kWithBookmarks)) Line("bookmarkEnd " + utf8(name));
}

void FlowTranscript::NoteReference(const NoteFacts& facts, const RunProperties&) {
  isWrong_ |= !IsInParagraph();
  Line(noteWords("reference", facts).str());
}

void FlowTranscript::NoteMark(const NoteFacts& facts, const RunProperties&) {
  Line(noteWords("mark", facts).str());
}

void FlowTranscript::CommentStart(uint32_t index) {
  isWrong_ |= !IsInParagraph();
  Line("commentStart " + std::to_string(index));
}

void FlowTranscript::CommentEnd(uint32_t index) {
  isWrong_ |= !IsInParagraph();
  Line("commentEnd " + std::to_string(index));
}

void FlowTranscript::CommentReference(const CommentFacts& facts) {
  Line(commentWords("commentReference", facts).str());
}

void FlowTranscript::BeginRevision(const RevisionFacts& facts) {
  Begin(Open::kRevision,
        Words(kRevisionNames[facts.kind]).Named("author", facts.author).Date(facts.dttm).str());
}

void FlowTranscript::EndRevision() {
  End(Open::kRevision);
}

void FlowTranscript::FormField(const FormFieldFacts& facts, const RunProperties&) {
  Line(Words("formField")
           .Add(kFieldNames[static_cast<int>(facts.kind)])
           .Named("name", facts.name)
           .Flag("checked", facts.isChecked)
           .Named("value", facts.value)
           .str());
}

void FlowTranscript::Picture(const PictureFacts& facts) {
  Words words("picture");
  addPicture(words, facts);
  Line(words.str());
}

void FlowTranscript::BeginTable(const TableProperties& table) {
  Words words("table");
  words.Number("depth", table.depth, 1)
      .Number("headers", table.headerRowCount)
      .Flag("irregular", !table.isRegular)
      .Flag("merged", table.hasMergedCells);
  if (tells(kWithFormats)) {
    words.Flag("rtl", table.isRightToLeft)
        .Number("align", static_cast<int>(table.alignment))
        .Number("indent", table.indent)
        .Number("width", table.width)
        .Flag("floats", table.floats);
    std::string widths;
    for (const int32_t width : table.columnWidths)
      widths += (widths.empty() ? "" : ",") + std::to_string(width);
    words.Add("columns=" + widths);
  }
  Begin(Open::kTable, words.str());
}

void FlowTranscript::EndTable() {
  End(Open::kTable);
}

void FlowTranscript::BeginRow(const RowProperties& row) {
  Words words("row");
  words.Flag("header", row.isHeader);
  if (row.revision.kind != Revision::kNone) words.Add(kRevisionNames[row.revision.kind]);
  if (tells(kWithFormats)) words.Flag("cantSplit", row.cantSplit).Number("height", row.height);
  Begin(Open::kRow, words.str());
}

void FlowTranscript::EndRow() {
  End(Open::kRow);
}

void FlowTranscript::BeginCell(const CellProperties& cell) {
  Words words("cell");
  words.Number("columns", cell.columnSpan, 1).Number("rows", cell.rowSpan, 1);
  if (tells(kWithFormats)) {
    words.Number("width", cell.width)
        .Number("vertical", cell.verticalAlignment)
        .Line("top", cell.top)
        .Line("start", cell.start)
        .Line("bottom", cell.bottom)
        .Line("end", cell.end)
        .Ground(cell.shading);
  }
  Begin(Open::kCell, words.str());
}

void FlowTranscript::EndCell() {
  End(Open::kCell);
}

void FlowTranscript::BeginTextBox(const TextBoxFacts& facts) {
  Words words("textBox");
  words.Add(std::to_string(facts.index));
  if (tells(kWithFormats)) addPicture(words, facts.shape);
  Begin(Open::kTextBox, words.str());
}

void FlowTranscript::EndTextBox() {
  End(Open::kTextBox);
}

void FlowTranscript::BeginNote(const NoteFacts& facts) {
  Begin(Open::kNote, noteWords("note", facts).str());
}

void FlowTranscript::EndNote() {
  End(Open::kNote);
}

void FlowTranscript::BeginComment(const CommentFacts& facts) {
  Begin(Open::kComment, commentWords("comment", facts).str());
}

void FlowTranscript::EndComment() {
  End(Open::kComment);
}

}  // namespace support
