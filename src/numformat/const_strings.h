#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Locale of a format or a value.
enum AREA_CODE_INDEX : int {
  AREA_NONE = -1,
  AREA_ENGLISH = 0,
  AREA_JAPANESE = 1,
  AREA_CHINESE = 2,
  AREA_VIETNAMESE = 3,
};

/// Which form of a name: 0 to 2 for weekdays, months and eras, 0 to 5 for the halves of the day.
using NF_DATE_Mode = int;

/// The words and characters of the four locales. All texts are constants that live as long as the process; an
/// argument out of range gives an empty text, or the character of the English locale.
class KNFConstStrings {
 public:
  /// `day`: 0 Sunday to 6.
  const wchar_t* GetWeekDay(AREA_CODE_INDEX area, int day, NF_DATE_Mode mode) const;
  /// Capitalised Vietnamese names; `form`: 0 long, 1 short.
  const wchar_t* GetWeekDay_Vn(int day, int form) const;
  /// `month`: 0 January to 11.
  const wchar_t* GetMonth(AREA_CODE_INDEX area, int month, NF_DATE_Mode mode) const;
  /// Capitalised Vietnamese names; `form`: 0 long, 1 short.
  const wchar_t* GetMonth_Vn(int month, int form) const;

  /// The word for a half of the day, in modes 0 to 5.
  const wchar_t* GetAM(AREA_CODE_INDEX area, NF_DATE_Mode mode) const;
  const wchar_t* GetPM(AREA_CODE_INDEX area, NF_DATE_Mode mode) const;
  /// Keywords of a format: "AM/PM", "am/pm", "A/P", "a/p", "AMPM", the Japanese and the Chinese pair,
  /// "AM/PM".
  const wchar_t* GetAMPM(int index) const;
  /// Keywords of the General format, by area.
  const wchar_t* GetGeneral(int index) const;

  /// Name of a colour in the area's language; `colour`: 0 to 7.
  const wchar_t* GetColor(AREA_CODE_INDEX area, int colour) const;
  /// Index of the colour with that name in any of the languages and any letter case; -1 if there is none.
  int FindColor(std::wstring_view name) const;
  /// The colour as 0xAARRGGBB; 0xFFFFFE, which stands for no colour, if there is no such index.
  uint32_t GetColorWord(int colour) const;

  /// Text in the bracket that names the area, "$-409".
  const wchar_t* GetAreaCode(AREA_CODE_INDEX area) const;
  /// The area that `text` names, AREA_NONE if it names none.
  AREA_CODE_INDEX FindAreaCode(std::wstring_view text) const;

  /// Decimal point and group separator.
  wchar_t GetPoint(AREA_CODE_INDEX area) const;
  wchar_t GetGroup(AREA_CODE_INDEX area) const;
  /// In the Vietnamese area turns the points of an English number text into commas and its commas into
  /// points.
  void TransPoint2Group(std::wstring& text, AREA_CODE_INDEX area) const;

  /// Name of a Japanese era, 0 Meiji to 3 Heisei; `mode`: 0 letter, 1 one character, 2 two characters.
  const wchar_t* GetJPYear(NF_DATE_Mode mode, int era) const;
  /// Japanese numerals, tables 0 to 2. Characters 0 to 9 are the digits, 10 to 15 ten, hundred, thousand, ten
  /// thousand, hundred million and trillion. Tables 0 and 1 go on with minus (16) and point (17).
  const wchar_t* GetJPCodePageInfo(int index) const;

  /// Text in the bracket that asks for Chinese money, and the words for yuan, jiao, fen and "exactly".
  const wchar_t* GetChineseCurrency() const;
  const wchar_t* GetChineseCurrencyPage() const;

  /// A resource string by its number; there is no resource module, so it is empty.
  const wchar_t* LoadStr(unsigned int) const { return L""; }
};

extern const KNFConstStrings KNFCStingsInstance;
