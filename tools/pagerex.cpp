/// The command line of the library: one document to one HTML file and its folder.

#include <fcntl.h>
#include <getopt.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

#include "pagerex/convert.h"
#include "pagerex/pagerex.h"

namespace {

/// Exit codes beside the results of PageRex, which stand for themselves.
constexpr int kUsageError = 1;

struct Request {
  std::string view = "normal";
  int pageSize = 2000;
  bool progress = false;
  bool safe = false;
  std::string links = "safe";
  std::string source;
  std::string target;
};

int fail(int exitCode, const std::string& message) {
  std::fprintf(stderr, "pagerex: %s\n", message.c_str());
  return exitCode;
}

// The library's functions.

/// The callbacks take no context: the pages that pageRex has finished so far.
int finishedPages = 0;

void printPage(int page, const char* path) {
  finishedPages = page;
  std::printf("page %d: %s\n", page, path);
  std::fflush(stdout);
}

int goOn() {
  return PAGEREX_GO_ON;
}

int convert(const Request& request) {
  std::string view = "view=" + request.view;
  std::string pageSize = "pagesize=" + std::to_string(request.pageSize);
  std::string safe = request.safe ? "safe=on" : "safe=off";
  std::string links = "links=" + request.links;
  char* argv[] = {view.data(), pageSize.data(), safe.data(), links.data()};
  return PageRex(request.source.c_str(), request.target.c_str(), static_cast<int>(std::size(argv)), argv);
}

int convertWithProgress(const Request& request) {
  IPageRexCallBack callbacks = {printPage, nullptr, goOn};
  if (pageRex(request.source.c_str(), request.target.c_str(), request.pageSize, &callbacks) == PAGEREX_OK)
    return PAGEREX_OK;
  // pageRex does not tell its failures apart. One before the first page comes again at once with PageRex.
  return finishedPages > 0 ? PAGEREX_FAILED : convert(request);
}

// What is told of a failure.

bool isFolder(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

/// What a regular file is. Mapped, since few of its bytes are looked at; of a huge one the beginning.
int detectFile(const std::string& path, const struct stat& info) {
  constexpr off_t kLargestMap = off_t{1} << 30;
  if (info.st_size == 0) return PAGEREX_KIND_EMPTY;
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return PAGEREX_KIND_UNKNOWN;
  const auto size = static_cast<size_t>(std::min<off_t>(info.st_size, kLargestMap));
  void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  close(file);
  if (bytes == MAP_FAILED) return PAGEREX_KIND_UNKNOWN;
  const int kind = pagerex_detect(bytes, size);
  munmap(bytes, size);
  return kind;
}

/// For what is a Word 97-2003 document and yet was not opened.
std::string whyNotOpened(const std::string& source) {
  if (access(source.c_str(), W_OK) == 0) return "It could not be opened, and is probably damaged.";
  return "It is not writable; a document is opened only with write permission, though nothing is written to "
         "it.";
}

int explainSource(const std::string& source) {
  struct stat info;
  if (stat(source.c_str(), &info) != 0)
    return fail(PAGEREX_CANNOT_OPEN, source + ": " + std::strerror(errno));
  if (isFolder(source)) return fail(PAGEREX_CANNOT_OPEN, source + ": is a folder");
  if (!S_ISREG(info.st_mode)) return fail(PAGEREX_CANNOT_OPEN, source + ": is not a regular file");
  if (access(source.c_str(), R_OK) != 0) return fail(PAGEREX_CANNOT_OPEN, source + ": cannot be read");
  const int kind = detectFile(source, info);
  return fail(PAGEREX_CANNOT_OPEN,
              source + ": " + pagerex_kind_sentence(kind) + " " +
                  (kind == PAGEREX_KIND_WORD97 ? whyNotOpened(source)
                                               : "Only Word 97-2003 documents are converted, unencrypted."));
}

/// What the library met while writing: ": No space left on device"; empty for nothing.
std::string outputError() {
  const int error = PageRexOutputError();
  return error ? std::string(": ") + std::strerror(error) : "";
}

int explainTarget(const std::string& target) {
  if (PageRexOutputError() == EEXIST)
    return fail(PAGEREX_CANNOT_WRITE,
                "SOURCE lies in the folder for the files of " + target + ", which is emptied");
  const bool made = access(target.c_str(), W_OK) == 0 && !isFolder(target);
  return fail(PAGEREX_CANNOT_WRITE, (made ? "cannot create the folder for the files of " : "cannot create ") +
                                        target + outputError());
}

/// Files that are shortened are no failure to the library.
int explainOutput(const std::string& target) {
  if (PageRexOutputError() == 0) return PAGEREX_OK;
  return fail(PAGEREX_FAILED, target + ": the output is incomplete" + outputError());
}

int explain(int result, const Request& request) {
  std::setlocale(LC_ALL, "C");  // the library has left its own behind, which would speak Chinese
  switch (result) {
    case PAGEREX_OK:
      return explainOutput(request.target);
    case PAGEREX_CANNOT_OPEN:
      return explainSource(request.source);
    case PAGEREX_CANNOT_WRITE:
      return explainTarget(request.target);
    default:
      return fail(PAGEREX_FAILED, request.source + ": could not be converted to its end" + outputError());
  }
}

// What the library would take, though hardly anyone means it.

bool isSameFile(const std::string& a, const std::string& b) {
  struct stat first, second;
  return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

/// The files folder is named by what stands before the last "." of the whole path.
bool hasDotOnlyInFolder(const std::string& target) {
  const size_t name = target.rfind('/') + 1;
  return target.find('.', name) == std::string::npos && target.find('.') < name;
}

int check(const Request& request) {
  constexpr size_t kLongestTarget = 235;  // paths in the files folder have room for 259 bytes
  if (isSameFile(request.source, request.target))
    return fail(kUsageError, "SOURCE and TARGET are the same file");
  if (request.view == "preview") return 0;
  if (hasDotOnlyInFolder(request.target))
    return fail(kUsageError, request.target + ": TARGET needs an extension, such as .html");
  if (request.target.size() > kLongestTarget)
    return fail(PAGEREX_CANNOT_WRITE, "cannot create the pages: the path of TARGET is longer than " +
                                          std::to_string(kLongestTarget) + " bytes");
  return 0;
}

// The command line. getopt reads it: a library for it would take more memory than the conversion of a small
// document.

constexpr char kUsage[] =
    "Usage: pagerex [--view normal|phone|preview|mulpages] [--pagesize N] [--progress]\n"
    "               [--safe [--links safe|all|none]] SOURCE TARGET\n";

constexpr char kHelp[] =
    "Converts Word 97-2003 documents to HTML.\n"
    "\n"
    "  SOURCE          Word 97-2003 document (.doc); must be writable\n"
    "  TARGET          HTML file to write; the folder of its files, out.files for out.html, stands beside "
    "it\n"
    "  --view VIEW     normal (the default): one page with a navigation frame; phone: many small pages;\n"
    "                  preview: the first characters as a bare fragment; mulpages: numbered pages and a "
    "list\n"
    "                  of them\n"
    "  --pagesize N    characters per page, 2000 by default; in view preview, in all\n"
    "  --progress      print each finished page; only with --view mulpages\n"
    "  --safe          nothing of the document runs in the pages; without it, show them in a sandboxed "
    "frame\n"
    "  --links WHICH   addresses that safe pages keep: safe (the default), all or none; only with --safe\n"
    "  --help          show this and exit\n"
    "  --version       show the version and exit\n"
    "\n"
    "Exit codes: 0 converted, 1 usage, 2 not converted or not written to its end, 3 SOURCE cannot be "
    "opened,\n"
    "4 TARGET cannot be created.\n";

int usageError(const std::string& message) {
  std::fprintf(stderr, "pagerex: %s\n%sRun pagerex --help for more.\n", message.c_str(), kUsage);
  return kUsageError;
}

bool isView(const std::string& word) {
  constexpr const char* kViews[] = {"normal", "phone", "preview", "mulpages"};
  return std::find(std::begin(kViews), std::end(kViews), word) != std::end(kViews);
}

bool isLinks(const std::string& word) {
  return word == "safe" || word == "all" || word == "none";
}

bool readPageSize(const char* text, int& pageSize) {
  const char* const end = text + std::strlen(text);
  const auto result = std::from_chars(text, end, pageSize);
  return result.ec == std::errc() && result.ptr == end && pageSize > 0;
}

/// Reads the arguments into `request`. True if there is something to convert; else `exitCode` is that of the
/// program.
bool readArguments(int argc, char** argv, Request& request, int& exitCode) {
  enum Option { kView = 1, kPageSize, kProgress, kSafe, kLinks, kShowHelp, kShowVersion };
  constexpr option kOptions[] = {
      {"view", required_argument, nullptr, kView},     {"pagesize", required_argument, nullptr, kPageSize},
      {"progress", no_argument, nullptr, kProgress},   {"safe", no_argument, nullptr, kSafe},
      {"links", required_argument, nullptr, kLinks},   {"help", no_argument, nullptr, kShowHelp},
      {"version", no_argument, nullptr, kShowVersion}, {nullptr, 0, nullptr, 0},
  };
  bool hasPageSize = false;
  bool hasLinks = false;
  exitCode = kUsageError;
  for (int option; (option = getopt_long(argc, argv, "h", kOptions, nullptr)) != -1;) {
    switch (option) {
      case kView:
        request.view = optarg;
        if (!isView(request.view)) return usageError("--view: no view " + request.view), false;
        break;
      case kPageSize:
        hasPageSize = true;
        if (!readPageSize(optarg, request.pageSize)) {
          return usageError(std::string("--pagesize: ") + optarg + " is no number of characters"), false;
        }
        break;
      case kProgress:
        request.progress = true;
        break;
      case kSafe:
        request.safe = true;
        break;
      case kLinks:
        hasLinks = true;
        request.links = optarg;
        if (!isLinks(request.links)) return usageError("--links: no such choice as " + request.links), false;
        break;
      case kShowVersion:
        std::puts("pagerex " PAGEREX_VERSION);
        exitCode = 0;
        return false;
      case 'h':
      case kShowHelp:
        std::printf("%s%s", kUsage, kHelp);
        exitCode = 0;
        return false;
      default:  // getopt has said why
        std::fputs(kUsage, stderr);
        return false;
    }
  }
  if (request.progress && request.view != "mulpages")
    return usageError("--progress goes with --view mulpages only"), false;
  if (request.progress && request.safe) return usageError("--progress has no safe pages"), false;
  if (hasLinks && !request.safe) return usageError("--links goes with --safe only"), false;
  if (hasPageSize && request.view == "normal") {
    return usageError("--pagesize has no meaning in view normal, which is one page"), false;
  }
  if (argc - optind != 2) return usageError("SOURCE and TARGET are needed, and nothing else"), false;
  request.source = argv[optind];
  request.target = argv[optind + 1];
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  Request request;
  int exitCode = 0;
  if (!readArguments(argc, argv, request, exitCode)) return exitCode;
  if (const int refused = check(request)) return refused;
  std::signal(SIGXFSZ, SIG_IGN);  // a file that reaches the limit of sizes is told of, as a full disk is
  return explain(request.progress ? convertWithProgress(request) : convert(request), request);
}
