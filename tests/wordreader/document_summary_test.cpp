#include "wordreader/document_summary.h"

#include <gtest/gtest.h>

#include "support/property_sets.h"

using namespace support;
using pagerex::CustomProperty;
using pagerex::DocumentSummary;
using pagerex::WarningCode;
using pagerex::Warnings;

namespace {

ByteView view(const Bytes& bytes) {
  return {bytes.data(), bytes.size()};
}

DocumentSummary readBack(const Summary& summary) {
  const Bytes first = summary.summaryStream(), second = summary.documentSummaryStream();
  return pagerex::readDocumentSummary(view(first), view(second), nullptr);
}

DocumentSummary readSection(const PropertySection& section, Warnings* warnings = nullptr) {
  const Bytes stream = propertySetStream({{PropertySetKind::kSummary, section}});
  return pagerex::readDocumentSummary(view(stream), {}, warnings);
}

DocumentSummary readCustom(const PropertySection& section) {
  const Bytes stream = propertySetStream(
      {{PropertySetKind::kDocumentSummary, PropertySection(1252)}, {PropertySetKind::kCustom, section}});
  return pagerex::readDocumentSummary({}, view(stream), nullptr);
}

std::u16string titleIn(uint16_t codePage, const Text& title) {
  return readBack({.codePage = codePage, .title = title}).title;
}

}  // namespace

TEST(DocumentSummary, HasWhatBothStreamsSay) {
  const DocumentSummary summary = readBack({.title = "Title",
                                            .author = "Ann",
                                            .templateName = "Normal.dot",
                                            .created = fileTime(2004, 3, 1, 12),
                                            .pages = 3,
                                            .security = 2,
                                            .company = "Company",
                                            .paragraphs = 7,
                                            .charactersWithSpaces = 70});
  EXPECT_EQ(summary.title, u"Title");
  EXPECT_EQ(summary.author, u"Ann");
  EXPECT_EQ(summary.templateName, u"Normal.dot");
  EXPECT_EQ(pagerex::iso8601(summary.created), "2004-03-01T12:00:00Z");
  EXPECT_EQ(summary.pages, 3);
  EXPECT_EQ(summary.security, 2);
  EXPECT_EQ(summary.company, u"Company");
  EXPECT_EQ(summary.paragraphs, 7);
  EXPECT_EQ(summary.charactersWithSpaces, 70);
  EXPECT_EQ(summary.saved, 0u);
  EXPECT_EQ(summary.manager, u"");
}

TEST(DocumentSummary, TextsAreReadInTheirCodePage) {
  EXPECT_EQ(titleIn(1252, "\x80 \xE4"), u"€ ä");
  EXPECT_EQ(titleIn(1250, "\xF8"), u"ř");
  EXPECT_EQ(titleIn(1251, "\xCF\xF0\xE8"), u"При");
  EXPECT_EQ(titleIn(932, "\x93\xFA\x96{"), u"日本");
  EXPECT_EQ(titleIn(936, "\xD6\xD0"), u"中");
  EXPECT_EQ(titleIn(949, "\xB0\xA1"), u"가");
  EXPECT_EQ(titleIn(950, "\xA4\xA4"), u"中");
  EXPECT_EQ(titleIn(10000, "\x8A"), u"ä");
  EXPECT_EQ(titleIn(65001, u"ä日"), u"ä日");
  EXPECT_EQ(titleIn(1200, u"ä日"), u"ä日");
  EXPECT_EQ(titleIn(1258, "a\xCC"), u"à");  // a letter and its mark, which come together
}

TEST(DocumentSummary, AnUnknownCodePageIsReadAsWestern) {
  EXPECT_EQ(titleIn(4711, "\xE4"), u"ä");
}

TEST(DocumentSummary, BytesThatAreNoCharacterLeaveAMark) {
  EXPECT_EQ(titleIn(932, "a\x93"), u"a\uFFFD");
  EXPECT_EQ(readSection(PropertySection(65001).value(2, 30, {4, 0, 0, 0, 'a', 0xFF, 'b', 0})).title,
            u"a\uFFFDb");
}

