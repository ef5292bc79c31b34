#include <gtest/gtest.h>

#include "drawing/query_prop.h"
#include "records.h"

using namespace escher;
using namespace support;
using mso_escher::MsoROShape;
using mso_escher::MsoROShapeProp;

namespace {

Bytes nestedGroups(unsigned depth) {
  Bytes made = group(depth, {});
  while (depth-- > 0) made = group(depth, {made});
  return made;
}

float halved(int value) {
  return static_cast<float>(value) / 2;
}

}  // namespace

TEST(Shape, TakesItsIdentityFromItsRecord) {
  const ReadShape read(shape({fsp(75, 1026, 0xA40), clientTextBox(0x00030000)}));
  EXPECT_EQ(read.shape.GetShapeID(), 1026u);
  EXPECT_EQ(read.shape.GetShapeType(), 75u);
  EXPECT_EQ(read.shape.GetGrfValue(), 0xA40u);
  EXPECT_EQ(read.shape.GetTextBox().u32(0), 0x00030000u);
}

TEST(Shape, WithoutIdentityHasTheFlagsOfANewOne) {
  EXPECT_EQ(ReadShape(shape({})).shape.GetGrfValue(), 0xA00u);
  EXPECT_EQ(ReadShape(container(0xF003, {shape({})})).shape.GetGrfValue(), 0x201u);
}

TEST(Shape, ThatClaimsToBeAGroupIsDropped) {
  EXPECT_FALSE(ReadShape(shape({fsp(75, 1, 0x201)})).shape.Good());
}

TEST(Shape, TakesTheLatestAnchor) {
  const ReadShape read(shape({childAnchor(1, 2, 3, 4), childAnchor(-5, 6, 7, 8)}));
  tagRECT anchor;
  read.shape.GetChildAnchor(anchor);
  EXPECT_EQ(anchor.left, -5);
  EXPECT_EQ(anchor.bottom, 8);
}

TEST(Shape, WithoutAnchorHasAnEmptyBox) {
  tagRECT anchor{1, 2, 3, 4};
  ReadShape(plainShape(1)).shape.GetChildAnchor(anchor);
  EXPECT_EQ(anchor.left, 0);
  EXPECT_EQ(anchor.bottom, 0);
}

TEST(Group, HoldsItsChildrenInOrder) {
  const ReadShape read(group(1, {plainShape(2), atom(0xF005, 0, {}), group(3, {plainShape(4)})}));
  ASSERT_EQ(read.shape.GetChildCount(), 2u);
  EXPECT_EQ(read.shape.GetChildShape(0).GetZOrder(), 1u);
  EXPECT_EQ(read.shape.GetChildShape(1).GetZOrder(), 2u);
  EXPECT_EQ(read.shape.GetChildShape(1).GetChildShape(0).GetShapeID(), 4u);
}

TEST(Group, HasBounds) {
  tagRECT bounds;
  ReadShape(group(1, {})).shape.GetGroupCoordBounds(bounds);
  EXPECT_EQ(bounds.left, 0);
  EXPECT_EQ(bounds.right, 1000);
  EXPECT_EQ(bounds.bottom, 2000);
}

TEST(Group, WhoseFirstRecordIsNoShapeContainerLeavesTheHandleUnset) {
  EXPECT_FALSE(ReadShape(container(0xF003, {fsp(0, 1, 0x201), plainShape(2)})).shape.Good());
  EXPECT_FALSE(ReadShape(container(0xF003, {})).shape.Good());
}

TEST(Group, ThatDeniesToBeOneIsDropped) {
  EXPECT_FALSE(ReadShape(container(0xF003, {plainShape(1), plainShape(2)})).shape.Good());
}

TEST(Group, KeepsThePlaceOfAChildThatIsDropped) {
  const ReadShape read(group(1, {shape({fsp(0, 2, 0x201)}), plainShape(3)}));
  ASSERT_EQ(read.shape.GetChildCount(), 2u);
  EXPECT_FALSE(read.shape.GetChildShape(0).Good());
  EXPECT_EQ(read.shape.GetChildShape(0).GetChildCount(), 0u);
  EXPECT_EQ(read.shape.GetChildShape(1).GetZOrder(), 2u);
}

