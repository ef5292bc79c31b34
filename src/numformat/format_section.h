#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "numformat/numerical_format.h"
#include "numformat/placeholder.h"

/// One section of a format: turns a value into digits and has the placeholders write them. Owned by its
/// KNFSect, which also counts the references.
class KNFBase : public KNumericalFormat {
 public:
  Status FormatNum(const tagVARIANT& value, const NF_FORMAT_PARAM& param, std::optional<std::wstring>& out,
                   NFSTYLE& outStyle) const final;
  /// Rounds `value` to what the section shows, so that a spreadsheet can compare it.
  Status FormatPrecision(double& value) const final;
  int AddRef() final { return 1; }
  int Release() final { return 1; }

  /// Puts the placeholder of the minus sign first.
  void InsertAutoMinus();
  bool HasAutoMinus() const;
  NF_CODEPAGE codePage() const { return codePageOf(style); }
  /// Index of the first placeholder with that id; the count of placeholders if there is none.
  size_t findPlaceholder(int id) const;

  std::vector<PlaceholderRecord> placeholders;
  NFSTYLE style = kDefaultStyle;
  AREA_CODE_INDEX area = AREA_NONE;  ///< that the section names
  int scale = 0;                     ///< count of scale commas: each divides by 1000
  int westYear = -1;                 ///< -1 if no "b1" stood there, else its value
  int precision = 0;                 ///< decimals in the format

 protected:
  /// The text of `value`; kNothing if there is none.
  virtual Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                            std::wstring& out) const = 0;

  virtual bool NeedFormatPrecision() const { return false; }
  /// The value as the section shows it, before its decimals are cut.
  virtual double GetFormatPrecisionDouble(double value) const { return value; }
  /// Decimals that are kept; if negative, so many digits before the point are not.
  virtual double GetDecimalPrecision(double) const { return precision; }

  KPlaceholder::PlaceholderEnv environment(const NF_FORMAT_PARAM& param, ShownValue& shown) const;
  /// Runs the placeholders from `first` up to `last`; a General token writes the integer digits.
  void runPlaceholders(KPlaceholder::PlaceholderEnv& env, size_t first, size_t last, std::wstring& out) const;

  /// Spells a whole number in the section's numbering system and runs the placeholders on it.
  Status FormatSerialNumber(uint32_t number, const NF_FORMAT_PARAM& param, ShownValue& shown,
                            std::wstring& out) const;

  /// Whether `value` gives a finite number, into `number`, for the section to show; an empty value is 0 if
  /// the parameter asks for it. Otherwise `status` and `out` are what formatting gives: a text is copied, a
  /// number that is not finite is "#NUM!".
  static bool readNumber(const tagVARIANT& value, const NF_FORMAT_PARAM& param, double& number,
                         ShownValue& shown, std::wstring& out, Status& status);
};

extern const wchar_t kNotANumber[];

/// The digits of a number's exponent form.
class DecimalDigits {
 public:
  /// `decimals`: digits behind the first; 17 at most, none if negative. `number` is finite.
  DecimalDigits(double number, int decimals);

  /// Without the point and trailing zeros.
  std::wstring_view mantissa() const { return {mantissa_, length_}; }
  /// Of the first digit.
  int exponent() const { return exponent_; }

 private:
  wchar_t mantissa_[50];
  size_t length_ = 0;
  int exponent_ = 0;
};
