#pragma once

#include "base/status.h"
#include "htmlwriter/env.h"
#include "pagerex/pagerex.h"

namespace pagerex {

/// Drives one conversion: prepares the output, runs the writers of the view over the main text and writes the
/// index at the main HTML path. It is the environment of the main text and owns the archive in it.
class KHtmlWriter : public KEnv {
 public:
  KHtmlWriter() = default;
  KHtmlWriter(const KHtmlWriter&) = delete;
  KHtmlWriter& operator=(const KHtmlWriter&) = delete;
  ~KHtmlWriter();

  /// Creates or truncates the main HTML file and, but for the preview, empties or makes the files folder
  /// beside it. May be repeated. `doc` and `host` (may be null) are not owned; `charactersPerPage` -1 for
  /// none. kInvalidArgument for a null document or path or an invalid view; kCannotCreate when the file or
  /// the folder cannot be created.
  Status Init(const KDRDocument* doc, const char* path, VIEW chosenView, int charactersPerPage,
              IPageRexCallBack* host);

  /// Once, after `Init`. kNothing when there are no writers for the view; else what the pages writer
  /// returned: after anything but kOk the main HTML file has no index, while the pages written so far remain.
  Status Write();

 private:
  Status CreateFilesFolder();
  Status WritePages();
  void WriteIndex();
};

}  // namespace pagerex
