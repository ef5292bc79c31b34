#include "wordreader/piece.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/sprms.h"
#include "support/word_tables.h"
#include "wordreader/document.h"
#include "wordreader/sprm_list.h"

using support::Bytes;
using support::ByteWriter;
using support::sprm;
using support::Sprms;

namespace {

Bytes bytesOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

Bytes joined(const Sprms& sprms) {
  return sprms.bytes();
}

const Bytes kBold = sprm(0x0835, 1);
const Bytes kSize = sprm(0x4A43, 24);
const Bytes kCentred = sprm(0x2461, 1);
const Bytes kIndent = sprm(0x845E, 720);
const Bytes kTable = sprm(0x5400, 1);  // of neither kind: counts as paragraph

KPieceSprms sorted(const Sprms& sprms, ChainAllocator& allocator) {
  return SortSprms(ByteView(sprms.bytes().data(), sprms.size()), allocator);
}

using Groups = std::vector<Sprms>;

/// A document with these property groups and one piece.
struct FastSaved {
  explicit FastSaved(const Groups& groups) {
    ByteWriter clx;
    for (const Sprms& group : groups) clx.u8(1).u16(group.size()).bytes(group.bytes());
    bytes = clx.u8(2).u32(16).u32(0).u32(1).zeros(8).take();
    KDRTableRecord record;
    record.place.lcb = static_cast<uint32_t>(bytes.size());
    record.bytes = ByteView(bytes.data(), bytes.size());
    document.KDRClx::Read(record);
  }
  Bytes bytes;
  KDRDocument document;
};

_TypeTraits<mso_word::PCD>::ItemType piece(uint32_t start, uint32_t end, uint32_t rawFc, uint16_t prm = 0,
                                           uint16_t flags = 0) {
  return {{start, end}, {flags, rawFc, prm}};
}

constexpr uint32_t kAnsi = mso_word::PCD::kAnsi;

}  // namespace

// Sorting.

TEST(SortSprms, TakesAListWithoutCharacterSprmsAsParagraphs) {
  ChainAllocator allocator;
  const Sprms list = {kCentred, kTable};
  const KPieceSprms result = sorted(list, allocator);
  EXPECT_EQ(bytesOf(result.paragraph), list.bytes());
  EXPECT_TRUE(result.character.empty());
}

TEST(SortSprms, TakesAListOfCharacterSprmsAsRuns) {
  ChainAllocator allocator;
  const Sprms list = {kBold, kSize};
  const KPieceSprms result = sorted(list, allocator);
  EXPECT_TRUE(result.paragraph.empty());
  EXPECT_EQ(bytesOf(result.character), list.bytes());
}

TEST(SortSprms, SplitsASortedListInPlace) {
  ChainAllocator allocator;
  const Sprms list = {kCentred, kIndent, kBold};
  const KPieceSprms result = sorted(list, allocator);
  EXPECT_EQ(result.paragraph.data(), list.bytes().data());
  EXPECT_EQ(bytesOf(result.paragraph), joined({kCentred, kIndent}));
  EXPECT_EQ(bytesOf(result.character), kBold);
}

TEST(SortSprms, MovesCharacterSprmsBehindTheOthersInTheirOrder) {
  ChainAllocator allocator;
  const KPieceSprms result = sorted({kCentred, kBold, kIndent, kSize, kTable}, allocator);
  EXPECT_EQ(bytesOf(result.paragraph), joined({kCentred, kIndent, kTable}));
  EXPECT_EQ(bytesOf(result.character), joined({kBold, kSize}));
}

TEST(SortSprms, KeepsASprmThatOverrunsTheList) {
  ChainAllocator allocator;
  Bytes cut = joined({kBold, kCentred, kSize});
  cut.pop_back();
  const KPieceSprms result = SortSprms(ByteView(cut.data(), cut.size()), allocator);
  EXPECT_EQ(bytesOf(result.paragraph), kCentred);
  EXPECT_EQ(result.character.size(), kBold.size() + kSize.size() - 1);
}

