#pragma once

#include "base/status.h"
#include "base/write_archive.h"

namespace pagerex {

/// The fixed head of a page, up to and with the start of the body; without script for `phone`. kNothing for
/// null.
Status WriteHtmlStart(IWriteArchive* archive, bool phone);
/// The page's script: load-time corrections and the pop-up boxes of notes.
void WriteHtmlScript(IWriteArchive* archive);
/// The fixed tail of a page. kNothing for null.
Status WriteHtmlEnd(IWriteArchive* archive);

}  // namespace pagerex
