#include "flow/story_walker.h"

#include <algorithm>
#include <optional>

#include "flow/table_cells.h"

#include "wordreader/text_marks.h"

namespace pagerex {
namespace {

constexpr unsigned kDeepestBox = 4;

/// Not changed as well.
bool isOnlyHidden(const RunProperties& mark) {
  return mark.hidden && mark.revision.kind == Revision::kNone && mark.deletion.kind == Revision::kNone;
}

}  // namespace

StoryWalker::StoryWalker(WalkDocument& document, NoteCounters& counters, ListLabels& labels,
                         FieldMarks& fields, unsigned depth)
    : document_(document),
      handler_(document.handler),
      counters_(counters),
      labels_(labels),
      inline_(document, counters, fields),
      depth_(depth) {}

void StoryWalker::Tell(const StoryPlace& story, uint32_t end) {
  story_ = story;
  inline_.BeginStory(story);
  for (uint32_t at = story.start; at < end && !document_.control.MustStop();) {
    bool endsCell = false;
    at = TellBlock(at, end, 0, {}, endsCell);
  }
  if (inline_.isOpen()) inline_.EndParagraph(end, true);
  inline_.EndStory();
}

/// A paragraph, or a table of the next depth. The position behind it.
uint32_t StoryWalker::TellBlock(uint32_t start, uint32_t limit, unsigned depth, const TableStylePlace& place,
                                bool& endsCell) {
  const FoundParagraph& paragraph = document_.paragraphs.At(start, limit);
  if (paragraph.place.depth > depth) {
    if (inline_.isOpen()) inline_.EndParagraph(start, true);
    return TellTable(start, limit, depth + 1);
  }
  endsCell = depth > 0 && paragraph.EndsCell(depth);
  return TellParagraph(paragraph, limit, place, endsCell);
}

// Paragraphs

uint32_t StoryWalker::TellParagraph(const FoundParagraph& found, uint32_t limit, const TableStylePlace& place,
                                    bool mustEnd) {
  // Nothing is held of what was told before.
  if (!inline_.isOpen()) document_.MayForget();
  const bool isMain = story_.type == mso_word::SUBDOC_MAIN;
  paragraphStart_ = found.start;
  place_ = place;
  if (document_.progress && isMain) document_.progress->Reached(paragraphStart_);
  uint32_t textStart = found.start, textEnd = found.textEnd, end = found.end;
  bool isMarkShown = LookAtMark(found);
  if (!isMarkShown && found.mark == text_mark::kParagraphEnd && end < limit) {
    FoundParagraph last = found;
    isMarkShown = JoinHidden(last, limit);
    textStart = last.start;
    textEnd = last.textEnd;
    end = last.end;
    mustEnd = last.place.depth > 0 && last.EndsCell(last.place.depth);
  } else {
    inline_.SetParagraph(*this, istd_, place);
  }
  inline_.Tell(textStart, textEnd);
  if (isMarkShown || inline_.isOpen() || mustEnd) inline_.EndParagraph(textEnd, mustEnd);
  if (isMain) {
    ++document_.written.paragraphs;
    document_.written.characters += end - paragraphStart_;
  }
  if (!inline_.boxes.empty() && !inline_.isOpen()) TellBoxes();
  return std::max(end, paragraphStart_ + 1);
}

/// Whether the mark is shown as the end of a line: that behind a drop cap is not.
bool StoryWalker::LookAtMark(const FoundParagraph& paragraph) {
  properties_ = &document_.PropertiesOf(paragraph, place_);
  istd_ = properties_->style;
  markPosition_ = paragraph.end > paragraph.start ? paragraph.end - 1 : paragraph.start;
  const TextRun& mark = document_.RunAt(markPosition_, istd_, place_);
  markProperties_ = mark.properties;
  return mark.isShown && properties_->frame.dropCapLines == 0;
}

/// Paragraphs whose marks are not there are one with the next, as drop caps are: leaves the last one in
/// `paragraph`, and tells the text in front of it. The last one says what the whole looks like, but behind a
/// mark that is only hidden the first one that shows text. Returns whether the last mark is shown.
bool StoryWalker::JoinHidden(FoundParagraph& paragraph, uint32_t limit) {
  std::vector<Part> before;
  std::optional<uint32_t> speaker;
  while (paragraph.mark == text_mark::kParagraphEnd && paragraph.end < limit &&
         !document_.control.MustStop() && !LookAtMark(paragraph)) {
    const FoundParagraph& next = document_.paragraphs.At(paragraph.end, limit);
    if (next.place.depth != paragraph.place.depth || next.place.isRowEnd || next.place.isInnerRowEnd ||
        paragraph.place.isInnerCellEnd) {
      break;
    }
    const bool isDropCap = properties_->frame.dropCapLines != 0;
    const Part part{paragraph.start, paragraph.textEnd, istd_, isDropCap ? properties_ : nullptr};
    before.push_back(part);
    paragraph = next;
    if (!speaker && isOnlyHidden(*markProperties_) && ShowsText(part)) speaker = part.start;
  }
  const bool isMarkShown = LookAtMark(paragraph);
  const uint16_t lastStyle = istd_;
  if (speaker) LookAtMark(document_.paragraphs.At(*speaker, limit));
  for (const Part& part : before) {
    inline_.SetParagraph(*this, part.istd, place_);
    if (part.dropCap) inline_.BeginDropCap(*part.dropCap);
    inline_.Tell(part.start, part.end);
    if (part.dropCap) inline_.EndDropCap();
  }
  inline_.SetParagraph(*this, lastStyle, place_);
  return isMarkShown;
}

bool StoryWalker::ShowsText(const Part& part) {
  for (uint32_t at = part.start; at < part.end;) {
    const TextRun& run = document_.RunAt(at, part.istd, place_);
    if (run.isShown) return true;
    at = run.end;
  }
  return false;
}

void StoryWalker::Begin() {
  constexpr uint8_t kBodyText = 9;
  LabelFacts label;
  const RunProperties* labelProperties = nullptr;
  const bool isListItem =
      properties_->listNumber != 0 && labels_.Next(properties_->listNumber, properties_->listLevel, label,
                                                   markProperties_->language, markProperties_->fonts.ascii);
  if (isListItem && !label.text.empty()) {
    labelProperties =
        &document_.resolver->Label(document_.SprmsAt(markPosition_), {}, label.level->chpx, istd_, place_);
  }
  const FoundShape* const bullet =
      isListItem && label.pictureBullet >= 0 ? document_.PictureBullet(label.pictureBullet) : nullptr;
  const PictureFacts picture = bullet ? bullet->Facts() : PictureFacts();
  const uint8_t outline = properties_->outlineLevel;
  const uint8_t headingLevel =
      outline < kBodyText ? static_cast<uint8_t>(outline + 1) : document_.styles.HeadingLevel(istd_);
  inline_.SetHeadingLevel(headingLevel);
  handler_.BeginParagraph({.properties = *properties_,
                           .styleName = document_.styles.EnglishName(istd_),
                           .headingLevel = headingLevel,
                           .label = isListItem ? label.text : std::u16string_view(),
                           .labelProperties = labelProperties,
                           .labelFollow = isListItem ? static_cast<ParagraphFacts::Follow>(
                                                           std::min<uint8_t>(label.level->follow, 2))
                                                     : ParagraphFacts::Follow::kTab,
                           .isListItem = isListItem,
                           .isBullet = label.isBullet,
                           .listId = label.listId,
                           .number = label.number,
                           .numberFormat = label.nfc,
                           .markProperties = *markProperties_,
                           .position = paragraphStart_ - story_.base,
                           .labelPicture = bullet ? &picture : nullptr});
}

// Tables

uint32_t StoryWalker::TellTable(uint32_t start, uint32_t limit, unsigned depth) {
  TableScan table(document_, depth);
  table.Read(start, limit);
  RowLooks looks(table.kinds().size() + 1);
  bool hasBegun = false;
  for (uint32_t i = 0; i < table.rows().size() && !document_.control.MustStop(); ++i) {
    if (IsRowHidden(table.rows()[i])) continue;
    RowLook& look = LookOf(table, i, looks);
    if (!hasBegun) {
      handler_.BeginTable(table.Properties(look.definition));
      if (depth == 1 && story_.type == mso_word::SUBDOC_MAIN) ++document_.written.tables;
    }
    hasBegun = true;
    TellRow(table, i, look, depth);
  }
  if (hasBegun) handler_.EndTable();
  return std::max(table.end(), start + 1);
}

/// Rows that were deleted or inserted have marks that say so.
bool StoryWalker::IsRowHidden(const ScannedRow& row) {
  if (!row.hasDefinition || document_.authors.Count() == 0) return false;
  const RunProperties& mark = *document_.RunAt(row.end - 1, 0, {}).properties;
  return (document_.options.revisions == RevisionView::kFinal && mark.deletion.kind != Revision::kNone) ||
         (document_.options.revisions == RevisionView::kOriginal && mark.revision.kind != Revision::kNone);
}

StoryWalker::RowLook& StoryWalker::LookOf(const TableScan& table, uint32_t index, RowLooks& looks) {
  const ScannedRow& row = table.rows()[index];
  const bool isFirst = index == 0, isLast = index + 1 == table.rows().size();
  const bool hasKind = row.kind != ScannedRow::kNoKind;
  RowLook& look = hasKind ? looks[row.kind] : looks.back();
  const bool isMade = look.isThere && hasKind;
  if (!isMade && hasKind) {
    const std::vector<uint8_t>& sprms = table.kinds()[row.kind].sprms;
    document_.tableStyles->Row({sprms.data(), sprms.size()}, {}, look.definition);
  } else if (!isMade) {
    FoundParagraph mark;
    if (row.hasDefinition) mark = document_.paragraphs.At(row.end - 1, row.end);
    document_.tableStyles->Row(mark.sprms, mark.pieceSprms, look.definition);
  }
  if (!isMade) look.hasConditions = document_.tableStyles->HasConditions(look.definition.style);
  const bool hasCells = isMade && look.isFirst == isFirst && look.isLast == isLast &&
                        look.cells.size() >= row.cellCount && !look.hasConditions;
  look.isThere = true;
  look.isFirst = isFirst;
  look.isLast = isLast;
  if (!hasCells) MakeCells(table, index, look);
  return look;
}

void StoryWalker::MakeCells(const TableScan& table, uint32_t index, RowLook& look) {
  const ScannedRow& row = table.rows()[index];
  const auto rowCount = static_cast<uint32_t>(table.rows().size());
  look.cells.assign(row.cellCount, {});
  look.conditions.assign(row.cellCount, 0);
  const ScannedCell* const cells = table.CellsOf(row);
  const size_t defined = std::min<size_t>(row.cellCount, look.definition.cells.size());
  for (size_t i = 0; i < defined; ++i) {
    size_t last = i;
    while (last + 1 < defined && cells[last + 1].isMergedLeft) ++last;
    if (look.hasConditions) {
      look.conditions[i] = conditionsOf(look.definition, index, rowCount, static_cast<uint32_t>(i),
                                        static_cast<uint32_t>(defined));
    }
    document_.tableStyles->Cell(
        look.definition, {static_cast<uint8_t>(i), static_cast<uint8_t>(last), look.isFirst, look.isLast},
        look.conditions[i], look.cells[i]);
  }
}

void StoryWalker::TellRow(const TableScan& table, uint32_t index, RowLook& look, unsigned depth) {
  const ScannedRow& row = table.rows()[index];
  RowProperties properties = look.definition.row;
  if (row.cellCount > 0) {
    const ScannedCell& first = table.CellsOf(row)[0];
    const ScannedCell& last = table.CellsOf(row)[row.cellCount - 1];
    properties.columnsBefore = first.column;
    const size_t end = size_t{last.column} + last.columnSpan;
    properties.columnsAfter = static_cast<uint16_t>(table.ColumnCount() - std::min(end, table.ColumnCount()));
  }
  if (row.hasDefinition && document_.authors.Count() > 0) {
    const RunProperties& mark = *document_.RunAt(row.end - 1, 0, {}).properties;
    properties.revision = mark.deletion.kind != Revision::kNone ? mark.deletion : mark.revision;
  }
  handler_.BeginRow(properties);
  TellCells(table, row, look, depth);
  handler_.EndRow();
}

void StoryWalker::TellCells(const TableScan& table, const ScannedRow& row, RowLook& look, unsigned depth) {
  const ScannedCell* const cells = table.CellsOf(row);
  const uint32_t textEnd = row.hasDefinition ? row.end - 1 : row.end;
  uint16_t cell = 0;
  bool isInCell = false;
  bool isFirstBlock = false;
  TableStylePlace place;
  place.istd = look.definition.style;
  for (uint32_t at = row.start; at < textEnd;) {
    const uint16_t known = std::min<uint16_t>(cell, static_cast<uint16_t>(row.cellCount - 1));
    if (!isInCell) {
      CellProperties& properties = look.cells[known];
      properties.columnSpan = cells[known].columnSpan;
      properties.rowSpan = cells[known].rowSpan;
      place.conditions = look.conditions[known];
      handler_.BeginCell(properties);
      isInCell = true;
    }
    // What is merged into the cell at its left has mostly no text, and then no paragraph.
    const FoundParagraph& next = document_.paragraphs.At(at, textEnd);
    const bool isEmptyRest =
        isFirstBlock && cells[known].isMergedLeft && next.EndsCell(depth) && next.textEnd == next.start;
    bool endsCell = isEmptyRest;
    at = isEmptyRest ? next.end : TellBlock(at, textEnd, depth, place, endsCell);
    isFirstBlock = endsCell;
    if (!endsCell) continue;
    ++cell;
    const bool goesOn = cell < row.cellCount && cells[cell].isMergedLeft;
    if (!goesOn) {
      handler_.EndCell();
      isInCell = false;
    }
  }
  if (inline_.isOpen()) inline_.EndParagraph(textEnd, true);
  if (isInCell) handler_.EndCell();
}

// Text boxes

void StoryWalker::TellBoxes() {
  if (inline_.boxes.empty()) return;
  const std::vector<FoundShape> boxes = std::move(inline_.boxes);
  inline_.boxes.clear();
  for (const FoundShape& box : boxes) {
    if (box.box >= 0 && depth_ < kDeepestBox) TellBox(box);
    if (!box.artText.empty()) TellArtText(box);
  }
}

void StoryWalker::TellBox(const FoundShape& shape) {
  const bool isInHeaders =
      story_.type == mso_word::SUBDOC_HEADER || story_.type == mso_word::SUBDOC_HEADER_TEXTBOX;
  const KDWRange range = document_.drawings.BoxText(isInHeaders, static_cast<uint32_t>(shape.box));
  const auto type = isInHeaders ? mso_word::SUBDOC_HEADER_TEXTBOX : mso_word::SUBDOC_TEXTBOX;
  const uint32_t base = document_.file.storyStarts()[type];
  const uint32_t length = document_.file.storyStarts()[type + 1] - base;
  if (range.start >= range.end || range.end > length ||
      !document_.TakeBox(isInHeaders, static_cast<uint32_t>(shape.box)))
    return;
  handler_.BeginTextBox({shape.Facts(), document_.textBoxCount++});
  StoryWalker walker(document_, counters_, document_.OtherLabels(), document_.FieldsOf(type), depth_ + 1);
  walker.Tell({type, base, base + range.start, nullptr}, base + range.end - 1);
  handler_.EndTextBox();
}

/// As a box with one paragraph, in the look of "Normal".
void StoryWalker::TellArtText(const FoundShape& shape) {
  const ParagraphProperties& properties = document_.resolver->Paragraph(0, {}, {}, {});
  const RunProperties& run = document_.resolver->ParagraphStyleRun(0);
  handler_.BeginTextBox({shape.Facts(), document_.textBoxCount++});
  handler_.BeginParagraph({.properties = properties,
                           .styleName = document_.styles.EnglishName(0),
                           .headingLevel = 0,
                           .label = {},
                           .labelProperties = nullptr,
                           .labelFollow = ParagraphFacts::Follow::kTab,
                           .isListItem = false,
                           .isBullet = false,
                           .listId = 0,
                           .number = 0,
                           .numberFormat = 0,
                           .markProperties = run,
                           .position = 0,
                           .labelPicture = nullptr});
  handler_.Text(shape.artText, run);
  handler_.EndParagraph();
  handler_.EndTextBox();
}

}  // namespace pagerex
