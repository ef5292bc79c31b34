#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats.h"

namespace {

/// The kinds of the sections of a format; empty if it does not compile.
std::vector<uint32_t> kinds(const std::wstring& text, Dialect dialect = Dialect::kOQ) {
  const Format format(text, dialect);
  NF_SECTS_INFO info = {};
  if (format.get()) _XNF_GetSectsInfo(format.get(), &info);
  std::vector<uint32_t> all;
  for (uint32_t i = 0; i < info.count; ++i) all.push_back(info.sect[i].kind);
  return all;
}

/// What 1, -1, 0 and a text show.
using FourTexts = std::vector<std::wstring>;
FourTexts bySign(const std::wstring& text) {
  const Format format(text);
  if (format.result() != NF_OK) return {};
  return {format.text(1), format.text(-1), format.text(0), format.text(string(L"text"))};
}

uint32_t flags(const std::wstring& text, Dialect dialect = Dialect::kOQ) {
  return Format(text, dialect).format(number(1)).style.flags;
}

uint32_t colour(const std::wstring& text) {
  return Format(text).format(number(1)).style.color;
}

constexpr wchar_t kNone[] = L"(none)";
constexpr double kNovember = 44880.5625;  // 15 November 2022, 13:30

}  // namespace

TEST(FormatSections, ServeAllValuesIfThereIsOne) {
  EXPECT_EQ(bySign(L"0.0"), (FourTexts{L"1.0", L"-1.0", L"0.0", L"text"}));
  EXPECT_EQ(bySign(L"<@>"), (FourTexts{L"<1>", L"<-1>", L"<0>", L"<text>"}));
  EXPECT_EQ(bySign(L"General"), (FourTexts{L"1", L"-1", L"0", L"text"}));
}

TEST(FormatSections, ServeNegativeNumbersByTheSecond) {
  EXPECT_EQ(bySign(L"0.0;(0)"), (FourTexts{L"1.0", L"(1)", L"0.0", L"text"}));
  EXPECT_EQ(bySign(L"0;General"), (FourTexts{L"1", L"-1", L"0", L"text"}));
}

TEST(FormatSections, ServeTextsByASecondThatIsForTexts) {
  EXPECT_EQ(bySign(L"0.0;<@>"), (FourTexts{L"1.0", L"-1.0", L"0.0", L"<text>"}));
  EXPECT_EQ(bySign(L"0%;@"), (FourTexts{L"100%", L"-100%", L"0%", L"text"}));
  EXPECT_EQ(bySign(L"General;<@>"), (FourTexts{L"1", L"-1", L"0", L"<text>"}));
}

TEST(FormatSections, ServeZeroByTheThird) {
  EXPECT_EQ(bySign(L"0.0;(0);\"nil\""), (FourTexts{L"1.0", L"(1)", L"nil", L"text"}));
}

TEST(FormatSections, ServeTextsByAThirdThatIsForTexts) {
  EXPECT_EQ(bySign(L"0.0;(0);<@>"), (FourTexts{L"1.0", L"(1)", L"0.0", L"<text>"}));
}

TEST(FormatSections, ServeTextsByTheFourth) {
  EXPECT_EQ(bySign(L"0.0;(0);\"nil\";<@>"), (FourTexts{L"1.0", L"(1)", L"nil", L"<text>"}));
  EXPECT_EQ(bySign(L"0;0;0;\"any\""), (FourTexts{L"1", L"1", L"0", L"any"}));
}

TEST(FormatSections, ShowNothingWhereTheyAreEmpty) {
  EXPECT_EQ(bySign(L"0.00;-0.00;;@"), (FourTexts{L"1.00", L"-1.00", kNone, L"text"}));
  EXPECT_EQ(bySign(L"0;;"), (FourTexts{L"1", kNone, kNone, L"text"}));
  EXPECT_EQ(bySign(L";;;"), (FourTexts{kNone, kNone, kNone, kNone}));
  EXPECT_EQ(bySign(L";(0)"), (FourTexts{kNone, L"(1)", kNone, L"text"}));
  EXPECT_EQ(bySign(L"0;0;0;"), (FourTexts{L"1", L"1", L"0", kNone}));
}

TEST(FormatSections, GetAMinusOnlyWhereTheFirstServesNegativeNumbersOrIsNoPlainNumber) {
  EXPECT_EQ(bySign(L"0;0")[1], L"1");
  EXPECT_EQ(bySign(L"0;0%")[1], L"100%");
  EXPECT_EQ(bySign(L"0%")[1], L"-100%");
  EXPECT_EQ(bySign(L"0E+0")[1], L"-1E+0");
  EXPECT_EQ(bySign(L"?/2")[1], L"-2/2");
}

