#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "formats.h"

namespace {

class NumberFormatApi : public testing::Test {
 protected:
  void SetUp() override { _XNFInit(); }
  void TearDown() override {
    _XNF_ClearNFTableCache();
    _XNFUnInit();
  }
};

constexpr double kLargestDouble = std::numeric_limits<double>::max();

/// A format that was compiled through the cache.
class Cached {
 public:
  explicit Cached(const wchar_t* text, const NF_FORMAT_PARAM* param = nullptr) {
    _XNFCompile(text, &format_, param);
  }
  Cached(const Cached&) = delete;
  Cached& operator=(const Cached&) = delete;
  ~Cached() { _XNFRelease(format_); }
  KNumericalFormat* get() const { return format_; }

 private:
  KNumericalFormat* format_ = nullptr;
};

std::optional<std::wstring> oneShot(const wchar_t* format, const tagVARIANT& value,
                                    const NF_FORMAT_PARAM* param = nullptr) {
  wchar_t* text = nullptr;
  _XNFFormat(&value, format, &text, nullptr, param);
  return take(text);
}

NFSTYLE styleOf(const wchar_t* format, const tagVARIANT& value) {
  NFSTYLE style = {};
  _XNFFormat(&value, format, nullptr, &style, nullptr);
  return style;
}

std::vector<uint32_t> kindsOf(const wchar_t* format) {
  const Cached compiled(format);
  NF_SECTS_INFO info = {};
  EXPECT_EQ(_XNF_GetSectsInfo(compiled.get(), &info), NF_OK);
  std::vector<uint32_t> kinds;
  for (uint32_t i = 0; i < info.count; ++i) kinds.push_back(info.sect[i].kind);
  return kinds;
}

double rounded(const wchar_t* format, double value) {
  const Cached compiled(format);
  _XNFFormatPrecision(compiled.get(), &value);
  return value;
}

bool isSingleText(const wchar_t* format) {
  const Cached compiled(format);
  bool single = false;
  _XNF_OQ_IsSingleStringSect(compiled.get(), &single);
  return single;
}

}  // namespace

TEST_F(NumberFormatApi, FormatsTheNumbersOfLists) {
  EXPECT_EQ(oneShot(L"[dbnum4]#", serial(14)), L"XIV");
  EXPECT_EQ(oneShot(L"[dbnum0]#00", serial(5)), L"05");
  EXPECT_EQ(oneShot(L"[dbnum0]- # -", serial(5)), L"- 5 -");
  EXPECT_EQ(oneShot(L"[DBNum1][$-411]General", number(105)), L"百五");
  EXPECT_EQ(oneShot(L"[DBNum4][$-411]General", number(12)), L"拾弐");
}

TEST_F(NumberFormatApi, WritesSerialNumbersInEveryNumberingSystemThatHasCharacters) {
  EXPECT_EQ(oneShot(L"[dbnum1]#", serial(1001)), L"一千○一");
  EXPECT_EQ(oneShot(L"[dbnum6]#", serial(28)), L"AB");
  EXPECT_EQ(oneShot(L"[dbnum11]#", serial(255)), L"FF");
  EXPECT_EQ(oneShot(L"[dbnum22]#", serial(1)), L"イ");
  EXPECT_EQ(oneShot(L"[dbnum4]#", serial(1001)), L"1001");
}

TEST_F(NumberFormatApi, ReadsANumberingSystemWithoutCharactersAsANote) {
  for (const wchar_t* format : {L"[dbnum8]#", L"[DBNum9]#", L"[DBNum10]#", L"[DBNum23]#"}) {
    EXPECT_EQ(oneShot(format, serial(21)), L"21") << format;
  }
}

