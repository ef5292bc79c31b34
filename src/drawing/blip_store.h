#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "drawing/escher_records.h"
#include "storage/byte_archives.h"

namespace mso_escher {

/// Kind of a picture: the type of its record, counted from the first blip type.
enum MSOBLIPTYPE : uint32_t {
  kBlipError = 0,
  kBlipUnknown = 1,
  kBlipEmf = 2,
  kBlipWmf = 3,
  kBlipPict = 4,
  kBlipJpeg = 5,
  kBlipPng = 6,
  kBlipDib = 7,
};

/// What a picture type has in its record: bitmaps a tag byte behind their identities, metafiles a header of
/// 34 bytes.
struct BlipSignature {
  uint16_t signature;
  uint8_t kind;
  static constexpr uint8_t kBitmap = 0xFE;
};
BlipSignature GetBlipSignature(unsigned int type);

constexpr size_t kMetafileHeaderSize = 34;

/// A picture, in place in the bytes of its record; lives in the document's allocator.
struct MsoROBlip {
  uint32_t type = 0;        ///< MSOBLIPTYPE
  ByteView data;            ///< the image
  uint32_t refs = 0;        ///< how often the drawings use it, as the store says
  ByteView metafileHeader;  ///< empty for a bitmap; u32 at 0: size when inflated; u8 at 32: 0 for deflate
};

/// An entry of the blip store (FBSE record body).
struct _FBSE {
  static constexpr size_t kUid = 2;
  static constexpr size_t kUidSize = 16;
  static constexpr size_t kSize = 20;
  static constexpr size_t kRefs = 24;
  static constexpr size_t kDelayOffset = 28;
  static constexpr size_t kBlip = 36;  ///< the embedded blip, whether or not the entry has a name
};

/// The pictures of the drawings. Those that lie in the delay stream ("WordDocument") are read on demand.
class MsoROBlipStore {
 public:
  void Init(const MsoRORecInfo& container, ChainAllocator& allocator);

  unsigned int GetCount() const { return static_cast<unsigned int>(entries_.size()); }
  /// Body of entry i, zero-based; empty outside the store.
  ByteView GetFBSE(unsigned int i) const;
  /// The picture that is embedded in entry i; null if there is none or if it cannot be decoded.
  const MsoROBlip* GetBlipNoDelayStrm(unsigned int i) const;
  /// The picture that entry i keeps in the delay stream; null if it cannot be read.
  const MsoROBlip* GetBlipWithDelayStrm(unsigned int i, DsMemReadArchive* archive) const;

 private:
  const MsoROBlip* __GetBlip(ByteView fbse, const MsoRORecInfo& record) const;
  const MsoROBlip* __GetDelayBlip(ByteView fbse, DsMemReadArchive& archive) const;

  std::vector<ByteView> entries_;
  mutable std::vector<const MsoROBlip*> blips_;  ///< those that were asked for
  mutable uint64_t delayBytes_ = 0;              ///< read from the delay stream so far
  ChainAllocator* allocator_ = nullptr;
};

}  // namespace mso_escher

/// A picture behind an inline shape.
struct KDRBseImage {
  ByteView blipRecord;      ///< from the header of the blip's record on
  ByteView uid;             ///< from its first identity on
  ByteView metafileHeader;  ///< empty for a bitmap
  ByteView data;            ///< the image
};

/// The blip list that trails an inline shape: store entries with their headers, back to back.
class KDRBseTable {
 public:
  void Init(ByteView buffer);
  unsigned int Count() const { return static_cast<unsigned int>(images_.size()); }
  /// The bytes from record i on; empty outside the table. Records behind the first are looked for further on
  /// than `Init` found them: readers of the output rely on what comes of it.
  ByteView Item(unsigned int i) const;
  /// Image i; null outside the table.
  const KDRBseImage* ImageItem(unsigned int i) const { return i < images_.size() ? &images_[i] : nullptr; }

 private:
  ByteView buffer_;
  std::vector<KDRBseImage> images_;
};
