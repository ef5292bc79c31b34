#pragma once

#include <string>

#include "base/status.h"
#include "numformat/const_strings.h"

/// A numbering system: the N of "[DBNumN]".
enum NF_CODEPAGE : int {
  DBNum0,   ///< 0 1 2
  DBNum1,   ///< Chinese numerals
  DBNum2,   ///< Chinese numerals for money
  DBNum3,   ///< wide digits
  DBNum4,   ///< Roman, upper case
  DBNum5,   ///< Roman, lower case
  DBNum6,   ///< A B C
  DBNum7,   ///< a b c
  DBNum8,   ///< 1st 2nd; 8 to 10 have no characters, so that a format cannot name them
  DBNum9,   ///< One Two
  DBNum10,  ///< First Second
  DBNum11,  ///< hexadecimal
  DBNum12,  ///< the ten heavenly stems
  DBNum13,  ///< the twelve earthly branches
  DBNum14,  ///< digits with full stop
  DBNum15,  ///< parenthesised digits
  DBNum16,  ///< circled digits
  DBNum17,  ///< parenthesised ideographs
  DBNum18,  ///< Greek capitals
  DBNum19,  ///< Greek small letters
  DBNum20,  ///< as 2, with ten to nineteen shortened
  DBNum21,  ///< katakana, aiueo order
  DBNum22,  ///< katakana, iroha order
};

/// The numbering systems, and the spelling of numbers in them. Any int may be passed as a page: one that does
/// not exist gives kInvalidArgument, an empty text or 0. Functions with an `out` replace what it holds; those
/// with a `text` turn the text into its spelling. Both are left alone on failure.
class KNFCodePage {
 public:
  /// A numbering system.
  struct _CodePage {
    NF_CODEPAGE number;
    const wchar_t* name;   ///< "DBNum1"
    const wchar_t* table;  ///< its characters
    int width;             ///< count of characters
    unsigned limit;        ///< base of a series, or the largest number that has a character of its own
  };

  const wchar_t* GetName(NF_CODEPAGE page) const;
  /// The characters of the page; empty for pages 8 to 10.
  const wchar_t* GetPage(NF_CODEPAGE page) const;
  /// One of these characters, 0 past the last.
  wchar_t GetChar(NF_CODEPAGE page, unsigned short index) const;

  /// Spells `n` in the page's own way.
  Status SerialNumber(NF_CODEPAGE page, unsigned long n, std::wstring& out) const;
  /// The same in Japanese: pages 1 to 4 are Japanese numerals, all others decimal.
  Status SerialNumber_JP(int page, unsigned long n, std::wstring& out) const;

  /// Pages 1, 2 and 20: Chinese words; 4 and 5: Roman.
  Status Tongue(NF_CODEPAGE page, unsigned long n, std::wstring& out) const;
  /// Pages 4 and 5. Zero is empty, and a number above 1000 is decimal.
  Status Tongue_Roma(NF_CODEPAGE page, unsigned long n, std::wstring& out) const;
  /// The character for `n`; "0" for zero; decimal, with 15 significant digits, above the page's limit.
  Status ConvertNum(NF_CODEPAGE page, unsigned long n, std::wstring& out) const;
  /// Positional on pages 0, 3 and 11; on others counted as spreadsheet columns: A to Z, AA.
  Status ConvertSeries(NF_CODEPAGE page, unsigned long n, std::wstring& out) const;

  /// 1st, 2nd, 3rd, 4th.
  Status SerialNumber_En_th(unsigned long n, std::wstring& out) const;
  /// Cardinal and ordinal in words; empty above 999999. The ordinal begins with a capital.
  Status SerialNumber_En_One(unsigned long n, bool capitalise, std::wstring& out) const;
  Status SerialNumber_En_First(unsigned long n, std::wstring& out) const;

  /// Spells a decimal number text, which may begin with a sign. `pointPosition` is the index of the point in
  /// it, whatever character stands there; -1 if the number is whole. Only the Japanese and Chinese words for
  /// minus are ever written, and only with `keepSign`.
  ///
  /// Pages 1, 2 and 20; ten to nineteen are shortened except on page 2.
  Status _TransTongue(std::wstring& text, int pointPosition, NF_CODEPAGE page, bool keepSign) const;
  /// Pages 1, 2 and 20; with `dropOne` a leading "one ten" becomes "ten".
  Status _TransTongue_chinese(std::wstring& text, int pointPosition, NF_CODEPAGE page, bool keepSign,
                              bool dropOne) const;
  /// `table`: of GetJPCodePageInfo; with `keepOne` a digit 1 before ten, hundred and thousand is written.
  Status _TransTongue_japanese(std::wstring& text, int pointPosition, int table, bool keepOne,
                               bool keepSign) const;
  /// The same with the table and the rule for 1 that belong to page 1 to 4 in Japanese, the sign kept.
  Status _TransTongue_japanese(std::wstring& text, int pointPosition, int page) const;

  /// Spells a number text with two decimals, "1.50", as Chinese money. Pages 1, 2 and 20.
  Status _TransCurrency(std::wstring& text, NF_CODEPAGE page) const;

  /// The page's character for an ASCII digit; Japanese ones on pages 1 to 4 in the Japanese area. What is no
  /// digit, or has no character, is returned as it is.
  wchar_t _GetCodePageNumbe(wchar_t digit, int page, AREA_CODE_INDEX area) const;
  wchar_t _GetCodePageNumbe2(wchar_t digit, const wchar_t* table) const;
};

extern const KNFCodePage KNFCodePageInstance;
