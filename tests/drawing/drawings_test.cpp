#include <gtest/gtest.h>

#include "read_drawing.h"
#include "support/opened_document.h"

using namespace drawing_test;

namespace {

/// A drawing with a root group and, if `background` is not 0, a background shape; the numbers tell them
/// apart.
Bytes drawing(uint32_t root, uint32_t background = 0) {
  std::vector<Bytes> records = {record(0xF008, 1, 0, Bytes(8)),
                                container(0xF003, {container(0xF004, {fsp(0, root, kGroupFlags)})})};
  if (background) records.push_back(container(0xF004, {fsp(1, background, kShapeFlags)}));
  return container(0xF002, records);
}

const Bytes kGroup = groupOf({Blip().entry()});
const Bytes kMain = {0};
const Bytes kHeader = {1};

TEST(Drawings, OfADocumentWithoutThemAreEmpty) {
  support::WordDocument document;
  document.paragraph("No drawing.");
  const support::OpenedDocument opened(document);
  EXPECT_EQ(opened->GetDrawingGroup().GetBlipStore().GetCount(), 0u);
  EXPECT_FALSE(opened->GetDrawing(0).GetRootShape().Good());
}

TEST(Drawings, OutsideTheirStreamAreEmpty) {
  support::WordDocument document;
  document.paragraph("Far away.");
  document.table(mso_word::FCLCB_DRAWINGS, joined({kGroup, kMain, drawing(5)}));
  document.patchFib(document.pairOffset(mso_word::FCLCB_DRAWINGS), uint32_t{0x7FFFFFFF});
  const support::OpenedDocument opened(document);
  EXPECT_EQ(opened->GetDrawingGroup().GetBlipStore().GetCount(), 0u);
  EXPECT_FALSE(opened->GetDrawing(0).GetRootShape().Good());
}

TEST(Drawings, OfTheMainTextAndTheHeadersAreToldByTheirLabels) {
  const ReadDrawings read(joined({kGroup, kHeader, drawing(20), kMain, drawing(10)}));
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.drawing(0).GetRootShape().GetShapeID(), 10u);
  EXPECT_EQ(read.drawing(1).GetRootShape().GetShapeID(), 20u);
}

TEST(Drawings, AreReadFromADocument) {
  support::WordDocument document;
  document.paragraph("Shape");
  document.table(mso_word::FCLCB_DRAWINGS, joined({kGroup, kMain, drawing(10), kHeader, drawing(20)}));
  const support::OpenedDocument opened(document);
  EXPECT_EQ(opened->GetDrawing(0).GetRootShape().GetShapeID(), 10u);
  EXPECT_EQ(opened->GetDrawing(1).GetRootShape().GetShapeID(), 20u);
  EXPECT_EQ(opened->GetDrawingGroup().GetBlipStore().GetCount(), 1u);
}

TEST(Drawings, MayEndBehindTheGroup) {
  const ReadDrawings read(kGroup);
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.store().GetCount(), 1u);
  EXPECT_FALSE(read.drawing(0).GetRootShape().Good());
}

TEST(Drawings, WithoutTheGroupAreMalformed) {
  EXPECT_EQ(ReadDrawings(drawing(1)).status, Status::kMalformed);
  EXPECT_EQ(ReadDrawings({}).status, Status::kMalformed);
}

TEST(Drawings, StopAtALabelThatIsNotKnown) {
  const ReadDrawings read(joined({kGroup, kMain, drawing(10), {2}, drawing(20), kHeader, drawing(30)}));
  EXPECT_EQ(read.status, Status::kMalformed);
  EXPECT_EQ(read.store().GetCount(), 1u);
  EXPECT_EQ(read.drawing(0).GetRootShape().GetShapeID(), 10u);
  EXPECT_FALSE(read.drawing(1).GetRootShape().Good());
}

TEST(Drawings, StopWhereALabelHasNoDrawing) {
  EXPECT_EQ(ReadDrawings(joined({kGroup, kMain})).status, Status::kMalformed);
  const ReadDrawings read(joined({kGroup, kMain, drawing(10), kHeader, kGroup}));
  EXPECT_EQ(read.status, Status::kMalformed);
  EXPECT_TRUE(read.drawing(0).GetRootShape().Good());
}

TEST(Drawings, WithTheSameLabelKeepTheFirstShapes) {
  const ReadDrawings read(joined({kGroup, kMain, drawing(10), kMain, drawing(11, 12)}));
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.drawing(0).GetRootShape().GetShapeID(), 10u);
  EXPECT_EQ(read.drawing(0).GetBackgroundShape().GetShapeID(), 12u) << "the first had none";
}

TEST(Drawings, HaveTheFirstGroupAsRootAndTheFirstShapeAsBackground) {
  const auto group = [](uint32_t id) {
    return container(0xF003, {container(0xF004, {fsp(0, id, kGroupFlags)})});
  };
  const auto shape = [](uint32_t id) { return container(0xF004, {fsp(1, id, kShapeFlags)}); };
  const Bytes two = container(0xF002, {group(1), group(2), shape(3), shape(4)});
  const ReadDrawings read(joined({kGroup, kMain, two}));
  EXPECT_EQ(read.drawing().GetRootShape().GetShapeID(), 1u);
  EXPECT_EQ(read.drawing().GetBackgroundShape().GetShapeID(), 3u);
}

TEST(Drawings, TakeTheFirstGroupThatIsGood) {
  const Bytes bad = container(0xF003, {record(0xF00B, 0, 3, {})});
  const Bytes good = container(0xF003, {container(0xF004, {fsp(0, 7, kGroupFlags)})});
  const ReadDrawings read(joined({kGroup, kMain, container(0xF002, {bad, good})}));
  EXPECT_EQ(read.drawing().GetRootShape().GetShapeID(), 7u);
}

TEST(Drawings, StepOverOtherRecords) {
  const Bytes odd = record(0xF123, 5, 1, {1, 2, 3});
  const Bytes solver = container(0xF005, {odd});
  const Bytes colours = record(0xF120, 0, 0, Bytes(16));
  const Bytes root = container(0xF003, {container(0xF004, {fsp(0, 7, kGroupFlags)})});
  const Bytes group = container(0xF000, {odd, container(0xF001, {odd, Blip().entry(), odd}), odd});
  const ReadDrawings read(joined({group, kMain, container(0xF002, {odd, solver, colours, root, odd})}));
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.store().GetCount(), 1u);
  EXPECT_EQ(read.drawing().GetRootShape().GetShapeID(), 7u);
}

TEST(Drawings, KeepTheDefaultPropertiesOfTheGroupToThemselves) {
  const Bytes group = container(0xF000, {Props().number(0x181, 5).bytes(0xF00B)});
  const ReadDrawings read(joined({group, kMain, drawing(10)}));
  int value = -1;
  EXPECT_FALSE(KQueryProp::QueryI4Prop(&read.drawing().GetRootShape(), 0x181, value));
}

}  // namespace
