// Sources and targets that are not what they should be, and names that are unusual.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <filesystem>

#include "surroundings/surroundings.h"

using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

constexpr char kNoUsers[] = "root may not become another user here";

/// As a user whom modes bind, which root is not.
Outcome convertAsUser(const Place& place, mode_t folderMode, mode_t sourceMode) {
  chmod(place.path().c_str(), folderMode);
  chmod(place.source().c_str(), sourceMode);
  const Outcome got = inChild([&]() -> Outcome {
    if (!becomeUser()) return {.skipped = true};
    return convert(place.source(), place.target());
  });
  chmod(place.path().c_str(), 0777);  // so that it can be removed
  return got;
}

std::string longName(size_t length) {
  return std::string(length, 'n');
}

/// The path of a file in nested folders, `length` bytes long in all.
std::string pathOfLength(const Place& place, size_t length) {
  std::string folder = place.path("deep");
  while (length - folder.size() > 120) folder += "/" + longName(80);
  fs::create_directories(folder);
  return folder + "/" + longName(length - folder.size() - 5) + ".htm";
}

}  // namespace

TEST(Target, InAFolderThatIsNotWritableIsNotMade) {
  const Place place;
  const Outcome got = convertAsUser(place, 0555, 0666);
  if (got.skipped) GTEST_SKIP() << kNoUsers;
  EXPECT_EQ(got, outcome(PAGEREX_CANNOT_WRITE, EACCES));
  EXPECT_FALSE(place.folder().exists("out.htm"));
  EXPECT_TRUE(place.untouched());
}

TEST(Target, WhoseFilesFolderIsNotWritableTellsIt) {
  const Place place;
  fs::create_directory(place.files());
  chmod(place.files().c_str(), 0555);
  const Outcome got = convertAsUser(place, 0777, 0666);
  if (got.skipped) GTEST_SKIP() << kNoUsers;
  EXPECT_EQ(got, outcome(PAGEREX_OK, EACCES));
  EXPECT_TRUE(fs::is_empty(place.files()));
  EXPECT_TRUE(place.untouched());
}

TEST(Target, ThatIsAFolderIsNotMade) {
  const Place place;
  fs::create_directory(place.target());
  EXPECT_EQ(convert(place.source(), place.target()), outcome(PAGEREX_CANNOT_WRITE, EISDIR));
  EXPECT_TRUE(place.untouched());
  EXPECT_FALSE(place.folder().exists("out.files"));
  const Finished got = runShell(PAGEREX_CLI " " + place.source() + " " + place.target());
  EXPECT_EQ(got.exitCode, PAGEREX_CANNOT_WRITE);
  EXPECT_EQ(got.output, "pagerex: cannot create " + place.target() + ": Is a directory\n");
}

TEST(Target, InAMissingFolderIsNotMade) {
  const Place place;
  EXPECT_EQ(convert(place.source(), place.path("missing/out.htm")), outcome(PAGEREX_CANNOT_WRITE, ENOENT));
  EXPECT_FALSE(place.folder().exists("missing"));
  EXPECT_TRUE(place.untouched());
}

TEST(Target, WhoseFilesFolderIsAFileIsRefused) {
  const Place place;
  place.folder().write("out.files", std::string("a file"));
  EXPECT_EQ(convert(place.source(), place.target()), outcome(PAGEREX_CANNOT_WRITE, ENOTDIR));
  EXPECT_EQ(place.folder().read("out.files"), "a file");
  EXPECT_TRUE(place.untouched());
}

TEST(Target, PathWithoutRoomForThePagesTellsIt) {
  const Place place;
  const std::string target = pathOfLength(place, 270);
  EXPECT_EQ(convert(place.source(), target), outcome(PAGEREX_OK, ENAMETOOLONG));
  EXPECT_TRUE(place.untouched({"deep"}));
  for (const auto& [name, what] : snapshotOf(place.path("deep"))) {
    EXPECT_TRUE(what == "folder" || name.ends_with(".htm")) << name;
  }
}

