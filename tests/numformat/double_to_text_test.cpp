#include "numformat/double_to_text.h"

#include <gtest/gtest.h>

TEST(DoubleToText, WritesZeroInExponentForm) {
  wchar_t text[32];
  EXPECT_EQ(__dbltostr(0, 2, text, 32, false, kExponentForm, false, 0, false), 7);
  EXPECT_STREQ(text, L"0.00e+0");
}