TEST_F(NumberFormatApi, SpellsSerialNumbersInJapaneseWhereTheFormatOrTheParameterIsJapanese) {
  const NF_FORMAT_PARAM japanese = in(kJapanese);
  EXPECT_EQ(oneShot(L"[dbnum1][$-411]#", serial(105)), L"百五");
  EXPECT_EQ(oneShot(L"[dbnum1]0", serial(105), &japanese), L"百五");
  EXPECT_EQ(oneShot(L"[dbnum1][$-804]#", serial(105), &japanese), L"一百○五");
}

TEST_F(NumberFormatApi, IsUninitialisedByOneCallAfterTwoStarts) {
  _XNFInit();
  EXPECT_EQ(_XNFUnInit(), NF_OK);
  EXPECT_EQ(oneShot(L"0.00", number(1)), std::nullopt);
  _XNFInit();
  EXPECT_EQ(oneShot(L"0.00", number(1)), L"1.00");
}

TEST_F(NumberFormatApi, CompilesAFormatOnce) {
  const Cached first(L"0.0"), second(L"0.0"), other(L"0.00");
  EXPECT_EQ(first.get(), second.get());
  EXPECT_NE(first.get(), other.get());
}

TEST_F(NumberFormatApi, KeepsTheLanguageOfTheFirstCompile) {
  const NF_FORMAT_PARAM vietnamese = in(kVietnamese);
  EXPECT_EQ(oneShot(L"0,0", number(12.5), &vietnamese), L"12,5");
  EXPECT_EQ(oneShot(L"0,0", number(12.5)), L"12.5");
  _XNF_ClearNFTableCache();
  EXPECT_EQ(oneShot(L"0,0", number(12.5)), L"13");
}

TEST_F(NumberFormatApi, KeepsNoFormatOfTheOtherDialects) {
  for (Dialect dialect : {Dialect::kExcel, Dialect::kWord, Dialect::kQel}) {
    const Format one(L"0.0", dialect), two(L"0.0", dialect);
    EXPECT_NE(one.get(), two.get());
  }
}

TEST_F(NumberFormatApi, CompilesAnewAfterTheCacheWasCleared) {
  const Cached held(L"0.0");
  EXPECT_EQ(_XNF_ClearNFTableCache(), NF_OK);
  const Cached anew(L"0.0");
  EXPECT_NE(held.get(), anew.get());
  EXPECT_EQ(oneShot(L"0.0", number(1)), L"1.0");
}

TEST_F(NumberFormatApi, LetsHeldFormatsLiveWhenTheCacheIsCleared) {
  const Cached held(L"0.0");
  _XNF_ClearNFTableCache();
  wchar_t* text = nullptr;
  const tagVARIANT value = number(2);
  EXPECT_EQ(_XNFFormatEx(&value, held.get(), &text, nullptr, nullptr), NF_OK);
  EXPECT_EQ(take(text), L"2.0");
}

TEST_F(NumberFormatApi, CountsReferences) {
  KNumericalFormat* format = nullptr;
  ASSERT_EQ(_XNFCompileForExcel(L"0.0", &format, nullptr), NF_OK);
  EXPECT_EQ(_XNFAddRef(format), NF_OK);
  EXPECT_EQ(_XNFRelease(format), NF_OK);
  double value = 1.26;
  EXPECT_EQ(_XNFFormatPrecision(format, &value), NF_OK);
  EXPECT_EQ(_XNFRelease(format), NF_OK);
}

TEST_F(NumberFormatApi, SkipsANullFormatWhereItCountsReferences) {
  EXPECT_EQ(_XNFAddRef(nullptr), NF_OK);
  EXPECT_EQ(_XNFRelease(nullptr), NF_OK);
  EXPECT_EQ(_XNFFreeText(nullptr), NF_OK);
}

TEST_F(NumberFormatApi, CompilesANullFormatToNone) {
  Cached format(nullptr);
  EXPECT_EQ(format.get(), nullptr);
  KNumericalFormat* none = nullptr;
  EXPECT_EQ(_XNFCompile(nullptr, &none, nullptr), NF_OK);
  EXPECT_EQ(_XNFCompileForOQ(nullptr, &none, nullptr), NF_OK);
  EXPECT_EQ(none, nullptr);
}

