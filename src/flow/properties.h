#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace pagerex {

/// Properties as they hold where they are told: document defaults, table style, styles with their bases and
/// what stands at the paragraph or run are put together. Lengths are in twips unless the name says otherwise;
/// what Word calls a toggle is on or off.

/// A colour of Word. An automatic one is the reader's: text that can be read on what lies under it.
struct Colour {
  uint32_t rgb = 0;  ///< 0xRRGGBB
  bool isAutomatic = true;

  friend bool operator==(const Colour&, const Colour&) = default;
};

/// A border line; `kind` 0 is none.
struct Border {
  uint8_t kind = 0;          ///< BRC type: 1 single, 3 double, 6 dotted, 7 dashed, ...
  uint8_t widthEighths = 0;  ///< of a point
  uint8_t spacePoints = 0;   ///< to the text
  bool hasShadow = false;
  Colour colour;

  bool isThere() const { return kind != 0 && kind != 0xFF; }
  friend bool operator==(const Border&, const Border&) = default;
};

/// What lies under text, a paragraph or a cell: one colour, the pattern mixed in.
struct Shading {
  bool isThere = false;
  Colour fill;

  friend bool operator==(const Shading&, const Shading&) = default;
};

/// Which fonts a character takes: by its script.
struct FontNumbers {
  uint16_t ascii = 0;  ///< index in the font table
  uint16_t eastAsian = 0;
  uint16_t other = 0;
  uint16_t complex = 0;  ///< right-to-left and other complex scripts

  friend bool operator==(const FontNumbers&, const FontNumbers&) = default;
};

/// Who changed something, and when.
struct Revision {
  enum Kind : uint8_t { kNone = 0, kInserted = 1, kDeleted = 2, kMovedHere = 3, kMovedAway = 4 };
  Kind kind = kNone;
  uint16_t author = 0;  ///< index in the table of authors
  uint32_t dttm = 0;    ///< date and time as Word packs it; 0 for none

  friend bool operator==(const Revision&, const Revision&) = default;
};

/// Tells properties apart without looking at them: those of one number are the same for the whole walk, those
/// of two may be the same all the same. 0 where nobody gave a number. Two of them count as equal, so that
/// properties can be compared.
struct Serial {
  uint32_t number = 0;

  friend constexpr bool operator==(Serial, Serial) { return true; }
};

struct RunProperties {
  bool bold = false;
  bool italic = false;
  bool strike = false;
  bool doubleStrike = false;
  bool outline = false;
  bool shadow = false;
  bool emboss = false;
  bool imprint = false;
  bool smallCaps = false;
  bool caps = false;
  bool hidden = false;
  bool isRightToLeft = false;    ///< sprmCFBiDi
  bool isComplexScript = false;  ///< sprmCFComplexScripts
  bool noProof = false;
  uint8_t underline = 0;          ///< kul: 0 none, 1 single, 2 words, 3 double, 4 dotted, ...
  uint8_t highlight = 0;          ///< 0 none, 1 to 16 a colour of Word's palette
  uint8_t verticalAlignment = 0;  ///< iss: 0 in the line, 1 superscript, 2 subscript
  uint8_t emphasisMark = 0;       ///< kcd: 0 none, 1 dot, 2 comma, 3 circle, 4 dot below
  uint16_t sizeHalfPoints = 20;
  uint16_t complexSizeHalfPoints = 20;
  int16_t spacing = 0;             ///< between characters
  uint16_t scalePercent = 100;     ///< width of characters
  int16_t raisedHalfPoints = 0;    ///< negative: lowered
  uint16_t kerningHalfPoints = 0;  ///< from this size on; 0 never
  Colour colour;
  Colour underlineColour;  ///< automatic: that of the text
  Border border;
  Shading shading;
  FontNumbers fonts;
  uint16_t language = 0x0400;  ///< LCID; 0x0400 is none
  uint16_t eastAsianLanguage = 0x0400;
  uint16_t complexLanguage = 0x0400;
  uint16_t characterStyle = 10;  ///< istd; 10 is "Default Paragraph Font"
  Revision revision;             ///< inserted or moved here
  Revision deletion;             ///< deleted or moved away: text may be both
  Serial serial;

