#include "numformat/const_strings.h"

#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>
#include <string>

namespace {

const KNFConstStrings& strings = KNFCStingsInstance;

constexpr AREA_CODE_INDEX kAllAreas[] = {AREA_ENGLISH, AREA_JAPANESE, AREA_CHINESE, AREA_VIETNAMESE};

std::wstring weekDays(AREA_CODE_INDEX area, int mode) {
  std::wstring all;
  for (int day = 0; day < 7; ++day)
    all += std::wstring(day ? L" " : L"") + strings.GetWeekDay(area, day, mode);
  return all;
}

std::wstring months(AREA_CODE_INDEX area, int mode) {
  std::wstring all;
  for (int month = 0; month < 12; ++month) {
    all += std::wstring(month ? L"|" : L"") + strings.GetMonth(area, month, mode);
  }
  return all;
}

std::wstring codePoints(std::initializer_list<unsigned> values) {
  return {values.begin(), values.end()};
}

std::wstring swapped(std::wstring text, AREA_CODE_INDEX area) {
  strings.TransPoint2Group(text, area);
  return text;
}

}  // namespace

TEST(ConstStrings, NamesWeekdaysInThreeForms) {
  EXPECT_EQ(weekDays(AREA_ENGLISH, 0), L"Sun Mon Tue Wed Thu Fri Sat");
  EXPECT_EQ(weekDays(AREA_ENGLISH, 1), L"Sunday Monday Tuesday Wednesday Thursday Friday Saturday");
  EXPECT_EQ(weekDays(AREA_JAPANESE, 0), L"日 月 火 水 木 金 土");
  EXPECT_EQ(weekDays(AREA_JAPANESE, 1), L"日曜日 月曜日 火曜日 水曜日 木曜日 金曜日 土曜日");
  EXPECT_EQ(weekDays(AREA_CHINESE, 0), L"日 一 二 三 四 五 六");
  EXPECT_EQ(weekDays(AREA_CHINESE, 1), L"星期日 星期一 星期二 星期三 星期四 星期五 星期六");
  EXPECT_EQ(weekDays(AREA_CHINESE, 2), L"周日 周一 周二 周三 周四 周五 周六");
}

TEST(ConstStrings, RepeatsWeekdaysInTheThirdForm) {
  EXPECT_EQ(weekDays(AREA_ENGLISH, 2), weekDays(AREA_ENGLISH, 1));
  EXPECT_EQ(weekDays(AREA_JAPANESE, 2), weekDays(AREA_JAPANESE, 1));
  EXPECT_EQ(weekDays(AREA_VIETNAMESE, 2), weekDays(AREA_VIETNAMESE, 0));
}

TEST(ConstStrings, KeepsTheCompositionOfVietnameseWeekdays) {
  EXPECT_EQ(strings.GetWeekDay(AREA_VIETNAMESE, 0, 0), std::wstring(L"cn"));
  EXPECT_EQ(strings.GetWeekDay(AREA_VIETNAMESE, 3, 0), codePoints({'t', 0x1B0}));
  EXPECT_EQ(strings.GetWeekDay(AREA_VIETNAMESE, 4, 0), codePoints({'n', 0x103, 'm'}));
  EXPECT_EQ(strings.GetWeekDay(AREA_VIETNAMESE, 5, 0), codePoints({'s', 'a', 0x301, 'u'}));
  EXPECT_EQ(strings.GetWeekDay(AREA_VIETNAMESE, 6, 0), codePoints({'b', 'a', 0x309, 'y'}));
  EXPECT_EQ(strings.GetWeekDay(AREA_VIETNAMESE, 0, 1),
            codePoints({'c', 'h', 'u', 0x309, ' ', 'n', 'h', 0xE2, 0x323, 't'}));
  EXPECT_EQ(strings.GetWeekDay(AREA_VIETNAMESE, 2, 1), codePoints({'t', 'h', 0x1B0, 0x301, ' ', 'b', 'a'}));
}

