#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/byte_view.h"

/// Records of the compound file format as they lie in the file: packed, little-endian, kept as read. Pages
/// are the format's sectors, tiny pages its short sectors. Fields named `unused...` are not looked at.
#pragma pack(push, 1)

/// The first 512 bytes of the file.
struct SotHeader {
  static constexpr size_t kFatPageCount = 109;

  uint8_t signature[8];
  uint8_t unused8[22];
  uint16_t pageShift;      // 30: only the low byte counts, here and in the next
  uint16_t tinyPageShift;  // 32
  uint8_t unused34[14];
  uint32_t directoryStart;  // 48: first page of the directory
  uint8_t unused52[4];
  uint32_t tinyCutoff;    // 56: a stream of fewer bytes lies in tiny pages
  uint32_t tinyFatStart;  // 60: first page of the tiny pages' table
  uint8_t unused64[4];
  int32_t masterFatStart;           // 68: first page of the list that goes on behind `fatPages`
  int32_t masterFatPages;           // 72: count of that list's pages
  int32_t fatPages[kFatPageCount];  // 76
};
static_assert(sizeof(SotHeader) == 512 && offsetof(SotHeader, fatPages) == 76);

/// A storage or stream in the directory. Links are entry numbers, negative for none.
struct SotEntry {
  enum Type : uint8_t { kStorage = 1, kStream = 2 };

  uint16_t name[32];  // zero-terminated
  uint8_t unused64[2];
  uint8_t type;  // 66
  uint8_t unused67;
  int32_t left;   // 68: sibling
  int32_t right;  // 72: sibling
  int32_t child;  // 76
  uint8_t unused80[36];
  uint32_t startPage;  // 116: or start tiny page
  uint32_t size;       // 120: in bytes; of the format's 64 bits only these count
  uint8_t unused124[4];
};
static_assert(sizeof(SotEntry) == 128 && offsetof(SotEntry, startPage) == 116);

#pragma pack(pop)

/// 0 if the shift does not fit 32 bits.
constexpr uint32_t pageSizeOf(uint16_t shift) {
  return (shift & 0xFF) < 32 ? uint32_t{1} << (shift & 0xFF) : 0;
}

/// The entry's name, each 16-bit unit widened. One without a terminator runs on into the other fields, at
/// most to the end of the entry.
inline std::wstring nameOf(const SotEntry& entry) {
  const ByteView bytes(&entry, sizeof(entry));
  std::wstring name;
  for (size_t at = 0; at < bytes.size() && bytes.u16(at); at += 2)
    name += static_cast<wchar_t>(bytes.u16(at));
  return name;
}