TEST(DocumentSummary, TextEndsAtItsFirstZero) {
  const Bytes withTail = {6, 0, 0, 0, 'o', 'k', 0, 'x', 'y', 0};
  EXPECT_EQ(readSection(PropertySection(1252).value(2, 30, withTail)).title, u"ok");
}

TEST(DocumentSummary, TextHasNoControlCharactersAndNoHalves) {
  EXPECT_EQ(readSection(PropertySection(1252).wideText(2, u"a\x01z\r\n\x85\xD800q\xDC00 😀")).title,
            u"az q 😀");
}

TEST(DocumentSummary, WideTextNeedsNoCodePage) {
  EXPECT_EQ(readSection(PropertySection(1251).wideText(2, u"日本")).title, u"日本");
}

TEST(DocumentSummary, TheFirstOfEqualPropertiesCounts) {
  EXPECT_EQ(readSection(PropertySection(1252).text(2, "one").text(2, "two")).title, u"one");
}

TEST(DocumentSummary, APropertyOfAnotherTypeIsAbsent) {
  const DocumentSummary summary = readSection(PropertySection(1252).number(2, 5).text(14, "5").time(6, 5));
  EXPECT_EQ(summary.title, u"");
  EXPECT_EQ(summary.pages, 0);
}

TEST(DocumentSummary, NumbersOfEachWidthAreRead) {
  EXPECT_EQ(readSection(PropertySection(1252).value(14, 2, {7, 0})).pages, 7);
  EXPECT_EQ(readSection(PropertySection(1252).value(14, 19, {7, 1, 0, 0})).pages, 263);
  EXPECT_EQ(readSection(PropertySection(1252).number(14, -1)).pages, 0);
}

TEST(DocumentSummary, TimesBeforeTheFirstAreNone) {
  EXPECT_EQ(readSection(PropertySection(1252).time(12, uint64_t{1} << 63)).created, 0u);
}

TEST(DocumentSummary, HasTheCustomProperties) {
  const DocumentSummary summary = readBack({.custom = {{"Text", Text("Value")},
                                                       {"Count", -3},
                                                       {"Real", 1.5},
                                                       {"Yes", true},
                                                       {"When", NamedProperty::Time{5}}}});
  ASSERT_EQ(summary.custom.size(), 5u);
  EXPECT_EQ(summary.custom[0].name, u"Text");
  EXPECT_EQ(summary.custom[0].text, u"Value");
  EXPECT_EQ(summary.custom[1].kind, CustomProperty::Kind::kInteger);
  EXPECT_EQ(summary.custom[1].integer, -3);
  EXPECT_EQ(summary.custom[2].kind, CustomProperty::Kind::kReal);
  EXPECT_EQ(summary.custom[2].real, 1.5);
  EXPECT_EQ(summary.custom[3].kind, CustomProperty::Kind::kBoolean);
  EXPECT_EQ(summary.custom[3].integer, 1);
  EXPECT_EQ(summary.custom[4].kind, CustomProperty::Kind::kTime);
  EXPECT_EQ(summary.custom[4].time, 5u);
}

TEST(DocumentSummary, NamesOfCustomPropertiesAreInTheirCodePage) {
  EXPECT_EQ(readBack({.codePage = 1200, .custom = {{u"Имя", 1}, {u"日", 2}}}).custom[1].name, u"日");
  EXPECT_EQ(readBack({.codePage = 1251, .custom = {{"\xC8", 1}}}).custom[0].name, u"И");
}

TEST(DocumentSummary, LinkedAndHiddenAndNamelessPropertiesAreLeftOut) {
  PropertySection section(1252);
  section.names({{2, "Shown"}, {3, "_PID_GUID"}, {0x01000002, "Link"}});
  section.number(2, 1).number(3, 2).text(0x01000002, "Bookmark").number(4, 3).number(2, 4);
  const DocumentSummary summary = readCustom(section);
  ASSERT_EQ(summary.custom.size(), 1u);
  EXPECT_EQ(summary.custom[0].name, u"Shown");
  EXPECT_EQ(summary.custom[0].integer, 1);
}

