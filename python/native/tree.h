#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pagerex/walk.h"

namespace pagerex::python {

/// What an item of a tree is. The numbers are those of pagerex/_native.pyi.
enum class ItemKind : uint8_t {
  kDocument,
  kSection,
  kHeader,
  kParagraph,
  kTable,
  kRow,
  kCell,
  kTextBox,
  kNote,
  kComment,
  kRun,
  kLink,
  kRevision,
  kBookmarkStart,
  kBookmarkEnd,
  kPageBreak,
  kColumnBreak,
  kRule,
  kNoteReference,
  kNoteMark,
  kCommentStart,
  kCommentEnd,
  kCommentReference,
  kFormField,
  kPicture,
};

/// In the order of the document: an item stands in front of those within it.
struct Item {
  ItemKind kind;
  bool isAside;     ///< its text is not of the body, but of a header, a note or a comment
  uint32_t parent;  ///< its own number for the first
  uint32_t next;    ///< behind all that is within
  uint32_t facts;   ///< number among those of its kind; of a bookmark a string, of a comment's range an index
  uint32_t begin, end;   ///< bytes of its text
  uint32_t first, last;  ///< the same in characters
};

/// Numbers of strings stand for texts, 0 for none.
using StringId = uint32_t;

struct RunFacts {
  StringId font, eastAsianFont, otherFont, complexFont, characterStyle;
  uint8_t bold, italic, strike, doubleStrike, outline, shadow, emboss, imprint, smallCaps, caps, hidden;
  uint8_t isRightToLeft, noProof, underline, highlight, verticalAlignment;
  uint16_t sizeHalfPoints, scalePercent, language;
  int16_t spacing, raisedHalfPoints;
  int32_t colour, underlineColour, background;  ///< -1 for automatic, or none
  int32_t change;                               ///< PAGEREX_CHANGE_...
  bool operator==(const RunFacts&) const = default;
};

struct ParagraphFacts {
  StringId style, label;
  uint32_t position;
  uint32_t labelBytes, labelCharacters;  ///< of the text in front of the paragraph's own
  uint8_t headingLevel, outlineLevel, isListItem, isBullet, listLevel, numberFormat;
  int32_t listId, number;
  uint8_t alignment, isRightToLeft, keepLines, keepWithNext, pageBreakBefore, widowControl, lineSpacing;
  uint16_t lineHeight, spaceBefore, spaceAfter;
  int32_t indentStart, indentEnd, indentFirstLine;
  int32_t background;
};

struct SectionFacts {
  uint32_t index;
  int32_t start, pageWidth, pageHeight, marginTop, marginBottom, marginLeft, marginRight, gutter;
  int32_t headerDistance, footerDistance;
  uint32_t columnCount;
  uint8_t isLandscape, hasTitlePage, isRightToLeft, restartsPageNumbers;
  uint16_t firstPageNumber;
  int32_t headerSections[6];  ///< even, odd and first headers, then footers
};

struct HeaderFacts {
  int32_t kind, isFooter;
};

struct TableFacts {
  StringId style;
  uint32_t depth, rowCount, headerRowCount, columnCount;
  int32_t width, indent;
  uint8_t widthKind, alignment, isRightToLeft, isRegular, hasMergedCells;
  std::vector<int32_t> columnWidths;
};

struct RowFacts {
  uint8_t isHeader, cantSplit;
  int32_t height;
  uint32_t columnsBefore, columnsAfter;
  int32_t change;
};

struct CellFacts {
  int32_t width;
  uint32_t columnSpan, rowSpan;
  uint8_t verticalAlignment;
  int32_t background;
};

struct LinkFacts {
  StringId address, bookmark, title, target;
};

struct NoteFacts {
  int32_t kind;
  uint32_t index;
  StringId label;
  int32_t isCustom;
};

struct CommentFacts {
  uint32_t index;
  pagerex_date date;
  StringId author, initials;
};

struct RevisionFacts {
  int32_t kind;
  pagerex_date date;
  StringId author;
};

struct FormFieldFacts {
  int32_t kind, isChecked;
  StringId name, value;
};

struct PictureFacts {
  StringId description, name, linkedAddress;
  uint32_t order;  ///< among all pictures that are told, from 0 on
  uint32_t identity;
  int32_t width, height;
  uint8_t isInline, isBehindText, hasSource;
};

/// All that a walk tells of a document, in a few arrays.
struct Tree {
  std::vector<Item> items;
  std::string body, aside;  ///< UTF-8
  std::vector<std::string> strings{""};
  std::vector<RunFacts> runs;
  std::vector<ParagraphFacts> paragraphs;
  std::vector<SectionFacts> sections;
  std::vector<HeaderFacts> headers;
  std::vector<TableFacts> tables;
  std::vector<RowFacts> rows;
  std::vector<CellFacts> cells;
  std::vector<LinkFacts> links;
  std::vector<NoteFacts> notes;
  std::vector<CommentFacts> comments;
  std::vector<RevisionFacts> revisions;
  std::vector<FormFieldFacts> formFields;
  std::vector<PictureFacts> pictures;

  std::string_view TextOf(const Item& item) const {
    return std::string_view(item.isAside ? aside : body).substr(item.begin, item.end - item.begin);
  }
};

}  // namespace pagerex::python
