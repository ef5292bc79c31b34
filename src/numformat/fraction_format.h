#pragma once

#include "numformat/normal_format.h"

/// A fraction: "# ?/?". Its placeholders are those of the whole part, a mark, those of the numerator, the
/// "/", and those of the denominator.
class KNFFraction final : public KNFNormal {
 public:
  enum Form {
    kWholeFixed,    ///< with a whole part, the denominator given
    kWholeCounted,  ///< with a whole part, the digits of the denominator counted
    kFixed,         ///< no whole part
    kCounted,
  };

  Form form = kCounted;
  double fixedDenominator = 1;
  int denominatorDigits = 1;  ///< 1 to 6

 protected:
  Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                    std::wstring& out) const override;
  double GetFormatPrecisionDouble(double value) const override;
  double GetDecimalPrecision(double) const override;

 private:
  /// A number not below zero as whole + numerator / denominator.
  struct Parts {
    double whole = 0;
    double numerator = 0;
    double denominator = 1;
  };

  bool hasWhole() const { return form == kWholeFixed || form == kWholeCounted; }
  bool isFixed() const { return form == kWholeFixed || form == kFixed; }
  Parts split(double magnitude) const;
  void Double2Fraction(double rest, Parts& parts) const;
  void Double2Fraction_2(double rest, Parts& parts) const;
  void writePart(KPlaceholder::PlaceholderEnv& env, double number, bool blank, size_t first, size_t last,
                 std::wstring& out) const;
};
