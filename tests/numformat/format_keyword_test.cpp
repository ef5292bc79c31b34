#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "numformat/placeholder_piece.h"

namespace {

/// Where a keyword leads, and how much of the text it takes.
struct Recognised {
  int piece;
  int length;
  bool operator==(const Recognised&) const = default;
};
void PrintTo(const Recognised& recognised, std::ostream* out) {
  *out << "piece " << recognised.piece << ", " << recognised.length << " characters";
}

const PieceList kDialectLists[] = {s_PLResouce_OQ, s_PLResouce_EXCEL, s_PLResouce_WORD, s_PLResouce_QEL};

Recognised recognise(PieceList dialect, const std::wstring& text) {
  KIdentifyInfo info;
  const KPlaceholderPiece* piece;
  const int length = identifyToken(dialect, text, &info, &piece);
  return {piece ? static_cast<int>(piece - s_PLResouce) : -1, length};
}

struct KeywordRow {
  const wchar_t* text;
  Recognised recognised[4];  ///< in OQ, Excel, Word and Qel
};

void expectRecognised(std::span<const KeywordRow> rows) {
  for (const KeywordRow& row : rows) {
    for (int dialect = 0; dialect < 4; ++dialect) {
      EXPECT_EQ(recognise(kDialectLists[dialect], row.text), row.recognised[dialect])
          << testing::PrintToString(std::wstring(row.text)) << " in dialect " << dialect;
    }
  }
}

/// A row for a text that all dialects read alike.
constexpr KeywordRow everywhere(const wchar_t* text, int piece, int length) {
  return {text, {{piece, length}, {piece, length}, {piece, length}, {piece, length}}};
}

/// A row for a text that the spreadsheets and the word processors read differently.
constexpr KeywordRow bySort(const wchar_t* text, Recognised sheets, Recognised words) {
  return {text, {sheets, sheets, words, words}};
}

KIdentifyInfo tell(const wchar_t* text, AREA_CODE_INDEX area = AREA_ENGLISH) {
  KIdentifyInfo info;
  info.area = area;
  const KPlaceholderPiece* piece;
  identifyToken(s_PLResouce_WORD, text, &info, &piece);
  return info;
}

constexpr int kMalformed = -1;

}  // namespace

TEST(FormatKeywords, AreReadAlikeInAllDialects) {
  const KeywordRow rows[] = {
      everywhere(L"!xy", 0, 2),        everywhere(L"\\xy", 1, 2),       everywhere(L"*xy", 2, 2),
      everywhere(L"\"ab\"0", 3, 4),    everywhere(L"\"\"", 3, 2),       everywhere(L"_xy", 5, 2),
      everywhere(L"  ", 6, 1),         everywhere(L"G/通用格式", 7, 6), everywhere(L"General", 8, 7),
      everywhere(L"gENERAL", 8, 7),    everywhere(L"G/標準", 9, 4),     everywhere(L"[d]", 10, 3),
      everywhere(L"[hH]", 11, 4),      everywhere(L"[MMM]", 12, 5),     everywhere(L"[s]", 13, 3),
      everywhere(L"[DBNum0]", 14, 8),  everywhere(L"[dbnum22]", 14, 9), everywhere(L"[rEd]", 15, 5),
      everywhere(L"[$rmb]", 16, 6),    everywhere(L"[$-409]", 17, 7),   everywhere(L"[$-411]", 17, 7),
      everywhere(L"[$-804]", 17, 7),   everywhere(L"[$-42a]", 17, 7),   everywhere(L"[$-101042A]", 17, 11),
      everywhere(L"[$€-407]0", 18, 8), everywhere(L"[$-405]", 18, 7),   everywhere(L"[$]", 18, 3),
      everywhere(L"yyyyy", 19, 4),     everywhere(L"YYYY", 19, 4),      everywhere(L"yyy", 20, 3),
      everywhere(L"yy", 21, 2),        everywhere(L"Y", 22, 1),         everywhere(L"gggg", 23, 3),
      everywhere(L"GG", 24, 2),        everywhere(L"g", 25, 1),         everywhere(L"mmmmmm", 27, 5),
      everywhere(L"mmmm", 28, 4),      everywhere(L"mmm", 29, 3),       everywhere(L"ddddd", 34, 4),
      everywhere(L"ddd", 35, 3),       everywhere(L"dd", 36, 2),        everywhere(L"D", 37, 1),
      everywhere(L"wwww", 38, 3),      everywhere(L"WW", 39, 2),        everywhere(L"w", 40, 1),
      everywhere(L"HHH", 48, 2),       everywhere(L"H", 49, 1),         everywhere(L"ss", 58, 2),
      everywhere(L"S", 59, 1),         everywhere(L"+", 60, 1),         everywhere(L"-", 61, 1),
      everywhere(L"@", 62, 1),         everywhere(L"#", 63, 1),         everywhere(L"0", 65, 1),
      everywhere(L"?", 67, 1),         everywhere(L"X", 69, 1),         everywhere(L".", 70, 1),
      everywhere(L"%", 71, 1),         everywhere(L"/", 72, 1),         everywhere(L"AM/PM", 75, 5),
      everywhere(L"a/p", 75, 3),       everywhere(L"上午/下午", 75, 5), everywhere(L"b1", 81, 2),
      everywhere(L"B1", 81, 2),        everywhere(L",", 82, 1),         everywhere(L"[abc]", 83, 5),
      everywhere(L"[]", 83, 2),        everywhere(L"[DBNum8]", 83, 8),  everywhere(L"é", 84, 1),
      everywhere(L"1", 84, 1),         everywhere(L"]", 84, 1),
  };
  expectRecognised(rows);
}

