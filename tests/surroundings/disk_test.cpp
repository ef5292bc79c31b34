// Disks that are full, read-only or absent, and limits on files.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

#include "surroundings/surroundings.h"

using testing::HasSubstr;

namespace {

constexpr char kNoMounts[] = "neither root nor a user namespace may mount a file system here";

/// Converts on a file system of its own, and compares what came out with `expected`.
Outcome convertOn(const std::string& tmpfsOptions, const Place& place, const std::string& folder,
                  const std::vector<std::string>& options, const Snapshot& expected) {
  return inChild([&]() -> Outcome {
    if (!mountTmpfs(folder, tmpfsOptions)) return {.skipped = true};
    Outcome outcome = convert(place.source(), folder + "/out.htm", options);
    outcome.whole = snapshotOf(folder) == expected;
    return outcome;
  });
}

/// At each size the disk fills at another moment. What is short is told, and only that.
void expectShortFilesToBeTold(const std::string& view, const std::vector<std::string>& tmpfsOptions) {
  const Place place(longDocument(600));
  std::filesystem::create_directory(place.path("disk"));
  const support::TempFolder wanted;
  const std::vector<std::string> options = {"view=" + view, "pagesize=400"};
  ASSERT_EQ(convert(place.source(), wanted.path("out.htm"), options), outcome(0));
  const Snapshot expected = snapshotOf(wanted.path());
  int shortened = 0;
  for (const std::string& each : tmpfsOptions) {
    const Outcome got = convertOn(each, place, place.path("disk"), options, expected);
    if (got.skipped) GTEST_SKIP() << kNoMounts;
    EXPECT_EQ(got.whole, got.error == 0) << each << ": " << testing::PrintToString(got);
    EXPECT_TRUE(got.error == 0 || got.error == ENOSPC) << each << ": " << got.error;
    EXPECT_TRUE(got.result == PAGEREX_OK || (got.result == PAGEREX_CANNOT_WRITE && got.error == ENOSPC))
        << each;
    shortened += !got.whole;
  }
  EXPECT_GT(shortened, 0);
  EXPECT_LT(shortened, static_cast<int>(tmpfsOptions.size()));
  EXPECT_TRUE(place.untouched({"disk"}));
}

std::vector<std::string> sizes() {
  std::vector<std::string> options;
  for (int pages = 1; pages <= 24; ++pages) options.push_back("size=" + std::to_string(4 * pages) + "k");
  options.push_back("size=8m");
  return options;
}

std::vector<std::string> inodeCounts() {
  std::vector<std::string> options;
  for (int count = 1; count <= 8; ++count) options.push_back("size=8m,nr_inodes=" + std::to_string(count));
  options.push_back("size=8m");
  return options;
}

/// RLIMIT_FSIZE in a child.
Outcome convertWithFileSize(const Place& place, rlim_t bytes, void (*disposition)(int)) {
  return inChild([&] {
    std::signal(SIGXFSZ, disposition);
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
    return convert(place.source(), place.target());
  });
}

}  // namespace

TEST(FullDisk, ShortFilesAreToldInViewNormal) {
  expectShortFilesToBeTold("normal", sizes());
}
TEST(FullDisk, ShortFilesAreToldInViewPhone) {
  expectShortFilesToBeTold("phone", sizes());
}
TEST(FullDisk, ShortFilesAreToldInViewPreview) {
  expectShortFilesToBeTold("preview", {"size=4k", "size=8m,nr_inodes=1", "size=8m"});
}
TEST(FullDisk, ShortFilesAreToldInViewMulpages) {
  expectShortFilesToBeTold("mulpages", sizes());
}
TEST(FullDisk, FilesWithoutAnInodeAreTold) {
  expectShortFilesToBeTold("mulpages", inodeCounts());
}

TEST(FullDisk, DeviceThatIsFullIsTold) {
  const Place place;
  EXPECT_EQ(convert(place.source(), "/dev/full", {"view=preview", "pagesize=100"}), outcome(0, ENOSPC));
  EXPECT_TRUE(place.untouched());
}

TEST(FullDisk, ErrorIsForgottenByTheNextConversion) {
  const Place place;
  convert(place.source(), "/dev/full", {"view=preview", "pagesize=100"});
  EXPECT_EQ(convert(place.source(), place.target()), outcome(0));
}

TEST(FullDisk, PagedConversionWithCallbacksTellsIt) {
  const Place place(longDocument(400));
  std::filesystem::create_directory(place.path("disk"));
  const Outcome got = inChild([&]() -> Outcome {
    if (!mountTmpfs(place.path("disk"), "size=40k")) return {.skipped = true};
    return convertPages(place.source(), place.path("disk/out.htm"), 2000, nullptr);
  });
  if (got.skipped) GTEST_SKIP() << kNoMounts;
  EXPECT_EQ(got, outcome(0, ENOSPC));
  EXPECT_TRUE(place.untouched({"disk"}));
}