TEST(FormatSections, AreCutOnlyAtSemicolonsThatNothingHides) {
  EXPECT_EQ(kinds(L"0\";\"").size(), 1u);
  EXPECT_EQ(kinds(L"0\\;").size(), 1u);
  EXPECT_EQ(kinds(L"0!;").size(), 1u);
  EXPECT_EQ(kinds(L"0_;").size(), 1u);
  EXPECT_EQ(kinds(L"0*;").size(), 1u);
  EXPECT_EQ(kinds(L"0[!;]").size(), 1u);
  EXPECT_EQ(kinds(L"0\\\\;0").size(), 2u);
  EXPECT_EQ(kinds(L"0';'", Dialect::kWord), std::vector<uint32_t>());
}

TEST(FormatSections, AreFourAtMost) {
  EXPECT_EQ(kinds(L"0;0;0;").size(), 4u);
  EXPECT_EQ(kinds(L"0;0;0;;").size(), 0u);
}

TEST(FormatSections, AreOfTheKindOfTheirTokens) {
  const std::pair<const wchar_t*, uint32_t> rows[] = {
      {L"0", NF_KIND_NUMBER},
      {L"#.?x", NF_KIND_NUMBER},
      {L".", NF_KIND_NUMBER},
      {L"\"text\"", NF_KIND_NUMBER},
      {L",", NF_KIND_NUMBER},
      {L"[abc]0", NF_KIND_NUMBER},
      {L"0%", NF_KIND_PERCENT},
      {L"%", NF_KIND_PERCENT},
      {L"%0", NF_KIND_PERCENT},
      {L"0E+00", NF_KIND_EXPONENT},
      {L"0e+00", NF_KIND_EXPONENT},
      {L"# ?/?", NF_KIND_FRACTION},
      {L"General", NF_KIND_PURE_GENERAL},
      {L"G/標準", NF_KIND_PURE_GENERAL},
      {L"G/通用格式", NF_KIND_PURE_GENERAL},
      {L"[Red]General", NF_KIND_PURE_GENERAL},
      {L"[Red]", NF_KIND_PURE_GENERAL},
      {L"[DBNum0]", NF_KIND_PURE_GENERAL},
      {L"[DBNum1]", NF_KIND_GENERAL},
      {L"[DBNum1]General", NF_KIND_GENERAL},
      {L"General\" k\"", NF_KIND_GENERAL},
      {L"[Red]\"text\"", NF_KIND_GENERAL},
      {L"[$-411]", NF_KIND_NUMBER},
      {L"@", NF_KIND_TEXT},
      {L"yyyy", NF_KIND_DATE},
      {L"e", NF_KIND_DATE},
      {L"[h]", NF_KIND_DATE},
      {L"AM/PM", NF_KIND_DATE},
      {L"General yyyy", NF_KIND_DATE},
      {L"yyyy General", NF_KIND_DATE},
      {L"0 yyyy", NF_KIND_DATE},
      {L"dd.mm.yy", NF_KIND_DATE},
      {L"b1", NF_KIND_NUMBER},
  };
  for (const auto& [text, kind] : rows) {
    EXPECT_EQ(kinds(text), std::vector<uint32_t>{kind}) << testing::PrintToString(text);
  }
}

TEST(FormatSections, AreMalformed) {
  constexpr const wchar_t* kMalformed[] = {
      // tokens that do not end
      L"\\", L"0\\", L"!", L"0_", L"*", L"\"text", L"0\"", L"[Red", L"[", L"[!;", L"0;[",
      // told twice, and differently
      L"[Red][Blue]0", L"[$-409][$-411]0", L"[$€]0[$¥]", L"[$€]0[$€]", L"[$-804]午前/午後",
      // too many sections, or texts where none can be
      L";;;;", L"0;0;0;0;0", L"@;0", L"@;@", L"@;;", L"0;@;0", L"0;0;@;0", L"0;@;@", L"0;0;@;@", L"0;0;0;0",
      L"0;0;0;General", L"0;0;0;yyyy", L"0;0;0;%",
      // tokens that do not go together
      L"0@", L"@0", L"@@", L"@General", L"General@", L"General0", L"0General", L"General%", L"@yyyy",
      L"yyyy@", L"0%%", L"%0%", L"0%E+0", L"0/0%", L"0%/0", L"0/0/0", L"0E0E0", L"0E+0%", L"0E+0/0", L"%yyyy",
      L"yyyy%", L"/yyyy", L"0/yyyy", L"yyyyE+0",
      // an exponent without digits, a fraction that lacks a side
      L"0E", L"0E+", L"E", L"E-", L"0e", L"/", L"0/", L"/0", L"\"a\"/8", L"0/\"8\""};
  for (const wchar_t* text : kMalformed) EXPECT_FALSE(compiles(text)) << testing::PrintToString(text);
}

