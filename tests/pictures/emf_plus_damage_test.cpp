// EMF+ that is damaged, or made to do harm.

#include <gtest/gtest.h>

#include <random>

#include "support/emf_plus_writer.h"

namespace {

using namespace support::emf_plus;
using support::Bytes;

constexpr uint16_t kColour = 0x8000;
constexpr uint32_t kRed = 0xFFFF0000, kMost = 0xFFFFFFFF;

/// A picture with an object of each kind, and a record that uses each.
Bytes rich() {
  const Bytes triangle = path({0, 0, 50, 0, 50, 50}, {0, 1, 0x81});
  const Fields boxNode = Fields().u32(0x10000000).reals({0, 0, 10, 10});
  const Bytes arrow =
      Fields().u32(kVersion).u32(1).reals({2, 3, 0}).u32(1).u32(0).u32(0).u32(0).reals({10, 1, 0, 0, 0, 0});
  Records records;
  records.add(0x4001, 0, Fields().u32(kVersion).u32(1).u32(96).u32(96));
  records.object(kBrush, 0,
                 Fields()
                     .u32(kVersion)
                     .u32(4)
                     .u32(8)
                     .u32(1)
                     .reals({0, 0, 50, 50})
                     .u32(kRed)
                     .u32(0xFF0000FF)
                     .u32(0)
                     .u32(0)
                     .u32(2)
                     .reals({0, 1, 1, 0}));
  records.object(
      kBrush, 1,
      Fields().u32(kVersion).u32(3).u32(1).u32(0).u32(kRed).reals({9, 9}).u32(1).u32(5).counted(triangle));
  records.object(kBrush, 2, Fields().u32(kVersion).u32(1).u32(40).u32(kRed).u32(0xFF00FF00));
  records.object(
      kPen, 3, pen(2, kRed, 0x1126, Fields().u32(0x14).u32(0x12).u32(5).u32(2).reals({3, 1}).counted(arrow)));
  records.object(kPath, 4, triangle);
  records.object(kRegion, 5,
                 Fields()
                     .u32(kVersion)
                     .u32(4)
                     .u32(3)
                     .u32(1)
                     .bytes(boxNode)
                     .bytes(boxNode)
                     .u32(0x10000001)
                     .counted(triangle));
  records.object(kImage, 6, pixelImage(2, 2, 8, 0x0026200A, Bytes(16, 0x80)));
  records.object(kFont, 7, font(10, u"Symbol"));
  records.object(kStringFormat, 8, stringFormat(3, 1, 1, 1));
  records.add(0x4025, 0, Fields().u32(1)).add(0x4034, 0x305).add(0x4033, 0x204);
  for (uint32_t brush = 0; brush < 3; ++brush) records.add(0x4014, 4, Fields().u32(brush));
  records.add(0x4015, 4, Fields().u32(3)).add(0x400D, 3, Fields().u32(2).reals({1, 2, 30, 40}));
  records.add(0x4018, 3, Fields().reals({0.5F}).u32(0).u32(2).u32(3).reals({0, 0, 9, 0, 9, 9}));
  records.add(0x4011, 0x4003, Fields().reals({10, 300}).shorts({0, 0, 50, 60}));
  records.add(0x4026, 0, Fields().u32(1)).add(0x4013, 5, Fields().u32(0));
  records.add(0x401B, 6, Fields().u32(0).u32(2).reals({0, 0, 1, 1}).u32(3).reals({0, 0, 9, 0, 0, 9}));
  records.add(0x401C, kColour | 7, Fields().u32(kRed).u32(8).u32(5).reals({0, 0, 20, 20}).text(u"a & b"));
  records.add(0x4036, kColour | 7, Fields().u32(kRed).u32(1).u32(0).u32(2).text(u"ab").reals({1, 2, 3, 2}));
  return records.bytes;
}

TEST(EmfPlusDamage, WhatIsWholeIsDrawnWhole) {
  const Drawn picture = draw(rich());
  EXPECT_TRUE(picture.isWhole);
  EXPECT_GE(picture.count("path"), 10U);
  EXPECT_EQ(picture.count("image"), 1U);
  EXPECT_EQ(picture.count("text"), 2U);
}

TEST(EmfPlusDamage, EveryLengthCanBeRead) {
  const Bytes whole = rich();
  for (size_t length = 0; length < whole.size(); ++length) {
    const Drawn picture = draw(Bytes(whole.begin(), whole.begin() + length));
    EXPECT_EQ(picture.svg.substr(0, 4), "<svg") << length;
  }
}

TEST(EmfPlusDamage, EveryFieldMayBeAnything) {
  const Bytes whole = rich();
  for (size_t at = 0; at + 4 <= whole.size(); at += 2) {
    for (const uint32_t value : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, kMost, 0x7F800000U, 0x7FC00000U}) {
      Bytes changed = whole;
      support::patchInteger(changed, at, value);
      const Drawn picture = draw(changed);
      EXPECT_EQ(picture.svg.find("nan"), std::string::npos) << at;
      EXPECT_EQ(picture.svg.find("inf"), std::string::npos) << at;
    }
  }
}

