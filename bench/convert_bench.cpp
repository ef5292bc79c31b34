// The cost of each construct of a document, by whole conversions in view normal.
//
// Each runs at three sizes: the time of one item ("each") shows what it costs, and that it does not grow.

#include <benchmark/benchmark.h>

#include <string>

#include "documents.h"
#include "pagerex/pagerex.h"
#include "support/temp_folder.h"

namespace {

void convert(benchmark::State& state, const bench::Construct& construct) {
  const support::TempFolder folder;
  const std::string source = folder.path("in.doc"), target = folder.path("out.html");
  const auto count = static_cast<int>(state.range(0));
  support::WordDocument doc;
  bench::addStyles(doc);
  construct.fill(doc, count);
  doc.save(source);
  for (auto _ : state) {
    if (PageRex(source.c_str(), target.c_str(), 0, nullptr) != PAGEREX_OK) {
      state.SkipWithError("does not convert");
      break;
    }
  }
  using benchmark::Counter;
  state.counters["each"] = Counter(count, Counter::kIsIterationInvariantRate | Counter::kInvert);
}

[[maybe_unused]] const bool registered = [] {
  for (int i = 0; i < bench::kConstructCount; ++i) {
    const bench::Construct& construct = bench::kConstructs[i];
    benchmark::RegisterBenchmark((std::string("Convert/") + construct.name).c_str(), convert, construct)
        ->Arg(2000)
        ->Arg(4000)
        ->Arg(8000)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
