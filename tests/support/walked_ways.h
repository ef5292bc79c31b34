#pragma once

#include <ostream>
#include <string>

#include "pagerex/convert.h"
#include "support/bytes.h"

namespace support {

/// A way in which a format of the walk is asked for.
struct WalkedWay {
  const char* name;
  const char* format;
  int32_t revisions;
  int32_t more;  ///< hidden text, headers, front matter, page breaks, CommonMark, a dark scheme
  int32_t width;
  int32_t pictures;
  int64_t pageSize = 0;
};
/// Those that lead through code of their own.
constexpr WalkedWay kWalkedWays[] = {
    {"Text", "text", PAGEREX_REVISIONS_FINAL, 0, 0, PAGEREX_PICTURES_USUAL},
    {"WrappedText", "text", PAGEREX_REVISIONS_ALL, 1, 30, PAGEREX_PICTURES_USUAL},
    {"OriginalText", "text", PAGEREX_REVISIONS_ORIGINAL, 1, 0, PAGEREX_PICTURES_USUAL},
    {"Markdown", "markdown", PAGEREX_REVISIONS_FINAL, 0, 0, PAGEREX_PICTURES_FILES},
    {"CommonMark", "markdown", PAGEREX_REVISIONS_ALL, 1, 0, PAGEREX_PICTURES_EMBEDDED},
    {"OriginalMarkdown", "markdown", PAGEREX_REVISIONS_ORIGINAL, 0, 0, PAGEREX_PICTURES_NONE},
    {"Html", "html", PAGEREX_REVISIONS_FINAL, 0, 0, PAGEREX_PICTURES_USUAL},
    {"ChangedHtml", "html", PAGEREX_REVISIONS_ALL, 1, 0, PAGEREX_PICTURES_FILES},
    {"HtmlInPieces", "html", PAGEREX_REVISIONS_ORIGINAL, 1, 0, PAGEREX_PICTURES_NONE, 500},
};
inline void PrintTo(const WalkedWay& way, std::ostream* out) {
  *out << way.name;
}

/// What came of a conversion in memory, which keeps nothing of it.
struct WalkedResult {
  pagerex_result told = {};
  uint64_t mainBytes = 0;
  bool hasWanted = false;  ///< the main file has the text that is looked for
};
WalkedResult writeWalked(const Bytes& document, const WalkedWay& way, const std::string& wanted = {});

}  // namespace support
