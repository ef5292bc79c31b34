#include "numformat/number_spelling.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>

namespace {

const KNFCodePage& pages = KNFCodePageInstance;

std::wstring chinese(std::wstring text, int point, NF_CODEPAGE page, bool keepSign = false,
                     bool dropOne = false) {
  EXPECT_EQ(pages._TransTongue_chinese(text, point, page, keepSign, dropOne), Status::kOk);
  return text;
}

std::wstring japanese(std::wstring text, int point, int table, bool keepOne = false, bool keepSign = true) {
  EXPECT_EQ(pages._TransTongue_japanese(text, point, table, keepOne, keepSign), Status::kOk);
  return text;
}

std::wstring money(std::wstring text, NF_CODEPAGE page = DBNum2) {
  EXPECT_EQ(pages._TransCurrency(text, page), Status::kOk);
  return text;
}

/// Reads numerals back: digits times words, gathered into blocks of four and groups of twelve.
unsigned long long readNumerals(const std::wstring& text, const wchar_t* table) {
  const std::wstring characters(table, 16);
  const unsigned long long tenThousands[] = {10000ull, 100000000ull, 1000000000000ull};
  unsigned long long total = 0, group = 0, block = 0, digit = 0;
  for (wchar_t c : text) {
    const size_t index = characters.find(c);
    if (index < 10) {
      digit = index;
    } else if (index < 13) {
      unsigned long long value = 10;
      for (size_t i = 10; i < index; ++i) value *= 10;
      block += (digit ? digit : 1) * value;
      digit = 0;
    } else if (index < 15) {
      group += (block + digit) * tenThousands[index - 13];
      block = digit = 0;
    } else {
      total = (total + group + block + digit) * tenThousands[2];
      group = block = digit = 0;
    }
  }
  return total + group + block + digit;
}

}  // namespace

TEST(ChineseWalk, ReadsBackAsTheSameNumber) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 20000; ++i) {
    const unsigned long long n = random() >> (random() % 64);
    const std::wstring text = chinese(std::to_wstring(n), -1, DBNum1, false, i % 2 == 0);
    ASSERT_EQ(readNumerals(text, pages.GetPage(DBNum1)), n);
    ASSERT_EQ(text.find(L"\u25CB\u25CB"), std::wstring::npos);
  }
}

TEST(JapaneseWalk, ReadsBackAsTheSameNumber) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 20000; ++i) {
    const unsigned long long n = random() >> (random() % 64);
    const int table = i % 3;
    const std::wstring text = japanese(std::to_wstring(n), -1, table, i % 2 == 0);
    ASSERT_EQ(readNumerals(text, KNFCStingsInstance.GetJPCodePageInfo(table)), n);
  }
}

TEST(ChineseWalk, WritesTheTrillionWordBetweenGroupsOf12) {
  EXPECT_EQ(chinese(L"1000000000000", -1, DBNum1), L"一兆");
  EXPECT_EQ(chinese(L"20000000000003", -1, DBNum1), L"二十兆\u25CB三");
  EXPECT_EQ(chinese(L"1000000000000000000000000", -1, DBNum1), L"一兆兆");
}

TEST(ChineseWalk, WritesEachDigitBehindThePoint) {
  EXPECT_EQ(chinese(L"12.05", 2, DBNum1), L"一十二点\u25CB五");
  EXPECT_EQ(chinese(L"0.5", 1, DBNum2), L"零点伍");
  EXPECT_EQ(chinese(L".5", 0, DBNum1), L"\u25CB点五");
}

TEST(ChineseWalk, DropsOrKeepsTheSign) {
  EXPECT_EQ(chinese(L"-12.5", 3, DBNum1, false), L"一十二点五");
  EXPECT_EQ(chinese(L"-12.5", 3, DBNum1, true), L"负一十二点五");
  EXPECT_EQ(chinese(L"+12.5", 3, DBNum1, true), L"一十二点五");
  EXPECT_EQ(chinese(L"-0", -1, DBNum1, true), L"负\u25CB");
}

