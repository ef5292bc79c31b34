#include "threads/converting.h"

#include <filesystem>

#include "mutation/rich_documents.h"
#include "pagerex/pagerex.h"
#include "support/corpus.h"

namespace fs = std::filesystem;

namespace threads_test {

namespace {

/// Who is told of the pages of a conversion. The callbacks take no context, but run on its thread.
struct Host {
  Outcome* outcome;
  const std::function<void(int)>* onPage;
};
thread_local Host host;

void finishPage(int page, const char* path) {
  host.outcome->pages.push_back(fs::path(path).filename().string());
  if (*host.onPage) (*host.onPage)(page);
}

void endTransform() {
  ++host.outcome->ends;
}

/// In its place for the length of a conversion, within which there may be another.
class HostInPlace {
 public:
  explicit HostInPlace(Host now) : before_(host) { host = now; }
  HostInPlace(const HostInPlace&) = delete;
  HostInPlace& operator=(const HostInPlace&) = delete;
  ~HostInPlace() { host = before_; }

 private:
  Host before_;
};

constexpr uintmax_t kLarge = 128 << 10;

}  // namespace

const std::vector<Way> kWays = {{.name = "normal", .options = {"view=normal"}},
                                {.name = "phone", .options = {"view=phone", "pagesize=500"}},
                                {.name = "preview", .options = {"view=preview", "pagesize=500"}},
                                {.name = "mulpages", .options = {"view=mulpages", "pagesize=500"}},
                                {.name = "pageRex", .pageSize = 300}};

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << "result " << outcome.result << ", error " << outcome.outputError << ", " << outcome.pages.size()
       << " pages, " << outcome.ends << " ends";
}

Outcome convert(const Way& way, const std::string& source, const std::string& target,
                const std::function<void(int)>& onPage) {
  Outcome outcome;
  const HostInPlace inPlace({&outcome, &onPage});
  if (way.pageSize > 0) {
    IPageRexCallBack callbacks = {finishPage, endTransform, nullptr};
    outcome.result = pageRex(source.c_str(), target.c_str(), way.pageSize, &callbacks);
  } else {
    std::vector<char*> argv;
    for (const std::string& option : way.options) argv.push_back(const_cast<char*>(option.c_str()));
    outcome.result = PageRex(source.c_str(), target.c_str(), static_cast<int>(argv.size()), argv.data());
  }
  outcome.outputError = PageRexOutputError();
  return outcome;
}

Sources::Sources() {
  copy(PAGEREX_SAMPLE_DOCUMENT, "sample.doc");
  for (const mutation::NamedDocument& made : mutation::richDocuments()) {
    made.document.save(add(made.name + std::string(".doc")));
  }
}

void Sources::addCorpus() {
  for (const fs::path& real : support::corpusDocuments()) {
    if (fs::file_size(real) < kLarge) copy(real, "corpus-" + real.filename().string());
  }
}

void Sources::copy(const fs::path& original, const std::string& name) {
  const std::string path = add(name);
  fs::copy_file(original, path);
  fs::permissions(path, fs::perms::owner_all);
}

std::string Sources::add(const std::string& name) {
  return paths_.emplace_back(folder_.path(name));
}

void convertEachOnce(const Sources& sources) {
  const support::TempFolder folder;
  for (const std::string& source : sources.paths()) {
    for (const Way& way : kWays) convert(way, source, folder.path("out.htm"));
  }
}

}  // namespace threads_test
