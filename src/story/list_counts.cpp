#include "story/list_counts.h"

#include "wordreader/list_table.h"

namespace pagerex {

int LevelCounts::AddCount(int level, int start) {
  if (!isLevel(level)) return start;
  if (!isStarted(level)) {
    started_ = static_cast<uint16_t>(started_ | 1u << level);
    return counts_[level] = start;
  }
  // Counts wrap as the unsigned numbers do that the labels show.
  return counts_[level] = static_cast<int>(static_cast<unsigned>(counts_[level]) + 1u);
}

int LevelCounts::GetCount(int level, int start) const {
  return isStarted(level) ? counts_[level] : start;
}

int LevelCounts::SetCount(int level, int value, int start) {
  if (!isLevel(level)) return start;
  return counts_[level] = isStarted(level) ? value : start;
}

int KListCount::AddCount(int list, int level, int start) {
  return lists_[list].AddCount(level, start);
}

int KListCount::GetLevelCount(int list, int level, int start) {
  const auto found = lists_.find(list);
  return found != lists_.end() ? found->second.GetCount(level, start) : AddCount(list, level, start);
}

int KListCount::SetLevelCount(int list, int level, int value, int start) {
  const auto found = lists_.find(list);
  return found != lists_.end() ? found->second.SetCount(level, value, start) : -1;
}

/// A deeper level that was seen goes on from 0, whatever its start; only one that was never seen begins at
/// its start.
int KListCount::GetCount(unsigned int list, unsigned int level, unsigned int placeholder,
                         const KDRListTable* table) {
  if (!table || list == 0 || list > table->Count()) return -1;
  const KDRList& definition = *table->Item(list);
  const unsigned int levels = definition.GetLevelCount();
  if (!definition.Good() || level >= levels) return -1;
  const auto startOf = [&definition](unsigned int l) {
    return int{definition.GetLevelStartAt(static_cast<unsigned short>(l))};
  };
  const int number = static_cast<int>(list);
  if (placeholder < level) {
    return GetLevelCount(number, static_cast<int>(placeholder), startOf(placeholder));
  }
  const int count = AddCount(number, static_cast<int>(placeholder), startOf(level));
  LevelCounts& counts = lists_[number];
  for (unsigned int deeper = level + 1; deeper < levels; ++deeper) {
    if (counts.isStarted(static_cast<int>(deeper))) counts.SetCount(static_cast<int>(deeper), 0, 0);
  }
  return count;
}

}  // namespace pagerex
