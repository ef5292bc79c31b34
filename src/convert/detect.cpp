// What a file is: by the signatures that stand at its very beginning, else as text.

#include <cstring>
#include <string_view>

#include "convert/file_kind.h"

namespace pagerex {

namespace {

struct Signature {
  uint8_t length;
  char bytes[9];
  int kind;
};

/// What is a family of kinds is told apart by its own function.
constexpr Signature kSignatures[] = {
    {8, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", PAGEREX_KIND_COMPOUND},
    {4, "PK\3\4", PAGEREX_KIND_ZIP},
    {4, "PK\5\6", PAGEREX_KIND_ZIP},  // without entries
    {5, "%PDF-", PAGEREX_KIND_PDF},
    {4, "\xFFWPC", PAGEREX_KIND_WORDPERFECT},
    {6, "\x31\xBE\0\0\0\xAB", PAGEREX_KIND_WORD_EARLY},  // DOS, and Write
    {6, "\x32\xBE\0\0\0\xAB", PAGEREX_KIND_WORD_EARLY},  // Write, with objects
    {4, "\xFE\x32\0\0", PAGEREX_KIND_WORD_EARLY},        // Macintosh: 1
    {4, "\xFE\x34\0\0", PAGEREX_KIND_WORD_EARLY},        // 3
    {4, "\xFE\x37\0\x1C", PAGEREX_KIND_WORD_EARLY},      // 4
    {4, "\xFE\x37\0\x23", PAGEREX_KIND_WORD_EARLY},      // 5
};

bool beginsWith(ByteView bytes, std::string_view text) {
  return bytes.contains(0, text.size()) && std::memcmp(bytes.data(), text.data(), text.size()) == 0;
}

int signatureKind(ByteView file) {
  for (const Signature& signature : kSignatures) {
    if (beginsWith(file, {signature.bytes, signature.length})) return signature.kind;
  }
  return PAGEREX_KIND_UNKNOWN;
}

/// Files of Word for Windows that are no compound file begin with the FIB: two bytes of identity, and the
/// number of the format, which is small. Two bytes alone may be text.
int bareFibKind(ByteView file) {
  constexpr uint16_t kFirstOfCompoundFiles = 0xC0;
  const uint16_t format = file.u16(2);
  if (format == 0 || format >= kFirstOfCompoundFiles) return PAGEREX_KIND_UNKNOWN;
  switch (file.u16(0)) {
    case 0xA59B:  // Word 1
    case 0xA5DB:  // Word 2
      return PAGEREX_KIND_WORD_EARLY;
    case 0xA5DC:  // Word 6
      return PAGEREX_KIND_WORD95;
    default:
      return PAGEREX_KIND_UNKNOWN;
  }
}

/// The header of a PDF file may stand anywhere in its first 1024 bytes. In what could be text it must begin a
/// line, since text may speak of it.
int latePdfKind(ByteView file) {
  constexpr size_t kLastByte = 1024;
  const ByteView head = file.part(0, kLastByte);
  for (size_t at = 1; at < head.size(); ++at) {
    const uint8_t before = head.u8(at - 1);
    const bool mayBegin = before < ' ' ? before != '\t' : before >= 0x7F;
    if (mayBegin && beginsWith(head.part(at), "%PDF-")) return PAGEREX_KIND_PDF;
  }
  return PAGEREX_KIND_UNKNOWN;
}

/// In this order: text may hold what looks like the header of a PDF file.
constexpr int (*kWithoutSignature[])(ByteView) = {bareFibKind, pictureKind, markupKind, latePdfKind,
                                                  plainTextKind};

int fileKind(ByteView file) noexcept {
  if (file.empty()) return PAGEREX_KIND_EMPTY;
  const int kind = signatureKind(file);
  if (kind == PAGEREX_KIND_COMPOUND) return compoundFileKind(file);
  if (kind == PAGEREX_KIND_ZIP) return zipKind(file);
  if (kind != PAGEREX_KIND_UNKNOWN) return kind;
  for (const auto kindOf : kWithoutSignature) {
    if (const int found = kindOf(file)) return found;
  }
  return PAGEREX_KIND_UNKNOWN;
}

}  // namespace

}  // namespace pagerex

int pagerex_detect(const void* data, size_t size) {
  return pagerex::fileKind(ByteView(data, size));
}
