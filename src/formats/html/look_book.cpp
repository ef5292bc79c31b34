#include "formats/html/look_book.h"

#include <algorithm>

#include "base/language_tag.h"
#include "formats/html/page_text.h"

namespace pagerex {
namespace {

constexpr uint16_t kNoLanguage = 0x0400;
constexpr uint16_t kNormal = 0;
constexpr size_t kManyLooks = 1 << 13;
constexpr size_t kManyMarkups = 1 << 14;

struct StyleRow {
  std::u16string_view name;
  bool isEmphasis, isStrong;
};
/// Character styles that mean what others only show.
constexpr StyleRow kEmphases[] = {
    {u"Emphasis", true, false},
    {u"Subtle Emphasis", true, false},
    {u"Intense Emphasis", true, true},
    {u"Strong", false, true},
};

Colour groundOf(const ParagraphProperties& paragraph, const Colour& around) {
  return paragraph.shading.isThere && !paragraph.shading.fill.isAutomatic ? paragraph.shading.fill : around;
}

/// What does not concern the look.
RunProperties withoutHistory(const RunProperties& run) {
  RunProperties plain = run;
  plain.revision = plain.deletion = {};
  plain.noProof = false;
  return plain;
}

uint8_t otherScripts(const RunProperties& run) {
  const FontNumbers& fonts = run.fonts;
  const bool isEastAsian = fonts.eastAsian != fonts.ascii || run.eastAsianLanguage != run.language;
  const bool isOther = fonts.other != fonts.ascii;
  const bool isComplex = fonts.complex != fonts.ascii || run.complexSizeHalfPoints != run.sizeHalfPoints ||
                         run.complexLanguage != run.language;
  return static_cast<uint8_t>(isEastAsian << static_cast<int>(FontScript::kEastAsian) |
                              isOther << static_cast<int>(FontScript::kOther) |
                              isComplex << static_cast<int>(FontScript::kComplex));
}

void appendClass(std::string& attributes, std::string_view first, std::string_view second) {
  if (first.empty() && second.empty()) return;
  attributes += " class=";
  if (first.empty() || second.empty()) {
    attributes.append(first).append(second);
  } else {
    attributes.append("\"").append(first).append(" ").append(second).append("\"");
  }
}

struct Element {
  Tags tag;
  std::string_view name;
};
/// From the outermost on.
constexpr Element kElements[] = {
    {kTagUnderline, "u"}, {kTagStrike, "s"},   {kTagBold, "b"},
    {kTagItalic, "i"},    {kTagRaised, "sup"}, {kTagLowered, "sub"},
};

Tags tagsOf(const RunProperties& run, const RunProperties& base) {
  unsigned tags = 0;
  if (run.bold && !base.bold) tags |= kTagBold;
  if (run.italic && !base.italic) tags |= kTagItalic;
  if (run.underline != 0) tags |= kTagUnderline;
  if (run.strike || run.doubleStrike) tags |= kTagStrike;
  if (run.verticalAlignment == 1) tags |= kTagRaised;
  if (run.verticalAlignment == 2) tags |= kTagLowered;
  return static_cast<Tags>(tags);
}

}  // namespace

LookBook::LookBook(const DocumentFacts& facts, StyleSheet& sheet)
    : facts_(facts),
      sheet_(sheet),
      fonts_(facts.fonts),
      normalParagraph_(facts.styles ? facts.styles->ParagraphOf(kNormal) : ParagraphProperties()),
      normalRun_(lookOfBlock(facts.styles ? facts.styles->RunOf(kNormal) : RunProperties())),
      language_(facts.language) {
  appendRunCss(pageText_, normalRun_, unstyledRun(), FontScript::kAscii, 0, fonts_, {});
}

std::string LookBook::PageParagraph() const {
  std::string css;
  appendParagraphCss(css, normalParagraph_, ParagraphProperties());
  return css;
}

LookBook::Look LookBook::LookOf(const RunProperties& properties) {
  Recent& recent = recentLooks_[properties.serial.number % recentLooks_.size()];
  if (properties.serial.number != 0 && recent.serial == properties.serial.number) return recent.look;
  const auto [known, isNew] =
      lookNumbers_.try_emplace(withoutHistory(properties), static_cast<Look>(looks_.size()));
  if (isNew) {
    looks_.push_back(&known->first);
    otherScripts_.push_back(otherScripts(properties));
  }
  recent = {properties.serial.number, known->second};
  return known->second;
}

void LookBook::MayForget() {
  if (runs_.size() > kManyMarkups) runs_.clear();
  if (blocks_.size() > kManyMarkups) blocks_.clear();
  if (looks_.size() < kManyLooks && contexts_.size() < kManyLooks) return;
  lookNumbers_.clear();
  looks_.clear();
  otherScripts_.clear();
  recentLooks_.fill({});
  contexts_.clear();
  runs_.clear();
  blocks_.clear();
}

// Blocks

size_t LookBook::BlockKeyHash::operator()(const BlockKey& key) const {
  constexpr uint64_t kOdd = 0x9E3779B97F4A7C15;
  uint64_t state = key.serial | uint64_t{key.look} << 32;
  state = (state ^ state >> 31) * kOdd;
  state ^= key.ground.rgb | uint64_t{key.ground.isAutomatic} << 24 | uint64_t{key.neighbours} << 25;
  state *= kOdd;
  return static_cast<size_t>(state ^ state >> 29);
}

const BlockMarkup& LookBook::Block(const ParagraphProperties& paragraph, const Neighbours& neighbours,
                                   Look look, const Colour& ground) {
  const uint32_t serial = paragraph.serial.number;
  if (serial == 0) return unkept_ = MakeBlock(paragraph, neighbours, look, ground);
  const auto bits = static_cast<uint8_t>(neighbours.joinsAbove | neighbours.joinsBelow << 1 |
                                         neighbours.isStyleAbove << 2 | neighbours.isStyleBelow << 3);
  const BlockKey key{serial, look, ground, bits};
  const auto known = blocks_.find(key);
  if (known != blocks_.end()) return known->second;
  return blocks_.emplace(key, MakeBlock(paragraph, neighbours, look, ground)).first->second;
}

/// The paragraph takes over what its first text has in its font, size and colour, so that it needs no
/// elements of its own.
BlockMarkup LookBook::MakeBlock(const ParagraphProperties& paragraph, const Neighbours& neighbours, Look look,
                                const Colour& ground) {
  const Style& style = StyleOf(paragraph.style);
  const RunProperties& first = Properties(look);
  RunProperties taken = style.run;
  taken.fonts = first.fonts;
  taken.colour = first.colour;
  taken.sizeHalfPoints = first.sizeHalfPoints;
  taken.complexSizeHalfPoints = first.complexSizeHalfPoints;
  taken.language = first.language;
  taken.eastAsianLanguage = first.eastAsianLanguage;
  taken.complexLanguage = first.complexLanguage;
  taken.serial = {};

  const Colour under = groundOf(paragraph, ground);
  std::string css;
  appendParagraphCss(css, paragraph, style.paragraph, neighbours);
  appendRunCss(css, taken, style.run, FontScript::kAscii, 0, fonts_, {under, groundOf(style.paragraph, {})});
  BlockMarkup markup;
  appendClass(markup.attributes, style.name, sheet_.ClassOf('p', css));
  if (LanguageOf(taken, FontScript::kAscii) != language_) {
    const std::string_view tag = languageTag(taken.language);
    if (!tag.empty()) markup.attributes.append(" lang=").append(tag);
  }
  if (paragraph.isRightToLeft != normalParagraph_.isRightToLeft)
    markup.attributes += paragraph.isRightToLeft ? " dir=rtl" : " dir=ltr";
  markup.context = ContextOf({LookOf(taken), under});
  return markup;
}

const LookBook::Style& LookBook::StyleOf(uint16_t istd) {
  const auto known = styles_.find(istd);
  if (known != styles_.end()) return known->second;
  Style style{{}, normalParagraph_, normalRun_};
  if (istd != kNormal && facts_.styles) {
    style.paragraph = facts_.styles->ParagraphOf(istd);
    style.run = lookOfBlock(facts_.styles->RunOf(istd));
    std::string css;
    appendParagraphCss(css, style.paragraph, normalParagraph_);
    appendRunCss(css, style.run, normalRun_, FontScript::kAscii, 0, fonts_,
                 {groundOf(style.paragraph, {}), {}});
    style.name = sheet_.AddStyle(facts_.styles->NameOf(istd), css);
  }
  return styles_.emplace(istd, std::move(style)).first->second;
}

uint32_t LookBook::ContextOf(const Context& context) {
  // Those that come again do so soon; one that stands twice does no harm.
  constexpr size_t kRecent = 32;
  const size_t first = contexts_.size() > kRecent ? contexts_.size() - kRecent : 0;
  for (size_t i = contexts_.size(); i > first; --i) {
    if (contexts_[i - 1] == context) return static_cast<uint32_t>(i - 1);
  }
  contexts_.push_back(context);
  return static_cast<uint32_t>(contexts_.size() - 1);
}

// Runs

const RunMarkup& LookBook::Run(Look look, uint32_t context, FontScript script) {
  const uint64_t key = look | uint64_t{context} << 30 | uint64_t{static_cast<uint8_t>(script)} << 60;
  const auto known = runs_.find(key);
  if (known != runs_.end()) return known->second;
  return runs_.emplace(key, MakeRun(look, context, script)).first->second;
}

RunMarkup LookBook::MakeRun(Look look, uint32_t context, FontScript script) {
  const RunProperties& run = Properties(look);
  const RunProperties& base = Properties(contexts_[context].look);
  const Colour& ground = contexts_[context].ground;
  const Tags tags = tagsOf(run, base);
  std::string css, attributes;
  appendRunCss(css, run, base, script, tags, fonts_, {ground, ground});
  appendClass(attributes, sheet_.ClassOf('r', css), {});
  const uint16_t language = LanguageOf(run, script);
  if (language != LanguageOf(base, FontScript::kAscii) && language != kNoLanguage) {
    const std::string_view tag = languageTag(language);
    if (!tag.empty()) attributes.append(" lang=").append(tag);
  }
  const Emphasis emphasis = EmphasisOf(run.characterStyle);
  RunMarkup markup;
  for (const Element& element : kElements) {
    if (!(tags & element.tag)) continue;
    std::string_view name = element.name;
    if (element.tag == kTagBold && emphasis >= Emphasis::kStrong) name = "strong";
    if (element.tag == kTagItalic && (emphasis == Emphasis::kEmphasis || emphasis == Emphasis::kBoth))
      name = "em";
    markup.open.append("<").append(name).append(attributes).append(">");
    markup.close.insert(0, "</" + std::string(name) + ">");
    attributes.clear();
  }
  if (!attributes.empty()) {
    markup.open = "<span" + attributes + ">";
    markup.close = "</span>";
  }
  return markup;
}

uint16_t LookBook::LanguageOf(const RunProperties& run, FontScript script) const {
  const uint16_t language = script == FontScript::kEastAsian ? run.eastAsianLanguage
                            : script == FontScript::kComplex ? run.complexLanguage
                                                             : run.language;
  return language == kNoLanguage || language == 0 ? language_ : language;
}

LookBook::Emphasis LookBook::EmphasisOf(uint16_t characterStyle) {
  if (characterStyle >= emphases_.size()) emphases_.resize(size_t{characterStyle} + 1, Emphasis::kUnknown);
  Emphasis& known = emphases_[characterStyle];
  if (known != Emphasis::kUnknown || !facts_.styles) return known;
  const std::u16string_view name = facts_.styles->NameOf(characterStyle);
  known = Emphasis::kNone;
  for (const StyleRow& row : kEmphases) {
    if (row.name == name)
      known = row.isEmphasis ? (row.isStrong ? Emphasis::kBoth : Emphasis::kEmphasis) : Emphasis::kStrong;
  }
  return known;
}

}  // namespace pagerex
