#pragma once

#include <cstdint>
#include <string_view>

#include "wordreader/piece_list.h"
#include "wordreader/word_file.h"

namespace pagerex {

/// The characters of a document by their positions, a stretch at a time.
class TextReader {
 public:
  TextReader() = default;
  TextReader(const TextReader&) = delete;
  TextReader& operator=(const TextReader&) = delete;

  /// Both must outlive this.
  void Read(WordFile& file, PieceList& pieces);

  /// Characters from `position` on, as many as stand together, and none from `limit` on. Empty where there
  /// are none: see `NextText`. Valid until the next call. Cheap for positions that rise.
  std::u16string_view At(uint32_t position, uint32_t limit) {
    if (position - start_ >= size_) Load(position);
    const uint32_t from = position - start_;
    if (from >= size_ || position >= limit) return {};
    return {units_ + from, std::min(size_ - from, limit - position)};
  }
  /// Where text may go on behind a position that has none; `limit` at most.
  uint32_t NextText(uint32_t position, uint32_t limit);

  /// Whether text lies outside of its stream.
  bool missed() const { return missed_; }
  /// Whether the stream is longer than its entry claims, and that was needed.
  bool wentBeyondClaim() const { return reader_.wentBeyondClaim(); }

 private:
  static constexpr uint32_t kStretch = 4096, kShortStretch = 256;

  void Load(uint32_t position);

  PieceList* pieces_ = nullptr;
  StreamReader reader_;
  uint32_t start_ = 0, size_ = 0;
  const char16_t* units_ = nullptr;
  bool missed_ = false;
  char16_t copy_[kStretch];
};

}  // namespace pagerex
