// The same conversion by each of the calls: between paths, and from memory into a sink. In view normal.

#include <benchmark/benchmark.h>

#include <string>

#include "documents.h"
#include "pagerex/convert.h"
#include "pagerex/pagerex.h"
#include "support/temp_folder.h"

namespace {

/// A short document and a long one, by paragraphs.
constexpr int kShort = 20;
constexpr int kLong = 4000;

support::WordDocument documentOf(int paragraphs) {
  support::WordDocument document;
  bench::addStyles(document);
  bench::kConstructs[0].fill(document, paragraphs);
  return document;
}

void betweenPaths(benchmark::State& state, const char* safe) {
  const support::TempFolder folder;
  const std::string source = folder.path("in.doc"), target = folder.path("out.html");
  documentOf(static_cast<int>(state.range(0))).save(source);
  std::string option = safe;
  char* options[] = {option.data()};
  for (auto _ : state) {
    if (PageRex(source.c_str(), target.c_str(), 1, options) != PAGEREX_OK)
      state.SkipWithError("not converted");
  }
}

void* begin(void* user, const char*, const char*) {
  return user;
}

int write(void* user, void*, const void*, size_t length) {
  *static_cast<size_t*>(user) += length;
  return 0;
}

void fromMemory(benchmark::State& state) {
  const support::Bytes document = documentOf(static_cast<int>(state.range(0))).build();
  size_t written = 0;
  pagerex_input input = {};
  input.size = sizeof(input);
  input.data = document.data();
  input.length = document.size();
  pagerex_output output = {};
  output.size = sizeof(output);
  output.begin = begin;
  output.write = write;
  output.user = &written;
  for (auto _ : state) {
    if (pagerex_convert(&input, nullptr, nullptr, &output, nullptr) != PAGEREX_RESULT_OK)
      state.SkipWithError("not converted");
  }
}

void fromPathToPath(benchmark::State& state) {
  const support::TempFolder folder;
  const std::string source = folder.path("in.doc"), target = folder.path("out.html");
  documentOf(static_cast<int>(state.range(0))).save(source);
  pagerex_input input = {};
  input.size = sizeof(input);
  input.path = source.c_str();
  pagerex_output output = {};
  output.size = sizeof(output);
  output.path = target.c_str();
  for (auto _ : state) {
    if (pagerex_convert(&input, nullptr, nullptr, &output, nullptr) != PAGEREX_RESULT_OK)
      state.SkipWithError("not converted");
  }
}

BENCHMARK_CAPTURE(betweenPaths, Unsafe, "safe=off")->Arg(kShort)->Arg(kLong)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(betweenPaths, Safe, "safe=on")->Arg(kShort)->Arg(kLong)->Unit(benchmark::kMicrosecond);
BENCHMARK(fromPathToPath)->Arg(kShort)->Arg(kLong)->Unit(benchmark::kMicrosecond);
BENCHMARK(fromMemory)->Arg(kShort)->Arg(kLong)->Unit(benchmark::kMicrosecond);

}  // namespace
