#include "wordreader/fields.h"

#include <gtest/gtest.h>

#include "memory_storage.h"

using mso_word::SUBDOC_MAIN;
using support::Bytes;
using support::WordDocument;

namespace {

/// A document whose main text has field marks at these positions (one more than marks).
WordDocument withMarks(const std::vector<uint32_t>& positions) {
  WordDocument source;
  source.paragraph("text");
  const std::vector<Bytes> marks(positions.size() - 1, Bytes{19, 88});
  source.table(mso_word::FCLCB_FIELDS_MAIN, support::positionTable(positions, marks));
  return source;
}

}  // namespace

TEST(Fields, StandAsTheFileHasThem) {
  WordDocument source;
  source.paragraph("ab").field(88, "code", support::Text("result")).field(0, "unknown");
  const OpenedDocument opened(source);
  const KDRFieldContext& fields = opened.document.GetFields(SUBDOC_MAIN);
  ASSERT_EQ(fields.Count(), 5u);
  EXPECT_TRUE(fields.Good());
  EXPECT_EQ(fields.GetCP(0), 2u);
  EXPECT_EQ(fields.GetCP(1), 7u);
  EXPECT_EQ(fields.Item(0).fld.mark, 19);
  EXPECT_EQ(fields.Item(0).GetFieldType(), 88);
  EXPECT_EQ(fields.Item(1).fld.mark, 20);
  EXPECT_EQ(fields.Item(2).fld.mark, 21);
  EXPECT_EQ(fields.Item(3).GetFieldType(), 0);
}

TEST(Fields, OfEachSubDocumentHaveTheirOwnTable) {
  WordDocument source;
  source.paragraph("main");
  for (uint32_t type = 0; type < mso_word::kSubDocCount; ++type) {
    source.story(static_cast<mso_word::SUBDOC_TYPE>(type))
        .paragraph()
        .fieldBegin(static_cast<uint8_t>(type + 50))
        .fieldEnd();
  }
  const OpenedDocument opened(source);
  for (uint32_t type = 0; type < mso_word::kSubDocCount; ++type) {
    const KDRFieldContext& fields = opened.document.GetFields(static_cast<mso_word::SUBDOC_TYPE>(type));
    ASSERT_EQ(fields.Count(), 2u);
    EXPECT_EQ(fields.Item(0).GetFieldType(), type + 50);
    EXPECT_EQ(fields.GetCP(0), type == 0 ? 5u : 0u);
  }
}

TEST(Fields, OfASubDocumentWithoutAreAnEmptyContext) {
  WordDocument source;
  source.paragraph("x");
  const OpenedDocument opened(source);
  const KDRFieldContext& fields = opened.document.GetFields(SUBDOC_MAIN);
  EXPECT_EQ(fields.Count(), 0u);
  EXPECT_FALSE(fields.Good());
  EXPECT_EQ(fields.Item(0).GetFieldType(), 0);
  EXPECT_EQ(fields.Find(0), 0u);
  EXPECT_EQ(&opened.document.GetFields(mso_word::SUBDOC_ENDNOTE), &fields);
}

TEST(Fields, OfATableOfFourBytesAreNone) {
  EXPECT_EQ(OpenedDocument(withMarks({7})).document.GetFields(SUBDOC_MAIN).Count(), 0u);
}

TEST(Fields, AreFoundByPosition) {
  const OpenedDocument opened(withMarks({2, 5, 9, 12, 40}));
  const KDRFieldContext& fields = opened.document.GetFields(SUBDOC_MAIN);
  EXPECT_EQ(fields.Find(2), 0u);
  EXPECT_EQ(fields.Find(9), 2u);
  EXPECT_EQ(fields.Find(12), 3u);
  EXPECT_EQ(fields.Find(3), 4u);
  EXPECT_EQ(fields.Find(0), 4u);
  EXPECT_EQ(fields.Find(40), 4u);
}

TEST(Fields, AtOnePositionAreFoundByTheFirst) {
  const OpenedDocument opened(withMarks({0, 5, 5, 5, 40}));
  EXPECT_EQ(opened.document.GetFields(SUBDOC_MAIN).Find(5), 1u);
  EXPECT_EQ(opened.document.GetFields(SUBDOC_MAIN).Find(0), 0u);
}

TEST(Fields, AreFoundAlsoWherePositionsDescend) {
  const OpenedDocument opened(withMarks({9, 2, 30, 5, 2, 40}));
  const KDRFieldContext& fields = opened.document.GetFields(SUBDOC_MAIN);
  EXPECT_EQ(fields.Find(9), 0u);
  EXPECT_EQ(fields.Find(2), 1u);
  EXPECT_EQ(fields.Find(5), 3u);
  EXPECT_EQ(fields.Find(7), 5u);
}

TEST(Fields, AreFoundWhateverTheFinalPositionIs) {
  const OpenedDocument opened(withMarks({2, 5, 9, 0}));
  EXPECT_EQ(opened.document.GetFields(SUBDOC_MAIN).Find(9), 2u);
}
