#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/compound_file_writer.h"
#include "support/property_sets.h"
#include "support/sprms.h"
#include "support/word_drawing_tables.h"
#include "support/word_layout.h"
#include "support/word_tables.h"
#include "support/word_text.h"
#include "wordreader/mso_word.h"

namespace support {

/// How the file is laid out, where that is the test's business.
struct WordOptions {
  uint16_t fibPairs = 183;  ///< cfclcb: 93 in Word 97, 108 in 2000, 136 in 2002, 164 in 2003, 183 in 2007
  int tableStream = 1;      ///< the flag in the FIB, and the name "0Table" or "1Table"
  std::optional<int> tableStreamName = {};  ///< if it differs from the flag
  uint16_t fibFlags = 0;                    ///< further bits of the FIB's flags: 0x0100 encrypted
  size_t maxFkpEntries = 255;               ///< of a formatted disk page; 1 gives each run a page of its own
  uint16_t minStyleSlots = 15;              ///< Word reserves 15; more are made as styles need them
  StyleSheetHeader styleSheet = {};
  ClosingMarks closingMarks = {};
  CompoundFileWriter::Options compound = {};
};

/// Which header or footer of a section.
enum class HeaderSlot : uint32_t {
  kEvenHeader,
  kOddHeader,
  kEvenFooter,
  kOddFooter,
  kFirstHeader,
  kFirstFooter,
};
/// What separates notes from the text: the first three of footnotes, the others of endnotes.
constexpr uint32_t kNoteSeparators = 6;

/// The three streams of a Word document. "Data" is left out of the file if it is empty.
struct WordStreams {
  Bytes wordDocument;
  Bytes table;
  Bytes data;
  uint32_t textStart = 0;  ///< stream offset of the text
};

/// A Word 97-2003 document: the object is its own main text (a `Story`), and `story` gives the other ones.
/// The writer computes all offsets and writes what Word would, also where our reader does not look. Whatever
/// a test does not state has a default: the font "Times New Roman", the style "Normal", one section.
///
///     WordDocument doc;
///     doc.style(1, Style().name("Title").basedOn(0).chpx({sprm(0x4A43, 48)}));
///     doc.paragraph().istd(1).run("Hello ").run(u"bold", {sprm(0x0835, 1)});
///     doc.paragraph("See here").footnote("A note.").run(".");
///     doc.section({sprm(0xB01F, 15840)});           // from here on
///     doc.row({"a", "b"}, {defTableSprm({0, 1000, 2000})});
///     doc.paragraph("The end.");
///     doc.save(folder.path("test.doc"));
class WordDocument : public Story {
 public:
  using Edit = std::function<void(Bytes&)>;
  using EditPages = std::function<void(std::vector<Bytes>&)>;

  WordDocument() = default;
  explicit WordDocument(const WordOptions& options) : options_(options) {}

  // --- Text ---
  /// A sub-document's own text; notes and annotations follow it in theirs. Type 0 is the document itself.
  Story& story(mso_word::SUBDOC_TYPE type);
  /// A header or footer of a section, counted from 0. One that has no paragraph is that of the section
  /// before.
  Story& header(uint32_t section, HeaderSlot slot) {
    return headerStories_[kNoteSeparators + section * 6 + static_cast<uint32_t>(slot)];
  }
  Story& noteSeparator(uint32_t i) { return headerStories_[i]; }
  /// The text of a new text box, whose number is `textBoxCount` then, from 1. `inHeader`: of a shape that is
  /// anchored in a header. See `drawing::textBox`.
  TextBoxText& addTextBox(bool inHeader = false);
  uint16_t textBoxCount(bool inHeader = false) const {
    return static_cast<uint16_t>(textBoxes_[inHeader].size());
  }
  /// What follows is a new section with these properties (none: no property list in the file). The paragraph
  /// before it gets a section mark. Before the first paragraph: properties of the first section.
  WordDocument& section(const Sprms& sprms);
  /// Adds a property group to the piece table; the result is its number, for `Piece::prm` by `prmOfGroup`.
  uint32_t propertyGroup(const Sprms& sprms);

