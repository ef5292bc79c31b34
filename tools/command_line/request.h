#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pagerex/convert.h"

namespace cli {

/// Exit codes, beside the results of PageRex, which stand for themselves.
constexpr int kSuccess = 0;
constexpr int kUsageError = 1;
constexpr int kSomeFailed = 2;

enum class Form { kTwoPaths, kInfo, kOneDocument, kManyFiles, kPicture };

/// What the command line asks for.
struct Request {
  Form form = Form::kOneDocument;
  std::vector<std::string> files;  ///< arguments that are no options

  std::string output;
  std::string format;  ///< empty where not given
  int pageSize = 0;    ///< 0 where not given
  int links = PAGEREX_LINKS_SAFE;
  int pictures = PAGEREX_PICTURES_USUAL;
  int revisions = PAGEREX_REVISIONS_FINAL;
  std::string revisionsWord = "final";
  bool hiddenText = false;
  bool noComments = false;
  bool headers = false;
  bool frontMatter = false;
  bool pageBreaks = false;
  bool commonMark = false;
  int width = 0;  ///< 0 where not given
  bool dark = false;
  bool info = false;

  std::string filesFrom;
  bool endsWithNull = false;
  bool all = false;
  int jobs = 0;
  uint64_t timeoutMs = 0;
  uint64_t memory = 0;
  std::string report;
  bool resume = false;

  std::string view;  ///< empty where not given
  std::string linksWord = "safe";
  bool safe = false;
  bool progress = false;

  std::string help;  ///< "short" or "all"
  bool version = false;
};

}  // namespace cli
