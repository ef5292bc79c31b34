#pragma once

#include "numformat/format_section.h"

/// The General format: a number as it is, or spelled in the section's numbering system.
class KNFGeneral final : public KNFBase {
 protected:
  Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                    std::wstring& out) const override;

 private:
  bool isPure() const;
  std::wstring spell(double value, AREA_CODE_INDEX locale, bool japanese) const;
  std::wstring spellMoney(double value) const;
};

/// A section for texts: "@".
class KNFString final : public KNFBase {
 protected:
  Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                    std::wstring& out) const override;
};

/// A General number, which is finite, fitted into `width` characters, from 1 on, as a cell needs it.
std::wstring FormatNum_OQ(double value, long width);
