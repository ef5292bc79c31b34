#pragma once

#include <cstdint>
#include <string>

#include "base/status.h"

class NumberFormatService;

namespace pagerex {

/// The number format (nfc) of levels whose label is no number.
constexpr unsigned int kBulletNfc = 23;
/// That of decimal numbers.
constexpr unsigned int kDecimalNfc = 0;

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
