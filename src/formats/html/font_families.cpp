#include "formats/html/font_families.h"

#include <vector>

#include "base/utf8.h"
#include "formats/html/font_table.h"

namespace pagerex {
namespace {

/// Character sets of East Asian fonts, with what such fonts are with serifs and without.
struct EastAsianSet {
  uint8_t characterSet;
  FontPeers serif, sans;
};

constexpr EastAsianSet kEastAsianSets[] = {
    {128, FontPeers::kMincho, FontPeers::kGothic},
    {129, FontPeers::kMyeongjo, FontPeers::kKoreanGothic},
    {134, FontPeers::kSongSimplified, FontPeers::kHeiSimplified},
    {136, FontPeers::kSongTraditional, FontPeers::kHeiTraditional},
};

/// What a font is, by its table entry: family, then shapes (PANOSE).
FontPeers genericOf(const FontFacts& facts) {
  constexpr uint8_t kFixed = 1, kRoman = 1, kSwiss = 2, kModern = 3, kScript = 4, kDecorative = 5;
  constexpr uint8_t kText = 2, kHandWritten = 3, kDecorated = 4;
  constexpr uint8_t kMonospaced = 9, kFirstSerif = 2, kFirstSans = 11;
  const uint8_t shape = facts.panose[0];
  if (facts.pitch == kFixed || facts.family == kModern) return FontPeers::kMono;
  if (facts.family == kRoman) return FontPeers::kSerif;
  if (facts.family == kSwiss) return FontPeers::kSans;
  if (facts.family == kScript || shape == kHandWritten) return FontPeers::kCursive;
  if (facts.family == kDecorative || shape == kDecorated) return FontPeers::kFantasy;
  if (shape != kText) return FontPeers::kSerif;
  if (facts.panose[3] == kMonospaced) return FontPeers::kMono;
  const uint8_t serifs = facts.panose[1];
  return serifs >= kFirstSerif && serifs < kFirstSans ? FontPeers::kSerif : FontPeers::kSans;
}

FontPeers peersOf(const FontFacts& facts) {
  const FontPeers generic = genericOf(facts);
  for (const EastAsianSet& set : kEastAsianSets) {
    // Nearly all East Asian fonts are fixed, and those without serifs "modern".
    if (set.characterSet == facts.characterSet) return facts.family == 1 ? set.serif : set.sans;
  }
  return generic;
}

std::string utf8Of(std::u16string_view text) {
  std::string result(mostUtf8(text.size()), '\0');
  result.resize(utf8FromUtf16(text.data(), text.size(), result.data(), Utf8Filter::kControls));
  return result;
}

/// A family under construction: each name once.
class FamilyList {
 public:
  explicit FamilyList(std::string& out) : out_(out) {}

  void Add(std::string_view name) {
    if (name.empty()) return;
    for (const std::string& told : told_) {
      if (isSameName(told, name)) return;
    }
    told_.emplace_back(name);
    appendCssString(out_, name);
    out_ += ',';
  }

 private:
  std::string& out_;
  std::vector<std::string> told_;
};

/// Vertical twins of East Asian fonts have an @ before the name.
std::string_view withoutAt(std::string_view name) {
  return name.starts_with('@') ? name.substr(1) : name;
}

std::string familyOf(const FontFacts& facts) {
  std::string out;
  FamilyList list(out);
  const std::string name = utf8Of(facts.name), alternate = utf8Of(facts.alternateName);
  const KnownFont* known = knownFontNamed(withoutAt(name));
  if (!known) known = knownFontNamed(withoutAt(alternate));
  list.Add(name);
  list.Add(withoutAt(name));
  list.Add(alternate);
  if (known && known->ownName[0] != '\0') {
    list.Add(known->name);
    list.Add(known->ownName);
  }
  out += peersAsCss(known ? known->peers : peersOf(facts));
  return out;
}

}  // namespace

std::string_view FontFamilies::Of(uint16_t ftc) {
  if (const auto found = families_.find(ftc); found != families_.end()) return found->second;
  const FontFacts facts = fonts_ ? fonts_->FactsOf(ftc) : FontFacts{};
  if (facts.name.empty() && facts.alternateName.empty()) return peersAsCss(FontPeers::kSerif);
  return families_.emplace(ftc, familyOf(facts)).first->second;
}

void appendCssString(std::string& out, std::string_view text) {
  constexpr char kBeforeControls = '\xC2';  // in front of U+0080 to U+009F, which end in their own number
  out += '"';
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isControl =
        text[i] == kBeforeControls && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    if (isControl) ++i;
    const char c = text[i];
    const auto byte = static_cast<unsigned char>(c);
    if (isControl || byte < 0x20 || byte == 0x7F || c == '"' || c == '\\' || c == '<' || c == '>' ||
        c == '&') {
      // The space ends the number, whatever follows.
      constexpr char kDigits[] = "0123456789abcdef";
      out += '\\';
      if (byte >= 0x10) out += kDigits[byte >> 4];
      out += kDigits[byte & 0xF];
      out += ' ';
    } else {
      out += c;
    }
  }
  out += '"';
}

}  // namespace pagerex
