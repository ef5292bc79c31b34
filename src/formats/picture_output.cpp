#include "formats/picture_output.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/base64.h"
#include "base/stdio_archive.h"
#include "formats/picture_bytes.h"
#include "pictures/web_picture.h"

namespace pagerex {
namespace {

/// What a picture is called that stays as it is, in the order of PictureKind.
struct OriginalKind {
  std::string_view extension, mediaType;
};
constexpr OriginalKind kOriginals[] = {
    {"", ""},
    {"emf", "image/emf"},
    {"wmf", "image/wmf"},
    {"pict", "image/x-pict"},
    {"dib", "image/bmp"},
    {"bmp", "image/bmp"},
    {"tif", "image/tiff"},
    {"png", "image/png"},
    {"jpg", "image/jpeg"},
    {"gif", "image/gif"},
};

/// What the document says of a picture that cannot be known by its bytes.
struct ToldKind {
  PictureType type;
  PictureKind kind;
};
constexpr ToldKind kToldKinds[] = {
    {PictureType::kEmf, PictureKind::kEmf},   {PictureType::kWmf, PictureKind::kWmf},
    {PictureType::kPict, PictureKind::kPict}, {PictureType::kJpeg, PictureKind::kJpeg},
    {PictureType::kPng, PictureKind::kPng},   {PictureType::kDib, PictureKind::kDib},
    {PictureType::kTiff, PictureKind::kTiff},
};

OriginalKind originalKindOf(PictureKind kind, PictureType told) {
  for (const ToldKind& row : kToldKinds) {
    if (kind == PictureKind::kUnknown && row.type == told) kind = row.kind;
  }
  return kOriginals[static_cast<size_t>(kind)];
}

/// A picture on its way, as what it is to be stored.
struct Conversion {
  ByteView bytes;
  PictureFrame frame;
  std::string_view extension, mediaType;
  bool isOriginal;

  PictureResult WriteTo(PictureSink& sink) const {
    if (!isOriginal) return writeWebPicture(bytes, frame, sink);
    return sink.Put(bytes) ? PictureResult::kWhole : PictureResult::kRefused;
  }
};

bool isThere(PictureResult result) {
  return result == PictureResult::kWhole || result == PictureResult::kInPart;
}

/// What is common to all: each picture once, whatever way it goes.
class StoredPictures : public PictureOutput {
 public:
  StoredPictures(Warnings* warnings, bool keepsOriginals)
      : warnings_(warnings), keepsOriginals_(keepsOriginals) {}

  PictureAddress AddressOf(const PictureFacts& picture) final {
    if (!picture.source) return {};
    if (picture.identity != 0) {
      const auto known = known_.find(picture.identity);
      if (known != known_.end()) {
        const std::string_view again = AddressAgain(known->second.uri);
        return {again, known->second.isShown && !again.empty()};
      }
    }
    Stored stored = Convert(picture);
    if (!stored.uri.empty()) ++pictures_;
    Stored& kept = picture.identity == 0 ? last_ : known_[picture.identity];
    kept = std::move(stored);
    return {kept.uri, kept.isShown};
  }

 private:
  struct Stored {
    std::string uri;
    bool isShown = false;
  };

  Stored Convert(const PictureFacts& picture) {
    const PictureData data = picture.source->Read();
    std::vector<uint8_t> room;
    bool isWhole = true;
    const ByteView bytes = bytesOf(data, room, isWhole);
    const PictureKind kind = kindOfPicture(bytes);
    const WebKind web = webKindOf(kind);
    Stored stored;
    PictureResult result = PictureResult::kNothing;
    stored.uri = Store({bytes, frameOf(picture), web.extension, web.mediaType, false}, result);
    stored.isShown = isThere(result);
    if (result != PictureResult::kWhole || !isWhole) warn(warnings_, WarningCode::kPicture);
    if (result != PictureResult::kNothing || !keepsOriginals_ || !isWhole || bytes.empty()) return stored;
    const OriginalKind original = originalKindOf(kind, data.type);
    if (original.extension.empty()) return stored;
    stored.uri = Store({bytes, {}, original.extension, original.mediaType, true}, result);
    return stored;
  }

  /// Empty where nothing came of it.
  virtual std::string Store(const Conversion& picture, PictureResult& result) = 0;
  virtual std::string_view AddressAgain(const std::string& address) { return address; }

  Warnings* const warnings_;
  const bool keepsOriginals_;
  std::unordered_map<uint32_t, Stored> known_;
  Stored last_;
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

class FileSink final : public PictureSink {
 public:
  FileSink(OutputFiles& files, std::string path, uint64_t& left)
      : file_(files), path_(std::move(path)), left_(left) {}

  bool Put(ByteView bytes) override {
    if (bytes.size() > left_) return false;
    left_ -= bytes.size();
    if (!isOpen_) isOpen_ = file_.open(path_.c_str());
    if (isOpen_) file_.put(bytes.data(), static_cast<unsigned>(bytes.size()));
    return isOpen_;
  }
  bool isOpen() const { return isOpen_; }

 private:
  DsWriteArchive file_;
  const std::string path_;
  uint64_t& left_;
  bool isOpen_ = false;
};

class PictureFiles final : public StoredPictures {
 public:
  PictureFiles(OutputFiles& files, std::string folder, Warnings* warnings, uint64_t mostBytes)
      : StoredPictures(warnings, true), files_(files), folder_(std::move(folder)), left_(mostBytes) {}

 private:
  /// One for which the room ends leaves its file as far as it came, with no address.
  std::string Store(const Conversion& picture, PictureResult& result) override {
    const std::string name = "/picture-" + std::to_string(count_ + 1) + "." + std::string(picture.extension);
    FileSink file(files_, folder_ + name, left_);
    result = picture.WriteTo(file);
    if (file.isOpen()) ++count_;
    return isThere(result) && file.isOpen() ? uriOf(folder_) + name : std::string();
  }

