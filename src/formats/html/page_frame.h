#pragma once

#include <string>
#include <string_view>

#include "flow/handler.h"
#include "formats/html/look_book.h"

namespace pagerex {

/// What stands around the blocks of a page.
struct PageFrame {
  std::string title;     ///< as markup
  std::string metadata;  ///< elements that tell of the document: its author and such
  std::string language;  ///< BCP 47; empty for none
  bool isRightToLeft = false;
  bool followsDarkScheme = false;
  bool showsOwnStyleOnly = true;  ///< the policy allows no other rules than those that were there
};

/// Rules of every page: what all else is built on, for the paper of the first section.
std::string baseRules(LookBook& looks, const DocumentFacts& facts, const SectionProperties& paper,
                      bool followsDarkScheme);

/// From the document type to the begin of `main`, with the rules of the style sheet.
std::string pageHead(const PageFrame& frame, std::string_view rules);
constexpr std::string_view kPageEnd = "</main></body></html>\n";

}  // namespace pagerex
