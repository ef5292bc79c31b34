#include "base/code_page_1252.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

unsigned short characterOf(unsigned char byte) {
  unsigned short character = 0xFFFF;
  MsoCP1252ToWcs(&byte, 1, &character);
  return character;
}

}  // namespace

TEST(CodePage1252, KeepsAsciiAndLatin) {
  for (unsigned code = 0; code < 0x80; ++code) {
    EXPECT_EQ(characterOf(static_cast<unsigned char>(code)), code);
  }
  for (unsigned code = 0xA0; code < 0x100; ++code) {
    EXPECT_EQ(characterOf(static_cast<unsigned char>(code)), code);
  }
}

TEST(CodePage1252, LeavesUndefinedCodesAsTheyAre) {
  for (unsigned char code : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) EXPECT_EQ(characterOf(code), code);
}

TEST(CodePage1252, MapsTheCodesInBetween) {
  const std::vector<unsigned char> codes = {0x80, 0x82, 0x83, 0x84, 0x85, 0x86, 0x87, 0x88, 0x89,
                                            0x8A, 0x8B, 0x8C, 0x8E, 0x91, 0x92, 0x93, 0x94, 0x95,
                                            0x96, 0x97, 0x98, 0x99, 0x9A, 0x9B, 0x9C, 0x9E, 0x9F};
  const std::vector<unsigned short> expected = {0x20AC, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x017D, 0x2018,
                                                0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC,
                                                0x2122, 0x0161, 0x203A, 0x0153, 0x017E, 0x0178};
  std::vector<unsigned short> characters(codes.size());
  MsoCP1252ToWcs(codes.data(), static_cast<unsigned>(codes.size()), characters.data());
  EXPECT_EQ(characters, expected);
}

TEST(CodePage1252, WidensBlocksAsTheByteByByteWideningDoes) {
  std::mt19937 random(3);
  for (unsigned length = 0; length < 80; ++length) {
    for (int round = 0; round < 40; ++round) {
      // Most rounds have few codes of those that are no characters of their own, or none.
      std::vector<unsigned char> text(length);
      for (unsigned char& byte : text) {
        byte = static_cast<unsigned char>(random() % 30 < 29u ? random() % 128 : 0x7E + random() % 130);
      }
      std::vector<unsigned short> blocks(length), ones(length);
      MsoCP1252ToWcs(text.data(), length, blocks.data());
      MsoCP1252ToWcsByOnes(text.data(), length, ones.data());
      ASSERT_EQ(blocks, ones) << length;
    }
  }
}

TEST(CodePage1252, KnowsEachCodeAtEachPlaceOfABlock) {
  for (unsigned code = 0; code < 0x100; ++code) {
    for (unsigned place = 0; place < 16; ++place) {
      std::vector<unsigned char> text(17, 'a');
      text[place] = static_cast<unsigned char>(code);
      std::vector<unsigned short> characters(17);
      MsoCP1252ToWcs(text.data() + 1, 16, characters.data() + 1);
      MsoCP1252ToWcs(text.data(), 16, characters.data());
      ASSERT_EQ(characters[place], characterOf(static_cast<unsigned char>(code)));
    }
  }
}
