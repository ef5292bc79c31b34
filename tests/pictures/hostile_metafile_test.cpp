// Metafiles whose records refer to the same bytes again and again. What is read of them, and written, goes
// with their size: without its bound each of these would keep a machine busy for minutes, up to the test's
// own time.

#include <gtest/gtest.h>

#include <string>

#include "pictures/metafile.h"
#include "support/picture_memory.h"
#include "support/small_pictures.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::PictureMemory;

std::string played(decltype(playEmf)& play, const Bytes& file) {
  PictureMemory memory;
  play(ByteView(file.data(), file.size()), {}, memory);
  return {memory.bytes.begin(), memory.bytes.end()};
}

/// A record of so many texts, each of which is all characters of the record.
Bytes overlappingTexts(uint32_t texts, uint32_t characters) {
  constexpr uint32_t kPolyText = 97, kHead = 40, kText = 40;
  const uint32_t begin = kHead + texts * kText;
  ByteWriter record;
  record.u32(kPolyText).u32(begin + characters * 2).zeros(16).u32(1).u32(0).u32(0).u32(texts);
  for (uint32_t i = 0; i < texts; ++i)
    record.u32(0).u32(0).u32(characters).u32(begin).u32(0).zeros(16).u32(0);
  // Nothing of a control character is written, so that no limit of the output ends it.
  for (uint32_t i = 0; i < characters; ++i) record.u16(1);
  return record.take();
}

TEST(HostileMetafile, TextsThatLieOnEachOtherAreReadOnce) {
  EXPECT_LT(played(playEmf, support::emfOf(overlappingTexts(20000, 400000), 1)).size(), 4U << 20);
}

TEST(HostileMetafile, TextsOfOneRecordAreAllThere) {
  constexpr uint32_t kPolyText = 97, kBegin = 40 + 2 * 40;
  ByteWriter record;
  record.u32(kPolyText).u32(kBegin + 8).zeros(16).u32(1).u32(0).u32(0).u32(2);
  record.u32(10).u32(10).u32(2).u32(kBegin).u32(0).zeros(16).u32(0);
  record.u32(10).u32(30).u32(2).u32(kBegin + 4).u32(0).zeros(16).u32(0);
  record.u16('a').u16('b').u16('c').u16('d');
  const std::string svg = played(playEmf, support::emfOf(record.take(), 1));
  EXPECT_NE(svg.find(">ab</text>"), std::string::npos) << svg;
  EXPECT_NE(svg.find(">cd</text>"), std::string::npos) << svg;
}

/// One pattern of two inks, drawn in so many colours.
Bytes patternInColours(uint32_t colours, uint32_t side) {
  constexpr uint32_t kMonoBrush = 93, kSelect = 37, kTextColour = 24, kRectangle = 43;
  const uint32_t bits = side * side / 8, header = 48;
  ByteWriter records;
  records.u32(kMonoBrush)
      .u32(32 + header + bits)
      .u32(1)
      .u32(0)
      .u32(32)
      .u32(header)
      .u32(32 + header)
      .u32(bits);
  records.u32(40).u32(side).u32(side).u16(1).u16(1).zeros(24).u32(0).u32(0xFFFFFF).zeros(bits);
  records.u32(kSelect).u32(12).u32(1);
  for (uint32_t i = 0; i < colours; ++i) {
    records.u32(kTextColour).u32(12).u32(i);
    records.u32(kRectangle).u32(24).u32(10).u32(10).u32(90).u32(40);
  }
  return support::emfOf(records.take(), 2 + 2 * colours);
}

size_t countOf(std::string_view text, std::string_view part) {
  size_t count = 0;
  for (size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST(HostileMetafile, APatternInManyColoursIsNotDrawnWithoutEnd) {
  const std::string svg = played(playEmf, patternInColours(30000, 2048));
  const size_t patterns = countOf(svg, "<pattern");
  EXPECT_GE(patterns, 8U);
  EXPECT_LT(patterns, 1000U);
}

TEST(HostileMetafile, SmallPatternsAreDrawnInEachColour) {
  EXPECT_EQ(countOf(played(playEmf, patternInColours(500, 32)), "<pattern"), 500U);
}

TEST(HostileMetafile, ABareOneIsMeasuredWithoutItsClips) {
  // A region of many boxes, which is selected many times, and nothing that says how large the picture is.
  constexpr uint16_t kBoxes = 5000;
  ByteWriter records;
  const uint32_t words = 14 + 4 + 2 * kBoxes;
  records.u32(words).u16(0x06FF).u16(0).u16(6).u32(0).u16(0).u16(1).u16(0).zeros(8);
  records.u16(2 * kBoxes).u16(0).u16(10);
  for (uint16_t i = 0; i < kBoxes; ++i) records.u16(2 * i).u16(2 * i + 1);
  records.u16(2 * kBoxes);
  for (int i = 0; i < 200000; ++i) records.u32(4).u16(0x012C).u16(0);
  records.u32(7).u16(0x041B).u16(40).u16(90).u16(10).u16(10).u32(3).u16(0);
  const Bytes all = records.take();
  ByteWriter file;
  file.u16(1)
      .u16(9)
      .u16(0x300)
      .u32(9 + static_cast<uint32_t>(all.size()) / 2)
      .u16(1)
      .u32(words)
      .u16(0)
      .bytes(all);
  EXPECT_LE(played(playWmf, file.take()).size(), (16U << 20) + 64 * (all.size() + 18) + 1000);
}

}  // namespace
}  // namespace pagerex