TEST(DocumentSummary, RealNumbersAreFinite) {
  const Bytes infinity = {0, 0, 0, 0, 0, 0, 0xF0, 0x7F};
  EXPECT_TRUE(readCustom(PropertySection(1252).names({{2, "A"}}).value(2, 5, infinity)).custom.empty());
}

TEST(DocumentSummary, OffsetsOutsideAreAbsentAndTold) {
  Bytes stream =
      propertySetStream({{PropertySetKind::kSummary, PropertySection(1252).text(2, "Title").text(4, "Ann")}});
  constexpr size_t kTitleOffset = 48 + 8 + 8 + 4;
  patchInteger(stream, kTitleOffset, uint32_t{0xFFFFFFF0});
  Warnings warnings;
  const DocumentSummary summary = pagerex::readDocumentSummary(view(stream), {}, &warnings);
  EXPECT_EQ(summary.title, u"");
  EXPECT_EQ(summary.author, u"Ann");
  ASSERT_EQ(warnings.all().size(), 1u);
  EXPECT_EQ(warnings.all()[0].code, WarningCode::kTableDamaged);
  EXPECT_EQ(warnings.all()[0].where, "SummaryInformation");
}

TEST(DocumentSummary, ASoundOneWarnsOfNothing) {
  const Summary summary = {.title = "T", .custom = {{"A", 1}}};
  const Bytes first = summary.summaryStream(), second = summary.documentSummaryStream();
  Warnings warnings;
  pagerex::readDocumentSummary(view(first), view(second), &warnings);
  pagerex::readDocumentSummary({}, {}, &warnings);
  EXPECT_TRUE(warnings.all().empty());
}

TEST(DocumentSummary, IsEmptyWithoutItsSection) {
  Bytes stream = Summary{.title = "T"}.summaryStream();
  Warnings warnings;
  EXPECT_EQ(pagerex::readDocumentSummary({}, view(stream), &warnings).title, u"");
  patchInteger(stream, 0, uint16_t{0xFEFF});
  EXPECT_EQ(pagerex::readDocumentSummary(view(stream), {}, &warnings).title, u"");
  EXPECT_EQ(warnings.all().size(), 2u);
}

TEST(DocumentSummary, CutAnywhereItHasNoMoreThanBefore) {
  const Summary whole = {.title = "Title", .custom = {{"Name", Text("Value")}, {"Other", 2}}};
  const Bytes first = whole.summaryStream(), second = whole.documentSummaryStream();
  for (size_t size = 0; size <= second.size(); ++size) {
    // Copies of just this size, so that tools for memory see each byte that is read behind it.
    const Bytes one(first.begin(), first.begin() + static_cast<ptrdiff_t>(std::min(size, first.size())));
    const Bytes two(second.begin(), second.begin() + static_cast<ptrdiff_t>(size));
    const DocumentSummary summary = pagerex::readDocumentSummary(view(one), view(two), nullptr);
    EXPECT_TRUE(summary.title.empty() || summary.title == u"Title") << size;
    EXPECT_LE(summary.custom.size(), 2u) << size;
  }
}

TEST(DocumentSummary, ManyPropertiesOfOneTextReadItOnce) {
  PropertySection section(1252);
  std::vector<std::pair<uint32_t, Text>> names;
  for (uint32_t id = 2; id < 1002; ++id) names.emplace_back(id, "n");
  section.names(names);
  for (uint32_t id = 2; id < 1002; ++id) section.raw(id, {});
  const std::string text(30000, 'x');
  section.text(1002, text);
  const DocumentSummary summary = readCustom(section);
  ASSERT_EQ(summary.custom.size(), 1u);
  EXPECT_EQ(summary.custom[0].text.size(), text.size());
}