TEST_F(NumberFormatApi, RefusesToFormatUnderANullFormat) {
  const tagVARIANT value = number(1);
  wchar_t* text = nullptr;
  EXPECT_EQ(_XNFFormat(&value, nullptr, &text, nullptr, nullptr), NF_BAD_ARGUMENT);
  EXPECT_EQ(_XNFFormatEx(&value, nullptr, &text, nullptr, nullptr), NF_BAD_ARGUMENT);
  EXPECT_EQ(text, nullptr);
}

TEST_F(NumberFormatApi, CompilesANullFormatOfTheOtherDialectsToGeneral) {
  for (auto compile : {_XNFCompileForExcel, _XNFCompileForWord, _XNFCompileForQel}) {
    KNumericalFormat* format = nullptr;
    EXPECT_EQ(compile(nullptr, &format, nullptr), NF_OK);
    NF_SECTS_INFO info = {};
    _XNF_GetSectsInfo(format, &info);
    EXPECT_EQ(info.sect[0].kind, NF_KIND_PURE_GENERAL);
    _XNFRelease(format);
  }
}

TEST_F(NumberFormatApi, RefusesToCompileIntoNothing) {
  for (auto compile :
       {_XNFCompile, _XNFCompileForOQ, _XNFCompileForExcel, _XNFCompileForWord, _XNFCompileForQel}) {
    EXPECT_EQ(compile(L"0", nullptr, nullptr), NF_BAD_ARGUMENT);
  }
}

TEST_F(NumberFormatApi, CompilesTheEmptyFormatToOneGeneralSection) {
  EXPECT_EQ(kindsOf(L""), std::vector<uint32_t>{NF_KIND_PURE_GENERAL});
  EXPECT_EQ(oneShot(L"", number(-1.5)), L"-1.5");
  EXPECT_EQ(oneShot(L"", string(L"text")), L"text");
}

TEST_F(NumberFormatApi, CompilesFormatsOf255CharactersAndNoLongerOnes) {
  EXPECT_EQ(oneShot(std::wstring(255, L'0').c_str(), number(7)), std::wstring(254, L'0') + L"7");
  const tagVARIANT value = number(7);
  wchar_t* text = nullptr;
  EXPECT_EQ(_XNFFormat(&value, std::wstring(256, L'0').c_str(), &text, nullptr, nullptr), NF_BAD_ARGUMENT);
  EXPECT_EQ(text, nullptr);
}

TEST_F(NumberFormatApi, GivesAMalformedFormatsFailureAndNoText) {
  const tagVARIANT value = number(1);
  wchar_t* text = nullptr;
  EXPECT_EQ(_XNFFormat(&value, L"\\", &text, nullptr, nullptr), NF_BAD_ARGUMENT);
  EXPECT_EQ(text, nullptr);
  EXPECT_EQ(Cached(L"\\").get(), nullptr);
}

TEST_F(NumberFormatApi, DoesNothingWhereNothingIsAsked) {
  const Cached format(L"0");
  const tagVARIANT value = number(1);
  EXPECT_EQ(_XNFFormatEx(&value, format.get(), nullptr, nullptr, nullptr), NF_OK);
  EXPECT_EQ(_XNFFormatEx(nullptr, format.get(), nullptr, nullptr, nullptr), NF_OK);
}

TEST_F(NumberFormatApi, RefusesANullValue) {
  const Cached format(L"0");
  wchar_t* text = nullptr;
  EXPECT_EQ(_XNFFormatEx(nullptr, format.get(), &text, nullptr, nullptr), NF_BAD_ARGUMENT);
}

