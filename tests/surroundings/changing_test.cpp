// What others do to the source and to the output while a conversion runs, or have done before.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "surroundings/surroundings.h"

namespace fs = std::filesystem;

namespace {

constexpr int kPageSize = 2000;

/// Every name that a conversion writes in the files folder.
const std::vector<std::string> kFileNames = {"1.htm",           "2.htm",        "style.css",
                                             "navigation.html", "image001.png", "shapejs.js"};

/// The output of `document` when nothing happens to it.
Snapshot undisturbed(const support::WordDocument& document) {
  const Place place(document);
  convertPages(place.source(), place.target(), kPageSize, nullptr);
  return snapshotOf(place.files());
}

/// Several pages, and a picture on the last.
support::WordDocument pagesAndPicture() {
  support::WordDocument document = richDocument();
  for (int i = 0; i < 400; ++i) document.paragraph("This is paragraph number " + std::to_string(i) + ".");
  return document;
}

/// Runs `disturb` once, after the first page.
Outcome convertDisturbed(const Place& place, const std::function<void()>& disturb) {
  return convertPages(place.source(), place.target(), kPageSize, [&](int page) {
    if (page == 1) disturb();
  });
}

}  // namespace

TEST(ChangingSource, RemovedWhileReadIsReadToItsEnd) {
  const Place place(pagesAndPicture());
  EXPECT_EQ(convertDisturbed(place, [&] { fs::remove(place.source()); }), outcome(PAGEREX_OK));
  EXPECT_EQ(differences(snapshotOf(place.files()), undisturbed(pagesAndPicture())), "");
  EXPECT_TRUE(place.untouched({"in.doc"}));
}

TEST(ChangingSource, ReplacedWhileReadIsReadToItsEnd) {
  const Place place(pagesAndPicture());
  const auto replace = [&] { fs::rename(place.path("bystander.txt"), place.source()); };
  EXPECT_EQ(convertDisturbed(place, replace), outcome(PAGEREX_OK));
  EXPECT_EQ(differences(snapshotOf(place.files()), undisturbed(pagesAndPicture())), "");
}

TEST(ChangingSource, GrowingIsReadAsItWas) {
  const Place place(pagesAndPicture());
  const auto grow = [&] { std::ofstream(place.source(), std::ios::app) << std::string(100000, 'x'); };
  EXPECT_EQ(convertDisturbed(place, grow), outcome(PAGEREX_OK));
  EXPECT_EQ(differences(snapshotOf(place.files()), undisturbed(pagesAndPicture())), "");
}

/// What can no longer be read counts as absent; what was read before is still there.
TEST(ChangingSource, TruncatedAtAnyPlaceLosesNoMoreThanItsText) {
  const support::WordDocument document = pagesAndPicture();
  const uintmax_t size = document.build().size();
  for (uintmax_t length = 0; length < size; length += 1024 + size / 16) {
    const Place place(document);
    const Outcome got = convertDisturbed(place, [&] { fs::resize_file(place.source(), length); });
    EXPECT_TRUE(got.result == PAGEREX_OK || got.result == PAGEREX_ERROR) << length;
    EXPECT_EQ(got.error, 0) << length;
    EXPECT_EQ(place.folder().read("out.files/1.htm").rfind("</html>") + 7,
              place.folder().read("out.files/1.htm").size());
    EXPECT_TRUE(place.untouched({"in.doc"}));
  }
}

TEST(ChangingSource, OverwrittenAtAnyPlaceEndsTheConversion) {
  const support::WordDocument document = pagesAndPicture();
  const uintmax_t size = document.build().size();
  for (const char byte : {'\0', '\xFF', 'A'}) {
    const Place place(document);
    const Outcome got = convertDisturbed(
        place, [&] { std::ofstream(place.source(), std::ios::trunc) << std::string(size, byte); });
    EXPECT_TRUE(got.result == PAGEREX_OK || got.result == PAGEREX_ERROR);
    EXPECT_TRUE(place.untouched({"in.doc"}));
  }
}

TEST(PlantedLink, BeforeTheConversionIsRemoved) {
  for (const std::string view : {"normal", "phone", "mulpages"}) {
    const Place place;
    fs::create_directory(place.files());
    for (const std::string& name : kFileNames)
      fs::create_symlink("../elsewhere/victim.txt", place.files(name));
    fs::create_directory_symlink("../elsewhere", place.files("folder"));
    EXPECT_EQ(convert(place.source(), place.target(), {"view=" + view, "pagesize=5"}), outcome(PAGEREX_OK));
    EXPECT_FALSE(fs::is_symlink(fs::symlink_status(place.files("folder"))));
    EXPECT_FALSE(fs::is_symlink(place.files("1.htm")));
    EXPECT_TRUE(place.untouched());
  }
}

