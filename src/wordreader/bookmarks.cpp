#include "wordreader/bookmarks.h"

#include "wordreader/document.h"

// KDRPlcfbkf

template <uint32_t bkfId, uint32_t sttbfId>
Status KDRPlcfbkf<bkfId, sttbfId>::Read(const KDRDocument& document) {
  Status status = KDRSttbf<sttbfId>::Read(document);
  if (!failed(status)) status = positions_.Read(document);
  if (KDRSttbf<sttbfId>::Count() != positions_.Count()) {
    positions_.Clear();
    KDRSttbf<sttbfId>::Clear();
    return Status::kFailure;
  }
  return status;
}

template <uint32_t bkfId, uint32_t sttbfId>
typename KDRPlcfbkf<bkfId, sttbfId>::ItemType KDRPlcfbkf<bkfId, sttbfId>::Item(uint32_t i) const {
  const auto start = positions_.Item(i);
  return {start.range, start.data, KDRSttbf<sttbfId>::Item(static_cast<int>(i))};
}

template class KDRPlcfbkf<mso_word::FCLCB_BOOKMARK_STARTS, mso_word::FCLCB_BOOKMARK_NAMES>;
template class KDRPlcfbkf<mso_word::FCLCB_ANNOTATION_RANGE_STARTS, mso_word::FCLCB_ANNOTATION_RANGE_NAMES>;

// KDRPlcfBkf

Status KDRPlcfBkf::Init(const KDRFib& fib, mso_word::SUBDOC_TYPE type, const KBookmarkStarts* starts) {
  const uint32_t begin = fib.GetSubDocCPBegin(type);
  const uint32_t end = fib.GetSubDocCPEnd(type);
  starts_ = starts;
  first_ = count_ = 0;
  subDocStart_ = begin;
  if (begin == end) return Status::kOk;

  const auto& positions = starts->positions();
  for (uint32_t i = 0; i < positions.Count(); ++i) {
    const uint32_t position = positions.Position(i);
    if (position >= end) break;
    ++(position < begin ? first_ : count_);
  }
  return Status::kOk;
}

KBookmarkStarts::ItemType KDRPlcfBkf::Item(int i) const {
  if (static_cast<uint32_t>(i) >= count_) return {};
  KBookmarkStarts::ItemType item = starts_->Item(first_ + static_cast<uint32_t>(i));
  item.range.start -= subDocStart_;
  item.range.end -= subDocStart_;
  item.bkf.ibkl = static_cast<uint16_t>(item.bkf.ibkl - first_);
  return item;
}

uint32_t KDRPlcfBkf::Start(uint32_t i) const {
  return starts_->positions().Position(first_ + i) - subDocStart_;
}

// KDRPlcfBkl

Status KDRPlcfBkl::Init(const KDRFib& /*fib*/, mso_word::SUBDOC_TYPE /*type*/, const KDRPlcfBkf* starts,
                        const KBookmarkEnds* ends) {
  starts_ = starts;
  ends_ = ends;
  return Status::kOk;
}

uint32_t KDRPlcfBkl::Item(unsigned int i) const {
  return ends_->Position(starts_->first() + i) - starts_->subDocStart();
}

// KDRBookMarks

Status KDRBookMarks::Read(const KDRDocument& document) {
  Status status = starts_.Read(document);
  if (!failed(status)) status = ends_.Read(document);
  if (failed(status)) return status;

  const KDRFib& fib = document.GetDocFile().getTableStrm();
  for (uint32_t i = 0; i < mso_word::kSubDocCount; ++i) {
    const auto type = static_cast<mso_word::SUBDOC_TYPE>(i);
    bkf_[type].Init(fib, type, &starts_);
    bkl_[type].Init(fib, type, &bkf_[type], &ends_);
    EnterPositions(type);
  }
  return Status::kOk;
}

void KDRBookMarks::EnterPositions(mso_word::SUBDOC_TYPE type) {
  // With the end as hint, positions that ascend cost no search, and equal ones keep their order.
  KBookmarkPositions& starts = cpStarts_[type];
  KBookmarkPositions& ends = cpEnds_[type];
  for (uint32_t i = 0; i < bkf_[type].Count(); ++i) {
    starts.emplace_hint(starts.end(), bkf_[type].Start(i), i);
    ends.emplace_hint(ends.end(), bkl_[type].Item(i), i);
  }
}
