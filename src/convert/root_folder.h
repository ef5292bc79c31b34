#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>

#include "base/byte_view.h"
#include "storage/sot_format.h"

namespace pagerex {

/// What lies at the top of a compound file in memory. Follows only the chains that lead there, in the bytes
/// themselves: nothing is allocated, and what a file says bounds nothing. Unlike the reader of documents,
/// which reads all tables, it does with the part of a file that is there.
///
/// Bounds: a directory of 4096 pages and 16384 entries, a tree of siblings of 1024 open branches, and 2^18
/// steps along chains; what lies beyond is not found.
class RootFolder {
 public:
  /// `file` must outlive this; its page 0 begins at `firstPage`.
  RootFolder(ByteView file, uint64_t firstPage);

  /// The root's own entry; null if it is not there.
  const SotEntry* root() { return entry(0); }

  /// Calls `visit` with each entry of the root, once.
  template <class Visit>
  void forEachEntry(Visit visit);

  /// The first bytes of a stream, as many as lie together.
  ByteView beginningOf(const SotEntry& stream);

 private:
  static constexpr size_t kMostPages = 4096;
  static constexpr size_t kMostEntries = 16384;
  static constexpr size_t kMostBranches = 1024;
  static constexpr uint32_t kNoPage = 0xFFFFFFFF;

  const SotEntry* entry(int32_t number) const;
  void readDirectoryChain();
  ByteView page(uint32_t number) const;
  uint32_t number(uint32_t page, uint32_t index) const;
  uint32_t nextPage(uint32_t page);
  uint32_t fatPage(uint32_t index);
  uint32_t masterFatNumber(uint32_t index);
  bool mayStep() { return stepsLeft_ > 0 && stepsLeft_--; }

  ByteView file_;
  uint64_t firstPage_;
  const SotHeader* header_;
  uint32_t pageSize_ = 0;  ///< 0 if the header cannot be used
  uint32_t stepsLeft_ = uint32_t{1} << 18;
  uint32_t lastFatIndex_ = kNoPage;
  uint32_t lastFatPage_ = kNoPage;
  size_t directoryPages_ = 0;
  std::array<uint32_t, kMostPages> directory_;
};

template <class Visit>
void RootFolder::forEachEntry(Visit visit) {
  const SotEntry* const top = root();
  if (!top) return;
  std::bitset<kMostEntries> seen;
  std::array<int32_t, kMostBranches> branches;
  size_t count = 0;
  branches[count++] = top->child;
  while (count > 0) {
    const int32_t number = branches[--count];
    const SotEntry* const next = entry(number);
    if (!next || seen[static_cast<size_t>(number)]) continue;
    seen.set(static_cast<size_t>(number));
    visit(*next);
    if (count + 2 > branches.size()) continue;
    branches[count++] = next->right;
    branches[count++] = next->left;
  }
}

}  // namespace pagerex
