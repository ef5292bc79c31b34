#include <gtest/gtest.h>

#include <string>

#include "formats.h"
#include "numformat/date_format.h"

namespace {

constexpr double kMorning = 32516.0 + 9.0 / 24 + 5.0 / 1440 + 7.0 / 86400;  // Sunday, 8 January 1989, 9:05:07
constexpr double kEvening =
    44880.0 + 22.0 / 24 + 31.0 / 1440 + 45.0 / 86400;  // Tuesday, 15 November 2022, 22:31:45

struct DateRow {
  const wchar_t* format;
  double value;
  const wchar_t* text;
};

void expectShown(std::initializer_list<DateRow> rows, Dialect dialect = Dialect::kOQ) {
  for (const DateRow& row : rows) {
    EXPECT_EQ(shown(row.format, row.value, dialect), row.text)
        << testing::PrintToString(std::wstring(row.format)) << " of " << row.value;
  }
}

std::wstring in(AREA_CODE_INDEX area, const std::wstring& format, double value,
                Dialect dialect = Dialect::kOQ) {
  constexpr const wchar_t* kBrackets[] = {L"[$-409]", L"[$-411]", L"[$-804]", L"[$-42A]"};
  return shown(kBrackets[area] + format, value, dialect);
}

bool isLeap(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysIn(int month, int year) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeap(year) ? 29 : kDays[month - 1];
}

/// Steps a date on by one day.
void step(tagTIMEINFO& date) {
  date.weekday = (date.weekday + 1) % 7;
  ++date.dayOfYear;
  if (++date.day <= daysIn(date.month, date.year)) return;
  date.day = 1;
  if (++date.month <= 12) return;
  date.month = date.dayOfYear = 1;
  ++date.year;
}

}  // namespace

TEST(Dates, RunThroughTheCalendarFromTheFirstDayToTheLast) {
  tagTIMEINFO expected = {.second = 0,
                          .minute = 0,
                          .hour = 0,
                          .day = 30,
                          .month = 12,
                          .year = 1899,
                          .weekday = 6,
                          .dayOfYear = 364};
  for (int serial = 0; serial <= 2958465; ++serial, step(expected)) {
    const tagTIMEINFO time = timeOf(serial);
    ASSERT_EQ(time.year, expected.year) << serial;
    ASSERT_EQ(time.month, expected.month) << serial;
    ASSERT_EQ(time.day, expected.day) << serial;
    ASSERT_EQ(time.weekday, expected.weekday) << serial;
    ASSERT_EQ(time.dayOfYear, expected.dayOfYear) << serial;
  }
}

TEST(Dates, RunThroughTheSecondsOfADay) {
  for (int second = 0; second < 86400; ++second) {
    const tagTIMEINFO time = timeOf(45000 + second / 86400.0);
    ASSERT_EQ(time.hour * 3600 + time.minute * 60 + time.second, second);
    ASSERT_EQ(time.day, 15);
  }
}

TEST(Dates, CountFromThe30thOfDecember1899WithoutALeapDayIn1900) {
  expectShown({{L"yyyy-mm-dd", 0, L"1899-12-30"},
               {L"yyyy-mm-dd", 1, L"1899-12-31"},
               {L"yyyy-mm-dd", 2, L"1900-01-01"},
               {L"yyyy-mm-dd", 60, L"1900-02-28"},
               {L"yyyy-mm-dd", 61, L"1900-03-01"},
               {L"yyyy-mm-dd", 36585, L"2000-02-29"},
               {L"yyyy-mm-dd", 2958465, L"9999-12-31"}});
}

TEST(Dates, AreRoundedToTheNearestSecond) {
  expectShown({{L"yyyy-mm-dd HH:mm:ss", 45000 + 0.4 / 86400, L"2023-03-15 00:00:00"},
               {L"yyyy-mm-dd HH:mm:ss", 45000 + 0.6 / 86400, L"2023-03-15 00:00:01"},
               {L"yyyy-mm-dd HH:mm:ss", 45000 - 0.4 / 86400, L"2023-03-15 00:00:00"},
               {L"yyyy-mm-dd HH:mm:ss", 45000 - 0.6 / 86400, L"2023-03-14 23:59:59"}});
}

