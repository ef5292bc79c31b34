// A host that ends its conversion: by the flag, by what a function answers, by an exception.

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "convert/host.h"
#include "support/snapshot.h"
#include "support/temp_folder.h"

using namespace convert_test;

namespace {

class Canceled : public testing::TestWithParam<std::string> {
 protected:
  const char* format() const { return GetParam().c_str(); }
  /// With `act` in the n-th call of the host; false once there are fewer.
  bool convertActing(const pagerex_output& output, int acting, const std::function<void(Call)>& act) {
    flag_ = 0;
    host_.forget();
    host_.onCall = [&](Call call) {
      if (host_.calls() == acting) act(call);
      return true;
    };
    pagerex_limits limits = noLimits();
    limits.cancel = &flag_;
    result_ = convert(host_.functions(), output, host_.options(format()), &limits);
    EXPECT_EQ(host_.complaints(), "");
    return host_.calls() >= acting;
  }

  Host host_{smallDocument()};
  int flag_ = 0;
  Result result_;
  const Files whole_ = filesOf(smallDocument(), GetParam());
};
INSTANTIATE_TEST_SUITE_P(Formats, Canceled, testing::ValuesIn(formats()),
                         [](const auto& chosen) { return chosen.param; });

TEST_P(Canceled, FromEachFunctionByTheFlag) {
  int acting = 1;
  for (; convertActing(host_.sink(), acting, [this](Call) { pagerex_cancel(&flag_); }); ++acting) {
    EXPECT_EQ(result_.code, PAGEREX_RESULT_CANCELED) << acting;
    EXPECT_LE(host_.calls(), acting + 4) << "goes on for long";
    EXPECT_TRUE(arePartOf(host_.completeFiles(), whole_)) << acting;
  }
  EXPECT_EQ(result_.code, PAGEREX_RESULT_OK);
  EXPECT_GT(acting, 10);
}

TEST_P(Canceled, FromEachFunctionByAnException) {
  int acting = 1;
  for (; convertActing(host_.sink(), acting, [](Call) { throw std::runtime_error("of the host"); });
       ++acting) {
    EXPECT_EQ(result_.code, PAGEREX_RESULT_CANCELED) << acting;
    EXPECT_TRUE(arePartOf(host_.completeFiles(), whole_)) << acting;
  }
  EXPECT_GT(acting, 10);
}

TEST_P(Canceled, LeavesNothingAtAPath) {
  const support::TempFolder folder;
  const std::string target = folder.path("out.html");
  const pagerex_output output = outputTo(target);
  for (int acting = 1; convertActing(output, acting, [this](Call) { pagerex_cancel(&flag_); }); ++acting) {
    EXPECT_EQ(result_.code, PAGEREX_RESULT_CANCELED) << acting;
    EXPECT_TRUE(folder.files().empty()) << acting;
    EXPECT_TRUE(support::snapshotOf(folder.path()).empty()) << acting;
  }
  EXPECT_FALSE(folder.files().empty());
}

TEST_P(Canceled, BeforeItBegins) {
  flag_ = 1;
  pagerex_limits limits = noLimits();
  limits.cancel = &flag_;
  EXPECT_EQ(convert(host_.memory(), host_.sink(), host_.options(format()), &limits).code,
            PAGEREX_RESULT_CANCELED);
  EXPECT_TRUE(host_.names().empty());
}

TEST_P(Canceled, LeavesAHandleThatWritesAgain) {
  pagerex_limits limits = noLimits();
  limits.cancel = &flag_;
  Document document(host_.functions());
  for (int acting = 1, calls = 1; calls >= acting; ++acting) {
    flag_ = 0;
    host_.forget();
    host_.onCall = [&](Call) {
      if (host_.calls() == acting) flag_ = 1;
      return true;
    };
    document.write(host_.options(format(), &limits), host_.sink());
    calls = host_.calls();
    flag_ = 0;
    host_.forget();
    host_.onCall = nullptr;
    EXPECT_EQ(document.write(Host::quiet(format(), &limits), host_.sink()), PAGEREX_RESULT_OK) << acting;
    EXPECT_EQ(host_.files(), whole_) << acting;
  }
}

TEST_P(Canceled, ByAnswerOfTheHost) {
  for (const int answer : {int{PAGEREX_STOP}, 77, -77}) {
    host_.forget();
    host_.answer = [answer] { return answer; };
    EXPECT_EQ(convert(host_.memory(), host_.sink(), host_.options(format())).code, PAGEREX_RESULT_CANCELED);
    EXPECT_EQ(host_.calls(Call::kMayGoOn), 1);
  }
}

TEST_P(Canceled, NotByAHostThatOnlyWaits) {
  int waits = 2;
  host_.answer = [&waits] { return waits-- > 0 ? PAGEREX_WAIT : PAGEREX_GO_ON; };
  EXPECT_EQ(convert(host_.memory(), host_.sink(), host_.options(format())).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(host_.files(), whole_);
}

TEST_P(Canceled, FromAnotherThreadWhileTheHostWaits) {
  pagerex_limits limits = noLimits();
  limits.cancel = &flag_;
  std::thread other;
  host_.answer = [&] {
    if (!other.joinable()) other = std::thread([this] { pagerex_cancel(&flag_); });
    return PAGEREX_WAIT;
  };
  EXPECT_EQ(convert(host_.memory(), host_.sink(), host_.options(format()), &limits).code,
            PAGEREX_RESULT_CANCELED);
  other.join();
}

TEST(CanceledOpening, IsNoDamage) {
  Host host(smallDocument());
  int flag = 1;
  pagerex_limits limits = noLimits();
  limits.cancel = &flag;
  for (const pagerex_input& input : {host.memory(), host.functions()})
    EXPECT_EQ(Document(input, &limits).code(), PAGEREX_RESULT_CANCELED);
}

TEST(CanceledWriting, HasLimitsOfItsOwn) {
  Host host(smallDocument());
  int flag = 1;
  pagerex_limits canceled = noLimits();
  canceled.cancel = &flag;
  const pagerex_limits none = noLimits();
  EXPECT_EQ(convert(host.memory(), host.sink(), Host::quiet("normal", &canceled), &none).code,
            PAGEREX_RESULT_CANCELED);
}

}  // namespace
