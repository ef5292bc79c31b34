#include "flow/table_styles.h"

#include <utility>

#include "flow/sprm_walk.h"
#include "flow/style_lists.h"

namespace pagerex {
namespace {

constexpr uint16_t kNormalTable = 11;
constexpr uint16_t kTableStyle = 0x563A;  ///< sprmTIstd

uint16_t tableStyleOf(ByteView sprms, uint16_t style) {
  forEachSprm(sprms, [&style](uint16_t opcode, ByteView operand) {
    if (opcode == kTableStyle) style = operand.u16(0);
  });
  return style;
}

/// Borders of the table in a style hold where the row's own list has none.
void takeAsStyle(RowDefinition& row) {
  for (size_t side = 0; side < kTableSides; ++side) {
    if ((row.setBorders & 1 << side) == 0) continue;
    row.styleCells.borders[side] = row.borders[side];
    row.borders[side] = {};
  }
  row.styleCells.setBorders |= row.setBorders;
  row.setBorders = 0;
  row.grid.count = 0;
  row.cells.clear();
}

}  // namespace

void TableStyles::Row(ByteView sprms, ByteView pieceSprms, RowDefinition& row) const {
  std::vector<CellDefinition> cells = std::move(row.cells);  // for its memory
  cells.clear();
  row = RowDefinition();
  row.cells = std::move(cells);
  uint16_t style = tableStyleOf(pieceSprms, tableStyleOf(sprms, kNormalTable));
  if (styles_.Kind(style) != StyleKind::kTable) style = kNoStyle;
  if (hasShortLists(styles_, style, &StyleTable::Tapx)) {
    for (const uint16_t istd : styles_.Chain(style)) applyTableSprms(styles_.Tapx(istd), row);
  }
  takeAsStyle(row);
  applyTableSprms(sprms, row);
  applyTableSprms(pieceSprms, row);
  row.style = style;
}

bool TableStyles::HasConditions(uint16_t istd) {
  if (istd == kNoStyle) return false;
  const auto [place, isNew] = hasConditions_.try_emplace(istd);
  if (isNew) place->second = hasConditions(styles_, istd);
  return place->second;
}

void TableStyles::Cell(const RowDefinition& row, const CellPosition& position, uint16_t conditions,
                       CellProperties& cell) {
  StyleCells conditional;
  if (row.style == kNoStyle) conditions = 0;
  for (const uint16_t condition : kConditionsInOrder) {
    if ((conditions & condition) == 0) continue;
    addConditionalPart(ConditionalPart(row.style, condition), condition, row, position, conditional);
  }
  resolveCell(row, position, conditional, cell);
}

const StyleCells& TableStyles::ConditionalPart(uint16_t istd, uint16_t condition) {
  const auto [place, isNew] = parts_.try_emplace(uint32_t{istd} << 16 | condition);
  if (isNew && hasShortLists(styles_, istd, &StyleTable::Tapx)) {
    std::vector<ByteView> lists;
    addConditionalLists(styles_, istd, &StyleTable::Tapx, kTableCondition, condition, lists);
    RowDefinition part;
    for (const ByteView sprms : lists) applyTableSprms(sprms, part);
    takeAsStyle(part);
    place->second = part.styleCells;
  }
  return place->second;
}

}  // namespace pagerex