TEST(SortSprms, TakesAnEmptyList) {
  ChainAllocator allocator;
  const KPieceSprms result = SortSprms({}, allocator);
  EXPECT_TRUE(result.paragraph.empty());
  EXPECT_TRUE(result.character.empty());
}

// Modifiers.

TEST(PieceModifier, OfZeroBringsNothing) {
  const FastSaved fastSaved(Groups{Sprms{kBold}});
  KPieceSprmSorter sorter(fastSaved.document);
  EXPECT_TRUE(sorter.AnalyseSprm(0).paragraph.empty());
  EXPECT_TRUE(sorter.AnalyseSprm(0).character.empty());
}

TEST(PieceModifier, NamesAPropertyGroup) {
  const FastSaved fastSaved(Groups{Sprms{kBold}, Sprms{kCentred, kSize}});
  KPieceSprmSorter sorter(fastSaved.document);
  const KPieceSprms result = sorter.AnalyseSprm(support::prmOfGroup(1));
  EXPECT_EQ(bytesOf(result.paragraph), kCentred);
  EXPECT_EQ(bytesOf(result.character), kSize);
}

TEST(PieceModifier, SortsAGroupOnce) {
  const FastSaved fastSaved(Groups{Sprms{kBold, kCentred}});
  KPieceSprmSorter sorter(fastSaved.document);
  const ByteView first = sorter.AnalyseSprm(support::prmOfGroup(0)).paragraph;
  EXPECT_EQ(bytesOf(first), kCentred);
  EXPECT_EQ(sorter.AnalyseSprm(support::prmOfGroup(0)).paragraph.data(), first.data());
}

TEST(PieceModifier, OfAGroupThatIsNotThereBringsNothing) {
  const FastSaved fastSaved(Groups{Sprms{kBold}});
  KPieceSprmSorter sorter(fastSaved.document);
  EXPECT_TRUE(sorter.AnalyseSprm(support::prmOfGroup(1)).character.empty());
  EXPECT_TRUE(sorter.AnalyseSprm(0xFFFF).character.empty());
}

TEST(PieceModifier, WithASingleSprmChangesNoProperty) {
  const FastSaved fastSaved(Groups{});
  KPieceSprmSorter sorter(fastSaved.document);
  const KPieceSprms bold = sorter.AnalyseSprm(support::prmOfSprm(0x55, 1));
  EXPECT_EQ(bytesOf(bold.paragraph), (Bytes{4, 0, 0x35, 0x08}));
  EXPECT_TRUE(bold.character.empty());
  KDWSprmList::Enumerator sprms{KDWSprmList(bold.paragraph)};
  KDWSprm sprm;
  ASSERT_EQ(sprms.Next(&sprm), Status::kOk);
  EXPECT_EQ(sprm.GetOpcode(), 4);
  EXPECT_EQ(sprms.Next(&sprm), Status::kFailure);
}

TEST(PieceModifier, WithAnUnknownSingleSprmHasOpcodeZero) {
  const FastSaved fastSaved(Groups{});
  KPieceSprmSorter sorter(fastSaved.document);
  EXPECT_EQ(bytesOf(sorter.AnalyseSprm(support::prmOfSprm(0x01, 1)).paragraph), (Bytes{4, 0, 0, 0}));
}

TEST(PieceModifier, KnowsTheSprmsThatStandForThemselves) {
  const FastSaved fastSaved(Groups{});
  KPieceSprmSorter sorter(fastSaved.document);
  std::string known;
  for (uint8_t isprm = 0; isprm < 0x80; ++isprm) {
    const uint16_t opcode = sorter.AnalyseSprm(support::prmOfSprm(isprm, 1)).paragraph.u16(2);
    char text[16];
    std::snprintf(text, sizeof text, "%02X:%04X ", unsigned{isprm}, unsigned{opcode});
    if (opcode != 0) known += text;
  }
  EXPECT_EQ(known,
            "00:2879 04:2602 05:2403 07:2405 08:2406 09:2407 0C:260A 0D:2470 0E:240C 0F:2471 18:2416 "
            "19:2417 1D:261B 25:2423 2C:242A 32:2430 33:2431 35:2433 36:2434 37:2435 38:2436 39:2437 "
            "3A:2438 41:0800 42:0801 43:0802 47:0806 4B:080A 4D:2A0C 4E:0858 4F:2859 50:0811 51:0818 "
            "53:2A33 55:0835 56:0836 57:0837 58:0838 59:0839 5A:083A 5B:083B 5C:083C 5E:2A3E 62:2A42 "
            "68:2A48 73:2A53 74:0854 75:0855 76:0856 78:2640 7B:2A90 7C:2A86 7E:2443 ");
}