TEST(Target, LongPathHasTheWholePreview) {
  const Place place;
  const std::string target = pathOfLength(place, 900);
  EXPECT_EQ(convert(place.source(), target, {"view=preview", "pagesize=100"}), outcome(PAGEREX_OK));
  EXPECT_GT(fs::file_size(target), 0u);
}

TEST(Target, NameThatNoFileSystemTakesIsNotMade) {
  const Place place;
  EXPECT_EQ(convert(place.source(), place.path(longName(256))), outcome(PAGEREX_CANNOT_WRITE, ENAMETOOLONG));
  EXPECT_EQ(convert(place.source(), ""), outcome(PAGEREX_CANNOT_WRITE, ENAMETOOLONG));
  EXPECT_TRUE(place.untouched());
}

TEST(Target, ThatIsALinkIsWrittenThrough) {
  const Place place;
  place.folder().write("elsewhere/main.htm", std::string("old"));
  fs::create_symlink("elsewhere/main.htm", place.target());
  EXPECT_EQ(convert(place.source(), place.target()), outcome(PAGEREX_OK));
  EXPECT_TRUE(fs::is_symlink(place.target()));
  EXPECT_THAT(place.folder().read("elsewhere/main.htm"), HasSubstr("<html>"));
  EXPECT_TRUE(place.folder().exists("out.files/1.htm"));
  EXPECT_TRUE(place.untouched({"elsewhere/main.htm"}));
}

TEST(Target, ThatIsTheSourceIsRefused) {
  const Place place;
  for (const std::string view : {"normal", "phone", "preview", "mulpages"}) {
    EXPECT_EQ(convert(place.source(), place.source(), {"view=" + view, "pagesize=10"}),
              outcome(PAGEREX_CANNOT_WRITE, EEXIST));
  }
  EXPECT_TRUE(place.untouched());
}

TEST(Target, ThatIsALinkToTheSourceIsRefused) {
  const Place place;
  fs::create_symlink(place.source(), place.target());
  EXPECT_EQ(convert(place.source(), place.target()), outcome(PAGEREX_CANNOT_WRITE, EEXIST));
  fs::remove(place.target());
  fs::create_hard_link(place.source(), place.target());
  EXPECT_EQ(convert(place.source(), place.target()), outcome(PAGEREX_CANNOT_WRITE, EEXIST));
  EXPECT_EQ(convertPages(place.source(), place.target(), 10, nullptr), outcome(PAGEREX_ERROR, EEXIST));
  EXPECT_TRUE(place.untouched());
}

TEST(Target, WhoseFilesFolderHoldsTheSourceIsRefused) {
  const Place place;
  fs::create_directories(place.files("deeper"));
  fs::copy_file(place.source(), place.files("deeper/in.doc"));
  const std::string source = place.path("elsewhere/../out.files/deeper/in.doc");
  EXPECT_EQ(convert(source, place.target()), outcome(PAGEREX_CANNOT_WRITE, EEXIST));
  EXPECT_TRUE(fs::exists(source));
  EXPECT_EQ(convert(source, place.target(), {"view=preview", "pagesize=10"}), outcome(PAGEREX_OK));
  const Finished got = runShell(PAGEREX_CLI " " + source + " " + place.target());
  EXPECT_EQ(got.exitCode, PAGEREX_CANNOT_WRITE);
  EXPECT_THAT(got.output, HasSubstr("SOURCE lies in the folder for the files of"));
}

TEST(Source, WithoutWritePermissionIsNotOpened) {
  const Place place;
  const Outcome got = convertAsUser(place, 0777, 0444);
  if (got.skipped) GTEST_SKIP() << kNoUsers;
  EXPECT_EQ(got, outcome(PAGEREX_CANNOT_OPEN));
  EXPECT_FALSE(place.folder().exists("out.htm"));
  EXPECT_TRUE(place.untouched());
}

