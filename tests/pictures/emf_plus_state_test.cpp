// Coordinates, saves, containers and clips of EMF+, and how its records come.

#include <gtest/gtest.h>

#include "support/emf_plus_writer.h"

namespace {

using namespace support::emf_plus;
using support::Bytes;

constexpr uint16_t kColour = 0x8000, kAppend = 0x2000;
constexpr uint32_t kRed = 0xFFFF0000;

Records& box(Records& records, float left = 10, float top = 20, float width = 30, float height = 40) {
  return records.add(0x400A, kColour, Fields().u32(kRed).u32(1).reals({left, top, width, height}));
}

/// Where a box from 10,20 to 40,60 stands after records.
std::string boxAfter(Records records) {
  const Drawn picture = draw(box(records));
  EXPECT_TRUE(picture.isWhole);
  return picture.element("path")["d"];
}

Records header(uint32_t dpi) {
  return Records().add(0x4001, 0, Fields().u32(kVersion).u32(1).u32(dpi).u32(dpi));
}

TEST(EmfPlusWorld, IsSetResetAndMultiplied) {
  const Bytes twice = Fields().reals({2, 0, 0, 2, 1, 1}), shift = Fields().reals({1, 0, 0, 1, 5, 0});
  EXPECT_EQ(boxAfter(Records().add(0x402A, 0, twice)), "M21 41l60 0 0 80-60 0z");
  EXPECT_EQ(boxAfter(Records().add(0x402A, 0, twice).add(0x402B, 0)), "M10 20l30 0 0 40-30 0z");
  EXPECT_EQ(boxAfter(Records().add(0x402A, 0, twice).add(0x402C, 0, shift)), "M31 41l60 0 0 80-60 0z");
  EXPECT_EQ(boxAfter(Records().add(0x402A, 0, twice).add(0x402C, kAppend, shift)), "M26 41l60 0 0 80-60 0z");
}

TEST(EmfPlusWorld, IsMovedScaledAndTurned) {
  EXPECT_EQ(boxAfter(Records().add(0x402D, 0, Fields().reals({1, 2}))), "M11 22l30 0 0 40-30 0z");
  EXPECT_EQ(boxAfter(Records().add(0x402E, 0, Fields().reals({2, 0.5F}))), "M20 10l60 0 0 20-60 0z");
  EXPECT_EQ(boxAfter(Records().add(0x402F, 0, Fields().reals({90}))), "M-20 10l0 30-40 0 0-30z");
}

TEST(EmfPlusPage, HasUnitsAndAScale) {
  EXPECT_EQ(boxAfter(Records().add(0x4030, 2, Fields().reals({2}))), "M20 40l60 0 0 80-60 0z");
  EXPECT_EQ(boxAfter(header(144).add(0x4030, 3, Fields().reals({1}))), "M20 40l60 0 0 80-60 0z");
  EXPECT_EQ(boxAfter(header(100).add(0x4030, 4, Fields().reals({0.01F}))), "M10 20l30 0 0 40-30 0z");
  EXPECT_EQ(boxAfter(header(300).add(0x4030, 5, Fields().reals({1}))), "M10 20l30 0 0 40-30 0z");
  EXPECT_EQ(boxAfter(header(254).add(0x4030, 6, Fields().reals({0.1F}))), "M10 20l30 0 0 40-30 0z");
}

TEST(EmfPlusSaves, AreRestoredByTheirIndex) {
  const Bytes shift = Fields().reals({5, 0});
  Records records;
  records.add(0x4025, 0, Fields().u32(1)).add(0x402D, 0, shift);
  records.add(0x4025, 0, Fields().u32(2)).add(0x402D, 0, shift);
  EXPECT_EQ(boxAfter(Records(records).add(0x4026, 0, Fields().u32(2))), "M15 20l30 0 0 40-30 0z");
  EXPECT_EQ(boxAfter(Records(records).add(0x4026, 0, Fields().u32(1))), "M10 20l30 0 0 40-30 0z");
  EXPECT_EQ(boxAfter(Records(records).add(0x4026, 0, Fields().u32(7))), "M20 20l30 0 0 40-30 0z");
}

TEST(EmfPlusContainers, MapOneBoxToAnother) {
  const Records begun = Records()
                            .add(0x402D, 0, Fields().reals({1, 1}))
                            .add(0x4027, 2, Fields().reals({10, 10, 50, 50, 0, 0, 100, 100}).u32(4));
  EXPECT_EQ(boxAfter(begun), "M16 21l15 0 0 20-15 0z");
  EXPECT_EQ(boxAfter(Records(begun).add(0x402A, 0, Fields().reals({2, 0, 0, 2, 0, 0}))),
            "M21 31l30 0 0 40-30 0z");
  EXPECT_EQ(boxAfter(Records(begun).add(0x4029, 0, Fields().u32(4))), "M11 21l30 0 0 40-30 0z");
}

TEST(EmfPlusContainers, MayHaveNoBoxes) {
  const Records begun = Records().add(0x402D, 0, Fields().reals({1, 1})).add(0x4028, 0, Fields().u32(4));
  EXPECT_EQ(boxAfter(begun), "M11 21l30 0 0 40-30 0z");
  EXPECT_EQ(boxAfter(Records(begun).add(0x402B, 0)), "M11 21l30 0 0 40-30 0z");
}

TEST(EmfPlusContainers, KeepTheClipOfWhatIsAround) {
  Records records;
  records.add(0x4032, 0, Fields().reals({10, 10, 50, 50})).add(0x4028, 0, Fields().u32(4)).add(0x4031, 0);
  EXPECT_EQ(draw(box(records)).element("path", 1).parent.at("clip-path"), "url(#c1)");
}

// Clips

/// What a box is clipped by after records: the clip, then those that it refers to.
std::vector<Element> clipsAfter(Records records, bool isWhole = true) {
  const Drawn picture = draw(box(records));
  EXPECT_EQ(picture.isWhole, isWhole);
  std::vector<Element> clips;
  const Element& drawn = picture.element("path", picture.count("path") - 1);
  for (auto next = drawn.parent; next.count("clip-path") != 0;) {
    for (const Element& each : picture.elements) {
      if (each.parentName == "clipPath" && "url(#" + each.parent.at("id") + ")" == next.at("clip-path")) {
        clips.push_back(each);
        next = each.parent;
        break;
      }
    }
  }
  return clips;
}

constexpr uint16_t kAnd = 0x100, kOr = 0x200, kXor = 0x300, kExclude = 0x400, kComplement = 0x500;

Records boxClip() {
  return Records().add(0x4032, 0, Fields().reals({10, 10, 20, 20}));
}
const Bytes kOther = Fields().reals({20, 20, 20, 20});

TEST(EmfPlusClips, ReplaceAndIntersect) {
  EXPECT_EQ(clipsAfter(boxClip()).at(0)["d"], "M10 10l20 0 0 20-20 0z");
  EXPECT_EQ(clipsAfter(boxClip().add(0x4032, 0, kOther)).size(), 1U);
  EXPECT_EQ(clipsAfter(boxClip().add(0x4032, 0, kOther)).at(0)["d"], "M20 20l20 0 0 20-20 0z");
  const auto both = clipsAfter(boxClip().add(0x4032, kAnd, kOther));
  ASSERT_EQ(both.size(), 2U);
  EXPECT_EQ(both[0]["d"], "M20 20l20 0 0 20-20 0z");
  EXPECT_EQ(both[1]["d"], "M10 10l20 0 0 20-20 0z");
}

TEST(EmfPlusClips, OfAllThatIsSeenAreNone) {
  EXPECT_TRUE(clipsAfter(Records().add(0x4032, 0, Fields().reals({-1, -1, 200, 200}))).empty());
}

TEST(EmfPlusClips, Exclude) {
  const auto clips = clipsAfter(boxClip().add(0x4032, kExclude, kOther));
  ASSERT_EQ(clips.size(), 2U);
  EXPECT_EQ(clips[0]["d"].substr(0, 2), "M-");
  EXPECT_EQ(clips[0]["clip-rule"], "evenodd");
}

TEST(EmfPlusClips, UniteAndTakeEitherOr) {
  Records united = boxClip().add(0x4032, kOr, kOther);
  const Drawn either = draw(box(united));
  EXPECT_EQ(either.element("clipPath", 2)["id"], "c3");
  EXPECT_EQ(either.element("path", 2)["clip-path"], "url(#c1)");
  EXPECT_EQ(either.element("path", 3)["clip-path"], "url(#c2)");
  Records exclusive = boxClip().add(0x4032, kXor, kOther);
  const Drawn picture = draw(box(exclusive));
  EXPECT_TRUE(picture.isWhole);
  // One without the other, the other without the one, and both of these.
  EXPECT_EQ(picture.count("clipPath"), 5U);
  EXPECT_EQ(picture.element("clipPath", 1)["clip-path"], "url(#c1)");
  EXPECT_EQ(picture.element("clipPath", 3)["clip-path"], "url(#c3)");
}

TEST(EmfPlusClips, Complement) {
  const auto clips = clipsAfter(boxClip().add(0x4032, kComplement, kOther));
  ASSERT_EQ(clips.size(), 2U);
  EXPECT_EQ(clips[0]["clip-rule"], "evenodd");
  EXPECT_EQ(clips[1]["d"], "M20 20l20 0 0 20-20 0z");
  // Nothing is outside of all.
  EXPECT_EQ(clipsAfter(Records().add(0x4032, kComplement, kOther)).at(0)["d"], "");
}

TEST(EmfPlusClips, AreOfPaths) {
  const Bytes triangle = path({0, 0, 9, 0, 9, 9}, {0, 1, 0x81});
  EXPECT_EQ(clipsAfter(Records().object(kPath, 2, triangle).add(0x4033, 2)).at(0)["d"], "M0 0l9 0 0 9z");
  EXPECT_TRUE(clipsAfter(Records().add(0x4033, 2), false).empty());
}

TEST(EmfPlusClips, AreMovedAndReset) {
  EXPECT_EQ(clipsAfter(boxClip().add(0x4035, 0, Fields().reals({5, 6}))).at(0)["d"],
            "M15 16l20 0 0 20-20 0z");
  EXPECT_TRUE(clipsAfter(boxClip().add(0x4031, 0)).empty());
  const Bytes triangle = path({0, 0, 9, 0, 9, 9}, {0, 1, 0x81});
  const Records ofPath =
      Records().object(kPath, 2, triangle).add(0x4033, 2).add(0x4035, 0, Fields().reals({5, 6}));
  Element moved = clipsAfter(ofPath).at(0);
  EXPECT_EQ(moved["transform"], "matrix(1 0 0 1 5 6)");
  EXPECT_EQ(moved["clip-path"], "url(#c1)");
}

// Regions

constexpr uint32_t kBoxNode = 0x10000000, kPathNode = 0x10000001, kEmptyNode = 0x10000002,
                   kInfiniteNode = 0x10000003;

Fields node(float left) {
  return Fields().u32(kBoxNode).reals({left, 0, 10, 10});
}

Fields node(uint32_t operation, const Fields& first, const Fields& second) {
  return Fields().u32(operation).bytes(first).bytes(second);
}

/// A region set as clip.
Records regionClip(const Fields& tree) {
  return Records().object(kRegion, 2, Fields().u32(kVersion).u32(0).bytes(tree)).add(0x4034, 2);
}

TEST(EmfPlusRegions, OfBoxesTogetherAreOnePath) {
  const auto clips = clipsAfter(regionClip(node(2, node(2, node(0), node(20)), node(40))));
  ASSERT_EQ(clips.size(), 1U);
  EXPECT_EQ(clips[0]["d"], "M0 0l10 0 0 10-10 0zM20 0l10 0 0 10-10 0zM40 0l10 0 0 10-10 0z");
  EXPECT_EQ(clips[0]["clip-rule"], "");
  EXPECT_EQ(clipsAfter(regionClip(node(3, node(0), node(5)))).at(0)["clip-rule"], "evenodd");
}

TEST(EmfPlusRegions, IntersectAndExclude) {
  const auto both = clipsAfter(regionClip(node(1, node(0), node(5))));
  ASSERT_EQ(both.size(), 2U);
  EXPECT_EQ(both[0]["d"], "M5 0l10 0 0 10-10 0z");
  EXPECT_EQ(both[1]["d"], "M0 0l10 0 0 10-10 0z");
  const auto less = clipsAfter(regionClip(node(4, node(0), node(5))));
  ASSERT_EQ(less.size(), 2U);
  EXPECT_EQ(less[0]["d"].substr(0, 2), "M-");
  EXPECT_EQ(less[1]["d"], "M0 0l10 0 0 10-10 0z");
  const auto other = clipsAfter(regionClip(node(5, node(0), node(5))));
  ASSERT_EQ(other.size(), 2U);
  EXPECT_EQ(other[0]["d"], "M5 0l10 0 0 10-10 0z");
  EXPECT_EQ(other[1]["d"].substr(0, 2), "M-");
}

TEST(EmfPlusRegions, AreOfPathsEmptyOrInfinite) {
  const Bytes triangle = path({0, 0, 9, 0, 9, 9}, {0, 1, 0x81});
  EXPECT_EQ(clipsAfter(regionClip(Fields().u32(kPathNode).counted(triangle))).at(0)["d"], "M0 0l9 0 0 9z");
  EXPECT_EQ(clipsAfter(regionClip(Fields().u32(kEmptyNode))).at(0)["d"], "");
  EXPECT_EQ(clipsAfter(regionClip(Fields().u32(kInfiniteNode))).at(0)["d"].substr(0, 18),
            "M-4000000-4000000l");
}

TEST(EmfPlusRegions, OfPathsThatAreUnitedAreTwoClips) {
  const Bytes triangle = path({0, 0, 9, 0, 9, 9}, {0, 1, 0x81});
  Records records = regionClip(node(2, Fields().u32(kPathNode).counted(triangle), node(5)));
  const Drawn picture = draw(box(records));
  EXPECT_TRUE(picture.isWhole);
  EXPECT_EQ(picture.count("clipPath"), 3U);
  EXPECT_EQ(picture.element("path", 4).parent.at("clip-path"), "url(#c3)");
}

TEST(EmfPlusRegions, WhatIsOutsideOfATreeIsTakenApart) {
  // Without what lies in both: what is not in the one, and what is not in the other.
  const Drawn picture = draw(regionClip(node(4, node(50), node(1, node(0), node(5)))));
  EXPECT_TRUE(picture.isWhole);
  EXPECT_EQ(picture.count("clipPath"), 4U);
  // Either or, of which one is a tree.
  const Drawn either = draw(regionClip(node(3, node(1, node(0), node(5)), node(50))));
  EXPECT_TRUE(either.isWhole);
  EXPECT_GE(either.count("clipPath"), 5U);
}

TEST(EmfPlusRegions, AreFilled) {
  const Drawn picture = draw(Records()
                                 .object(kRegion, 2, Fields().u32(kVersion).u32(0).bytes(node(5)))
                                 .add(0x4013, kColour | 2, Fields().u32(kRed)));
  EXPECT_EQ(picture.element("path", 0)["d"], "M5 0l10 0 0 10-10 0z");
  EXPECT_EQ(picture.element("path", 1)["fill"], "#f00");
  EXPECT_EQ(picture.element("path", 1).parent.at("clip-path"), "url(#c1)");
}

// Records

TEST(EmfPlusRecords, GoOnInTheNextComment) {
  Records records;
  box(records);
  for (const size_t part : {1U, 4U, 11U, 12U, 13U, 30U}) {
    std::vector<Bytes> comments;
    for (size_t at = 0; at < records.bytes.size(); at += part)
      comments.emplace_back(records.bytes.begin() + at,
                            records.bytes.begin() + std::min(at + part, records.bytes.size()));
    EXPECT_EQ(draw(comments).element("path")["d"], "M10 20l30 0 0 40-30 0z") << part;
  }
}

TEST(EmfPlusRecords, ObjectsGoOnInFurtherRecords) {
  const Bytes whole = path({0, 0, 10, 0, 10, 10, 0, 10}, {0, 1, 1, 0x81});
  const auto size = static_cast<uint32_t>(whole.size());
  const auto part = [&](size_t from, size_t to) { return Bytes(whole.begin() + from, whole.begin() + to); };
  const uint16_t flags = kPath << 8 | 1;
  const Bytes fill = Fields().u32(kRed);
  const Records told = Records()
                           .add(0x4008, flags | 0x8000, Fields().u32(size).bytes(part(0, 20)))
                           .add(0x4008, flags | 0x8000, Fields().u32(size).bytes(part(20, 40)))
                           .add(0x4008, flags | 0x8000, Fields().u32(size).bytes(part(40, size)))
                           .add(0x4014, kColour | 1, fill);
  EXPECT_EQ(draw(told).element("path")["d"], "M0 0l10 0 0 10-10 0z");
  const Records plainEnd = Records()
                               .add(0x4008, flags | 0x8000, Fields().u32(size).bytes(part(0, 20)))
                               .add(0x4008, flags, part(20, size))
                               .add(0x4014, kColour | 1, fill);
  EXPECT_EQ(draw(plainEnd).element("path")["d"], "M0 0l10 0 0 10-10 0z");
}

TEST(EmfPlusRecords, AnObjectThatBreaksOffIsNone) {
  const Bytes whole = path({0, 0, 10, 0, 10, 10, 0, 10}, {0, 1, 1, 0x81});
  const Records records = Records()
                              .add(0x4008, 0x8000 | kPath << 8 | 1, Fields().u32(500).bytes(whole))
                              .add(0x4003, 0)
                              .add(0x4014, kColour | 1, Fields().u32(kRed));
  EXPECT_EQ(draw(records).elements.size(), 0U);
  EXPECT_FALSE(draw(records).isWhole);
}

TEST(EmfPlusRecords, LendTheDeviceUpToTheNextComment) {
  EXPECT_TRUE(draw(Records().add(0x4003, 0).add(0x4004, 0)).isDeviceLent);
  EXPECT_FALSE(draw(Records().add(0x4004, 0).add(0x4003, 0)).isDeviceLent);
  EXPECT_FALSE(draw({Records().add(0x4004, 0).bytes, Bytes()}).isDeviceLent);
}

TEST(EmfPlusRecords, HintsAndCommentsAreNothing) {
  Records records = header(96);
  for (const uint16_t type :
       {0x4002, 0x4003, 0x401D, 0x401E, 0x401F, 0x4020, 0x4021, 0x4022, 0x4023, 0x4024, 0x4038})
    records.add(type, 5, Fields().u32(1));
  EXPECT_EQ(boxAfter(records), "M10 20l30 0 0 40-30 0z");
}

TEST(EmfPlusRecords, WhatIsNotKnownIsTold) {
  for (const uint16_t type : {0x4000, 0x4005, 0x4037, 0x4039, 0x403A, 0x403B, 0x1234})
    EXPECT_FALSE(draw(Records().add(type, 0)).isWhole) << type;
}

}  // namespace
