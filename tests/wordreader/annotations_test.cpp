#include "wordreader/annotations.h"

#include <gtest/gtest.h>

#include "memory_storage.h"

using support::Bytes;
using support::ByteWriter;
using support::WordDocument;

namespace {

std::u16string textOf(const unsigned short* text) {
  return reinterpret_cast<const char16_t*>(text);
}

Bytes name(std::u16string_view text) {
  return ByteWriter().u8(text.size()).u8(0).text16(text).take();
}

Bytes reference(int16_t author, std::u16string_view initials = u"", int32_t tag = -1) {
  ByteWriter record;
  record.u16(initials.size()).text16(initials).zeros(18 - initials.size() * 2);
  return record.u16(static_cast<uint16_t>(author)).zeros(4).u32(static_cast<uint32_t>(tag)).take();
}

/// A document with these tables of authors and references, at positions 0, 10, 20 and so on.
WordDocument withTables(const std::vector<Bytes>& names, const std::vector<Bytes>& references) {
  WordDocument source;
  source.paragraph("text");
  ByteWriter owners;
  for (const Bytes& owner : names) owners.bytes(owner);
  std::vector<uint32_t> positions;
  for (uint32_t i = 0; i <= references.size(); ++i) positions.push_back(i * 10);
  source.table(mso_word::FCLCB_ANNOTATION_OWNERS, owners.take());
  source.table(mso_word::FCLCB_ANNOTATION_REFS, support::positionTable(positions, references));
  return source;
}

/// Ranges at these positions with these tags.
void addRanges(WordDocument& source, const std::vector<uint32_t>& starts, const std::vector<uint32_t>& tags) {
  std::vector<Bytes> records, extras;
  for (uint32_t tag : tags) {
    records.push_back(ByteWriter().u16(records.size()).u16(0).take());
    extras.push_back(ByteWriter().u16(0x0100).u32(tag).u32(0xFFFFFFFF).take());
  }
  std::vector<uint32_t> positions = starts;
  positions.push_back(1000);
  source.table(mso_word::FCLCB_ANNOTATION_RANGE_STARTS, support::positionTable(positions, records));
  source.table(mso_word::FCLCB_ANNOTATION_RANGE_ENDS, support::positionTable(positions));
  source.table(mso_word::FCLCB_ANNOTATION_RANGE_NAMES,
               support::stringTable(std::vector<std::u16string>(tags.size()), 10, extras));
}

}  // namespace

TEST(Annotations, HaveAuthorsDatesAndTexts) {
  WordDocument source;
  source.paragraph("abc").annotation("One", {.author = u"Ann Bee", .initials = u"AB", .dttm = 0x12345678});
  source.paragraph("d").annotation("Three", {.author = u"Cee", .initials = u"C", .dttm = 5});
  const OpenedDocument opened(source);
  const KDRAnnotations& annotations = opened.document.GetAnnotations();
  ASSERT_EQ(annotations.GetRefs().Count(), 2u);
  EXPECT_EQ(annotations.GetRefs().Item(0).position, 3u);
  EXPECT_EQ(annotations.GetRefs().Item(1).authorIndex, 1);
  ASSERT_EQ(annotations.GetUsers().size(), 2u);
  EXPECT_EQ(textOf(annotations.GetUsers()[0].name), u"Ann Bee");
  EXPECT_EQ(textOf(annotations.GetUsers()[0].initials), u"AB");
  EXPECT_EQ(textOf(annotations.GetAuthor(annotations.GetRefs().Item(1)).name), u"Cee");
  ASSERT_EQ(annotations.GetDTTMs().Count(), 2u);
  EXPECT_EQ(annotations.GetDTTMs().Item(0)->value + 0, 0x12345678u);
  EXPECT_EQ(annotations.GetDTTMs().Item(1)->value + 0, 5u);
  EXPECT_EQ(annotations.GetDTTMs().Item(2), nullptr);
  EXPECT_EQ(annotations.GetTextRanges().Range(0).end, 5u);  // the reference mark, the text and its mark
}

TEST(Annotations, WithoutARangeHaveALengthOfZero) {
  WordDocument source;
  source.paragraph("abc").annotation("note", {.rangeTag = -1});
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Item(0).rangeTag, -1);
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Item(0).rangeLength, 0u);
}

TEST(Annotations, ReachBackToTheStartOfTheirRange) {
  WordDocument source;
  source.paragraph("ab").annotationStart(77).run("cdef").annotationEnd(77).annotation("note",
                                                                                      {.rangeTag = 77});
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Item(0).rangeLength, 4u);
}

TEST(Annotations, WhoseRangeIsMissingHaveALengthOfZero) {
  WordDocument source = withTables({name(u"A")}, {reference(0), reference(0, u"", 5)});
  addRanges(source, {2}, {6});
  const OpenedDocument opened(source);
  ASSERT_EQ(opened.document.GetAnnotations().GetRefs().Count(), 2u);
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Item(1).rangeLength, 0u);
}

