#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "drawing/escher_records.h"
#include "drawing/stream_pieces.h"
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
  kBlipTiff = 17,
  kBlipCmykJpeg = 18,
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

/// Takes a blip's record apart, but for `refs`. False for a kind that cannot be decoded.
bool ReadBlip(const MsoRORecInfo& record, MsoROBlip& blip);

/// An entry of the blip store (FBSE record body).
struct _FBSE {
  static constexpr size_t kUid = 2;
  static constexpr size_t kUidSize = 16;
  static constexpr size_t kSize = 20;
  static constexpr size_t kRefs = 24;
  static constexpr size_t kDelayOffset = 28;
  static constexpr size_t kBlip = 36;  ///< the embedded blip, whether or not the entry has a name
};

/// The pictures of the drawings. Each is decoded when it is first asked for; those that lie in the delay
/// stream ("WordDocument") are read only then.
class MsoROBlipStore {
 public:
  /// Takes the entries of a blip store container.
  void Init(const MsoRORecInfo& container, ChainAllocator& allocator);

  unsigned int GetCount() const { return static_cast<unsigned int>(entries_.size()); }
  /// Body of entry i, zero-based; empty outside the store.
  ByteView GetFBSE(unsigned int i) const { return i < GetCount() ? entries_[i].fbse : ByteView(); }
  /// The picture that is embedded in entry i; null if there is none or if it cannot be decoded.
  const MsoROBlip* GetBlipNoDelayStrm(unsigned int i) const;
  /// The picture that entry i keeps in the delay stream; null if it cannot be read.
  const MsoROBlip* GetBlipWithDelayStrm(unsigned int i, DsMemReadArchive* archive) const;

 private:
  struct Entry {
    ByteView fbse;
    const MsoROBlip* blip = nullptr;  ///< once it was asked for
  };

  const MsoROBlip* __GetBlip(ByteView fbse, const MsoRORecInfo& record) const;
  const MsoROBlip* __GetDelayBlip(ByteView fbse, DsMemReadArchive& archive) const;
  ByteView DelayRecord(uint32_t offset, DsMemReadArchive& archive) const;

  mutable std::vector<Entry> entries_;
  mutable std::optional<StreamPieces> delayed_;
  mutable std::unordered_map<uint32_t, ByteView> delayRecords_;  ///< those that were read, by their offsets
  ChainAllocator* allocator_ = nullptr;
};

}  // namespace mso_escher
