#include "formats/html/page_spool.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace pagerex {
namespace {

/// Also when what takes the parts throws.
struct InflateEnd {
  void operator()(z_stream* stream) const { inflateEnd(stream); }
};

}  // namespace

PageSpool::PageSpool() = default;

PageSpool::~PageSpool() {
  if (stream_) deflateEnd(stream_.get());
}

void PageSpool::Add(std::string_view markup) {
  if (!stream_ && plainSize_ < kMostPlain) return AddPlain(markup);
  if (!stream_) {
    stream_ = std::make_unique<z_stream>();
    if (deflateInit(stream_.get(), 1) != Z_OK) {
      stream_.reset();
      throw std::bad_alloc();
    }
  }
  Deflate(markup, Z_NO_FLUSH);
}

void PageSpool::AddPlain(std::string_view markup) {
  plainSize_ += markup.size();
  while (!markup.empty()) {
    if (plain_.empty() || plain_.back().size == kBlock)
      plain_.push_back({std::make_unique_for_overwrite<char[]>(kBlock), 0});
    Block& block = plain_.back();
    const size_t count = std::min(markup.size(), kBlock - block.size);
    std::memcpy(block.bytes.get() + block.size, markup.data(), count);
    block.size += count;
    markup.remove_prefix(count);
  }
}

void PageSpool::Deflate(std::string_view markup, int flush) {
  constexpr size_t kStretch = 1 << 30;
  do {
    const size_t count = std::min(markup.size(), kStretch);
    stream_->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(markup.data()));
    stream_->avail_in = static_cast<uInt>(count);
    markup.remove_prefix(count);
    int result = Z_OK;
    do {
      if (deflated_.empty() || deflated_.back().size == kBlock)
        deflated_.push_back({std::make_unique_for_overwrite<char[]>(kBlock), 0});
      Block& block = deflated_.back();
      stream_->next_out = reinterpret_cast<Bytef*>(block.bytes.get() + block.size);
      stream_->avail_out = static_cast<uInt>(kBlock - block.size);
      result = deflate(stream_.get(), flush);
      block.size = kBlock - stream_->avail_out;
    } while (stream_->avail_in > 0 || (flush == Z_FINISH && result == Z_OK));
  } while (!markup.empty());
}

void PageSpool::WriteTo(const TakeMarkup& take) {
  for (Block& block : plain_) {
    take({block.bytes.get(), block.size});
    block.bytes.reset();
  }
  plain_.clear();
  plainSize_ = 0;
  if (!stream_) return;
  Deflate({}, Z_FINISH);
  deflateEnd(stream_.get());
  stream_.reset();
  InflateTo(take);
  deflated_.clear();
}

void PageSpool::InflateTo(const TakeMarkup& take) {
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
  const std::unique_ptr<z_stream, InflateEnd> end(&stream);
  char part[0x4000];
  for (Block& block : deflated_) {
    stream.next_in = reinterpret_cast<Bytef*>(block.bytes.get());
    stream.avail_in = static_cast<uInt>(block.size);
    do {
      stream.next_out = reinterpret_cast<Bytef*>(part);
      stream.avail_out = sizeof part;
      inflate(&stream, Z_NO_FLUSH);
      take({part, sizeof part - stream.avail_out});
    } while (stream.avail_out == 0);
    block.bytes.reset();
  }
}

}  // namespace pagerex
