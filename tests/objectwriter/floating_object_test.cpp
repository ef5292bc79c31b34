#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

namespace {

using support::drawing::Drawing;
using support::drawing::Place;
using support::drawing::Props;
using support::drawing::Rect;
using support::drawing::Shape;

constexpr Rect kBox = {0, 0, 2000, 1000};

std::string objectAt(const Drawing& drawing, uint32_t cp, bool pageBreak = false) {
  ObjectPage page(drawing);
  return page.written([&](auto& writer) { writer.WriteObject(cp, pageBreak); });
}

/// A host control, whose start tag is short.
const Shape kShape = Shape(201);
const std::string kVml =
    "\r\n<v:shape o:spt=\"201\" coordsize=\"21600,21600\">\r\n<v:imagedata></v:imagedata>\r\n";
const std::string kNoVml =
    "<![if !vml]>\r\n<div id=\"1025\" style=\"position:absolute;left:0;text-align:left;margin-left:0.00pt;"
    "margin-top:0.00pt;width:100.00pt;height:50.00pt;z-index:1;\"></div><![endif]>";

TEST(FloatingObject, IsWrittenTwice) {
  EXPECT_EQ(objectAt(Drawing().shape(0, kShape, {.rect = kBox}), 0),
            "<!--[if gte vml 1]>" + kVml + "</v:shape><![endif]-->" + kNoVml);
}

TEST(FloatingObject, ClosesAnOpenStartTag) {
  ObjectPage page(Drawing().shape(0, kShape, {.rect = kBox}));
  const std::string markup = page.written([&](auto& writer) {
    page.conversion().archive->BeginElement("p");
    writer.WriteObject(0, false);
  });
  EXPECT_EQ(markup.substr(0, 22), "<p><!--[if gte vml 1]>");
}

TEST(FloatingObject, WrapAroundIsTold) {
  EXPECT_EQ(
      objectAt(Drawing().shape(0, kShape, {.rect = kBox, .wrap = 2}), 0),
      "<!--[if gte vml 1]>" + kVml + "<w:wrap type=\"square\"></w:wrap>\r\n</v:shape><![endif]-->" + kNoVml);
}

TEST(FloatingObject, WrapBlockOpensInTheCommentAndClosesBehindTheFallback) {
  EXPECT_EQ(objectAt(Drawing().shape(0, kShape, {.rect = kBox, .wrap = 1}), 0),
            "<!--[if gte vml 1]><o:wrapblock" + std::string("\r\n>") + kVml.substr(2) +
                "<w:wrap type=\"topAndBottom\"></w:wrap>\r\n</v:shape><![endif]-->" + kNoVml +
                "</o:wrapblock>");
}

TEST(FloatingObject, PageBreakClosesTheWrapBlockInTheComment) {
  EXPECT_EQ(objectAt(Drawing().shape(0, kShape, {.rect = kBox, .wrap = 3}), 0, true),
            "<!--[if gte vml 1]><o:wrapblock" + std::string("\r\n>") + kVml.substr(2) +
                "</v:shape></o:wrapblock><![endif]-->" + kNoVml);
}

TEST(FloatingObject, PageBreakAndWrappingCloseTheWrapBlockTwice) {
  const std::string markup = objectAt(Drawing().shape(0, kShape, {.rect = kBox, .wrap = 1}), 0, true);
  EXPECT_NE(markup.find("</v:shape></o:wrapblock><![endif]-->"), std::string::npos);
  EXPECT_NE(markup.find("<![endif]></o:wrapblock>"), std::string::npos);
}

TEST(FloatingObject, NothingIsWrittenWithoutAnAnchor) {
  EXPECT_EQ(objectAt(Drawing().shape(3, kShape), 0), "");
  EXPECT_EQ(objectAt(Drawing().shape(3, kShape), 4), "");
  EXPECT_EQ(objectAt(Drawing().shape(kShape), 0), "");
}

TEST(FloatingObject, NothingIsWrittenForAShapeThatIsNotThere) {
  EXPECT_EQ(objectAt(Drawing().shape(kShape).anchor(0, 77), 0), "");
}

TEST(FloatingObject, ShapeInAGroupIsNotFound) {
  const Shape group = Shape(0, 2000).group({0, 0, 10, 10}, {Shape(1, 2001).at({0, 0, 5, 5})});
  EXPECT_EQ(objectAt(Drawing().shape(group).anchor(0, 2001), 0), "");
}

TEST(FloatingObject, EachPositionOfTheRangeReachesTheShape) {
  const Drawing drawing = Drawing().shape(2, kShape).anchor(5, 77);
  EXPECT_NE(objectAt(drawing, 4), "");
  EXPECT_EQ(objectAt(drawing, 5), "");
}

TEST(FloatingObject, NoDrawingsWriteNothing) {
  ObjectPage page{support::WordDocument()};
  EXPECT_EQ(page.written([](auto& writer) {
    EXPECT_EQ(writer.WriteObject(0, false), Status::kNothing);
    EXPECT_EQ(writer.WriteEmbedShape(0), Status::kNothing);
    EXPECT_EQ(writer.WriteOle(0), Status::kOk);
  }),
            "");
}

TEST(FloatingObject, FirstEntryCountsWhereRangesOverlap) {
  // Positions 4, 0, 8, 2: the ranges are [4, 0), [0, 8) and [8, 2). Only the middle one holds anything.
  support::WordDocument document;
  document.paragraph("text");
  const Drawing drawing = Drawing().shape(0, Shape(201, 1)).shape(1, Shape(201, 2)).shape(2, Shape(201, 3));
  drawing.addTo(document);
  document.editTable(mso_word::FCLCB_SHAPE_ANCHORS, [](support::Bytes& table) {
    const uint32_t positions[] = {4, 0, 8, 2};
    for (size_t i = 0; i < 4; ++i) support::patchInteger(table, i * 4, positions[i]);
  });
  ObjectPage page(document);
  const auto idAt = [&page](uint32_t cp) {
    const std::string markup = page.written([cp](auto& writer) { writer.WriteObject(cp, false); });
    const size_t at = markup.find("<div id=\"");
    return at == std::string::npos ? std::string() : markup.substr(at + 9, 1);
  };
  EXPECT_EQ(idAt(0), "2");
  EXPECT_EQ(idAt(7), "2");
  EXPECT_EQ(idAt(8), "");
}

/// Checks the search for anchors against a plain walk, for position tables of all kinds.
TEST(FloatingObject, SearchFindsWhatAWalkFinds) {
  uint32_t seed = 1;
  const auto random = [&seed](uint32_t below) {
    seed = seed * 1664525 + 1013904223;
    return seed / 65536 % below;
  };
  for (int round = 0; round < 20; ++round) {
    const uint32_t count = 1 + random(12);
    std::vector<uint32_t> positions;
    for (uint32_t i = 0; i <= count; ++i) positions.push_back(random(30));
    support::WordDocument document;
    document.paragraph("text");
    Drawing drawing;
    for (uint32_t i = 0; i < count; ++i) drawing.shape(i, Shape(201, i + 1));
    drawing.addTo(document);
    document.editTable(mso_word::FCLCB_SHAPE_ANCHORS, [&positions](support::Bytes& table) {
      for (size_t i = 0; i < positions.size(); ++i) support::patchInteger(table, i * 4, positions[i]);
    });
    const support::OpenedDocument opened(document);
    const ObjectWriter::ShapeLookup lookup(*opened);
    for (uint32_t cp = 0; cp < 32; ++cp) {
      uint32_t expected = 0;
      for (uint32_t i = 0; i < count && expected == 0; ++i) {
        if (positions[i] <= cp && cp < positions[i + 1]) expected = i + 1;
      }
      const auto found = lookup.FindFloating(cp).shape;
      EXPECT_EQ(found.Good() ? found.GetShapeID() : 0, expected) << round << " at " << cp;
    }
  }
}

TEST(FloatingObject, ShapeThatIsAnchoredAgainAndAgainIsWrittenAFewTimes) {
  ObjectPage page(Drawing().shape(0, kShape));
  page.written([](auto& writer) {
    int written = 0;
    for (int i = 0; i < 1000; ++i) written += writer.WriteObject(0, false) == Status::kOk ? 1 : 0;
    EXPECT_EQ(written, 64);
  });
}

}  // namespace
