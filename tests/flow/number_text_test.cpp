#include "flow/number_text.h"

#include <gtest/gtest.h>

#include <set>

namespace pagerex {
namespace {

std::u16string text(int32_t number, uint8_t nfc, uint16_t language = 0) {
  std::u16string out;
  appendNumber(number, nfc, language, out);
  return out;
}

struct Row {
  uint8_t nfc;
  int32_t number;
  std::u16string_view text;
};

class NumberText : public testing::TestWithParam<Row> {};

TEST_P(NumberText, IsAsTheFormatShowsIt) {
  EXPECT_EQ(text(GetParam().number, GetParam().nfc), GetParam().text)
      << "nfc " << int{GetParam().nfc} << ", " << GetParam().number;
}

INSTANTIATE_TEST_SUITE_P(
    Western, NumberText,
    testing::Values(Row{0, 0, u"0"}, Row{0, 1, u"1"}, Row{0, 123, u"123"}, Row{0, -5, u"-5"},
                    Row{0, INT32_MIN, u"-2147483648"}, Row{1, 4, u"IV"}, Row{1, 1999, u"MCMXCIX"},
                    Row{2, 4, u"iv"}, Row{2, 88, u"lxxxviii"}, Row{1, 0, u"0"}, Row{1, 40000, u"40000"},
                    Row{3, 1, u"A"}, Row{3, 26, u"Z"}, Row{3, 27, u"AA"}, Row{3, 28, u"BB"},
                    Row{3, 53, u"AAA"}, Row{4, 28, u"bb"}, Row{4, 0, u"0"}, Row{5, 1, u"1st"},
                    Row{5, 2, u"2nd"}, Row{5, 3, u"3rd"}, Row{5, 4, u"4th"}, Row{5, 11, u"11th"},
                    Row{5, 21, u"21st"}, Row{5, 112, u"112th"}, Row{6, 1, u"One"}, Row{6, 15, u"Fifteen"},
                    Row{6, 21, u"Twenty-one"}, Row{6, 100, u"One hundred"},
                    Row{6, 1342, u"One thousand three hundred forty-two"}, Row{7, 1, u"First"},
                    Row{7, 12, u"Twelfth"}, Row{7, 20, u"Twentieth"}, Row{7, 22, u"Twenty-second"},
                    Row{7, 104, u"One hundred fourth"}, Row{7, 1000, u"One thousandth"}, Row{8, 10, u"A"},
                    Row{8, 255, u"FF"}, Row{9, 1, u"*"}, Row{9, 2, u"†"}, Row{9, 4, u"§"}, Row{9, 5, u"**"},
                    Row{9, 7, u"‡‡"}, Row{15, 7, u"7"}, Row{22, 7, u"07"}, Row{22, 10, u"10"},
                    Row{22, 0, u"0"}, Row{23, 7, u""}, Row{40, 7, u"7"}, Row{57, 3, u"- 3 -"},
                    Row{57, 0, u"- 0 -"}, Row{58, 1, u"а"}, Row{58, 29, u"я"}, Row{58, 30, u"аа"},
                    Row{59, 10, u"К"}, Row{60, 8, u"8"}, Row{254, 8, u"8"}, Row{255, 8, u""}));

INSTANTIATE_TEST_SUITE_P(
    EastAsian, NumberText,
    testing::Values(
        Row{10, 10, u"一〇"}, Row{10, 205, u"二〇五"}, Row{11, 10, u"十"}, Row{11, 11, u"十一"},
        Row{11, 20, u"二十"}, Row{11, 101, u"百一"}, Row{11, 1234, u"千二百三十四"}, Row{11, 10000, u"一万"},
        Row{12, 1, u"ｱ"}, Row{12, 46, u"ﾝ"}, Row{12, 47, u"ｱ"}, Row{13, 1, u"ｲ"}, Row{13, 48, u"ﾝ"},
        Row{14, 12, u"１２"}, Row{16, 10, u"壱拾"}, Row{16, 23, u"弐拾参"}, Row{17, 12, u"一二"},
        Row{18, 1, u"①"}, Row{18, 20, u"⑳"}, Row{18, 21, u"21"}, Row{19, 30, u"３０"}, Row{20, 2, u"イ"},
        Row{20, 46, u"ン"}, Row{21, 1, u"イ"}, Row{21, 48, u"ン"}, Row{24, 1, u"가"}, Row{24, 14, u"하"},
        Row{24, 15, u"가"}, Row{25, 2, u"ㄴ"}, Row{26, 20, u"⒛"}, Row{27, 3, u"⑶"}, Row{28, 10, u"⑩"},
        Row{29, 10, u"㈩"}, Row{29, 11, u"11"}, Row{30, 10, u"癸"}, Row{30, 11, u"11"}, Row{31, 12, u"亥"},
        Row{32, 1, u"甲子"}, Row{32, 11, u"甲戌"}, Row{32, 60, u"癸亥"}, Row{32, 61, u"甲子"},
        Row{33, 10, u"十"}, Row{33, 15, u"十五"}, Row{33, 100, u"一○○"}, Row{34, 10, u"壹拾"},
        Row{34, 101, u"壹佰零壹"}, Row{35, 100, u"一百"}, Row{35, 101, u"一百零一"}, Row{36, 10, u"一○"},
        Row{37, 99, u"九十九"}, Row{37, 100, u"一○○"}, Row{38, 3, u"叁"}, Row{38, 12, u"壹拾贰"},
        Row{39, 10, u"十"}, Row{39, 110, u"一百一十"}, Row{39, 111, u"一百一十一"},
        Row{39, 1005, u"一千零五"}, Row{39, 1050, u"一千零五十"}, Row{39, 10000, u"一万"},
        Row{39, 10100, u"一万零一百"}, Row{39, 123456, u"十二万三千四百五十六"}, Row{41, 10, u"일영"},
        Row{42, 10, u"십"}, Row{42, 21, u"이십일"}, Row{43, 1, u"하나"}, Row{43, 11, u"열하나"},
        Row{43, 20, u"스물"}, Row{43, 99, u"아흔아홉"}, Row{43, 100, u"100"}, Row{44, 10, u"一零"}));

INSTANTIATE_TEST_SUITE_P(
    OtherScripts, NumberText,
    testing::Values(Row{45, 1, u"א"}, Row{45, 10, u"י"}, Row{45, 15, u"טו"}, Row{45, 16, u"טז"},
                    Row{45, 100, u"ק"}, Row{45, 392, u"שצב"}, Row{45, 999, u"תתקצט"}, Row{45, 1000, u"1000"},
                    Row{46, 1, u"أ"}, Row{46, 3, u"ت"}, Row{46, 28, u"ي"}, Row{46, 29, u"أأ"},
                    Row{47, 22, u"ת"}, Row{47, 23, u"תא"}, Row{48, 3, u"ج"}, Row{48, 28, u"غ"},
                    Row{49, 1, u"क"}, Row{49, 37, u"ह"}, Row{50, 1, u"अ"}, Row{51, 10, u"१०"},
                    Row{52, 1, u"एक"}, Row{52, 99, u"निन्यानबे"}, Row{52, 101, u"एक सौ एक"}, Row{53, 1, u"ก"},
                    Row{53, 41, u"ฮ"}, Row{53, 42, u"กก"}, Row{54, 25, u"๒๕"}, Row{55, 11, u"สิบเอ็ด"},
                    Row{55, 21, u"ยี่สิบเอ็ด"}, Row{55, 100, u"หนึ่งร้อย"}, Row{56, 10, u"mười"},
                    Row{56, 15, u"mười lăm"}, Row{56, 21, u"hai mươi mốt"}, Row{56, 105, u"một trăm lẻ năm"},
                    Row{56, 1005, u"một nghìn không trăm lẻ năm"}));

TEST(NumberText, OfOrdinalsFollowsTheLanguage) {
  EXPECT_EQ(text(1, 5, 0x0409), u"1st");
  EXPECT_EQ(text(1, 5, 0x0407), u"1.");
  EXPECT_EQ(text(1, 5, 0x040C), u"1er");
  EXPECT_EQ(text(2, 5, 0x080C), u"2e");
  EXPECT_EQ(text(3, 5, 0x0C0A), u"3º");
  EXPECT_EQ(text(3, 5, 0x0411), u"3");
}

TEST(NumberText, OfWordsIsEnglishOrDigits) {
  EXPECT_EQ(text(2, 6, 0x0809), u"Two");
  EXPECT_EQ(text(2, 6, 0x0400), u"Two");
  EXPECT_EQ(text(2, 6, 0x0407), u"2");
  EXPECT_EQ(text(2, 7, 0x0407), u"2.");
}

TEST(NumberText, IsShortForAllNumbers) {
  const int32_t numbers[] = {INT32_MIN, -1,    0,      1,      9,      10,      19,       20,       21,
                             99,        100,   101,    777,    999,    1000,    9999,     10000,    32767,
                             32768,     99999, 100000, 100001, 999999, 1000000, 10000000, INT32_MAX};
  for (unsigned nfc = 0; nfc <= 255; ++nfc) {
    for (const int32_t number : numbers) {
      EXPECT_LE(text(number, static_cast<uint8_t>(nfc)).size(), 100u) << nfc << " " << number;
    }
  }
}

TEST(NumberText, OfEachCountDiffersFromTheNext) {
  for (unsigned nfc = 0; nfc < 60; ++nfc) {
    if (nfc == kBulletNumbers) continue;
    for (int32_t number = 1; number < 3000; ++number) {
      EXPECT_NE(text(number, static_cast<uint8_t>(nfc)), text(number + 1, static_cast<uint8_t>(nfc)))
          << nfc << " " << number;
    }
  }
}

TEST(NumberText, InWordsIsNeverTheSameTwice) {
  for (const uint8_t nfc : {6, 7, 11, 16, 34, 35, 38, 39, 42, 52, 55, 56}) {
    std::set<std::u16string> seen;
    for (int32_t number = 1; number <= 12000; ++number) seen.insert(text(number, nfc));
    EXPECT_EQ(seen.size(), 12000u) << int{nfc};
  }
}

}  // namespace
}  // namespace pagerex