  friend bool operator==(const RunProperties&, const RunProperties&) = default;
};

/// 1 for text above its line, -1 below it: by its kind, or raised by so much of its size that it is meant.
inline int sideOfLine(const RunProperties& run) {
  constexpr int kMeantPart = 6, kLeastHalfPoints = 3;
  if (run.verticalAlignment != 0) return run.verticalAlignment == 1 ? 1 : -1;
  const int distance = run.raisedHalfPoints < 0 ? -run.raisedHalfPoints : run.raisedHalfPoints;
  if (distance < kLeastHalfPoints || distance * kMeantPart < run.sizeHalfPoints) return 0;
  return run.raisedHalfPoints > 0 ? 1 : -1;
}

struct TabStop {
  int16_t position = 0;   ///< from the paragraph's margin
  uint8_t alignment = 0;  ///< 0 left, 1 centre, 2 right, 3 decimal, 4 bar
  uint8_t leader = 0;     ///< 0 none, 1 dots, 2 hyphens, 3 line, 4 thick line, 5 middle dots

  friend bool operator==(const TabStop&, const TabStop&) = default;
};

/// As shown: in right-to-left paragraphs `start` is the right side.
enum class Alignment : uint8_t { kStart = 0, kCentre = 1, kEnd = 2, kJustify = 3, kDistribute = 4 };

/// A frame: a paragraph with a place of its own on the page.
struct Frame {
  bool isThere = false;
  int16_t left = 0,
          top = 0;     ///< as sprmPDxaAbs and sprmPDyaAbs: some values stand for "centre", "right", ...
  uint16_t width = 0;  ///< 0 for that of the text
  uint16_t height = 0;
  bool isLeastHeight = false;
  uint8_t horizontalAnchor = 0;  ///< 0 column, 1 margin, 2 page
  uint8_t verticalAnchor = 0;    ///< 0 margin, 1 page, 2 paragraph
  uint8_t wrap = 0;
  uint8_t dropCapLines = 0;  ///< 0 for no drop cap
  bool isDropCapInMargin = false;

  friend bool operator==(const Frame&, const Frame&) = default;
};

struct ParagraphProperties {
  Alignment alignment = Alignment::kStart;
  bool isRightToLeft = false;
  bool keepLines = false;
  bool keepWithNext = false;
  bool pageBreakBefore = false;
  bool widowControl = true;
  bool spacesOnlyBetweenStyles = false;  ///< sprmPFContextualSpacing: none between paragraphs of one style
  bool noHyphens = false;
  bool noLineNumbers = false;
  uint8_t outlineLevel = 9;  ///< 0 to 8; 9 is body text
  int32_t indentStart = 0;   ///< the side that lines begin at
  int32_t indentEnd = 0;
  int32_t indentFirstLine = 0;  ///< negative: the other lines hang
  uint16_t spaceBefore = 0;
  uint16_t spaceAfter = 0;
  bool autoSpaceBefore = false;  ///< as browsers space paragraphs
  bool autoSpaceAfter = false;
  enum class LineSpacing : uint8_t { kMultiple, kAtLeast, kExactly };
  LineSpacing lineSpacing = LineSpacing::kMultiple;
  uint16_t lineHeight = 240;  ///< 240ths of a line, or twips
  Border top, start, bottom, end, between, bar;
  Shading shading;
  std::vector<TabStop> tabs;  ///< by position
  Frame frame;
  uint16_t listNumber = 0;  ///< ilfo, from 1; 0 for none
  uint8_t listLevel = 0;    ///< 0 to 8
  uint16_t style = 0;       ///< istd
  uint16_t textFlow = 0;
  Serial serial;

