#include "htmlwriter/table_writer.h"

#include <utility>

#include "htmlwriter/cell_format_css.h"
#include "story/work_limits.h"
#include "wordreader/sprm_opcodes.h"
#include "wordreader/text_marks.h"

namespace pagerex {

Status KHtmlTableWriter::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  limits_ = &env->conversion->Limits();
  scans_ = &env->conversion->Scans();
  return Status::kOk;
}

Status KHtmlTableWriter::Write() {
  if (!env_) return Status::kInvalidArgument;
  const TableParagraph paragraph = LookAtParagraph();
  if (!env_->inTable) {
    while (depth_ > 0) EndTable();
    return Status::kOk;
  }
  while (depth_ < paragraph.depth && limits_->OpenTable()) StartTable(env_->pap.papIndex);
  while (depth_ > paragraph.depth) EndTable();
  if (rowEnd_) {
    EndTR();
    return Status::kStopped;
  }
  if (depth_ == 0 || tableStack_.back().inCell) return Status::kOk;
  if (SkipMergedCell()) return Status::kStopped;
  StartTD();
  return Status::kOk;
}

TableParagraph KHtmlTableWriter::LookAtParagraph() {
  const TableParagraph paragraph = scans_->paragraphs().Look(env_->pap.papx.bytes());
  const bool inside = paragraph.kind == TableParagraph::INSIDE;
  env_->inTable = inside ? paragraph.inTable : 0;
  rowEnd_ = inside && paragraph.rowEnd;
  innerCellEnd_ = inside && paragraph.innerCellEnd;
  return paragraph;
}

/// The text of a cell that continues a merge belongs to nobody.
bool KHtmlTableWriter::SkipMergedCell() {
  TABLE_CACHE& table = tableStack_.back();
  if (table.cells.empty()) return false;
  const CELL_FORMAT& cell = table.cells.front();
  if (!cell.tc) return false;
  const uint8_t flags = cell.tc->flags0;
  if ((flags & mso_word::TC::kVerticalMerge) != mso_word::TC::kMergeContinued &&
      (flags & mso_word::TC::kHorizontalMerge) != 1) {
    return false;
  }
  table.nextColumn = cell.column + static_cast<int32_t>(cell.colSpan);
  table.cells.pop();
  return true;
}

Status KHtmlTableWriter::EnsureWriteEnd(unsigned int cp) {
  if (!env_ || !env_->inTable) return Status::kOk;
  unsigned short character = 0;
  if (env_->textPool) env_->textPool->read(cp, &character, 1);
  const bool cellEnds = depth_ == 1 ? character == text_mark::kCellEnd : innerCellEnd_;
  if (cellEnds) EndTD();
  return Status::kOk;
}

Status KHtmlTableWriter::StartTable(unsigned int paragraph) {
  if (!env_) return Status::kFailure;
  if (!tableStack_.empty() && !tableStack_.back().inCell) StartTD();
  if (depth_ == 0 && env_->subDocType == mso_word::SUBDOC_MAIN) ++env_->conversion->written.tables;
  ++depth_;
  tableStack_.emplace_back();
  style_.Clear();
  SearchCell(paragraph);
  env_->conversion->archive->BeginElement("table");
  WriteTableFormat(style_, env_->conversion->archive);
  return Status::kOk;
}

Status KHtmlTableWriter::SearchCell(unsigned int paragraph) {
  if (!CanSearch(paragraph)) return Status::kFailure;
  TABLE_CACHE& table = tableStack_.back();
  table.scan = scans_->Scan(*env_->plcfPap, paragraph, depth_, env_->sectionLeftMargin);
  table.nextHeight = table.scan->FirstRow();
  style_ = table.scan->style();
  return CollectCellFormat(table.scan, table.cells);
}

ByteView KHtmlTableWriter::SearchCellSpacing(unsigned int paragraph) {
  if (!CanSearch(paragraph)) return {};
  KDWSprm sprm;
  scans_->Walk(*env_->plcfPap, paragraph, depth_, [&](uint32_t, const TableParagraph& properties) {
    return failed(KDWSprmList(properties.sprms).FindSprm(sprm_opcode::kTCellSpacingDefault, &sprm));
  });
  return sprm.GetArgument();
}

bool KHtmlTableWriter::CanSearch(unsigned int paragraph) const {
  return env_ && env_->plcfPap && !tableStack_.empty() && depth_ > 0 && paragraph < env_->plcfPap->Count();
}

Status KHtmlTableWriter::StartTR() {
  if (!env_ || tableStack_.empty()) return Status::kFailure;
  tableStack_.back().inRow = true;
  env_->conversion->archive->BeginElement("tr");
  WriteRowHeight();
  return Status::kOk;
}

