#include "formats/picture_output.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <new>
#include <unordered_map>
#include <vector>

#include "base/base64.h"
#include "base/stdio_archive.h"

namespace pagerex {
namespace {

struct TypeRow {
  PictureType type;
  std::string_view extension, mediaType;
};
constexpr TypeRow kTypes[] = {
    {PictureType::kEmf, "emf", "image/emf"},      {PictureType::kWmf, "wmf", "image/wmf"},
    {PictureType::kPict, "pict", "image/x-pict"}, {PictureType::kJpeg, "jpg", "image/jpeg"},
    {PictureType::kPng, "png", "image/png"},      {PictureType::kDib, "bmp", "image/bmp"},
};

const TypeRow* typeRowOf(PictureType type) {
  const auto* row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                 [type](const TypeRow& each) { return each.type == type; });
  return row == std::end(kTypes) ? nullptr : row;
}

bool isForBrowsers(PictureType type) {
  return type == PictureType::kJpeg || type == PictureType::kPng || type == PictureType::kDib;
}

/// Takes a part of a picture; false to end it.
using TakePart = std::function<bool(ByteView)>;

/// In front of a device independent bitmap, which tells where its pixels begin.
std::string bitmapFileHeader(ByteView dib) {
  constexpr size_t kHeader = 14;
  constexpr uint32_t kCoreHeader = 12, kBitFields = 3, kPlainInfo = 40;
  const uint32_t infoSize = dib.u32(0);
  const bool isCore = infoSize == kCoreHeader;
  const uint32_t bits = isCore ? dib.u16(10) : dib.u16(14);
  uint64_t colours = isCore ? 0 : std::min<uint32_t>(dib.u32(32), 256);
  if (colours == 0 && bits <= 8) colours = uint64_t{1} << bits;
  uint64_t pixels = kHeader + uint64_t{infoSize} + colours * (isCore ? 3 : 4);
  if (infoSize == kPlainInfo && dib.u32(16) == kBitFields) pixels += 12;
  std::string header = "BM";
  const auto append = [&header](uint64_t value) {
    for (int shift = 0; shift < 32; shift += 8) header += static_cast<char>(value >> shift);
  };
  append(kHeader + dib.size());
  append(0);
  append(pixels);
  return header;
}

/// Ends the stream also when what takes its parts throws.
struct InflateEnd {
  void operator()(z_stream* stream) const { inflateEnd(stream); }
};

/// A deflated picture, part by part. False when it is damaged, or longer than it says.
bool inflateParts(ByteView deflated, uint64_t rawSize, const TakePart& take) {
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
  const std::unique_ptr<z_stream, InflateEnd> end(&stream);
  stream.next_in = const_cast<Bytef*>(deflated.data());
  stream.avail_in = static_cast<uInt>(deflated.size());
  uint8_t part[0x2000];
  int result = Z_OK;
  bool isTaken = true;
  while (result == Z_OK && isTaken) {
    stream.next_out = part;
    stream.avail_out = sizeof(part);
    result = inflate(&stream, Z_NO_FLUSH);
    const size_t count = sizeof(part) - stream.avail_out;
    if (count == 0 && result != Z_STREAM_END) break;
    isTaken = stream.total_out <= rawSize && take(ByteView(part, count));
  }
  if (result == Z_MEM_ERROR) throw std::bad_alloc();
  return result == Z_STREAM_END && isTaken;
}

/// The bytes of a picture's file. False when it is damaged, or none.
bool pictureParts(const PictureData& picture, const TakePart& take) {
  constexpr uint32_t kLargestRaw = 64u << 20;  // no picture of a document comes near
  const ByteView bytes = picture.bytes;
  if (bytes.empty() || bytes.size() > UINT32_MAX / 2) return false;
  if (picture.isDeflated) {
    // What the picture says of its size need not be so.
    return inflateParts(bytes, picture.rawSize ? std::min(picture.rawSize, kLargestRaw) : kLargestRaw, take);
  }
  if (picture.type == PictureType::kDib) {
    const std::string header = bitmapFileHeader(bytes);
    if (!take(ByteView(header.data(), header.size()))) return false;
  }
  return take(bytes);
}

/// What is common to all: each picture once, whatever way it goes.
class StoredPictures : public PictureOutput {
 public:
  explicit StoredPictures(Warnings* warnings) : warnings_(warnings) {}

  std::string_view AddressOf(const PictureFacts& picture) final {
    if (!picture.source) return {};
    if (picture.identity != 0) {
      const auto known = known_.find(picture.identity);
      if (known != known_.end()) return AddressAgain(known->second);
    }
    const PictureData data = picture.source->Read();
    const TypeRow* const row = typeRowOf(data.type);
    std::string address = row ? Store(data, *row) : std::string();
    if (address.empty()) {
      warn(warnings_, WarningCode::kPicture);
    } else {
      ++pictures_;
    }
    std::string& kept = picture.identity == 0 ? last_ : known_[picture.identity];
    kept = std::move(address);
    return kept;
  }

 private:
  /// Empty for a picture that is damaged.
  virtual std::string Store(const PictureData& picture, const TypeRow& row) = 0;
  virtual std::string_view AddressAgain(const std::string& address) { return address; }

  Warnings* const warnings_;
  std::unordered_map<uint32_t, std::string> known_;
  std::string last_;
};

/// A folder's name as it stands in an address.
std::string uriOf(std::string_view name) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string uri;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z' && byte < 0x80;
    if (isPlain || (byte >= '0' && byte <= '9') ||
        std::string_view("-._~/").find(c) != std::string_view::npos) {
      uri += c;
    } else {
      uri += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return uri;
}

class PictureFiles final : public StoredPictures {
 public:
  PictureFiles(OutputFiles& files, std::string folder, Warnings* warnings, uint64_t mostBytes)
      : StoredPictures(warnings), files_(files), folder_(std::move(folder)), left_(mostBytes) {}