TEST_F(NumberFormatApi, ReadsEveryKindOfNumber) {
  const auto shownOf = [](auto set) {
    tagVARIANT value = {};
    set(value);
    return oneShot(L"0.0", value);
  };
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_I2, v.iVal = -3; }), L"-3.0");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_I4, v.lVal = -70000; }), L"-70000.0");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_R4, v.fltVal = 0.5f; }), L"0.5");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_R8, v.dblVal = 0.25; }), L"0.3");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_DATE, v.date = 1.5; }), L"1.5");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_BOOL, v.boolVal = -1; }), L"-1.0");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_UI1, v.bVal = 255; }), L"255.0");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_UI2, v.uiVal = 65535; }), L"65535.0");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_INT, v.intVal = -1; }), L"-1.0");
  EXPECT_EQ(shownOf([](tagVARIANT& v) { v.vt = NF_VT_UINT, v.uintVal = 4294967295; }), L"4294967295.0");
}

TEST_F(NumberFormatApi, ShowsTheLargestSerialNumber) {
  EXPECT_EQ(oneShot(L"0", serial(4294967295)), L"4294967295");
  EXPECT_EQ(oneShot(L"#", serial(0)), L"0");
}

TEST_F(NumberFormatApi, ShowsTextsByValueAndByReference) {
  const wchar_t* words = L"words";
  tagVARIANT reference = tagged(NF_VT_BYREF);
  reference.pbstrVal = &words;
  EXPECT_EQ(oneShot(L"<@>", reference), L"<words>");
  EXPECT_EQ(oneShot(L"<@>", string(words)), L"<words>");
  EXPECT_EQ(oneShot(L"<@>", string(nullptr)), L"<>");
  EXPECT_EQ(oneShot(L"<@>", tagged(NF_VT_BYREF)), L"<>");
}

TEST_F(NumberFormatApi, SendsUnknownTagsToTheTextSectionWhichShowsNone) {
  for (uint16_t tag : {1, 6, 9, 10, 12, 14, 16, 20, 21, 24, 36, 8191, 16385}) {
    const tagVARIANT value = tagged(tag);
    wchar_t* text = nullptr;
    EXPECT_EQ(_XNFFormat(&value, L"0;0;0;@", &text, nullptr, nullptr), NF_FAILURE) << tag;
    EXPECT_EQ(_XNFFormat(&value, L"0", &text, nullptr, nullptr), NF_FAILURE) << tag;
    EXPECT_EQ(text, nullptr);
  }
}

TEST_F(NumberFormatApi, ShowsAnEmptyValueAsZeroOnlyWhereAskedAndInAZeroSection) {
  const NF_FORMAT_PARAM asZero = {-1, NF_EMPTY_AS_ZERO, 0};
  EXPECT_EQ(oneShot(L"0.0;-0.0;\"none\"", tagged(NF_VT_EMPTY), &asZero), L"none");
  EXPECT_EQ(oneShot(L"0.0;-0.0;0.00", tagged(NF_VT_EMPTY), &asZero), L"0.00");
  EXPECT_EQ(oneShot(L"0.0;-0.0;\"none\"", tagged(NF_VT_EMPTY)), std::nullopt);
  EXPECT_EQ(oneShot(L"0.0;-0.0", tagged(NF_VT_EMPTY), &asZero), std::nullopt);
  EXPECT_EQ(styleOf(L"0.0;-0.0;0.00", tagged(NF_VT_EMPTY)).kind, 0u);
}

TEST_F(NumberFormatApi, FormatsNothingIntoNoWidth) {
  const NF_FORMAT_PARAM none = width(0);
  EXPECT_EQ(oneShot(L"0", number(1), &none), std::nullopt);
  EXPECT_EQ(oneShot(L"General", number(1), &none), std::nullopt);
  EXPECT_EQ(oneShot(L"0", string(L"text"), &none), L"text");
}

TEST_F(NumberFormatApi, FindsTheLanguageOnlyWithItsFlag) {
  NF_FORMAT_PARAM vietnamese = in(kVietnamese);
  EXPECT_EQ(oneShot(L"General", number(1.5), &vietnamese), L"1,5");
  vietnamese.flags = 0;
  EXPECT_EQ(oneShot(L"General", number(1.5), &vietnamese), L"1.5");
}

