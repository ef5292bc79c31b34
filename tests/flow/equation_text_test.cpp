#include "flow/equation_text.h"

#include <gtest/gtest.h>

#include <random>

namespace pagerex {
namespace {

struct Row {
  std::u16string_view code, text;
};

class EquationText : public testing::TestWithParam<Row> {};

TEST_P(EquationText, ReadsAsOneLine) {
  EXPECT_EQ(equationText(GetParam().code), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    OfEachSwitch, EquationText,
    testing::Values(Row{u" EQ \\f(1,2) ", u"1/2"}, Row{u"eq \\F(a+b;c)", u"(a+b)/c"},
                    Row{u"EQ x = \\f(1,\\f(2,3))", u"x = 1/(2/3)"}, Row{u"EQ \\r(x)", u"√(x)"},
                    Row{u"EQ \\r(3,x+1)", u"³√(x+1)"}, Row{u"EQ \\r(n,x)", u"n√(x)"},
                    Row{u"EQ x\\s\\up8(2)", u"x²"}, Row{u"EQ x\\s\\up 8(2)\\do8(10)", u"x²₁₀"},
                    Row{u"EQ A\\s\\do8(max)", u"Amax"}, Row{u"EQ \\s(a,b)", u"a b"},
                    Row{u"EQ \\i(a,b,f(x) dx)", u"∫_a^b f(x) dx"},
                    Row{u"EQ \\i\\su(i=1,n,x)", u"∑_(i=1)^n x"}, Row{u"EQ \\i \\pr (,,y)", u"∏ y"},
                    Row{u"EQ \\i\\fc\\X(1,2,z)", u"X_1^2 z"}, Row{u"EQ \\l(a,b,c)", u"a,b,c"},
                    Row{u"EQ \\l(a;b)", u"a;b"}, Row{u"EQ \\b(x)", u"(x)"}, Row{u"EQ \\b\\bc\\{ (x)", u"{x}"},
                    Row{u"EQ \\b \\bc\\| (x)", u"|x|"}, Row{u"EQ \\b\\lc\\[ (x)", u"[x"},
                    Row{u"EQ \\b\\lc\\< \\rc\\] (x)", u"<x]"},
                    Row{u"EQ \\a\\al\\co2\\vs3(a,b,c,d)", u"a b c d"},
                    Row{u"EQ \\x\\to\\bo(in a box)", u"in a box"}, Row{u"EQ a\\d\\fo10\\li()b", u"ab"},
                    Row{u"EQ \\o(a,/)", u"a/"}));

INSTANTIATE_TEST_SUITE_P(
    OfEastAsianText, EquationText,
    testing::Values(Row{u"EQ \\* jc2 \\* \"Font:MS Mincho\" \\* hps10 \\o\\ad(\\s\\up 9(とうきょう),東京)",
                        u"東京(とうきょう)"},
                    Row{u"eq \\o\\ac(○,7)", u"⑦"}, Row{u"eq \\o\\ac(○,字)", u"○字"},
                    Row{u"EQ \\o(\\s\\up 5(上),\\s\\do 2(下))", u"下(上)"}));

INSTANTIATE_TEST_SUITE_P(OfText, EquationText,
                         testing::Values(Row{u"", u""}, Row{u"EQ", u""}, Row{u"EQ a, b) c; d", u"a, b) c; d"},
                                         Row{u"EQUAL", u"EQUAL"}, Row{u"EQ \\f(\\(a\\),b\\,c)", u"(a)/(b,c)"},
                                         Row{u"EQ \\f((a,b),c)", u"((a,b))/c"}, Row{u"EQ \\\\", u"\\"},
                                         Row{u"EQ \\f(1,5;2)", u"(1,5)/2"}));

INSTANTIATE_TEST_SUITE_P(OfDamagedCode, EquationText,
                         testing::Values(Row{u"EQ \\", u""}, Row{u"EQ \\f", u""}, Row{u"EQ \\f(", u""},
                                         Row{u"EQ \\f(1", u"1"}, Row{u"EQ \\f(1,", u"1/"},
                                         Row{u"EQ \\f()", u""}, Row{u"EQ \\r", u"√"}, Row{u"EQ \\b\\lc", u""},
                                         Row{u"EQ \\* \"open", u""}, Row{u"EQ \\s\\up", u""},
                                         Row{u"EQ \\q(1)", u"q(1)"}));

TEST(EquationText, DeepInBracketsIsText) {
  std::u16string code = u"EQ ", end;
  for (int i = 0; i < 100000; ++i) {
    code += u"\\x(";
    end += u')';
  }
  const std::u16string text = equationText(code + u"y" + end);
  EXPECT_NE(text.find(u'y'), std::u16string::npos);
  EXPECT_LT(text.size(), code.size());
}

TEST(EquationText, OfAnyCodeIsNotMuchLonger) {
  std::mt19937 random(3);
  const std::u16string_view signs = u"\\\\\\((()),;abdfilorsxup12 *\"{";
  for (int round = 0; round < 30000; ++round) {
    std::u16string code;
    for (size_t i = random() % 60; i > 0; --i) code += signs[random() % signs.size()];
    EXPECT_LE(equationText(code).size(), 4 * code.size()) << round;
  }
}

}  // namespace
}  // namespace pagerex