TEST(FormatKeywords, AreReadByTheListsOfTheirDialect) {
  const KeywordRow rows[] = {
      bySort(L"'ab'", {84, 1}, {4, 4}),
      bySort(L"e", {26, 1}, {92, 1}),
      bySort(L"ee", {26, 1}, {91, 2}),
      bySort(L"E", {73, 1}, {90, 1}),
      bySort(L"EE", {73, 1}, {89, 2}),
      bySort(L"MMMMM", {27, 5}, {45, 5}),
      bySort(L"MMMM", {28, 4}, {46, 4}),
      bySort(L"MMM", {29, 3}, {47, 3}),
      bySort(L"MM", {30, 2}, {32, 2}),
      bySort(L"M", {31, 1}, {33, 1}),
      bySort(L"mm", {30, 2}, {56, 2}),
      bySort(L"m", {31, 1}, {57, 1}),
      bySort(L"mM", {30, 2}, {57, 1}),
      bySort(L"aaaa", {41, 4}, {88, 3}),
      bySort(L"AAA", {42, 3}, {88, 3}),
      bySort(L"O", {84, 1}, {93, 1}),
      bySort(L"o", {84, 1}, {84, 1}),
      bySort(L"A", {84, 1}, {94, 1}),
      bySort(L"a", {84, 1}, {84, 1}),
      {L"DDDD", {{34, 4}, {34, 4}, {34, 4}, {43, 4}}},
      {L"DDD", {{35, 3}, {35, 3}, {35, 3}, {44, 3}}},
      {L"hh", {{50, 2}, {52, 2}, {50, 2}, {50, 2}}},
      {L"h", {{51, 1}, {53, 1}, {51, 1}, {51, 1}}},
      {L"hH", {{51, 1}, {52, 2}, {51, 1}, {51, 1}}},
      {L"Hh", {{49, 1}, {52, 2}, {49, 1}, {49, 1}}},
  };
  expectRecognised(rows);
}

TEST(FormatKeywords, AreMalformedWhenTheyDoNotEnd) {
  const KeywordRow rows[] = {
      everywhere(L"!", 0, kMalformed),           everywhere(L"\\", 1, kMalformed),
      everywhere(L"*", 2, kMalformed),           everywhere(L"\"abc", 3, kMalformed),
      everywhere(L"_", 5, kMalformed),           everywhere(L"[", 10, kMalformed),
      everywhere(L"[Red", 10, kMalformed),       everywhere(L"[$€", 10, kMalformed),
      bySort(L"'abc", {84, 1}, {4, kMalformed}),
  };
  expectRecognised(rows);
}

