#include "base/stdio_archive.h"

#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <string>

#include "support/temp_folder.h"

using support::TempFolder;

namespace {

/// The open file with "0123456789" in it.
struct TenBytes {
  TenBytes() : adapter(std::fopen(folder.write("ten", std::string("0123456789")).c_str(), "rb+")) {}
  TempFolder folder;
  StdioAdapter adapter;
};

}  // namespace

TEST(StdioAdapter, TellsTheSizeAndKeepsThePosition) {
  TenBytes file;
  file.adapter.seek(4, SEEK_SET);
  EXPECT_EQ(file.adapter.size(), 10);
  EXPECT_EQ(file.adapter.tell(), 4);
}

TEST(StdioAdapter, ReadsAndCountsWhatIsThere) {
  TenBytes file;
  char buffer[8];
  file.adapter.seek(-3, SEEK_END);
  EXPECT_EQ(file.adapter.get(buffer, 8), 3u);
  EXPECT_EQ(std::string(buffer, 3), "789");
}

TEST(StdioAdapter, WritesAtThePosition) {
  TenBytes file;
  file.adapter.seek(2, SEEK_SET);
  EXPECT_EQ(file.adapter.put("ab", 2), 2u);
  file.adapter.close();
  EXPECT_EQ(file.folder.read("ten"), "01ab456789");
}

/// More than `long` holds on a 32-bit system.
TEST(StdioAdapter, TellsPositionsBeyondTwoGigabytes) {
  TenBytes file;
  constexpr int64_t kFar = int64_t{3} << 30;
  std::filesystem::resize_file(file.folder.path("ten"), kFar);  // takes no room: nothing is written
  EXPECT_EQ(file.adapter.size(), kFar);
  EXPECT_EQ(file.adapter.seek(-1, SEEK_END), 0);
  EXPECT_EQ(file.adapter.tell(), kFar - 1);
}

TEST(StdioAdapter, IsBadWithoutAFile) {
  StdioAdapter adapter(nullptr);
  char buffer[1];
  EXPECT_FALSE(adapter.good());
  EXPECT_EQ(adapter.get(buffer, 1), 0u);
  EXPECT_EQ(adapter.put("a", 1), 0u);
  EXPECT_EQ(adapter.size(), 0);
  EXPECT_NE(adapter.seek(0, SEEK_SET), 0);
}

TEST(StdioAdapter, ClosesOnce) {
  TenBytes file;
  file.adapter.close();
  file.adapter.close();
  EXPECT_FALSE(file.adapter.good());
}

TEST(DsWriteArchive, CreatesTheFile) {
  OutputFiles files;
  TempFolder folder;
  DsWriteArchive archive(files, folder.path("new").c_str());
  ASSERT_TRUE(archive.good());
  EXPECT_EQ(archive.put("text", 4), 4u);
  archive.close();
  EXPECT_EQ(folder.read("new"), "text");
}

TEST(DsWriteArchive, TruncatesAFileThatIsThere) {
  OutputFiles files;
  TempFolder folder;
  folder.write("old", std::string("long content"));
  DsWriteArchive(files, folder.path("old").c_str()).put("x", 1);
  EXPECT_EQ(folder.read("old"), "x");
}

TEST(DsWriteArchive, GoesOnWithTheNextFile) {
  OutputFiles files;
  TempFolder folder;
  DsWriteArchive archive(files, folder.path("first").c_str());
  archive.put("1", 1);
  EXPECT_TRUE(archive.open(folder.path("second").c_str()));
  EXPECT_EQ(folder.read("first"), "1");
}

TEST(DsWriteArchive, IsBadWhenTheFileCannotBeCreated) {
  OutputFiles files;
  TempFolder folder;
  EXPECT_FALSE(DsWriteArchive(files, folder.path("no/such/folder").c_str()).good());
  EXPECT_FALSE(DsWriteArchive(files).good());
  EXPECT_FALSE(DsWriteArchive(files, static_cast<const char*>(nullptr)).good());
  EXPECT_FALSE(DsWriteArchive(files, static_cast<const wchar_t*>(nullptr)).good());
}

TEST(DsWriteArchive, TakesAWidePathInAnyLocale) {
  OutputFiles files;
  std::setlocale(LC_ALL, "C");
  TempFolder folder;
  const std::string stem = folder.path() + "/";
  DsWriteArchive archive(files, (std::wstring(stem.begin(), stem.end()) + L"\u6587\u4ef6").c_str());
  EXPECT_TRUE(archive.good());
  EXPECT_TRUE(folder.exists("\xE6\x96\x87\xE4\xBB\xB6"));
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST(DsWriteArchive, IsBadForAWidePathThatHasNoNarrowForm) {
  OutputFiles files;
  const wchar_t loneSurrogate[] = {static_cast<wchar_t>(0xD800), 0};
  EXPECT_FALSE(DsWriteArchive(files, loneSurrogate).good());
  EXPECT_FALSE(DsWriteArchive(files, L"").good());
}
