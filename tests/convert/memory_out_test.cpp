// Memory that runs out at each place of a conversion where some is asked for.

#include <gtest/gtest.h>

#include "convert/host.h"
#include "convert/memory_faults.h"
#include "support/snapshot.h"
#include "support/temp_folder.h"

using namespace convert_test;
using Way = MemoryFaults::Way;

namespace {

/// One conversion whose n-th request fails; false once there are fewer.
bool convertWithFault(Host& host, const std::string& format, int64_t failing, Way way, Result& result) {
  host.forget();
  const pagerex_input input = host.memory();
  const pagerex_output output = host.sink();
  const pagerex_options options = Host::quiet(format.c_str());
  const MemoryFaults faults(failing, way);
  pagerex_convert(&input, nullptr, &options, &output, &result);
  return faults.haveFailed();
}

class MemoryRunsOut : public testing::TestWithParam<std::string> {
 protected:
  void expectToldOrWhole(Way way) {
    Host host(richDocument());
    const Files whole = filesOf(richDocument(), GetParam());
    Result result;
    int64_t failing = 1;
    for (; convertWithFault(host, GetParam(), failing, way, result); ++failing) {
      const bool isTold = result.code == PAGEREX_RESULT_OUT_OF_MEMORY;
      const bool isWhole = result.code == PAGEREX_RESULT_OK && host.files() == whole;
      ASSERT_TRUE(isTold || isWhole) << "request " << failing << ": " << result.sentence;
      ASSERT_EQ(host.complaints(), "") << "request " << failing;
      ASSERT_TRUE(arePartOf(host.completeFiles(), whole)) << "request " << failing;
    }
    EXPECT_EQ(host.files(), whole);
    EXPECT_GT(failing, 200);
  }
};

TEST_P(MemoryRunsOut, OnceAndIsTold) {
  expectToldOrWhole(Way::kOne);
}

TEST_P(MemoryRunsOut, ForGoodAndIsTold) {
  expectToldOrWhole(Way::kFromThenOn);
}

TEST_P(MemoryRunsOut, LeavingTheOlderResultAtAPath) {
  const support::TempFolder folder, other;
  const Host host(smallDocument()), before(richDocument());
  const pagerex_options options = Host::quiet(GetParam().c_str());
  const auto convertTo = [&options](const std::string& target, const Host& from, Result& result) {
    const pagerex_input input = from.memory();
    const pagerex_output output = outputTo(target);
    return pagerex_convert(&input, nullptr, &options, &output, &result);
  };
  Result made;
  const std::string target = folder.path("out.html"), elsewhere = other.path("out.html");
  ASSERT_EQ(convertTo(elsewhere, host, made), PAGEREX_RESULT_OK);
  const support::Snapshot newer = support::snapshotOf(other.path());
  ASSERT_EQ(convertTo(target, before, made), PAGEREX_RESULT_OK);
  const support::Snapshot older = support::snapshotOf(folder.path());
  bool isThere = true;
  for (int64_t failing = 1; isThere; ++failing) {
    Result result;
    {
      const MemoryFaults faults(failing);
      convertTo(target, host, result);
      isThere = faults.haveFailed();
    }
    const bool isWritten = result.code == PAGEREX_RESULT_OK;
    EXPECT_TRUE(isWritten || result.code == PAGEREX_RESULT_OUT_OF_MEMORY) << failing;
    const support::Snapshot got = support::snapshotOf(folder.path());
    ASSERT_EQ(support::differences(got, isWritten ? newer : older), "") << failing;
    if (isWritten) convertTo(target, before, made);
  }
}

TEST_P(MemoryRunsOut, AndTheSameHandleWritesAgain) {
  Host host(smallDocument());
  const Files whole = filesOf(smallDocument(), GetParam());
  Document document(host.memory());
  bool isThere = true;
  for (int64_t failing = 1; isThere; ++failing) {
    for (const int64_t request : {failing, int64_t{0}}) {
      host.forget();
      const pagerex_output output = host.sink();
      const pagerex_options options = Host::quiet(GetParam().c_str());
      const MemoryFaults faults(request);
      pagerex_write(document.get(), &options, &output, &document.result);
      if (request) isThere = faults.haveFailed();
    }
    ASSERT_EQ(document.result.code, PAGEREX_RESULT_OK) << failing;
    ASSERT_EQ(host.files(), whole) << failing;
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, MemoryRunsOut, testing::ValuesIn(formats()),
                         [](const auto& chosen) { return chosen.param; });

TEST(MemoryRunsOutOfCounts, AndIsTold) {
  Host host(richDocument());
  bool isThere = true;
  int64_t failing = 1;
  for (; isThere; ++failing) {
    Document document(host.memory());
    pagerex_document_info info = {};
    info.size = sizeof(info);
    const MemoryFaults faults(failing);
    const int code = pagerex_info(document.get(), &info);
    isThere = faults.haveFailed();
    ASSERT_EQ(code, isThere ? PAGEREX_RESULT_OUT_OF_MEMORY : PAGEREX_RESULT_OK) << failing;
  }
  EXPECT_GT(failing, 1);
}

TEST(MemoryRunsOutOfOpening, AndTheKindOfAFileIsNotGuessed) {
  const support::Bytes text(5000, 'x');
  Host host(text);
  bool isThere = true;
  for (int64_t failing = 1; isThere; ++failing) {
    const pagerex_input input = host.functions();
    pagerex_document* document = nullptr;
    Result result;
    {
      const MemoryFaults faults(failing);
      pagerex_open(&input, nullptr, &document, &result);
      isThere = faults.haveFailed();
    }
    EXPECT_EQ(document, nullptr);
    EXPECT_EQ(result.code, isThere ? PAGEREX_RESULT_OUT_OF_MEMORY : PAGEREX_RESULT_NOT_WORD) << failing;
  }
}

}  // namespace
