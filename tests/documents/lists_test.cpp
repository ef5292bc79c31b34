#include <gtest/gtest.h>

#include "documents/converted.h"
#include "numformat/number_format_service.h"
#include "story/list_counts.h"
#include "story/list_number.h"

namespace {

using pagerex::LevelCounts;
using support::List;
using support::ListLevel;
using support::sprm;
using support::WordDocument;

support::Sprms inList(uint16_t ilfo, uint8_t ilvl = 0) {
  return {sprm(0x460B, ilfo), sprm(0x260A, ilvl)};
}

/// A paragraph "x" of a list, without indents of its own.
void item(WordDocument& doc, uint16_t ilfo, uint8_t ilvl = 0) {
  doc.paragraph("x").sprms(inList(ilfo, ilvl));
}

ListLevel level(const char16_t* text, uint8_t follow = 2) {
  return {.text = text, .follow = follow};
}

/// The labels of the document's paragraphs.
std::vector<std::string> labels(const WordDocument& document, const std::vector<std::string>& options = {}) {
  const Converted converted(document, options);
  EXPECT_EQ(converted.result, PAGEREX_OK);
  const std::string body = converted.body();
  std::vector<std::string> found;
  const std::string before = "<p class=\"std0\" style=\"margin-top:0pt;\"><span style=\"\">";
  for (size_t at = 0; (at = body.find(before, at)) != std::string::npos;) {
    at += before.size();
    found.push_back(body.substr(at, body.find("</span>", at) - at));
  }
  return found;
}

using Labels = std::vector<std::string>;

TEST(ListLabels, ALabelIsASpanInFrontOfTheText) {
  WordDocument doc;
  const uint16_t list = doc.list({.lsid = 1, .levels = {level(u"%1.", 0)}});
  item(doc, list);
  EXPECT_EQ(Converted(doc).text(), p("<span style=\"\">1.&nbsp;</span>" + span("x")));
}

TEST(ListLabels, TheFollowCodeSaysWhatStandsBehindANumber) {
  for (const uint8_t follow : {0, 1, 2}) {
    WordDocument doc;
    item(doc, doc.list({.lsid = 1, .levels = {level(u"%1", follow)}}));
    EXPECT_EQ(labels(doc), (Labels{follow == 2 ? "1" : "1&nbsp;"}));
  }
}

TEST(ListLabels, DeeperLevelsRestartUnderTheNextNumber) {
  WordDocument doc;
  const uint16_t list = doc.list({.lsid = 1, .levels = {level(u"%1"), level(u"%1.%2")}});
  for (const uint8_t ilvl : {0, 0, 1, 0, 1}) item(doc, list, ilvl);
  EXPECT_EQ(labels(doc), (Labels{"1", "2", "2.1", "3", "3.1"}));
}

TEST(ListLabels, AStartCountsOnlyUntilTheLevelRestarts) {
  WordDocument doc;
  const uint16_t list =
      doc.list({.lsid = 1, .levels = {level(u"%1"), {.startAt = 5, .text = u"%2", .follow = 2}}});
  for (const uint8_t ilvl : {1, 0, 1}) item(doc, list, ilvl);
  EXPECT_EQ(labels(doc), (Labels{"5", "1", "1"}));
}

TEST(ListLabels, ADeeperLevelShownByAnUpperOneStartsAsThatDoes) {
  WordDocument doc;
  item(doc, doc.list({.lsid = 1,
                      .levels = {{.startAt = 3, .text = u"%2", .follow = 2},
                                 {.startAt = 7, .text = u"%2", .follow = 2}}}));
  EXPECT_EQ(labels(doc), Labels{"3"});
}

TEST(ListLabels, ReadingAParentOfAListWithoutCountersStartsIt) {
  WordDocument doc;
  const uint16_t list =
      doc.list({.lsid = 1, .levels = {{.startAt = 3, .text = u"%1", .follow = 2}, level(u"%1.%2")}});
  for (const uint8_t ilvl : {1, 0}) item(doc, list, ilvl);
  EXPECT_EQ(labels(doc), (Labels{"3.1", "4"}));
}

TEST(ListLabels, ReadingAParentOfAListWithCountersLeavesItUnstarted) {
  WordDocument doc;
  const uint16_t list = doc.list(
      {.lsid = 1, .levels = {{.startAt = 3, .text = u"%1", .follow = 2}, level(u"%1.%2"), level(u"%3")}});
  for (const uint8_t ilvl : {2, 1, 0}) item(doc, list, ilvl);
  EXPECT_EQ(labels(doc), (Labels{"1", "3.1", "3"}));
}

TEST(ListLabels, TextWithoutPlaceholdersCountsNothing) {
  WordDocument doc;
  const uint16_t list = doc.list({.lsid = 1, .levels = {level(u"Note"), level(u"%1.%2")}});
  item(doc, list);
  item(doc, list);
  item(doc, list, 1);
  EXPECT_EQ(labels(doc), (Labels{"Note", "Note", "1.1"}));
}

TEST(ListLabels, AnUnknownNumberFormatIsDecimal) {
  WordDocument doc;
  item(doc,
       doc.list({.lsid = 1, .levels = {{.startAt = 12, .numberFormat = 61, .text = u"%1", .follow = 2}}}));
  EXPECT_EQ(labels(doc), (Labels{"12"}));
}

TEST(ListLabels, ABulletKeepsTheLowByteOfASymbol) {
  WordDocument doc;
  const uint16_t font = doc.font("Symbol");
  ListLevel bullet = support::bulletLevel(u'\xF0B7', font);
  bullet.follow = 2;
  bullet.chpx = {};
  item(doc, doc.list({.lsid = 1, .levels = {bullet}}));
  EXPECT_EQ(labels(doc), (Labels{"\xC2\xB7&nbsp;"}));
}

TEST(ListLabels, OtherBulletsAreWrittenAsTheyAre) {
  WordDocument doc;
  ListLevel bullet = support::bulletLevel(u'\u2022', 0);
  bullet.chpx = {};
  item(doc, doc.list({.lsid = 1, .levels = {bullet}}));
  EXPECT_EQ(labels(doc), (Labels{"\xE2\x80\xA2&nbsp;"}));
}

TEST(ListLabels, TheLevelsPropertiesLieOverThoseOfTheMark) {
  WordDocument doc;
  ListLevel bold = level(u"%1");
  bold.chpx = {sprm(0x0835, 1)};
  const uint16_t list = doc.list({.lsid = 1, .levels = {bold}});
  doc.paragraph("x").sprms(inList(list)).mark({sprm(0x0836, 1)});
  EXPECT_EQ(Converted(doc).text(), p("<span style=\"font-weight:bold;font-style:italic;\">1</span>" +
                                     span("x") + span(kEmpty, "font-style:italic;line-height:10.5pt;")));
}

TEST(ListLabels, TheParagraphsStyleShowsInTheLabel) {
  WordDocument doc;
  doc.style(11, support::Style().name("Big").chpx({sprm(0x4A43, 40)}));
  const uint16_t list = doc.list({.lsid = 1, .levels = {level(u"%1")}});
  doc.paragraph("x").istd(11).sprms(inList(list));
  EXPECT_NE(Converted(doc).text().find("<span style=\"font-size:20.000000pt;\">1</span>"), std::string::npos);
}

TEST(ListLabels, ACharacterStyleAboveNineIsTheClassByItsNumberAlone) {
  WordDocument doc;
  doc.style(15, support::Style().kind(support::StyleKind::kCharacter).name("C"));
  ListLevel styled = level(u"%1");
  styled.chpx = {sprm(0x4A30, 15)};
  item(doc, doc.list({.lsid = 1, .levels = {styled}}));
  EXPECT_NE(Converted(doc).text().find("<span class=\"15\" style=\"\">1</span>"), std::string::npos);
}

TEST(ListLabels, AListThatIsNotThereHasNoLabel) {
  WordDocument doc;
  item(doc, 3);
  item(doc, 0);
  EXPECT_EQ(Converted(doc).text(), p(span("x")) + p(span("x")));
}

TEST(ListLabels, ALevelThatASimpleListDoesNotHaveHasNoLabel) {
  WordDocument doc;
  item(doc, doc.list({.lsid = 1, .levels = {level(u"%1")}, .simple = true}), 1);
  EXPECT_EQ(Converted(doc).text(), p(span("x")));
}

TEST(ListLabels, APlaceholderOfABadLevelIsSkippedAndUsesItsPlaceUp) {
  WordDocument doc;
  ListLevel odd = level(u"%2 %1");  // a simple list has no second level
  item(doc, doc.list({.lsid = 1, .levels = {odd}, .simple = true}));
  EXPECT_EQ(labels(doc), (Labels{" 1"}));
}

TEST(ListLabels, TheyShowInPagedViewsAndNotInPreview) {
  WordDocument doc;
  item(doc, doc.list({.lsid = 1, .levels = {level(u"%1")}}));
  EXPECT_EQ(labels(doc, {"view=phone", "pagesize=100"}), (Labels{"1"}));
  EXPECT_EQ(labels(doc, {"view=mulpages", "pagesize=100"}), (Labels{"1"}));
  EXPECT_EQ(Converted(doc, {"view=preview", "pagesize=100"}).main(), "x");
}

TEST(ListLabels, AHeadingsLabelStandsInTheNavigationToo) {
  WordDocument doc;
  doc.style(1, support::Style().name("heading 1"));
  const uint16_t list = doc.list({.lsid = 1, .levels = {level(u"%1.", 0)}});
  doc.paragraph("Title").istd(1).sprms(inList(list));
  EXPECT_NE(Converted(doc).file("navigation.html").find(">1. Title</a>"), std::string::npos);
}

TEST(ListLabels, TheIndentsOfTheLevelReachTheBrowserOnlyThroughTheParagraphsOwn) {
  WordDocument doc;
  ListLevel indented = level(u"%1");
  indented.papx = {sprm(0x845E, 720)};
  const uint16_t list = doc.list({.lsid = 1, .levels = {indented}});
  doc.paragraph("x").sprms(inList(list));
  doc.paragraph("x").sprms(inList(list).add(sprm(0x845E, 100)));
  const std::string text = Converted(doc).text();
  EXPECT_EQ(text.find("36.000000pt"), std::string::npos);
  EXPECT_NE(text.find("margin-left:5.000000pt"), std::string::npos);
}

// Counters.

TEST(LevelCounter, ALevelStartsOnceAndThenSteps) {
  LevelCounts counts;
  EXPECT_EQ(counts.GetCount(2, 7), 7);
  EXPECT_EQ(counts.AddCount(2, 7), 7);
  EXPECT_EQ(counts.AddCount(2, 7), 8);
  EXPECT_EQ(counts.GetCount(2, 1), 8);
}

TEST(LevelCounter, SettingAnUnstartedLevelSetsItsStart) {
  LevelCounts counts;
  EXPECT_EQ(counts.SetCount(1, 0, 5), 5);
  EXPECT_EQ(counts.GetCount(1, 9), 9);
  counts.AddCount(1, 5);
  EXPECT_EQ(counts.SetCount(1, 0, 5), 0);
  EXPECT_EQ(counts.AddCount(1, 5), 1);
}

TEST(LevelCounter, UnknownListsAreCreatedByReading) {
  pagerex::KListCount counts;
  EXPECT_EQ(counts.SetLevelCount(1, 0, 4, 2), -1);
  EXPECT_EQ(counts.GetLevelCount(1, 0, 3), 3);
  EXPECT_EQ(counts.AddCount(1, 0, 3), 4);
  EXPECT_EQ(counts.GetCount(1, 0, 0, nullptr), -1);
}

// Number formats.

struct NfcCode {
  unsigned nfc;
  pagerex::TxNfc code;
};

TEST(ListNumberFormat, EveryFormatHasItsCode) {
  const NfcCode codes[] = {{0, 0},        {15, 0},    {40, 0},      {46, 0},      {48, 0},      {1, 4},
                           {2, 5},        {3, 6},     {4, 7},       {5, 8},       {6, 9},       {7, 10},
                           {8, 11},       {12, 0x15}, {20, 0x15},   {13, 0x16},   {21, 0x16},   {14, 3},
                           {19, 3},       {18, 0x10}, {28, 0x10},   {22, 0x1000}, {23, 0x400},  {26, 14},
                           {27, 15},      {29, 0x11}, {30, 12},     {31, 13},     {33, 1},      {35, 1},
                           {37, 1},       {39, 1},    {34, 0x4002}, {38, 0x4002}, {57, 0xC000}, {60, 0xEFFF},
                           {255, 0xEFFF}, {61, 0},    {100, 0}};
  for (const NfcCode& each : codes) EXPECT_EQ(pagerex::g_MsoNfc2VtxNfc(each.nfc), each.code) << each.nfc;
  for (const unsigned nfc :
       {9, 10, 11, 16, 17, 24, 25, 32, 36, 41, 42, 43, 44, 45, 47, 49, 50, 51, 52, 53, 54, 55, 56, 58, 59}) {
    EXPECT_EQ(pagerex::g_MsoNfc2VtxNfc(nfc), 0x4001u) << nfc;
  }
}

TEST(ListNumberFormat, TheFormatStringNamesSystemAndZeros) {
  EXPECT_EQ(pagerex::g_Nfc2FormatString(4), L"[dbnum4]#");
  EXPECT_EQ(pagerex::g_Nfc2FormatString(0x1000), L"[dbnum0]#00");
  EXPECT_EQ(pagerex::g_Nfc2FormatString(0xC000), L"[dbnum0]- # -");
  EXPECT_EQ(pagerex::g_Nfc2FormatString(0x4001), L"[dbnum1]#");
  EXPECT_EQ(pagerex::g_Nfc2FormatString(pagerex::g_MsoNfc2VtxNfc(61)), L"[dbnum0]#");
}

TEST(ListNumberFormat, BulletsHaveNoNumber) {
  NumberFormatService formats;
  std::wstring text = L"left over";
  EXPECT_EQ(pagerex::TxFormatNum(formats, 1, 23, &text), Status::kNothing);
  EXPECT_EQ(text, L"");
  EXPECT_EQ(pagerex::TxFormatNum(formats, 1, 0, nullptr), Status::kFailure);
}

}  // namespace
