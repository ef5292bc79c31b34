#include "drawing/shape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "read_drawing.h"

using namespace drawing_test;
using testing::ElementsAre;

namespace {

std::vector<int32_t> anchorOf(const MsoROShape& shape) {
  tagRECT rect{1, 1, 1, 1};
  shape.GetChildAnchor(rect);
  return {rect.left, rect.top, rect.right, rect.bottom};
}

std::vector<int32_t> boundsOf(const MsoROShape& shape) {
  tagRECT rect{1, 1, 1, 1};
  shape.GetGroupCoordBounds(rect);
  return {rect.left, rect.top, rect.right, rect.bottom};
}

Bytes group(const std::vector<Bytes>& self, std::vector<Bytes> children = {}) {
  children.insert(children.begin(), container(0xF004, self));
  return container(0xF003, children);
}

Bytes shape(uint32_t id) {
  return container(0xF004, {fsp(1, id, kShapeFlags)});
}

const Bytes kSelf = fsp(0, 100, kGroupFlags);

// Shapes.

TEST(Shape, HasTypeNumberAndFlags) {
  const ReadShape read = shapeOf({fsp(202, 1025, 0xAC2)}, 7);
  ASSERT_TRUE(read->Good());
  EXPECT_EQ(read->GetShapeType(), 202u);
  EXPECT_EQ(read->GetShapeID(), 1025u);
  EXPECT_EQ(read->GetGrfValue(), 0xAC2u);
  EXPECT_TRUE(read->IsChildShape());
  EXPECT_FALSE(read->IsGroupShape());
}

TEST(Shape, HasThePlaceAmongItsSiblingsThatItIsGiven) {
  EXPECT_EQ(ReadShape(shape(1), 7)->GetZOrder(), 7u);
}

TEST(Shape, WithoutItsRecordHasTheFlagsOfANewOne) {
  const ReadShape read = shapeOf({});
  ASSERT_TRUE(read->Good());
  EXPECT_EQ(read->GetGrfValue(), 0xA00u);
  EXPECT_EQ(read->GetShapeID(), 0u);
}

TEST(Shape, ThatClaimsToBeAGroupIsDropped) {
  EXPECT_FALSE(shapeOf({fsp(0, 1, kGroupFlags)})->Good());
}

TEST(Shape, TakesTheLatestAnchorOfAnyKind) {
  const Bytes a = rect(0xF00E, 1, 2, 3, 4);
  const Bytes b = rect(0xF00F, 5, 6, 7, 8);
  const Bytes c = rect(0xF010, 9, 10, 11, 12);
  EXPECT_THAT(anchorOf(*shapeOf({a, c, b})), ElementsAre(5, 6, 7, 8));
  EXPECT_THAT(anchorOf(*shapeOf({b, a, c})), ElementsAre(9, 10, 11, 12));
  EXPECT_THAT(anchorOf(*shapeOf({c, b, a})), ElementsAre(1, 2, 3, 4));
}

TEST(Shape, ReadsAnchorsSigned) {
  EXPECT_THAT(anchorOf(*shapeOf({rect(0xF00F, 0xFFFFFFFF, 0x80000000, 5, 6)})),
              ElementsAre(-1, INT32_MIN, 5, 6));
}

TEST(Shape, WithoutAnAnchorLiesAtZero) {
  EXPECT_THAT(anchorOf(*ReadShape(shape(1))), ElementsAre(0, 0, 0, 0));
}

TEST(Shape, WithAnAnchorThatIsCutHasZerosForTheRest) {
  EXPECT_THAT(anchorOf(*shapeOf({record(0xF010, 0, 0, {1, 0, 0, 0, 2})})), ElementsAre(1, 2, 0, 0));
}

TEST(Shape, ReadsAnAnchorPastTheEndOfItsRecord) {
  const Bytes shortAnchor = record(0xF010, 0, 0, ByteWriter().u32(7).take());
  const Bytes next = record(0xF011, 0, 0, ByteWriter().u32(9).take());
  EXPECT_THAT(anchorOf(*shapeOf({shortAnchor, next})), ElementsAre(7, int32_t(0xF0110000), 4, 9));
}

TEST(Shape, TakesTheLatestTextBox) {
  const Bytes first = record(0xF00D, 0, 0, ByteWriter().u16(0).u16(3).take());
  const Bytes second = record(0xF00C, 0, 0, ByteWriter().u16(0).u16(4).take());
  EXPECT_EQ(shapeOf({first, second})->GetTextBox().u16(2), 4);
  EXPECT_EQ(shapeOf({second, first})->GetTextBox().u16(2), 3);
}

TEST(Shape, HasATextBoxAlsoIfItsRecordIsEmpty) {
  EXPECT_NE(shapeOf({record(0xF00D, 0, 0, {})})->GetTextBox().data(), nullptr);
  EXPECT_EQ(ReadShape(shape(1))->GetTextBox().data(), nullptr);
}

TEST(Shape, HasItsOwnPropertiesAndThoseOfTheUser) {
  const ReadShape read =
      shapeOf({Props().number(4, 1).bytes(0xF00B), Props().number(4, 2).number(5, 3).bytes(0xF122)});
  EXPECT_EQ(read->GetProperties().GetCount(), 1u);
  EXPECT_EQ(read->GetUDefProperties().GetCount(), 2u);
}

TEST(Shape, IgnoresOtherRecords) {
  const ReadShape read = shapeOf({record(0xF009, 0, 1, Bytes(16, 1)), record(0xF121, 1, 3, Bytes(6)),
                                  record(0x1234, 0, 0, {1}), fsp(1, 5, kShapeFlags)});
  EXPECT_EQ(read->GetShapeID(), 5u);
  EXPECT_EQ(read->GetProperties().GetCount(), 0u);
  EXPECT_THAT(boundsOf(*read), ElementsAre(0, 0, 0, 0));
}

TEST(Shape, ThatIsNoGroupHasNoChildren) {
  const ReadShape read(shape(1));
  EXPECT_EQ(read->GetChildCount(), 0u);
  EXPECT_FALSE(read->GetChildShape(0).Good());
}

TEST(Shape, OfANullHandleIsEmpty) {
  const MsoROShape null;
  EXPECT_FALSE(null.Good());
  EXPECT_EQ(null.GetGrfValue() + null.GetShapeID() + null.GetShapeType() + null.GetZOrder(), 0u);
  EXPECT_EQ(null.GetChildCount(), 0u);
  EXPECT_EQ(null.GetTextBox().data(), nullptr);
  EXPECT_THAT(anchorOf(null), ElementsAre(0, 0, 0, 0));
  EXPECT_THAT(boundsOf(null), ElementsAre(0, 0, 0, 0));
}

// Groups.

TEST(Group, HasItsChildrenInOrder) {
  const ReadShape read(group({kSelf}, {shape(1), shape(2), shape(3)}), 5);
  ASSERT_TRUE(read->Good());
  EXPECT_TRUE(read->IsGroupShape());
  EXPECT_EQ(read->GetZOrder(), 5u);
  ASSERT_EQ(read->GetChildCount(), 3u);
  for (unsigned int i = 0; i < 3; ++i) {
    EXPECT_EQ(read->GetChildShape(i).GetShapeID(), i + 1);
    EXPECT_EQ(read->GetChildShape(i).GetZOrder(), i + 1);
  }
  EXPECT_FALSE(read->GetChildShape(3).Good());
}

TEST(Group, HasACoordinateSpace) {
  const ReadShape read(group({rect(0xF009, 0xFFFFFFFE, 2, 3, 4), kSelf}));
  EXPECT_THAT(boundsOf(*read), ElementsAre(-2, 2, 3, 4));
}

TEST(Group, HoldsGroups) {
  const ReadShape read(group({kSelf}, {shape(1), group({fsp(0, 2, kGroupFlags)}, {shape(3)})}));
  const MsoROShape inner = read->GetChildShape(1);
  EXPECT_EQ(inner.GetShapeID(), 2u);
  EXPECT_EQ(inner.GetZOrder(), 2u);
  ASSERT_EQ(inner.GetChildCount(), 1u);
  EXPECT_EQ(inner.GetChildShape(0).GetZOrder(), 1u);
}

TEST(Group, WhoseFirstRecordIsNoShapeLeavesTheHandleAsItWas) {
  const Bytes bad = container(0xF003, {record(0xF00B, 0, 3, {}), container(0xF004, {kSelf})});
  EXPECT_FALSE(ReadShape(bad)->Good());
  EXPECT_FALSE(ReadShape(container(0xF003, {}))->Good());

  const ReadShape other(shape(9));
  MsoROShape handle = *other;
  ChainAllocator allocator;
  handle.InitGroupShape(firstRecord(bad), allocator, 0);
  EXPECT_EQ(handle.GetShapeID(), 9u);
}

TEST(Group, ThatIsNoneByItsFlagsIsNull) {
  EXPECT_FALSE(ReadShape(group({fsp(0, 1, kShapeFlags)}, {shape(2)}))->Good());
}

TEST(Group, WithoutFlagsOfItsOwnIsOne) {
  const ReadShape read(group({}, {shape(2)}));
  ASSERT_TRUE(read->Good());
  EXPECT_EQ(read->GetGrfValue(), 0x201u);
  EXPECT_EQ(read->GetChildCount(), 1u);
}

TEST(Group, HasANullChildForEachBadOne) {
  const Bytes badShape = container(0xF004, {kSelf});
  const Bytes badGroup = container(0xF003, {});
  const ReadShape read(group({kSelf}, {badShape, badGroup, shape(3)}));
  ASSERT_EQ(read->GetChildCount(), 3u);
  EXPECT_FALSE(read->GetChildShape(0).Good());
  EXPECT_FALSE(read->GetChildShape(1).Good());
  EXPECT_EQ(read->GetChildShape(2).GetZOrder(), 3u);
}

TEST(Group, DoesNotCountOtherRecords) {
  const ReadShape read(group({kSelf}, {record(0xF005, 0, 0, {}), shape(1)}));
  ASSERT_EQ(read->GetChildCount(), 1u);
  EXPECT_EQ(read->GetChildShape(0).GetZOrder(), 1u);
}

/// Groups one in the other: how many lie inside the outermost one.
unsigned int depthReadOf(unsigned int nested) {
  Bytes bytes = group({kSelf});
  for (unsigned int i = 0; i < nested; ++i) bytes = group({kSelf}, {bytes});
  const ReadShape read(bytes);
  unsigned int depth = 0;
  for (MsoROShape at = *read; (at = at.GetChildShape(0)).Good();) ++depth;
  return depth;
}

TEST(Group, IsDroppedBelow64Levels) {
  EXPECT_EQ(depthReadOf(63), 63u);
  EXPECT_EQ(depthReadOf(64), 64u);
  EXPECT_EQ(depthReadOf(65), 64u);
  EXPECT_EQ(depthReadOf(5000), 64u);
}

}  // namespace
