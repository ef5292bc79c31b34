#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/sprms.h"

namespace support {

class Story;

/// Text as a test states it: `u"..."`, or `"..."` with one character a byte, in Windows code page 1252.
class Text {
 public:
  Text() = default;
  Text(const char* text) : Text(std::string_view(text)) {}
  Text(const std::string& text) : Text(std::string_view(text)) {}
  Text(std::string_view text);
  Text(const char16_t* text) : units_(text) {}
  Text(std::u16string text) : units_(std::move(text)) {}
  Text(std::u16string_view text) : units_(text) {}
  const std::u16string& units() const { return units_; }
  bool empty() const { return units_.empty(); }

 private:
  std::u16string units_;
};

/// The byte of a character in Windows code page 1252, if it has one; and the character of a byte.
std::optional<uint8_t> toCp1252(char16_t unit);
char16_t fromCp1252(uint8_t byte);

/// A piece of text: begins where `Paragraph::newPiece` was called and ends where the next one begins.
struct Piece {
  enum class Width {
    kAuto,  ///< 8-bit if every character has a byte in code page 1252, else 16-bit
    k8,
    k16,
  };
  Width width = Width::kAuto;
  uint16_t prm = 0;  ///< property modifier: `prmOfGroup(i)` or `prmOfSprm(isprm, value)`
  /// The flag fNoParaLast. Unset: set if the piece has no paragraph end, as Word does.
  std::optional<bool> noParaLast = {};
  /// Pieces lie in the file by this number, and those with one number in the order of the text.
  int fileOrder = 0;
};

/// The property modifier that names property group i of the document (`WordDocument::propertyGroup`).
constexpr uint16_t prmOfGroup(uint32_t i) {
  return static_cast<uint16_t>(i << 1 | 1);
}
/// The property modifier that holds one sprm, by its number in the short form.
constexpr uint16_t prmOfSprm(uint8_t isprm, uint8_t value) {
  return static_cast<uint16_t>(isprm << 1 | value << 8);
}

/// A footnote or endnote: what its reference looks like. Without a mark of its own it is numbered.
struct NoteReference {
  Text customMark = {};
  Sprms sprms = {};
};

/// An annotation (comment) and its author.
struct Annotation {
  Text author = u"Author";
  Text initials = u"A";
  int32_t rangeTag = -1;  ///< of the range set by `Paragraph::annotationStart`; -1 for none
  uint32_t dttm = 0;
};

/// Properties of text that was inserted or deleted; of a mark, they are those of its paragraph or row.
Sprms insertedSprms(uint16_t author, uint32_t dttm = 0);
Sprms deletedSprms(uint16_t author, uint32_t dttm = 0);

using FillStory = std::function<void(Story&)>;

/// A mark at a place of the text that some table of the document points at.
struct Anchor {
  enum class Kind {
    kPiece,
    kField,
    kBookmarkStart,
    kBookmarkEnd,
    kAnnotationStart,
    kAnnotationEnd,
    kFootnote,
    kEndnote,
    kAnnotation,
    kShape,
  };
  Kind kind;
  size_t offset = 0;                    // in the paragraph, in characters
  Piece piece = {};                     // kPiece
  uint8_t fieldMark = 0;                // kField: 19, 20 or 21
  uint8_t fieldByte = 0;                // kField: the type, or the flags at the end
  std::u16string name = {};             // of the bookmark
  int32_t tag = 0;                      // of the annotation's range
  bool numbered = true;                 // of the note
  Annotation annotation = {};           // kAnnotation
  std::shared_ptr<Story> content = {};  // of the note or annotation
  Bytes place = {};                     // kShape: FSPA
  Bytes shape = {};                     // kShape: its container of the drawing
};

/// One paragraph, built run by run. Its end mark is added by itself; it belongs to the last run, unless it is
/// given properties of its own. Neighbouring runs with equal properties become one entry of the file's run
/// table, as Word writes them, also across paragraphs: `breakRun` keeps them apart.
class Paragraph {
 public:
  struct Run {
    std::u16string text;
    Bytes sprms;
    bool breakBefore = false;
  };

  // --- Properties ---
  Paragraph& istd(uint16_t index);
  /// Direct properties, added behind those that are there.
  Paragraph& sprms(const Sprms& sprms);
  /// Keeps the properties in the "Data" stream; 0x6645 is the other sprm that points there. Properties too
  /// long for their page go there without being told.
  Paragraph& huge(uint16_t opcode = 0x6646);
  /// No properties in the file at all, not even a style.
  Paragraph& noPapx();
  /// Marks the paragraph as lying in a table: sprmPFInTable and sprmPItap.
  Paragraph& inTable(uint32_t depth = 1);

  // --- Text ---
  Paragraph& run(const Text& text, const Sprms& sprms = {});
  /// A special character: a run with sprmCFSpec (0x0855).
  Paragraph& special(char16_t unit, const Sprms& sprms = {});
  /// The next run, or the mark, begins an entry of its own even if its properties are those of the last run.
  Paragraph& breakRun();
  /// The paragraph mark gets these properties instead of those of the last run.
  Paragraph& mark(const Sprms& sprms);
  /// The mark's properties, if equal to those of the last run, stand in an entry of their own all the same.
  Paragraph& ownMark();
  /// Ends with this character: 0x0D by default, 0x07 in a cell, 0x0C at a page or section end.
  Paragraph& endWith(char16_t mark);
  /// Ends without a mark, at the end of a story.
  Paragraph& noMark();
  /// What follows belongs to a new piece.
  Paragraph& newPiece(const Piece& piece = {});

