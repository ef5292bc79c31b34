#include "wordreader/fkp.h"

#include <algorithm>
#include <cstring>

#include "wordreader/document.h"

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
  pages_ = {};
  lastPageCount_ = kNoFkpIndex;
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
  if (lastPageCount_ == kNoFkpIndex) lastPageCount_ = GetFkp(last).Count();
  return Iterator(this, last, lastPageCount_ - 1);
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
  if (i < Bin::Count()) fkp.Read(PageBytes(Bin::Item(i).data));
  return fkp;
}

template <class Fkp, class Bin>
ByteView _KDRFkpx<Fkp, Bin>::PageBytes(uint32_t pageNumber) const {
  // The number counts modulo 2^23, as the 32-bit offset made of it wraps.
  const uint32_t offset = pageNumber * kFkpPageSize;
  const uint32_t number = offset / kFkpPageSize;
  std::unique_ptr<Page>& page = pages_[number % kPagesKept];
  if (!page || page->number != number) {
    DsMemReadArchive& word = document_->GetDocFile().getWordDocumentStrm();
    word.seek(static_cast<long>(offset), 0);
    if (!page) page = std::make_unique<Page>();
    page->number = number;
    // To the page's end, even if the stream's size lies before it: without its last byte it has no entries.
    const uint32_t arrived = word.getHeld(page->bytes, kFkpPageSize);
    std::memset(page->bytes + arrived, 0, kFkpPageSize - arrived);
  }
  return ByteView(page->bytes, kFkpPageSize);
}

template class _KDRPlcfFkpIterator<KDRPapxFkps>;
template class _KDRPlcfFkpIterator<KDRChpxFkps>;
template class _KDRFkpx<KDRPapxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_PAPX_BINS>>;
template class _KDRFkpx<KDRChpxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_CHPX_BINS>>;
