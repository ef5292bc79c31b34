#include "drawing/escher_records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "read_drawing.h"

using namespace drawing_test;
using testing::ElementsAre;

namespace {

std::vector<uint16_t> typesOf(const Bytes& bytes) {
  std::vector<uint16_t> types;
  MsoRORecInfo record;
  for (MsoRORecords records(viewOf(bytes)); records.Next(&record) == Status::kOk;)
    types.push_back(record.type);
  return types;
}

/// A record whose header claims a length that its body need not have.
Bytes claiming(uint16_t type, uint32_t length, const Bytes& body) {
  return ByteWriter().u16(0).u16(type).u32(length).bytes(body).take();
}

TEST(EscherRecords, FollowEachOther) {
  EXPECT_THAT(typesOf(joined({record(0xF00A, 1, 2, Bytes(8)), record(0xF00B, 0, 3, {})})),
              ElementsAre(0xF00A, 0xF00B));
}

TEST(EscherRecords, AreDeliveredWithVersionInstanceAndBody) {
  const Bytes bytes = record(0xF00B, 0x123, 3, {7, 8});
  const MsoRORecInfo first = firstRecord(bytes);
  EXPECT_EQ(first.versionAndInstance, 0x1233);
  EXPECT_EQ(first.instance(), 0x123);
  EXPECT_EQ(first.body.data(), bytes.data() + 8);
  EXPECT_EQ(first.body.size(), 2u);
}

TEST(EscherRecords, OverrunTheirParentShortenedAndAreTheLast) {
  const Bytes bytes = joined({record(0xF00A, 0, 0, {1}), claiming(0xF00B, 100, {2, 3})});
  MsoRORecInfo second;
  MsoRORecords records(viewOf(bytes));
  records.Next(&second);
  EXPECT_EQ(records.Next(&second), Status::kOk);
  EXPECT_EQ(second.body.size(), 2u);
  EXPECT_EQ(records.Next(&second), Status::kNothing);
}

TEST(EscherRecords, InAContainerAreCutToIt) {
  const Bytes bytes = joined({container(0xF004, {claiming(0xF00B, 100, {2, 3})}), Bytes(50)});
  MsoRORecInfo inner;
  MsoRORecords records(firstRecord(bytes));
  ASSERT_EQ(records.Next(&inner), Status::kOk);
  EXPECT_EQ(inner.body.size(), 2u);
  EXPECT_EQ(inner.reach.size(), 52u) << "what was read behind it";
}

TEST(EscherRecords, EndAtALengthWithTheTopBitSet) {
  const Bytes bytes = joined({record(0xF00A, 0, 0, {}), claiming(0xF00B, 0x80000000, {}), Bytes(16)});
  EXPECT_THAT(typesOf(bytes), ElementsAre(0xF00A));
}

TEST(EscherRecords, EndWhereLessThanAHeaderIsLeft) {
  EXPECT_THAT(typesOf(joined({record(0xF00A, 0, 0, {}), Bytes(7)})), ElementsAre(0xF00A));
  EXPECT_TRUE(typesOf({}).empty());
}

TEST(EscherRecords, OfNoLengthHaveABodyThatIsThere) {
  const Bytes bytes = record(0xF00D, 0, 0, {});
  EXPECT_EQ(firstRecord(bytes).body.data(), bytes.data() + 8);
  EXPECT_TRUE(firstRecord(bytes).body.empty());
}

TEST(EscherRecords, HaveRawBytesBetweenThem) {
  const Bytes bytes = joined({record(0xF000, 0, 0, {}), {5}, record(0xF002, 0, 0, {})});
  MsoRORecords records(viewOf(bytes));
  MsoRORecInfo record;
  unsigned char label = 0;
  records.Next(&record);
  EXPECT_EQ(records.ReadBytes(&label, 1), 1u);
  EXPECT_EQ(label, 5);
  EXPECT_EQ(records.Next(&record), Status::kOk);
  EXPECT_EQ(record.type, 0xF002);
}

TEST(EscherRecords, GiveAsManyRawBytesAsThereAre) {
  const Bytes bytes = {1, 2, 3};
  MsoRORecords records(viewOf(bytes));
  unsigned char raw[8] = {};
  EXPECT_EQ(records.ReadBytes(raw, 8), 3u);
  EXPECT_THAT(raw, ElementsAre(1, 2, 3, 0, 0, 0, 0, 0));
  EXPECT_EQ(records.ReadBytes(raw, 8), 0u);
}

TEST(EscherRecords, ThatOverrunLeaveNoRawBytes) {
  const Bytes bytes = claiming(0xF000, 9, {1});
  MsoRORecords records(viewOf(bytes));
  MsoRORecInfo record;
  unsigned char label = 0;
  records.Next(&record);
  EXPECT_EQ(records.ReadBytes(&label, 1), 0u);
}

}  // namespace
