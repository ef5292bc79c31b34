#pragma once

#include "formats/format.h"

namespace pagerex {

Status writeMarkdown(FormatJob& job);

}  // namespace pagerex
