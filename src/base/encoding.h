#pragma once

#include <cstddef>
#include <string>

/// Text conversion between the 16-bit text of the file, wide text and the narrow text of the output.
/// UTF-8 is made here and not by the C library, so that it comes out the same in every locale.
struct KEncoding {
  /// Sets all locale categories, unless they are set so already; falls back to "C.UTF-8", which converts to
  /// the same bytes, where `locale` is not installed. Returns what setlocale returned: null if neither
  /// exists. May be called from several threads at once; nothing in the library needs the locale.
  static char* SetLocale(const char* locale);

  /// "CP936" for 936, else the name of UTF-8.
  static const char* GetCodePageName(unsigned int codePage);

  /// Converts `length` characters (-1: up to the NUL), at most up to the first NUL. Returns the byte count, 0
  /// for a null `text`, -1 when a character has no UTF-8 form, and stores in `*out` a NUL-terminated buffer
  /// that the caller frees with array delete, or null. What a code page other than 65001 cannot hold comes
  /// out as UTF-8.
  static int WCharToMByteT(unsigned int codePage, const wchar_t* text, int length, char** out);
  /// The same for 16-bit text: surrogate pairs are joined and single halves left out. A null `text` gives
  /// kInvalidArgument as an int.
  static int WCHAR2BitToMByteT(unsigned int codePage, const unsigned short* text, int length, char** out);

  /// The same as a string, which is empty on failure.
  static std::string WCharToString(unsigned int codePage, const wchar_t* text, int length = -1);
  static std::string WCHAR2BitToString(unsigned int codePage, const unsigned short* text, int length = -1);
};

/// The count of characters that `length` stands for: up to the NUL, and no more than `length` if that is not
/// negative.
template <class Char>
size_t charactersOf(const Char* text, int length) {
  size_t n = 0;
  while ((length < 0 || n < static_cast<size_t>(length)) && text[n]) ++n;
  return n;
}

/// Room for one character as UTF-8.
constexpr size_t kLongestUtf8 = 4;

/// Writes one Unicode character as UTF-8 to `out` and returns the count of bytes: 0 for surrogates and values
/// above 0x10FFFF.
inline size_t encodeUtf8(char32_t character, char* out) {
  if (character < 0x80) {
    out[0] = static_cast<char>(character);
    return 1;
  }
  if (character < 0x800) {
    out[0] = static_cast<char>(0xC0 | character >> 6);
    out[1] = static_cast<char>(0x80 | (character & 0x3F));
    return 2;
  }
  if (character < 0x10000) {
    if (character >= 0xD800 && character <= 0xDFFF) return 0;
    out[0] = static_cast<char>(0xE0 | character >> 12);
    out[1] = static_cast<char>(0x80 | (character >> 6 & 0x3F));
    out[2] = static_cast<char>(0x80 | (character & 0x3F));
    return 3;
  }
  if (character > 0x10FFFF) return 0;
  out[0] = static_cast<char>(0xF0 | character >> 18);
  out[1] = static_cast<char>(0x80 | (character >> 12 & 0x3F));
  out[2] = static_cast<char>(0x80 | (character >> 6 & 0x3F));
  out[3] = static_cast<char>(0x80 | (character & 0x3F));
  return 4;
}

/// Appends one Unicode character as UTF-8; surrogates and values above 0x10FFFF append nothing.
void appendUtf8(std::string& out, char32_t character);

/// Joins 16-bit units to characters, over as many calls as they come in.
class Utf16Joiner {
 public:
  /// The character that `unit` completes; a surrogate when it completes none, which has no UTF-8 form.
  char32_t Join(unsigned short unit) {
    const unsigned high = waiting_;
    waiting_ = (unit & 0xFC00) == 0xD800 ? unit : 0;
    if ((unit & 0xFC00) != 0xDC00 || high == 0) return unit;
    return 0x10000u + ((high & 0x3FFu) << 10) + (unit & 0x3FFu);
  }
  /// Forgets a half that waits.
  void Reset() { waiting_ = 0; }

 private:
  unsigned short waiting_ = 0;  ///< a high surrogate, or 0
};
