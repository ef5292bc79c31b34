#pragma once

#include <cstdint>

/// Sprms that more than one reader looks for by name; the tables of properties (span_prop, paragraph_prop,
/// section_prop) list the rest, each with the field that it fills.
namespace sprm_opcode {

constexpr uint16_t kCIstd = 0x4A30;      ///< character style
constexpr uint16_t kPFInTable = 0x2416;  ///< the paragraph lies in a table
constexpr uint16_t kPFTtp = 0x2417;      ///< it ends a row
constexpr uint16_t kPChgTabs = 0xC615;   ///< tab stops that go and come
constexpr uint16_t kPItap = 0x6649;      ///< how deep its table is nested
constexpr uint16_t kTCellSpacingDefault = 0xD633;
constexpr uint16_t kTDefTable = 0xD608;    ///< how a row is cut into cells
constexpr uint16_t kTDefTable10 = 0xD606;  ///< the same, older

}  // namespace sprm_opcode
