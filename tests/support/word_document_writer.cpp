#include "support/word_document_writer.h"

#include <algorithm>
#include <stdexcept>

#include "support/word_text_tables.h"

namespace support {

using namespace mso_word;

namespace {

constexpr uint32_t kHeaders = 11;  // FIB indexes of tables that the reader does not name
constexpr uint32_t kAuthors = 51;
constexpr uint32_t kPageUnit = 512;
constexpr uint32_t kFixedFibBytes = 32 + 2 + 28 + 2 + 88 + 2;  // header, rgsw, rglw and the three counts

/// What differs with the version of Word, by the count of pairs in the FIB.
struct Version {
  uint16_t pairs;
  uint16_t newWords;  ///< count of 16-bit values behind the pairs, the first of which is the version
  uint16_t number;
  uint16_t documentPropertyBytes;
};
constexpr Version kVersions[] = {
    {183, 5, 0x0112, 674}, {164, 2, 0x010C, 616}, {136, 2, 0x0101, 594},
    {108, 2, 0x00D9, 544}, {0, 0, 0, 500},
};

const Version& versionOf(uint16_t pairs) {
  return *std::find_if(std::begin(kVersions), std::end(kVersions),
                       [pairs](const Version& version) { return pairs >= version.pairs; });
}

uint32_t alignUp(uint32_t value, uint32_t unit) {
  return (value + unit - 1) / unit * unit;
}

template <class Edits, class Target>
void apply(const Edits& edits, Target& target) {
  for (const auto& edit : edits) edit(target);
}

}  // namespace

/// One build: text first, then the tables that point at it, then the streams.
class WordDocumentBuilder {
 public:
  explicit WordDocumentBuilder(const WordDocument& document) : doc_(document), options_(document.options_) {}

  WordStreams build() {
    streams_.data = doc_.data_;
    layOutText();
    writePages();
    writeSections();
    makePieceTable();
    makeHeaderTable();
    addTextTables(text_, options_.closingMarks, options_.fibPairs > FCLCB_ANNOTATION_DATES, tables_);
    addDrawingTables(text_, doc_.storedPictures_, tables_);
    addTextBoxTables(text_, SUBDOC_TEXTBOX, doc_.textBoxes_[0], tables_);
    addTextBoxTables(text_, SUBDOC_HEADER_TEXTBOX, doc_.textBoxes_[1], tables_);
    makeFormatTables();
    takeRawTables();
    writeTableStream();
    writeFib();
    apply(doc_.wordDocumentEdits_, streams_.wordDocument);
    apply(doc_.tableStreamEdits_, streams_.table);
    apply(doc_.dataEdits_, streams_.data);
    return std::move(streams_);
  }

 private:
  // --- "WordDocument" ---

  void layOutText() {
    text_ = flatten(storyParts(), options_.closingMarks);
    Bytes& stream = streams_.wordDocument;
    stream.resize(doc_.fibBytes());
    stream.insert(stream.end(), doc_.wordDocumentData_.begin(), doc_.wordDocumentData_.end());
    stream.resize(alignUp(static_cast<uint32_t>(stream.size()), kPageUnit));
    streams_.textStart = static_cast<uint32_t>(stream.size());
    placed_ = placeText(text_, streams_.textStart);
    stream.insert(stream.end(), placed_.bytes.begin(), placed_.bytes.end());
    textEnd_ = static_cast<uint32_t>(stream.size());
  }

  /// Each sub-document's own text, and behind it the notes in the order of their references.
  StoryParts storyParts() {
    StoryParts parts;
    parts[SUBDOC_MAIN].push_back(&doc_);
    for (const auto& [type, story] : doc_.stories_) parts[type].push_back(&story);
    for (const auto& paragraph : doc_.paragraphs()) {
      for (const Anchor& anchor : paragraph->anchors()) {
        if (anchor.content) parts[noteStoryOf(anchor.kind)].push_back(anchor.content.get());
      }
    }
    addHeaders(parts[SUBDOC_HEADER]);
    addTextBoxes(parts[SUBDOC_TEXTBOX], doc_.textBoxes_[0]);
    addTextBoxes(parts[SUBDOC_HEADER_TEXTBOX], doc_.textBoxes_[1]);
    return parts;
  }

