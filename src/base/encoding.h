#pragma once

#include <string>

/// Text conversion between the 16-bit text of the file, wide text and the narrow text of the output.
/// Wide text becomes UTF-8 through the C library's locale, which `SetLocale` fixes for the process.
struct KEncoding {
  /// Sets all locale categories; falls back to "C.UTF-8", which converts to the same bytes, where `locale` is
  /// not installed. Returns what setlocale returned: null if neither exists.
  static char* SetLocale(const char* locale);

  /// "CP936" for 936, else the name of UTF-8.
  static const char* GetCodePageName(unsigned int codePage);

  /// Converts `length` characters (-1: up to the NUL). Returns the byte count, 0 for a null `text`, -1 on
  /// failure, and stores in `*out` a NUL-terminated buffer that the caller frees with array delete, or null.
  static int WCharToMByteT(unsigned int codePage, const wchar_t* text, int length, char** out);
  /// The same for 16-bit text, surrogate pairs joined; a null `text` gives kInvalidArgument as an int.
  static int WCHAR2BitToMByteT(unsigned int codePage, const unsigned short* text, int length, char** out);

  /// The same as a string, which is empty on failure.
  static std::string WCharToString(unsigned int codePage, const wchar_t* text, int length = -1);
  static std::string WCHAR2BitToString(unsigned int codePage, const unsigned short* text, int length = -1);
};

/// Appends one Unicode character as UTF-8; surrogates and values above 0x10FFFF append nothing.
void appendUtf8(std::string& out, char32_t character);
