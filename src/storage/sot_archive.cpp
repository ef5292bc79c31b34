#include "storage/sot_archive.h"

template <class Archive>
bool SotRoArchive<Archive>::open(Archive& archive) {
  if (!pages_.open(archive)) return false;
  const SotHeader& header = pages_.header();
  const uint32_t tinyPageSize = pageSizeOf(header.tinyPageShift);
  if (tinyPageSize == 0) return false;

  SotRoTrunkImpl<PagePool> fatPages(pages_, pages_.masterFATPageLst());
  fat_ = std::make_unique<SotRoFAT>(fatPages);
  directory_ = std::make_unique<SotRoTrunkImpl<PagePool>>(pages_, chain(header.directoryStart));
  SotRoTrunkImpl<PagePool> tinyFatPages(pages_, chain(header.tinyFatStart));
  tinyFat_ = std::make_unique<SotRoFAT>(tinyFatPages);

  const SotEntry* root = rootEntry();
  if (!root) return false;
  tinyPages_ = std::make_unique<TinyPagePool>(pages_, chain(root->startPage), tinyPageSize);
  return true;
}

template <class Archive>
const SotEntry* SotRoArchive<Archive>::entry(int number) {
  if (number < 0 || number >= entrySize()) return nullptr;
  const auto found = entries_.find(number);
  if (found != entries_.end()) return found->second;
  SotEntry entry;
  directory_->seek(static_cast<unsigned long>(number) * sizeof(entry), SEEK_SET);
  if (directory_->read(reinterpret_cast<char*>(&entry), sizeof(entry)) != sizeof(entry)) return nullptr;
  return entries_[number] = New<SotEntry>(alloc(), entry);
}

template <class Archive>
int SotRoArchive<Archive>::entrySize() const {
  return static_cast<int>(directory_->size() / sizeof(SotEntry));
}

template <class Archive>
SotRoTrunk* SotRoArchive<Archive>::trunk(unsigned int start, unsigned int size) {
  if (size < pages_.header().tinyCutoff) return trunkIn(tinyTrunks_, *tinyPages_, *tinyFat_, start);
  return trunkIn(trunks_, pages_, *fat_, start);
}

template <class Archive>
template <class Pool>
SotRoTrunk* SotRoArchive<Archive>::trunkIn(Trunks<Pool>& trunks, Pool& pool, SotRoFAT& fat,
                                           unsigned int start) {
  SotRoTrunkImpl<Pool>*& trunk = trunks[start];
  if (!trunk) trunk = New<SotRoTrunkImpl<Pool>>(alloc(), pool, fat.pageLst(static_cast<int>(start)));
  return trunk;
}

template class SotRoArchive<SourceArchive>;
