#include "formats/html/tab_stops.h"

#include <algorithm>

namespace pagerex {
namespace {

constexpr uint8_t kBar = 4;

/// Hundredths of the size that a character of the usual text fonts is wide.
uint32_t widthOf(unsigned char byte) {
  if (byte >= 0xE0) return 100;  // of three bytes and more: East Asian ones, and signs
  if (byte >= 0xC0) return 52;
  if (byte >= 'A' && byte <= 'Z') return byte == 'I' ? 33 : byte == 'M' || byte == 'W' ? 90 : 68;
  constexpr std::string_view kNarrow = " ijlt.,:;!|'()[]/-fr";
  if (kNarrow.find(static_cast<char>(byte)) != std::string_view::npos) return 29;
  return byte == 'm' || byte == 'w' ? 75 : 50;
}

}  // namespace

bool hasOwnStops(const ParagraphProperties& paragraph) {
  return paragraph.indentFirstLine < 0 ||
         std::any_of(paragraph.tabs.begin(), paragraph.tabs.end(),
                     [](const TabStop& tab) { return tab.alignment != kBar; });
}

FoundStop nextStop(const ParagraphProperties& paragraph, int32_t position, int32_t distance) {
  constexpr int32_t kLeast = 20;  // a stop that is nearer is the one that was gone to
  FoundStop found;
  found.isDefault = true;
  const int32_t step = std::max(distance, 1);
  const int32_t from = position + kLeast;
  found.position = (from < 0 ? -((-from - 1) / step) : from / step + 1) * step;
  for (const TabStop& tab : paragraph.tabs) {
    if (tab.alignment == kBar || tab.position < from) continue;
    found = {tab.position, std::min<uint8_t>(tab.alignment, 3), tab.leader, false};
    break;
  }
  // In front of the first of its own, there are no others.
  const bool hangs = paragraph.indentFirstLine < 0 && paragraph.indentStart >= from;
  if (hangs && (found.isDefault || paragraph.indentStart < found.position))
    return {paragraph.indentStart, 0, 0, false};
  return found;
}

int32_t aboutWidth(std::string_view markup, int32_t sizeHalfPoints) {
  uint64_t hundredths = 0;
  bool isInTag = false, isInReference = false;
  for (const char each : markup) {
    const auto byte = static_cast<unsigned char>(each);
    if (each == '<') isInTag = true;
    if (!isInTag && !isInReference && (byte & 0xC0) != 0x80) hundredths += widthOf(byte);
    if (each == '>') isInTag = false;
    if (each == '&') isInReference = true;
    if (each == ';') isInReference = false;
  }
  constexpr uint64_t kMost = 1 << 20;  // twips: no line is so wide
  return static_cast<int32_t>(
      std::min(kMost, hundredths * static_cast<uint64_t>(std::max(sizeHalfPoints, 0)) * 10 / 100));
}

}  // namespace pagerex
