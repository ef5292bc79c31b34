#include "flow/property_resolver.h"

#include <cstring>

#include "flow/paragraph_sprms.h"
#include "flow/run_sprms.h"
#include "flow/style_lists.h"

namespace pagerex {
namespace {

/// Results are forgotten, when nobody holds them, from so many on.
constexpr size_t kManyParagraphs = 1024;
constexpr size_t kManyRunKeys = 4096;
constexpr size_t kManyRuns = 2048;

/// Lists that lie in a page of properties are shorter; longer ones lie elsewhere, and stay.
constexpr size_t kPageBytes = 512;

constexpr uint16_t kNormal = 0;

/// A list of a style whose toggles are judged by what is there so far: by its base.
void applyStyleList(ByteView sprms, RunProperties& properties) {
  const RunProperties base = properties;
  applyRunSprms(sprms, properties, base);
}

}  // namespace

PropertyResolver::PropertyResolver(const StyleTable& styles, ListLevels* lists)
    : styles_(styles),
      lists_(lists),
      styleParagraphs_(styles.Count()),
      styleRuns_(styles.Count()),
      paragraphs_(0, PropertyKeyHash{reinterpret_cast<size_t>(this)}),
      runs_(0, PropertyKeyHash{reinterpret_cast<size_t>(this)}) {}

const ParagraphProperties& PropertyResolver::Paragraph(uint16_t istd, ByteView sprms, ByteView pieceSprms,
                                                       const TableStylePlace& place) {
  const PropertyKey key{{sprms, pieceSprms, {}}, place, istd, false};
  if (lastParagraph_ && key == lastParagraphKey_) return *lastParagraph_;
  auto found = paragraphs_.find(key);
  if (found == paragraphs_.end()) {
    found = paragraphs_.emplace(Kept(key, paragraphBytes_), ResolveParagraph(key)).first;
    found->second.serial.number = ++lastSerial_;
  }
  lastParagraphKey_ = found->first;
  lastParagraph_ = &found->second;
  return found->second;
}

ParagraphProperties PropertyResolver::ResolveParagraph(const PropertyKey& key) {
  ParagraphNames names, pieceNames;
  names.style = key.istd;
  readParagraphNames(key.lists[0], names);
  pieceNames.style = names.style;
  readParagraphNames(key.lists[1], pieceNames);

  const bool leavesList = names.setsList && names.listNumber == 0;
  ParagraphProperties properties = leavesList && key.place.istd == kNoStyle
                                       ? StyleParagraphWithoutList(pieceNames.style)
                                       : StyleParagraph(pieceNames.style, key.place);
  if (!pieceNames.setsStyle) ApplyParagraphList(key.lists[0], properties);
  ApplyParagraphList(key.lists[1], properties);
  return properties;
}

/// The level of a list that is named here stands in front of what else is said here.
void PropertyResolver::ApplyParagraphList(ByteView sprms, ParagraphProperties& properties) {
  if (sprms.empty()) return;
  ParagraphNames names;
  names.listNumber = static_cast<int16_t>(properties.listNumber);
  names.listLevel = properties.listLevel;
  readParagraphNames(sprms, names);
  if (lists_ && names.setsList && names.listNumber > 0) {
    applyParagraphSprms(lists_->ParagraphSprms(static_cast<uint16_t>(names.listNumber), names.listLevel),
                        properties);
  }
  applyParagraphSprms(sprms, properties);
}

/// A style that is none of paragraphs counts as "Normal".
ParagraphProperties PropertyResolver::StyleParagraph(uint16_t istd, const TableStylePlace& place) {
  if (styles_.Kind(istd) != StyleKind::kParagraph) istd = kNormal;
  const bool isInStyledTable =
      styles_.Kind(place.istd) == StyleKind::kTable && hasShortLists(styles_, istd, &StyleTable::Papx);
  if (!isInStyledTable) return StyleParagraph(istd);

  ParagraphProperties properties;
  for (const ByteView sprms : tableStyleLists(styles_, place, &StyleTable::Papx, kParagraphCondition)) {
    applyParagraphSprms(sprms, properties);
  }
  const Alignment ofTable = properties.alignment;
  for (const uint16_t style : styles_.Chain(istd)) ApplyStyle(style, properties);
  if (properties.alignment == Alignment::kStart) properties.alignment = ofTable;
  return properties;
}

ParagraphProperties PropertyResolver::StyleParagraph(uint16_t istd) {
  ParagraphProperties properties;
  for (const uint16_t style : styles_.Chain(istd)) {
    if (style >= styleParagraphs_.size()) continue;
    std::unique_ptr<ParagraphProperties>& kept = styleParagraphs_[style];
    if (!kept) {
      ApplyStyle(style, properties);
      kept = std::make_unique<ParagraphProperties>(properties);
    } else {
      properties = *kept;
    }
  }
  return properties;
}

/// A paragraph that was taken out of its style's list has nothing of the list's levels.
ParagraphProperties PropertyResolver::StyleParagraphWithoutList(uint16_t istd) {
  if (styles_.Kind(istd) != StyleKind::kParagraph) istd = kNormal;
  ListLevels* const lists = lists_;
  lists_ = nullptr;
  ParagraphProperties properties;
  for (const uint16_t style : styles_.Chain(istd)) ApplyStyle(style, properties);
  lists_ = lists;
  return properties;
}

void PropertyResolver::ApplyStyle(uint16_t istd, ParagraphProperties& properties) {
  const uint16_t sti = styles_.Sti(istd);
  if (sti >= 1 && sti <= 9) properties.outlineLevel = static_cast<uint8_t>(sti - 1);
  ApplyParagraphList(styles_.Papx(istd), properties);
  properties.style = istd;
}

const RunProperties& PropertyResolver::Run(ByteView sprms, ByteView pieceSprms, uint16_t istd,
                                           const TableStylePlace& place) {
  return RunOf({{sprms, pieceSprms, {}}, place, istd, false});
}

const RunProperties& PropertyResolver::Label(ByteView markSprms, ByteView pieceSprms, ByteView levelSprms,
                                             uint16_t istd, const TableStylePlace& place) {
  return RunOf({{markSprms, pieceSprms, levelSprms}, place, istd, true});
}

const RunProperties& PropertyResolver::RunOf(const PropertyKey& key) {
  if (lastRun_ && key == lastRunKey_) return *lastRun_;
  auto found = runs_.find(key);
  if (found == runs_.end()) {
    if (runs_.size() >= kManyRunKeys) {
      runs_.clear();
      runBytes_.Clear();
    }
    found = runs_.emplace(Kept(key, runBytes_), &Kept(ResolveRun(key))).first;
  }
  lastRunKey_ = found->first;
  lastRun_ = found->second;
  return *lastRun_;
}

const RunProperties& PropertyResolver::Kept(RunProperties properties) {
  properties.serial.number = lastSerial_ + 1;
  const auto [kept, isNew] = keptRuns_.insert(properties);
  lastSerial_ += isNew;
  return *kept;
}

/// With lists that stay.
PropertyKey PropertyResolver::Kept(const PropertyKey& key, ChainAllocator& bytes) {
  PropertyKey kept = key;
  for (ByteView& list : kept.lists) {
    if (list.empty() || list.size() > kPageBytes) continue;
    void* const copy = bytes.Alloc(list.size());
    std::memcpy(copy, list.data(), list.size());
    list = ByteView(copy, list.size());
  }
  return kept;
}

RunProperties PropertyResolver::ResolveRun(const PropertyKey& key) {
  RunProperties style = StyleRun(key.istd, key.place);
  uint16_t characterStyle = style.characterStyle;
  for (const ByteView sprms : key.lists) characterStyle = characterStyleOf(sprms, characterStyle);
  ApplyCharacterStyle(characterStyle, style);

  RunProperties properties = style;
  applyRunSprms(key.lists[0], properties, style);
  applyRunSprms(key.lists[1], properties, style);
  if (key.isLabel) {
    properties.underline = 0;  // numbers are not underlined with the paragraph mark
    applyRunSprms(key.lists[2], properties, style);
  }
  return properties;
}

RunProperties PropertyResolver::StyleRun(uint16_t istd, const TableStylePlace& place) {
  if (styles_.Kind(istd) != StyleKind::kParagraph) istd = kNormal;
  const bool isInStyledTable =
      styles_.Kind(place.istd) == StyleKind::kTable && hasShortLists(styles_, istd, &StyleTable::Chpx);
  if (!isInStyledTable) return StyleRun(istd);

  const RunProperties standard = DefaultRun();
  RunProperties ofTable = standard;
  for (const ByteView sprms : tableStyleLists(styles_, place, &StyleTable::Chpx, kRunCondition)) {
    applyStyleList(sprms, ofTable);
  }
  RunProperties properties = ofTable;
  for (const uint16_t style : styles_.Chain(istd)) applyStyleList(styles_.Chpx(style), properties);
  if (properties.sizeHalfPoints == standard.sizeHalfPoints) {
    properties.sizeHalfPoints = ofTable.sizeHalfPoints;
  }
  return properties;
}

RunProperties PropertyResolver::StyleRun(uint16_t istd) {
  RunProperties properties = DefaultRun();
  for (const uint16_t style : styles_.Chain(istd)) {
    if (style >= styleRuns_.size()) continue;
    std::unique_ptr<RunProperties>& kept = styleRuns_[style];
    if (!kept) {
      applyStyleList(styles_.Chpx(style), properties);
      kept = std::make_unique<RunProperties>(properties);
    } else {
      properties = *kept;
    }
  }
  return properties;
}

RunProperties PropertyResolver::DefaultRun() const {
  RunProperties properties;
  properties.fonts = {styles_.AsciiFont(), styles_.EastAsianFont(), styles_.OtherFont(),
                      styles_.ComplexFont()};
  return properties;
}

/// Toggles are judged by the paragraph, also in the style's bases: Word makes character styles that are bold
/// so that they are not in paragraphs that are.
void PropertyResolver::ApplyCharacterStyle(uint16_t istd, RunProperties& properties) const {
  const bool isThere =
      styles_.Kind(istd) == StyleKind::kCharacter && hasShortLists(styles_, istd, &StyleTable::Chpx);
  if (isThere) {
    const RunProperties paragraph = properties;
    for (const uint16_t style : styles_.Chain(istd)) {
      applyRunSprms(styles_.Chpx(style), properties, paragraph);
    }
  }
  properties.characterStyle = istd;
}

bool PropertyResolver::MayForget() {
  const bool hasManyParagraphs = paragraphs_.size() >= kManyParagraphs;
  const bool hasManyRuns = keptRuns_.size() >= kManyRuns;
  if (hasManyParagraphs) {
    paragraphs_.clear();
    paragraphBytes_.Clear();
    lastParagraph_ = nullptr;
  }
  if (hasManyRuns) {
    runs_.clear();
    keptRuns_.clear();
    runBytes_.Clear();
    lastRun_ = nullptr;
  }
  return hasManyParagraphs || hasManyRuns;
}

}  // namespace pagerex
