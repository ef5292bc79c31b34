#include "numformat/format_decompiler.h"

#include <algorithm>

#include "numformat/const_strings.h"
#include "numformat/number_spelling.h"
#include "numformat/section_tokens.h"

namespace {

PieceList piecesOf(DecompileType type) {
  switch (type) {
    case kDecompileExcel:
      return s_PLResouce_EXCEL;
    case kDecompileWord:
      return s_PLResouce_WORD;
    default:
      return s_PLResouce_OQ;
  }
}

int idOf(const PlaceholderRecord& record) {
  return record.piece->placeholder->id;
}

bool isDigit(const PlaceholderRecord& record) {
  return isDigitToken(idOf(record));
}

}  // namespace

KNFDeCompile::KNFDeCompile(DecompileType type, AREA_CODE_INDEX locale)
    : type_(type), locale_(locale), pieces_(piecesOf(type)) {}

std::wstring KNFDeCompile::DeCompile(const KNFSect& format) const {
  std::wstring text;
  for (int i = 0; i < format.GetSectCount(); ++i) {
    if (i > 0) text += L';';
    if (const KNFBase* real = format.GetSetcReal(i)) text += section(*real);
  }
  return text;
}

std::wstring KNFDeCompile::section(const KNFBase& section) const {
  std::wstring text;
  writeBrackets(section, text);
  Tokens tokens;
  const bool isNumber = section.style.kind >= NF_KIND_NUMBER && section.style.kind <= NF_KIND_PER_MILLE;
  if (isNumber && (section.style.codePage & NF_STYLE_THOUSANDS)) {
    DeCompileNumPL(section, tokens);
  } else {
    writeTokens(section, tokens);
  }
  text += join(tokens);
  // A section of group separators alone has no tokens, but is not an empty one.
  if (text.empty()) text = KNFCStingsInstance.GetGroup(locale_);
  return text;
}

namespace {

void writeBracket(std::wstring_view inside, std::wstring& out) {
  out += L'[';
  out += inside;
  out += L']';
}

/// Index of the colour; -1 if the section has none.
int colourOf(const NFSTYLE& style) {
  constexpr int kColours = 8;
  for (int colour = 0; colour < kColours; ++colour) {
    if (KNFCStingsInstance.GetColorWord(colour) == style.color) return colour;
  }
  return -1;
}

bool isMonthNumber(int id) {
  return id >= kIdMonth0 && id <= kIdMonth00Qel;
}

/// Whether the next field of a date behind that at `index` is the second.
bool isBeforeSecond(const std::vector<PlaceholderRecord>& records, size_t index) {
  const auto next = std::find_if(records.begin() + static_cast<ptrdiff_t>(index) + 1, records.end(),
                                 [](const PlaceholderRecord& record) {
                                   return idOf(record) >= kIdYear00 && idOf(record) <= kIdSeconds;
                                 });
  return next != records.end() && (idOf(*next) == kIdSecond0 || idOf(*next) == kIdSecond00);
}

}  // namespace

/// What the section's tokens only told is in its style.
void KNFDeCompile::writeBrackets(const KNFBase& section, std::wstring& out) const {
  const int colour = colourOf(section.style);
  if (colour >= 0) writeBracket(KNFCStingsInstance.GetColor(locale_, colour), out);
  if (section.codePage() != DBNum0) writeBracket(KNFCodePageInstance.GetName(section.codePage()), out);
  if (section.style.flags & NF_STYLE_CHINESE_MONEY)
    writeBracket(KNFCStingsInstance.GetChineseCurrency(), out);
  if (section.area != AREA_NONE) writeBracket(KNFCStingsInstance.GetAreaCode(section.area), out);
}

void KNFDeCompile::writeTokens(const KNFBase& section, Tokens& out) const {
  const auto& records = section.placeholders;
  for (size_t i = 0; i < records.size(); ++i) {
    writeToken(section, records[i], out);
    // Before a second it would be a minute. A month more is dropped as a duplicate, and the digit that keeps
    // the two apart as none of a date.
    if (isMonthNumber(idOf(records[i])) && isBeforeSecond(records, i) && type_ != kDecompileWord) {
      out.push_back(L"0");
      out.push_back(L"mmm");
    }
  }
}

