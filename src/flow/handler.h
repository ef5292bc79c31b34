#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "base/byte_view.h"
#include "flow/properties.h"
#include "wordreader/document_summary.h"

namespace pagerex {

/// The styles of a document, by their index in its style sheet.
class StyleNames {
 public:
  StyleNames() = default;
  StyleNames(const StyleNames&) = delete;
  StyleNames& operator=(const StyleNames&) = delete;
  virtual ~StyleNames() = default;

  /// As the file spells it, of built-in styles the English name; empty where there is no such style.
  virtual std::u16string_view NameOf(uint16_t istd) const = 0;
  /// Paragraphs that have this style and nothing of their own, outside of tables; "Normal" for a style of
  /// another kind. Until the next paragraph is told.
  virtual const ParagraphProperties& ParagraphOf(uint16_t istd) const = 0;
  /// The same of their text.
  virtual const RunProperties& RunOf(uint16_t istd) const = 0;
};

/// What the font table of a document says of a font.
struct FontFacts {
  std::u16string_view name;  ///< empty where there is no such font
  std::u16string_view alternateName;
  uint8_t family = 0;                ///< 1 roman, 2 swiss, 3 monospaced, 4 script, 5 decorative; 0 not known
  uint8_t pitch = 0;                 ///< 1 fixed, 2 variable; 0 not known
  uint8_t characterSet = 0;          ///< 0 ANSI, 2 symbols, 128 Shift-JIS, ...
  std::array<uint8_t, 10> panose{};  ///< all 0 where not known
};

/// The fonts of a document, by their index in its font table.
class ToldFonts {
 public:
  ToldFonts() = default;
  ToldFonts(const ToldFonts&) = delete;
  ToldFonts& operator=(const ToldFonts&) = delete;
  virtual ~ToldFonts() = default;

  /// Empty where there is no such font.
  virtual std::u16string_view NameOf(uint16_t ftc) const = 0;
  virtual FontFacts FactsOf(uint16_t ftc) const = 0;
};

/// What is known of a document before its text. Lives as long as the walk.
struct DocumentFacts {
  const DocumentSummary& summary;
  uint16_t language;  ///< LCID of the text of style "Normal"; 0x0400 is none
  uint16_t defaultTabStop;
  bool hasOddAndEvenHeaders;
  uint32_t pageCount;                  ///< as Word counted last; 0 if not told
  const StyleNames* styles = nullptr;  ///< null where nobody tells
  const ToldFonts* fonts = nullptr;    ///< the same
  Shading background = {};             ///< of the pages
};

enum class HeaderKind : uint8_t { kEven, kOdd, kFirst };

/// A header or footer of a section.
struct HeaderFacts {
  HeaderKind kind;
  bool isFooter;
};

struct SectionFacts {
  const SectionProperties& properties;
  uint32_t index;  ///< from 0
  /// Whose header (0) and footer (1) of each HeaderKind is shown: the index of a section, this one or an
  /// earlier one that it is linked to; -1 for none.
  int32_t headerSections[2][3];
};

struct PictureFacts;

/// What a paragraph is, beside its properties.
struct ParagraphFacts {
  const ParagraphProperties& properties;
  std::u16string_view styleName;         ///< as the file spells it; of built-in styles the English name
  uint8_t headingLevel;                  ///< 1 to 9; 0 for no heading
  std::u16string_view label;             ///< as shown, with bullets as Unicode; empty for none
  const RunProperties* labelProperties;  ///< null without a label
  enum class Follow : uint8_t { kTab, kSpace, kNothing };
  Follow labelFollow;  ///< what stands behind the label
  bool isListItem;     ///< in a list, whether or not it has a label
  bool isBullet;
  int32_t listId;        ///< of the definition: one for all that count together
  int32_t number;        ///< of the item in its level
  uint8_t numberFormat;  ///< nfc of the level: 0 1 2, 1 I II, 2 i ii, 3 A B, 4 a b, 23 bullet, ...
  const RunProperties& markProperties;         ///< of the paragraph mark
  uint32_t position;                           ///< character position in its story
  const PictureFacts* labelPicture = nullptr;  ///< stands in the place of the label; null for none
};

struct LinkFacts {
  std::u16string_view address;   ///< of something outside; empty for a place in the document
  std::u16string_view bookmark;  ///< a place in the document, or below the address
  std::u16string_view title;     ///< screen tip
  std::u16string_view target;    ///< frame
};

enum class NoteKind : uint8_t { kFootnote, kEndnote };

struct NoteFacts {
  NoteKind kind;
  uint32_t index;             ///< of its kind, from 0, in the order of the document
  std::u16string_view label;  ///< the number in Word, or the custom mark
  bool isCustom;
};

struct CommentFacts {
  uint32_t index;  ///< from 0, in the order of the document
  std::u16string_view author;
  std::u16string_view initials;
  uint32_t dttm;  ///< 0 for none
};

/// Who inserted, deleted or moved what follows, where changes are shown. Text may be inserted and deleted.
struct RevisionFacts {
  Revision::Kind kind;
  std::u16string_view author;
  uint32_t dttm;  ///< 0 for none
};

struct FormFieldFacts {
  enum class Kind : uint8_t { kText, kCheckBox, kDropDown };
  Kind kind;
  std::u16string_view name;
  bool isChecked;
  std::u16string_view value;  ///< the choice that was made; of a text field empty: its text follows as such
};

/// As the document tells them, whatever the bytes are.
enum class PictureType : uint8_t {
  kNone = 0,
  kEmf = 2,
  kWmf = 3,
  kPict = 4,
  kJpeg = 5,
  kPng = 6,
  kDib = 7,
  kTiff = 8,
};

/// A picture as it is stored.
struct PictureData {
  PictureType type = PictureType::kNone;
  ByteView bytes;           ///< of the image alone; valid during the call of the handler
  bool isDeflated = false;  ///< EMF, WMF and PICT: zlib around them
  uint32_t rawSize = 0;     ///< of what is deflated
};

/// The bytes of a picture, which are read when they are asked for.
class PictureSource {
 public:
  PictureSource() = default;
  PictureSource(const PictureSource&) = delete;
  PictureSource& operator=(const PictureSource&) = delete;
  virtual ~PictureSource() = default;

