// What the records of metafiles cost: bytes of them in a second, to a sink that only counts.

#include <benchmark/benchmark.h>

#include "metafiles.h"
#include "pictures/metafile.h"

namespace {

using namespace bench;

constexpr size_t kBytes = 1 << 20;

class CountingSink final : public pagerex::PictureSink {
 public:
  bool Put(ByteView bytes) override {
    count_ += bytes.size();
    return true;
  }
  size_t count() const { return count_; }

 private:
  size_t count_ = 0;
};

void play(benchmark::State& state, decltype(pagerex::playEmf)& player, const support::Bytes& file) {
  size_t written = 0;
  for (auto _ : state) {
    CountingSink sink;
    if (player(ByteView(file.data(), file.size()), {}, sink) != pagerex::PictureResult::kWhole)
      state.SkipWithError("it was not played to the end");
    written = sink.count();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(file.size()));
  state.counters["svg"] = static_cast<double>(written) / static_cast<double>(file.size());
}

void playEmfOf(benchmark::State& state, Lines lines) {
  play(state, pagerex::playEmf, emfOf(lines, kBytes));
}
BENCHMARK_CAPTURE(playEmfOf, Polylines, Lines::kPolylines);
BENCHMARK_CAPTURE(playEmfOf, Steps, Lines::kSteps);
BENCHMARK_CAPTURE(playEmfOf, Polygons, Lines::kPolygons);

void playWmfOf(benchmark::State& state, Lines lines) {
  play(state, pagerex::playWmf, wmfOf(lines, kBytes));
}
BENCHMARK_CAPTURE(playWmfOf, Polylines, Lines::kPolylines);
BENCHMARK_CAPTURE(playWmfOf, Steps, Lines::kSteps);
BENCHMARK_CAPTURE(playWmfOf, Polygons, Lines::kPolygons);

}  // namespace
