#include "convert/host.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>

#include "convert/memory_faults.h"
#include "mutation/rich_documents.h"
#include "support/drawing_writer.h"
#include "support/small_pictures.h"

namespace convert_test {

using support::Bytes;

pagerex_input Host::memory() const {
  pagerex_input input = {};
  input.size = sizeof(input);
  input.data = document_.empty() ? static_cast<const void*>("") : document_.data();
  input.length = document_.size();
  return input;
}

pagerex_input Host::functions() {
  pagerex_input input = {};
  input.size = sizeof(input);
  input.user = this;
  input.byte_count = [](void* user) -> int64_t {
    const MemoryFaults::Pause pause;
    Host& host = *static_cast<Host*>(user);
    return host.Asked(Call::kByteCount) ? static_cast<int64_t>(host.document_.size()) : -1;
  };
  input.read_at = [](void* user, uint64_t offset, void* buffer, size_t length) -> int64_t {
    const MemoryFaults::Pause pause;
    Host& host = *static_cast<Host*>(user);
    if (!host.Asked(Call::kRead)) return -1;
    if (offset >= host.document_.size()) return 0;
    const size_t count = std::min<size_t>(length, host.document_.size() - static_cast<size_t>(offset));
    std::memcpy(buffer, host.document_.data() + offset, count);
    return static_cast<int64_t>(count);
  };
  return input;
}

pagerex_output Host::sink() {
  pagerex_output output = {};
  output.size = sizeof(output);
  output.user = this;
  output.begin = [](void* user, const char* name, const char* type) {
    const MemoryFaults::Pause pause;
    return static_cast<Host*>(user)->Begin(name, type);
  };
  output.write = [](void* user, void* file, const void* data, size_t length) {
    const MemoryFaults::Pause pause;
    return static_cast<Host*>(user)->Write(file, data, length) ? 0 : 1;
  };
  output.end = [](void* user, void* file, int complete) {
    const MemoryFaults::Pause pause;
    return static_cast<Host*>(user)->End(file, complete) ? 0 : 1;
  };
  return output;
}

pagerex_options Host::quiet(const char* format, const pagerex_limits* limits) {
  pagerex_options options = {};
  options.size = sizeof(options);
  options.format = format;
  options.limits = limits;
  return options;
}

pagerex_options Host::options(const char* format, const pagerex_limits* limits) {
  pagerex_options options = quiet(format, limits);
  options.user = this;
  options.progress = [](void* user, double done) {
    const MemoryFaults::Pause pause;
    Host& host = *static_cast<Host*>(user);
    if (!(done >= 0 && done <= 1)) host.Complain("progress beyond its bounds");
    if (!host.progress_.empty() && done <= host.progress_.back()) host.Complain("progress does not rise");
    host.progress_.push_back(done);
    host.Asked(Call::kProgress);
  };
  options.page_finished = [](void* user, int page, const char* name) {
    const MemoryFaults::Pause pause;
    Host& host = *static_cast<Host*>(user);
    host.pages_.push_back(name);
    if (page != static_cast<int>(host.pages_.size())) host.Complain("pages out of order");
    host.Asked(Call::kPage);
  };
  options.may_go_on = [](void* user) {
    const MemoryFaults::Pause pause;
    Host& host = *static_cast<Host*>(user);
    return host.Asked(Call::kMayGoOn) ? host.answer() : PAGEREX_STOP;
  };
  return options;
}

bool Host::Asked(Call call) {
  ++calls_;
  ++callsOf_[call];
  return !onCall || onCall(call);
}

int Host::calls(Call call) const {
  const auto found = callsOf_.find(call);
  return found == callsOf_.end() ? 0 : found->second;
}

void Host::forget() {
  files_.clear();
  progress_.clear();
  pages_.clear();
  callsOf_.clear();
  complaints_.clear();
  calls_ = 0;
  open_ = mostOpen_ = 0;
}

Host::File* Host::Open(void* file) {
  for (File& each : files_) {
    if (&each == file && !each.ended) return &each;
  }
  Complain("a file that is not open");
  return nullptr;
}

void* Host::Begin(const char* name, const char* type) {
  const std::string begun = name;
  if (std::any_of(files_.begin(), files_.end(), [&](const File& file) { return file.name == begun; }))
    Complain(begun + " begins twice");
  if (begun.empty() || begun.front() == '/' || begun.find("..") != std::string::npos)
    Complain(begun + " is no name");
  if (!type || !*type) Complain(begun + " has no type");
  if (!Asked(Call::kBegin)) return nullptr;
  mostOpen_ = std::max(mostOpen_, ++open_);
  return &files_.emplace_back(File{begun, type, {}});
}

bool Host::Write(void* file, const void* data, size_t length) {
  File* const open = Open(file);
  if (length == 0) Complain("nothing is written");
  if (!Asked(Call::kWrite)) return false;
  if (open) open->bytes.append(static_cast<const char*>(data), length);
  return true;
}

/// A file has ended, whatever the host says of that.
bool Host::End(void* file, int complete) {
  if (File* const open = Open(file)) {
    open->ended = true;
    open->complete = complete != 0;
    --open_;
  }
  return Asked(Call::kEnd);
}

Files Host::files() const {
  Files files;
  for (const File& file : files_) files[file.name] = file.bytes;
  return files;
}

std::string Host::content(const std::string& name) const {
  const Files all = files();
  return all.count(name) ? all.at(name) : throw std::runtime_error("no file " + name);
}

std::vector<std::string> Host::names() const {
  std::vector<std::string> names;
  for (const File& file : files_) names.push_back(file.name);
  return names;
}

std::string Host::typeOf(const std::string& name) const {
  for (const File& file : files_) {
    if (file.name == name) return file.type;
  }
  throw std::runtime_error("no file " + name);
}

size_t Host::bytes() const {
  size_t bytes = 0;
  for (const File& file : files_) bytes += file.bytes.size();
  return bytes;
}

Files Host::completeFiles() const {
  Files files;
  for (const File& file : files_) {
    if (file.complete) files[file.name] = file.bytes;
  }
  return files;
}

std::string Host::complaints() const {
  std::string all = complaints_;
  for (const File& file : files_) {
    if (!file.ended) all += file.name + " does not end; ";
  }
  return all;
}

pagerex_limits noLimits() {
  pagerex_limits limits = {};
  limits.size = sizeof(limits);
  return limits;
}

pagerex_output outputTo(const std::string& path) {
  pagerex_output output = {};
  output.size = sizeof(output);
  output.path = path.c_str();
  return output;
}

pagerex_input inputFrom(const std::string& path) {
  pagerex_input input = {};
  input.size = sizeof(input);
  input.path = path.c_str();
  return input;
}

Result convert(const pagerex_input& input, const pagerex_output& output, const pagerex_options& options,
               const pagerex_limits* limits) {
  Result result;
  if (pagerex_convert(&input, limits, &options, &output, &result) != result.code)
    throw std::runtime_error("two codes of one call");
  return result;
}

Result convertPaths(const std::string& source, const std::string& target, const char* format) {
  return convert(inputFrom(source), outputTo(target), Host::quiet(format));
}

bool Result::warns(int wanted, const std::string& where) const {
  return std::any_of(warnings, warnings + warning_count, [&](const pagerex_warning& warning) {
    return warning.code == wanted && (where.empty() || where == warning.where);
  });
}

bool Result::isOne() const {
  const bool lost = std::any_of(warnings, warnings + warning_count,
                                [](const pagerex_warning& warning) { return warning.lost != 0; });
  const bool isWhole = code == PAGEREX_RESULT_OK && !lost;
  return *sentence && std::strlen(sentence) < sizeof(sentence) && (complete != 0) == isWhole &&
         warnings_total >= warning_count && std::string(pagerex_result_name(code)) != "unknown";
}

std::vector<std::string> formats() {
  std::vector<std::string> names;
  for (int i = 0; const pagerex_format* const format = pagerex_format_at(i); ++i)
    names.push_back(format->name);
  return names;
}

Files filesOf(const Bytes& document, const std::string& format) {
  Host host(document);
  const pagerex_input input = host.memory();
  const pagerex_output output = host.sink();
  const pagerex_options options = Host::quiet(format.c_str());
  if (pagerex_convert(&input, nullptr, &options, &output, nullptr) != PAGEREX_RESULT_OK)
    throw std::runtime_error("a sound document is not converted");
  return host.files();
}

bool arePartOf(const Files& some, const Files& whole) {
  return std::includes(whole.begin(), whole.end(), some.begin(), some.end());
}

Bytes deflated(const Bytes& raw) {
  Bytes out(compressBound(raw.size()));
  uLongf size = out.size();
  compress(out.data(), &size, raw.data(), raw.size());
  out.resize(size);
  return out;
}

namespace {

Bytes makeRich() {
  using namespace support::drawing;
  std::vector<mutation::NamedDocument> all = mutation::richDocuments();
  support::WordDocument& document = all.back().document;
  const Bytes raw = support::smallEmf(1600);
  Inline picture;
  picture.shape = Shape(75).props(Props().number(0x4104, 1));
  picture.blips = {
      Blip{.type = 2, .data = deflated(raw), .rawSize = static_cast<uint32_t>(raw.size()), .compression = 0}};
  const support::Sprms run = pictureRun(document, picture);
  document.paragraph("A metafile: ").special(1, run);
  return document.build();
}

Bytes makeSmall() {
  using namespace support::drawing;
  support::WordDocument document;
  document.style(0, support::Style().name("Normal").sti(0));
  document.style(1, support::Style().name("heading 1").sti(1).papx({support::sprm(0x2640, 0)}));
  Inline picture;
  picture.shape = Shape(75).props(Props().number(0x4104, 1));
  picture.blips = {Blip{.data = support::smallPng()}};
  const support::Sprms run = pictureRun(document, picture);
  document.paragraph("A heading").istd(1);
  document.paragraph().run("a ").special(1, run);
  document.paragraph("A note").footnote(" of the foot");
  document.row({"a", "b"}, {support::defTableSprm({0, 1000, 2000})});
  for (int i = 0; i < 3; ++i) document.paragraph(std::string(300, static_cast<char>('a' + i)));
  return document.build();
}

}  // namespace

const Bytes& richDocument() {
  static const Bytes document = makeRich();
  return document;
}

const Bytes& smallDocument() {
  static const Bytes document = makeSmall();
  return document;
}

}  // namespace convert_test