namespace {

/// Twips to pixels at 96 to the inch; both steps truncate.
int pixelsOf(int32_t twips) {
  return twips / 20 * 4 / 3;
}

}  // namespace

/// Heights are taken in order by the rows that come out: a row with nothing to show takes none.
void KHtmlTableWriter::WriteRowHeight() {
  TABLE_CACHE& table = tableStack_.back();
  if (!table.scan || table.nextHeight == table.scan->EndRow()) return;
  const int32_t height = static_cast<int16_t>(table.scan->Row(table.nextHeight++).height());
  const int32_t magnitude = height < 0 ? -height : height;
  if (magnitude > 0) env_->conversion->archive->AddAttribute("height", pixelsOf(magnitude));
}

Status KHtmlTableWriter::StartTD() {
  if (!env_ || tableStack_.empty()) return Status::kFailure;
  TABLE_CACHE& table = tableStack_.back();
  if (table.inCell) return Status::kOk;
  if (!table.inRow) StartTR();
  if (table.cells.empty()) return Status::kFailure;
  table.inCell = true;
  const CELL_FORMAT& cell = table.cells.front();
  WriteFillerCells(cell.column);
  table.nextColumn = cell.column + static_cast<int32_t>(cell.colSpan);
  env_->conversion->archive->BeginElement("td");
  WriteCellAttributes(cell, table.scan->style().cellSpacing);
  table.cells.pop();
  return Status::kOk;
}

/// Empty cells up to `column`. Within a row one too few, since there `nextColumn` is the first free one
/// itself.
void KHtmlTableWriter::WriteFillerCells(int32_t column) {
  for (int32_t gap = column - tableStack_.back().nextColumn - 1; gap > 0 && limits_->FillCell(); --gap) {
    env_->conversion->archive->BeginElement("td");
    env_->conversion->archive->EndElement("td");
  }
}

/// Cells of equal rows come out alike.
void KHtmlTableWriter::WriteCellAttributes(const CELL_FORMAT& cell, int32_t cellSpacing) {
  IWriteArchive* archive = env_->conversion->archive;
  SpelledCell wanted;
  wanted.row = cell.row;
  wanted.cell = cell.index;
  wanted.position = cell.position;
  wanted.rowSpan = cell.rowSpan;
  wanted.colSpan = cell.colSpan;
  wanted.cellSpacing = cellSpacing;
  SpelledCell& spelled = env_->conversion->spelled.Cell(wanted);
  if (!spelled.attributes.empty()) {
    archive->_Put(spelled.attributes.data(), static_cast<int>(spelled.attributes.size()));
    return;
  }
  const uint64_t start = archive->GetWrittenBytes();
  SpellCellAttributes(cell);
  WriteCellCss(cell, archive);
  spelled = std::move(wanted);
  spelled.attributes = archive->WrittenSince(start);
}

void KHtmlTableWriter::SpellCellAttributes(const CELL_FORMAT& cell) {
  IWriteArchive* archive = env_->conversion->archive;
  archive->AddAttribute("width", pixelsOf(cell.width));
  if (cell.rowSpan > 1) archive->AddAttribute("rowspan", static_cast<int>(cell.rowSpan));
  if (cell.colSpan > 1) archive->AddAttribute("colspan", static_cast<int>(cell.colSpan));
  if (!cell.tc) return;
  const unsigned alignment = cell.tc->flags0 >> 7 | (cell.tc->flags1 & 1u) << 1;
  if (alignment == 0) archive->AddAttribute("valign", "top");
  if (alignment == 2) archive->AddAttribute("valign", "bottom");
}

Status KHtmlTableWriter::EndTD() {
  if (!env_ || tableStack_.empty()) return Status::kFailure;
  if (std::exchange(tableStack_.back().inCell, false)) env_->conversion->archive->EndElement("td");
  return Status::kOk;
}

Status KHtmlTableWriter::EndTR() {
  if (!env_ || tableStack_.empty()) return Status::kFailure;
  TABLE_CACHE& table = tableStack_.back();
  table.nextColumn = -1;
  if (!table.inRow) return Status::kOk;
  if (table.inCell) EndTD();
  table.inRow = false;
  env_->conversion->archive->EndElement("tr");
  return Status::kOk;
}

Status KHtmlTableWriter::EndTable() {
  if (!env_ || tableStack_.empty()) return Status::kFailure;
  if (tableStack_.back().inRow) EndTR();
  tableStack_.pop_back();
  --depth_;
  env_->conversion->archive->EndElement("table");
  return Status::kOk;
}

}  // namespace pagerex
