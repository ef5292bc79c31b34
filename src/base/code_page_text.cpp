#include "base/code_page_text.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "base/code_page_1252.h"
#include "base/single_byte_pages.h"

namespace pagerex {
namespace {

constexpr struct {
  uint16_t codePage;
  const char* name;
} kNames[] = {
    // In 1258 a letter and its mark come together.
    {932, "CP932"}, {936, "CP936"}, {949, "CP949"}, {950, "CP950"}, {1258, "CP1258"}, {1361, "JOHAB"},
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

/// The character at the beginning of UTF-8, and its bytes; 0 for none.
char32_t characterOf(ByteView bytes, size_t& length) {
  const uint8_t first = bytes.u8(0);
  length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0x80) return first;
  if (first < 0xC2 || first > 0xF4 || bytes.size() < length) return 0;
  char32_t character = first & (0x7Fu >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((bytes.u8(i) & 0xC0) != 0x80) return 0;
    character = character << 6 | (bytes.u8(i) & 0x3Fu);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = character >= 0xD800 && character < 0xE000;
  return character >= kLeast[length] && character < 0x110000 && !isSurrogate ? character : 0;
}

std::u16string textOfUtf8(ByteView bytes) {
  constexpr char16_t kReplacement = 0xFFFD;
  std::u16string text;
  while (!bytes.empty()) {
    size_t length = 1;
    const char32_t character = characterOf(bytes, length);
    if (character == 0) {
      text += kReplacement;
      length = 1;
    } else if (character < 0x10000) {
      text += static_cast<char16_t>(character);
    } else {
      text += static_cast<char16_t>(0xD7C0 + (character >> 10));
      text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    }
    bytes = bytes.part(length);
  }
  return text;
}

ByteView upToZero(ByteView bytes) {
  const uint8_t* end = bytes.data() + bytes.size();
  return bytes.part(0, static_cast<size_t>(std::find(bytes.data(), end, 0) - bytes.data()));
}

}  // namespace

CodePageText::CodePageText(uint16_t codePage) : codePage_(codePage), isUtf16_(codePage == kUtf16) {
  const auto* const page =
      std::find_if(std::begin(kSingleBytePages), std::end(kSingleBytePages),
                   [codePage](const SingleBytePage& row) { return row.codePage == codePage; });
  if (page != std::end(kSingleBytePages)) upper_ = page->upper;
}

CodePageText::~CodePageText() {
  if (converter_) iconv_close(converter_);
}

std::u16string CodePageText::Read(ByteView bytes) {
  if (isUtf16_) return utf16Text(bytes);
  const ByteView text = upToZero(bytes);
  const auto isAscii = [](uint8_t byte) { return byte < 0x80; };
  const bool isPlain = std::all_of(text.data(), text.data() + text.size(), isAscii);
  constexpr uint16_t kUtf8 = 65001;
  if (!isPlain && codePage_ == kUtf8) return textOfUtf8(text);
  if (!isPlain && !upper_ && OpenConverter()) return Convert(text);
  std::u16string read;
  for (size_t i = 0; i < text.size(); ++i) {
    const unsigned char byte = text.u8(i);
    unsigned short unit = byte;
    if (byte >= 0x80 && upper_) {
      unit = upper_[byte - 0x80];
    } else {
      MsoCP1252ToWcs(&byte, 1, &unit);
    }
    read += static_cast<char16_t>(unit);
  }
  return read;
}

/// Made when it is first needed: it brings files of the C library along.
bool CodePageText::OpenConverter() {
  if (!wasOpened_) converter_ = openConverter(codePage_);
  wasOpened_ = true;
  return converter_ != nullptr;
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
