#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "base/status.h"
#include "base/warnings.h"
#include "wordreader/document_summary.h"
#include "wordreader/mso_word.h"
#include "wordreader/stream_reader.h"

struct IStorage;

namespace pagerex {

/// The streams of a document, its FIB and the tables that it names, as forgiving as can be: names of streams
/// in any case, streams as long as their chains, tables as far as they are there. What is wrong is told as a
/// warning. Throws std::bad_alloc alone.
class WordFile {
 public:
  using StoryStarts = std::array<uint32_t, mso_word::kSubDocCount + 1>;

  WordFile() = default;
  WordFile(const WordFile&) = delete;
  WordFile& operator=(const WordFile&) = delete;
  ~WordFile() { Close(); }

  /// Holds `storage`. `budget` and `warnings` may be null and are not owned. kStreamNotFound, kEncrypted, or
  /// kReadFault for a FIB that is cut short.
  Status Open(IStorage* storage, MemoryBudget* budget, Warnings* warnings);
  void Close();

  /// The table with this FIB index, cut to what is there; empty for none. Valid until the file is closed, and
  /// read but once.
  ByteView Table(mso_word::FIBFCLCB index);
  /// What follows that table in the stream, `most` bytes at most.
  ByteView BehindTable(mso_word::FIBFCLCB index, uint32_t most);

  /// Where the text of each story begins, in character positions; the last number is the end of all.
  const StoryStarts& storyStarts() const { return storyStarts_; }
  /// Bytes of the text by the FIB, for files without a piece table.
  uint32_t textStart() const { return textStart_; }
  uint32_t textEnd() const { return textEnd_; }

  /// Attaches one more reader to "WordDocument", "Data", or a stream by its name. It is not good without.
  void ReadText(StreamReader& reader, uint32_t window) { Attach(text_, reader, window); }
  void ReadData(StreamReader& reader, uint32_t window);
  /// The same two for those who read them as archives.
  void ShareText(DsMemReadArchive& archive) { archive.attach(text_); }
  void ShareData(DsMemReadArchive& archive);
  /// All bytes of a stream, `most` at most; empty without.
  ByteView WholeStream(const wchar_t* name, uint32_t most);
  /// The same of an embedded object, whose storage "_NUMBER" stands in "ObjectPool".
  ByteView ObjectStream(uint32_t number, const wchar_t* name, uint32_t most);
  /// What the streams of its summary say; read when first asked for.
  const DocumentSummary& Summary();

  /// Whether tables lie behind what the entry of their stream claims.
  bool wentBeyondClaim() const { return wentBeyondClaim_; }

  ChainAllocator& allocator() { return allocator_; }
  Warnings* warnings() const { return warnings_; }
  /// Bytes that the two main streams hold together: what limits are measured by.
  uint64_t bytesHeld() const { return uint64_t{head_.size()} + tables_.size(); }

 private:
  Status OpenTables(uint16_t flags);
  IStream* OpenStream(const wchar_t* name);
  /// With `asClaimed` no further than the stream says that it reaches, though its last sector may.
  ByteView KeepAll(IStream* stream, uint32_t most, bool asClaimed);
  IStream* DataStream();
  void ReadFib(ByteView fib);
  ByteView ReadTable(mso_word::FIBFCLCB index);
  mso_word::FCLCB Place(mso_word::FIBFCLCB index) const;
  void Attach(IStream* stream, StreamReader& reader, uint32_t window);

  IStorage* storage_ = nullptr;
  IStream* text_ = nullptr;
  IStream* tableStream_ = nullptr;
  IStream* data_ = nullptr;
  ChainAllocator allocator_;
  Warnings* warnings_ = nullptr;
  StreamReader head_, tables_;
  ByteView pairs_;
  StoryStarts storyStarts_{};
  uint32_t textStart_ = 0, textEnd_ = 0;
  uint64_t tableBytesLeft_ = 0;  ///< that may still be copied
  std::vector<std::pair<mso_word::FIBFCLCB, ByteView>> tablesRead_;
  bool wentBeyondClaim_ = false;
  std::optional<DocumentSummary> summary_;
};

}  // namespace pagerex
