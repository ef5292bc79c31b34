#include "formats/markdown/table_text.h"

#include <algorithm>

#include "base/number_text.h"

namespace pagerex {
namespace {

constexpr std::string_view kBreak = "<br>";  ///< between the paragraphs of a cell
constexpr uint32_t kMostSpan = 64;           ///< columns of a cell, more than Word has

std::string_view delimiterOf(Alignment alignment, bool isRightToLeft) {
  if (alignment == Alignment::kCentre) return ":---:";
  const bool isRight = alignment == Alignment::kEnd || (alignment == Alignment::kStart && isRightToLeft);
  return isRight ? "---:" : "---";
}

}  // namespace

void PipeTable::Begin(size_t columns) {
  lines_.clear();
  columns_ = columns;
  rows_ = 0;
}

void PipeTable::BeginRow(uint32_t columnsBefore) {
  cells_.clear();
  cells_.resize(std::min(columnsBefore, kMostSpan));
}

/// What a cell spans beside its own column is empty.
void PipeTable::BeginCell(uint32_t columns) {
  current_ = cells_.size();
  cells_.resize(current_ + std::clamp(columns, 1u, kMostSpan));
}

void PipeTable::Align(Alignment alignment, bool isRightToLeft) {
  if (current_ >= cells_.size()) return;
  Cell& cell = cells_[current_];
  if (cell.alignment.empty()) cell.alignment = delimiterOf(alignment, isRightToLeft);
}

void PipeTable::Add(std::string_view paragraph) {
  if (current_ >= cells_.size() || paragraph.empty()) return;
  std::string& text = cells_[current_].text;
  if (!text.empty()) text += kBreak;
  text += paragraph;
}

/// A row of more columns than the first has them all in its last one.
void PipeTable::EndRow() {
  if (rows_ == 0) columns_ = std::max({columns_, cells_.size(), size_t{1}});
  if (rows_ == 1) PutDelimiters(true);
  ++rows_;
  lines_ += '|';
  for (size_t i = 0; i < std::max(columns_, cells_.size()); ++i) {
    if (i < columns_) lines_ += ' ';
    if (i < cells_.size()) lines_ += cells_[i].text;
    if (i + 1 < columns_ || i + 1 >= cells_.size()) {
      lines_ += " |";
    } else {
      lines_ += ' ';
    }
  }
  lines_ += '\n';
}

void PipeTable::PutDelimiters(bool hasBody) {
  lines_ += '|';
  for (size_t i = 0; i < columns_; ++i) {
    const bool isTold = hasBody && i < cells_.size() && !cells_[i].alignment.empty();
    lines_.append(" ").append(isTold ? cells_[i].alignment : "---").append(" |");
  }
  lines_ += '\n';
}

const std::string& PipeTable::End() {
  if (rows_ == 1) PutDelimiters(false);
  return lines_;
}

void HtmlTable::BeginTable() {
  text_ += "<table>\n";
  headers_.push_back(false);
}

void HtmlTable::EndTable() {
  text_ += "</table>";
  headers_.pop_back();
  hasText_ = false;
  if (headers_.empty()) text_ += '\n';
}

void HtmlTable::BeginRow(const RowProperties& row) {
  headers_.back() = row.isHeader;
  text_ += "<tr>\n";
  if (row.columnsBefore == 0) return;
  CellProperties before;
  before.columnSpan = row.columnsBefore;
  BeginCell(before);
  EndCell();
}

void HtmlTable::BeginCell(const CellProperties& cell) {
  hasText_ = false;
  text_ += headers_.back() ? "<th" : "<td";
  if (cell.columnSpan > 1) text_.append(" colspan=\"").append(number(cell.columnSpan)).append("\"");
  if (cell.rowSpan > 1) text_.append(" rowspan=\"").append(number(cell.rowSpan)).append("\"");
  text_ += '>';
}

void HtmlTable::EndCell() {
  text_ += headers_.back() ? "</th>\n" : "</td>\n";
}

std::string& HtmlTable::BeginParagraph() {
  if (hasText_) text_ += kBreak;
  paragraph_ = text_.size();
  return text_;
}

/// One of nothing was not there.
void HtmlTable::EndParagraph() {
  if (text_.size() > paragraph_) {
    hasText_ = true;
  } else if (hasText_) {
    text_.resize(paragraph_ - kBreak.size());
  }
}

}  // namespace pagerex
