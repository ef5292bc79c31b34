#include "drawing/shape_positions.h"

#include <gtest/gtest.h>

#include "read_drawing.h"
#include "support/opened_document.h"

using namespace drawing_test;
using support::OpenedDocument;
using support::WordDocument;

namespace {

/// A table of one anchor.
Bytes anchors(uint32_t start, uint32_t end, uint32_t shapeId) {
  return ByteWriter()
      .u32(start)
      .u32(end)
      .u32(shapeId)
      .u32(0xFFFFFF00)
      .u32(2)
      .u32(3)
      .u32(4)
      .u16(2 << 5)
      .u32(0)
      .take();
}

WordDocument documentWith(const Bytes& main, const Bytes& header) {
  WordDocument document;
  document.paragraph("Text");
  document.table(mso_word::FCLCB_SHAPE_ANCHORS, main);
  document.table(mso_word::FCLCB_HEADER_SHAPE_ANCHORS, header);
  return document;
}

TEST(ShapePositions, GiveRangeShapeAndPlace) {
  const OpenedDocument opened(documentWith(anchors(3, 8, 1025), {}));
  const KShapeAnchors& table = opened->GetShapePositions(mso_word::SUBDOC_MAIN);
  ASSERT_EQ(table.Count(), 1u);
  EXPECT_EQ(table.Range(0).start, 3u);
  EXPECT_EQ(table.Range(0).end, 8u);
  const mso_word::FSPA fspa = table.Item(0).data;
  EXPECT_EQ(fspa.shapeId, 1025u);
  EXPECT_EQ(fspa.left, -256);
  EXPECT_EQ(fspa.bottom, 4);
  EXPECT_EQ(fspa.flags >> 5 & 15, 2);
}

TEST(ShapePositions, AreThoseOfTheMainTextAndOfTheHeaders) {
  const OpenedDocument opened(documentWith(anchors(0, 1, 10), anchors(0, 1, 20)));
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_MAIN).Item(0).data.shapeId, 10u);
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_HEADER).Item(0).data.shapeId, 20u);
}

TEST(ShapePositions, AreEmptyInOtherStories) {
  const OpenedDocument opened(documentWith(anchors(0, 1, 10), anchors(0, 1, 20)));
  for (const auto type : {mso_word::SUBDOC_FOOTNOTE, mso_word::SUBDOC_TEXTBOX, mso_word::SUBDOC_ENDNOTE}) {
    EXPECT_EQ(opened->GetShapePositions(type).Count(), 0u);
  }
}

TEST(ShapePositions, OfTheHeadersDoNotNeedThoseOfTheMainText) {
  const OpenedDocument opened(documentWith({}, anchors(0, 1, 20)));
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_MAIN).Count(), 0u);
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_HEADER).Count(), 1u);
}

TEST(ShapePositions, OutsideTheirStreamAreNone) {
  WordDocument document = documentWith(anchors(0, 1, 10), anchors(0, 1, 20));
  document.patchFib(document.pairOffset(mso_word::FCLCB_SHAPE_ANCHORS), uint32_t{0x7FFFFFFF});
  const OpenedDocument opened(document);
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_MAIN).Count(), 0u);
}

TEST(TextBoxes, HaveTheRangesOfTheirStories) {
  WordDocument document;
  document.paragraph("Text");
  document.story(mso_word::SUBDOC_TEXTBOX).paragraph("one");
  document.story(mso_word::SUBDOC_TEXTBOX).paragraph("two");
  Drawing().addTo(document, {4, 4});
  const OpenedDocument opened(document);
  ASSERT_EQ(opened->GetTxbxTxt().Count(), 2u);
  EXPECT_EQ(opened->GetTxbxTxt().Range(1).start, 4u);
  EXPECT_EQ(opened->GetTxbxTxt().Range(1).end, 8u);
}

TEST(TextBoxes, OutsideTheirStreamAreNone) {
  WordDocument document;
  document.paragraph("Text");
  Drawing().addTo(document, {4, 4});
  document.patchFib(document.pairOffset(mso_word::FCLCB_TEXTBOXES), uint32_t{0x7FFFFFFF});
  EXPECT_EQ(OpenedDocument(document)->GetTxbxTxt().Count(), 0u);
}

}  // namespace