TEST(ConstStrings, KeepsTheCompositionOfVietnameseMonths) {
  const std::wstring thang = codePoints({'t', 'h', 'a', 0x301, 'n', 'g', ' '});
  const std::wstring muoi = codePoints({'m', 0x1B0, 0x1A1, 0x300, 'i'});
  const std::wstring mot = codePoints({'m', 0xF4, 0x323, 't'});
  EXPECT_EQ(strings.GetMonth(AREA_VIETNAMESE, 0, 1), thang + mot);
  EXPECT_EQ(strings.GetMonth(AREA_VIETNAMESE, 7, 1), thang + codePoints({'t', 'a', 0x301, 'm'}));
  EXPECT_EQ(strings.GetMonth(AREA_VIETNAMESE, 8, 1), thang + codePoints({'c', 'h', 'i', 0x301, 'n'}));
  EXPECT_EQ(strings.GetMonth(AREA_VIETNAMESE, 9, 1), thang + muoi);
  EXPECT_EQ(strings.GetMonth(AREA_VIETNAMESE, 10, 1), thang + muoi + L" " + mot);
  EXPECT_EQ(strings.GetMonth(AREA_VIETNAMESE, 11, 1), thang + muoi + L" hai");
}

TEST(ConstStrings, CapitalisesVietnameseWeekdays) {
  EXPECT_EQ(strings.GetWeekDay_Vn(0, 0), codePoints({'C', 'h', 'u', 0x309, ' ', 'N', 'h', 0xE2, 0x323, 't'}));
  EXPECT_EQ(strings.GetWeekDay_Vn(5, 0), codePoints({'T', 'h', 0x1B0, 0x301, ' ', 'S', 'a', 0x301, 'u'}));
  EXPECT_EQ(strings.GetWeekDay_Vn(0, 1), std::wstring(L"Cn"));
  EXPECT_EQ(strings.GetWeekDay_Vn(3, 1), codePoints({'T', 0x1B0}));
}

TEST(ConstStrings, CapitalisesTheFirstLetterOfVietnameseMonths) {
  for (int month = 0; month < 12; ++month) {
    std::wstring longName = strings.GetMonth(AREA_VIETNAMESE, month, 1);
    std::wstring shortName = strings.GetMonth(AREA_VIETNAMESE, month, 2);
    longName[0] = shortName[0] = L'T';
    EXPECT_EQ(strings.GetMonth_Vn(month, 0), longName);
    EXPECT_EQ(strings.GetMonth_Vn(month, 1), shortName);
  }
}

TEST(ConstStrings, NamesMonthsInThreeForms) {
  EXPECT_EQ(months(AREA_ENGLISH, 0), L"J|F|M|A|M|J|J|A|S|O|N|D");
  EXPECT_EQ(months(AREA_ENGLISH, 1),
            L"January|February|March|April|May|June|July|August|September|October|November|December");
  EXPECT_EQ(months(AREA_ENGLISH, 2), L"Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec");
  EXPECT_EQ(months(AREA_JAPANESE, 0), L"1|2|3|4|5|6|7|8|9|10|11|12");
  EXPECT_EQ(months(AREA_JAPANESE, 1), L"1月|2月|3月|4月|5月|6月|7月|8月|9月|10月|11月|12月");
  EXPECT_EQ(months(AREA_JAPANESE, 2), months(AREA_JAPANESE, 0));
  EXPECT_EQ(months(AREA_CHINESE, 0), L"一|二|三|四|五|六|七|八|九|十|十一|十二");
  EXPECT_EQ(months(AREA_CHINESE, 1), L"一月|二月|三月|四月|五月|六月|七月|八月|九月|十月|十一月|十二月");
  EXPECT_EQ(months(AREA_CHINESE, 2), months(AREA_CHINESE, 1));
  EXPECT_EQ(months(AREA_VIETNAMESE, 0), L"t|t|t|t|t|t|t|t|t|t|t|t");
  EXPECT_EQ(months(AREA_VIETNAMESE, 2), L"th1|th2|th3|th4|th5|th6|th7|th8|th9|th10|th11|th12");
}

