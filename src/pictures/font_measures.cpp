#include "pictures/font_measures.h"

#include <algorithm>
#include <iterator>

namespace pagerex {
namespace {

struct FontRow {
  std::string_view part;  ///< of the name, in small letters
  FontMeasures measures;
};
constexpr FontRow kFonts[] = {
    {"arial narrow", {0.936F, 0.212F, 0.36F, false}},  {"arial", {0.905F, 0.212F, 0.44F, false}},
    {"helv", {0.905F, 0.212F, 0.44F, false}},          {"courier", {0.833F, 0.300F, 0.60F, true}},
    {"lucida console", {0.789F, 0.211F, 0.60F, true}}, {"consolas", {0.914F, 0.257F, 0.55F, true}},
    {"calibri", {0.952F, 0.269F, 0.49F, false}},       {"cambria", {0.950F, 0.222F, 0.50F, false}},
    {"georgia", {0.917F, 0.219F, 0.48F, false}},       {"verdana", {1.005F, 0.210F, 0.51F, false}},
    {"tahoma", {1.000F, 0.207F, 0.44F, false}},        {"trebuchet", {0.939F, 0.283F, 0.45F, false}},
    {"segoe", {1.079F, 0.251F, 0.47F, false}},         {"simsun", {0.859F, 0.141F, 0.50F, false}},
    {"simhei", {0.859F, 0.141F, 0.50F, false}},        {"gothic", {0.859F, 0.141F, 0.50F, false}},
    {"mincho", {0.859F, 0.141F, 0.50F, false}},        {"symbol", {1.005F, 0.220F, 0.50F, false}},
    {"wingdings", {0.898F, 0.211F, 0.89F, false}},
};
constexpr FontMeasures kOrdinary{0.891F, 0.216F, 0.40F, false};

/// Of characters up to '~', in 20ths of the em square, of an ordinary font of letters.
constexpr uint8_t kWidths[] = {
    5,  6,  8,  10, 10, 16, 15, 4,  7,  7,  8,  11, 5,  7,  5,  6,  10, 10, 10, 10, 10, 10, 10, 10,
    10, 10, 6,  6,  11, 11, 11, 10, 19, 14, 13, 14, 14, 13, 12, 15, 14, 6,  9,  14, 12, 17, 14, 15,
    12, 15, 13, 12, 12, 14, 14, 19, 14, 14, 12, 6,  6,  6,  9,  10, 7,  10, 10, 9,  10, 9,  6,  10,
    10, 5,  5,  10, 5,  16, 10, 10, 10, 10, 7,  8,  6,  10, 10, 14, 10, 10, 9,  8,  4,  8,  11,
};

}  // namespace

const FontMeasures& measuresOf(std::string_view family) {
  const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; };
  const auto* row = std::find_if(std::begin(kFonts), std::end(kFonts), [&](const FontRow& each) {
    return std::search(family.begin(), family.end(), each.part.begin(), each.part.end(), same) !=
           family.end();
  });
  return row == std::end(kFonts) ? kOrdinary : row->measures;
}

double estimatedWidth(std::u16string_view text, const FontMeasures& measures) {
  constexpr char16_t kFirstWide = 0x1100;
  double width = 0;
  for (const char16_t c : text) {
    if (c >= kFirstWide) {
      width += 1;
    } else if (measures.isFixed || c < ' ' || c > '~') {
      width += measures.isFixed ? measures.mean : 0.5;
    } else {
      width += kWidths[c - ' '] / 20.0 * (measures.mean / 0.42);
    }
  }
  return width;
}

}  // namespace pagerex