TEST(Group, NestedMoreThan64DeepIsDropped) {
  const ReadShape read(nestedGroups(70));
  MsoROShape at = read.shape;
  for (unsigned depth = 0; depth < 64; ++depth) at = at.GetChildShape(0);
  EXPECT_EQ(at.GetShapeID(), 64u);
  ASSERT_EQ(at.GetChildCount(), 1u);
  EXPECT_FALSE(at.GetChildShape(0).Good());
}

TEST(Group, GivesNoChildOutside) {
  EXPECT_FALSE(ReadShape(group(1, {plainShape(2)})).shape.GetChildShape(1).Good());
  EXPECT_EQ(MsoROShape().GetChildCount(), 0u);
}

TEST(PropertyTable, WithoutBodyHasNoProperties) {
  MsoROShapeProp property;
  mso_escher::MsoROShapeOPT none;
  none.InitMap();
  EXPECT_NE(none.Find(4, &property), Status::kOk);
  EXPECT_EQ(mso_escher::MsoROShapeOPT::Enumerator(none).Next(&property), Status::kNothing);
  EXPECT_EQ(ReadTable(atom(0xF00B, 9, {})).table.GetCount(), 0u);
}

TEST(PropertyTable, FindsTheFirstOfANumberWithAndWithoutMap) {
  ReadTable read(propertyTable({{0x4104, 1}, {4, 7}, {4, 8}}));
  MsoROShapeProp property;
  for (int pass = 0; pass < 2; ++pass, read.table.InitMap()) {
    ASSERT_EQ(read.table.Find(4, &property), Status::kOk);
    EXPECT_EQ(property.operand, 7u);
    EXPECT_EQ(read.table.Find(0x104, nullptr), Status::kOk);
    EXPECT_NE(read.table.Find(5, &property), Status::kOk);
  }
  read.table.ClearMap();
  EXPECT_EQ(read.table.Find(4, nullptr), Status::kOk);
}

TEST(PropertyTable, ComplexPropertyOfNoLengthHasNoDataAndMovesNothing) {
  const ReadTable read(propertyTable({complexProperty(0xC0, {}), complexProperty(0xC5, {1, 2})}));
  MsoROShapeProp property;
  read.table.Find(0xC0, &property);
  EXPECT_EQ(property.data.data(), nullptr);
  read.table.Find(0xC5, &property);
  EXPECT_EQ(property.data.u16(0), 0x0201u);
}

TEST(PropertyTable, NegativeElementSizeIsAQuarterOfItAndWrittenBack) {
  const ReadTable read(propertyTable(
      {arrayProperty(0x145, 2, 0xFFF0, {1, 1, 1, 1, 2, 2, 2, 2}), complexProperty(0xC0, {9, 8})}));
  MsoROShapeProp property;
  for (int pass = 0; pass < 2; ++pass) {
    ASSERT_EQ(read.table.Find(0x145, &property), Status::kOk);
    EXPECT_EQ(property.operand, 14u);
    EXPECT_EQ(property.data.u16(4), 4u);
    EXPECT_EQ(object::CMsoArray(property.data).GetEle(1).u32(0), 0x02020202u);
    read.table.Find(0xC0, &property);
    EXPECT_EQ(property.data.u16(0), 0x0809u);
  }
}

TEST(PropertyTable, DataThatRunsPastTheEndIsCut) {
  ShapeProperty text = textProperty(0xC0, u"abc");
  text.operand = 0x7FFFFFFF;
  const ReadShape read(shape({propertyTable({text})}));
  std::u16string found;
  EXPECT_TRUE(KQueryProp::QueryBstrProp(&read.shape, 0xC0, found));
  EXPECT_EQ(found, u"abc");
}

TEST(PropertyTable, ThatIsCutHasTheRestAndNoData) {
  Bytes cut = propertyTable({{0x8004, 4}, {5, 2}});
  cut.resize(cut.size() - 2);
  const ReadTable read(cut);
  MsoROShapeProp property;
  EXPECT_EQ(read.table.GetCount(), 1u);
  EXPECT_EQ(read.table.Find(4, &property), Status::kOk);
  EXPECT_TRUE(property.data.empty());
}

