// Converts a whole document to safe pages, in a view and with links that its last byte chooses, and reads
// them as a browser does: nothing in them may run that does not run in harmless pages too.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "document_input.h"
#include "pagerex/pagerex.h"
#include "safety/page_rules.h"
#include "safety/script_documents.h"
#include "scratch_folder.h"

namespace {

using safety::PageRules;

constexpr std::array kViews = {"normal", "phone", "preview", "mulpages"};
constexpr std::array kLinks = {"safe", "safe", "none", "all"};

std::string textOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool isPage(const std::filesystem::path& path) {
  return path.extension() == ".htm" || path.extension() == ".html";
}

/// Calls `visit(path, text)` for each file of the last conversion in a view.
template <class Visit>
void forEachFile(std::string_view view, Visit visit) {
  const std::filesystem::path folder = fuzz::scratchFolder();
  visit(folder / "document.html", textOf(folder / "document.html"));
  std::error_code none;
  if (view == "preview") return;
  for (const auto& entry : std::filesystem::directory_iterator(folder / "document.files", none)) {
    visit(entry.path(), textOf(entry.path()));
  }
}

const PageRules& rules() {
  static const PageRules learnt = [] {
    PageRules made;
    for (const char* view : kViews) {
      fuzz::convert(safety::harmlessDocument().build(), view);
      forEachFile(view, [&made](const std::filesystem::path& path, const std::string& text) {
        if (isPage(path)) made.learn(text);
      });
    }
    return made;
  }();
  return learnt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  if (size == 0) return 0;
  const uint8_t choice = input[size - 1];
  const std::string view = kViews[choice % kViews.size()];
  const std::string links = kLinks[choice / kViews.size() % kLinks.size()];
  const PageRules& known = rules();
  const int result =
      fuzz::convert(fuzz::documentOf(input, size), view.c_str(), {"safe=on", "links=" + links});
  if (result == PAGEREX_CANNOT_OPEN) return 0;  // the pages of the document before are still there
  forEachFile(view, [&](const std::filesystem::path& path, const std::string& text) {
    const std::string found =
        isPage(path) ? known.violation(text, links == "all") : PageRules::fileViolation(path.string(), text);
    if (found.empty()) return;
    std::fprintf(stderr, "ERROR: not safe in view %s: %s: %s\n", view.c_str(), path.c_str(), found.c_str());
    std::abort();
  });
  return 0;
}