TEST_F(NumberFormatApi, TellsColourFillAndFlagsInTheStyle) {
  const NFSTYLE style = styleOf(L"[Red]*-#,##0.0,", number(1));
  EXPECT_EQ(style.color, 0xFFFF0000);
  EXPECT_EQ(style.fillChar, static_cast<uint32_t>(L'-'));
  EXPECT_EQ(style.flags, static_cast<uint32_t>(NF_STYLE_SCALE_COMMAS));
  EXPECT_EQ(style.kind, static_cast<uint32_t>(NF_KIND_NUMBER));
  EXPECT_EQ(style.codePage, NF_STYLE_THOUSANDS | NF_STYLE_MORE_THAN_DIGITS | 0xFFFE);
}

TEST_F(NumberFormatApi, TellsTheNumberingSystemAndMoneyInTheStyle) {
  const NFSTYLE style = styleOf(L"[DBNum2][$RMB]General", number(1));
  EXPECT_EQ(style.codePage, 0x2FFFEu);
  EXPECT_EQ(style.flags, static_cast<uint32_t>(NF_STYLE_CHINESE_MONEY));
  EXPECT_EQ(style.color, 0xFFFFFEu);
}

TEST_F(NumberFormatApi, TellsWhetherMoreThanDigitsWasWritten) {
  EXPECT_EQ(styleOf(L"0;0 \"neg\"", number(1)).codePage & NF_STYLE_MORE_THAN_DIGITS, 0u);
  EXPECT_NE(styleOf(L"0;0 \"neg\"", number(-1)).codePage & NF_STYLE_MORE_THAN_DIGITS, 0u);
  EXPECT_EQ(styleOf(L"0", number(1)).codePage & NF_STYLE_MORE_THAN_DIGITS, 0u);
  EXPECT_NE(styleOf(L"0", number(-1)).codePage & NF_STYLE_MORE_THAN_DIGITS, 0u);
}

TEST_F(NumberFormatApi, MarksATextThatANumberSectionCopies) {
  EXPECT_NE(styleOf(L"0", string(L"text")).codePage & NF_STYLE_TEXT, 0u);
  EXPECT_EQ(styleOf(L"0", number(1)).codePage & NF_STYLE_TEXT, 0u);
}

TEST_F(NumberFormatApi, HasNoStyleWithoutASection) {
  const NFSTYLE style = styleOf(L"[Red]0;;", number(-1));
  EXPECT_EQ(style.color, 0xFFFFFEu);
  EXPECT_EQ(style.kind, 0u);
}

TEST_F(NumberFormatApi, TellsTheKindsOfTheSections) {
  EXPECT_EQ(kindsOf(L"0.00;-0.00;;@"),
            (std::vector<uint32_t>{NF_KIND_NUMBER, NF_KIND_NUMBER, 0, NF_KIND_TEXT}));
  EXPECT_EQ(kindsOf(L"0E+0;0%;# ?/?"),
            (std::vector<uint32_t>{NF_KIND_EXPONENT, NF_KIND_PERCENT, NF_KIND_FRACTION}));
  EXPECT_EQ(kindsOf(L"General;General k"), (std::vector<uint32_t>{NF_KIND_PURE_GENERAL, NF_KIND_GENERAL}));
  EXPECT_EQ(kindsOf(L"yyyy"), std::vector<uint32_t>{NF_KIND_DATE});
}

TEST_F(NumberFormatApi, WritesOnlyAsManySectionsAsThereAre) {
  const Cached format(L"0;0");
  NF_SECTS_INFO info;
  std::fill_n(reinterpret_cast<unsigned char*>(&info), sizeof(info), static_cast<unsigned char>(0xAB));
  EXPECT_EQ(_XNF_GetSectsInfo(format.get(), &info), NF_OK);
  EXPECT_EQ(info.count, 2u);
  EXPECT_EQ(info.sect[1].zero, 0u);
  EXPECT_EQ(info.sect[2].kind, 0xABABABABu);
}

