#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct z_stream_s;

namespace pagerex {

/// Holds the blocks of a page until its style sheet is known: as they are up to a size, what follows
/// deflated, so that a page of any size takes little room.
class PageSpool {
 public:
  PageSpool();
  PageSpool(const PageSpool&) = delete;
  PageSpool& operator=(const PageSpool&) = delete;
  ~PageSpool();

  void Add(std::string_view markup);
  using TakeMarkup = std::function<void(std::string_view)>;
  /// Hands everything on, in parts of any size, and holds nothing any more.
  void WriteTo(const TakeMarkup& take);

 private:
  static constexpr size_t kBlock = 0x10000;
  static constexpr uint64_t kMostPlain = 3 << 19;

  void AddPlain(std::string_view markup);
  void Deflate(std::string_view markup, int flush);
  void InflateTo(const TakeMarkup& take);

  struct Block {
    std::unique_ptr<char[]> bytes;
    size_t size = 0;
  };
  std::vector<Block> plain_, deflated_;
  uint64_t plainSize_ = 0;
  std::unique_ptr<z_stream_s> stream_;  ///< of what is deflated; null while nothing is
};

}  // namespace pagerex