  /// kNone and no bytes where they cannot be read.
  virtual PictureData Read() = 0;
};

struct ShapeFacts;

struct PictureFacts {
  std::u16string_view description;  ///< alternative text
  std::u16string_view name;
  int32_t width = 0, height = 0;  ///< as shown, in twips
  bool isInline = true;
  uint8_t wrap = 0;  ///< of a floating one, as FSPA.wr: 0 and 2 around, 1 top and bottom, 3 over the text
  bool isBehindText = false;
  int32_t left = 0, top = 0;        ///< of a floating one, from what its position refers to
  PictureSource* source = nullptr;  ///< null for a drawing, or a picture that is only linked
  uint32_t identity = 0;  ///< the same, and not 0, for each showing of one stored picture; 0 if not known
  std::u16string_view linkedAddress;
  const ShapeFacts* shape = nullptr;  ///< how it is drawn; null where that cannot be read
};

struct TextBoxFacts {
  PictureFacts shape;
  uint32_t index;  ///< from 0
};

/// Marks in the text.
enum class Mark : uint8_t { kTab, kLineBreak, kPageBreak, kColumnBreak, kRule /**< a horizontal line */ };

/// Is told what a document says, in the order in which it is read. Nothing that it gets outlives the call,
/// unless told. A `Begin` has its `End`, whatever the document; all are called on the walk's thread. What is
/// not of interest need not be overridden.
///
///     document = BeginDocument section* notes comments EndDocument
///     section  = BeginSection header* block* EndSection
///     header   = BeginHeader block* EndHeader                      (not told where linked to an earlier one)
///     block    = paragraph | table
///     paragraph= BeginParagraph inline* EndParagraph textBox*      (text boxes that are anchored in it)
///     inline   = Text | Ruby | MarkHere | BookmarkStart | BookmarkEnd | NoteReference | NoteMark |
///     CommentStart
///              | CommentEnd | CommentReference | FormField | Picture
///              | BeginLink inline* EndLink | BeginRevision inline* EndRevision
///              | BeginDropCap inline* EndDropCap
///     table    = BeginTable row+ EndTable;  row = BeginRow cell+ EndRow;  cell = BeginCell block* EndCell
///     notes    = (BeginNote block* EndNote)*;  comments = (BeginComment block* EndComment)*
///     textBox  = BeginTextBox block* EndTextBox
///
/// Links and revisions end with their paragraph, and begin anew in the next one.
class FlowHandler {
 public:
  FlowHandler() = default;
  FlowHandler(const FlowHandler&) = delete;
  FlowHandler& operator=(const FlowHandler&) = delete;
  virtual ~FlowHandler() = default;

  virtual void BeginDocument(const DocumentFacts&) {}
  virtual void EndDocument() {}
  virtual void BeginSection(const SectionFacts&) {}
  virtual void EndSection() {}
  virtual void BeginHeader(const HeaderFacts&) {}
  virtual void EndHeader() {}
  virtual void BeginParagraph(const ParagraphFacts&) {}
  virtual void EndParagraph() {}
  /// Characters of one look: no marks, no halves of a character. Properties at one address are the same from
  /// call to call of a paragraph. Optional hyphens are U+00AD, non-breaking ones U+2011.
  virtual void Text(std::u16string_view text, const RunProperties& properties) = 0;
  virtual void MarkHere(Mark, const RunProperties&) {}
  /// Text with other text above it, as readings of East Asian characters are set; `both` is one in a line.
  virtual void Ruby(std::u16string_view /*base*/, std::u16string_view /*above*/, std::u16string_view both,
                    const RunProperties& properties) {
    Text(both, properties);
  }
  /// What is told in between is the large letter that a paragraph begins with.
  virtual void BeginDropCap(const ParagraphProperties&) {}
  virtual void EndDropCap() {}
  virtual void BeginLink(const LinkFacts&) {}
  virtual void EndLink() {}
  virtual void BookmarkStart(std::u16string_view /*name*/) {}
  virtual void BookmarkEnd(std::u16string_view /*name*/) {}
  virtual void NoteReference(const NoteFacts&, const RunProperties&) {}
  /// Within a note: its label is shown here.
  virtual void NoteMark(const NoteFacts&, const RunProperties&) {}
  virtual void CommentStart(uint32_t /*index*/) {}
  virtual void CommentEnd(uint32_t /*index*/) {}
  virtual void CommentReference(const CommentFacts&) {}
  virtual void BeginRevision(const RevisionFacts&) {}
  virtual void EndRevision() {}
  virtual void FormField(const FormFieldFacts&, const RunProperties&) {}
  virtual void Picture(const PictureFacts&) {}
  virtual void BeginTable(const TableProperties&) {}
  virtual void EndTable() {}
  virtual void BeginRow(const RowProperties&) {}
  virtual void EndRow() {}
  virtual void BeginCell(const CellProperties&) {}
  virtual void EndCell() {}
  virtual void BeginTextBox(const TextBoxFacts&) {}
  virtual void EndTextBox() {}
  virtual void BeginNote(const NoteFacts&) {}
  virtual void EndNote() {}
  virtual void BeginComment(const CommentFacts&) {}
  virtual void EndComment() {}
};

}  // namespace pagerex