TEST_F(NumberFormatApi, RefusesToTellSectionsOfNothing) {
  NF_SECTS_INFO info;
  const Cached format(L"0");
  EXPECT_EQ(_XNF_GetSectsInfo(nullptr, &info), NF_BAD_ARGUMENT);
  EXPECT_EQ(_XNF_GetSectsInfo(format.get(), nullptr), NF_BAD_ARGUMENT);
}

TEST_F(NumberFormatApi, KnowsASingleTextSection) {
  EXPECT_TRUE(isSingleText(L"@"));
  EXPECT_TRUE(isSingleText(L"\"a\"@"));
  EXPECT_FALSE(isSingleText(L"0;@"));
  EXPECT_FALSE(isSingleText(L"General"));
  EXPECT_EQ(_XNF_OQ_IsSingleStringSect(nullptr, nullptr), NF_OK);
}

TEST_F(NumberFormatApi, RoundsToWhatTheFormatShows) {
  EXPECT_EQ(rounded(L"0.00", 1.005), 1.01);
  EXPECT_EQ(rounded(L"0.00", -1.005), -1.01);
  EXPECT_EQ(rounded(L"0", 2.5), 3);
  EXPECT_EQ(rounded(L"0%", 0.126), 0.13);
  EXPECT_EQ(rounded(L"0,", 1499), 1000);
  EXPECT_EQ(rounded(L"0.0E+0", 12345), 12000);
  EXPECT_EQ(rounded(L"# ?/?", 0.3), 2.0 / 7);
  EXPECT_EQ(rounded(L"?/8", 0.3), 0.25);
}

TEST_F(NumberFormatApi, RoundsToZeroWhatLiesBelowTheLastDigitShown) {
  EXPECT_EQ(rounded(L"0,,", 0.5), 0);
  EXPECT_EQ(rounded(L"0,,", 123), 0);
  EXPECT_EQ(rounded(L"0.0", 0.04), 0);
}

TEST_F(NumberFormatApi, RoundsToNoMoreThan15DigitsAndThenNotAtAll) {
  const auto decimals = [](size_t count) { return L"0." + std::wstring(count, L'0'); };
  EXPECT_EQ(rounded(decimals(13).c_str(), 123.45678901234567), 123.4567890123457);
  EXPECT_EQ(rounded(decimals(14).c_str(), 123.45678901234567), 123.45678901234567);
  EXPECT_EQ(rounded(decimals(20).c_str(), 1.2345678901234567e-5), 1.234567890123457e-5);
  EXPECT_EQ(rounded(decimals(21).c_str(), 1.2345678901234567e-5), 1.2345678901234567e-5);
}

TEST_F(NumberFormatApi, RoundsUpWhatLiesTwoUnitsBelowTheHalf) {
  double value = 2.5;
  for (int units = 1; units <= 2; ++units) {
    value = std::nextafter(value, 0);
    EXPECT_EQ(rounded(L"0", value), 3) << units;
  }
  EXPECT_EQ(rounded(L"0", std::nextafter(value, 0)), 2);
}

TEST_F(NumberFormatApi, RoundsNumbersThatOnlyAnExponentShows) {
  EXPECT_NEAR(rounded(L"0.00E+0", 1.2345e-310), 1.2e-310, 1e-322);
  EXPECT_DOUBLE_EQ(rounded(L"0.00E+0", 1.2345e300), 1.23e300);
  EXPECT_EQ(rounded(L"0E+0", 0.00067), 0.001);
}

TEST_F(NumberFormatApi, RoundsToWholeUnitsAndThousands) {
  EXPECT_EQ(rounded(L"0", 0.6), 1);
  EXPECT_EQ(rounded(L"0,", 600), 1000);
  EXPECT_EQ(rounded(L"0,", -400), 0);
  EXPECT_EQ(rounded((L"0" + std::wstring(103, L',')).c_str(), 12), 0);
}

