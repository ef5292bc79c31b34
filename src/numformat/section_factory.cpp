#include "numformat/section_factory.h"

#include <algorithm>
#include <span>

#include "numformat/date_format.h"
#include "numformat/date_tokens.h"
#include "numformat/fraction_format.h"
#include "numformat/general_format.h"
#include "numformat/normal_format.h"

namespace {

using TokenSpan = std::span<const NFCompilePiece>;

template <class Section>
std::unique_ptr<Section> create(const SectionTokens& section, uint32_t styleKind) {
  auto created = std::make_unique<Section>();
  created->style = section.style;
  created->style.kind = styleKind;
  created->area = section.area;
  created->scale = section.scale;
  created->westYear = section.westYear;
  created->placeholders.reserve(section.tokens.size() + 2);
  return created;
}

/// Length of the symbol in "[$symbol-language]".
int symbolLength(std::wstring_view token) {
  constexpr size_t kSymbolOffset = 2;
  const size_t end = std::min(token.find(L'-', kSymbolOffset), token.size() - 1);
  return static_cast<int>(end - kSymbolOffset);
}

void add(KNFBase& section, const NFCompilePiece& token, int position = 0) {
  if (idOf(token) == kIdCurrencySymbol) position = symbolLength(token.first);
  section.placeholders.push_back({position, token.first, token.second});
}

size_t find(TokenSpan tokens, int id) {
  const auto found = std::find_if(tokens.begin(), tokens.end(),
                                  [id](const NFCompilePiece& token) { return idOf(token) == id; });
  return static_cast<size_t>(found - tokens.begin());
}

bool hasDigits(TokenSpan tokens) {
  return std::any_of(tokens.begin(), tokens.end(),
                     [](const NFCompilePiece& token) { return isDigitToken(idOf(token)); });
}

/// Index of the first point or exponent; `digits` counts the digit tokens before it.
size_t FindPointPos(TokenSpan tokens, int& digits) {
  digits = 0;
  size_t at = 0;
  for (; at < tokens.size(); ++at) {
    const int id = idOf(tokens[at]);
    if (id == kIdPoint || id == kIdExponent) break;
    if (isDigitToken(id)) ++digits;
  }
  return at;
}

/// The leftmost digit also writes what is left of it, but for the "x", which cuts that off; elsewhere an "x"
/// is a "#".
const KPlaceholderPiece* digitPiece(const NFCompilePiece& token, bool leftmost) {
  switch (idOf(token)) {
    case kIdShape:
      return leftmost ? &s_PLResouce[kPieceShapeH] : token.second;
    case kIdZero:
      return leftmost ? &s_PLResouce[kPieceZeroH] : token.second;
    case kIdQusmk:
      return leftmost ? &s_PLResouce[kPieceQusmkH] : token.second;
    case kIdXCode:
      return leftmost ? token.second : &s_PLResouce[kPieceShape];
    default:
      return token.second;
  }
}

struct DigitCounts {
  int integers;
  int decimals;
};

/// Adds the tokens of a number, its digits with their positions.
DigitCounts addNumber(KNFBase& section, TokenSpan tokens) {
  int integers;
  const size_t point = FindPointPos(tokens, integers);
  int position = integers;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (i == point) position = -1;
    if (isDigitToken(idOf(tokens[i]))) {
      const bool leftmost = position == integers && integers > 0;
      add(section, {tokens[i].first, digitPiece(tokens[i], leftmost)}, position--);
    } else {
      add(section, tokens[i]);
    }
  }
  return {integers, position < 0 ? -position - 1 : 0};
}

template <class Section>
std::unique_ptr<KNFBase> CreateNormalNF(const SectionTokens& section, uint32_t styleKind) {
  auto created = create<Section>(section, styleKind);
  created->precision = addNumber(*created, section.tokens).decimals;
  return created;
}

std::unique_ptr<KNFBase> CreateGeneralNF(const SectionTokens& section) {
  auto created = create<KNFGeneral>(section, NF_KIND_GENERAL);
  for (const NFCompilePiece& token : section.tokens) add(*created, token);
  if (created->findPlaceholder(kIdGeneral) == created->placeholders.size()) {
    add(*created, {L"", &s_PLResouce[kPieceGeneral]});
  }
  if (created->placeholders.size() == 1 && created->codePage() == DBNum0) {
    created->style.kind = NF_KIND_PURE_GENERAL;
  }
  return created;
}

std::unique_ptr<KNFBase> CreateTextNF(const SectionTokens& section) {
  auto created = create<KNFString>(section, NF_KIND_TEXT);
  created->style.codePage |= NF_STYLE_TEXT;
  for (const NFCompilePiece& token : section.tokens) add(*created, token);
  return created;
}

std::unique_ptr<KNFBase> CreateExponentNF(const SectionTokens& section) {
  auto created = create<KNFExponent>(section, NF_KIND_EXPONENT);
  const TokenSpan tokens(section.tokens);
  const size_t mark = find(tokens, kIdExponent);
  if (mark == tokens.size() || !hasDigits(tokens.subspan(mark + 1))) return nullptr;
  const DigitCounts mantissa = addNumber(*created, tokens.first(mark));
  created->mantissaDigits = mantissa.integers;
  created->precision = mantissa.decimals;
  add(*created, tokens[mark]);

  created->form = tokens[mark].first == L"e" ? KNFExponent::kLower : KNFExponent::kUpper;
  const int sign = idOf(tokens[mark + 1]);
  if (sign == kIdPlus) ++created->form;
  created->minusGiven = sign == kIdSub;
  addNumber(*created, tokens.subspan(mark + (sign == kIdPlus || sign == kIdSub ? 2 : 1)));
  return created;
}

