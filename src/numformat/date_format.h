#pragma once

#include "numformat/format_section.h"

/// A date and time: "yyyy-mm-dd hh:mm". A value counts days from 30 December 1899.
class KNFDateTime final : public KNFBase {
 protected:
  Status FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                    std::wstring& out) const override;

 private:
  void runFields(KPlaceholder::PlaceholderEnv& env, std::wstring& out) const;
};

/// The fields of a date serial, from 0 to 2958465, rounded to the nearest second.
tagTIMEINFO timeOf(double days);
