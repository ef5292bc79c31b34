#include "support/walked_ways.h"

#include <cstring>
#include <string_view>

namespace support {

namespace {

struct Sink {
  WalkedResult& result;
  const std::string& wanted;
  std::string last = {};  ///< the end of what came before, and what comes

  void takeMain(const char* data, size_t length) {
    last.append(data, length);
    result.mainBytes += length;
    result.hasWanted = result.hasWanted || last.find(wanted) != std::string::npos;
    if (last.size() > wanted.size()) last.erase(0, last.size() - wanted.size());
  }
};

/// The main file and the pieces behind it are the sink itself, any other its result.
void* begin(void* user, const char* name, const char*) {
  auto& sink = *static_cast<Sink*>(user);
  const bool isOther = std::strchr(name, '/') && !std::string_view(name).ends_with(".html");
  return isOther ? static_cast<void*>(&sink.result) : user;
}

int write(void* user, void* file, const void* data, size_t length) {
  if (file == user) static_cast<Sink*>(user)->takeMain(static_cast<const char*>(data), length);
  return 0;
}

}  // namespace

WalkedResult writeWalked(const Bytes& document, const WalkedWay& way, const std::string& wanted) {
  WalkedResult result;
  Sink sink{result, wanted};
  pagerex_input input = {};
  input.size = sizeof(input);
  input.data = document.data();
  input.length = document.size();
  pagerex_options options = {};
  options.size = sizeof(options);
  options.format = way.format;
  options.revisions = way.revisions;
  options.hidden_text = options.headers = options.front_matter = way.more;
  options.page_breaks = options.common_mark = way.more;
  options.dark_scheme = way.more;
  options.page_size = way.pageSize;
  options.width = way.width;
  options.pictures = way.pictures;
  pagerex_output output = {};
  output.size = sizeof(output);
  output.user = &sink;
  output.begin = begin;
  output.write = write;
  result.told.size = sizeof(result.told);
  pagerex_convert(&input, nullptr, &options, &output, &result.told);
  return result;
}

}  // namespace support
