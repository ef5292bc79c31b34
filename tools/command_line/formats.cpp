#include "formats.h"

#include "files.h"

namespace cli {

namespace {

template <typename Fits>
const pagerex_format* firstThat(Fits fits) {
  int index = 0;
  const pagerex_format* format;
  while ((format = pagerex_format_at(index)) && !fits(*format)) ++index;
  return format;
}

}  // namespace

const pagerex_format* formatNamed(const std::string& name) {
  return firstThat([&](const pagerex_format& format) { return format.name == name; });
}

const pagerex_format* formatOfEnding(const std::string& path) {
  return firstThat(
      [&](const pagerex_format& format) { return isSameWord(format.extension, endingOf(path)); });
}

const pagerex_format* firstSingleFile() {
  return firstThat([](const pagerex_format& format) { return format.is_single_file != 0; });
}

}  // namespace cli
