#include <gtest/gtest.h>

#include <random>

#include "base/fixed_point.h"
#include "drawing/colour_format.h"
#include "drawing/drawing.h"
#include "drawing/query_prop.h"
#include "support/drawing_writer.h"

namespace {

using mso_escher::MsoRORecInfo;
using mso_escher::MsoRORecords;
using mso_escher::MsoROShape;
using mso_escher::MsoROShapeOPT;
using mso_escher::MsoROShapeProp;
using support::Bytes;
using support::ByteWriter;
using support::drawing::container;
using support::drawing::Props;
using support::drawing::record;

ByteView view(const Bytes& bytes) {
  return ByteView(bytes.data(), bytes.size());
}

Bytes joined(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

MsoRORecInfo first(const Bytes& bytes) {
  MsoRORecInfo found;
  EXPECT_EQ(MsoRORecords(view(bytes)).Next(&found), Status::kOk);
  return found;
}

Bytes fsp(uint16_t type, uint32_t id, uint32_t flags) {
  return record(0xF00A, type, 2, ByteWriter().u32(id).u32(flags).take());
}
Bytes shape(uint32_t id, uint32_t flags = 0xA00, const Bytes& more = {}) {
  return container(0xF004, {fsp(1, id, flags), more});
}
Bytes group(const Bytes& own, const std::vector<Bytes>& children) {
  std::vector<Bytes> records = {own};
  records.insert(records.end(), children.begin(), children.end());
  return container(0xF003, records);
}

/// A drawing table that was read, with the bytes that it points into.
struct ReadDrawing {
  explicit ReadDrawing(Bytes table) : bytes(std::move(table)) {
    status = info.ReadRecord(view(bytes), allocator);
  }
  Bytes bytes;
  ChainAllocator allocator;
  KDRDggInfo info;
  Status status = Status::kFailure;
};

Bytes drawing(uint8_t label, const std::vector<Bytes>& records) {
  return joined({{label}, container(0xF002, records)});
}

// Records.

TEST(EscherRecords, ARecordThatOverrunsItsParentIsShortenedAndTheLast) {
  Bytes bytes = joined({record(0xF00D, 0, 0, Bytes(10, 1)), record(0xF00E, 0, 0, Bytes(4, 2))});
  support::patchInteger(bytes, 4, uint32_t{1000});
  MsoRORecords records(view(bytes));
  MsoRORecInfo found;
  ASSERT_EQ(records.Next(&found), Status::kOk);
  EXPECT_EQ(found.body.size(), bytes.size() - 8);
  EXPECT_EQ(records.Next(&found), Status::kNothing);
}

TEST(EscherRecords, ANegativeLengthEndsTheWalk) {
  Bytes bytes = record(0xF00D, 0, 0, Bytes(10, 1));
  support::patchInteger(bytes, 4, uint32_t{0x80000000});
  MsoRORecInfo found;
  EXPECT_EQ(MsoRORecords(view(bytes)).Next(&found), Status::kNothing);
}

// The drawing table.

TEST(DrawingTable, OneThatEndsBehindTheGroupSucceedsWithEmptyDrawings) {
  const ReadDrawing read(container(0xF000, {}));
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_FALSE(read.info.GetDrawing(0).GetRootShape().Good());
  EXPECT_EQ(read.info.GetDrawingGroup().GetBlipStore().GetCount(), 0u);
}

TEST(DrawingTable, ALabelOfTwoStopsTheReading) {
  const ReadDrawing read(
      joined({container(0xF000, {container(0xF001, {record(0xF007, 6, 2, Bytes(36, 0))})}),
              drawing(0, {group(shape(1, 0x201), {})}), drawing(2, {group(shape(9, 0x201), {})})}));
  EXPECT_EQ(read.status, Status::kMalformed);
  EXPECT_EQ(read.info.GetDrawingGroup().GetBlipStore().GetCount(), 1u);
  EXPECT_EQ(read.info.GetDrawing(0).GetRootShape().GetShapeID(), 1u);
}

TEST(DrawingTable, OneWithoutAGroupIsMalformed) {
  EXPECT_EQ(ReadDrawing(container(0xF002, {})).status, Status::kMalformed);
  EXPECT_EQ(ReadDrawing(Bytes{}).status, Status::kMalformed);
}

TEST(DrawingTable, OnlyTheFirstGroupAndTheFirstShapeCount) {
  const ReadDrawing read(
      joined({container(0xF000, {}),
              drawing(0, {group(shape(1, 0x201), {}), group(shape(2, 0x201), {}), shape(3), shape(4)}),
              drawing(1, {group(shape(7, 0x201), {})})}));
  EXPECT_EQ(read.info.GetDrawing(0).GetRootShape().GetShapeID(), 1u);
  EXPECT_EQ(read.info.GetDrawing(0).GetBackgroundShape().GetShapeID(), 3u);
  EXPECT_EQ(read.info.GetDrawing(1).GetRootShape().GetShapeID(), 7u);
}

// Shapes.

MsoROShape readShape(const Bytes& bytes, ChainAllocator& allocator) {
  MsoROShape read;
  read.InitShape(first(bytes), allocator, 5);
  return read;
}

TEST(Shapes, AShapeTellsWhatItsRecordsSay) {
  ChainAllocator allocator;
  const Bytes bytes =
      container(0xF004, {fsp(202, 1030, 0xA42), record(0xF00D, 0, 0, {0, 0, 3, 0}),
                         record(0xF010, 0, 0, ByteWriter().u32(1).u32(2).u32(3).u32(4).take())});
  const MsoROShape read = readShape(bytes, allocator);
  EXPECT_EQ(read.GetShapeID(), 1030u);
  EXPECT_EQ(read.GetShapeType(), 202u);
  EXPECT_EQ(read.GetZOrder(), 5u);
  EXPECT_TRUE(read.IsChildShape());
  EXPECT_EQ(read.GetTextBox().u16(2), 3);
  tagRECT anchor;
  read.GetChildAnchor(anchor);
  EXPECT_EQ(anchor.bottom, 4);
}

TEST(Shapes, AShapeThatClaimsToBeAGroupIsDropped) {
  ChainAllocator allocator;
  EXPECT_FALSE(readShape(shape(1, 0x201), allocator).Good());
}

TEST(Shapes, AShapeWithoutAnAnchorHasZeros) {
  ChainAllocator allocator;
  tagRECT anchor{1, 2, 3, 4};
  readShape(shape(1), allocator).GetChildAnchor(anchor);
  EXPECT_EQ(anchor.left | anchor.top | anchor.right | anchor.bottom, 0);
}

TEST(Groups, OneWhoseFirstRecordIsNoShapeLeavesTheHandleUnset) {
  ChainAllocator allocator;
  const Bytes bytes = container(0xF003, {record(0xF00D, 0, 0, {}), shape(1, 0x201)});
  MsoROShape read;
  read.InitGroupShape(first(bytes), allocator, 0);
  EXPECT_FALSE(read.Good());
}

TEST(Groups, ChildrenStandInTheirOrderNullOnesIncluded) {
  ChainAllocator allocator;
  const Bytes own = container(
      0xF004, {record(0xF009, 0, 1, ByteWriter().u32(0).u32(0).u32(100).u32(50).take()), fsp(0, 1, 0x201)});
  const Bytes bytes = group(own, {shape(2), shape(3, 0x201), group(shape(4, 0x201), {shape(5)})});
  MsoROShape read;
  read.InitGroupShape(first(bytes), allocator, 0);
  ASSERT_EQ(read.GetChildCount(), 3u);
  EXPECT_EQ(read.GetChildShape(0).GetZOrder(), 1u);
  EXPECT_FALSE(read.GetChildShape(1).Good());
  EXPECT_EQ(read.GetChildShape(2).GetZOrder(), 3u);
  EXPECT_EQ(read.GetChildShape(2).GetChildShape(0).GetShapeID(), 5u);
  EXPECT_FALSE(read.GetChildShape(3).Good());
  tagRECT bounds;
  read.GetGroupCoordBounds(bounds);
  EXPECT_EQ(bounds.right, 100);
}

TEST(Groups, OnesNestedMoreThan64DeepAreDropped) {
  ChainAllocator allocator;
  Bytes bytes = group(shape(1000, 0x201), {shape(1)});
  for (uint32_t depth = 0; depth < 200; ++depth) bytes = group(shape(depth, 0x201), {bytes});
  MsoROShape read;
  read.InitGroupShape(first(bytes), allocator, 0);
  int depth = 0;
  while (read.GetChildCount() == 1 && read.GetChildShape(0).Good()) {
    read = read.GetChildShape(0);
    ++depth;
  }
  EXPECT_EQ(depth, 64);
}

// Properties.

struct Table {
  explicit Table(Bytes tableBytes) : bytes(std::move(tableBytes)) { table.Init(first(bytes)); }
  explicit Table(const Props& props) : Table(props.bytes(0xF00B)) {}
  Bytes bytes;
  MsoROShapeOPT table;
};

TEST(Properties, AFlagWhoseUseBitIsClearIsNotSet) {
  const Table open(Props().number(0x01BF, 0x00000010));
  bool value = true;
  EXPECT_NE(open.table.FindBool(0x01BB, value), Status::kOk);
  EXPECT_TRUE(value);
  const Table set(Props().number(0x01BF, 0x00100010));
  EXPECT_EQ(set.table.FindBool(0x01BB, value), Status::kOk);
  EXPECT_TRUE(value);
  const Table off(Props().number(0x01BF, 0x00100000));
  EXPECT_EQ(off.table.FindBool(0x01BB, value), Status::kOk);
  EXPECT_FALSE(value);
}

TEST(Properties, ANumberBelow48InItsGroupIsNoFlag) {
  const Table table(Props().number(0x01BF, 0xFFFFFFFF));
  bool value = false;
  EXPECT_NE(table.table.FindBool(0x0180, value), Status::kOk);
}

TEST(Properties, AComplexOneOfLengthZeroHasNoDataAndMovesNothing) {
  const Table table(Props().complex(0x0105, {}).complex(0x0187, {1, 2}));
  MsoROShapeProp found;
  ASSERT_EQ(table.table.Find(0x0105, &found), Status::kOk);
  EXPECT_TRUE(found.data.empty());
  ASSERT_EQ(table.table.Find(0x0187, &found), Status::kOk);
  EXPECT_EQ(found.data.u8(1), 2);
}

TEST(Properties, ANegativeElementSizeIsAQuarterAndWrittenBack) {
  Table table(Props().array(0x0145, 2, 0xFFF0, Bytes(8, 9)).complex(0x0105, {7, 0}));
  MsoROShapeProp found;
  for (int again = 0; again < 2; ++again) {
    ASSERT_EQ(table.table.Find(0x0145, &found), Status::kOk);
    EXPECT_EQ(found.operand, 2u * 4 + 6);
    EXPECT_EQ(found.data.u16(4), 4);
    EXPECT_EQ(object::CMsoArray(found.data).GetItemCount(), 2u);
    EXPECT_EQ(object::CMsoArray(found.data).GetEle(1).size(), 4u);
    ASSERT_EQ(table.table.Find(0x0105, &found), Status::kOk);
    EXPECT_EQ(found.data.u8(0), 7);
  }
}

TEST(Properties, ATableWithoutBodyHasNone) {
  MsoROShapeOPT table;
  EXPECT_EQ(table.Find(4, nullptr), Status::kNoProperty);
  table.InitMap();
  EXPECT_EQ(table.Find(4, nullptr), Status::kNoProperty);
}

TEST(Properties, OfTwoWithOneNumberTheFirstCountsWithAndWithoutMap) {
  Table table(Props().number(4, 1).number(4, 2));
  MsoROShapeProp found;
  for (const bool map : {false, true}) {
    if (map) table.table.InitMap();
    ASSERT_EQ(table.table.Find(4, &found), Status::kOk);
    EXPECT_EQ(found.operand, 1u);
  }
  table.table.ClearMap();
  EXPECT_EQ(table.table.Find(5, nullptr), Status::kNoProperty);
}

TEST(Properties, ACountBeyondTheRecordIsCut) {
  Bytes bytes = Props().number(4, 1).bytes(0xF00B);
  support::patchInteger(bytes, 0, uint16_t{0xFFF3});
  EXPECT_EQ(Table(bytes).table.GetCount(), 1u);
}

TEST(QueryProp, KeepsTheDefaultOfWhatIsNotThere) {
  ChainAllocator allocator;
  const Bytes bytes = shape(1, 0xA00,
                            Props()
                                .number(4, 0xFFFF0000)
                                .complex(0x0105, {'a', 0, 0, 0, 'b', 0})
                                .complex(0x0187, {0, 0})
                                .bytes(0xF00B));
  const MsoROShape read = readShape(bytes, allocator);
  int number = 17;
  EXPECT_FALSE(KQueryProp::QueryI4Prop(&read, 5, number));
  EXPECT_EQ(number, 17);
  ASSERT_TRUE(KQueryProp::QueryI4Prop(&read, 4, number));
  EXPECT_EQ(number, -65536);
  ASSERT_TRUE(KQueryProp::QueryI4Prop(&read, 4, number, FixNumConv));
  EXPECT_EQ(number, -1);
  float value = 0;
  ASSERT_TRUE(KQueryProp::QueryFloatProp(&read, 4, value));
  EXPECT_EQ(value, 4294901760.0f);
  std::u16string text = u"old";
  EXPECT_TRUE(KQueryProp::QueryBstrProp(&read, 0x0105, text));
  EXPECT_EQ(text, u"a");
  EXPECT_FALSE(KQueryProp::QueryBstrProp(&read, 0x0187, text));
  EXPECT_EQ(text, u"");
  bool flag = true;
  EXPECT_FALSE(KQueryProp::QueryBoolUDefProp(&read, 0x01BB, flag));
  EXPECT_FALSE(KQueryProp::QueryBoolProp(nullptr, 0x01BB, flag));
}

// Helpers.

TEST(ShapeGeometry, WhichAnglesSwapWidthAndHeight) {
  for (const int angle : {45, -45, 134, -134, 225, 314, 45 + 360, -45 - 720})
    EXPECT_TRUE(object::IsChangeRect(angle)) << angle;
  for (const int angle : {44, -44, 135, -135, 0, 180, 315, 224})
    EXPECT_FALSE(object::IsChangeRect(angle)) << angle;
}

TEST(ShapeGeometry, ATurnedBoxKeepsItsCentre) {
  FRECT rect{10, 20, 100, 40};
  object::GetShapeBoundRect(90, rect);
  EXPECT_EQ(rect.left, 40);
  EXPECT_EQ(rect.top, -10);
  EXPECT_EQ(rect.width, 40);
  EXPECT_EQ(rect.height, 100);
  object::GetShapeBoundRect(180, rect);
  EXPECT_EQ(rect.width, 40);
}

TEST(ShapeGeometry, SixteenBitPointsAreNotSignExtended) {
  const Bytes bytes = {0xFF, 0xFF, 1, 0};
  tagPOINT points[2];
  GPoint4ToPoint(view(bytes), points, 2);
  EXPECT_EQ(points[0].x, 65535);
  EXPECT_EQ(points[1].x, 0);
}

TEST(FixedPoint, MinusOneIsMinusOne) {
  EXPECT_EQ(FixNumConv(static_cast<int>(0xFFFF0000)), -1.0f);
}

std::string colour(uint32_t value) {
  NumberText text;
  object::GetColorFormat(value, &text);
  return text.c_str();
}

TEST(ColourFormat, ByItsTopByte) {
  EXPECT_EQ(colour(0x00112233), "#332211");
  EXPECT_EQ(colour(0xFE112233), "#332211");
  EXPECT_EQ(colour(0x08000002), "#FF0000");
  EXPECT_EQ(colour(0x0800003F), "#333333");
  EXPECT_EQ(colour(0x08000040), "windowText [64]");
  EXPECT_EQ(colour(0x08000041), "window [65]");
  EXPECT_EQ(colour(0x08000050), "infoBackground [80]");
  EXPECT_EQ(colour(0x08000042), "");
  EXPECT_EQ(colour(0x10640000), "shadow add(100)");
  EXPECT_EQ(colour(0x01000000), "");
  EXPECT_EQ(colour(0x77000000), "");
  object::GetColorFormat(0x00112233, nullptr);
}

TEST(DamagedDrawings, RandomBytesAreReadWithoutHarm) {
  std::minstd_rand random(7);
  const Bytes sound =
      joined({container(0xF000, {container(0xF001, {record(0xF007, 6, 2, Bytes(60, 1))}),
                                 Props().number(4, 1).bytes(0xF00B)}),
              drawing(0, {group(shape(1, 0x201),
                                {shape(2, 0xA00, Props().array(0x0145, 3, 8, Bytes(24, 3)).bytes(0xF00B)),
                                 group(shape(3, 0x201), {shape(4)})})})});
  for (int i = 0; i < 3000; ++i) {
    Bytes bytes = sound;
    for (unsigned edits = 1 + random() % 6; edits > 0; --edits) {
      bytes[random() % bytes.size()] = static_cast<uint8_t>(random() >> 8);
    }
    const ReadDrawing read(bytes);
    const MsoROShape& root = read.info.GetDrawing(0).GetRootShape();
    for (unsigned c = 0; c < root.GetChildCount(); ++c) {
      const MsoROShape child = root.GetChildShape(c);
      if (!child.Good()) continue;
      child.GetProperties().InitMap();
      child.GetProperties().ClearMap();
    }
    for (unsigned b = 0; b < read.info.GetDrawingGroup().GetBlipStore().GetCount(); ++b) {
      read.info.GetDrawingGroup().GetBlipStore().GetBlipNoDelayStrm(b);
    }
  }
}

}  // namespace
