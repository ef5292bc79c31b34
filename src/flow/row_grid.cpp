#include "flow/row_grid.h"

#include <algorithm>
#include <limits>

#include "flow/sprm_walk.h"

namespace pagerex {
namespace {

constexpr size_t kCellRecordSize = 20;  ///< TC
constexpr uint8_t kRightMerges = kMergeFirst | kMergeContinued;
constexpr uint8_t kDownMerges = kMergeDownFirst | kMergeDownContinued;

int16_t twips(int value) {
  return static_cast<int16_t>(
      std::clamp<int>(value, std::numeric_limits<int16_t>::min(), std::numeric_limits<int16_t>::max()));
}

/// By the two bits of a cell's record: 0 not merged, 1 continued, 3 first.
uint8_t downMergeOf(unsigned bits) {
  constexpr uint8_t kMerges[] = {0, kMergeDownContinued, 0, kMergeDownFirst};
  return kMerges[bits & 3];
}

/// The two bits of merged cells mean 2 or 3 for the first one and 1 for those that continue it. Some writers
/// mean 1 for the first and 2 for the others; with them a 1 has nothing that it could continue.
class RightMerges {
 public:
  uint8_t Next(unsigned bits) {
    if (bits == 0) {
      open_ = kNothing;
      return 0;
    }
    const bool continues = (bits == 1 && open_ == kUsual) || (bits == 2 && open_ == kOther);
    if (continues) return kMergeContinued;
    open_ = bits == 1 ? kOther : kUsual;
    return kMergeFirst;
  }

 private:
  enum : uint8_t { kNothing, kUsual, kOther } open_ = kNothing;
};

/// The definition: the number of cells, their edges, then the cells' records, of which the last ones may be
/// missing.
bool defineGrid(ByteView definition, RowGrid& grid) {
  const size_t count = definition.u8(0);
  if (count == 0 || count > kMostCells || !definition.contains(1, 2 * (count + 1))) return false;
  grid.count = static_cast<uint8_t>(count);
  grid.edges[0] = definition.i16(1);
  for (size_t i = 1; i <= count; ++i) {
    grid.edges[i] = std::max(grid.edges[i - 1], definition.i16(1 + 2 * i));
  }
  const ByteView records = cellRecordsOf(definition, count);
  RightMerges right;
  for (size_t i = 0; i < count; ++i) {
    const unsigned flags = records.u16(kCellRecordSize * i);
    grid.merges[i] = right.Next(flags & 3) | downMergeOf(flags >> 5);
  }
  return true;
}

void moveEdges(size_t from, int distance, RowGrid& grid) {
  for (size_t i = from; i <= grid.count; ++i) grid.edges[i] = twips(grid.edges[i] + distance);
}

void setColumnWidths(size_t first, size_t limit, int width, RowGrid& grid) {
  if (first >= limit) return;
  int edgeBefore = grid.edges[first];
  for (size_t i = first; i < grid.count; ++i) {
    const int widthBefore = grid.edges[i + 1] - edgeBefore;
    edgeBefore = grid.edges[i + 1];
    grid.edges[i + 1] = twips(grid.edges[i] + (i < limit ? width : widthBefore));
  }
}

void mergeCells(size_t first, size_t limit, uint8_t firstMerge, uint8_t otherMerge, RowGrid& grid) {
  for (size_t i = first; i < limit; ++i) {
    grid.merges[i] =
        static_cast<uint8_t>((grid.merges[i] & ~kRightMerges) | (i == first ? firstMerge : otherMerge));
  }
}

GridChange deleteCells(size_t first, size_t limit, RowGrid& grid) {
  if (first >= limit) return {};
  const int width = grid.edges[limit] - grid.edges[first];
  std::copy(grid.edges + limit + 1, grid.edges + grid.count + 1, grid.edges + first + 1);
  std::copy(grid.merges + limit, grid.merges + grid.count, grid.merges + first);
  grid.count = static_cast<uint8_t>(grid.count - (limit - first));
  moveEdges(first + 1, -width, grid);
  return {GridChange::kDeleted, first, limit - first};
}

/// A place behind the last cell gets cells of that width in front of it, too.
GridChange insertCells(size_t first, size_t count, int width, RowGrid& grid) {
  if (first > grid.count) {
    count += first - grid.count;
    first = grid.count;
  }
  count = std::min(count, kMostCells - grid.count);
  if (count == 0) return {};
  std::copy_backward(grid.edges + first + 1, grid.edges + grid.count + 1,
                     grid.edges + grid.count + count + 1);
  std::copy_backward(grid.merges + first, grid.merges + grid.count, grid.merges + grid.count + count);
  grid.count = static_cast<uint8_t>(grid.count + count);
  for (size_t i = first; i < first + count; ++i) {
    grid.edges[i + 1] = twips(grid.edges[i] + width);
    grid.merges[i] = 0;
  }
  moveEdges(first + count + 1, static_cast<int>(count) * width, grid);
  return {GridChange::kInserted, first, count};
}

void mergeDown(size_t cell, uint8_t merge, RowGrid& grid) {
  if (cell >= grid.count) return;
  grid.merges[cell] = static_cast<uint8_t>((grid.merges[cell] & ~kDownMerges) | downMergeOf(merge));
}

}  // namespace

ByteView cellRecordsOf(ByteView definition, size_t count) {
  return definition.part(1 + 2 * (count + 1));
}

GridChange applyToGrid(uint16_t opcode, ByteView operand, RowGrid& grid) {
  const size_t first = operand.u8(0);
  const size_t limit = std::min(operand.u8(1), grid.count);
  switch (opcode) {
    case 0xD608:  // sprmTDefTable
      if (!defineGrid(operand, grid)) return {};
      return {GridChange::kDefined, 0, grid.count};
    case 0x7621:  // sprmTInsert
      return insertCells(first, operand.u8(1), operand.i16(2), grid);
    case 0x5622:  // sprmTDelete
      return deleteCells(first, limit, grid);
    case 0x7623:  // sprmTDxaCol
      setColumnWidths(first, limit, std::max<int>(operand.i16(2), 0), grid);
      return {};
    case 0x5624:  // sprmTMerge
      mergeCells(first, limit, kMergeFirst, kMergeContinued, grid);
      return {};
    case 0x5625:  // sprmTSplit
      mergeCells(first, limit, 0, 0, grid);
      return {};
    case 0xD62B:  // sprmTVertMerge
      mergeDown(first, operand.u8(1), grid);
      return {};
    default:
      return {};
  }
}

bool rowGridOf(ByteView sprms, RowGrid& grid) {
  grid.count = 0;
  grid.edges[0] = 0;
  forEachSprm(sprms, [&grid](uint16_t opcode, ByteView operand) { applyToGrid(opcode, operand, grid); });
  return grid.count > 0;
}

}  // namespace pagerex
