// Converts a whole document to one page, in ways that its last two bytes choose, and reads it as a browser
// does: nothing in it may run, load or have to be mended.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "document_input.h"
#include "safety/one_page.h"
#include "safety/one_page_rules.h"

namespace {

constexpr uint64_t kMostOutput = 64 << 20;

/// What two bytes choose.
pagerex_options optionsOf(uint8_t choice, uint8_t more) {
  pagerex_options options = {};
  options.links = (choice & 3) % 3;
  options.pictures = choice >> 2 & 3;
  options.revisions = (choice >> 4 & 3) % 3;
  options.no_comments = choice & 64;
  options.headers = choice & 128;
  options.hidden_text = more & 1;
  options.page_breaks = more & 2;
  options.front_matter = more & 4;
  options.page_size = more & 8 ? 50 : 0;
  return options;
}

[[noreturn]] void stop(const std::string& why) {
  std::fprintf(stderr, "ERROR: %s\n", why.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  if (size < 2) return 0;
  pagerex_options options = optionsOf(input[size - 1], input[size - 2]);
  pagerex_limits limits = {};
  limits.size = sizeof(limits);
  limits.output_bytes = kMostOutput;
  options.limits = &limits;
  const safety::OnePage page = safety::onePageOf(fuzz::documentOf(input, size), options);
  if (page.result == PAGEREX_RESULT_OUTPUT_LIMIT) stop("far more markup than a document has");
  if (page.result == PAGEREX_RESULT_INVALID_ARGUMENT) stop("the format refuses what was asked of it");
  if (page.result != PAGEREX_RESULT_OK) return 0;
  const std::string fault = safety::faultOfOnePage(page.text, options.links == PAGEREX_LINKS_ALL);
  if (!fault.empty()) stop(fault);
  return 0;
}
