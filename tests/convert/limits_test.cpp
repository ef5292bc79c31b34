// The limits of a call: memory, bytes read and written, time. After each the same handle writes again.

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "convert/host.h"

using namespace convert_test;

namespace {

class EachFormatLimited : public testing::TestWithParam<std::string> {
 protected:
  const char* format() const { return GetParam().c_str(); }
  Result withMemory(uint64_t bytes) {
    pagerex_limits limits = noLimits();
    limits.memory = bytes;
    host_.forget();
    return convert(host_.memory(), host_.sink(), Host::quiet(format()), &limits);
  }
  int withOutput(Document& document, uint64_t bytes) {
    pagerex_limits limits = noLimits();
    limits.output_bytes = bytes;
    host_.forget();
    return document.write(host_.options(format(), &limits), host_.sink());
  }

  Host host_{richDocument()};
  const Files whole_ = filesOf(richDocument(), GetParam());
};
INSTANTIATE_TEST_SUITE_P(Formats, EachFormatLimited, testing::ValuesIn(formats()),
                         [](const auto& chosen) { return chosen.param; });

TEST_P(EachFormatLimited, HasEnoughMemoryOrSaysThatItHasNot) {
  bool wasEnough = false;
  for (uint64_t bytes = 1; bytes <= uint64_t{1} << 40; bytes *= 2) {
    const Result result = withMemory(bytes);
    const bool isEnough = result.code == PAGEREX_RESULT_OK;
    EXPECT_TRUE(isEnough || result.code == PAGEREX_RESULT_MEMORY_LIMIT) << bytes << ": " << result.sentence;
    EXPECT_TRUE(!wasEnough || isEnough) << bytes;
    if (isEnough) {
      EXPECT_EQ(host_.files(), whole_) << bytes;
    }
    EXPECT_EQ(host_.complaints(), "") << bytes;
    wasEnough = isEnough;
  }
  EXPECT_TRUE(wasEnough);
}

TEST_P(EachFormatLimited, NeedsTheSameMemoryEachTime) {
  uint64_t tooLittle = 1, enough = 1 << 24;
  while (enough - tooLittle > 1) {
    const uint64_t middle = (tooLittle + enough) / 2;
    (withMemory(middle).code == PAGEREX_RESULT_OK ? enough : tooLittle) = middle;
  }
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(withMemory(enough).code, PAGEREX_RESULT_OK) << enough;
    EXPECT_EQ(withMemory(tooLittle).code, PAGEREX_RESULT_MEMORY_LIMIT) << tooLittle;
  }
}

TEST_P(EachFormatLimited, NeedsNoMoreMemoryHoweverOftenItIsWritten) {
  pagerex_limits limits = noLimits();
  limits.memory = 4 << 20;
  Document document(host_.memory(), &limits);
  for (int i = 0; i < 300; ++i) {
    host_.forget();
    ASSERT_EQ(document.write(Host::quiet(format()), host_.sink()), PAGEREX_RESULT_OK) << i;
  }
  EXPECT_EQ(host_.files(), whole_);
}

TEST_P(EachFormatLimited, MayBeAsLargeAsItIs) {
  Document document(host_.memory());
  withOutput(document, 0);
  const uint64_t bytes = host_.bytes();
  EXPECT_EQ(withOutput(document, bytes), PAGEREX_RESULT_OK);
  EXPECT_EQ(host_.files(), whole_);
}

TEST_P(EachFormatLimited, MayNotBeLarger) {
  Document document(host_.memory());
  withOutput(document, 0);
  const uint64_t all = host_.bytes();
  for (const uint64_t bytes : {uint64_t{1}, all / 2, all - 1}) {
    EXPECT_EQ(withOutput(document, bytes), PAGEREX_RESULT_OUTPUT_LIMIT) << bytes;
    EXPECT_LE(host_.bytes(), bytes);
    EXPECT_EQ(document.result.output_bytes, host_.bytes());
    EXPECT_EQ(host_.complaints(), "");
    EXPECT_TRUE(arePartOf(host_.completeFiles(), whole_)) << bytes;
  }
  EXPECT_EQ(withOutput(document, 0), PAGEREX_RESULT_OK);
  EXPECT_EQ(host_.files(), whole_);
}

