#pragma once

#include "support/bytes.h"

/// Metafiles as long as one likes, of records that drawings are full of.
namespace bench {

enum class Lines {
  kPolylines,  ///< of a hundred points each
  kSteps,      ///< each line a record
  kPolygons,   ///< of six points each, with a pen and a brush of their own
};

/// An enhanced metafile of about so many bytes.
support::Bytes emfOf(Lines lines, size_t bytes);
/// A Windows metafile.
support::Bytes wmfOf(Lines lines, size_t bytes);

}  // namespace bench
