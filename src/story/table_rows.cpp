#include "story/table_rows.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "wordreader/sprm_opcodes.h"

namespace pagerex {

uint32_t KRowDefinition::CellRecordCount() const {
  const size_t offset = CellRecordsOffset();
  if (operand_.size() <= offset) return 0;
  return static_cast<uint32_t>((operand_.size() - offset) / sizeof(mso_word::TC));
}

const mso_word::TC* KRowDefinition::CellRecord(uint32_t cell) const {
  return operand_.record<mso_word::TC>(CellRecordsOffset() + size_t{cell} * sizeof(mso_word::TC));
}

void TABLE_ROW::Clear() {
  definition = {};
  borders.reset();
  bordersEx.reset();
  padding = {};
  shadings = {};
  shadingsEx = {};
  height = 0;
}

namespace {

/// The sprms of which the first one in a row's list counts.
enum RowSprm : uint16_t {
  sprmTPc = 0x360D,
  sprmTJc90 = 0x5400,
  sprmTJc = 0x548A,
  sprmTDyaRowHeight = 0x9407,
  sprmTDxaAbs = 0x940E,
  sprmTDxaFromText = 0x9410,
  sprmTDyaFromText = 0x9411,
  sprmTDxaFromTextRight = 0x941E,
  sprmTDyaFromTextBottom = 0x941F,
  sprmTDxaLeft = 0x9601,
  sprmTDxaGapHalf = 0x9602,
  sprmTTableBorders80 = 0xD605,
  sprmTDefTable = sprm_opcode::kTDefTable,
  sprmTDefTableShd80 = 0xD609,
  sprmTDefTableShd = 0xD612,
  sprmTTableBorders = 0xD613,
  sprmTCellSpacingDefault = sprm_opcode::kTCellSpacingDefault,
  sprmTWidthIndent = 0xF661,
};

/// Of which every one counts.
constexpr uint16_t sprmTCellPaddingDefault = 0xD634;

constexpr uint16_t kRowSprms[] = {
    sprmTPc,
    sprmTJc90,
    sprmTJc,
    sprmTDyaRowHeight,
    sprmTDxaAbs,
    sprmTDxaFromText,
    sprmTDyaFromText,
    sprmTDxaFromTextRight,
    sprmTDyaFromTextBottom,
    sprmTDxaLeft,
    sprmTDxaGapHalf,
    sprmTTableBorders80,
    sprmTDefTable,
    sprmTDefTableShd80,
    sprmTDefTableShd,
    sprmTTableBorders,
    sprmTCellSpacingDefault,
    sprmTWidthIndent,
};
static_assert(std::is_sorted(std::begin(kRowSprms), std::end(kRowSprms)));

/// The first sprm of each kind of a row's list, found in one walk.
class RowSprms {
 public:
  void Note(const KDWSprm& sprm) {
    const unsigned i = IndexOf(sprm.GetOpcode());
    if (i == kCount || found_[i]) return;
    found_[i] = true;
    operands_[i] = sprm.GetArgument();
  }
  bool Has(RowSprm opcode) const { return found_[IndexOf(opcode)]; }
  /// Empty if there is none; as all bytes that are missing, it reads as zeros.
  ByteView operator[](RowSprm opcode) const { return operands_[IndexOf(opcode)]; }

 private:
  static constexpr unsigned kCount = std::size(kRowSprms);
  static constexpr unsigned IndexOf(uint16_t opcode) {
    const auto* found = std::lower_bound(std::begin(kRowSprms), std::end(kRowSprms), opcode);
    return found != std::end(kRowSprms) && *found == opcode
               ? static_cast<unsigned>(found - std::begin(kRowSprms))
               : kCount;
  }

