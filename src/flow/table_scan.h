#pragma once

#include <cstdint>
#include <vector>

#include "flow/table_sprms.h"
#include "flow/walk_document.h"

namespace pagerex {

/// A cell of a row as the text has it: where it stands in the grid of the whole table.
struct ScannedCell {
  uint16_t column = 0;
  uint16_t columnSpan = 1;
  uint16_t rowSpan = 1;  ///< 0 for one that belongs to the cell above
  uint8_t merges = 0;    ///< CellMerge
  bool isMergedLeft = false;
};

/// Where a table stands that text flows around. Rows of different ones are different tables.
struct TableFloat {
  uint8_t anchors = 0;
  int16_t left = 0, top = 0;

  friend bool operator==(const TableFloat&, const TableFloat&) = default;
};

/// A kind of rows: those whose marks have equal lists.
struct RowKind {
  std::vector<uint8_t> sprms;
  TableFloat floats;
  uint32_t shape = UINT32_MAX;
  bool isHeader = false;
};

struct ScannedRow {
  static constexpr uint32_t kNoKind = UINT32_MAX;

  uint32_t start = 0;
  uint32_t end = 0;        ///< behind the mark of its end
  uint32_t firstCell = 0;  ///< in TableScan::cells
  uint16_t cellCount = 0;
  bool hasDefinition = false;  ///< a mark ends it
  uint32_t kind = kNoKind;     ///< in TableScan::kinds, unless they became too many
};

/// A table looked through before it is told: its rows, its grid of columns, and which cells are merged. Each
/// row has the cells that its text has, whatever its definition says.
class TableScan {
 public:
  TableScan(WalkDocument& document, unsigned depth) : document_(document), depth_(depth) {}
  TableScan(const TableScan&) = delete;
  TableScan& operator=(const TableScan&) = delete;
  ~TableScan();

  /// Reads the rows from `start` on, up to `limit`, or where the text is no more that deep.
  void Read(uint32_t start, uint32_t limit);

  uint32_t end() const { return end_; }
  const std::vector<ScannedRow>& rows() const { return rows_; }
  const std::vector<RowKind>& kinds() const { return kinds_; }
  const ScannedCell* CellsOf(const ScannedRow& row) const { return cells_.data() + row.firstCell; }
  size_t ColumnCount() const { return edges_.empty() ? 0 : edges_.size() - 1; }
  TableProperties Properties(const RowDefinition& firstRow) const;

 private:
  bool EndRow(const FoundParagraph& mark);
  void TakeRowBack();
  RowKind KindOf(const FoundParagraph& mark);
  uint32_t FindKind(const FoundParagraph& mark);
  void CloseRow(uint32_t shape);
  FoundParagraph Next(uint32_t limit);
  void MakeColumns();
  std::vector<ScannedCell> CellsOfShape(const RowGrid& shape) const;
  void PlaceCells();
  void SpanRows();
  uint16_t ColumnAt(int32_t edge) const;

  static constexpr size_t kMostKinds = 32;
  static constexpr size_t kMostKindBytes = 1 << 15;

  void Account();

  WalkDocument& document_;
  unsigned depth_;
  uint64_t accounted_ = 0;  ///< bytes of rows and cells, taken from what the document may have
  uint32_t end_ = 0;
  std::vector<ScannedRow> rows_;
  std::vector<ScannedCell> cells_;
  std::vector<RowGrid> shapes_;       ///< the different ones
  std::vector<uint32_t> shapeOfRow_;  ///< index in `shapes_`; UINT32_MAX for none
  std::vector<int32_t> edges_;        ///< of the columns, ascending
  uint16_t cellsOfRow_ = 0;
  uint16_t paragraphsOfCell_ = 0;
  size_t headerRows_ = 0;
  TableFloat floats_;
  std::vector<RowKind> kinds_;
  RowKind unkept_;
  size_t kindBytes_ = 0;
  uint32_t lastKind_ = 0;
  bool hasSingleParagraphs_ = true;
  bool hadSingleParagraphs_ = true;  ///< without the row at hand
  bool hasMerged_ = false;
  bool isRegular_ = true;
};

}  // namespace pagerex
