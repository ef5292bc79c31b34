// The cost of the steps that every character and property goes through.

#include <benchmark/benchmark.h>

#include <string>

#include "base/number_text.h"
#include "base/output_files.h"
#include "base/write_archive.h"
#include "htmlwriter/css_props.h"
#include "support/named_sprms.h"
#include "support/temp_folder.h"
#include "wordreader/paragraph_prop.h"
#include "wordreader/span_prop.h"

namespace {

using namespace support;

/// An archive whose output nobody keeps.
class Archive {
 public:
  Archive() { CreateHtmlWriterArchive(&archive_, files_, "/dev/null"); }
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;
  ~Archive() { DeleteHtmlWriterArchive(archive_); }
  IWriteArchive* operator->() const { return archive_; }
  IWriteArchive* get() const { return archive_; }

 private:
  OutputFiles files_;
  IWriteArchive* archive_ = nullptr;
};

void escapeText(benchmark::State& state, std::u16string_view sample) {
  std::u16string text;
  while (text.size() < 4096) text += sample;
  const auto* units = reinterpret_cast<const unsigned short*>(text.data());
  const Archive archive;
  for (auto _ : state) archive->AddTextEx(units, static_cast<unsigned int>(text.size()));
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK_CAPTURE(escapeText, Words, std::u16string_view(u"plain words and a full stop. "));
BENCHMARK_CAPTURE(escapeText, Markup, std::u16string_view(u"<b> & \"q\"  \t"));
BENCHMARK_CAPTURE(escapeText, Chinese, std::u16string_view(u"天地玄黄，宇宙洪荒。"));
BENCHMARK_CAPTURE(escapeText, Emoji, std::u16string_view(u"😀🎻𝔄"));

const Sprms kRunSprms = {bold(),          italic(),        fontSize(24),     colour(rgb(192, 0, 0)),
                         sprm(0x4A4F, 0), sprm(0x286F, 0), letterSpacing(20)};
const Sprms kParagraphSprms = {align(3),        leftIndent(720),        firstLine(360), spaceBefore(60),
                               spaceAfter(120), lineSpacing(300, true), listItem(1, 0)};

KDWSprmList listOf(const Sprms& sprms) {
  return KDWSprmList(ByteView(sprms.bytes().data(), sprms.bytes().size()));
}

void decodeRunSprms(benchmark::State& state) {
  const KDWSprmList sprms = listOf(kRunSprms);
  for (auto _ : state) {
    KDRSpanProp prop;
    Sprms2SpanProp(sprms, &prop);
    benchmark::DoNotOptimize(prop);
  }
}
BENCHMARK(decodeRunSprms);

void decodeParagraphSprms(benchmark::State& state) {
  const KDWSprmList sprms = listOf(kParagraphSprms);
  for (auto _ : state) {
    KDRParagraphProp prop;
    Sprms2ParagraphProp(sprms, &prop, nullptr, nullptr);
    benchmark::DoNotOptimize(prop);
  }
}
BENCHMARK(decodeParagraphSprms);

void writeCssProperty(benchmark::State& state) {
  const Archive archive;
  archive->StartCssStyle();
  for (auto _ : state) archive->AddCssProp("margin-left", points(720).c_str());
}
BENCHMARK(writeCssProperty);

void writeRunCss(benchmark::State& state) {
  KDRSpanProp prop;
  Sprms2SpanProp(listOf(kRunSprms), &prop);
  const Archive archive;
  archive->StartCssStyle();
  for (auto _ : state) pagerex::WriteChProps(&prop, archive.get(), nullptr, 0, 10.5f);
}
BENCHMARK(writeRunCss);

void writeParagraphCss(benchmark::State& state) {
  KDRParagraphProp prop;
  Sprms2ParagraphProp(listOf(kParagraphSprms), &prop, nullptr, nullptr);
  const Archive archive;
  archive->StartCssStyle();
  int lineSpacing = 0;
  for (auto _ : state) pagerex::WritePapProps(&prop, archive.get(), lineSpacing);
}
BENCHMARK(writeParagraphCss);

void writeElement(benchmark::State& state) {
  const Archive archive;
  for (auto _ : state) {
    archive->BeginElement("span");
    archive->AddAttribute("class", "std15");
    archive->EndElement("span");
  }
}
BENCHMARK(writeElement);

}  // namespace
