#pragma once

#include "formats/format.h"

namespace pagerex {

Status writeText(FormatJob& job);

}  // namespace pagerex