  using Parts = StoryParts::value_type;

  /// Behind each one that has text stands a mark which belongs to none.
  void addHeaders(Parts& parts) {
    if (doc_.headerStories_.empty()) return;
    if (!parts.empty()) throw std::invalid_argument("headers lie in a story that has text of its own");
    guard_.paragraph();
    const size_t count = kNoteSeparators + allSections().size() * 6;
    for (uint32_t i = 0; i < count; ++i) {
      const auto found = doc_.headerStories_.find(i);
      const bool isThere = found != doc_.headerStories_.end() && !found->second.empty();
      headerParts_.push_back(parts.size());
      parts.push_back(isThere ? &found->second : &empty_);
      if (isThere) parts.push_back(&guard_);
    }
    if (doc_.headerStories_.rbegin()->first >= count) throw std::invalid_argument("a header has no section");
  }

  static void addTextBoxes(Parts& parts, const TextBoxTexts& boxes) {
    if (!parts.empty() && !boxes.empty())
      throw std::invalid_argument("text boxes lie in a story that has text of its own");
    for (const auto& box : boxes) parts.push_back(&box->story);
  }

  void writePages() {
    const auto runs = packFkp(runEntries(text_, placed_), 1, options_.maxFkpEntries);
    const auto paragraphs =
        packFkp(paragraphEntries(text_, placed_, [this](const Paragraph& p) { return papxOf(p); }), 13,
                options_.maxFkpEntries);
    tables_[FCLCB_CHPX_BINS].table = writePages(runs, doc_.runPageEdits_);
    tables_[FCLCB_PAPX_BINS].table = writePages(paragraphs, doc_.paragraphPageEdits_);
  }

  /// Appends the pages; returns their bin table.
  Bytes writePages(FkpPages fkp, const std::vector<WordDocument::EditPages>& edits) {
    if (fkp.pages.empty()) return {};
    apply(edits, fkp.pages);
    Bytes& stream = streams_.wordDocument;
    stream.resize(alignUp(static_cast<uint32_t>(stream.size()), kPageUnit));
    std::vector<Bytes> pageNumbers;
    for (Bytes& page : fkp.pages) {
      pageNumbers.push_back(ByteWriter().u32(stream.size() / kPageUnit).take());
      page.resize(kFkpBytes);
      stream.insert(stream.end(), page.begin(), page.end());
    }
    return positionTable(fkp.starts, pageNumbers);
  }

  Bytes papxOf(const Paragraph& paragraph) {
    if (!paragraph.hasPapx()) return {};
    const Bytes& grpprl = paragraph.properties().bytes();
    Bytes data = papxData(paragraph.styleIndex(), grpprl);
    const bool fits = data.size() <= kMaxPapxData;
    if (fits && !paragraph.hugeOpcode()) return data;
    const auto offset = static_cast<uint32_t>(streams_.data.size());
    const Bytes huge = ByteWriter().u16(grpprl.size()).bytes(grpprl).take();
    streams_.data.insert(streams_.data.end(), huge.begin(), huge.end());
    const uint16_t opcode = paragraph.hugeOpcode() ? paragraph.hugeOpcode() : 0x6646;
    return papxData(paragraph.styleIndex(), sprm32(opcode, offset));
  }

  std::vector<WordDocument::Section> allSections() const {
    std::vector<WordDocument::Section> sections = doc_.sections_;
    if (sections.empty() || sections[0].firstParagraph > 0) sections.insert(sections.begin(), {0, {}});
    return sections;
  }