TEST(FormatSections, AreMalformedInEveryDialect) {
  for (Dialect dialect : kDialects) {
    for (const wchar_t* text : {L"\\", L"[Red][Blue]0", L"0;0;0;0", L"0@", L"0%%", L"0/", L"0;0;0;0;0"}) {
      EXPECT_FALSE(compiles(text, dialect)) << testing::PrintToString(text);
    }
  }
}

TEST(FormatSections, AreMalformedByAQuoteThatDoesNotEndOnlyInTheirDialect) {
  EXPECT_TRUE(compiles(L"0'", Dialect::kOQ));
  EXPECT_TRUE(compiles(L"0'", Dialect::kExcel));
  EXPECT_FALSE(compiles(L"0'", Dialect::kWord));
  EXPECT_FALSE(compiles(L"0'", Dialect::kQel));
}

TEST(FormatSections, FailAsAWholeIfOneOfThemDoes) {
  EXPECT_FALSE(compiles(L"0;0;\"text"));
  EXPECT_FALSE(compiles(L"0;0@"));
  EXPECT_FALSE(compiles(L"0%%;0"));
}

TEST(FormatSections, MayBeToldTheSameTwice) {
  EXPECT_TRUE(compiles(L"[Red][Red]0"));
  EXPECT_TRUE(compiles(L"[$-411][$-411]0"));
  EXPECT_TRUE(compiles(L"[$-42A][$-101042A]0"));
  EXPECT_TRUE(compiles(L"[$-411]午前/午後"));
  EXPECT_TRUE(compiles(L"b1 b1"));
  EXPECT_TRUE(compiles(L"[Red]0;[Blue]0"));
}

TEST(FormatSections, HaveTheColourThatTheyName) {
  const std::pair<const wchar_t*, uint32_t> rows[] = {{L"[Black]0", 0xFF000000},   {L"[blue]0", 0xFF0000FF},
                                                      {L"[CYAN]0", 0xFF00FFFF},    {L"[Green]0", 0xFF008000},
                                                      {L"[Magenta]0", 0xFFFF00FF}, {L"0[Red]", 0xFFFF0000},
                                                      {L"[黄]0", 0xFFFFFF00},      {L"[白色]0", 0xFFFFFFFF},
                                                      {L"[Pink]0", 0xFFFFFE},      {L"0", 0xFFFFFE}};
  for (const auto& [text, word] : rows) EXPECT_EQ(colour(text), word) << testing::PrintToString(text);
}

TEST(FormatSections, TakeTheirNumberingSystemFromTheLastBracketThatNamesOne) {
  EXPECT_EQ(shown(L"[DBNum1][DBNum4]#", serial(5)), L"V");
  EXPECT_EQ(shown(L"[DBNum4][DBNum8]#", serial(5)), L"V");
}

TEST(FormatSections, ReadALoneEAfterADigitAsAnExponent) {
  EXPECT_EQ(shown(L"0e+00", 12345), L"1e+04");
  EXPECT_EQ(shown(L"0e0", 12345, Dialect::kWord), L"1e4");
  EXPECT_EQ(shown(L"0E+0", 12345, Dialect::kWord), L"1E+4");
}

TEST(FormatSections, ReadTwoEAsAYearEvenAfterADigit) {
  EXPECT_EQ(kinds(L"0ee", Dialect::kWord), std::vector<uint32_t>{NF_KIND_DATE});
  EXPECT_EQ(shown(L"0ee", kNovember, Dialect::kWord), L"2022");
}

TEST(FormatSections, DropDigitsBesideADate) {
  EXPECT_EQ(shown(L"00 yyyy ##", kNovember), L" 2022 ");
  EXPECT_EQ(shown(L"ss.00", kNovember), L"00.");
  EXPECT_EQ(shown(L"x?yyyy", kNovember), L"2022");
}

