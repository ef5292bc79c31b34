#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "numformat/format_helpers.h"

using namespace formats;

namespace {

TEST(NumberFormatService, FormatsTheNumbersOfLists) {
  const Service service;
  EXPECT_EQ(shown(L"[dbnum4]#", serial(14)), L"XIV");
  EXPECT_EQ(shown(L"[dbnum0]#00", serial(5)), L"05");
  EXPECT_EQ(shown(L"[dbnum0]- # -", serial(5)), L"- 5 -");
  EXPECT_EQ(shown(L"[dbnum8]#", serial(5)), L"5");
  EXPECT_EQ(shown(L"[DBNum1][$-411]General", number(105)), L"百五");
  EXPECT_EQ(shown(L"[DBNum4][$-411]General", number(12)), L"拾弐");
}

}  // namespace
