#pragma once

#include <span>
#include <string>
#include <string_view>

#include "numformat/format_types.h"
#include "numformat/placeholder.h"

class KNFBase;

/// Bits of KIdentifyInfo::flags.
enum TokenFlag : unsigned {
  kTokenColour = 0x01,
  kTokenCodePage = 0x02,
  kTokenChineseMoney = 0x04,
  kTokenAreaCode = 0x08,
  kTokenCurrency = 0x10,
  kTokenWestYear = 0x20,
};

/// What a token tells.
struct KIdentifyInfo {
  NFSTYLE style = kDefaultStyle;        ///< built up over the section
  unsigned flags = 0;                   ///< TokenFlag
  int value = 0;                        ///< of the colour, code page, area code or west year
  std::wstring text;                    ///< for the output
  int id = -1;                          ///< index into s_PLResouce of the piece to take instead; -1: none
  AREA_CODE_INDEX area = AREA_ENGLISH;  ///< the locale in force
};

/// What a piece needs to know to be written back as text.
struct DecompileInfo {
  DecompileType type;
  AREA_CODE_INDEX area;  ///< the locale in force when the text is read again
  const PlaceholderRecord& record;
};

/// How one class of keywords is recognised at the start of a text, and written back.
struct KPlaceholderPieceClass {
  /// Returns the count of characters consumed, 0 if the text does not begin with the keyword, or a negative
  /// number for a malformed token. `text` is not empty. `info` may be null, and is changed only by a match.
  int (*Identify)(const KPlaceholderPiece& piece, std::wstring_view text, KIdentifyInfo* info);
  void (*Decompile)(const KPlaceholderPiece& piece, const DecompileInfo& info, std::wstring& out);
};

/// A keyword of the format language and the placeholder that formats it.
struct KPlaceholderPiece {
  const KPlaceholderPieceClass* kind;
  const KPlaceholder* placeholder;
  const wchar_t* keyword;
  const wchar_t* output = nullptr;  ///< written back in its place; null: the keyword itself
  bool caseMatters = false;

  int Identify(std::wstring_view text, KIdentifyInfo* info) const {
    return kind->Identify(*this, text, info);
  }
  void Decompile(const DecompileInfo& info, std::wstring& out) const { kind->Decompile(*this, info, out); }
};

extern const KPlaceholderPieceClass KPlaceholderPiece_Char, KPlaceholderPiece_Char2,
    KPlaceholderPiece_FillChar, KPlaceholderPiece_String, KPlaceholderPiece_Blank, KPlaceholderPiece_Blank2,
    KPlaceholderPiece_NormalRoot, KPlaceholder_Times, KPlaceholderPiece_Codepage, KPlaceholderPiece_Color,
    KPlaceholderPiece_ChineseCurrency, KPlaceholderPiece_AreaCode, KPlaceholderPiece_CurrencySymbol,
    KPlaceholderPiece_Point, KPlaceholderPiece_Group, KPlaceholderPiece_AMPM, KPlaceholderPiece_WestYear,
    KPlaceholderPiece_Note, KPlaceholderPiece_UnknownChar, KPlaceholderPiece_NULL,
    KPlaceholderPiece_FactionPL, KPlaceholderPiece_DateMark, KPlaceholderPiece_DateMark2;

/// Indices into s_PLResouce that the code speaks of.
enum PieceIndex : int {
  kPieceEscape = 0,
  kPieceEscape2 = 1,
  kPieceString = 3,
  kPieceGeneral = 8,
  kPieceHour0012 = 50,
  kPieceHour012 = 51,
  kPieceMinute00 = 54,
  kPieceMinute0 = 55,
  kPiecePlus = 60,
  kPieceSub = 61,
  kPieceShape = 63,
  kPieceShapeH = 64,
  kPieceZeroH = 66,
  kPieceQusmkH = 68,
  kPieceExponent = 73,
  kPieceAmPmChinese = 74,
  kPieceAmPmAM = 75,
  kPieceAmPmam = 76,
  kPieceAmPmA = 77,
  kPieceAmPma = 78,
  kPieceAmPmJapanese = 79,
  kPieceUnknownChar = 84,
  kPieceAutoMinus = 85,
  kPieceFactionPL = 86,
  kPieceMarkFraction = 87,
  kPieceYearQelEE = 89,
  kPieceYearQelE = 90,
  kPieceGroupLast = 95,
  kPieceDateMark = 96,
  kPieceDateMark2 = 97,
  kPieceCount = 98,
};

/// All keywords.
extern const KPlaceholderPiece s_PLResouce[kPieceCount];

/// The keywords of a dialect, as indices into s_PLResouce, in the order in which they are tried: a longer
/// keyword comes before its prefix.
using PieceList = std::span<const unsigned char>;
extern const PieceList s_PLResouce_OQ;
extern const PieceList s_PLResouce_EXCEL;
extern const PieceList s_PLResouce_WORD;
extern const PieceList s_PLResouce_QEL;

/// Tries the pieces of a list in their order. Returns what the first match (or malformed token) does and sets
/// `*piece` to it; 0 and null if there is none.
int identifyToken(PieceList pieces, std::wstring_view text, KIdentifyInfo* info,
                  const KPlaceholderPiece** piece);

/// Writes a literal text so that it is read again as such: in double quotes.
void quoteText(std::wstring_view text, std::wstring& out);
