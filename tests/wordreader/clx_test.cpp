#include "wordreader/clx.h"

#include <gtest/gtest.h>

#include "support/bytes.h"
#include "support/word_tables.h"
#include "wordreader/table_record.h"

using support::Bytes;
using support::ByteWriter;

namespace {

/// A piece table read from bytes that stay.
struct ReadClx {
  explicit ReadClx(Bytes content, uint32_t lcb = 0) : bytes(std::move(content)) {
    KDRTableRecord record;
    record.place.lcb = lcb ? lcb : static_cast<uint32_t>(bytes.size());
    record.bytes = ByteView(bytes.data(), bytes.size());
    status = clx.Read(record);
  }
  Bytes bytes;
  KDRClx clx;
  Status status;
};

Bytes piece(uint32_t rawFc, uint16_t prm = 0) {
  return ByteWriter().u16(0).u32(rawFc).u16(prm).take();
}

Bytes group(const Bytes& sprms) {
  return ByteWriter().u8(1).u16(sprms.size()).bytes(sprms).take();
}

Bytes pieceTable(const Bytes& table) {
  return ByteWriter().u8(2).u32(table.size()).bytes(table).take();
}

const Bytes kOnePiece = pieceTable(support::positionTable({0, 9}, {piece(0x800)}));

}  // namespace

TEST(PieceTable, ReadsPieces) {
  const ReadClx read(kOnePiece);
  EXPECT_EQ(read.status, Status::kOk);
  ASSERT_EQ(read.clx.GetPlcfpcd().Count(), 1u);
  EXPECT_EQ(read.clx.Item(0).range.end, 9u);
  EXPECT_EQ(+read.clx.Item(0).data.rawFc, 0x800u);
}

TEST(PieceTable, KeepsPropertyGroupsInFileOrder) {
  const ReadClx read(
      ByteWriter().bytes(group({1, 2, 3})).bytes(group({})).bytes(group({4})).bytes(kOnePiece).take());
  const auto& groups = read.clx.GetSprmsFastSave();
  ASSERT_EQ(groups.size(), 3u);
  EXPECT_EQ(groups[0]->sprms().size(), 3u);
  EXPECT_EQ(groups[1]->sprms().size(), 0u);
  EXPECT_EQ(groups[2]->sprms().u8(0), 4);
}

TEST(PieceTable, SkipsStrayBytesBetweenRecords) {
  const ReadClx read(ByteWriter().u8(0).u8(77).bytes(group({9})).u8(3).u8(0).bytes(kOnePiece).take());
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.clx.GetSprmsFastSave().size(), 1u);
  EXPECT_EQ(read.clx.Count(), 1u);
}

TEST(PieceTable, IgnoresWhatFollowsThePieces) {
  const ReadClx read(ByteWriter().bytes(kOnePiece).bytes(group({1})).u8(1).u16(0xFFFF).take());
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_TRUE(read.clx.GetSprmsFastSave().empty());
}

TEST(PieceTable, IsMalformedWithoutPieces) {
  EXPECT_EQ(ReadClx(group({1, 2})).status, Status::kMalformed);
  EXPECT_EQ(ReadClx({}).status, Status::kMalformed);
}

TEST(PieceTable, IsMalformedIfAGroupOverruns) {
  EXPECT_EQ(ReadClx(ByteWriter().u8(1).u16(4).zeros(3).take()).status, Status::kMalformed);
  EXPECT_EQ(ReadClx(ByteWriter().u8(1).u8(0).take()).status, Status::kMalformed);
}

TEST(PieceTable, IsMalformedIfThePiecesOverrun) {
  EXPECT_EQ(ReadClx(ByteWriter().u8(2).u32(17).zeros(16).take()).status, Status::kMalformed);
  EXPECT_EQ(ReadClx(ByteWriter().u8(2).u32(0xFFFFFFFF).zeros(16).take()).status, Status::kMalformed);
  EXPECT_EQ(ReadClx(ByteWriter().u8(2).u16(0).take()).status, Status::kMalformed);
}

TEST(PieceTable, CanHaveNoPieces) {
  EXPECT_EQ(ReadClx(pieceTable(ByteWriter().u32(0).take())).status, Status::kNothing);
}

TEST(PieceTable, ReadsPiecesThatAreCutOffAsZero) {
  Bytes bytes = pieceTable(support::positionTable({0, 5, 9}, {piece(0x800), piece(0x900)}));
  const auto lcb = static_cast<uint32_t>(bytes.size());
  bytes.resize(bytes.size() - 8);
  const ReadClx read(bytes, lcb);
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.clx.PresentCount(), 2u);
  EXPECT_EQ(+read.clx.Item(0).data.rawFc, 0x800u);
  EXPECT_EQ(+read.clx.Item(1).data.rawFc, 0u);
}

TEST(PieceTable, TellsPiecesWithoutPositionsApart) {
  Bytes bytes = ByteWriter().u8(2).u32(0x7FFFFFF0).u32(0).u32(5).u32(9).take();
  const ReadClx read(bytes, 0x7FFFFFFF);
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_GT(read.clx.Count(), 100000000u);
  EXPECT_EQ(read.clx.PresentCount(), 2u);
}

TEST(PieceTable, KeepsNoMoreGroupsThanPiecesCanName) {
  ByteWriter many;
  for (int i = 0; i < 40000; ++i) many.bytes(group({}));
  EXPECT_EQ(ReadClx(many.bytes(kOnePiece).take()).clx.GetSprmsFastSave().size(), 32768u);
}

TEST(PieceTable, ForgetsTheOneReadBefore) {
  ReadClx read(ByteWriter().bytes(group({1})).bytes(kOnePiece).take());
  EXPECT_EQ(read.clx.Read(KDRTableRecord()), Status::kMalformed);
  EXPECT_EQ(read.clx.Count(), 0u);
  EXPECT_TRUE(read.clx.GetSprmsFastSave().empty());
}
