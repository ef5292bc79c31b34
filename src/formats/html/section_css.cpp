#include "formats/html/section_css.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

#include "formats/html/css_values.h"

namespace pagerex {
namespace {

void appendColumns(std::string& out, const SectionProperties& section) {
  constexpr uint16_t kMostColumns = 45;
  if (section.columnCount < 2) return;
  out += "column-count:" + std::to_string(std::min(section.columnCount, kMostColumns)) + ";column-gap:";
  appendPoints(out, section.columns.empty() ? section.columnSpace : section.columns.front().second);
  out += ';';
  if (section.hasLineBetweenColumns) appendDeclaration(out, "column-rule", ".5pt solid");
}

/// By the direction of text, which sections count as drawings do.
constexpr const char* kWritingModes[] = {"", "vertical-rl", "sideways-lr", "vertical-rl", "", "vertical-rl"};

/// Two margins that leave room for text, or none.
std::array<int64_t, 2> margins(int64_t first, int64_t second, int64_t size) {
  constexpr int64_t kLeastRoom = 720;
  first = std::max<int64_t>(first, 0);
  second = std::max<int64_t>(second, 0);
  if (first + second + kLeastRoom > size) return {0, 0};
  return {first, second};
}

int64_t pageSize(uint16_t twips) {
  constexpr int64_t kLeast = 144, kMost = 31680;
  return std::clamp<int64_t>(twips, kLeast, kMost);
}

/// "1pt 2pt 3pt 4pt" of top, right, bottom and left, as short as it can be said.
void appendFourSides(std::string& out, const std::array<int64_t, 4>& sides) {
  const size_t count = sides[1] != sides[3] ? 4 : sides[0] != sides[2] ? 3 : sides[0] != sides[1] ? 2 : 1;
  for (size_t i = 0; i < count; ++i) {
    if (i > 0) out += ' ';
    appendPoints(out, sides[i]);
  }
}

}  // namespace

void appendSectionCss(std::string& out, const SectionProperties& section) {
  appendColumns(out, section);
  if (section.textFlow >= std::size(kWritingModes) || *kWritingModes[section.textFlow] == '\0') return;
  appendDeclaration(out, "writing-mode", kWritingModes[section.textFlow]);
}

void appendPageRule(std::string& out, std::string_view name, const SectionProperties& section) {
  const int64_t width = pageSize(section.pageWidth), height = pageSize(section.pageHeight);
  // A negative margin is as wide as a positive one, but does not give way to headers.
  const auto [top, bottom] = margins(std::abs(section.marginTop), std::abs(section.marginBottom), height);
  const auto [left, right] =
      margins(int64_t{section.marginLeft} + section.gutter, int64_t{section.marginRight}, width);
  out += "@page";
  if (!name.empty()) (out += ' ') += name;
  out += "{size:";
  appendPoints(out, width);
  out += ' ';
  appendPoints(out, height);
  out += ";margin:";
  appendFourSides(out, {top, right, bottom, left});
  out += '}';
}

}  // namespace pagerex