TEST(Dates, OutOfRangeHaveNoText) {
  for (double value : {-1.0, -0.5, 2958465.5, 2958466.0, 1e308, -1e308}) {
    const Formatted formatted = Format(L"yyyy-mm-dd").format(number(value));
    EXPECT_EQ(formatted.result, NF_BAD_ARGUMENT) << value;
    EXPECT_EQ(formatted.text, std::nullopt) << value;
  }
}

TEST(Dates, CopyTextsAndMarkThem) {
  const Formatted formatted = Format(L"yyyy").format(string(L"text"));
  EXPECT_EQ(formatted.text, L"text");
  EXPECT_NE(formatted.style.codePage & NF_STYLE_TEXT, 0u);
}

TEST(Dates, AreReadFromEveryNumber) {
  EXPECT_EQ(shown(L"yyyy", serial(45000)), L"2023");
  tagVARIANT date = tagged(NF_VT_DATE);
  date.date = 45000;
  EXPECT_EQ(shown(L"yyyy", date), L"2023");
}

TEST(DateFields, ShowTheirPartOfTheDate) {
  expectShown({{L"yyyy", kMorning, L"1989"},
               {L"yyy", kMorning, L"1989"},
               {L"yy", kMorning, L"89"},
               {L"y", kMorning, L"89"},
               {L"yy", 1, L"99"},
               {L"yy", 36600, L"00"},
               {L"m", kMorning, L"1"},
               {L"mm", kMorning, L"01"},
               {L"mmm", kMorning, L"Jan"},
               {L"mmmm", kMorning, L"January"},
               {L"mmmmm", kMorning, L"J"},
               {L"d", kMorning, L"8"},
               {L"dd", kMorning, L"08"},
               {L"ddd", kMorning, L"Sun"},
               {L"dddd", kMorning, L"Sunday"},
               {L"aaa", kMorning, L"Sun"},
               {L"aaaa", kMorning, L"Sunday"},
               {L"w", kMorning, L"Sun"},
               {L"ww", kMorning, L"Sunday"},
               {L"www", kMorning, L"Sunday"},
               {L"H", kMorning, L"9"},
               {L"HH", kMorning, L"09"},
               {L"H", kEvening, L"22"},
               {L"h", kEvening, L"10"},
               {L"hh", kMorning, L"09"},
               {L"h", 45000, L"12"},
               {L"hh", 45000.5, L"12"},
               {L"H", 45000, L"0"},
               {L"h:m", kMorning, L"9:5"},
               {L"h:mm", kMorning, L"9:05"},
               {L"s", kMorning, L"7"},
               {L"ss", kMorning, L"07"},
               {L"e", kMorning, L"1989"},
               {L"ggg", kMorning, L""},
               {L"gg", kMorning, L""},
               {L"g", kMorning, L""}});
}

TEST(DateFields, ShowTheHalfOfTheDay) {
  expectShown({{L"AM/PM", kMorning, L"AM"},
               {L"AM/PM", kEvening, L"PM"},
               {L"am/pm", kEvening, L"PM"},
               {L"A/P", kMorning, L"A"},
               {L"A/P", kEvening, L"P"},
               {L"a/p", kMorning, L"a"},
               {L"a/p", kEvening, L"p"},
               {L"AMPM", kEvening, L"PM"},
               {L"上午/下午", kMorning, L"上午"},
               {L"[上午/下午]", kEvening, L"下午"},
               {L"午前/午後", kMorning, L"午前"},
               {L"午前/午後", kEvening, L"午後"},
               {L"AM/PM", 45000.5, L"PM"}});
}

TEST(DateFields, ShowTheHalfOfTheDayInTheWordsOfTheArea) {
  EXPECT_EQ(in(AREA_JAPANESE, L"AM/PM", kEvening), L"午後");
  EXPECT_EQ(in(AREA_CHINESE, L"A/P", kEvening), L"下午");
  EXPECT_EQ(in(AREA_VIETNAMESE, L"AM/PM", kEvening), L"CH");
  EXPECT_EQ(shown(L"AM/PM", kEvening, ::in(kChinese)), L"PM");
  EXPECT_EQ(shown(L"AM/PM", kMorning, ::in(kVietnamese)), L"SA");
}