  void writeSections() {
    std::vector<uint32_t> positions;
    std::vector<Bytes> descriptors;
    for (const auto& [firstParagraph, sprms] : allSections()) {
      positions.push_back(startOfParagraph(firstParagraph));
      const auto fcSepx = static_cast<uint32_t>(streams_.wordDocument.size());
      descriptors.push_back(ByteWriter().u16(0).u32(sprms.empty() ? 0xFFFFFFFF : fcSepx).zeros(6).take());
      if (sprms.empty()) continue;
      const Bytes sepx = ByteWriter().u16(sprms.size()).bytes(sprms.bytes()).take();
      streams_.wordDocument.insert(streams_.wordDocument.end(), sepx.begin(), sepx.end());
    }
    positions.push_back(text_.end());
    tables_[FCLCB_SECTIONS].table = positionTable(positions, descriptors);
  }

  /// Where each header begins, where the last one ends, and the end of their story.
  void makeHeaderTable() {
    if (headerParts_.empty()) return;
    const std::vector<uint32_t>& starts = text_.partStarts[SUBDOC_HEADER];
    const uint32_t end = text_.storyLength(SUBDOC_HEADER);
    std::vector<uint32_t> positions;
    for (const size_t part : headerParts_) positions.push_back(starts[part]);
    positions.push_back(options_.closingMarks.ofStory[SUBDOC_HEADER] ? end - 1 : end);
    positions.push_back(end);
    tables_[kHeaders].table = positionTable(positions);
  }

  /// Character position at which the n-th paragraph of the main text begins, or at which the text ends.
  uint32_t startOfParagraph(size_t n) const {
    uint32_t cp = 0;
    for (size_t i = 0; i < std::min(n, doc_.paragraphs().size()); ++i) {
      const Paragraph& paragraph = *doc_.paragraphs()[i];
      cp += static_cast<uint32_t>(paragraph.length()) + paragraph.markUnit().has_value();
    }
    return cp;
  }

  void makePieceTable() {
    ByteWriter clx;
    for (const Sprms& group : doc_.propertyGroups_) clx.u8(1).u16(group.size()).bytes(group.bytes());
    const Bytes pieces = pieceTable();
    tables_[FCLCB_CLX].table = clx.u8(2).u32(pieces.size()).bytes(pieces).take();
  }

  Bytes pieceTable() const {
    std::vector<uint32_t> positions;
    std::vector<Bytes> descriptors;
    for (const PlacedPiece& piece : placed_.pieces) {
      positions.push_back(piece.cpStart);
      const uint32_t rawFc = piece.wide ? piece.fc : piece.fc * 2 | PCD::kAnsi;
      descriptors.push_back(ByteWriter().u16(piece.noParaLast).u32(rawFc).u16(piece.prm).take());
    }
    positions.push_back(text_.end());
    return positionTable(positions, descriptors);
  }

  // --- Styles, fonts, lists, document properties ---

  void makeFormatTables() {
    tables_[FCLCB_STYLE_SHEET].table = styleSheetTable(allStyles(), options_.styleSheet);
    const std::vector<Font> defaultFonts = {Font{.name = u"Times New Roman"}};
    tables_[FCLCB_FONTS].table = fontTable(doc_.fonts_.empty() ? defaultFonts : doc_.fonts_);
    if (!doc_.lists_.empty()) tables_[FCLCB_LIST_DEFINITIONS] = listDefinitionTable(doc_.lists_);
    if (!doc_.listOverrides_.empty()) {
      tables_[FCLCB_LIST_OVERRIDES].table = listOverrideTable(doc_.listOverrides_);
    }
    tables_[FCLCB_DOCUMENT_PROPERTIES].table = documentProperties();
    if (doc_.authors_.empty()) return;
    std::vector<std::u16string> authors = {u"Unknown"};
    authors.insert(authors.end(), doc_.authors_.begin(), doc_.authors_.end());
    tables_[kAuthors].table = stringTable(authors);
  }

  std::vector<std::optional<Style>> allStyles() const {
    std::vector<std::optional<Style>> styles(options_.minStyleSlots);
    for (const auto& [istd, style] : doc_.styles_) {
      if (istd >= styles.size()) styles.resize(istd + 1);
      styles[istd] = style;
    }
    if (!styles.empty() && !styles[0]) styles[0] = Style().name(u"Normal").sti(0);
    return styles;
  }