TEST(ChineseWalk, DropsTheLeadingOneBehindASignToo) {
  EXPECT_EQ(chinese(L"12", -1, DBNum1, false, true), L"十二");
  EXPECT_EQ(chinese(L"-12", -1, DBNum1, true, true), L"负十二");
  EXPECT_EQ(chinese(L"112", -1, DBNum1, false, true), L"一百一十二");
  EXPECT_EQ(chinese(L"1", -1, DBNum1, false, true), L"一");
}

TEST(ChineseWalk, ShortensTenByThePage) {
  std::wstring plain = L"12", formal = L"12", other = L"12";
  pages._TransTongue(plain, -1, DBNum1, false);
  pages._TransTongue(formal, -1, DBNum2, false);
  pages._TransTongue(other, -1, DBNum20, false);
  EXPECT_EQ(plain + L" " + formal + L" " + other, L"十二 壹拾贰 拾贰");
}

TEST(ChineseWalk, RefusesPagesWithoutWords) {
  for (int page : {0, 3, 4, 8, 21, 23, -1}) {
    std::wstring text = L"12";
    EXPECT_EQ(pages._TransTongue(text, -1, static_cast<NF_CODEPAGE>(page), true), Status::kInvalidArgument);
    EXPECT_EQ(text, L"12");
  }
}

TEST(ChineseWalk, SurvivesAnyText) {
  EXPECT_EQ(chinese(L"", -1, DBNum1), L"\u25CB");
  EXPECT_EQ(chinese(L"-", -1, DBNum1, true, true), L"负\u25CB");
  EXPECT_EQ(chinese(L"-", 0, DBNum1, true), L"负\u25CB");
  EXPECT_EQ(chinese(L"5", INT_MAX, DBNum1), L"五");
  EXPECT_EQ(chinese(L"5", INT_MIN, DBNum1), L"五");
  EXPECT_EQ(chinese(L"x", -1, DBNum1), L"x");
}

TEST(JapaneseWalk, WritesSignAndPointInEveryTable) {
  EXPECT_EQ(japanese(L"-12.05", 3, 0), L"-十二.〇五");
  EXPECT_EQ(japanese(L"-12.05", 3, 1, true), L"-壱拾弐.〇伍");
  EXPECT_EQ(japanese(L"-12.05", 3, 2), L"-十２.０５");
  EXPECT_EQ(japanese(L"-12.05", 3, 0, false, false), L"十二.〇五");
}

TEST(JapaneseWalk, KeepsOnesByThePage) {
  std::wstring plain = L"-110", formal = L"-110";
  EXPECT_EQ(pages._TransTongue_japanese(plain, -1, 1), Status::kOk);
  EXPECT_EQ(pages._TransTongue_japanese(formal, -1, 2), Status::kOk);
  EXPECT_EQ(plain + L" " + formal, L"-百十 -壱百壱拾");
}

TEST(JapaneseWalk, RefusesUnknownTablesAndPages) {
  std::wstring text = L"12";
  for (int table : {-1, 3, INT_MAX}) {
    EXPECT_EQ(pages._TransTongue_japanese(text, -1, table, true, true), Status::kInvalidArgument);
  }
  for (int page : {0, 5, INT_MIN})
    EXPECT_EQ(pages._TransTongue_japanese(text, -1, page), Status::kInvalidArgument);
  EXPECT_EQ(text, L"12");
}

TEST(Currency, WritesYuanJiaoAndFen) {
  EXPECT_EQ(money(L"1.50"), L"壹元伍角整");
  EXPECT_EQ(money(L"1.05"), L"壹元零伍分");
  EXPECT_EQ(money(L"1.25"), L"壹元贰角伍分");
  EXPECT_EQ(money(L"100.00"), L"壹佰元整");
  EXPECT_EQ(money(L"10200.03"), L"壹万零贰佰元零叁分");
}

