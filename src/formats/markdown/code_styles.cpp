#include "formats/markdown/code_styles.h"

namespace pagerex {
namespace {

struct WordRow {
  std::u16string_view word;
  bool isOfParagraphs;
};

/// Words that tell of code, in small letters.
constexpr WordRow kWords[] = {
    {u"code", true},    {u"verbatim", true},  {u"preformatted", true},
    {u"source", false}, {u"keyboard", false}, {u"typewriter", false},
};

bool isSmall(char16_t unit) {
  return unit >= 'a' && unit <= 'z';
}

bool isCapital(char16_t unit) {
  return unit >= 'A' && unit <= 'Z';
}

/// Whether `word` stands at `begin` as a word of its own, also in "SourceText".
bool hasWordAt(std::u16string_view name, size_t begin, std::u16string_view word) {
  if (word.size() > name.size() - begin) return false;
  for (size_t i = 0; i < word.size(); ++i) {
    const char16_t unit = name[begin + i];
    if (word[i] != (isCapital(unit) ? unit + 0x20 : unit)) return false;
  }
  const size_t end = begin + word.size();
  const bool begins = begin == 0 || (!isSmall(name[begin - 1]) && !isCapital(name[begin - 1])) ||
                      (isSmall(name[begin - 1]) && isCapital(name[begin]));
  return begins && (end == name.size() || !isSmall(name[end]));
}

bool namesCode(std::u16string_view name, bool ofParagraph) {
  for (const WordRow& row : kWords) {
    if (ofParagraph && !row.isOfParagraphs) continue;
    for (size_t i = 0; i < name.size(); ++i) {
      if (hasWordAt(name, i, row.word)) return true;
    }
  }
  return false;
}

}  // namespace

void CodeStyles::Begin(const StyleNames* names) {
  names_ = names;
  characters_.clear();
  paragraphs_.clear();
}

CodeStyles::Known& CodeStyles::At(std::vector<Known>& known, uint16_t istd) {
  if (istd >= known.size()) known.resize(size_t{istd} + 1, Known::kNot);
  return known[istd];
}

bool CodeStyles::IsCharacterStyle(uint16_t istd) {
  Known& known = At(characters_, istd);
  if (known == Known::kNot) {
    known = names_ && namesCode(names_->NameOf(istd), false) ? Known::kCode : Known::kOther;
  }
  return known == Known::kCode;
}

bool CodeStyles::IsParagraphStyle(uint16_t istd, std::u16string_view name) {
  Known& known = At(paragraphs_, istd);
  if (known == Known::kNot) known = namesCode(name, true) ? Known::kCode : Known::kOther;
  return known == Known::kCode;
}

}  // namespace pagerex
