#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "base/status.h"

class KDRListTable;
class NumberFormatService;

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

 private:
  static constexpr int kLevels = 9;
  bool isStarted(int level) const { return started_.count(level) != 0; }

  int counts_[kLevels] = {};
  std::set<int> started_;
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
  std::map<int, LevelCounts> lists_;
};

/// How a number of a list level is spelled: bits 0 to 9 the numbering system (the N of "[DBNumN]"), bits 11
/// to 13 the count of forced zeros, and the top bits a kind.
using TxNfc = uint32_t;

/// The code of a level's number format (nfc); 0 for one that is not known.
TxNfc g_MsoNfc2VtxNfc(unsigned int nfc);
unsigned int g_GetDbNum(TxNfc code);
unsigned int g_GetZeroCount(TxNfc code);
/// The format string that spells a number so.
std::wstring g_Nfc2FormatString(TxNfc code);
std::wstring __GetFormatString(unsigned int dbnum, unsigned int zeros, const wchar_t* prefix,
                               const wchar_t* suffix);

/// Spells a number in a level's number format. kNothing, and no text, for bullets (nfc 23); kFailure for a
/// null `result`. `formats` keeps what it has compiled by nfc.
Status TxFormatNum(NumberFormatService& formats, unsigned int number, unsigned int nfc, std::wstring* result);

}  // namespace pagerex
