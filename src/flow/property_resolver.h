#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "flow/properties.h"
#include "flow/property_memo.h"
#include "wordreader/style_table.h"

namespace pagerex {

/// What the resolver asks of the lists.
class ListLevels {
 public:
  ListLevels() = default;
  ListLevels(const ListLevels&) = delete;
  ListLevels& operator=(const ListLevels&) = delete;
  virtual ~ListLevels() = default;

  /// The paragraph sprms of a list's level (0 to 8), overrides included; empty for none. The bytes stay as
  /// long as the resolver. `ilfo` is from 1.
  virtual ByteView ParagraphSprms(uint16_t ilfo, uint8_t level) = 0;
};

/// Puts properties together: document defaults, table style, paragraph style, list level, character style,
/// and what stands at the paragraph or the run. The style table must stay as long as the resolver; of the
/// lists that it is given only those that are longer than a page of properties.
///
/// A result stays until MayForget() says that it is forgotten. Run properties that are equal have one
/// address.
class PropertyResolver {
 public:
  PropertyResolver(const StyleTable& styles, ListLevels* lists);

  /// `istd` and `sprms` as they stand in the paragraph's PAPX (a huge one already exchanged), `pieceSprms`
  /// those of its piece. `style` of the result is the style that holds, which the runs' calls want.
  const ParagraphProperties& Paragraph(uint16_t istd, ByteView sprms, ByteView pieceSprms,
                                       const TableStylePlace& place);
  /// `istd` is the paragraph's style.
  const RunProperties& Run(ByteView sprms, ByteView pieceSprms, uint16_t istd, const TableStylePlace& place);
  /// Text of a paragraph style without anything of its own.
  const RunProperties& ParagraphStyleRun(uint16_t istd) { return Run({}, {}, istd, {}); }
  /// A paragraph style without anything of its own.
  const ParagraphProperties& ParagraphStyle(uint16_t istd) { return Paragraph(istd, {}, {}, {}); }
  /// A list item's label: the paragraph mark's properties, and over them those of the list level.
  const RunProperties& Label(ByteView markSprms, ByteView pieceSprms, ByteView levelSprms, uint16_t istd,
                             const TableStylePlace& place);

  /// Says that nobody holds a result any more. They are forgotten when they are many; true if they were.
  bool MayForget();

 private:
  const RunProperties& RunOf(const PropertyKey& key);
  const RunProperties& Kept(RunProperties properties);

  ParagraphProperties ResolveParagraph(const PropertyKey& key);
  ParagraphProperties StyleParagraph(uint16_t istd, const TableStylePlace& place);
  ParagraphProperties StyleParagraph(uint16_t istd);
  ParagraphProperties StyleParagraphWithoutList(uint16_t istd);
  void ApplyStyle(uint16_t istd, ParagraphProperties& properties);
  void ApplyParagraphList(ByteView sprms, ParagraphProperties& properties);

  RunProperties ResolveRun(const PropertyKey& key);
  RunProperties StyleRun(uint16_t istd, const TableStylePlace& place);
  RunProperties StyleRun(uint16_t istd);
  RunProperties DefaultRun() const;
  void ApplyCharacterStyle(uint16_t istd, RunProperties& properties) const;

  static PropertyKey Kept(const PropertyKey& key, ChainAllocator& bytes);

  const StyleTable& styles_;
  ListLevels* lists_;
  /// Of styles outside of tables, by istd; made when they are asked for.
  std::vector<std::unique_ptr<ParagraphProperties>> styleParagraphs_;
  std::vector<std::unique_ptr<RunProperties>> styleRuns_;
  PropertyMap<ParagraphProperties> paragraphs_;
  PropertyMap<const RunProperties*> runs_;
  RunPropertiesSet keptRuns_;
  ChainAllocator paragraphBytes_, runBytes_;  ///< lists of the keys
  PropertyKey lastParagraphKey_, lastRunKey_;
  const ParagraphProperties* lastParagraph_ = nullptr;
  const RunProperties* lastRun_ = nullptr;
  uint32_t lastSerial_ = 0;
};

}  // namespace pagerex
