#pragma once

#include "base/status.h"
#include "story/page_safety.h"

class OutputFiles;

/// The files that stand at the main HTML path and lead to the pages in the files folder. Each creates or
/// truncates its file, writes it whole and closes it.
/// All return kInvalidArgument for a null pointer, a page count below 1, or a file that cannot be created.
namespace pagerex {

/// View normal: the text in a frame named "main", beside the navigation page if there is one.
Status WriteFramePage(OutputFiles& files, const char* htmlPath, const char* navigationUrl,
                      const char* firstPageUrl, bool hasNavigation, const KPageSafety& safety = {});

/// View phone: links to the pages. `filesFolderName` is relative to the main file. A link longer than 63
/// bytes is cut.
Status WriteHtmlMain(OutputFiles& files, const char* htmlPath, const char* filesFolderName, int pageCount,
                     const KPageSafety& safety = {});

/// View mulpages: the pages as a "file" element with a "page" for each. A path longer than 259 bytes is cut;
/// kFailure when the file cannot be created.
Status WriteMulpagesInfo(OutputFiles& files, const char* htmlPath, const char* filesFolderName, int pageCount,
                         const KPageSafety& safety = {});

}  // namespace pagerex
