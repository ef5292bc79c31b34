#include "wordreader/fkp.h"

#include <cstring>

#include "wordreader/document.h"

template <class Fkp, class Bin>
Status _KDRFkpx<Fkp, Bin>::Read(const KDRDocument& document) {
  document_ = &document;
  pages_ = {};
  lastPageCount_ = kNoFkpIndex;
  fkpIndex_ = kNoFkpIndex;
  fkp_ = {};
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
void _KDRFkpx<Fkp, Bin>::TurnTo(uint32_t i) const {
  fkpIndex_ = kNoFkpIndex;
  fkp_ = {};
  if (i >= Bin::Count()) return;
  fkp_.Read(PageBytes(Bin::Item(i).data));
  fkpIndex_ = i;
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
    if (arrived < kFkpPageSize)
      warn(document_->GetWarnings(), pagerex::WarningCode::kOutside, "properties of the text");
    std::memset(page->bytes + arrived, 0, kFkpPageSize - arrived);
  }
  return ByteView(page->bytes, kFkpPageSize);
}

template class _KDRFkpx<KDRPapxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_PAPX_BINS>>;
template class _KDRFkpx<KDRChpxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_CHPX_BINS>>;
