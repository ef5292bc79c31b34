#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/encoding.h"
#include "base/output_files.h"
#include "entry/args.h"
#include "entry/html_writer.h"
#include "htmlwriter/view.h"
#include "pagerex/pagerex.h"
#include "wordreader/document.h"

using pagerex::KHtmlWriter;
using pagerex::VIEW;

namespace {

struct Options {
  VIEW view = pagerex::VIEW_NORMAL;
  int pageSize = -1;
  pagerex::KPageSafety safety;
};

bool hasPageSize(VIEW view) {
  const pagerex::KViewTraits* const traits = pagerex::TraitsOf(view);
  return traits && traits->hasPageSize;
}

void readSwitch(std::string_view word, bool& on) {
  if (word == "on" || word == "off") on = word == "on";
}

void readLinks(std::string_view word, pagerex::LinkPolicy& links) {
  using pagerex::LinkPolicy;
  constexpr std::pair<std::string_view, LinkPolicy> kWords[] = {
      {"safe", LinkPolicy::kSafe}, {"all", LinkPolicy::kAll}, {"none", LinkPolicy::kNone}};
  for (const auto& [known, policy] : kWords) {
    if (word == known) links = policy;
  }
}

/// In their order: a page size counts only behind a view that has one.
Options readOptions(int argc, char** argv) {
  Options options;
  std::string name, value;
  for (int i = 0; argv && i < argc; ++i) {
    if (args::ParseArg(argv[i], name, value) != Status::kOk) continue;
    if (name == "view") options.view = pagerex::ViewOf(value);
    if (name == "safe") readSwitch(value, options.safety.on);
    if (name == "links") readLinks(value, options.safety.links);
    if (name == "pagesize" && hasPageSize(options.view)) options.pageSize = std::atoi(value.c_str());
  }
  return options;
}

/// Without links and dots; as it stands when there is no such file.
std::string realPath(const char* path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path, nullptr), std::free);
  return real ? real.get() : path;
}

/// Whether writing the output would destroy the document that is read: as the main HTML file, by whatever
/// name, or as one of the files in the files folder, which is emptied.
bool wouldDestroy(const char* source, const char* htmlPath, VIEW view) {
  struct stat read, written;
  if (!htmlPath || stat(source, &read) != 0) return false;
  if (stat(htmlPath, &written) == 0 && read.st_dev == written.st_dev && read.st_ino == written.st_ino)
    return true;
  const std::string folder = KHtmlWriter::FilesFolderOf(htmlPath);
  const pagerex::KViewTraits* const traits = pagerex::TraitsOf(view);
  const bool emptiesFolder = !traits || traits->hasFilesFolder;
  if (!emptiesFolder || lstat(folder.c_str(), &written) != 0 || !S_ISDIR(written.st_mode)) return false;
  return realPath(source).starts_with(realPath(folder.c_str()) + '/');
}

/// A process writes each function of the shapes' script once, in whichever conversion needs it first.
constinit ObjectWriter::ShapeScripts processScripts;

/// The host of the exported calls, which has functions and no context.
class CallbackHost final : public pagerex::KHost {
 public:
  /// Neither is owned.
  CallbackHost(OutputFiles& files, const IPageRexCallBack& functions)
      : files_(files), functions_(functions) {}

  bool WantsClosedPages() const override { return false; }

  Status FinishPage(int page, const char* path) override {
    constexpr useconds_t kPollMicroseconds = 20000;
    if (functions_.FinishPage) call(functions_.FinishPage, page, path);
    if (!functions_.Continue) return Status::kOk;
    int answer;
    do {
      usleep(kPollMicroseconds);
      answer = call(functions_.Continue);
    } while (answer == PAGEREX_WAIT);
    return answer == PAGEREX_GO_ON ? Status::kOk : Status::kStopped;
  }

  void EndTransform() override {
    if (functions_.EndTransform) call(functions_.EndTransform);
  }

 private:
  /// An exception of the host ends the conversion, and is told apart from those that a damaged document
  /// causes: the output counts as cancelled.
  template <class Result, class... Parameters, class... Arguments>
  Result call(Result (*function)(Parameters...), const Arguments&... arguments) try {
    return function(arguments...);
  } catch (...) {
    files_.NoteError(ECANCELED);
    throw;
  }

  OutputFiles& files_;
  const IPageRexCallBack& functions_;
};

/// Of the thread's last conversion.
thread_local int outputError = 0;

/// A call of the library: what it writes, and in the end the first failure of that. Calls may nest, where a
/// function of the host converts another document.
class Call {
 public:
  Call() = default;
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  ~Call() { outputError = files.FirstError(); }

  OutputFiles files;
};

int write(OutputFiles& files, KDRDocument& document, const char* htmlPath, const Options& options,
          const IPageRexCallBack* callback) {
  std::optional<CallbackHost> host;
  if (callback) host.emplace(files, *callback);
  KHtmlWriter writer(files, processScripts);
  int result = PAGEREX_CANNOT_WRITE;
  if (writer.Init(&document, htmlPath, options.view, options.pageSize, host ? &*host : nullptr,
                  options.safety) == Status::kOk) {
    result = writer.Write() == Status::kOk ? PAGEREX_OK : PAGEREX_FAILED;
  }
  document.Close();
  return result;
}

/// A damaged document may make the reader throw; that is a failure of the step it was thrown in.
int convert(const char* source, const char* htmlPath, const Options& options, IPageRexCallBack* callback) {
  Call call;
  KEncoding::SetLocale("zh_CN.UTF-8");
  bool opened = false;
  try {
    KDRDocument document;
    opened = source && document.OpenDocument(source, 0x10000) == Status::kOk;
    if (opened && wouldDestroy(source, htmlPath, options.view)) {
      call.files.NoteError(EEXIST);
      return PAGEREX_CANNOT_WRITE;
    }
    if (opened) return write(call.files, document, htmlPath, options, callback);
  } catch (...) {
  }
  return opened ? PAGEREX_FAILED : PAGEREX_CANNOT_OPEN;
}

}  // namespace

int PageRex(const char* source, const char* htmlPath, int argc, char** argv) {
  try {
    return convert(source, htmlPath, readOptions(argc, argv), nullptr);
  } catch (...) {
    return PAGEREX_FAILED;
  }
}

int pageRex(const char* source, const char* htmlPath, int pageSize, IPageRexCallBack* callback) {
  const Options options{pagerex::VIEW_MULPAGES, pageSize, {}};
  if (convert(source, htmlPath, options, callback) != PAGEREX_OK) return PAGEREX_ERROR;
  return PAGEREX_OK;
}

int PageRexOutputError(void) {
  return outputError;
}
