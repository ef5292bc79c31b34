#include "wordreader/sprm_list.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/sprms.h"

using support::Bytes;
using support::ByteWriter;
using support::sprm;
using support::Sprms;

namespace {

ByteView View(const Bytes& bytes) {
  return ByteView(bytes.data(), bytes.size());
}
KDWSprmList ListOf(const Bytes& bytes) {
  return KDWSprmList(View(bytes));
}

/// Size of the operand as the sprm declares it.
uint32_t OperandSize(const Bytes& bytes) {
  uint32_t size = 0;
  GetSprmArgument(View(bytes), &size);
  return size;
}

/// Distance of the operand from the opcode.
size_t OperandPlace(const Bytes& bytes) {
  uint32_t size = 0;
  return static_cast<size_t>(GetSprmArgument(View(bytes), &size).data() - bytes.data());
}

std::vector<uint16_t> OpcodesByEnumerator(const Bytes& bytes) {
  std::vector<uint16_t> opcodes;
  const KDWSprmList list = ListOf(bytes);
  KDWSprmList::Enumerator enumerator(list);
  for (KDWSprm next; enumerator.Next(&next) == Status::kOk;) opcodes.push_back(next.GetOpcode());
  return opcodes;
}

std::vector<uint16_t> OpcodesByEnum(const Bytes& bytes) {
  std::vector<uint16_t> opcodes;
  KEnumSprmList list;
  list.Assign(View(bytes));
  for (KSprm next; list.Next(next) == Status::kOk;) opcodes.push_back(next.opcode);
  return opcodes;
}

/// sprmPChgTabs with a length byte of 255: n deleted and m added stops, then a bold sprm.
Bytes LongTabs(uint8_t deleted, uint8_t added) {
  ByteWriter out;
  out.u16(0xC615).u8(255).u8(deleted).fill(4u * deleted, 7).u8(added).fill(3u * added, 8);
  return out.bytes(sprm(0x0835, 1)).take();
}

TEST(SprmOperand, HasTheSizeThatTheTopBitsSay) {
  const uint16_t opcodes[] = {0x0835, 0x2A53, 0x4A43, 0x6870, 0x8840, 0xA413, 0xCA72, 0xF203};
  const uint32_t sizes[] = {1, 1, 2, 4, 2, 2, 9, 3};
  for (size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(OperandSize(ByteWriter().u16(opcodes[i]).u8(9).zeros(20).take()), sizes[i]);
  }
}

TEST(SprmOperand, StartsBehindOpcodeAndLength) {
  EXPECT_EQ(OperandPlace({0x35, 0x08, 1}), 2u);
  EXPECT_EQ(OperandPlace({0x72, 0xCA, 1, 1}), 3u);
  EXPECT_EQ(OperandPlace({0x08, 0xD6, 2, 0, 1}), 4u);
}

TEST(SprmOperand, IsEmptyForOpcodeZero) {
  EXPECT_EQ(OperandSize({0, 0, 1, 2, 3}), 0u);
  EXPECT_EQ(OpcodesByEnumerator({0, 0, 0x35, 0x08, 1}), (std::vector<uint16_t>{0, 0x0835}));
  EXPECT_EQ(OpcodesByEnum({0, 0, 0x35, 0x08, 1}), (std::vector<uint16_t>{0, 0x0835}));
}

TEST(SprmOperand, OfTableDefinitionsHasASixteenBitLengthThatIsOneTooLarge) {
  EXPECT_EQ(OperandSize({0x08, 0xD6, 0x2D, 0x01}), 300u);
  EXPECT_EQ(OperandSize({0x06, 0xD6, 0x03, 0x00}), 2u);
  EXPECT_EQ(OperandSize({0x08, 0xD6, 0x00, 0x00}), 0u);
}

TEST(SprmOperand, OfTabsHasItsLengthInFront) {
  EXPECT_EQ(OperandSize(ByteWriter().u16(0xC615).u8(254).take()), 254u);
}

TEST(SprmOperand, OfTabsWithLength255IsMeasuredFromItself) {
  EXPECT_EQ(OperandSize(LongTabs(60, 5)), 4 * 60u + 3 * 5 + 2);
  EXPECT_EQ(OperandSize(LongTabs(255, 255)), 4 * 255u + 3 * 255 + 2);
  EXPECT_EQ(OperandSize({0x15, 0xC6, 255}), 2u);
}

TEST(SprmOperand, OfLongTabsIsMeasuredFromItselfInBothWalkers) {
  const std::vector<uint16_t> both = {0xC615, 0x0835};
  EXPECT_EQ(OpcodesByEnumerator(LongTabs(60, 5)), both);
  EXPECT_EQ(OpcodesByEnum(LongTabs(60, 5)), both);
}

TEST(SprmEnumerator, DeliversSprmsInOrder) {
  const Sprms list{sprm(0x0835, 1), sprm(0xCA72, Bytes(8)), sprm(0xD608, Bytes(300)), sprm(0x6870, 5)};
  EXPECT_EQ(OpcodesByEnumerator(list.bytes()), (std::vector<uint16_t>{0x0835, 0xCA72, 0xD608, 0x6870}));
  EXPECT_EQ(OpcodesByEnum(list.bytes()), OpcodesByEnumerator(list.bytes()));
}

TEST(SprmEnumerator, YieldsNothingForAListOfOneByte) {
  EXPECT_TRUE(OpcodesByEnumerator({0x35}).empty());
  EXPECT_TRUE(OpcodesByEnum({0x35}).empty());
  KDWSprm none;
  EXPECT_EQ(KDWSprmList::Enumerator(ListOf({0x35})).Next(&none), Status::kFailure);
}

TEST(SprmEnumerator, YieldsNothingForNoList) {
  KDWSprm none;
  EXPECT_EQ(KDWSprmList::Enumerator(KDWSprmList()).Next(&none), Status::kFailure);
}

TEST(SprmEnumerator, DeliversASprmThatRunsPastTheEndWithItsOperandCut) {
  const Bytes cut = {0x70, 0x68, 0x11, 0x22};
  const KDWSprmList list = ListOf(cut);
  KDWSprmList::Enumerator enumerator(list);
  KDWSprm last;
  EXPECT_EQ(enumerator.Next(&last), Status::kOk);
  EXPECT_EQ(last.GetArgument().size(), 2u);
  EXPECT_EQ(last.GetSize(), 6u);
  EXPECT_EQ(enumerator.Next(&last), Status::kFailure);
}

TEST(Sprm, CopiesAsManyBytesAsTheOperandHas) {
  uint32_t value = 0xAAAAAAAA;
  const Bytes operand = {0x11, 0x22};
  KDWSprm(0x4A43, View(operand), 4).GetSprmValue(&value);
  EXPECT_EQ(value, 0xAAAA2211u);
  uint8_t narrow = 0;
  KDWSprm(0x4A43, View(operand), 4).GetSprmValue(&narrow);
  EXPECT_EQ(narrow, 0x11);
}

TEST(SprmList, FindsTheFirstOfTwo) {
  const Bytes list = Sprms{sprm(0x4A43, 20), sprm(0x0835, 1), sprm(0x4A43, 30)}.bytes();
  KDWSprm found;
  EXPECT_EQ(ListOf(list).FindSprm(0x4A43, &found), Status::kOk);
  EXPECT_EQ(found.GetArgument().u16(0), 20);
  EXPECT_EQ(ListOf(list).FindSprm(0x0835, nullptr), Status::kOk);
}

TEST(SprmList, FindsNothingThatIsNotThere) {
  KDWSprm found;
  EXPECT_EQ(ListOf(sprm(0x4A43, 20)).FindSprm(0x0835, &found), Status::kFailure);
}

TEST(SprmList, TellsTheCharacterStyle) {
  const Bytes list = Sprms{sprm(0x0835, 1), sprm(0x4A30, 17), sprm(0x4A30, 18)}.bytes();
  EXPECT_EQ(ListOf(list).GetCharIstd(), 17);
}

TEST(SprmList, HasCharacterStyle4095WithoutTheSprm) {
  EXPECT_EQ(ListOf(sprm(0x0835, 1)).GetCharIstd(), 4095);
}

TEST(SprmList, TakesTheParagraphStyleFromInFrontOfTheList) {
  const Bytes papx = ByteWriter().u16(0x0102).bytes(sprm(0x2461, 1)).take();
  KDWSprmList list;
  list.AssignPapx(View(papx));
  EXPECT_EQ(list.GetParaIstd(), 0x0102);
  EXPECT_EQ(list.bytes().size(), 3u);
}

TEST(SprmList, TakesARunsPropertiesWhole) {
  const Bytes chpx = sprm(0x0835, 1);
  KDWSprmList list;
  list.AssignChpx(View(chpx));
  EXPECT_EQ(list.FindSprm(0x0835, nullptr), Status::kOk);
}

TEST(EnumSprmList, TellsAnEndInsideASprm) {
  const Bytes cut = {0x70, 0x68, 0x11, 0x22};
  KEnumSprmList list;
  list.Assign(View(cut));
  KSprm last;
  EXPECT_EQ(list.Next(last), Status::kMalformed);
  EXPECT_EQ(last.opcode, 0x6870);
  EXPECT_EQ(last.operandSize, 4);
  EXPECT_EQ(last.operand.size(), 2u);
  EXPECT_EQ(list.Next(last), Status::kNothing);
}

TEST(EnumSprmList, TellsItsEnd) {
  const Bytes one = sprm(0x0835, 1);
  KEnumSprmList list;
  list.Assign(View(one));
  KSprm next;
  EXPECT_EQ(list.Next(next), Status::kOk);
  EXPECT_EQ(list.Next(next), Status::kNothing);
}

KSprm EnumSprm(const Bytes& bytes) {
  KEnumSprmList list;
  list.Assign(View(bytes));
  KSprm next;
  list.Next(next);
  return next;
}

TEST(EnumSprmList, CountsTheLengthByteOfVariableSprms) {
  EXPECT_EQ(EnumSprm(sprm(0x6870, 1)).GetSprmLen(), 6u);
  EXPECT_TRUE(EnumSprm(sprm(0x6870, 1)).IsFixSprm());
  EXPECT_EQ(EnumSprm(sprm(0xCA72, Bytes(8))).GetSprmLen(), 11u);
  EXPECT_FALSE(EnumSprm(sprm(0xCA72, Bytes(8))).IsFixSprm());
}

TEST(EnumSprmList, GivesTheOperandByItsLength) {
  static const Bytes list =
      Sprms{sprm(0x0835, 0x11), sprm(0x4A43, 0x2211), sprm(0x6870, 0x44332211), sprm(0xF661, 0x332211)}
          .bytes();
  KEnumSprmList walk;
  walk.Assign(View(list));
  std::vector<uint32_t> operands;
  for (KSprm next; walk.Next(next) == Status::kOk;) operands.push_back(next.GetFixOprand());
  EXPECT_EQ(operands, (std::vector<uint32_t>{0x11, 0x2211, 0x44332211, 0x332211}));
}

TEST(EnumSprmList, GivesThreeBytesOfAnyOtherLength) {
  static const Bytes list = sprm(0xCA72, Bytes{1, 2, 3, 4, 5});
  EXPECT_EQ(EnumSprm(list).GetFixOprand(), 0x030201u);
}

}  // namespace
