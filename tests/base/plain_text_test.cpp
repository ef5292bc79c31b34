#include "base/plain_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Text = std::vector<uint16_t>;

/// The bytes that are copied from a text which ends where its memory does, to bytes that do likewise.
std::string copied(const Text& text, uint8_t previous) {
  const std::vector<uint16_t> exact(text.begin(), text.end());
  std::vector<char> out(text.size());
  const size_t count = copyPlainText(exact.data(), exact.size(), previous, out.data());
  return std::string(out.data(), count);
}

std::string copiedByOnes(const Text& text, uint8_t previous) {
  std::vector<char> out(text.size());
  const size_t count = copyPlainTextByOnes(text.data(), text.size(), previous, out.data());
  return std::string(out.data(), count);
}

Text plain(size_t length) {
  Text text(length);
  for (size_t i = 0; i < length; ++i) text[i] = static_cast<uint16_t>(i % 6 == 5 ? ' ' : 'a' + i % 26);
  return text;
}

}  // namespace

TEST(PlainText, CopiesWordsAndTheBlanksBetweenThem) {
  const Text text = plain(100);
  EXPECT_EQ(copied(text, 'x'), std::string(text.begin(), text.end()));
}

TEST(PlainText, StopsInFrontOfASecondSpace) {
  EXPECT_EQ(copied({'a', ' ', ' ', 'b'}, 'x'), "a ");
  EXPECT_EQ(copied({' ', 'a'}, ' '), "");
}

TEST(PlainText, TellsEveryCharacterAsTheOneByOneCopyDoes) {
  for (uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
    for (size_t length : {1, 8, 16}) {
      Text text = plain(length);
      text.back() = static_cast<uint16_t>(unit);
      ASSERT_EQ(copied(text, 'x'), copiedByOnes(text, 'x')) << unit << " at the end of " << length;
    }
  }
}

TEST(PlainText, StopsAtEveryPlaceOfEveryLength) {
  for (size_t length = 0; length <= 70; ++length) {
    for (size_t at = 0; at < length; ++at) {
      for (uint16_t unit : {0, 9, 31, 38, 60, 62, 128, 255, 256, 0x4E2D, 0x8000, 0xD800, 0xFF20, 0xFFFF}) {
        Text text = plain(length);
        text[at] = unit;
        ASSERT_EQ(copied(text, 'x').size(), at) << unit << " in " << length;
      }
    }
  }
}

TEST(PlainText, SeesPairsOfSpacesAcrossBlocks) {
  for (size_t length = 1; length <= 70; ++length) {
    for (size_t at = 0; at < length; ++at) {
      Text text(length, 'a');
      text[at] = ' ';
      if (at + 1 < length) text[at + 1] = ' ';
      ASSERT_EQ(copied(text, 'x'), copiedByOnes(text, 'x')) << at << " in " << length;
      ASSERT_EQ(copied(text, ' '), copiedByOnes(text, ' ')) << at << " in " << length;
    }
  }
}

TEST(PlainText, CopiesFromAndToAnyAddress) {
  const Text text = plain(64);
  for (size_t from = 0; from < 9; ++from) {
    for (size_t to = 0; to < 17; ++to) {
      std::vector<char> out(96, '#');
      ASSERT_EQ(copyPlainText(text.data() + from, 41, 'x', out.data() + to), 41u);
      ASSERT_EQ(std::string(out.data() + to, 41), std::string(text.begin() + from, text.begin() + from + 41));
      ASSERT_EQ(out[to + 41], '#');
    }
  }
}

TEST(PlainText, CopiesMixedTextAsTheOneByOneCopyDoes) {
  std::mt19937 random(1);
  const Text pieces = {' ', ' ', 'a', 'Z', '~', 127, '&', '<', '=', '>', '?', 31, 0x20AC, 0x0120, 0xFF3C};
  for (int round = 0; round < 20000; ++round) {
    Text text = plain(random() % 64);
    for (uint16_t& unit : text) {
      if (random() % 24 == 0) unit = pieces[random() % pieces.size()];
    }
    const uint8_t previous = random() % 2 == 0 ? ' ' : 'x';
    ASSERT_EQ(copied(text, previous), copiedByOnes(text, previous));
  }
}
