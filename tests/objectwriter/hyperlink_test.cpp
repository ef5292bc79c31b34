#include "objectwriter/hyperlink.h"

#include <gtest/gtest.h>

#include <string>

#include "support/bytes.h"

namespace {

using hyperLink::HLinkType;
using support::Bytes;
using support::ByteWriter;

const Bytes kUrlMoniker = {0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                           0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
const Bytes kFileMoniker = {0x03, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                            0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};
const Bytes kUnknownMoniker(16, 0x77);

/// The header of a persisted link: an identity, a version, the flags.
ByteWriter linkOf(uint32_t flags) {
  ByteWriter link;
  link.fill(16, 0xD0).u32(2).u32(flags);
  return link;
}

/// A length in characters and the characters, the closing zero included.
ByteWriter& counted(ByteWriter& link, std::u16string_view text) {
  return link.u32(static_cast<uint32_t>(text.size() + 1)).text16(text).u16(0);
}

/// The same with the length in bytes.
ByteWriter& measured(ByteWriter& link, std::u16string_view text) {
  return link.u32(static_cast<uint32_t>(text.size() + 1) * 2).text16(text).u16(0);
}

/// What follows the identity of a file moniker.
ByteWriter& filePath(ByteWriter& link, std::string_view narrow, std::u16string_view wide = {}) {
  link.u16(0).u32(static_cast<uint32_t>(narrow.size() + 1)).text8(narrow).u8(0).fill(24, 0xAA);
  if (wide.empty()) return link.u32(0);
  const auto bytes = static_cast<uint32_t>(wide.size() * 2);
  return link.u32(bytes + 6).u32(bytes).u16(3).text16(wide);
}

hyperLink::HYPERLINK read(ByteWriter& link) {
  const Bytes bytes = link.take();
  return hyperLink::ReadHyperlink(ByteView(bytes.data(), bytes.size()));
}

TEST(Hyperlink, WithoutAddressIsALocation) {
  ByteWriter link = linkOf(0x08);
  const auto location = read(counted(link, u"top"));
  EXPECT_EQ(location.type, HLinkType::kLocation);
  EXPECT_EQ(location.location, "top");
  EXPECT_EQ(location.address, "");
}

TEST(Hyperlink, UrlIsMeasuredInBytes) {
  ByteWriter link = linkOf(0x03).bytes(kUrlMoniker);
  const auto url = read(measured(link, u"http://x/\u00E9"));
  EXPECT_EQ(url.type, HLinkType::kUrl);
  EXPECT_EQ(url.address, "http://x/\xC3\xA9");
}

TEST(Hyperlink, UrlKeepsItsLocationApart) {
  ByteWriter link = linkOf(0x0B).bytes(kUrlMoniker);
  measured(link, u"http://x/");
  const auto url = read(counted(link, u"there"));
  EXPECT_EQ(url.address, "http://x/");
  EXPECT_EQ(url.location, "there");
}

TEST(Hyperlink, DisplayAndFrameStandInFrontOfTheAddress) {
  ByteWriter link = linkOf(0x87);
  counted(link, u"Shown");
  counted(link, u"_blank").bytes(kUrlMoniker);
  const auto url = read(measured(link, u"http://x/"));
  EXPECT_EQ(url.display, "Shown");
  EXPECT_EQ(url.address, "http://x/");
}

TEST(Hyperlink, RelativeFileGoesOneFolderUp) {
  ByteWriter link = linkOf(0x01).bytes(kFileMoniker);
  const auto file = read(filePath(link, "a/b.doc"));
  EXPECT_EQ(file.type, HLinkType::kRelative);
  EXPECT_EQ(file.address, "../a/b.doc");
}

TEST(Hyperlink, RelativeAddressOfAnotherKindIsText) {
  ByteWriter link = linkOf(0x01).bytes(kUnknownMoniker);
  const auto other = read(measured(link, u"a/b.doc"));
  EXPECT_EQ(other.type, HLinkType::kRelative);
  EXPECT_EQ(other.address, "../a/b.doc");
}

TEST(Hyperlink, AbsoluteFileStaysAsItIs) {
  ByteWriter link = linkOf(0x03).bytes(kFileMoniker);
  const auto file = read(filePath(link, "C:\\a.doc"));
  EXPECT_EQ(file.type, HLinkType::kFile);
  EXPECT_EQ(file.address, "C:\\a.doc");
}

TEST(Hyperlink, WidePathOfAFileCounts) {
  ByteWriter link = linkOf(0x0B).bytes(kFileMoniker);
  filePath(link, "C:\\A~1.DOC", u"C:\\\u4E2D.doc");
  const auto file = read(counted(link, u"there"));
  EXPECT_EQ(file.address, "C:\\\xE4\xB8\xAD.doc");
  EXPECT_EQ(file.location, "there");
}

TEST(Hyperlink, AddressMayBeAPlainString) {
  ByteWriter link = linkOf(0x103);
  const auto plain = read(counted(link, u"mailto:a@b"));
  EXPECT_EQ(plain.type, HLinkType::kString);
  EXPECT_EQ(plain.address, "mailto:a@b");
}

TEST(Hyperlink, AbsoluteAddressOfUnknownKindIsNone) {
  ByteWriter link = linkOf(0x0B).bytes(kUnknownMoniker);
  measured(link, u"http://x/");
  const auto none = read(counted(link, u"there"));
  EXPECT_EQ(none.type, HLinkType::kNone);
  EXPECT_EQ(none.address, "");
  EXPECT_EQ(none.location, "");
}

TEST(Hyperlink, TextEndsAtItsFirstZero) {
  ByteWriter link = linkOf(0x08);
  link.u32(5).text16(u"ab").u16(0).text16(u"cd");
  EXPECT_EQ(read(link).location, "ab");
}

TEST(Hyperlink, LengthBeyondTheBytesIsCut) {
  for (const uint32_t length : {4u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    ByteWriter link = linkOf(0x08);
    link.u32(length).text16(u"abc").u8('d');
    EXPECT_EQ(read(link).location, "abc") << length;
  }
}

TEST(Hyperlink, EveryTruncationIsReadAsFarAsItGoes) {
  ByteWriter link = linkOf(0x8F);
  counted(link, u"Shown");
  counted(link, u"frame").bytes(kFileMoniker);
  filePath(link, "C:\\A~1.DOC", u"C:\\a.doc");
  counted(link, u"there");
  const Bytes whole = link.take();
  for (size_t size = 0; size < whole.size(); ++size) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
    const auto part = hyperLink::ReadHyperlink(ByteView(cut.data(), cut.size()));
    EXPECT_LE(part.location.size(), 5u) << size;
  }
}

TEST(Hyperlink, NoBytesAreALocationWithoutName) {
  const auto none = hyperLink::ReadHyperlink(ByteView());
  EXPECT_EQ(none.type, HLinkType::kLocation);
  EXPECT_EQ(none.location, "");
}

}  // namespace