TEST(Annotations, TakeTheFirstOfTwoRangesWithTheirTag) {
  WordDocument source = withTables({name(u"A")}, {reference(0), reference(0, u"", 5)});
  addRanges(source, {1, 4, 7}, {9, 5, 5});
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Item(1).rangeLength, 6u);
}

TEST(Annotations, WithoutATableOfAuthorsAreNone) {
  WordDocument source;
  source.paragraph("abc").annotation("note");
  source.dropTable(mso_word::FCLCB_ANNOTATION_OWNERS);
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Count(), 0u);
  EXPECT_GT(opened.document.GetAnnotations().GetTextRanges().Count(), 0u);
}

TEST(Annotations, HaveNoDatesInAFileWithFewerPairs) {
  WordDocument source(support::WordOptions{.fibPairs = 108});
  source.paragraph("abc").annotation("note");
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Count(), 1u);
  EXPECT_EQ(opened.document.GetAnnotations().GetDTTMs().Count(), 0u);
  EXPECT_EQ(opened.document.GetAnnotations().GetDTTMs().Item(0), nullptr);
}

TEST(Annotations, StopAtRangesThatDoNotMatchTheirNames) {
  WordDocument source = withTables({name(u"A")}, {reference(0)});
  addRanges(source, {1}, {5});
  source.table(mso_word::FCLCB_ANNOTATION_RANGE_NAMES, support::stringTable({u"", u""}));
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Count(), 0u);
}

TEST(AnnotationAuthors, HaveNamesOf63CharactersAtMost) {
  const OpenedDocument opened(withTables({name(std::u16string(200, u'n')), name(u"B")}, {reference(1)}));
  const auto& users = opened.document.GetAnnotations().GetUsers();
  ASSERT_EQ(users.size(), 2u);
  EXPECT_EQ(textOf(users[0].name), std::u16string(63, u'n'));
  EXPECT_EQ(textOf(users[1].name), u"B");
}

TEST(AnnotationAuthors, KeepTheInitialsOfTheirLastAnnotation) {
  const OpenedDocument opened(
      withTables({name(u"A"), name(u"B")}, {reference(1, u"longest"), reference(1, u"B")}));
  EXPECT_EQ(textOf(opened.document.GetAnnotations().GetUsers()[1].initials), u"B");
  EXPECT_EQ(textOf(opened.document.GetAnnotations().GetUsers()[0].initials), u"");
}

TEST(AnnotationAuthors, OfAStrayIndexAreNobody) {
  const OpenedDocument opened(
      withTables({name(u"A")}, {reference(1, u"X"), reference(-1, u"Y"), reference(0)}));
  const KDRAnnotations& annotations = opened.document.GetAnnotations();
  ASSERT_EQ(annotations.GetRefs().Count(), 3u);
  EXPECT_EQ(textOf(annotations.GetAuthor(annotations.GetRefs().Item(0)).name), u"");
  EXPECT_EQ(textOf(annotations.GetAuthor(annotations.GetRefs().Item(1)).name), u"");
  EXPECT_EQ(textOf(annotations.GetAuthor(annotations.GetRefs().Item(2)).name), u"A");
}

TEST(AnnotationAuthors, AreCutWhereTheirTableEnds) {
  Bytes cut = name(u"abcdef");
  cut.resize(2 + 6);
  const OpenedDocument opened(withTables({name(u"A"), cut}, {reference(1)}));
  ASSERT_EQ(opened.document.GetAnnotations().GetUsers().size(), 2u);
  EXPECT_EQ(textOf(opened.document.GetAnnotations().GetUsers()[1].name), u"abc");
}

TEST(AnnotationAuthors, AreLimited) {
  WordDocument source = withTables({Bytes(200000)}, {reference(0)});
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetAnnotations().GetUsers().size(), 4096u);
}

TEST(AnnotationRanges, AreFoundByTag) {
  WordDocument source;
  source.paragraph("text");
  addRanges(source, {1, 2, 3}, {0xFFFFFFF0, 7, 0});
  const OpenedDocument opened(source);
  KDRAtnBkmkStars ranges;
  EXPECT_EQ(ranges.Read(opened.document), Status::kOk);
  EXPECT_EQ(ranges.FindRefIndex(0xFFFFFFF0), 0u);
  EXPECT_EQ(ranges.FindRefIndex(7), 1u);
  EXPECT_EQ(ranges.FindRefIndex(0), 2u);
  EXPECT_EQ(ranges.FindRefIndex(1), 65535u);
}

TEST(AnnotationReferences, AreOfDefaultValuesOutsideTheTable) {
  const OpenedDocument opened(withTables({name(u"A")}, {reference(0)}));
  EXPECT_EQ(opened.document.GetAnnotations().GetRefs().Item(1).rangeTag, -1);
}
