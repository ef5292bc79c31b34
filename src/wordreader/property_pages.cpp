#include "wordreader/property_pages.h"

#include <algorithm>

namespace pagerex {
namespace {

constexpr uint32_t kPageBytes = 512, kWindow = 64 << 10;
constexpr uint32_t kPageMask = 0x3FFFFF;  // of a page number

}  // namespace

void PropertyPages::Read(WordFile& file, Kind kind) {
  kind_ = kind;
  file.ReadText(reader_, kWindow);
  bins_ = PositionTable(
      file.Table(kind == Kind::kRuns ? mso_word::FCLCB_CHPX_BINS : mso_word::FCLCB_PAPX_BINS), 4);
  for (uint32_t i = 0; i < bins_.Count() && rises_; ++i) rises_ = bins_.Position(i) <= bins_.Position(i + 1);
}

void PropertyPages::Find(uint32_t offset) {
  if (!IsInPage(offset) && !LoadPageOf(offset)) {
    entry_ = Missing(offset);
    return;
  }
  current_ = EntryOf(offset);
  entry_ = {PageStart(current_), PageStart(current_ + 1), true, PropertiesOf(current_)};
  if (offset < entry_.start || offset >= entry_.end) entry_ = Missing(offset);
}

/// To where the pages may tell of something again.
PropertyPages::Entry PropertyPages::Missing(uint32_t offset) {
  constexpr uint32_t kStretch = 512;
  missed_ = true;
  Entry entry{offset, offset < UINT32_MAX - kStretch ? offset + kStretch : UINT32_MAX, false, {}};
  const uint32_t next = rises_ ? bins_.Position(bins_.UpperBound(offset)) : 0;
  if (next > offset) entry.end = next;
  if (count_ > 0 && PageStart(0) > offset) entry.end = std::min(entry.end, PageStart(0));
  return entry;
}

bool PropertyPages::LoadPageOf(uint32_t offset) {
  // The one that is looked for is mostly among the next few.
  constexpr uint32_t kNear = 4;
  uint32_t index = pageNumber_;
  const uint32_t last = pageNumber_ < bins_.Count() ? std::min(pageNumber_ + kNear, bins_.Count()) : 0;
  while (index < last && offset >= bins_.Position(index + 1)) ++index;
  if (index >= last || offset < bins_.Position(index)) {
    // Where the places do not rise, nothing can be found but what is near.
    index = rises_ ? bins_.Find(offset) : bins_.Count();
  }
  return index < bins_.Count() && LoadPage(index) && IsInPage(offset);
}

/// False, and no page, for one that lies outside.
bool PropertyPages::LoadPage(uint32_t index) {
  pageNumber_ = index;
  current_ = 0;
  const uint64_t offset = uint64_t{bins_.Record(index).u32(0) & kPageMask} * kPageBytes;
  page_ = offset < reader_.size() ? reader_.At(static_cast<uint32_t>(offset), kPageBytes) : ByteView();
  const uint32_t entryBytes = kind_ == Kind::kRuns ? 1 : 13;
  const uint32_t most = (kPageBytes - 1 - 4) / (4 + entryBytes);
  count_ = page_.size() == kPageBytes ? std::min<uint32_t>(page_.u8(kPageBytes - 1), most) : 0;
  return count_ > 0;
}

/// The last entry that begins at or before `offset`, from the current one on if that is near.
uint32_t PropertyPages::EntryOf(uint32_t offset) const {
  uint32_t entry = current_;
  if (entry < count_ && PageStart(entry) <= offset) {
    for (uint32_t steps = 0; steps < 4; ++steps, ++entry) {
      if (offset < PageStart(entry + 1)) return entry;
      if (entry + 1 == count_) return entry;
    }
  }
  uint32_t low = 0, high = count_;
  while (high - low > 1) {
    const uint32_t middle = (low + high) / 2;
    (PageStart(middle) <= offset ? low : high) = middle;
  }
  return low;
}

ByteView PropertyPages::PropertiesOf(uint32_t entry) const {
  const size_t places = (size_t{count_} + 1) * 4;
  const size_t at = page_.u8(places + size_t{entry} * (kind_ == Kind::kRuns ? 1 : 13)) * size_t{2};
  if (at == 0) return {};
  const uint8_t count = page_.u8(at);
  if (kind_ == Kind::kRuns) return page_.part(at + 1, count);
  // A count of words, less half a word; of 0 the count stands in the byte behind it.
  return count != 0 ? page_.part(at + 1, size_t{count} * 2 - 1)
                    : page_.part(at + 2, 2 * size_t{page_.u8(at + 1)});
}

}  // namespace pagerex
