#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "flow/drawings.h"
#include "flow/font_names.h"
#include "flow/handler.h"
#include "flow/list_labels.h"
#include "flow/paragraph_finder.h"
#include "flow/property_resolver.h"
#include "flow/recent_lists.h"
#include "flow/run_sprms.h"
#include "flow/story_marks.h"
#include "flow/table_styles.h"
#include "flow/walk.h"
#include "wordreader/list_definitions.h"
#include "wordreader/piece_list.h"
#include "wordreader/property_pages.h"
#include "wordreader/style_table.h"
#include "wordreader/text_reader.h"

namespace pagerex {

/// The document properties (DOP) as far as they concern what is told.
struct DocumentSettings {
  bool hasOddAndEvenHeaders = false;
  uint16_t defaultTabStop = 720;
  uint32_t pageCount = 0;
  struct Numbering {
    uint8_t restart = 0;  ///< 0 never, 1 in each section, 2 on each page
    uint16_t start = 1;
    uint8_t format = 0;  ///< nfc
  };
  Numbering footnotes, endnotes;

  void Read(ByteView dop);
};

/// A run of text, and all that the walk wants to know of it.
struct TextRun {
  uint32_t end = 0;  ///< position behind it
  const RunProperties* properties = nullptr;
  RunSpecials specials;
  SymbolFont asciiSymbols = SymbolFont::kNone;  ///< of its fonts; of the symbol's where it is one
  SymbolFont otherSymbols = SymbolFont::kNone;
  bool hasSymbols = false;  ///< one of these is not kNone
  bool isShown = true;      ///< in the state of the text that is told
};

/// What is known of the document while it is walked: its tables, and what has been counted so far.
struct WalkDocument {
  WalkDocument(WordFile& wordFile, const WalkOptions& walkOptions, RunControl& runControl,
               ProgressListener* listener, FlowHandler& flowHandler);

  /// The run at `position`, in a paragraph of style `istd`; ends at the end of its piece at the latest.
  /// Until the next one is asked for.
  const TextRun& RunAt(uint32_t position, uint16_t istd, const TableStylePlace& place);
  /// The property list of the run at `position`, until the next one is asked for.
  ByteView SprmsAt(uint32_t position);
  const ParagraphProperties& PropertiesOf(const FoundParagraph& paragraph, const TableStylePlace& place);
  std::u16string_view AuthorOf(const Revision& revision);
  /// The picture that is the bullet of lists by its number; null for none.
  const FoundShape* PictureBullet(int32_t number);
  /// Whether a text box is told for the first time.
  bool TakeBox(bool isInHeaders, uint32_t number);
  FieldMarks& FieldsOf(mso_word::SUBDOC_TYPE story);
  /// For a story other than the main text, which begins to count.
  ListLabels& OtherLabels();
  /// Between paragraphs outside of tables: forgets properties, when they are many.
  void MayForget();
  /// Tells of tables that did not tell what they should.
  void WarnOfDamage();

  WordFile& file;
  const WalkOptions options;
  RunControl& control;
  ProgressListener* const progress;
  FlowHandler& handler;

  PieceList pieces;
  TextReader text;
  ParagraphFinder paragraphs;
  PropertyPages runs;
  StyleTable styles;
  FontNames fonts;
  ListDefinitions lists;
  DocumentSettings settings;

  struct LevelSprmsOf final : ListLevels {
    explicit LevelSprmsOf(const ListDefinitions& definitions) : lists(definitions) {}
    ByteView ParagraphSprms(uint16_t ilfo, uint8_t level) override;
    const ListDefinitions& lists;
  };
  LevelSprmsOf levels{lists};
  std::optional<PropertyResolver> resolver;
  std::optional<TableStyles> tableStyles;
  std::optional<ListLabels> labels;
  RangeMarks bookmarks;
  std::vector<std::u16string> bookmarkNames;
  NoteTable notes[2];  ///< by NoteKind
  CommentTable comments;
  StringTable authors;
  Drawings drawings{file};
  uint32_t textBoxCount = 0;
  WrittenCounts written;  ///< of the main text

 private:
  void Resolve(ByteView sprms, uint16_t prm, uint16_t istd, const TableStylePlace& place);

  std::optional<FieldMarks> fields_[mso_word::kSubDocCount];
  std::optional<ListLabels> otherLabels_;
  std::vector<bool> takenBoxes_[2];
  std::unordered_map<int32_t, std::optional<FoundShape>> pictureBullets_;
  /// The run that was asked for last: where its entry lies in the stream, and what else it came from.
  struct LastRun {
    PropertyPages::Entry entry;
    uint32_t pieceStart = UINT32_MAX;
    uint16_t istd = 0;
    TableStylePlace place;
  };
  LastRun last_;
  TextRun run_;
  RecentLists<TextRun> recentRuns_;
  struct RecentParagraph {
    uint32_t kind = 0;  ///< FoundParagraph::kind
    TableStylePlace place;
    const ParagraphProperties* properties = nullptr;
  };
  std::array<RecentParagraph, 64> recentParagraphs_;  ///< by the kind's last bits
  std::u16string author_;
};

}  // namespace pagerex
