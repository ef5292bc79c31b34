#pragma once

#include <cstdint>
#include <string_view>

namespace pagerex {

/// Fonts that stand in for each other: what a family ends with.
enum class FontPeers : uint8_t {
  kSerif,
  kSans,
  kMono,
  kCursive,
  kFantasy,
  kTimes,
  kArial,
  kArialNarrow,
  kCourier,
  kCalibri,
  kCambria,
  kGeorgia,
  kVerdana,
  kPalatino,
  kGaramond,
  kBookman,
  kSchoolbook,
  kGeometric,
  kComic,
  kChancery,
  kNaskh,
  kSongSimplified,
  kHeiSimplified,
  kKaiSimplified,
  kFangsong,
  kSongTraditional,
  kHeiTraditional,
  kKaiTraditional,
  kMincho,
  kGothic,
  kMyeongjo,
  kKoreanGothic,
};

/// As CSS, the generic family at the end: "Arimo,Liberation Sans,Helvetica,sans-serif".
std::string_view peersAsCss(FontPeers peers);

/// A well-known font, in UTF-8. East Asian ones have a name in their own script too. Without pointers, so
/// that nothing of the table is touched when the library is loaded.
struct KnownFont {
  char name[24];
  FontPeers peers;
  char ownName[24] = "";
};

/// By either name, in any case of ASCII letters; null for others.
const KnownFont* knownFontNamed(std::string_view name);

bool isSameName(std::string_view a, std::string_view b);

}  // namespace pagerex
