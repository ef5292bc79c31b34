#include "htmlwriter/list_number.h"

#include <algorithm>
#include <iterator>

#include "numformat/decimal_text.h"
#include "numformat/number_format_service.h"
#include "wordreader/list_table.h"

namespace pagerex {

int LevelCounts::AddCount(int level, int start) {
  if (level < 0 || level >= kLevels) return start;
  if (started_.insert(level).second) return counts_[level] = start;
  // Counts wrap as the unsigned numbers do that the labels show.
  return counts_[level] = static_cast<int>(static_cast<unsigned>(counts_[level]) + 1u);
}

int LevelCounts::GetCount(int level, int start) const {
  return isStarted(level) ? counts_[level] : start;
}

int LevelCounts::SetCount(int level, int value, int start) {
  if (level < 0 || level >= kLevels) return start;
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
  for (unsigned int deeper = level + 1; deeper < levels; ++deeper) {
    SetLevelCount(number, static_cast<int>(deeper), 0, startOf(deeper));
  }
  return count;
}

namespace {

constexpr unsigned int kBulletNfc = 23;

/// Number formats of list levels, by nfc from 0.
constexpr uint16_t pFmtPairs[] = {
    0x0000, 0x0004, 0x0005, 0x0006, 0x0007, 0x0008, 0x0009, 0x000A, 0x000B, 0x4001,  // 0
    0x4001, 0x4001, 0x0015, 0x0016, 0x0003, 0x0000, 0x4001, 0x4001, 0x0010, 0x0003,  // 10
    0x0015, 0x0016, 0x1000, 0x0400, 0x4001, 0x4001, 0x000E, 0x000F, 0x0010, 0x0011,  // 20
    0x000C, 0x000D, 0x4001, 0x0001, 0x4002, 0x0001, 0x4001, 0x0001, 0x4002, 0x0001,  // 30
    0x0000, 0x4001, 0x4001, 0x4001, 0x4001, 0x4001, 0x0000, 0x4001, 0x0000, 0x4001,  // 40
    0x4001, 0x4001, 0x4001, 0x4001, 0x4001, 0x4001, 0x4001, 0xC000, 0x4001, 0x4001,  // 50
    0xEFFF,                                                                          // 60
};

constexpr TxNfc kInDashes = 0xC000;

/// Formats whose numbers are doubles, and the string that spells them.
struct JapaneseFormat {
  unsigned int nfc;
  const wchar_t* format;
};
constexpr JapaneseFormat kJapaneseFormats[] = {
    {16, L"[DBNum4][$-411]General"},
    {11, L"[DBNum1][$-411]General"},
};

}  // namespace

TxNfc g_MsoNfc2VtxNfc(unsigned int nfc) {
  if (nfc == 255) return 0xEFFF;
  return nfc < std::size(pFmtPairs) ? pFmtPairs[nfc] : 0;
}

unsigned int g_GetDbNum(TxNfc code) {
  return code & 0x3FF;
}

unsigned int g_GetZeroCount(TxNfc code) {
  return (code & 0x3800) >> 11;
}

std::wstring g_Nfc2FormatString(TxNfc code) {
  const TxNfc low = code & 0x3FFF;
  const bool dashes = code == kInDashes;
  return __GetFormatString(g_GetDbNum(low), g_GetZeroCount(low), dashes ? L"- " : L"", dashes ? L" -" : L"");
}

std::wstring __GetFormatString(unsigned int dbnum, unsigned int zeros, const wchar_t* prefix,
                               const wchar_t* suffix) {
  return L"[dbnum" + decimalText(dbnum) + L"]" + prefix + L"#" + std::wstring(zeros, L'0') + suffix;
}

namespace {

/// Null if the format is none of these.
const JapaneseFormat* japaneseFormat(unsigned int nfc) {
  const auto* const found = std::find_if(std::begin(kJapaneseFormats), std::end(kJapaneseFormats),
                                         [nfc](const JapaneseFormat& row) { return row.nfc == nfc; });
  return found == std::end(kJapaneseFormats) ? nullptr : found;
}

std::wstring formatString(unsigned int nfc) {
  const JapaneseFormat* const japanese = japaneseFormat(nfc);
  return japanese ? japanese->format : g_Nfc2FormatString(g_MsoNfc2VtxNfc(nfc));
}

}  // namespace

Status TxFormatNum(NumberFormatService& formats, unsigned int number, unsigned int nfc,
                   std::wstring* result) {
  if (!result) return Status::kFailure;
  result->clear();
  if (nfc == kBulletNfc) return Status::kNothing;
  tagVARIANT value{};
  if (japaneseFormat(nfc)) {
    value.vt = NF_VT_R8;
    value.dblVal = number;
  } else {
    value.vt = NF_VT_UI4;
    value.ulVal = number;
  }
  const Status status = formats.FormatByKey(value, nfc, formatString, *result);
  return failed(status) ? status : Status::kOk;
}

}  // namespace pagerex
