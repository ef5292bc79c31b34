#include "numformat/decimal_text.h"
#include "numformat/double_to_text.h"
#include "numformat/format_section.h"
#include "numformat/placeholder.h"

using PlaceholderEnv = KPlaceholder::PlaceholderEnv;

namespace {

/// Where the word for ten stands in a table of numerals.
constexpr int kTenWord = 10;

bool spellsTens(NF_CODEPAGE page) {
  return page == DBNum1 || page == DBNum2 || page == DBNum20;
}

wchar_t tenWord(NF_CODEPAGE page, AREA_CODE_INDEX locale) {
  if (locale != AREA_JAPANESE || page == DBNum20) return KNFCodePageInstance.GetChar(page, kTenWord);
  return KNFCStingsInstance.GetJPCodePageInfo(page == DBNum1 ? 0 : 1)[kTenWord];
}

/// Digit by digit, at least `width` of them.
void writeDigits(int value, int width, NF_CODEPAGE page, AREA_CODE_INDEX locale, std::wstring& out) {
  const std::wstring digits = decimalText(static_cast<unsigned>(value));
  for (int missing = width - static_cast<int>(digits.size()); missing > 0; --missing) {
    out += KNFCodePageInstance._GetCodePageNumbe(L'0', page, locale);
  }
  for (wchar_t digit : digits) out += KNFCodePageInstance._GetCodePageNumbe(digit, page, locale);
}

/// A number below 100 as digits, or with the word for ten where the page has one.
void writeField(int value, int width, NF_CODEPAGE page, AREA_CODE_INDEX locale, std::wstring& out) {
  if (!spellsTens(page) || value < 10) {
    writeDigits(value, width, page, locale, out);
    return;
  }
  const bool oneIsSilent = page != DBNum2;
  if (value >= 20 || !oneIsSilent) writeDigits(value / 10, 1, page, locale, out);
  out += tenWord(page, locale);
  if (value % 10 > 0) writeDigits(value % 10, 1, page, locale, out);
}

/// A month, day, hour, minute or second.
template <int width>
void formatField(PlaceholderEnv& env, std::wstring& out) {
  writeField(env.value, width, env.base->codePage(), env.locale, out);
}

template <int width>
void formatHour12(PlaceholderEnv& env, std::wstring& out) {
  const int hour = env.value % 12;
  writeField(hour == 0 ? 12 : hour, width, env.base->codePage(), env.locale, out);
}

/// In the Chinese numerals, whatever page the section names.
void formatChineseField(PlaceholderEnv& env, std::wstring& out) {
  writeField(env.value, 1, DBNum1, AREA_CHINESE, out);
}

void formatYear(PlaceholderEnv& env, std::wstring& out) {
  writeDigits(env.value, 4, env.base->codePage(), env.locale, out);
}

void formatShortYear(PlaceholderEnv& env, std::wstring& out) {
  writeDigits(env.value % 100, 2, env.base->codePage(), env.locale, out);
}

template <NF_CODEPAGE page>
void formatYearIn(PlaceholderEnv& env, std::wstring& out) {
  writeDigits(env.value, 4, page, env.locale, out);
}

template <NF_DATE_Mode mode>
void formatEra(PlaceholderEnv& env, std::wstring& out) {
  if (env.locale != AREA_JAPANESE || !env.time) return;
  int year;
  out += KNFCStingsInstance.GetJPYear(mode, JP_Year(*env.time, &year));
}

void writeEraYear(const PlaceholderEnv& env, int page, std::wstring& out) {
  if (!env.time) return;
  int year;
  JP_Year(*env.time, &year);
  std::wstring text;
  KNFCodePageInstance.SerialNumber_JP(page, static_cast<unsigned long>(year), text);
  out += text;
}

void formatEraYear(PlaceholderEnv& env, std::wstring& out) {
  if (env.locale == AREA_JAPANESE) {
    writeEraYear(env, env.base->codePage(), out);
  } else {
    formatYear(env, out);
  }
}

template <int page>
void formatEraYearIn(PlaceholderEnv& env, std::wstring& out) {
  writeEraYear(env, page, out);
}

template <NF_DATE_Mode mode>
void formatMonthName(PlaceholderEnv& env, std::wstring& out) {
  out += KNFCStingsInstance.GetMonth(env.locale, env.value - 1, mode);
}

template <NF_DATE_Mode mode, int vietnameseForm>
void formatMonthNameCapital(PlaceholderEnv& env, std::wstring& out) {
  if (env.locale == AREA_VIETNAMESE) {
    out += KNFCStingsInstance.GetMonth_Vn(env.value - 1, vietnameseForm);
  } else {
    formatMonthName<mode>(env, out);
  }
}

void formatMonthFirstCapital(PlaceholderEnv& env, std::wstring& out) {
  if (env.locale == AREA_VIETNAMESE) {
    out += L'T';
  } else {
    formatMonthName<0>(env, out);
  }
}

/// In English or Vietnamese, whatever the locale.
template <NF_DATE_Mode mode>
void formatDayName(PlaceholderEnv& env, std::wstring& out) {
  const bool vietnamese = env.locale == AREA_VIETNAMESE;
  out += KNFCStingsInstance.GetWeekDay(vietnamese ? AREA_VIETNAMESE : AREA_ENGLISH, env.value, mode);
}

template <NF_DATE_Mode mode, int vietnameseForm>
void formatDayNameCapital(PlaceholderEnv& env, std::wstring& out) {
  if (env.locale == AREA_VIETNAMESE) {
    out += KNFCStingsInstance.GetWeekDay_Vn(env.value, vietnameseForm);
  } else {
    formatDayName<mode>(env, out);
  }
}

template <NF_DATE_Mode mode>
void formatWeekday(PlaceholderEnv& env, std::wstring& out) {
  out += KNFCStingsInstance.GetWeekDay(env.locale, env.value, mode);
}

/// What an elapsed time is counted in.
enum Unit { kDays, kHours, kMinutes, kSeconds };
constexpr double kSecondsPerUnit[] = {86400.0, 3600.0, 60.0, 1.0};

/// Writes `days` in whole units, at least `width` digits.
void Writetostring(double days, size_t width, Unit unit, std::wstring& out) {
  const double seconds = _GetDoulbeInt(days * kSecondsPerUnit[kDays] + 0.5);
  const auto count = static_cast<long long>(_GetDoulbeInt(seconds / kSecondsPerUnit[unit]));
  const std::wstring digits = decimalText(static_cast<unsigned long long>(count));
  if (digits.size() < width) out.append(width - digits.size(), L'0');
  out += digits;
}

template <Unit unit>
void formatElapsed(PlaceholderEnv& env, std::wstring& out) {
  const NF_CODEPAGE page = env.base->codePage();
  std::wstring text;
  Writetostring(env.days, env.record().text.size(), unit, text);
  if (spellsTens(page)) {
    KNFCodePageInstance._TransTongue(text, -1, page, false);
  } else if (page != DBNum0) {
    for (wchar_t& c : text) c = KNFCodePageInstance._GetCodePageNumbe(c, page, env.locale);
  }
  out += text;
}

/// Modes of the words for the halves of the day.
enum HalfOfDayMode { kAM, kam, kA, ka, kPlain, kLocalWords };

void writeHalfOfDay(const PlaceholderEnv& env, AREA_CODE_INDEX locale, NF_DATE_Mode mode, std::wstring& out) {
  out += env.value > 11 ? KNFCStingsInstance.GetPM(locale, mode) : KNFCStingsInstance.GetAM(locale, mode);
}

template <NF_DATE_Mode mode>
void KPL_AMPM(PlaceholderEnv& env, std::wstring& out) {
  writeHalfOfDay(env, env.locale, env.area == AREA_CHINESE ? kLocalWords : mode, out);
}

template <AREA_CODE_INDEX language>
void formatHalfOfDayIn(PlaceholderEnv& env, std::wstring& out) {
  writeHalfOfDay(env, language, kLocalWords, out);
}

}  // namespace

