#include "wordreader/list_table.h"

Status KDRListTable::Read(const KDRDocument&) {
  return Status::kNothing;
}

const KDRListLevel* KDRList::GetLevel(unsigned short level) const {
  const KDRLfoLvl* format = FindOverride(level);
  return format && format->HasSetFormat() ? format->GetLevel() : definition_->GetLevel(level);
}

uint16_t KDRList::GetLevelStartAt(unsigned short level) const {
  const KDRLfoLvl* format = FindOverride(level);
  if (format && format->HasSetStartAt() && !format->HasSetFormat()) return format->GetStartAt();
  const KDRListLevel* own = definition_->GetLevel(level);
  return own ? own->GetStartAt() : 0;
}

const KDRLfoLvl* KDRList::FindOverride(unsigned short level) const {
  unsigned short index = 0;
  return format_->Find(level, index) ? format_->Item(index) : nullptr;
}

bool KDRListFormatOverride::Find(unsigned short level, unsigned short& index) const {
  if (overrides_.empty() || level >= indexOfLevel_.size() || indexOfLevel_[level] == kNone) return false;
  index = indexOfLevel_[level];
  return true;
}
