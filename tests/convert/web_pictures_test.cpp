// Pictures for browsers, beside those of the document, in the views.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "convert/host.h"
#include "support/drawing_writer.h"
#include "support/small_pictures.h"
#include "support/word_document_writer.h"

using namespace convert_test;
using support::Bytes;
using testing::HasSubstr;
using testing::Not;

namespace {

/// A document with these pictures, in their order.
Bytes documentWith(const std::vector<support::drawing::Blip>& blips) {
  using namespace support::drawing;
  support::WordDocument document;
  uint8_t uid = 0;
  for (Blip blip : blips) {
    blip.uid = ++uid;
    const Inline picture{.shape = Shape(75).props(Props().number(0x4104, 1)), .blips = {blip}};
    document.paragraph().special(1, pictureRun(document, picture));
  }
  return document.build();
}

Result writeView(Host& host, int32_t pictures, const char* view = "mulpages") {
  pagerex_options options = Host::quiet(view);
  options.pictures = pictures;
  return convert(host.memory(), host.sink(), options);
}

std::string allPages(const Host& host) {
  std::string all;
  for (const auto& [name, content] : host.files())
    if (name.find(".htm") != std::string::npos) all += content;
  return all;
}

TEST(WebPictures, StandBesideThoseOfTheDocument) {
  const Bytes emf = support::smallEmf();
  Host host(documentWith(
      {{.type = 2, .data = deflated(emf), .rawSize = static_cast<uint32_t>(emf.size()), .compression = 0},
       {.type = 7, .data = support::dib()},
       {.type = 6, .data = support::smallPng()}}));
  writeView(host, PAGEREX_PICTURES_FILES);
  const Files without = host.files();
  host.forget();
  const Result result = writeView(host, PAGEREX_PICTURES_WEB);
  EXPECT_EQ(result.code, PAGEREX_RESULT_OK);
  EXPECT_EQ(result.complete, 1);
  EXPECT_EQ(result.counts.pictures, 5u);
  const Files with = host.files();
  EXPECT_EQ(with.size(), without.size() + 2);
  for (const auto& [name, content] : without) {
    ASSERT_TRUE(with.count(name)) << name;
    if (name.find("image") == std::string::npos) continue;
    EXPECT_EQ(with.at(name), content) << name;
  }
  EXPECT_EQ(host.typeOf("document.files/image001.svg"), "image/svg+xml");
  EXPECT_THAT(host.content("document.files/image001.svg"), testing::StartsWith("<svg "));
  EXPECT_THAT(host.content("document.files/image002.png"), testing::StartsWith("\x89PNG"));
  const std::string pages = allPages(host);
  for (const char* shown : {"image001.svg", "image002.png", "image003.png"})
    EXPECT_THAT(pages, HasSubstr(shown));
  for (const char* other : {"image001.emf", "image002.dib", "image002.bmp"})
    EXPECT_THAT(pages, Not(HasSubstr(other)));
  EXPECT_EQ(host.complaints(), "");
}

TEST(WebPictures, OfTiffAreOfTheNewFormatsAlone) {
  using namespace support::drawing;
  constexpr uint8_t kStoredTiff = 17;
  support::WordDocument document;
  const uint32_t stored = document.storePicture(Blip{.type = kStoredTiff, .data = support::tiff()}.entry());
  addShape(document.paragraph(), Shape(75, 1025).props(Props().number(0x4104, stored)));
  Host host(document.build());
  const Result page = writeView(host, PAGEREX_PICTURES_EMBEDDED, "html");
  EXPECT_EQ(page.complete, 1);
  EXPECT_THAT(allPages(host), HasSubstr("src=\"data:image/png;base64,"));
  host.forget();
  const Result view = writeView(host, PAGEREX_PICTURES_WEB);
  EXPECT_TRUE(view.warns(PAGEREX_WARNING_PICTURE));
  EXPECT_EQ(view.counts.pictures, 0u);
}

TEST(WebPictures, AreMissingWhereNothingCanBeMade) {
  Host host(documentWith({{.type = 3, .data = Bytes(100, 7)}}));
  const Result result = writeView(host, PAGEREX_PICTURES_WEB);
  EXPECT_EQ(result.code, PAGEREX_RESULT_OK);
  EXPECT_TRUE(result.warns(PAGEREX_WARNING_PICTURE));
  EXPECT_EQ(result.counts.pictures, 1u);
  EXPECT_THAT(allPages(host), HasSubstr("image001.wmf"));
}

TEST(WebPictures, AreOfTheViewsThatHaveFiles) {
  Host host(smallDocument());
  for (const char* view : {"normal", "phone", "mulpages"})
    EXPECT_EQ(writeView(host, PAGEREX_PICTURES_WEB, view).code, PAGEREX_RESULT_OK) << view;
  for (const char* format : {"preview", "text", "markdown", "html"})
    EXPECT_EQ(writeView(host, PAGEREX_PICTURES_WEB, format).code, PAGEREX_RESULT_INVALID_ARGUMENT) << format;
}

}  // namespace
