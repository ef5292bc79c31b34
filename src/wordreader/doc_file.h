#pragma once

#include <array>
#include <cstdint>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "base/status.h"
#include "base/warnings.h"
#include "storage/byte_archives.h"
#include "wordreader/mso_word.h"
#include "wordreader/table_record.h"

struct IStorage;
struct IStream;

/// Reads up to `size` bytes from where `archive` stands. They live in `allocator`, at an address divisible by
/// 4. The view is shorter than `size` when fewer bytes are there; no more than that is allocated.
ByteView ReadBytes(DsMemReadArchive& archive, uint32_t size, ChainAllocator& allocator);

/// The file information block at the start of "WordDocument": where each sub-document begins and ends.
class KDRFib {
 public:
  using SubDocLengths = std::array<uint32_t, mso_word::kSubDocCount>;

  /// Character positions in the text of all sub-documents, which follow each other in the order of their
  /// types.
  uint32_t GetSubDocCPBegin(mso_word::SUBDOC_TYPE type) const { return subDocStarts_[type]; }
  uint32_t GetSubDocCPEnd(mso_word::SUBDOC_TYPE type) const { return subDocStarts_[type + 1]; }
  /// Lengths in characters (rglw 3 to 10); what the file does not hold is 0.
  const SubDocLengths& GetSubDocLengths() const { return subDocLengths_; }

 protected:
  /// Reads `csw`, `rgsw`, `cslw` and `rglw`, which follow the header. What is missing stays empty.
  void ReadCounts(DsMemReadArchive& word, ChainAllocator& allocator);
  /// Reads what stands between the array of pairs and the low 16 bits of the header's `fcMin`.
  void ReadTail(DsMemReadArchive& word, ChainAllocator& allocator);
  void SetSubDocLengths(const SubDocLengths& lengths);

  mso_word::FIB_HEADER header_{};
  uint16_t csw_ = 0;
  uint16_t cslw_ = 0;
  ByteView rgsw_;
  ByteView rglw_;
  ByteView tail_;

 private:
  SubDocLengths subDocLengths_{};
  std::array<uint32_t, mso_word::kSubDocCount + 1> subDocStarts_{};
};

/// The table stream and the places of the tables in it.
class KDRTableStrm : public KDRFib {
 public:
  /// Reads the FIB from the start of `word` as far as the header. Flags tell the name of the table stream.
  const mso_word::FIB_HEADER& ReadHeader(DsMemReadArchive& word);
  /// Takes the table stream and reads the rest of the FIB from `word`, which stands behind the header.
  /// kReadFault if the array of pairs is cut short.
  Status init(IStream* table, DsMemReadArchive& word, ChainAllocator& allocator);
  void close();

  /// Where the table `index` (FIBFCLCB) lies: kOk; kNothing if the FIB does not know it or its length is not
  /// positive.
  Status getRecInfo(uint32_t index, mso_word::FCLCB* out) const;
  /// Reads `record.lcb` bytes at `record.fc` into `buffer`; kNothing on a short read, with the bytes that
  /// arrived. Throws an int if `record.fc` lies outside the stream.
  Status getRecord(const mso_word::FCLCB& record, void* buffer) const;
  /// Reads the table `index` into `allocator`. On a short read kNothing: the view is cut, so that what is
  /// missing reads as zero. kNothing, and no bytes, for a table that overlaps others too often.
  Status getRecord(KDRTableRecord* out, uint32_t index, ChainAllocator& allocator) const;
  void SetWarnings(pagerex::Warnings* warnings) { warnings_ = warnings; }
  pagerex::Warnings* GetWarnings() const { return warnings_; }

  /// Bytes that the stream holds.
  uint64_t bytes() const { return table_.bytesHeld(); }
  /// Bytes that can be read from `position` on at most. Throws an int if it lies outside the stream.
  uint32_t bytesLeftAt(uint32_t position) const;

 private:
  Status ReadPairs(DsMemReadArchive& word, ChainAllocator& allocator);

  mutable DsMemReadArchive table_;
  mutable uint64_t bytesLeft_ = 0;  ///< that may still be read into tables
  uint16_t cfclcb_ = 0;
  ByteView rgfclcb_;
  pagerex::Warnings* warnings_ = nullptr;
};

/// The streams of an open document.
class KDRDocFile {
 public:
  KDRDocFile() = default;
  KDRDocFile(const KDRDocFile&) = delete;
  KDRDocFile& operator=(const KDRDocFile&) = delete;
  ~KDRDocFile() { close(); }

  /// Holds `storage` and opens "WordDocument" and the table stream; the FIB's arrays go to `allocator`.
  /// kInvalidArgument for a null storage, kStreamNotFound, kEncrypted, kReadFault.
  Status open(IStorage* storage, ChainAllocator& allocator);
  void close();

  /// Where is told what of the streams cannot be read. Not owned, may be null.
  void SetWarnings(pagerex::Warnings* warnings) { table_.SetWarnings(warnings); }
  pagerex::Warnings* GetWarnings() const { return table_.GetWarnings(); }

  const KDRTableStrm& getTableStrm() const { return table_; }
  DsMemReadArchive& getWordDocumentStrm() const { return word_; }
  /// The stream "Data", opened on first use; not `good()` if the document has none.
  DsMemReadArchive& getDataStrm() const;

 private:
  /// For a stream at its beginning: warns where the file has fewer bytes than it claims for it.
  void NoteShortStream(const DsMemReadArchive& stream, const char* what) const;

  IStorage* storage_ = nullptr;
  KDRTableStrm table_;
  mutable DsMemReadArchive word_;
  mutable DsMemReadArchive data_;
};