  Bytes documentProperties() const {
    Bytes dop(versionOf(options_.fibPairs).documentPropertyBytes);
    patchInteger(dop, 0, uint16_t{1 << 5});       // footnotes at the bottom of the page
    patchInteger(dop, 2, uint16_t{1 << 2});       // numbered from 1, without restart
    patchInteger(dop, 10, uint16_t{720});         // default tab stops
    patchInteger(dop, 14, uint16_t{360});         // hyphenation zone
    patchInteger(dop, 52, uint16_t{1 << 2});      // endnotes likewise,
    patchInteger(dop, 54, uint16_t{3 | 2 << 6});  // at the end of the document, in lower roman
    return dop;
  }

  // --- Table stream and FIB ---

  void takeRawTables() {
    for (const auto& [fibIndex, table] : doc_.rawTables_) tables_[fibIndex] = table;
    for (const auto& [fibIndex, edit] : doc_.tableEdits_) edit(tables_[fibIndex].table);
  }

  void writeTableStream() {
    Bytes& stream = streams_.table;
    pairs_.resize(options_.fibPairs);
    for (const auto& [fibIndex, content] : tables_) {
      const auto& [table, tail] = content;
      if (fibIndex >= pairs_.size()) throw std::invalid_argument("the FIB has no pair for this table");
      pairs_[fibIndex] = {static_cast<uint32_t>(stream.size()), static_cast<uint32_t>(table.size())};
      stream.insert(stream.end(), table.begin(), table.end());
      stream.insert(stream.end(), tail.begin(), tail.end());
    }
  }

  void writeFib() {
    ByteWriter fib;
    writeFibHeader(fib);
    fib.u16(14).zeros(26).u16(0x0409);
    fib.u16(22).u32(streams_.wordDocument.size()).zeros(8);
    for (uint32_t type = 0; type < kSubDocCount; ++type) fib.u32(text_.storyLength(type));
    fib.zeros(11 * 4);
    fib.u16(options_.fibPairs);
    for (const FCLCB& pair : pairs_) fib.u32(pair.fc).u32(pair.lcb);
    const Version& version = versionOf(options_.fibPairs);
    fib.u16(version.newWords);
    if (version.newWords) fib.u16(version.number).zeros((version.newWords - 1) * 2);
    patchBytes(streams_.wordDocument, 0, fib.take());
  }

  void writeFibHeader(ByteWriter& fib) const {
    constexpr uint16_t kExtendedCharacters = 0x1000;
    const uint32_t flags =
        options_.fibFlags | kExtendedCharacters | (options_.tableStream ? FIB_HEADER::kTable1 : 0);
    fib.u16(0xA5EC).u16(0x00C1).u16(0).u16(0x0409).u16(0).u16(flags);
    fib.u16(0x00BF).zeros(10).u32(streams_.textStart).u32(textEnd_);
  }

