#pragma once

namespace pagerex {

/// Columns that a character takes on a terminal: 0 for what joins the one before, 2 for wide ones of East
/// Asia, else 1.
int displayWidth(char32_t code);

}  // namespace pagerex
