// What a host may pass, and what is refused before anything is read or written.

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstring>

#include "convert/host.h"
#include "support/temp_folder.h"

using namespace convert_test;

namespace {

constexpr int kRefused = PAGEREX_RESULT_INVALID_ARGUMENT;

/// A call of which a test breaks one part.
class Arguments : public testing::Test {
 protected:
  int run() { return pagerex_convert(&input, &limits, &options, &output, &result); }

  Host host{smallDocument()};
  pagerex_input input = host.memory();
  pagerex_limits limits = noLimits();
  pagerex_options options = Host::quiet("normal");
  pagerex_output output = host.sink();
  Result result;
};

TEST_F(Arguments, AreSoundAsTheyAre) {
  EXPECT_EQ(run(), PAGEREX_RESULT_OK);
}

TEST_F(Arguments, MayBeFewerThanAll) {
  EXPECT_EQ(pagerex_convert(&input, nullptr, nullptr, &output, nullptr), PAGEREX_RESULT_OK);
}

TEST_F(Arguments, NeedAnInputAndAnOutput) {
  EXPECT_EQ(pagerex_convert(nullptr, &limits, &options, &output, &result), kRefused);
  EXPECT_EQ(pagerex_convert(&input, &limits, &options, nullptr, &result), kRefused);
  EXPECT_TRUE(result.isOne());
}

TEST_F(Arguments, NeedAPlaceForTheDocument) {
  EXPECT_EQ(pagerex_open(&input, &limits, nullptr, &result), kRefused);
}

TEST_F(Arguments, NeedADocument) {
  pagerex_document_info info = {};
  info.size = sizeof(info);
  EXPECT_EQ(pagerex_write(nullptr, &options, &output, &result), kRefused);
  EXPECT_EQ(pagerex_info(nullptr, &info), kRefused);
  pagerex_close(nullptr);
  pagerex_cancel(nullptr);
}

TEST_F(Arguments, NeedTheSizeOfInfo) {
  const Document document(input);
  pagerex_document_info info = {};
  EXPECT_EQ(pagerex_info(document.get(), &info), kRefused);
  EXPECT_EQ(pagerex_info(document.get(), nullptr), kRefused);
}

TEST_F(Arguments, LeaveNoDocumentWhereTheyAreRefused) {
  auto* document = reinterpret_cast<pagerex_document*>(this);
  input.size = 0;
  EXPECT_EQ(pagerex_open(&input, &limits, &document, &result), kRefused);
  EXPECT_EQ(document, nullptr);
}

TEST_F(Arguments, RefuseStructuresThatAreTooShort) {
  options.size = offsetof(pagerex_options, revisions);  // of the first version
  for (size_t* const size : {&input.size, &limits.size, &options.size, &output.size}) {
    const size_t right = *size;
    for (const size_t wrong : {size_t{0}, size_t{1}, sizeof(size_t), right - 1}) {
      *size = wrong;
      EXPECT_EQ(run(), kRefused) << wrong << " for " << right;
    }
    *size = right;
  }
}

TEST_F(Arguments, RefuseLimitsOfOptionsThatAreTooShort) {
  options.limits = &limits;
  limits.size = 8;
  EXPECT_EQ(pagerex_convert(&input, nullptr, &options, &output, &result), kRefused);
}

TEST_F(Arguments, TakeStructuresOfALaterVersion) {
  struct Later {
    pagerex_options options;
    char more[64];
  } later = {options, {}};
  std::memset(later.more, 0x55, sizeof(later.more));
  later.options.size = sizeof(later);
  EXPECT_EQ(pagerex_convert(&input, nullptr, &later.options, &output, nullptr), PAGEREX_RESULT_OK);
}

TEST_F(Arguments, FillInNoMoreOfAResultThanTheHostHas) {
  const size_t known = offsetof(pagerex_result, sentence);
  std::memset(static_cast<void*>(static_cast<pagerex_result*>(&result)), 0x55, sizeof(pagerex_result));
  result.size = known;
  EXPECT_EQ(run(), PAGEREX_RESULT_OK);
  EXPECT_EQ(result.size, known);
  EXPECT_EQ(result.code, PAGEREX_RESULT_OK);
  EXPECT_EQ(result.sentence[0], 0x55);
  EXPECT_EQ(result.warnings[0].code, 0x55555555);
}

TEST_F(Arguments, FillInNothingOfAResultWithoutASize) {
  result.size = 0;
  result.code = 77;
  EXPECT_EQ(run(), PAGEREX_RESULT_OK);
  EXPECT_EQ(result.code, 77);
}

TEST_F(Arguments, RefuseFormatsThatThereAreNot) {
  for (const char* name : {"docx", "Normal", "normal ", "htm", "xhtml"}) {
    options.format = name;
    EXPECT_EQ(run(), kRefused) << name;
  }
}

TEST_F(Arguments, RefuseChoicesThatThereAreNot) {
  for (const int32_t wrong : {-1, 3, 1000}) {
    options.links = wrong;
    EXPECT_EQ(run(), kRefused);
  }
  options.links = 0;
  for (const int32_t wrong : {-1, 5, 32, 1000}) {
    options.pictures = wrong;
    EXPECT_EQ(run(), kRefused);
  }
}

TEST_F(Arguments, RefusePagesOfLessThanNothing) {
  for (const int64_t wrong : {int64_t{-1}, INT64_MIN}) {
    options.page_size = wrong;
    EXPECT_EQ(run(), kRefused);
  }
}

TEST_F(Arguments, RefuseAnInputWithTwoWays) {
  input.path = "in.doc";
  EXPECT_EQ(run(), kRefused);
  input.path = nullptr;
  input.byte_count = host.functions().byte_count;
  EXPECT_EQ(run(), kRefused);
}

TEST_F(Arguments, RefuseAnInputWithOneFunction) {
  input = host.functions();
  input.byte_count = nullptr;
  EXPECT_EQ(run(), kRefused);
  input = host.functions();
  input.read_at = nullptr;
  EXPECT_EQ(run(), kRefused);
}

TEST_F(Arguments, RefuseAnInputWithNoWay) {
  input.data = nullptr;
  EXPECT_EQ(run(), kRefused);
}

TEST_F(Arguments, RefuseAnOutputWithTwoWaysOrNone) {
  output.path = "out.html";
  EXPECT_EQ(run(), kRefused);
  output.path = "";
  output.begin = nullptr;
  output.write = nullptr;
  EXPECT_EQ(run(), kRefused);
  output.path = nullptr;
  EXPECT_EQ(run(), kRefused);
}

TEST_F(Arguments, RefuseAnOutputWithOneFunction) {
  output.begin = nullptr;
  EXPECT_EQ(run(), kRefused);
  output = host.sink();
  output.write = nullptr;
  EXPECT_EQ(run(), kRefused);
}

TEST_F(Arguments, MayLackTheEndOfFiles) {
  output.end = nullptr;
  EXPECT_EQ(run(), PAGEREX_RESULT_OK);
  EXPECT_EQ(host.files(), filesOf(smallDocument(), "normal"));
}

TEST_F(Arguments, RefuseMainNamesThatAreNone) {
  const std::string tooLong(231, 'x');
  for (const char* name : {"", ".", "..", "a/b", "/a", "a\nb", "a\x7F", "a.files", tooLong.c_str()}) {
    output.main_name = name;
    EXPECT_EQ(run(), kRefused) << name;
    EXPECT_EQ(host.calls(), 0) << name;
  }
}

TEST_F(Arguments, TakeMainNamesOfAllKinds) {
  for (const char* name : {"a", "a.b.c", "Brief an M\xC3\xBCller.html", "%s%n", " "}) {
    host.forget();
    output.main_name = name;
    EXPECT_EQ(run(), PAGEREX_RESULT_OK) << name;
    EXPECT_EQ(host.complaints(), "") << name;
    EXPECT_EQ(host.files().count(name), 1u) << name;
  }
}

TEST_F(Arguments, ThatAreRefusedCallNothing) {
  input = host.functions();
  options.format = "none";
  EXPECT_EQ(run(), kRefused);
  EXPECT_EQ(host.calls(), 0);
}

TEST_F(Arguments, OfAWriteThatIsRefusedLeaveTheHandleAsItIs) {
  Document document(input);
  options.format = "none";
  EXPECT_EQ(document.write(options, output), kRefused);
  EXPECT_EQ(document.write(Host::quiet("phone"), output), PAGEREX_RESULT_OK);
  EXPECT_EQ(host.files(), filesOf(smallDocument(), "phone"));
}

TEST(ResultNames, AreThereForAllNumbers) {
  for (int code = -5; code < 100; ++code) EXPECT_NE(pagerex_result_name(code), nullptr);
  EXPECT_STREQ(pagerex_result_name(PAGEREX_RESULT_OK), "ok");
  EXPECT_STREQ(pagerex_result_name(1000), "unknown");
}

TEST(Version, IsTold) {
  EXPECT_NE(std::string(pagerex_version()), "");
}

}  // namespace
