#include "safety/one_page.h"

#include <string_view>

namespace safety {
namespace {

constexpr char kMainName[] = "page.html";

/// Keeps the page, which may come in pieces, one file each.
struct Sink {
  std::string page;
  std::string other;

  static void* begin(void* user, const char* name, const char*) {
    auto& sink = *static_cast<Sink*>(user);
    sink.other.clear();
    return std::string_view(name).ends_with(".html") ? &sink.page : &sink.other;
  }
  static int write(void*, void* file, const void* data, size_t length) {
    static_cast<std::string*>(file)->append(static_cast<const char*>(data), length);
    return 0;
  }
  static int end(void*, void*, int) { return 0; }
};

}  // namespace

OnePage onePageOf(const support::Bytes& document, pagerex_options options) {
  pagerex_input input = {};
  input.size = sizeof(input);
  input.data = document.data();
  input.length = document.size();
  options.size = sizeof(options);
  options.format = "html";
  Sink sink;
  pagerex_output output = {};
  output.size = sizeof(output);
  output.begin = Sink::begin;
  output.write = Sink::write;
  output.end = Sink::end;
  output.user = &sink;
  output.main_name = kMainName;
  OnePage made;
  made.result = pagerex_convert(&input, nullptr, &options, &output, nullptr);
  made.text = std::move(sink.page);
  return made;
}

}  // namespace safety
