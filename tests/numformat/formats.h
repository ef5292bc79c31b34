#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "pagerex/numformat.h"

// What the tests of the number formats share: formats and values in one line each.

enum class Dialect { kOQ, kExcel, kWord, kQel };
constexpr Dialect kDialects[] = {Dialect::kOQ, Dialect::kExcel, Dialect::kWord, Dialect::kQel};

enum Language : uint32_t { kEnglish = 1033, kJapanese = 1041, kChinese = 2052, kVietnamese = 1066 };

inline NF_FORMAT_PARAM in(Language language) {
  return {-1, NF_HAS_LANGUAGE, language};
}

inline NF_FORMAT_PARAM width(int32_t characters) {
  return {characters, 0, 0};
}

inline tagVARIANT number(double value) {
  tagVARIANT variant = {};
  variant.vt = NF_VT_R8;
  variant.dblVal = value;
  return variant;
}

inline tagVARIANT serial(uint32_t value) {
  tagVARIANT variant = {};
  variant.vt = NF_VT_UI4;
  variant.ulVal = value;
  return variant;
}

inline tagVARIANT string(const wchar_t* value) {
  tagVARIANT variant = {};
  variant.vt = NF_VT_BSTR;
  variant.bstrVal = value;
  return variant;
}

inline tagVARIANT tagged(uint16_t vt) {
  tagVARIANT variant = {};
  variant.vt = vt;
  return variant;
}

/// What formatting gives.
struct Formatted {
  uint32_t result = NF_OK;
  std::optional<std::wstring> text;
  NFSTYLE style = {};
};

/// A text that the service handed out.
inline std::optional<std::wstring> take(wchar_t* text) {
  const std::unique_ptr<wchar_t[]> owner(text);
  return text ? std::optional<std::wstring>(text) : std::nullopt;
}

/// A compiled format; `result()` tells whether it was.
class Format {
 public:
  explicit Format(const std::wstring& text, Dialect dialect = Dialect::kOQ,
                  const NF_FORMAT_PARAM* param = nullptr) {
    _XNFInit();
    constexpr decltype(&_XNFCompile) kCompilers[] = {_XNFCompile, _XNFCompileForExcel, _XNFCompileForWord,
                                                     _XNFCompileForQel};
    if (dialect == Dialect::kOQ) _XNF_ClearNFTableCache();  // the locale of an earlier compile would stay
    result_ = kCompilers[static_cast<int>(dialect)](text.c_str(), &format_, param);
  }
  Format(const std::wstring& text, Dialect dialect, NF_FORMAT_PARAM param) : Format(text, dialect, &param) {}
  Format(const Format&) = delete;
  Format& operator=(const Format&) = delete;
  ~Format() { _XNFRelease(format_); }

  uint32_t result() const { return result_; }
  KNumericalFormat* get() const { return format_; }

  Formatted format(const tagVARIANT& value, const NF_FORMAT_PARAM* param = nullptr) const {
    Formatted formatted;
    wchar_t* text = nullptr;
    formatted.result = _XNFFormatEx(&value, format_, &text, &formatted.style, param);
    formatted.text = take(text);
    return formatted;
  }
  Formatted format(const tagVARIANT& value, NF_FORMAT_PARAM param) const { return format(value, &param); }

  std::wstring text(const tagVARIANT& value, const NF_FORMAT_PARAM* param = nullptr) const {
    return format(value, param).text.value_or(L"(none)");
  }
  std::wstring text(double value, const NF_FORMAT_PARAM* param = nullptr) const {
    return text(number(value), param);
  }

 private:
  KNumericalFormat* format_ = nullptr;
  uint32_t result_;
};

/// The text of a value; "(failed)" if the format does not compile, "(none)" if there is no text.
inline std::wstring shown(const std::wstring& format, const tagVARIANT& value, Dialect dialect = Dialect::kOQ,
                          const NF_FORMAT_PARAM* param = nullptr) {
  const Format compiled(format, dialect, param);
  return compiled.result() == NF_OK ? compiled.text(value, param) : L"(failed)";
}
inline std::wstring shown(const std::wstring& format, double value, Dialect dialect = Dialect::kOQ,
                          const NF_FORMAT_PARAM* param = nullptr) {
  return shown(format, number(value), dialect, param);
}
inline std::wstring shown(const std::wstring& format, double value, NF_FORMAT_PARAM param) {
  return shown(format, value, Dialect::kOQ, &param);
}

inline bool compiles(const std::wstring& format, Dialect dialect = Dialect::kOQ,
                     const NF_FORMAT_PARAM* param = nullptr) {
  return Format(format, dialect, param).result() == NF_OK;
}

/// The format written back in the dialect (OQ for the word processor, which has no writer of its own).
inline std::wstring writtenBack(const Format& format, Dialect dialect,
                                const NF_FORMAT_PARAM* param = nullptr) {
  constexpr decltype(&_XNFUnCompile) kWriters[] = {_XNFUnCompile, _XNFUnCompileForExcel, _XNFUnCompileForWord,
                                                   _XNFUnCompile};
  wchar_t* text = nullptr;
  kWriters[static_cast<int>(dialect)](format.get(), &text, param);
  return take(text).value_or(L"(none)");
}
