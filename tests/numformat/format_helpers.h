#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "pagerex/numformat.h"

/// Formatting as a host of the service does it, with texts that free themselves.
namespace formats {

constexpr uint32_t kEnglish = 1033, kJapanese = 1041, kChinese = 2052, kVietnamese = 1066;

/// Starts the service for one test, and forgets what it compiled.
class Service {
 public:
  Service() { _XNFInit(); }
  ~Service() {
    _XNF_ClearNFTableCache();
    _XNFUnInit();
  }
};

inline NF_FORMAT_PARAM inLanguage(uint32_t language) {
  return {-1, NF_HAS_LANGUAGE, language};
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

/// `value` has to outlive the result.
inline tagVARIANT text(const wchar_t* value) {
  tagVARIANT variant = {};
  variant.vt = NF_VT_BSTR;
  variant.bstrVal = value;
  return variant;
}

/// Takes over what a function handed out.
inline std::optional<std::wstring> taken(wchar_t* handedOut) {
  if (!handedOut) return std::nullopt;
  std::wstring copy = handedOut;
  _XNFFreeText(handedOut);
  return copy;
}

using CompileFunction = uint32_t (*)(const wchar_t*, KNumericalFormat**, const NF_FORMAT_PARAM*);
using UnCompileFunction = uint32_t (*)(KNumericalFormat*, wchar_t**, const NF_FORMAT_PARAM*);

/// A compiled format that gives itself back.
class Compiled {
 public:
  explicit Compiled(const std::wstring& format, CompileFunction compile = _XNFCompile,
                    const NF_FORMAT_PARAM* param = nullptr)
      : status(compile(format.c_str(), &format_, param)) {}
  Compiled(const Compiled&) = delete;
  Compiled& operator=(const Compiled&) = delete;
  ~Compiled() { _XNFRelease(format_); }

  KNumericalFormat* get() const { return format_; }

  /// The text of `value`; nothing for a null text, "!" and the number for a failure.
  std::optional<std::wstring> show(const tagVARIANT& value, const NF_FORMAT_PARAM* param = nullptr) const {
    wchar_t* out = nullptr;
    const uint32_t formatted = _XNFFormatEx(&value, format_, &out, nullptr, param);
    std::optional<std::wstring> shown = taken(out);
    return formatted & 0x80000000u ? L"!" + std::to_wstring(formatted & 0xFFFFu) : shown;
  }

  NFSTYLE style(const tagVARIANT& value) const {
    NFSTYLE style = {};
    _XNFFormatEx(&value, format_, nullptr, &style, nullptr);
    return style;
  }

  std::wstring unCompiled(UnCompileFunction unCompile = _XNFUnCompile,
                          const NF_FORMAT_PARAM* param = nullptr) const {
    wchar_t* out = nullptr;
    unCompile(format_, &out, param);
    return taken(out).value_or(L"no text");
  }

 private:
  KNumericalFormat* format_ = nullptr;

 public:
  const uint32_t status;  ///< of the compilation
};

constexpr wchar_t kMalformed[] = L"malformed";

/// The text of `value` under a format of the dialect OQ; empty for a null text.
inline std::wstring shown(const std::wstring& format, const tagVARIANT& value,
                          const NF_FORMAT_PARAM* param = nullptr) {
  const Compiled compiled(format, _XNFCompile, param);
  return compiled.status == NF_OK ? compiled.show(value, param).value_or(L"") : kMalformed;
}

inline std::wstring shown(const std::wstring& format, double value, const NF_FORMAT_PARAM* param = nullptr) {
  return shown(format, number(value), param);
}

}  // namespace formats
