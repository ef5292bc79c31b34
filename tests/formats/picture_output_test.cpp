// Pictures of a document as files, and within the page.

#include "formats/picture_output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include "support/memory_sink.h"
#include "support/small_pictures.h"

namespace pagerex {
namespace {

using support::Bytes;
using testing::HasSubstr;
using testing::StartsWith;

/// A picture as a document has it.
class TestPicture final : public PictureSource {
 public:
  TestPicture(PictureType type, Bytes bytes, uint32_t identity = 0) : bytes_(std::move(bytes)) {
    data_.type = type;
    data_.bytes = ByteView(bytes_.data(), bytes_.size());
    facts_.source = this;
    facts_.identity = identity;
    facts_.width = 1440;
    facts_.height = 720;
  }
  PictureData Read() override {
    ++reads;
    return data_;
  }
  TestPicture& deflated(uint32_t rawSize) {
    data_.isDeflated = true;
    data_.rawSize = rawSize;
    return *this;
  }
  const PictureFacts& facts() const { return facts_; }

  int reads = 0;

 private:
  const Bytes bytes_;
  PictureData data_;
  PictureFacts facts_;
};

Bytes deflated(const Bytes& bytes) {
  Bytes out(compressBound(bytes.size()));
  uLongf size = out.size();
  compress(out.data(), &size, bytes.data(), bytes.size());
  out.resize(size);
  return out;
}

struct Told {
  std::string uri;
  bool isShown;
};

/// Pictures as files of a folder "f".
class Files {
 public:
  explicit Files(uint64_t mostBytes = UINT64_MAX)
      : pictures_(makePictureFiles(files_, "f", &warnings_, mostBytes)) {}

  Told add(TestPicture& picture) {
    const PictureAddress address = pictures_->AddressOf(picture.facts());
    return {std::string(address.uri), address.isShown};
  }
  Told add(PictureType type, const Bytes& bytes) {
    TestPicture picture(type, bytes);
    return add(picture);
  }
  std::string content(const std::string& name) { return sink_.files.at(name); }
  size_t count() const { return sink_.files.size(); }
  size_t warnings() const { return warnings_.all().size(); }
  uint64_t pictures() const { return pictures_->pictures(); }

