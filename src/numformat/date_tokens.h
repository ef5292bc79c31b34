#pragma once

#include "numformat/section_tokens.h"

/// Settles what the tokens of a date section mean by the tokens around them: months and minutes, hours of 12
/// or 24, separators. Removes duplicates, and tells the section's style which fields there are.
void resolveDateTokens(SectionTokens& section);
