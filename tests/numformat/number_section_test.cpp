#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "formats.h"
#include "numformat/section_factory.h"

namespace {

struct NumberRow {
  const wchar_t* format;
  double value;
  const wchar_t* text;
};

void expectShown(std::initializer_list<NumberRow> rows) {
  for (const NumberRow& row : rows) {
    EXPECT_EQ(shown(row.format, row.value), row.text)
        << testing::PrintToString(std::wstring(row.format)) << " of " << row.value;
  }
}

std::wstring fitted(double value, int characters) {
  const NF_FORMAT_PARAM param = width(characters);
  return shown(L"General", value, param);
}

/// "0" and the per mille sign, which no keyword leads to.
std::unique_ptr<KNFBase> perMille() {
  static constexpr KPlaceholderPiece kSign = {&KPlaceholderPiece_NULL, &KPlaceholder_Thousandth, L""};
  SectionTokens tokens(AREA_ENGLISH);
  tokens.kind = NF_SORT_PER_MILLE;
  tokens.tokens = {{L"0", &s_PLResouce[65]}, {L"", &kSign}};
  return CreateNF(std::move(tokens));
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kDenormal = 5e-324;

}  // namespace

TEST(Numbers, ShowDecimalsRounded) {
  expectShown({{L"0.00", 1.005, L"1.01"},
               {L"0.00", -1.005, L"-1.01"},
               {L"0.00", 9.995, L"10.00"},
               {L"0.0", 0.05, L"0.1"},
               {L"0.0", 99.96, L"100.0"},
               {L"0", 0.5, L"1"},
               {L"0", 0.4, L"0"},
               {L"0", 1.5, L"2"},
               {L"0", 2.5, L"3"},
               {L"0.000", 0.0004, L"0.000"},
               {L"0.000", 0.0006, L"0.001"},
               {L"0.0000", 0.00123, L"0.0012"},
               {L"0.00000000000000000000", 0.1, L"0.10000000000000000000"},
               {L"0", 123456789012345678.0, L"123456789012346000"}});
}

TEST(Numbers, HaveASignOnlyIfTheyDoNotRoundToZero) {
  expectShown({{L"0.0", 0.04, L"0.0"},
               {L"0.0", -0.04, L"0.0"},
               {L"0.0", -0.05, L"-0.1"},
               {L"0", -0.4, L"0"},
               {L"0", -0.5, L"-1"},
               {L"0.00", -0.005, L"-0.01"},
               {L"0.00", -0.0, L"0.00"},
               {L"0%", -0.004, L"0%"},
               {L"0%", -0.005, L"-1%"},
               {L"0,", -499, L"0"}});
}

TEST(Numbers, ShowTheDigitsThatTheFormatAsksFor) {
  expectShown({{L"00", 12345, L"12345"},
               {L"00000", 12, L"00012"},
               {L"#", 0, L""},
               {L"#", 12345, L"12345"},
               {L"###", 1, L"1"},
               {L"???", 1, L"  1"},
               {L"?", 0, L" "},
               {L"0.??", 1.5, L"1.5 "},
               {L"0.##", 1.5, L"1.5"},
               {L"0.##", 1, L"1."},
               {L"#.##", 0.5, L".5"},
               {L"?0#", 5, L" 05"},
               {L"#0?", 5, L"05"},
               {L"0x0", 1234, L"1234"},
               {L"x0", 1234, L"34"},
               {L"x", 1234, L"4"},
               {L"0.x", 1.25, L"1.3"},
               {L".00", 12.345, L".35"},
               {L"0.0.0", 1.25, L"1.2.5"},
               {L"", 1.25, L"1.25"}});
}

TEST(Numbers, SeparateThousands) {
  expectShown({{L"#,##0", 1234567, L"1,234,567"},
               {L"#,##0", 123, L"123"},
               {L"#,##0", 0, L"0"},
               {L"#,##0.00", -1234.5, L"-1,234.50"},
               {L"#,###", 0, L""},
               {L"0,000", 5, L"0,005"},
               {L"?,???", 5, L"   5"},
               {L"0,000,000", 1234, L"0,001,234"},
               {L"#,#", 1e15, L"1,000,000,000,000,000"}});
}

TEST(Numbers, TakeSeparatorsOfTheLocale) {
  const NF_FORMAT_PARAM vietnamese = in(kVietnamese);
  EXPECT_EQ(Format(L"#,##0").text(1234567), L"1,234,567");
  EXPECT_EQ(Format(L"#,##0").text(1234567, &vietnamese), L"1.234.567");
  EXPECT_EQ(Format(L"#,##0.00").text(1234.5, &vietnamese), L"1.234,50");
  EXPECT_EQ(shown(L"[$-42A]#,##0.00", 1234567), L"1.234.567,00");
  EXPECT_EQ(shown(L"[$-409]#,##0.00", 1234567, in(kJapanese)), L"1,234,567.00");
}

TEST(Numbers, ScaleByCommasBehindThem) {
  expectShown({{L"#,##0,,", 1234567890, L"1,235"}, {L"0.0,,", 1234567, L"1.2"}, {L"0,,,,", 1e12, L"1"}});
}

TEST(Numbers, KeepTheTextBetweenTheirDigits) {
  expectShown({{L"000-0000", 1234567, L"123-4567"},
               {L"0-0", 1234, L"123-4"},
               {L"\"no \"0", 5, L"no 5"},
               {L"0\\k", 5, L"5k"},
               {L"0!!", 5, L"5!"},
               {L"0é", 5, L"5é"},
               {L"_(0_)", 5, L" 5 "},
               {L"*-0", 5, L"5"},
               {L"+0", 5, L"+5"},
               {L"\\-0", 5, L"-5"},
               {L"[$€-407]0", 5, L"€5"},
               {L"[$kr.]0", 5, L"kr.5"},
               {L"[$a-b-c]0", 5, L"a5"},
               {L"[$]0", 5, L"5"},
               {L"[$-405]0", 5, L"5"},
               {L"\"\u00A5\"0", 5,
                L"\u00A5"
                L"5"},
               {L"(0)", -5, L"-(5)"},
               {L"\"text\"", 5, L"text"}});
}

TEST(Numbers, AreShownInPercent) {
  expectShown({{L"0%", 0.125, L"13%"}, {L"0.0%", 0.125, L"12.5%"}, {L"%0", 0.5, L"%50"}, {L"0%", 0, L"0%"}});
}

TEST(Numbers, AreShownInPerMille) {
  std::optional<std::wstring> text;
  NFSTYLE style;
  const std::unique_ptr<KNFBase> section = perMille();
  EXPECT_EQ(section->FormatNum(number(0.125), kDefaultParam, text, style), Status::kOk);
  EXPECT_EQ(text, L"125\xA1EB");
  double value = 0.1256;
  EXPECT_EQ(section->FormatPrecision(value), Status::kOk);
  EXPECT_EQ(value, 0.126);
}

TEST(Numbers, OfNothingAreZeroOnlyWhereThatIsAsked) {
  std::optional<std::wstring> text;
  NFSTYLE style;
  const std::unique_ptr<KNFBase> section = perMille();
  EXPECT_EQ(section->FormatNum(tagged(NF_VT_EMPTY), kDefaultParam, text, style), Status::kOk);
  EXPECT_EQ(text, std::nullopt);
  EXPECT_EQ(section->FormatNum(tagged(NF_VT_EMPTY), {-1, NF_EMPTY_AS_ZERO, 0}, text, style), Status::kOk);
  EXPECT_EQ(text, L"0\xA1EB");
}

TEST(Numbers, HaveDigitsOfTheNumberingSystem) {
  expectShown({{L"[DBNum1]0.0", 1203.5, L"一二○三.五"},
               {L"[DBNum2]0", 120, L"壹贰零"},
               {L"[DBNum3]0", 120, L"１２０"},
               {L"[DBNum4]0", 120, L"120"},
               {L"[DBNum1]0\"7\"", 1, L"一七"},
               {L"[DBNum1][$-411]0", 120, L"一二〇"},
               {L"[DBNum2][$-411]0", 123, L"壱弐参"},
               {L"[DBNum3][$-411]0", 120, L"１２０"}});
}

TEST(Numbers, OfAnySizeAreShown) {
  EXPECT_EQ(shown(L"0", kLargest).size(), 309u);
  EXPECT_EQ(shown(L"0", -kLargest).size(), 310u);
  EXPECT_EQ(shown(L"0%", kLargest), L"#NUM!");
  EXPECT_EQ(shown(L"0.0", kDenormal), L"0.0");
  EXPECT_EQ(shown(L"#,##0", kLargest).size(), 411u);
  EXPECT_EQ(shown(L"0E+0", kLargest), L"2E+308");
  EXPECT_EQ(shown(L"0,,", kDenormal), L"0");
}

TEST(Exponents, ShowTheMantissaInItsDigits) {
  expectShown({{L"0.00E+00", 12345, L"1.23E+04"},
               {L"0E+0", 12345, L"1E+4"},
               {L"##0.0E+0", 12345, L"123.5E+2"},
               {L"00E+0", 5, L"50E-1"},
               {L".00E+0", 0.5, L".50E+0"},
               {L"0.#E+0", 1, L"1.E+0"},
               {L"#,##0E+0", 1234567, L"1,235E+3"},
               {L"0.00E+00", 9.999, L"1.00E+01"},
               {L"0.00E+00", 0, L"0.00E+00"}});
}

TEST(Exponents, HaveTheLetterAndTheSignOfTheFormat) {
  expectShown({{L"0E+0", 100, L"1E+2"},
               {L"0E-0", 100, L"1E2"},
               {L"0E0", 100, L"1E2"},
               {L"0e+0", 100, L"1e+2"},
               {L"0e-0", 100, L"1e2"},
               {L"0e0", 100, L"1e2"},
               {L"0E+0", 0.01, L"1E-2"},
               {L"0E0", 0.01, L"1E-2"},
               {L"0e-0", 0.01, L"1e-2"},
               {L"0E+0", -100, L"-1E+2"},
               {L"0E+0", -0.001, L"-1E-3"}});
}

TEST(Exponents, ShowTheirOwnDigits) {
  expectShown({{L"0E+000", 100, L"1E+002"},
               {L"0E+#", 1, L"1E+0"},
               {L"0E+0", 1e100, L"1E+100"},
               {L"0E+00", 1e100, L"1E+100"},
               {L"0E+??", 100, L"1E+ 2"},
               {L"0E+0\"x\"", 100, L"1E+2x"},
               {L"#,##0E+0000", 1234, L"1,234E+0000"},
               {L"0E+0", kDenormal, L"5E-324"}});
}

TEST(Fractions, AreTheNearestWithSoManyDigits) {
  expectShown({{L"?/?", 0.5, L"1/2"},
               {L"?/?", 0.3, L"2/7"},
               {L"?\?/??", 0.3, L" 3/10"},
               {L"?/?", 3.14159, L"22/7"},
               {L"??\?/???", 3.14159, L"355/113"},
               {L"#/######", 3.14159265358979, L"3126535/995207"},
               {L"#/#######", 3.14159265358979, L"3126535/995207"},
               {L"# ?/?", 0.25, L"  1/4"},
               {L"?/?", 0.95, L"1/1"},
               {L"?/?", 0, L"0/1"}});
}

TEST(Fractions, HaveAWholePartWhereTheFormatHasOne) {
  expectShown({{L"# ?/?", 1.5, L"1 1/2"},
               {L"# ?\?/??", 2.75, L"2  3/ 4"},
               {L"# ?/?", -1.5, L"-1 1/2"},
               {L"#,##0 ?/?", 12345.5, L"12345 1/2"},
               {L"# ?/?", 1.99, L"2    "}});
}

TEST(Fractions, ShowBlanksForAPartThatIsZero) {
  expectShown({{L"# ?/?", 2, L"2    "},
               {L"# ?\?/??", 2, L"2      "},
               {L"0 ?/8", 2, L"2    "},
               {L"0 ?/16", 2, L"2     "},
               {L"# ?/?", 0.5, L"  1/2"},
               {L"# ?/?", -0.5, L"-  1/2"}});
}

TEST(Fractions, HaveTheDenominatorThatTheFormatGives) {
  expectShown({{L"?/8", 0.3, L"2/8"},
               {L"# ?/8", 1.3, L"1 2/8"},
               {L"# ?\?/100", 1.25, L"1 25/100"},
               {L"?/8", 2, L"16/8"},
               {L"# ?/8", 1.95, L"2    "},
               {L"# ?/4", 0.375, L"  2/4"},
               {L"?/07", 1, L"7/07"}});
}

TEST(Fractions, OfAGivenDenominatorRoundHalvesUp) {
  expectShown({{L"?/8", 0.0625, L"1/8"},
               {L"?/8", 0.0624, L"0/8"},
               {L"# ?/8", 1.0625, L"1 1/8"},
               {L"# ?/8", 0.9375, L"1    "},
               {L"# ?/8", 0.9374, L"  7/8"}});
}

TEST(Fractions, HaveNoDenominatorLongerThanTheFormat) {
  expectShown({{L"#/#", 0.1, L"1/9"},
               {L"#/##", 0.01, L"1/99"},
               {L"#/##", 0.0101, L"1/99"},
               {L"#/###", 0.01, L"1/100"},
               {L"#/#", 0.04, L"0/1"},
               {L"#/#", 0.06, L"1/9"}});
}

TEST(Fractions, HaveASignUnlessTheyVanish) {
  expectShown({{L"# ?/?", -0.001, L"     "},
               {L"?/?", -0.001, L"0/1"},
               {L"?/?", -0.5, L"-1/2"},
               {L"# ?/?", -3, L"-3    "}});
}

TEST(Fractions, TakeWhatLiesNextToAnIntegerAsThatInteger) {
  EXPECT_EQ(shown(L"# ?/?", std::nextafter(3.0, 0)), L"3    ");
  EXPECT_EQ(shown(L"# ?????\?/######", 2.9999), L"2   9999/10000");
}

TEST(Fractions, OfAnySizeAreShown) {
  EXPECT_EQ(shown(L"# ?/?", 1e300).substr(0, 3), L"100");
  EXPECT_EQ(shown(L"?/?", kDenormal), L"0/1");
  EXPECT_EQ(shown(L"?/9", kLargest), L"#NUM!");
  EXPECT_EQ(shown(L"?/?", 1e20), L"100000000000000000000/1");
  EXPECT_EQ(shown(L"?/" + std::wstring(200, L'9'), 0.5).size(), 401u);
}

TEST(Fractions, AreAsNearAsAnyOtherWithSoManyDigits) {
  for (double value = 0.0007; value < 1; value += 0.00473) {
    const std::wstring text = shown(L"#/##", value);
    const size_t slash = text.find(L'/');
    const double shownValue = std::stod(text.substr(0, slash)) / std::stod(text.substr(slash + 1));
    double nearest = value;  // of 0/1
    for (int d = 1; d < 100; ++d) nearest = std::min(nearest, std::fabs(std::round(value * d) / d - value));
    EXPECT_NEAR(std::fabs(shownValue - value), nearest, 1e-15) << value;
  }
}

TEST(GeneralNumbers, AreWrittenPlainWithElevenDigits) {
  expectShown({{L"General", 0, L"0"},
               {L"General", 1.5, L"1.5"},
               {L"General", -1.5, L"-1.5"},
               {L"General", 0.1, L"0.1"},
               {L"General", 1e20, L"1E+20"},
               {L"General", 1.0 / 3, L"0.33333333333"}});
}

TEST(GeneralNumbers, StandBesideTexts) {
  expectShown({{L"\"no \"General\" k\"", 5, L"no 5 k"},
               {L"[Red]\"no \"", 5, L"no 5"},
               {L"G/標準", 5, L"5"},
               {L"GeneralGeneral", 5, L"55"}});
}

TEST(GeneralNumbers, AreSpelledInTheirNumberingSystem) {
  expectShown({{L"[DBNum1]General", 105, L"一百○五"},
               {L"[DBNum1]General", -12.5, L"负十二点五"},
               {L"[DBNum2]General", 12, L"壹拾贰"},
               {L"[DBNum20]General", 12, L"拾贰"},
               {L"[DBNum1]General", 0, L"○"},
               {L"[DBNum1]General", 0.05, L"○点○五"},
               {L"[DBNum3]General", 105, L"105"},
               {L"[DBNum4]General", 105, L"105"}});
}

TEST(GeneralNumbers, AreSpelledInJapaneseByTheAreaOrTheLocale) {
  expectShown({{L"[DBNum1][$-411]General", 105, L"百五"},
               {L"[DBNum2][$-411]General", 111, L"壱百壱拾壱"},
               {L"[DBNum3][$-411]General", 111, L"百十１"},
               {L"[DBNum4][$-411]General", 111, L"百拾壱"},
               {L"[DBNum1][$-411]General", -1.5, L"-一.五"}});
  EXPECT_EQ(shown(L"[DBNum1]General", 105, in(kJapanese)), L"百五");
  EXPECT_EQ(shown(L"[DBNum1][$-804]General", 105, in(kJapanese)), L"百五");
}

TEST(GeneralNumbers, AreSpelledAsMoney) {
  expectShown({{L"[DBNum2][$RMB]General", 1.5, L"壹元伍角整"},
               {L"[DBNum2][$RMB]General", 1.05, L"壹元零伍分"},
               {L"[DBNum2][$RMB]General", 0, L"零元整"},
               {L"[DBNum2][$RMB]General", -1.5, L"壹元伍角整"},
               {L"[DBNum1][$RMB]General", 1.5, L"一点五"},
               {L"[DBNum3][$RMB]General", 1.5, L"1.5"},
               {L"[DBNum2][$RMB][$-411]General", 12, L"壱拾弐"}});
}

TEST(GeneralNumbers, OfMoneyKeepTheEnglishPoint) {
  EXPECT_EQ(shown(L"[$RMB]General", 1.5, in(kVietnamese)), L"1.5");
  EXPECT_EQ(shown(L"General", 1.5, in(kVietnamese)), L"1,5");
}

TEST(GeneralNumbers, SpellSerialNumbersWhole) {
  EXPECT_EQ(shown(L"[DBNum4]General", serial(14)), L"XIV");
  EXPECT_EQ(shown(L"[DBNum1]\"no \"General", serial(14)), L"no 十四");
}

TEST(GeneralNumbers, AreFittedIntoAWidth) {
  const struct {
    double value;
    int width;
    const wchar_t* text;
  } rows[] = {{0, 1, L"0"},
              {1.0 / 3, 11, L"0.333333333"},
              {1.0 / 3, 5, L"0.333"},
              {1.0 / 3, 1, L"0"},
              {-1.0 / 3, 5, L"-0.33"},
              {123456, 6, L"123456"},
              {123456, 5, L"1E+05"},
              {-123456, 6, L"-1E+05"},
              {123456, 4, L"####"},
              {1e20, 30, L"1.00000E+20"},
              {0.00001, 20, L"0.00001"},
              {0.0000123456, 20, L"1.23456E-05"},
              {1.5, 1, L"2"},
              {1e-7, 5, L"1E-07"},
              {1e-7, 4, L"0"},
              {-1e-7, 2, L"##"},
              {1e-200, 11, L"1.0000E-200"}};
  for (const auto& row : rows)
    EXPECT_EQ(fitted(row.value, row.width), row.text) << row.value << " in " << row.width;
}

TEST(GeneralNumbers, AreFittedIntoAWidthOnlyWithNothingBesideThem) {
  const NF_FORMAT_PARAM narrow = width(3);
  EXPECT_EQ(shown(L"General", 1.23456, narrow), L"1.2");
  EXPECT_EQ(shown(L"[Red]General", 1.23456, narrow), L"1.2");
  EXPECT_EQ(shown(L"General\"k\"", 1.23456, narrow), L"1.23456k");
  EXPECT_EQ(shown(L"[DBNum3]General", 1.23456, narrow), L"1.23456");
  EXPECT_EQ(shown(L"0.0000", 1.23456, narrow), L"1.2346");
}

TEST(GeneralNumbers, OfAnySizeFitIntoAnyWidth) {
  for (double value : {kLargest, -kLargest, kDenormal, -kDenormal, 1e-300, 99999999999.0, -0.00001, 1e11}) {
    for (int characters : {1, 2, 5, 6, 7, 11, 12, 1000, std::numeric_limits<int>::max()}) {
      EXPECT_LE(fitted(value, characters).size(), 12u) << value << " in " << characters;
    }
  }
  EXPECT_EQ(fitted(kInfinity, 3), L"#NUM!");
}

TEST(TextSections, WriteTheTextBetweenTheirLiterals) {
  EXPECT_EQ(shown(L"\"<\"@\">\"", string(L"text")), L"<text>");
  EXPECT_EQ(shown(L"@", string(L"")), L"");
  EXPECT_EQ(shown(L"*-@", string(L"text")), L"text");
}

TEST(TextSections, WriteNumbersAsGeneralDoes) {
  EXPECT_EQ(shown(L"<@>", 1.5), L"<1.5>");
  EXPECT_EQ(shown(L"@", serial(7)), L"7");
  EXPECT_EQ(shown(L"@", -1e20), L"-1E+20");
}

TEST(TextSections, TellTheirFillCharacter) {
  EXPECT_EQ(Format(L"*-@").format(string(L"text")).style.fillChar, static_cast<uint32_t>(L'-'));
}

TEST(Texts, AreCopiedBySectionsForNumbers) {
  for (const wchar_t* format : {L"0.00", L"0%", L"0E+0", L"?/?", L"General", L"yyyy", L"[Red]0", L""}) {
    EXPECT_EQ(shown(format, string(L"text")), L"text") << format;
  }
}
