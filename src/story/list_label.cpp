#include "story/list_label.h"

#include "story/list_number.h"
#include "wordreader/document.h"
#include "wordreader/list_table.h"

namespace pagerex {

void KListLabels::Init(const KDRDocument* document, NumberFormatService* formats) {
  document_ = document;
  formats_ = formats;
}

const KDRList* KListLabels::List(unsigned int number) const {
  if (!document_) return nullptr;
  const KDRListTable& lists = document_->GetListTable();
  return number == 0 || number > lists.Count() ? nullptr : lists.Item(number);
}

const std::wstring& KListLabels::NumberAt(unsigned int placeholder, const ListPlace& place) {
  number_.clear();
  const KDRList* const list = List(place.list);
  if (!list || placeholder >= list->GetLevelCount()) return number_;
  const KDRListLevel* const level = list->GetLevel(static_cast<unsigned short>(placeholder));
  const unsigned int nfc = level && level->Good() ? level->GetNfc() : 0;
  const int count = counts_.GetCount(place.list, place.level, placeholder, &document_->GetListTable());
  TxFormatNum(*formats_, static_cast<unsigned int>(count), nfc, &number_);
  return number_;
}

}  // namespace pagerex