TEST_F(NumberFormatApi, KeepsTheSignOfAZeroThatHasAPlaceInTheFormat) {
  EXPECT_TRUE(std::signbit(rounded(L"0,", -400)));
  EXPECT_TRUE(std::signbit(rounded(L"0.0", -0.04)));
  EXPECT_FALSE(std::signbit(rounded(L"0,", -60)));
  EXPECT_FALSE(std::signbit(rounded(L"0,", -0.5)));
  EXPECT_FALSE(std::signbit(rounded(L"# ?/?", -0.001)));
}

TEST_F(NumberFormatApi, RoundsToTheFractionThatIsShown) {
  EXPECT_EQ(rounded(L"# ?/?", -2.3), -(2 + 2.0 / 7));
  EXPECT_EQ(rounded(L"# ?/?", 0.001), 0);
  EXPECT_EQ(rounded(L"# ?/?", 0.999), 1);
  EXPECT_EQ(rounded(L"?/9", kLargestDouble), kLargestDouble);
}

TEST_F(NumberFormatApi, LeavesNumbersThatHaveNoDigitsToRound) {
  EXPECT_EQ(rounded(L"0.00", 1e17), 1e17);
  EXPECT_EQ(rounded((L"0." + std::wstring(200, L'0')).c_str(), 0.1), 0.1);
  EXPECT_EQ(rounded(L"0.0;0.000", -1.26), -1.26);
}

TEST_F(NumberFormatApi, HasNothingToRoundInZeroAndWithoutAPointer) {
  const Cached format(L"0.00");
  double zero = 0;
  EXPECT_EQ(_XNFFormatPrecision(format.get(), &zero), NF_NOTHING);
  EXPECT_EQ(zero, 0);
  EXPECT_EQ(_XNFFormatPrecision(format.get(), nullptr), NF_NOTHING);
  EXPECT_EQ(_XNFFormatPrecision(nullptr, &zero), NF_BAD_ARGUMENT);
}

TEST_F(NumberFormatApi, DoesNotRoundUnderFormatsThatAreNoNumbers) {
  for (const wchar_t* text : {L"General", L"@", L"yyyy", L"0;;0"}) {
    const Cached format(text);
    double value = -1.23456;
    EXPECT_EQ(_XNFFormatPrecision(format.get(), &value), NF_NOTHING) << text;
    EXPECT_EQ(value, -1.23456);
  }
}

TEST_F(NumberFormatApi, DoesNotRoundWhatIsNotFinite) {
  const Cached format(L"0.00");
  double value = std::numeric_limits<double>::infinity();
  EXPECT_EQ(_XNFFormatPrecision(format.get(), &value), NF_NOTHING);
  value = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(_XNFFormatPrecision(format.get(), &value), NF_NOTHING);
}

TEST_F(NumberFormatApi, RefusesToWriteBackNothing) {
  const Cached format(L"0");
  wchar_t* text = nullptr;
  for (auto unCompile : {_XNFUnCompile, _XNFUnCompileForExcel, _XNFUnCompileForWord}) {
    EXPECT_EQ(unCompile(nullptr, &text, nullptr), NF_BAD_ARGUMENT);
    EXPECT_EQ(unCompile(format.get(), nullptr, nullptr), NF_BAD_ARGUMENT);
  }
}

TEST_F(NumberFormatApi, ShowsNumbersThatAreNotFiniteByName) {
  for (double value : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                       std::numeric_limits<double>::quiet_NaN()}) {
    for (const wchar_t* format : {L"0", L"0%", L"0E+0", L"# ?/?", L"General", L"yyyy", L"[DBNum1]General"}) {
      EXPECT_EQ(oneShot(format, number(value)), L"#NUM!") << format;
    }
  }
}
