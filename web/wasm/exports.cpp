// What JavaScript calls, and what it is called for. An instance of the module holds one document at a time;
// what the last call told stands at report(), as JSON. web/package/lib/module.js is the other side.

#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>

#include "json.h"
#include "pagerex/convert.h"

#define EXPORT(name) extern "C" __attribute__((export_name(#name), used))
#define IMPORT(name) extern "C" __attribute__((import_module("host"), import_name(#name)))

IMPORT(begin) void* hostBegin(void* user, const char* name, const char* mediaType);
IMPORT(write) int hostWrite(void* user, void* file, const void* data, size_t length);
IMPORT(end) int hostEnd(void* user, void* file, int complete);
IMPORT(page) void hostPage(void* user, int page, const char* name);
IMPORT(goOn) int hostGoOn(void* user);
IMPORT(progress) void hostProgress(void* user, double done);

namespace {

/// Of options: numbers as JavaScript lays them down.
struct Choices {
  int32_t pageSize, links, pictures, revisions, noComments, hiddenText, headers, frontMatter, pageBreaks,
      commonMark, width, darkScheme;
};

pagerex_document* openDocument = nullptr;
pagerex_result result;
std::string report;

pagerex_limits limitsOf(double memory, double inputBytes, double outputBytes, double milliseconds) {
  pagerex_limits limits = {};
  limits.size = sizeof limits;
  limits.memory = static_cast<uint64_t>(memory);
  limits.input_bytes = static_cast<uint64_t>(inputBytes);
  limits.output_bytes = static_cast<uint64_t>(outputBytes);
  limits.deadline_ms = static_cast<uint64_t>(milliseconds);
  return limits;
}

/// Texts of a few kilobytes; without memory for them there is none.
template <class Make>
void setReport(const Make& make) {
  try {
    report = make();
  } catch (const std::bad_alloc&) {
    report.clear();
  }
}

}  // namespace

/// As realloc, but that what has no bytes goes.
EXPORT(resize) void* resize(void* block, size_t size) {
  if (size > 0) return std::realloc(block, size);
  std::free(block);
  return nullptr;
}

EXPORT(report) const char* lastReport() {
  return report.c_str();
}

EXPORT(detect) int detectKind(const void* data, size_t size) {
  return pagerex_detect(data, size);
}

EXPORT(kindName) const char* kindName(int kind) {
  return pagerex_kind_name(kind);
}

EXPORT(kindSentence) const char* kindSentence(int kind) {
  return pagerex_kind_sentence(kind);
}

EXPORT(version) const char* version() {
  return pagerex_version();
}

EXPORT(close) void closeDocument() {
  pagerex_close(openDocument);
  openDocument = nullptr;
}

EXPORT(open)
int openBytes(const void* data, size_t length, double memory, double inputBytes, double milliseconds) {
  closeDocument();
  pagerex_input input = {};
  input.size = sizeof input;
  input.data = data;
  input.length = length;
  const pagerex_limits limits = limitsOf(memory, inputBytes, 0, milliseconds);
  result = {};
  result.size = sizeof result;
  const int code = pagerex_open(&input, &limits, &openDocument, &result);
  setReport([] { return pagerex::web::resultText(result); });
  return code;
}

EXPORT(write)
int writeDocument(const char* format, const char* name, const Choices* choices, double outputBytes,
                  double milliseconds) {
  const pagerex_limits limits = limitsOf(0, 0, outputBytes, milliseconds);
  pagerex_options options = {};
  options.size = sizeof options;
  options.format = format;
  options.page_size = choices->pageSize;
  options.links = choices->links;
  options.pictures = choices->pictures;
  options.limits = &limits;
  options.page_finished = hostPage;
  options.may_go_on = hostGoOn;
  options.progress = hostProgress;
  options.revisions = choices->revisions;
  options.no_comments = choices->noComments;
  options.hidden_text = choices->hiddenText;
  options.headers = choices->headers;
  options.front_matter = choices->frontMatter;
  options.page_breaks = choices->pageBreaks;
  options.common_mark = choices->commonMark;
  options.width = choices->width;
  options.dark_scheme = choices->darkScheme;
  pagerex_output output = {};
  output.size = sizeof output;
  output.begin = hostBegin;
  output.write = hostWrite;
  output.end = hostEnd;
  output.main_name = name;
  result = {};
  result.size = sizeof result;
  const int code = pagerex_write(openDocument, &options, &output, &result);
  setReport([] { return pagerex::web::resultText(result); });
  return code;
}

EXPORT(info) int tellInfo() {
  static pagerex_document_info told;
  told = {};
  told.size = sizeof told;
  const int code = pagerex_info(openDocument, &told);
  setReport([code] {
    if (code == PAGEREX_RESULT_OK) return pagerex::web::infoText(told);
    result.code = code;
    result.complete = 0;
    return pagerex::web::resultText(result);
  });
  return code;
}
