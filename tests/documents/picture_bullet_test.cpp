#include <gtest/gtest.h>

#include "documents/converted.h"
#include "support/drawing_writer.h"

// Bullets that are pictures: they stand in the text under the first bookmark.

namespace {

using support::ListLevel;
using support::sprm;
using support::Sprms;
using support::WordDocument;
using support::drawing::Blip;
using support::drawing::Inline;
using support::drawing::Props;
using support::drawing::Shape;

constexpr uint16_t kBulletIndex = 0x6887;
constexpr uint16_t kVanish = 0x083C;

size_t countOf(const std::string& text, const std::string& part) {
  size_t count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

/// A run with a picture of its own.
Sprms bulletRun(WordDocument& doc, uint8_t uid) {
  Inline picture;
  picture.shape = Shape(75, 2000u + uid).props(Props().number(0x4104, 1));
  picture.blips = {Blip{.uid = uid}};
  picture.goalWidth = picture.goalHeight = 200;
  return support::drawing::pictureRun(doc, picture).add({sprm(kVanish, 1)});
}

struct Bullets {
  std::string bookmark = "_PictureBullets";
  Sprms level = {sprm(kBulletIndex, 0)};
  int pictures = 1;
  int items = 1;
  std::string bookmarkBefore = {};
};

/// Items with a bullet, and the bullets' pictures, hidden, behind them.
WordDocument withBullets(const Bullets& bullets) {
  WordDocument doc;
  ListLevel level = support::bulletLevel(u'\u2022', 0);
  level.chpx = bullets.level;
  const uint16_t list = doc.list({.lsid = 1, .levels = {level}});
  if (!bullets.bookmarkBefore.empty())
    doc.paragraph().bookmarkStart(bullets.bookmarkBefore).run("a").bookmarkEnd(bullets.bookmarkBefore);
  for (int i = 0; i < bullets.items; ++i) doc.paragraph("item").sprms({sprm(0x460B, list), sprm(0x260A, 0)});
  support::Paragraph& hidden = doc.paragraph().bookmarkStart(bullets.bookmark);
  for (int i = 0; i < bullets.pictures; ++i) hidden.special(1, bulletRun(doc, static_cast<uint8_t>(i + 1)));
  hidden.bookmarkEnd(bullets.bookmark);
  return doc;
}

const std::string kPicture =
    "<img style=\"position:absolute;\" width=\"13px\" height=\"13px\" "
    "src=\"image001.png\"></img></div><![endif]>";
const std::string kCharacter = "\xE2\x80\xA2&nbsp;";

TEST(PictureBullet, StandsInTheLabelWithAGap) {
  const std::string page = Converted(withBullets({})).page();
  EXPECT_EQ(countOf(page, kPicture + "&nbsp;</span>"), 1u) << page;
  EXPECT_EQ(countOf(page, "<v:shape "), 1u);
  EXPECT_EQ(countOf(page, kCharacter), 0u);
}

TEST(PictureBullet, IsRepeatedForEachItemAndWrittenToOneFile) {
  const Converted converted(withBullets({.items = 100}));
  EXPECT_EQ(countOf(converted.page(), kPicture), 100u);
  EXPECT_FALSE(converted.has("image002.png"));
}

TEST(PictureBullet, IsEveryPictureUnderTheBookmark) {
  const std::string page = Converted(withBullets({.pictures = 3})).page();
  for (const char* name : {"image001.png", "image002.png", "image003.png"})
    EXPECT_EQ(countOf(page, std::string(name) + "\"></img>"), 1u) << name;
}

TEST(PictureBullet, NameOfTheBookmarkCountsByItsBeginningInAnyCase) {
  for (const char* name : {"_PICTUREBULLETS", "_picturebullets2"})
    EXPECT_EQ(countOf(Converted(withBullets({.bookmark = name})).page(), kPicture), 1u) << name;
  for (const char* name : {"_PictureBullet", "PictureBullets"})
    EXPECT_EQ(countOf(Converted(withBullets({.bookmark = name})).page(), kCharacter), 1u) << name;
}

TEST(PictureBullet, OnlyTheFirstBookmarkIsLookedAt) {
  const std::string page = Converted(withBullets({.bookmarkBefore = "early"})).page();
  EXPECT_EQ(countOf(page, kCharacter), 1u);
  EXPECT_EQ(countOf(page, kPicture), 0u);
}

TEST(PictureBullet, IndexMustBeBelowTheCountOfBookmarks) {
  for (const uint32_t index : {1u, 0xFFFFFFFFu}) {
    const std::string page = Converted(withBullets({.level = {sprm(kBulletIndex, index)}})).page();
    EXPECT_EQ(countOf(page, kCharacter), 1u) << index;
  }
}

TEST(PictureBullet, ALevelThatNamesNoneHasItsCharacter) {
  const std::string page = Converted(withBullets({.level = {sprm(0x0835, 1)}})).page();
  EXPECT_EQ(countOf(page, kCharacter), 1u);
  EXPECT_EQ(countOf(page, kPicture), 0u);
}

TEST(PictureBullet, BookmarkWithoutPicturesHasNeitherPictureNorCharacter) {
  WordDocument doc;
  ListLevel level = support::bulletLevel(u'\u2022', 0);
  level.chpx = {sprm(kBulletIndex, 0)};
  const uint16_t list = doc.list({.lsid = 1, .levels = {level}});
  doc.paragraph("item").sprms({sprm(0x460B, list), sprm(0x260A, 0)});
  doc.paragraph().bookmarkStart("_PictureBullets").run("a").bookmarkEnd("_PictureBullets");
  const std::string page = Converted(doc).page();
  EXPECT_EQ(countOf(page, "<span style=\"\">&nbsp;</span>"), 1u) << page;
}

TEST(PictureBullet, StandsInTheViewsThatShowPictures) {
  for (const char* view : {"view=mulpages", "view=phone"}) {
    const Converted converted(withBullets({}), {view, "pagesize=1000"});
    EXPECT_EQ(countOf(converted.page(), kPicture), 1u) << view;
  }
  EXPECT_EQ(countOf(Converted(withBullets({}), {"view=preview", "pagesize=100"}).main(), "<img"), 0u);
}

}  // namespace
