// Conversions from anywhere to a path, on a disk that fills: the result is whole or the older one stays.

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "pagerex/convert.h"
#include "surroundings/surroundings.h"

namespace {

/// pagerex_convert; the error is that of its result.
Outcome convertWhole(const std::string& source, const std::string& target, const std::string& format) {
  pagerex_input input = {};
  input.size = sizeof(input);
  input.path = source.c_str();
  pagerex_output output = {};
  output.size = sizeof(output);
  output.path = target.c_str();
  pagerex_options options = {};
  options.size = sizeof(options);
  options.format = format.c_str();
  options.page_size = 20000;  // more in a preview, too, than there is room for
  pagerex_result result = {};
  result.size = sizeof(result);
  const int code = pagerex_convert(&input, nullptr, &options, &output, &result);
  return outcome(code, result.system_error);
}

/// Leaves `bytes` free on the disk of the folder, in whole pages; or none.
bool fill(const std::string& folder, uintmax_t bytes) {
  const uintmax_t available = std::filesystem::space(folder).available;
  if (available < bytes) return false;
  std::ofstream file(folder + "/filler", std::ios::binary);
  file << std::string(available - bytes, 'x') << std::flush;
  return file && std::filesystem::space(folder).available == bytes;
}

class FullDiskConversion : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { std::filesystem::create_directory(disk_); }

  /// Converts a small document onto a disk of its own, then a long one with so many bytes free.
  Outcome convertTwice(uintmax_t bytesFree) const {
    return inChild([&]() -> Outcome {
      if (!mountTmpfs(disk_, "size=8m")) return {.skipped = true};
      const std::string target = disk_ + "/out.html";
      if (convertWhole(small_.source(), target, GetParam()).result != PAGEREX_RESULT_OK) return {};
      if (!fill(disk_, bytesFree)) return {};
      const Snapshot before = snapshotOf(disk_);
      Outcome outcome = convertWhole(long_.source(), target, GetParam());
      outcome.whole = snapshotOf(disk_) == before;
      return outcome;
    });
  }

  const Place small_, long_{longDocument(600)};
  const std::string disk_ = small_.path("disk");
};
INSTANTIATE_TEST_SUITE_P(Formats, FullDiskConversion,
                         testing::Values("normal", "phone", "preview", "mulpages", "html"),
                         [](const auto& chosen) { return std::string(chosen.param); });

/// Snapshots hold every name, so that nothing half made is left either.
TEST_P(FullDiskConversion, TellsItAndLeavesTheOlderResult) {
  for (const uintmax_t pages : {0, 1, 2}) {
    const Outcome got = convertTwice(pages * 4096);
    if (got.skipped) GTEST_SKIP() << "neither root nor a user namespace may mount a file system here";
    Outcome wanted = outcome(PAGEREX_RESULT_CANNOT_WRITE, ENOSPC);
    wanted.whole = true;
    EXPECT_EQ(got, wanted) << pages << " pages free";
  }
  EXPECT_TRUE(small_.untouched({"disk"}));
}

TEST_P(FullDiskConversion, TakesTheOlderPlaceWhereThereIsRoom) {
  const Outcome got = convertTwice(4 << 20);
  if (got.skipped) GTEST_SKIP() << "neither root nor a user namespace may mount a file system here";
  EXPECT_EQ(got, outcome(PAGEREX_RESULT_OK));
}

}  // namespace