TEST(ArrayProperty, HasAtMostTheElementsThatAreThere) {
  const ReadTable read(propertyTable({arrayProperty(0x146, 0x7000, 2, {1, 0, 2, 0, 3})}));
  MsoROShapeProp property;
  read.table.Find(0x146, &property);
  const object::CMsoArray array(property.data);
  EXPECT_EQ(array.GetItemCount(), 2u);
  EXPECT_TRUE(array.GetEle(2).empty());
}

TEST(QueryProp, LeavesTheDefaultOfAFlagThatTheFileLeavesOpen) {
  const ReadShape read(shape({propertyTable({{0x01BF, 0x00000010}})}));
  bool filled = false;
  EXPECT_FALSE(KQueryProp::QueryBoolProp(&read.shape, 0x01BB, filled));
  EXPECT_FALSE(filled);
}

TEST(QueryProp, ReadsAFlagThatTheFileSets) {
  const ReadShape read(shape({propertyTable({{0x01BF, 0x00300010}})}));
  bool filled = false;
  EXPECT_TRUE(KQueryProp::QueryBoolProp(&read.shape, 0x01BB, filled));
  EXPECT_TRUE(filled);
  EXPECT_TRUE(KQueryProp::QueryBoolProp(&read.shape, 0x01BA, filled));
  EXPECT_FALSE(filled);
}

TEST(QueryProp, HasNoFlagBelowTheLast16OfAGroup) {
  const ReadShape read(shape({propertyTable({{0x01BF, 0xFFFFFFFF}, {0x01AF, 0xFFFFFFFF}})}));
  bool value = false;
  EXPECT_FALSE(KQueryProp::QueryBoolProp(&read.shape, 0x01AF, value));
  EXPECT_TRUE(KQueryProp::QueryBoolProp(&read.shape, 0x01B0, value));
}

TEST(QueryProp, GivesNumbersAsTheyAreOrConverted) {
  const ReadShape read(shape({propertyTable({{4, 0xFFFFFFFD}})}));
  int number = 0;
  float real = 0;
  EXPECT_TRUE(KQueryProp::QueryI4Prop(&read.shape, 4, number));
  EXPECT_EQ(number, -3);
  KQueryProp::QueryI4Prop(&read.shape, 4, number, halved);
  EXPECT_EQ(number, -1);
  KQueryProp::QueryFloatProp(&read.shape, 4, real);
  EXPECT_EQ(real, 4294967293.0f);
  KQueryProp::QueryFloatProp(&read.shape, 4, real, halved);
  EXPECT_EQ(real, -1.5f);
}

TEST(QueryProp, KeepsTheCallersValueOfWhatIsNotFound) {
  const ReadShape read(plainShape(1));
  int number = 42;
  float real = 1.5f;
  std::u16string text = u"old";
  EXPECT_FALSE(KQueryProp::QueryI4Prop(&read.shape, 4, number));
  EXPECT_FALSE(KQueryProp::QueryFloatProp(&read.shape, 4, real));
  EXPECT_FALSE(KQueryProp::QueryBstrProp(&read.shape, 4, text));
  EXPECT_EQ(number, 42);
  EXPECT_EQ(real, 1.5f);
  EXPECT_EQ(text, u"");
}

TEST(QueryProp, HasATableOfTheUsersOwn) {
  const ReadShape read(shape({propertyTable({{4, 1}}), propertyTable({{4, 2}}, 0xF122)}));
  int number = 0;
  KQueryProp::QueryI4Prop(&read.shape, 4, number);
  EXPECT_EQ(number, 1);
  KQueryProp::QueryI4UDefProp(&read.shape, 4, number);
  EXPECT_EQ(number, 2);
}

TEST(QueryProp, FindsNoEmptyText) {
  const ReadShape read(shape({propertyTable({textProperty(0xC0, u"")})}));
  std::u16string text = u"old";
  EXPECT_FALSE(KQueryProp::QueryBstrProp(&read.shape, 0xC0, text));
}
