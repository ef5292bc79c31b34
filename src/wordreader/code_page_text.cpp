#include "wordreader/code_page_text.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "wordreader/code_page_1252.h"

namespace pagerex {
namespace {

constexpr struct {
  uint16_t codePage;
  const char* name;
} kNames[] = {
    {874, "CP874"},   {932, "CP932"},   {936, "CP936"},       {949, "CP949"},
    {950, "CP950"},   {1250, "CP1250"}, {1251, "CP1251"},     {1253, "CP1253"},
    {1254, "CP1254"}, {1255, "CP1255"}, {1256, "CP1256"},     {1257, "CP1257"},
    {1258, "CP1258"}, {1361, "JOHAB"},  {10000, "MACINTOSH"}, {65001, "UTF-8"},
};

void* const kNoConverter = reinterpret_cast<void*>(-1);

void* openConverter(uint16_t codePage) {
  for (const auto& [number, name] : kNames) {
    if (number != codePage) continue;
    const iconv_t opened = iconv_open("UTF-16LE", name);
    return opened == kNoConverter ? nullptr : opened;
  }
  return nullptr;
}

ByteView upToZero(ByteView bytes) {
  const uint8_t* end = bytes.data() + bytes.size();
  return bytes.part(0, static_cast<size_t>(std::find(bytes.data(), end, 0) - bytes.data()));
}

}  // namespace

CodePageText::CodePageText(uint16_t codePage)
    : isUtf16_(codePage == kUtf16), converter_(openConverter(codePage)) {}

CodePageText::~CodePageText() {
  if (converter_) iconv_close(converter_);
}

std::u16string CodePageText::Read(ByteView bytes) {
  if (isUtf16_) return utf16Text(bytes);
  const ByteView text = upToZero(bytes);
  if (converter_) return Convert(text);
  std::u16string read;
  for (size_t i = 0; i < text.size(); ++i) {
    const unsigned char byte = text.u8(i);
    unsigned short unit = 0;
    MsoCP1252ToWcs(&byte, 1, &unit);
    read += static_cast<char16_t>(unit);
  }
  return read;
}

std::u16string CodePageText::Convert(ByteView bytes) {
  constexpr char16_t kReplacement = 0xFFFD;
  std::u16string read;
  char* in = reinterpret_cast<char*>(const_cast<uint8_t*>(bytes.data()));
  size_t inLeft = bytes.size();
  iconv(converter_, nullptr, nullptr, nullptr, nullptr);
  for (bool isFlushed = false; !isFlushed;) {
    char16_t units[128];
    char* out = reinterpret_cast<char*>(units);
    size_t outLeft = sizeof units;
    isFlushed = inLeft == 0;
    // What some code pages keep back for a mark behind it comes at the end.
    const size_t result = iconv(converter_, isFlushed ? nullptr : &in, &inLeft, &out, &outLeft);
    const int error = result == static_cast<size_t>(-1) ? errno : 0;
    read.append(units, std::size(units) - outLeft / sizeof(char16_t));
    if ((error == EILSEQ || error == EINVAL) && inLeft > 0) {
      read += kReplacement;
      ++in;
      --inLeft;
    }
  }
  return read;
}

std::u16string utf16Text(ByteView bytes) {
  std::u16string read;
  for (size_t i = 0; i + 1 < bytes.size() && bytes.u16(i); i += 2) {
    read += static_cast<char16_t>(bytes.u16(i));
  }
  return read;
}

}  // namespace pagerex
