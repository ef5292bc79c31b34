#include "wordreader/plcf.h"

#include "wordreader/document.h"

uint32_t KDRPlcfBase::UpperBound(uint32_t value, uint32_t first) const {
  if (first > count_) return count_ + 1;
  uint32_t left = count_ + 1 - first;
  while (left > 0) {
    const uint32_t half = left / 2;
    if (Position(first + half) > value) {
      left = half;
    } else {
      first += half + 1;
      left -= half + 1;
    }
  }
  return first;
}

Status KDRPlcfBase::AssignBytes(ByteView bytes, uint32_t recordSize, size_t size) {
  const size_t count = size < 4 ? 0 : (size - 4) / (4 + recordSize);
  AssignCounted(count > 0 ? bytes : ByteView(), static_cast<uint32_t>(count));
  return count > 0 ? Status::kOk : Status::kNothing;
}

void KDRPlcfBase::AssignCounted(ByteView bytes, uint32_t count) {
  bytes_ = bytes;
  count_ = count;
}

template <class T, uint32_t id>
Status KDRPlcf<T, id>::Read(const KDRDocument& document) {
  KDRTableRecord record;
  const Status status = document.GetTableRecord(&record, id);
  return status == Status::kOk ? ReadRecord(record) : status;
}

template <class T, uint32_t id>
Status KDRPlcf<T, id>::ReadRecord(const KDRTableRecord& record) {
  return ReadRecord(record.bytes);
}

template class KDRPlcf<int16_t, mso_word::FCLCB_FOOTNOTE_REFS>;
template class KDRPlcf<int16_t, mso_word::FCLCB_ENDNOTE_REFS>;
template class KDRPlcf<void, mso_word::FCLCB_FOOTNOTE_TEXT>;
template class KDRPlcf<void, mso_word::FCLCB_ENDNOTE_TEXT>;
template class KDRPlcf<void, mso_word::FCLCB_ANNOTATION_TEXT>;
template class KDRPlcf<mso_word::ATRD, mso_word::FCLCB_ANNOTATION_REFS>;
template class KDRPlcf<mso_word::SED, mso_word::FCLCB_SECTIONS>;
template class KDRPlcf<uint32_t, mso_word::FCLCB_CHPX_BINS>;
template class KDRPlcf<uint32_t, mso_word::FCLCB_PAPX_BINS>;
template class KDRPlcf<mso_word::BKF, mso_word::FCLCB_BOOKMARK_STARTS>;
template class KDRPlcf<void, mso_word::FCLCB_BOOKMARK_ENDS>;
template class KDRPlcf<mso_word::BKF, mso_word::FCLCB_ANNOTATION_RANGE_STARTS>;
template class KDRPlcf<void, mso_word::FCLCB_ANNOTATION_RANGE_ENDS>;
template class KDRPlcf<mso_word::FSPA, mso_word::FCLCB_SHAPE_ANCHORS>;
template class KDRPlcf<mso_word::FSPA, mso_word::FCLCB_HEADER_SHAPE_ANCHORS>;
template class KDRPlcf<mso_word::FTXBXS, mso_word::FCLCB_TEXTBOXES>;
