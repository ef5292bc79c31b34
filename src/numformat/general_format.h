#pragma once

#include "numformat/format_section.h"

/// The General format: a number as it is, or spelled in the section's numbering system.
class KNFGeneral final : public KNFBase {
 public:
  ~KNFGeneral() override;

 protected:
  Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, std::wstring& out) override;

 private:
  bool isPure() const;
  void spell(double value, AREA_CODE_INDEX locale, bool japanese);
  void spellMoney(double value);
  void TransForm(double value);
  void TransFormNormal(double value);

  int pointPosition_ = -1;                   ///< in `integerDigits`; -1 if there is no point
  KNumericalFormat* twoDecimals_ = nullptr;  ///< "0.00;0.00", compiled when first needed
};

/// A section for texts: "@".
class KNFString final : public KNFBase {
 protected:
  Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, std::wstring& out) override;
};

/// A General number, which is finite, fitted into `width` characters, from 1 on, as a cell needs it.
std::wstring FormatNum_OQ(double value, long width);
