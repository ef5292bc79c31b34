#include "numformat/placeholder_piece.h"

#include <algorithm>

namespace {

constexpr int kNoMatch = 0;
constexpr int kMalformed = -1;

wchar_t lowerCase(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool equalInAnyCase(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return lowerCase(x) == lowerCase(y); });
}

bool startsInAnyCase(std::wstring_view text, std::wstring_view keyword) {
  return equalInAnyCase(text.substr(0, keyword.size()), keyword);
}

AREA_CODE_INDEX areaInForce(const KIdentifyInfo* info) {
  return info ? info->area : AREA_ENGLISH;
}

/// A match of `length` characters that is `token` in the output.
int match(KIdentifyInfo* info, size_t length, std::wstring_view token) {
  if (info) info->text = token;
  return static_cast<int>(length);
}

/// A "[...]" at the start of a text; `length` is 0 if there is none.
struct Bracket {
  std::wstring_view inside;
  size_t length = 0;
};

Bracket bracketOf(std::wstring_view text) {
  const size_t end = text.empty() || text[0] != L'[' ? std::wstring_view::npos : text.find(L']');
  if (end == std::wstring_view::npos) return {};
  return {text.substr(1, end - 1), end + 1};
}

/// A match of a whole bracket that sets `flag` and `value`.
int matchBracket(KIdentifyInfo* info, const Bracket& bracket, TokenFlag flag, int value) {
  if (info) {
    info->flags |= flag;
    info->value = value;
  }
  return match(info, bracket.length, bracket.inside);
}

int identifyKeyword(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  const std::wstring_view keyword = piece.keyword;
  const bool found = piece.caseMatters ? text.starts_with(keyword) : startsInAnyCase(text, keyword);
  return found ? match(info, keyword.size(), text.substr(0, 1)) : kNoMatch;
}

/// The piece that an escaped character stands for; -1 for that of the escape itself.
int pieceOfEscaped(wchar_t c) {
  switch (c) {
    case L'-':
      return kPieceSub;
    case L'+':
      return kPiecePlus;
    case L'\\':
      return kPieceEscape2;
    default:
      return -1;
  }
}

int identifyEscape(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  if (text[0] != piece.keyword[0]) return kNoMatch;
  if (text.size() < 2) return kMalformed;
  if (info) info->id = pieceOfEscaped(text[1]);
  return match(info, 2, text.substr(1, 1));
}

/// The backslash is the yen sign on a Japanese keyboard, and no escape.
int identifyBackslash(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  const bool yenSign = text[0] == piece.keyword[0] && areaInForce(info) == AREA_JAPANESE;
  return yenSign ? match(info, 1, text.substr(0, 1)) : identifyEscape(piece, text, info);
}

int identifyMarkAndCharacter(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  if (text[0] != piece.keyword[0]) return kNoMatch;
  return text.size() < 2 ? kMalformed : match(info, 2, text.substr(1, 1));
}

int identifyFill(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  const int consumed = identifyMarkAndCharacter(piece, text, info);
  // NOLINTNEXTLINE(bugprone-signed-char-misuse): a wide character is no byte
  if (info && consumed > 0) info->style.fillChar = static_cast<uint32_t>(text[1]);
  return consumed;
}

int identifyString(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  // Currency signs that count as escaped characters when they stand alone.
  constexpr wchar_t kYen = 0xA5, kYenOfAnotherEncoding = 0xA4A3;
  if (text[0] != piece.keyword[0]) return kNoMatch;
  const size_t end = text.find(piece.keyword[0], 1);
  if (end == std::wstring_view::npos) return kMalformed;
  const std::wstring_view inside = text.substr(1, end - 1);
  const bool sign = inside.size() == 1 && (inside[0] == kYen || inside[0] == kYenOfAnotherEncoding);
  if (info && sign) info->id = kPieceEscape;
  return match(info, end + 1, inside);
}

/// Any number of the same letter in brackets.
int identifyElapsed(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  if (text[0] != L'[') return kNoMatch;
  const Bracket bracket = bracketOf(text);
  if (bracket.length == 0) return kMalformed;
  const bool sameLetter = std::all_of(bracket.inside.begin(), bracket.inside.end(),
                                      [&](wchar_t c) { return lowerCase(c) == piece.keyword[0]; });
  return sameLetter && !bracket.inside.empty() ? match(info, bracket.length, bracket.inside) : kNoMatch;
}

int identifyCodePage(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  const Bracket bracket = bracketOf(text);
  if (bracket.length == 0) return kNoMatch;
  for (int page = DBNum0; page <= DBNum22; ++page) {
    const auto number = static_cast<NF_CODEPAGE>(page);
    const bool spellsNothing = *KNFCodePageInstance.GetPage(number) == 0;
    if (spellsNothing || !equalInAnyCase(bracket.inside, KNFCodePageInstance.GetName(number))) continue;
    return matchBracket(info, bracket, kTokenCodePage, page);
  }
  return kNoMatch;
}

