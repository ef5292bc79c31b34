#pragma once

#include "numformat/format_section.h"

/// A number in digits: "#,##0.00".
class KNFNormal : public KNFBase {
 protected:
  Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                    std::wstring& out) const override;
  bool NeedFormatPrecision() const override { return true; }
  double GetDecimalPrecision(double) const override { return precision - 3.0 * scale; }

  /// What the number is multiplied by before it is shown.
  virtual double factor() const { return 1; }
  /// Writes `value`; its sign only from `half` a unit of the last decimal on.
  void Format(double value, double half, const NF_FORMAT_PARAM& param, ShownValue& shown,
              std::wstring& out) const;
  /// Runs the automatic minus, if there is one and the number is to have it.
  void writeSign(KPlaceholder::PlaceholderEnv& env, double value, bool shown, std::wstring& out) const;
};

/// A number with "%".
class KNFPercent final : public KNFNormal {
 protected:
  double factor() const override { return 100; }
  double GetDecimalPrecision(double) const override { return precision + 2.0; }
};

/// A number with a per mille sign.
class KNFThousandth final : public KNFNormal {
 protected:
  double factor() const override { return 1000; }
  double GetDecimalPrecision(double) const override { return precision + 3.0; }
};

/// A number in exponent form: "0.00E+00".
class KNFExponent final : public KNFNormal {
 public:
  /// How the exponent is written: 2 for an upper case E, and 1 more for a "+" before an exponent that is not
  /// negative.
  enum Form { kLower, kLowerPlus, kUpper, kUpperPlus };

  int mantissaDigits = 0;  ///< before the point
  int form = kLower;
  bool minusGiven = false;  ///< the format string has a "-" behind the E

  bool writesPlus() const { return form == kLowerPlus || form == kUpperPlus; }

 protected:
  Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                    std::wstring& out) const override;
  double GetDecimalPrecision(double value) const override;

 private:
  /// Takes the digits of the mantissa and returns the exponent.
  int TransForm(double value, ShownValue& shown) const;
};

/// The digits of `value`, without its sign, rounded to `precision` decimals. Zeros that end the decimals are
/// left out, and before the point there are none but those of a whole number.
void splitAtPoint(double value, int precision, std::wstring& integers, std::wstring& decimals);
