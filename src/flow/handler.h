#pragma once

#include <cstdint>
#include <string_view>

#include "base/byte_view.h"
#include "flow/properties.h"

namespace pagerex {

/// What a paragraph is, beside its properties.
struct ParagraphFacts {
  const ParagraphProperties& properties;
  std::u16string_view styleName;
  uint8_t headingLevel;                  ///< 1 to 9; 0 for no heading
  std::u16string_view label;             ///< as shown, with bullets as Unicode; empty for none
  const RunProperties* labelProperties;  ///< null without a label
  enum class Follow : uint8_t { kTab, kSpace, kNothing };
  Follow labelFollow;  ///< what stands behind the label
  bool isListItem;     ///< in a list, whether or not it has a label
  bool isBullet;
  int32_t listId;                       ///< of the definition: one for all that count together
  int32_t number;                       ///< of the item in its level
  const RunProperties& markProperties;  ///< of the paragraph mark
  uint32_t position;                    ///< character position in its story
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
  uint32_t index;             ///< from 0, in the order of the document
  std::u16string_view label;  ///< the number in Word, or the custom mark
  bool isCustom;
};

struct CommentFacts {
  uint32_t index;  ///< from 0, in the order of the document
  std::u16string_view author;
  std::u16string_view initials;
  uint32_t dttm;  ///< 0 for none
};

enum class HeaderKind : uint8_t { kEven, kOdd, kFirst };

struct FormFieldFacts {
  enum class Kind : uint8_t { kText, kCheckBox, kDropDown };
  Kind kind;
  std::u16string_view name;
  bool isChecked;
  std::u16string_view value;  ///< the choice that was made
};

struct PictureFacts {
  std::u16string_view description;
  std::u16string_view name;
  int32_t width, height;  ///< as shown
  bool isInline;
  uint8_t wrap;       ///< of a floating one: 0 square, 1 top and bottom, 3 through, ...
  int32_t left, top;  ///< of a floating one
  uint8_t type;       ///< 2 EMF, 3 WMF, 4 PICT, 5 JPEG, 6 PNG, 7 DIB; 0 for one that is only linked
  ByteView data;      ///< as stored; deflated where `isDeflated`
  bool isDeflated;
  uint32_t rawSize;   ///< of what is deflated
  uint32_t identity;  ///< the same for each showing of one picture
  std::u16string_view linkedAddress;
};

/// Marks in the text.
enum class Mark : uint8_t { kTab, kLineBreak, kPageBreak, kColumnBreak };

/// Is told what a document says, in the order in which it is read. Nothing that it gets outlives the call. A
/// `Begin` has its `End`, whatever the document; all are called on the walk's thread. What is not of interest
/// need not be overridden.
///
///     document = BeginDocument section* notes comments EndDocument
///     section  = BeginSection header* block* EndSection
///     header   = BeginHeader block* EndHeader
///     block    = paragraph | table | textBox
///     paragraph= BeginParagraph inline* EndParagraph textBox*      (text boxes that are anchored in it)
///     inline   = Text | MarkHere | Bookmark | NoteReference | CommentStart | CommentReference | FormField |
///     Picture
///              | BeginLink inline* EndLink
///     table    = BeginTable row+ EndTable;  row = BeginRow cell+ EndRow;  cell = BeginCell block* EndCell
///     notes    = (BeginNote block* EndNote)*;  comments = (BeginComment block* EndComment)*
///     textBox  = BeginTextBox block* EndTextBox
class FlowHandler {
 public:
  FlowHandler() = default;
  FlowHandler(const FlowHandler&) = delete;
  FlowHandler& operator=(const FlowHandler&) = delete;
  virtual ~FlowHandler() = default;

  virtual void BeginDocument() {}
  virtual void EndDocument() {}
  virtual void BeginSection(const SectionProperties&) {}
  virtual void EndSection() {}
  virtual void BeginHeader(HeaderKind, bool /*isFooter*/) {}
  virtual void EndHeader() {}
  virtual void BeginParagraph(const ParagraphFacts&) {}
  virtual void EndParagraph() {}
  /// Characters of one look: no marks, no halves of a character. Properties at one address are the same from
  /// call to call of a document.
  virtual void Text(std::u16string_view text, const RunProperties& properties) = 0;
  virtual void MarkHere(Mark, const RunProperties&) {}
  virtual void BeginLink(const LinkFacts&) {}
  virtual void EndLink() {}
  virtual void Bookmark(std::u16string_view /*name*/) {}
  virtual void NoteReference(const NoteFacts&, const RunProperties&) {}
  virtual void CommentStart(uint32_t /*index*/) {}
  virtual void CommentReference(const CommentFacts&) {}
  virtual void FormField(const FormFieldFacts&, const RunProperties&) {}
  virtual void Picture(const PictureFacts&) {}
  virtual void BeginTable(const TableProperties&) {}
  virtual void EndTable() {}
  virtual void BeginRow(const RowProperties&) {}
  virtual void EndRow() {}
  virtual void BeginCell(const CellProperties&) {}
  virtual void EndCell() {}
  virtual void BeginTextBox(const PictureFacts&) {}
  virtual void EndTextBox() {}
  virtual void BeginNote(const NoteFacts&) {}
  virtual void EndNote() {}
  virtual void BeginComment(const CommentFacts&) {}
  virtual void EndComment() {}
};

}  // namespace pagerex
