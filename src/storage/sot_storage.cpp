#include "storage/sot_storage.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <vector>

unsigned int SotRoStream::read(char* buffer, unsigned int n) const {
  return trunk_.read(buffer, std::min(n, claimedLeft()));
}

unsigned int SotRoStream::bytesLeft() const {
  return std::min(claimedLeft(), trunk_.bytesLeft());
}

std::unique_ptr<SotRoStorage> SotRoStorage::open(const char* path) {
  auto root = std::make_unique<SotRoFileRootStorageImpl>();
  if (!root->open(path)) return nullptr;
  return root;
}

std::unique_ptr<SotRoStorage> SotRoStorage::open(ByteSource& source, MemoryBudget* budget) {
  auto root = std::make_unique<SotRoSourceRootStorageImpl>(source, budget);
  if (!root->open()) return nullptr;
  return root;
}

SotRoStorage* SotRoStorage::openStorage(const wchar_t* name) const {
  const auto found = storages_.find(std::wstring_view(name));
  return found == storages_.end() ? nullptr : found->second;
}

SotRoStream* SotRoStorage::openStream(const wchar_t* name) const {
  const auto found = streams_.find(std::wstring_view(name));
  return found == streams_.end() ? nullptr : found->second;
}

SotRoStream* SotRoStorage::openStreamOfAnyCase(const wchar_t* name) const {
  if (SotRoStream* const exact = openStream(name)) return exact;
  const auto small = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? c + (L'a' - L'A') : c; };
  const std::wstring_view wanted(name);
  const auto isWanted = [&](const auto& stream) {
    const std::wstring_view given(stream.first);
    return std::equal(given.begin(), given.end(), wanted.begin(), wanted.end(),
                      [&](wchar_t a, wchar_t b) { return small(a) == small(b); });
  };
  const auto found = std::find_if(streams_.begin(), streams_.end(), isWanted);
  return found == streams_.end() ? nullptr : found->second;
}

bool SotRoFileRootStorageImpl::open(const char* path) {
  file_ = std::make_unique<ArchiveSource>(path);
  archive_ = std::make_unique<SourceArchive>(*file_);
  return file_->good() && SotRoRootStorageImpl::open(*archive_);
}

template <class Archive>
bool SotRoRootStorageImpl<Archive>::open(Archive& source) {
  if (!archive_.open(source)) return false;
  walkDirectory();
  return true;
}

/// Visits each entry before what hangs below it, that before its left and those before its right siblings, so
/// that of two entries with one name the later in this order stays. Each entry is visited once, whatever the
/// links say, and what is still to be visited stands on the heap: the tree may be as deep as a file is long.
template <class Archive>
void SotRoRootStorageImpl<Archive>::walkDirectory() {
  struct Visit {
    int entry;
    SotRoStorage* parent;
  };
  std::unordered_set<int> visited = {0};
  std::vector<Visit> pending = {{archive_.rootEntry()->child, this}};
  while (!pending.empty()) {
    const auto [number, parent] = pending.back();
    pending.pop_back();
    const SotEntry* entry = archive_.entry(number);
    if (!entry || !visited.insert(number).second) continue;
    pending.push_back({entry->right, parent});
    pending.push_back({entry->left, parent});
    if (entry->type == SotEntry::kStorage) pending.push_back({entry->child, loadStorage(*entry, *parent)});
    if (entry->type == SotEntry::kStream) loadStream(*entry, *parent);
  }
}

template <class Archive>
SotRoStorage* SotRoRootStorageImpl<Archive>::loadStorage(const SotEntry& entry, SotRoStorage& parent) {
  auto* storage = New<SotRoStorage>(archive_.alloc());
  parent.add(nameOf(entry), storage);
  return storage;
}

template <class Archive>
void SotRoRootStorageImpl<Archive>::loadStream(const SotEntry& entry, SotRoStorage& parent) {
  parent.add(nameOf(entry), New<SotRoStream>(archive_.alloc(), entry, *archive_.trunk(&entry)));
}

template class SotRoRootStorageImpl<SourceArchive>;
