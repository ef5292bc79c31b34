#pragma once

#include <cstdint>
#include <unordered_map>

class KDRListTable;

namespace pagerex {

/// Running numbers of the nine levels of one list. A counter is a count only for a level that was started.
class LevelCounts {
 public:
  /// Steps a level that was started, or starts it at `start`. Returns its count.
  int AddCount(int level, int start);
  /// The count of a level that was started, else `start`.
  int GetCount(int level, int start) const;
  /// Sets the counter to `value` if the level was started, else to `start`, and returns it.
  int SetCount(int level, int value, int start);
  bool isStarted(int level) const { return isLevel(level) && (started_ >> level & 1) != 0; }

 private:
  static constexpr int kLevels = 9;
  static bool isLevel(int level) { return level >= 0 && level < kLevels; }

  int counts_[kLevels] = {};
  uint16_t started_ = 0;  ///< a bit for each level
};

/// Running numbers of all lists of a sub-document, by list number.
class KListCount {
 public:
  int AddCount(int list, int level, int start);
  /// Reading a list that is not known starts the level.
  int GetLevelCount(int list, int level, int start);
  /// -1 if the list is not known.
  int SetLevelCount(int list, int level, int value, int start);

  /// The number for one placeholder in the text of `level`: a parent's count as it is; the level's own count
  /// is stepped, and all deeper levels restart. -1 if there is no such list or level.
  int GetCount(unsigned int list, unsigned int level, unsigned int placeholder, const KDRListTable* table);

 private:
  std::unordered_map<int, LevelCounts> lists_;
};

}  // namespace pagerex
