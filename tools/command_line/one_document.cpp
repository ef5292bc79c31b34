#include "one_document.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

#include "files.h"
#include "formats.h"
#include "help.h"
#include "json.h"
#include "messages.h"
#include "single_call.h"
#include "sized.h"

namespace cli {

namespace {

const pagerex_format* formatOf(const Request& request) {
  if (!request.format.empty()) return formatNamed(request.format);
  return request.output.empty() ? formatByDefault() : formatOfEnding(request.output);
}

/// Whether the format becomes a single file by what is asked of pages, and of pictures, which have no place
/// of their own on standard output.
bool isSingleWith(const Request& request, const pagerex_format& format) {
  if (format.is_single_file) return true;
  return format.is_single_without_pictures && request.pictures != PAGEREX_PICTURES_FILES &&
         !comesInPieces(request, format);
}

/// Why the format and the place of the output do not go together.
std::string whyNotThere(const Request& request, const pagerex_format* format) {
  if (!format && request.output.empty()) return "name a file to write: -o FILE";
  if (!format)
    return shown(request.output) +
           ": no format has this ending; choose one with -t, or a folder with a / at its end";
  if (request.output.empty() && !isSingleWith(request, *format))
    return std::string("the format ") + format->name + " is several files: name the main one with -o FILE";
  return "";
}

/// A document without a title goes by the name of its file, which standard output does not tell.
std::string nameOnStandardOutput(const Request& request, const pagerex_format& format) {
  constexpr size_t kLongest = 200;
  const std::string& path = request.files[0];
  const std::string name = path.substr(path.rfind('/') + 1);
  const bool hasControls =
      std::any_of(name.begin(), name.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; });
  if (path == kStandardStream || name.size() > kLongest || hasControls || !isUtf8(name)) return "";
  return name.substr(0, name.size() - endingOf(name).size()) + format.extension;
}

/// What the library is to be asked for where the result goes to standard output.
void fitToStandardOutput(const Request& request, const pagerex_format& format, pagerex_options& options) {
  // A preview that is shown at once is of the whole document.
  if (request.pageSize == 0 && format.has_page_size == 1) options.page_size = INT_MAX;
  const bool isAsUsual = request.pictures == PAGEREX_PICTURES_USUAL;
  if (isAsUsual && !format.is_single_file && !hasItsPictures(format))
    options.pictures = PAGEREX_PICTURES_NONE;
}

int convert(const Request& request, const pagerex_format& format) {
  std::string content;
  auto input = sized<pagerex_input>();
  if (!prepareInput(request.files[0], content, input))
    return fail(kSomeFailed, std::string("standard input: ") + std::strerror(errno));
  StandardOutput standardOutput;
  const bool isStandard = request.output.empty();
  pagerex_output output = isStandard ? standardOutput.output() : sized<pagerex_output>();
  const std::string name = isStandard ? nameOnStandardOutput(request, format) : "";
  if (!isStandard) output.path = request.output.c_str();
  if (!name.empty()) output.main_name = name.c_str();
  auto limits = sized<pagerex_limits>();
  limits.memory = request.memory;
  limits.deadline_ms = request.timeoutMs;
  limits.cancel = cancelFlag();
  pagerex_options options = optionsOf(request, format);
  if (isStandard) fitToStandardOutput(request, format, options);
  auto result = sized<pagerex_result>();
  const int code = pagerex_convert(&input, &limits, &options, &output, &result);
  return code == PAGEREX_RESULT_OK ? kSuccess : explain(request, result, standardOutput.error());
}

}  // namespace

int convertOneDocument(const Request& request) {
  Request cleared = request;
  if (cleared.output == kStandardStream) cleared.output.clear();
  const pagerex_format* const format = formatOf(cleared);
  const std::string wrong = whyNotThere(cleared, format);
  if (!format || !wrong.empty()) return usageError(wrong);
  stopOnSignals();
  return endedBySignals(convert(cleared, *format));
}

}  // namespace cli
