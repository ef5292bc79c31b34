#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/bytes.h"

namespace support {

/// A page number with a meaning of its own, in chains and in the list of FAT pages.
constexpr uint32_t kFreePage = 0xFFFFFFFF;
constexpr uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr uint32_t kFatPage = 0xFFFFFFFD;
constexpr uint32_t kMasterFatPage = 0xFFFFFFFC;

/// Offsets of the header's fields, for damage.
enum CompoundHeader : uint32_t {
  kHeaderSignature = 0,
  kHeaderPageShift = 30,
  kHeaderTinyPageShift = 32,
  kHeaderFirstDirectoryPage = 48,
  kHeaderTinyCutoff = 56,
  kHeaderFirstTinyFatPage = 60,
  kHeaderFirstMasterFatPage = 68,
  kHeaderMasterFatPageCount = 72,
  kHeaderFatPages = 76,  ///< 109 page numbers
};

/// Offsets of a directory entry's fields, for damage. Entries are 128 bytes.
enum CompoundEntry : uint32_t {
  kEntryName = 0,
  kEntryNameBytes = 64,
  kEntryType = 66,  ///< 1 storage, 2 stream, 5 root
  kEntryLeft = 68,
  kEntryRight = 72,
  kEntryChild = 76,
  kEntryStartPage = 116,
  kEntrySize = 120,
};

/// The bytes of a compound file together with where its parts lie, so that a test can damage one of them:
///
///     CompoundFile file = CompoundFileWriter().stream(u"Big", Bytes(9000)).build();
///     file.setFat(file.startPage(u"Big"), file.startPage(u"Big"));   // a chain that points at itself
///     file.setEntry(u"Big", kEntrySize, uint32_t{0xFFFFFFFF});
///
/// Setters patch in place and throw std::out_of_range for what the file does not hold.
class CompoundFile {
 public:
  const Bytes& bytes() const { return bytes_; }
  void save(const std::string& path) const;

  /// Where a page begins in the file.
  size_t pageOffset(uint32_t page) const { return headerBytes_ + size_t{page} * pageBytes_; }
  /// Number of a directory entry by its path; the root is u"" and 0.
  uint32_t entryIndex(std::u16string_view path) const;
  size_t entryOffset(uint32_t index) const;
  /// First page (or tiny page) of a stream; of the root, that of the tiny pool.
  uint32_t startPage(std::u16string_view path) const;
  uint32_t fat(uint32_t page) const;
  uint32_t entryCount() const { return static_cast<uint32_t>(entries_.size()); }
  uint32_t fatPageCount() const { return static_cast<uint32_t>(fatPages_.size()); }
  uint32_t masterFatPageCount() const { return static_cast<uint32_t>(masterFatPages_.size()); }

  template <class T>
  CompoundFile& setHeader(CompoundHeader field, T value) {
    return patch(field, value);
  }
  /// Page number i in the header's list of FAT pages (0 to 108).
  CompoundFile& setFatPage(uint32_t i, uint32_t page) { return patch(kHeaderFatPages + size_t{i} * 4, page); }
  template <class T>
  CompoundFile& setEntry(uint32_t index, CompoundEntry field, T value) {
    return patch(entryOffset(index) + field, value);
  }
  template <class T>
  CompoundFile& setEntry(std::u16string_view path, CompoundEntry field, T value) {
    return setEntry(entryIndex(path), field, value);
  }
  CompoundFile& setFat(uint32_t page, uint32_t next) { return patch(fatOffset(page), next); }
  CompoundFile& setTinyFat(uint32_t tinyPage, uint32_t next) { return patch(tinyFatOffset(tinyPage), next); }
  /// Any bytes or any integer, at an offset of the file.
  CompoundFile& patch(size_t offset, const Bytes& data);
  template <class T>
  CompoundFile& patch(size_t offset, T value) {
    patchInteger(bytes_, offset, value);
    return *this;
  }
  CompoundFile& truncate(size_t size);

 private:
  friend class CompoundFileBuilder;
  size_t fatOffset(uint32_t page) const;
  size_t tinyFatOffset(uint32_t tinyPage) const;

  Bytes bytes_;
  size_t headerBytes_ = 512;
  uint32_t pageBytes_ = 512;
  std::vector<uint32_t> fatPages_;
  std::vector<uint32_t> masterFatPages_;
  std::vector<uint32_t> directoryPages_;
  std::vector<uint32_t> tinyFatPages_;
  std::vector<std::u16string> entries_;  // paths, in the order of the directory
};

/// Shape of the sibling tree of a storage.
enum class SiblingTree {
  kBalanced,    ///< as a file's author would write it: ordered, balanced, coloured
  kRightChain,  ///< the same order, each entry the right sibling of the one before
  kLeftChain,   ///< the reverse order down the left siblings
};

/// Builds a compound file from streams named by path: a name may hold storages, `u"ObjectPool/_1/Data"`.
///
///     CompoundFileWriter().stream(u"WordDocument", word).stream(u"1Table", table).save(path);
///
/// Pages lie in the order FAT, master FAT, directory, tiny FAT, tiny pool, streams (each kind as declared).
class CompoundFileWriter {
 public:
  struct Options {
    uint32_t pageShift = 9;      ///< 9 is 512 bytes, 12 is 4096
    uint32_t tinyPageShift = 6;  ///< 64 bytes
    uint32_t tinyCutoff = 4096;  ///< streams shorter than this lie in the tiny pool
    /// Page 0 follows the 512 bytes of the header, whatever the page size: where our reader looks. True pads
    /// the header to a whole page, as the published layout of files with 4096-byte pages has it.
    bool headerFillsPage = false;
    SiblingTree tree = SiblingTree::kBalanced;
    /// Every chain runs through the file backwards, so that its order is the FAT's and not the file's.
    bool reverseChains = false;
  };

  CompoundFileWriter() = default;
  explicit CompoundFileWriter(const Options& options) : options_(options) {}

  /// Adds a stream and the storages on its way. A name has at most 32 units: one of 32 has no terminator.
  CompoundFileWriter& stream(std::u16string_view path, Bytes content);
  /// Adds a storage, which is needed only if it shall be empty.
  CompoundFileWriter& storage(std::u16string_view path);

  CompoundFile build() const;
  Bytes bytes() const { return build().bytes(); }
  void save(const std::string& path) const { build().save(path); }

 private:
  friend class CompoundFileBuilder;
  struct Node {
    std::u16string name;
    bool isStream = false;
    Bytes content;
    std::vector<uint32_t> children;
  };
  uint32_t childOf(uint32_t parent, std::u16string_view name);
  uint32_t nodeAt(std::u16string_view path);

  Options options_;
  std::vector<Node> nodes_ = {Node{u"Root Entry", false, {}, {}}};  // the root, then in order of addition
};

}  // namespace support
