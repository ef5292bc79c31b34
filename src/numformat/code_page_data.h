#pragma once

#include "numformat/number_spelling.h"

/// The numbering systems, by their number.
extern const KNFCodePage::_CodePage kCodePages[23];

/// Where the words stand behind the ten digits of a table of Chinese or Japanese numerals.
enum NumeralWord : unsigned {
  kTen = 10,  ///< followed by hundred and thousand
  kTenThousand = 13,
  kHundredMillion = 14,
  kTrillion = 15,
  kChineseMinus = 17,  ///< 16 is the word for plus, which is never written
  kChinesePoint = 18,
};

/// Units I to IX, tens X to XC, hundreds C to CM, and the thousand, in upper and lower case.
constexpr int kRomanTens = 9;
constexpr int kRomanHundreds = 18;
constexpr int kRomanThousand = 27;
extern const wchar_t* const kRomanUpper[28];
extern const wchar_t* const kRomanLower[28];

/// How a page is spelled in Japanese.
struct JapanesePage {
  int table;     ///< of GetJPCodePageInfo
  bool keepOne;  ///< a digit 1 before ten, hundred and thousand is written
};
/// Pages 1 to 4.
extern const JapanesePage kJapanesePages[4];

extern const wchar_t* const EnglishNumber_D0[10];
extern const wchar_t* const EnglishNumber_1x[10];
extern const wchar_t* const EnglishNumber_Tens[10];
extern const wchar_t EnglishNumber_100[];
extern const wchar_t EnglishNumber_1000[];
extern const wchar_t* const EnglishNumber_th[4];  ///< for other digits, and for 1, 2 and 3
extern const wchar_t EnglishNumber_First[];
extern const wchar_t EnglishNumber_Second[];
extern const wchar_t EnglishNumber_Third[];
extern const wchar_t EnglishNumber_Fifth[];
extern const wchar_t EnglishNumber_tieth[];
