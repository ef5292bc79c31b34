#include <gtest/gtest.h>

#include <string>

#include "formats.h"

namespace {

constexpr double kEvening = 44880.9375;  // 15 November 2022, 22:30

/// A format of OQ, written back in a dialect.
std::wstring back(const std::wstring& text, Dialect dialect = Dialect::kOQ) {
  const Format format(text);
  return format.result() == NF_OK ? writtenBack(format, dialect) : L"(failed)";
}

/// A format of a dialect, written back in the same.
std::wstring sameBack(const std::wstring& text, Dialect dialect) {
  return writtenBack(Format(text, dialect), dialect);
}

void expectUnchanged(std::initializer_list<const wchar_t*> formats) {
  for (const wchar_t* format : formats) EXPECT_EQ(back(format), format);
}

}  // namespace

TEST(DecompiledFormats, OfNumbersAreAsTheyWere) {
  expectUnchanged({L"0",     L"0.00",      L"#,##0",     L"#,##0.00", L"#,##0,,", L"#.?#", L"0%",
                   L"0.00%", L"000-0000",  L"x0",        L"0E+00",    L"0.0E-0",  L"0e0",  L"##0.0E+0",
                   L"# ?/?", L"?/8",       L"# ?\?/100", L"_(0_)",    L"*-0",     L"+0",   L"\\k0",
                   L"!k0",   L"[$€-407]0", L"(0)",       L"0 ,"});
}

TEST(DecompiledFormats, OfSectionsAreAsTheyWere) {
  expectUnchanged(
      {L"0.00;-0.00;;@", L";;;", L"0;0", L";0", L"0;;0", L"General;@", L"[Red]0;[Blue]-0", L"@", L"\"a\"@"});
}

TEST(DecompiledFormats, OfDatesAreAsTheyWere) {
  expectUnchanged({L"yyyy/mm/dd hh:mm:ss", L"[h]:mm", L"d/m", L"d-m", L"d\\/m", L"dd.mm.yyyy",
                   L"mmmmm mmmm mmm", L"dddd ddd", L"HH:mm", L"h:mm AM/PM", L"a/p h", L"上午/下午 h",
                   L"[$-411]ggg e", L"b1yyyy", L"yyyy年m月d日"});
}

TEST(DecompiledFormats, TakeTheCanonicalKeyword) {
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {{L"YYYY", L"yyyy"},
                                                            {L"yyy", L"yyyy"},
                                                            {L"y", L"yy"},
                                                            {L"www", L"aaaa"},
                                                            {L"w", L"aaa"},
                                                            {L"ww", L"ww"},
                                                            {L"GENERAL", L"General"},
                                                            {L"G/標準", L"G/標準"},
                                                            {L"HH AM/PM", L"hh AM/PM"},
                                                            {L"ampm", L"AM/PM"},
                                                            {L"[上午/下午]", L"上午/下午"},
                                                            {L"X0", L"x0"},
                                                            {L"x0x", L"x0#"},
                                                            {L"B1yyyy", L"B1yyyy"}};
  for (const auto& [text, canonical] : rows) EXPECT_EQ(back(text), canonical) << testing::PrintToString(text);
}

TEST(DecompiledFormats, BeginWithWhatTheirSectionNames) {
  EXPECT_EQ(back(L"0[dbnum1][red]0"), L"[Red][DBNum1]00");
  EXPECT_EQ(back(L"General[$RMB][DBNum2][$-804]"), L"[DBNum2][$RMB][$-804]General");
  EXPECT_EQ(back(L"[$-101042A]0"), L"[$-42A]0");
  EXPECT_EQ(back(L"[红色]0"), L"[Red]0");
  EXPECT_EQ(back(L"[DBNum0]0"), L"0");
  EXPECT_EQ(back(L"[Red]"), L"[Red]General");
}

TEST(DecompiledFormats, HaveStringsInDoubleQuotes) {
  EXPECT_EQ(back(L"0\"abc\""), L"0\"abc\"");
  EXPECT_EQ(back(L"0abc"), L"0\"ab\"c");
  EXPECT_EQ(back(L"0'"), L"0\"'\"");
  EXPECT_EQ(back(L"0\"\""), L"0\"\"");
  EXPECT_EQ(sameBack(L"0'a\"b\"'", Dialect::kWord), L"0\"a\"!\"\"b\"!\"");
  EXPECT_EQ(sameBack(L"0'ab'", Dialect::kWord), L"0\"ab\"");
}

TEST(DecompiledFormats, KeepTheirThousandsSeparators) {
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {{L"#,#", L"#,#"},
                                                            {L"#,####", L"##,###"},
                                                            {L"0,", L"0,"},
                                                            {L"0000000,", L"0,000,000,"},
                                                            {L",0", L",0"},
                                                            {L"0.0,0", L"0,.00"},
                                                            {L"#,##0E+0", L"#,##0E+0"},
                                                            {L"0,E+0", L"0,E+0"},
                                                            {L"0,0%", L"0,0%"},
                                                            {L",", L","}};
  for (const auto& [text, expected] : rows) {
    const Format first(text), second(back(text));
    EXPECT_EQ(first.text(1234567.5), second.text(1234567.5)) << text;
  }
  EXPECT_EQ(back(L"#,####"), L"##,###");
  EXPECT_EQ(back(L"0000000,0"), L"00,000,000");
}

