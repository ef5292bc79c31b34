#include "two_paths.h"

#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

#include "files.h"
#include "messages.h"

namespace cli {
namespace {

/// The request with what stands for what was not said.
struct Pages {
  explicit Pages(const Request& request)
      : view(request.view.empty() ? "normal" : request.view),
        pageSize(request.pageSize > 0 ? request.pageSize : 2000),
        progress(request.progress),
        safe(request.safe),
        links(request.linksWord),
        source(request.files[0]),
        target(request.files[1]) {}

  std::string view;
  int pageSize;
  bool progress;
  bool safe;
  std::string links;
  std::string source;
  std::string target;
};

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

int convert(const Pages& pages) {
  std::string view = "view=" + pages.view;
  std::string pageSize = "pagesize=" + std::to_string(pages.pageSize);
  std::string safe = pages.safe ? "safe=on" : "safe=off";
  std::string links = "links=" + pages.links;
  char* argv[] = {view.data(), pageSize.data(), safe.data(), links.data()};
  return PageRex(pages.source.c_str(), pages.target.c_str(), static_cast<int>(std::size(argv)), argv);
}

int convertWithProgress(const Pages& pages) {
  IPageRexCallBack callbacks = {printPage, nullptr, goOn};
  if (pageRex(pages.source.c_str(), pages.target.c_str(), pages.pageSize, &callbacks) == PAGEREX_OK)
    return PAGEREX_OK;
  // pageRex does not tell its failures apart. One before the first page comes again at once with PageRex.
  return finishedPages > 0 ? PAGEREX_FAILED : convert(pages);
}

// What is told of a failure.

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

int explain(int result, const Pages& pages) {
  std::setlocale(LC_ALL, "C");  // the library has left its own behind, which would speak Chinese
  switch (result) {
    case PAGEREX_OK:
      return explainOutput(pages.target);
    case PAGEREX_CANNOT_OPEN:
      return explainSource(pages.source);
    case PAGEREX_CANNOT_WRITE:
      return explainTarget(pages.target);
    default:
      return fail(PAGEREX_FAILED, pages.source + ": could not be converted to its end" + outputError());
  }
}

// What the library would take, though hardly anyone means it.

/// The files folder is named by what stands before the last "." of the whole path.
bool hasDotOnlyInFolder(const std::string& target) {
  const size_t name = target.rfind('/') + 1;
  return target.find('.', name) == std::string::npos && target.find('.') < name;
}

int check(const Pages& pages) {
  constexpr size_t kLongestTarget = 235;  // paths in the files folder have room for 259 bytes
  if (isSameFile(pages.source, pages.target)) return fail(kUsageError, "SOURCE and TARGET are the same file");
  if (isWordDocument(pages.target))
    return fail(kUsageError, pages.target + ": TARGET is a Word document, which would be lost");
  if (pages.view == "preview") return 0;
  if (hasDotOnlyInFolder(pages.target))
    return fail(kUsageError, pages.target + ": TARGET needs an extension, such as .html");
  if (pages.target.size() > kLongestTarget)
    return fail(PAGEREX_CANNOT_WRITE, "cannot create the pages: the path of TARGET is longer than " +
                                          std::to_string(kLongestTarget) + " bytes");
  return 0;
}

}  // namespace

int convertTwoPaths(const Request& request) {
  const Pages pages(request);
  if (const int refused = check(pages)) return refused;
  std::signal(SIGXFSZ, SIG_IGN);  // a file that reaches the limit of sizes is told of, as a full disk is
  return explain(pages.progress ? convertWithProgress(pages) : convert(pages), pages);
}

}  // namespace cli
