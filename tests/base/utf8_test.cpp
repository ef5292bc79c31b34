#include "base/utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "base/utf8_output.h"
#include "support/memory_sink.h"

namespace pagerex {
namespace {

using Converter = size_t (*)(const char16_t*, size_t, char*, Utf8Filter);

/// From a text that ends where its memory does, to bytes that do likewise.
std::string convertedBy(Converter converter, const std::u16string& text, Utf8Filter filter) {
  const std::vector<char16_t> exact(text.begin(), text.end());
  std::vector<char> out(mostUtf8(text.size()));
  return std::string(out.data(), converter(exact.data(), exact.size(), out.data(), filter));
}

std::string converted(const std::u16string& text, Utf8Filter filter = Utf8Filter::kNone) {
  return convertedBy(utf8FromUtf16, text, filter);
}

}  // namespace

TEST(Utf8, SpellsCharactersOfEachLength) {
  EXPECT_EQ(converted(u"a\u00E4\u4E2D\U0001F600z"), "a\u00E4\u4E2D\U0001F600z");
}

TEST(Utf8, ReplacesHalvesOfCharacters) {
  EXPECT_EQ(converted({u'a', 0xD83D, u'b', 0xDE00, 0xD83D}), "a\uFFFDb\uFFFD\uFFFD");
}

TEST(Utf8, KeepsControlsUnlessTheyAreFiltered) {
  const std::u16string text{u'a', 1, u'\n', u'\t', 0xFFFE, 0xFDD0, 0xFEFF, 0xAD, u'b'};
  EXPECT_EQ(converted(text).size(), 1 + 1 + 1 + 1 + 3 + 3 + 3 + 2 + 1);
  EXPECT_EQ(converted(text, Utf8Filter::kControls), "a\n\t\u00ADb");
  EXPECT_EQ(converted(text, Utf8Filter::kControlsAndSoftHyphens), "a\n\tb");
}

TEST(Utf8, LeavesNoncharactersOfOtherPlanesOut) {
  EXPECT_EQ(converted(u"a\U0001FFFEb", Utf8Filter::kControls), "ab");
}

TEST(Utf8, IsTheSameByBlocksAndByOnes) {
  std::mt19937 random(7);
  constexpr char16_t kOther[] = {1, 0x1F, 0x7F, 0x80, 0x7FF, 0x800, 0xD800, 0xDC00, 0xFFFF, 0xAD, 0x8020};
  for (int round = 0; round < 20000; ++round) {
    std::u16string text(random() % 70, u'a');
    for (char16_t& unit : text) {
      if (random() % 12 == 0) unit = kOther[random() % std::size(kOther)];
    }
    const auto filter = static_cast<Utf8Filter>(round % 3);
    ASSERT_EQ(converted(text, filter), convertedBy(utf8FromUtf16ByOnes, text, filter));
  }
}

TEST(Utf8Output, PassesTextsOnThatAreLongerThanItsBuffer) {
  support::MemorySink sink;
  OutputFiles files(sink);
  Utf8Output out(files);
  ASSERT_TRUE(out.Open("a"));
  const std::u16string faces = [] {
    std::u16string text = u"x";
    for (int i = 0; i < 50000; ++i) text += u"\U0001F600";
    return text;
  }();
  const std::string bytes(200000, 'y');
  out.Put(bytes);
  out.Put(faces);
  out.Put('z');
  EXPECT_EQ(out.written(), 200000u + 1 + 200000 + 1);
  out.Close();
  EXPECT_EQ(sink.files["a"], bytes + converted(faces) + "z");
}

TEST(Utf8Output, DropsWhatIsPutWithoutAFile) {
  support::MemorySink sink;
  OutputFiles files(sink);
  Utf8Output out(files);
  out.Put(std::string(100000, 'y'));
  out.Close();
  EXPECT_TRUE(sink.files.empty());
}

}  // namespace pagerex