TEST(DateFields, OfTheWordProcessorsShowTheirPartOfTheDate) {
  for (Dialect dialect : {Dialect::kWord, Dialect::kQel}) {
    expectShown({{L"MM M", kMorning, L"01 1"},
                 {L"mm m", kMorning, L"05 5"},
                 {L"MMM", kMorning, L"Jan"},
                 {L"MMMM", kMorning, L"January"},
                 {L"MMMMM", kMorning, L"J"},
                 {L"O", kEvening, L"十一"},
                 {L"A", kEvening, L"十五"},
                 {L"ee", kEvening, L"2022"},
                 {L"EE", kEvening, L"二○二二"},
                 {L"e", kEvening, L"34"},
                 {L"E", kEvening, L"三十四"},
                 {L"aaa", kEvening, L"Tue"},
                 {L"DDD", kEvening, L"Tue"},
                 {L"DDDD", kEvening, L"Tuesday"}},
                dialect);
  }
}

TEST(DateFields, HaveNamesInTheAreaOfTheSection) {
  EXPECT_EQ(in(AREA_JAPANESE, L"mmmmm|mmmm|mmm", kEvening), L"11|11月|11");
  EXPECT_EQ(in(AREA_CHINESE, L"mmmmm|mmmm|mmm", kEvening), L"十一|十一月|十一月");
  EXPECT_EQ(in(AREA_VIETNAMESE, L"mmmmm|mmm", kEvening), L"t|th11");
  EXPECT_EQ(in(AREA_JAPANESE, L"aaa|ww|aaaa", kEvening), L"火|火曜日|火曜日");
  EXPECT_EQ(in(AREA_CHINESE, L"aaa|ww|aaaa", kEvening), L"二|周二|星期二");
  EXPECT_EQ(in(AREA_VIETNAMESE, L"aaa|ww|aaaa", kEvening), L"ba|ba|th\u01B0\u0301 ba");
}

TEST(DateFields, NameDaysOfTheMonthKindInEnglishOrVietnameseOnly) {
  EXPECT_EQ(in(AREA_JAPANESE, L"ddd|dddd", kEvening), L"Tue|Tuesday");
  EXPECT_EQ(in(AREA_CHINESE, L"ddd|dddd", kEvening), L"Tue|Tuesday");
  EXPECT_EQ(in(AREA_VIETNAMESE, L"ddd|dddd", kEvening), L"ba|th\u01B0\u0301 ba");
}

TEST(DateFields, HaveCapitalsInVietnameseByTheirCapitalKeywords) {
  EXPECT_EQ(in(AREA_VIETNAMESE, L"MMMMM|MMM", kEvening, Dialect::kWord), L"T|Th11");
  EXPECT_EQ(in(AREA_VIETNAMESE, L"MMMM", 45000, Dialect::kWord), L"Tha\u0301ng ba");
  EXPECT_EQ(in(AREA_VIETNAMESE, L"DDD|DDDD", kEvening, Dialect::kQel), L"Ba|Th\u01B0\u0301 Ba");
  EXPECT_EQ(in(AREA_ENGLISH, L"MMMMM|MMM|DDD", kEvening, Dialect::kQel), L"N|Nov|Tue");
}

TEST(DateFields, HaveNamesInTheLocaleOfTheParameterIfTheSectionNamesNone) {
  EXPECT_EQ(shown(L"aaaa", kEvening, ::in(kJapanese)), L"火曜日");
  EXPECT_EQ(shown(L"[$-804]aaaa", kEvening, ::in(kJapanese)), L"星期二");
}

TEST(DateFields, AreSpelledWithTheWordForTen) {
  expectShown({{L"[DBNum1]m", kEvening, L"十一"},
               {L"[DBNum1]d", kEvening, L"十五"},
               {L"[DBNum1]H", kEvening, L"二十二"},
               {L"[DBNum1]d", 44865, L"三十一"},
               {L"[DBNum1]d", 44854, L"二十"},
               {L"[DBNum1]d", 44844, L"十"},
               {L"[DBNum2]m", kEvening, L"壹拾壹"},
               {L"[DBNum20]m", kEvening, L"拾壹"},
               {L"[DBNum1]m", kMorning, L"一"},
               {L"[DBNum1]yyyy", kEvening, L"二○二二"},
               {L"[DBNum1]yy", kEvening, L"二二"},
               {L"[DBNum3]yyyy", kEvening, L"２０２２"},
               {L"[DBNum3]dd", kMorning, L"０８"}});
}

