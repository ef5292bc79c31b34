#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/properties.h"

namespace pagerex {

/// The lines of a pipe table. The first row is its head, and tells how many columns there are.
class PipeTable {
 public:
  /// `columns` are the fewest.
  void Begin(size_t columns);
  /// Columns in front of its first cell are empty ones.
  void BeginRow(uint32_t columnsBefore);
  void BeginCell(uint32_t columns);
  /// The paragraph that begins is aligned so; the first one of a cell counts.
  void Align(Alignment alignment, bool isRightToLeft);
  /// Appends a paragraph that is spelled for a cell.
  void Add(std::string_view paragraph);
  void EndRow();
  /// All lines; empty for a table without rows.
  const std::string& End();

 private:
  struct Cell {
    std::string text;
    std::string_view alignment;  ///< of the line below the head; empty where not told
  };

  void PutDelimiters(bool hasBody);

  std::vector<Cell> cells_;  ///< of the row
  std::string lines_;
  size_t current_ = 0;  ///< the cell that is open
  size_t columns_ = 0;
  uint32_t rows_ = 0;
};

/// A table as HTML, without blank lines. Tables may be nested.
class HtmlTable {
 public:
  void BeginTable();
  void EndTable();
  void BeginRow(const RowProperties& row);
  void EndRow() { text_ += "</tr>\n"; }
  void BeginCell(const CellProperties& cell);
  void EndCell();
  /// What is appended to the text up to `EndParagraph` is a paragraph, spelled in HTML.
  std::string& BeginParagraph();
  void EndParagraph();

  const std::string& text() const { return text_; }
  void Clear() { text_.clear(); }

 private:
  std::string text_;
  std::vector<bool> headers_;  ///< of each open table, whether its row is a header
  size_t paragraph_ = 0;       ///< where the one that is open begins
  bool hasText_ = false;       ///< the cell, behind the last table in it
};

}  // namespace pagerex
