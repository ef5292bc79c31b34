#include "wordreader/notes.h"

#include <gtest/gtest.h>

#include "memory_storage.h"

using support::WordDocument;

namespace {

WordDocument withNotes() {
  WordDocument source;
  source.paragraph("ab").footnote("first").run("c").footnote("second", {.customMark = "*"});
  source.paragraph("d").endnote("last");
  return source;
}

}  // namespace

TEST(Footnotes, HavePositionsAndTextRanges) {
  const OpenedDocument opened(withNotes());
  const KDRFootnotes& notes = opened.document.GetFootnotes();
  ASSERT_EQ(notes.GetPositions().Count(), 2u);
  EXPECT_EQ(notes.GetPositions().Position(0), 2u);
  EXPECT_EQ(notes.GetPositions().Position(1), 4u);
  EXPECT_EQ(notes.GetPositions().Item(0).data, 1);
  EXPECT_EQ(notes.GetPositions().Item(1).data, 0);
  EXPECT_EQ(notes.GetTextRanges().Range(0).start, 0u);
  EXPECT_EQ(notes.GetTextRanges().Range(0).end, 7u);
  EXPECT_EQ(notes.GetTextRanges().Range(1).end, 15u);
}

TEST(Endnotes, HavePositionsAndTextRanges) {
  const OpenedDocument opened(withNotes());
  const KDREndnotes& notes = opened.document.GetEndnotes();
  ASSERT_EQ(notes.GetPositions().Count(), 1u);
  EXPECT_EQ(notes.GetPositions().Position(0), 7u);
  EXPECT_EQ(notes.GetTextRanges().Range(0).end, 6u);
}

TEST(Footnotes, HaveTextRangesAlsoWithoutReferences) {
  WordDocument source = withNotes();
  source.dropTable(mso_word::FCLCB_FOOTNOTE_REFS);
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetFootnotes().GetPositions().Count(), 0u);
  EXPECT_GT(opened.document.GetFootnotes().GetTextRanges().Count(), 0u);
}

TEST(Endnotes, HaveNoTextRangesWithoutReferences) {
  WordDocument source = withNotes();
  source.dropTable(mso_word::FCLCB_ENDNOTE_REFS);
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetEndnotes().GetTextRanges().Count(), 0u);
}

TEST(Notes, AreNoneInADocumentWithout) {
  WordDocument source;
  source.paragraph("x");
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetFootnotes().GetTextRanges().Count(), 0u);
  EXPECT_EQ(opened.document.GetEndnotes().GetPositions().Count(), 0u);
}
