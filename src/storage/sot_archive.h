#pragma once

#include <map>
#include <memory>
#include <unordered_map>

#include "base/chain_allocator.h"
#include "storage/sot_fat.h"
#include "storage/sot_format.h"
#include "storage/sot_page_pool.h"
#include "storage/sot_trunk.h"

/// An open compound file: its pages, tables, chains and directory entries. Everything it returns lives in it.
template <class Archive>
class SotRoArchive : public ChainAllocator {
 public:
  /// Reads the tables from `archive`, which is not owned and must outlive this. False if there is no root
  /// entry to be found. Throws an int for a loop in a chain.
  bool open(Archive& archive);

  /// A directory entry by its number, read on first use; null if there is none or it cannot be read.
  const SotEntry* entry(int number);
  const SotEntry* rootEntry() { return entry(0); }
  /// Count of directory entries.
  int entrySize() const;

  /// The bytes of a stream. Streams with one start page share one trunk, and so one position.
  SotRoTrunk* trunk(const SotEntry* entry) { return trunk(entry->startPage, entry->size); }
  SotRoTrunk* trunk(unsigned int start, unsigned int size);

  ChainAllocator& alloc() { return *this; }
  /// For the entries, the chains and the pages alike; before `open`.
  void SetBudget(MemoryBudget* budget) {
    ChainAllocator::SetBudget(budget);
    pages_.SetBudget(budget);
  }

 private:
  using PagePool = SotRoPagePool<Archive>;
  using TinyPagePool = SotRoTinyPagePool<PagePool>;
  template <class Pool>
  using Trunks = std::map<unsigned int, SotRoTrunkImpl<Pool>*>;

  std::span<const int> chain(unsigned int start) { return fat_->pageLst(static_cast<int>(start)); }
  template <class Pool>
  SotRoTrunk* trunkIn(Trunks<Pool>& trunks, Pool& pool, SotRoFAT& fat, unsigned int start);

  PagePool pages_;
  std::unique_ptr<SotRoFAT> fat_;
  Trunks<PagePool> trunks_;  ///< by start page
  std::unique_ptr<TinyPagePool> tinyPages_;
  std::unique_ptr<SotRoFAT> tinyFat_;
  Trunks<TinyPagePool> tinyTrunks_;  ///< by start page
  std::unique_ptr<SotRoTrunkImpl<PagePool>> directory_;
  std::unordered_map<int, const SotEntry*> entries_;
};

extern template class SotRoArchive<SourceArchive>;