  const WordDocument& doc_;
  const WordOptions& options_;
  FlatText text_;
  PlacedText placed_;
  uint32_t textEnd_ = 0;
  Story guard_, empty_;
  std::vector<size_t> headerParts_;  // by their place in the table of headers
  TableSet tables_;
  std::vector<FCLCB> pairs_;
  WordStreams streams_;
};

// --- WordDocument ---

Story& WordDocument::story(SUBDOC_TYPE type) {
  return type == SUBDOC_MAIN ? static_cast<Story&>(*this) : stories_[type];
}

TextBoxText& WordDocument::addTextBox(bool inHeader) {
  return *textBoxes_[inHeader].emplace_back(std::make_unique<TextBoxText>());
}

WordDocument& WordDocument::section(const Sprms& sprms) {
  constexpr char16_t kSectionMark = 0x0C;
  if (!paragraphs().empty() && paragraphs().back()->markUnit() == u'\r') {
    paragraphs().back()->endWith(kSectionMark);
  }
  sections_.push_back({paragraphs().size(), sprms});
  return *this;
}

uint32_t WordDocument::propertyGroup(const Sprms& sprms) {
  propertyGroups_.push_back(sprms);
  return static_cast<uint32_t>(propertyGroups_.size() - 1);
}

WordDocument& WordDocument::style(uint16_t istd, const Style& style) {
  styles_[istd] = style;
  return *this;
}

uint16_t WordDocument::font(const Font& font) {
  fonts_.push_back(font);
  return static_cast<uint16_t>(fonts_.size() - 1);
}

uint16_t WordDocument::list(const List& list) {
  listDefinition(list);
  return listOverride({.lsid = list.lsid});
}

WordDocument& WordDocument::listDefinition(const List& list) {
  lists_.push_back(list);
  return *this;
}

uint16_t WordDocument::listOverride(const ListOverride& listOverride) {
  listOverrides_.push_back(listOverride);
  return static_cast<uint16_t>(listOverrides_.size());
}

/// Number 0 is nobody's.
uint16_t WordDocument::author(const Text& name) {
  authors_.push_back(name.units());
  return static_cast<uint16_t>(authors_.size());
}

WordDocument& WordDocument::summary(const Summary& summary) {
  stream(u"\005SummaryInformation", summary.summaryStream());
  return stream(u"\005DocumentSummaryInformation", summary.documentSummaryStream());
}

uint32_t WordDocument::storePicture(const Bytes& entry) {
  storedPictures_.push_back(entry);
  return static_cast<uint32_t>(storedPictures_.size());
}

namespace {
uint32_t append(Bytes& target, const Bytes& bytes) {
  const auto offset = static_cast<uint32_t>(target.size());
  target.insert(target.end(), bytes.begin(), bytes.end());
  return offset;
}
}  // namespace

uint32_t WordDocument::data(const Bytes& bytes) {
  return append(data_, bytes);
}

uint32_t WordDocument::wordDocumentData(const Bytes& bytes) {
  return fibBytes() + append(wordDocumentData_, bytes);
}

WordDocument& WordDocument::table(uint32_t fibIndex, const Bytes& table, const Bytes& tail) {
  rawTables_[fibIndex] = {table, tail};
  return *this;
}

WordDocument& WordDocument::stream(std::u16string_view path, const Bytes& content) {
  streams_.emplace_back(path, content);
  return *this;
}

WordDocument& WordDocument::editTable(uint32_t fibIndex, const Edit& edit) {
  tableEdits_.emplace_back(fibIndex, edit);
  return *this;
}

WordDocument& WordDocument::editRunPages(const EditPages& edit) {
  runPageEdits_.push_back(edit);
  return *this;
}

WordDocument& WordDocument::editParagraphPages(const EditPages& edit) {
  paragraphPageEdits_.push_back(edit);
  return *this;
}

WordDocument& WordDocument::editWordDocument(const Edit& edit) {
  wordDocumentEdits_.push_back(edit);
  return *this;
}

WordDocument& WordDocument::editTableStream(const Edit& edit) {
  tableStreamEdits_.push_back(edit);
  return *this;
}

WordDocument& WordDocument::editData(const Edit& edit) {
  dataEdits_.push_back(edit);
  return *this;
}

WordStreams WordDocument::streams() const {
  return WordDocumentBuilder(*this).build();
}

CompoundFileWriter WordDocument::compound() const {
  WordStreams built = streams();
  const int tableName = options_.tableStreamName.value_or(options_.tableStream);
  CompoundFileWriter file(options_.compound);
  file.stream(u"WordDocument", std::move(built.wordDocument));
  file.stream(tableName ? u"1Table" : u"0Table", std::move(built.table));
  if (!built.data.empty()) file.stream(u"Data", std::move(built.data));
  for (const auto& [path, content] : streams_) file.stream(path, content);
  return file;
}

/// The FIB with its tail, which ends where the format lets the text begin at the earliest.
uint32_t WordDocument::fibBytes() const {
  const Version& version = versionOf(options_.fibPairs);
  return alignUp(kFixedFibBytes + options_.fibPairs * 8 + 2 + version.newWords * 2, kPageUnit);
}

}  // namespace support
