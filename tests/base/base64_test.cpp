#include "base/base64.h"

#include <gtest/gtest.h>

#include <string_view>

namespace pagerex {
namespace {

std::string encoded(std::string_view bytes, size_t part) {
  Base64 encoder;
  std::string text;
  for (size_t at = 0; at < bytes.size(); at += part) {
    const std::string_view next = bytes.substr(at, part);
    encoder.Append(ByteView(reinterpret_cast<const uint8_t*>(next.data()), next.size()), text);
  }
  encoder.Finish(text);
  return text;
}

TEST(Base64, OfThePublishedExamples) {
  EXPECT_EQ(encoded("", 1), "");
  EXPECT_EQ(encoded("f", 1), "Zg==");
  EXPECT_EQ(encoded("fo", 2), "Zm8=");
  EXPECT_EQ(encoded("foo", 3), "Zm9v");
  EXPECT_EQ(encoded("foob", 4), "Zm9vYg==");
  EXPECT_EQ(encoded("fooba", 5), "Zm9vYmE=");
  EXPECT_EQ(encoded("foobar", 6), "Zm9vYmFy");
}

TEST(Base64, HasEveryDigit) {
  const char bytes[] =
      "\x00\x10\x83\x10\x51\x87\x20\x92\x8B\x30\xD3\x8F\x41\x14\x93\x51\x55\x97\x61\x96\x9B\x71\xD7\x9F"
      "\x82\x18\xA3\x92\x59\xA7\xA2\x9A\xAB\xB2\xDB\xAF\xC3\x1C\xB3\xD3\x5D\xB7\xE3\x9E\xBB\xF3\xDF\xBF";
  EXPECT_EQ(encoded({bytes, 48}, 48), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

TEST(Base64, IsTheSameInPartsOfAnySize) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i * 7);
  for (size_t length = 250; length <= bytes.size(); ++length) {
    const std::string_view some = std::string_view(bytes).substr(0, length);
    const std::string whole = encoded(some, length);
    for (size_t part = 1; part < length; ++part) ASSERT_EQ(encoded(some, part), whole) << part;
  }
}

TEST(Base64, BeginsAnewBehindItsEnd) {
  Base64 encoder;
  std::string text;
  const uint8_t bytes[] = {'f', 'o'};
  for (int i = 0; i < 2; ++i) {
    encoder.Append(ByteView(bytes, 2), text);
    encoder.Finish(text);
  }
  EXPECT_EQ(text, "Zm8=Zm8=");
}

}  // namespace
}  // namespace pagerex