TEST(FormatKeywords, HaveListsOfTheirLengthsAndOrder) {
  EXPECT_EQ(s_PLResouce_OQ.size(), 67u);
  EXPECT_EQ(s_PLResouce_EXCEL.size(), 67u);
  EXPECT_EQ(s_PLResouce_WORD.size(), 77u);
  EXPECT_EQ(s_PLResouce_QEL.size(), 79u);
  EXPECT_EQ(std::vector<int>(s_PLResouce_WORD.begin() + 19, s_PLResouce_WORD.begin() + 24),
            (std::vector<int>{89, 91, 90, 92, 19}));
  EXPECT_EQ(std::vector<int>(s_PLResouce_QEL.begin() + 39, s_PLResouce_QEL.begin() + 44),
            (std::vector<int>{93, 43, 34, 44, 35}));
}

TEST(FormatKeywords, LeadToPlaceholdersOfTheirKind) {
  constexpr int kIds[kPieceCount] = {
      66, 66, 64, 60, 60, 65, 65, 67, 67, 67, 47, 48, 49, 50, 71, 71, 71, 71, 73, 14, 14, 13, 13, 15, 16,
      17, 18, 27, 26, 25, 22, 21, 24, 23, 32, 31, 30, 29, 36, 35, 34, 36, 34, 32, 31, 27, 26, 25, 38, 37,
      40, 39, 38, 37, 42, 41, 44, 43, 46, 45, 58, 59, 61, 1,  0,  3,  2,  5,  4,  8,  6,  10, 12, 9,  55,
      51, 53, 52, 54, 56, 57, 71, 7,  71, 60, 62, 63, 70, 31, 19, 20, 19, 20, 28, 33, 72, 66, 66};
  for (int i = 0; i < kPieceCount; ++i) EXPECT_EQ(s_PLResouce[i].placeholder->id, kIds[i]) << i;
}

TEST(FormatKeywords, GiveTheFirstCharacterOfTheInputAsText) {
  EXPECT_EQ(tell(L"Yyyy").text, L"Y");
  EXPECT_EQ(tell(L"0").text, L"0");
  EXPECT_EQ(tell(L"é").text, L"é");
}

TEST(FormatKeywords, GiveWhatTheyEncloseAsText) {
  EXPECT_EQ(tell(L"\"ab;c\"").text, L"ab;c");
  EXPECT_EQ(tell(L"'a\"b'").text, L"a\"b");
  EXPECT_EQ(tell(L"[hhh]").text, L"hhh");
  EXPECT_EQ(tell(L"[$€-407]").text, L"[$€-407]");
  EXPECT_EQ(tell(L"\\x").text, L"x");
  EXPECT_EQ(tell(L"_)").text, L")");
}

TEST(FormatKeywords, SetTheFillCharacterOfTheSection) {
  EXPECT_EQ(tell(L"*-").style.fillChar, static_cast<uint32_t>(L'-'));
  EXPECT_EQ(tell(L"_-").style.fillChar, 0u);
}

TEST(FormatKeywords, SetTheThousandsBitByTheGroupSeparatorOfTheLocale) {
  EXPECT_NE(tell(L",").style.codePage & NF_STYLE_THOUSANDS, 0u);
  EXPECT_EQ(tell(L".").style.codePage & NF_STYLE_THOUSANDS, 0u);
  EXPECT_NE(tell(L".", AREA_VIETNAMESE).style.codePage & NF_STYLE_THOUSANDS, 0u);
}

TEST(FormatKeywords, TurnEscapedSignsIntoThePiecesOfTheSigns) {
  for (const wchar_t* mark : {L"!", L"\\"}) {
    EXPECT_EQ(tell((std::wstring(mark) + L"-").c_str()).id, kPieceSub);
    EXPECT_EQ(tell((std::wstring(mark) + L"+").c_str()).id, kPiecePlus);
    EXPECT_EQ(tell((std::wstring(mark) + L"\\").c_str()).id, kPieceEscape2);
    EXPECT_EQ(tell((std::wstring(mark) + L"x").c_str()).id, -1);
  }
}

