#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8_output.h"

namespace pagerex {

/// Lines of text that fit a number of columns. A line feed in the text ends a line.
class WrappedText {
 public:
  /// `out` is not owned.
  WrappedText(Utf8Output& out, int width) : out_(out), width_(width) {}

  void Put(std::u16string_view text) { text_ += text; }

  /// Begins the paragraph further right.
  void Indent(int columns);
  /// Lines behind the first begin below what comes now.
  void Hang();
  void EndParagraph();

  /// A table has no paragraphs, and is laid out when it ends.
  void BeginTable();
  void BeginCell(uint32_t columns);
  void EndRow();
  void EndTable();

 private:
  struct Cell {
    size_t begin;  ///< in the text; its end is where the next one begins
    uint32_t row;
    uint32_t column, columns;
  };

  std::u16string_view TextOf(size_t cell) const;
  std::vector<int> ColumnWidths() const;
  void PutRow(size_t first, size_t end, const std::vector<int>& widths);
  void PutRowAsParagraph(size_t first, size_t end);
  void PutLine(std::u16string_view line);
  void PutSpaces(int count);

  Utf8Output& out_;
  const int width_;
  std::u16string text_;  ///< of the paragraph, or of the table
  int indent_ = 0, hang_ = 0;
  std::vector<Cell> cells_;
  uint32_t row_ = 0;
};

}  // namespace pagerex