/// A digit other than 0 that is no token of its own.
bool isLiteralDigit(const NFCompilePiece& token) {
  return token.second == &s_PLResouce[kPieceUnknownChar] && token.first[0] >= L'1' && token.first[0] <= L'9';
}

/// The tokens of a denominator that is given in digits.
struct GivenDenominator {
  size_t first = 0;
  size_t last = 0;  ///< exclusive; nothing is given if it is `first`
  std::wstring text;
  double value = 0;
};

GivenDenominator findGivenDenominator(TokenSpan tokens) {
  const auto isDigit = [](const NFCompilePiece& token) {
    return isLiteralDigit(token) || isDigitToken(idOf(token));
  };
  const auto isGiven = [](const NFCompilePiece& token) {
    return isLiteralDigit(token) || idOf(token) == kIdZero;
  };
  const auto first = std::find_if(tokens.begin(), tokens.end(), isDigit);
  const auto last = std::find_if_not(first, tokens.end(), isDigit);
  if (!std::all_of(first, last, isGiven) || std::none_of(first, last, isLiteralDigit)) return {};
  GivenDenominator given{
      static_cast<size_t>(first - tokens.begin()), static_cast<size_t>(last - tokens.begin()), {}, 0};
  for (auto token = first; token != last; ++token) {
    given.text += token->first;
    given.value = given.value * 10 + (token->first[0] - L'0');
  }
  return given;
}

/// False if there is none.
bool addDenominator(KNFFraction& section, TokenSpan tokens) {
  constexpr ptrdiff_t kMostDigits = 6;
  const GivenDenominator given = findGivenDenominator(tokens);
  if (given.first < given.last) {
    section.fixedDenominator = given.value;
    addNumber(section, tokens.first(given.first));
    add(section, {given.text, &s_PLResouce[kPieceFactionPL]});
    addNumber(section, tokens.subspan(given.last));
    return true;
  }
  const auto digits = std::count_if(tokens.begin(), tokens.end(),
                                    [](const NFCompilePiece& token) { return isDigitToken(idOf(token)); });
  section.denominatorDigits = static_cast<int>(std::min(digits, kMostDigits));
  addNumber(section, tokens);
  return digits > 0;
}

/// Where the numerator begins: with the last run of digits.
size_t numeratorStart(TokenSpan tokens) {
  size_t start = tokens.size();
  while (start > 0 && !isDigitToken(idOf(tokens[start - 1]))) --start;
  while (start > 0 && isDigitToken(idOf(tokens[start - 1]))) --start;
  return start;
}

std::unique_ptr<KNFBase> CreateFractionNF(const SectionTokens& section) {
  auto created = create<KNFFraction>(section, NF_KIND_FRACTION);
  created->style.codePage &= ~NF_STYLE_THOUSANDS;
  const TokenSpan tokens(section.tokens);
  const size_t slash = find(tokens, kIdFranction);
  const size_t numerator = numeratorStart(tokens.first(slash));
  const TokenSpan whole = tokens.first(numerator);
  if (!hasDigits(tokens.subspan(numerator, slash - numerator))) return nullptr;

  addNumber(*created, whole);
  add(*created, {L"", &s_PLResouce[kPieceMarkFraction]});
  addNumber(*created, tokens.subspan(numerator, slash - numerator));
  add(*created, tokens[slash]);
  if (!addDenominator(*created, tokens.subspan(slash + 1))) return nullptr;
  const bool fixed = created->findPlaceholder(kIdFactionPL) < created->placeholders.size();
  created->form = hasDigits(whole) ? (fixed ? KNFFraction::kWholeFixed : KNFFraction::kWholeCounted)
                                   : (fixed ? KNFFraction::kFixed : KNFFraction::kCounted);
  return created;
}

std::unique_ptr<KNFBase> CreateDateTimeNF(SectionTokens& section) {
  resolveDateTokens(section);
  auto created = create<KNFDateTime>(section, NF_KIND_DATE);
  for (const NFCompilePiece& token : section.tokens) add(*created, token);
  return created;
}

}  // namespace

std::unique_ptr<KNFBase> CreateNF(SectionTokens&& section) {
  switch (section.kind) {
    case NF_SORT_NUMBER:
      return CreateNormalNF<KNFNormal>(section, NF_KIND_NUMBER);
    case NF_SORT_PERCENT:
      return CreateNormalNF<KNFPercent>(section, NF_KIND_PERCENT);
    case NF_SORT_PER_MILLE:
      return CreateNormalNF<KNFThousandth>(section, NF_KIND_PER_MILLE);
    case NF_SORT_GENERAL:
      return CreateGeneralNF(section);
    case NF_SORT_TEXT:
      return CreateTextNF(section);
    case NF_SORT_EXPONENT:
      return CreateExponentNF(section);
    case NF_SORT_FRACTION:
      return CreateFractionNF(section);
    case NF_SORT_DATE:
      return CreateDateTimeNF(section);
    default:
      return nullptr;
  }
}

std::unique_ptr<KNFBase> CreatePureGeneral() {
  return CreateGeneralNF(SectionTokens(AREA_ENGLISH));
}
