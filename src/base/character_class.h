#pragma once

#include <cstdint>

// Classes of 16-bit characters, as the C library tells them in its UTF-8 locales, but in any locale.
// Characters beyond them come in two units, which are surrogates: neither letters nor spaces.

bool isLetterOrDigit(uint16_t unit);
/// White space but for the hard spaces.
bool isSpace(uint16_t unit);
