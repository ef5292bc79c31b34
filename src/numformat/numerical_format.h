#pragma once

#include "base/status.h"
#include "numformat/format_types.h"

/// A format as the service knows it: a whole one (KNFSect) or one of its sections (KNFBase).
struct KNumericalFormat {
  KNumericalFormat() = default;
  KNumericalFormat(const KNumericalFormat&) = delete;
  KNumericalFormat& operator=(const KNumericalFormat&) = delete;
  virtual ~KNumericalFormat() = default;

  virtual void Destory() { delete this; }
  /// The text of `value`, a new array, into `*out` and what else there is to say of it into `*style`; all
  /// pointers but `value` may be null. A null text is not a failure.
  virtual Status FormatNum(const tagVARIANT& value, const NF_FORMAT_PARAM* param, wchar_t** out,
                           NFSTYLE* style) = 0;
  /// Rounds `value` to what the format shows; kNothing if it does not round.
  virtual Status FormatPrecision(double& value) = 0;
  /// The count of references from then on.
  virtual int AddRef() = 0;
  virtual int Release() = 0;
};
