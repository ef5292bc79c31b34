#include "convert/format_table.h"

#include <iterator>

#include "convert/view_formats.h"
#include "formats/html/html_format.h"
#include "formats/markdown/markdown_format.h"
#include "formats/text/text_format.h"

namespace pagerex {
namespace {

constexpr char kHtml[] = "text/html; charset=utf-8";
constexpr uint32_t kAsFiles = pictureChoice(PAGEREX_PICTURES_USUAL) | pictureChoice(PAGEREX_PICTURES_FILES) |
                              pictureChoice(PAGEREX_PICTURES_NONE);
constexpr uint32_t kAsViewFiles = kAsFiles | pictureChoice(PAGEREX_PICTURES_WEB);
constexpr uint32_t kWithout = pictureChoice(PAGEREX_PICTURES_USUAL) | pictureChoice(PAGEREX_PICTURES_NONE);

/// A new format gets a line here.
constexpr Format kFormats[] = {
    {{"normal", ".html", kHtml, "One page in a frame, beside a tree of its headings.", 0, 0, 0},
     Format::Reads::kModel,
     kAsViewFiles,
     writeView<VIEW_NORMAL>},
    {{"phone", ".html", kHtml, "Many small pages, and a list of links to them.", 0, 1, 0},
     Format::Reads::kModel,
     kAsViewFiles,
     writeView<VIEW_PHONE>},
    {{"preview", ".html", kHtml, "The first characters of the text as a bare fragment.", 1, 1, 1},
     Format::Reads::kModel,
     kWithout,
     writeView<VIEW_PREVIEW>},
    {{"mulpages", ".html", kHtml, "Numbered pages, and a list of them for a program to read.", 0, 1, 0},
     Format::Reads::kModel,
     kAsViewFiles,
     writeView<VIEW_MULPAGES>},
    {{"text", ".txt", "text/plain; charset=utf-8", "The text alone: a line for each paragraph and row.", 1, 0,
      1},
     Format::Reads::kFile,
     kWithout,
     writeText},
    {{"markdown", ".md", "text/markdown; charset=utf-8", "GitHub's Markdown, and its pictures as files.", 0,
      0, 1},
     Format::Reads::kFile,
     kAsFiles | pictureChoice(PAGEREX_PICTURES_EMBEDDED),
     writeMarkdown},
    {{"html", ".html", kHtml, "One page for any browser of today, as the document looks.", 0, 2, 1},
     Format::Reads::kFile,
     kAsFiles | pictureChoice(PAGEREX_PICTURES_EMBEDDED),
     writeHtml,
     true},
};

}  // namespace

const Format* formatAt(int index) {
  return index >= 0 && index < static_cast<int>(std::size(kFormats)) ? &kFormats[index] : nullptr;
}

const Format* formatNamed(std::string_view name) {
  for (const Format& row : kFormats) {
    if (name.empty() || name == row.told.name) return &row;
  }
  return nullptr;
}

}  // namespace pagerex