  friend bool operator==(const ParagraphProperties&, const ParagraphProperties&) = default;
};

/// How a section numbers its footnotes or endnotes; what is not set is the document's.
struct NoteNumbering {
  bool setsRestart = false;
  bool setsStart = false;
  bool setsFormat = false;
  uint8_t restart = 0;  ///< 0 numbers go on, 1 begin anew in each section, 2 on each page
  uint16_t start = 1;
  uint16_t format = 0;  ///< nfc

  friend bool operator==(const NoteNumbering&, const NoteNumbering&) = default;
};

struct SectionProperties {
  enum class Start : uint8_t { kContinuous = 0, kNewColumn = 1, kNewPage = 2, kEvenPage = 3, kOddPage = 4 };
  Start start = Start::kNewPage;
  uint16_t pageWidth = 12240, pageHeight = 15840;
  bool isLandscape = false;
  int16_t marginTop = 1440, marginBottom = 1440;  ///< negative: exactly so much, whatever the header needs
  uint16_t marginLeft = 1800, marginRight = 1800;
  uint16_t gutter = 0;
  uint16_t headerDistance = 720, footerDistance = 720;
  uint16_t columnCount = 1;
  bool hasLineBetweenColumns = false;
  std::vector<std::pair<uint16_t, uint16_t>>
      columns;  ///< width and the space behind it; empty for equal ones
  uint16_t columnSpace = 720;
  bool hasTitlePage = false;  ///< the first page has a header and footer of its own
  bool isRightToLeft = false;
  uint16_t textFlow = 0;         ///< 0 horizontal, 1 vertical, ...
  uint8_t pageNumberFormat = 0;  ///< nfc
  bool restartsPageNumbers = false;
  uint16_t firstPageNumber = 1;
  uint8_t verticalAlignment = 0;  ///< 0 top, 1 centre, 2 justified, 3 bottom
  Border pageTop, pageLeft, pageBottom, pageRight;
  NoteNumbering footnotes, endnotes;

  friend bool operator==(const SectionProperties&, const SectionProperties&) = default;
};

struct CellProperties {
  int32_t left = 0;  ///< of its left edge, from the section's margin
  int32_t width = 0;
  uint16_t columnSpan = 1;
  uint16_t rowSpan =
      1;  ///< 0 for a cell that belongs to the one above: it is told, and has no text that shows
  uint8_t verticalAlignment = 0;  ///< 0 top, 1 centre, 2 bottom
  uint8_t textFlow = 0;
  bool noWrap = false;
  Border top, start, bottom, end;
  Shading shading;
  int16_t paddingTop = 0, paddingStart = 0, paddingBottom = 0, paddingEnd = 0;
};

struct RowProperties {
  bool isHeader = false;  ///< repeated on each page
  bool cantSplit = false;
  int16_t height = 0;  ///< 0 for that of the text
  bool isExactHeight = false;
  uint16_t columnsBefore = 0;  ///< of the table's columns, in front of the first cell
  uint16_t columnsAfter = 0;   ///< and behind the last
  Revision revision;
};

struct TableProperties {
  uint8_t depth = 1;  ///< 1 for a table of the text, 2 for one in its cell, ...
  bool isRightToLeft = false;
  Alignment alignment = Alignment::kStart;
  int32_t indent = 0;
  int32_t width = 0;      ///< 0 for that of its cells
  uint8_t widthKind = 0;  ///< 0 none, 1 automatic, 2 fiftieths of a percent, 3 twips
  std::vector<int32_t> columnWidths;
  uint32_t rowCount = 0;
  uint32_t headerRowCount = 0;  ///< at its top
  bool isRegular = true;  ///< each row begins and ends where the others do, and cells stand below each other
  bool hasMergedCells = false;
  bool hasSingleParagraphs = true;  ///< each cell has one paragraph, and no table in it
  uint16_t style = 0;               ///< istd; 0 for none
  bool floats = false;
};

}  // namespace pagerex
