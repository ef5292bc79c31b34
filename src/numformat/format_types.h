#pragma once

#include <string>

#include "numformat/const_strings.h"
#include "numformat/number_spelling.h"
#include "pagerex/numformat.h"

struct KPlaceholderPiece;

/// Kind of a section, and what a token makes of the section that it stands in.
enum NF_SORT : int {
  NF_SORT_NUMBER = 0,
  NF_SORT_GENERAL = 1,
  NF_SORT_EXPONENT = 2,
  NF_SORT_PERCENT = 3,
  NF_SORT_PER_MILLE = 4,
  NF_SORT_FRACTION = 5,
  NF_SORT_DATE = 6,
  NF_SORT_TEXT = 7,
  NF_SORT_EMPTY = 8,        ///< a section without characters; there is no object for it
  NF_SORT_UNDECIDED = 100,  ///< nothing decisive in it
  NF_SORT_MALFORMED = 101,
};

/// Which dialect a format is written back in.
enum DecompileType : int {
  kDecompileExcel = 0x1001,
  kDecompileWord = 0x1002,
  kDecompileOQ = 0x2001,
};

constexpr size_t kLongestFormat = 255;  ///< characters
constexpr int kMaxSections = 4;

/// One token of a compiled section.
struct PlaceholderRecord {
  /// Of a digit: counted from the right from 1 in the integer part, -1, -2, ... in the decimals. Of a
  /// currency token: the length of the symbol in `text`, from offset 2. 0 for all others.
  int position = 0;
  std::wstring text;  ///< of the token, as its piece read it
  const KPlaceholderPiece* piece = nullptr;
};

/// What a section makes of one value. The section itself is not changed by it, so that threads can share it.
struct ShownValue {
  NFSTYLE style;  ///< the section's, and what the value adds to it
  /// The digits of a number. A text section holds its text in the first, a spelled number stands there too.
  std::wstring integerDigits;
  std::wstring decimalDigits;
};

constexpr NF_FORMAT_PARAM kDefaultParam = {-1, 0, 0xFFFFFFFF};

constexpr uint32_t kNoColour = 0xFFFFFE;
constexpr uint32_t kStyleLowHalf = 0xFFFE;
constexpr NFSTYLE kDefaultStyle = {kNoColour, 0, 0, 0, kStyleLowHalf};

constexpr NF_CODEPAGE codePageOf(const NFSTYLE& style) {
  return static_cast<NF_CODEPAGE>((style.codePage >> 16) & 0xFF);
}

constexpr void setCodePage(NFSTYLE& style, int page) {
  style.codePage = (style.codePage & 0xFF00FFFFu) | static_cast<uint32_t>(page & 0xFF) << 16;
}

/// The locale that a Windows language identifier stands for.
constexpr AREA_CODE_INDEX areaOfLanguage(uint32_t language) {
  switch (language) {
    case 1041:
      return AREA_JAPANESE;
    case 2052:
      return AREA_CHINESE;
    case 1066:
      return AREA_VIETNAMESE;
    default:
      return AREA_ENGLISH;
  }
}

/// The locale of a parameter, which may be null.
constexpr AREA_CODE_INDEX areaOf(const NF_FORMAT_PARAM* param) {
  return param && (param->flags & NF_HAS_LANGUAGE) ? areaOfLanguage(param->language) : AREA_ENGLISH;
}
