#include "drawing/query_prop.h"

#include <gtest/gtest.h>

#include "base/fixed_point.h"
#include "read_drawing.h"

using namespace drawing_test;

namespace {

/// A shape with these properties of its own and of the user.
ReadShape shapeWith(const Props& own, const Props& user = {}) {
  return ReadShape(Shape(1).props(own).userProps(user).bytes());
}

TEST(QueryProp, GivesTheRawProperty) {
  const ReadShape shape = shapeWith(Props().number(0x4104, 7));
  MsoROShapeProp property;
  EXPECT_TRUE(KQueryProp::QueryProp(&*shape, 0x104, property));
  EXPECT_EQ(property.word, 0x4104);
  EXPECT_FALSE(KQueryProp::QueryProp(&*shape, 0x105, property));
}

TEST(QueryProp, KeepsTheTwoTablesApart) {
  const ReadShape shape = shapeWith(Props().number(4, 1), Props().number(5, 2).flag(0x1BA, true));
  int value = 0;
  EXPECT_TRUE(KQueryProp::QueryI4Prop(&*shape, 4, value));
  EXPECT_FALSE(KQueryProp::QueryI4UDefProp(&*shape, 4, value));
  EXPECT_TRUE(KQueryProp::QueryI4UDefProp(&*shape, 5, value));
  EXPECT_EQ(value, 2);
  bool flag = false;
  EXPECT_FALSE(KQueryProp::QueryBoolProp(&*shape, 0x1BA, flag));
  EXPECT_TRUE(KQueryProp::QueryBoolUDefProp(&*shape, 0x1BA, flag));
  EXPECT_TRUE(flag);
}

TEST(QueryProp, LeavesTheOutputWhereNothingIsFound) {
  const ReadShape shape = shapeWith(Props().number(4, 1));
  int number = 91440;
  float real = 0.5f;
  bool flag = true;
  EXPECT_FALSE(KQueryProp::QueryI4Prop(&*shape, 0x81, number));
  EXPECT_FALSE(KQueryProp::QueryFloatProp(&*shape, 0x81, real));
  EXPECT_FALSE(KQueryProp::QueryBoolProp(&*shape, 0x1BB, flag));
  EXPECT_EQ(number, 91440);
  EXPECT_EQ(real, 0.5f);
  EXPECT_TRUE(flag);
}

TEST(QueryProp, LeavesTheDefaultOfAFlagWhoseUseBitIsClear) {
  const ReadShape shape = shapeWith(Props().number(0x1BF, 0x0000FFFF));
  bool flag = false;
  EXPECT_FALSE(KQueryProp::QueryBoolProp(&*shape, 0x1BB, flag));
  EXPECT_FALSE(flag);
}

TEST(QueryProp, GivesIntegersSigned) {
  const ReadShape shape = shapeWith(Props().number(4, 0xFFFFFFFE));
  int value = 0;
  EXPECT_TRUE(KQueryProp::QueryI4Prop(&*shape, 4, value));
  EXPECT_EQ(value, -2);
}

TEST(QueryProp, TruncatesWhatAConverterMakesTowardZero) {
  const ReadShape shape = shapeWith(Props().fixed(4, 2.75).fixed(5, -2.75));
  int value = 0;
  EXPECT_TRUE(KQueryProp::QueryI4Prop(&*shape, 4, value, FixNumConv));
  EXPECT_EQ(value, 2);
  EXPECT_TRUE(KQueryProp::QueryI4Prop(&*shape, 5, value, FixNumConv));
  EXPECT_EQ(value, -2);
}

TEST(QueryProp, HoldsConvertedValuesInTheRangeOfIntegers) {
  const ReadShape shape = shapeWith(Props().number(4, 1));
  int value = 0;
  KQueryProp::QueryI4Prop(&*shape, 4, value, [](int) { return 1e20f; });
  EXPECT_EQ(value, INT32_MAX);
  KQueryProp::QueryI4Prop(&*shape, 4, value, [](int) { return -1e20f; });
  EXPECT_EQ(value, INT32_MIN);
}

TEST(QueryProp, GivesFloatsUnsignedUnlessConverted) {
  const ReadShape shape = shapeWith(Props().number(4, 0xFFFF0000));
  float value = 0;
  EXPECT_TRUE(KQueryProp::QueryFloatProp(&*shape, 4, value));
  EXPECT_EQ(value, 4294901760.0f);
  EXPECT_TRUE(KQueryProp::QueryFloatProp(&*shape, 4, value, FixNumConv));
  EXPECT_EQ(value, -1.0f);
}

TEST(QueryProp, GivesTextUpToItsZero) {
  const Bytes units = ByteWriter().text16(u"one").u16(0).text16(u"two").take();
  const ReadShape shape = shapeWith(Props().complex(0x105, units), Props().text(0x106, u"user"));
  std::u16string text = u"before";
  EXPECT_TRUE(KQueryProp::QueryBstrProp(&*shape, 0x105, text));
  EXPECT_EQ(text, u"one");
  EXPECT_TRUE(KQueryProp::QueryBstrUDefProp(&*shape, 0x106, text));
  EXPECT_EQ(text, u"user");
}

TEST(QueryProp, CutsTextThatHasNoZero) {
  const ReadShape shape = shapeWith(Props().complex(0x105, {'a', 0, 'b', 0, 'c'}));
  std::u16string text;
  EXPECT_TRUE(KQueryProp::QueryBstrProp(&*shape, 0x105, text));
  EXPECT_EQ(text, u"ab");
}

TEST(QueryProp, HasNoEmptyText) {
  const ReadShape shape = shapeWith(Props().text(0x105, u"").number(0x106, 5).complex(0x107, {}));
  for (const PID id : {0x104, 0x105, 0x106, 0x107}) {
    std::u16string text = u"before";
    EXPECT_FALSE(KQueryProp::QueryBstrProp(&*shape, id, text)) << id;
    EXPECT_EQ(text, u"") << "the output is cleared all the same";
  }
}

TEST(QueryProp, FindsNothingInANullShape) {
  const MsoROShape null;
  int value = 5;
  EXPECT_FALSE(KQueryProp::QueryI4Prop(&null, 4, value));
  EXPECT_FALSE(KQueryProp::QueryI4Prop(nullptr, 4, value));
  EXPECT_EQ(value, 5);
}

}  // namespace
