#pragma once

#include <optional>
#include <string>

#include "base/status.h"
#include "numformat/format_types.h"

/// A format as the service knows it: a whole one (KNFSect) or one of its sections (KNFBase). Once compiled
/// nothing of it changes but the count of its references, so that any number of threads may share it.
struct KNumericalFormat {
  KNumericalFormat() = default;
  KNumericalFormat(const KNumericalFormat&) = delete;
  KNumericalFormat& operator=(const KNumericalFormat&) = delete;
  virtual ~KNumericalFormat() = default;

  virtual void Destory() { delete this; }
  /// The text of `value` into `out`, which is left alone if there is none, and what else there is to say of
  /// it into `style`. No text is not a failure.
  virtual Status FormatNum(const tagVARIANT& value, const NF_FORMAT_PARAM& param,
                           std::optional<std::wstring>& out, NFSTYLE& style) const = 0;
  /// Rounds `value` to what the format shows; kNothing if it does not round.
  virtual Status FormatPrecision(double& value) const = 0;
  /// The count of references from then on.
  virtual int AddRef() = 0;
  virtual int Release() = 0;
};