  std::array<bool, kCount> found_{};
  std::array<ByteView, kCount> operands_;
};

/// Lays the padding over that of `row`, and sorts the rest into the result.
RowSprms sortSprms(const KDWSprmList& list, TABLE_ROW& row) {
  RowSprms sprms;
  KDWSprm sprm;
  KDWSprmList::Enumerator enumerator(list);
  while (!failed(enumerator.Next(&sprm))) {
    if (sprm.GetOpcode() == sprmTCellPaddingDefault) {
      MergedPadding(row.padding, sprm);
    } else {
      sprms.Note(sprm);
    }
  }
  return sprms;
}

void fillRow(const RowSprms& sprms, TABLE_ROW& row) {
  row.definition = KRowDefinition(sprms[sprmTDefTable]);
  if (sprms.Has(sprmTTableBorders)) {
    row.bordersEx = sprms[sprmTTableBorders];
  } else if (sprms.Has(sprmTTableBorders80)) {
    row.borders = sprms[sprmTTableBorders80];
  }
  row.height = sprms[sprmTDyaRowHeight].u16(0);
  if (sprms.Has(sprmTDefTableShd)) {
    row.shadingsEx = sprms[sprmTDefTableShd];
  } else {
    row.shadings = sprms[sprmTDefTableShd80];
  }
}

/// Where the table stands, if the row tells it; later rules replace earlier ones.
bool readIndent(const RowSprms& sprms, const PADDING& padding, int32_t spacing, int32_t leftMargin,
                int32_t& indent) {
  const bool paddingCounts = padding.unitLeft == UNIT_TWIPS || padding.unitLeft == 0;
  const int32_t inset = 2 * spacing + (paddingCounts ? padding.left : 0);
  bool found = false;
  const ByteView widthIndent = sprms[sprmTWidthIndent];
  if (widthIndent.u8(0) == UNIT_TWIPS) {
    indent = widthIndent.i16(1) - spacing;
    found = true;
  }
  if (sprms.Has(sprmTPc)) {
    constexpr uint8_t kFromPage = 0x80;
    constexpr uint8_t kFromMargin = 0x40;
    const uint8_t anchor = sprms[sprmTPc].u8(0) & (kFromPage | kFromMargin);
    if ((anchor == kFromPage || anchor == kFromMargin) && sprms.Has(sprmTDxaAbs)) {
      indent = sprms[sprmTDxaAbs].i16(0) - inset - (anchor == kFromPage ? leftMargin : 0);
      found = true;
    }
  } else if (sprms.Has(sprmTDxaLeft) && sprms.Has(sprmTDxaGapHalf)) {
    indent = sprms[sprmTDxaLeft].i16(0) - inset;  // the gap has to be there, its value takes no part
    found = true;
  }
  return found;
}

unsigned mergeStyle(const RowSprms& sprms, const TABLE_ROW& row, int32_t leftMargin, TableStyle& style) {
  unsigned decided = 1u << STYLE_BORDERS;
  const auto take = [&](TableStyleWord word, int32_t& field, RowSprm opcode, size_t offset = 0) {
    if (!sprms.Has(opcode)) return;
    field = sprms[opcode].i16(offset);
    decided |= 1u << word;
  };
  take(STYLE_JUSTIFICATION, style.justification, sprms.Has(sprmTJc) ? sprmTJc : sprmTJc90);
  take(STYLE_FROM_TEXT_LEFT, style.fromTextLeft, sprmTDxaFromText);
  take(STYLE_FROM_TEXT_RIGHT, style.fromTextRight, sprmTDxaFromTextRight);
  take(STYLE_FROM_TEXT_TOP, style.fromTextTop, sprmTDyaFromText);
  take(STYLE_FROM_TEXT_BOTTOM, style.fromTextBottom, sprmTDyaFromTextBottom);
  take(STYLE_CELL_SPACING, style.cellSpacing, sprmTCellSpacingDefault, 4);
  style.bordersEx = row.bordersEx;
  style.borders = row.borders;
  if (readIndent(sprms, row.padding, style.cellSpacing, leftMargin, style.indent)) {
    decided |= 1u << STYLE_INDENT;
  }
  return decided;
}

}  // namespace

unsigned ReadTableRow(const KDWSprmList& sprms, int32_t leftMargin, TABLE_ROW& row, TableStyle& style) {
  row.Clear();
  const RowSprms sorted = sortSprms(sprms, row);
  fillRow(sorted, row);
  return mergeStyle(sorted, row, leftMargin, style);
}

}  // namespace pagerex
