#include "entry/basefile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "base/output_files.h"
#include "support/temp_folder.h"

namespace {

using support::TempFolder;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

struct PathParts {
  int result;
  std::string dir, name, ext;
  bool operator==(const PathParts&) const = default;
};

PathParts split(const char* path) {
  PathParts parts{-1, "old", "old", "old"};
  parts.result = basefile::splitpath(path, parts.dir, parts.name, parts.ext);
  return parts;
}

void PrintTo(const PathParts& parts, std::ostream* out) {
  *out << parts.result << " '" << parts.dir << "' '" << parts.name << "' '" << parts.ext << "'";
}

std::string rightDir(std::string dir) {
  basefile::MakeSureDirIsRight(dir);
  return dir;
}

}  // namespace

TEST(MakeSureDirIsRight, AppendsASlashWhereNoneStands) {
  EXPECT_EQ(rightDir("a/b"), "a/b/");
  EXPECT_EQ(rightDir("a/"), "a/");
  EXPECT_EQ(rightDir("a\\"), "a\\");
  EXPECT_EQ(rightDir(""), "/");
}

TEST(SplitPath, PartsFolderNameAndExtension) {
  EXPECT_EQ(split("/a/b/x.htm"), (PathParts{0, "/a/b/", "x", "htm"}));
  EXPECT_EQ(split("a\\x.tar.gz"), (PathParts{0, "a\\", "x.tar", "gz"}));
  EXPECT_EQ(split("x."), (PathParts{0, "", "x", ""}));
}

TEST(SplitPath, AnOnlyDotAtTheStartGivesNothing) {
  EXPECT_EQ(split(".htm"), (PathParts{1, "", "", ""}));
  EXPECT_EQ(split("./out"), (PathParts{1, "", "", ""}));
}

TEST(SplitPath, APathWithoutADotIsNameAndExtension) {
  EXPECT_EQ(split("out"), (PathParts{0, "", "out", "out"}));
  EXPECT_EQ(split("/a/out"), (PathParts{0, "", "/a/out", "/a/out"}));
}

TEST(SplitPath, ADotInAFolderCountsAsWell) {
  EXPECT_EQ(split("/a.b/out"), (PathParts{0, "/", "a", "b/out"}));
}

TEST(SplitPath, ANullPathGivesNothing) {
  EXPECT_EQ(split(nullptr), (PathParts{1, "", "", ""}));
}

TEST(CreateFile, MakesAnEmptyFileOrEmptiesOne) {
  TempFolder folder;
  folder.write("old", std::string("content"));
  OutputFiles files;
  EXPECT_TRUE(basefile::CreateFile(files, folder.path("old").c_str()));
  EXPECT_TRUE(basefile::CreateFile(files, folder.path("new").c_str()));
  EXPECT_EQ(folder.read("old") + folder.read("new"), "");
  EXPECT_FALSE(basefile::CreateFile(files, folder.path("no/new").c_str()));
  EXPECT_FALSE(basefile::CreateFile(files, nullptr));
}

TEST(CreateDir, MakesAllMissingFolders) {
  TempFolder folder;
  EXPECT_TRUE(basefile::CreateDir(folder.path("a/b//c").c_str()));
  EXPECT_TRUE(fs::is_directory(folder.path("a/b/c")));
  EXPECT_TRUE(basefile::CreateDir(folder.path("a/b/c/").c_str()));
}

TEST(CreateDir, FailsWhereAFileStandsInTheWay) {
  TempFolder folder;
  folder.write("a", std::string());
  EXPECT_FALSE(basefile::CreateDir(folder.path("a/b").c_str()));
  EXPECT_FALSE(basefile::CreateDir(folder.path("a").c_str()));
  EXPECT_FALSE(basefile::CreateDir(nullptr));
}

TEST(CreateDir, TheRootIsNoFolderToMake) {
  EXPECT_TRUE(basefile::CreateDir("/"));
  EXPECT_TRUE(basefile::CreateDir(""));
}