namespace {

/// Puts something in the place of each file once the first page is there, by `plant`.
void expectPlantedNamesToLeadNowhere(
    const std::function<void(const Place&, const std::string& path)>& plant) {
  const Place place(pagesAndPicture());
  const Outcome got = convertDisturbed(place, [&] {
    for (const std::string name : {"2.htm", "3.htm", "image002.png", "shapejs.js"}) {
      fs::remove(place.files(name));
      plant(place, place.files(name));
    }
  });
  EXPECT_EQ(got, outcome(PAGEREX_OK));
  EXPECT_TRUE(place.untouched());
  const Snapshot made = snapshotOf(place.files());
  const Snapshot wanted = undisturbed(pagesAndPicture());
  EXPECT_EQ(made.at("2.htm"), wanted.at("2.htm"));
  EXPECT_EQ(made.at("3.htm"), wanted.at("3.htm"));
}

}  // namespace

TEST(PlantedLink, DuringTheConversionIsReplaced) {
  expectPlantedNamesToLeadNowhere([](const Place& place, const std::string& path) {
    fs::create_symlink(place.path("elsewhere/victim.txt"), path);
  });
}

TEST(PlantedLink, ToAMissingFileIsNotFollowedEither) {
  expectPlantedNamesToLeadNowhere([](const Place& place, const std::string& path) {
    fs::create_symlink(place.path("elsewhere/new.txt"), path);
  });
}

TEST(PlantedLink, HardLinkDuringTheConversionIsReplaced) {
  expectPlantedNamesToLeadNowhere([](const Place& place, const std::string& path) {
    fs::create_hard_link(place.path("elsewhere/victim.txt"), path);
  });
}

TEST(PlantedLink, PipeDuringTheConversionIsReplaced) {
  expectPlantedNamesToLeadNowhere(
      [](const Place&, const std::string& path) { EXPECT_EQ(mkfifo(path.c_str(), 0666), 0); });
}

TEST(PlantedFolder, InThePlaceOfAPageIsTold) {
  const Place place(pagesAndPicture());
  const auto plant = [&] { fs::create_directory(place.files("2.htm")); };
  EXPECT_EQ(convertDisturbed(place, plant), outcome(PAGEREX_OK, EISDIR));
  EXPECT_TRUE(fs::is_empty(place.files("2.htm")));
  EXPECT_TRUE(fs::exists(place.files("3.htm")));
  EXPECT_TRUE(place.untouched());
}

TEST(FilesFolder, ThatIsALinkBeforehandIsReplacedByAFolder) {
  for (const std::string target : {"elsewhere", "nowhere", "bystander.txt"}) {
    const Place place;
    fs::create_directory_symlink(target, place.path("out.files"));
    EXPECT_EQ(convert(place.source(), place.target()), outcome(PAGEREX_OK));
    EXPECT_FALSE(fs::is_symlink(place.path("out.files")));
    EXPECT_TRUE(fs::exists(place.files("1.htm")));
    EXPECT_TRUE(place.untouched());
  }
}

/// The folder that was made gets the rest, wherever it is now.
TEST(FilesFolder, ReplacedByALinkDuringTheConversionIsNotFollowed) {
  const Place place(pagesAndPicture());
  const Outcome got = convertDisturbed(place, [&] {
    fs::rename(place.path("out.files"), place.path("moved"));
    fs::create_directory_symlink("elsewhere", place.path("out.files"));
  });
  EXPECT_EQ(got, outcome(PAGEREX_OK));
  EXPECT_EQ(differences(snapshotOf(place.path("moved")), undisturbed(pagesAndPicture())), "");
  Snapshot left = snapshotOf(place.path("elsewhere"));
  EXPECT_EQ(left.size(), 1u);
}

TEST(FilesFolder, RemovedDuringTheConversionIsTold) {
  const Place place(pagesAndPicture());
  EXPECT_EQ(convertDisturbed(place, [&] { fs::remove_all(place.files()); }), outcome(PAGEREX_OK, ENOENT));
  EXPECT_FALSE(place.folder().exists("out.files"));
  EXPECT_TRUE(place.untouched());
}

TEST(FilesFolder, HoldsNoDescriptorAfterTheConversion) {
  const Place place;
  convert(place.source(), place.target());
  const size_t before = openDescriptors();
  convert(place.source(), place.target());
  convert(place.source(), "/nowhere/x.htm");
  convert(place.path("elsewhere/victim.txt"), place.target());
  EXPECT_EQ(openDescriptors(), before);
}