TEST_P(EachFormatLimited, EndsWhenAFunctionOfTheHostTookTooLong) {
  for (const Call slow : {Call::kRead, Call::kByteCount, Call::kBegin, Call::kWrite, Call::kEnd,
                          Call::kProgress, Call::kMayGoOn}) {
    host_.forget();
    bool isSlow = true;
    host_.onCall = [&](Call call) {
      if (call == slow && std::exchange(isSlow, false))
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
      return true;
    };
    pagerex_limits limits = noLimits();
    limits.deadline_ms = 50;
    const Result result = convert(host_.functions(), host_.sink(), host_.options(format()), &limits);
    EXPECT_EQ(result.code, PAGEREX_RESULT_DEADLINE) << static_cast<int>(slow);
    EXPECT_EQ(host_.complaints(), "");
  }
}

TEST(InputLimit, IsOfAllBytes) {
  Host host(smallDocument());
  pagerex_limits limits = noLimits();
  limits.input_bytes = smallDocument().size();
  EXPECT_EQ(Document(host.memory(), &limits).code(), PAGEREX_RESULT_OK);
  --limits.input_bytes;
  EXPECT_EQ(Document(host.memory(), &limits).code(), PAGEREX_RESULT_TOO_LARGE);
}

TEST(InputLimit, KeepsLargeInputsFromBeingRead) {
  Host host(smallDocument());
  pagerex_limits limits = noLimits();
  limits.input_bytes = 1;
  EXPECT_EQ(Document(host.functions(), &limits).code(), PAGEREX_RESULT_TOO_LARGE);
  EXPECT_EQ(host.calls(Call::kRead), 0);
}

TEST(MemoryLimit, OfOpeningIsOneOfWritingToo) {
  Host host(richDocument());
  pagerex_limits limits = noLimits();
  int opened = 0;
  for (limits.memory = 1024; limits.memory < 1 << 22; limits.memory *= 2) {
    Document document(host.memory(), &limits);
    if (!document.get()) continue;
    ++opened;
    for (int i = 0; i < 3; ++i) {
      host.forget();
      const int code = document.write(Host::quiet("normal"), host.sink());
      EXPECT_TRUE(code == PAGEREX_RESULT_OK || code == PAGEREX_RESULT_MEMORY_LIMIT) << limits.memory;
    }
  }
  EXPECT_GT(opened, 0);
}

TEST(MemoryLimit, DoesNotChangeWhatAFileIs) {
  Host host(support::Bytes(5000, 'x'));
  pagerex_limits limits = noLimits();
  limits.memory = 1;
  const Document document(host.functions(), &limits);
  EXPECT_EQ(document.code(), PAGEREX_RESULT_NOT_WORD);
  EXPECT_EQ(document.result.kind, PAGEREX_KIND_TEXT);
}

TEST(Deadline, OfAnotherAgeIsNone) {
  Host host(smallDocument());
  pagerex_limits limits = noLimits();
  limits.deadline_ms = UINT64_MAX;
  EXPECT_EQ(convert(host.memory(), host.sink(), Host::quiet("normal"), &limits).code, PAGEREX_RESULT_OK);
}

TEST(Deadline, IsOneForOpeningAndWriting) {
  Host host(smallDocument());
  host.onCall = [](Call call) {
    if (call == Call::kRead || call == Call::kBegin)
      std::this_thread::sleep_for(std::chrono::milliseconds(40));
    return true;
  };
  pagerex_limits limits = noLimits();
  limits.deadline_ms = 60;
  pagerex_options options = Host::quiet("preview");
  EXPECT_EQ(convert(host.functions(), host.sink(), options, &limits).code, PAGEREX_RESULT_DEADLINE);
}

TEST(Deadline, EndsAHostThatWaits) {
  Host host(smallDocument());
  host.answer = [] { return PAGEREX_WAIT; };
  pagerex_limits limits = noLimits();
  limits.deadline_ms = 50;
  Document document(host.memory());
  EXPECT_EQ(document.write(host.options("normal", &limits), host.sink()), PAGEREX_RESULT_DEADLINE);
  host.forget();
  EXPECT_EQ(document.write(Host::quiet("normal"), host.sink()), PAGEREX_RESULT_OK);
  EXPECT_EQ(host.files(), filesOf(smallDocument(), "normal"));
}

}  // namespace
