#include "story/list_number.h"

#include <algorithm>
#include <iterator>

#include "base/number_text.h"
#include "numformat/decimal_text.h"
#include "numformat/number_format_service.h"

namespace pagerex {
namespace {

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

/// Most labels are decimal numbers, which need no service; it shows nothing for 0.
Status TxFormatNum(NumberFormatService& formats, unsigned int number, unsigned int nfc,
                   std::wstring* result) {
  if (!result) return Status::kFailure;
  result->clear();
  if (nfc == kBulletNfc) return Status::kNothing;
  if (nfc == kDecimalNfc && number != 0) {
    const NumberText digits = NumberText().appendUnsigned(number);
    for (const char digit : std::string_view(digits)) *result += static_cast<wchar_t>(digit);
    return Status::kOk;
  }
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