int identifyColour(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  const Bracket bracket = bracketOf(text);
  const int colour = bracket.length > 0 ? KNFCStingsInstance.FindColor(bracket.inside) : -1;
  if (colour < 0) return kNoMatch;
  return matchBracket(info, bracket, kTokenColour, static_cast<int>(KNFCStingsInstance.GetColorWord(colour)));
}

int identifyChineseMoney(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  const Bracket bracket = bracketOf(text);
  const bool found =
      bracket.length > 0 && equalInAnyCase(bracket.inside, KNFCStingsInstance.GetChineseCurrency());
  return found ? matchBracket(info, bracket, kTokenChineseMoney, NF_STYLE_CHINESE_MONEY) : kNoMatch;
}

int identifyAreaCode(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  const Bracket bracket = bracketOf(text);
  std::wstring code(bracket.inside);
  std::replace(code.begin(), code.end(), L'a', L'A');  // the only letter of these codes
  const AREA_CODE_INDEX area = KNFCStingsInstance.FindAreaCode(code);
  return area != AREA_NONE ? matchBracket(info, bracket, kTokenAreaCode, area) : kNoMatch;
}

int identifyCurrency(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  const Bracket bracket = bracketOf(text);
  if (bracket.length == 0 || !text.starts_with(piece.keyword)) return kNoMatch;
  if (info) info->flags |= kTokenCurrency;
  return match(info, bracket.length, text.substr(0, bracket.length));
}

int identifyNote(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  const Bracket bracket = bracketOf(text);
  return bracket.length > 0 ? match(info, bracket.length, text.substr(0, bracket.length)) : kNoMatch;
}

int identifyPoint(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  return text[0] == KNFCStingsInstance.GetPoint(areaInForce(info)) ? match(info, 1, text.substr(0, 1))
                                                                   : kNoMatch;
}

int identifyGroup(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  if (text[0] != KNFCStingsInstance.GetGroup(areaInForce(info))) return kNoMatch;
  if (info) info->style.codePage |= NF_STYLE_THOUSANDS;
  return match(info, 1, text.substr(0, 1));
}

/// A keyword for the halves of the day. Latin ones match in any letter case but that of the first letter.
struct HalfOfDayKeyword {
  const wchar_t* text;
  int piece;
  bool firstLetterCounts;
};
constexpr HalfOfDayKeyword kHalfOfDayKeys[] = {
    {L"AM/PM", kPieceAmPmAM, true},
    {L"am/pm", kPieceAmPmam, true},
    {L"A/P", kPieceAmPmA, true},
    {L"a/p", kPieceAmPma, true},
    {L"AMPM", kPieceAmPmAM, false},
    {L"上午/下午", kPieceAmPmChinese, true},
    {L"[上午/下午]", kPieceAmPmChinese, true},
    {L"午前/午後", kPieceAmPmJapanese, true},
};

/// The Vietnamese locale has one pair of words for all keywords.
int TransID(int piece, AREA_CODE_INDEX area) {
  return area == AREA_VIETNAMESE ? kPieceAmPmAM : piece;
}

int identifyHalfOfDay(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  for (const HalfOfDayKeyword& keyword : kHalfOfDayKeys) {
    const std::wstring_view key = keyword.text;
    if (!startsInAnyCase(text, key) || (keyword.firstLetterCounts && text[0] != key[0])) continue;
    if (info) info->id = TransID(keyword.piece, info->area);
    return match(info, key.size(), text.substr(0, key.size()));
  }
  return kNoMatch;
}

int identifyWestYear(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info) {
  const std::wstring_view keyword = piece.keyword;
  if (!startsInAnyCase(text, keyword)) return kNoMatch;
  if (info) {
    info->flags |= kTokenWestYear;
    info->value = 1;
  }
  return match(info, keyword.size(), text.substr(0, keyword.size()));
}

int identifyAnything(const KPlaceholderPiece&, std::wstring_view text, KIdentifyInfo* info) {
  return match(info, 1, text.substr(0, 1));
}

int identifyNothing(const KPlaceholderPiece&, std::wstring_view, KIdentifyInfo*) {
  return kNoMatch;
}

/// A keyword that another dialect reads differently.
struct DialectKeyword {
  int piece;
  bool ofWord;  ///< for Word, or else for the spreadsheet dialects
  const wchar_t* text;
};
constexpr DialectKeyword kDialectKeywords[] = {
    {30, true, L"MM"},                      // "mm" and "m" are minutes there,
    {31, true, L"M"},  {38, true, L"www"},  // and "aaa" is the English weekday
    {40, true, L"w"},  {41, true, L"www"}, {42, true, L"w"}, {88, false, L"ddd"},
};

void writeKeyword(const KPlaceholderPiece& piece, const DecompileInfo& info, std::wstring& out) {
  const bool word = info.type == kDecompileWord;
  for (const DialectKeyword& row : kDialectKeywords) {
    if (&s_PLResouce[row.piece] != &piece || row.ofWord != word) continue;
    out += row.text;
    return;
  }
  out += piece.output ? piece.output : piece.keyword;
}

