#include "wordreader/fields.h"

#include <algorithm>
#include <numeric>

#include "wordreader/document.h"

namespace {

// By SUBDOC_TYPE.
constexpr std::array<uint32_t, mso_word::kSubDocCount> kFieldTables = {
    mso_word::FCLCB_FIELDS_MAIN,    mso_word::FCLCB_FIELDS_FOOTNOTE,       mso_word::FCLCB_FIELDS_HEADER,
    mso_word::FCLCB_FIELDS_MACRO,   mso_word::FCLCB_FIELDS_ANNOTATION,     mso_word::FCLCB_FIELDS_ENDNOTE,
    mso_word::FCLCB_FIELDS_TEXTBOX, mso_word::FCLCB_FIELDS_HEADER_TEXTBOX,
};

}  // namespace

Status _KDRFields::Read(const KDRDocument& document) {
  for (size_t type = 0; type < contexts_.size(); ++type) {
    auto* context = New<KDRFieldContext>(document.GetAllocator(), kFieldTables[type]);
    contexts_[type] = context;
    context->Read(document);
  }
  return Status::kOk;
}

const KDRFieldContext& _KDRFields::GetFields(mso_word::SUBDOC_TYPE type) const {
  const KDRFieldContext* context = contexts_[type];
  return context && context->Good() ? *context : none_;
}

Status KDRPlcffld::Read(const KDRDocument& document) {
  KDRTableRecord record;
  const Status status = document.GetTableRecord(&record, fibIndex_);
  return status == Status::kOk ? ReadRecord(record.bytes) : status;
}

Status KDRFieldContext::Read(const KDRDocument& document) {
  const Status status = KDRPlcffld::Read(document);
  bool ascending = true;
  for (uint32_t i = 1; i < Count() && ascending; ++i) ascending = Position(i - 1) <= Position(i);
  order_.clear();
  if (ascending) return status;
  order_.resize(Count());
  std::iota(order_.begin(), order_.end(), 0u);
  std::stable_sort(order_.begin(), order_.end(),
                   [this](uint32_t a, uint32_t b) { return Position(a) < Position(b); });
  return status;
}

KDRField KDRFieldContext::Item(unsigned int i) const {
  return {KDRPlcffld::Item(i).data};
}

uint32_t KDRFieldContext::Find(uint32_t cp) const {
  uint32_t low = 0;
  for (uint32_t high = Count(); low < high;) {
    const uint32_t middle = low + (high - low) / 2;
    if (Position(Sorted(middle)) < cp) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low < Count() && Position(Sorted(low)) == cp ? Sorted(low) : Count();
}
