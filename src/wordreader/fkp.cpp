#include "wordreader/fkp.h"

#include <algorithm>
#include <cstring>

#include "wordreader/document.h"

namespace {

constexpr uint32_t kGapSize = sizeof(uint16_t);

}  // namespace

// KDRPlcfFkp

template <class Propx, class Bx>
uint32_t KDRPlcfFkp<Propx, Bx>::RecordsEnd(ByteView page) {
  const uint32_t count = page.u8(kFkpPageSize - 1);
  return std::min<uint32_t>(4 * (count + 1) + count * sizeof(Bx), kFkpPageSize - 1);
}

template <class Propx, class Bx>
uint32_t KDRPlcfFkp<Propx, Bx>::GapOf(ByteView page) {
  const uint32_t count = page.u8(kFkpPageSize - 1);
  const uint32_t recordsEnd = RecordsEnd(page);
  uint32_t lowest = kFkpPageSize - 1;
  for (uint32_t at = 4 * (count + 1); at < recordsEnd; at += sizeof(Bx)) {
    if (page.u8(at) != 0) lowest = std::min<uint32_t>(lowest, page.u8(at) * 2);
  }
  return lowest > recordsEnd ? lowest - recordsEnd : 0;
}

template class KDRPlcfFkp<KDRFkpPapx, mso_word::FKP_BX>;
template class KDRPlcfFkp<KDRFkpChpx, unsigned char>;

// _KDRPlcfFkpIterator

template <class Fkpx>
_KDRPlcfFkpIterator<Fkpx>& _KDRPlcfFkpIterator<Fkpx>::operator++() {
  if (propx_ + 1 < owner_->GetFkp(fkp_).Count()) {
    ++propx_;
  } else if (fkp_ + 1 < owner_->Count()) {
    ++fkp_;
    propx_ = 0;
  } else {
    fkp_ = propx_ = kNoFkpIndex;
  }
  return *this;
}

template <class Fkpx>
bool _KDRPlcfFkpIterator<Fkpx>::operator<=(const _KDRPlcfFkpIterator& other) const {
  if (fkp_ == kNoFkpIndex || propx_ == kNoFkpIndex) return false;
  if (owner_ != other.owner_) return std::less<>()(owner_, other.owner_);
  return fkp_ != other.fkp_ ? fkp_ < other.fkp_ : propx_ <= other.propx_;
}

// _KDRFkpx

template <class Fkp, class Bin>
Status _KDRFkpx<Fkp, Bin>::Read(const KDRDocument& document) {
  document_ = &document;
  pages_.clear();
  return Bin::Read(document);
}

template <class Fkp, class Bin>
typename _KDRFkpx<Fkp, Bin>::Iterator _KDRFkpx<Fkp, Bin>::UpperBound(uint32_t fc) const {
  const uint32_t page = Bin::UpperBound(fc) - 1;
  if (page >= Bin::Count()) return Iterator(this, kNoFkpIndex, 0);
  return Iterator(this, page, GetFkp(page).UpperBound(fc) - 1);
}

template <class Fkp, class Bin>
typename _KDRFkpx<Fkp, Bin>::Iterator _KDRFkpx<Fkp, Bin>::End() const {
  if (Bin::Count() == 0) return Iterator(this, kNoFkpIndex, kNoFkpIndex);
  const uint32_t last = Bin::Count() - 1;
  return Iterator(this, last, GetFkp(last).Count() - 1);
}

template <class Fkp, class Bin>
typename Fkp::ItemType _KDRFkpx<Fkp, Bin>::Item(const Iterator& entry) const {
  if (entry.GetFkpIndex() < Bin::Count()) {
    const Fkp fkp = GetFkp(entry.GetFkpIndex());
    if (entry.GetPropxIndex() < fkp.Count()) return fkp.Item(entry.GetPropxIndex());
  }
  return {{kNoFkpIndex, kNoFkpIndex}, {}};
}

template <class Fkp, class Bin>
Fkp _KDRFkpx<Fkp, Bin>::GetFkp(uint32_t i) const {
  Fkp fkp;
  if (i < Bin::Count()) {
    const uint8_t* page = LoadedPage(Bin::Item(i).data);
    const uint32_t gap = ByteView(page, kGapSize).u16(0);
    fkp.Read(ByteView(page + kGapSize, kFkpPageSize - gap), gap);
  }
  return fkp;
}

template <class Fkp, class Bin>
const uint8_t* _KDRFkpx<Fkp, Bin>::LoadedPage(uint32_t pageNumber) const {
  // Bins that name one page share it. The number counts modulo 2^23, as the 32-bit offset made of it wraps.
  const uint32_t offset = pageNumber * kFkpPageSize;
  const size_t index = offset / kFkpPageSize;
  if (index < pages_.size() && pages_[index]) return pages_[index];

  DsMemReadArchive& word = document_->GetDocFile().getWordDocumentStrm();
  word.seek(static_cast<long>(offset), 0);
  uint8_t page[kFkpPageSize] = {};
  word.get(page, kFkpPageSize);
  if (index >= pages_.size()) pages_.resize(index + 1);
  return pages_[index] = KeepPage(ByteView(page, kFkpPageSize));
}

template <class Fkp, class Bin>
const uint8_t* _KDRFkpx<Fkp, Bin>::KeepPage(ByteView page) const {
  constexpr uint32_t kRoomAtOnce = 8192;
  const auto gap = static_cast<uint16_t>(Fkp::GapOf(page));
  const uint32_t size = kGapSize + kFkpPageSize - gap;
  if (spareBytes_ < size) {
    spare_ = static_cast<uint8_t*>(document_->GetAllocator().Alloc(kRoomAtOnce));
    spareBytes_ = kRoomAtOnce;
  }
  uint8_t* const kept = spare_;
  spare_ += size;
  spareBytes_ -= size;
  const size_t front = Fkp::RecordsEnd(page);
  const size_t back = gap == 0 ? front : front + gap;
  std::memcpy(kept, &gap, kGapSize);
  std::memcpy(kept + kGapSize, page.data(), front);
  std::memcpy(kept + kGapSize + front, page.data() + back, kFkpPageSize - back);
  return kept;
}

template class _KDRPlcfFkpIterator<KDRPapxFkps>;
template class _KDRPlcfFkpIterator<KDRChpxFkps>;
template class _KDRFkpx<KDRPapxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_PAPX_BINS>>;
template class _KDRFkpx<KDRChpxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_CHPX_BINS>>;