TEST(ConstStrings, NamesTheHalvesOfTheDay) {
  const struct {
    AREA_CODE_INDEX area;
    std::wstring am[6];
    std::wstring pm[6];
  } rows[] = {
      {AREA_ENGLISH, {L"AM", L"AM", L"A", L"a", L"AM", L"AM"}, {L"PM", L"PM", L"P", L"p", L"PM", L"PM"}},
      {AREA_JAPANESE,
       {L"午前", L"午前", L"午前", L"午前", L"午前", L"午前"},
       {L"午後", L"午後", L"午後", L"午後", L"午後", L"午後"}},
      {AREA_CHINESE,
       {L"AM", L"AM", L"A", L"a", L"上午", L"上午"},
       {L"PM", L"PM", L"P", L"p", L"下午", L"下午"}},
      {AREA_VIETNAMESE,
       {L"SA", L"SA", L"SA", L"SA", L"SA", L"SA"},
       {L"CH", L"CH", L"CH", L"CH", L"CH", L"CH"}},
  };
  for (const auto& row : rows) {
    for (int mode = 0; mode < 6; ++mode) {
      EXPECT_EQ(strings.GetAM(row.area, mode), row.am[mode]);
      EXPECT_EQ(strings.GetPM(row.area, mode), row.pm[mode]);
    }
  }
}