/// A number with thousands separators: where they show, or, in a format too short for that, where one is read
/// as such.
void KNFDeCompile::DeCompileNumPL(const KNFBase& section, Tokens& out) const {
  const auto& records = section.placeholders;
  const auto digits = std::count_if(records.begin(), records.end(), isDigit);
  const auto isSeparator = [](const PlaceholderRecord& record) {
    return idOf(record) == kIdGroup || idOf(record) == kIdGroupLast;
  };
  const std::wstring separator(1, KNFCStingsInstance.GetGroup(locale_));
  const bool mantissaIsLong =
      std::any_of(records.begin(), records.end(),
                  [](const PlaceholderRecord& record) { return isDigit(record) && record.position > 3; });
  bool told = mantissaIsLong || std::any_of(records.begin(), records.end(), isSeparator);
  for (const PlaceholderRecord& record : records) {
    const bool first = isDigit(record) && !told;
    told |= first;
    if (first && digits == 1) out.push_back(separator);
    writeToken(section, record, out);
    const bool shows = isDigit(record) && record.position > 3 && record.position % 3 == 1;
    if (shows || (first && digits > 1)) out.push_back(separator);
  }
}

void KNFDeCompile::writeToken(const KNFBase& section, const PlaceholderRecord& record, Tokens& out) const {
  const std::wstring text = canonicalText(record);
  if (section.area == AREA_CHINESE && writeChineseYear(record, out)) return;
  switch (idOf(record)) {
    case kIdCharString:
      writeLiteral(record, out);
      return;
    case kIdFactionPL:  // digits that were tokens of their own
      for (wchar_t digit : text) out.emplace_back(1, digit);
      return;
    case kIdExponent:
      writeExponentMark(static_cast<const KNFExponent&>(section), out);
      return;
    default:
      if (!text.empty()) out.push_back(text);
  }
}

/// A Chinese section takes "EE" for "E", and two in a row for "EE".
bool KNFDeCompile::writeChineseYear(const PlaceholderRecord& record, Tokens& out) {
  const bool single = record.piece == &s_PLResouce[kPieceYearQelE];
  const bool full = record.piece == &s_PLResouce[kPieceYearQelEE];
  if (single || full) out.push_back(L"EE");
  if (full) out.push_back(L"E");
  return single || full;
}

void KNFDeCompile::writeExponentMark(const KNFExponent& section, Tokens& out) const {
  out.push_back(section.form >= KNFExponent::kUpper ? L"E" : L"e");
  if (section.writesPlus()) out.push_back(L"+");
  if (section.minusGiven) out.push_back(L"-");
}

namespace {

wchar_t upperCase(wchar_t c) {
  return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
}

/// Whether a keyword of some dialect, or something else with a meaning of its own, begins with `c`.
bool mayBeKeyword(wchar_t c) {
  return c == L';' ||
         std::any_of(std::begin(s_PLResouce), std::end(s_PLResouce), [c](const KPlaceholderPiece& piece) {
           return piece.keyword[0] != 0 && upperCase(piece.keyword[0]) == upperCase(c);
         });
}

/// Whether `text` is one string in quotes.
bool isQuoted(std::wstring_view text) {
  return text.starts_with(L'"') && std::count(text.begin(), text.end(), L'"') == 2;
}

}  // namespace

/// Strings stand in quotes, and single characters that other dialects, or other neighbours, make a keyword
/// of.
void KNFDeCompile::writeLiteral(const PlaceholderRecord& record, Tokens& out) const {
  const bool bare = record.piece == &s_PLResouce[kPieceUnknownChar] &&
                    !std::any_of(record.text.begin(), record.text.end(), mayBeKeyword);
  std::wstring text;
  if (bare) {
    text = record.text;
  } else {
    quoteText(record.text, text);
  }
  if (!out.empty() && isQuoted(out.back()) && isQuoted(text)) {
    out.back().replace(out.back().size() - 1, 1, text, 1);
  } else {
    out.push_back(std::move(text));
  }
}

std::wstring KNFDeCompile::canonicalText(const PlaceholderRecord& record) const {
  std::wstring text;
  record.piece->Decompile({type_, locale_, record}, text);
  return text;
}

/// Tokens that would be read together are kept apart by an empty string, which shows nothing.
std::wstring KNFDeCompile::join(const Tokens& tokens) const {
  const auto lengthRead = [this](std::wstring_view text) {
    KIdentifyInfo info;
    info.area = locale_;
    const KPlaceholderPiece* piece;
    return static_cast<size_t>(std::max(identifyToken(pieces_, text, &info, &piece), 0));
  };
  std::wstring text;
  for (auto token = tokens.rbegin(); token != tokens.rend(); ++token) {
    const bool fusesWithNext =
        lengthRead(*token + text) != token->size() && lengthRead(*token) == token->size();
    text.insert(0, fusesWithNext ? *token + L"\"\"" : *token);
  }
  return text;
}