TEST(DateFields, AreSpelledInJapanese) {
  EXPECT_EQ(in(AREA_JAPANESE, L"[DBNum1]yyyy", kEvening), L"二〇二二");
  EXPECT_EQ(in(AREA_JAPANESE, L"[DBNum2]d", kEvening), L"壱拾伍");
}

TEST(JapaneseEras, BeginAndEndWithTheirEmperors) {
  expectShown({{L"[$-411]ggg e", 32515, L"昭和 64"},
               {L"[$-411]ggg e", 32516, L"平成 1"},
               {L"[$-411]ggg e", 1, L"明治 32"},
               {L"[$-411]ggg e", 4594, L"明治 45"},
               {L"[$-411]ggg e", 4595, L"大正 1"},
               {L"[$-411]ggg e", 9855, L"大正 15"},
               {L"[$-411]ggg e", 9856, L"昭和 1"},
               {L"[$-411]ggg e", 9862, L"昭和 1"},
               {L"[$-411]ggg e", 9863, L"昭和 2"}});
}

TEST(JapaneseEras, HaveThreeNames) {
  EXPECT_EQ(in(AREA_JAPANESE, L"ggg|gg|g", kMorning), L"平成|平|H");
  EXPECT_EQ(in(AREA_JAPANESE, L"ggg|gg|g", 32515), L"昭和|昭|S");
  EXPECT_EQ(in(AREA_CHINESE, L"ggg|gg|g", kMorning), L"||");
}

TEST(JapaneseEras, CountYearsInTheNumberingSystem) {
  EXPECT_EQ(in(AREA_JAPANESE, L"[DBNum1]e", 32515), L"六十四");
  EXPECT_EQ(in(AREA_JAPANESE, L"[DBNum3]e", 32515), L"６十４");
  EXPECT_EQ(shown(L"e", 32515, ::in(kJapanese)), L"64");
}

TEST(ElapsedTimes, CountWholeUnits) {
  expectShown({{L"[h]:mm", 1.5, L"36:00"},
               {L"[d]", 3.75, L"3"},
               {L"[h]", 0.99999, L"23"},
               {L"[m]", 1, L"1440"},
               {L"[s]", 1, L"86400"},
               {L"[s]", 0.5 / 86400, L"1"},
               {L"[s]", 0.4 / 86400, L"0"},
               {L"[h]:mm:ss", 1 + 1.0 / 86400, L"24:00:01"},
               {L"[h]", 2958465, L"71003160"},
               {L"[s]", 2958465, L"255611376000"}});
}

TEST(ElapsedTimes, HaveAsManyDigitsAsTheirBracketHasLetters) {
  expectShown({{L"[hhhh]", 1.5, L"0036"}, {L"[ss]", 0, L"00"}, {L"[dddddddddddd]", 3, L"000000000003"}});
  EXPECT_EQ(shown(L"[" + std::wstring(253, L'h') + L"]", 1.0 / 24), std::wstring(252, L'0') + L"1");
}

TEST(ElapsedTimes, AreSpelledInTheNumberingSystem) {
  expectShown(
      {{L"[DBNum1][h]", 1.5, L"三十六"}, {L"[DBNum3][h]", 1.5, L"３６"}, {L"[DBNum2][m]", 0.01, L"壹拾肆"}});
}

TEST(DateSeparators, AreWrittenAsTheyStand) {
  const std::wstring expected = L"2022/11-15";
  for (const wchar_t* format : {L"yyyy/mm-dd", L"yyyy\\/mm\\-dd", L"yyyy!/mm!-dd", L"yyyy\"/\"mm\"-\"dd"}) {
    for (Language language : {kEnglish, kChinese, kVietnamese}) {
      EXPECT_EQ(shown(format, kEvening, ::in(language)), expected) << format;
    }
  }
}
