// Opens a document from memory with small limits, asks what it holds, and writes it in a format and with
// pictures and links that its last byte chooses, into a sink that holds each call against what is promised.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <string_view>

#include "document_input.h"
#include "pagerex/convert.h"

namespace {

constexpr char kMainName[] = "document.html";
constexpr uint64_t kMemory = 64 << 20;
constexpr uint64_t kOutput = 64 << 20;

void stopUnless(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "ERROR: %s\n", promise);
  std::abort();
}

bool isNameOfFile(std::string_view name) {
  constexpr std::string_view kFolder = "document.files/";
  if (name == kMainName) return true;
  if (!name.starts_with(kFolder)) return false;
  name.remove_prefix(kFolder.size());
  return !name.empty() && name != ".." && name.find('/') == std::string_view::npos;
}

struct Sink {
  std::set<std::string> names;
  std::set<void*> open;
  uint64_t bytes = 0;
  bool allComplete = true;

  static void* begin(void* user, const char* name, const char* mediaType) {
    auto& sink = *static_cast<Sink*>(user);
    stopUnless(isNameOfFile(name), "a file begins outside the output");
    stopUnless(sink.names.insert(name).second, "a name comes twice");
    stopUnless(mediaType && std::strchr(mediaType, '/'), "a file has no media type");
    void* const file = const_cast<std::string*>(&*sink.names.find(name));
    sink.open.insert(file);
    return file;
  }
  static int write(void* user, void* file, const void* data, size_t length) {
    auto& sink = *static_cast<Sink*>(user);
    stopUnless(sink.open.count(file) == 1, "bytes for a file that is not open");
    stopUnless(data && length > 0, "nothing is written");
    sink.bytes += length;
    return 0;
  }
  static int end(void* user, void* file, int complete) {
    auto& sink = *static_cast<Sink*>(user);
    stopUnless(sink.open.erase(file) == 1, "a file ends that is not open");
    sink.allComplete = sink.allComplete && complete == 1;
    return 0;
  }
};

bool isTold(const pagerex_result& result, int code) {
  bool lost = false;
  for (uint32_t i = 0; i < result.warning_count; ++i) lost = lost || result.warnings[i].lost != 0;
  return result.code == code && result.sentence[0] != '\0' &&
         result.complete == (code == PAGEREX_RESULT_OK && !lost);
}

int formatCount() {
  int count = 0;
  while (pagerex_format_at(count)) ++count;
  return count;
}

void write(pagerex_document* document, uint8_t choice) {
  Sink sink;
  pagerex_limits limits = {};
  limits.size = sizeof(limits);
  limits.output_bytes = kOutput;
  pagerex_options options = {};
  options.size = sizeof(options);
  options.format = pagerex_format_at(choice % formatCount())->name;
  options.links = (choice >> 2 & 3) % 3;
  options.pictures = choice & 16 ? PAGEREX_PICTURES_NONE : PAGEREX_PICTURES_USUAL;
  options.page_size = choice & 32 ? 50 : 0;
  options.revisions = (choice >> 4 & 3) % 3;
  options.hidden_text = options.headers = options.front_matter = options.common_mark = choice & 64;
  options.width = choice & 128 ? 30 : 0;
  options.limits = &limits;
  pagerex_output output = {};
  output.size = sizeof(output);
  output.begin = Sink::begin;
  output.write = Sink::write;
  output.end = Sink::end;
  output.user = &sink;
  output.main_name = kMainName;
  pagerex_result result = {};
  result.size = sizeof(result);
  const int code = pagerex_write(document, &options, &output, &result);
  stopUnless(isTold(result, code), "the result does not tell what came of it");
  stopUnless(sink.open.empty(), "a file has not ended");
  stopUnless(result.output_bytes == sink.bytes && result.output_files == sink.names.size(),
             "the counts differ");
  stopUnless(code != PAGEREX_RESULT_OK || sink.allComplete, "a file of a whole result is not complete");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  if (size == 0) return 0;
  const auto bytes = fuzz::documentOf(input, size);
  pagerex_input source = {};
  source.size = sizeof(source);
  source.data = bytes.data();
  source.length = bytes.size();
  pagerex_limits limits = {};
  limits.size = sizeof(limits);
  limits.memory = kMemory;
  pagerex_document* document = nullptr;
  pagerex_result result = {};
  result.size = sizeof(result);
  const int code = pagerex_open(&source, &limits, &document, &result);
  stopUnless(isTold(result, code) && (code == PAGEREX_RESULT_OK) == (document != nullptr),
             "the result of opening does not tell what came of it");
  if (!document) return 0;
  pagerex_document_info info = {};
  info.size = sizeof(info);
  pagerex_info(document, &info);
  write(document, input[size - 1]);
  write(document, static_cast<uint8_t>(input[size - 1] + 1));
  pagerex_close(document);
  return 0;
}
