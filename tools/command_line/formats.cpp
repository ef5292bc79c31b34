#include "formats.h"

#include "files.h"
#include "sized.h"

namespace cli {

const pagerex_format* formatNamed(const std::string& name) {
  int index = 0;
  const pagerex_format* format;
  while ((format = pagerex_format_at(index)) && format->name != name) ++index;
  return format;
}

const pagerex_format* formatOfEnding(const std::string& path) {
  const pagerex_format* last = nullptr;
  for (int i = 0; const pagerex_format* format = pagerex_format_at(i); ++i) {
    if (isSameWord(format->extension, endingOf(path))) last = format;
  }
  return last;
}

const pagerex_format* formatByDefault() {
  return formatNamed("html");
}

bool comesInPieces(const Request& request, const pagerex_format& format) {
  return format.has_page_size == 2 && request.pageSize > 0;
}

bool hasItsPictures(const pagerex_format& format) {
  return &format == formatByDefault();
}

pagerex_options optionsOf(const Request& request, const pagerex_format& format) {
  auto options = sized<pagerex_options>();
  options.format = format.name;
  options.page_size = request.pageSize;
  options.links = request.links;
  options.pictures = request.pictures;
  options.revisions = request.revisions;
  options.hidden_text = request.hiddenText;
  options.no_comments = request.noComments;
  options.headers = request.headers;
  options.front_matter = request.frontMatter;
  options.page_breaks = request.pageBreaks;
  options.common_mark = request.commonMark;
  options.width = request.width;
  options.dark_scheme = request.dark;
  return options;
}

std::string wordsFor(const Request& request, const pagerex_format& format) {
  constexpr const char* kPictureWords[] = {"usual", "files", "embedded", "none", "web"};
  constexpr struct {
    bool Request::*flag;
    const char* word;
  } kFlags[] = {
      {&Request::hiddenText, " hidden-text"},
      {&Request::noComments, " no-comments"},
      {&Request::headers, " headers"},
      {&Request::frontMatter, " front-matter"},
      {&Request::pageBreaks, " page-breaks"},
      {&Request::commonMark, " common-mark"},
      {&Request::dark, " dark"},
  };
  std::string words = std::string("format=") + format.name + " links=" + request.linksWord +
                      " pictures=" + kPictureWords[request.pictures] +
                      " pagesize=" + std::to_string(request.pageSize);
  if (request.revisions) words += " revisions=" + request.revisionsWord;
  for (const auto& row : kFlags) {
    if (request.*row.flag) words += row.word;
  }
  if (request.width) words += " width=" + std::to_string(request.width);
  return words;
}

}  // namespace cli
