#pragma once

#include <string>

#include "numformat/format_types.h"

class KNFBase;

/// The fields of a date and time.
struct tagTIMEINFO {
  int second;
  int minute;
  int hour;
  int day;    ///< 1 to 31
  int month;  ///< 1 to 12
  int year;
  int weekday;    ///< 0 Sunday
  int dayOfYear;  ///< from 1
};

/// Kind ids of the placeholders, by which the compiler tells tokens apart. The digits come first; the dates
/// run from 13 to 57.
enum KPlaceholderId : int {
  kIdShapeH = 0,
  kIdShape = 1,
  kIdZeroH = 2,
  kIdZero = 3,
  kIdQusmkH = 4,
  kIdQusmk = 5,
  kIdPoint = 6,
  kIdGroup = 7,
  kIdXCode = 8,
  kIdExponent = 9,
  kIdPercent = 10,
  kIdThousandth = 11,
  kIdFranction = 12,
  kIdYear00 = 13,
  kIdYear0000 = 14,
  kIdJpYear1 = 15,
  kIdJpYear2 = 16,
  kIdJpYear3 = 17,
  kIdJpYear4 = 18,
  kIdYearQelTwo = 19,  ///< "ee" and "EE"
  kIdYearQelOne = 20,  ///< "e" and "E"
  kIdMonth0 = 21,
  kIdMonth00 = 22,
  kIdMonth0Qel = 23,
  kIdMonth00Qel = 24,
  kIdMonthShort = 25,
  kIdMonthFull = 26,
  kIdMonthFirst = 27,
  kIdMonthQelO = 28,
  kIdDay0 = 29,
  kIdDay00 = 30,
  kIdDayShort = 31,
  kIdDayFull = 32,
  kIdDayQelA = 33,
  kIdWeek0 = 34,
  kIdWeek00 = 35,
  kIdWeek000 = 36,
  kIdHour0 = 37,
  kIdHour00 = 38,
  kIdHour012 = 39,
  kIdHour0012 = 40,
  kIdMinute0 = 41,
  kIdMinute00 = 42,
  kIdMinute0Qel = 43,
  kIdMinute00Qel = 44,
  kIdSecond0 = 45,
  kIdSecond00 = 46,
  kIdDays = 47,
  kIdHours = 48,
  kIdMinutes = 49,
  kIdSeconds = 50,
  kIdAmPmAM = 51,
  kIdAmPmA = 52,
  kIdAmPmam = 53,
  kIdAmPma = 54,
  kIdAmPmChinese = 55,
  kIdAmPmJapanese = 56,
  kIdAmPm = 57,
  kIdPlus = 58,
  kIdSub = 59,
  kIdCharString = 60,
  kIdString = 61,
  kIdSignNegative = 62,
  kIdFactionPL = 63,
  kIdFillChar = 64,
  kIdBlank = 65,
  kIdUnknownChar = 66,
  kIdGeneral = 67,
  kIdMarkFraction = 70,
  kIdOhter = 71,
  kIdGroupLast = 72,
  kIdCurrencySymbol = 73,
};

/// What formats one kind of token: it appends its part of the output. Stateless and shared by all formats.
struct KPlaceholder {
  /// What a placeholder is told about the value and the section.
  struct PlaceholderEnv {
    const KNFBase* base;                ///< the section
    ShownValue* shown;                  ///< its digits and style
    AREA_CODE_INDEX locale;             ///< of the value: the section's own, else the parameter's
    AREA_CODE_INDEX area;               ///< of the section; AREA_NONE if it names none
    int value = 0;                      ///< -1 or 1, the sign of a number; a field of a date
    size_t index = 0;                   ///< of the token in the section
    const tagTIMEINFO* time = nullptr;  ///< null but for dates
    double days = 0;                    ///< the date serial

    const PlaceholderRecord& record() const;
  };

  int id;  ///< KPlaceholderId
  void (*Format)(PlaceholderEnv& env, std::wstring& out);
};

// Digits. The variants with H stand for the leftmost digit, which also writes all digits to its left.
extern const KPlaceholder KPlaceholder_Shape, KPlaceholder_ShapeH, KPlaceholder_Zero, KPlaceholder_ZeroH,
    KPlaceholder_Qusmk, KPlaceholder_QusmkH, KPlaceholder_XCode;

// Text.
extern const KPlaceholder KPlaceholder_Point, KPlaceholder_Group, KPlaceholder_GroupLast,
    KPlaceholder_Percent, KPlaceholder_Thousandth, KPlaceholder_Franction, KPlaceholder_Exponent,
    KPlaceholder_Plus, KPlaceholder_Sub, KPlaceholder_Blank, KPlaceholder_FillChar, KPlaceholder_CharString,
    KPlaceholder_UnknownChar, KPlaceholder_CurrencySymbol, KPlaceholder_SignNegative, KPlaceholder_String,
    KPlaceholder_General, KPlaceholder_FactionPL, KPlaceholder_MarkFraction, KPlaceholder_Ohter;

// Dates.
extern const KPlaceholder KPlaceholder_Year0000, KPlaceholder_Year00, KPlaceholder_JP_Year_1,
    KPlaceholder_JP_Year_2, KPlaceholder_JP_Year_3, KPlaceholder_JP_Year_4, KPlaceholder_Year_QEL_e,
    KPlaceholder_Year_QEL_E, KPlaceholder_Year_QEL_ee, KPlaceholder_Year_QEL_EE;
extern const KPlaceholder KPlaceholder_Month0, KPlaceholder_Month00, KPlaceholder_Month0_QEL,
    KPlaceholder_Month00_QEL, KPlaceholder_Month_QEL_O, KPlaceholder_MonthShort, KPlaceholder_MonthFull,
    KPlaceholder_MonthFirst, KPlaceholder_MonthShort_C, KPlaceholder_MonthFull_C, KPlaceholder_MonthFirst_C;
extern const KPlaceholder KPlaceholder_Day0, KPlaceholder_Day00, KPlaceholder_Day_QEL_A,
    KPlaceholder_DayShort, KPlaceholder_DayFull, KPlaceholder_DayShort_C, KPlaceholder_DayFull_C,
    KPlaceholder_Week0, KPlaceholder_Week00, KPlaceholder_Week000;
extern const KPlaceholder KPlaceholder_Hour0, KPlaceholder_Hour00, KPlaceholder_Hour_0_12,
    KPlaceholder_Hour_00_12, KPlaceholder_Minute0, KPlaceholder_Minute00, KPlaceholder_Minute0_QEL,
    KPlaceholder_Minute00_QEL, KPlaceholder_Second0, KPlaceholder_Second00, KPlaceholder_Days,
    KPlaceholder_Hours, KPlaceholder_Minutes, KPlaceholder_Seconds;
extern const KPlaceholder KPlaceholder_AMPM, KPlaceholder_AMPM_AM, KPlaceholder_AMPM_am, KPlaceholder_AMPM_A,
    KPlaceholder_AMPM_a, KPlaceholder_AMPM_JP, KPlaceholder_AMPM_CH;

/// The Japanese era of a date, 0 Meiji to 3 Heisei, and its year in that era.
int JP_Year(const tagTIMEINFO& time, int* year);
