#include "picture.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "files.h"
#include "help.h"
#include "messages.h"
#include "single_call.h"
#include "sized.h"

namespace cli {

namespace {

struct Ending {
  const char* ending;
  const char* extension;  ///< that the library has for it
};
constexpr Ending kEndings[] = {
    {".svg", ".svg"}, {".png", ".png"}, {".jpg", ".jpg"}, {".jpeg", ".jpg"}, {".gif", ".gif"},
};

/// What is wrong with a name for a picture that comes out as `format`; nothing where it tells another kind of
/// file, or none.
std::string whyNotCalled(const std::string& path, const pagerex_picture_format& format) {
  for (const Ending& row : kEndings) {
    if (isSameWord(endingOf(path), row.ending) && std::string_view(row.extension) != format.extension)
      return shown(path) + ": what comes of this picture ends in " + format.extension;
  }
  return "";
}

/// Null for what is no picture, and what cannot be read: the library tells why.
const pagerex_picture_format* formatOf(const pagerex_input& input) {
  struct stat info;
  int kind = PAGEREX_KIND_UNKNOWN;
  if (!input.path) kind = pagerex_detect(input.data, input.length);
  if (input.path && stat(input.path, &info) == 0 && S_ISREG(info.st_mode))
    kind = detectFile(input.path, info);
  return pagerex_picture_format_of(kind);
}

/// "folder/chart.svg" of "x/chart.emf".
std::string pathInFolder(const std::string& folder, const std::string& file,
                         const pagerex_picture_format& format) {
  const std::string name = file == kStandardStream ? "picture" : file.substr(file.rfind('/') + 1);
  return folder + (folder.back() == '/' ? "" : "/") + name.substr(0, name.size() - endingOf(name).size()) +
         format.extension;
}

int convert(const Request& request, const pagerex_input& input) {
  StandardOutput standardOutput;
  const bool isStandard = request.output.empty();
  pagerex_output output = isStandard ? standardOutput.output() : sized<pagerex_output>();
  if (!isStandard) output.path = request.output.c_str();
  auto limits = sized<pagerex_limits>();
  limits.memory = request.memory;
  limits.deadline_ms = request.timeoutMs;
  limits.cancel = cancelFlag();
  auto result = sized<pagerex_result>();
  const int code = pagerex_convert_picture(&input, &limits, nullptr, &output, &result);
  return code == PAGEREX_RESULT_OK ? kSuccess : explain(request, result, standardOutput.error());
}

}  // namespace

int convertPicture(const Request& request) {
  Request cleared = request;
  if (cleared.output == kStandardStream) cleared.output.clear();
  std::string content;
  auto input = sized<pagerex_input>();
  if (!prepareInput(cleared.files[0], content, input))
    return fail(kSomeFailed, std::string("standard input: ") + std::strerror(errno));
  const pagerex_picture_format* const format = formatOf(input);
  if (format && !cleared.output.empty()) {
    if (cleared.output.back() == '/' || isFolder(cleared.output))
      cleared.output = pathInFolder(cleared.output, cleared.files[0], *format);
    if (const std::string wrong = whyNotCalled(cleared.output, *format); !wrong.empty())
      return fail(kUsageError, wrong);
  }
  stopOnSignals();
  return endedBySignals(convert(cleared, input));
}

}  // namespace cli
