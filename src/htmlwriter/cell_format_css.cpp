#include "htmlwriter/cell_format_css.h"
#include "story/colour.h"

#include <cstring>

#include "base/number_text.h"
#include "htmlwriter/cell_format.h"
#include "htmlwriter/css_props.h"

namespace pagerex {

namespace {

/// "%0.2f pt" of `twips` / `twipsPerUnit`, which divides 100. The other lengths of a table have no blank.
void writeSpacedLength(IWriteArchive* archive, const char* property, int32_t twips, int twipsPerUnit = 20) {
  FixedText<32> text;
  const auto magnitude = static_cast<unsigned>(twips < 0 ? -int64_t{twips} : twips);
  const auto divisor = static_cast<unsigned>(twipsPerUnit);
  const unsigned hundredths = magnitude % divisor * (100 / divisor);
  if (twips < 0) text.append('-');
  text.appendUnsigned(magnitude / divisor).append('.');
  text.append(static_cast<char>('0' + hundredths / 10)).append(static_cast<char>('0' + hundredths % 10));
  archive->AddCssProp(property, text.append(" pt").c_str());
}

const char* alignmentOf(const TableStyle& style) {
  const bool standsFromText =
      style.fromTextLeft || style.fromTextRight || style.fromTextTop || style.fromTextBottom;
  switch (style.justification) {
    case 0:
      return standsFromText ? "left" : nullptr;
    case 1:
      return standsFromText ? "left" : "center";
    case 2:
      return "right";
    default:
      return nullptr;
  }
}

void writeTableBorders(const TableStyle& style, IWriteArchive* archive);

}  // namespace

void WriteTableFormat(const TableStyle& style, IWriteArchive* archive) {
  const int32_t spacing = style.cellSpacing;
  const int32_t spacingPixels = spacing * 2 / 15;
  archive->AddAttribute("cellspacing", static_cast<int>(spacingPixels));
  archive->AddAttribute("cellpadding", 0);
  if (const char* alignment = alignmentOf(style)) archive->AddAttribute("align", alignment);

  archive->StartCssStyle();
  archive->AddCssProp("word-wrap", "break-word");
  archive->AddCssProp("table-layout", "fixed");
  if (spacingPixels == 0) archive->AddCssProp("border-collapse", "collapse");
  archive->AddCssProp("mso-table-layout-alt", "fixed");
  const auto writeUnlessZero = [&](const char* property, int32_t twips) {
    if (twips) writeSpacedLength(archive, property, twips);
  };
  writeUnlessZero("margin-left", style.indent);
  writeUnlessZero("mso-table-lspace", style.fromTextLeft);
  writeUnlessZero("mso-table-rspace", style.fromTextRight);
  writeUnlessZero("mso-table-tspace", style.fromTextTop);
  writeUnlessZero("mso-table-bspace", style.fromTextBottom);
  archive->AddCssProp("position", "relative");
  if (spacing) {
    writeSpacedLength(archive, "mso-cellspacing", spacing, 10);
    writeTableBorders(style, archive);
  }
  archive->EndCssStyle();
}

namespace {

constexpr BRCTYPE kDoubleBorder = 3;

template <class Border>
Border borderAt(ByteView borders, unsigned place) {
  return borders.copyOf<Border>(place * sizeof(Border));
}

template <class Border>
void writeBorder(IWriteArchive* archive, const char* property, const Border& border) {
  char text[kBorderTextSize];
  if (!failed(GetBorderStr(&border, text, sizeof text))) archive->AddCssProp(property, text);
}

template <class Border>
void writeEqualBorders(IWriteArchive* archive, const Border& border) {
  const bool isDouble = border.type == kDoubleBorder;
  if (isDouble) archive->AddCssProp("border", "none");
  writeBorder(archive, isDouble ? "mso-border-alt" : "border", border);
}

template <class Border>
void writeUnequalBorders(IWriteArchive* archive, const Border (&borders)[4]) {
  static constexpr const char* kProperties[] = {"mso-border-top-alt", "mso-border-left-alt",
                                                "mso-border-bottom-alt", "mso-border-right-alt"};
  archive->AddCssProp("border", "none");
  for (unsigned side = 0; side < 4; ++side) {
    if (borders[side].width) writeBorder(archive, kProperties[side], borders[side]);
  }
}

/// `widthCounts`: equal borders of no width are left out.
template <class Border>
void writeBordersOf(IWriteArchive* archive, ByteView bytes, bool widthCounts) {
  const Border borders[4] = {borderAt<Border>(bytes, TABLE_TOP), borderAt<Border>(bytes, TABLE_LEFT),
                             borderAt<Border>(bytes, TABLE_BOTTOM), borderAt<Border>(bytes, TABLE_RIGHT)};
  for (unsigned side = 1; side < 4; ++side) {
    if (std::memcmp(&borders[0], &borders[side], sizeof(Border)) != 0) {
      writeUnequalBorders(archive, borders);
      return;
    }
  }
  if (borders[0].width || !widthCounts) writeEqualBorders(archive, borders[0]);
}

void writeTableBorders(const TableStyle& style, IWriteArchive* archive) {
  if (style.bordersEx) {
    writeBordersOf<mso_word::BRCEX>(archive, *style.bordersEx, true);
  } else if (style.borders) {
    writeBordersOf<mso_word::BRC>(archive, *style.borders, false);
  }
}

/// A side of a cell: which border of the table it takes at the table's rim and which inside.
struct CellSide {
  const char* property;
  mso_word::BRC mso_word::TC::*own;
  uint32_t atRim;  ///< CellPosition
  TableBorder rim;
  TableBorder inside;
};

constexpr CellSide kCellSides[] = {
    {"border-top", &mso_word::TC::top, CELL_IN_FIRST_ROW, TABLE_TOP, TABLE_INSIDE_HORIZONTAL},
    {"border-left", &mso_word::TC::left, CELL_FIRST_IN_ROW, TABLE_LEFT, TABLE_INSIDE_VERTICAL},
    {"border-bottom", &mso_word::TC::bottom, CELL_IN_LAST_ROW, TABLE_BOTTOM, TABLE_INSIDE_HORIZONTAL},
    {"border-right", &mso_word::TC::right, CELL_LAST_IN_ROW, TABLE_RIGHT, TABLE_INSIDE_VERTICAL},
};

bool isSet(const mso_word::BRC& border) {
  static constexpr mso_word::BRC kNotSet{};
  return std::memcmp(&border, &kNotSet, sizeof border) != 0;
}

bool isSet(const mso_word::BRCEX& border) {
  return border.width || border.type || border.space || border.reserved;
}

/// The first border that is set counts: the cell's own, then those of the row. One that says "none" counts
/// too.
void writeCellBorder(const CELL_FORMAT& cell, const CellSide& side, IWriteArchive* archive) {
  if (cell.tc && isSet(cell.tc->*side.own)) {
    writeBorder(archive, side.property, cell.tc->*side.own);
    return;
  }
  const bool atRim = (cell.position & side.atRim) && !cell.hasSpacing;
  const TableBorder place = atRim ? side.rim : side.inside;
  if (cell.bordersEx) {
    const auto border = borderAt<mso_word::BRCEX>(*cell.bordersEx, place);
    if (isSet(border)) {
      writeBorder(archive, side.property, border);
      return;
    }
  }
  if (cell.borders) {
    const auto border = borderAt<mso_word::BRC>(*cell.borders, place);
    if (isSet(border)) writeBorder(archive, side.property, border);
  }
}

/// "#%02x%02x%02x" of a Word colour.
void writeColour(IWriteArchive* archive, const char* property, uint32_t colour) {
  static constexpr char kDigits[] = "0123456789abcdef";
  char text[] = "#000000";
  for (unsigned digit = 0; digit < 6; ++digit) {
    const unsigned channel = colour >> digit / 2 * 8;
    text[1 + digit] = kDigits[(digit % 2 ? channel : channel >> 4) & 15];
  }
  archive->AddCssProp(property, text);
}

void writeBackground(const CELL_FORMAT& cell, IWriteArchive* archive) {
  if (cell.shadingEx) {
    if (cell.shadingEx->background == mso_word::kAutomaticColour) return;
    writeColour(archive, "background", GetBGColor(cell.shadingEx));
    if (cell.shadingEx->foreground != mso_word::kAutomaticColour) {
      writeColour(archive, "mso-shading", cell.shadingEx->foreground);
    }
  } else if (cell.shading) {
    const unsigned ico = cell.shading->value >> 5 & 31;
    if (ico) writeColour(archive, "background", Ico2RGB(ico));
  }
}

}  // namespace

void WriteCellCss(const CELL_FORMAT& cell, IWriteArchive* archive) {
  archive->StartCssStyle();
  for (const CellSide& side : kCellSides) writeCellBorder(cell, side, archive);
  WritePadding(cell.padding, archive);
  writeBackground(cell, archive);
  archive->EndCssStyle();
}

}  // namespace pagerex