TEST(Source, ThatIsNoDocumentIsNotOpened) {
  const Place place;
  const std::string empty = place.folder().write("empty.doc", std::string());
  const std::string pipe = place.path("pipe.doc");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
  place.folder().write("elsewhere/text.doc", std::string(5000, 'x'));
  fs::create_symlink("nowhere", place.path("dangling.doc"));
  fs::create_symlink("circle.doc", place.path("circle.doc"));
  const Snapshot before = snapshotOf(place.path());
  for (const std::string& source :
       {empty, pipe, place.path("elsewhere/text.doc"), place.path("dangling.doc"), place.path("circle.doc"),
        place.path("elsewhere"), place.path("missing.doc"), place.path("in.doc/in.doc"), std::string(),
        std::string("/dev/null"), std::string("/dev/zero"), std::string("/dev/full"), std::string("/dev/tty"),
        place.path(longName(300))}) {
    EXPECT_EQ(convert(source, place.target()), outcome(PAGEREX_CANNOT_OPEN)) << source;
  }
  EXPECT_EQ(PageRex(nullptr, place.target().c_str(), 0, nullptr), PAGEREX_CANNOT_OPEN);
  EXPECT_EQ(differences(snapshotOf(place.path()), before), "");
}

/// Being opened is an order to some devices, and a pipe would wait.
TEST(Source, ThatIsAPipeIsNotTouched) {
  const Place place;
  const std::string pipe = place.path("pipe.doc");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
  const int watch = inotify_init1(IN_NONBLOCK);
  ASSERT_GE(inotify_add_watch(watch, pipe.c_str(), IN_OPEN), 0);
  EXPECT_EQ(convert(pipe, place.target()), outcome(PAGEREX_CANNOT_OPEN));
  inotify_event event;
  EXPECT_EQ(read(watch, &event, sizeof event), -1);
  EXPECT_EQ(errno, EAGAIN);
  close(watch);
}

TEST(Source, ThatIsALinkIsRead) {
  const Place place;
  fs::create_symlink(place.source(), place.path("elsewhere/link.doc"));
  EXPECT_EQ(convert(place.path("elsewhere/link.doc"), place.target()), outcome(PAGEREX_OK));
}

namespace {

/// Of many scripts, one of them in two forms that look alike, and one that is no text at all.
const std::vector<std::string> kNames = {"Привет мир",     "天地玄黄",      "مرحبا بالعالم", "😀🎻",
                                         "Ame\xCC\x81lie", "Am\xC3\xA9lie", "ไทย\u200Bเดิน",  "\xFF\xFE\x80",
                                         "two\nlines",     "a b;c&d'e\"f",  "%s%n%d",        "-rf"};

void expectEachNameToBeKept(const char* locale) {
  for (const std::string& name : kNames) {
    const Place place;
    const std::string folder = place.path("elsewhere/" + name);
    fs::create_directory(folder);
    fs::copy_file(place.source(), folder + "/" + name + ".doc");
    ASSERT_TRUE(std::setlocale(LC_ALL, locale)) << locale;
    EXPECT_EQ(convert(folder + "/" + name + ".doc", folder + "/" + name + ".htm"), outcome(PAGEREX_OK))
        << name;
    const Snapshot made = snapshotOf(folder);
    EXPECT_TRUE(made.contains(name + ".files/1.htm")) << name;
    EXPECT_EQ(made.size(), 8u) << name;
    EXPECT_THAT(place.folder().read("elsewhere/" + name + "/" + name + ".htm"),
                HasSubstr(name + ".files/1.htm"));
    EXPECT_TRUE(place.untouched({"elsewhere/" + name}));
  }
  std::setlocale(LC_ALL, "C");
}

}  // namespace

TEST(Names, OfEveryScriptAreKeptInTheCLocale) {
  expectEachNameToBeKept("C");
}
TEST(Names, OfEveryScriptAreKeptInAUtf8Locale) {
  expectEachNameToBeKept("C.UTF-8");
}

TEST(Names, OfEveryScriptPassTheCommandLine) {
  const Place place;
  for (const std::string locale : {"C", "C.UTF-8", "zh_CN.UTF-8"}) {
    const std::string target = place.path("Привет 天 😀.htm");
    const Finished got =
        runShell("LC_ALL=" + locale + " " PAGEREX_CLI " " + place.source() + " '" + target + "'");
    EXPECT_EQ(got.exitCode, 0) << got.output;
    EXPECT_TRUE(place.folder().exists("Привет 天 😀.files/1.htm"));
    fs::remove_all(place.path("Привет 天 😀.files"));
  }
}
