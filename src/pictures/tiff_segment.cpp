#include "pictures/tiff_segment.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>

namespace pagerex {
namespace {

constexpr uint16_t kKnown[] = {
    TiffSegment::kNone, TiffSegment::kFaxRuns, TiffSegment::kFaxGroup3, TiffSegment::kFaxGroup4,
    TiffSegment::kLzw,  TiffSegment::kDeflate, TiffSegment::kPackBits,  TiffSegment::kOldDeflate,
};

constexpr uint32_t kClear = 256, kEnd = 257;

uint8_t reversed(uint8_t byte) {
  unsigned bits = byte;
  bits = (bits & 0x55) << 1 | (bits >> 1 & 0x55);
  bits = (bits & 0x33) << 2 | (bits >> 2 & 0x33);
  return static_cast<uint8_t>(bits << 4 | bits >> 4);
}

}  // namespace

bool TiffSegment::isKnown(uint16_t compression) {
  return std::find(std::begin(kKnown), std::end(kKnown), compression) != std::end(kKnown);
}

TiffSegment::TiffSegment(uint16_t compression, bool isFaxOfBoth, bool hasBitsReversed, uint32_t faxWidth)
    : compression_(compression == kOldDeflate ? uint16_t{kDeflate} : compression),
      hasBitsReversed_(hasBitsReversed) {
  if (compression_ == kLzw) words_ = std::make_unique<Words>();
  if (compression_ >= kFaxRuns && compression_ <= kFaxGroup4) {
    const auto kind = compression_ == kFaxRuns     ? FaxRows::Kind::kRuns
                      : compression_ == kFaxGroup4 ? FaxRows::Kind::kGroup4
                      : isFaxOfBoth                ? FaxRows::Kind::kGroup3Both
                                                   : FaxRows::Kind::kGroup3;
    fax_ = std::make_unique<FaxRows>(kind, faxWidth);
  }
  if (compression_ == kDeflate && inflateInit(&stream_) != Z_OK) throw std::bad_alloc();
}

void TiffSegment::Open(ByteView bytes) {
  bytes_ = bytes;
  if (hasBitsReversed_) {
    reversed_ = std::make_unique<uint8_t[]>(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) reversed_[i] = reversed(bytes.u8(i));
    bytes_ = {reversed_.get(), bytes.size()};
  }
  at_ = left_ = 0;
  if (fax_) fax_->Open(bytes_);
  if (words_) {
    words_->textAt = kMostWords;
    words_->next = kFirstWord;
    words_->previous = kClear;
    words_->bit = 0;
    words_->width = 9;
  }
  inflateReset(&stream_);
  stream_.next_in = const_cast<uint8_t*>(bytes_.data());
  stream_.avail_in = static_cast<uInt>(std::min<size_t>(bytes_.size(), UINT32_MAX));
}

bool TiffSegment::Read(uint8_t* to, size_t size) {
  size_t read = 0;
  if (fax_) {
    read = fax_->Next(to) ? size : 0;
  } else if (words_) {
    read = ReadWords(to, size);
  } else if (compression_ == kDeflate) {
    read = ReadDeflate(to, size);
  } else if (compression_ == kPackBits) {
    read = ReadPackBits(to, size);
  } else {
    const ByteView part = bytes_.part(at_, size);
    read = part.size();
    if (read > 0) std::memcpy(to, part.data(), read);
    at_ += read;
  }
  if (read < size) std::memset(to + read, 0, size - read);
  return read == size;
}

size_t TiffSegment::ReadPackBits(uint8_t* to, size_t size) {
  size_t read = 0;
  while (read < size && at_ < bytes_.size()) {
    if (left_ == 0) {
      const uint8_t code = bytes_.u8(at_++);
      isRepeated_ = code > 128;
      left_ = isRepeated_ ? 257u - code : code == 128 ? 0 : code + 1u;
      continue;
    }
    const size_t count = std::min({left_, size - read, isRepeated_ ? SIZE_MAX : bytes_.size() - at_});
    if (isRepeated_) {
      std::memset(to + read, bytes_.u8(at_), count);
    } else {
      std::memcpy(to + read, bytes_.data() + at_, count);
      at_ += count;
    }
    read += count;
    left_ -= count;
    if (isRepeated_ && left_ == 0) ++at_;
  }
  return read;
}

size_t TiffSegment::ReadWords(uint8_t* to, size_t size) {
  size_t read = 0;
  while (read < size) {
    if (words_->textAt == kMostWords && !NextWord()) break;
    const size_t count = std::min<size_t>(size - read, kMostWords - words_->textAt);
    std::memcpy(to + read, words_->text + words_->textAt, count);
    words_->textAt += static_cast<uint32_t>(count);
    read += count;
  }
  return read;
}

bool TiffSegment::NextWord() {
  Words& words = *words_;
  for (;;) {
    const auto byte = static_cast<size_t>(words.bit / 8);
    if (byte + 1 >= bytes_.size()) return false;
    const uint32_t three = static_cast<uint32_t>(bytes_.u8(byte)) << 16 |
                           static_cast<uint32_t>(bytes_.u8(byte + 1)) << 8 | bytes_.u8(byte + 2);
    uint32_t code = three >> (24 - words.bit % 8 - words.width) & ((1u << words.width) - 1);
    words.bit += words.width;
    if (code == kEnd) return false;
    if (code == kClear) {
      words.next = kFirstWord;
      words.previous = kClear;
      words.width = 9;
      continue;
    }
    const uint32_t given = code;
    const bool isFirst = words.previous == kClear;
    if (code > words.next || (isFirst && code > kClear)) return false;
    words.textAt = kMostWords;
    // One that is only being made ends as it begins.
    const bool isNew = code == words.next;
    if (isNew) {
      code = words.previous;
      --words.textAt;
    }
    for (; code >= kFirstWord; code = words.front[code]) words.text[--words.textAt] = words.last[code];
    words.text[--words.textAt] = static_cast<uint8_t>(code);
    if (isNew) words.text[kMostWords - 1] = words.text[words.textAt];
    if (!isFirst && words.next < kMostWords) {
      words.front[words.next] = static_cast<uint16_t>(words.previous);
      words.last[words.next] = words.text[words.textAt];
      ++words.next;
      if (words.next + 1 >= 1u << words.width && words.width < 12) ++words.width;
    }
    words.previous = given;
    return true;
  }
}

size_t TiffSegment::ReadDeflate(uint8_t* to, size_t size) {
  stream_.next_out = to;
  stream_.avail_out = static_cast<uInt>(size);
  const int state = inflate(&stream_, Z_SYNC_FLUSH);
  // It is not asked again: what follows damage is of no use.
  if (state != Z_OK) stream_.avail_in = 0;
  if (state != Z_OK && state != Z_STREAM_END && state != Z_BUF_ERROR) return 0;
  return size - stream_.avail_out;
}

}  // namespace pagerex
