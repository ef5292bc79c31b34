#include <gtest/gtest.h>

#include <random>

#include "support/bytes.h"
#include "wordreader/paragraph_prop.h"
#include "wordreader/section_prop.h"
#include "wordreader/span_prop.h"

using support::Bytes;

namespace {

/// Lists of random bytes in buffers of exactly their size, in which an overrun does not go unseen. Half of
/// the words are opcodes of variable length or of wide operands, so that lists end inside sprms of all kinds.
Bytes RandomList(std::mt19937& random) {
  static constexpr uint16_t kOpcodes[] = {0xC615, 0xC60D, 0xD608, 0xD606, 0xCA72, 0xCA71,
                                          0xCA78, 0xC5FF, 0xD1FF, 0xF203, 0xF204, 0x6A09,
                                          0x6412, 0xD234, 0xC64D, 0x460B, 0x260A, 0};
  support::ByteWriter list;
  const size_t size = random() % 80;
  while (list.size() < size) {
    if (random() % 2 == 0) list.u16(kOpcodes[random() % std::size(kOpcodes)]);
    list.u8(random() % 3 == 0 ? 0xFF : random());
  }
  Bytes bytes = list.take();
  bytes.resize(size);
  return Bytes(bytes);
}

template <class Use>
void ForRandomLists(const Use& use) {
  std::mt19937 random(20240601);
  for (int i = 0; i < 20000; ++i) {
    const Bytes list = RandomList(random);
    use(ByteView(list.data(), list.size()));
  }
}

TEST(HostileSprms, AreDecodedWithinTheirBytes) {
  ForRandomLists([](ByteView list) {
    KDRSpanProp span;
    KDRParagraphProp paragraph;
    KDRSectionProp section;
    EXPECT_EQ(Sprms2SpanProp(KDWSprmList(list), &span), Status::kOk);
    EXPECT_EQ(Sprms2ParagraphProp(KDWSprmList(list), &paragraph, nullptr, nullptr), Status::kOk);
    EXPECT_EQ(Sprms2ZeloSectionProp(KDWSprmList(list), &section), Status::kOk);
    EXPECT_LE(paragraph.tabs.addCount, KDRTab::kMax);
  });
}

/// Whether a walk delivers only operands inside the list, and not more sprms than its bytes allow.
template <class Walk>
bool StaysInside(ByteView list, const Walk& next) {
  const uint8_t* end = list.data() + list.size();
  ByteView operand;
  size_t sprms = 0;
  while (next(operand)) {
    if (++sprms * 2 > list.size()) return false;
    if (!operand.empty() && (operand.data() < list.data() + 2 || operand.data() + operand.size() > end)) {
      return false;
    }
  }
  return true;
}

TEST(HostileSprms, AreWalkedWithinTheirBytesByTheEnumerator) {
  ForRandomLists([](ByteView bytes) {
    const KDWSprmList list(bytes);
    KDWSprmList::Enumerator walk(list);
    EXPECT_TRUE(StaysInside(bytes, [&walk](ByteView& operand) {
      KDWSprm next;
      const Status status = walk.Next(&next);
      operand = next.GetArgument();
      return status == Status::kOk;
    }));
  });
}

TEST(HostileSprms, AreWalkedWithinTheirBytesByTheOtherWalker) {
  ForRandomLists([](ByteView bytes) {
    KEnumSprmList walk;
    walk.Assign(bytes);
    EXPECT_TRUE(StaysInside(bytes, [&walk](ByteView& operand) {
      KSprm next;
      const Status status = walk.Next(next);
      operand = next.operand;
      next.GetFixOprand();
      return status == Status::kOk;
    }));
  });
}

TEST(HostileSprms, MakeNoDifferenceBetweenTheWalkers) {
  ForRandomLists([](ByteView bytes) {
    const KDWSprmList list(bytes);
    KDWSprmList::Enumerator one(list);
    KEnumSprmList other;
    other.Assign(bytes);
    KDWSprm a;
    KSprm b;
    while (one.Next(&a) == Status::kOk) {
      EXPECT_NE(other.Next(b), Status::kNothing);
      ASSERT_EQ(a.GetOpcode(), b.opcode);
      ASSERT_EQ(a.GetArgument().data(), b.operand.data());
      ASSERT_EQ(a.GetArgument().size(), b.operand.size());
    }
    EXPECT_EQ(other.Next(b), Status::kNothing);
  });
}

}  // namespace
