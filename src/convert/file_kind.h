#pragma once

#include "base/byte_view.h"
#include "pagerex/convert.h"

/// What files of one family are, by the bytes of the file or of its beginning. None of these allocates or
/// throws; each takes a time that grows with the file at most.
namespace pagerex {

/// Of a file that begins with the signature of compound files: PAGEREX_KIND_COMPOUND if no more can be told.
int compoundFileKind(ByteView file) noexcept;
/// Of a file that begins with the signature of a zip archive: PAGEREX_KIND_ZIP if no more can be told.
int zipKind(ByteView file) noexcept;
/// PAGEREX_KIND_UNKNOWN if it is none.
int pictureKind(ByteView file) noexcept;
/// Of marked-up text, behind a byte order mark and blanks: PAGEREX_KIND_UNKNOWN if it is none.
int markupKind(ByteView file) noexcept;
/// PAGEREX_KIND_TEXT if most of the first characters can be printed, else PAGEREX_KIND_UNKNOWN.
int plainTextKind(ByteView file) noexcept;

}  // namespace pagerex
