#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "pagerex/convert.h"
#include "support/bytes.h"

namespace convert_test {

/// A function of the host that the library calls.
enum class Call { kByteCount, kRead, kBegin, kWrite, kEnd, kProgress, kMayGoOn, kPage };

/// Contents by name, as they came out of one conversion.
using Files = std::map<std::string, std::string>;

/// A host with its document in memory: it gives the document by functions, takes files, and hears how far a
/// conversion is. It holds each call against the promises of the header. Its own needs of memory are met.
class Host {
 public:
  explicit Host(support::Bytes document = {}) : document_(std::move(document)) {}
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// The document in memory, and by functions.
  pagerex_input memory() const;
  pagerex_input functions();
  pagerex_output sink();
  /// With all functions, and these.
  pagerex_options options(const char* format, const pagerex_limits* limits = nullptr);
  /// With none.
  static pagerex_options quiet(const char* format, const pagerex_limits* limits = nullptr);

  /// Asked at the beginning of each function; false refuses or fails, and it may throw.
  std::function<bool(Call)> onCall;
  /// What may_go_on answers.
  std::function<int()> answer = [] { return PAGEREX_GO_ON; };

  /// A new conversion begins: what the last one wrote and told goes.
  void forget();
  int calls() const { return calls_; }
  int calls(Call call) const;

  Files files() const;
  const support::Bytes& document() const { return document_; }
  std::string content(const std::string& name) const;
  std::vector<std::string> names() const;  ///< in the order in which they began
  std::string typeOf(const std::string& name) const;
  size_t bytes() const;
  size_t mostOpen() const { return mostOpen_; }
  /// Those that ended and were told to be complete.
  Files completeFiles() const;
  const std::vector<double>& progress() const { return progress_; }
  const std::vector<std::string>& pages() const { return pages_; }
  /// What the library did against its promises; empty for nothing.
  std::string complaints() const;

 private:
  struct File {
    std::string name, type, bytes;
    bool ended = false, complete = false;
  };

  bool Asked(Call call);
  void* Begin(const char* name, const char* type);
  bool Write(void* file, const void* data, size_t length);
  bool End(void* file, int complete);
  void Complain(const std::string& what) { complaints_ += what + "; "; }
  File* Open(void* file);

  support::Bytes document_;
  std::list<File> files_;
  std::vector<double> progress_;
  std::vector<std::string> pages_;
  std::map<Call, int> callsOf_;
  int calls_ = 0;
  size_t open_ = 0, mostOpen_ = 0;
  std::string complaints_;
};

pagerex_limits noLimits();

/// A result with its size set, in the place of the code that a call returns.
struct Result : pagerex_result {
  Result() : pagerex_result{} { size = sizeof(pagerex_result); }
  bool warns(int code, const std::string& where = {}) const;
  bool isOne() const;  ///< its fields agree with each other
};

/// These refer to the path.
pagerex_output outputTo(const std::string& path);
pagerex_output outputTo(std::string&& path) = delete;
pagerex_input inputFrom(const std::string& path);
pagerex_input inputFrom(std::string&& path) = delete;

/// pagerex_convert.
Result convert(const pagerex_input& input, const pagerex_output& output, const pagerex_options& options,
               const pagerex_limits* limits = nullptr);
Result convertPaths(const std::string& source, const std::string& target, const char* format = "normal");

/// One that is closed when it goes.
class Document {
 public:
  Document() = default;
  explicit Document(const pagerex_input& input, const pagerex_limits* limits = nullptr) {
    code_ = pagerex_open(&input, limits, &document_, &result);
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() { pagerex_close(document_); }

  int code() const { return code_; }
  pagerex_document* get() const { return document_; }
  int write(const pagerex_options& options, const pagerex_output& output) {
    return pagerex_write(document_, &options, &output, &result);
  }

  Result result;

 private:
  pagerex_document* document_ = nullptr;
  int code_ = -1;
};

/// The names of all formats.
std::vector<std::string> formats();
/// What a document becomes in a format, from memory into a sink; throws if it fails.
Files filesOf(const support::Bytes& document, const std::string& format);

/// Whether all of `some` are in `whole`, with the same bytes.
bool arePartOf(const Files& some, const Files& whole);

/// A document with all that is read, and pictures of which one is deflated; one of few calls.
const support::Bytes& richDocument();
const support::Bytes& smallDocument();
support::Bytes deflated(const support::Bytes& raw);

}  // namespace convert_test