const KPlaceholder KPlaceholder_Year00 = {kIdYear00, formatShortYear};
const KPlaceholder KPlaceholder_Year0000 = {kIdYear0000, formatYear};
const KPlaceholder KPlaceholder_JP_Year_1 = {kIdJpYear1, formatEra<2>};
const KPlaceholder KPlaceholder_JP_Year_2 = {kIdJpYear2, formatEra<1>};
const KPlaceholder KPlaceholder_JP_Year_3 = {kIdJpYear3, formatEra<0>};
const KPlaceholder KPlaceholder_JP_Year_4 = {kIdJpYear4, formatEraYear};
const KPlaceholder KPlaceholder_Year_QEL_e = {kIdYearQelOne, formatEraYearIn<DBNum0>};
const KPlaceholder KPlaceholder_Year_QEL_E = {kIdYearQelOne, formatEraYearIn<DBNum1>};
const KPlaceholder KPlaceholder_Year_QEL_ee = {kIdYearQelTwo, formatYearIn<DBNum0>};
const KPlaceholder KPlaceholder_Year_QEL_EE = {kIdYearQelTwo, formatYearIn<DBNum1>};

const KPlaceholder KPlaceholder_Month0 = {kIdMonth0, formatField<1>};
const KPlaceholder KPlaceholder_Month00 = {kIdMonth00, formatField<2>};
const KPlaceholder KPlaceholder_Month0_QEL = {kIdMonth0Qel, formatField<1>};
const KPlaceholder KPlaceholder_Month00_QEL = {kIdMonth00Qel, formatField<2>};
const KPlaceholder KPlaceholder_Month_QEL_O = {kIdMonthQelO, formatChineseField};
const KPlaceholder KPlaceholder_MonthShort = {kIdMonthShort, formatMonthName<2>};
const KPlaceholder KPlaceholder_MonthFull = {kIdMonthFull, formatMonthName<1>};
const KPlaceholder KPlaceholder_MonthFirst = {kIdMonthFirst, formatMonthName<0>};
const KPlaceholder KPlaceholder_MonthShort_C = {kIdMonthShort, formatMonthNameCapital<2, 1>};
const KPlaceholder KPlaceholder_MonthFull_C = {kIdMonthFull, formatMonthNameCapital<1, 0>};
const KPlaceholder KPlaceholder_MonthFirst_C = {kIdMonthFirst, formatMonthFirstCapital};

