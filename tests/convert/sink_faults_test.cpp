// Sinks that refuse or throw, at each of their calls.

#include <gtest/gtest.h>

#include <stdexcept>
#include <tuple>

#include "convert/host.h"

using namespace convert_test;

namespace {

struct Fault {
  const char* name;
  Call call;
  bool throws;
};
constexpr Fault kFaults[] = {
    {"BeginRefuses", Call::kBegin, false}, {"BeginThrows", Call::kBegin, true},
    {"WriteRefuses", Call::kWrite, false}, {"WriteThrows", Call::kWrite, true},
    {"EndRefuses", Call::kEnd, false},     {"EndThrows", Call::kEnd, true},
};

class SinkFaults : public testing::TestWithParam<std::tuple<std::string, Fault>> {
 protected:
  const char* format() const { return std::get<0>(GetParam()).c_str(); }
  int code() const {
    return std::get<1>(GetParam()).throws ? PAGEREX_RESULT_CANCELED : PAGEREX_RESULT_CANNOT_WRITE;
  }

  /// The n-th of its calls fails. False once there are fewer.
  bool write(Document& document, int failing) {
    const Fault& fault = std::get<1>(GetParam());
    int seen = 0;
    bool after = false;
    host_.forget();
    host_.onCall = [&](Call call) {
      if (seen >= failing && (call == Call::kBegin || call == Call::kWrite)) after = true;
      if (call != fault.call || ++seen != failing) return true;
      return fault.throws ? throw std::runtime_error("of the host") : false;
    };
    document.write(host_.options(format()), host_.sink());
    host_.onCall = nullptr;
    EXPECT_EQ(host_.complaints(), "");
    if (seen >= failing) {
      EXPECT_FALSE(after) << "goes on after call " << failing;
    }
    return seen >= failing;
  }

  Host host_{smallDocument()};
};
INSTANTIATE_TEST_SUITE_P(Each, SinkFaults,
                         testing::Combine(testing::ValuesIn(formats()), testing::ValuesIn(kFaults)),
                         [](const auto& chosen) {
                           return std::get<0>(chosen.param) + std::get<1>(chosen.param).name;
                         });

TEST_P(SinkFaults, EndTheConversionAndAreTold) {
  const Files whole = filesOf(smallDocument(), format());
  Document document(host_.memory());
  int failing = 1;
  for (; write(document, failing); ++failing) {
    EXPECT_EQ(document.result.code, code()) << failing;
    EXPECT_TRUE(document.result.isOne());
    EXPECT_TRUE(arePartOf(host_.completeFiles(), whole)) << failing;
  }
  EXPECT_GT(failing, 1);
  EXPECT_EQ(document.result.code, PAGEREX_RESULT_OK);
}

TEST_P(SinkFaults, LeaveTheHandleAsItWas) {
  const Files whole = filesOf(smallDocument(), format());
  Document document(host_.memory());
  for (int failing = 1; write(document, failing); ++failing) {
    host_.forget();
    EXPECT_EQ(document.write(Host::quiet(format()), host_.sink()), PAGEREX_RESULT_OK);
    EXPECT_EQ(host_.files(), whole) << failing;
  }
}

}  // namespace