TEST(FullDisk, CommandLineTellsItAndFails) {
  const Place place;
  const Finished got = runShell(PAGEREX_CLI " --view preview " + place.source() + " /dev/full");
  EXPECT_EQ(got.exitCode, PAGEREX_FAILED);
  EXPECT_EQ(got.output, "pagerex: /dev/full: the output is incomplete: No space left on device\n");
}

TEST(ReadOnlyDisk, MainFileCannotBeCreated) {
  const Place place;
  std::filesystem::create_directory(place.path("disk"));
  const Outcome got = inChild([&]() -> Outcome {
    if (!mountTmpfs(place.path("disk"), "size=64k", MS_RDONLY)) return {.skipped = true};
    return convert(place.source(), place.path("disk/out.htm"));
  });
  if (got.skipped) GTEST_SKIP() << kNoMounts;
  EXPECT_EQ(got, outcome(PAGEREX_CANNOT_WRITE, EROFS));
  EXPECT_TRUE(place.untouched({"disk"}));
}

TEST(ReadOnlyDisk, SourceOnItCannotBeOpened) {
  const Place place;
  std::filesystem::create_directory(place.path("disk"));
  const Outcome got = inChild([&]() -> Outcome {
    if (!mountTmpfs(place.path("disk"), "size=1m")) return {.skipped = true};
    std::filesystem::copy_file(place.source(), place.path("disk/in.doc"));
    if (mount(nullptr, place.path("disk").c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0)
      return {.skipped = true};
    return convert(place.path("disk/in.doc"), place.target());
  });
  if (got.skipped) GTEST_SKIP() << kNoMounts;
  EXPECT_EQ(got, outcome(PAGEREX_CANNOT_OPEN));
  EXPECT_FALSE(place.folder().exists("out.htm"));
}

TEST(FileSizeLimit, IsToldWhereTheHostIgnoresTheSignal) {
  const Place place(longDocument(300));
  EXPECT_EQ(convertWithFileSize(place, 4096, SIG_IGN), outcome(0, EFBIG));
  EXPECT_EQ(std::filesystem::file_size(place.files("1.htm")), 4096u);
  EXPECT_TRUE(place.untouched());
}

TEST(FileSizeLimit, EndsTheProcessOtherwise) {
  const Place place(longDocument(300));
  EXPECT_EQ(convertWithFileSize(place, 4096, SIG_DFL).killedBy, SIGXFSZ);
  EXPECT_TRUE(place.untouched());
}

TEST(FileSizeLimit, CommandLineTellsItAndFails) {
  const Place place(longDocument(300));
  const Finished got = runShell("ulimit -f 4; " PAGEREX_CLI " " + place.source() + " " + place.target());
  EXPECT_EQ(got.exitCode, PAGEREX_FAILED);
  EXPECT_EQ(got.output, "pagerex: " + place.target() + ": the output is incomplete: File too large\n");
}

/// From no free descriptor to enough: each count either converts whole, or says why not.
TEST(DescriptorLimit, IsToldWhateverIsLeft) {
  const Place place;
  ASSERT_EQ(convert(place.source(), place.target()), outcome(0));
  const Snapshot expected = snapshotOf(place.files());
  int whole = 0;
  for (rlim_t spare = 0; spare <= 6; ++spare) {
    std::filesystem::remove_all(place.files());
    const Outcome got = inChild([&] {
      // Children fill the numbers from below, so that the limit counts what is free.
      for (int last = 0; last >= 0 && last < 100;) last = open("/dev/null", O_RDONLY);
      const rlimit limit = {101 + spare, 101 + spare};
      setrlimit(RLIMIT_NOFILE, &limit);
      return convert(place.source(), place.target());
    });
    EXPECT_TRUE(got.result == PAGEREX_CANNOT_OPEN || got.error == 0 || got.error == EMFILE) << spare;
    const bool complete = got == outcome(0);
    EXPECT_TRUE(!complete || snapshotOf(place.files()) == expected) << spare;
    EXPECT_EQ(got.result == PAGEREX_CANNOT_OPEN, spare == 0) << spare;
    EXPECT_TRUE(spare != 1 || got == outcome(PAGEREX_CANNOT_WRITE, EMFILE)) << testing::PrintToString(got);
    whole += complete;
  }
  EXPECT_GT(whole, 0);
  EXPECT_TRUE(place.untouched());
}