TEST(Currency, WritesZeroYuanOnlyForNothing) {
  EXPECT_EQ(money(L"0.00"), L"零元整");
  EXPECT_EQ(money(L"0.50"), L"伍角整");
  EXPECT_EQ(money(L"0.05"), L"伍分");
  EXPECT_EQ(money(L".00"), L"零元整");
}

TEST(Currency, WritesTheCharactersOfThePage) {
  EXPECT_EQ(money(L"12.05", DBNum1), L"一十二元\u25CB五分");
}

TEST(Currency, RefusesATextThatIsTooShort) {
  for (const wchar_t* given : {L"", L"1", L"50", L"-50"}) {
    std::wstring text = given;
    EXPECT_EQ(pages._TransCurrency(text, DBNum2), Status::kInvalidArgument);
    EXPECT_EQ(text, given);
  }
}

TEST(Currency, RefusesPagesWithoutWords) {
  std::wstring text = L"1.50";
  EXPECT_EQ(pages._TransCurrency(text, DBNum0), Status::kInvalidArgument);
  EXPECT_EQ(text, L"1.50");
}

TEST(CodePage, GivesNamesTablesAndCharacters) {
  for (int page = 0; page <= 22; ++page) {
    EXPECT_EQ(pages.GetName(static_cast<NF_CODEPAGE>(page)), L"DBNum" + std::to_wstring(page));
  }
  EXPECT_EQ(pages.GetPage(DBNum13), std::wstring(L"子丑寅卯辰巳午未申酉戌亥"));
  EXPECT_EQ(pages.GetChar(DBNum1, 10), L'十');
  EXPECT_EQ(pages.GetChar(DBNum2, 18), L'点');
}

TEST(CodePage, HasNoCharactersForEnglish) {
  for (NF_CODEPAGE page : {DBNum8, DBNum9, DBNum10}) EXPECT_EQ(pages.GetPage(page), std::wstring());
}

TEST(CodePage, IsEmptyOutOfRange) {
  for (int page : {-1, 23, INT_MAX}) {
    EXPECT_EQ(pages.GetName(static_cast<NF_CODEPAGE>(page)), std::wstring());
    EXPECT_EQ(pages.GetPage(static_cast<NF_CODEPAGE>(page)), std::wstring());
  }
  EXPECT_EQ(pages.GetChar(DBNum0, 10), 0);
  EXPECT_EQ(pages.GetChar(DBNum8, 0), 0);
}

TEST(CodePage, MapsDigitsByPageAndArea) {
  EXPECT_EQ(pages._GetCodePageNumbe(L'5', 1, AREA_ENGLISH), L'五');
  EXPECT_EQ(pages._GetCodePageNumbe(L'0', 1, AREA_CHINESE), L'\u25CB');
  EXPECT_EQ(pages._GetCodePageNumbe(L'0', 1, AREA_JAPANESE), L'〇');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 2, AREA_JAPANESE), L'弐');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 3, AREA_JAPANESE), L'２');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 4, AREA_JAPANESE), L'弐');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 4, AREA_ENGLISH), L'Ⅲ');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 20, AREA_JAPANESE), L'贰');
}

TEST(CodePage, ReturnsWhatHasNoCharacterAsItIs) {
  EXPECT_EQ(pages._GetCodePageNumbe(L'-', 1, AREA_ENGLISH), L'-');
  EXPECT_EQ(pages._GetCodePageNumbe(L'x', 1, AREA_JAPANESE), L'x');
  EXPECT_EQ(pages._GetCodePageNumbe(L'7', 8, AREA_ENGLISH), L'7');
  EXPECT_EQ(pages._GetCodePageNumbe(L'7', 300, AREA_ENGLISH), L'7');
  EXPECT_EQ(pages._GetCodePageNumbe2(L'7', L"abc"), L'7');
  EXPECT_EQ(pages._GetCodePageNumbe2(L'1', L"abc"), L'b');
  EXPECT_EQ(pages._GetCodePageNumbe2(L'1', nullptr), L'1');
}
