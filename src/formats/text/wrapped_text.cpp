#include "formats/text/wrapped_text.h"

#include <algorithm>

#include "formats/text/display_width.h"

namespace pagerex {
namespace {

constexpr int kGap = 2;  ///< between the columns of a table
constexpr int kLeastColumn = 3;
constexpr uint32_t kMostColumns = 256;  ///< what lies right of them shares the last one

bool isBlank(char32_t code) {
  return code == ' ' || code == '\t';
}

int columnsOf(char32_t code) {
  return isNoText(code) || code == 0xAD ? 0 : displayWidth(code);
}

int widthOf(std::u16string_view text) {
  int width = 0;
  for (size_t i = 0; i < text.size();) {
    const CharacterAt next = characterAt(text.data() + i, text.size() - i);
    width += columnsOf(next.code);
    i += next.units;
  }
  return width;
}

/// Takes a line off the front of a text: up to a line feed, or as many words as fit, or as much of one word.
std::u16string_view takeLine(std::u16string_view& text, int width) {
  size_t end = 0, next = 0;  // where the line can be broken last
  int used = 0;
  bool behindBlank = false;
  for (size_t i = 0; i < text.size();) {
    const CharacterAt character = characterAt(text.data() + i, text.size() - i);
    const size_t behind = i + character.units;
    const int columns = columnsOf(character.code);
    if (character.code == '\n') {
      end = i;
      next = behind;
      break;
    }
    if (isBlank(character.code)) {
      if (!behindBlank) end = i;
      next = behind;
    } else if (used + columns > width && i > 0) {
      if (next == 0) end = next = i;
      break;
    }
    used += columns;
    behindBlank = isBlank(character.code);
    // Wide characters need no blanks between them.
    if (columns == 2) end = next = behind;
    i = behind;
    if (i == text.size()) {
      end = behindBlank ? end : i;
      next = i;
    }
  }
  const std::u16string_view line = text.substr(0, end);
  text.remove_prefix(next);
  return line;
}

int widestLineOf(std::u16string_view text, int most) {
  int widest = 0;
  while (!text.empty()) widest = std::max(widest, widthOf(takeLine(text, most)));
  return widest;
}

}  // namespace

void WrappedText::Indent(int columns) {
  indent_ = hang_ = std::min(columns, width_ / 3);
}

void WrappedText::Hang() {
  hang_ = std::min(indent_ + widthOf(text_), width_ / 2);
}

void WrappedText::EndParagraph() {
  std::u16string_view rest = text_;
  PutSpaces(rest.empty() ? 0 : indent_);
  PutLine(takeLine(rest, width_ - indent_));
  while (!rest.empty()) {
    PutSpaces(hang_);
    PutLine(takeLine(rest, width_ - hang_));
  }
  text_.clear();
  indent_ = hang_ = 0;
}

void WrappedText::BeginTable() {
  if (!text_.empty()) EndParagraph();
  cells_.clear();
  row_ = 0;
}

void WrappedText::BeginCell(uint32_t columns) {
  uint32_t column = 0;
  if (!cells_.empty() && cells_.back().row == row_) column = cells_.back().column + cells_.back().columns;
  column = std::min(column, kMostColumns - 1);
  cells_.push_back({text_.size(), row_, column, std::clamp(columns, 1u, kMostColumns - column)});
}

void WrappedText::EndRow() {
  ++row_;
}

void WrappedText::EndTable() {
  const std::vector<int> widths = ColumnWidths();
  for (size_t first = 0; first < cells_.size();) {
    size_t end = first;
    while (end < cells_.size() && cells_[end].row == cells_[first].row) ++end;
    if (widths.empty()) {
      PutRowAsParagraph(first, end);
    } else {
      PutRow(first, end, widths);
    }
    first = end;
  }
  text_.clear();
  cells_.clear();
}

std::u16string_view WrappedText::TextOf(size_t cell) const {
  const size_t end = cell + 1 < cells_.size() ? cells_[cell + 1].begin : text_.size();
  return std::u16string_view(text_).substr(cells_[cell].begin, end - cells_[cell].begin);
}

/// What the text wants where that fits; else the narrow columns get it, and the others share what is left.
/// Empty when there are none, or too many.
std::vector<int> WrappedText::ColumnWidths() const {
  std::vector<int> widths;
  for (size_t i = 0; i < cells_.size(); ++i) {
    const Cell& cell = cells_[i];
    if (widths.size() < cell.column + cell.columns) widths.resize(cell.column + cell.columns, 1);
    if (cell.columns == 1) {
      widths[cell.column] = std::max(widths[cell.column], widestLineOf(TextOf(i), width_));
    }
  }
  const int count = static_cast<int>(widths.size());
  int left = width_ - kGap * (count - 1), sharing = count;
  if (count == 0 || left < kLeastColumn * count) return {};  // a damaged table may have no cells
  std::vector<int> sorted = widths;
  std::sort(sorted.begin(), sorted.end());
  for (const int wanted : sorted) {
    if (wanted > left / sharing) break;
    left -= wanted;
    if (--sharing == 0) return widths;
  }
  const int share = left / sharing;
  for (int& width : widths) width = std::min(width, share);
  return widths;
}

void WrappedText::PutRow(size_t first, size_t end, const std::vector<int>& widths) {
  std::vector<std::u16string_view> rest;
  for (size_t i = first; i < end; ++i) rest.push_back(TextOf(i));
  bool isMore = true;
  while (isMore) {
    isMore = false;
    int owed = 0;
    for (size_t i = first; i < end; ++i) {
      const Cell& cell = cells_[i];
      int width = kGap * static_cast<int>(cell.columns - 1);
      for (uint32_t c = 0; c < cell.columns; ++c) width += widths[cell.column + c];
      std::u16string_view& text = rest[i - first];
      const std::u16string_view line = takeLine(text, width);
      if (!line.empty()) {
        PutSpaces(owed);
        out_.Put(line, Utf8Filter::kControlsAndSoftHyphens);
        owed = 0;
      }
      owed += std::max(width - widthOf(line), 0) + kGap;
      isMore |= !text.empty();
    }
    out_.Put('\n');
  }
}

void WrappedText::PutRowAsParagraph(size_t first, size_t end) {
  for (size_t i = first; i < end; ++i) {
    std::u16string_view rest = TextOf(i);
    while (!rest.empty()) PutLine(takeLine(rest, width_));
  }
}

void WrappedText::PutLine(std::u16string_view line) {
  out_.Put(line, Utf8Filter::kControlsAndSoftHyphens);
  out_.Put('\n');
}

void WrappedText::PutSpaces(int count) {
  constexpr std::string_view kSpaces = "                                ";
  for (; count > 0; count -= static_cast<int>(kSpaces.size())) {
    out_.Put(kSpaces.substr(0, std::min(kSpaces.size(), static_cast<size_t>(count))));
  }
}

}  // namespace pagerex
