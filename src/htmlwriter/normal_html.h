#pragma once

#include "base/status.h"
#include "base/write_archive.h"

namespace pagerex {

/// Opens a plain page, up to and with the start of the body. kInvalidArgument for null.
Status WriteNormalHtmlStart(IWriteArchive* archive);
/// Closes it. kInvalidArgument for null.
Status WriteNormalHtmlEnd(IWriteArchive* archive);

}  // namespace pagerex
