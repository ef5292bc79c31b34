#include "convert/root_folder.h"

namespace pagerex {

namespace {

constexpr uint32_t kSmallestPage = sizeof(SotEntry);

}  // namespace

RootFolder::RootFolder(ByteView file, uint64_t firstPage)
    : file_(file), firstPage_(firstPage), header_(file.record<SotHeader>(0)) {
  if (!header_) return;
  pageSize_ = pageSizeOf(header_->pageShift);
  if (pageSize_ >= kSmallestPage) readDirectoryChain();
}

/// Ends where a page is not there, or the chain does; a loop, where there is no more room.
void RootFolder::readDirectoryChain() {
  uint32_t next = header_->directoryStart;
  while (directoryPages_ < directory_.size() && !page(next).empty()) {
    directory_[directoryPages_++] = next;
    next = nextPage(next);
  }
}

/// Entries never lie on two pages, whose sizes are powers of two no smaller than theirs.
const SotEntry* RootFolder::entry(int32_t number) const {
  if (number < 0 || static_cast<size_t>(number) >= kMostEntries || directoryPages_ == 0) return nullptr;
  const auto index = static_cast<uint32_t>(number);
  const uint32_t onPage = pageSize_ / uint32_t{sizeof(SotEntry)};
  if (index / onPage >= directoryPages_) return nullptr;
  return page(directory_[index / onPage]).record<SotEntry>(size_t{index % onPage} * sizeof(SotEntry));
}

ByteView RootFolder::beginningOf(const SotEntry& stream) {
  if (pageSize_ < kSmallestPage) return {};
  const bool isTiny = stream.size < header_->tinyCutoff;
  if (!isTiny) return page(stream.startPage);
  const uint64_t offset = uint64_t{stream.startPage} * pageSizeOf(header_->tinyPageShift);
  const SotEntry* const top = root();
  uint32_t at = top ? top->startPage : kNoPage;
  for (uint64_t skip = offset / pageSize_; skip > 0 && at != kNoPage; --skip) at = nextPage(at);
  return page(at).part(static_cast<size_t>(offset % pageSize_));
}

/// The bytes of a page that are there. None for the numbers that end a chain, which lie beyond any file.
ByteView RootFolder::page(uint32_t number) const {
  constexpr uint32_t kFirstOfMarks = 0xFFFFFFFA;
  if (number >= kFirstOfMarks) return {};
  const uint64_t offset = firstPage_ + uint64_t{number} * pageSize_;
  return offset < file_.size() ? file_.part(static_cast<size_t>(offset), pageSize_) : ByteView();
}

/// Of a page that holds page numbers, the one at `index`.
uint32_t RootFolder::number(uint32_t page, uint32_t index) const {
  const ByteView numbers = this->page(page);
  const size_t offset = size_t{index} * sizeof(uint32_t);
  return numbers.contains(offset, sizeof(uint32_t)) ? numbers.u32(offset) : kNoPage;
}

uint32_t RootFolder::nextPage(uint32_t page) {
  const uint32_t onPage = pageSize_ / uint32_t{sizeof(uint32_t)};
  return mayStep() ? number(fatPage(page / onPage), page % onPage) : kNoPage;
}

/// Pages that follow each other mostly stand on one page of the table.
uint32_t RootFolder::fatPage(uint32_t index) {
  if (index < SotHeader::kFatPageCount) return static_cast<uint32_t>(header_->fatPages[index]);
  if (index != lastFatIndex_) {
    lastFatIndex_ = index;
    lastFatPage_ = masterFatNumber(index - uint32_t{SotHeader::kFatPageCount});
  }
  return lastFatPage_;
}

/// The last number on each page of the list is that of its next page.
uint32_t RootFolder::masterFatNumber(uint32_t index) {
  const uint32_t onPage = (pageSize_ - uint32_t{sizeof(uint32_t)}) / uint32_t{sizeof(uint32_t)};
  auto at = static_cast<uint32_t>(header_->masterFatStart);
  for (uint32_t skip = index / onPage; skip > 0 && at != kNoPage; --skip)
    at = mayStep() ? number(at, onPage) : kNoPage;
  return number(at, index % onPage);
}

}  // namespace pagerex