  // --- Tables ---
  WordDocument& style(uint16_t istd, const Style& style);
  /// Adds a font; the result is its index.
  uint16_t font(const Font& font);
  uint16_t font(const Text& name) { return font(Font{.name = name}); }
  /// Adds a list and an override of it; the result is the override's number, for sprmPIlfo (0x460B).
  uint16_t list(const List& list);
  WordDocument& listDefinition(const List& list);
  uint16_t listOverride(const ListOverride& listOverride);

  /// Adds an author of changes; the result is what `inserted` and `deleted` take.
  uint16_t author(const Text& name);
  /// Writes the two streams of the summary.
  WordDocument& summary(const Summary& summary);
  /// Adds an entry to the store of pictures that shapes anchored by `Paragraph::floating` show; the result is
  /// its index, from 1.
  uint32_t storePicture(const Bytes& entry);

  // --- Raw content ---
  /// Adds bytes to the "Data" stream; the result is their offset.
  uint32_t data(const Bytes& bytes);
  /// Adds bytes to the "WordDocument" stream, between the FIB and the text; the result is their offset.
  uint32_t wordDocumentData(const Bytes& bytes);
  /// A table of the table stream by its FIB index, instead of the one that the writer makes, and bytes that
  /// follow it outside its range.
  WordDocument& table(uint32_t fibIndex, const Bytes& table, const Bytes& tail = {});
  /// A table with a range of no bytes.
  WordDocument& dropTable(uint32_t fibIndex) { return table(fibIndex, {}); }
  /// A further stream of the compound file.
  WordDocument& stream(std::u16string_view path, const Bytes& content);

  // --- Damage: edits are made in the order given, tables and pages first, then streams. ---
  WordDocument& editTable(uint32_t fibIndex, const Edit& edit);
  WordDocument& editRunPages(const EditPages& edit);
  WordDocument& editParagraphPages(const EditPages& edit);
  WordDocument& editWordDocument(const Edit& edit);
  WordDocument& editTableStream(const Edit& edit);
  WordDocument& editData(const Edit& edit);
  /// An integer of the FIB, as wide as its type, by its offset.
  template <class T>
  WordDocument& patchFib(size_t offset, T value) {
    return editWordDocument([offset, value](Bytes& stream) { patchInteger(stream, offset, value); });
  }
  /// An integer of the document's properties (DOP), by its offset.
  template <class T>
  WordDocument& patchDop(size_t offset, T value) {
    return editTable(mso_word::FCLCB_DOCUMENT_PROPERTIES,
                     [offset, value](Bytes& dop) { patchInteger(dop, offset, value); });
  }
  /// The offset in the FIB of a table's pair: 4 bytes offset, 4 bytes length.
  static size_t pairOffset(uint32_t fibIndex) { return 154 + size_t{fibIndex} * 8; }

  // --- Result ---
  WordStreams streams() const;
  CompoundFileWriter compound() const;
  Bytes build() const { return compound().bytes(); }
  void save(const std::string& path) const { compound().save(path); }

 private:
  friend class WordDocumentBuilder;
  struct Section {
    size_t firstParagraph;
    Sprms sprms;
  };
  uint32_t fibBytes() const;

  WordOptions options_;
  std::map<uint32_t, Story> stories_;
  std::map<uint32_t, Story> headerStories_;  // by their place in the table of headers
  std::array<TextBoxTexts, 2> textBoxes_;    // of the text, of headers
  std::vector<std::u16string> authors_;
  std::vector<Bytes> storedPictures_;
  std::vector<Section> sections_;
  std::vector<Sprms> propertyGroups_;
  std::map<uint16_t, Style> styles_;
  std::vector<Font> fonts_;
  std::vector<List> lists_;
  std::vector<ListOverride> listOverrides_;
  Bytes data_;
  Bytes wordDocumentData_;
  std::map<uint32_t, TableWithTail> rawTables_;
  std::vector<std::pair<std::u16string, Bytes>> streams_;
  std::vector<std::pair<uint32_t, Edit>> tableEdits_;
  std::vector<EditPages> runPageEdits_, paragraphPageEdits_;
  std::vector<Edit> wordDocumentEdits_, tableStreamEdits_, dataEdits_;
};

}  // namespace support
