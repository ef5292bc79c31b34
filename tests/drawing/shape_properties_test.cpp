#include "drawing/shape_properties.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "read_drawing.h"

using namespace drawing_test;
using object::CMsoArray;
using testing::ElementsAre;

namespace {

Bytes bytesOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

class Table {
 public:
  explicit Table(const Bytes& record) : bytes_(record) { table_.Init(firstRecord(bytes_)); }
  explicit Table(const Props& props) : Table(props.bytes(0xF00B)) {}

  MsoROShapeOPT* operator->() { return &table_; }
  const MsoROShapeOPT& operator*() const { return table_; }
  /// The property, all zeros if it is not found.
  MsoROShapeProp find(PID id) const {
    MsoROShapeProp property;
    table_.Find(id, &property);
    return property;
  }
  bool has(PID id) const { return table_.Find(id, nullptr) == Status::kOk; }
  std::vector<PID> ids() const {
    std::vector<PID> ids;
    MsoROShapeProp each;
    for (MsoROShapeOPT::Enumerator walk(table_); walk.Next(&each) == Status::kOk;) ids.push_back(each.id());
    return ids;
  }
  const Bytes& bytes() const { return bytes_; }

 private:
  Bytes bytes_;
  MsoROShapeOPT table_;
};

TEST(ShapeProperties, WithoutARecordAreNone) {
  MsoROShapeOPT none;
  MsoROShapeProp property;
  EXPECT_EQ(none.GetCount(), 0u);
  EXPECT_EQ(none.Find(4, &property), Status::kNoProperty);
  EXPECT_EQ(MsoROShapeOPT::Enumerator(none).Next(&property), Status::kNothing);
  none.InitMap();
  EXPECT_EQ(none.Find(4, &property), Status::kNoProperty);
}

TEST(ShapeProperties, AreFoundByTheLowBitsOfTheirWord) {
  const Table table(Props().number(0x4104, 7).number(0x0181, 8));
  EXPECT_EQ(table.find(0x0104).operand, 7u);
  EXPECT_EQ(table.find(0x0104).word, 0x4104);
  EXPECT_EQ(table.find(0x0181).operand, 8u);
  EXPECT_FALSE(table.has(0x0182));
}

TEST(ShapeProperties, AreFoundAtTheirFirstPlace) {
  EXPECT_EQ(Table(Props().number(4, 1).number(4, 2)).find(4).operand, 1u);
}

TEST(ShapeProperties, AreAsManyAsTheInstanceSays) {
  const Bytes body = ByteWriter().u16(1).u32(1).u16(2).u32(2).u16(3).u32(3).take();
  EXPECT_THAT(Table(record(0xF00B, 2, 3, body)).ids(), ElementsAre(1, 2));
}

TEST(ShapeProperties, AreCutAtTheEndOfTheRecord) {
  const Bytes body = ByteWriter().u16(1).u32(1).u16(2).u32(2).u16(3).take();
  EXPECT_THAT(Table(record(0xF00B, 4095, 3, body)).ids(), ElementsAre(1, 2));
}

TEST(ShapeProperties, OfACutTableHaveNoData) {
  const Bytes body = ByteWriter().u16(0x8004).u32(4).u16(5).u32(2).take();
  EXPECT_EQ(Table(record(0xF00B, 3, 3, body)).find(4).operand, 4u);
  EXPECT_TRUE(Table(record(0xF00B, 3, 3, body)).find(4).data.empty());
}

TEST(ShapeProperties, HaveTheirDataInTheOrderOfTheTable) {
  const Table table(Props().complex(0x381, {1, 2, 3}).number(4, 9).complex(0x382, {4, 5}));
  EXPECT_THAT(bytesOf(table.find(0x381).data), ElementsAre(1, 2, 3));
  EXPECT_THAT(bytesOf(table.find(0x382).data), ElementsAre(4, 5));
  EXPECT_EQ(table.find(4).data.data(), nullptr);
}

TEST(ShapeProperties, OfNoLengthHaveNoDataAndMoveNothing) {
  const Table table(Props().complex(0x381, {}).complex(0x382, {4, 5}));
  EXPECT_EQ(table.find(0x381).data.data(), nullptr);
  EXPECT_THAT(bytesOf(table.find(0x382).data), ElementsAre(4, 5));
}

TEST(ShapeProperties, ThatOverrunHaveTheirDataCut) {
  Bytes bytes = Props().complex(0x381, {1, 2, 3}).complex(0x382, {4}).bytes(0xF00B);
  support::patchInteger(bytes, 8 + 2, uint32_t{0xFFFFFFFE});
  const Table table(bytes);
  EXPECT_THAT(bytesOf(table.find(0x381).data), ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(table.find(0x381).operand, 0xFFFFFFFEu);
  EXPECT_TRUE(table.find(0x382).data.empty());
}

TEST(ShapeProperties, AreFoundAlikeThroughTheMap) {
  Table table(Props().complex(0x382, {4, 5}).number(4, 9).number(4, 10).array(0x145, 1, 4, Bytes(4, 1)));
  table->InitMap();
  EXPECT_EQ(table.find(4).operand, 9u);
  EXPECT_THAT(bytesOf(table.find(0x382).data), ElementsAre(4, 5));
  EXPECT_EQ(table.find(0x145).data.size(), 10u);
  EXPECT_FALSE(table.has(5));
  table->ClearMap();
  EXPECT_EQ(table.find(4).operand, 9u);
}

// Arrays.

TEST(ArrayProperties, TakeTheirLengthFromTheirOwnHeader) {
  Bytes bytes = Props().array(0x145, 2, 4, Bytes(8, 1)).complex(0x382, {4, 5}).bytes(0xF00B);
  support::patchInteger(bytes, 8 + 2, uint32_t{3});  // what the table says does not count
  const Table table(bytes);
  EXPECT_EQ(table.find(0x145).operand, 14u);
  EXPECT_EQ(table.find(0x145).data.size(), 14u);
  EXPECT_THAT(bytesOf(table.find(0x382).data), ElementsAre(4, 5));
}

TEST(ArrayProperties, AreThoseOfTheFormat) {
  for (const PID id :
       {0x145, 0x146, 0x151, 0x152, 0x155, 0x156, 0x157, 0x197, 0x1CF, 0x383, 0x206E, 0x206F, 0x2070}) {
    Bytes bytes = Props().array(id, 1, 2, Bytes(2)).bytes(0xF00B);
    support::patchInteger(bytes, 8 + 2, uint32_t{1});
    EXPECT_EQ(Table(bytes).find(id).operand, 8u) << id;
  }
  Bytes bytes = Props().array(0x147, 1, 2, Bytes(2)).bytes(0xF00B);
  support::patchInteger(bytes, 8 + 2, uint32_t{1});
  EXPECT_EQ(Table(bytes).find(0x147).operand, 1u);
}

TEST(ArrayProperties, OfElementSizeFFF0HaveElementsOf4Bytes) {
  const Table table(Props().array(0x145, 3, 0xFFF0, Bytes(12, 1)).complex(0x382, {4, 5}));
  EXPECT_EQ(table.find(0x145).operand, 18u);
  EXPECT_THAT(bytesOf(table.find(0x382).data), ElementsAre(4, 5));
  EXPECT_EQ(viewOf(table.bytes()).u16(8 + 12 + 4), 0xFFF0) << "the input stays as it is";
}

TEST(ArrayProperties, OfNegativeCountTakeAllThatIsLeft) {
  const Table table(Props().array(0x145, 0xFFFF, 8, Bytes(16, 1)).complex(0x382, {4, 5}));
  EXPECT_EQ(table.find(0x145).operand, 0xFFFFFFFEu);
  EXPECT_EQ(table.find(0x145).data.size(), 24u);
  EXPECT_TRUE(table.find(0x382).data.empty());
}

TEST(ArrayProperties, ThatEndInTheirHeaderAreCut) {
  Bytes bytes = Props().complex(0x145, {1, 0, 1, 0, 0xF0}).bytes(0xF00B);
  const Table table(bytes);
  EXPECT_EQ(table.find(0x145).data.size(), 5u);
  EXPECT_EQ(table.bytes(), bytes);
}

TEST(ArrayProperties, TellWhatWasReadBehindThem) {
  Bytes bytes = Props().array(0x197, 1, 8, Bytes(8)).bytes(0xF00B);
  bytes.insert(bytes.end(), {1, 2, 3});
  EXPECT_EQ(Table(bytes).find(0x197).reach.size(), 17u);
}

// Flags.

TEST(FlagProperties, AreSetIfTheFileUsesThem) {
  bool value = false;
  EXPECT_EQ(Table(Props().flag(0x1BB, true))->FindBool(0x1BB, value), Status::kOk);
  EXPECT_TRUE(value);
  EXPECT_EQ(Table(Props().flag(0x1BB, false))->FindBool(0x1BB, value), Status::kOk);
  EXPECT_FALSE(value);
}

TEST(FlagProperties, AreBitsInReverseOrder) {
  const Table table(Props().number(0x1BF, 0x00110010));  // bit 4: 0x1BB, bit 0: 0x1BF
  bool value = false;
  EXPECT_EQ((*table).FindBool(0x1BB, value), Status::kOk);
  EXPECT_TRUE(value);
  EXPECT_EQ((*table).FindBool(0x1BF, value), Status::kOk);
  EXPECT_FALSE(value);
  EXPECT_EQ((*table).FindBool(0x1BE, value), Status::kNoProperty);
}

TEST(FlagProperties, WhoseUseBitIsClearAreNotSet) {
  bool value = false;
  EXPECT_EQ(Table(Props().number(0x1BF, 0x0000FFFF))->FindBool(0x1BB, value), Status::kNoProperty);
  EXPECT_FALSE(value);
}

TEST(FlagProperties, BeginAt48OfEach64) {
  bool value = false;
  const Table table(Props().number(0x1BF, 0xFFFFFFFF).number(0x1AF, 0xFFFFFFFF));
  EXPECT_EQ((*table).FindBool(0x1B0, value), Status::kOk);
  EXPECT_EQ((*table).FindBool(0x1AF, value), Status::kNoProperty);
  EXPECT_EQ((*table).FindBool(0x180, value), Status::kNoProperty);
}

TEST(FlagProperties, WithoutTheirPropertyAreNotSet) {
  bool value = true;
  EXPECT_EQ(Table(Props().number(0x1BB, 0xFFFFFFFF))->FindBool(0x1BB, value), Status::kNoProperty);
  EXPECT_TRUE(value);
}

// The elements of an array.

TEST(MsoArray, GivesItsElements) {
  const Bytes bytes = ByteWriter().u16(2).u16(5).u16(3).text8("abcdef").take();
  const CMsoArray array(viewOf(bytes));
  EXPECT_EQ(array.GetItemCount(), 2u);
  EXPECT_EQ(array.GetItemSize(), 3u);
  EXPECT_THAT(bytesOf(array.GetEle(1)), ElementsAre('d', 'e', 'f'));
  EXPECT_TRUE(array.GetEle(2).empty());
}

TEST(MsoArray, CountsTheElementsThatAreThere) {
  const Bytes bytes = ByteWriter().u16(0xFFFF).u16(0).u16(4).zeros(11).take();
  EXPECT_EQ(CMsoArray(viewOf(bytes)).GetItemCount(), 2u);
}

TEST(MsoArray, IsEmptyWithoutAHeader) {
  const Bytes bytes = {1, 0, 1, 0, 4};
  EXPECT_EQ(CMsoArray(viewOf(bytes)).GetItemCount(), 0u);
  EXPECT_EQ(CMsoArray(ByteView()).GetItemCount(), 0u);
}

}  // namespace
