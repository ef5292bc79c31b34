#include "support/fkp_writer.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace support {

Bytes chpxData(const Bytes& grpprl) {
  if (grpprl.empty()) return {};
  if (grpprl.size() > 255) throw std::invalid_argument("a run has at most 255 bytes of properties");
  return ByteWriter().u8(grpprl.size()).bytes(grpprl).take();
}

Bytes papxData(uint16_t istd, const Bytes& grpprl) {
  const size_t size = grpprl.size() + 2;
  ByteWriter out;
  if (size % 2) {
    out.u8((size + 1) / 2);
  } else {
    out.u8(0).u8(size / 2);
  }
  return out.u16(istd).bytes(grpprl).take();
}

namespace {

/// One page being filled: entries from the front, data from the back.
class FkpPage {
 public:
  explicit FkpPage(size_t recordBytes) : recordBytes_(recordBytes) {}

  /// False if the entry does not fit.
  bool add(const FkpEntry& entry) {
    const size_t front = 4 * (entries_.size() + 2) + recordBytes_ * (entries_.size() + 1);
    size_t dataStart = dataStart_;
    size_t place = 0;
    if (!entry.data.empty() && !(place = placeOf(entry.data))) {
      if (entry.data.size() > dataStart) return false;
      dataStart = place = (dataStart - entry.data.size()) & ~size_t{1};
    }
    if (front > dataStart) return false;
    if (place) places_[entry.data] = place;
    dataStart_ = dataStart;
    entries_.push_back({entry.start, entry.end, place});
    return true;
  }

  size_t count() const { return entries_.size(); }
  uint32_t start() const { return entries_.front().start; }
  uint32_t end() const { return entries_.back().end; }

  Bytes bytes() const {
    ByteWriter front;
    for (const Entry& entry : entries_) front.u32(entry.start);
    front.u32(end());
    for (const Entry& entry : entries_) front.u8(entry.place / 2).zeros(recordBytes_ - 1);
    Bytes page(kFkpBytes);
    patchBytes(page, 0, front.take());
    for (const auto& [data, place] : places_) patchBytes(page, place, data);
    page[kFkpBytes - 1] = static_cast<uint8_t>(entries_.size());
    return page;
  }

 private:
  struct Entry {
    uint32_t start;
    uint32_t end;
    size_t place;
  };
  size_t placeOf(const Bytes& data) const {
    const auto found = places_.find(data);
    return found == places_.end() ? 0 : found->second;
  }

  size_t recordBytes_;
  size_t dataStart_ = kFkpBytes - 1;
  std::vector<Entry> entries_;
  std::map<Bytes, size_t> places_;
};

}  // namespace

FkpPages packFkp(const std::vector<FkpEntry>& entries, size_t recordBytes, size_t maxEntries) {
  FkpPages result;
  FkpPage page(recordBytes);
  const auto finishPage = [&] {
    result.starts.push_back(page.start());
    result.pages.push_back(page.bytes());
  };
  for (const FkpEntry& entry : entries) {
    if (page.count() < maxEntries && page.add(entry)) continue;
    if (page.count()) finishPage();
    page = FkpPage(recordBytes);
    if (!page.add(entry)) throw std::invalid_argument("properties too long for a page");
  }
  if (page.count()) {
    finishPage();
    result.starts.push_back(page.end());
  }
  return result;
}

}  // namespace support
