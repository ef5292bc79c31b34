#pragma once

#include <cstddef>
#include <cstdint>

/// Records of the Word 97-2003 binary format as they lie in the file: packed, little-endian, used in place.
/// Fields that this library does not use are named `unused...`.
namespace mso_word {

/// A sub-document: one story of text with character positions of its own.
enum SUBDOC_TYPE : uint32_t {
  SUBDOC_MAIN = 0,
  SUBDOC_FOOTNOTE = 1,
  SUBDOC_HEADER = 2,
  SUBDOC_MACRO = 3,
  SUBDOC_ANNOTATION = 4,
  SUBDOC_ENDNOTE = 5,
  SUBDOC_TEXTBOX = 6,
  SUBDOC_HEADER_TEXTBOX = 7,
};
constexpr uint32_t kSubDocCount = 8;

/// Index of a table in the FIB's array of offset and length pairs.
enum FIBFCLCB : uint32_t {
  FCLCB_STYLE_SHEET = 1,
  FCLCB_FOOTNOTE_REFS = 2,
  FCLCB_FOOTNOTE_TEXT = 3,
  FCLCB_ANNOTATION_REFS = 4,
  FCLCB_ANNOTATION_TEXT = 5,
  FCLCB_SECTIONS = 6,
  FCLCB_HEADER_TEXT = 11,
  FCLCB_CHPX_BINS = 12,
  FCLCB_PAPX_BINS = 13,
  FCLCB_FONTS = 15,
  FCLCB_FIELDS_MAIN = 16,
  FCLCB_FIELDS_HEADER = 17,
  FCLCB_FIELDS_FOOTNOTE = 18,
  FCLCB_FIELDS_ANNOTATION = 19,
  FCLCB_FIELDS_MACRO = 20,
  FCLCB_BOOKMARK_NAMES = 21,
  FCLCB_BOOKMARK_STARTS = 22,
  FCLCB_BOOKMARK_ENDS = 23,
  FCLCB_DOCUMENT_PROPERTIES = 31,
  FCLCB_CLX = 33,
  FCLCB_ANNOTATION_OWNERS = 36,
  FCLCB_ANNOTATION_RANGE_NAMES = 37,
  FCLCB_SHAPE_ANCHORS = 40,
  FCLCB_HEADER_SHAPE_ANCHORS = 41,
  FCLCB_ANNOTATION_RANGE_STARTS = 42,
  FCLCB_ANNOTATION_RANGE_ENDS = 43,
  FCLCB_ENDNOTE_REFS = 46,
  FCLCB_ENDNOTE_TEXT = 47,
  FCLCB_FIELDS_ENDNOTE = 48,
  FCLCB_DRAWINGS = 50,
  FCLCB_REVISION_AUTHORS = 51,
  FCLCB_TEXTBOXES = 56,
  FCLCB_FIELDS_TEXTBOX = 57,
  FCLCB_HEADER_TEXTBOXES = 58,
  FCLCB_FIELDS_HEADER_TEXTBOX = 59,
  FCLCB_LIST_DEFINITIONS = 73,
  FCLCB_LIST_OVERRIDES = 74,
  FCLCB_ANNOTATION_DATES = 112,
};

#pragma pack(push, 1)

/// The first 32 bytes of the "WordDocument" stream.
struct FIB_HEADER {
  uint16_t unusedIdent;  // 0
  uint16_t unusedNFib;   // 2
  uint8_t unused4[6];    // 4
  uint16_t flags;        // 10: kEncrypted, kTable1
  uint8_t unused12[12];  // 12
  uint32_t fcMin;        // 24: only its low 16 bits are used
  uint8_t unused28[4];   // 28
  static constexpr uint16_t kEncrypted = 0x0100;
  static constexpr uint16_t kTable1 = 0x0200;  ///< the table stream is "1Table", else "0Table"
};
static_assert(sizeof(FIB_HEADER) == 32 && offsetof(FIB_HEADER, fcMin) == 24);

/// Where a table lies in the table stream.
struct FCLCB {
  uint32_t fc;   ///< offset in bytes
  uint32_t lcb;  ///< length in bytes
};
static_assert(sizeof(FCLCB) == 8);

/// Piece descriptor.
struct PCD {
  uint16_t flags;                             // 0: kNoParaLast
  uint32_t rawFc;                             // 2: stream offset; with kAnsi, twice the offset of 8-bit text
  uint16_t prm;                               // 6: property modifier
  static constexpr uint16_t kNoParaLast = 1;  ///< the piece ends without a paragraph end
  static constexpr uint32_t kAnsi = 0x40000000;
};
static_assert(sizeof(PCD) == 8);

/// Section descriptor.
struct SED {
  int16_t unused0;
  int32_t fcSepx;  // 2: offset of the section's properties in "WordDocument", -1 for none
  uint8_t unused6[6];
};
static_assert(sizeof(SED) == 12);

/// Annotation reference.
struct ATRD {
  uint16_t unused0;
  uint16_t initials[9];  // 2: of the author
  int16_t authorIndex;   // 20
  uint8_t unused22[4];
  int32_t rangeTag;  // 26: tag of the annotated range, -1 for none
};
static_assert(sizeof(ATRD) == 30 && offsetof(ATRD, rangeTag) == 26);

/// Bookmark start.
struct BKF {
  uint16_t ibkl;  ///< index of the end
  uint16_t flags;
};
static_assert(sizeof(BKF) == 4);

/// Field character.
struct FLD {
  uint8_t mark;  ///< 19 begin, 20 separator, 21 end, in its low five bits
  uint8_t type;  ///< field type behind a begin mark; 88 is HYPERLINK
};
static_assert(sizeof(FLD) == 2);

/// Anchor of a floating shape; lengths in twips.
struct FSPA {
  uint32_t shapeId;
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
  uint16_t flags;  // 20: bits 5 to 8 are the text wrapping mode
  int32_t unusedTextBoxCount;
};
static_assert(sizeof(FSPA) == 26);

/// Story of a text box.
struct FTXBXS {
  uint8_t unused0[22];
};
static_assert(sizeof(FTXBXS) == 22);

/// Entry of a paragraph FKP: a word offset and the paragraph height.
struct FKP_BX {
  uint8_t wordOffset;
  uint8_t unused1[12];
};
static_assert(sizeof(FKP_BX) == 13);

/// List definition.
struct LSTF {
  int32_t lsid;
  uint8_t unused4[22];
  uint8_t flags;  // 26: bit 0, simple list with one level
  uint8_t unused27;
};
static_assert(sizeof(LSTF) == 28 && offsetof(LSTF, flags) == 26);

/// List level.
struct LVLF {
  uint32_t startAt;  // 0: the low 16 bits are used
  uint8_t nfc;       // 4: number format
  uint8_t unused5;
  uint8_t rgbxchNums[9];  // 6: 1-based places of the level numbers in the number text
  uint8_t ixchFollow;     // 15: 0 tab, 1 space, 2 nothing behind the number
  uint8_t unused16[8];
  uint8_t cbGrpprlChpx;  // 24
  uint8_t cbGrpprlPapx;  // 25
  uint8_t unused26[2];
};
static_assert(sizeof(LVLF) == 28 && offsetof(LVLF, cbGrpprlPapx) == 25);

/// List format override.
struct LFO {
  int32_t lsid;
  uint8_t unused4[8];
  uint8_t levelCount;  // 12: count of LFOLVL records
  uint8_t unused13[3];
};
static_assert(sizeof(LFO) == 16);

/// Override of one list level.
struct LFOLVL {
  uint32_t startAt;  // 0: the low 16 bits are used
  uint8_t flags;     // 4: level, kStartAt, kFormat
  uint8_t unused5[3];
  static constexpr uint8_t kLevel = 0x0F;
  static constexpr uint8_t kStartAt = 0x10;  ///< the start value counts
  static constexpr uint8_t kFormat = 0x20;   ///< a full level follows
};
static_assert(sizeof(LFOLVL) == 8);

/// Border of Word 97.
struct BRC {
  uint8_t width;  ///< eighths of a point
  uint8_t type;
  uint8_t ico;    ///< colour index
  uint8_t space;  ///< low five bits: points to the text; bit 5 shadow, bit 6 frame
};
static_assert(sizeof(BRC) == 4);

/// Border of Word 2000 and later.
struct BRCEX {
  uint32_t colour;  ///< red in the low byte; 0xFF000000 automatic
  uint8_t width;    ///< eighths of a point
  uint8_t type;
  uint8_t space;  ///< low five bits: points to the text; bit 5 shadow, bit 6 frame
  uint8_t reserved;
};
static_assert(sizeof(BRCEX) == 8);

/// Shading of Word 2000 and later.
struct SHDEX {
  uint32_t foreground;  ///< red in the low byte; 0xFF000000 automatic
  uint32_t background;
  uint16_t pattern;
};
static_assert(sizeof(SHDEX) == 10);

/// Shading of Word 97.
struct SHD {
  uint16_t value;  ///< bits 5 to 9: colour index of the background
};
static_assert(sizeof(SHD) == 2);

/// Cell of a table row.
struct TC {
  uint8_t flags0;  // 0: horizontal merge, kVerticalMerge, low bit of the vertical alignment
  uint8_t flags1;  // 1: high bit of the vertical alignment
  uint8_t unused2[2];
  BRC top;  // 4: word 0, not set; all ones, none
  BRC left;
  BRC bottom;
  BRC right;
  static constexpr uint8_t kHorizontalMerge = 0x03;  ///< 1: this cell is dropped
  static constexpr uint8_t kVerticalMerge = 0x60;    ///< kMergeStart, kMergeContinued or neither
  static constexpr uint8_t kMergeStart = 0x60;
  static constexpr uint8_t kMergeContinued = 0x20;
};
static_assert(sizeof(TC) == 20 && offsetof(TC, top) == 4);

/// Layout of East Asian text (sprmCFELayout).
struct ASIANLAYOUT {
  uint8_t kind;
  uint8_t nibbles;
  uint8_t unused2[4];
};
static_assert(sizeof(ASIANLAYOUT) == 6);

/// Date and time: minute in the low 6 bits, then hour 5, day 5, month 4, years since 1900 9, weekday 3.
struct DTTM {
  uint32_t value;
};
static_assert(sizeof(DTTM) == 4);

#pragma pack(pop)

constexpr uint32_t kAutomaticColour = 0xFF000000;
constexpr uint16_t kNoCharacterStyle = 4095;  ///< istd of a run or paragraph without a style (also 0xFFF)

}  // namespace mso_word