/// Without its large form, the file functions of a 32-bit system know nothing of such a file.
TEST(DelFilesInDir, RemovesAFileOfThreeGigabytes) {
  TempFolder folder;
  folder.write("a/long", std::string());
  fs::resize_file(folder.path("a/long"), uintmax_t{3} << 30);  // takes no room: nothing is written
  EXPECT_TRUE(basefile::DelFilesInDir(folder.path("a").c_str()));
  EXPECT_FALSE(folder.exists("a/long"));
}

TEST(DelFilesInDir, EmptiesTheFolderAndKeepsIt) {
  TempFolder folder;
  for (const char* name : {"out/1.htm", "out/.hidden", "out/sub/deep/file", "beside"})
    folder.write(name, std::string());
  fs::create_directory(folder.path("out/empty"));
  EXPECT_TRUE(basefile::DelFilesInDir(folder.path("out").c_str()));
  EXPECT_TRUE(fs::is_empty(folder.path("out")));
  EXPECT_EQ(folder.files(), Names{"beside"});
}

TEST(DelFilesInDir, FailsWithoutAFolder) {
  TempFolder folder;
  folder.write("file", std::string("kept"));
  EXPECT_FALSE(basefile::DelFilesInDir(folder.path("none").c_str()));
  EXPECT_FALSE(basefile::DelFilesInDir(folder.path("file").c_str()));
  EXPECT_FALSE(basefile::DelFilesInDir(nullptr));
  EXPECT_EQ(folder.read("file"), "kept");
}

TEST(DelFilesInDir, RemovesLinksAndNotWhatTheyLeadTo) {
  TempFolder folder;
  folder.write("outside/kept", std::string());
  fs::create_directory(folder.path("out"));
  fs::create_directory_symlink(folder.path("outside"), folder.path("out/folder"));
  fs::create_symlink(folder.path("outside/kept"), folder.path("out/file"));
  fs::create_symlink("nowhere", folder.path("out/dangling"));
  EXPECT_TRUE(basefile::DelFilesInDir(folder.path("out").c_str()));
  EXPECT_TRUE(fs::is_empty(folder.path("out")));
  EXPECT_EQ(folder.files(), Names{"outside/kept"});
}

TEST(DelFilesInDir, RemovesALinkInThePlaceOfTheFolder) {
  TempFolder folder;
  folder.write("outside/kept", std::string());
  for (const char* name : {"out", "out/"}) {
    fs::create_directory_symlink(folder.path("outside"), folder.path("out"));
    EXPECT_FALSE(basefile::DelFilesInDir(folder.path(name).c_str()));
    EXPECT_FALSE(fs::is_symlink(folder.path("out")));
  }
  EXPECT_EQ(folder.files(), Names{"outside/kept"});
}

TEST(DelDir, RemovesTheFolderToo) {
  TempFolder folder;
  folder.write("out/sub/file", std::string());
  EXPECT_TRUE(basefile::DelDir(folder.path("out").c_str()));
  EXPECT_FALSE(folder.exists("out"));
  EXPECT_FALSE(basefile::DelDir(folder.path("out").c_str()));
  EXPECT_FALSE(basefile::DelDir(nullptr));
}

TEST(DelDir, FollowsNoLinkOut) {
  TempFolder folder;
  folder.write("outside/kept", std::string());
  fs::create_directories(folder.path("out/sub"));
  fs::create_directory_symlink(folder.path("outside"), folder.path("out/sub/link"));
  fs::create_directory_symlink(folder.path("outside"), folder.path("link"));
  EXPECT_TRUE(basefile::DelDir(folder.path("out").c_str()));
  EXPECT_TRUE(basefile::DelDir(folder.path("link").c_str()));
  EXPECT_EQ(folder.files(), Names{"outside/kept"});
  EXPECT_FALSE(fs::is_symlink(folder.path("link")));
}

TEST(DelDir, SurvivesMoreNestingThanThereAreDescriptors) {
  TempFolder folder;
  std::string deep = folder.path("out");
  for (int i = 0; i < 1500; ++i) {
    ASSERT_EQ(mkdir(deep.c_str(), 0777), 0);
    ASSERT_EQ(chdir(deep.c_str()), 0);
    deep = "d";
  }
  ASSERT_EQ(chdir("/"), 0);
  basefile::DelDir(folder.path("out").c_str());
  EXPECT_EQ(access(folder.path().c_str(), F_OK), 0);
}