TEST(DecompiledFormats, KeepTokensApartThatWouldBeReadAsOne) {
  EXPECT_EQ(back(L"h0m0m"), L"hm\"\"m");
  EXPECT_EQ(shown(back(L"h0m0m"), kEvening), shown(L"h0m0m", kEvening));
  EXPECT_EQ(sameBack(L"M0mm", Dialect::kWord), L"M\"\"mm");
}

TEST(DecompiledFormats, KeepAMonthThatStandsBeforeASecond) {
  EXPECT_EQ(shown(L"mm0mmm ss", kEvening), L"11 00");
  EXPECT_EQ(shown(back(L"mm0mmm ss"), kEvening), L"11 00");
}

TEST(DecompiledFormats, KeepTheYearsOfChineseSections) {
  for (const wchar_t* text : {L"[$-804]EE", L"[$-804]eee", L"[$-804]E", L"[$-804]e", L"[$-804].EE"}) {
    const std::wstring again = sameBack(text, Dialect::kWord);
    EXPECT_EQ(shown(again, kEvening, Dialect::kWord), shown(text, kEvening, Dialect::kWord)) << text;
  }
}

TEST(DecompiledFormats, UseTheKeywordsOfTheDialect) {
  EXPECT_EQ(back(L"yyyy-mm-dd HH:mm", Dialect::kWord), L"yyyy-MM-dd HH:mm");
  EXPECT_EQ(back(L"aaaa aaa", Dialect::kWord), L"www w");
  EXPECT_EQ(writtenBack(Format(L"MM mm aaa", Dialect::kWord), Dialect::kOQ), L"MM mm ddd");
  EXPECT_EQ(sameBack(L"hh:mm", Dialect::kExcel), L"HH:mm");
  EXPECT_EQ(sameBack(L"h AM/PM", Dialect::kExcel), L"h AM/PM");
}

TEST(DecompiledFormats, UseThePointAndGroupOfTheLocale) {
  const NF_FORMAT_PARAM vietnamese = in(kVietnamese);
  EXPECT_EQ(writtenBack(Format(L"#,##0.00"), Dialect::kOQ, &vietnamese), L"#.##0,00");
  EXPECT_EQ(writtenBack(Format(L"#.##0,00", Dialect::kOQ, vietnamese), Dialect::kOQ), L"#,##0.00");
}

TEST(DecompiledFormats, NameColoursInTheLocale) {
  const NF_FORMAT_PARAM chinese = in(kChinese);
  EXPECT_EQ(writtenBack(Format(L"[Red]0"), Dialect::kOQ, &chinese), L"[红色]0");
}

TEST(DecompiledFormats, KeepEveryColour) {
  expectUnchanged({L"[Black]0", L"[Blue]0", L"[Cyan]0", L"[Green]0", L"[Magenta]0", L"[Red]0", L"[White]0",
                   L"[Yellow]0"});
}

TEST(DecompiledFormats, HaveTheirBracketsInFrontOfEachSection) {
  EXPECT_EQ(back(L"0[Red];-0[DBNum2][Black]"), L"[Red]0;[Black][DBNum2]-0");
  EXPECT_EQ(back(L"[DBNum2]General[$-804];@[White]"), L"[DBNum2][$-804]General;[White]@");
}

TEST(DecompiledFormats, PutNoMonthBehindOneThatNoSecondFollows) {
  EXPECT_EQ(back(L"mm"), L"mm");
  EXPECT_EQ(back(L"mm yyyy ss"), L"mm yyyy ss");
}

TEST(DecompiledFormats, JoinNeighbouringStrings) {
  EXPECT_EQ(back(L"0\"a\"\"b\""), L"0\"ab\"");
  EXPECT_EQ(back(L"\"a\"0\"b\""), L"\"a\"0\"b\"");
}

TEST(DecompiledFormats, EscapeWithAnExclamationMarkInJapanese) {
  const NF_FORMAT_PARAM japanese = in(kJapanese);
  EXPECT_EQ(writtenBack(Format(L"\\k0"), Dialect::kOQ, &japanese), L"!k0");
}

TEST(DecompiledFormats, EmptyANoteWithAQuoteThatNothingHidesAnyMore) {
  // The yen sign in front hides the first quote from the search for sections.
  const NF_FORMAT_PARAM japanese = in(kJapanese);
  const Format format(L"\\\"a\"0[\"]", Dialect::kOQ, &japanese);
  const std::wstring written = writtenBack(format, Dialect::kOQ, &japanese);
  EXPECT_EQ(written, L"!\\\"a\"0[]");
  EXPECT_EQ(shown(written, 5, japanese), format.text(5, &japanese));
}

TEST(DecompiledFormats, OfGeneralAreGeneral) {
  EXPECT_EQ(back(L""), L"General");
  for (Dialect dialect : {Dialect::kOQ, Dialect::kExcel, Dialect::kWord})
    EXPECT_EQ(back(L"General", dialect), L"General");
}