void writeText(const KPlaceholderPiece&, const DecompileInfo& info, std::wstring& out) {
  out += info.record.text;
}

/// A note means nothing; one with a quote in it could hide what follows.
void writeNote(const KPlaceholderPiece& piece, const DecompileInfo& info, std::wstring& out) {
  if (info.record.text.find(L'"') == std::wstring::npos) {
    writeText(piece, info, out);
  } else {
    out += L"[]";
  }
}

void writeMarkAndText(const KPlaceholderPiece& piece, const DecompileInfo& info, std::wstring& out) {
  out += piece.keyword;
  out += info.record.text;
}

void writeBackslash(const KPlaceholderPiece&, const DecompileInfo& info, std::wstring& out) {
  out += info.area == AREA_JAPANESE ? L'!' : L'\\';
  out += info.record.text;
}

void writeBracket(const KPlaceholderPiece&, const DecompileInfo& info, std::wstring& out) {
  out += L'[';
  out += info.record.text;
  out += L']';
}

void writePoint(const KPlaceholderPiece&, const DecompileInfo& info, std::wstring& out) {
  out += KNFCStingsInstance.GetPoint(info.area);
}

void writeGroup(const KPlaceholderPiece&, const DecompileInfo& info, std::wstring& out) {
  out += KNFCStingsInstance.GetGroup(info.area);
}

void writeQuoted(const KPlaceholderPiece&, const DecompileInfo& info, std::wstring& out) {
  quoteText(info.record.text, out);
}

/// A plain "/" would become the separator of the locale.
void writeDateMark2(const KPlaceholderPiece& piece, const DecompileInfo& info, std::wstring& out) {
  if (info.record.text == L"/") {
    writeBackslash(piece, info, out);
  } else {
    out += info.record.text;
  }
}

void writeNothing(const KPlaceholderPiece&, const DecompileInfo&, std::wstring&) {}

}  // namespace

const KPlaceholderPieceClass KPlaceholderPiece_Char = {identifyEscape, writeMarkAndText};
const KPlaceholderPieceClass KPlaceholderPiece_Char2 = {identifyBackslash, writeBackslash};
const KPlaceholderPieceClass KPlaceholderPiece_FillChar = {identifyFill, writeMarkAndText};
const KPlaceholderPieceClass KPlaceholderPiece_String = {identifyString, writeQuoted};
const KPlaceholderPieceClass KPlaceholderPiece_Blank = {identifyMarkAndCharacter, writeMarkAndText};
const KPlaceholderPieceClass KPlaceholderPiece_Blank2 = {identifyKeyword, writeKeyword};
const KPlaceholderPieceClass KPlaceholderPiece_NormalRoot = {identifyKeyword, writeKeyword};
const KPlaceholderPieceClass KPlaceholder_Times = {identifyElapsed, writeBracket};
// The four that set the section's style or area are no tokens of it: the section writes their brackets back.
const KPlaceholderPieceClass KPlaceholderPiece_Codepage = {identifyCodePage, writeNothing};
const KPlaceholderPieceClass KPlaceholderPiece_Color = {identifyColour, writeNothing};
const KPlaceholderPieceClass KPlaceholderPiece_ChineseCurrency = {identifyChineseMoney, writeNothing};
const KPlaceholderPieceClass KPlaceholderPiece_AreaCode = {identifyAreaCode, writeNothing};
const KPlaceholderPieceClass KPlaceholderPiece_CurrencySymbol = {identifyCurrency, writeText};
const KPlaceholderPieceClass KPlaceholderPiece_Point = {identifyPoint, writePoint};
const KPlaceholderPieceClass KPlaceholderPiece_Group = {identifyGroup, writeGroup};
const KPlaceholderPieceClass KPlaceholderPiece_AMPM = {identifyHalfOfDay, writeKeyword};
const KPlaceholderPieceClass KPlaceholderPiece_WestYear = {identifyWestYear, writeText};
const KPlaceholderPieceClass KPlaceholderPiece_Note = {identifyNote, writeNote};
const KPlaceholderPieceClass KPlaceholderPiece_UnknownChar = {identifyAnything, writeText};
const KPlaceholderPieceClass KPlaceholderPiece_NULL = {identifyNothing, writeNothing};
const KPlaceholderPieceClass KPlaceholderPiece_FactionPL = {identifyNothing, writeText};
const KPlaceholderPieceClass KPlaceholderPiece_DateMark = {identifyNothing, writeText};
const KPlaceholderPieceClass KPlaceholderPiece_DateMark2 = {identifyNothing, writeDateMark2};

void quoteText(std::wstring_view text, std::wstring& out) {
  if (text.empty()) out += L"\"\"";
  while (!text.empty()) {
    const size_t quote = std::min(text.find(L'"'), text.size());
    if (quote > 0) {
      out += L'"';
      out += text.substr(0, quote);
      out += L'"';
      text.remove_prefix(quote);
    } else {
      out += L"!\"";
      text.remove_prefix(1);
    }
  }
}