 private:
  support::MemorySink sink_;
  OutputFiles files_{sink_};
  Warnings warnings_;
  std::unique_ptr<PictureOutput> pictures_;
};

std::string textOf(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

TEST(PictureFiles, AreCalledByTheirBytes) {
  Files files;
  EXPECT_EQ(files.add(PictureType::kWmf, support::smallPng()).uri, "f/picture-1.png");
  EXPECT_EQ(files.add(PictureType::kPng, support::smallJpeg()).uri, "f/picture-2.jpg");
  EXPECT_EQ(files.add(PictureType::kJpeg, support::gif()).uri, "f/picture-3.gif");
  EXPECT_EQ(files.content("f/picture-3.gif"), textOf(support::gif()));
  EXPECT_EQ(files.pictures(), 3u);
  EXPECT_EQ(files.warnings(), 0u);
}

TEST(PictureFiles, AreWhatBrowsersRead) {
  Files files;
  for (const Bytes& bytes : {support::smallEmf(), support::placeableWmf(), support::pict()}) {
    const Told told = files.add(PictureType::kWmf, bytes);
    EXPECT_THAT(told.uri, testing::EndsWith(".svg"));
    EXPECT_TRUE(told.isShown);
    EXPECT_THAT(files.content(told.uri), StartsWith("<svg "));
  }
  for (const Bytes& bytes : {support::dib(), support::tiff()}) {
    const Told told = files.add(PictureType::kDib, bytes);
    EXPECT_THAT(told.uri, testing::EndsWith(".png"));
    EXPECT_TRUE(told.isShown);
    EXPECT_THAT(files.content(told.uri), StartsWith("\x89PNG"));
  }
  EXPECT_EQ(files.count(), 5u);
  EXPECT_EQ(files.warnings(), 0u);
}

TEST(PictureFiles, InflateMetafiles) {
  Files files;
  const Bytes emf = support::smallEmf();
  const Told plain = files.add(PictureType::kEmf, emf);
  TestPicture packed(PictureType::kEmf, deflated(emf));
  const Told inflated = files.add(packed.deflated(static_cast<uint32_t>(emf.size())));
  TestPicture unsized(PictureType::kEmf, deflated(emf));
  const Told alsoInflated = files.add(unsized.deflated(0));
  EXPECT_EQ(files.content(inflated.uri), files.content(plain.uri));
  EXPECT_EQ(files.content(alsoInflated.uri), files.content(plain.uri));
  EXPECT_EQ(files.warnings(), 0u);
}

TEST(PictureFiles, OfWhatBrowsersCannotBeGivenStayAsTheyAre) {
  Files files;
  const Told unknown = files.add(PictureType::kPict, Bytes(700, 7));
  EXPECT_EQ(unknown.uri, "f/picture-1.pict");
  EXPECT_FALSE(unknown.isShown);
  const Told broken = files.add(PictureType::kPng, {0xFF, 0xD8, 0xFF, 0xD9});
  EXPECT_EQ(broken.uri, "f/picture-2.jpg");
  EXPECT_FALSE(broken.isShown);
  EXPECT_EQ(files.content("f/picture-2.jpg"), "\xFF\xD8\xFF\xD9");
  EXPECT_EQ(files.count(), 2u);
  EXPECT_EQ(files.warnings(), 1u) << "of one kind";
}

TEST(PictureFiles, ThatAreNoneHaveNoAddress) {
  Files files;
  EXPECT_EQ(files.add(PictureType::kNone, {}).uri, "");
  EXPECT_EQ(files.add(PictureType::kNone, Bytes(9, 7)).uri, "");
  TestPicture damaged(PictureType::kWmf, Bytes(50, 7));
  EXPECT_EQ(files.add(damaged.deflated(100)).uri, "");
  EXPECT_EQ(files.count(), 0u);
  EXPECT_EQ(files.pictures(), 0u);
}

TEST(PictureFiles, ThatAreShownAgainAreStoredOnce) {
  Files files;
  TestPicture picture(PictureType::kEmf, support::smallEmf(), 5);
  const Told first = files.add(picture);
  EXPECT_EQ(files.add(picture).uri, first.uri);
  EXPECT_TRUE(files.add(picture).isShown);
  EXPECT_EQ(picture.reads, 1);
  EXPECT_EQ(files.count(), 1u);
}

TEST(PictureFiles, EndWithTheirRoom) {
  Files files(10);
  EXPECT_EQ(files.add(PictureType::kEmf, support::smallEmf()).uri, "");
  EXPECT_EQ(files.add(PictureType::kPng, support::smallPng()).uri, "");
  EXPECT_EQ(files.warnings(), 1u);
}

TEST(EmbeddedPictures, StandInTheirAddress) {
  const std::unique_ptr<PictureOutput> pictures = makeEmbeddedPictures(1 << 20, nullptr);
  TestPicture gif(PictureType::kPng, support::gif()), emf(PictureType::kWmf, support::smallEmf());
  EXPECT_THAT(std::string(pictures->AddressOf(gif.facts()).uri),
              StartsWith("data:image/gif;base64,R0lGODlhAQABAIAA"));
  EXPECT_THAT(std::string(pictures->AddressOf(emf.facts()).uri),
              StartsWith("data:image/svg+xml;base64,PHN2Zy"));
  TestPicture other(PictureType::kPict, Bytes(700, 7));
  const PictureAddress original = pictures->AddressOf(other.facts());
  EXPECT_THAT(std::string(original.uri), StartsWith("data:image/x-pict;base64,BwcH"));
  EXPECT_FALSE(original.isShown);
}

/// What stands for the mark of an address.
std::string heldData(const PictureOutput& pictures, std::string_view uri) {
  support::MemorySink sink;
  OutputFiles files(sink);
  {
    Utf8Output out(files);
    out.Open("x");
    const size_t mark = uri.find(kHeldMark);
    pictures.WriteHeld(strtoull(std::string(uri).c_str() + mark + 1, nullptr, 10), out);
  }
  return sink.files["x"];
}

TEST(HeldPictures, AreWrittenAsEmbeddedOnesAre) {
  const std::unique_ptr<PictureOutput> held = makeHeldPictures(1 << 20, nullptr);
  const std::unique_ptr<PictureOutput> embedded = makeEmbeddedPictures(1 << 20, nullptr);
  for (const Bytes& bytes : {support::smallPng(), support::smallEmf(), support::dib(), support::gif()}) {
    TestPicture picture(PictureType::kDib, bytes);
    const std::string uri(held->AddressOf(picture.facts()).uri);
    const std::string whole = uri.substr(0, uri.find(kHeldMark)) + heldData(*held, uri);
    EXPECT_EQ(whole, embedded->AddressOf(picture.facts()).uri);
  }
  EXPECT_EQ(held->pictures(), 4u);
}

TEST(HeldPictures, HaveNoAddressWhereNothingIsShown) {
  Warnings warnings;
  const std::unique_ptr<PictureOutput> held = makeHeldPictures(1 << 20, &warnings);
  TestPicture picture(PictureType::kPict, Bytes(700, 7));
  const PictureAddress address = held->AddressOf(picture.facts());
  EXPECT_EQ(address.uri, "");
  EXPECT_FALSE(address.isShown);
  EXPECT_EQ(warnings.all().size(), 1u);
}

TEST(HeldPictures, TakeTheirRoomEachTimeTheyAreShown) {
  TestPicture picture(PictureType::kEmf, support::smallEmf(), 1);
  const std::unique_ptr<PictureOutput> measured = makeHeldPictures(1 << 20, nullptr);
  const size_t digits = heldData(*measured, measured->AddressOf(picture.facts()).uri).size();
  const std::unique_ptr<PictureOutput> held = makeHeldPictures(2 * digits, nullptr);
  EXPECT_TRUE(held->AddressOf(picture.facts()).isShown);
  EXPECT_TRUE(held->AddressOf(picture.facts()).isShown);
  const PictureAddress third = held->AddressOf(picture.facts());
  EXPECT_FALSE(third.isShown);
  EXPECT_EQ(third.uri, "");
}

TEST(NoPictures, TellThatThereWereSome) {
  Warnings warnings;
  const std::unique_ptr<PictureOutput> none = makeNoPictures(&warnings);
  TestPicture picture(PictureType::kPng, support::smallPng());
  EXPECT_FALSE(none->AddressOf(picture.facts()).isShown);
  ASSERT_EQ(warnings.all().size(), 1u);
  EXPECT_EQ(warnings.all()[0].code, WarningCode::kPicturesOff);
}

}  // namespace
}  // namespace pagerex
