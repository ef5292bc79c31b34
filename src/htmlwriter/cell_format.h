#pragma once

#include <cstdint>

#include "base/status.h"
#include "base/write_archive.h"
#include "story/cell_padding.h"
#include "wordreader/mso_word.h"

namespace pagerex {

/// Writes the padding as CSS: one "padding", or a property for each side when one of them is automatic.
/// kInvalidArgument without an archive.
Status WritePadding(const PADDING& padding, IWriteArchive* archive);

/// A border type of the file.
using BRCTYPE = uint8_t;

/// The CSS word of a border type. Coarser than that of paragraph borders: only 3, 26 and 27 are not "solid".
const char* GetBorderType(BRCTYPE type);

/// Writes "width style colour" of a border into `buffer`, NUL-terminated and cut to `size` bytes. kFailure
/// for a null argument, and for a border of Word 97 that says "none".
Status GetBorderStr(const mso_word::BRC* brc, char* buffer, unsigned int size);
Status GetBorderStr(const mso_word::BRCEX* brc, char* buffer, unsigned int size);

/// Room for a border's text.
constexpr unsigned kBorderTextSize = 48;

}  // namespace pagerex
