#pragma once

#include <cstdint>

#include "numformat/const_strings.h"

// The words of KNFConstStrings, indexed by area first. Vietnamese letters are written as escapes: some are
// composed and some are a base letter with a combining mark, and an editor must not change which.

constexpr int kAreas = 4;

extern const wchar_t* const kWeekDays[kAreas][3][7];     ///< [area][mode][day], Sunday first
extern const wchar_t* const kWeekDaysVn[2][7];           ///< [form][day], capitalised
extern const wchar_t* const kMonths[kAreas][3][12];      ///< [area][mode][month]
extern const wchar_t* const kMonthsVn[2][12];            ///< [form][month], capitalised
extern const wchar_t* const kHalvesOfDay[kAreas][6][2];  ///< [area][mode], before noon and after
extern const wchar_t* const kHalfOfDayKeywords[8];
extern const wchar_t* const kGeneralKeywords[kAreas];
extern const wchar_t* const kColours[kAreas][8];  ///< [area][colour]
extern const uint32_t kColourWords[8];            ///< 0xAARRGGBB
extern const wchar_t* const kEras[3][4];          ///< [mode][era]
extern const wchar_t* const kJapaneseNumerals[3];
extern const wchar_t kChineseCurrency[];
extern const wchar_t kChineseCurrencyWords[];

/// A bracket text that names an area. The first of an area is the one that is written.
struct AreaCode {
  const wchar_t* text;
  AREA_CODE_INDEX area;
};
extern const AreaCode kAreaCodes[5];

/// The characters that part a number.
struct Separators {
  wchar_t point;
  wchar_t group;
};
extern const Separators kSeparators[kAreas];