// The cursor.

TEST(PieceCursor, ReadsTheOffsetOf16BitText) {
  KDRDocument document;
  _PieceWrapper cursor(document);
  cursor.Assign(piece(100, 110, 0x800));
  const _PieceEx part = cursor.Front(10, 90);
  EXPECT_TRUE(part.wide);
  EXPECT_EQ(part.fcBegin, 0x800u);
  EXPECT_EQ(part.fcEnd, 0x814u);
  EXPECT_EQ(part.cpBegin, 10u);
  EXPECT_EQ(part.GetCPEnd(), 20u);
}

TEST(PieceCursor, ReadsTheOffsetOf8BitText) {
  KDRDocument document;
  _PieceWrapper cursor(document);
  cursor.Assign(piece(100, 110, 0x1000 | kAnsi));
  const _PieceEx part = cursor.Front(10, 100);
  EXPECT_FALSE(part.wide);
  EXPECT_EQ(part.fcBegin, 0x800u);
  EXPECT_EQ(part.fcEnd, 0x80Au);
  EXPECT_EQ(part.GetCPEnd(), 10u);
}

TEST(PieceCursor, MovesByCharacters) {
  KDRDocument document;
  _PieceWrapper cursor(document);
  cursor.Assign(piece(0, 10, 0x800));
  cursor.SplitPiece(4);
  EXPECT_EQ(cursor.Length(), 6u);
  EXPECT_EQ(cursor.Front(6, 0).fcBegin, 0x808u);
  cursor.Assign(piece(0, 10, 0x1000 | kAnsi));
  cursor.SplitPiece(4);
  EXPECT_EQ(cursor.Front(6, 0).fcBegin, 0x804u);
  EXPECT_EQ(cursor.Front(6, 0).cpBegin, 4u);
}

TEST(PieceCursor, KeepsItsPropertiesWhenSplit) {
  const FastSaved fastSaved(Groups{Sprms{kBold}});
  _PieceWrapper cursor(fastSaved.document);
  cursor.Assign(piece(0, 10, 0x800, support::prmOfGroup(0), mso_word::PCD::kNoParaLast));
  cursor.SplitPiece(3);
  EXPECT_EQ(bytesOf(cursor.Sprms().character), kBold);
  EXPECT_TRUE(cursor.NoParaLast());
}

TEST(PieceCursor, IsUsedUpAtTheEnd) {
  KDRDocument document;
  _PieceWrapper cursor(document);
  cursor.Assign(piece(5, 9, 0x800));
  cursor.SplitPiece(4);
  EXPECT_EQ(cursor.Length(), 0u);
}

TEST(PieceCursor, TakesAPieceThatEndsInFrontOfItsStartAsEmpty) {
  KDRDocument document;
  _PieceWrapper cursor(document);
  cursor.Assign(piece(9, 5, 0x800));
  EXPECT_EQ(cursor.Length(), 0u);
}

TEST(PieceCursor, DoesNotWrapOffsets) {
  KDRDocument document;
  _PieceWrapper cursor(document);
  cursor.Assign(piece(0, 0xFFFFFFFF, 0x8000FFFE));
  const _PieceEx part = cursor.Front(0xFFFFFFFF, 0);
  EXPECT_LT(part.fcBegin, part.fcEnd);
  EXPECT_EQ(part.Length(), 0xFFFFFFFFu);
}

TEST(PiecePart, PutsWhatLiesInFrontAtItsStart) {
  const _PieceEx part{100, 120, 7, true};
  EXPECT_EQ(part.PositionAt(110), 12u);
  EXPECT_EQ(part.PositionAt(90), 7u);
}