  OutputFiles& files_;
  const std::string folder_;
  uint64_t count_ = 0;
  uint64_t left_;  ///< bytes that may still be stored
};

class EncodingSink final : public PictureSink {
 public:
  EncodingSink(std::string& address, uint64_t most) : address_(address), most_(most) {}

  bool Put(ByteView bytes) override {
    if (bytes.size() / 3 * 4 + address_.size() > most_) return false;
    encoder_.Append(bytes, address_);
    return true;
  }
  void Finish() { encoder_.Finish(address_); }

 private:
  Base64 encoder_;
  std::string& address_;
  const uint64_t most_;
};

std::string dataAddress(const Conversion& picture) {
  return "data:" + std::string(picture.mediaType) + ";base64,";
}

class EmbeddedPictures final : public StoredPictures {
 public:
  EmbeddedPictures(uint64_t mostBytes, Warnings* warnings)
      : StoredPictures(warnings, true), left_(mostBytes) {}

 private:
  std::string Store(const Conversion& picture, PictureResult& result) override {
    std::string address = dataAddress(picture);
    EncodingSink encoder(address, left_);
    result = picture.WriteTo(encoder);
    encoder.Finish();
    if (address.size() > left_) result = PictureResult::kRefused;
    if (!isThere(result)) return {};
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

uint64_t base64Digits(uint64_t bytes) {
  return (bytes + 2) / 3 * 4;
}

struct DeflateEnd {
  void operator()(z_stream* stream) const { deflateEnd(stream); }
};

/// Holds the bytes of a picture; those of text deflated.
class HoldingSink final : public PictureSink {
 public:
  HoldingSink(bool deflates, uint64_t mostDigits) : mostDigits_(mostDigits) {
    constexpr int kWindowBits = 13, kMemory = 6;  // of 64 KB together
    if (!deflates) return;
    if (deflateInit2(&stream_, 1, Z_DEFLATED, kWindowBits, kMemory, Z_DEFAULT_STRATEGY) != Z_OK)
      throw std::bad_alloc();
    end_.reset(&stream_);
  }

  bool Put(ByteView bytes) override {
    length_ += bytes.size();
    if (base64Digits(length_) > mostDigits_) return false;
    end_ ? Deflate(bytes, Z_NO_FLUSH) : appendTo(held_, bytes);
    return true;
  }
  std::vector<uint8_t> Finish() {
    if (end_) Deflate({}, Z_FINISH);
    held_.shrink_to_fit();
    return std::move(held_);
  }
  uint64_t length() const { return length_; }

 private:
  void Deflate(ByteView bytes, int flush) {
    uint8_t part[0x1000];
    stream_.next_in = const_cast<Bytef*>(bytes.data());
    stream_.avail_in = static_cast<uInt>(bytes.size());
    do {
      stream_.next_out = part;
      stream_.avail_out = sizeof(part);
      deflate(&stream_, flush);
      appendTo(held_, ByteView(part, sizeof(part) - stream_.avail_out));
    } while (stream_.avail_out == 0);
  }

  const uint64_t mostDigits_;
  uint64_t length_ = 0;
  std::vector<uint8_t> held_;
  z_stream stream_{};
  std::unique_ptr<z_stream, DeflateEnd> end_;  ///< null where nothing is deflated
};

/// Embedded when all else is written.
class HeldPictures final : public StoredPictures {
 public:
  HeldPictures(uint64_t mostBytes, Warnings* warnings) : StoredPictures(warnings, false), left_(mostBytes) {}

  void WriteHeld(uint64_t number, Utf8Output& out) const override {
    constexpr size_t kPart = 0x3000;
    if (number >= held_.size()) return;
    const Held& picture = held_[number];
    const ByteView bytes(picture.bytes.data(), picture.bytes.size());
    Base64 encoder;
    std::string digits;
    const auto put = [&](ByteView part) {
      digits.clear();
      encoder.Append(part, digits);
      out.Put(digits);
      return true;
    };
    if (picture.isDeflated) {
      inflatePicture(bytes, put);
    } else {
      for (size_t at = 0; at < bytes.size(); at += kPart) put(bytes.part(at, kPart));
    }
    digits.clear();
    encoder.Finish(digits);
    out.Put(digits);
  }

 private:
  struct Held {
    std::vector<uint8_t> bytes;
    uint64_t length;  ///< of the picture itself
    bool isDeflated;
  };

  std::string Store(const Conversion& picture, PictureResult& result) override {
    const bool isText = picture.extension == "svg";
    HoldingSink holder(isText, left_);
    result = picture.WriteTo(holder);
    if (!isThere(result) || !Take(holder.length())) return {};
    const std::string number = std::to_string(held_.size());
    held_.push_back({holder.Finish(), holder.length(), isText});
    return dataAddress(picture) + kHeldMark + number + kHeldMark;
  }
  /// Shown again, it takes its room again.
  std::string_view AddressAgain(const std::string& address) override {
    if (address.empty()) return {};
    const uint64_t number = std::strtoull(address.c_str() + address.find(kHeldMark) + 1, nullptr, 10);
    return Take(held_[number].length) ? address : std::string_view();
  }
  bool Take(uint64_t bytes) {
    if (base64Digits(bytes) > left_) return false;
    left_ -= base64Digits(bytes);
    return true;
  }

  std::vector<Held> held_;
  uint64_t left_;
};

class NoPictures final : public PictureOutput {
 public:
  explicit NoPictures(Warnings* warnings) : warnings_(warnings) {}

  PictureAddress AddressOf(const PictureFacts& picture) override {
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

}  // namespace pagerex
