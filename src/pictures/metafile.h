#pragma once

#include "pictures/web_picture.h"

namespace pagerex {

// Players of records: each writes one SVG to the sink, as it reads. The time is linear in the bytes.

/// An enhanced metafile; where it is one of EMF+ records alone, these.
PictureResult playEmf(ByteView bytes, const PictureFrame& frame, PictureSink& sink);

/// A Windows metafile, with or without the header of a placeable one.
PictureResult playWmf(ByteView bytes, const PictureFrame& frame, PictureSink& sink);

/// A Macintosh PICT of version 1 or 2.
PictureResult playPict(ByteView bytes, const PictureFrame& frame, PictureSink& sink);

/// A TIFF's first image as PNG.
PictureResult writeTiffAsPng(ByteView bytes, PictureSink& sink);

}  // namespace pagerex