TEST(FormatKeywords, TakeABackslashForACharacterInJapanese) {
  EXPECT_EQ(tell(L"\\x", AREA_JAPANESE).text, L"\\");
  EXPECT_EQ(tell(L"!x", AREA_JAPANESE).text, L"x");
}

TEST(FormatKeywords, TakeAQuotedYenSignForAnEscapedCharacter) {
  EXPECT_EQ(tell(L"\"\u00A5\"").id, kPieceEscape);
  EXPECT_EQ(tell(L"\"\uA4A3\"").id, kPieceEscape);
  EXPECT_EQ(tell(L"\"\u00A5\u00A5\"").id, -1);
  EXPECT_EQ(tell(L"\"$\"").id, -1);
}

TEST(FormatKeywords, TellColoursNumberingSystemsAndAreas) {
  EXPECT_EQ(static_cast<uint32_t>(tell(L"[Green]").value), 0xFF008000);
  EXPECT_EQ(static_cast<uint32_t>(tell(L"[绿色]").value), 0xFF008000);
  EXPECT_EQ(tell(L"[DBNum21]").value, 21);
  EXPECT_EQ(tell(L"[$-101042A]").value, AREA_VIETNAMESE);
  EXPECT_EQ(tell(L"[$RMB]").value, 4);
}

TEST(FormatKeywords, TellWhichKindOfTokenTheyAre) {
  EXPECT_EQ(tell(L"[Red]").flags, static_cast<unsigned>(kTokenColour));
  EXPECT_EQ(tell(L"[DBNum1]").flags, static_cast<unsigned>(kTokenCodePage));
  EXPECT_EQ(tell(L"[$RMB]").flags, static_cast<unsigned>(kTokenChineseMoney));
  EXPECT_EQ(tell(L"[$-804]").flags, static_cast<unsigned>(kTokenAreaCode));
  EXPECT_EQ(tell(L"[$€]").flags, static_cast<unsigned>(kTokenCurrency));
  EXPECT_EQ(tell(L"b1").flags, static_cast<unsigned>(kTokenWestYear));
  EXPECT_EQ(tell(L"[abc]").flags, 0u);
}

TEST(FormatKeywords, TellTheHalvesOfTheDayApartByTheirFirstLetter) {
  const std::pair<const wchar_t*, int> rows[] = {
      {L"AM/PM", 75},     {L"Am/pM", 75},       {L"am/pm", 76},    {L"aM/PM", 76}, {L"A/P", 77},
      {L"A/p", 77},       {L"a/p", 78},         {L"a/P", 78},      {L"AMPM", 75},  {L"ampm", 75},
      {L"上午/下午", 74}, {L"[上午/下午]", 74}, {L"午前/午後", 79}};
  for (const auto& [text, piece] : rows) EXPECT_EQ(tell(text).id, piece) << testing::PrintToString(text);
}

TEST(FormatKeywords, HaveOnePairOfWordsForTheHalvesOfTheDayInVietnamese) {
  for (const wchar_t* text : {L"am/pm", L"A/P", L"a/p", L"上午/下午", L"午前/午後"}) {
    EXPECT_EQ(tell(text, AREA_VIETNAMESE).id, kPieceAmPmAM) << testing::PrintToString(text);
  }
}

TEST(FormatKeywords, CanBeTestedWithoutTellingAnything) {
  for (const KPlaceholderPiece& piece : s_PLResouce) {
    for (const wchar_t* text : {L"a", L"[", L"[x]", L"\\", L"\\-", L"\"a\"", L"*", L"0", L"AM/PM"}) {
      KIdentifyInfo info;
      EXPECT_EQ(piece.Identify(text, nullptr), piece.Identify(text, &info)) << &piece - s_PLResouce;
    }
  }
}
