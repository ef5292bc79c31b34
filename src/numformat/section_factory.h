#pragma once

#include <memory>

#include "numformat/format_section.h"
#include "numformat/section_tokens.h"

/// Builds the section that its tokens describe; null if they do not make one.
std::unique_ptr<KNFBase> CreateNF(SectionTokens&& section);

/// The General format with nothing else in it.
std::unique_ptr<KNFBase> CreatePureGeneral();
