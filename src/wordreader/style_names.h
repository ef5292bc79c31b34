#pragma once

#include <cstdint>
#include <string>

namespace pagerex {

/// The English name of a built-in style, as Word writes it into files; empty for numbers that are not built
/// in.
std::u16string builtInStyleName(uint16_t sti);

}  // namespace pagerex