TEST(EmfPlusDamage, AnyBytesCanBeRead) {
  std::mt19937 random(1);
  const Bytes whole = rich();
  for (int round = 0; round < 500; ++round) {
    Bytes changed = whole;
    for (int i = 0; i < 20; ++i) changed[random() % changed.size()] = static_cast<uint8_t>(random());
    EXPECT_NO_THROW(draw(changed));
  }
}

TEST(EmfPlusDamage, ARecordWithoutASizeEndsItsComment) {
  const Records good = Records().add(0x4009, 0, Fields().u32(kRed));
  Bytes bad = Records().add(0x4003, 0).bytes;
  support::patchInteger(bad, 4, uint32_t{8});
  bad.insert(bad.end(), good.bytes.begin(), good.bytes.end());
  const Drawn picture = draw({bad, good.bytes});
  EXPECT_FALSE(picture.isWhole);
  EXPECT_EQ(picture.count("path"), 1U);
}

TEST(EmfPlusDamage, CountsBeyondTheBytesAreCut) {
  EXPECT_EQ(draw(Records().add(0x400C, kColour, Fields().u32(kRed).u32(kMost).reals({0, 0, 9, 0, 9, 9})))
                .element("path")["d"],
            "M0 0l9 0 0 9z");
  EXPECT_EQ(draw(Records().add(0x400A, kColour, Fields().u32(kRed).u32(kMost).reals({0, 0, 9, 9})))
                .element("path")["d"],
            "M0 0l9 0 0 9-9 0z");
}

TEST(EmfPlusDamage, ObjectsBeyondTheTableAreNone) {
  EXPECT_FALSE(draw(Records().object(kBrush, 64, solidBrush(kRed))).isWhole);
  EXPECT_FALSE(draw(Records().add(0x400E, 0, Fields().u32(64).reals({0, 0, 9, 9}))).isWhole);
}

TEST(EmfPlusDamage, SavesAreBounded) {
  Records records;
  for (uint32_t i = 0; i < 20000; ++i) records.add(0x4028, 0, Fields().u32(i));
  for (uint32_t i = 0; i < 20000; ++i) records.add(0x4026, 0, Fields().u32(1000000));
  records.add(0x4009, 0, Fields().u32(kRed));
  EXPECT_EQ(draw(records).count("path"), 1U);
}

TEST(EmfPlusDamage, DeepRegionsAreCut) {
  for (const uint32_t operation : {1U, 2U, 3U, 4U, 5U}) {
    Fields tree = Fields().u32(kVersion).u32(kMost);
    for (int i = 0; i < 100000; ++i) tree.u32(operation);
    const Drawn picture =
        draw(Records().object(kRegion, 1, tree).add(0x4034, 1).add(0x4009, 0, Fields().u32(kRed)));
    EXPECT_FALSE(picture.isWhole) << operation;
    EXPECT_LT(picture.svg.size(), 200000U) << operation;
  }
}

TEST(EmfPlusDamage, TreesOfEitherOrDoNotDouble) {
  // Each level is walked along twice.
  Fields tree = Fields().u32(kVersion).u32(60);
  const Bytes triangle = path({0, 0, 9, 0, 9, 9}, {0, 1, 0x81});
  for (int i = 0; i < 60; ++i) tree.u32(3);
  for (int i = 0; i < 61; ++i) tree.u32(0x10000001).counted(triangle);
  const Drawn picture =
      draw(Records().object(kRegion, 1, tree).add(0x4034, 1).add(0x4009, 0, Fields().u32(kRed)));
  EXPECT_FALSE(picture.isWhole);
  EXPECT_LT(picture.svg.size(), 1000000U);
}

TEST(EmfPlusDamage, ObjectsAreNotReadWithoutEnd) {
  // A large path, drawn by many small records.
  Fields large = Fields().u32(kVersion).u32(50000).u32(0x4000);
  for (int i = 0; i < 50000; ++i) large.shorts({i % 100, i % 77});
  Records records;
  records.object(kPath, 1, large);
  for (int i = 0; i < 3000; ++i) records.add(0x4014, kColour | 1, Fields().u32(kRed));
  const Drawn picture = draw(std::vector<Bytes>{records.bytes}, false, 1 << 20);
  EXPECT_LT(picture.svg.size(), size_t{2} << 20);
}

TEST(EmfPlusDamage, LargeBitmapsThatSayLittleAreNotWrittenWithoutEnd) {
  Records records;
  records.object(
      kImage, 1,
      pixelImage(8000, 1000, 1000, 0x00030101, Fields().u32(0).u32(2).u32(0).u32(0).bytes(Bytes(1000000))));
  for (int i = 0; i < 2000; ++i)
    records.add(0x401A, 1, Fields().u32(0).u32(2).reals({0, 0, 8000, 1000, 0, 0, 9, 9}));
  const Drawn picture = draw(records);
  EXPECT_FALSE(picture.isWhole);
  EXPECT_GE(picture.count("image"), 1U);
  EXPECT_LT(picture.count("image"), 100U);
}

TEST(EmfPlusDamage, NothingIsReadOnceTheOutputEnds) {
  Records records;
  for (int i = 0; i < 50000; ++i) records.add(0x400E, kColour, Fields().u32(kRed).reals({0, 0, 50, 50}));
  EXPECT_LT(draw(std::vector<Bytes>{records.bytes}, false, 20000).svg.size(), 40000U);
}

}  // namespace
