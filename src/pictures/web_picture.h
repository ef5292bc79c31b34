#pragma once

#include <cstdint>
#include <string_view>

#include "base/byte_view.h"
#include "pictures/picture_sink.h"

namespace pagerex {

/// What the bytes of a picture are, whatever its name says.
enum class PictureKind : uint8_t {
  kUnknown,
  kEmf,   ///< enhanced metafile, with or without EMF+ in it
  kWmf,   ///< Windows metafile, placeable or bare
  kPict,  ///< Macintosh PICT, with or without the 512 bytes in front of it
  kDib,   ///< device-independent bitmap, from its header on
  kBmp,   ///< the same as a file
  kTiff,
  kPng,
  kJpeg,
  kGif,
};

PictureKind kindOfPicture(ByteView bytes);

/// What browsers read of each kind.
struct WebKind {
  PictureKind kind;            ///< kPng, kJpeg, kGif, or kUnknown for SVG
  std::string_view extension;  ///< "svg", without the dot; empty for a kind of which nothing is made
  std::string_view mediaType;  ///< "image/svg+xml"
};
WebKind webKindOf(PictureKind kind);

/// What a document knows of a picture that has no frame of its own, as a bare metafile; 0 for not known.
struct PictureFrame {
  double widthPoints = 0, heightPoints = 0;
  bool isNested = false;  ///< part of a metafile: then no further one is drawn in it
};

/// What came of it.
enum class PictureResult : uint8_t {
  kWhole,
  kInPart,   ///< damaged, or a limit was met: what could be read is there
  kNothing,  ///< not a picture that can be read; nothing was written
  kRefused,  ///< by the sink
};

/// Writes what browsers read: metafiles as SVG, bitmaps as PNG, all that they read anyway as it is. `bytes`
/// is the whole picture. Memory and output are bounded by its size.
PictureResult writeWebPicture(ByteView bytes, const PictureFrame& frame, PictureSink& sink);

}  // namespace pagerex