TEST(FormatSections, KeepPointsGroupsAndSlashesBesideADate) {
  EXPECT_EQ(shown(L"dd.mm,yyyy", kNovember), L"15.11,2022");
  EXPECT_EQ(shown(L"dd/mm/yyyy", kNovember), L"15/11/2022");
}

TEST(FormatSections, IgnoreNotes) {
  EXPECT_EQ(shown(L"[abc]0", 5), L"5");
  EXPECT_EQ(shown(L"0[]0", 5), L"05");
}

TEST(GroupSeparators, DivideByAThousandBehindTheLastDigit) {
  EXPECT_EQ(shown(L"0,", 1234567), L"1,235");
  EXPECT_EQ(shown(L"#,##0,,", 1234567890), L"1,235");
  EXPECT_EQ(shown(L"0.0,", 1234), L"1.2");
  EXPECT_EQ(shown(L"0,.", 1234), L"1.");
  EXPECT_EQ(shown(L"0.,", 1234), L"1.");
  EXPECT_EQ(shown(L"0,%", 1234), L"123%");
  EXPECT_EQ(flags(L"0,"), static_cast<uint32_t>(NF_STYLE_SCALE_COMMAS));
}

TEST(GroupSeparators, AreCharactersBehindAnythingElse) {
  EXPECT_EQ(shown(L"0 ,", 1234), L"1,234 ,");
  EXPECT_EQ(flags(L"0 ,"), 0u);
}

TEST(GroupSeparators, SeparateThousandsBeforeTheLastDigit) {
  EXPECT_EQ(shown(L"0,0", 1234567), L"1,234,567");
  EXPECT_EQ(shown(L",0", 1234567), L"1,234,567");
  EXPECT_EQ(shown(L"#.#,#", 1234.56), L"1,234.56");
  EXPECT_EQ(shown(L"#,##0%", 12345.6), L"1,234,560%");
}

TEST(GroupSeparators, AreDroppedInOtherKindsOfSections) {
  EXPECT_EQ(shown(L"General,", 1234), L"1234");
  EXPECT_EQ(shown(L"?,/,?", 0.5), L"1/2");
  EXPECT_EQ(shown(L"\"a\",", 1234), L"a");
}

TEST(GroupSeparators, AreCharactersBesideTextsAndDates) {
  EXPECT_EQ(shown(L"@,", string(L"text")), L"text,");
  EXPECT_EQ(shown(L"d,m", kNovember), L"15,11");
}

TEST(GroupSeparators, AndPointsAreThoseOfTheLocaleThatReadsTheFormat) {
  EXPECT_EQ(shown(L"#.##0,00", 1234567.891, in(kVietnamese)), L"1.234.567,89");
  EXPECT_EQ(shown(L"#,##0.00", 1234567.891, in(kJapanese)), L"1,234,567.89");
}

TEST(Minutes, AreMonthsBehindAnHour) {
  EXPECT_EQ(shown(L"HH:mm", kNovember), L"13:30");
  EXPECT_EQ(shown(L"h m", kNovember), L"1 30");
  EXPECT_EQ(shown(L"[h]:mm", 1.5), L"36:00");
  EXPECT_EQ(shown(L"HH\" o'clock \"m", kNovember), L"13 o'clock 30");
}

TEST(Minutes, AreMonthsBeforeASecond) {
  EXPECT_EQ(shown(L"mm:ss", kNovember), L"30:00");
  EXPECT_EQ(shown(L"m s", kNovember), L"30 0");
}

TEST(Minutes, AreMonthsElsewhere) {
  EXPECT_EQ(shown(L"yyyy/mm/dd hh:mm:ss", 45000.75), L"2023/03/15 06:00:00");
  EXPECT_EQ(shown(L"d m", kNovember), L"15 11");
  EXPECT_EQ(shown(L"HH d m", kNovember), L"13 15 11");
  EXPECT_EQ(shown(L"[m] m", 0.5), L"720 12");
  EXPECT_EQ(shown(L"HH:mmm", kNovember), L"13:Nov");
}

TEST(Minutes, AreTheSmallLettersOfTheWordProcessors) {
  for (Dialect dialect : {Dialect::kWord, Dialect::kQel}) {
    EXPECT_EQ(shown(L"mm m MM M", kNovember, dialect), L"30 30 11 11");
    EXPECT_EQ(shown(L"HH:MM", kNovember, dialect), L"13:11");
  }
}

