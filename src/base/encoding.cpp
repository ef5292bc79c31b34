#include "base/encoding.h"

#include <iconv.h>

#include <clocale>
#include <cstring>
#include <memory>
#include <mutex>

#include "base/status.h"

namespace {

constexpr unsigned int kUtf8CodePage = 65001;

// The third character from the end is U+2212, a minus sign. Nothing in the library selects another code page
// than UTF-8, so that only iconv ever sees this name, which skips what is no letter or digit of ASCII.
constexpr char kUtf8Name[] = "UTF\u22128";

/// Converts the whole of `utf8` to the code page; false when iconv cannot.
bool convertFromUtf8(unsigned int codePage, std::string& utf8) {
  const iconv_t converter = iconv_open(KEncoding::GetCodePageName(codePage), kUtf8Name);
  if (converter == reinterpret_cast<iconv_t>(-1)) return false;
  std::string converted(utf8.size(), '\0');
  char* in = utf8.data();
  char* out = converted.data();
  size_t inLeft = utf8.size();
  size_t outLeft = converted.size();
  const bool done = iconv(converter, &in, &inLeft, &out, &outLeft) != static_cast<size_t>(-1);
  iconv_close(converter);
  if (!done) return false;
  converted.resize(converted.size() - outLeft);
  utf8 = std::move(converted);
  return true;
}

/// Stores a copy of the text in `*out` and returns its length.
int handOut(unsigned int codePage, std::string text, char** out) {
  if (codePage != kUtf8CodePage) convertFromUtf8(codePage, text);
  *out = new char[text.size() + 1];
  std::memcpy(*out, text.c_str(), text.size() + 1);
  return static_cast<int>(text.size());
}

/// False when a character has no UTF-8 form.
bool wideToUtf8(const wchar_t* text, size_t length, std::string& utf8) {
  utf8.reserve(length);
  for (size_t i = 0; i < length; ++i) {
    const size_t before = utf8.size();
    appendUtf8(utf8, static_cast<char32_t>(text[i]));
    if (utf8.size() == before) return false;
  }
  return true;
}

std::string utf16ToUtf8(const unsigned short* text, size_t length) {
  std::string utf8;
  utf8.reserve(length);
  Utf16Joiner joiner;
  for (size_t i = 0; i < length; ++i) appendUtf8(utf8, joiner.Join(text[i]));
  return utf8;
}

constinit std::mutex settingLocale;

/// A locale that is set already stays untouched: other threads may be reading it.
char* changeLocale(const char* locale) {
  char* const current = std::setlocale(LC_ALL, nullptr);
  return current && locale && std::strcmp(current, locale) == 0 ? current : std::setlocale(LC_ALL, locale);
}

}  // namespace

char* KEncoding::SetLocale(const char* locale) {
  const std::lock_guard lock(settingLocale);
  char* const result = changeLocale(locale);
  return result ? result : changeLocale("C.UTF-8");
}

const char* KEncoding::GetCodePageName(unsigned int codePage) {
  return codePage == 936 ? "CP936" : kUtf8Name;
}

int KEncoding::WCharToMByteT(unsigned int codePage, const wchar_t* text, int length, char** out) {
  *out = nullptr;
  if (!text) return 0;
  std::string utf8;
  if (!wideToUtf8(text, charactersOf(text, length), utf8)) return -1;
  return handOut(codePage, std::move(utf8), out);
}

int KEncoding::WCHAR2BitToMByteT(unsigned int codePage, const unsigned short* text, int length, char** out) {
  *out = nullptr;
  if (!text) return static_cast<int>(Status::kInvalidArgument);
  return handOut(codePage, utf16ToUtf8(text, charactersOf(text, length)), out);
}

std::string KEncoding::WCharToString(unsigned int codePage, const wchar_t* text, int length) {
  std::string narrow;
  if (!text || !wideToUtf8(text, charactersOf(text, length), narrow)) return {};
  if (codePage != kUtf8CodePage) convertFromUtf8(codePage, narrow);
  return narrow;
}

std::string KEncoding::WCHAR2BitToString(unsigned int codePage, const unsigned short* text, int length) {
  if (!text) return {};
  std::string narrow = utf16ToUtf8(text, charactersOf(text, length));
  if (codePage != kUtf8CodePage) convertFromUtf8(codePage, narrow);
  return narrow;
}

void appendUtf8(std::string& out, char32_t character) {
  char bytes[kLongestUtf8];
  out.append(bytes, encodeUtf8(character, bytes));
}