 private:
  /// One that turns out to be damaged leaves its file as far as it came, with no address.
  std::string Store(const PictureData& picture, const TypeRow& row) override {
    DsWriteArchive file(files_);
    const std::string name = "picture-" + std::to_string(++count_) + "." + std::string(row.extension);
    bool isOpen = false;
    const bool isWhole = pictureParts(picture, [&](ByteView part) {
      if (part.size() > left_) return false;
      left_ -= part.size();
      if (!isOpen) isOpen = file.open((folder_ + "/" + name).c_str());
      if (isOpen) file.put(part.data(), static_cast<unsigned>(part.size()));
      return isOpen;
    });
    if (!isOpen) --count_;
    return isWhole && isOpen ? uriOf(folder_) + "/" + name : std::string();
  }

  OutputFiles& files_;
  const std::string folder_;
  uint64_t count_ = 0;
  uint64_t left_;  ///< bytes that may still be stored
};

class EmbeddedPictures final : public StoredPictures {
 public:
  EmbeddedPictures(uint64_t mostBytes, Warnings* warnings) : StoredPictures(warnings), left_(mostBytes) {}

 private:
  std::string Store(const PictureData& picture, const TypeRow& row) override {
    std::string address = "data:" + std::string(row.mediaType) + ";base64,";
    Base64 encoder;
    const bool isWhole = pictureParts(picture, [&](ByteView part) {
      if (part.size() / 3 * 4 + address.size() > left_) return false;
      encoder.Append(part, address);
      return true;
    });
    encoder.Finish(address);
    if (!isWhole || address.size() > left_) return {};
    left_ -= address.size();
    return address;
  }
  /// Shown again, it takes its room again.
  std::string_view AddressAgain(const std::string& address) override {
    if (address.size() > left_) return {};
    left_ -= address.size();
    return address;
  }

  uint64_t left_;
};

/// Embedded when all else is written.
class HeldPictures final : public StoredPictures {
 public:
  HeldPictures(uint64_t mostBytes, Warnings* warnings) : StoredPictures(warnings), left_(mostBytes) {}

  void WriteHeld(uint64_t number, Utf8Output& out) const override {
    constexpr size_t kPart = 0x3000;
    if (number >= held_.size()) return;
    const ByteView bytes(held_[number].data(), held_[number].size());
    Base64 encoder;
    std::string digits;
    for (size_t at = 0; at < bytes.size(); at += kPart) {
      digits.clear();
      encoder.Append(bytes.part(at, std::min(kPart, bytes.size() - at)), digits);
      out.Put(digits);
    }
    digits.clear();
    encoder.Finish(digits);
    out.Put(digits);
  }

 private:
  std::string Store(const PictureData& picture, const TypeRow& row) override {
    std::string address = "data:" + std::string(row.mediaType) + ";base64,";
    if (!isForBrowsers(picture.type)) return address;
    std::vector<uint8_t> bytes;
    if (!picture.isDeflated) bytes.reserve(picture.bytes.size() + 64);
    const bool isWhole = pictureParts(picture, [&](ByteView part) {
      if ((bytes.size() + part.size()) / 3 * 4 > left_) return false;
      bytes.insert(bytes.end(), part.data(), part.data() + part.size());
      return true;
    });
    if (!isWhole || !Take(bytes.size())) return {};
    address += kHeldMark + std::to_string(held_.size()) + kHeldMark;
    held_.push_back(std::move(bytes));
    return address;
  }
  /// Shown again, it takes its room again.
  std::string_view AddressAgain(const std::string& address) override {
    const size_t mark = address.find(kHeldMark);
    if (mark == std::string::npos) return address;
    const uint64_t number = std::strtoull(address.c_str() + mark + 1, nullptr, 10);
    return Take(held_[number].size()) ? address : std::string_view();
  }
  bool Take(uint64_t bytes) {
    const uint64_t digits = (bytes + 2) / 3 * 4;
    if (digits > left_) return false;
    left_ -= digits;
    return true;
  }

  std::vector<std::vector<uint8_t>> held_;
  uint64_t left_;
};

class NoPictures final : public PictureOutput {
 public:
  explicit NoPictures(Warnings* warnings) : warnings_(warnings) {}

  std::string_view AddressOf(const PictureFacts& picture) override {
    if (picture.source) warn(warnings_, WarningCode::kPicturesOff);
    return {};
  }

 private:
  Warnings* const warnings_;
};

}  // namespace

std::unique_ptr<PictureOutput> makePictureFiles(OutputFiles& files, std::string folder, Warnings* warnings,
                                                uint64_t mostBytes) {
  return std::make_unique<PictureFiles>(files, std::move(folder), warnings, mostBytes);
}

std::unique_ptr<PictureOutput> makeEmbeddedPictures(uint64_t mostBytes, Warnings* warnings) {
  return std::make_unique<EmbeddedPictures>(mostBytes, warnings);
}

std::unique_ptr<PictureOutput> makeHeldPictures(uint64_t mostBytes, Warnings* warnings) {
  return std::make_unique<HeldPictures>(mostBytes, warnings);
}

std::unique_ptr<PictureOutput> makeNoPictures(Warnings* warnings) {
  return std::make_unique<NoPictures>(warnings);
}

bool isShownByBrowsers(std::string_view address) {
  for (const std::string_view other : {"data:image/emf", "data:image/wmf", "data:image/x-pict"}) {
    if (address.starts_with(other)) return false;
  }
  return address.starts_with("data:") ||
         (!address.ends_with(".emf") && !address.ends_with(".wmf") && !address.ends_with(".pict"));
}

}  // namespace pagerex
