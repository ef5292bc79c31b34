#pragma once

namespace pagerex {

/// The capital of a letter, as Word shows it in text that is all capitals: of one that has no single capital
/// the letter itself, in any locale.
char16_t upperCase(char16_t unit);

}  // namespace pagerex