  // --- Fields ---
  /// A whole field: marks, code and result; without a result there is no separator.
  Paragraph& field(uint8_t type, const Text& code, const std::optional<Text>& result = {},
                   const Sprms& sprms = {});
  Paragraph& fieldBegin(uint8_t type, const Sprms& sprms = {});
  Paragraph& fieldSeparator(const Sprms& sprms = {});
  /// `flags` 0x80 says that there was a separator, 0x40 that the field is nested.
  Paragraph& fieldEnd(uint8_t flags = 0x80, const Sprms& sprms = {});

  // --- What other tables point at ---
  Paragraph& bookmarkStart(const Text& name);
  Paragraph& bookmarkEnd(const Text& name);
  /// A reference here, and the note in its own story: one paragraph that begins with the reference mark, or
  /// what `fill` adds; its first paragraph begins with that mark.
  Paragraph& footnote(const Text& text, const NoteReference& reference = {});
  Paragraph& footnote(const FillStory& fill, const NoteReference& reference = {});
  Paragraph& endnote(const Text& text, const NoteReference& reference = {});
  Paragraph& endnote(const FillStory& fill, const NoteReference& reference = {});
  Paragraph& annotationStart(int32_t tag);
  Paragraph& annotationEnd(int32_t tag);
  Paragraph& annotation(const Text& text, const Annotation& annotation = {});
  Paragraph& annotation(const FillStory& fill, const Annotation& annotation = {});
  /// The anchor of a floating shape: see `drawing::addShape`.
  Paragraph& floating(const Bytes& place, const Bytes& shape, const Sprms& sprms = {});

  // --- Changes: `author` is what `WordDocument::author` gave ---
  Paragraph& inserted(const Text& text, uint16_t author, uint32_t dttm = 0, const Sprms& sprms = {});
  Paragraph& deleted(const Text& text, uint16_t author, uint32_t dttm = 0, const Sprms& sprms = {});

  // --- For the writer of the document ---
  size_t length() const { return length_; }  ///< characters so far, without the mark
  const std::vector<Run>& runs() const { return runs_; }
  const std::vector<Anchor>& anchors() const { return anchors_; }
  std::optional<char16_t> markUnit() const { return markUnit_; }
  const Bytes& markSprms() const;
  bool markBreaks() const { return ownMark_ || breakNext_; }
  uint16_t styleIndex() const { return istd_; }
  const Sprms& properties() const { return sprms_; }
  uint16_t hugeOpcode() const { return hugeOpcode_; }  ///< 0 if the properties lie in their page
  bool hasPapx() const { return hasPapx_; }

 private:
  Paragraph& add(Anchor anchor);
  Paragraph& note(Anchor::Kind kind, char16_t unit, const FillStory& fill, const NoteReference& reference);

  uint16_t istd_ = 0;
  Sprms sprms_;
  uint16_t hugeOpcode_ = 0;
  bool hasPapx_ = true;
  std::vector<Run> runs_;
  std::vector<Anchor> anchors_;
  size_t length_ = 0;
  bool breakNext_ = false;
  std::optional<char16_t> markUnit_ = u'\r';
  std::optional<Bytes> markSprms_;
  bool ownMark_ = false;
};

/// A sub-document's text: paragraphs in order. References to paragraphs stay valid.
class Story {
 public:
  Story() = default;
  Story(Story&&) = default;
  Story& operator=(Story&&) = default;

  Paragraph& paragraph();
  Paragraph& paragraph(const Text& text, const Sprms& runSprms = {}) {
    return paragraph().run(text, runSprms);
  }

  /// The last (or only) paragraph of a table cell, with its cell mark: 0x07 at depth 1; deeper a paragraph
  /// mark with sprmPFInnerTableCell. Further paragraphs of the cell go before it, with `inTable(depth)`.
  Paragraph& cell(const Text& text = {}, uint32_t depth = 1);
  /// The row-end paragraph, with the row's table sprms.
  Paragraph& rowEnd(const Sprms& tableSprms, uint32_t depth = 1);
  /// A row of one-paragraph cells: `row({"a", "b"}, {defTableSprm({0, 1000, 2000})})`.
  Story& row(const std::vector<Text>& cells, const Sprms& tableSprms, uint32_t depth = 1);

  bool empty() const { return paragraphs_.empty(); }
  const std::vector<std::unique_ptr<Paragraph>>& paragraphs() const { return paragraphs_; }
  /// The first paragraph will begin with this run.
  void leadingRun(Paragraph::Run run) { leadingRun_ = std::move(run); }

 private:
  std::vector<std::unique_ptr<Paragraph>> paragraphs_;
  std::optional<Paragraph::Run> leadingRun_;
};

}  // namespace support
