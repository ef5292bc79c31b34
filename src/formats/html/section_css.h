#pragma once

#include <string>
#include <string_view>

#include "flow/properties.h"

namespace pagerex {

/// Columns and the direction of text: "column-count:2;column-gap:36pt;". Nothing for usual text.
void appendSectionCss(std::string& out, const SectionProperties& section);

/// "@page{size:595.3pt 841.9pt;margin:72pt 90pt}" ; with a name, the page that `page:name` asks for.
void appendPageRule(std::string& out, std::string_view name, const SectionProperties& section);

}  // namespace pagerex