const KPlaceholder KPlaceholder_Day0 = {kIdDay0, formatField<1>};
const KPlaceholder KPlaceholder_Day00 = {kIdDay00, formatField<2>};
const KPlaceholder KPlaceholder_Day_QEL_A = {kIdDayQelA, formatChineseField};
const KPlaceholder KPlaceholder_DayShort = {kIdDayShort, formatDayName<0>};
const KPlaceholder KPlaceholder_DayFull = {kIdDayFull, formatDayName<1>};
const KPlaceholder KPlaceholder_DayShort_C = {kIdDayShort, formatDayNameCapital<0, 1>};
const KPlaceholder KPlaceholder_DayFull_C = {kIdDayFull, formatDayNameCapital<1, 0>};
const KPlaceholder KPlaceholder_Week0 = {kIdWeek0, formatWeekday<0>};
const KPlaceholder KPlaceholder_Week00 = {kIdWeek00, formatWeekday<2>};
const KPlaceholder KPlaceholder_Week000 = {kIdWeek000, formatWeekday<1>};

const KPlaceholder KPlaceholder_Hour0 = {kIdHour0, formatField<1>};
const KPlaceholder KPlaceholder_Hour00 = {kIdHour00, formatField<2>};
const KPlaceholder KPlaceholder_Hour_0_12 = {kIdHour012, formatHour12<1>};
const KPlaceholder KPlaceholder_Hour_00_12 = {kIdHour0012, formatHour12<2>};
const KPlaceholder KPlaceholder_Minute0 = {kIdMinute0, formatField<1>};
const KPlaceholder KPlaceholder_Minute00 = {kIdMinute00, formatField<2>};
const KPlaceholder KPlaceholder_Minute0_QEL = {kIdMinute0Qel, formatField<1>};
const KPlaceholder KPlaceholder_Minute00_QEL = {kIdMinute00Qel, formatField<2>};
const KPlaceholder KPlaceholder_Second0 = {kIdSecond0, formatField<1>};
const KPlaceholder KPlaceholder_Second00 = {kIdSecond00, formatField<2>};
const KPlaceholder KPlaceholder_Days = {kIdDays, formatElapsed<kDays>};
const KPlaceholder KPlaceholder_Hours = {kIdHours, formatElapsed<kHours>};
const KPlaceholder KPlaceholder_Minutes = {kIdMinutes, formatElapsed<kMinutes>};
const KPlaceholder KPlaceholder_Seconds = {kIdSeconds, formatElapsed<kSeconds>};

const KPlaceholder KPlaceholder_AMPM_AM = {kIdAmPmAM, KPL_AMPM<kAM>};
const KPlaceholder KPlaceholder_AMPM_am = {kIdAmPmam, KPL_AMPM<kam>};
const KPlaceholder KPlaceholder_AMPM_A = {kIdAmPmA, KPL_AMPM<kA>};
const KPlaceholder KPlaceholder_AMPM_a = {kIdAmPma, KPL_AMPM<ka>};
const KPlaceholder KPlaceholder_AMPM = {kIdAmPm, KPL_AMPM<kPlain>};
const KPlaceholder KPlaceholder_AMPM_CH = {kIdAmPmChinese, formatHalfOfDayIn<AREA_CHINESE>};
const KPlaceholder KPlaceholder_AMPM_JP = {kIdAmPmJapanese, formatHalfOfDayIn<AREA_JAPANESE>};
