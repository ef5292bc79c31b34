// What a character costs on the second way out, construct by construct: the walk alone, and each writer on
// it.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "base/byte_source.h"
#include "base/utf8_output.h"
#include "documents.h"
#include "flow/walk.h"
#include "formats/html/html_writer.h"
#include "formats/html/page_spool.h"
#include "formats/markdown/markdown_writer.h"
#include "formats/text/text_writer.h"
#include "storage/com_interfaces.h"
#include "storage/compound_file.h"

namespace {

using namespace pagerex;

constexpr int kCount = 4000;
constexpr int kWidth = 72;

/// Hears what is told, and does nothing.
class Listener final : public FlowHandler {
 public:
  void Text(std::u16string_view text, const RunProperties&) override {
    benchmark::DoNotOptimize(text.data());
  }
};

/// An output that nobody keeps.
class NoSink final : public OutputSink {
 public:
  std::unique_ptr<SinkFile> Open(const char*) override { return std::make_unique<File>(); }

 private:
  class File final : public SinkFile {
   public:
    void Put(const char* data, size_t) override { benchmark::DoNotOptimize(data); }
  };
};

/// A document in memory, open.
class Document {
 public:
  explicit Document(const bench::Construct& construct) {
    support::WordDocument doc;
    bench::addStyles(doc);
    construct.fill(doc, kCount);
    bytes_ = doc.build();
    source_ = std::make_unique<MemorySource>(bytes_.data(), bytes_.size());
    if (OpenCompoundFile(*source_, nullptr, &storage_) != Status::kOk) return;
    file_ = std::make_unique<WordFile>();
    if (file_->Open(storage_, nullptr, nullptr) != Status::kOk) file_.reset();
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() {
    file_.reset();
    if (storage_) storage_->Release();
  }

  bool isOpen() const { return file_ != nullptr; }
  /// Characters of its main text, once all was told.
  uint32_t Tell(FlowHandler& handler) {
    RunControl control;
    return walk(*file_, {}, control, nullptr, handler).characters;
  }

 private:
  support::Bytes bytes_;
  std::unique_ptr<MemorySource> source_;
  IStorage* storage_ = nullptr;
  std::unique_ptr<WordFile> file_;
};

uint32_t listen(Document& document, Utf8Output&) {
  Listener listener;
  return document.Tell(listener);
}

uint32_t writeText(Document& document, Utf8Output& out) {
  TextWriter writer(out, {});
  return document.Tell(writer);
}

uint32_t writeWrappedText(Document& document, Utf8Output& out) {
  TextOptions options;
  options.width = kWidth;
  TextWriter writer(out, options);
  return document.Tell(writer);
}

uint32_t writeMarkdown(Document& document, Utf8Output& out) {
  MarkdownWriter writer(out, {}, nullptr, nullptr);
  return document.Tell(writer);
}

/// The page, held until its style sheet is known.
class Page final : public BlockSink {
 public:
  void Take(std::string_view markup) override { spool_.Add(markup); }
  void WriteTo(Utf8Output& out) {
    spool_.WriteTo([&out](std::string_view markup) { out.Put(markup); });
  }

 private:
  PageSpool spool_;
};

uint32_t writeHtml(Document& document, Utf8Output& out) {
  Page page;
  StyleSheet sheet(nullptr);
  const std::unique_ptr<PictureOutput> pictures = makeNoPictures(nullptr);
  HtmlWriter writer(page, sheet, {}, *pictures, nullptr);
  const uint32_t characters = document.Tell(writer);
  out.Put(pageHead(writer.frame(), writer.BaseRules(false) + sheet.TakeRules()));
  page.WriteTo(out);
  return characters;
}

struct WayRow {
  const char* name;
  uint32_t (*go)(Document& document, Utf8Output& out);
};

constexpr WayRow kWays[] = {
    {"Walk", listen},    {"Text", writeText}, {"WrappedText", writeWrappedText}, {"Markdown", writeMarkdown},
    {"Html", writeHtml},
};

void goThrough(benchmark::State& state, const WayRow& way, const bench::Construct& construct) {
  Document document(construct);
  if (!document.isOpen()) return state.SkipWithError("is not opened");
  NoSink sink;
  OutputFiles files(sink);
  Utf8Output out(files);
  uint32_t characters = 0;
  for (auto _ : state) {
    out.Open("out");
    characters = way.go(document, out);
    out.Close();
  }
  if (characters == 0) return state.SkipWithError("tells nothing");
  using benchmark::Counter;
  state.counters["character"] = Counter(characters, Counter::kIsIterationInvariantRate | Counter::kInvert);
}

[[maybe_unused]] const bool registered = [] {
  for (int i = 0; i < bench::kConstructCount; ++i) {
    const bench::Construct& construct = bench::kConstructs[i];
    for (const WayRow& way : kWays) {
      const std::string name = std::string("Flow/") + way.name + '/' + construct.name;
      benchmark::RegisterBenchmark(name.c_str(), goThrough, way, construct)->Unit(benchmark::kMillisecond);
    }
  }
  return true;
}();

}  // namespace