TEST(ConstStrings, GivesTheKeywordsOfFormats) {
  const std::wstring halves[] = {L"AM/PM", L"am/pm",     L"A/P",       L"a/p",
                                 L"AMPM",  L"午前/午後", L"上午/下午", L"AM/PM"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(strings.GetAMPM(i), halves[i]);
  const std::wstring general[] = {L"General", L"G/標準", L"G/通用格式", L"General"};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(strings.GetGeneral(i), general[i]);
}

TEST(ConstStrings, FindsColoursInAllLanguagesAndAnyCase) {
  EXPECT_EQ(strings.FindColor(L"Black"), 0);
  EXPECT_EQ(strings.FindColor(L"mAGENTA"), 4);
  EXPECT_EQ(strings.FindColor(L"水"), 2);
  EXPECT_EQ(strings.FindColor(L"洋红"), 4);
  EXPECT_EQ(strings.FindColor(L"白色"), 7);
}

TEST(ConstStrings, FindsEveryColourByItsName) {
  for (AREA_CODE_INDEX area : kAllAreas) {
    for (int colour = 0; colour < 8; ++colour)
      EXPECT_EQ(strings.FindColor(strings.GetColor(area, colour)), colour);
  }
}

TEST(ConstStrings, FindsNoOtherColour) {
  for (const wchar_t* name : {L"", L"Re", L"Redd", L"Orange", L"黄色色"})
    EXPECT_EQ(strings.FindColor(name), -1);
}

TEST(ConstStrings, GivesColourWordsWithADarkerGreen) {
  const uint32_t words[] = {0xFF000000, 0xFF0000FF, 0xFF00FFFF, 0xFF008000,
                            0xFFFF00FF, 0xFFFF0000, 0xFFFFFF00, 0xFFFFFFFF};
  for (int colour = 0; colour < 8; ++colour) EXPECT_EQ(strings.GetColorWord(colour), words[colour]);
  EXPECT_EQ(strings.GetColorWord(-1), 0xFFFFFEu);
}

TEST(ConstStrings, FindsAreasByTheirBracketTexts) {
  for (AREA_CODE_INDEX area : kAllAreas) EXPECT_EQ(strings.FindAreaCode(strings.GetAreaCode(area)), area);
  EXPECT_EQ(strings.GetAreaCode(AREA_VIETNAMESE), std::wstring(L"$-42A"));
  EXPECT_EQ(strings.FindAreaCode(L"$-101042A"), AREA_VIETNAMESE);
  EXPECT_EQ(strings.FindAreaCode(L"$-40"), AREA_NONE);
}

TEST(ConstStrings, SwapsPointAndGroupInVietnamese) {
  for (AREA_CODE_INDEX area : {AREA_ENGLISH, AREA_JAPANESE, AREA_CHINESE}) {
    EXPECT_EQ(strings.GetPoint(area), L'.');
    EXPECT_EQ(strings.GetGroup(area), L',');
  }
  EXPECT_EQ(strings.GetPoint(AREA_VIETNAMESE), L',');
  EXPECT_EQ(strings.GetGroup(AREA_VIETNAMESE), L'.');
}

TEST(ConstStrings, TurnsANumberTextIntoVietnameseOnly) {
  EXPECT_EQ(swapped(L"1,234.50", AREA_VIETNAMESE), L"1.234,50");
  EXPECT_EQ(swapped(L"1,234,567", AREA_VIETNAMESE), L"1.234.567");
  EXPECT_EQ(swapped(L"-0.5", AREA_VIETNAMESE), L"-0,5");
  for (AREA_CODE_INDEX area : {AREA_NONE, AREA_ENGLISH, AREA_JAPANESE, AREA_CHINESE}) {
    EXPECT_EQ(swapped(L"1,234.50", area), L"1,234.50");
  }
}

TEST(ConstStrings, NamesTheErasInThreeForms) {
  const std::wstring eras[3][4] = {
      {L"M", L"T", L"S", L"H"}, {L"明", L"大", L"昭", L"平"}, {L"明治", L"大正", L"昭和", L"平成"}};
  for (int mode = 0; mode < 3; ++mode) {
    for (int era = 0; era < 4; ++era) EXPECT_EQ(strings.GetJPYear(mode, era), eras[mode][era]);
  }
}

TEST(ConstStrings, GivesTheMoneyWords) {
  EXPECT_EQ(strings.GetChineseCurrency(), std::wstring(L"$RMB"));
  EXPECT_EQ(strings.GetChineseCurrencyPage(), std::wstring(L"元角分整"));
}

TEST(ConstStrings, HasNoResourceStrings) {
  EXPECT_EQ(strings.LoadStr(0), std::wstring());
  EXPECT_EQ(strings.LoadStr(UINT_MAX), std::wstring());
}

TEST(ConstStrings, GivesEmptyTextsOutOfRange) {
  const std::wstring empty;
  for (int bad : {INT_MIN, -1, 12, INT_MAX}) {
    const auto area = static_cast<AREA_CODE_INDEX>(bad);
    EXPECT_EQ(strings.GetWeekDay(area, 0, 0), empty);
    EXPECT_EQ(strings.GetWeekDay(AREA_ENGLISH, bad, 0), empty);
    EXPECT_EQ(strings.GetWeekDay(AREA_ENGLISH, 0, bad), empty);
    EXPECT_EQ(strings.GetWeekDay_Vn(bad, 0), empty);
    EXPECT_EQ(strings.GetMonth(AREA_ENGLISH, bad, 0), empty);
    EXPECT_EQ(strings.GetMonth_Vn(0, bad), empty);
    EXPECT_EQ(strings.GetAM(area, 0), empty);
    EXPECT_EQ(strings.GetPM(AREA_ENGLISH, bad), empty);
    EXPECT_EQ(strings.GetAMPM(bad), empty);
    EXPECT_EQ(strings.GetGeneral(bad), empty);
    EXPECT_EQ(strings.GetColor(area, 0), empty);
    EXPECT_EQ(strings.GetAreaCode(area), empty);
    EXPECT_EQ(strings.GetJPYear(bad, 0), empty);
    EXPECT_EQ(strings.GetJPCodePageInfo(bad), empty);
    EXPECT_EQ(strings.GetPoint(area), L'.');
  }
}