TEST(DuplicateFields, AreDroppedNextToEachOther) {
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {
      {L"yyyyy", L"2022"},   {L"yyyyyy", L"2022"}, {L"mmmmmm", L"N"}, {L"ddddd", L"Tuesday"},
      {L"wwww", L"Tuesday"}, {L"hhh", L"01"},      {L"HHhh", L"13"},  {L"sss", L"00"},
      {L"ddd0dd", L"Tue"},   {L"mmm0m", L"Nov"},   {L"ee", L"2022"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(shown(text, kNovember), expected) << text;
}

TEST(DuplicateFields, AreKeptApart) {
  EXPECT_EQ(shown(L"yy yyyy", kNovember), L"22 2022");
  EXPECT_EQ(shown(L"mmmm m", kNovember), L"November 11");
  EXPECT_EQ(shown(L"dddd aaaa", kNovember), L"Tuesday Tuesday");
  EXPECT_EQ(shown(L"HH0m0mm", kNovember), L"133011");
  EXPECT_EQ(shown(L"dddd0aaaa", kNovember), L"TuesdayTuesday");
}

TEST(ChineseYears, AreWrittenByOneLetterOrTwoInARow) {
  EXPECT_EQ(shown(L"[$-804]ee", kNovember, Dialect::kWord), shown(L"[$-804]E", kNovember, Dialect::kWord));
  EXPECT_EQ(shown(L"[$-804]eee", kNovember, Dialect::kWord), L"二○二二");
  EXPECT_EQ(shown(L"[$-804]e0E", kNovember, Dialect::kWord), L"二○二二");
  EXPECT_EQ(shown(L"[$-409]EE", kNovember, Dialect::kWord), L"二○二二");
}

TEST(HalvesOfTheDay, MakeTwelveHours) {
  EXPECT_EQ(shown(L"HH:mm AM/PM", kNovember), L"01:30 PM");
  EXPECT_EQ(shown(L"AM/PM H", kNovember), L"PM 1");
  EXPECT_EQ(shown(L"hh:mm", kNovember, Dialect::kExcel), L"13:30");
  EXPECT_EQ(shown(L"hh:mm AM/PM", kNovember, Dialect::kExcel), L"01:30 PM");
  EXPECT_EQ(shown(L"hh:mm", kNovember), L"01:30");
}

TEST(HalvesOfTheDay, MakeASectionJapaneseByTheirJapaneseWords) {
  EXPECT_EQ(shown(L"午前/午後h aaaa", kNovember), L"午後1 火曜日");
}

TEST(DateFlags, TellTheFieldsThatThereAre) {
  const std::pair<const wchar_t*, uint32_t> rows[] = {
      {L"yyyy", NF_STYLE_DATE | NF_STYLE_YEAR},
      {L"ggg", NF_STYLE_DATE | NF_STYLE_YEAR},
      {L"mmm", NF_STYLE_DATE | NF_STYLE_MONTH},
      {L"d", NF_STYLE_DATE | NF_STYLE_DAY},
      {L"h", NF_STYLE_TIME | NF_STYLE_HOUR},
      {L"h:m", NF_STYLE_TIME | NF_STYLE_HOUR | NF_STYLE_MINUTE},
      {L"ss", NF_STYLE_TIME | NF_STYLE_SECOND},
      {L"[h]", NF_STYLE_TIME | NF_STYLE_HOUR},
      {L"d h", NF_STYLE_DATE | NF_STYLE_TIME | NF_STYLE_DAY | NF_STYLE_HOUR},
      {L"AM/PM", NF_STYLE_TIME},
      {L"d AM/PM", NF_STYLE_DATE | NF_STYLE_TIME | NF_STYLE_DAY}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(flags(text), expected) << text;
}

TEST(JapaneseFormats, TakeTheirAreaFromTheBracket) {
  EXPECT_EQ(shown(L"[$-411]mmm", kNovember), L"11");
  EXPECT_EQ(shown(L"[$-411]aaa", kNovember), L"火");
  EXPECT_EQ(shown(L"[$-409]aaa", kNovember, in(kJapanese)), L"Tue");
}

TEST(JapaneseFormats, TakeABackslashForACharacter) {
  EXPECT_EQ(shown(L"\\0", 5, in(kJapanese)), L"\\5");
  EXPECT_EQ(shown(L"\\00", 5), L"05");
  EXPECT_FALSE(compiles(L"0\\", Dialect::kOQ));
}
